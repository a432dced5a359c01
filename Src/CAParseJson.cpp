#include "CAParseJson.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include "CADataHandler.h"
#include "CADataRepository/Vocabulary.h"
#include "CAImageSizeTable.h"
#include "CAJson.h"
#include "CALog.h"
#include "CAPosterFormat.h"
#include "CAReplyKeys.h"
#include "CAUtil.h"

using namespace CADataRepository;
using namespace CAReplyKeys;
using CAJson::Child;
using CAJson::Elements;
using CAJson::Has;
using CAJson::Int;
using CAJson::Text;

namespace
{

constexpr char kReplyParser[] = "t_ParseSearchServer";
constexpr char kSchemaParser[] = "t_ParseSearchSchema";

// ---- Helpers of the two documents' parsers ----

// Sets `code` to what the word stands for. False, with `code` as it was, when it stands for nothing.
template <typename Code, std::size_t N>
bool LookUp(const _Word<Code> (&words)[N], std::string_view szWord, int& code)
{
    for (const _Word<Code>& word : words)
        if (word.szWord == szWord) return code = word.eCode, true;
    return false;
}

// Whether the document says that the server failed. Then logs the error and gives its parts: the code if it is a
// text, and the message.
bool IsErrorAnswer(const char* szOperation, const Json::Value& rsp, const std::string& strStat, std::string& strCode,
                   std::string& strMessage)
{
    if (strStat != "fail") return false;
    const Json::Value& err = Child(rsp, "err");
    strCode = Text(err, "code");
    strMessage = CAJson::AnyText(Child(err, "msg"));
    CA_LOGE_AS(szOperation, "errCode:%s, msg:%s", strCode.c_str(), strMessage.c_str());
    return true;
}

bool IsErrorReply(const Json::Value& rsp)
{
    const std::string strStat = Text(rsp, "stat");
    CA_LOGE_AS(kReplyParser, "strCode:%s", strStat.c_str());
    std::string strCode;
    std::string strMessage;
    if (!IsErrorAnswer(kReplyParser, rsp, strStat, strCode, strMessage)) return false;
    if (strCode.empty()) CA_LOGE_AS(kReplyParser, "nErrCode:%d", Int(Child(rsp, "err"), "code"));
    return true;
}

// The dialog id is cleared by a reply without one, the sequence number is kept.
void StoreDialog(const Json::Value& dialog, _DialogOpen& stDialogOpen)
{
    Text(dialog, "dialog_id").swap(stDialogOpen.strDialogId);  // unlike an assignment it lets go of a long one
    if (!Child(dialog, "dialog_seq").isInt()) return;
    CA_LOGD_AS(kReplyParser, "TAG_DIALOG TAG_DIALOG_SEQ");
    CAJson::Take(dialog, "dialog_seq", stDialogOpen.nDialogSeq);
}

void StoreSystemSentence(const Json::Value& rsp, CCADataHandler& dataHandler)
{
    std::string strSentence;
    if (!CAJson::Take(rsp, "system_sentence", strSentence)) return;
    CA_LOGD_AS(kReplyParser, "TAG_SYSTEM_SENTENCE");
    if (strSentence == "{Null}" || Has(rsp, "displaycontrol")) return;
    CA_LOGD_AS(kReplyParser, "displaycontrol");  // there is none: the line says which test was passed
    dataHandler.SetSystemMessage(strSentence);
}

// The application shows a search hand-over from the raw reply itself. Both conditions must hold, although the log
// line says "or".
bool IsHandOver(CCADataHandler& dataHandler)
{
    const std::vector<_TVControl>& vTVControl = dataHandler.GetTVControl();
    if (dataHandler.GetDomain().size() < 2 || vTVControl.empty() || vTVControl.front().szAction != "display_content")
        return false;
    CA_LOGE_AS(kReplyParser, "domain size >= 2 or action is display_content");
    return true;
}

// ---- The kinds of content item ----

using _ItemParser = bool (*)(CCAParsePacket& parser, const Json::Value& element, _ContentsItem& stItem);

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
    _ItemParser pParse;
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
using _CertFlag = const std::string& (*)(const _ContentsItem& stItem);

_CertFlag CertFlagOf(std::string_view szType)
{
    if (szType == "epg")
        return [](const _ContentsItem& stItem) -> const std::string& { return stItem.stOnTV.szCertFlag; };
    if (szType == "movie" || szType == "tvshow")
        return [](const _ContentsItem& stItem) -> const std::string& { return stItem.stMnT.szCertFlag; };
    if (szType == "apps" || szType == "app")
        return [](const _ContentsItem& stItem) -> const std::string& { return stItem.stApp.szCertFlag; };
    return nullptr;
}

// Reads the items in place, each in its list entry, since a record is several kilobytes; hands over those that may be
// offered. Takes each element out of the document, to release it while it is still in the processor's cache.
void StoreContents(CCAParsePacket& parser, Json::Value& tvcontent, CCADataHandler& dataHandler, unsigned& nCount)
{
    if (!tvcontent.isArray()) return;
    const auto nOffered = std::count_if(tvcontent.begin(), tvcontent.end(), [](const Json::Value& element) {
        return CertFlagOf(Text(element, "type")) != nullptr;  // elements of other types must not cost memory
    });
    std::vector<_SAContents> vEntries;
    if (nOffered > 0) vEntries.reserve(static_cast<std::size_t>(nOffered) + 1);
    for (Json::Value& stored : tvcontent) {
        const Json::Value element(std::move(stored));
        _ContentsItem& stItem = vEntries.emplace_back().stItem;
        if (ParseItem(parser, element, stItem)) {
            if (parser.t_CheckPermit(stItem)) continue;
            CA_LOGD_AS(kReplyParser, " This content can not be permitted to play: %s", stItem.GetPrintString().c_str());
        }
        vEntries.pop_back();
    }
    nCount = static_cast<unsigned>(vEntries.size());
    if (!vEntries.empty()) dataHandler.SetSeachServerContentsList(std::move(vEntries));
}

// ---- Helpers of the parts' parsers ----

void ParseCommandParam(CCAParsePacket& parser, const Json::Value& param, _TVControl& stTVCtl)
{
    constexpr char kOperation[] = "t_ParseTVControl";
    CAJson::Take(param, kParamKeys, stTVCtl);
    // The server marks a position by "index" and writes it under "idx".
    if (Child(param, "index").isInt()) stTVCtl.nIndex = Int(param, "idx");
    std::string strText;
    if (CAJson::Take(param, "keyword", strText)) {
        CA_LOGD_AS(kOperation, "jPrm[i][TAG_KEYWORD].asString():[%s]", strText.c_str());
        stTVCtl.szKeyword = strText;
        CA_LOGD_AS(kOperation, "stTVCtl.szKeyword:[%s]", stTVCtl.szKeyword.c_str());
    }
    if (CAJson::Take(param, "website", strText)) {
        CA_LOGD_AS(kOperation, "jPrm[i][TAG_WEBSITE].asString():[%s]", strText.c_str());
        stTVCtl.szWebsite = strText;
        CA_LOGD_AS(kOperation, "stTVCtl.szWebsite:[%s]", stTVCtl.szWebsite.c_str());
    }
    if (Has(param, "names")) {
        stTVCtl.vNames.clear();
        CAJson::AppendAnyTexts(Child(param, "names"), stTVCtl.vNames);
    }
    parser.t_ParseChannelTVControl(Child(param, "channels"), stTVCtl.vChannels);
    parser.t_ParseUSChannelTVControl(Child(param, "umd_channels"), stTVCtl.vChannels);
}

// Logs and reads a command's "params". What the log shows of them comes out of `nLogBudget`.
void ParseCommandParams(CCAParsePacket& parser, const Json::Value& params, std::size_t& nLogBudget, _TVControl& stTVCtl)
{
    constexpr char kOperation[] = "t_ParseTVControl";
    CA_LOGD_AS(kOperation, "jPrm[%s]", CAJson::Styled(params, nLogBudget).c_str());
    int nIndex = 0;
    for (const Json::Value& param : Elements(params)) {
        CA_LOGD_AS(kOperation, "jPrm[%d][%s]", nIndex++, CAJson::Styled(param, nLogBudget).c_str());
        CA_LOGD_AS(kOperation, "keyword is string[%d], website is string:[%d]", Child(param, "keyword").isString(),
                   Child(param, "website").isString());
        ParseCommandParam(parser, param, stTVCtl);
    }
}

// Reads the poster of an item of the given kind, if `szKey` of its "poster" is there.
void ParseItemPoster(CCAParsePacket& parser, const char* szKind, const Json::Value& element, _Poster& poster,
                     const char* szKey = "images")
{
    const Json::Value& images = Child(Child(element, "poster"), szKey);
    if (!images.isNull()) parser.t_ParsePoster(szKind, images, poster);
}

// Prints the template with the size code. The bound is the template's own length with the terminating zero, so a
// result as long as the template loses its last character; the common extensions get theirs back.
void FinishPosterUrl(const std::string& strTemplate, int nIndex, std::string& strUrl)
{
    const bool bFormat = CAPosterFormat::IsUsable(strTemplate);
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

void ParseStanding(const Json::Value& element, _Sports_Standing& stStanding)
{
    CAJson::Take(element, kStandingKeys, stStanding);
    // The colour flag lands in the ranking, as one byte; the application counts on finding it there.
    const Json::Value& textColor = Child(element, "text_color");
    if (textColor.isBool()) stStanding.szRanking.assign(1, textColor.asBool() ? '\1' : '\0');
    CAJson::AppendAnyTexts(Child(element, "season_stats"), stStanding.vSeasonStats);
}

// The number that the text begins with, blanks and a sign before it allowed; 0 without one. Clamped to an int.
int Decimal(const std::string& strText)
{
    const long long nValue = std::strtoll(strText.c_str(), nullptr, 10);
    return static_cast<int>(
        std::clamp<long long>(nValue, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// Reads one rule. `nType` is the type of the rule before it, which a rule of unknown type takes over.
_CASortRule ParseRule(const Json::Value& rule, int& nType)
{
    const std::string strType = Text(rule, "rule");
    CA_LOGE_AS(kSchemaParser, "type:%s", strType.c_str());
    if (!LookUp(kSortRuleWords, strType, nType)) CA_LOGE_AS(kSchemaParser, " invalide type: %s", strType.c_str());
    return {nType, Decimal(Text(rule, "from")), Decimal(Text(rule, "to")), Decimal(Text(rule, "cycle"))};
}

}  // namespace

// ---- The documents ----

bool CCAParsePacket::ParseData(E_CA_PARSE_JSON_STATUS t_eStatus, const std::string& t_szRawData, unsigned& nCount)
{
    CA_LOGE("t_eStatus:%d", t_eStatus);
    switch (t_eStatus) {
        case CA_PARSE_JSON_SEARCH_SERVER:
            return t_ParseSearchServer(t_szRawData, nCount);
        case CA_PARSE_JSON_SEARCH_SCHEMA:
            return t_ParseSearchSchema(t_szRawData);
    }
    CA_LOGE("other t_eStatus");
    return false;
}

bool CCAParsePacket::t_ParseSearchServer(const std::string& t_szRawData, unsigned& nCount)
{
    CA_LOGE("Start to parse search server data.");
    nCount = 0;
    Json::Value root;
    if (!CAJson::Parse(t_szRawData, root)) return CA_LOGE("json parse error"), false;
    if (!Has(root, "rsp")) return false;
    Json::Value& rsp = root["rsp"];
    CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
    if (pDataHandler == nullptr) return CA_LOGE("pDataHandler is NULL"), false;
    CA_LOGD("TAG_RSP");
    if (IsErrorReply(rsp)) return false;

    if (Has(rsp, "domain")) CA_LOGD("TAG_DOMAIN"), t_ParseDomian(Child(rsp, "domain"));
    StoreDialog(Child(rsp, "dialog"), pDataHandler->m_stDialogOpen);
    StoreSystemSentence(rsp, *pDataHandler);
    if (Has(rsp, "tvcontrol")) CA_LOGD("TAG_TVCONTROL"), t_ParseTVControl(Child(rsp, "tvcontrol"));
    if (Has(rsp, "response_info")) CA_LOGD("TAG_RESPONSE_INFO"), t_ParseResponseInfo(Child(rsp, "response_info"));
    if (Has(rsp, "displaycontrol")) t_ParseDisplayControl(Child(rsp, "displaycontrol"));
    if (Has(rsp, "tvcontent")) {
        if (IsHandOver(*pDataHandler)) return true;
        StoreContents(*this, rsp["tvcontent"], *pDataHandler, nCount);
    }
    if (Has(rsp, "nlu_info")) CA_LOGE("TAG_NLU_INFO"), t_ParseNluInfo(Child(rsp, "nlu_info"));
    return true;
}

// An unknown category or rule type is no reason to drop data: the entry or rule takes over the value of the one
// before it. The first entry of a document has the first category then, the first rule the first type.
bool CCAParsePacket::t_ParseSearchSchema(const std::string& t_szRawData)
{
    if (t_szRawData.empty()) return CA_LOGE("t_szRawData is empty"), false;
    CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
    if (pDataHandler == nullptr) return CA_LOGE("pDataHandler is NULL"), false;
    Json::Value root;
    if (!CAJson::Parse(t_szRawData, root)) return CA_LOGE("json parse error"), false;
    const Json::Value& rsp = Child(root, "rsp");

    std::string strCode;
    std::string strMessage;
    if (IsErrorAnswer(__func__, rsp, Text(rsp, "stat"), strCode, strMessage)) {
        const Json::Value& code = Child(Child(rsp, "err"), "code");
        if (strCode.empty())
            strCode = code.isInt() && Int(code) != -1 ? CCAUtil::ConvertIntToString(Int(code)) : strMessage;
        pDataHandler->SetCommunicateErrorCode(std::move(strCode));
        return false;
    }

    int nCategory = kSchemaCategoryWords[0].eCode;
    int nType = kSortRuleWords[0].eCode;
    for (const Json::Value& element : Elements(Child(rsp, "schema"))) {
        const std::string strCategory = Text(element, "category");
        if (!LookUp(kSchemaCategoryWords, strCategory, nCategory))
            CA_LOGE(" invalide category: %s", strCategory.c_str());
        _CASchema stSchema{nCategory, {}};
        for (const Json::Value& rule : Elements(Child(element, "rules")))
            stSchema.vRules.push_back(ParseRule(rule, nType));
        pDataHandler->SetSchemaList(std::move(stSchema));
    }
    return true;
}

// ---- The reply's small parts ----

bool CCAParsePacket::t_ParseDomian(const Json::Value& domain)
{
    CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
    if (pDataHandler == nullptr) return CA_LOGE("pDataHandler is NULL"), false;
    std::vector<std::string> vDomain;
    CAJson::AppendTexts(domain, vDomain);
    pDataHandler->SetDomain(std::move(vDomain));
    return true;
}

bool CCAParsePacket::t_ParseNluInfo(const Json::Value& nlu)
{
    CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
    if (pDataHandler == nullptr) return CA_LOGE("pDataHandler is NULL"), false;
    if (!Child(nlu, "dialog_type").isInt()) return true;
    CA_LOGD("TAG_DIALOG TAG_DIALOG_TYPE");
    CAJson::Take(nlu, "dialog_type", pDataHandler->m_stDialogOpen.nDialogType);
    return true;
}

void CCAParsePacket::t_ParseResponseInfo(const Json::Value& info)
{
    _ResponseInfo stResponseInfo;  // for the debugger: nothing else looks at it
    CAJson::Fill(info, kResponseInfoKeys, stResponseInfo);
}

// ---- Commands ----

bool CCAParsePacket::t_ParseTVControl(const Json::Value& tvcontrol)
{
    CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
    if (pDataHandler == nullptr) return CA_LOGE("pDataHandler is NULL"), false;
    std::size_t nLogBudget = std::size_t{16} << 20;
    for (const Json::Value& command : Elements(tvcontrol)) {
        _TVControl stTVCtl;
        stTVCtl.szAction = Text(command, "action");
        stTVCtl.szIntent = Text(command, "intent");
        CA_LOGE("szAction:[%s], szIntent:%s", stTVCtl.szAction.c_str(), stTVCtl.szIntent.c_str());
        if (Has(command, "params")) ParseCommandParams(*this, Child(command, "params"), nLogBudget, stTVCtl);
        CA_LOGD("stTVCtl:website[%s], keyword:[%s]", stTVCtl.szWebsite.c_str(), stTVCtl.szKeyword.c_str());
        pDataHandler->SetTVControl(std::move(stTVCtl));
    }
    return true;
}

void CCAParsePacket::t_ParseChannelTVControl(const Json::Value& channels, std::vector<_Channels>& list)
{
    CAJson::AppendRecords(channels, kChannelKeys, list);
}

void CCAParsePacket::t_ParseUSChannelTVControl(const Json::Value& umdChannels, std::vector<_Channels>& list)
{
    for (const Json::Value& element : Elements(umdChannels)) {
        _Channels& stChannel = list.emplace_back();
        stChannel.bUMDChannel = true;
        if (Has(element, "umd_channel"))
            t_ParseUSChannelUMDChannel(Child(element, "umd_channel"), stChannel.stUMDChannel);
        const _UMD_Channel& stUMD = stChannel.stUMDChannel;
        stChannel.szNumber = stUMD.szChannelNumber;
        stChannel.szName = stUMD.szChannelName;
        stChannel.szSourceID = stUMD.szSourceID;
        stChannel.szType = stUMD.szAttributes.find("Analog") != std::string::npos ? "A" : "H";
    }
}

void CCAParsePacket::t_ParseUSChannelUMDChannel(const Json::Value& umdChannel, _UMD_Channel& channel)
{
    CAJson::Fill(umdChannel, kUMDChannelKeys, channel);
}

bool CCAParsePacket::t_ParseDisplayControl(const Json::Value& displaycontrol)
{
    CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
    if (pDataHandler == nullptr) return CA_LOGE("pDataHandler is NULL"), false;
    CA_LOGE("jvalue type:%d, size:%d", displaycontrol.type(), static_cast<int>(displaycontrol.size()));
    for (const Json::Value& request : Elements(displaycontrol)) {
        CA_LOGD("disobj type is %d", request.type());
        if (!request.isObject()) continue;
        _DisplayControlInfo stInfo;
        LookUp(kDisplayActionWords, Text(request, "action"), stInfo.nAction);
        const Json::Value& params = Child(request, "params");
        if (!params.isNull()) CA_LOGD(" disparam type is %d", params.type());
        for (const Json::Value& param : Elements(params))
            CAJson::Take(param, kDisplayItemKeys, stInfo.vItems.emplace_back());
        stInfo.numberOfItem = static_cast<int>(stInfo.vItems.size());
        pDataHandler->SetDisplayControlResult(std::move(stInfo));
    }
    return true;
}

// ---- Content items ----

void CCAParsePacket::t_ParseOnTVByOne(const Json::Value& element, _OnTVContents& contents)
{
    contents.nKind = E_CA_CONTENT_KIND_PROGRAMME;
    CAJson::Fill(element, kOnTVKeys, contents);
    CA_LOGE("title = [%s]", contents.szTitle.c_str());
    ParseItemPoster(*this, "epg", element, contents.stPoster);
    t_ParseCertifications(Child(element, "certifications"), contents.vRatings);
    t_ParseGenres(Child(element, "genres"), contents.vGenres);
    if (Has(element, "channel")) t_ParseChannel(Child(element, "channel"), contents.stChannelInfo);
    if (Has(element, "schedule")) t_ParseSchedule(Child(element, "schedule"), contents.stSchedule);
}

bool CCAParsePacket::t_ParseContent(const Json::Value& content)
{
    CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
    if (pDataHandler == nullptr) return CA_LOGE("pDataHandler is NULL"), false;
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
    CAJson::Fill(element, kMnTKeys, contents);
    if (bTVShow) {
        // Tests the season itself but reads its "number", so the season is 0 whatever the server sends.
        const Json::Value& season = Child(element, "season");
        contents.nSeason = season.isInt() ? Int(season, "number") : 0;
        if (Has(element, "episode")) t_ParseEpisode(Child(element, "episode"), contents.stEpisode);
    }
    ParseItemPoster(*this, bTVShow ? "tvshow" : "movie", element, contents.stPoster);
    t_ParseCertifications(Child(element, "certifications"), contents.vRatings);
    t_ParseGenres(Child(element, "genres"), contents.vGenres);
}

void CCAParsePacket::t_ParseAppsByOne(const Json::Value& appInfo, _AppContents& contents)
{
    CAJson::Fill(appInfo, kAppKeys, contents);
    CA_LOGE("premiumflag:%s", contents.szPremiumFlag.c_str());
    if (!t_ResolvePremiumFlag(CCAUtil::IsSupportGamePanel(), contents.szPremiumFlag)) return;
    CAJson::Fill(appInfo, kRunnableAppKeys, contents);
    // The kind is "apps", which the size table does not list: an application gets the first size on offer.
    if (contents.szPremiumFlag == "s") ParseItemPoster(*this, "apps", appInfo, contents.stPoster);
    if (contents.szPremiumFlag == "p") ParseItemPoster(*this, "apps", appInfo, contents.stPoster, "images4premium");
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
    ParseItemPoster(*this, "kids", element, contents.stPoster);
    contents.nKind = E_CA_CONTENT_KIND_KIDS;
}

void CCAParsePacket::t_ParseFitnessVOD(const Json::Value& element, _VideoContents& contents)
{
    contents.nKind = E_CA_CONTENT_KIND_FITNESS;
    CAJson::Fill(element, kFitnessKeys, contents);
    ParseItemPoster(*this, "fitness", element, contents.stPoster);
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

bool CCAParsePacket::t_ParsePoster(const std::string& strKind, const Json::Value& images, _Poster& poster)
{
    const std::string strTemplate = Text(images, "url");
    poster.szType = Text(images, "type");
    const Json::Value& index = Child(images, "index");
    if (index.isArray()) {
        poster.vIndex.reserve(poster.vIndex.size() + index.size());
        for (const Json::Value& element : index)
            if (element.isInt()) poster.vIndex.push_back(element.asInt());
        int nIndex = index.empty() ? 0 : CAJson::AnyInt(index[0]);

        const CCAImageSizeTable* pImageSizeTable = CCASingleton<CCAImageSizeTable>::GetInstance();
        if (pImageSizeTable == nullptr) return CA_LOGE("pImageSizeTable is NULL"), false;
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

// ---- Information items ----

void CCAParsePacket::t_ParseWeatherInfo(const Json::Value& element, _WeatherInfo& weather)
{
    weather.nInfoKind = E_CA_CONTENT_KIND_WEATHER;
    CAJson::Fill(element, kWeatherKeys, weather);
    CAJson::AppendRecords(Child(element, "weather_info"), kWInfoKeys, weather.vWInfo);
    for (const Json::Value& day : Elements(Child(element, "forecast_info"))) {
        _ForeInfo& stDay = weather.vForeInfo.emplace_back();
        CAJson::Fill(day, kForeInfoKeys, stDay);
        CAJson::AppendAnyTexts(Child(day, "condition_icon"), stDay.vConditionIcon);
    }
}

void CCAParsePacket::t_ParseStockInfo(const Json::Value& element, _Stock& stock)
{
    stock.nInfoKind = E_CA_CONTENT_KIND_STOCK;
    CAJson::Fill(element, kStockKeys, stock);
    t_ParseStockValue(Child(element, "detailed"), stock.vDetailed);
}

void CCAParsePacket::t_ParseStockValue(const Json::Value& detailed, std::vector<_StockValue>& list)
{
    for (const Json::Value& element : Elements(detailed)) {
        _StockValue& stValue = list.emplace_back();
        if (CAJson::Take(element, "name", stValue.szName)) stValue.szValue = Text(element, "value");
    }
}

void CCAParsePacket::t_ParseSportsInfo(const Json::Value& element, _Sports& sports)
{
    CAJson::Fill(element, kSportsKeys, sports);
    for (const Json::Value& record : Elements(Child(element, "records"))) {
        _Sports_Records& stRecord = sports.vRecords.emplace_back();
        CAJson::Fill(record, kSportsRecordKeys, stRecord);
        for (const Json::Value& standing : Elements(Child(record, "standing"))) {
            _Sports_Standing& stStanding = stRecord.vStanding.emplace_back();
            ParseStanding(standing, stStanding);
            for (const std::string& strStat : stStanding.vSeasonStats) CA_LOGD(" season stat is %s", strStat.c_str());
        }
    }
    sports.nInfoKind = E_CA_CONTENT_KIND_SPORTS;
}

// ---- Permission ----

bool CCAParsePacket::t_CheckPermit(const _ContentsItem& item)
{
    bool bAdultLock = false;
    bool bPermitted = false;
    const char* szCert = "";
    if (const _CertFlag pCertFlag = CertFlagOf(item.szType)) {
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

// ---- Time zone ----

int CCAParsePacket::t_GetTimeZoneDifferenceByStr(const std::string& strOffset)
{
    const auto at = [&strOffset](std::size_t n) { return n < strOffset.size() ? strOffset[n] : '\0'; };
    const auto pair = [&at](std::size_t n) {
        int nValue = 0;
        for (std::size_t i = n; i < n + 2 && at(i) >= '0' && at(i) <= '9'; ++i) nValue = nValue * 10 + (at(i) - '0');
        return nValue;
    };
    int nMinutes = pair(1) * 60 + pair(4);
    if (at(0) == '-') nMinutes = -nMinutes;
    CA_LOGE(" t_GetTimeZoneDifferenceByStr time : %s %d", strOffset.c_str(), nMinutes);
    return nMinutes;
}
