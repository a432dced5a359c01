// The store of everything parsed from the current reply.
#pragma once

#include <glib.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "CADataRepository.h"
#include "CASingleton.h"

// The parser writes into it, the service reads from it and clears it once the action record is built.
//
// Threads: setters and getters of the members that m_stMutex guards may run together; a caller waits as long as
// the mutex is held elsewhere, without limit. The others, and the reference that GetTVControl returns, may not:
// do not parse a reply while an action record is built from the one before. No guarded operation calls another.
class __attribute__((visibility("default"))) CCADataHandler : public CCASingleton<CCADataHandler>
{
public:
    CCADataHandler();
    virtual ~CCADataHandler();
    CCADataHandler(const CCADataHandler&) = delete;
    CCADataHandler& operator=(const CCADataHandler&) = delete;

    // The recognised utterance. Not guarded.
    void SetUserInputVOICE(const std::string& strUserInputVoice) { m_strUserInputVoice = strUserInputVoice; }
    std::string GetUserInputVoice() const { return m_strUserInputVoice; }

    // The sentence to speak.
    void SetSystemMessage(const std::string& strSystemMessage);
    std::string GetSystemMessage();

    // The error code of the last search schema document that was an error answer.
    void SetCommunicateErrorCode(std::string strErrorCode);
    std::string GetCommunicateErrorCode();

    // The commands. SetTVControl appends; GetTVControl waits for a writer in progress and returns the live list.
    void SetTVControl(CADataRepository::_TVControl stTVControl);
    std::vector<CADataRepository::_TVControl>& GetTVControl();

    void SetDomain(std::vector<std::string> vDomain);
    std::vector<std::string> GetDomain();

    // The programme that is shown in detail.
    void SetContent(CADataRepository::_Content stContent);
    CADataRepository::_Content GetContent();

    // The inputs of the result list. Both append.
    void SetSchemaList(CADataRepository::_CASchema stSchema);
    void SetSeachServerContentsList(const CADataRepository::_ContentsItem& stItem);
    void SetSeachServerContentsList(CADataRepository::_ContentsItem&& stItem);

    // Before a reply brings so many items: drops those that wait of older replies, with a line in the log, when they
    // are so many that they could exhaust the set, and makes room.
    void ExpectContents(std::size_t nComing);
    static constexpr std::size_t kMostWaiting = 4096;

    // The display control result. Not guarded. The getter clears the flag and appends to the record's items.
    void SetDisplayControlResult(CADataRepository::_DisplayControlInfo stInfo);
    bool GetDisplayControlSetFlag() const { return m_bDisplayControlSet; }
    void GetDisplayControlResult(CADataRepository::_DisCtrlInfo& stInfo);

    // Asks for the search schema to be parsed before the next reply; CanRequestSchema answers once for it.
    void RequestSchema();
    bool CanRequestSchema();

    // Replaces `vOut` by the ordered result list. It is sorted when one of its inputs changed since the last time.
    void GetSAContentsList(std::vector<CADataRepository::_SAContents>& vOut);

    // Clears what belongs to one reply; error code, dialog state and search schema stay.
    void InitializeData();

private:
    // Run under the lock.
    void t_ServerToSAContentsList(const std::vector<CADataRepository::_ContentsItem>& items,
                                  std::vector<CADataRepository::_SAContents>& list);
    void t_Sort();
    void t_SortByFlag(bool& flag, std::vector<CADataRepository::_SAContents>& list,
                      const std::vector<CADataRepository::_SAContents>& source,
                      const std::vector<CADataRepository::_CASortRule>& rules);

    GMutex m_stMutex;

    // Guarded by m_stMutex.
    bool m_bSorted = false;  // m_vSAContents is sorted and current
    bool m_bRequestSchema = false;

    std::string m_strUserInputVoice;  // not guarded: the service sets it and reads it back in one call

    // Guarded by m_stMutex.
    std::string m_strSystemMessage;
    std::string m_strCommunicateErrorCode;
    CADataRepository::_Content m_stContent;

public:
    // The dialog state. Not guarded: the parser and the service reach it directly, one after the other.
    CADataRepository::_DialogOpen m_stDialogOpen;

private:
    // Not guarded, because display control is set and read within one call of the service.
    bool m_bDisplayControlSet = false;  // a result waits to be read
    int m_nNumberOfItem = 0;
    int m_nDisplayAction = CADataRepository::_DisplayControlInfo().nAction;
    std::vector<CADataRepository::_DisplayControlItemData> m_vDisplayItems;

    // Guarded by m_stMutex.
    std::vector<std::string> m_vDomain;
    std::vector<CADataRepository::_TVControl> m_vTVControl;
    std::vector<CADataRepository::_ContentsItem> m_vContentsItem;  // in reply order
    std::vector<CADataRepository::_CASchema> m_vSchemaList;
    std::vector<CADataRepository::_SAContents> m_vSAContents;

    [[maybe_unused]] std::int32_t m_nReserved = 0;  // never read; keeps the object's layout
};
