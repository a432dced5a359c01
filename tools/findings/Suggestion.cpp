// Likeness of words: first without what people get wrong most, then by the number of slips.
#include "findings/Suggestion.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "text/Text.h"

namespace
{

constexpr std::size_t kLongestWord = 64;  // longer ones are no slip of a word that is known

// Words that differ in case, blanks, underscores and hyphens only are the same.
std::string Plain(std::string_view szWord)
{
    std::string strPlain;
    for (const char c : szWord)
        if (std::string_view(" \t_-").find(c) == std::string_view::npos)
            strPlain += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return strPlain;
}

// Parts of words that people take for each other.
constexpr std::pair<std::string_view, std::string_view> kSameMeanings[] = {
    {"number", "no"}, {"volume", "amount"},    {"url", "website"},  {"name", "title"},
    {"text", "msg"},  {"candidates", "names"}, {"minutes", "time"}, {"position", "index"},
};

bool IsPart(std::string_view szLong, std::string_view szShort)
{
    if (szShort.size() < 2 || szShort.size() >= szLong.size()) return false;
    const std::size_t nRest = szLong.size() - szShort.size();
    return (szLong.substr(nRest) == szShort && szLong[nRest - 1] == '_') ||
           (szLong.substr(0, szShort.size()) == szShort && szLong[szShort.size()] == '_');
}

// How many characters must be added, left out, replaced or swapped with their neighbour.
std::size_t Slips(const std::string& strFrom, const std::string& strTo)
{
    std::vector<std::size_t> vBeforeLast(strTo.size() + 1);
    std::vector<std::size_t> vLast(strTo.size() + 1);
    std::vector<std::size_t> vRow(strTo.size() + 1);
    for (std::size_t i = 0; i <= strTo.size(); ++i) vRow[i] = i;
    for (std::size_t i = 1; i <= strFrom.size(); ++i) {
        vBeforeLast.swap(vLast);
        vLast.swap(vRow);
        vRow[0] = i;
        for (std::size_t j = 1; j <= strTo.size(); ++j) {
            const bool bSame = strFrom[i - 1] == strTo[j - 1];
            vRow[j] = std::min({vLast[j] + 1, vRow[j - 1] + 1, vLast[j - 1] + (bSame ? 0 : 1)});
            if (i > 1 && j > 1 && strFrom[i - 1] == strTo[j - 2] && strFrom[i - 2] == strTo[j - 1])
                vRow[j] = std::min(vRow[j], vBeforeLast[j - 2] + 1);
        }
    }
    return vRow.back();
}

// Whether all characters of `strShort` are in `strLong` in order, the first one first.
bool IsShort(const std::string& strShort, const std::string& strLong)
{
    std::size_t nFound = 0;
    for (const char c : strLong) nFound += nFound < strShort.size() && c == strShort[nFound] ? 1 : 0;
    return strShort.size() >= 3 && nFound == strShort.size() && strLong[0] == strShort[0];
}

// The first of `vWords` that `szWord` may be short for, or that may be short for it.
std::string_view Abbreviated(std::string_view szWord, const std::vector<std::string_view>& vWords)
{
    for (const std::string_view szCandidate : vWords)
        if (IsShort(Plain(szWord), Plain(szCandidate)) || IsShort(Plain(szCandidate), Plain(szWord)))
            return szCandidate;
    return {};
}

// The only one of `vWords` that `szWord` begins or ends with, or that begins or ends with it, at an underscore:
// "schedule_livecontent" for "schedule", "name" for "channel_name". A beginning of three letters may end anywhere.
std::string_view PartAlike(std::string_view szWord, const std::vector<std::string_view>& vWords)
{
    constexpr std::size_t kShortest = 3;
    std::string_view szOnly;
    for (const std::string_view szCandidate : vWords) {
        const bool bBegins = szCandidate.size() >= kShortest && szWord.substr(0, szCandidate.size()) == szCandidate;
        if (!bBegins && !IsPart(szWord, szCandidate) && !IsPart(szCandidate, szWord)) continue;
        if (!szOnly.empty()) return {};
        szOnly = szCandidate;
    }
    return szOnly;
}

}  // namespace

std::string_view MostAlike(std::string_view szWord, const std::vector<std::string_view>& vWords, std::size_t nMost)
{
    if (szWord.size() > kLongestWord) return {};
    const std::string strPlain = Plain(szWord);
    std::string_view szBest;
    std::size_t nBest = std::clamp<std::size_t>(strPlain.size() / 3, 1, nMost) + 1;
    for (const std::string_view szCandidate : vWords) {
        const std::string strCandidate = Plain(szCandidate);
        const std::size_t nSlips = Slips(strPlain, strCandidate);
        const bool bTurned = strPlain.size() == 2 && strPlain[0] == strCandidate[1] && strPlain[1] == strCandidate[0];
        const bool bTooShort = nSlips + 1 >= std::max<std::size_t>(strCandidate.size(), 2);
        const bool bPlural = strPlain == strCandidate + 's';
        if (nSlips >= nBest || (bTooShort && !bTurned && !bPlural)) continue;
        nBest = nSlips;
        szBest = szCandidate;
    }
    return szBest;
}

std::string_view SameMeaning(std::string_view szWord, const std::vector<std::string_view>& vWords)
{
    const std::string strWord = '_' + std::string(szWord.substr(0, kLongestWord)) + '_';
    const auto Changed = [&strWord](std::string_view szFrom, std::string_view szTo) {
        const std::string strFrom = '_' + std::string(szFrom) + '_';
        const std::size_t nAt = strWord.find(strFrom);
        if (nAt == std::string::npos) return std::string();
        std::string strResult = strWord;
        return strResult.replace(nAt + 1, szFrom.size(), szTo);
    };
    for (const auto& [szOne, szOther] : kSameMeanings)
        for (const std::string& strChanged : {Changed(szOne, szOther), Changed(szOther, szOne)})
            for (const std::string_view szCandidate : vWords)
                if (!strChanged.empty() && Plain(strChanged) == Plain(szCandidate)) return szCandidate;
    return {};
}

std::string_view Nearest(std::string_view szWord, const std::vector<std::string_view>& vWords)
{
    std::string_view szNearest = MostAlike(szWord, vWords);
    if (szNearest.empty()) szNearest = SameMeaning(szWord, vWords);
    if (szNearest.empty()) szNearest = PartAlike(szWord, vWords);
    return szNearest.empty() ? Abbreviated(szWord, vWords) : szNearest;
}

std::string DidYouMean(std::string_view szWord, const char* szBefore)
{
    return szWord.empty() ? std::string() : std::string(szBefore) + "did you mean " + Quoted(szWord) + '?';
}
