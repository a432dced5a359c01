// From bytes to lines, and from lines to records.
#include "log/LogReader.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr std::size_t kLongestText = 1 << 16;  // bytes of a line and of a record; more is dropped

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Whether two prefixes are equal but for their digits.
bool HaveSameShape(std::string_view szA, std::string_view szB)
{
    const auto Same = [](char a, char b) { return a == b || (IsDigit(a) && IsDigit(b)); };
    return std::equal(szA.begin(), szA.end(), szB.begin(), szB.end(), Same);
}

void AppendBounded(std::string& strText, std::string_view szMore)
{
    strText += szMore.substr(0, kLongestText - std::min(strText.size(), kLongestText));
}

// "E ParloAPI: " at the start of a line, behind a colour if there is one: nothing but the substitute writes that.
bool IsSubstitutes(const LogPrefix& stPrefix, std::string_view szLine)
{
    const std::string_view szBefore = szLine.substr(0, szLine.find("ParloAPI"));
    return stPrefix.cPriority != '\0' && stPrefix.strTime.empty() && stPrefix.strProcess.empty() &&
           szBefore.size() >= 2 && szBefore.back() == ' ';
}

}  // namespace

void CLogReader::Feed(std::string_view szBytes)
{
    while (!szBytes.empty()) {
        const std::size_t nEnd = szBytes.find('\n');
        const std::string_view szPart = szBytes.substr(0, nEnd);
        if (nEnd == std::string_view::npos) return AppendBounded(m_strLine, szPart);
        szBytes.remove_prefix(nEnd + 1);
        if (m_strLine.empty()) {
            Line(szPart.substr(0, kLongestText));
            continue;
        }
        AppendBounded(m_strLine, szPart);
        Line(m_strLine);
        m_strLine.clear();
    }
}

void CLogReader::EndFile()
{
    if (!m_strLine.empty()) Line(m_strLine);
    Finish();
    *this = CLogReader(std::move(m_sink));
}

void CLogReader::Line(std::string_view szLine)
{
    ++m_nLine;
    LogPrefix stPrefix;
    switch (RecognisePrefix(szLine, stPrefix)) {
        case LineKind::OURS:
            m_bTags = true;
            return Begin(szLine, std::move(stPrefix));
        case LineKind::BARE:
            return m_bTags ? More(szLine) : Begin(szLine, std::move(stPrefix));
        case LineKind::TAGGED:
            if (m_bPending && HaveSameShape(m_strShape, szLine.substr(0, stPrefix.nLength)))
                return More(szLine.substr(stPrefix.nLength));
            return Finish();
        case LineKind::FOREIGN:
            return Finish();
        case LineKind::UNKNOWN:
            return More(szLine);
    }
}

void CLogReader::Begin(std::string_view szLine, LogPrefix&& stPrefix)
{
    Finish();
    if (!m_bBegun) m_bCarriage = szLine.back() == '\r';
    m_bBegun = true;
    m_bPending = true;
    m_strShape = szLine.substr(0, stPrefix.nLength);
    m_stRecord.nLine = m_nLine;
    m_stRecord.bSubstitute = IsSubstitutes(stPrefix, szLine);
    m_stRecord.stPrefix = std::move(stPrefix);
    szLine.remove_prefix(m_strShape.size());
    szLine.remove_prefix(std::min(szLine.find_first_not_of(" \t"), szLine.size()));
    m_stRecord.strText = szLine;
}

void CLogReader::More(std::string_view szLine)
{
    if (!m_bPending) return;
    AppendBounded(m_stRecord.strText, "\n");
    AppendBounded(m_stRecord.strText, szLine);
}

void CLogReader::Finish()
{
    if (!std::exchange(m_bPending, false)) return;
    m_stRecord.bCarriage = m_bCarriage;
    m_sink(m_stRecord);
}
