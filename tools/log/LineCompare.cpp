// Finds the set's lines among this library's, in order.
#include "log/LineCompare.h"

#include <algorithm>
#include <string_view>

#include "session/LogForm.h"

namespace
{

constexpr int kErrorPriority = 6;
constexpr std::size_t kCutLine = 500;    // bytes; a set's log may cut lines that are longer
constexpr std::size_t kKeptLine = 1900;  // bytes; more than that may be cut here

// What the television answers, not the library: lines of these functions, and of others those that begin so.
constexpr std::string_view kAnswering[] = {"GetCountry", "GetVCSettingLanguage"};
constexpr std::string_view kAnswer = "GetData return:";

// Readers take blanks and colours off the end of a line.
std::string_view Trimmed(std::string_view szText)
{
    szText = szText.substr(0, szText.find_last_not_of("\r\n") + 1);
    CutShownColour(szText);
    return szText.substr(0, szText.find_last_not_of(" \t\r\n") + 1);
}

std::string WithoutBlanks(std::string_view szText)
{
    std::string strText(szText);
    const auto IsBlank = [](char c) { return std::string_view(" \t\r\n").find(c) != std::string_view::npos; };
    strText.erase(std::remove_if(strText.begin(), strText.end(), IsBlank), strText.end());
    return strText;
}

// Whether the lines of a message that has several stand in `szHere`, whatever blanks a log's reader has put between
// them and whichever it has lost.
bool HasLines(std::string_view szHere, std::string_view szSet)
{
    if (szSet.find('\n') == szSet.npos && szHere.find('\n') == szHere.npos) return false;
    const std::string strHere = WithoutBlanks(szHere);
    std::size_t nFound = 0;
    for (std::size_t nStart = 0; nStart <= szSet.size() && nFound != strHere.npos;) {
        const std::size_t nEnd = std::min(szSet.find('\n', nStart), szSet.size());
        const std::string strLine = WithoutBlanks(szSet.substr(nStart, nEnd - nStart));
        const std::size_t nLine = strHere.find(strLine, nFound);
        nFound = nLine == strHere.npos ? nLine : nLine + strLine.size();
        nStart = nEnd + 1;
    }
    return nFound != strHere.npos || szHere.size() >= kKeptLine;
}

bool IsSameMessage(std::string_view szSet, std::string_view szHere)
{
    if (Begins(szSet, kAnswer) && Begins(szHere, kAnswer)) return true;
    szSet = Trimmed(szSet);
    szHere = Trimmed(szHere);
    if (szSet.size() >= kCutLine && szSet.size() < szHere.size()) return Begins(szHere, szSet);
    if (!Begins(szSet, szHere)) return HasLines(szHere, szSet);
    // Behind the message there may be lines that only seem to belong to it.
    const std::string_view szBehind = szSet.substr(szHere.size());
    return szBehind.empty() || szHere.size() >= kKeptLine || szBehind.front() == '\n' || ColourLength(szBehind) > 0;
}

bool IsSameLine(const LogLine& stSet, const LogLine& stHere)
{
    const std::string_view szSet = stSet.strLine;
    const std::string_view szHere = stHere.strLine;
    return szSet.substr(0, szSet.find('(')) == szHere.substr(0, szHere.find('(')) &&
           IsSameMessage(stSet.strMessage, stHere.strMessage);
}

}  // namespace

bool IsAnswer(const LogLine& stLine)
{
    return IsOneOf(stLine.strFunction, kAnswering);
}

void CLineCompare::Missing::Add(const Missing& stMore)
{
    if (nCount == 0) strFirst = stMore.strFirst;
    nCount += stMore.nCount;
}

void CLineCompare::Here(const LogLine& stLine)
{
    if (IsAnswer(stLine)) return;
    const bool bDebug = stLine.nPriority < kErrorPriority;
    if (m_nNext == m_vSet.size() || !IsSameLine(m_vSet[m_nNext], stLine)) {
        if (m_strBehind.empty()) m_strBehind = stLine.strLine;
        (bDebug ? m_stDebugBehind : m_stErrorBehind).Add({1, stLine.strLine});
        return;
    }
    ++m_nNext;
    m_bDebug = m_bDebug || bDebug;
    m_stError.Add(m_stErrorBehind);
    m_stDebug.Add(m_stDebugBehind);
    m_stErrorBehind = m_stDebugBehind = Missing();
    m_strBehind.clear();
}

Comparison CLineCompare::Result() const
{
    Comparison stResult;
    if (m_nNext < m_vSet.size()) {
        stResult.eResult = Comparison::Result::DIFFERS;
        stResult.strSet = m_vSet[m_nNext].strLine;
        stResult.strHere = m_strBehind;
        return stResult;
    }
    Missing stMissing = m_stError;
    if (m_bDebug) stMissing.Add(m_stDebug);
    if (!m_bCut) stMissing.Add(m_stErrorBehind);
    if (!m_bCut && m_bDebug) stMissing.Add(m_stDebugBehind);
    stResult.nMissing = stMissing.nCount;
    stResult.strHere = stMissing.strFirst;
    stResult.eResult = stMissing.nCount == 0 ? Comparison::Result::SAME : Comparison::Result::MISSING;
    return stResult;
}
