#define CA_LOG_FILE "CASystemActionMap"

#include "CASystemActionMap.h"

#include <string_view>

#include "CADataHandler.h"
#include "CADataRepository/Vocabulary.h"
#include "CALog.h"
#include "CAUtil.h"

using namespace CADataRepository;

namespace
{

constexpr char kSystemAction[] = "GetSystemAction";

// A value of the command that is a parameter of some action: its key in "params", how the log shows it, its field.
struct Param {
    std::string_view szKey;
    const char* szFormat;  // null: no line
    std::string _TVControl::*pText = nullptr;
    int _TVControl::*pInt = nullptr;
};

constexpr Param kParams[] = {
    {"target_device", CA_LOGD_FORMAT("stTVControl.szTargetDevice = %s"), &_TVControl::szTargetDevice},
    {"time", CA_LOGD_FORMAT("stTVControl.nTime = %d"), nullptr, &_TVControl::nTime},
    {"channel_no", CA_LOGD_FORMAT("stTVControl.szChannelNo = %s"), &_TVControl::szChannelNo},
    {"amount", CA_LOGD_FORMAT("stTVControl.nAmount = %d"), nullptr, &_TVControl::nAmount},
    {"idx", CA_LOGD_FORMAT("stTVControl.nIndex = %d"), nullptr, &_TVControl::nIndex},
    {"colorkey", CA_LOGD_FORMAT("szColorkey:%s"), &_TVControl::szColorkey},
    {"gb_function", nullptr, &_TVControl::szGBFunction},
    {"keyword", CA_LOGD_FORMAT("stTVControl.szKeyword = %s"), &_TVControl::szKeyword},
    {"website", CA_LOGD_FORMAT("stTVControl.szWebsite = %s"), &_TVControl::szWebsite},
};

constexpr const Param* FindParam(std::string_view szKey)
{
    for (const Param& param : kParams)
        if (param.szKey == szKey) return &param;
    return nullptr;
}

constexpr bool EveryKeyHasItsField()
{
    for (const ActionRow& row : kActionRows)
        for (const char* szKey : row.vKeys)
            if (row.eLookup == ActionLookup::SYSTEM && szKey != nullptr && FindParam(szKey) == nullptr) return false;
    return true;
}
static_assert(EveryKeyHasItsField(), "a system action takes a key that kParams does not have");

template <typename Code>
int Find(const std::map<std::string, Code>& words, const std::string& strWord)
{
    const auto it = words.find(strWord);
    return it == words.end() ? 0 : it->second;
}

// Appends what the command holds under the action's keys, each value logged first.
void AppendParams(const ParamKeys& vKeys, const _TVControl& stTVControl, std::vector<std::string>& params)
{
    for (const char* szKey : vKeys) {
        if (szKey == nullptr) break;
        const Param* pParam = FindParam(szKey);
        if (pParam->pInt != nullptr) {
            CA_LOG_FORMATTED(CALog::kDebugPriority, kSystemAction, pParam->szFormat, stTVControl.*pParam->pInt);
            params.push_back(CCAUtil::itoa(stTVControl.*pParam->pInt));
        } else {
            const std::string& strText = stTVControl.*pParam->pText;
            if (pParam->szFormat != nullptr)
                CA_LOG_FORMATTED(CALog::kDebugPriority, kSystemAction, pParam->szFormat, strText.c_str());
            params.push_back(strText);
        }
    }
}

}  // namespace

void CCASystemActionMap::InitializeMap()
{
    CA_LOGD("");
    for (const auto& [szWord, eCode] : kActionWords) m_mapSystemAction.emplace(szWord, eCode);
}

void CCASystemActionMap::InitializeActionIntentMap()
{
    for (const auto& [szWord, eCode] : kIntentWords) m_mapActionIntent.emplace(szWord, eCode);
}

// How every query on the action word begins.
int CCASystemActionMap::t_FindAction(const char* szOperation, const std::string& strAction) const
{
    CA_LOGD_AS(szOperation, "");
    CA_LOGE_AS(szOperation, "strAction = %s", strAction.c_str());
    const int nCode = Find(m_mapSystemAction, strAction);
    CA_LOGE_AS(szOperation, "eControl = %d", nCode);
    return nCode;
}

int CCASystemActionMap::GetActionIntent(const _TVControl& stTVControl) const
{
    CA_LOGD("");
    CA_LOGE("strActionIntent = %s", stTVControl.szIntent.c_str());
    const int nIntent = Find(m_mapActionIntent, stTVControl.szIntent);
    CA_LOGE("eControl = %d", nIntent);
    return nIntent;
}

int CCASystemActionMap::Get2ndAction(const _TVControl& stTVControl) const
{
    int nCode = t_FindAction(__func__, stTVControl.szAction);
    if (!ActionOf(nCode).Has(MAY_FOLLOW)) nCode = 0;
    CA_LOGE("eControl = %d", nCode);
    return nCode;
}

int CCASystemActionMap::GetSystemAction(const _TVControl& stTVControl, std::vector<std::string>& params) const
{
    int nCode = t_FindAction(kSystemAction, stTVControl.szAction);
    const ActionRow stRow = ActionOf(nCode);
    // Without a position "play_content" is another action, "display_detailinfo" the same one without its parameter.
    const bool bNoIndex = stTVControl.nIndex < 0;
    if (nCode == E_CA_TVCONTROL_PLAY_CONTENT && bNoIndex)
        nCode = E_CA_TVCONTROL_PLAY_CONTENT_NO_INDEX;
    else if (stRow.eLookup != ActionLookup::SYSTEM)
        nCode = 0;
    else if (nCode != E_CA_TVCONTROL_DISPLAY_DETAILINFO || !bNoIndex)
        AppendParams(stRow.vKeys, stTVControl, params);
    CA_LOGE("eControl:%d", nCode);
    return nCode;
}

E_CA_TVCONTROL CCASystemActionMap::GetSystemActionCandidate(const _TVControl& stTVControl,
                                                            std::vector<std::string>& candidates) const
{
    int nCode = t_FindAction(__func__, stTVControl.szAction);
    const ActionLookup eLookup = ActionOf(nCode).eLookup;
    if (eLookup == ActionLookup::CAST || nCode == E_CA_TVCONTROL_DISPLAY_DETAILINFO) {
        // The names are the cast of what is shown in detail, not the command's.
        CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
        if (pDataHandler == nullptr) {
            CA_LOGE("pDataHandler is NULL");
            return E_CA_TVCONTROL_NONE;
        }
        const _Content stContent = pDataHandler->GetContent();
        candidates.clear();
        for (const _Casting& casting : stContent.vCasting) candidates.push_back(casting.szName);
    } else if (eLookup == ActionLookup::NAMES) {
        candidates = stTVControl.vNames;
    } else {
        nCode = 0;
    }
    CA_LOGE("eControl:%d", nCode);
    return static_cast<E_CA_TVCONTROL>(nCode);
}

E_CA_TVCONTROL CCASystemActionMap::GetSystemActionChannel(const _TVControl& stTVControl,
                                                          std::vector<_Channels>& channels) const
{
    int nCode = t_FindAction(__func__, stTVControl.szAction);
    if (ActionOf(nCode).eLookup == ActionLookup::CHANNEL)
        channels = stTVControl.vChannels;
    else
        nCode = 0;
    CA_LOGE("eControl:%d", nCode);
    return static_cast<E_CA_TVCONTROL>(nCode);
}
