// What became of each part of a reply, and why.
#ifndef PARLO_EXPLAIN_H
#define PARLO_EXPLAIN_H

#include <string>

#include "rendering/Text.h"
#include "session/Case.h"

// Tells it from the reply and the log lines of its call (the session must have kept them), each statement with
// the log line that it rests on. A statement without one is about something that the library passes over in
// silence.
std::string Explain(const Case& stCase, const CPaint& paint);

#endif
