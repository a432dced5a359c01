#define CA_LOG_FILE "CAService"

#include "CAService.h"

#include <utility>

#include "CALog.h"
#include "CAParseJson.h"
#include "CAUtil.h"

using namespace CADataRepository;

template class CCASingleton<CCAService>;

namespace
{

// An ordinary reply's memory stays for the next one: to free a large block makes the allocator tidy up the whole
// document that was released just before, at a fifth of the parse's time. More than that is given back.
void ClearRawPacket(std::string& strRawPacket)
{
    constexpr std::size_t kKeptCapacity = 1 << 20;
    strRawPacket.clear();
    if (strRawPacket.capacity() > kKeptCapacity) strRawPacket.shrink_to_fit();
}

}  // namespace

CCAService::CCAService()
{
    m_SystemActionMap.InitializeMap();
    m_SystemActionMap.InitializeActionIntentMap();
}

CCAService::~CCAService()
{
    UninitService();
}

bool CCAService::InitService(std::string strAppName)
{
    if (m_pDataMgr != nullptr) {
        CA_LOGE("init service again, please check it!!");
        return false;
    }
    m_strAppName = std::move(strAppName);
    CA_LOGE("m_strAppName:%s", m_strAppName.c_str());
    m_pDataMgr = CCADataHandler::GetInstance();
    return t_HasStore(__func__);
}

bool CCAService::t_HasStore(const char* szOperation) const
{
    if (m_pDataMgr == nullptr) CA_LOGE_AS(szOperation, "m_pDataMgr is NULL");
    return m_pDataMgr != nullptr;
}

void CCAService::UninitService()
{
    if (m_pDataMgr != nullptr) {
        delete std::exchange(CCADataHandler::pInstance, nullptr);
        m_pDataMgr = nullptr;
    }
    m_strAppName.clear();
}

int CCAService::GetConversationStatus()
{
    CA_LOGD("Get conversation status");
    if (!CCAUtil::IsConversationFactorySupport()) return E_CA_CONV_STATUS_NOT_SUPPORTED;
    if (!CCAUtil::IsCountrySupportConv()) return E_CA_CONV_STATUS_NOT_SUPPORTED;
    if (!CCAUtil::CompareCountryLanguage()) return E_CA_CONV_STATUS_LANGUAGE_NOT_SUPPORTED;
    return E_CA_CONV_STATUS_AVAILABLE;
}

bool CCAService::ParseDataFlow(const std::string& strPreAllResult, const std::string& strRawData)
{
    if (strPreAllResult.empty() || strRawData.empty() || m_pDataMgr == nullptr) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-extra-args"  // both lengths go to the log, its text shows the first
        CA_LOGE("strPreAllResult is empty() or strRawData is empty(%u) or m_pDataMgr is NULL",
                static_cast<unsigned>(strPreAllResult.size()), static_cast<unsigned>(strRawData.size()));
#pragma GCC diagnostic pop
        return false;
    }
    m_pDataMgr->SetUserInputVOICE(strPreAllResult);
    CCAUtil::PrintRcvData(strRawData);

    CCAParsePacket parser;
    unsigned nContents = 0;  // the record carries the list itself
    if (m_pDataMgr->CanRequestSchema()) {
        const std::string strFileSchema;  // no set keeps a schema file yet, so the request fails and is logged
        if (!parser.ParseData(CA_PARSE_JSON_SEARCH_SCHEMA, strFileSchema, nContents))
            CA_LOGE("parse schema file failed, need to check it, strFileSchema:%s", strFileSchema.c_str());
    }
    if (!parser.ParseData(CA_PARSE_JSON_SEARCH_SERVER, strRawData, nContents)) {
        CA_LOGE("parse speech data failed");
        return false;
    }
    m_strRawPacket = strRawData;
    return true;
}

bool CCAService::GetSpeechActionData(_ConvActionInfo& info)
{
    if (!t_HasStore(__func__)) return false;
    info.strSysResponse = m_pDataMgr->GetSystemMessage();
    CA_LOGE("strSysResponse:[%s]", info.strSysResponse.c_str());
    const std::vector<_TVControl>& vTVControl = m_pDataMgr->GetTVControl();
    if (vTVControl.empty()) {
        CA_LOGE("vTVControl is empty");
        return false;
    }
    info.strAction = vTVControl.front().szAction;

    if (!t_IsContentsSearchAction()) {
        t_SetSpeechInfo(info);
    } else if (info.strAction != "search_failed") {  // after a failed search the application searches by itself
        CA_LOGD("content list for search");
        t_UpdateSearchResult(info);
        info.strSysResponse.clear();
    }
    m_pDataMgr->InitializeData();
    ClearRawPacket(m_strRawPacket);
    return true;
}

bool CCAService::t_IsContentsSearchAction()
{
    if (!t_HasStore(__func__)) return false;
    const std::vector<std::string> vDomain = m_pDataMgr->GetDomain();
    if (vDomain.empty()) {
        CA_LOGE("vDomain is empty");
        return false;
    }
    const std::vector<_TVControl>& vTVControl = m_pDataMgr->GetTVControl();
    if (vTVControl.empty()) {
        CA_LOGE("vTVControl is empty");
        return false;
    }

    for (std::size_t i = 0; i < vDomain.size(); ++i) CA_LOGE("domain[%d]:%s", static_cast<int>(i), vDomain[i].c_str());
    for (std::size_t i = 0; i < vTVControl.size(); ++i)
        CA_LOGE("szAction[%d]:%s", static_cast<int>(i), vTVControl[i].szAction.c_str());

    const std::string& strAction = vTVControl.front().szAction;
    if (vDomain.size() == 1) {
        if (vDomain.front() != "tvcontrol" || strAction != "search_failed") return false;
        CA_LOGE("search_failed will goto search");
        return true;
    }
    if (strAction != "display_content") return false;
    CA_LOGE("Show search result");
    return true;
}

void CCAService::t_UpdateSearchResult(_ConvActionInfo& info)
{
    if (!t_HasStore(__func__)) return;
    if (m_strRawPacket.empty()) {
        CA_LOGE("http packet string empty!");
        return;
    }
    const std::string strSearchKeywords = m_pDataMgr->GetUserInputVoice();
    CA_LOGE("strSearchKeywords:%s", strSearchKeywords.c_str());
    info.vSystemActionParam.push_back(strSearchKeywords);
    info.vSystemActionParam.push_back(std::move(m_strRawPacket));  // which is cleared next
}

void CCAService::t_SetSpeechInfo(_ConvActionInfo& info)
{
    if (!t_HasStore(__func__)) return;
    std::vector<std::string> vParams;
    E_CA_TVCONTROL eCode = t_GetSystemAction(vParams);
    if (eCode == 0) eCode = t_SetChannelOrCandidate(info, vParams);
    info.vSystemActionParam = std::move(vParams);
    if (m_pDataMgr->GetDisplayControlSetFlag()) {
        _DisCtrlInfo& stDisCtrl = info.stDisCtrlInfo;
        m_pDataMgr->GetDisplayControlResult(stDisCtrl);
        CA_LOGE("nAction:%d, numberOfItem:%d, size:%d", stDisCtrl.nAction, stDisCtrl.numberOfItem,
                static_cast<int>(stDisCtrl.vItems.size()));
    }

    // Overwrites the kinds that the channel and the candidate lookup set: callers count on 1 and 3 alone.
    info.eSystemAction = eCode;
    info.eActionType = eCode != 0 ? E_CA_ACTION_TYPE_SYSTEM : E_CA_ACTION_TYPE_NO_MATCH;
    if (eCode == 0) CA_LOGE("No one match, error ouccured:%d", eCode);

    if (ActionOf(eCode).Has(SHOWS_CONTENTS)) m_pDataMgr->GetSAContentsList(info.vSAContents);

    info.nDialogSeq = m_pDataMgr->m_stDialogOpen.nDialogSeq;
    info.nDialogType = m_pDataMgr->m_stDialogOpen.nDialogType;
    info.strDialogId = m_pDataMgr->m_stDialogOpen.strDialogId;
    info.vDomain = m_pDataMgr->GetDomain();
    info.strUserInputVoice = m_pDataMgr->GetUserInputVoice();
    const std::vector<_TVControl>& vTVControl = m_pDataMgr->GetTVControl();
    if (!vTVControl.empty()) info.strFirstAction = vTVControl.front().szAction;
}

// For a command that is no system action. Returns its code, 0 when no lookup knows it.
E_CA_TVCONTROL CCAService::t_SetChannelOrCandidate(_ConvActionInfo& info, std::vector<std::string>& vParams)
{
    constexpr char kOperation[] = "t_SetSpeechInfo";
    CA_LOGE_AS(kOperation, "it is not tv control command");
    vParams.clear();
    E_CA_TVCONTROL eCode = t_GetSystemActionChannel(info.vChannels);
    if (eCode != 0) {
        info.eActionType = E_CA_ACTION_TYPE_CHANNEL;
        info.eSystemAction = eCode;
        info.e2ndAction = t_Get2ndAction();
        for (const _Channels& channel : info.vChannels) vParams.push_back(channel.szSourceID);
        return eCode;
    }
    eCode = t_GetSystemActionCandidate(info.vCandidates);
    CA_LOGE_AS(kOperation, "eSysAction:%d", eCode);
    if (eCode != 0) {
        info.eActionType = E_CA_ACTION_TYPE_CANDIDATE;
        info.eSystemAction = eCode;
        info.e2ndAction = t_Get2ndAction();
        info.eActionIntent = t_GetActionIntent();
        vParams = {m_pDataMgr->GetUserInputVoice(), ""};
    }
    return eCode;
}

// The stored command number `nIndex`, counted from 0; null when there are fewer. Logs the absence of the store.
const _TVControl* CCAService::t_GetCommand(const char* szOperation, std::size_t nIndex) const
{
    if (!t_HasStore(szOperation)) return nullptr;
    const std::vector<_TVControl>& vTVControl = m_pDataMgr->GetTVControl();
    return nIndex < vTVControl.size() ? &vTVControl[nIndex] : nullptr;
}

E_CA_TVCONTROL CCAService::t_GetSystemAction(std::vector<std::string>& params)
{
    const _TVControl* pCommand = t_GetCommand(__func__, 0);
    return static_cast<E_CA_TVCONTROL>(pCommand == nullptr ? 0 : m_SystemActionMap.GetSystemAction(*pCommand, params));
}

E_CA_TVCONTROL CCAService::t_GetSystemActionCandidate(std::vector<std::string>& candidates)
{
    const _TVControl* pCommand = t_GetCommand(__func__, 0);
    return pCommand == nullptr ? E_CA_TVCONTROL_NONE
                               : m_SystemActionMap.GetSystemActionCandidate(*pCommand, candidates);
}

E_CA_TVCONTROL CCAService::t_GetSystemActionChannel(std::vector<_Channels>& channels)
{
    const _TVControl* pCommand = t_GetCommand(__func__, 0);
    return pCommand == nullptr ? E_CA_TVCONTROL_NONE : m_SystemActionMap.GetSystemActionChannel(*pCommand, channels);
}

E_CA_TVCONTROL CCAService::t_Get2ndAction()
{
    if (!t_HasStore(__func__)) return E_CA_TVCONTROL_NONE;
    const _TVControl* pCommand = t_GetCommand(__func__, 1);
    const int nCode = pCommand == nullptr ? 0 : m_SystemActionMap.Get2ndAction(*pCommand);
    CA_LOGE("2ndeAction is %d", nCode);
    return static_cast<E_CA_TVCONTROL>(nCode);
}

E_CA_TVCONTROL_INTENT CCAService::t_GetActionIntent()
{
    if (!t_HasStore(__func__)) return E_CA_TVCONTROL_INTENT_NONE;
    const std::vector<_TVControl>& vTVControl = m_pDataMgr->GetTVControl();
    const auto nSize = static_cast<int>(vTVControl.size());
    CA_LOGE("nSize is %d", nSize);
    if (nSize != 2 && nSize != 3) {
        CA_LOGE("tv control error");
        return E_CA_TVCONTROL_INTENT_NONE;
    }
    const int nIntent = m_SystemActionMap.GetActionIntent(vTVControl.back());
    CA_LOGE("eActionIntent is %d", nIntent);
    return static_cast<E_CA_TVCONTROL_INTENT>(nIntent);
}
