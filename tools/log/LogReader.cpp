// From bytes to lines, and from lines to records.
#include "log/LogReader.h"

#include <algorithm>

#include "log/CallDigest.h"
#include "log/LogReply.h"
#include "reading/Input.h"
#include "session/LogForm.h"

namespace
{

constexpr std::size_t kLongestText = 1 << 16;   // bytes of a line and of a record; more is dropped
constexpr std::size_t kLongestPiece = 1 << 13;  // the same of a piece, however it is escaped and indented
constexpr std::size_t kLongestHeld = kPieceBytes + 64;
constexpr std::size_t kMostStreams = 32;

// The files whose lines are recognised without a tag.
constexpr std::string_view kFiles[] = {"CAService",     "CAParseJson",      "CASystemActionMap", "CAUtil",
                                       "CADataHandler", "CADataSortFilter", "CAImageSizeTable",  "parlo-api"};

// Messages that end in a text of the reply or the set.
constexpr std::string_view kOpenTexts[] = {"strAction = ",  "szAction[",          "domain[",      "strSearchKeywords:",
                                           "m_strAppName:", "strActionIntent = ", "premiumflag:", "errCode:"};

// What loggers write in place of lines that they drop.
constexpr std::string_view kDropped[] = {"uppressed ",    "messages suppressed", "rate-limit", "message repeated ",
                                         "messages lost", " identical ",         "log lost"};

template <std::size_t N>
bool IsOneOf(std::string_view szText, const std::string_view (&words)[N])
{
    return std::find(std::begin(words), std::end(words), szText) != std::end(words);
}

bool Begins(std::string_view szText, std::string_view szStart)
{
    return szText.substr(0, szStart.size()) == szStart;
}

void AppendBounded(std::string& strText, std::string_view szMore)
{
    strText += szMore.substr(0, kLongestText - std::min(strText.size(), kLongestText));
}

bool IsClosed(std::string_view szText)
{
    szText = szText.substr(0, szText.find_last_not_of('\r') + 1);
    return CutShownColour(szText);
}

bool SaysDropped(std::string_view szLine)
{
    const auto Says = [szLine](std::string_view szWords) { return szLine.find(szWords) != szLine.npos; };
    return std::any_of(std::begin(kDropped), std::end(kDropped), Says);
}

// "E ParloAPI: " at the start of a line: nothing but the substitute writes that.
bool IsSubstitutes(const LogPrefix& stPrefix, std::string_view szRaw)
{
    const std::size_t nTag = szRaw.find("ParloAPI");
    return !stPrefix.strPriority.empty() && stPrefix.strTime.empty() && stPrefix.strProcess.empty() && nTag > 0 &&
           nTag < szRaw.size() && szRaw[nTag - 1] == ' ';
}

// How many brackets it opens and does not close.
std::ptrdiff_t Brackets(std::string_view szText)
{
    return std::count(szText.begin(), szText.end(), '[') - std::count(szText.begin(), szText.end(), ']');
}

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
        const std::string_view szPart = szBytes.substr(0, nEnd);
        if (nEnd == std::string_view::npos) return AppendBounded(strPart, szPart);
        szBytes.remove_prefix(nEnd + 1);
        if (strPart.empty()) {
            TakeLine(szPart.substr(0, kLongestText));
            continue;
        }
        AppendBounded(strPart, szPart);
        TakeLine(strPart);
        strPart.clear();
    }
}

void CLogReader::EndFile()
{
    if (!m_stFile.strPart.empty()) TakeLine(m_stFile.strPart);
    m_stFile.strPart.clear();
}

void CLogReader::End()
{
    while (!m_mapStreams.empty()) Settle(m_mapStreams.extract(m_mapStreams.begin()));
}

void CLogReader::Pause()
{
    for (auto& [key, stStream] : m_mapStreams)
        if (stStream.vHeld.empty() && !Lacks(stStream)) Finish(stStream);
}

void CLogReader::TakeLine(std::string_view szLine)
{
    ++m_stFile.nLine;
    if (m_stFile.nLine == 1 && Begins(szLine, kByteOrderMark)) szLine.remove_prefix(kByteOrderMark.size());
    if (IsTwice(szLine)) return;
    Classify(Plain(szLine));
    if (m_stFile.bAlone) return;
    const bool bMore = m_pLast != nullptr && (!m_pLast->vHeld.empty() || GoesOn(*m_pLast, m_stLine));
    if (m_stLine.eSort != Sort::RECORD && !bMore && SaysDropped(m_stLine.strRaw)) m_notice(m_stLine.strRaw);
    Assign(m_stLine);
}

// Hands the line to the stream that it belongs to. Where a log shows further lines as they are, even one with another
// process's prefix may be of the piece before it.
void CLogReader::Assign(const Line& stLine)
{
    const bool bRaw = m_pLast != nullptr && m_pLast->eStyle == Style::RAW && !stLine.bAlone;
    const bool bInside = bRaw && (!m_pLast->vHeld.empty() || Lacks(*m_pLast));
    const bool bChanged = bRaw && stLine.stPrefix.nForm != m_pLast->stRecord.stPrefix.nForm;
    if (bChanged && m_pLast->vHeld.empty() && MayLack(*m_pLast))
        return Append(*m_pLast, stLine);  // no log changes its form in the middle of a piece
    if (stLine.bTagged && !bInside) m_pLast = &StreamOf(stLine.stPrefix);
    if (m_pLast == nullptr) return;
    Put(*m_pLast, stLine);
    if (stLine.eSort == Sort::OTHER && m_pLast != nullptr && m_pLast->vHeld.empty()) m_pLast = nullptr;
}

// Whether the line is the second of two copies, in a log that has each line twice. A step of a call is never logged
// twice in a row: that tells such a log from one with equal lines.
bool CLogReader::IsTwice(std::string_view szLine)
{
    File& stFile = m_stFile;
    const bool bSame = stFile.nLine > 1 && szLine == stFile.strBefore;
    const bool bRecord = m_stLine.eSort == Sort::RECORD && m_stLine.bTagged;
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
    return szLine;
}

// Fills m_stLine.
void CLogReader::Classify(std::string_view szLine)
{
    Line& stLine = m_stLine;
    const bool bAsked = m_pLast != nullptr && m_pLast->bPending && !m_pLast->bClosed &&
                        (m_pLast->eStyle == Style::UNKNOWN || m_pLast->eStyle == Style::RAW);
    stLine.nLine = m_stFile.nLine;
    stLine.strRaw = szLine;
    const LineKind eKind = m_stFile.prefixes.Recognise(szLine, bAsked, stLine.stPrefix, stLine.strMessage);
    const bool bOurs = eKind == LineKind::OURS;
    m_stFile.bTags = m_stFile.bTags || bOurs;
    stLine.bAlone = std::exchange(m_stFile.bAlone, bOurs && m_stFile.prefixes.IsAlone()) && !m_stFile.bAlone;
    if (m_stFile.bAlone) m_stFile.stAlone = stLine.stPrefix;
    if (stLine.bAlone) stLine.stPrefix = m_stFile.stAlone;
    if (eKind == LineKind::UNKNOWN && !stLine.bAlone) stLine.stPrefix = LogPrefix();
    if (stLine.bAlone || (!bOurs && eKind != LineKind::UNTAGGED)) stLine.strMessage = szLine;

    if (bOurs || szLine.find(kTag) != szLine.npos) ++m_nTagged;

    LogForm stForm;
    const bool bForm = ParseLogForm(stLine.strMessage, stForm);
    const bool bFile = bForm && !m_stFile.bTags && IsOneOf(stForm.szFile, kFiles);
    stLine.bTagged = bOurs || stLine.bAlone || bFile;
    if (eKind == LineKind::UNTAGGED && !m_stFile.bTags && FindStream(stLine.stPrefix) != m_mapStreams.end())
        stLine.bTagged = true;
    stLine.eSort = bForm && stLine.bTagged ? Sort::RECORD : Sort::MORE;
    if (eKind == LineKind::FOREIGN && !stLine.bTagged) stLine.eSort = Sort::OTHER;
    if (eKind == LineKind::UNTAGGED && !stLine.bTagged) stLine.eSort = Sort::OTHER;
}

CLogReader::Streams::iterator CLogReader::FindStream(const LogPrefix& stPrefix)
{
    return m_mapStreams.find({stPrefix.strProcess, stPrefix.strThread});
}

CLogReader::Stream& CLogReader::StreamOf(const LogPrefix& stPrefix)
{
    while (FindStream(stPrefix) == m_mapStreams.end() && m_mapStreams.size() >= kMostStreams) {
        const auto Older = [](const auto& a, const auto& b) { return a.second.nUsed < b.second.nUsed; };
        const auto oldest = std::min_element(m_mapStreams.begin(), m_mapStreams.end(), Older);
        Settle(m_mapStreams.extract(oldest));
    }
    Stream& stStream = m_mapStreams[{stPrefix.strProcess, stPrefix.strThread}];
    stStream.nUsed = ++m_nTime;
    return stStream;
}

void CLogReader::Put(Stream& stStream, const Line& stLine)
{
    if (!stStream.vHeld.empty()) return PutBehindHeld(stStream, stLine);
    if (stLine.eSort != Sort::MORE && !stLine.bAlone && Lacks(stStream)) return Hold(stStream, stLine);
    if (stLine.eSort == Sort::RECORD) {
        Finish(stStream);
        Begin(stStream, stLine);
    } else if (stLine.eSort == Sort::MORE && GoesOn(stStream, stLine)) {
        Append(stStream, stLine);
    } else if (stLine.bTagged) {
        ++m_nStrays;
    }
}

// What is held is the pending record's where it makes up its length and another record follows; so is what stands
// between lines of other programs.
void CLogReader::PutBehindHeld(Stream& stStream, const Line& stLine)
{
    const bool bOthers = stStream.vHeld.front().eSort == Sort::OTHER;
    if (stLine.eSort != Sort::MORE && Holds(stStream, true)) {
        Take(stStream, true);
    } else if (bOthers && Holds(stStream, false)) {
        Take(stStream, false);
    } else if (stStream.nHeld < kLongestHeld) {
        return Hold(stStream, stLine);
    } else {
        Release(stStream);
    }
    Assign(stLine);
}

void CLogReader::Hold(Stream& stStream, const Line& stLine)
{
    stStream.nHeld += Content(stStream, stLine).size() + 1;
    stStream.vHeld.push_back(stLine);
}

// Whether the pending record has its length with all that is held, or without the lines of other programs.
bool CLogReader::Holds(const Stream& stStream, bool bAll)
{
    std::size_t nLength = stStream.stRecord.strText.size() - stStream.nMessage;
    std::string_view szLast;
    for (const Line& stLine : stStream.vHeld) {
        if (!bAll && stLine.eSort == Sort::RECORD) return false;
        if (!bAll && stLine.eSort == Sort::OTHER) continue;
        szLast = Content(stStream, stLine);
        nLength += 1 + szLast.size();
    }
    const std::size_t nShown = szLast.size();
    const bool bColour = CutShownColour(szLast);
    return bColour == stStream.bColours && IsLength(stStream, nLength - (nShown - szLast.size()));
}

void CLogReader::Take(Stream& stStream, bool bAll)
{
    stStream.nHeld = 0;
    for (const Line& stLine : std::exchange(stStream.vHeld, {}))
        if (bAll || stLine.eSort == Sort::MORE) Append(stStream, stLine);
}

void CLogReader::Release(Stream& stStream)
{
    Finish(stStream);
    stStream.nHeld = 0;
    m_pLast = nullptr;
    for (const Line& stLine : std::exchange(stStream.vHeld, {})) Assign(stLine);
}

void CLogReader::Begin(Stream& stStream, const Line& stLine)
{
    LogRecord& stRecord = stStream.stRecord;
    stRecord.pFile = m_stFile.pName;
    stRecord.nLine = stLine.nLine;
    stRecord.stPrefix = stLine.stPrefix;
    stRecord.strText = stLine.strMessage;
    stRecord.bSubstitute = IsSubstitutes(stLine.stPrefix, stLine.strRaw);
    stRecord.bTwice = m_stFile.bTwice;
    stStream.bPending = true;
    stStream.bClosed = IsClosed(stRecord.strText);
    if (stRecord.bSubstitute) stStream.eStyle = Style::ONE_LINE;
    stStream.bAlone = stLine.bAlone;
    if (stLine.bAlone) stStream.eStyle = Style::RAW;

    LogForm stForm;
    if (!ParseLogForm(stRecord.strText, stForm)) return;
    const std::string_view szMessage = stForm.szMessage;
    const auto IsBegin = [szMessage](std::string_view szStart) { return Begins(szMessage, szStart); };
    stStream.nMessage = stRecord.strText.size() - szMessage.size();
    stStream.bOpenText = std::any_of(std::begin(kOpenTexts), std::end(kOpenTexts), IsBegin);
    stStream.nBrackets = Brackets(szMessage);
    std::size_t nSize = 0;
    stStream.eDump = DumpLineOf(stForm, nSize);
    if (stStream.eDump == DumpLine::BAR) stStream.nSize.reset();
    if (stStream.eDump != DumpLine::SIZE) return;
    stStream.nSize = nSize;
    stStream.nPieces = 0;
    const std::string_view szBehind = szMessage.substr(szMessage.find(')') + 1);
    // The message ends in a line break: where the log shows that in the same line, it does so with every record.
    if (!szBehind.empty() && ColourLength(szBehind) == 0) stStream.eStyle = Style::ONE_LINE;
}

void CLogReader::Append(Stream& stStream, const Line& stLine)
{
    if (stStream.eStyle == Style::UNKNOWN) stStream.eStyle = stLine.bTagged ? Style::PREFIXED : Style::RAW;
    const std::string& strContent = Content(stStream, stLine);
    AppendBounded(stStream.stRecord.strText, "\n");
    AppendBounded(stStream.stRecord.strText, strContent);
    stStream.nBrackets += Brackets(strContent);
    stStream.bClosed = IsClosed(strContent);
}

void CLogReader::Finish(Stream& stStream)
{
    if (!std::exchange(stStream.bPending, false)) return;
    LogRecord& stRecord = stStream.stRecord;
    stStream.bColours = stStream.bColours || stStream.bClosed;
    stRecord.bTorn = stStream.bColours && !stStream.bClosed;
    if (stStream.eDump == DumpLine::PIECE)
        ++stStream.nPieces;
    else if (stStream.bAlone && stRecord.strText.back() == '\n')
        stRecord.strText.pop_back();  // the empty line behind each message
    m_sink(stRecord);
}

// Nothing more comes: hands over what the stream has.
void CLogReader::Settle(Streams::node_type node)
{
    Stream& stStream = node.mapped();
    if (m_pLast == &stStream) m_pLast = nullptr;
    while (!stStream.vHeld.empty())
        if (Holds(stStream, true))
            Take(stStream, true);
        else
            Release(stStream);
    Finish(stStream);
}

bool CLogReader::GoesOn(const Stream& stStream, const Line& stLine)
{
    const LogRecord& stRecord = stStream.stRecord;
    const std::string_view szText = stRecord.strText;
    if (!stStream.bPending || stStream.bClosed || stStream.eStyle == Style::ONE_LINE) return false;
    if (!stLine.bTagged && stStream.eStyle == Style::PREFIXED) return false;
    if (stLine.bTagged && stLine.stPrefix.strPriority != stRecord.stPrefix.strPriority) return false;
    if (stStream.eDump == DumpLine::PIECE) return szText.size() < kLongestPiece;
    if (stStream.eDump == DumpLine::SIZE) return szText.find('\n') == szText.npos;
    return szText.size() < kLongestText && (stStream.bColours || stStream.bOpenText || stStream.nBrackets > 0);
}

// Whether a piece that is awaited next may have so many bytes.
bool CLogReader::IsLength(const Stream& stStream, std::size_t nLength)
{
    const std::size_t nOffset = stStream.nPieces * kPieceBytes;
    const std::size_t nLeft = nOffset < *stStream.nSize ? *stStream.nSize - nOffset : 0;
    return nLength == std::min(nLeft, kPieceBytes) || nLength == *stStream.nSize % kPieceBytes;
}

// Whether the pending record is a piece that still lacks bytes.
bool CLogReader::Lacks(const Stream& stStream)
{
    const std::size_t nLength = stStream.stRecord.strText.size() - stStream.nMessage;
    return MayLack(stStream) && stStream.nSize && !IsLength(stStream, nLength);
}

bool CLogReader::MayLack(const Stream& stStream)
{
    if (!stStream.bPending || stStream.bClosed || stStream.eStyle == Style::ONE_LINE) return false;
    const std::size_t nLength = stStream.stRecord.strText.size() - stStream.nMessage;
    return stStream.eDump == DumpLine::PIECE && nLength < std::min(stStream.nSize.value_or(kPieceBytes), kPieceBytes);
}

// What a line that follows adds to the record.
const std::string& CLogReader::Content(const Stream& stStream, const Line& stLine)
{
    return stStream.eStyle == Style::RAW ? stLine.strRaw : stLine.strMessage;
}
