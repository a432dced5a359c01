// Finishes the address as the library does, and compares it with what the template says.
#include <algorithm>
#include <cctype>
#include <cstdio>

#include "findings/Effects.h"
#include "text/Text.h"

namespace
{

constexpr std::size_t kNowhere = std::string_view::npos;
constexpr std::string_view kIntegers = "diu";  // conversions that write a size code as it is

// The size code that the library takes: the preferred one when it is on offer, else the first, else 0.
int SizeCode(const Node& index, int nPreferred)
{
    const auto IsPreferred = [nPreferred](const Json::Value& size) { return size.isInt() && size == nPreferred; };
    if (std::any_of(index.value.begin(), index.value.end(), IsPreferred)) return nPreferred;
    return index.Size() == 0 ? 0 : index.Element(0).Number();
}

// How long the conversion of an int is that stands at the start; 0 when none does, or one that the library refuses.
std::size_t ConversionLength(std::string_view szText)
{
    constexpr std::string_view kDigits = "0123456789";
    const auto Behind = [szText](std::string_view szSet, std::size_t n) {
        return std::min(szText.find_first_not_of(szSet, n), szText.size());
    };
    const std::size_t nFlags = Behind("-+ #0", 0);
    const std::size_t nWidth = Behind(kDigits, nFlags);
    const std::size_t nPoint = nWidth + (szText.substr(nWidth, 1) == "." ? 1 : 0);
    const std::size_t nPrecision = nPoint == nWidth ? nWidth : Behind(kDigits, nPoint);
    const std::size_t nLetter = Behind("h", nPrecision);
    const bool bShort = nWidth - nFlags <= 3 && nPrecision - nPoint <= 3 && nLetter - nPrecision <= 2;
    const bool bInteger = nLetter < szText.size() && std::string_view("diouxX").find(szText[nLetter]) != kNowhere;
    return bShort && bInteger ? nLetter + 1 : 0;
}

// What follows the first '%' that stands for a conversion; empty when none does.
std::string_view Conversion(std::string_view szTemplate)
{
    std::size_t n = szTemplate.find('%');
    while (n != kNowhere && n + 1 < szTemplate.size() && szTemplate[n + 1] == '%') n = szTemplate.find('%', n + 2);
    return n == kNowhere ? std::string_view() : szTemplate.substr(n + 1);
}

// Whether the library fills the template: at most one conversion, which is of an int, and "%%" for percent signs.
bool IsUsable(std::string_view szTemplate)
{
    bool bConversion = false;
    for (std::size_t n = 0; (n = szTemplate.find('%', n)) != kNowhere;) {
        const bool bPercent = szTemplate.substr(n + 1, 1) == "%";
        const std::size_t nLength = bPercent ? 1 : ConversionLength(szTemplate.substr(n + 1));
        if (nLength == 0 || (bConversion && !bPercent)) return false;
        bConversion = bConversion || !bPercent;
        n += 1 + nLength;
    }
    return true;
}

// The template with the size code, as long as it gets.
std::string Filled(const std::string& strTemplate, int nSize)
{
    constexpr std::size_t kWidest = 2048;  // width and precision have three digits at most
    if (!IsUsable(strTemplate)) return strTemplate.substr(0, strTemplate.find('\0'));  // as when it is filled
    std::string strUrl(strTemplate.size() + kWidest, '\0');
    static_cast<void>(std::snprintf(strUrl.data(), strUrl.size(), strTemplate.c_str(), nSize));
    return strUrl.substr(0, strUrl.find('\0'));
}

// The address must be shorter than its template, but the common endings get their last letter back.
std::string Cut(std::string strUrl, std::size_t nTemplate)
{
    strUrl.resize(std::min(strUrl.size(), nTemplate - 1));
    const std::string_view szEnd = std::string_view(strUrl).substr(std::max<std::size_t>(strUrl.size(), 2) - 2);
    return strUrl.size() > 2 && (szEnd == "pn" || szEnd == "jp") ? strUrl + 'g' : strUrl;
}

// Whether a size code was to be put in. What could be an escaped character of an address, as in "%20" and "caf%c3%a9",
// is taken for that, unless the character were a control.
bool HasSize(std::string_view szTemplate)
{
    for (std::string_view szRest = Conversion(szTemplate); !szRest.empty(); szRest = Conversion(szRest)) {
        if (szRest.size() > 2 && szRest[0] == '0' && szRest[1] >= '1' && szRest[1] <= '9') szRest.remove_prefix(2);
        const bool bEscape = szRest.size() > 1 && std::isxdigit(static_cast<unsigned char>(szRest[1])) != 0;
        if (kIntegers.find(szRest[0]) != kNowhere && !bEscape) return true;
    }
    return false;
}

// Whether the conversion writes something else than the digits of the size code, zeros before them allowed.
bool IsOdd(std::string_view szConversion)
{
    const std::size_t nLetter = szConversion.find_first_not_of("-+ #.0123456789h");
    return nLetter == kNowhere || kIntegers.find(szConversion[nLetter]) == kNowhere ||
           szConversion.substr(0, nLetter).find_first_of("-+ #") != kNowhere;
}

// Whether somebody meant another way of writing the place of the size code: {size}, or %%d.
bool HasOtherPlace(std::string_view szTemplate)
{
    const std::size_t nBrace = szTemplate.find('{');
    if (nBrace != kNowhere && szTemplate.find('}', nBrace) != kNowhere) return true;
    for (std::size_t n = 0; (n = szTemplate.find("%%", n)) != kNowhere; n += 2)
        if (n + 2 < szTemplate.size() && kIntegers.find(szTemplate[n + 2]) != kNowhere) return true;
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
    if (!IsUsable(strTemplate))
        return std::string("this is no template that can be filled, and is taken as it stands") +
               (strUrl == strTemplate ? "" : ", less what is cut off its end");
    const std::string_view szConversion = Conversion(strTemplate);
    if (szConversion.empty())
        return HasOtherPlace(strTemplate) ? "nothing here stands for the size code, which is left out" : "";
    return IsOdd(szConversion) ? "the size code is not written as a plain number" : "";
}

}  // namespace

void CheckPoster(const Node& images, int nPreferred, CReport& report)
{
    const Node url = images.Member("url");
    const Node index = images.Member("index");
    const std::string strTemplate = url.Text();
    if (report.IsDoubted(url) || report.IsDoubted(index)) return;
    if (strTemplate.empty() && index.Size() > 0)
        report.AtMissing(images, "url", "poster-no-url", "the picture", "there is no address");
    if (strTemplate.empty()) return;
    const bool bIndex = index.value.isArray();
    const int nSize = bIndex ? SizeCode(index, nPreferred) : 0;
    const std::string strMeant = bIndex ? Filled(strTemplate, nSize) : strTemplate;
    const std::string strUrl = WithoutDoubledSlash(bIndex ? Cut(strMeant, strTemplate.size()) : strMeant);
    const std::string strResult = ": the address becomes " + Quoted(strUrl);

    if (!bIndex && HasSize(strTemplate))
        return report.AtValue(url, {Severity::ERROR, "poster-unfilled",
                                    "there is no list \"index\" to fill the template from" + strResult});
    const std::string strWrong = bIndex ? WrongTemplate(strTemplate, strUrl) : "";
    if (!strWrong.empty())
        return report.AtValue(
            url, {Severity::ERROR, "poster-plain", strWrong + strResult, "one %d, and %% for a percent sign"});
    if (bIndex && !Conversion(strTemplate).empty() && (index.Size() == 0 || nSize < 0))
        report.AtValue(index,
                       {Severity::ERROR, "poster-size",
                        (nSize < 0 ? "the size that is taken is negative" : "no size is on offer, so that 0 is taken") +
                            strResult});
    if (strUrl == strMeant) return;
    if (strUrl == WithoutDoubledSlash(strMeant))
        return report.AtValue(
            url, {Severity::WARNING, "poster-slash", "one slash of the doubled slash is taken out" + strResult});
    report.AtValue(
        url, {Severity::ERROR, "poster-cut", "the address is cut, as it must be shorter than its template" + strResult,
              "end it in .jpg or .png, with a size code of two digits"});
}
