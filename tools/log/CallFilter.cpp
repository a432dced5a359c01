// Comparison of calls with what is wanted.
#include "log/CallFilter.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace
{

constexpr std::string_view kMonths = "JanFebMarAprMayJunJulAugSepOctNovDec";

// "Nov  5 10:00" as "11-05 10:00", "2026-11-05T10:00" with a blank: so texts of one log compare as their times do.
std::string Comparable(std::string strTime)
{
    const std::size_t nMonth = strTime.size() < 6 ? kMonths.npos : kMonths.find(strTime.substr(0, 3));
    if (nMonth != kMonths.npos && nMonth % 3 == 0) {
        const std::string strMonth = std::to_string(101 + nMonth / 3).substr(1);
        strTime.replace(0, 4, strMonth + '-');
        std::replace(strTime.begin() + 3, strTime.begin() + 4, ' ', '0');
    }
    std::replace(strTime.begin(), strTime.end(), 'T', ' ');
    return strTime;
}

// Less than 0 when `strTime` is before `strBound`, 0 when it begins so. A bound without a day, or without a year, is
// compared with what the log's time has behind it.
int Compare(const std::string& strTime, const std::string& strBound)
{
    std::string strLeft = Comparable(strTime);
    const std::string strRight = Comparable(strBound);
    const std::size_t nLeft = strLeft.find_first_not_of("0123456789");
    const std::size_t nRight = strRight.find_first_not_of("0123456789");
    if (nRight == 2 && strRight[nRight] == ':' && strLeft.find(':') != strLeft.npos)
        strLeft.erase(0, strLeft.find(':') - std::min<std::size_t>(2, strLeft.find(':')));
    else if (nRight == 2 && nLeft == 4)
        strLeft.erase(0, 5);
    return strLeft.compare(0, strRight.size(), strRight);
}

}  // namespace

bool CallFilter::ReadCalls()
{
    if (strCalls.empty()) return true;
    if (strCalls.find_first_not_of("0123456789-") != std::string::npos) return false;
    char* pEnd = nullptr;
    nFirst = std::strtoul(strCalls.c_str(), &pEnd, 10);
    nLast = *pEnd == '-' && pEnd[1] != '\0' ? std::strtoul(pEnd + 1, &pEnd, 10) : nFirst;
    return *pEnd == '\0' && nFirst > 0 && nFirst <= nLast;
}

bool CallFilter::Wants(const LogCall& call) const
{
    if (call.nNumber < nFirst || call.nNumber > nLast) return false;
    if (!strProcess.empty() && call.stPrefix.strProcess != strProcess) return false;
    if (!strKind.empty() && strKind != NameOf(call.digest.Kind())) return false;
    if (bRefused && call.digest.GetResult() != CCallDigest::Result::REFUSED) return false;
    if (call.stPrefix.strTime.empty()) return strSince.empty() && strUntil.empty();
    return (strSince.empty() || Compare(call.stPrefix.strTime, strSince) >= 0) &&
           (strUntil.empty() || Compare(call.stPrefix.strTime, strUntil) <= 0);
}
