// The library's records as JSON: an object with every field of the record under its name in the headers, nested
// records nested, lists as lists, enumerations as numbers. Texts keep their bytes.
#pragma once

#include <json/value.h>

#include <functional>
#include <string>

#include "CADataRepository.h"

// Of _ConvActionInfo, _ContentsItem, _SAContents and _Content; with `bCompact` without the fields that hold what a
// fresh record has. Lists keep all their elements.
template <typename Record>
Json::Value ToJson(const Record& record, bool bCompact = false);

// The members of ToJson's object, `,"NAME":VALUE` each, handed to `write` piece by piece: a long result list is
// never in memory as JSON. UTF-8 stays as it came. What JSON allows raw and a terminal would obey is written as
// \uXXXX: DEL, the C1 controls, and the characters that turn the direction of text or break its line.
void WriteMembers(const CADataRepository::_ConvActionInfo& info, bool bCompact,
                  const std::function<void(const std::string&)>& write);

// Any value in the same way, without and with a line break behind it.
std::string JsonText(const Json::Value& value);
std::string JsonLine(const Json::Value& value);
