#include "CAJson.h"

#include <json/reader.h>

#include <algorithm>
#include <exception>

namespace
{

// Whether the text has so many values that it means to exhaust memory: a value of two bytes becomes a hundred in the
// document and more in a record. Counts what could separate values, in strings too, without a branch on any of them.
bool IsBomb(const std::string& strText)
{
    constexpr std::size_t kMostValues = 1 << 19;
    if (strText.size() <= kMostValues) return false;
    std::size_t nValues = 0;
    for (const char c : strText) nValues += static_cast<std::size_t>((c == ',') | (c == '[') | (c == '{'));
    return nValues > kMostValues;
}

// Whether keeping the comments costs little: for each of them the JSON library looks back over the text to the value
// before it. Counts what could begin a comment, in strings too.
bool CanKeepComments(const std::string& strText)
{
    constexpr std::size_t kMostWork = std::size_t{1} << 28;
    std::size_t nComments = 0;
    for (std::size_t n = strText.find('/'); n != std::string::npos; n = strText.find('/', n + 1))
        if (n + 1 < strText.size() && (strText[n + 1] == '/' || strText[n + 1] == '*')) ++nComments;
    return nComments <= kMostWork / std::max<std::size_t>(strText.size(), 1);
}

}  // namespace

namespace CAJson
{

bool Parse(const std::string& strText, Json::Value& root)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // the reader whose leniency the servers count on
    if (IsBomb(strText)) return false;
    try {
        const char* pBegin = strText.data();
        return Json::Reader().parse(pBegin, pBegin + strText.size(), root, CanKeepComments(strText));
    } catch (const std::exception&) {  // nested too deeply, or out of memory
        return false;
    }
#pragma GCC diagnostic pop
}

std::string Text(const Json::Value& value)
{
    std::string strText;
    Take(value, strText);
    return strText;
}

std::string AnyText(const Json::Value& value)
{
    return value.isArray() || value.isObject() ? std::string() : value.asString();
}

int AnyInt(const Json::Value& value)
{
    return value.isConvertibleTo(Json::intValue) ? value.asInt() : 0;
}

bool Take(const Json::Value& value, std::string& field)
{
    const char* pBegin = nullptr;
    const char* pEnd = nullptr;
    if (!value.getString(&pBegin, &pEnd)) return false;
    field.assign(pBegin, pEnd);
    return true;
}

bool Take(const Json::Value& value, int& field)
{
    if (!value.isInt()) return false;
    field = value.asInt();
    return true;
}

void AppendTexts(const Json::Value& list, std::vector<std::string>& vTexts)
{
    for (const Json::Value& element : Elements(list))
        if (element.isString()) vTexts.push_back(Text(element));
}

void AppendAnyTexts(const Json::Value& list, std::vector<std::string>& vTexts)
{
    for (const Json::Value& element : Elements(list)) vTexts.push_back(AnyText(element));
}

}  // namespace CAJson
