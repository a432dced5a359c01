// The server's words and the codes that they stand for: the one place where a word gets its code.
// A word matches as a whole and case-sensitively; every other text stands for code 0 (a display action: -1).
#ifndef PARLO_CADATAREPOSITORY_VOCABULARY_H
#define PARLO_CADATAREPOSITORY_VOCABULARY_H

#include <array>
#include <cstddef>
#include <string_view>

#include "Enumerations.h"

namespace CADataRepository
{

// A word of the server and what it stands for.
template <typename Code>
struct CodedWord {
    std::string_view szWord;
    Code eCode;
};

// "action" of a TV control command, by code.
inline constexpr CodedWord<E_CA_TVCONTROL> kActionWords[] = {
    {"poweroff", E_CA_TVCONTROL_POWEROFF},
    {"poweron", E_CA_TVCONTROL_POWERON},
    {"set_sleeptimer", E_CA_TVCONTROL_SET_SLEEPTIMER},
    {"delete_sleeptimer", E_CA_TVCONTROL_DELETE_SLEEPTIMER},
    {"set_channel", E_CA_TVCONTROL_SET_CHANNEL},
    {"move_channel", E_CA_TVCONTROL_MOVE_CHANNEL},
    {"change_channel", E_CA_TVCONTROL_CHANGE_CHANNEL},
    {"display_channel", E_CA_TVCONTROL_DISPLAY_CHANNEL},
    {"channelup", E_CA_TVCONTROL_CHANNELUP},
    {"channeldown", E_CA_TVCONTROL_CHANNELDOWN},
    {"channelback", E_CA_TVCONTROL_CHANNELBACK},
    {"volumeup", E_CA_TVCONTROL_VOLUMEUP},
    {"volumedown", E_CA_TVCONTROL_VOLUMEDOWN},
    {"muteon", E_CA_TVCONTROL_MUTEON},
    {"muteoff", E_CA_TVCONTROL_MUTEOFF},
    {"set_volume", E_CA_TVCONTROL_SET_VOLUME},
    {"change_exsource", E_CA_TVCONTROL_CHANGE_EXSOURCE},
    {"show_exsource", E_CA_TVCONTROL_SHOW_EXSOURCE},
    {"login", E_CA_TVCONTROL_LOGIN},
    {"logout", E_CA_TVCONTROL_LOGOUT},
    {"set_remocon", E_CA_TVCONTROL_SET_REMOCON},
    {"play_content", E_CA_TVCONTROL_PLAY_CONTENT},
    {"control_focus", E_CA_TVCONTROL_CONTROL_FOCUS},
    {"control_page", E_CA_TVCONTROL_CONTROL_PAGE},
    {"execute_key", E_CA_TVCONTROL_EXECUTE_KEY},
    {"go_back", E_CA_TVCONTROL_GO_BACK},
    {"run_vistar", E_CA_TVCONTROL_RUN_VISTAR},
    {"control_gb", E_CA_TVCONTROL_CONTROL_GB},
    {"show_pvr", E_CA_TVCONTROL_SHOW_PVR},
    {"schedule_program_cancelation", E_CA_TVCONTROL_SHOW_SCHEDULED},
    {"show_scheduled", E_CA_TVCONTROL_SHOW_SCHEDULED},
    {"get_currenttime", E_CA_TVCONTROL_GET_CURRENTTIME},
    {"show_guide", E_CA_TVCONTROL_SHOW_GUIDE},
    {"record_livecontent", E_CA_TVCONTROL_RECORD_LIVECONTENT},
    {"quit_record", E_CA_TVCONTROL_QUIT_RECORD},
    {"alarm_livecontent", E_CA_TVCONTROL_ALARM_LIVECONTENT},
    {"schedule_livecontent", E_CA_TVCONTROL_SCHEDULE_LIVECONTENT},
    {"install_application", E_CA_TVCONTROL_INSTALL_APPLICATION},
    {"run_connectguide", E_CA_TVCONTROL_RUN_CONNECTGUIDE},
    {"run_remotesetup", E_CA_TVCONTROL_RUN_REMOTESETUP},
    {"run_recording", E_CA_TVCONTROL_RUN_RECORDING},
    {"display_detailinfo", E_CA_TVCONTROL_DISPLAY_DETAILINFO},
    {"display_detailinfo_cast", E_CA_TVCONTROL_DISPLAY_DETAILINFO_CAST},
    {"display_detailinfo_director", E_CA_TVCONTROL_DISPLAY_DETAILINFO_DIRECTOR},
    {"display_detailinfo_genre", E_CA_TVCONTROL_DISPLAY_DETAILINFO_GENRE},
    {"display_cast", E_CA_TVCONTROL_DISPLAY_CAST},
    {"display_director", E_CA_TVCONTROL_DISPLAY_DIRECTOR},
    {"display_genre", E_CA_TVCONTROL_DISPLAY_GENRE},
    {"show_optlist_for_sleeptimer", E_CA_TVCONTROL_SHOW_OPTLIST_FOR_SLEEPTIMER},
    {"show_optlist_for_confirm", E_CA_TVCONTROL_SHOW_OPTLIST_FOR_CONFIRM},
    {"show_optlist_detailinfo_for_confirm", E_CA_TVCONTROL_SHOW_OPTLIST_DETAILINFO_FOR_CONFIRM},
    {"show_optlist_for_reservation", E_CA_TVCONTROL_SHOW_OPTLIST_FOR_RESERVATION},
    {"show_colorkey", E_CA_TVCONTROL_SHOW_COLORKEY},
    {"show_exdevice", E_CA_TVCONTROL_SHOW_EXDEVICE},
    {"display_candidates", E_CA_TVCONTROL_DISPLAY_CANDIDATES},
    {"show_colorkeys", E_CA_TVCONTROL_SHOW_COLORKEYS},
    {"run_webbrowser", E_CA_TVCONTROL_RUN_WEBBROWSER},
    {"delete_item", E_CA_TVCONTROL_DELETE_ITEM},
    {"show_alarmedprogram", E_CA_TVCONTROL_SHOW_ALARMEDPROGRAM},
    {"show_scheduledprogram", E_CA_TVCONTROL_SHOW_SCHEDULEDPROGRAM},
    {"uninstall_application", E_CA_TVCONTROL_UNINSTALL_APPLICATION},
    {"run_youtube", E_CA_TVCONTROL_RUN_YOUTUBE},
    {"show_moreinfo", E_CA_TVCONTROL_SHOW_MOREINFO},
    {"social_talk", E_CA_TVCONTROL_SOCIAL_TALK},
    {"voice_guide_on", E_CA_TVCONTROL_VOICE_GUIDE_ON},
    {"voice_guide_off", E_CA_TVCONTROL_VOICE_GUIDE_OFF},
    {"video_description_on", E_CA_TVCONTROL_VIDEO_DESCRIPTION_ON},
    {"video_description_off", E_CA_TVCONTROL_VIDEO_DESCRIPTION_OFF},
    {"high_contrast_on", E_CA_TVCONTROL_HIGH_CONTRAST_ON},
    {"high_contrast_off", E_CA_TVCONTROL_HIGH_CONTRAST_OFF},
    {"enlarge_on", E_CA_TVCONTROL_ENLARGE_ON},
    {"enlarge_off", E_CA_TVCONTROL_ENLARGE_OFF},
    {"caption_on", E_CA_TVCONTROL_CAPTION_ON},
    {"caption_off", E_CA_TVCONTROL_CAPTION_OFF},
    {"run_mycontents", E_CA_TVCONTROL_RUN_MYCONTENTS},
    {"run_channellist", E_CA_TVCONTROL_RUN_CHANNELLIST},
    {"run_speakerlist", E_CA_TVCONTROL_RUN_SPEAKERLIST},
    {"run_programguide", E_CA_TVCONTROL_RUN_PROGRAMGUIDE},
    {"soccer_mode_on", E_CA_TVCONTROL_SOCCER_MODE_ON},
    {"soccer_mode_off", E_CA_TVCONTROL_SOCCER_MODE_OFF},
    {"sports_mode_on", E_CA_TVCONTROL_SPORTS_MODE_ON},
    {"sports_mode_off", E_CA_TVCONTROL_SPORTS_MODE_OFF},
    {"run_ondra", E_CA_TVCONTROL_RUN_ONDRA},
    {"run_guidix", E_CA_TVCONTROL_RUN_GUIDIX},
};

// Which lookup of the library answers for an action, and fills which list of the record.
enum class ActionLookup {
    NONE,     // none: the record says "no match"
    SYSTEM,   // vSystemActionParam, a text for each key
    CHANNEL,  // vChannels, from the keys
    NAMES,    // vCandidates, from the key
    CAST,     // vCandidates, the cast of the programme that is shown in detail
};

// More about an action.
enum ActionFlag : unsigned {
    NEEDS_PARAMS = 1,    // it cannot be carried out without its keys
    SHOWS_CONTENTS = 2,  // its record carries the result list
    MAY_FOLLOW = 4,      // it may be the second command beside channels or candidates
};

using ParamKeys = std::array<const char*, 2>;  // an unused place is null
inline constexpr ParamKeys kChannelLists = {"channels", "umd_channels"};

// What the library makes of an action: the lookups work by it. Of the keys of "params", those that the action takes,
// in order; "idx" counts only beside an integer "index".
struct ActionRow {
    E_CA_TVCONTROL eCode;
    ActionLookup eLookup = ActionLookup::SYSTEM;
    ParamKeys vKeys = {};
    unsigned nFlags = 0;

    constexpr bool Has(ActionFlag eFlag) const { return (nFlags & eFlag) != 0; }
};

// A code without a row is a system action without parameters; see ActionOf.
inline constexpr ActionRow kActionRows[] = {
    {E_CA_TVCONTROL_NONE, ActionLookup::NONE},
    {E_CA_TVCONTROL_POWEROFF, ActionLookup::SYSTEM, {"target_device"}},
    {E_CA_TVCONTROL_POWERON, ActionLookup::SYSTEM, {"target_device"}},
    {E_CA_TVCONTROL_SET_SLEEPTIMER, ActionLookup::SYSTEM, {"time"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_SET_CHANNEL, ActionLookup::CHANNEL, kChannelLists, NEEDS_PARAMS | MAY_FOLLOW},
    {E_CA_TVCONTROL_MOVE_CHANNEL, ActionLookup::CHANNEL, kChannelLists, NEEDS_PARAMS},
    {E_CA_TVCONTROL_CHANGE_CHANNEL, ActionLookup::SYSTEM, {"channel_no"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_DISPLAY_CHANNEL, ActionLookup::CHANNEL, kChannelLists, NEEDS_PARAMS},
    {E_CA_TVCONTROL_CHANNELUP, ActionLookup::SYSTEM, {"amount"}},
    {E_CA_TVCONTROL_CHANNELDOWN, ActionLookup::SYSTEM, {"amount"}},
    {E_CA_TVCONTROL_VOLUMEUP, ActionLookup::SYSTEM, {"amount"}},
    {E_CA_TVCONTROL_VOLUMEDOWN, ActionLookup::SYSTEM, {"amount"}},
    {E_CA_TVCONTROL_SET_VOLUME, ActionLookup::SYSTEM, {"amount"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_CHANGE_EXSOURCE, ActionLookup::SYSTEM, {"target_device"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_SET_REMOCON, ActionLookup::SYSTEM, {"target_device"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_PLAY_CONTENT, ActionLookup::SYSTEM, {"idx"}, SHOWS_CONTENTS | MAY_FOLLOW},
    {E_CA_TVCONTROL_PLAY_CONTENT_NO_INDEX, ActionLookup::NONE, {}, SHOWS_CONTENTS},  // from PLAY_CONTENT without "idx"
    {E_CA_TVCONTROL_EXECUTE_KEY, ActionLookup::SYSTEM, {"colorkey"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_CONTROL_GB, ActionLookup::SYSTEM, {"gb_function"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_RECORD_LIVECONTENT, ActionLookup::SYSTEM, {}, SHOWS_CONTENTS | MAY_FOLLOW},
    {E_CA_TVCONTROL_QUIT_RECORD, ActionLookup::SYSTEM, {}, SHOWS_CONTENTS},
    {E_CA_TVCONTROL_ALARM_LIVECONTENT, ActionLookup::CHANNEL, kChannelLists,
     NEEDS_PARAMS | SHOWS_CONTENTS | MAY_FOLLOW},
    {E_CA_TVCONTROL_SCHEDULE_LIVECONTENT, ActionLookup::CHANNEL, kChannelLists,
     NEEDS_PARAMS | SHOWS_CONTENTS | MAY_FOLLOW},
    {E_CA_TVCONTROL_INSTALL_APPLICATION, ActionLookup::SYSTEM, {}, SHOWS_CONTENTS},
    {E_CA_TVCONTROL_DISPLAY_DETAILINFO, ActionLookup::SYSTEM, {"idx"}},
    {E_CA_TVCONTROL_DISPLAY_DETAILINFO_CAST, ActionLookup::CAST},
    {E_CA_TVCONTROL_DISPLAY_DETAILINFO_DIRECTOR, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_DISPLAY_DETAILINFO_GENRE, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_DISPLAY_CAST, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_DISPLAY_DIRECTOR, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_DISPLAY_GENRE, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_SHOW_OPTLIST_FOR_SLEEPTIMER, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_SHOW_OPTLIST_FOR_CONFIRM, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_SHOW_OPTLIST_DETAILINFO_FOR_CONFIRM, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_SHOW_OPTLIST_FOR_RESERVATION, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS},
    {E_CA_TVCONTROL_DISPLAY_CANDIDATES, ActionLookup::NAMES, {"names"}, NEEDS_PARAMS | SHOWS_CONTENTS},
    {E_CA_TVCONTROL_SHOW_COLORKEYS, ActionLookup::NONE},
    {E_CA_TVCONTROL_RUN_WEBBROWSER, ActionLookup::SYSTEM, {"keyword", "website"}},
    {E_CA_TVCONTROL_DELETE_ITEM, ActionLookup::NONE},
    {E_CA_TVCONTROL_UNINSTALL_APPLICATION, ActionLookup::SYSTEM, {}, SHOWS_CONTENTS},
    {E_CA_TVCONTROL_RESERVED_64, ActionLookup::NONE},
    {E_CA_TVCONTROL_RUN_YOUTUBE, ActionLookup::SYSTEM, {"keyword"}},
    {E_CA_TVCONTROL_SHOW_MOREINFO, ActionLookup::SYSTEM, {"idx"}, MAY_FOLLOW},
    {E_CA_TVCONTROL_RESERVED_88, ActionLookup::NONE},
    {E_CA_TVCONTROL_RESERVED_89, ActionLookup::NONE},
    {E_CA_TVCONTROL_RESERVED_90, ActionLookup::NONE},
    {E_CA_TVCONTROL_RESERVED_91, ActionLookup::NONE},
    {E_CA_TVCONTROL_RESERVED_92, ActionLookup::NONE},
    {E_CA_TVCONTROL_RESERVED_93, ActionLookup::NONE},
};

// "intent" of a TV control command, by code.
inline constexpr CodedWord<E_CA_TVCONTROL_INTENT> kIntentWords[] = {
    {"play", E_CA_TVCONTROL_INTENT_PLAY},
    {"search_title", E_CA_TVCONTROL_INTENT_SEARCH_TITLE},
    {"search_genre", E_CA_TVCONTROL_INTENT_SEARCH_GENRE},
    {"search_channel", E_CA_TVCONTROL_INTENT_SEARCH_CHANNEL},
    {"search_date", E_CA_TVCONTROL_INTENT_SEARCH_DATE},
    {"search_weekday", E_CA_TVCONTROL_INTENT_SEARCH_WEEKDAY},
    {"search_start_time", E_CA_TVCONTROL_INTENT_SEARCH_START_TIME},
    {"search_end_time", E_CA_TVCONTROL_INTENT_SEARCH_END_TIME},
    {"search_duration", E_CA_TVCONTROL_INTENT_SEARCH_DURATION},
    {"search_year", E_CA_TVCONTROL_INTENT_SEARCH_YEAR},
    {"search_grade", E_CA_TVCONTROL_INTENT_SEARCH_GRADE},
};

// "action" of a display control request, by code.
inline constexpr CodedWord<E_CA_DISPLAY_ACTION> kDisplayActionWords[] = {
    {"play_content", E_CA_DISPLAY_ACTION_PLAY_CONTENT},
    {"alarm_livecontent", E_CA_DISPLAY_ACTION_ALARM_LIVECONTENT},
    {"schedule_livecontent", E_CA_DISPLAY_ACTION_SCHEDULE_LIVECONTENT},
    {"record_livecontent", E_CA_DISPLAY_ACTION_RECORD_LIVECONTENT},
};

// "category" of a search schema entry.
inline constexpr CodedWord<E_CA_SCHEMA_CATEGORY> kSchemaCategoryWords[] = {
    {"lintra", E_CA_SCHEMA_CATEGORY_LINTRA},
    {"youtube", E_CA_SCHEMA_CATEGORY_YOUTUBE},
    {"social", E_CA_SCHEMA_CATEGORY_SOCIAL},
    {"others", E_CA_SCHEMA_CATEGORY_OTHERS},
};

// "rule" of a search schema rule.
inline constexpr CodedWord<E_CA_SORT_RULE> kSortRuleWords[] = {
    {"position_after_turn", E_CA_SORT_RULE_POSITION_AFTER_TURN},
    {"position_range_turn", E_CA_SORT_RULE_POSITION_RANGE_TURN},
    {"result_after", E_CA_SORT_RULE_RESULT_AFTER},
    {"result_before", E_CA_SORT_RULE_RESULT_BEFORE},
};

// A country that has conversation, and its voice languages; an unused place is empty.
struct CountryLanguages {
    std::string_view szCountry;
    std::array<std::string_view, 3> vLanguages;
};

inline constexpr std::array<std::string_view, 3> kEnglish = {"en_US", "en_AU", "en_GB"};
inline constexpr std::array<std::string_view, 3> kPortuguese = {"pt_BR", "pt_PT"};

// Narrow on purpose: Canada has no French, Switzerland only German, Belgium only Dutch.
inline constexpr CountryLanguages kConversationCountries[] = {
    {"KR", {"ko_KR"}},   {"US", kEnglish},  {"AU", kEnglish},  {"CA", kEnglish},           {"BR", kPortuguese},
    {"PT", kPortuguese}, {"ES", {"es_ES"}}, {"CN", {"zh_CN"}}, {"NO", {"nn_NO", "nb_NO"}}, {"SE", {"sv_SE"}},
    {"AT", {"de_DE"}},   {"GB", kEnglish},  {"DE", {"de_DE"}}, {"IT", {"it_IT"}},          {"PL", {"pl_PL"}},
    {"FI", {"fi_FI"}},   {"BE", {"nl_NL"}}, {"DK", {"da_DK"}}, {"IE", kEnglish},           {"FR", {"fr_FR"}},
    {"NL", {"nl_NL"}},   {"RU", {"ru_RU"}}, {"CH", {"de_DE"}},
};

// Sets `code` to what the word stands for. False, with `code` as it was, when it stands for nothing.
template <typename Code, std::size_t N>
bool LookUp(const CodedWord<Code> (&vWords)[N], std::string_view szWord, int& code)
{
    for (const CodedWord<Code>& stWord : vWords) {
        if (stWord.szWord != szWord) continue;
        code = stWord.eCode;
        return true;
    }
    return false;
}

// The first word that stands for the code; empty for a code without one.
template <typename Code, std::size_t N>
constexpr std::string_view WordOf(const CodedWord<Code> (&vWords)[N], Code eCode)
{
    for (const CodedWord<Code>& stWord : vWords)
        if (stWord.eCode == eCode) return stWord.szWord;
    return {};
}

// What the library makes of an action by its code, which may be any number.
constexpr ActionRow ActionOf(int nCode)
{
    for (const ActionRow& stRow : kActionRows)
        if (stRow.eCode == nCode) return stRow;
    return {static_cast<E_CA_TVCONTROL>(nCode)};
}

template <typename Code, std::size_t N>
constexpr bool EveryWordOnce(const CodedWord<Code> (&vWords)[N])
{
    for (std::size_t i = 0; i < N; ++i)
        for (std::size_t j = i + 1; j < N; ++j)
            if (vWords[i].szWord == vWords[j].szWord) return false;
    return true;
}

static_assert(EveryWordOnce(kActionWords), "an action word is listed twice");
static_assert(EveryWordOnce(kIntentWords), "an intent word is listed twice");

}  // namespace CADataRepository

#endif
