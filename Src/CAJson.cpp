#include "CAJson.h"

#include <json/reader.h>

#include <algorithm>

#include "CAJsonScan.h"
#include "CAPlainNumbers.h"

namespace
{

// Whether keeping so many comments costs little: for each of them the JSON library looks back over the text to the
// value before it.
bool CanKeepComments(std::size_t nComments, std::size_t nSize)
{
    constexpr std::size_t kMostWork = std::size_t{1} << 28;
    return nComments <= kMostWork / std::max<std::size_t>(nSize, 1);
}

}  // namespace

bool CAJson::Parse(const std::string& strText, Json::Value& root)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // the reader whose leniency the servers count on
    const CAJsonScan scan(strText);
    if (!scan.IsAcceptable()) return false;
    const std::string& strPlain = scan.Text();
    const char* pBegin = strPlain.data();
    return Json::Reader().parse(pBegin, pBegin + strPlain.size(), root,
                                CanKeepComments(scan.CommentCount(), strPlain.size()));
#pragma GCC diagnostic pop
}

std::string CAJson::Text(const Json::Value& value)
{
    std::string strText;
    Take(value, strText);
    return strText;
}

std::string CAJson::AnyText(const Json::Value& value)
{
    if (value.isArray() || value.isObject()) return std::string();
    const CAPlainNumbers plain;
    return value.asString();
}

int CAJson::AnyInt(const Json::Value& value)
{
    return value.isConvertibleTo(Json::intValue) ? value.asInt() : 0;
}

bool CAJson::Take(const Json::Value& value, std::string& field)
{
    const char* pBegin = nullptr;
    const char* pEnd = nullptr;
    if (!value.getString(&pBegin, &pEnd)) return false;
    field.assign(pBegin, pEnd);
    return true;
}

bool CAJson::Take(const Json::Value& value, int& field)
{
    if (!value.isInt()) return false;
    field = value.asInt();
    return true;
}

void CAJson::AppendTexts(const Json::Value& list, std::vector<std::string>& vTexts)
{
    for (const Json::Value& element : Elements(list))
        if (element.isString()) vTexts.push_back(Text(element));
}

void CAJson::AppendAnyTexts(const Json::Value& list, std::vector<std::string>& vTexts)
{
    for (const Json::Value& element : Elements(list)) vTexts.push_back(AnyText(element));
}
