// Posters: which size code is chosen, and the URL made of the server's template.
#define CA_LOG_FILE "CAParseJson"  // all parsers log under the name of their class's file

#include "CAParseJson.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include "CAImageSizeTable.h"
#include "CAJson.h"
#include "CALog.h"
#include "CAUtil.h"

using namespace CADataRepository;
using namespace CAJson;

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

// Whether the template may be formatted with one int: at most one conversion, and that a plain integer one (d, i, u, o,
// x or X with flags, width and precision of at most three digits each; h and hh, but no length beyond int; no "*", no
// position). "%%" stands for a percent sign and may come any number of times.
bool IsUsable(std::string_view szTemplate)
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

// Prints the template with the size code. The bound is the template's own length with the terminating zero, so a
// result as long as the template loses its last character; the common extensions get theirs back.
void FinishPosterUrl(const std::string& strTemplate, int nIndex, std::string& strUrl)
{
    const bool bFormat = IsUsable(strTemplate);
    if (!bFormat) CA_LOGE_AS("t_ParsePoster", " the poster template is not usable: %s", strTemplate.c_str());
    strUrl.assign(strTemplate.size(), '\0');
    const auto nBound = static_cast<int>(std::min<std::size_t>(strUrl.size(), std::numeric_limits<int>::max()));
    if (bFormat)
        CCAUtil::VsnPrint(strUrl.data(), nBound, strTemplate.c_str(), nIndex);
    else
        CCAUtil::VsnPrint(strUrl.data(), nBound, "%s", strTemplate.c_str());
    strUrl.resize(std::strlen(strUrl.c_str()));
    if (strUrl.size() > 2) {
        const std::string_view szEnd = std::string_view(strUrl).substr(strUrl.size() - 2);
        if (szEnd == "pn" || szEnd == "jp") strUrl += 'g';
    }
}

}  // namespace

bool CCAParsePacket::t_ParsePoster(const std::string& strKind, const Json::Value& images, _Poster& poster)
{
    const std::string strTemplate = Text(images, "url");
    poster.szType = Text(images, "type");
    const Json::Value& index = Child(images, "index");
    if (index.isArray()) {
        for (const Json::Value& element : index)
            if (element.isInt()) poster.vIndex.push_back(element.asInt());
        int nIndex = AnyInt(index[0]);

        const CCAImageSizeTable* pImageSizeTable = CCASingleton<CCAImageSizeTable>::GetInstance();
        if (pImageSizeTable == nullptr) {
            CA_LOGE("pImageSizeTable is NULL");
            return false;
        }
        int nTmpIndex = -1;
        if (pImageSizeTable->GetSize(strKind, nTmpIndex)) {
            CA_LOGD("####t_ParsePoster::nTmpIndex: %d", nTmpIndex);
            if (std::find(poster.vIndex.begin(), poster.vIndex.end(), nTmpIndex) != poster.vIndex.end())
                nIndex = nTmpIndex;
        }
        CA_LOGD("####t_ParsePoster::nIndex: %d", nIndex);
        FinishPosterUrl(strTemplate, nIndex, poster.szUrl);
    } else {
        poster.szUrl = strTemplate;
    }

    constexpr std::size_t kBehindScheme = 10;
    const std::size_t nSlashes = poster.szUrl.rfind("//");
    if (nSlashes != std::string::npos && nSlashes > kBehindScheme) {
        CA_LOGE(" the server's ontv type url is error");
        poster.szUrl.erase(nSlashes, 1);
    }
    return true;
}
