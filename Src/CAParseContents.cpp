// Content items: "tvcontent", what its elements share, and whether an item may be offered.
#define CA_LOG_FILE "CAParseJson"  // all parsers log under the name of their class's file

#include "CAParseJson.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "CADataHandler.h"
#include "CAJson.h"
#include "CALog.h"
#include "CAReplyKeys.h"
#include "CAUtil.h"

using namespace CADataRepository;
using namespace CAReplyKeys;
using CAJson::Child;
using CAJson::Has;
using CAJson::Int;
using CAJson::Text;

namespace
{

constexpr char kReplyParser[] = "t_ParseSearchServer";

using ItemParser = bool (*)(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem);

bool ParseMovieItem(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    parser.t_ParseMovieByOne(element, stItem.stMnT);
    return true;
}

bool ParseTVShowItem(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    parser.t_ParseTVShowByOne(element, stItem.stMnT);
    return true;
}

bool ParseAppItem(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    const Json::Value& appInfo = Child(element, "app_info");
    if (appInfo.isNull()) return true;
    CA_LOGD_AS(kReplyParser, "TAG_APPINFO");
    parser.t_ParseAppsByOne(appInfo, stItem.stApp);
    return !stItem.stApp.szId.empty();
}

bool ParseFitnessItem(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    parser.t_ParseFitnessVOD(element, stItem.stVideo);
    return true;
}

bool ParseKidsItem(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    parser.t_ParseKidsBook(element, stItem.stVideo);
    return true;
}

bool ParseWeatherItem(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    stItem.stInfo.szInfoType = stItem.szType;
    parser.t_ParseWeatherInfo(element, stItem.stInfo.stWeather);
    return true;
}

bool ParseStockItem(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    stItem.stInfo.szInfoType = stItem.szType;
    parser.t_ParseStockInfo(element, stItem.stInfo.stStock);
    return true;
}

bool ParseSportsItem(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    stItem.stInfo.szInfoType = stItem.szType;
    parser.t_ParseSportsInfo(element, stItem.stInfo.stSports);
    return true;
}

// "epg" is not here: a programme reaches the library as content shown in detail, not as a search result.
constexpr struct {
    std::string_view szType;
    ItemParser pParse;
} kItemParsers[] = {
    {"movie", ParseMovieItem},     {"tvshow", ParseTVShowItem},   {"apps", ParseAppItem},
    {"app", ParseAppItem},         {"fitness", ParseFitnessItem}, {"kids", ParseKidsItem},
    {"weather", ParseWeatherItem}, {"stock", ParseStockItem},     {"sports", ParseSportsItem},
};

// Reads an element into the fresh `stItem`. False when it is of no known type or has nothing to identify it.
bool ParseItem(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem)
{
    if (CAJson::Take(element, "type", stItem.szType)) CA_LOGD_AS(kReplyParser, "Type[%s]", stItem.szType.c_str());
    for (const auto& [szType, pParse] : kItemParsers)
        if (szType == stItem.szType) return pParse(parser, element, stItem);
    CA_LOGE_AS(kReplyParser, " __FAIL__JSON__READER!!!!!");
    return false;
}

// Where an item of the given type carries its cert flag; null for a type that is never offered to the viewer.
using CertFlag = const std::string& (*)(const _ContentsItem& stItem);

CertFlag CertFlagOf(std::string_view szType)
{
    if (szType == "epg")
        return [](const _ContentsItem& stItem) -> const std::string& { return stItem.stOnTV.szCertFlag; };
    if (szType == "movie" || szType == "tvshow")
        return [](const _ContentsItem& stItem) -> const std::string& { return stItem.stMnT.szCertFlag; };
    if (szType == "apps" || szType == "app")
        return [](const _ContentsItem& stItem) -> const std::string& { return stItem.stApp.szCertFlag; };
    return nullptr;
}

// What of a movie or TV show does not plainly fill a field.
struct MnTParts {
    const Json::Value* pPoster;
    const Json::Value* pCertifications;
    const Json::Value* pGenres;
    const Json::Value* pSeason;
    const Json::Value* pEpisode;
};

constexpr CAJson::PartKey<MnTParts> kMnTParts[] = {
    {"poster", &MnTParts::pPoster},   {"certifications", &MnTParts::pCertifications},
    {"genres", &MnTParts::pGenres},   {"season", &MnTParts::pSeason},
    {"episode", &MnTParts::pEpisode},
};

// Reads an item's "poster", of the given kind, if its `szKey` is there.
void ParseItemPoster(CCAParsePacket& parser, const char* szKind, const Json::Value& itemPoster, _Poster& poster,
                     const char* szKey = "images")
{
    const Json::Value& images = Child(itemPoster, szKey);
    if (!images.isNull()) parser.t_ParsePoster(szKind, images, poster);
}

}  // namespace

// Reads the items in place, each in its list entry, since a record is several kilobytes; hands over those that may be
// offered. Takes each element out of the document, to release it while it is still in the processor's cache.
void CCAParsePacket::t_ParseContents(Json::Value& tvcontent, CCADataHandler& dataHandler, unsigned& nCount)
{
    if (!tvcontent.isArray()) return;
    const auto nOffered = std::count_if(tvcontent.begin(), tvcontent.end(), [](const Json::Value& element) {
        return CertFlagOf(Text(element, "type")) != nullptr;  // elements of other types must not cost memory
    });
    std::vector<_SAContents> vEntries;
    if (nOffered > 0) vEntries.reserve(dataHandler.GetContentsCount() + static_cast<std::size_t>(nOffered) + 1);
    for (Json::Value& stored : tvcontent) {
        const Json::Value element(std::move(stored));
        _ContentsItem& stItem = vEntries.emplace_back().stItem;
        if (ParseItem(*this, element, stItem)) {
            if (t_CheckPermit(stItem)) continue;
            CA_LOGD_AS(kReplyParser, " This content can not be permitted to play: %s", stItem.GetPrintString().c_str());
        }
        vEntries.pop_back();
    }
    nCount = static_cast<unsigned>(vEntries.size());
    if (!vEntries.empty()) dataHandler.SetSeachServerContentsList(std::move(vEntries));
}

void CCAParsePacket::t_ParseOnTVByOne(const Json::Value& element, _OnTVContents& contents)
{
    contents.nKind = E_CA_CONTENT_KIND_PROGRAMME;
    CAJson::Fill(element, kOnTVKeys, contents);
    CA_LOGE("title = [%s]", contents.szTitle.c_str());
    ParseItemPoster(*this, "epg", Child(element, "poster"), contents.stPoster);
    t_ParseCertifications(Child(element, "certifications"), contents.vRatings);
    t_ParseGenres(Child(element, "genres"), contents.vGenres);
    if (Has(element, "channel")) t_ParseChannel(Child(element, "channel"), contents.stChannelInfo);
    if (Has(element, "schedule")) t_ParseSchedule(Child(element, "schedule"), contents.stSchedule);
}

bool CCAParsePacket::t_ParseContent(const Json::Value& content)
{
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    _Content stContent;
    CAJson::AppendRecords(Child(content, "casting"), kCastingKeys, stContent.vCasting);
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
    CAJson::Clear(kMnTKeys, contents);
    const MnTParts stParts = CAJson::SplitAndTake(element, kMnTParts, kMnTKeys, contents);
    if (bTVShow) {
        // Tests the season itself but reads its "number", so the season is 0 whatever the server sends.
        const Json::Value& season = *stParts.pSeason;
        contents.nSeason = season.isInt() ? Int(season, "number") : 0;
        if (!stParts.pEpisode->isNull()) t_ParseEpisode(*stParts.pEpisode, contents.stEpisode);
    }
    ParseItemPoster(*this, bTVShow ? "tvshow" : "movie", *stParts.pPoster, contents.stPoster);
    t_ParseCertifications(*stParts.pCertifications, contents.vRatings);
    t_ParseGenres(*stParts.pGenres, contents.vGenres);
}

void CCAParsePacket::t_ParseAppsByOne(const Json::Value& appInfo, _AppContents& contents)
{
    CAJson::Fill(appInfo, kAppKeys, contents);
    CA_LOGE("premiumflag:%s", contents.szPremiumFlag.c_str());
    if (!t_ResolvePremiumFlag(CCAUtil::IsSupportGamePanel(), contents.szPremiumFlag)) return;
    CAJson::Fill(appInfo, kRunnableAppKeys, contents);
    // The kind is "apps", which the size table does not list: an application gets the first size on offer.
    const Json::Value& poster = Child(appInfo, "poster");
    if (contents.szPremiumFlag == "s") ParseItemPoster(*this, "apps", poster, contents.stPoster);
    if (contents.szPremiumFlag == "p") ParseItemPoster(*this, "apps", poster, contents.stPoster, "images4premium");
}

bool CCAParsePacket::t_ResolvePremiumFlag(bool bGamePanel, std::string& strFlag)
{
    if (!bGamePanel && strFlag == "p") return false;
    if (strFlag == "ps") strFlag = bGamePanel ? "p" : "s";
    return true;
}

void CCAParsePacket::t_ParseKidsBook(const Json::Value& element, _VideoContents& contents)
{
    CAJson::Fill(element, kKidsKeys, contents);
    ParseItemPoster(*this, "kids", Child(element, "poster"), contents.stPoster);
    contents.nKind = E_CA_CONTENT_KIND_KIDS;
}

void CCAParsePacket::t_ParseFitnessVOD(const Json::Value& element, _VideoContents& contents)
{
    contents.nKind = E_CA_CONTENT_KIND_FITNESS;
    CAJson::Fill(element, kFitnessKeys, contents);
    ParseItemPoster(*this, "fitness", Child(element, "poster"), contents.stPoster);
}

void CCAParsePacket::t_ParseChannel(const Json::Value& channel, _ChannelInfo& info)
{
    CAJson::AppendTexts(Child(channel, "source_id"), info.vSourceID);
    info.szName = Text(channel, "name");
}

void CCAParsePacket::t_ParseGenres(const Json::Value& genres, std::vector<_Genres>& list)
{
    CAJson::AppendRecords(genres, kGenreKeys, list);
}

void CCAParsePacket::t_ParseCertifications(const Json::Value& certifications, std::vector<_Certification>& list)
{
    CAJson::AppendRecords(certifications, kCertificationKeys, list);
}

void CCAParsePacket::t_ParseEpisode(const Json::Value& episode, _Episode& stEpisode)
{
    stEpisode.szTitle = Text(episode, "title");
    const Json::Value& number = Child(episode, "number");
    stEpisode.szNumber = number.isInt() ? CAJson::AnyText(number) : std::string();
}

void CCAParsePacket::t_ParseSchedule(const Json::Value& schedule, _ScheduleInfo& stSchedule)
{
    CAJson::Fill(schedule, kScheduleKeys, stSchedule);
}

bool CCAParsePacket::t_CheckPermit(const _ContentsItem& item)
{
    bool bAdultLock = false;
    bool bPermitted = false;
    const char* szCert = "";
    if (const CertFlag pCertFlag = CertFlagOf(item.szType)) {
        bAdultLock = CCAUtil::FlagAdultLock(item.szType == "epg");
        bPermitted = t_IsPermitted(bAdultLock, pCertFlag(item));
        szCert = pCertFlag(item).c_str();
    } else {
        CA_LOGE("Other type");
    }
    CA_LOGD(" t_CheckPlay(bAdultLock: %d, strCert: %s) return %d### Content:%s", bAdultLock, szCert, bPermitted,
            item.GetPrintString().c_str());
    return bPermitted;
}

bool CCAParsePacket::t_IsPermitted(bool bAdultLock, const std::string& strCert)
{
    return !bAdultLock || strCert != "No";
}
