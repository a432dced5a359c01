// Sorting of records into calls.
#include "log/LogCalls.h"

#include <algorithm>
#include <string_view>

#include "text/Text.h"

namespace
{

constexpr std::size_t kMostStreams = 32;      // threads whose calls are open at once; each may hold a reply
constexpr std::size_t kMostKept = 12u << 20;  // bytes of the lines of all open calls
constexpr std::size_t kLineOverhead = 160;    // what a line takes beside its texts
constexpr std::size_t kLongestKept = 2000;    // bytes of a line, as much as the library's own lines are kept of

constexpr std::string_view kAppMessage = "m_strAppName:";
constexpr std::string_view kWordsMessage = "strSearchKeywords:";
constexpr std::string_view kEmptyMessage = "strPreAllResult is empty()";

bool Begins(std::string_view szText, std::string_view szStart)
{
    return szText.substr(0, szStart.size()) == szStart;
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

// Whether the first command of the reply may be `szAction`. Says so without parsing, and of what is not plain.
bool MayBeFirst(std::string_view szAction, std::string_view szReply)
{
    const std::string strValue = '"' + std::string(szAction) + '"';
    if (szReply.find("\\u") != szReply.npos || szAction.find_first_of("\\\"\n\t\r") != szAction.npos) return true;
    if (szReply.find(strValue) == szReply.npos) return false;
    const std::size_t nCommands = szReply.find("\"tvcontrol\"");
    std::string_view szRest = szReply.substr(std::min(nCommands, szReply.size()));
    for (const std::string_view szNext : {"\"tvcontrol\"", ":", "[", "{", "\"action\"", ":"}) {
        szRest.remove_prefix(std::min(szRest.find_first_not_of(" \t\r\n"), szRest.size()));
        if (!Begins(szRest, szNext)) return true;
        szRest.remove_prefix(szNext.size());
    }
    szRest.remove_prefix(std::min(szRest.find_first_not_of(" \t\r\n"), szRest.size()));
    return Begins(szRest, strValue) || szReply.rfind("\"tvcontrol\"") != nCommands;
}

// Whether the line names another first action than the call's reply has: then the end of that call is lost, and the
// beginning of the next.
bool IsOfAnother(const LogCall& call, const LogLine& stLine)
{
    constexpr std::string_view kFirst = "szAction[0]:";
    constexpr std::string_view kDecided = "strAction = ";
    std::string_view szAction = stLine.strMessage;
    if (stLine.strFunction == "t_IsContentsSearchAction" && Begins(szAction, kFirst))
        szAction.remove_prefix(kFirst.size());
    else if (stLine.strFunction == "GetSystemAction" && Begins(szAction, kDecided))
        szAction.remove_prefix(kDecided.size());
    else
        return false;
    return call.reply.GetState() == CLogReply::State::WHOLE && !MayBeFirst(szAction, call.reply.Text()) &&
           call.digest.LacksBefore(stLine);
}

// What a gap with a known place is, and what one of unknown place.
std::string GapText(const CLogReply& reply, const CLogReply::Gap& stGap)
{
    if (stGap.bPlace)
        return Count(stGap.nBytes, "byte", "bytes") + " of the reply at offset " + std::to_string(stGap.nOffset);
    if (!reply.HasSize()) return "how long the reply was";
    if (reply.Pieces() >= reply.Wanted()) return "the order of the reply's pieces, of which there are too many";
    return std::to_string(reply.Wanted() - reply.Pieces()) + " of the reply's " +
           Count(reply.Wanted(), "piece", "pieces");
}

}  // namespace

std::vector<std::string> LogCall::Missing() const
{
    std::vector<std::string> vMissing = digest.Missing();
    for (std::string& strMissing : MissingOfReply()) vMissing.push_back(std::move(strMissing));
    return vMissing;
}

std::vector<std::string> LogCall::MissingOfReply() const
{
    std::vector<std::string> vMissing;
    if (!reply.HasSize() && reply.Pieces() == 0) return vMissing;
    for (const CLogReply::Gap& stGap : reply.Gaps()) vMissing.push_back(GapText(reply, stGap));
    return vMissing;
}

void CLogCalls::Take(const LogRecord& stRecord)
{
    LogForm stForm;
    if (!ParseLogForm(stRecord.strText, stForm)) return;
    Stream& stStream = StreamOf(stRecord);
    std::size_t nSize = 0;
    const DumpLine eDump = DumpLineOf(stForm, nSize);
    const bool bPiece = eDump == DumpLine::PIECE;
    if (eDump == DumpLine::SIZE) {
        stStream.eEscape = EscapeOf(stForm.szMessage);
        stStream.bKnown = true;
    } else if (!stStream.bKnown) {
        stStream.eEscape = stRecord.bSubstitute ? Escape::BACKSLASH : Escape::NONE;
    }
    const LogLine stLine =
        LineOf(stForm, bPiece ? std::string() : WholeMessage(stRecord, stForm.szMessage, stStream.eEscape));
    LogCall& call = CallOf(stStream, stLine, bPiece, stRecord);
    call.bTwice = call.bTwice || stRecord.bTwice;
    if (bPiece) {
        call.digest.ListenToPiece();
        return call.reply.Add(stRecord, stForm.szMessage, stStream.eEscape);
    }
    call.digest.Listen(stLine);
    call.stSet.Listen(stLine);
    if (eDump == DumpLine::SIZE) call.reply.Announce(nSize);
    if (Begins(stLine.strMessage, kAppMessage)) call.strAppName = stLine.strMessage.substr(kAppMessage.size());
    if (Begins(stLine.strMessage, kWordsMessage)) call.strUtterance = stLine.strMessage.substr(kWordsMessage.size());
    if (Begins(stLine.strMessage, kEmptyMessage)) call.strNoReply = stLine.strMessage;
    Keep(call, stLine);
}

void CLogCalls::Dropped(const std::string& strLine)
{
    m_strDropped = strLine;
    for (auto& [key, stStream] : m_mapStreams)
        for (LogCall& call : stStream.vOpen) call.strDropped = strLine;
}

void CLogCalls::End()
{
    for (auto& [key, stStream] : m_mapStreams) Close(stStream);
    m_mapStreams.clear();
}

void CLogCalls::EndDone()
{
    for (auto& [key, stStream] : m_mapStreams)
        if (!stStream.vOpen.empty() && stStream.vOpen.front().digest.HasEnded()) Close(stStream);
}

CLogCalls::Stream& CLogCalls::StreamOf(const LogRecord& stRecord)
{
    const auto key = std::make_pair(stRecord.stPrefix.strProcess, stRecord.stPrefix.strThread);
    if (m_mapStreams.count(key) == 0 && m_mapStreams.size() == kMostStreams) {
        const auto Older = [](const auto& a, const auto& b) { return a.second.nUsed < b.second.nUsed; };
        const auto oldest = std::min_element(m_mapStreams.begin(), m_mapStreams.end(), Older);
        Close(oldest->second);
        m_mapStreams.erase(oldest);
    }
    Stream& stStream = m_mapStreams[key];
    stStream.nUsed = ++m_nTime;
    return stStream;
}

// The open call that the line belongs to; a new one when it belongs to none.
LogCall& CLogCalls::CallOf(Stream& stStream, const LogLine& stLine, bool bPiece, const LogRecord& stRecord)
{
    if (!stStream.vOpen.empty()) {
        const CCallDigest& digest = stStream.vOpen.front().digest;
        const bool bBehindPieces = digest.GetStep() > CCallDigest::kPieces || stStream.vOpen.front().reply.IsComplete();
        const bool bNext = bPiece ? digest.Kind() != CallKind::REPLY || bBehindPieces
                                  : digest.IsOfNext(stLine) || IsOfAnother(stStream.vOpen.front(), stLine);
        if (!bNext) return stStream.vOpen.front();
        Close(stStream);
    }
    LogCall& call = stStream.vOpen.emplace_back(bPiece ? CallKind::REPLY : KindOf(stLine));
    call.nNumber = ++m_nCalls;
    call.pFile = stRecord.pFile;
    call.strDropped = std::exchange(m_strDropped, {});
    call.nLine = stRecord.nLine;
    call.strTime = stRecord.stPrefix.strTime;
    call.strProcess = stRecord.stPrefix.strProcess;
    call.strThread = stRecord.stPrefix.strThread;
    return call;
}

void CLogCalls::Keep(LogCall& call, const LogLine& stLine)
{
    if (!m_bKeepLines || call.bLinesDropped) return;
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

void CLogCalls::Close(Stream& stStream)
{
    for (LogCall& call : stStream.vOpen) {
        m_sink(call);
        m_nKept -= call.nKept;
    }
    stStream.vOpen.clear();
}
