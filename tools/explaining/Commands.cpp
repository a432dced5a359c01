// The commands: which lookup answered, with what, and what of the later ones counted.
#include "explaining/Teller.h"
#include "findings/Effects.h"
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

// The action word as the log shows it when there is no reply: what was looked up, else what was read.
std::string LoggedAction(const LogLine& stRead, const LogLine* pLookedUp)
{
    if (pLookedUp != nullptr) return pLookedUp->strMessage.substr(pLookedUp->strMessage.find(':') + 1);
    const std::string strRead = Behind(stRead, "szAction:[");
    return strRead.substr(0, strRead.rfind("], szIntent:"));
}

// Why a word that stands for no code means nothing here.
std::string NoCode(const std::string& strWord)
{
    if (strWord == "display_content" || strWord == "search_failed")
        return "code 0: " + Quoted(strWord) + " counts with other domains only";
    return strWord.empty() ? "no action word: code 0" : "unknown word: no lookup knows it, code 0";
}

// Tells which lookup answered. Null when none did.
const Lookup* TellLookups(CTeller& teller)
{
    const LogLine* pWord = teller.Find(kLookups[0].szFunction, "eControl = ");
    const LogLine* pAction = teller.Find(kLookups[0].szFunction, "strAction = ");
    if (pWord != nullptr && pAction != nullptr && NumberOf(*pWord) == 0) {
        teller.Say(NoCode(Behind(*pAction, "strAction = ")), pWord);
        return nullptr;
    }
    for (const Lookup& stLookup : kLookups) {
        const LogLine* pResult = teller.Find(stLookup.szFunction, "eControl:");
        if (pResult == nullptr) return nullptr;
        const int nCode = NumberOf(*pResult);
        const std::string strLookup = std::string("the ") + stLookup.szName + " lookup ";
        const char* szNoIndex = nCode == E_CA_TVCONTROL_PLAY_CONTENT_NO_INDEX ? ", there is no position" : "";
        teller.Say(
            strLookup + (nCode == 0 ? "has no answer for it" : "answers: code " + std::to_string(nCode)) + szNoIndex,
            pResult);
        if (nCode != 0) return &stLookup;
    }
    return nullptr;
}

// A parameter of a system action as the log has it.
struct LoggedParam {
    const LogLine* pLine;
    std::string strValue;
    bool bText;
};

std::vector<LoggedParam> LoggedParams(const CTeller& teller)
{
    std::vector<LoggedParam> vParams;
    for (const char* szStart : {"stTVControl.n", "stTVControl.sz", "szColorkey:"})
        for (const LogLine* pLine : teller.FindAll(kLookups[0].szFunction, szStart)) {
            const std::string& strMessage = pLine->strMessage;
            const bool bText = szStart != std::string_view("stTVControl.n");
            const std::size_t nValue = szStart[1] == 'z' ? strMessage.find(':') + 1 : strMessage.find(" = ") + 3;
            const bool bEmpty = !bText && NumberOf(*pLine) < 0;
            vParams.push_back({pLine, bEmpty ? std::string() : strMessage.substr(nValue), bText});
        }
    return vParams;
}

// The parameters as they may be shown; from the log where there is no record, which tells those of a system action.
void TellParameters(CTeller& teller)
{
    const ServerReply& stReply = teller.m_stCase.stReply;
    const std::vector<LoggedParam> vLogged = LoggedParams(teller);
    std::vector<std::string> vParams;
    vParams.reserve(vLogged.size());
    for (const LoggedParam& stParam : vLogged) vParams.push_back(stParam.strValue);
    if (teller.m_stCase.pInfo != nullptr) vParams = teller.m_stCase.pInfo->vSystemActionParam;
    const bool bTextAbsent = vLogged.empty() && vParams == std::vector<std::string>{""};  // "gb_function" is not logged
    for (std::string& strParam : vParams)
        strParam = stReply.bNoUtterance && strParam == stReply.strUtterance ? "the utterance" : Quoted(strParam);
    if (!vParams.empty())
        teller.Say("parameters: " + Joined(vParams), vLogged.empty() ? nullptr : vLogged.front().pLine);
    constexpr const char* kNoText = "a text is absent, or empty: its parameter is empty";
    if (bTextAbsent) teller.Say(kNoText, nullptr);
    for (const LoggedParam& stParam : vLogged)
        if (stParam.bText && stParam.strValue.empty()) teller.Say(kNoText, stParam.pLine);
    for (const LogLine* pNegative : teller.FindAll("itoa", " ERROR - nInput:"))
        teller.Say(NumberOf(*pNegative) == -1
                       ? std::string("a number is absent, or -1: its parameter is empty")
                       : "the number " + std::to_string(NumberOf(*pNegative)) + " is negative: its parameter is empty",
                   pNegative);
}

void TellPayload(CTeller& teller, const Lookup* pLookup)
{
    TellParameters(teller);
    const _ConvActionInfo* pInfo = teller.m_stCase.pInfo;
    if (pInfo != nullptr && pLookup == &kLookups[1])
        teller.Say(Count(pInfo->vChannels.size(), "channel", "channels") + " in the record", nullptr);
    if (pInfo != nullptr && pLookup == &kLookups[2])
        teller.Say(Count(pInfo->vCandidates.size(), "candidate", "candidates") + " in the record", nullptr);
    teller.SayIf(teller.Find("t_GetActionIntent", "tv control error"),
                 "no intent is looked up: that takes two or three commands");
    teller.SayIf(teller.Find("t_SetSpeechInfo", "No one match"), "the record's kind is no match");
}

// How a reply may be handled without a lookup.
constexpr const char* kFlows[][2] = {
    {"Show search result",
     "two or more domains and display_content: a search hand-over, no lookup; the record gets the utterance and the "
     "whole reply"},
    {"search_failed will goto search",
     "the one domain tvcontrol and search_failed: a failed search, no lookup; the record gets the action word and the "
     "sentence"},
};

void TellFirst(CTeller& teller)
{
    for (const auto& [szStart, szText] : kFlows)
        if (const LogLine* pFlow = teller.Find("t_IsContentsSearchAction", szStart); pFlow != nullptr)
            return teller.Say(szText, pFlow);
    TellPayload(teller, TellLookups(teller));
}

void TellSecondAction(CTeller& teller)
{
    const LogLine* pWord = teller.Find("Get2ndAction", "eControl = ");
    const LogLine* pResult = teller.FindLast("Get2ndAction", "eControl = ");
    const std::string strCode = std::to_string(NumberOf(*pWord));
    if (NumberOf(*pResult) != 0) return teller.Say("the second action lookup answers: code " + strCode, pResult);
    teller.Say(
        strCode == "0" ? "unknown word: no second action" : "code " + strCode + " cannot be a second action: ignored",
        pWord);
}

// `bFollowUps`: the first command asks for a second one.
void TellLater(CTeller& teller, std::size_t n, std::size_t nCount, bool bFollowUps)
{
    const bool bSecond = n == 1 && teller.Find("Get2ndAction", "eControl = ") != nullptr;
    const LogLine* pIntent = n + 1 == nCount ? teller.Find("t_GetActionIntent", "eActionIntent is ") : nullptr;
    if (bSecond) TellSecondAction(teller);
    const int nIntent = pIntent == nullptr ? 0 : NumberOf(*pIntent);
    teller.SayIf(pIntent, nIntent != 0 ? "the intent lookup answers: code " + std::to_string(nIntent)
                                       : "its intent is absent or an unknown word: code 0");
    if (bSecond || pIntent != nullptr) return;
    teller.Say(bFollowUps
                   ? "not looked at: only a second command is, and with candidates the last intent of two or three"
                   : "not looked at: only channels or candidates of the first command ask for a second one",
               nullptr);
}

}  // namespace

void TellCommands(CTeller& teller)
{
    const std::vector<const LogLine*> vRead = teller.FindAll("t_ParseTVControl", "szAction:[");
    const std::vector<const LogLine*> vAll = teller.FindAll("t_IsContentsSearchAction", "szAction[");
    const std::size_t nCount = vRead.size();
    const std::size_t nBefore = vAll.size() > nCount ? vAll.size() - nCount : 0;  // commands that an earlier reply left
    const bool bFollowUps = teller.Find("t_Get2ndAction", "2ndeAction is ") != nullptr;
    const Node commands = teller.Rsp().Member("tvcontrol");
    for (std::size_t i = 0; i < nCount; ++i) {
        const std::size_t n = nBefore + i;
        const Node command = commands.Element(static_cast<Json::ArrayIndex>(i));
        const std::string strAction = command.value.isNull()
                                          ? LoggedAction(*vRead[i], n < vAll.size() ? vAll[n] : nullptr)
                                          : ActionIn(command).Text();
        teller.Begin("command " + std::to_string(i + 1) + " of " + std::to_string(nCount) + ": " + Quoted(strAction),
                     command.strPointer);
        if (!teller.m_stCase.bAccepted) continue;
        if (n == 0)
            TellFirst(teller);
        else
            TellLater(teller, n, nBefore + nCount, bFollowUps);
    }
}
