// JSON for the tests, written with single quotes.
#pragma once

#include <json/reader.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <locale>
#include <string>

inline std::string Quoted(std::string strText)
{
    std::replace(strText.begin(), strText.end(), '\'', '"');
    return strText;
}

// Reads as the library does, whatever the locale. Null when that is no JSON.
inline Json::Value ParsedJson(const std::string& strJson)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    // Has no name: one with a name would change C's locale too.
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new std::numpunct<char>));
    Json::Value value;
    if (!Json::Reader().parse(strJson, value)) value = Json::Value();
    std::locale::global(before);
    return value;
#pragma GCC diagnostic pop
}

inline Json::Value Parsed(const std::string& strText)
{
    return ParsedJson(Quoted(strText));
}

// `value` without the members that are empty or as in `fresh`: what has been filled of a record. The element of a
// list in `fresh` is what each element of that list is compared with.
inline Json::Value Filled(Json::Value value, const Json::Value& fresh = Json::Value())
{
    for (Json::ArrayIndex i = 0; value.isArray() && i < value.size(); ++i)
        value[i] = Filled(value[i], fresh.isArray() ? fresh.get(0U, Json::Value()) : Json::Value());
    for (const std::string& strName : value.isObject() ? value.getMemberNames() : Json::Value::Members()) {
        const Json::Value freshMember = fresh.isObject() ? fresh[strName] : Json::Value();
        const Json::Value member = Filled(value[strName], freshMember);
        value[strName] = member;
        if (member.empty() || member == "" || member == freshMember) value.removeMember(strName);
    }
    return value;
}

// A file of tests/data.
inline std::string DataFile(const std::string& strName)
{
    std::ifstream file(PARLO_TEST_DATA "/" + strName);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The reply whose "rsp" has the given members.
inline std::string Reply(const std::string& strMembers)
{
    return Quoted("{'rsp':{" + strMembers + "}}");
}

// The member "tvcontrol" with one command; `strParam` are the members of its one object of "params".
inline std::string Command(const std::string& strAction, const std::string& strParam = "")
{
    return "'tvcontrol':[{'action':'" + strAction + "','params':[{" + strParam + "}]}]";
}
