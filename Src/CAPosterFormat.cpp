#include "CAPosterFormat.h"

#include <algorithm>
#include <cstddef>

namespace
{

// Removes the leading characters that are in `szSet`; says whether they were at most `nMost`.
bool SkipRun(std::string_view& szText, std::string_view szSet, std::size_t nMost)
{
    const std::size_t nRun = std::min(szText.find_first_not_of(szSet), szText.size());
    szText.remove_prefix(nRun);
    return nRun <= nMost;
}

bool SkipOne(std::string_view& szText, std::string_view szSet)
{
    if (szText.empty() || szSet.find(szText.front()) == std::string_view::npos) return false;
    szText.remove_prefix(1);
    return true;
}

// Removes what follows a '%' when it is a plain integer conversion.
bool SkipIntegerConversion(std::string_view& szText)
{
    constexpr std::string_view kDigits = "0123456789";
    SkipRun(szText, "-+ #0", szText.size());
    if (!SkipRun(szText, kDigits, 3)) return false;
    if (SkipOne(szText, ".") && !SkipRun(szText, kDigits, 3)) return false;
    return SkipRun(szText, "h", 2) && SkipOne(szText, "diouxX");
}

}  // namespace

bool CAPosterFormat::IsUsable(std::string_view szTemplate)
{
    bool bConversion = false;
    for (;;) {
        const std::size_t nPercent = szTemplate.find('%');
        if (nPercent == std::string_view::npos) return true;
        szTemplate.remove_prefix(nPercent + 1);
        if (SkipOne(szTemplate, "%")) continue;
        if (bConversion || !SkipIntegerConversion(szTemplate)) return false;
        bConversion = true;
    }
}
