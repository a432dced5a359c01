// The commands: which lookup answered, with what, and what of the later ones counted.
#include "explaining/Render.h"
#include "explaining/Teller.h"
#include "text/Text.h"

namespace
{

using namespace CADataRepository;

struct Lookup {
    const char* szFunction;
    const char* szName;
};

constexpr Lookup kLookups[] = {
    {"GetSystemAction", "system action"},
    {"GetSystemActionChannel", "channel"},
    {"GetSystemActionCandidate", "candidate"},
};

// The action word that counts: the last one that the command or its "params" give.
std::string ActionOf(const Json::Value& command)
{
    std::string strAction = TextOf(Child(command, "action"));
    const Json::Value& params = Child(command, "params");
    if (!params.isArray()) return strAction;
    for (const Json::Value& param : params)
        if (Child(param, "action").isString()) strAction = TextOf(Child(param, "action"));
    return strAction;
}

// The same as the log shows it when there is no reply.
std::string LoggedAction(const CCallLog& log, std::size_t n)
{
    const std::string strStart = "szAction[" + std::to_string(n) + "]:";
    if (const LogLine* pFinal = log.Find("t_IsContentsSearchAction", strStart); pFinal != nullptr)
        return Behind(*pFinal, strStart);
    const std::string strRead = Behind(*log.FindAll("t_ParseTVControl", "szAction:[")[n], "szAction:[");
    return strRead.substr(0, strRead.rfind("], szIntent:"));
}

// Why a word that stands for no code means nothing here.
std::string NoCode(const std::string& strWord)
{
    if (strWord == "display_content")
        return "code 0: \"display_content\" is a search hand-over with two or more domains, and nothing else";
    if (strWord == "search_failed")
        return "code 0: \"search_failed\" is a failed search with the one domain \"tvcontrol\", and nothing else";
    return strWord.empty() ? "no action word: code 0" : "unknown word: no lookup knows it, code 0";
}

void TellLookups(CTeller& teller)
{
    const LogLine* pWord = teller.m_log.Find(kLookups[0].szFunction, "eControl = ");
    const LogLine* pAction = teller.m_log.Find(kLookups[0].szFunction, "strAction = ");
    if (pWord != nullptr && pAction != nullptr && NumberOf(*pWord) == 0)
        return teller.Say(NoCode(Behind(*pAction, "strAction = ")), pWord);
    for (const Lookup& stLookup : kLookups) {
        const LogLine* pResult = teller.m_log.Find(stLookup.szFunction, "eControl:");
        if (pResult == nullptr) return;
        const int nCode = NumberOf(*pResult);
        const std::string strLookup = std::string("the ") + stLookup.szName + " lookup ";
        if (nCode == 0)
            teller.Say(strLookup + "has no answer for it", pResult);
        else if (nCode == E_CA_TVCONTROL_PLAY_CONTENT_NO_INDEX)
            teller.Say(strLookup + "answers: code " + std::to_string(nCode) + ", there is no position", pResult);
        else
            teller.Say(strLookup + "answers: code " + std::to_string(nCode), pResult);
    }
}

// The parameters as they may be shown; from the log where there is no record, which tells those of a system action.
std::vector<std::string> Parameters(const CTeller& teller)
{
    std::vector<std::string> vShown;
    const ServerReply& stReply = teller.m_stCase.stReply;
    const auto Show = [&](const std::string& strParam) {
        const bool bStandIn = stReply.bNoUtterance && strParam == stReply.strUtterance;
        vShown.push_back(bStandIn ? "the utterance" : Quoted(strParam));
    };
    if (teller.m_stCase.pInfo != nullptr) {
        for (const std::string& strParam : teller.m_stCase.pInfo->vSystemActionParam) Show(strParam);
        return vShown;
    }
    for (const LogLine& stLine : teller.m_log.Lines()) {
        const bool bValue = Is(stLine, kLookups[0].szFunction, "stTVControl.");
        const bool bColorkey = Is(stLine, kLookups[0].szFunction, "szColorkey:");
        if (!bValue && !bColorkey) continue;
        const std::string strValue =
            stLine.strMessage.substr(bColorkey ? std::string("szColorkey:").size() : stLine.strMessage.find(" = ") + 3);
        const bool bNegative = Is(stLine, kLookups[0].szFunction, "stTVControl.n") && NumberOf(stLine) < 0;
        Show(bNegative ? std::string() : strValue);
    }
    return vShown;
}

void TellPayload(CTeller& teller)
{
    const CCallLog& log = teller.m_log;
    const std::vector<std::string> vParams = Parameters(teller);
    const LogLine* pValue = log.Find(kLookups[0].szFunction, "stTVControl.");
    if (!vParams.empty()) teller.Say("parameters: " + Joined(vParams), pValue);
    for (const LogLine* pNegative : log.FindAll("itoa", " ERROR - nInput:"))
        teller.Say(NumberOf(*pNegative) == -1
                       ? std::string("a number is absent, or -1: its parameter is empty")
                       : "the number " + std::to_string(NumberOf(*pNegative)) + " is negative: its parameter is empty",
                   pNegative);
    if (const _ConvActionInfo* pInfo = teller.m_stCase.pInfo; pInfo != nullptr) {
        if (!pInfo->vChannels.empty())
            teller.Say(Count(pInfo->vChannels.size(), "channel", "channels") + " in the record", nullptr);
        if (!pInfo->vCandidates.empty())
            teller.Say(Count(pInfo->vCandidates.size(), "candidate", "candidates") + " in the record", nullptr);
    }
    const LogLine* pNoIntent = log.Find("t_GetActionIntent", "tv control error");
    if (pNoIntent != nullptr) teller.Say("no intent is looked up: that takes two or three commands", pNoIntent);
    const LogLine* pNoMatch = log.Find("t_SetSpeechInfo", "No one match");
    if (pNoMatch != nullptr) teller.Say("the record's kind is no match", pNoMatch);
}

void TellFirst(CTeller& teller)
{
    const LogLine* pHandOver = teller.m_log.Find("t_IsContentsSearchAction", "Show search result");
    if (pHandOver != nullptr)
        return teller.Say(
            "two or more domains and display_content: a search hand-over, no lookup; the record gets the utterance "
            "and the whole reply",
            pHandOver);
    const LogLine* pFailed = teller.m_log.Find("t_IsContentsSearchAction", "search_failed will goto search");
    if (pFailed != nullptr)
        return teller.Say(
            "the one domain tvcontrol and search_failed: a failed search, no lookup; the record gets the action word "
            "and the sentence",
            pFailed);
    TellLookups(teller);
    TellPayload(teller);
}

void TellSecondAction(CTeller& teller)
{
    const LogLine* pWord = teller.m_log.Find("Get2ndAction", "eControl = ");
    const LogLine* pResult = teller.m_log.FindLast("Get2ndAction", "eControl = ");
    if (NumberOf(*pResult) != 0)
        teller.Say("the second action lookup answers: code " + std::to_string(NumberOf(*pResult)), pResult);
    else if (NumberOf(*pWord) != 0)
        teller.Say("code " + std::to_string(NumberOf(*pWord)) + " cannot be a second action: ignored", pWord);
    else
        teller.Say("unknown word: no second action", pWord);
}

void TellLater(CTeller& teller, std::size_t n, std::size_t nCount)
{
    const CCallLog& log = teller.m_log;
    const bool bSecond = n == 1 && log.Find("Get2ndAction", "eControl = ") != nullptr;
    const LogLine* pIntent = n + 1 == nCount ? log.Find("t_GetActionIntent", "eActionIntent is ") : nullptr;
    if (bSecond) TellSecondAction(teller);
    if (pIntent != nullptr && NumberOf(*pIntent) != 0)
        teller.Say("the intent lookup answers: code " + std::to_string(NumberOf(*pIntent)), pIntent);
    else if (pIntent != nullptr)
        teller.Say("its intent is absent or an unknown word: code 0", pIntent);
    if (bSecond || pIntent != nullptr) return;
    const bool bFollowUps = log.Find("t_Get2ndAction", "2ndeAction is ") != nullptr;
    teller.Say(bFollowUps
                   ? "not looked at: only a second command is, and with candidates the last intent of two or three"
                   : "not looked at: only channels or candidates of the first command ask for a second one",
               nullptr);
}

}  // namespace

void TellCommands(CTeller& teller)
{
    const std::size_t nCount = teller.m_log.FindAll("t_ParseTVControl", "szAction:[").size();
    const std::size_t nAll = teller.m_log.FindAll("t_IsContentsSearchAction", "szAction[").size();
    const std::size_t nBefore = nAll > nCount ? nAll - nCount : 0;  // commands that an earlier reply left
    const Json::Value& commands = Child(teller.Rsp(), "tvcontrol");
    for (std::size_t i = 0; i < nCount; ++i) {
        const auto n = static_cast<Json::ArrayIndex>(i);
        const bool bKnown = commands.isArray() && n < commands.size();
        const std::string strAction = bKnown ? ActionOf(commands[n]) : LoggedAction(teller.m_log, i);
        teller.Begin("command " + std::to_string(i + 1) + " of " + std::to_string(nCount) + ": " + Quoted(strAction),
                     "/rsp/tvcontrol/" + std::to_string(i));
        if (!teller.m_stCase.bAccepted) continue;
        if (nBefore + i == 0)
            TellFirst(teller);
        else
            TellLater(teller, nBefore + i, nBefore + nCount);
    }
}
