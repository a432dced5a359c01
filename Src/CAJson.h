// Reads values out of JSON that nobody vouches for.
//
// All of the library reads JSON through these functions: a value that is missing or of another type gives a
// default, and nothing here throws but running out of memory. The JSON library itself throws on a key of
// something that is not an object, on a list's text, on an integer out of range.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace CAJson
{

// Parses `strText` into `root`, comments included. False when that is not JSON, or beyond the limits of CAJsonScan;
// `root` is then of no use. Text behind the value is ignored. Comments are dropped from a text that
// has so many of them that keeping them would take long. The result does not depend on the process's locale.
bool Parse(const std::string& strText, Json::Value& root);

// The member `szKey`; null when it is missing or `parent` is not an object.
inline const Json::Value& Child(const Json::Value& parent, const char* szKey)
{
    return parent.isObject() ? parent[szKey] : Json::Value::nullSingleton();
}

// For `for`: the elements of a list in order, nothing when `value` is not a list.
inline const Json::Value& Elements(const Json::Value& value)
{
    return value.isArray() ? value : Json::Value::nullSingleton();
}

// The text when `value` is one, else empty.
std::string Text(const Json::Value& value);
inline std::string Text(const Json::Value& parent, const char* szKey)
{
    return Text(Child(parent, szKey));
}

// Any scalar as text: booleans and numbers as the JSON library prints them; null, a list or an object is empty.
std::string AnyText(const Json::Value& value);

// The integer when the member is one that fits an int (500.0 is one), else 0.
inline int Int(const Json::Value& parent, const char* szKey)
{
    const Json::Value& value = Child(parent, szKey);
    return value.isInt() ? value.asInt() : 0;
}

// Any scalar as integer: booleans are 1 or 0, reals in range are truncated; everything else is 0.
int AnyInt(const Json::Value& value);

// Overwrites `field` only when the value's type fits. Says whether it did.
bool Take(const Json::Value& value, std::string& field);
bool Take(const Json::Value& value, int& field);

// Appends the elements of a list: those that are texts, or all of them as AnyText.
void AppendTexts(const Json::Value& list, std::vector<std::string>& vTexts);
void AppendAnyTexts(const Json::Value& list, std::vector<std::string>& vTexts);

// A line of a table that says which field of `Record` a key fills: a text or an integer.
template <typename Record>
struct FieldKey {
    std::string_view szKey;
    std::string Record::*pText = nullptr;
    int Record::*pInt = nullptr;

    constexpr FieldKey(std::string_view szName, std::string Record::*pField) : szKey(szName), pText(pField) {}
    constexpr FieldKey(std::string_view szName, int Record::*pField) : szKey(szName), pInt(pField) {}
};

// Overwrites the fields of the table whose members are there with a fitting type. Walks the object once, which is
// cheaper than to ask it for each key.
template <typename Record, std::size_t N>
void Take(const Json::Value& object, const FieldKey<Record> (&keys)[N], Record& record)
{
    if (!object.isObject()) return;
    const auto end = object.end();
    for (auto member = object.begin(); member != end; ++member) {
        const char* pNameEnd = nullptr;
        const char* const pName = member.memberName(&pNameEnd);
        const std::string_view szName(pName, static_cast<std::size_t>(pNameEnd - pName));
        for (const auto& key : keys) {
            if (key.szKey != szName) continue;
            if (key.pText != nullptr)
                Take(*member, record.*key.pText);
            else
                Take(*member, record.*key.pInt);
        }
    }
}

// Overwrites every field of the table: without a fitting member a text becomes empty, an integer 0.
template <typename Record, std::size_t N>
void Fill(const Json::Value& object, const FieldKey<Record> (&keys)[N], Record& record)
{
    for (const auto& key : keys) {
        if (key.pText != nullptr)
            (record.*key.pText).clear();
        else
            record.*key.pInt = 0;
    }
    Take(object, keys, record);
}

// Appends one record a list element, filled by the table.
template <typename Record, std::size_t N>
void AppendRecords(const Json::Value& list, const FieldKey<Record> (&keys)[N], std::vector<Record>& vRecords)
{
    for (const Json::Value& element : Elements(list)) Fill(element, keys, vRecords.emplace_back());
}

}  // namespace CAJson
