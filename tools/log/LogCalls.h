// The calls in a log: the library's lines of each process and thread put together to records, and those cut where one
// call ends and the next begins.
//
// A line without the form of a record is more of the one before it only if that can go on: a piece of a reply that
// still lacks bytes of those announced, a text whose closing colour or bracket is missing. A line that looks like a
// record is the reply's as well where the announced length covers it to the byte.
#pragma once

#include <cstdint>
#include <map>

#include "log/CallDigest.h"
#include "log/LogReader.h"
#include "log/LogReply.h"

struct LogCall {
    std::size_t nNumber = 0;  // from 1, in the order in which the calls begin
    std::shared_ptr<const std::string> pFile;
    std::size_t nLine = 0;  // of its first line
    LogPrefix stPrefix;     // of that
    std::string strLastTime;
    CCallDigest digest;
    CLogReply reply;
    SetValues stSet;
    std::string strAppName;       // of a start
    std::string strUtterance;     // of a search hand-over; no other line holds it
    std::string strNoReply;       // the line that says that utterance or reply is empty, if there is one
    std::vector<LogLine> vLines;  // without the reply's pieces; kept only if wanted
    bool bLinesDropped = false;   // there were more than are kept
    std::size_t nKept = 0;        // what the lines take
    bool bTwice = false;          // the log has its lines twice
    std::string strDropped;       // the line in which a logger says that it dropped some

    explicit LogCall(CallKind eKind) : digest(eKind) {}

    // "log.txt:12"
    std::string Place() const { return *pFile + ':' + std::to_string(nLine); }

    // Everything that the log lost of it, in words. Empty: it is whole, as far as its lines can tell.
    std::vector<std::string> Missing() const;
};

// What was logged in a process and thread.
struct LogStream {
    enum class Style { UNKNOWN, RAW, PREFIXED, ONE_LINE };  // how the log shows the further lines of a record

    std::optional<LogCall> call;  // that goes on
    bool bPending = false;        // so does a record
    LogTextLine stFirst;          // its first line; further ones are behind '\n' in the message, which is bounded
    std::size_t nText = 0;        // where the text begins in that, behind the form
    DumpLine eDump = DumpLine::NONE;
    std::size_t nSize = 0;         // that it announces
    bool bOpenText = false;        // it ends in a text of the reply or the set
    std::size_t nIndent = 0;       // blanks before its last line
    std::ptrdiff_t nBrackets = 0;  // that it opens and does not close
    bool bClosed = false;          // by its colour
    bool bColours = false;         // a record was
    Style eStyle = Style::UNKNOWN;
    Escape eEscape = Escape::NONE;
    std::vector<LogTextLine> vHeld;  // behind a piece that lacks bytes: the piece's, or another record's
    std::size_t nHeld = 0;           // bytes that they add
    std::uint64_t nUsed = 0;

    bool IsOthers(const LogTextLine& stLine) const
    {
        return stLine.bTagged && eStyle != Style::RAW && stLine.stPrefix.strPriority != stFirst.stPrefix.strPriority;
    }
    bool GoesOn(const LogTextLine& stLine) const;
    bool IsOver() const { return bClosed && eDump != DumpLine::PIECE; }  // a piece may have a colour of its own within
    bool MayGoOnRaw() const { return bPending && !IsOver() && (eStyle == Style::UNKNOWN || eStyle == Style::RAW); }
    bool MayLack() const;  // it is a piece that may have more bytes; or must have
    bool Lacks() const { return call && call->reply.Size() && MayLack() && !call->reply.MayHave(Length()); }
    std::size_t Length() const { return stFirst.strMessage.size() - nText; }
    bool TakeCopy(const LogTextLine& stLine);
    bool IsMadeUp() const;
    void Hold(const LogTextLine& stLine);
    const std::string& Content(const LogTextLine& stLine) const;
    void Begin(const LogTextLine& stLine);
    void Append(const LogTextLine& stLine);
};

// Bounded memory whatever the lines; of a call with very many lines the last ones are not kept.
class CLogCalls
{
public:
    using Sink = std::function<void(LogCall&)>;

    // Hands each call to `sink` when it is over. With `bKeepLines` it carries its lines.
    CLogCalls(Sink sink, bool bKeepLines) : m_sink(std::move(sink)), m_bKeepLines(bKeepLines) {}

    // Returns whether a line without a tag may be more of what it took last.
    bool Take(const LogTextLine& stLine);

    // Nothing more came for a while: hands over the calls that have ended. Then the end of all.
    void Pause();
    void End();

    // Lines behind the library's prefix of which nothing could be made.
    std::size_t Strays() const { return m_nStrays; }
    std::size_t Calls() const { return m_nCalls; }

private:
    using Streams = std::map<std::pair<std::string, std::string>, LogStream>;  // by process and thread

    LogStream& StreamOf(const LogPrefix& stPrefix);
    void Assign(const LogTextLine& stLine);
    void Put(LogStream& stStream, const LogTextLine& stLine);
    void PutBehindHeld(LogStream& stStream, const LogTextLine& stLine);
    void Finish(LogStream& stStream);
    void Settle(Streams::iterator stream);
    LogCall& CallOf(LogStream& stStream, const LogLine& stLine);
    void Keep(LogCall& call, const LogLine& stLine);
    void Close(LogStream& stStream);

    Sink m_sink;
    bool m_bKeepLines;
    Streams m_mapStreams;
    LogStream* m_pLast = nullptr;  // whose record a line without a prefix goes on; null: nobody's
    std::uint64_t m_nTime = 0;
    std::size_t m_nStrays = 0;
    std::size_t m_nCalls = 0;
    std::size_t m_nKept = 0;   // bytes of all lines that are kept
    std::string m_strDropped;  // since the last call began
};
