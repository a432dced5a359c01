// From lines to records, and from those to calls.
#include "log/LogCalls.h"

#include <cstdlib>

namespace
{

constexpr double kLongestCall = 5;            // seconds between two lines of one call where some are lost
constexpr double kLongestStall = 60;          // the same where none seems to be
constexpr std::size_t kMostStreams = 32;      // threads whose calls are open at once; each may hold a reply
constexpr std::size_t kLongestHeld = 564;     // bytes behind which a piece is longer than any
constexpr std::size_t kMostKept = 12u << 20;  // bytes of the lines of all open calls
constexpr std::size_t kLineOverhead = 160;    // what a line takes beside its texts
constexpr std::size_t kLongestKept = 2000;    // bytes of a line, as much as the library's own lines are kept of

constexpr std::size_t kLongestText = 1 << 16;   // bytes of a record; more is dropped
constexpr std::size_t kLongestPiece = 1 << 13;  // the same of a piece, however it is escaped and indented

// Messages that end in a text of the reply or the set.
constexpr std::string_view kOpenTexts[] = {"strAction = ",  "szAction[",          "domain[",      "strSearchKeywords:",
                                           "m_strAppName:", "strActionIntent = ", "premiumflag:", "errCode:"};

constexpr std::string_view kAppMessage = "m_strAppName:";
constexpr std::string_view kWordsMessage = "strSearchKeywords:";
constexpr std::string_view kEmptyMessage = "strPreAllResult is empty()";

// What loggers write in place of lines that they drop.
constexpr std::string_view kDropped[] = {"uppressed ",    "messages suppressed", "rate-limit", "message repeated ",
                                         "messages lost", " identical ",         "log lost"};

bool IsClosed(std::string_view szText)
{
    szText = szText.substr(0, szText.find_last_not_of('\r') + 1);
    return CutShownColour(szText);
}

// How many brackets it opens and does not close.
std::ptrdiff_t Brackets(std::string_view szText)
{
    return std::count(szText.begin(), szText.end(), '[') - std::count(szText.begin(), szText.end(), ']');
}

LogLine LineOf(const LogForm& stForm, std::string strMessage)
{
    LogLine stLine;
    stLine.strFunction = stForm.szFunction;
    stLine.strLine.append(stForm.szFile).append(": ").append(stForm.szFunction);
    stLine.strLine.append("(").append(stForm.szLine).append(") > ").append(strMessage, 0, kLongestKept);
    stLine.strMessage = std::move(strMessage);
    return stLine;
}

// The seconds of a day, or of a count, that a log's time tells.
double Seconds(const std::string& strTime)
{
    const auto Number = [&strTime](std::size_t nStart) { return std::strtod(strTime.c_str() + nStart, nullptr); };
    const std::size_t nColon = strTime.find(':');
    if (nColon != strTime.npos && nColon >= 2 && nColon + 4 <= strTime.size())
        return 3600 * Number(nColon - 2) + 60 * Number(nColon + 1) + Number(nColon + 4);
    return Number(0) > 1e12 ? Number(0) / 1e6 : Number(0);  // microseconds
}

// The seconds between two times of a log. Most differ in a fraction alone.
double SecondsBetween(const std::string& strTime, const std::string& strBefore)
{
    const std::size_t nFraction = std::min(strTime.find('.'), strTime.size());
    if (strTime.compare(0, nFraction, strBefore, 0, nFraction) == 0) return 0;
    const double dSeconds = std::abs(Seconds(strTime) - Seconds(strBefore));
    return std::min(dSeconds, std::abs(24 * 3600 - dSeconds));  // midnight may be between them
}

// The action of a reply's first command, where it is plain and the command's first member; else empty.
std::string FirstAction(std::string_view szReply)
{
    constexpr std::string_view kCommands = "\"tvcontrol\"";
    constexpr std::string_view kAction = "\"action\"";
    std::size_t n = szReply.rfind(kCommands);
    n = n == szReply.npos ? n : szReply.find_first_not_of(" \t\r\n:[{", n + kCommands.size());
    if (n == szReply.npos || !Begins(szReply.substr(n), kAction)) return {};
    szReply.remove_prefix(std::min(szReply.find('"', n + kAction.size()), szReply.size() - 1) + 1);
    szReply = szReply.substr(0, szReply.find_first_of("\"\\\r\n") + 1);
    return EndsWith(szReply, "\"") ? std::string(szReply.substr(0, szReply.size() - 1)) : "";
}

// Whether the line comes long after the last one of the call, or names another first action than the call's reply has:
// then the end of that call is lost, and the beginning of the next.
bool IsOfAnother(const LogCall& call, const LogLine& stLine, const std::string& strTime)
{
    const auto IsLost = [&call, &stLine] {
        const bool bPieces = call.reply.Size() && !call.reply.IsComplete() && stLine.strFunction != "PrintRcvData";
        return bPieces || call.digest.LacksBefore(stLine);
    };
    const double dSeconds = SecondsBetween(strTime, call.strLastTime);
    if (dSeconds > kLongestCall && (dSeconds > kLongestStall || IsLost())) return true;
    std::string_view szAction = stLine.strMessage;
    for (const std::string_view szStart : {"szAction[0]:", "strAction = "})
        if (Begins(szAction, szStart)) szAction.remove_prefix(szStart.size());
    const bool bNames = szAction.size() < stLine.strMessage.size() && stLine.strFunction != "Get2ndAction";
    if (!bNames || szAction.empty()) return false;
    const std::string strFirst = FirstAction(call.reply.FirstPiece());
    if (strFirst.empty() || Begins(strFirst, szAction)) return false;
    return IsLost() || call.reply.Text().find(std::string(1, '"').append(szAction)) == std::string::npos;
}

}  // namespace

void LogStream::Begin(const LogTextLine& stLine)
{
    stFirst = stLine;
    bPending = true;
    nIndent = 0;
    bClosed = IsClosed(stLine.strMessage);
    if (stLine.bAlone) eStyle = Style::RAW;
    LogForm stForm;
    ParseLogForm(stFirst.strMessage, stForm);
    const std::string_view szText = stForm.szMessage;
    const auto IsBegin = [szText](std::string_view szStart) { return Begins(szText, szStart); };
    nText = stFirst.strMessage.size() - szText.size();
    bOpenText = std::any_of(std::begin(kOpenTexts), std::end(kOpenTexts), IsBegin);
    nBrackets = Brackets(szText);
    eDump = DumpLineOf(stForm, nSize);
    if (eDump != DumpLine::SIZE) return;
    // The message ends in a line break: where the log shows that in the same line, it does so with every record.
    const std::string_view szBehind = szText.substr(szText.find(')') + 1);
    eEscape = EscapeOf(szBehind);
    if (!szBehind.empty() && ColourLength(szBehind) == 0) eStyle = Style::ONE_LINE;
}

void LogStream::Append(const LogTextLine& stLine)
{
    if (eStyle == Style::UNKNOWN) eStyle = stLine.bTagged ? Style::PREFIXED : Style::RAW;
    const std::string& strContent = Content(stLine);
    std::string& strText = stFirst.strMessage;
    nIndent = std::min(strContent.find_first_not_of(' '), strContent.size());
    strText += '\n';
    strText.append(strContent, 0, kLongestText - std::min(strText.size(), kLongestText));
    nBrackets += Brackets(strContent);
    bClosed = IsClosed(strContent);
}

bool LogStream::GoesOn(const LogTextLine& stLine) const
{
    if (!bPending || IsOver() || eStyle == Style::ONE_LINE) return false;
    if (IsOthers(stLine) || (!stLine.bTagged && eStyle == Style::PREFIXED)) return false;
    if (eDump == DumpLine::PIECE) return Length() < kLongestPiece;
    if (eDump == DumpLine::SIZE) return stFirst.strMessage.find('\n') == std::string::npos;
    return Length() < kLongestText && (bColours || bOpenText || nBrackets > 0);
}

// Whether the pending record is a piece that may have more bytes.
bool LogStream::MayLack() const
{
    const bool bOpen = bPending && eStyle != Style::ONE_LINE && eDump == DumpLine::PIECE;
    return bOpen && Length() < (call ? call->reply.Next() : CLogReply().Next());
}

// Whether the line is the pending piece once more. Two pieces of one text over and over may be equal where the reply
// has a next one.
bool LogStream::TakeCopy(const LogTextLine& stLine)
{
    if (!stLine.bSame || !bPending || eDump != DumpLine::PIECE || stFirst.nLine + 1 != stLine.nLine) return false;
    const std::string strText = WholeMessage(std::string_view(stFirst.strMessage).substr(nText), eEscape, false);
    const bool bRepeats = (strText + strText).find(strText, 1) < strText.size();
    if (bRepeats && (!call || call->reply.Pieces() + 1 < call->reply.Wanted())) return false;
    return stFirst.bTwice = true;
}

// What a line that follows adds to the record.
const std::string& LogStream::Content(const LogTextLine& stLine) const
{
    return eStyle == Style::RAW ? stLine.strRaw : stLine.strMessage;
}

void LogStream::Hold(const LogTextLine& stLine)
{
    nHeld = (vHeld.empty() ? 0 : nHeld) + 1 + Content(stLine).size();
    vHeld.push_back(stLine);
}

// Whether the pending record is a piece's with all that is held, with its colour at the end if the log has them. Where
// prefixes have lines of their own an empty line ends each record.
bool LogStream::IsMadeUp() const
{
    const bool bEmpty = stFirst.bAlone && vHeld.size() > 1 && vHeld.back().strRaw.empty();
    std::string_view szLast = Content(vHeld[vHeld.size() - (bEmpty ? 2 : 1)]);
    const std::size_t nLength = Length() + nHeld - szLast.size() - (bEmpty ? 1 : 0);
    return CutShownColour(szLast) == bColours && call->reply.MayHave(nLength + szLast.size());
}

std::vector<std::string> LogCall::Missing() const
{
    std::vector<std::string> vMissing = digest.Missing();
    for (std::string& strMissing : reply.Missing()) vMissing.push_back(std::move(strMissing));
    return vMissing;
}

bool CLogCalls::Take(const LogTextLine& stLine)
{
    const bool bMay = m_pLast != nullptr && stLine.eSort != LogTextLine::Sort::OTHER;
    const bool bMore = bMay && (!m_pLast->vHeld.empty() || m_pLast->GoesOn(stLine));
    const auto Says = [&](std::string_view szWords) { return stLine.strRaw.find(szWords) != std::string::npos; };
    if (stLine.eSort != LogTextLine::Sort::RECORD && !bMore && stLine.strRaw.size() > kTag.size() &&
        std::any_of(std::begin(kDropped), std::end(kDropped), Says)) {
        m_strDropped = stLine.strRaw;
        for (auto& [key, stStream] : m_mapStreams)
            if (stStream.call) stStream.call->strDropped = stLine.strRaw;
    }
    Assign(stLine);
    return m_pLast != nullptr && m_pLast->MayGoOnRaw();
}

void CLogCalls::Pause()
{
    for (auto& [key, stStream] : m_mapStreams) {
        if (!stStream.vHeld.empty() || stStream.Lacks()) continue;
        Finish(stStream);
        if (stStream.call && stStream.call->digest.Has(ENDS)) Close(stStream);
    }
}

void CLogCalls::End()
{
    const auto Number = [](const auto& stream) { return stream.second.call ? stream.second.call->nNumber : SIZE_MAX; };
    const auto Before = [&](const auto& a, const auto& b) { return Number(a) < Number(b); };
    while (!m_mapStreams.empty()) Settle(std::min_element(m_mapStreams.begin(), m_mapStreams.end(), Before));
}

LogStream& CLogCalls::StreamOf(const LogPrefix& stPrefix)
{
    const auto key = std::make_pair(stPrefix.strProcess, stPrefix.strThread);
    const auto Older = [](const auto& a, const auto& b) { return a.second.nUsed < b.second.nUsed; };
    while (m_mapStreams.count(key) == 0 && m_mapStreams.size() >= kMostStreams)
        Settle(std::min_element(m_mapStreams.begin(), m_mapStreams.end(), Older));
    LogStream& stStream = m_mapStreams[key];
    stStream.nUsed = ++m_nTime;
    return stStream;
}

// Hands the line to the stream that it belongs to. Where a log shows further lines as they are, even one with another
// process's prefix may be of the piece before it, and one with a prefix of another make must be.
void CLogCalls::Assign(const LogTextLine& stLine)
{
    const bool bRaw = m_pLast != nullptr && m_pLast->eStyle == LogStream::Style::RAW && !stLine.bAlone;
    const bool bInside = bRaw && (!m_pLast->vHeld.empty() || m_pLast->Lacks());
    if (bRaw && m_pLast->vHeld.empty() && stLine.stPrefix.nForm != m_pLast->stFirst.stPrefix.nForm &&
        m_pLast->MayLack())
        return m_pLast->Append(stLine);
    if (stLine.bTagged && !bInside) m_pLast = &StreamOf(stLine.stPrefix);
    if (m_pLast == nullptr) return;
    const bool bMore = m_pLast->eStyle == LogStream::Style::UNKNOWN && stLine.eSort == LogTextLine::Sort::MORE;
    if (stLine.bTagged || bMore || m_pLast->eStyle == LogStream::Style::RAW) Put(*m_pLast, stLine);
    if (stLine.eSort == LogTextLine::Sort::OTHER && m_pLast != nullptr && m_pLast->vHeld.empty()) m_pLast = nullptr;
}

void CLogCalls::Put(LogStream& stStream, const LogTextLine& stLine)
{
    if (!stStream.vHeld.empty()) return PutBehindHeld(stStream, stLine);
    if (stStream.TakeCopy(stLine)) return;
    if (stLine.eSort != LogTextLine::Sort::MORE && !stStream.IsOthers(stLine) && stStream.Lacks())
        return stStream.Hold(stLine);
    if (stLine.eSort == LogTextLine::Sort::RECORD) {
        Finish(stStream);
        stStream.Begin(stLine);
    } else if (stLine.eSort == LogTextLine::Sort::MORE && stStream.GoesOn(stLine)) {
        stStream.Append(stLine);
    } else if (stLine.bTagged) {
        ++m_nStrays;
    }
}

// What is held is the pending record's where it makes up its length and another record follows.
void CLogCalls::PutBehindHeld(LogStream& stStream, const LogTextLine& stLine)
{
    const bool bMadeUp = stLine.eSort != LogTextLine::Sort::MORE && stStream.IsMadeUp();
    const bool bShort = stStream.Length() + stStream.nHeld < kLongestHeld;
    if (!bMadeUp && bShort && !stStream.IsOthers(stLine)) return stStream.Hold(stLine);
    if (!bMadeUp) Finish(stStream);
    m_pLast = nullptr;
    for (const LogTextLine& stHeld : std::exchange(stStream.vHeld, {})) {
        if (bMadeUp)
            stStream.Append(stHeld);
        else
            Assign(stHeld);
    }
    Assign(stLine);
}

// The record is over: its call takes it.
void CLogCalls::Finish(LogStream& stStream)
{
    if (!std::exchange(stStream.bPending, false)) return;
    stStream.bColours = stStream.bColours || stStream.bClosed;
    const bool bPiece = stStream.eDump == DumpLine::PIECE;
    std::string& strText = stStream.stFirst.strMessage;
    if (stStream.stFirst.bAlone && !bPiece && strText.back() == '\n') strText.pop_back();  // there is one behind each
    LogForm stForm;
    if (!ParseLogForm(strText, stForm)) return;
    const bool bTorn = stStream.bColours && !stStream.bClosed;
    const LogLine stLine =
        LineOf(stForm, bPiece ? std::string() : WholeMessage(stForm.szMessage, stStream.eEscape, bTorn));
    LogCall& call = CallOf(stStream, stLine);
    call.bTwice = call.bTwice || stStream.stFirst.bTwice;
    call.strLastTime = stStream.stFirst.stPrefix.strTime;
    if (bPiece) {
        // In a log of a known form whoever else writes has a prefix; an empty line may end the record.
        const bool bKnown = stStream.stFirst.stPrefix.nForm != 0 && !stStream.stFirst.bAlone;
        call.digest.ListenToPiece();
        return call.reply.Add(stForm.szMessage, stStream.eEscape, stStream.bClosed || bKnown);
    }
    call.digest.Listen(stLine);
    if (stStream.eDump == DumpLine::SIZE) call.reply.Announce(stStream.nSize, stStream.nIndent);
    if (Begins(stLine.strMessage, kAppMessage)) call.strAppName = stLine.strMessage.substr(kAppMessage.size());
    // Where the log shows lines as they are, its reader may have broken them.
    const bool bBroken = stStream.eStyle == LogStream::Style::RAW && stLine.strMessage.find('\n') != std::string::npos;
    if (!bBroken) call.stSet.Listen(stLine);
    if (!bBroken && Begins(stLine.strMessage, kWordsMessage))
        call.strUtterance = stLine.strMessage.substr(kWordsMessage.size());
    if (Begins(stLine.strMessage, kEmptyMessage)) call.strNoReply = stLine.strMessage;
    Keep(call, stLine);
}

// Hands over what the stream has; nothing more comes of it.
void CLogCalls::Settle(Streams::iterator stream)
{
    auto node = m_mapStreams.extract(stream);
    LogStream& stStream = node.mapped();
    if (m_pLast == &stStream) m_pLast = nullptr;
    while (!stStream.vHeld.empty()) {
        const bool bMadeUp = stStream.IsMadeUp();
        if (!bMadeUp) Finish(stStream);
        for (const LogTextLine& stLine : std::exchange(stStream.vHeld, {}))
            if (bMadeUp)
                stStream.Append(stLine);
            else
                Put(stStream, stLine);
    }
    Finish(stStream);
    Close(stStream);
}

// The open call that the pending record belongs to; a new one when it belongs to none.
LogCall& CLogCalls::CallOf(LogStream& stStream, const LogLine& stLine)
{
    const bool bPiece = stStream.eDump == DumpLine::PIECE;
    if (stStream.call) {
        const CCallDigest& digest = stStream.call->digest;
        const bool bBehindPieces = digest.GetStep() > CCallDigest::kPieces || stStream.call->reply.IsComplete();
        const bool bNext = bPiece ? digest.Kind() != CallKind::REPLY || bBehindPieces : digest.IsOfNext(stLine);
        if (!bNext && !IsOfAnother(*stStream.call, stLine, stStream.stFirst.stPrefix.strTime)) return *stStream.call;
        Close(stStream);
    }
    LogCall& call = stStream.call.emplace(bPiece ? CallKind::REPLY : KindOf(stLine));
    call.nNumber = ++m_nCalls;
    call.pFile = stStream.stFirst.pFile;
    call.nLine = stStream.stFirst.nLine;
    call.stPrefix = stStream.stFirst.stPrefix;
    call.strDropped = std::exchange(m_strDropped, {});
    return call;
}

void CLogCalls::Keep(LogCall& call, const LogLine& stLine)
{
    if (!m_bKeepLines || call.bLinesDropped || IsAnswer(stLine)) return;
    LogLine stKept = stLine;
    stKept.strMessage.resize(std::min(stKept.strMessage.size(), kLongestKept));
    const std::size_t nBytes =
        kLineOverhead + stKept.strFunction.size() + stKept.strLine.size() + stKept.strMessage.size();
    call.bLinesDropped = m_nKept + nBytes > kMostKept;
    if (call.bLinesDropped) return;
    m_nKept += nBytes;
    call.nKept += nBytes;
    call.vLines.push_back(std::move(stKept));
}

void CLogCalls::Close(LogStream& stStream)
{
    if (!stStream.call) return;
    m_sink(*stStream.call);
    m_nKept -= stStream.call->nKept;
    stStream.call.reset();
}
