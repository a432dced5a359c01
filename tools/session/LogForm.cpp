// Taking apart of the library's log lines.
#include "session/LogForm.h"

#include <algorithm>

namespace
{

// How the first byte of a colour sequence is shown; the last way is to drop it. Longer ones first where one ends
// like another.
constexpr std::string_view kEscapes[] = {"\033", "^[",      "\\x1B",   "\\x1b", "\\033",
                                         "#033", "\\u001b", "\\u001B", "\\e",   ""};

// The two colours of the library, and the end of a colour.
constexpr std::string_view kColours[] = {"[31m", "[34m", "[0m"};
constexpr std::size_t kLibraryColours = 2;

// Takes a run of characters for which `belongs` holds off the front of `szText`.
template <typename Belongs>
std::string_view Take(std::string_view& szText, const Belongs& belongs)
{
    const auto end = std::find_if_not(szText.begin(), szText.end(), belongs);
    const std::string_view szTaken = szText.substr(0, static_cast<std::size_t>(end - szText.begin()));
    szText.remove_prefix(szTaken.size());
    return szTaken;
}

bool TakeMark(std::string_view& szText, std::string_view szMark)
{
    if (!Begins(szText, szMark)) return false;
    szText.remove_prefix(szMark.size());
    return true;
}

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Takes `szColour` off the end of `szText`, however its first byte is shown.
bool CutColour(std::string_view& szText, std::string_view szColour)
{
    if (!EndsWith(szText, szColour)) return false;
    szText.remove_suffix(szColour.size());
    const auto Ends = [szText](std::string_view szEscape) { return EndsWith(szText, szEscape); };
    szText.remove_suffix(std::find_if(std::begin(kEscapes), std::end(kEscapes), Ends)->size());
    return true;
}

}  // namespace

bool ParseLogForm(std::string_view szText, LogForm& stForm)
{
    stForm.szFile = Take(szText, [](char c) { return IsLetter(c) || c == '-'; });
    if (stForm.szFile.empty() || !TakeMark(szText, ": ")) return false;
    stForm.szFunction = Take(szText, [](char c) { return IsLetter(c) || IsDigit(c) || c == '_'; });
    if (stForm.szFunction.empty() || !TakeMark(szText, "(")) return false;
    stForm.szLine = Take(szText, IsDigit);
    if (stForm.szLine.empty() || !TakeMark(szText, ") >")) return false;
    stForm.szMessage = szText;
    // A reader may have taken the blank off the end of a line without a message.
    return TakeMark(stForm.szMessage, " ") || szText.empty() || szText.front() == '\r' || szText.front() == '\n' ||
           ColourLength(szText) > 0;
}

std::size_t ColourLength(std::string_view szText)
{
    for (const std::string_view szEscape : kEscapes) {
        std::string_view szRest = szText;
        if (!TakeMark(szRest, szEscape)) continue;
        for (const std::string_view szColour : kColours)
            if (TakeMark(szRest, szColour)) return szText.size() - szRest.size();
    }
    return 0;
}

bool EndsInEscape(std::string_view szText)
{
    const auto Ends = [szText](std::string_view szEscape) { return !szEscape.empty() && EndsWith(szText, szEscape); };
    return std::any_of(std::begin(kEscapes), std::end(kEscapes), Ends);
}

bool CutShownColour(std::string_view& szText)
{
    bool bCut = CutColour(szText, kColours[kLibraryColours]);
    for (std::size_t i = 0; i < kLibraryColours; ++i) {
        if (!CutColour(szText, kColours[i])) continue;
        bCut = true;
        break;
    }
    return bCut;
}
