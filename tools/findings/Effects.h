// What of a document has no effect, or another one than its author meant, as other parts of it decide.
#ifndef PARLO_EFFECTS_H
#define PARLO_EFFECTS_H

#include "findings/Report.h"

// The document is an object whose shape was checked before with the same report.
void CheckReplyEffects(const Node& document, CReport& report);
void CheckSchemaEffects(const Node& document, CReport& report);

#endif
