// JSON values as indented text for the log.
#pragma once

#include <json/value.h>

#include <string>

namespace CAStyledJson
{

// The text of `value` over several lines, indented by tabs, as its toStyledString gives it. Not thread-safe: the first
// text makes the JSON library's writer and a stream for it, and the others use them again.
std::string Styled(const Json::Value& value);

}  // namespace CAStyledJson
