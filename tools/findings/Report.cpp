// Places of findings.
#include "findings/Report.h"

#include <algorithm>
#include <map>
#include <utility>

#include "text/Text.h"

std::string PointerStep(std::string_view szKey)
{
    std::string strStep = "/";
    for (const char c : szKey) {
        if (c == '~')
            strStep += "~0";
        else if (c == '/')
            strStep += "~1";
        else
            strStep += c;
    }
    return strStep;
}

Node Node::Member(std::string_view szKey) const
{
    const Json::Value* pValue = value.isObject() ? value.find(szKey.data(), szKey.data() + szKey.size()) : nullptr;
    return {pValue == nullptr ? Json::Value::nullSingleton() : *pValue, strPointer + PointerStep(szKey)};
}

Node Node::Element(Json::ArrayIndex n) const
{
    return {value.isArray() ? value[n] : Json::Value::nullSingleton(), strPointer + '/' + std::to_string(n)};
}

std::string Node::Text() const
{
    const char* pBegin = nullptr;
    const char* pEnd = nullptr;
    return value.getString(&pBegin, &pEnd) ? std::string(pBegin, pEnd) : std::string();
}

int Node::Number() const
{
    return !value.isString() && value.isConvertibleTo(Json::intValue) ? value.asInt() : 0;
}

void CReport::AtKey(const Node& object, std::string_view szKey, Remark stRemark)
{
    At(m_places.Key(SpanOf(object.value).nStart, szKey), object.strPointer + PointerStep(szKey), std::move(stRemark));
}

void CReport::AtValue(const Node& node, Remark stRemark)
{
    stRemark.strText = Outcome(node, stRemark.strText);
    At(SpanOf(node.value), node.strPointer, std::move(stRemark));
}

void CReport::At(Span stSpan, const std::string& strPointer, Remark stRemark)
{
    constexpr std::size_t kMostFindings = 10000;
    if (stRemark.eSeverity == Severity::ERROR) Doubt(strPointer);
    if (m_vFindings.size() == kMostFindings)
        stRemark = {Severity::NOTE, "too-many", "there are more findings, which are not shown"};
    if (m_vFindings.size() > kMostFindings) return;
    m_vFindings.push_back({stRemark.eSeverity, stRemark.szCode, strPointer, stSpan.nStart, stSpan.nLength, 1, 1,
                           std::move(stRemark.strText), std::move(stRemark.strSuggestion), stRemark.nOther});
}

Remark NoEffect(const std::string& strWhat, const std::string& strWhy, const char* szCode)
{
    return {Severity::WARNING, szCode, strWhat + " has no effect: " + strWhy};
}

void CReport::KeyHasNoEffect(const Node& object, std::string_view szKey, const std::string& strWhy)
{
    if (object.Has(szKey) && !IsDoubted(object.Member(szKey))) AtKey(object, szKey, NoEffect(Quoted(szKey), strWhy));
}

bool CReport::IsDoubted(const Node& node) const
{
    if (m_setDoubted.count(node.strPointer) > 0) return true;
    return node.value.isNull() && m_setElsewhere.count(node.strPointer.substr(node.strPointer.rfind('/') + 1)) > 0;
}

bool CReport::IsDoubtedWithin(const Node& node) const
{
    const std::string strBelow = node.strPointer + '/';
    const auto itBelow = m_setDoubted.lower_bound(strBelow);
    return IsDoubted(node) || (itBelow != m_setDoubted.end() && itBelow->compare(0, strBelow.size(), strBelow) == 0);
}

void CReport::AtMissing(const Node& object, std::string_view szKey, const char* szCode, const std::string& strObject,
                        const std::string& strOutcome)
{
    const Node member = object.Member(szKey);
    const bool bEmpty = !member.value.isNull();
    if (!member.Text().empty() || IsDoubted(member)) return;
    AtValue(bEmpty ? member : object,
            {Severity::ERROR, szCode,
             (bEmpty ? Quoted(szKey) + " is empty: " : strObject + " has no " + Quoted(szKey) + ": ") + strOutcome});
}

std::string CReport::Outcome(const Node& node, const std::string& strText) const
{
    const std::string strPointer = node.strPointer + '/';
    const auto Holds = [&](const std::string& strPart) { return strPointer.compare(0, strPart.size(), strPart) == 0; };
    if (std::none_of(m_vForApplication.begin(), m_vForApplication.end(), Holds)) return strText;
    return strText.substr(0, strText.rfind(": ")) + ": left to the application, which reads it";
}

std::string_view CReport::Source(const Json::Value& value) const
{
    const Span stSpan = SpanOf(value);
    return m_szText.substr(std::min(stSpan.nStart, m_szText.size()), stSpan.nLength);
}

std::vector<Finding> CReport::Take()
{
    Locate(m_szText, m_vFindings);
    const bool bOneLine = m_szText.find('\n') >= m_szText.find_last_not_of(" \t\r\n") + 1;
    for (Finding& stFinding : m_vFindings) stFinding.bOneLine = bOneLine;
    return std::exchange(m_vFindings, {});
}

void Locate(std::string_view szText, std::vector<Finding>& vFindings)
{
    std::stable_sort(vFindings.begin(), vFindings.end(),
                     [](const Finding& stOne, const Finding& stOther) { return stOne.nOffset < stOther.nOffset; });
    std::multimap<std::size_t, std::pair<std::size_t*, std::size_t*>> mapPlaces;  // lines and columns by offset
    for (Finding& stFinding : vFindings) {
        mapPlaces.insert({stFinding.nOffset, {&stFinding.nLine, &stFinding.nColumn}});
        if (stFinding.nOther != Finding::kNoOther)
            mapPlaces.insert({stFinding.nOther, {&stFinding.nOtherLine, &stFinding.nOtherColumn}});
    }
    std::size_t nAt = 0;
    std::size_t nLine = 1;
    std::size_t nColumn = 1;
    for (const auto& [nOffset, place] : mapPlaces) {
        for (; nAt < std::min(nOffset, szText.size()); ++nAt) {
            const bool bContinues = (static_cast<unsigned char>(szText[nAt]) & 0xC0U) == 0x80U;
            if (szText[nAt] == '\n') ++nLine;
            nColumn = szText[nAt] == '\n' ? 1 : nColumn + (bContinues && nColumn > 1 ? 0 : 1);
        }
        *place.first = nLine;
        *place.second = nColumn;
    }
}
