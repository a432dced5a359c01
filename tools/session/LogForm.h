// The form of the library's log lines, "FILE: FUNCTION(LINE) > MESSAGE" and a colour sequence behind it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

inline bool Begins(std::string_view szText, std::string_view szStart)
{
    return szText.substr(0, szStart.size()) == szStart;
}

inline bool EndsWith(std::string_view szText, std::string_view szEnd)
{
    return szText.size() >= szEnd.size() && szText.substr(szText.size() - szEnd.size()) == szEnd;
}

inline bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

template <std::size_t N>
bool IsOneOf(std::string_view szText, const std::string_view (&words)[N])
{
    return std::find(std::begin(words), std::end(words), szText) != std::end(words);
}

// Parts of the text that was taken apart; valid as long as that text is.
struct LogForm {
    std::string_view szFile;
    std::string_view szFunction;
    std::string_view szLine;  // digits
    std::string_view szMessage;
};

// Takes `szText` apart, without looking for a colour. False when it has another form.
bool ParseLogForm(std::string_view szText, LogForm& stForm);

// How many bytes at the start of `szText` are a colour sequence, be it raw, written as text ("^[[31m", "\x1B[31m")
// or without its first byte ("[31m"); 0 when there is none.
std::size_t ColourLength(std::string_view szText);

// Whether `szText` ends in the first byte of a colour sequence, as one of those shows it.
bool EndsInEscape(std::string_view szText);

// Takes the library's colour off the end of `szText`, and what a terminal's writer sets behind it to end a colour.
// False when there was none.
bool CutShownColour(std::string_view& szText);
