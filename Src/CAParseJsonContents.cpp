// Content items: "tvcontent", what its elements share, and whether an item may be offered.
#define CA_LOG_FILE "CAParseJson"  // all parsers log under the name of their class's file

#include "CAParseJson.h"

#include <string_view>
#include <utility>

#include "CADataHandler.h"
#include "CAJson.h"
#include "CALog.h"
#include "CAReplyKeys.h"
#include "CAUtil.h"

using namespace CADataRepository;
using namespace CAReplyKeys;
using namespace CAJson;

namespace
{

constexpr char kReplyParser[] = "t_ParseSearchServer";

// How an item of one type is read: false when it has nothing to identify it.
using ItemParser = bool (*)(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem);

template <auto pParse, auto pPart>
bool Parse(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    (parser.*pParse)(element, stItem.*pPart);
    return true;
}

template <auto pParse, auto pPart>
bool ParseInfo(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    stItem.stInfo.szInfoType = stItem.szType;
    (parser.*pParse)(element, stItem.stInfo.*pPart);
    return true;
}

bool ParseApp(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    const Json::Value& appInfo = Child(element, "app_info");
    if (appInfo.isNull()) return true;
    CA_LOGD_AS(kReplyParser, "TAG_APPINFO");
    parser.t_ParseAppsByOne(appInfo, stItem.stApp);
    return !stItem.stApp.szId.empty();
}

template <auto pPart>
const std::string& CertFlag(const _ContentsItem& stItem)
{
    return (stItem.*pPart).szCertFlag;
}

using Item = _ContentsItem;
using Packet = CCAParsePacket;

struct ContentType {
    std::string_view szType;
    ItemParser pParse;                                                     // null: not read from "tvcontent"
    const std::string& (*pCertFlag)(const _ContentsItem& item) = nullptr;  // null: never offered to the viewer
};

constexpr ContentType kContentTypes[] = {
    {"movie", Parse<&Packet::t_ParseMovieByOne, &Item::stMnT>, CertFlag<&Item::stMnT>},
    {"tvshow", Parse<&Packet::t_ParseTVShowByOne, &Item::stMnT>, CertFlag<&Item::stMnT>},
    {"apps", ParseApp, CertFlag<&Item::stApp>},
    {"app", ParseApp, CertFlag<&Item::stApp>},
    {"fitness", Parse<&Packet::t_ParseFitnessVOD, &Item::stVideo>},
    {"kids", Parse<&Packet::t_ParseKidsBook, &Item::stVideo>},
    {"weather", ParseInfo<&Packet::t_ParseWeatherInfo, &_Info::stWeather>},
    {"stock", ParseInfo<&Packet::t_ParseStockInfo, &_Info::stStock>},
    {"sports", ParseInfo<&Packet::t_ParseSportsInfo, &_Info::stSports>},
    // A programme reaches the library as content shown in detail, not as a search result.
    {"epg", nullptr, CertFlag<&Item::stOnTV>},
};

// Null for an unknown type.
const ContentType* FindType(std::string_view szType)
{
    for (const ContentType& type : kContentTypes)
        if (type.szType == szType) return &type;
    return nullptr;
}

// Reads "images", or the like, of the item's "poster" if it is there.
void ParseItemPoster(CCAParsePacket& parser, const char* szKind, const Json::Value& element, _Poster& poster,
                     const char* szImages = "images")
{
    const Json::Value& images = Child(Child(element, "poster"), szImages);
    if (!images.isNull()) parser.t_ParsePoster(szKind, images, poster);
}

}  // namespace

bool CCAParsePacket::t_ParseItem(const Json::Value& element, _ContentsItem& stItem)
{
    if (Take(Child(element, "type"), stItem.szType)) CA_LOGD_AS(kReplyParser, "Type[%s]", stItem.szType.c_str());
    const ContentType* pType = FindType(stItem.szType);
    if (pType != nullptr && pType->pParse != nullptr) return pType->pParse(*this, element, stItem);
    CA_LOGE_AS(kReplyParser, " __FAIL__JSON__READER!!!!!");
    return false;
}

void CCAParsePacket::t_ParseContents(const Json::Value& tvcontent, CCADataHandler& dataHandler, unsigned& nCount)
{
    dataHandler.ExpectContents(Elements(tvcontent).size());
    for (const Json::Value& element : Elements(tvcontent)) {
        _ContentsItem stItem;
        if (!t_ParseItem(element, stItem)) continue;
        if (!t_CheckPermit(stItem)) {
            CA_LOGD_AS(kReplyParser, " This content can not be permitted to play: %s", stItem.GetPrintString().c_str());
            continue;
        }
        dataHandler.SetSeachServerContentsList(std::move(stItem));
        ++nCount;
    }
}

void CCAParsePacket::t_ParseOnTVByOne(const Json::Value& element, _OnTVContents& contents)
{
    contents.nKind = E_CA_CONTENT_KIND_PROGRAMME;
    Fill(element, kOnTVKeys, contents);
    CA_LOGE("title = [%s]", contents.szTitle.c_str());
    ParseItemPoster(*this, "epg", element, contents.stPoster);
    t_ParseCertifications(Child(element, "certifications"), contents.vRatings);
    t_ParseGenres(Child(element, "genres"), contents.vGenres);
    if (const auto& channel = Child(element, "channel"); !channel.isNull())
        t_ParseChannel(channel, contents.stChannelInfo);
    if (const auto& schedule = Child(element, "schedule"); !schedule.isNull())
        t_ParseSchedule(schedule, contents.stSchedule);
}

bool CCAParsePacket::t_ParseContent(const Json::Value& content)
{
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    _Content stContent;
    AppendRecords(Child(content, "casting"), kCastingKeys, stContent.vCasting);
    t_ParseOnTVByOne(content, stContent.stOnTV);
    if (stContent.stOnTV.stChannelInfo.vSourceID.empty()) CA_LOGE(" parse ontv info failed");
    pDataHandler->SetContent(std::move(stContent));
    return true;
}

void CCAParsePacket::t_ParseMovieByOne(const Json::Value& element, _MnTContents& contents)
{
    t_ParseMnT(element, false, contents);
}

void CCAParsePacket::t_ParseTVShowByOne(const Json::Value& element, _MnTContents& contents)
{
    t_ParseMnT(element, true, contents);
}

void CCAParsePacket::t_ParseMnT(const Json::Value& element, bool bTVShow, _MnTContents& contents)
{
    contents.nKind = bTVShow ? E_CA_CONTENT_KIND_TVSHOW : E_CA_CONTENT_KIND_MOVIE;
    Fill(element, kMnTKeys, contents);
    if (bTVShow) {
        // Tests the season itself but reads its "number", so the season is 0 whatever the server sends.
        const Json::Value& season = Child(element, "season");
        contents.nSeason = season.isInt() ? Int(season, "number") : 0;
        if (const auto& episode = Child(element, "episode"); !episode.isNull())
            t_ParseEpisode(episode, contents.stEpisode);
    }
    ParseItemPoster(*this, bTVShow ? "tvshow" : "movie", element, contents.stPoster);
    t_ParseCertifications(Child(element, "certifications"), contents.vRatings);
    t_ParseGenres(Child(element, "genres"), contents.vGenres);
}

void CCAParsePacket::t_ParseAppsByOne(const Json::Value& appInfo, _AppContents& contents)
{
    Fill(appInfo, kAppKeys, contents);
    CA_LOGE("premiumflag:%s", contents.szPremiumFlag.c_str());
    const bool bGamePanel = CCAUtil::IsSupportGamePanel();
    if (!bGamePanel && contents.szPremiumFlag == "p") return;
    if (contents.szPremiumFlag == "ps") contents.szPremiumFlag = bGamePanel ? "p" : "s";
    Fill(appInfo, kRunnableAppKeys, contents);
    // The kind is "apps", which the size table does not list: an application gets the first size on offer.
    if (contents.szPremiumFlag == "s") ParseItemPoster(*this, "apps", appInfo, contents.stPoster);
    if (contents.szPremiumFlag == "p") ParseItemPoster(*this, "apps", appInfo, contents.stPoster, "images4premium");
}

void CCAParsePacket::t_ParseKidsBook(const Json::Value& element, _VideoContents& contents)
{
    Fill(element, kKidsKeys, contents);
    ParseItemPoster(*this, "kids", element, contents.stPoster);
    contents.nKind = E_CA_CONTENT_KIND_KIDS;
}

void CCAParsePacket::t_ParseFitnessVOD(const Json::Value& element, _VideoContents& contents)
{
    contents.nKind = E_CA_CONTENT_KIND_FITNESS;
    Fill(element, kFitnessKeys, contents);
    ParseItemPoster(*this, "fitness", element, contents.stPoster);
}

void CCAParsePacket::t_ParseChannel(const Json::Value& channel, _ChannelInfo& info)
{
    AppendTexts(Child(channel, "source_id"), info.vSourceID);
    info.szName = Text(channel, "name");
}

void CCAParsePacket::t_ParseGenres(const Json::Value& genres, std::vector<_Genres>& list)
{
    AppendRecords(genres, kGenreKeys, list);
}

void CCAParsePacket::t_ParseCertifications(const Json::Value& certifications, std::vector<_Certification>& list)
{
    AppendRecords(certifications, kCertificationKeys, list);
}

void CCAParsePacket::t_ParseEpisode(const Json::Value& episode, _Episode& stEpisode)
{
    stEpisode.szTitle = Text(episode, "title");
    const Json::Value& number = Child(episode, "number");
    stEpisode.szNumber = number.isInt() ? AnyText(number) : std::string();
}

void CCAParsePacket::t_ParseSchedule(const Json::Value& schedule, _ScheduleInfo& stSchedule)
{
    Fill(schedule, kScheduleKeys, stSchedule);
}

bool CCAParsePacket::t_CheckPermit(const _ContentsItem& item)
{
    bool bAdultLock = false;
    bool bPermitted = false;
    const char* szCert = "";
    const ContentType* pType = FindType(item.szType);
    if (pType != nullptr && pType->pCertFlag != nullptr) {
        bAdultLock = CCAUtil::FlagAdultLock(item.szType == "epg");
        const std::string& strCert = pType->pCertFlag(item);
        bPermitted = !bAdultLock || strCert != "No";
        szCert = strCert.c_str();
    } else {
        CA_LOGE("Other type");
    }
    CA_LOGD(" t_CheckPlay(bAdultLock: %d, strCert: %s) return %d### Content:%s", bAdultLock, szCert, bPermitted,
            item.GetPrintString().c_str());
    return bPermitted;
}
