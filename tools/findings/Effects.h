// The checks of a document's parts: its shape, and what of it has no effect, or another one than its author meant, as
// other parts of it decide.
#pragma once

#include "findings/Check.h"
#include "findings/Description.h"
#include "findings/Report.h"

// "a text", "a number with a fraction"
const char* KindOf(const Json::Value& value);

// Reports what of `document`, which is an object, is not as `stObject` says: unknown and repeated keys, wrong types,
// unknown words.
void CheckShape(const Node& document, const Description::Object& stObject, CReport& report);

// The reply's own domains. When it says nothing of any, those that were there before it count.
Texts DomainsOf(const Node& rsp);

// The document is an object whose shape was checked before with the same report; `vDomains` are those that count.
void CheckReplyEffects(const Node& document, const Texts& vDomains, CReport& report);
void CheckSchemaEffects(const Node& document, CReport& report);

// Whether the reply hands its search over to the application, which reads what was found by itself.
bool IsHandOver(const Node& rsp, const Texts& vDomains, const CReport& report);

// The action of a command that counts: the last one that it or its "params" give. When nothing does it is the
// command's own, which is null. One that is doubted counts too, when a report is given.
Node ActionIn(const Node& command, const CReport* pReport = nullptr);

// Reports on "tvcontrol", a list of at least one. Says whether the first command shows contents; when its action is
// not known that is not known either, and the action is doubted.
bool CheckCommands(const Node& commands, bool bFailedSearch, CReport& report);

// Reports on the elements of "tvcontent" of a reply whose command shows them.
void CheckItems(const Node& contents, CReport& report);

// Reports whether a poster's address becomes what its author meant. `images` is an object that the library finishes an
// address from; `nPreferred` the size code that it takes when it is on offer.
void CheckPoster(const Node& images, int nPreferred, CReport& report);
