// Gives the library a command in which every value is different, and sees which of them come out.
#include "findings/Actions.h"

#include <algorithm>

#include "CADataRepository.h"
#include "CASystemActionMap.h"
#include "session/LogTap.h"

namespace
{

using namespace CADataRepository;

struct TextParam {
    std::string_view szKey;
    std::string _TVControl::*pField;
};

constexpr TextParam kTexts[] = {
    {"prevnext", &_TVControl::szPrevNext},
    {"direction", &_TVControl::szDirection},
    {"gb_function", &_TVControl::szGBFunction},
    {"target_device", &_TVControl::szTargetDevice},
    {"target_status", &_TVControl::szTargetStatus},
    {"colorkey", &_TVControl::szColorkey},
    {"keyword", &_TVControl::szKeyword},
    {"website", &_TVControl::szWebsite},
    {"type", &_TVControl::szType},
    {"channel_no", &_TVControl::szChannelNo},
};

struct IntParam {
    std::string_view szKey;
    int _TVControl::*pField;
};

constexpr IntParam kIntegers[] = {
    {"amount", &_TVControl::nAmount},        {"idx", &_TVControl::nIndex}, {"listorder", &_TVControl::nListOrder},
    {"play_speed", &_TVControl::nPlaySpeed}, {"time", &_TVControl::nTime},
};

constexpr int kFirstMark = 1000;  // the integers' values count from here

// The library has no list of these that could be asked.
constexpr E_CA_TVCONTROL kContentCodes[] = {
    E_CA_TVCONTROL_PLAY_CONTENT,        E_CA_TVCONTROL_PLAY_CONTENT_NO_INDEX, E_CA_TVCONTROL_RECORD_LIVECONTENT,
    E_CA_TVCONTROL_QUIT_RECORD,         E_CA_TVCONTROL_ALARM_LIVECONTENT,     E_CA_TVCONTROL_SCHEDULE_LIVECONTENT,
    E_CA_TVCONTROL_INSTALL_APPLICATION, E_CA_TVCONTROL_DISPLAY_CANDIDATES,    E_CA_TVCONTROL_UNINSTALL_APPLICATION,
};

_TVControl Marked(const std::string& strWord)
{
    _TVControl stCommand;
    stCommand.szAction = strWord;
    for (const TextParam& stParam : kTexts) stCommand.*stParam.pField = stParam.szKey;
    for (std::size_t i = 0; i < std::size(kIntegers); ++i)
        stCommand.*kIntegers[i].pField = kFirstMark + static_cast<int>(i);
    stCommand.vNames = {"names"};
    stCommand.vChannels.emplace_back();
    return stCommand;
}

std::string_view KeyOfMark(const std::string& strMark)
{
    for (const TextParam& stParam : kTexts)
        if (strMark == stParam.szKey) return stParam.szKey;
    for (std::size_t i = 0; i < std::size(kIntegers); ++i)
        if (strMark == std::to_string(kFirstMark + static_cast<int>(i))) return kIntegers[i].szKey;
    return {};
}

const CCASystemActionMap& ActionMap()
{
    static const CCASystemActionMap map = [] {
        CCASystemActionMap filled;
        filled.InitializeMap();
        filled.InitializeActionIntentMap();
        return filled;
    }();
    return map;
}

void AskLookups(const _TVControl& stCommand, ActionUse& stUse)
{
    std::vector<std::string> vParams;
    std::vector<_Channels> vChannels;
    std::vector<std::string> vNames;
    stUse.nCode = ActionMap().GetSystemAction(stCommand, vParams);
    if (stUse.nCode != 0) {
        stUse.eLookup = Lookup::SYSTEM;
        for (const std::string& strMark : vParams) stUse.vParams.push_back(KeyOfMark(strMark));
        return;
    }
    stUse.nCode = ActionMap().GetSystemActionChannel(stCommand, vChannels);
    if (stUse.nCode != 0) {
        stUse.eLookup = Lookup::CHANNEL;
        stUse.vParams = {"channels", "umd_channels"};
        return;
    }
    stUse.nCode = ActionMap().GetSystemActionCandidate(stCommand, vNames);
    if (stUse.nCode == 0) return;
    stUse.eLookup = Lookup::CANDIDATE;
    if (vNames == stCommand.vNames) stUse.vParams = {"names"};
}

}  // namespace

bool ActionUse::Takes(std::string_view szKey) const
{
    const std::string_view szAsked = szKey == "index" ? "idx" : szKey;  // the one says that the other counts
    return szKey == "action" || std::find(vParams.begin(), vParams.end(), szAsked) != vParams.end();
}

ActionUse UseOf(const std::string& strWord)
{
    const CLogQuiet quiet;
    const _TVControl stCommand = Marked(strWord);
    ActionUse stUse;
    AskLookups(stCommand, stUse);
    stUse.bFollowUp = ActionMap().Get2ndAction(stCommand) != 0;
    stUse.bShowsContents =
        std::find(std::begin(kContentCodes), std::end(kContentCodes), stUse.nCode) != std::end(kContentCodes);
    return stUse;
}

bool AnyActionTakes(std::string_view szKey)
{
    static const std::vector<ActionUse> vUses = [] {
        std::vector<ActionUse> vAll;
        for (const auto& stWord : kActionWords) vAll.push_back(UseOf(std::string(stWord.szWord)));
        return vAll;
    }();
    return std::any_of(vUses.begin(), vUses.end(), [szKey](const ActionUse& stUse) { return stUse.Takes(szKey); });
}
