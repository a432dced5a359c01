// Has the library finish the address and compares it with what the template says.
#include "findings/Poster.h"

#include <cstdlib>

#include "CAParseJson.h"
#include "CAPosterFormat.h"
#include "CAUtil.h"
#include "rendering/Text.h"
#include "session/LogTap.h"

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
    constexpr std::size_t kWidest = 2 * 1024;  // width and precision have three digits at most
    const CLogQuiet quiet;
    std::string strUrl(strTemplate.size() + kWidest, '\0');
    CCAUtil::VsnPrint(strUrl.data(), static_cast<int>(strUrl.size()), strTemplate.c_str(), nSize);
    return strUrl.c_str();
}

bool HasConversion(const std::string& strTemplate)
{
    std::size_t n = strTemplate.find('%');
    while (n != std::string::npos && n + 1 < strTemplate.size() && strTemplate[n + 1] == '%')
        n = strTemplate.find('%', n + 2);
    return n != std::string::npos;
}

// As the library does it: one slash of the last pair that is not the scheme's.
std::string WithoutDoubledSlash(std::string strUrl)
{
    const std::size_t nSlashes = strUrl.rfind("//");
    if (nSlashes != std::string::npos && nSlashes > 10) strUrl.erase(nSlashes, 1);
    return strUrl;
}

}  // namespace

void CheckPoster(const Node& images, const char* szKind, CReport& report)
{
    const Node url = images.Member("url");
    const std::string strTemplate = url.Text();
    if (strTemplate.empty() || report.IsDoubted(images.Member("index"))) return;
    const std::string strUrl = Finished(images.value, szKind);
    const std::string strResult = ": the address becomes " + Quoted(strUrl);
    const bool bIndex = images.Member("index").value.isArray();

    if (!bIndex && HasConversion(strTemplate))
        return report.AtValue(url, {Severity::ERROR, "poster-unfilled",
                                    "there is no list \"index\" to fill the template from" + strResult});
    if (bIndex && !CAPosterFormat::IsUsable(strTemplate))
        return report.AtValue(url, {Severity::ERROR, "poster-plain",
                                    "this is no template that can be filled, and is taken as it stands" + strResult,
                                    "one %d, and %% for a percent sign"});
    if (bIndex && HasConversion(strTemplate) && images.Member("index").Size() == 0)
        report.AtValue(images.Member("index"),
                       {Severity::ERROR, "poster-size", "no size is on offer, so that 0 is taken" + strResult});
    const std::string strMeant = bIndex ? Filled(strTemplate, SizeCode(images.value, szKind)) : strTemplate;
    if (strUrl == strMeant) return;
    if (strUrl == WithoutDoubledSlash(strMeant))
        return report.AtValue(
            url, {Severity::WARNING, "poster-slash", "one slash of the doubled slash is taken out" + strResult});
    report.AtValue(
        url, {Severity::ERROR, "poster-cut", "the address is cut, as it must be shorter than its template" + strResult,
              "end it in .jpg or .png, with a size code of two digits"});
}
