// Plays the conversations of tests/data/conversations and compares what comes of each step with what is recorded
// below it. With PARLO_RECORD set the files are written anew instead; see scripts/record.
//
// A conversation is a set, a service on it, and steps. A step is a word with its argument; text that it takes follows
// in lines that begin with two blanks ("@file" stands for a file of tests/data). What came of it is recorded below,
// behind four blanks: "|" and a line of the log, "=" and a result or what it fills of a record. Log lines begin with E
// (error priority, red) or D (debug priority, blue) and lack their line number; "?" begins what is no line of the
// library's. Bytes that are not printable are \xNN, a backslash is \\, "\text[FROM,SIZE]" is that part of the step's
// text.
//
// start NAME, stop, status      the entry points; stop ends the conversation too
// say UTTERANCE / TEXT          a reply, into a fresh record
// more UTTERANCE / TEXT         the same, into the record of the step before
// parse STATUS / TEXT           a document past the service: the search schema document for status 1
// content / TEXT                a programme that is shown in detail, with its cast
// items / TEXT                  what each element of the reply's "tvcontent" fills, also of a kind that is refused
// poster KIND INDEX / URL       a poster template
// part NAME / TEXT              a part of a reply by itself
// candidates WORD              the candidate lookup by itself
// orphan                        the private steps of a service without a command, and without a store if it is refused
// refuse OBJECT...              from here on there is no memory for the store, the service, the size table
// request, list, zone OFFSET    asks for the schema, the result list, a time zone's minutes
// set NAME=VALUE...             the set: country and language ("-": none), init, get, deinit, factory, flag
// log OPERATION...              from here on records the log lines of these only; "all": every line, as at the start
// hide FIELD...                 from here on leaves these fields of a record out
// for WORD...                   the next step once for each word, which stands in for each "$" in it
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>

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

namespace
{

std::string Escaped(const std::string& strText, bool bBackslash = true)
{
    std::string strShown;
    for (const char c : strText) {
        char szByte[8] = {c};
        if (c == '\n' || c == '\t')
            std::snprintf(szByte, sizeof szByte, "\\%c", c == '\n' ? 'n' : 't');
        else if (c == '\\' && bBackslash)
            std::snprintf(szByte, sizeof szByte, "\\\\");
        else if (c < ' ' || c > '~')
            std::snprintf(szByte, sizeof szByte, "\\x%02X", static_cast<unsigned char>(c));
        strShown += szByte;
    }
    return strShown;
}

std::string Replaced(std::string strText, const std::string& strWord)
{
    for (std::size_t n = 0; (n = strText.find('$', n)) != std::string::npos; n += strWord.size())
        strText.replace(n, 1, strWord);
    return strText;
}

// A record in which each list has one element, to compare the elements of others with.
Json::Value FreshRecord()
{
    _ConvActionInfo info;
    info.vChannels.resize(1);
    info.stDisCtrlInfo.vItems.resize(1);
    info.vSAContents.resize(1);
    return ToJson(info);
}

// The private steps of a service, which ask by themselves whether there is a store; read past the access check.
using ServiceStep = void (*)(CCAService&);
std::vector<ServiceStep>& ServiceSteps()
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

class CPlayer
{
public:
    CPlayer()
    {
        g_Platform = FakePlatform();
        g_Mutex = FakeMutex();
        g_RefusedSizes.clear();
        delete std::exchange(CCASingleton<CCAImageSizeTable>::pInstance, nullptr);
    }

    // The conversation with what comes of it now.
    std::string Play(const std::string& strFile)
    {
        std::istringstream lines(strFile);
        std::string strLine;
        std::vector<std::string> vStep;
        while (std::getline(lines, strLine)) {
            if (strLine.rfind("    ", 0) == 0) continue;
            const bool bText = strLine.rfind("  ", 0) == 0;
            if (!bText) Run(vStep);
            m_strPlayed += strLine + "\n";
            if (bText || (!strLine.empty() && strLine[0] != '#')) vStep.push_back(strLine.substr(bText ? 2 : 0));
        }
        Run(vStep);
        ca_uninitial();
        delete std::exchange(CCADataHandler::pInstance, nullptr);
        EXPECT_EQ(0, g_Platform.nSettingOpen);
        EXPECT_EQ(0, g_Mutex.nMade);
        return m_strPlayed;
    }

private:
    void Run(std::vector<std::string>& vStep)
    {
        if (vStep.empty()) return;
        const std::size_t nBlank = std::min(vStep[0].find(' '), vStep[0].size());
        const std::string strVerb = vStep[0].substr(0, nBlank);
        const std::string strArgument = vStep[0].substr(std::min(nBlank + 1, vStep[0].size()));
        std::string strText;
        for (std::size_t i = 1; i < vStep.size(); ++i)
            strText += (i > 1 ? "\n" : "") + (vStep[i][0] == '@' ? DataFile(vStep[i].substr(1)) : vStep[i]);
        vStep.clear();
        if (strVerb == "for") {
            m_vFor = Words(strArgument);
            return;
        }
        const Texts vWords = std::exchange(m_vFor, {});
        if (vWords.empty()) Step(strVerb, strArgument, strText, "");
        for (const std::string& strWord : vWords)
            Step(strVerb, Replaced(strArgument, strWord), Replaced(strText, strWord), strWord + ": ");
    }

    // Runs one step and records it; `strPrefix` makes it one line.
    void Step(const std::string& strVerb, const std::string& strArgument, const std::string& strText,
              const std::string& strPrefix)
    {
        g_Platform.vLog.clear();
        m_vResults.clear();
        const auto verb = kVerbs.find(strVerb);
        if (verb == kVerbs.end())
            ADD_FAILURE() << "unknown step " << strVerb;
        else
            (this->*verb->second)(strArgument, strText);
        for (const LogLine& line : g_Platform.vLog) {
            const std::string strLine = Shown(line, strText);
            if (!strLine.empty()) Add("    | " + strLine);
        }
        if (strPrefix.empty()) {
            for (const std::string& strResult : m_vResults) Add("    = " + strResult);
        } else {
            std::string strJoined;
            for (const std::string& strResult : m_vResults) strJoined += (strJoined.empty() ? "" : ", ") + strResult;
            Add("    = " + strPrefix + strJoined);
        }
    }

    void Add(const std::string& strLine)
    {
        const bool bBlank = strLine.back() == ' ';
        m_strPlayed += (bBlank ? strLine.substr(0, strLine.size() - 1) + "\\x20" : strLine) + "\n";
    }

    // The log line as recorded; empty when it is hidden.
    std::string Shown(const LogLine& line, const std::string& strText) const
    {
        auto [cKind, strFile, strOperation, strMessage] = Read(line);
        if (cKind != '?' && m_Logged.count("all") + m_Logged.count(strOperation) == 0) return "";
        const std::size_t nPart = strMessage.size() < 20 ? std::string::npos : strText.find(strMessage);
        if (nPart != std::string::npos)
            strMessage = "\\text[" + std::to_string(nPart) + "," + std::to_string(strMessage.size()) + "]";
        else
            strMessage = Escaped(strMessage);
        return cKind + (" " + strFile) + " " + strOperation + (strMessage.empty() ? ":" : ": ") + strMessage;
    }

    void Result(const std::string& strResult) { m_vResults.push_back(strResult); }
    void Result(const char* szName, const Json::Value& value)
    {
        if (m_Hidden.count(szName) != 0) return;
        std::string strJson = JsonLine(value);
        strJson.pop_back();
        Result(szName + (" " + Escaped(strJson, false)));
    }

    void RecordStart(const std::string& strName, const std::string&)
    {
        Result(ca_initial_service(strName) ? "true" : "false");
        Alive();
    }
    void RecordStop(const std::string&, const std::string&)
    {
        ca_uninitial();
        Alive();
    }
    void Alive()
    {
        Result(std::string("alive:") + (m_pCAService != nullptr ? " pointer" : "") +
               (CCAService::pInstance != nullptr ? " service" : "") +
               (CCADataHandler::pInstance != nullptr ? " store" : ""));
    }
    void RecordStatus(const std::string&, const std::string&) { Result(std::to_string(ca_get_conv_status())); }

    void RecordSay(const std::string& strUtterance, const std::string& strText)
    {
        m_stInfo = _ConvActionInfo();
        RecordMore(strUtterance, strText);
    }
    void RecordMore(const std::string& strUtterance, const std::string& strText)
    {
        std::string strReply = strText;
        Result(ca_get_speech_action(strUtterance, strReply, m_stInfo) ? "true" : "false");
        EXPECT_EQ(strText, strReply) << "the caller's reply changed";
        const Json::Value record = Filled(ToJson(m_stInfo), m_FreshRecord);
        for (const std::string& strName : record.getMemberNames()) {
            if (strName != "vSAContents" && strName != "vChannels")
                Result(strName.c_str(), record[strName]);
            else
                for (const Json::Value& element : record[strName]) Result(strName.c_str(), element);
        }
    }
    void RecordParse(const std::string& strStatus, const std::string& strText)
    {
        CCADataHandler* const pStore = CCADataHandler::GetInstance();
        const auto nBefore = static_cast<std::ptrdiff_t>(pStore == nullptr ? 0 : SchemaList(*pStore).size());
        unsigned nCount = 77;
        const int nStatus = std::atoi(strStatus.c_str());
        const bool bResult = CCAParsePacket().ParseData(static_cast<E_CA_PARSE_JSON_STATUS>(nStatus), strText, nCount);
        Result((bResult ? "true, count " : "false, count ") + std::to_string(nCount));
        if (nStatus != 1 || pStore == nullptr) return;
        CCADataHandler& store = *pStore;
        if (!store.GetCommunicateErrorCode().empty()) Result("error code " + store.GetCommunicateErrorCode());
        const std::vector<_CASchema> vNew(SchemaList(store).begin() + nBefore, SchemaList(store).end());
        if (!vNew.empty()) Result("schema " + SchemaText(vNew));
    }
    void RecordContent(const std::string&, const std::string& strText)
    {
        const bool bResult = CCAParsePacket().t_ParseContent(ParsedJson(strText));
        Result(bResult ? "true" : "false");
        if (bResult) Result("content", Filled(ToJson(CCADataHandler::GetInstance()->GetContent()), ToJson(_Content())));
    }
    void RecordItems(const std::string&, const std::string& strText)
    {
        const Json::Value reply = ParsedJson(strText);
        for (const Json::Value& element : reply["rsp"]["tvcontent"]) {
            const std::string strItem = ItemOf(element);
            Result(Escaped(strItem.substr(0, strItem.size() - 1), false));
        }
    }
    void RecordPoster(const std::string& strArguments, const std::string& strTemplate)
    {
        _Poster stPoster;
        Json::Value images;
        const std::size_t nBlank = strArguments.find(' ');
        images["url"] = strTemplate;
        images["index"] = ParsedJson(strArguments.substr(nBlank));
        const bool bResult = CCAParsePacket().t_ParsePoster(strArguments.substr(0, nBlank), images, stPoster);
        Result((bResult ? "" : "false ") + Escaped(stPoster.szUrl));
    }
    void RecordPart(const std::string& strName, const std::string& strText)
    {
        const std::map<std::string, bool (CCAParsePacket::*)(const Json::Value&)> parts = {
            {"domain", &CCAParsePacket::t_ParseDomian},
            {"nlu", &CCAParsePacket::t_ParseNluInfo},
            {"tvcontrol", &CCAParsePacket::t_ParseTVControl},
            {"displaycontrol", &CCAParsePacket::t_ParseDisplayControl}};
        CCAParsePacket parser;
        Result((parser.*parts.at(strName))(ParsedJson(strText)) ? "true" : "false");
    }
    void RecordCandidates(const std::string& strAction, const std::string&)
    {
        CCASystemActionMap map;
        map.InitializeMap();
        _TVControl stTVControl;
        stTVControl.szAction = strAction;
        Texts vNames = {"kept"};
        Result(std::to_string(map.GetSystemActionCandidate(stTVControl, vNames)) + " names " +
               std::to_string(vNames.size()));
    }
    void RecordOrphan(const std::string&, const std::string&)
    {
        CCAService service;
        if (g_RefusedSizes.empty()) service.InitService("orphan");
        g_Platform.vLog.clear();
        for (const ServiceStep step : ServiceSteps()) step(service);
        _ConvActionInfo info;
        Result(service.GetSpeechActionData(info) ? "true" : "false");
    }
    void RecordRefuse(const std::string& strObjects, const std::string&)
    {
        const std::map<std::string, std::size_t> sizes = {
            {"store", sizeof(CCADataHandler)}, {"service", sizeof(CCAService)}, {"sizes", sizeof(CCAImageSizeTable)}};
        g_RefusedSizes.clear();
        for (const std::string& strObject : Words(strObjects)) g_RefusedSizes.insert(sizes.at(strObject));
    }
    void RecordRequest(const std::string&, const std::string&) { CCADataHandler::GetInstance()->RequestSchema(); }
    void RecordList(const std::string&, const std::string&)
    {
        std::vector<_SAContents> vList(1);
        CCADataHandler::GetInstance()->GetSAContentsList(vList);
        for (const _SAContents& stEntry : vList) Result("entry", Filled(ToJson(stEntry), ToJson(_SAContents())));
    }
    void RecordZone(const std::string& strOffset, const std::string&)
    {
        Result(std::to_string(CCAParsePacket().t_GetTimeZoneDifferenceByStr(strOffset)));
    }
    void RecordSet(const std::string& strSettings, const std::string&)
    {
        const std::map<std::string, int*> numbers = {{"init", &g_Platform.nInitResult},
                                                     {"get", &g_Platform.nLanguageResult},
                                                     {"deinit", &g_Platform.nDeinitResult},
                                                     {"factory", &g_Platform.nFactoryResult},
                                                     {"flag", &g_Platform.nFactoryValue}};
        for (const std::string& strSetting : Words(strSettings)) {
            const std::size_t nEqual = strSetting.find('=');
            const std::string strName = strSetting.substr(0, nEqual), strValue = strSetting.substr(nEqual + 1);
            const auto text = strValue == "-" ? std::nullopt : std::optional(strValue);
            if (strName == "country")
                g_Platform.strCountry = text;
            else if (strName == "language")
                g_Platform.strLanguage = text;
            else
                *numbers.at(strName) = std::atoi(strValue.c_str());
        }
    }
    void RecordLog(const std::string& strNames, const std::string&) { m_Logged = Set(strNames); }
    void RecordHide(const std::string& strNames, const std::string&) { m_Hidden = Set(strNames); }
    static std::set<std::string> Set(const std::string& strNames)
    {
        const Texts vNames = Words(strNames);
        return {vNames.begin(), vNames.end()};
    }

    static const std::map<std::string, void (CPlayer::*)(const std::string&, const std::string&)> kVerbs;

    const Json::Value m_FreshRecord = FreshRecord();
    _ConvActionInfo m_stInfo;
    std::string m_strPlayed;
    Texts m_vResults, m_vFor;
    std::set<std::string> m_Logged = {"all"}, m_Hidden;
};

const std::map<std::string, void (CPlayer::*)(const std::string&, const std::string&)> CPlayer::kVerbs = {
    {"start", &CPlayer::RecordStart},     {"stop", &CPlayer::RecordStop},
    {"status", &CPlayer::RecordStatus},   {"say", &CPlayer::RecordSay},
    {"more", &CPlayer::RecordMore},       {"parse", &CPlayer::RecordParse},
    {"content", &CPlayer::RecordContent}, {"items", &CPlayer::RecordItems},
    {"poster", &CPlayer::RecordPoster},   {"request", &CPlayer::RecordRequest},
    {"list", &CPlayer::RecordList},       {"zone", &CPlayer::RecordZone},
    {"set", &CPlayer::RecordSet},         {"log", &CPlayer::RecordLog},
    {"part", &CPlayer::RecordPart},       {"candidates", &CPlayer::RecordCandidates},
    {"orphan", &CPlayer::RecordOrphan},   {"refuse", &CPlayer::RecordRefuse},
    {"hide", &CPlayer::RecordHide},
};

Texts Conversations()
{
    Texts vNames;
    for (const auto& entry : std::filesystem::directory_iterator(PARLO_TEST_DATA "/conversations"))
        vNames.push_back(entry.path().stem());
    std::sort(vNames.begin(), vNames.end());
    return vNames;
}

class Recorded : public testing::TestWithParam<std::string>
{
};

}  // namespace

TEST_P(Recorded, ConversationGoesAsBefore)
{
    const std::string strName = "conversations/" + GetParam() + ".txt";
    const std::string strRecorded = DataFile(strName);
    const std::string strPlayed = CPlayer().Play(strRecorded);
    if (std::getenv("PARLO_RECORD") == nullptr)
        EXPECT_EQ(strRecorded, strPlayed) << "scripts/record writes what comes of it now";
    else
        std::ofstream(PARLO_TEST_DATA "/" + strName) << strPlayed;
}

INSTANTIATE_TEST_SUITE_P(, Recorded, testing::ValuesIn(Conversations()), [](const auto& name) {
    std::string strName = name.param;
    std::replace(strName.begin(), strName.end(), '-', '_');
    return strName;
});
