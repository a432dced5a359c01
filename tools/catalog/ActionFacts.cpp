// Replies with one or two commands, and what of them comes out in the record.
#include "catalog/ActionFacts.h"

#include <json/value.h>

#include "parlo-api.h"
#include "records/RecordJson.h"
#include "session/LogTap.h"

namespace
{

using namespace CADataRepository;

constexpr const char* kUtterance = "the utterance";

// Every key of "params" that may become a parameter. A text's value is its key.
constexpr const char* kTexts[] = {"prevnext", "direction", "gb_function", "target_device", "target_status",
                                  "colorkey", "keyword",   "website",     "type",          "channel_no"};
constexpr const char* kIntegers[] = {"amount", "listorder", "time", "play_speed", "idx"};
constexpr int kFirstInteger = 1001;  // the value of the first of them; the next ones count on

Json::Value EveryParam()
{
    Json::Value param;
    for (const char* szKey : kTexts) param[szKey] = szKey;
    int nValue = kFirstInteger;
    for (const char* szKey : kIntegers) param[szKey] = nValue++;
    param["index"] = 1;
    param["names"].append("name");
    param["channels"][0]["source_id"] = "channels";
    return param;
}

Json::Value Command(const std::string& strWord, bool bParams)
{
    Json::Value command;
    command["action"] = strWord;
    if (bParams) command["params"].append(EveryParam());
    return command;
}

// The record of a reply with the given commands and one item.
_ConvActionInfo Ask(const Json::Value& first, const Json::Value& second = {})
{
    Json::Value root;
    Json::Value& rsp = root["rsp"];
    rsp["tvcontrol"].append(first);
    if (!second.isNull()) rsp["tvcontrol"].append(second);
    rsp["tvcontent"][0]["type"] = "movie";
    std::string strReply = JsonText(root);
    _ConvActionInfo info;
    ca_get_speech_action(kUtterance, strReply, info);
    return info;
}

// The key whose value came out.
std::string KeyOf(const std::string& strParam)
{
    int nValue = kFirstInteger;
    for (const char* szKey : kIntegers)
        if (strParam == std::to_string(nValue++)) return szKey;
    return strParam;
}

ActionFacts FactsOf(const std::string& strWord, int nCode)
{
    const _ConvActionInfo full = Ask(Command(strWord, true));
    ActionFacts stFacts;
    stFacts.strWord = strWord;
    stFacts.nCode = nCode;
    stFacts.nCodeWithout = Ask(Command(strWord, false)).eSystemAction;
    const bool bCandidate = !full.vSystemActionParam.empty() && full.vSystemActionParam.front() == kUtterance;
    stFacts.strLookup = full.eSystemAction == E_CA_TVCONTROL_NONE ? "none"
                        : !full.vChannels.empty()                 ? "channel"
                        : bCandidate                              ? "candidate"
                                                                  : "system";
    if (!bCandidate)
        for (const std::string& strParam : full.vSystemActionParam) stFacts.vTakes.push_back(KeyOf(strParam));
    if (!full.vCandidates.empty()) stFacts.vTakes.emplace_back("names");
    if (!full.vSystemActionParam.empty()) stFacts.vFills.emplace_back("vSystemActionParam");
    if (!full.vChannels.empty()) stFacts.vFills.emplace_back("vChannels");
    if (!full.vCandidates.empty()) stFacts.vFills.emplace_back("vCandidates");
    if (!full.vSAContents.empty()) stFacts.vFills.emplace_back("vSAContents");
    return stFacts;
}

}  // namespace

std::vector<ActionFacts> AllActionFacts()
{
    const CLogQuiet quiet;
    std::vector<ActionFacts> vFacts;
    for (const auto& [szWord, eCode] : kActionWords) vFacts.push_back(FactsOf(std::string(szWord), eCode));
    for (ActionFacts& stFacts : vFacts)
        for (const ActionFacts& stFirst : vFacts)
            if ((stFirst.strLookup == "channel" || stFirst.strLookup == "candidate") &&
                Ask(Command(stFirst.strWord, false), Command(stFacts.strWord, false)).e2ndAction == stFacts.nCode)
                stFacts.vAfter.push_back(stFirst.strWord);
    return vFacts;
}
