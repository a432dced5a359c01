// What a conversation's line says beside its turn, the members "expect" and "name", and writing that anew.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>

#include "reading/LineFile.h"

// The line with `expect` as its member "expect", put in at its end when it has none. Every other byte stays.
std::string WithExpectation(std::string_view szLine, const Json::Value& expect);

// Why the file of that name must not be written anew, half a sentence; empty when it may be, or when there is none.
std::string CannotUpdate(const std::string& strFile);

// Puts `strText` in the place of the file that was read, by way of a new file beside it with the same mode. A symbolic
// link stays one. Returns why that failed, half a sentence: also when the file has changed since it was opened.
std::string Update(const CLineFile& file, const std::string& strText);
