// One reply through the entry points, and what holds for every action record.
#pragma once

#include <cstdio>
#include <string>

#include "CADataRepository/Vocabulary.h"
#include "FuzzInput.h"
#include "parlo-api.h"

namespace Fuzz
{

// Says at the end how many replies there were.
struct ReplyCount {
    ~ReplyCount() { std::fprintf(stderr, "%llu replies, %llu accepted\n", nReplies, nAccepted); }
    unsigned long long nReplies = 0;
    unsigned long long nAccepted = 0;
};
inline ReplyCount g_Count;

inline bool IsUntouched(const CADataRepository::_ConvActionInfo& info)
{
    return info.eActionType == 0 && info.eSystemAction == 0 && info.e2ndAction == 0 && info.eActionIntent == 0 &&
           info.strAction.empty() && info.strFirstAction.empty() && info.strDialogId.empty() &&
           info.strUserInputVoice.empty() && info.vSystemActionParam.empty() && info.vChannels.empty() &&
           info.vCandidates.empty() && info.vSAContents.empty() && info.vDomain.empty() &&
           info.stDisCtrlInfo.vItems.empty() && info.nDialogSeq == -1 && info.nDialogType == -1;
}

// A search is handed over with the utterance and the reply as it came.
inline bool IsHandOver(const CADataRepository::_ConvActionInfo& info, const std::string& strReply)
{
    if (info.strAction != "display_content" && info.strAction != "search_failed") return false;
    const auto& vParams = info.vSystemActionParam;
    return info.strFirstAction.empty() && info.vSAContents.empty() && info.eSystemAction == 0 &&
           (vParams.empty() || (vParams.size() == 2 && vParams[0] == "find a film" && vParams[1] == strReply));
}

inline bool IsCommand(const CADataRepository::_ConvActionInfo& info)
{
    int nCode = 0;
    LookUp(CADataRepository::kActionWords, info.strAction, nCode);
    const int nAction = info.eSystemAction;
    const bool bCode = nAction == 0 || nAction == nCode ||
                       (nCode == E_CA_TVCONTROL_PLAY_CONTENT && nAction == E_CA_TVCONTROL_PLAY_CONTENT_NO_INDEX);
    for (const CADataRepository::_SAContents& entry : info.vSAContents)
        if (entry.stItem.stMnT.nKind == 0 && entry.stItem.szType.substr(0, 3) != "app") return false;
    return bCode && info.eActionType == (nAction == 0 ? E_CA_ACTION_TYPE_NO_MATCH : E_CA_ACTION_TYPE_SYSTEM) &&
           info.strFirstAction == info.strAction && info.strUserInputVoice == "find a film" &&
           info.stDisCtrlInfo.numberOfItem == static_cast<int>(info.stDisCtrlInfo.vItems.size());
}

// Hands the reply over and fills `info`. Whatever it is, the record is complete or untouched but for the sentence.
inline bool Speak(std::string strReply, CADataRepository::_ConvActionInfo& info)
{
    const std::string strSent = strReply;
    const bool bSucceeded = ca_get_speech_action("find a film", strReply, info);
    ++g_Count.nReplies;
    g_Count.nAccepted += bSucceeded ? 1 : 0;
    Require(strReply == strSent);
    Require(bSucceeded ? info.eActionType == 0 ? IsHandOver(info, strReply) : IsCommand(info) : IsUntouched(info));
    return bSucceeded;
}

// Whatever came before: a command works, and the one after it is alone in the store.
inline void RequireThatCommandsWork()
{
    for (const bool bAlone : {false, true}) {
        CADataRepository::_ConvActionInfo info;
        Require(Speak(R"({"rsp":{"domain":["tvcontrol"],"tvcontrol":[{"action":"volumeup"}]}})", info));
        Require(!bAlone || info.eSystemAction == E_CA_TVCONTROL_VOLUMEUP);
    }
}

inline void RequireStatus()
{
    const int nStatus = ca_get_conv_status();
    Require(nStatus == 0 || nStatus == 4 || nStatus == 6);
}

}  // namespace Fuzz
