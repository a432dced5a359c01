// The conversation service: what the four entry points work on.
#pragma once

#include <string>
#include <vector>

#include "CADataHandler.h"
#include "CADataRepository.h"
#include "CASingleton.h"
#include "CASystemActionMap.h"

// Not thread-safe: one call at a time.
class __attribute__((visibility("default"))) CCAService : public CCASingleton<CCAService>
{
public:
    CCAService();
    virtual ~CCAService();
    CCAService(const CCAService&) = delete;
    CCAService& operator=(const CCAService&) = delete;

    // Makes or adopts the store. False when that is done already, or memory runs out.
    bool InitService(std::string strAppName);

    // Releases the store.
    void UninitService();

    // Asks the set; an E_CA_CONV_STATUS without NO_SERVICE. Works without a store.
    int GetConversationStatus();

    // Reads the server's reply into the store. False leaves there what older replies left, but for the
    // utterance.
    bool ParseDataFlow(const std::string& strPreAllResult, const std::string& strRawData);

    // Turns the store into the action record and clears it for the next reply. False, with the store kept, when
    // there is no command in it.
    bool GetSpeechActionData(CADataRepository::_ConvActionInfo& info);

private:
    // Whether there is a store; logs its absence under the operation's name.
    bool t_HasStore(const char* szOperation) const;

    bool t_IsContentsSearchAction();
    void t_UpdateSearchResult(CADataRepository::_ConvActionInfo& info);

    void t_SetSpeechInfo(CADataRepository::_ConvActionInfo& info);
    E_CA_TVCONTROL t_SetChannelOrCandidate(CADataRepository::_ConvActionInfo& info, std::vector<std::string>& vParams);

    const CADataRepository::_TVControl* t_GetCommand(const char* szOperation, std::size_t nIndex) const;

    // The lookups: each asks the action map about one stored command; 0 when that command is missing.
    E_CA_TVCONTROL t_GetSystemAction(std::vector<std::string>& params);
    E_CA_TVCONTROL t_GetSystemActionCandidate(std::vector<std::string>& candidates);
    E_CA_TVCONTROL t_GetSystemActionChannel(std::vector<CADataRepository::_Channels>& channels);
    E_CA_TVCONTROL t_Get2ndAction();
    E_CA_TVCONTROL_INTENT t_GetActionIntent();

    CCADataHandler* m_pDataMgr = nullptr;  // the store's singleton; null: not initialised
    CCASystemActionMap m_SystemActionMap;
    std::string m_strAppName;
    std::string m_strRawPacket;  // the reply that the store was filled from, until its record is built
};
