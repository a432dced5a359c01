// The search schema document: the rules that order results.
#define CA_LOG_FILE "CAParseJson"  // all parsers log under the name of their class's file

#include "CAParseJson.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

#include "CADataHandler.h"
#include "CADataRepository/Vocabulary.h"
#include "CAJson.h"
#include "CALog.h"
#include "CAUtil.h"

using namespace CADataRepository;
using namespace CAJson;

namespace
{

constexpr char kSchemaParser[] = "t_ParseSearchSchema";

// The number that the text begins with, blanks and a sign before it allowed; 0 without one. Clamped to an int.
int Decimal(const std::string& strText)
{
    const long long nValue = std::strtoll(strText.c_str(), nullptr, 10);
    return static_cast<int>(
        std::clamp<long long>(nValue, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// Reads one rule. `nType` is the type of the rule before it, which a rule of unknown type takes over.
_CASortRule ParseRule(const Json::Value& rule, int& nType)
{
    const std::string strType = Text(rule, "rule");
    CA_LOGE_AS(kSchemaParser, "type:%s", strType.c_str());
    if (!LookUp(kSortRuleWords, strType, nType)) CA_LOGE_AS(kSchemaParser, " invalide type: %s", strType.c_str());
    return {nType, Decimal(Text(rule, "from")), Decimal(Text(rule, "to")), Decimal(Text(rule, "cycle"))};
}

}  // namespace

// An unknown category or rule type is no reason to drop data: the entry or rule takes over the value of the one
// before it. The first entry of a document has the first category then, the first rule the first type.
bool CCAParsePacket::t_ParseSearchSchema(const std::string& t_szRawData)
{
    if (t_szRawData.empty()) {
        CA_LOGE("t_szRawData is empty");
        return false;
    }
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    Json::Value root;
    if (!CAJson::Parse(t_szRawData, root)) return true;  // there is no schema in it
    const Json::Value& rsp = Child(root, "rsp");

    if (Text(rsp, "stat") == "fail") {
        const Json::Value& err = Child(rsp, "err");
        auto [strCode, strMessage] = t_LogError(__func__, err);
        const int nCode = Int(err, "code");
        const bool bNumber = Child(err, "code").isInt() && nCode != -1;
        if (strCode.empty()) strCode = bNumber ? CCAUtil::ConvertIntToString(nCode) : strMessage;
        pDataHandler->SetCommunicateErrorCode(std::move(strCode));
        return false;
    }

    int nCategory = kSchemaCategoryWords[0].eCode;
    int nType = kSortRuleWords[0].eCode;
    for (const Json::Value& element : Elements(Child(rsp, "schema"))) {
        const std::string strCategory = Text(element, "category");
        if (!LookUp(kSchemaCategoryWords, strCategory, nCategory))
            CA_LOGE(" invalide category: %s", strCategory.c_str());
        _CASchema stSchema{nCategory, {}};
        for (const Json::Value& rule : Elements(Child(element, "rules")))
            stSchema.vRules.push_back(ParseRule(rule, nType));
        pDataHandler->SetSchemaList(std::move(stSchema));
    }
    return true;
}
