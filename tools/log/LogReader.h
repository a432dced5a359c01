// From the bytes of logs to their lines, each with its prefix taken apart.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "log/LogPrefix.h"

struct LogTextLine {
    enum class Sort {
        RECORD,  // begins a record of the library
        MORE,    // may be more of one: it has the library's prefix without a record's form, or no prefix
        OTHER    // has the prefix of another program
    };
    Sort eSort = Sort::MORE;
    bool bTagged = false;      // it has the library's prefix
    bool bAlone = false;       // that had a line of its own
    bool bTwice = false;       // the log has each line twice; this is one of two
    bool bSubstitute = false;  // its prefix is that of the television's substitute, which escapes what it writes
    std::shared_ptr<const std::string> pFile;
    std::size_t nLine = 0;  // of the file, from 1
    LogPrefix stPrefix;
    std::string strRaw;      // all of it
    std::string strMessage;  // what is behind the prefix
};

// Bytes in, lines out. Bounded memory whatever the bytes.
class CLogReader
{
public:
    // Takes a line and says whether one without the library's tag may matter next; else nobody asks what it is.
    using Sink = std::function<bool(const LogTextLine&)>;
    explicit CLogReader(Sink sink) : m_sink(std::move(sink)) {}

    // A file begins, its next bytes cut anywhere, its end.
    void BeginFile(const std::string& strFile);
    void Feed(std::string_view szBytes);
    void EndFile();

    // How many lines have the library's tag, wherever it stands in them.
    std::size_t Tagged() const { return m_nTagged; }

private:
    void TakeLine(std::string_view szLine);
    bool IsTwice(std::string_view szLine);
    std::string_view Plain(std::string_view szLine);
    void Classify(std::string_view szLine);

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
    Sink m_sink;
    File m_stFile;
    LogTextLine m_stLine;
    bool m_bAsked = false;
    std::size_t m_nTagged = 0;
};
