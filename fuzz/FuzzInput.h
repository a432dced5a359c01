// What the fuzz targets share: how an input is taken apart, and the television that they run on.
//
// An input is text, so that seeds and findings can be read and written by hand. The first line is for the target;
// the documents after it are separated by lines that hold "---" alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Fuzz
{

inline std::string_view Input(const std::uint8_t* pData, std::size_t nSize)
{
    return {reinterpret_cast<const char*>(pData), nSize};
}

// Takes everything up to `szMark` off the front of `szInput`, the mark too; all of it when there is no mark.
inline std::string Take(std::string_view& szInput, std::string_view szMark)
{
    const std::size_t nEnd = szInput.find(szMark);
    std::string strTaken(szInput.substr(0, nEnd));
    szInput.remove_prefix(nEnd == std::string_view::npos ? szInput.size() : nEnd + szMark.size());
    return strTaken;
}

inline std::string TakeLine(std::string_view& szInput)
{
    return Take(szInput, "\n");
}
inline std::string TakeDocument(std::string_view& szInput)
{
    return Take(szInput, "\n---\n");
}

// Ends the process when a promise of the library does not hold.
inline void Require(bool bHolds)
{
    if (!bHolds) __builtin_trap();
}

// Sets the television up by a line "COUNTRY LANGUAGE FLAG", such as "US en_US 1". A word "none", or one that is not
// there, makes the platform fail where it is asked for that setting. So do the country "empty", the language "refused",
// which fails with a text all the same, "stuck", after which the settings cannot be closed, and "throws".
void SetPlatform(const std::string& strLine);

// Makes the `nLine`-th line from now on throw in the log, and all that follow when it is for good; 0: none.
void FailLog(std::size_t nLine, bool bForGood = false);

}  // namespace Fuzz
