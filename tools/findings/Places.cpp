// The scan over a JSON text.
#include "findings/Places.h"

#include <algorithm>

namespace
{

constexpr std::string_view kBlanks = " \t\r\n";

// What the JSON library makes of a key, given with its quotes.
std::string KeyText(std::string_view szToken)
{
    const std::string_view szInner = szToken.substr(1, szToken.size() - 2);
    if (szInner.find('\\') == std::string_view::npos) return std::string(szInner);
    Json::Value key;
    const char* pBegin = nullptr;
    const char* pEnd = nullptr;
    if (!ParseJson(szToken, true, key) || !key.getString(&pBegin, &pEnd)) return std::string(szInner);
    return {pBegin, pEnd};
}

// A number with a zero too many in front, or without digits where some must be: "01", "-", "1.", "2e".
bool IsOddNumber(std::string_view szNumber)
{
    if (szNumber[0] == '-') szNumber.remove_prefix(1);
    if (szNumber.empty() || szNumber.find_first_not_of("0123456789.eE+-") != std::string_view::npos)
        return szNumber.empty();
    const bool bZero = szNumber.size() > 1 && szNumber[0] == '0' && szNumber[1] >= '0' && szNumber[1] <= '9';
    const std::size_t nPoint = szNumber.find('.');
    const bool bPoint = nPoint != std::string_view::npos && szNumber.find_first_of("0123456789", nPoint) != nPoint + 1;
    return bZero || bPoint || szNumber.find_last_of("0123456789") != szNumber.size() - 1;
}

}  // namespace

int SurrogateHalf(std::string_view szText)
{
    if (szText.substr(0, 2) != "\\u" || szText.size() < 6 || (szText[2] != 'd' && szText[2] != 'D')) return 0;
    return szText[3] < '8' ? 0 : std::string_view("89abAB").find(szText[3]) != std::string_view::npos ? 1 : 2;
}

CPlaces::CPlaces(std::string_view szText) : m_szText(szText)
{
    while (m_nAt < m_szText.size() && m_stRest.nLength == 0) Token();
}

void CPlaces::Token()
{
    const char c = m_szText[m_nAt];
    if (kBlanks.find(c) != std::string_view::npos)
        ++m_nAt;
    else if (c == '/' && m_nAt + 1 < m_szText.size())
        Comment();
    else if (m_bDone)
        m_stRest = {m_nAt, m_szText.find_last_not_of(kBlanks) + 1 - m_nAt};
    else if (c == '"')
        String();
    else if (c == '{' || c == '[' || c == '}' || c == ']')
        Bracket(c);
    else if (c == ',' || c == ':')
        Separator(c);
    else
        Scalar();
}

void CPlaces::Comment()
{
    const std::size_t nStart = m_nAt;
    const char c = m_szText[m_nAt + 1];
    if (c != '/' && c != '*') {
        ++m_nAt;
        return;
    }
    const std::size_t nEnd =
        c == '/' ? m_szText.find_first_of("\r\n", m_nAt) : m_szText.find("*/", std::min(m_nAt + 2, m_szText.size()));
    m_nAt = nEnd == std::string_view::npos ? m_szText.size() : nEnd + (c == '/' ? 0 : 2);
    m_vComments.push_back({nStart, m_nAt - nStart});
}

void CPlaces::String()
{
    const std::size_t nStart = m_nAt++;
    bool bControl = false;
    while (m_nAt < m_szText.size() && m_szText[m_nAt] != '"') {
        const int nHalf = SurrogateHalf(m_szText.substr(m_nAt));
        const bool bPair = nHalf == 1 && SurrogateHalf(m_szText.substr(m_nAt + 6)) == 2;
        if (nHalf != 0 && !bPair) m_vLoose.push_back({m_nAt, 6});
        bControl = bControl || static_cast<unsigned char>(m_szText[m_nAt]) < 0x20;
        m_nAt += bPair ? 12 : m_szText[m_nAt] == '\\' ? 2 : 1;
    }
    m_nAt = std::min(m_nAt + 1, m_szText.size());
    if (bControl) m_vLoose.push_back({nStart, m_nAt - nStart});
    if (m_bKey && m_nAt - nStart >= 2) {
        const Span stSpan{nStart, m_nAt - nStart};
        m_mapKeys[m_vOpen.back()].push_back({stSpan, KeyText(m_szText.substr(nStart, stSpan.nLength))});
    }
    m_bKey = false;
    m_bDone = m_vOpen.empty();
}

void CPlaces::Bracket(char c)
{
    if (c == '{' || c == '[') {
        CountValue();
        m_vOpen.push_back(m_nAt);
        if (m_vOpen.size() > kDeepest) m_nTooDeep = std::min(m_nTooDeep, m_nAt);
    } else if (!m_vOpen.empty()) {
        m_vOpen.pop_back();
    }
    m_bKey = c == '{';
    m_bDone = m_vOpen.empty();
    ++m_nAt;
}

void CPlaces::CountValue()
{
    if (++m_nValues > kMostValues) m_nTooMany = std::min(m_nTooMany, m_nAt);
}

void CPlaces::Separator(char c)
{
    if (c == ',') CountValue();
    m_bKey = c == ',' && !m_vOpen.empty() && m_szText[m_vOpen.back()] == '{';
    ++m_nAt;
}

void CPlaces::Scalar()
{
    const std::size_t nStart = m_nAt;
    m_nAt = std::min(m_szText.find_first_of(" \t\r\n,:[]{}\"/", m_nAt + 1), m_szText.size());
    if (IsOddNumber(m_szText.substr(nStart, m_nAt - nStart))) m_vLoose.push_back({nStart, m_nAt - nStart});
    m_bDone = m_vOpen.empty();
}

const std::vector<KeyPlace>& CPlaces::Keys(std::size_t nObject) const
{
    static const std::vector<KeyPlace> vNone;
    const auto it = m_mapKeys.find(nObject);
    return it == m_mapKeys.end() ? vNone : it->second;
}

Span CPlaces::Key(std::size_t nObject, std::string_view szKey) const
{
    const std::vector<KeyPlace>& vKeys = Keys(nObject);
    const auto it = std::find_if(vKeys.rbegin(), vKeys.rend(), [&](const KeyPlace& st) { return st.strKey == szKey; });
    return it == vKeys.rend() ? Span{nObject, 1} : it->stSpan;
}
