// What of a document has no effect, or another one than its author meant, as other parts of it decide.
#pragma once

#include "findings/Report.h"

using Texts = std::vector<std::string>;

// The reply's own domains. When it says nothing of any, those that were there before it count.
Texts DomainsOf(const Node& rsp);

// The document is an object whose shape was checked before with the same report; `vDomains` are those that count.
void CheckReplyEffects(const Node& document, const Texts& vDomains, CReport& report);
void CheckSchemaEffects(const Node& document, const Texts& vDomains, CReport& report);

// Whether the reply hands its search over to the application, which reads what was found by itself.
bool IsHandOver(const Node& rsp, const Texts& vDomains, const CReport& report);
