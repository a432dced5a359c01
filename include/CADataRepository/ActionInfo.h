// The record that a reply becomes, and the dialog state that it carries on.
#ifndef PARLO_CADATAREPOSITORY_ACTIONINFO_H
#define PARLO_CADATAREPOSITORY_ACTIONINFO_H

#include <string>
#include <vector>

#include "Enumerations.h"
#include "SearchList.h"
#include "TVControl.h"

namespace CADataRepository
{

// A request to act on the list that is on screen: the last object of "displaycontrol".
struct _DisCtrlInfo {
    int numberOfItem = 0;                    // how many entries the request concerns
    int nAction = E_CA_DISPLAY_ACTION_NONE;  // from "action"; see E_CA_DISPLAY_ACTION
    // From "params": nNumber from "index", counted from 0 (-1 when absent), szText from "title".
    std::vector<ExternalItemData> vItems;
};

// What the TV does next.
//
// The caller owns the record and passes a fresh one for each reply: the library assigns the fields that a
// reply speaks of, appends to the display control's items and to a hand-over's parameters, and never clears the record.
// There are three sorts of reply:
// - a TV control reply fills every field, with the exceptions named below;
// - a search hand-over (strAction "display_content" with two or more domains) fills strAction and puts the
//   utterance and the raw reply into vSystemActionParam; strSysResponse is empty;
// - a failed search (strAction "search_failed" with the one domain "tvcontrol") fills strSysResponse and
//   strAction; the application starts a search of its own.
// The last two carry no dialog id, domains or utterance; the reply itself has them.
// A reply without a command fills strSysResponse only, and what it brought waits for the next one; see
// ca_get_speech_action.
struct _ConvActionInfo {
    int eActionType = 0;  // E_CA_ACTION_TYPE: SYSTEM, or NO_MATCH when no lookup knows the first command's action
    E_CA_TVCONTROL eSystemAction = E_CA_TVCONTROL_NONE;  // the first command's code
    // The second command's; only beside channels or candidates, and without its parameters: "play_content" is 22 with
    // and without a position.
    E_CA_TVCONTROL e2ndAction = E_CA_TVCONTROL_NONE;
    E_CA_TVCONTROL_INTENT eActionIntent = E_CA_TVCONTROL_INTENT_NONE;  // the last of two or three commands' intent;
                                                                       // only beside candidates
    int nReserved1 = 0;                                                // never read or written
    std::string strSysResponse;                                        // from "system_sentence": the sentence to speak
    int nReserved2 = 0;                                                // never read or written
    std::string strAction;                                             // the first command's action word
    std::vector<std::string> vSystemActionParam;  // the action's parameters; their meaning depends on the code
    std::vector<_Channels> vChannels;             // the first command's channels; channel and reservation codes only
    std::vector<std::string> vCandidates;         // names to choose from; candidate codes only
    std::vector<_SAContents> vSAContents;  // from "tvcontent", ordered, what waited first; content-showing codes only
    _DisCtrlInfo stDisCtrlInfo;            // from "displaycontrol"; left alone without one
    std::string strDialogId;               // from "dialog" / "dialog_id"
    std::vector<std::string> vDomain;      // from "domain": whose words the server took the utterance for
    std::string strFirstAction;            // the first command's action word again
    std::string strUserInputVoice;         // the utterance
    // From "nlu_info" / "dialog_type", whatever the server means by it; without it the last one that a reply gave, -1
    // for none.
    int nDialogType = -1;
    int nDialogSeq = -1;  // from "dialog" / "dialog_seq"; without it the last one that a reply gave, -1 for none
};

// The dialog state, which lasts from reply to reply until one overwrites it.
struct _DialogOpen {
    int nDialogSeq = -1;        // from "dialog" / "dialog_seq"
    int nDialogType = -1;       // from "nlu_info" / "dialog_type"
    std::string strDialogName;  // unfilled
    std::string strDialogId;    // from "dialog" / "dialog_id"; a reply without it clears it
    int nDialogTurn = -1;       // unfilled
    std::string strDialogText;  // unfilled
};

// How long the server took, and what it understood: "response_info". Read and dropped.
struct _ResponseInfo {
    std::string szEngineTime;      // from "engine_time"
    std::string szContentMgrTime;  // from "content_mgr_time"
    std::string szCouchbaseTime;   // from "couchbase_time"
    std::string szCurrentTime;     // from "current_time"
    std::string szServerTime;      // from "server_time"
    std::string szQuery;           // from "query"
};

}  // namespace CADataRepository

#endif
