// The lines in which the library logs a reply: a bar, the reply's size, and the reply in pieces.
#ifndef PARLO_DUMPLINE_H
#define PARLO_DUMPLINE_H

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>

#include "session/LogForm.h"

enum class DumpLine { NONE, BAR, SIZE, PIECE };

constexpr std::size_t kPieceBytes = 500;
constexpr std::size_t kMostPieces = 205;  // of a longer reply no more is logged

// Which of them the record is; of SIZE also says the size. The bar and the size are what they are wherever they stand.
inline DumpLine DumpLineOf(const LogForm& stForm, std::size_t& nSize)
{
    constexpr std::string_view kBar = "=================print all receive data================";
    constexpr std::string_view kSize = "###########strRawData############(print max length:50KB; actural size:";
    const std::string_view szMessage = stForm.szMessage;
    if (stForm.szFunction != "PrintRcvData") return DumpLine::NONE;
    const std::string_view szBehind = szMessage.substr(std::min(kBar.size(), szMessage.size()));
    if (szMessage.substr(0, kBar.size()) == kBar && (szBehind.empty() || szBehind[0] == '\n' || ColourLength(szBehind)))
        return DumpLine::BAR;
    if (szMessage.substr(0, kSize.size()) != kSize) return DumpLine::PIECE;
    const char* pEnd = szMessage.data() + szMessage.size();
    const auto [pRest, error] = std::from_chars(szMessage.data() + kSize.size(), pEnd, nSize);
    return error == std::errc() && pRest != pEnd && *pRest == ')' ? DumpLine::SIZE : DumpLine::PIECE;
}

#endif
