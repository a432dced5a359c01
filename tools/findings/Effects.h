// What of a document has no effect, or another one than its author meant, as other parts of it decide.
#ifndef PARLO_EFFECTS_H
#define PARLO_EFFECTS_H

#include "findings/Report.h"

// The document is an object whose shape was checked before with the same report.
void CheckReplyEffects(const Node& document, CReport& report);
void CheckSchemaEffects(const Node& document, CReport& report);

// Whether the reply hands its search over to the application, which reads what was found by itself. Not when the
// domains are those of an earlier reply.
bool IsHandOver(const Node& rsp, const CReport& report);

#endif
