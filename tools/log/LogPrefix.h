// What a log's reader prints before a message: time, process and thread, priority, tag.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

constexpr std::string_view kTag = "ParloAPI";

// How many bytes at the start of `szText` are colours of any terminal.
std::size_t AnyColourLength(std::string_view szText);

// One form of prefix, as a pattern of GLib's regular expressions. Its groups say what stands where: "time", "process",
// "thread", "priority" and "tag"; "alone" is in a prefix that has a line of its own, "behind" is what stands behind
// the message. A form that a newcomer meets in the field is one more of these, with an example that the tests read.
struct LogFormat {
    const char* szName;
    const char* szPattern;
    const char* szExample;
};
const std::vector<LogFormat>& LogFormats();

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
    static void Take(std::string_view szLine, const Places& stPlaces, LogPrefix& stPrefix, std::string& strMessage);

    Places m_stLast;        // in the last line that was ours
    std::string m_strLast;  // that line's prefix
    bool m_bKnown = false;  // a line of a known form was ours: then those of unknown forms are not
};
