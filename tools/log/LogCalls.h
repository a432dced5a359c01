// The calls in a log: the library's records of each process and thread, cut where one call ends and the next begins.
#ifndef PARLO_LOGCALLS_H
#define PARLO_LOGCALLS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "log/CallDigest.h"
#include "log/LogReader.h"
#include "log/LogReply.h"
#include "log/SetValues.h"

struct LogCall {
    std::size_t nNumber = 0;  // from 1, in the order in which the calls begin
    std::shared_ptr<const std::string> pFile;
    std::size_t nLine = 0;  // of its first line
    std::string strTime;    // and what stands before that
    std::string strProcess;
    std::string strThread;
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

    // Everything that the log lost of it, in words. Empty: the call is whole, as far as its lines can tell.
    std::vector<std::string> Missing() const;
    std::vector<std::string> MissingOfReply() const;
};

// Bounded memory whatever the records; of a call with very many lines the last ones are not kept.
class CLogCalls
{
public:
    using Sink = std::function<void(LogCall&)>;

    // Hands each call to `sink` when it is over. With `bKeepLines` it carries its lines.
    CLogCalls(Sink sink, bool bKeepLines) : m_sink(std::move(sink)), m_bKeepLines(bKeepLines) {}

    void Take(const LogRecord& stRecord);

    // A logger says in `strLine` that it dropped lines.
    void Dropped(const std::string& strLine);

    // Nothing came for a while: hands over the calls that have ended.
    void EndDone();

    // Ends the calls that are still open, when there is no more of the log.
    void End();

private:
    struct Stream {
        std::vector<LogCall> vOpen;     // one or none
        Escape eEscape = Escape::NONE;  // what the log makes of this stream's control characters
        bool bKnown = false;            // a line has said so
        std::uint64_t nUsed = 0;
    };

    Stream& StreamOf(const LogRecord& stRecord);
    LogCall& CallOf(Stream& stStream, const LogLine& stLine, bool bPiece, const LogRecord& stRecord);
    void Keep(LogCall& call, const LogLine& stLine);
    void Close(Stream& stStream);

    Sink m_sink;
    bool m_bKeepLines;
    std::map<std::pair<std::string, std::string>, Stream> m_mapStreams;  // by process and thread
    std::uint64_t m_nTime = 0;
    std::size_t m_nCalls = 0;
    std::size_t m_nKept = 0;   // bytes of all lines that are kept
    std::string m_strDropped;  // since the last call began
};

#endif
