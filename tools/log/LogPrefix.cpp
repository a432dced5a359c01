// Recognition of the prefixes of the usual log readers.
#include "log/LogPrefix.h"

#include <glib.h>
#include <json/value.h>

#include <algorithm>
#include <memory>

#include "reading/Input.h"
#include "session/LogForm.h"

namespace
{

constexpr std::string_view kJournalMessage = "\"MESSAGE\"";
constexpr std::size_t kLongestPrefix = 512;  // bytes; no prefix is looked for behind that

#define PARLO_DEVICE_TIME \
    " *(?<time>(?:\\d{4}-)?\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d+(?: ?[+-]\\d{4})?|\\d+\\.\\d{3,9})"
#define PARLO_PRIORITY "(?<priority>[VDIWEFS])"
#define PARLO_IDS "\\(\\s*(?:P\\s*)?(?<process>\\d+)(?:\\s*[,:]\\s*(?:T\\s*)?(?<thread>\\d+))?\\)"
#define PARLO_TAG "(?<tag>[^\\s:(][^:(]{0,100}?)\\s*"
#define PARLO_END ":(?: |$)"
#define PARLO_NUMBER "(?:<(?<priority>\\d{1,3})>)?"
#define PARLO_PROGRAM "(?:[^\\s:]+ )?(?<program>[^\\s:\\[]+)(?:\\[(?<process>\\d+)\\])?" PARLO_END

// The tag where it stands behind a program's name, or behind a prefix of unknown form.
constexpr const char* kBehindProgram = "(?:" PARLO_PRIORITY "[ /])?ParloAPI\\s*(?:" PARLO_IDS ")?\\s*:?(?: |$)";
constexpr const char* kAnywhere = "\\bParloAPI(?!\\w)\\s*(?:" PARLO_IDS ")?\\s*:?(?: |$)";

constexpr const char* kParts[] = {"time", "process", "thread", "priority"};

struct Freer {
    void operator()(GRegex* pRegex) const { g_regex_unref(pRegex); }
    void operator()(GMatchInfo* pMatch) const { g_match_info_free(pMatch); }
};
using Found = std::unique_ptr<GMatchInfo, Freer>;
using Regex = std::unique_ptr<GRegex, Freer>;

Regex Compile(const std::string& strPattern, bool bAnchored)
{
    constexpr int kFlags = G_REGEX_RAW | G_REGEX_OPTIMIZE | G_REGEX_DUPNAMES;
    const auto eFlags = static_cast<GRegexCompileFlags>(kFlags | (bAnchored ? G_REGEX_ANCHORED : 0));
    return Regex(g_regex_new(strPattern.c_str(), eFlags, G_REGEX_MATCH_DEFAULT, nullptr));
}

std::string AllPatterns()
{
    std::string strPatterns;
    for (const LogFormat& stFormat : LogFormats())
        strPatterns += (strPatterns.empty() ? "(?:" : "|(?:") + std::string(stFormat.szPattern) + ')';
    return strPatterns;
}

// Null when `szText` does not match from `nStart` on.
Found Find(GRegex* pRegex, std::string_view szText, std::size_t nStart)
{
    GMatchInfo* pMatch = nullptr;
    const gboolean bFound = g_regex_match_full(pRegex, szText.data(), static_cast<gssize>(szText.size()),
                                               static_cast<gint>(nStart), G_REGEX_MATCH_DEFAULT, &pMatch, nullptr);
    Found match(pMatch);
    return bFound != FALSE ? std::move(match) : nullptr;
}

// Where a group matched; false when it did not.
bool Group(const Found& match, const char* szName, std::size_t& nStart, std::size_t& nSize)
{
    gint nFirst = -1;
    gint nEnd = -1;
    if (g_match_info_fetch_named_pos(match.get(), szName, &nFirst, &nEnd) == FALSE || nFirst < 0) return false;
    nStart = static_cast<std::size_t>(nFirst);
    nSize = static_cast<std::size_t>(nEnd - nFirst);
    return true;
}

std::size_t EndOf(const Found& match)
{
    gint nEnd = 0;
    g_match_info_fetch_pos(match.get(), 0, nullptr, &nEnd);
    return static_cast<std::size_t>(nEnd);
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool HasForm(std::string_view szText)
{
    LogForm stForm;
    return ParseLogForm(szText, stForm);
}

// Whether a prefix can begin so.
bool MayBegin(std::string_view szLine)
{
    const char c = szLine[std::min(szLine.find_first_not_of(' '), szLine.size() - 1)];
    return IsDigit(c) || (c >= 'A' && c <= 'Z') || c == '<' || c == '[' || c == '\033';
}

// How many bytes at the start of `szText` are colours of any terminal.
std::size_t AnyColourLength(std::string_view szText)
{
    std::size_t nLength = 0;
    while (szText.substr(nLength, 2) == "\033[") {
        const std::size_t nEnd = szText.find_first_not_of("0123456789;", nLength + 2);
        if (nEnd == szText.npos || szText[nEnd] != 'm') break;
        nLength = nEnd + 1;
    }
    return nLength;
}

// Cuts a message that is a list of bytes out of the line of a journal and returns it as text. A parser would need
// far longer for it.
std::string CutBytes(std::string& strLine)
{
    const std::size_t nStart = strLine.find_first_not_of(" :", strLine.find(kJournalMessage) + kJournalMessage.size());
    if (nStart == strLine.npos || strLine[nStart] != '[') return {};
    std::string strBytes;
    std::size_t n = nStart + 1;
    for (; n < strLine.size() && strLine[n] != ']'; ++n) {
        if (!IsDigit(strLine[n])) continue;
        if (!IsDigit(strLine[n - 1])) strBytes += '\0';
        strBytes.back() = static_cast<char>(strBytes.back() * 10 + (strLine[n] - '0'));
    }
    strLine.replace(nStart, n + 1 - nStart, "0");
    return strBytes;
}

}  // namespace

const std::vector<LogFormat>& LogFormats()
{
    static const std::vector<LogFormat> vFormats = {
        {"threadtime, epoch, monotonic",
         PARLO_DEVICE_TIME "\\s+(?:[a-z]\\w*\\s+)?(?<process>\\d+)\\s+(?<thread>\\d+) " PARLO_PRIORITY
                           " (?<tag>[^\\s:][^:]{0,100}?)\\s*" PARLO_END,
         "11-24 18:42:03.118  1480  1502 E ParloAPI: "},
        {"time, brief", "(?:" PARLO_DEVICE_TIME " +)?" PARLO_PRIORITY "/" PARLO_TAG PARLO_IDS PARLO_END,
         "11-24 18:42:03.118 E/ParloAPI( 1480): "},
        {"tag", PARLO_PRIORITY "/" PARLO_TAG PARLO_END, "E/ParloAPI: "},
        {"process, thread", PARLO_PRIORITY PARLO_IDS " ", "E( 1480) "},
        {"long",
         "\\[ " PARLO_DEVICE_TIME "\\s+(?<process>\\d+):\\s*(?<thread>\\d+) " PARLO_PRIORITY
         "/(?<tag>[^\\]]{1,100}?)\\s*(?<alone>\\])$",
         "[ 11-24 18:42:03.118  1480: 1502 E/ParloAPI ]"},
        {"RFC 5424",
         "<(?<priority>\\d{1,3})>1 (?<time>\\S+) \\S+ (?<program>\\S+) (?<process>\\S+) \\S+ "
         "(?:-|(?:\\[(?:[^\\]\\\\]|\\\\.)*\\])+)(?: (?:\xEF\xBB\xBF)?|$)",
         "<11>1 2015-11-24T18:42:03.118Z tv ParloAPI 1480 - - "},
        {"RFC 3164, journalctl short",
         PARLO_NUMBER
         "(?:[A-Z][a-z]{2},? )?(?<time>[A-Z][a-z]{2} [ \\d]\\d \\d\\d:\\d\\d:\\d\\d(?:\\.\\d+)?(?: \\d{4})?"
         ") " PARLO_PROGRAM,
         "<11>Tue Nov 24 18:42:03 tv ParloAPI[1480]: "},
        {"ISO times, journalctl short-iso",
         PARLO_NUMBER "(?:[A-Z][a-z]{2} )?(?<time>\\d{4}-\\d\\d-\\d\\d[ T]\\d\\d:\\d\\d:\\d\\d(?:[.,]\\d+)?(?:Z|[+-]\\d"
                      "\\d:?\\d\\d| [A-Z]{3,4})?) " PARLO_PROGRAM,
         "2015-11-24T18:42:03+0900 tv ParloAPI[1480]: "},
        {"kernel, journalctl short-monotonic, short-unix",
         PARLO_NUMBER "(?:\\[ *(?<time>\\d+\\.\\d+)\\](?:\\[ *[CT]\\d+\\])?|(?<time>\\d+\\.\\d+)) " PARLO_PROGRAM,
         "[   12.003118] ParloAPI[1480]: "},
        {"parlo --log", PARLO_PRIORITY " (?<tag>ParloAPI)" PARLO_END, "E ParloAPI: "},
    };
    return vFormats;
}

LineKind CLogPrefixes::Recognise(std::string_view szLine, bool bForeign, LogPrefix& stPrefix, std::string& strMessage)
{
    stPrefix.nForm = 0;
    if (IsLikeLast(szLine)) {
        Take(szLine, m_stLast, stPrefix, strMessage);
        return LineKind::OURS;
    }
    m_stLast = Places();
    m_strLast.clear();
    if (szLine.empty()) return LineKind::UNKNOWN;
    const std::string_view szHead = szLine.substr(0, kLongestPrefix);
    if (szLine.front() == '{' && szLine.find(kJournalMessage) != szLine.npos)
        return TakeJournal(szLine, stPrefix, strMessage);
    const bool bTag = szHead.find(kTag) != szHead.npos;
    if (!bTag && (!MayBegin(szLine) || (!bForeign && szHead.substr(1, 1) != "("))) return LineKind::UNKNOWN;

    Places stPlaces;
    LineKind eKind = Match(szLine, stPlaces);
    stPrefix.nForm = stPlaces.nForm;
    if (eKind == LineKind::OURS) m_bKnown = true;
    if (eKind == LineKind::UNKNOWN && bTag && !m_bKnown && szLine.find(") >") != szLine.npos &&
        MatchTag(szLine, 0, stPlaces))
        eKind = LineKind::OURS;
    if (eKind == LineKind::FOREIGN || eKind == LineKind::UNKNOWN) return eKind;
    const std::size_t nColour = AnyColourLength(szLine.substr(stPlaces.nMessage));
    if (nColour > 0 && HasForm(szLine.substr(stPlaces.nMessage + nColour))) stPlaces.nMessage += nColour;
    Take(szLine, stPlaces, stPrefix, strMessage);
    if (eKind == LineKind::UNTAGGED) return eKind;
    m_stLast = stPlaces;
    const bool bSure = stPlaces.nBehind == 0 && stPlaces.nMessage > 0 && szLine[stPlaces.nMessage - 1] == ' ';
    if (bSure) m_strLast = szLine.substr(0, stPlaces.nMessage);
    return eKind;
}

LineKind CLogPrefixes::Match(std::string_view szLine, Places& stPlaces) const
{
    static const Regex pForms = Compile(AllPatterns(), true);
    static const Regex pBehindProgram = Compile(kBehindProgram, true);
    const std::size_t nColour = AnyColourLength(szLine);
    const std::string_view szHead = szLine.substr(0, kLongestPrefix);
    Span stTag;
    Found match = Find(pForms.get(), szHead, std::min(nColour, szHead.size()));
    if (match == nullptr) return LineKind::UNKNOWN;
    const auto Note = [&] {
        for (std::size_t i = 0; i < std::size(kParts); ++i)
            Group(match, kParts[i], stPlaces.vParts[i].nStart, stPlaces.vParts[i].nSize);
        stPlaces.nMessage = EndOf(match);
    };
    Note();
    for (std::size_t i = 0; i < std::size(kParts); ++i)
        if (stPlaces.vParts[i].nSize > 0) stPlaces.nForm |= 1U << i;
    const auto IsTag = [&](const char* szGroup) {
        return Group(match, szGroup, stTag.nStart, stTag.nSize) && szLine.substr(stTag.nStart, stTag.nSize) == kTag;
    };
    stPlaces.bAlone = Group(match, "alone", stTag.nStart, stTag.nSize);
    if (stPlaces.bAlone) stPlaces.nForm |= 1U << std::size(kParts);
    if (IsTag("tag") || IsTag("program")) return LineKind::OURS;
    if (Group(match, "program", stTag.nStart, stTag.nSize)) {
        match = Find(pBehindProgram.get(), szHead, stPlaces.nMessage);
        if (match == nullptr) return LineKind::FOREIGN;
        Note();
        return LineKind::OURS;
    }
    if (Group(match, "tag", stTag.nStart, stTag.nSize)) return LineKind::FOREIGN;
    if (stPlaces.vParts[2].nSize > 0) return LineKind::UNTAGGED;
    // "E( 1480) message  (ParloAPI)"
    const std::size_t nBehind = szLine.rfind("  (");
    if (nBehind == szLine.npos || nBehind < stPlaces.nMessage || szLine.back() != ')') return LineKind::UNKNOWN;
    stPlaces.nBehind = szLine.size() - nBehind;
    return szLine.substr(nBehind + 3, kTag.size()) == kTag ? LineKind::OURS : LineKind::FOREIGN;
}

// Looks for the tag and the form of a record behind any prefix.
bool CLogPrefixes::MatchTag(std::string_view szLine, std::size_t nStart, Places& stPlaces) const
{
    static const Regex pAnywhere = Compile(kAnywhere, false);
    const Found match = Find(pAnywhere.get(), szLine.substr(0, kLongestPrefix), nStart);
    if (match == nullptr || !HasForm(szLine.substr(EndOf(match)))) return false;
    for (const std::size_t i : {1, 2}) Group(match, kParts[i], stPlaces.vParts[i].nStart, stPlaces.vParts[i].nSize);
    stPlaces.nMessage = EndOf(match);
    return true;
}

// Whether a prefix equal to the last but for its digits and its priority stands at the start of `szLine`: most lines
// are recognised so.
bool CLogPrefixes::IsLikeLast(std::string_view szLine) const
{
    if (m_strLast.empty() || szLine.size() < m_strLast.size()) return false;
    constexpr std::string_view kPriorities = "VDIWEFS";
    const Span& stPriority = m_stLast.vParts[3];
    for (std::size_t i = 0; i < m_strLast.size(); ++i) {
        if (m_strLast[i] == szLine[i] || (IsDigit(m_strLast[i]) && IsDigit(szLine[i]))) continue;
        const bool bPriority = i == stPriority.nStart && stPriority.nSize == 1;
        if (!bPriority || IsDigit(m_strLast[i]) || kPriorities.find(szLine[i]) == kPriorities.npos) return false;
    }
    return true;
}

void CLogPrefixes::Take(std::string_view szLine, const Places& stPlaces, LogPrefix& stPrefix, std::string& strMessage)
{
    std::string* const vParts[] = {&stPrefix.strTime, &stPrefix.strProcess, &stPrefix.strThread, &stPrefix.strPriority};
    for (std::size_t i = 0; i < std::size(vParts); ++i)
        *vParts[i] = szLine.substr(stPlaces.vParts[i].nStart, stPlaces.vParts[i].nSize);
    stPrefix.nForm = stPlaces.nForm;
    constexpr std::string_view kEnd = "\033[0m";  // of a reader's colour, which begins before the prefix or the message
    const bool bColour = szLine.front() == '\033' || (stPlaces.nMessage > 0 && szLine[stPlaces.nMessage - 1] == 'm');
    std::string_view szMessage = szLine.substr(stPlaces.nMessage);
    szMessage.remove_suffix(stPlaces.nBehind);
    if (bColour && szMessage.size() >= kEnd.size() && szMessage.substr(szMessage.size() - kEnd.size()) == kEnd)
        szMessage.remove_suffix(kEnd.size());
    strMessage = szMessage;
}

// A line of "journalctl -o json". Its message is a text, or a list of bytes where it is no UTF-8 or has control
// characters.
LineKind CLogPrefixes::TakeJournal(std::string_view szLine, LogPrefix& stPrefix, std::string& strMessage)
{
    static const Regex pBehindProgram = Compile(kBehindProgram, true);
    Json::Value entry;
    std::string strLine(szLine);
    strMessage = CutBytes(strLine);
    if (szLine.find(kTag) == szLine.npos && strMessage.find(kTag) == strMessage.npos) return LineKind::FOREIGN;
    if (!ParseJson(strLine, true, entry) || !entry.isObject()) return LineKind::UNKNOWN;
    const auto Text = [&entry](const char* szKey) { return entry[szKey].isString() ? entry[szKey].asString() : ""; };
    stPrefix = {Text("__REALTIME_TIMESTAMP"), Text("_PID"), Text("_TID"), Text("PRIORITY")};
    if (strMessage.empty()) strMessage = Text("MESSAGE");
    if (Text("SYSLOG_IDENTIFIER") == kTag) return LineKind::OURS;
    const Found match = Find(pBehindProgram.get(), strMessage, 0);
    if (match == nullptr) return LineKind::FOREIGN;
    strMessage.erase(0, EndOf(match));
    return LineKind::OURS;
}
