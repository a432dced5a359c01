// Reading of lines.
#include "log/LogReader.h"

#include <algorithm>

#include "log/CallDigest.h"
#include "reading/Input.h"
#include "session/LogForm.h"

namespace
{

constexpr std::size_t kLongestLine = 1 << 16;  // bytes; more is dropped

// The files whose lines are recognised without a tag.
constexpr std::string_view kFiles[] = {"CAService",     "CAParseJson",      "CASystemActionMap", "CAUtil",
                                       "CADataHandler", "CADataSortFilter", "CAImageSizeTable",  "parlo-api"};

}  // namespace

void CLogReader::BeginFile(const std::string& strFile)
{
    m_stFile = File();
    m_stFile.pName = std::make_shared<const std::string>(strFile);
}

void CLogReader::Feed(std::string_view szBytes)
{
    std::string& strPart = m_stFile.strPart;
    while (!szBytes.empty()) {
        const std::size_t nEnd = szBytes.find('\n');
        strPart += szBytes.substr(0, std::min(nEnd, kLongestLine - strPart.size()));
        if (nEnd == szBytes.npos) return;
        szBytes.remove_prefix(nEnd + 1);
        TakeLine(strPart);
        strPart.clear();
    }
}

void CLogReader::EndFile()
{
    if (!m_stFile.strPart.empty()) TakeLine(m_stFile.strPart);
}

void CLogReader::TakeLine(std::string_view szLine)
{
    if (++m_stFile.nLine == 1 && Begins(szLine, kByteOrderMark)) szLine.remove_prefix(kByteOrderMark.size());
    if (IsTwice(szLine)) return;
    Classify(Plain(szLine));
    if (!m_stFile.bAlone) m_bAsked = m_sink(m_stLine);
}

// Whether the line is the second of two copies, in a log that has each line twice. A step of a call is never logged
// twice in a row: that tells such a log from one with equal lines.
bool CLogReader::IsTwice(std::string_view szLine)
{
    File& stFile = m_stFile;
    const bool bSame = stFile.nLine > 1 && szLine == stFile.strBefore;
    const bool bRecord = m_stLine.eSort == LogTextLine::Sort::RECORD;
    if (bSame && bRecord && !stFile.bTwice) {
        LogForm stForm;
        stFile.bTwice = ParseLogForm(m_stLine.strMessage, stForm) && IsStep(stForm.szFunction, stForm.szMessage);
    }
    if (!bSame && bRecord && !stFile.bCopy) stFile.bTwice = false;
    stFile.bCopy = bSame && stFile.bTwice && !stFile.bCopy;
    if (!bSame) stFile.strBefore = szLine;
    return stFile.bCopy;
}

// The line without what each line of the file has: carriage returns, the marks of a quotation.
std::string_view CLogReader::Plain(std::string_view szLine)
{
    const std::size_t nCarriages = szLine.size() - (szLine.find_last_not_of('\r') + 1);
    m_stFile.nCarriages = std::min(m_stFile.nCarriages, nCarriages);
    szLine.remove_suffix(m_stFile.nCarriages);
    std::string& strQuote = m_stFile.strQuote;
    if (!m_stFile.bTags)
        for (strQuote.clear(); Begins(szLine.substr(strQuote.size()), "> ");) strQuote += "> ";
    if (Begins(szLine, strQuote)) szLine.remove_prefix(strQuote.size());
    constexpr std::string_view kEnd = "\033[0m";
    const bool bColoured = AnyColourLength(szLine) > 0 && ColourLength(szLine) == 0;  // by a reader, not the library
    if (bColoured && szLine.substr(szLine.size() - kEnd.size()) == kEnd) {
        szLine.remove_suffix(kEnd.size());
        szLine.remove_prefix(AnyColourLength(szLine));
    }
    return szLine;
}

// Fills m_stLine.
void CLogReader::Classify(std::string_view szLine)
{
    LogTextLine& stLine = m_stLine;
    stLine.pFile = m_stFile.pName;
    stLine.nLine = m_stFile.nLine;
    stLine.bTwice = m_stFile.bTwice;
    stLine.strRaw = szLine;
    const LineKind eKind = m_stFile.prefixes.Recognise(szLine, m_bAsked, stLine.stPrefix, stLine.strMessage);
    const bool bOurs = eKind == LineKind::OURS;
    if (bOurs || szLine.find(kTag) != szLine.npos) ++m_nTagged;
    m_stFile.bTags = m_stFile.bTags || bOurs;
    stLine.bAlone = std::exchange(m_stFile.bAlone, bOurs && stLine.stPrefix.IsAlone()) && !m_stFile.bAlone;
    if (m_stFile.bAlone) m_stFile.stAlone = stLine.stPrefix;
    if (eKind == LineKind::UNKNOWN || stLine.bAlone) stLine.stPrefix = stLine.bAlone ? m_stFile.stAlone : LogPrefix();
    if (stLine.bAlone || !bOurs) stLine.strMessage = szLine;

    LogForm stForm;
    const bool bForm = ParseLogForm(stLine.strMessage, stForm);
    const bool bFile = bForm && IsOneOf(stForm.szFile, kFiles);
    stLine.bTagged = bOurs || stLine.bAlone || (!m_stFile.bTags && bFile);
    const LogPrefix& stPrefix = stLine.stPrefix;
    const bool bPriority = !stPrefix.strPriority.empty() && stPrefix.strTime.empty() && stPrefix.strProcess.empty();
    stLine.bSubstitute = bOurs && bPriority && szLine.find(" ParloAPI") + 1 == szLine.find(kTag);  // "E ParloAPI: "
    stLine.eSort = bForm && stLine.bTagged ? LogTextLine::Sort::RECORD : LogTextLine::Sort::MORE;
    if (eKind == LineKind::FOREIGN && !stLine.bTagged) stLine.eSort = LogTextLine::Sort::OTHER;
}
