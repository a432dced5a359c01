// Makes text that came from outside, and lines of the log, fit for a terminal.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace Host
{

// Whether the character changes the direction or breaks the line of what stands around it: text could show as
// something else than it is.
constexpr bool IsFormatControl(unsigned nCode)
{
    return nCode == 0x061C || nCode == 0x200E || nCode == 0x200F || (nCode >= 0x2028 && nCode <= 0x202E) ||
           (nCode >= 0x2066 && nCode <= 0x2069);
}

// Whether the character shows as nothing, or as a blank that is none.
constexpr bool IsInvisible(unsigned nCode)
{
    return nCode == 0xA0 || nCode == 0xAD || (nCode >= 0x200B && nCode <= 0x200D) ||
           (nCode >= 0x2060 && nCode <= 0x2064) || nCode == 0xFEFF || (nCode >= 0xE0000 && nCode <= 0xE007F);
}

// Whether the character joins its neighbours or keeps them apart, as scripts and emoji need it.
constexpr bool IsJoiner(unsigned nCode)
{
    return nCode == 0x200C || nCode == 0x200D;
}

// How many bytes the UTF-8 character at the start of `szText` takes; 0 when it is a control character (C0, DEL,
// C1, or one of the first above) or no UTF-8. `pCode` gets its code, unless it is ASCII or the length 0.
inline std::size_t PrintableLength(std::string_view szText, unsigned* pCode = nullptr)
{
    // The smallest code that needs so many bytes; at two bytes, the first one behind the C1 controls.
    constexpr unsigned kSmallest[] = {0, 0, 0xA0, 0x800, 0x10000};

    const auto Byte = [szText](std::size_t i) -> unsigned {
        return i < szText.size() ? static_cast<unsigned char>(szText[i]) : 0U;
    };
    const unsigned nFirst = Byte(0);
    if (nFirst < 0x80) return nFirst >= 0x20 && nFirst != 0x7F ? 1 : 0;
    if (nFirst < 0xC2 || nFirst > 0xF4) return 0;

    const std::size_t nLength = nFirst >= 0xF0 ? 4 : nFirst >= 0xE0 ? 3 : 2;
    unsigned nCode = nFirst & (0xFFU >> (nLength + 1));
    for (std::size_t i = 1; i < nLength; ++i) {
        if ((Byte(i) & 0xC0U) != 0x80U) return 0;
        nCode = nCode << 6U | (Byte(i) & 0x3FU);
    }
    const bool bSurrogate = nCode >= 0xD800 && nCode <= 0xDFFF;
    const bool bAllowed = nCode >= kSmallest[nLength] && nCode <= 0x10FFFF && !bSurrogate && !IsFormatControl(nCode);
    if (bAllowed && pCode != nullptr) *pCode = nCode;
    return bAllowed ? nLength : 0;
}

// How many bytes at the start of `szText` are ASCII that shows as it is, none of `szEscaped` among them.
inline std::size_t PlainLength(std::string_view szText, std::string_view szEscaped)
{
    const auto IsPlain = [szEscaped](char c) {
        const auto Is = [c](char cEscaped) { return c == cEscaped; };
        return c >= 0x20 && c < 0x7F && std::none_of(szEscaped.begin(), szEscaped.end(), Is);
    };
    return static_cast<std::size_t>(std::find_if_not(szText.begin(), szText.end(), IsPlain) - szText.begin());
}

// `szText` with every control character and every byte that is no UTF-8 written as \xNN, line breaks and tabs as
// \n and \t. A character of `szEscaped` gets a backslash before it; with the backslash among them, the text can be
// told from the result. `bInvisible`: characters that would not show are written as \xNN too, but for a joiner
// between two characters that are not ASCII, which changes how those look.
inline std::string Printable(std::string_view szText, std::string_view szEscaped = {}, bool bInvisible = false)
{
    constexpr char kHex[] = "0123456789ABCDEF";

    std::string strResult;
    strResult.reserve(szText.size());
    bool bAsciiBefore = true;
    while (!szText.empty()) {
        if (const std::size_t nPlain = PlainLength(szText, szEscaped); nPlain > 0) {
            strResult += szText.substr(0, nPlain);
            szText.remove_prefix(nPlain);
            bAsciiBefore = true;
            continue;
        }
        unsigned nCode = 0;
        std::size_t nLength = PrintableLength(szText, &nCode);
        if (bInvisible && IsInvisible(nCode)) {
            const bool bAsciiBehind = nLength == szText.size() || static_cast<unsigned char>(szText[nLength]) < 0x80;
            if (!IsJoiner(nCode) || bAsciiBefore || bAsciiBehind) nLength = 0;
        }
        const auto nByte = static_cast<unsigned char>(szText.front());
        if (szEscaped.find(szText.front()) != std::string_view::npos)
            strResult.append({'\\', szText.front()});
        else if (nLength > 0)
            strResult += szText.substr(0, nLength);
        else if (nByte == '\n' || nByte == '\t')
            strResult += nByte == '\n' ? "\\n" : "\\t";
        else
            strResult.append("\\x").append({kHex[nByte >> 4U], kHex[nByte & 0xFU]});
        bAsciiBefore = nByte < 0x80;
        szText.remove_prefix(nLength > 0 ? nLength : 1);
    }
    return strResult;
}

// Takes the colour sequence (ESC [ digits m) off the end of `szText` and returns it; empty when there is none.
inline std::string_view CutColour(std::string_view& szText)
{
    const std::size_t nStart = szText.rfind("\033[");
    if (nStart == std::string_view::npos || szText.back() != 'm') return {};
    if (szText.find_first_not_of("0123456789", nStart + 2) != szText.size() - 1) return {};
    const std::string_view szColour = szText.substr(nStart);
    szText = szText.substr(0, nStart);
    return szColour;
}

}  // namespace Host
