#include "CAPosterFormat.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace
{

// Removes the leading characters that are in `szSet`; says how many they were.
std::size_t SkipRun(std::string_view& szText, std::string_view szSet)
{
    const std::size_t nRun = std::min(szText.find_first_not_of(szSet), szText.size());
    szText.remove_prefix(nRun);
    return nRun;
}

// Whether what follows a '%' is a plain integer conversion.
bool BeginsIntegerConversion(std::string_view szText)
{
    constexpr std::string_view kDigits = "0123456789";
    SkipRun(szText, "-+ #0");
    if (SkipRun(szText, kDigits) > 3) return false;
    if (SkipRun(szText, ".") > 1 || SkipRun(szText, kDigits) > 3) return false;
    return SkipRun(szText, "h") <= 2 && szText.find_first_of("diouxX") == 0;
}

}  // namespace

bool CAPosterFormat::IsUsable(std::string_view szTemplate)
{
    bool bConversion = false;
    for (std::size_t n = szTemplate.find('%'); n != std::string_view::npos; n = szTemplate.find('%')) {
        szTemplate.remove_prefix(n + 1);
        if (szTemplate.find('%') == 0)
            szTemplate.remove_prefix(1);
        else if (std::exchange(bConversion, true) || !BeginsIntegerConversion(szTemplate))
            return false;
    }
    return true;
}
