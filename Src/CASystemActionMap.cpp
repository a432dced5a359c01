#include "CASystemActionMap.h"

#include <utility>

#include "CADataHandler.h"
#include "CADataRepository/Vocabulary.h"
#include "CALog.h"
#include "CAUtil.h"

using namespace CADataRepository;

namespace
{

// A value of the command that an action takes as parameter. The lines of one action are in parameter order.
struct Param {
    E_CA_TVCONTROL eCode;
    const char* szLogged;  // how the log line begins; null: no line
    std::string _TVControl::*pText = nullptr;
    int _TVControl::*pInt = nullptr;
};

constexpr Param kParams[] = {
    {E_CA_TVCONTROL_POWEROFF, "stTVControl.szTargetDevice = ", &_TVControl::szTargetDevice},
    {E_CA_TVCONTROL_POWERON, "stTVControl.szTargetDevice = ", &_TVControl::szTargetDevice},
    {E_CA_TVCONTROL_CHANGE_EXSOURCE, "stTVControl.szTargetDevice = ", &_TVControl::szTargetDevice},
    {E_CA_TVCONTROL_SET_REMOCON, "stTVControl.szTargetDevice = ", &_TVControl::szTargetDevice},
    {E_CA_TVCONTROL_SET_SLEEPTIMER, "stTVControl.nTime = ", nullptr, &_TVControl::nTime},
    {E_CA_TVCONTROL_CHANGE_CHANNEL, "stTVControl.szChannelNo = ", &_TVControl::szChannelNo},
    {E_CA_TVCONTROL_CHANNELUP, "stTVControl.nAmount = ", nullptr, &_TVControl::nAmount},
    {E_CA_TVCONTROL_CHANNELDOWN, "stTVControl.nAmount = ", nullptr, &_TVControl::nAmount},
    {E_CA_TVCONTROL_VOLUMEUP, "stTVControl.nAmount = ", nullptr, &_TVControl::nAmount},
    {E_CA_TVCONTROL_VOLUMEDOWN, "stTVControl.nAmount = ", nullptr, &_TVControl::nAmount},
    {E_CA_TVCONTROL_SET_VOLUME, "stTVControl.nAmount = ", nullptr, &_TVControl::nAmount},
    {E_CA_TVCONTROL_PLAY_CONTENT, "stTVControl.nIndex = ", nullptr, &_TVControl::nIndex},
    {E_CA_TVCONTROL_EXECUTE_KEY, "szColorkey:", &_TVControl::szColorkey},
    {E_CA_TVCONTROL_CONTROL_GB, nullptr, &_TVControl::szGBFunction},
    {E_CA_TVCONTROL_DISPLAY_DETAILINFO, "stTVControl.nIndex = ", nullptr, &_TVControl::nIndex},
    {E_CA_TVCONTROL_RUN_WEBBROWSER, "stTVControl.szKeyword = ", &_TVControl::szKeyword},
    {E_CA_TVCONTROL_RUN_WEBBROWSER, "stTVControl.szWebsite = ", &_TVControl::szWebsite},
    {E_CA_TVCONTROL_RUN_YOUTUBE, "stTVControl.szKeyword = ", &_TVControl::szKeyword},
    {E_CA_TVCONTROL_SHOW_MOREINFO, "stTVControl.nIndex = ", nullptr, &_TVControl::nIndex},
};

struct CodeRange {
    int nFirst;
    int nLast;
};

// Actions without parameters. The gaps are actions with parameters, or none of this lookup's.
constexpr CodeRange kWithoutParams[] = {{4, 4},   {11, 11}, {14, 15}, {18, 20}, {24, 25}, {27, 28}, {30, 35},
                                        {38, 41}, {53, 54}, {59, 63}, {66, 66}, {68, 87}, {94, 94}};

constexpr CodeRange kCandidates[] = {{42, 52}, {55, 55}};
constexpr CodeRange kChannels[] = {{5, 6}, {8, 8}, {36, 37}};
constexpr CodeRange kFollowUps[] = {{5, 5}, {22, 22}, {34, 34}, {36, 37}, {67, 67}};

template <std::size_t N>
constexpr bool In(const CodeRange (&ranges)[N], int nCode)
{
    for (const CodeRange& range : ranges)
        if (range.nFirst <= nCode && nCode <= range.nLast) return true;
    return false;
}

template <typename Code>
int Find(const std::map<std::string, Code>& words, const std::string& strWord)
{
    const auto it = words.find(strWord);
    return it == words.end() ? 0 : it->second;
}

// Appends the parameters of `nCode`, each logged first. False when the action takes none.
bool AppendParams(int nCode, const _TVControl& stTVControl, std::vector<std::string>& params)
{
    constexpr char kOperation[] = "GetSystemAction";
    bool bFound = false;
    for (const Param& param : kParams) {
        if (param.eCode != nCode) continue;
        bFound = true;
        if (param.pInt != nullptr) {
            CA_LOGD_AS(kOperation, "%s%d", param.szLogged, stTVControl.*param.pInt);
            params.push_back(CCAUtil::itoa(stTVControl.*param.pInt));
        } else {
            if (param.szLogged != nullptr)
                CA_LOGD_AS(kOperation, "%s%s", param.szLogged, (stTVControl.*param.pText).c_str());
            params.push_back(stTVControl.*param.pText);
        }
    }
    return bFound;
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
    if (!In(kFollowUps, nCode)) nCode = 0;
    CA_LOGE("eControl = %d", nCode);
    return nCode;
}

int CCASystemActionMap::GetSystemAction(const _TVControl& stTVControl, std::vector<std::string>& params) const
{
    int nCode = t_FindAction(__func__, stTVControl.szAction);
    // Without a position "play_content" is another action, "display_detailinfo" the same one without its parameter.
    const bool bNoIndex = stTVControl.nIndex < 0;
    const bool bDetail = nCode == E_CA_TVCONTROL_DISPLAY_DETAILINFO && bNoIndex;
    if (nCode == E_CA_TVCONTROL_PLAY_CONTENT && bNoIndex) {
        nCode = E_CA_TVCONTROL_PLAY_CONTENT_NO_INDEX;
    } else if (!bDetail) {
        const bool bParams = AppendParams(nCode, stTVControl, params);
        if (!bParams && !In(kWithoutParams, nCode)) nCode = 0;
    }
    CA_LOGE("eControl:%d", nCode);
    return nCode;
}

int CCASystemActionMap::GetSystemActionCandidate(const _TVControl& stTVControl,
                                                 std::vector<std::string>& candidates) const
{
    int nCode = t_FindAction(__func__, stTVControl.szAction);
    if (nCode == E_CA_TVCONTROL_DISPLAY_DETAILINFO || nCode == E_CA_TVCONTROL_DISPLAY_DETAILINFO_CAST) {
        // The names are the cast of what is shown in detail, not the command's.
        CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
        if (pDataHandler == nullptr) {
            CA_LOGE("pDataHandler is NULL");
            return 0;
        }
        _Content stContent = pDataHandler->GetContent();
        candidates.clear();
        for (_Casting& casting : stContent.vCasting) candidates.push_back(std::move(casting.szName));
    } else if (In(kCandidates, nCode)) {
        candidates = stTVControl.vNames;
    } else {
        nCode = 0;
    }
    CA_LOGE("eControl:%d", nCode);
    return nCode;
}

int CCASystemActionMap::GetSystemActionChannel(const _TVControl& stTVControl, std::vector<_Channels>& channels) const
{
    int nCode = t_FindAction(__func__, stTVControl.szAction);
    if (In(kChannels, nCode))
        channels = stTVControl.vChannels;
    else
        nCode = 0;
    CA_LOGE("eControl:%d", nCode);
    return nCode;
}
