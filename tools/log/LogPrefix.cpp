// Recognition of the prefixes of the usual log readers.
#include "log/LogPrefix.h"

#include <algorithm>
#include <iterator>

#include "session/LogForm.h"

namespace
{

constexpr std::string_view kTag = "ParloAPI";
constexpr std::string_view kPriorities = "VDIWEFS";
constexpr std::size_t kLongestIds = 48;
constexpr std::size_t kLongestPrefix = 512;  // bytes; the tag of a record is not looked for behind that

// The files whose lines are recognised without a tag.
constexpr std::string_view kFiles[] = {"CAService",     "CAParseJson",      "CASystemActionMap", "CAUtil",
                                       "CADataHandler", "CADataSortFilter", "CAImageSizeTable",  "parlo-api"};

constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

template <std::size_t N>
bool IsOneOf(std::string_view szText, const std::string_view (&words)[N])
{
    return std::find(std::begin(words), std::end(words), szText) != std::end(words);
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsNumber(std::string_view szText)
{
    return !szText.empty() && std::all_of(szText.begin(), szText.end(), IsDigit);
}

bool IsWordByte(char c)
{
    return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

// "11-25", "2026-11-25", "2026-11-25T10:00:00.123+0900", "10:00:00.123", "12.345": digits and what stands between
// those of a date or time, with at least one of that.
bool IsTime(std::string_view szWord)
{
    constexpr std::string_view kBetween = "-:.,+TZ/";
    bool bBetween = false;
    for (const char c : szWord) {
        if (IsDigit(c)) continue;
        if (kBetween.find(c) == std::string_view::npos) return false;
        bBetween = true;
    }
    return bBetween && IsDigit(szWord.front());
}

// Takes blanks and then a word off the front of `szText`.
std::string_view TakeWord(std::string_view& szText)
{
    constexpr std::string_view kBlanks = " \t[]";
    szText.remove_prefix(std::min(szText.find_first_not_of(kBlanks), szText.size()));
    const std::string_view szWord = szText.substr(0, szText.find_first_of(" \t"));
    szText.remove_prefix(szWord.size());
    return szWord.substr(0, std::min(szWord.find_last_not_of(']') + 1, szWord.size()));
}

// Takes the time off the front of `szPrefix`, "Nov 25 10:00:00" and "11-25 10:00:00.123" being one each.
std::string_view TakeTime(std::string_view& szPrefix)
{
    const std::string_view szAll = szPrefix;
    std::string_view szTime;
    std::string_view szRest = szPrefix;
    for (bool bDay = false; !szRest.empty();) {
        const std::string_view szWord = TakeWord(szRest);
        if (szWord.empty() || !(IsTime(szWord) || (bDay && IsNumber(szWord)) || IsOneOf(szWord, kMonths))) break;
        bDay = IsOneOf(szWord, kMonths);
        const char* pStart = szTime.empty() ? szWord.data() : szTime.data();
        szTime = {pStart, static_cast<std::size_t>(szWord.data() + szWord.size() - pStart)};
        szPrefix = szRest;
    }
    return IsOneOf(szTime, kMonths) ? szAll.substr(0, 0) : szTime;  // a month alone is a word
}

// Puts the numbers in `szText` where they belong: the process first, then the thread.
void TakeIds(std::string_view szText, LogPrefix& stPrefix)
{
    while (!szText.empty()) {
        const std::size_t nStart = szText.find_first_of("0123456789");
        if (nStart == std::string_view::npos) return;
        szText.remove_prefix(nStart);
        const std::string_view szNumber = szText.substr(0, szText.find_first_not_of("0123456789"));
        szText.remove_prefix(szNumber.size());
        std::string& strId = stPrefix.strProcess.empty() ? stPrefix.strProcess : stPrefix.strThread;
        strId = szNumber;
    }
}

// What stands before the tag, without the time.
void TakeWords(std::string_view szPrefix, LogPrefix& stPrefix)
{
    while (!szPrefix.empty()) {
        const std::string_view szWord = TakeWord(szPrefix);
        const bool bPriority = szWord.size() == 1 || (szWord.size() == 2 && szWord[1] == '/');
        if (IsNumber(szWord))
            TakeIds(szWord, stPrefix);
        else if (bPriority && kPriorities.find(szWord.front()) != std::string_view::npos)
            stPrefix.cPriority = szWord.front();
        else if (szWord.size() > 3 && szWord.substr(szWord.size() - 2) == "]:")
            TakeIds(szWord.substr(std::min(szWord.rfind('['), szWord.size())), stPrefix);
    }
}

// Takes "  (P 1234, T 1235): " off the front of `szRest`, as far as it is there.
void TakeBehindTag(std::string_view& szRest, LogPrefix& stPrefix)
{
    const auto Skip = [&szRest](char c) {
        if (!szRest.empty() && szRest.front() == c) szRest.remove_prefix(1);
    };
    szRest.remove_prefix(std::min(szRest.find_first_not_of(" \t"), szRest.size()));
    if (!szRest.empty() && (szRest.front() == '(' || szRest.front() == '[')) {
        const std::size_t nEnd = szRest.find(szRest.front() == '(' ? ')' : ']');
        const std::string_view szIds = szRest.substr(0, nEnd);
        if (nEnd < kLongestIds && szIds.find_first_not_of("([ PTpidt,:=0123456789") == szIds.npos) {
            TakeIds(szIds, stPrefix);
            szRest.remove_prefix(nEnd + 1);
        }
    }
    const std::size_t nColon = szRest.find_first_not_of(" \t");  // behind the padding of the tag
    if (nColon != szRest.npos && szRest[nColon] == ':') szRest.remove_prefix(nColon);
    Skip(':');
    Skip(' ');
}

// Whether the tag stands alone at `nPos`; then fills what of `stPrefix` it can.
bool TagAt(std::string_view szLine, std::size_t nPos, LogPrefix& stPrefix)
{
    std::string_view szRest = szLine.substr(nPos + kTag.size());
    if ((nPos > 0 && IsWordByte(szLine[nPos - 1])) || (!szRest.empty() && IsWordByte(szRest.front()))) return false;
    std::string_view szBefore = szLine.substr(0, nPos);
    stPrefix = LogPrefix();
    szBefore.remove_prefix(ColourLength(szBefore));
    stPrefix.strTime = TakeTime(szBefore);
    if (szBefore.size() >= 2 && szBefore.back() == '/' &&
        kPriorities.find(szBefore[szBefore.size() - 2]) != std::string_view::npos) {
        stPrefix.cPriority = szBefore[szBefore.size() - 2];
        szBefore.remove_suffix(2);
    }
    TakeWords(szBefore, stPrefix);
    TakeBehindTag(szRest, stPrefix);
    stPrefix.nLength = szLine.size() - szRest.size();
    return true;
}

bool HasForm(std::string_view szText, LogForm& stForm)
{
    return ParseLogForm(szText.substr(std::min(szText.find_first_not_of(" \t"), szText.size())), stForm);
}

// Whether a line without our tag begins a record: with a time of day, or with "E/Tag(". A number at the start of a line
// may be a reply's.
bool IsForeign(std::string_view szLine)
{
    std::string_view szRest = szLine.substr(0, kLongestPrefix);
    if (TakeTime(szRest).find(':') != std::string_view::npos) return szLine.front() != ' ' && szLine.front() != '\t';
    if (szLine.size() < 4 || szLine[1] != '/' || kPriorities.find(szLine[0]) == std::string_view::npos) return false;
    return szRest.find('(') != std::string_view::npos;
}

}  // namespace

LineKind RecognisePrefix(std::string_view szLine, LogPrefix& stPrefix)
{
    LogForm stForm;
    bool bTagged = false;
    const std::string_view szHead = szLine.substr(0, kLongestPrefix);
    for (std::size_t n = szHead.find(kTag); n != szHead.npos; n = szHead.find(kTag, n + kTag.size())) {
        LogPrefix stFound;
        if (!TagAt(szLine, n, stFound)) continue;
        const bool bOurs = HasForm(szLine.substr(stFound.nLength), stForm);
        if (bOurs || !bTagged) stPrefix = std::move(stFound);
        bTagged = true;
        if (bOurs) return LineKind::OURS;
    }
    if (bTagged) return LineKind::TAGGED;
    stPrefix = LogPrefix();
    if (HasForm(szLine, stForm) && IsOneOf(stForm.szFile, kFiles)) return LineKind::BARE;
    return IsForeign(szLine) ? LineKind::FOREIGN : LineKind::UNKNOWN;
}
