// What the library reads of a reply, and what of a given reply it therefore ignores.
#ifndef PARLO_REPLYSHAPE_H
#define PARLO_REPLYSHAPE_H

#include <json/value.h>

#include <string>
#include <vector>

// The member `szKey`; null when it is missing or `parent` is not an object.
inline const Json::Value& Child(const Json::Value& parent, const char* szKey)
{
    return parent.isObject() ? parent[szKey] : Json::Value::nullSingleton();
}

// "a text", "an integer", "a list" ...
const char* KindInWords(const Json::Value& value);

// Each of these gives a sentence for every key that is unknown or whose value has a type that is not read.
std::vector<std::string> IgnoredInEnvelope(const Json::Value& rsp);
std::vector<std::string> IgnoredInCommand(const Json::Value& command);  // without its "params"
std::vector<std::string> IgnoredInCommandParam(const Json::Value& param, const std::string& strName);
std::vector<std::string> IgnoredInRequest(const Json::Value& request);  // of "displaycontrol"
std::vector<std::string> IgnoredInItem(const Json::Value& item);        // of "tvcontent"; wrong types only

#endif
