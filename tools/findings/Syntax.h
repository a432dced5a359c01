// A document as a text: its encoding, and whether it is JSON that the library takes.
#pragma once

#include <json/value.h>

#include <string_view>

#include "findings/Report.h"

// Parses `szText` as the library does. When it refuses the text, returns false and has reported why and where.
bool ParseDocument(std::string_view szText, Json::Value& root, CReport& report);

// Reports on what the library takes although it is no plain JSON: comments, text behind the document, bytes that
// are not UTF-8.
void CheckText(std::string_view szText, CReport& report);
