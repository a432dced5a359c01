// Recognition of the prefixes of the usual log readers, and reading of lines.
#include "log/LogReader.h"

#include <glib.h>
#include <json/value.h>

#include <algorithm>

#include "log/CallDigest.h"
#include "reading/Input.h"
#include "session/LogForm.h"

namespace
{

constexpr std::size_t kLongestLine = 1 << 16;  // bytes; more is dropped
constexpr std::size_t kShortestOther = 4;      // "E/x:"
constexpr std::size_t kShortestOwn = 11;       // "E/ParloAPI:"

// The files whose lines are recognised without a tag.
constexpr std::string_view kFiles[] = {"CAService",     "CAParseJson",      "CASystemActionMap", "CAUtil",
                                       "CADataHandler", "CADataSortFilter", "CAImageSizeTable",  "parlo-api"};

constexpr std::string_view kColourEnd = "\033[0m";  // as a reader writes it
constexpr std::string_view kJournalMessage = "\"MESSAGE\"";

// clang-format off
#define PARLO_CLOCK R"(\d\d:\d\d:\d\d)"
#define PARLO_DEVICE_TIME R"( *(?<time>(?:\d{4}-)?\d\d-\d\d )" PARLO_CLOCK R"(\.\d+(?: ?[+-]\d{4})?|\d+\.\d{3,9}))"
#define PARLO_PRIORITY "(?<priority>[VDIWEFS])"
#define PARLO_NUMBER R"((?:<(?<priority>\d{1,3})>)?)"
#define PARLO_IDS R"(\(\s*(?:P\s*)?(?<process>\d+)(?:\s*[,:]\s*(?:T\s*)?(?<thread>\d+))?\))"
#define PARLO_TAG R"((?<tag>[^\s:(][^:(]{0,100}?)\s*)"
#define PARLO_END ":(?: |$)"
// The tag behind a program's name.
#define PARLO_INNER "(?:" PARLO_PRIORITY R"([ /])?(?<tag>ParloAPI)(?!\w)\s*(?:)" PARLO_IDS R"()?\s*:?(?: |$))"
// A program that has the tag for its name, or our line behind its own name; or another one.
#define PARLO_PROGRAMS(BEFORE, BEHIND) \
    BEFORE "(?:(?<tag>ParloAPI)" BEHIND R"(|[^\s:\[]+)" BEHIND PARLO_INNER R"(|(?<tag>[^\s:\[]+))" BEHIND ")"
#define PARLO_PROGRAM PARLO_PROGRAMS(R"((?:[^\s:]+ )?)", R"((?:\[(?<process>\d+)\])?)" PARLO_END)
#define PARLO_STRUCTURED R"((?:-|(?:\[(?:[^\]\\]|\\.)*\])+)(?: (?:\xEF\xBB\xBF)?|$))"
// clang-format on

// The groups of a prefix.
constexpr std::pair<const char*, std::string LogPrefix::*> kParts[] = {{"time", &LogPrefix::strTime},
                                                                       {"process", &LogPrefix::strProcess},
                                                                       {"thread", &LogPrefix::strThread},
                                                                       {"priority", &LogPrefix::strPriority}};
constexpr std::size_t kPriority = 3;

struct Freer {
    void operator()(GMatchInfo* pMatch) const { g_match_info_free(pMatch); }
};
using Found = std::unique_ptr<GMatchInfo, Freer>;

// Null when `szText` has no prefix from `nStart` on.
Found Find(std::string_view szText, std::size_t nStart)
{
    static GRegex* const pForms = [] {
        std::string strAll;
        for (const LogFormat& stFormat : kLogFormats)
            strAll.append(strAll.empty() ? "(?:" : "|(?:").append(stFormat.szPattern).append(")");
        constexpr int kFlags = G_REGEX_RAW | G_REGEX_OPTIMIZE | G_REGEX_DUPNAMES | G_REGEX_ANCHORED | G_REGEX_DOTALL;
        return g_regex_new(strAll.c_str(), static_cast<GRegexCompileFlags>(kFlags), G_REGEX_MATCH_DEFAULT, nullptr);
    }();
    GMatchInfo* pMatch = nullptr;
    const gboolean bFound = g_regex_match_full(pForms, szText.data(), static_cast<gssize>(szText.size()),
                                               static_cast<gint>(nStart), G_REGEX_MATCH_DEFAULT, &pMatch, nullptr);
    Found match(pMatch);
    return bFound != FALSE ? std::move(match) : nullptr;
}

// Start and size of what a group matched; false when it did not.
bool Group(const Found& match, const char* szName, std::pair<std::size_t, std::size_t>& span)
{
    gint nFirst = -1;
    gint nEnd = -1;
    if (g_match_info_fetch_named_pos(match.get(), szName, &nFirst, &nEnd) == FALSE || nFirst < 0) return false;
    span = {static_cast<std::size_t>(nFirst), static_cast<std::size_t>(nEnd - nFirst)};
    return true;
}

bool HasTag(std::string_view szLine)
{
    return szLine.size() >= kTag.size() && szLine.find(kTag) != szLine.npos;
}

// Whether a prefix can begin so. The lines of a reply mostly do not.
bool MayBegin(std::string_view szLine)
{
    const char c = szLine[std::min(szLine.find_first_not_of(' '), szLine.size() - 1)];
    if (c == '{') return szLine.find(kJournalMessage) != szLine.npos;
    if (c == '[') return szLine.size() > 1 && (szLine[1] == ' ' || IsDigit(szLine[1]));
    return IsDigit(c) || (c >= 'A' && c <= 'Z') || c == '<' || c == '\033';
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

}  // namespace

// clang-format off
const std::vector<LogFormat> kLogFormats = {
    {"threadtime, epoch, monotonic",
     PARLO_DEVICE_TIME R"(\s+(?:[a-z]\w*\s+)?(?<process>\d+)\s+(?<thread>\d+) )" PARLO_PRIORITY " "
     PARLO_TAG PARLO_END, "11-24 18:42:03.118  1480  1502 E ParloAPI: "},
    {"time, brief", "(?:" PARLO_DEVICE_TIME " +)?" PARLO_PRIORITY "/" PARLO_TAG PARLO_IDS PARLO_END,
     "11-24 18:42:03.118 E/ParloAPI( 1480): "},
    {"tag", PARLO_PRIORITY "/" PARLO_TAG PARLO_END, "E/ParloAPI: "},
    {"process", PARLO_PRIORITY R"(\(\s*(?<process>\d+)\) (?=.*(?<behind>  \((?<tag>[^()]+?)\s*\))$))",
     "E( 1480)   (ParloAPI)"},
    {"long", R"(\[ )" PARLO_DEVICE_TIME R"(\s+(?<process>\d+):\s*(?<thread>\d+) )" PARLO_PRIORITY
     R"(/(?<tag>[^\]]{1,100}?)\s*(?<alone>\])$)", "[ 11-24 18:42:03.118  1480: 1502 E/ParloAPI ]"},
    {"RFC 5424",
     PARLO_PROGRAMS(R"(<(?<priority>\d{1,3})>1 (?<time>\S+) \S+ )", R"( (?<process>\S+) \S+ )" PARLO_STRUCTURED),
     "<11>1 2015-11-24T18:42:03.118Z tv ParloAPI 1480 - - "},
    {"RFC 3164, journalctl short", PARLO_NUMBER R"((?:[A-Z][a-z]{2},? )?(?<time>[A-Z][a-z]{2} [ \d]\d )"
     PARLO_CLOCK R"((?:\.\d+)?(?: \d{4})?) )" PARLO_PROGRAM, "<11>Tue Nov 24 18:42:03 tv ParloAPI[1480]: "},
    {"journalctl short-iso, short-full", PARLO_NUMBER R"((?:[A-Z][a-z]{2} )?(?<time>\d{4}-\d\d-\d\d[ T])"
     PARLO_CLOCK R"((?:[.,]\d+)?(?:Z|[+-]\d\d:?\d\d| [A-Z]{3,4})?) )" PARLO_PROGRAM,
     "2015-11-24T18:42:03+0900 tv ParloAPI[1480]: "},
    {"kernel, journalctl short-monotonic, short-unix", PARLO_NUMBER
     R"((?:\[ *(?<time>\d+\.\d+)\](?:\[ *[CT]\d+\])?|(?<time>\d+\.\d+)) )" PARLO_PROGRAM,
     "[   12.003118] ParloAPI[1480]: "},
    {"journalctl -o json", R"((?<journal>\{))",
     R"({"__REALTIME_TIMESTAMP":"1448390523118000","_PID":"1480","SYSLOG_IDENTIFIER":"ParloAPI","MESSAGE":"m"})"},
    {"parlo --log", PARLO_PRIORITY R"( (?<tag>[^\s:]+))" PARLO_END, "E ParloAPI: "},
    {"any other with a record behind the tag",
     R"(.{0,400}?(?<any>)\b(?<tag>ParloAPI)(?!\w)\s*(?:)" PARLO_IDS R"()?\s*:?(?: |$)(?=[A-Za-z-]+: \w+\(\d+\) >))",
     "@ ParloAPI: CAUtil: GetCountry(1) > "},
};
// clang-format on

LineKind CLogPrefixes::Recognise(std::string_view szLine, bool bForeign, LogPrefix& stPrefix, std::string& strMessage)
{
    Places stPlaces = m_stLast;
    if (!IsLikeLast(szLine)) {
        const bool bBegin = bForeign && !szLine.empty() && MayBegin(szLine);
        const bool bTag = HasTag(szLine);
        if (szLine.size() < (bTag ? kShortestOwn : kShortestOther) || (!bTag && !bBegin)) return LineKind::UNKNOWN;
        stPlaces = Places();
        const LineKind eKind = Match(szLine, stPlaces);
        stPrefix.nForm = stPlaces.nForm;
        if (eKind != LineKind::OURS) return eKind;
        if (stPlaces.nMessage == 0) return TakeJournal(szLine, stPrefix, strMessage);
        const std::size_t nColour = AnyColourLength(szLine.substr(stPlaces.nMessage));
        LogForm stForm;
        if (nColour > 0 && ParseLogForm(szLine.substr(stPlaces.nMessage + nColour), stForm))
            stPlaces.nMessage += nColour;
        const bool bBlank = szLine[stPlaces.nMessage - 1] == ' ';
        if (stPlaces.nBehind == 0 && (bBlank || stPlaces.nMessage == szLine.size())) {
            m_stLast = stPlaces;
            m_strLast = szLine.substr(0, stPlaces.nMessage - (bBlank ? 1 : 0));
        }
    } else {
        stPlaces.nMessage = std::min(m_strLast.size() + 1, szLine.size());
    }
    for (std::size_t i = 0; i < std::size(kParts); ++i)
        stPrefix.*kParts[i].second = szLine.substr(stPlaces.vParts[i].first, stPlaces.vParts[i].second);
    stPrefix.nForm = stPlaces.nForm;
    // A reader's colour begins before the prefix or the message.
    const bool bColour = szLine.front() == '\033' || szLine[stPlaces.nMessage - 1] == 'm';
    strMessage = szLine.substr(stPlaces.nMessage, szLine.size() - stPlaces.nMessage - stPlaces.nBehind);
    if (bColour && EndsWith(strMessage, kColourEnd)) strMessage.resize(strMessage.size() - kColourEnd.size());
    return LineKind::OURS;
}

LineKind CLogPrefixes::Match(std::string_view szLine, Places& stPlaces)
{
    const Found match = Find(szLine, AnyColourLength(szLine));
    Span span;
    if (match == nullptr || (m_bKnown && Group(match, "any", span))) return LineKind::UNKNOWN;
    if (Group(match, "journal", span)) return LineKind::OURS;
    for (std::size_t i = 0; i < std::size(kParts); ++i)
        if (Group(match, kParts[i].first, stPlaces.vParts[i])) stPlaces.nForm |= 1U << i;
    if (Group(match, "alone", span)) stPlaces.nForm |= LogPrefix::kAlone;
    if (Group(match, "behind", span)) stPlaces.nBehind = span.second;
    gint nEnd = 0;
    g_match_info_fetch_pos(match.get(), 0, nullptr, &nEnd);
    stPlaces.nMessage = static_cast<std::size_t>(nEnd);
    if (!Group(match, "tag", span) || szLine.substr(span.first, span.second) != kTag) return LineKind::FOREIGN;
    m_bKnown = m_bKnown || !Group(match, "any", span);
    return LineKind::OURS;
}

// Whether a prefix equal to the last but for its digits and its priority stands at the start of `szLine`: most lines
// are recognised so.
bool CLogPrefixes::IsLikeLast(std::string_view szLine) const
{
    constexpr std::string_view kPriorities = "VDIWEFS";
    if (m_strLast.empty() || szLine.size() < m_strLast.size()) return false;
    const bool bMore = szLine.size() > m_strLast.size();
    if (bMore && (szLine[m_strLast.size()] != ' ' || m_stLast.nForm >= LogPrefix::kAlone)) return false;
    const auto [nPriority, nSize] = m_stLast.vParts[kPriority];
    for (std::size_t i = 0; i < m_strLast.size(); ++i) {
        if (m_strLast[i] == szLine[i] || (IsDigit(m_strLast[i]) && IsDigit(szLine[i]))) continue;
        if (i != nPriority || nSize != 1 || kPriorities.find(szLine[i]) == kPriorities.npos) return false;
    }
    return true;
}

// A line of "journalctl -o json". Its message is a text, or a list of bytes where it is no UTF-8 or has control
// characters.
LineKind CLogPrefixes::TakeJournal(std::string_view szLine, LogPrefix& stPrefix, std::string& strMessage)
{
    if (szLine.find(kJournalMessage) == szLine.npos) return LineKind::UNKNOWN;
    m_bKnown = true;
    std::string strLine(szLine);
    strMessage = CutBytes(strLine);
    if (!HasTag(szLine) && !HasTag(strMessage)) return LineKind::FOREIGN;
    const Json::Value entry = MembersOf(strLine, true);
    if (!entry.isObject()) return LineKind::UNKNOWN;
    const auto Text = [&entry](const char* szKey) { return entry[szKey].isString() ? entry[szKey].asString() : ""; };
    if (strMessage.empty()) strMessage = Text("MESSAGE");
    Places stPlaces;
    if (Text("SYSLOG_IDENTIFIER") != kTag && Match(strMessage, stPlaces) != LineKind::OURS) return LineKind::FOREIGN;
    strMessage.erase(0, stPlaces.nMessage);
    stPrefix = {Text("__REALTIME_TIMESTAMP"), Text("_PID"), Text("_TID"), Text("PRIORITY"), 0};
    return LineKind::OURS;
}

void CLogReader::BeginFile(const std::string& strFile)
{
    m_stFile = File();
    m_stLine = LogTextLine();
    m_stFile.pName = std::make_shared<const std::string>(strFile);
}

void CLogReader::Feed(std::string_view szBytes)
{
    std::string& strPart = m_stFile.strPart;
    while (!szBytes.empty()) {
        const std::size_t nEnd = szBytes.find('\n');
        strPart += szBytes.substr(0, std::min(nEnd, kLongestLine - strPart.size()));
        if (nEnd == szBytes.npos) return;
        szBytes.remove_prefix(nEnd + 1);
        TakeLine(strPart);
        strPart.clear();
    }
}

void CLogReader::TakeLine(std::string_view szLine)
{
    if (++m_stFile.nLine == 1 && Begins(szLine, kByteOrderMark)) szLine.remove_prefix(kByteOrderMark.size());
    if (IsTwice(szLine)) return;
    Classify(Plain(szLine));
    if (!m_stFile.bAlone) m_bAsked = m_sink(m_stLine);
}

// Whether the line is the second of two copies, in a log that has each line twice. A step of a call is never logged
// twice in a row: that tells such a log from one with equal lines.
bool CLogReader::IsTwice(std::string_view szLine)
{
    File& stFile = m_stFile;
    const bool bSame = stFile.nLine > 1 && szLine == stFile.strBefore;
    const bool bRecord = m_stLine.eSort == LogTextLine::Sort::RECORD;
    if (bSame && bRecord) stFile.bTwice = stFile.bTwice || IsStep(m_stLine.strMessage);
    if (!bSame && bRecord && !stFile.bCopy) stFile.bTwice = false;
    stFile.bCopy = bSame && stFile.bTwice && !stFile.bCopy;
    if (!bSame) stFile.strBefore = szLine;
    m_stLine.bSame = bSame;
    return stFile.bCopy;
}

// The line without what each line of the file has: carriage returns, the marks of a quotation.
std::string_view CLogReader::Plain(std::string_view szLine)
{
    const std::size_t nCarriages = szLine.size() - (szLine.find_last_not_of('\r') + 1);
    m_stFile.nCarriages = std::min(m_stFile.nCarriages, nCarriages);
    szLine.remove_suffix(m_stFile.nCarriages);
    std::string& strQuote = m_stFile.strQuote;
    if (!m_stFile.bTags)
        for (strQuote.clear(); Begins(szLine.substr(strQuote.size()), "> ");) strQuote += "> ";
    if (Begins(szLine, strQuote)) szLine.remove_prefix(strQuote.size());
    const bool bColoured = AnyColourLength(szLine) > 0 && ColourLength(szLine) == 0;  // by a reader, not the library
    if (bColoured && EndsWith(szLine, kColourEnd)) {
        szLine.remove_suffix(kColourEnd.size());
        szLine.remove_prefix(AnyColourLength(szLine));
    }
    return szLine;
}

// Fills m_stLine.
void CLogReader::Classify(std::string_view szLine)
{
    LogTextLine& stLine = m_stLine;
    stLine.pFile = m_stFile.pName;
    stLine.nLine = m_stFile.nLine;
    stLine.bTwice = m_stFile.bTwice;
    stLine.strRaw = szLine;
    const LineKind eKind = m_stFile.prefixes.Recognise(szLine, m_bAsked, stLine.stPrefix, stLine.strMessage);
    const bool bOurs = eKind == LineKind::OURS;
    if (bOurs || HasTag(szLine)) ++m_nTagged;
    m_stFile.bTags = m_stFile.bTags || bOurs;
    stLine.bAlone = std::exchange(m_stFile.bAlone, bOurs && stLine.stPrefix.IsAlone()) && !m_stFile.bAlone;
    if (m_stFile.bAlone) m_stFile.stAlone = stLine.stPrefix;
    if (eKind == LineKind::UNKNOWN) stLine.stPrefix.nForm = 0;  // nobody asks for the rest
    if (stLine.bAlone) stLine.stPrefix = m_stFile.stAlone;
    if (stLine.bAlone || !bOurs) stLine.strMessage = szLine;
    if (stLine.bAlone) stLine.strRaw = m_stFile.strAlone + '\n' + stLine.strRaw;
    if (m_stFile.bAlone) m_stFile.strAlone = szLine;

    LogForm stForm;
    const bool bForm = ParseLogForm(stLine.strMessage, stForm);
    const bool bFile = bForm && IsOneOf(stForm.szFile, kFiles);
    stLine.bTagged = bOurs || stLine.bAlone || (!m_stFile.bTags && bFile);
    stLine.eSort = bForm && stLine.bTagged ? LogTextLine::Sort::RECORD : LogTextLine::Sort::MORE;
    if (eKind == LineKind::FOREIGN && !stLine.bTagged) stLine.eSort = LogTextLine::Sort::OTHER;
}
