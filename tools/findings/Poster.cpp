// Has the library finish the address and compares it with what the template says.
#include "findings/Poster.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

#include "CAParseJson.h"
#include "CAPosterFormat.h"
#include "CAUtil.h"
#include "session/LogTap.h"
#include "text/Text.h"

namespace
{

std::string Finished(const Json::Value& images, const char* szKind)
{
    const CLogQuiet quiet;
    CADataRepository::_Poster stPoster;
    CCAParsePacket().t_ParsePoster(szKind, images, stPoster);
    return stPoster.szUrl;
}

// The size code that the library takes: it fills a template that is long enough for any.
int SizeCode(const Json::Value& images, const char* szKind)
{
    Json::Value probe;
    probe["index"] = images["index"];
    probe["url"] = "%d" + std::string(20, ' ');
    return static_cast<int>(std::strtol(Finished(probe, szKind).c_str(), nullptr, 10));
}

// The template with the size code, as long as it gets.
std::string Filled(const std::string& strTemplate, int nSize)
{
    constexpr std::size_t kWidest = 2048;  // width and precision have three digits at most
    const CLogQuiet quiet;
    std::string strUrl(strTemplate.size() + kWidest, '\0');
    CCAUtil::VsnPrint(strUrl.data(), static_cast<int>(strUrl.size()), strTemplate.c_str(), nSize);
    strUrl.resize(std::strlen(strUrl.c_str()));
    return strUrl;
}

constexpr std::string_view kIntegers = "diu";  // conversions that write a size code as it is

// What follows the first '%' that stands for a conversion; empty when none does.
std::string_view Conversion(std::string_view szTemplate)
{
    std::size_t n = szTemplate.find('%');
    while (n != std::string_view::npos && n + 1 < szTemplate.size() && szTemplate[n + 1] == '%')
        n = szTemplate.find('%', n + 2);
    return n == std::string_view::npos ? std::string_view() : szTemplate.substr(n + 1);
}

// Whether a size code was to be put in. What could be an escaped character of an address, as in "%20" and "caf%c3%a9",
// is taken for that, unless the character were a control.
bool HasSize(std::string_view szTemplate)
{
    for (std::string_view szRest = Conversion(szTemplate); !szRest.empty(); szRest = Conversion(szRest)) {
        if (szRest.size() > 2 && szRest[0] == '0' && szRest[1] >= '1' && szRest[1] <= '9') szRest.remove_prefix(2);
        const bool bEscape = szRest.size() > 1 && std::isxdigit(static_cast<unsigned char>(szRest[1])) != 0;
        if (kIntegers.find(szRest[0]) != std::string_view::npos && !bEscape) return true;
    }
    return false;
}

// Whether the conversion writes something else than the digits of the size code, zeros before them allowed.
bool IsOdd(std::string_view szConversion)
{
    const std::size_t nLetter = szConversion.find_first_not_of("-+ #.0123456789h");
    return nLetter == std::string_view::npos || kIntegers.find(szConversion[nLetter]) == std::string_view::npos ||
           szConversion.substr(0, nLetter).find_first_of("-+ #") != std::string_view::npos;
}

// Whether somebody meant another way of writing the place of the size code: {size}, or %%d.
bool HasOtherPlace(std::string_view szTemplate)
{
    const std::size_t nBrace = szTemplate.find('{');
    if (nBrace != std::string_view::npos && szTemplate.find('}', nBrace) != std::string_view::npos) return true;
    for (std::size_t n = 0; (n = szTemplate.find("%%", n)) != std::string_view::npos; n += 2)
        if (n + 2 < szTemplate.size() && kIntegers.find(szTemplate[n + 2]) != std::string_view::npos) return true;
    return false;
}

// As the library does it: one slash of the last pair that is not the scheme's.
std::string WithoutDoubledSlash(std::string strUrl)
{
    const std::size_t nSlashes = strUrl.rfind("//");
    if (nSlashes != std::string::npos && nSlashes > 10) strUrl.erase(nSlashes, 1);
    return strUrl;
}

// What is wrong with a template beside a list of sizes, before its length counts. Empty when nothing is.
std::string WrongTemplate(const std::string& strTemplate, const std::string& strUrl)
{
    if (!CAPosterFormat::IsUsable(strTemplate))
        return std::string("this is no template that can be filled, and is taken as it stands") +
               (strUrl == strTemplate ? "" : ", less what is cut off its end");
    const std::string_view szConversion = Conversion(strTemplate);
    if (szConversion.empty())
        return HasOtherPlace(strTemplate) ? "nothing here stands for the size code, which is left out" : "";
    return IsOdd(szConversion) ? "the size code is not written as a plain number" : "";
}

}  // namespace

void CheckPoster(const Node& images, const char* szKind, CReport& report)
{
    const Node url = images.Member("url");
    const Node index = images.Member("index");
    const std::string strTemplate = url.Text();
    if (report.IsDoubted(url) || report.IsDoubted(index)) return;
    if (strTemplate.empty() && index.Size() > 0)
        report.AtMissing(images, "url", "poster-no-url", "the picture", "there is no address");
    if (strTemplate.empty()) return;
    const std::string strUrl = Finished(images.value, szKind);
    const std::string strResult = ": the address becomes " + Quoted(strUrl);
    const bool bIndex = index.value.isArray();

    if (!bIndex && HasSize(strTemplate))
        return report.AtValue(url, {Severity::ERROR, "poster-unfilled",
                                    "there is no list \"index\" to fill the template from" + strResult});
    const std::string strWrong = bIndex ? WrongTemplate(strTemplate, strUrl) : "";
    if (!strWrong.empty())
        return report.AtValue(
            url, {Severity::ERROR, "poster-plain", strWrong + strResult, "one %d, and %% for a percent sign"});
    if (bIndex && !Conversion(strTemplate).empty() && index.Size() == 0)
        report.AtValue(index, {Severity::ERROR, "poster-size", "no size is on offer, so that 0 is taken" + strResult});
    const std::string strMeant = bIndex ? Filled(strTemplate, SizeCode(images.value, szKind)) : strTemplate;
    if (strUrl == strMeant) return;
    if (strUrl == WithoutDoubledSlash(strMeant))
        return report.AtValue(
            url, {Severity::WARNING, "poster-slash", "one slash of the doubled slash is taken out" + strResult});
    report.AtValue(
        url, {Severity::ERROR, "poster-cut", "the address is cut, as it must be shorter than its template" + strResult,
              "end it in .jpg or .png, with a size code of two digits"});
}
