// Escaping, cutting and aligning of text.
#include "text/Text.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>

#include "Printable.h"

namespace
{

constexpr std::size_t kLongestShown = 240;  // bytes

// The first `nBytes` bytes, less a character that this would cut.
std::string_view Head(std::string_view szText, std::size_t nBytes)
{
    const auto InsideCharacter = [szText](std::size_t n) { return (szText[n] & 0xC0) == 0x80; };
    for (int i = 0; i < 3 && InsideCharacter(nBytes); ++i) --nBytes;
    return szText.substr(0, nBytes);
}

// What stands behind a text that was cut.
std::string Rest(std::string_view szText)
{
    return "... (" + std::to_string(szText.size()) + " bytes)";
}

// The code of the character at the start of `szText` when it must not reach a terminal raw, 0 otherwise: DEL, a C1
// control or one of Host::IsFormatControl. `nLength` becomes its length then.
unsigned HiddenCode(std::string_view szText, std::size_t& nLength)
{
    const auto nFirst = static_cast<unsigned char>(szText.front());
    const bool bSuspect = std::string_view("\x7F\xC2\xD8\xE2").find(szText.front()) != std::string_view::npos;
    if (!bSuspect || Host::PrintableLength(szText) > 0) return 0;
    const std::size_t nWhole = nFirst == 0x7F ? 1 : nFirst == 0xE2 ? 3 : 2;
    unsigned nCode = nWhole == 1 ? nFirst : nFirst & (0xFFU >> (nWhole + 1));
    for (std::size_t i = 1; i < nWhole; ++i) {
        if (i >= szText.size() || (szText[i] & 0xC0) != 0x80) return 0;
        nCode = nCode << 6U | (static_cast<unsigned char>(szText[i]) & 0x3FU);
    }
    nLength = nWhole;
    return nCode;
}

}  // namespace

std::size_t Columns(const std::string& strText)
{
    const auto IsAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::all_of(strText.begin(), strText.end(), IsAscii)) return strText.size();  // controls are escaped by then
    std::size_t nColumns = 0;
    std::mbstate_t state{};
    for (std::size_t nAt = 0; nAt < strText.size();) {
        wchar_t wch = 0;
        const std::size_t nBytes = std::mbrtowc(&wch, strText.data() + nAt, strText.size() - nAt, &state);
        if (nBytes == 0 || nBytes > strText.size()) return strText.size();  // not the locale's encoding
        nColumns += static_cast<std::size_t>(std::max(wcwidth(wch), 0));
        nAt += nBytes;
    }
    return nColumns;
}

std::string CPaint::Wrap(const char* szCode, const std::string& strText) const
{
    return m_bColoured ? "\033[" + std::string(szCode) + "m" + strText + "\033[0m" : strText;
}

std::string Shown(std::string_view szText)
{
    if (szText.size() <= kLongestShown) return Host::Printable(szText);
    return Host::Printable(Head(szText, kLongestShown)) + Rest(szText);
}

std::string Quoted(std::string_view szText)
{
    constexpr std::string_view kEscaped = "\"\\";
    if (szText.size() <= kLongestShown) return '"' + Host::Printable(szText, kEscaped, true) + '"';
    return '"' + Host::Printable(Head(szText, kLongestShown), kEscaped, true) + Rest(szText) + '"';
}

std::string EscapedInJson(const std::string& strJson)
{
    std::string strResult;
    strResult.reserve(strJson.size());
    for (std::string_view szRest = strJson; !szRest.empty();) {
        std::size_t nLength = std::max<std::size_t>(Host::PlainLength(szRest, {}), 1);
        char buffer[8] = {};
        if (const unsigned nCode = HiddenCode(szRest, nLength); nCode != 0) {
            static_cast<void>(std::snprintf(buffer, sizeof buffer, "\\u%04x", nCode));
            strResult += buffer;
        } else {
            strResult += szRest.substr(0, nLength);
        }
        szRest.remove_prefix(nLength);
    }
    return strResult;
}

std::string Joined(const std::vector<std::string>& vTexts)
{
    std::string strResult;
    for (const std::string& strText : vTexts) strResult += (strResult.empty() ? "" : ", ") + strText;
    return strResult;
}

std::string Count(std::size_t nCount, const char* szOne, const char* szMany)
{
    return std::to_string(nCount) + ' ' + (nCount == 1 ? szOne : szMany);
}

std::string Padded(std::string strText, std::size_t nColumns)
{
    const std::size_t nUsed = Columns(strText);
    if (nUsed < nColumns) strText.append(nColumns - nUsed, ' ');
    return strText;
}

std::string Table(std::vector<std::vector<std::string>> vRows, std::size_t nIndent, const CPaint& paint)
{
    std::vector<std::size_t> vWidths(vRows.front().size());
    for (auto& vCells : vRows) {
        for (std::size_t i = 0; i < vCells.size(); ++i) {
            if (vCells[i].empty()) vCells[i] = "-";
            vWidths[i] = std::max(vWidths[i], Columns(vCells[i]));
        }
    }
    std::string strResult;
    for (const auto& vCells : vRows) {
        std::string strLine;
        for (std::size_t i = 0; i + 1 < vCells.size(); ++i) strLine.append(Padded(vCells[i], vWidths[i])).append("  ");
        strLine += vCells.back();
        strResult.append(nIndent, ' ').append(&vCells == &vRows.front() ? paint.Faint(strLine) : strLine).append("\n");
    }
    return strResult;
}
