// An explanation as a person reads it, and as a line of JSON.
#pragma once

#include <string>

#include "session/Case.h"
#include "text/Text.h"

// Each part of the reply with what is wrong with it, at its place in the file, and what the library did with it, with
// the log line that says so.
std::string Explain(const Case& stCase, const CPaint& paint);

// {"file", "line", "accepted", "reason" of a refused one, "sections": [{"section", "findings", "statements"}]} with its
// line break.
std::string ExplainJson(const Case& stCase);
