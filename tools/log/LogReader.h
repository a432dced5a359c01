// The library's records in a log: lines of a file put together to messages, whatever stands between them.
#ifndef PARLO_LOGREADER_H
#define PARLO_LOGREADER_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "log/LogPrefix.h"

// A record of the library as the log shows it. Which of its last lines are its own is for those to decide who know
// how long it must be.
struct LogRecord {
    std::size_t nLine = 0;  // of the file, from 1
    LogPrefix stPrefix;
    std::string strText;       // from the form on, further lines behind '\n'; bounded
    bool bCarriage = false;    // the file's lines seem to end in CR LF
    bool bSubstitute = false;  // it has the prefix of the television's substitute, which escapes what it writes
};

// Bytes in, records out. Bounded memory whatever the bytes.
class CLogReader
{
public:
    using Sink = std::function<void(const LogRecord&)>;
    explicit CLogReader(Sink sink) : m_sink(std::move(sink)) {}

    // The next bytes of the file, cut anywhere; then its end. After that another file may follow.
    void Feed(std::string_view szBytes);
    void EndFile();

private:
    void Line(std::string_view szLine);
    void Begin(std::string_view szLine, LogPrefix&& stPrefix);
    void More(std::string_view szLine);
    void Finish();

    Sink m_sink;
    std::string m_strLine;  // the beginning of a line whose end was not fed yet; bounded
    std::size_t m_nLine = 0;
    bool m_bCarriage = false;  // the first record's line ended in CR
    bool m_bBegun = false;     // there was a record
    bool m_bTags = false;      // a record with a tag was seen: from then on there are no others
    bool m_bPending = false;   // m_stRecord may go on
    LogRecord m_stRecord;
    std::string m_strShape;  // its prefix
};

#endif
