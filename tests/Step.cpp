#include "Step.h"

#include <cstdlib>
#include <map>
#include <set>
#include <tuple>

#include "CAImageSizeTable.h"
#include "CAService.h"
#include "Conversation.h"
#include "ReplacedNew.h"

static std::set<std::size_t> g_RefusedSizes;  // sizes of objects for which there is no memory

static void* Allocate(std::size_t nSize, bool bThrows) noexcept
{
    return !bThrows && g_RefusedSizes.count(nSize) != 0 ? nullptr : std::malloc(nSize);
}

static void Release(void* p) noexcept
{
    std::free(p);
}

// The private steps of a service, which ask by themselves whether there is a store; called past the access check.
using ServiceStep = void (*)(CCAService&);
static std::vector<ServiceStep>& ServiceSteps()
{
    static std::vector<ServiceStep> vSteps;
    return vSteps;
}
template <auto pStep, typename... Arguments>
struct OpenedStep {
    static const bool bKnown;
};
template <auto pStep, typename... Arguments>
const bool OpenedStep<pStep, Arguments...>::bKnown = [] {
    ServiceSteps().push_back([](CCAService& service) {
        std::tuple<CCAService&, Arguments...> arguments(service, Arguments()...);
        std::apply(pStep, arguments);
    });
    return true;
}();
template struct OpenedStep<&CCAService::t_IsContentsSearchAction>;
template struct OpenedStep<&CCAService::t_UpdateSearchResult, _ConvActionInfo>;
template struct OpenedStep<&CCAService::t_SetSpeechInfo, _ConvActionInfo>;
template struct OpenedStep<&CCAService::t_GetSystemAction, Texts>;
template struct OpenedStep<&CCAService::t_GetSystemActionCandidate, Texts>;
template struct OpenedStep<&CCAService::t_GetSystemActionChannel, std::vector<_Channels>>;
template struct OpenedStep<&CCAService::t_Get2ndAction>;
template struct OpenedStep<&CCAService::t_GetActionIntent>;

static _ConvActionInfo g_stInfo;  // the record of the last reply

static std::string YesNo(bool bResult)
{
    return bResult ? "true" : "false";
}

static std::string Shown(const Json::Value& value)
{
    std::string strJson = JsonLine(value);
    strJson.pop_back();
    return strJson;
}

static std::string Alive()
{
    return std::string("alive:") + (m_pCAService != nullptr ? " pointer" : "") +
           (CCAService::pInstance != nullptr ? " service" : "") +
           (CCADataHandler::pInstance != nullptr ? " store" : "");
}

// A record in which each list has one element, to compare the elements of others with.
static Json::Value FreshRecord()
{
    _ConvActionInfo info;
    info.vChannels.resize(1);
    info.stDisCtrlInfo.vItems.resize(1);
    info.vSAContents.resize(1);
    return ToJson(info);
}

static Texts SayIntoRecord(const Step& step)
{
    std::string strReply = step.strText;
    Texts vResults = {YesNo(ca_get_speech_action(step.strArgument, strReply, g_stInfo))};
    EXPECT_EQ(step.strText, strReply) << "the caller's reply changed";
    const Json::Value record = Filled(ToJson(g_stInfo), FreshRecord());
    for (const std::string& strName : record.getMemberNames()) {
        const bool bLong = strName == "vSAContents" || strName == "vChannels";
        if (!bLong) vResults.push_back(strName + " " + Shown(record[strName]));
        for (Json::ArrayIndex i = 0; bLong && i < record[strName].size(); ++i)
            vResults.push_back(strName + " " + Shown(record[strName][i]));
    }
    return vResults;
}

static Texts ParseDocument(const Step& step)
{
    CCADataHandler* const pStore = CCADataHandler::GetInstance();
    const auto nBefore = static_cast<std::ptrdiff_t>(pStore == nullptr ? 0 : SchemaList(*pStore).size());
    unsigned nCount = 77;
    const auto eStatus = static_cast<E_CA_PARSE_JSON_STATUS>(std::stoi(step.strArgument));
    Texts vResults = {YesNo(CCAParsePacket().ParseData(eStatus, step.strText, nCount))};
    vResults.push_back("count " + std::to_string(nCount));
    if (pStore == nullptr || eStatus != CA_PARSE_JSON_SEARCH_SCHEMA) return vResults;
    const std::vector<_CASchema> vNew(SchemaList(*pStore).begin() + nBefore, SchemaList(*pStore).end());
    if (!vNew.empty()) vResults.push_back("schema " + SchemaText(vNew));
    const std::string strCode = pStore->GetCommunicateErrorCode();
    if (!strCode.empty()) vResults.push_back("error " + Shown(strCode));
    return vResults;
}

static Texts ParseItems(const Step& step)
{
    Texts vResults;
    const Json::Value reply = ParsedJson(step.strText);
    for (const Json::Value& element : reply["rsp"]["tvcontent"]) vResults.push_back(Shown(ItemOf(element)));
    return vResults;
}

static Texts ParsePoster(const Step& step)
{
    _Poster stPoster;
    Json::Value images;
    const std::size_t nBlank = step.strArgument.find(' ');
    images["url"] = step.strText;
    images["index"] = ParsedJson(step.strArgument.substr(nBlank));
    if (!CCAParsePacket().t_ParsePoster(step.strArgument.substr(0, nBlank), images, stPoster)) return {"false"};
    return {Shown(stPoster.szUrl)};
}

static Texts ParsePart(const Step& step)
{
    const std::map<std::string, bool (CCAParsePacket::*)(const Json::Value&)> parts = {
        {"domain", &CCAParsePacket::t_ParseDomian},
        {"nlu", &CCAParsePacket::t_ParseNluInfo},
        {"tvcontrol", &CCAParsePacket::t_ParseTVControl},
        {"displaycontrol", &CCAParsePacket::t_ParseDisplayControl}};
    CCAParsePacket parser;
    Texts vResults = {YesNo((parser.*parts.at(step.strArgument))(ParsedJson(step.strText)))};
    if (step.strArgument != "tvcontrol" || CCADataHandler::pInstance == nullptr) return vResults;
    for (const _TVControl& st : CCADataHandler::pInstance->GetTVControl()) {
        std::string strShown = "command";
        for (const int n : {st.nAmount, st.nIndex, st.nPlaySpeed, st.nListOrder, st.nTime})
            strShown += " " + std::to_string(n);
        for (const std::string& strText :
             {st.szDirection, st.szGBFunction, st.szAction, st.szIntent, st.szType, st.szPrevNext, st.szTargetDevice,
              st.szTargetStatus, st.szColorkey, st.szChannelNo, st.szKeyword, st.szWebsite})
            strShown += " " + strText;
        vResults.push_back(strShown);
    }
    return vResults;
}

static Texts AskForCandidates(const Step& step)
{
    CCASystemActionMap map;
    map.InitializeMap();
    _TVControl stTVControl;
    stTVControl.szAction = step.strArgument;
    Texts vResults = {"kept"};
    vResults.push_back(std::to_string(map.GetSystemActionCandidate(stTVControl, vResults)));
    return vResults;
}

static Texts RunServiceSteps(const Step& step)
{
    CCAService service;
    if (g_RefusedSizes.empty()) service.InitService("steps");
    if (CCADataHandler::pInstance != nullptr) CCADataHandler::pInstance->SetDomain(Words(step.strArgument));
    g_Platform.vLog.clear();
    for (const ServiceStep pStep : ServiceSteps()) pStep(service);
    _ConvActionInfo info;
    return {YesNo(service.GetSpeechActionData(info))};
}

static Texts ShowList(const Step&)
{
    Texts vResults;
    std::vector<_SAContents> vList(1);
    CCADataHandler::GetInstance()->GetSAContentsList(vList);
    for (const _SAContents& stEntry : vList)
        vResults.push_back("entry " + Shown(Filled(ToJson(stEntry), ToJson(_SAContents()))));
    return vResults;
}

static Texts RefuseMemory(const Step& step)
{
    const std::map<std::string, std::size_t> sizes = {
        {"store", sizeof(CCADataHandler)}, {"service", sizeof(CCAService)}, {"sizes", sizeof(CCAImageSizeTable)}};
    g_RefusedSizes.clear();
    for (const std::string& strObject : Words(step.strArgument)) g_RefusedSizes.insert(sizes.at(strObject));
    return {};
}

static Texts ChangeSet(const Step& step)
{
    const std::map<std::string, std::optional<std::string>*> texts = {{"country", &g_Platform.strCountry},
                                                                      {"language", &g_Platform.strLanguage}};
    const std::map<std::string, int*> numbers = {{"init", &g_Platform.nInitResult},
                                                 {"get", &g_Platform.nLanguageResult},
                                                 {"deinit", &g_Platform.nDeinitResult},
                                                 {"factory", &g_Platform.nFactoryResult},
                                                 {"flag", &g_Platform.nFactoryValue}};
    for (const std::string& strSetting : Words(step.strArgument)) {
        const std::size_t nEqual = strSetting.find('=');
        const std::string strName = strSetting.substr(0, nEqual), strValue = strSetting.substr(nEqual + 1);
        if (texts.count(strName) == 0)
            *numbers.at(strName) = std::stoi(strValue);
        else if (strValue == "-")
            texts.at(strName)->reset();
        else
            *texts.at(strName) = strValue;
    }
    return {};
}

static Texts Start(const Step& step)
{
    return {YesNo(ca_initial_service(step.strArgument)), Alive()};
}

static Texts Stop(const Step&)
{
    ca_uninitial();
    return {Alive()};
}

static Texts AskForStatus(const Step&)
{
    return {std::to_string(ca_get_conv_status())};
}

// The voice languages of the text with which conversation is available in the country, and the status of the others.
static Texts AskForLanguages(const Step& step)
{
    std::string strAvailable;
    int nOther = 0;
    g_Platform.strCountry = step.strArgument;
    for (const std::string& strLanguage : Words(step.strText)) {
        g_Platform.strLanguage = strLanguage;
        const int nStatus = ca_get_conv_status();
        if (nStatus == 0)
            strAvailable += strLanguage + " ";
        else
            nOther = nStatus;
    }
    return {strAvailable + "else " + std::to_string(nOther)};
}

static Texts Say(const Step& step)
{
    g_stInfo = _ConvActionInfo();
    return SayIntoRecord(step);
}

static Texts ParseContent(const Step& step)
{
    return {"content " + Shown(ContentOf(ParsedJson(step.strText)))};
}

static Texts RequestSchema(const Step&)
{
    CCADataHandler::GetInstance()->RequestSchema();
    return {};
}

static Texts AskForTimeZone(const Step& step)
{
    return {std::to_string(CCAParsePacket().t_GetTimeZoneDifferenceByStr(step.strArgument))};
}

static const std::map<std::string, Texts (*)(const Step& step)> kSteps = {
    {"start", Start},
    {"stop", Stop},
    {"status", AskForStatus},
    {"say", Say},
    {"more", SayIntoRecord},
    {"parse", ParseDocument},
    {"content", ParseContent},
    {"items", ParseItems},
    {"poster", ParsePoster},
    {"part", ParsePart},
    {"candidates", AskForCandidates},
    {"steps", RunServiceSteps},
    {"request", RequestSchema},
    {"list", ShowList},
    {"zone", AskForTimeZone},
    {"languages", AskForLanguages},
    {"refuse", RefuseMemory},
    {"set", ChangeSet},
};

void BeginConversation()
{
    g_Platform = FakePlatform();
    g_Mutex = FakeMutex();
    g_RefusedSizes.clear();
    delete std::exchange(CCASingleton<CCAImageSizeTable>::pInstance, nullptr);
}

Texts RunStep(const Step& step)
{
    return kSteps.at(step.strVerb)(step);
}

void EndConversation()
{
    ca_uninitial();
    delete std::exchange(CCADataHandler::pInstance, nullptr);
    EXPECT_EQ(0, g_Platform.nSettingOpen);
    EXPECT_EQ(0, g_Mutex.nMade);
}
