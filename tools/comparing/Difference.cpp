// A walk of two values side by side.
#include "comparing/Difference.h"

#include <set>

#include "findings/Suggestion.h"
#include "records/RecordJson.h"
#include "text/Text.h"

namespace
{

// The member of `other` that is most like the one which it does not have.
std::string Hint(const std::string& strName, const Json::Value& other)
{
    const std::vector<std::string> vNames = other.getMemberNames();
    return DidYouMean(MostAlike(strName, {vNames.begin(), vNames.end()}));
}

void Compare(const std::string& strPath, const Json::Value& one, const Json::Value& other, bool bPart,
             std::vector<Difference>& vDifferences)
{
    if (one.isArray() && other.isArray() && one.size() == other.size()) {
        for (Json::ArrayIndex i = 0; i < one.size(); ++i)
            Compare(strPath + '[' + std::to_string(i) + ']', one[i], other[i], bPart, vDifferences);
        return;
    }
    if (!one.isObject() || !other.isObject()) {
        if (one != other) vDifferences.push_back({strPath, JsonText(one), JsonText(other), {}});
        return;
    }
    const std::vector<std::string> vOne = one.getMemberNames();
    std::set<std::string> names(vOne.begin(), vOne.end());
    if (!bPart)
        for (const std::string& strName : other.getMemberNames()) names.insert(strName);
    for (const std::string& strName : names) {
        std::string strMember = strPath;
        strMember.append(strPath.empty() ? "" : ".").append(strName);
        if (one.isMember(strName) && other.isMember(strName))
            Compare(strMember, one[strName], other[strName], bPart, vDifferences);
        else if (one.isMember(strName))
            vDifferences.push_back({strMember, JsonText(one[strName]), {}, bPart ? Hint(strName, other) : ""});
        else
            vDifferences.push_back({strMember, {}, JsonText(other[strName]), {}});
    }
}

}  // namespace

std::vector<Difference> Differences(const Json::Value& one, const Json::Value& other, bool bPart)
{
    std::vector<Difference> vDifferences;
    Compare("", one, other, bPart, vDifferences);
    return vDifferences;
}

Json::Value PartLike(const Json::Value& value, const Json::Value& part)
{
    if (value.isArray() && part.isArray() && value.size() == part.size()) {
        Json::Value list(Json::arrayValue);
        for (Json::ArrayIndex i = 0; i < value.size(); ++i) list.append(PartLike(value[i], part[i]));
        return list;
    }
    if (!value.isObject() || !part.isObject()) return value;
    Json::Value object(Json::objectValue);
    for (const std::string& strName : part.getMemberNames())
        if (value.isMember(strName)) object[strName] = PartLike(value[strName], part[strName]);
    return object;
}

std::string DifferenceText(const Difference& stDifference, const char* szOne, const char* szOther)
{
    const auto Value = [](const std::string& strJson) { return strJson.empty() ? "nothing" : Shown(strJson); };
    return Shown(stDifference.strPath) + ": " + szOne + ' ' + Value(stDifference.strOne) + ", " + szOther + ' ' +
           Value(stDifference.strOther) + (stDifference.strHint.empty() ? "" : "; ") + stDifference.strHint;
}
