// The library's records in a log: lines put together to messages, whatever stands between them.
//
// A line without the form of a record is more of the one before it only if that can go on: a piece of a reply that
// still lacks bytes of those announced, a text whose closing colour or bracket is missing. A line that looks like a
// record is the reply's as well where the announced length covers it to the byte.
#ifndef PARLO_LOGREADER_H
#define PARLO_LOGREADER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "log/DumpLine.h"
#include "log/LogPrefix.h"

// A record of the library as the log shows it.
struct LogRecord {
    std::shared_ptr<const std::string> pFile;
    std::size_t nLine = 0;  // of the file, from 1
    LogPrefix stPrefix;
    std::string strText;       // from the form on, further lines behind '\n'; bounded
    bool bTorn = false;        // the log shows colours behind its texts, and here none: the end is lost
    bool bSubstitute = false;  // it has the prefix of the television's substitute, which escapes what it writes
    bool bTwice = false;       // the log has each line twice
};

// Bytes in, records out. Bounded memory whatever the bytes.
class CLogReader
{
public:
    using Sink = std::function<void(const LogRecord&)>;
    using Notice = std::function<void(const std::string&)>;

    // Hands to `notice` each line in which a logger says that it has dropped others.
    CLogReader(Sink sink, Notice notice) : m_sink(std::move(sink)), m_notice(std::move(notice)) {}

    // A file begins, its next bytes cut anywhere, its end. A record may go on in the file that follows.
    void BeginFile(const std::string& strFile);
    void Feed(std::string_view szBytes);
    void EndFile();

    // There is no more: hands over what is left.
    void End();

    // Nothing more came for a while: hands over the records that lack nothing.
    void Pause();

    // Lines that have the library's tag, and those that it stands before of which nothing could be made.
    std::size_t Tagged() const { return m_nTagged; }
    std::size_t Strays() const { return m_nStrays; }

private:
    enum class Sort { RECORD, MORE, OTHER };                // the form of a record; of none; another program's line
    enum class Style { UNKNOWN, RAW, PREFIXED, ONE_LINE };  // how the log shows the further lines of a record
    struct Line {
        Sort eSort = Sort::MORE;
        bool bTagged = false;
        bool bAlone = false;  // its prefix had a line of its own
        std::size_t nLine = 0;
        LogPrefix stPrefix;
        std::string strRaw;
        std::string strMessage;
    };
    // The records of a process and thread.
    struct Stream {
        bool bPending = false;  // stRecord may go on
        LogRecord stRecord;
        bool bAlone = false;       // its prefix had a line of its own
        std::size_t nMessage = 0;  // where it begins in the text
        DumpLine eDump = DumpLine::NONE;
        bool bOpenText = false;        // it ends in a text of the reply or the set
        std::ptrdiff_t nBrackets = 0;  // that it opens and does not close
        bool bClosed = false;          // by its colour
        bool bColours = false;         // a record was
        Style eStyle = Style::UNKNOWN;
        std::optional<std::size_t> nSize;  // of the reply, as announced
        std::size_t nPieces = 0;
        std::vector<Line> vHeld;  // behind a piece that lacks bytes: they begin what is another's, or the piece's
        std::size_t nHeld = 0;    // bytes
        std::uint64_t nUsed = 0;
    };
    using Streams = std::map<std::pair<std::string, std::string>, Stream>;

    void TakeLine(std::string_view szLine);
    bool IsTwice(std::string_view szLine);
    std::string_view Plain(std::string_view szLine);
    void Classify(std::string_view szLine);
    Streams::iterator FindStream(const LogPrefix& stPrefix);
    Stream& StreamOf(const LogPrefix& stPrefix);
    void Assign(const Line& stLine);
    void Put(Stream& stStream, const Line& stLine);
    void PutBehindHeld(Stream& stStream, const Line& stLine);
    void Release(Stream& stStream);
    void Begin(Stream& stStream, const Line& stLine);
    void Finish(Stream& stStream);
    void Settle(Streams::node_type node);

    static void Hold(Stream& stStream, const Line& stLine);
    static bool Holds(const Stream& stStream, bool bAll);
    static void Take(Stream& stStream, bool bAll);
    static void Append(Stream& stStream, const Line& stLine);
    static bool GoesOn(const Stream& stStream, const Line& stLine);
    static bool IsLength(const Stream& stStream, std::size_t nLength);
    static bool MayLack(const Stream& stStream);
    static bool Lacks(const Stream& stStream);
    static const std::string& Content(const Stream& stStream, const Line& stLine);

    Sink m_sink;
    Notice m_notice;
    Streams m_mapStreams;  // by process and thread
    std::uint64_t m_nTime = 0;
    std::size_t m_nTagged = 0;
    std::size_t m_nStrays = 0;

    struct File {
        std::shared_ptr<const std::string> pName;
        CLogPrefixes prefixes;
        std::string strPart;  // the beginning of a line whose end was not fed yet; bounded
        std::size_t nLine = 0;
        std::size_t nCarriages = 2;  // at the end of every line
        std::string strQuote;        // "> " before every line, as mail has it
        bool bTags = false;          // a tag was seen: from then on there is no record without one
        bool bAlone = false;         // the last line was stAlone alone: what follows is its message
        LogPrefix stAlone;
        bool bTwice = false;    // each line stands twice
        bool bCopy = false;     // the last line was the copy of the one before it
        std::string strBefore;  // that line
    };
    File m_stFile;
    Line m_stLine;
    Stream* m_pLast = nullptr;  // whose record a line without a prefix goes on; null: nobody's
};

#endif
