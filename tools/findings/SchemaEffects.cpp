// Entries and rules of a search schema document that mean something else than they say.
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <set>

#include "findings/Effects.h"
#include "text/Text.h"

namespace
{

// What is wrong with a text that stands for a decimal number; empty when nothing is.
std::string NoNumber(const std::string& strText)
{
    if (strText.empty()) return "no decimal number: it reads as 0";
    char* pEnd = nullptr;
    errno = 0;
    const long long nValue = std::strtoll(strText.c_str(), &pEnd, 10);
    if (pEnd != strText.c_str() + strText.size()) return "no decimal number: it reads as what it begins with, or as 0";
    const bool bFits = nValue >= std::numeric_limits<int>::min() && nValue <= std::numeric_limits<int>::max();
    return bFits && errno == 0 ? "" : "out of range: it reads as the largest or smallest number";
}

// From where and, in a range, to where the rule counts positions.
void CheckPositions(const Node& rule, CReport& report)
{
    const std::string strRule = rule.Member("rule").Text();
    const bool bRange = strRule == "position_range_turn";
    if (bRange || strRule == "position_after_turn")
        report.AtMissing(rule, "from", "no-number", "the rule", "it reads as 0");
    if (bRange) report.AtMissing(rule, "to", "no-number", "the rule", "it reads as 0");
    const auto Number = [&](const char* szKey) { return std::strtol(rule.Member(szKey).Text().c_str(), nullptr, 10); };
    if (bRange && !report.IsDoubtedWithin(rule) && Number("to") < Number("from"))
        report.AtValue(rule, NoEffect("the rule", "\"to\" is below \"from\""));
}

void CheckRule(const Node& rule, CReport& report)
{
    for (const char* szKey : {"from", "to", "cycle"}) {
        const Node member = rule.Member(szKey);
        const std::string strWrong = member.value.isString() ? NoNumber(member.Text()) : "";
        if (!strWrong.empty())
            report.AtValue(member, {Severity::ERROR, "no-number",
                                    Quoted(szKey) + " is " + Quoted(member.Text()) + ", " + strWrong});
    }
    report.AtMissing(rule, "rule", "no-word", "the rule", "takes over the type of the rule before it");
    CheckPositions(rule, report);
}

}  // namespace

void CheckSchemaEffects(const Node& document, CReport& report)
{
    const Node rsp = document.Member("rsp");
    const Node schema = rsp.Member("schema");
    if (rsp.Member("stat").Text() == "fail")
        report.KeyHasNoEffect(rsp, "schema", "\"stat\" is \"fail\"");
    else if (!report.IsDoubted(rsp.Member("stat")))
        report.KeyHasNoEffect(rsp, "err", "it is read only when \"stat\" is \"fail\"");
    std::set<std::string> setMerged;
    for (Json::ArrayIndex i = 0; i < schema.Size(); ++i) {
        const Node entry = schema.Element(i);
        const Node category = entry.Member("category");
        const Node rules = entry.Member("rules");
        for (Json::ArrayIndex j = 0; j < rules.Size(); ++j)
            if (rules.value[j].isObject()) CheckRule(rules.Element(j), report);
        if (!entry.value.isObject() || report.IsDoubted(category)) continue;
        const std::string strCategory = category.Text();
        if (strCategory.empty())
            report.AtMissing(entry, "category", "no-word", "the entry", "takes over that of the entry before it");
        else if (setMerged.count("others") > 0 || !setMerged.insert(strCategory).second)
            report.AtValue(entry, NoEffect("the entry", "its source has been put into the list before"));
    }
}
