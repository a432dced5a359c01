// What came of one input, as a line of JSON: for a program what Render.h is for a person.
#ifndef PARLO_CASEJSON_H
#define PARLO_CASEJSON_H

#include <json/value.h>

#include <functional>
#include <string>

#include "session/Case.h"

// {"file":TEXT,"line":NUMBER,"accepted":true, and the record's fields} or, of what was refused,
// {"file":TEXT,"line":NUMBER,"accepted":false,"reason":TEXT}, with its line break, handed to `write` piece by piece.
// With `bCompact` without the fields that are not filled.
void WriteCaseLine(const Case& stCase, bool bCompact, const std::function<void(const std::string&)>& write);

// The same as a value, without file and line.
Json::Value OutcomeJson(const Case& stCase, bool bCompact);

#endif
