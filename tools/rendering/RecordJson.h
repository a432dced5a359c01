// The library's records as JSON: an object with every field of the record under its name in the headers, nested
// records nested, lists as lists, enumerations as numbers. Texts keep their bytes.
#ifndef PARLO_RECORDJSON_H
#define PARLO_RECORDJSON_H

#include <json/value.h>

#include <functional>
#include <string>

#include "CADataRepository.h"

Json::Value ToJson(const CADataRepository::_ConvActionInfo& info);
Json::Value ToJson(const CADataRepository::_ContentsItem& stItem);
Json::Value ToJson(const CADataRepository::_SAContents& stContents);
Json::Value ToJson(const CADataRepository::_Content& stContent);

// The object of ToJson on one line with its line break, handed to `write` piece by piece: a long result list is
// never in memory as JSON. UTF-8 stays as it came. DEL and the C1 controls, which JSON allows raw, are written as
// \u00XX: a terminal would obey them.
void WriteJsonLine(const CADataRepository::_ConvActionInfo& info, const std::function<void(const std::string&)>& write);

// Any value on one line, in the same way.
std::string JsonLine(const Json::Value& value);

#endif
