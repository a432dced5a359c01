// From the bytes of logs to their lines, each with its prefix taken apart.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

constexpr std::string_view kTag = "ParloAPI";

// One form of prefix, as a pattern of GLib's regular expressions. Its groups say what stands where: "time", "process",
// "thread", "priority" and "tag"; "alone" is in a prefix that has a line of its own, "behind" is what stands behind
// the message. A form that a newcomer meets in the field is one more of these, with an example that the tests read.
struct LogFormat {
    const char* szName;
    const char* szPattern;
    const char* szExample;
};
extern const std::vector<LogFormat> kLogFormats;

struct LogPrefix {
    std::string strTime;  // as it stands in the log
    std::string strProcess;
    std::string strThread;
    std::string strPriority;  // "E", or the number of another system
    unsigned nForm = 0;       // tells prefixes of different make apart

    // Whether the prefix has a line of its own and the message follows.
    bool IsAlone() const { return (nForm & kAlone) != 0; }
    static constexpr unsigned kAlone = 1U << 4U;
};

enum class LineKind {
    OURS,     // has the library's tag
    FOREIGN,  // has somebody else's tag
    UNKNOWN   // has no prefix that is known
};

// Recognises prefixes in one file.
class CLogPrefixes
{
public:
    // Says what kind of line `szLine` is; of one that is OURS fills `stPrefix` and `strMessage`.
    // Without `bForeign` nobody asks whether a line is FOREIGN or UNKNOWN.
    LineKind Recognise(std::string_view szLine, bool bForeign, LogPrefix& stPrefix, std::string& strMessage);

private:
    using Span = std::pair<std::size_t, std::size_t>;  // start and size
    // What stands where in a line.
    struct Places {
        std::array<Span, 4> vParts;  // as in LogPrefix
        unsigned nForm = 0;
        std::size_t nMessage = 0;
        std::size_t nBehind = 0;  // bytes behind the message
    };

    LineKind Match(std::string_view szLine, Places& stPlaces);
    bool IsLikeLast(std::string_view szLine) const;
    LineKind TakeJournal(std::string_view szLine, LogPrefix& stPrefix, std::string& strMessage);

    Places m_stLast;        // in the last line that was ours
    std::string m_strLast;  // that line's prefix
    bool m_bKnown = false;  // a line of a known form was ours: then those of unknown forms are not
};

struct LogTextLine {
    enum class Sort {
        RECORD,  // begins a record of the library
        MORE,    // may be more of one: it has the library's prefix without a record's form, or no prefix
        OTHER    // has the prefix of another program
    };
    Sort eSort = Sort::MORE;
    bool bTagged = false;  // it has the library's prefix
    bool bAlone = false;   // that had a line of its own
    bool bSame = false;    // it is equal to the line before it
    bool bTwice = false;   // the log has it twice
    std::shared_ptr<const std::string> pFile;
    std::size_t nLine = 0;  // of the file, from 1
    LogPrefix stPrefix;
    std::string strRaw;      // all of it, with a prefix that had a line of its own
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
    void EndFile()
    {
        if (!m_stFile.strPart.empty()) TakeLine(m_stFile.strPart);
    }

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
        std::string strAlone;
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
