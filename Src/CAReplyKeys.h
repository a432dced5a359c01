// The keys of the server's documents that plainly fill a field of a record: one table a record. Keys that decide
// something, or lead to a list or an object, are with what is done about them in the units CAParseJson*.cpp.
#pragma once

#include "CADataRepository.h"
#include "CAJson.h"

namespace CAReplyKeys
{

using namespace CADataRepository;
using CAJson::FieldKey;

inline constexpr FieldKey<_ResponseInfo> kResponseInfoKeys[] = {
    {"engine_time", &_ResponseInfo::szEngineTime},       {"content_mgr_time", &_ResponseInfo::szContentMgrTime},
    {"couchbase_time", &_ResponseInfo::szCouchbaseTime}, {"current_time", &_ResponseInfo::szCurrentTime},
    {"server_time", &_ResponseInfo::szServerTime},       {"query", &_ResponseInfo::szQuery}};

// Of an object in a command's "params"; "index", "keyword", "website" and the lists are more than that.
inline constexpr FieldKey<_TVControl> kParamKeys[] = {{"amount", &_TVControl::nAmount},
                                                      {"prevnext", &_TVControl::szPrevNext},
                                                      {"listorder", &_TVControl::nListOrder},
                                                      {"time", &_TVControl::nTime},
                                                      {"direction", &_TVControl::szDirection},
                                                      {"gb_function", &_TVControl::szGBFunction},
                                                      {"play_speed", &_TVControl::nPlaySpeed},
                                                      {"target_device", &_TVControl::szTargetDevice},
                                                      {"target_status", &_TVControl::szTargetStatus},
                                                      {"colorkey", &_TVControl::szColorkey},
                                                      {"type", &_TVControl::szType},
                                                      {"channel_no", &_TVControl::szChannelNo},
                                                      {"action", &_TVControl::szAction}};

inline constexpr FieldKey<_Channels> kChannelKeys[] = {{"dtv", &_Channels::szDTV},
                                                       {"number", &_Channels::szNumber},
                                                       {"major", &_Channels::nMajor},
                                                       {"minor", &_Channels::nMinor},
                                                       {"ptc", &_Channels::nPTC},
                                                       {"name", &_Channels::szName},
                                                       {"onid", &_Channels::szONID},
                                                       {"tsid", &_Channels::szTSID},
                                                       {"sid", &_Channels::szSID},
                                                       {"freq", &_Channels::szFreq},
                                                       {"source_id", &_Channels::szSourceID},
                                                       {"type", &_Channels::szType}};

inline constexpr FieldKey<_UMD_Channel> kUMDChannelKeys[] = {{"lineup_id", &_UMD_Channel::szLineupID},
                                                             {"channel_id", &_UMD_Channel::szChannelID},
                                                             {"channel_number", &_UMD_Channel::szChannelNumber},
                                                             {"channel_name", &_UMD_Channel::szChannelName},
                                                             {"attributes", &_UMD_Channel::szAttributes}};

inline constexpr FieldKey<_DisplayControlItemData> kDisplayItemKeys[] = {{"title", &_DisplayControlItemData::szTitle},
                                                                         {"index", &_DisplayControlItemData::nIndex}};

inline constexpr FieldKey<_OnTVContents> kOnTVKeys[] = {{"id", &_OnTVContents::szId},
                                                        {"title", &_OnTVContents::szTitle},
                                                        {"year", &_OnTVContents::nYear},
                                                        {"cert_flag", &_OnTVContents::szCertFlag}};

inline constexpr FieldKey<_MnTContents> kMnTKeys[] = {{"id", &_MnTContents::szId},
                                                      {"title", &_MnTContents::szTitle},
                                                      {"year", &_MnTContents::nYear},
                                                      {"duration", &_MnTContents::nDuration},
                                                      {"cert_flag", &_MnTContents::szCertFlag}};

inline constexpr FieldKey<_AppContents> kAppKeys[] = {
    {"id", &_AppContents::szId}, {"title", &_AppContents::szTitle}, {"premium_flag", &_AppContents::szPremiumFlag}};

inline constexpr FieldKey<_AppContents> kRunnableAppKeys[] = {{"runtitle", &_AppContents::szRunTitle},
                                                              {"category", &_AppContents::szCategory},
                                                              {"cert_flag", &_AppContents::szCertFlag}};

inline constexpr FieldKey<_VideoContents> kKidsKeys[] = {
    {"appid", &_VideoContents::szAppId},         {"contentid", &_VideoContents::szContentId},
    {"type", &_VideoContents::szType},           {"title", &_VideoContents::szTitle},
    {"character", &_VideoContents::szCharacter}, {"duration", &_VideoContents::nDuration}};

inline constexpr FieldKey<_VideoContents> kFitnessKeys[] = {
    {"appid", &_VideoContents::szAppId},     {"contentid", &_VideoContents::szContentId},
    {"type", &_VideoContents::szType},       {"title", &_VideoContents::szTitle},
    {"trainer", &_VideoContents::szTrainer}, {"category", &_VideoContents::szCategory},
    {"duration", &_VideoContents::nDuration}};

inline constexpr FieldKey<_Genres> kGenreKeys[] = {{"id", &_Genres::szId}, {"name", &_Genres::szName}};

inline constexpr FieldKey<_Certification> kCertificationKeys[] = {{"cert-system", &_Certification::szRatingSystem},
                                                                  {"certification", &_Certification::szRating}};

inline constexpr FieldKey<_Casting> kCastingKeys[] = {{"name", &_Casting::szName}};

inline constexpr FieldKey<_ScheduleInfo> kScheduleKeys[] = {{"starttime", &_ScheduleInfo::szStartTime},
                                                            {"duration", &_ScheduleInfo::nDuration},
                                                            {"endtime", &_ScheduleInfo::szEndTime}};

inline constexpr FieldKey<_WeatherInfo> kWeatherKeys[] = {
    {"weblink", &_WeatherInfo::szWeblink},      {"link", &_WeatherInfo::szLink},
    {"country", &_WeatherInfo::szCountry},      {"current_temp", &_WeatherInfo::szCurrentTemp},
    {"condition", &_WeatherInfo::szCondition},  {"condition_icon", &_WeatherInfo::szConditionIcon},
    {"local_time", &_WeatherInfo::szLocalTime}, {"cplogo", &_WeatherInfo::szCPLogo},
    {"location", &_WeatherInfo::szLocation}};

inline constexpr FieldKey<_WInfo> kWInfoKeys[] = {{"name", &_WInfo::szName}, {"value", &_WInfo::szValue}};

inline constexpr FieldKey<_ForeInfo> kForeInfoKeys[] = {
    {"date", &_ForeInfo::szDate}, {"tmin", &_ForeInfo::szTMin}, {"tmax", &_ForeInfo::szTMax}};

inline constexpr FieldKey<_Stock> kStockKeys[] = {{"weblink", &_Stock::szWeblink},
                                                  {"link", &_Stock::szLink},
                                                  {"code", &_Stock::szCode},
                                                  {"name", &_Stock::szName},
                                                  {"currentvalue", &_Stock::szCurrentValue},
                                                  {"symbol", &_Stock::szSymbol},
                                                  {"difference", &_Stock::szDifference},
                                                  {"fluctuation", &_Stock::szFluctuation},
                                                  {"cplogo", &_Stock::szCPLogo},
                                                  {"currency", &_Stock::szCurrency},
                                                  {"country", &_Stock::szCountry},
                                                  {"category", &_Stock::szCategory}};

inline constexpr FieldKey<_Sports> kSportsKeys[] = {{"weblink", &_Sports::szWeblink},
                                                    {"link", &_Sports::szLink},
                                                    {"country", &_Sports::szCountry},
                                                    {"record_type", &_Sports::szRecordType}};

inline constexpr FieldKey<_Sports_Records> kSportsRecordKeys[] = {
    {"league_name", &_Sports_Records::szLeagueName},
    {"division_name", &_Sports_Records::szDivisionName},
    {"league_logo", &_Sports_Records::szLeagueLogo},
    {"match_code", &_Sports_Records::szMatchCode},
    {"match_date", &_Sports_Records::szMatchDate},
    {"match_time", &_Sports_Records::szMatchTime},
    {"home_team_name", &_Sports_Records::szHomeTeamName},
    {"home_team_mascot", &_Sports_Records::szHomeTeamMascot},
    {"home_team_logo", &_Sports_Records::szHomeTeamLogo},
    {"away_team_name", &_Sports_Records::szAwayTeamName},
    {"away_team_mascot", &_Sports_Records::szAwayTeamMascot},
    {"away_team_logo", &_Sports_Records::szAwayTeamLogo},
    {"home_team_score", &_Sports_Records::szHomeTeamScore},
    {"away_team_score", &_Sports_Records::szAwayTeamScore}};

inline constexpr FieldKey<_Sports_Standing> kStandingKeys[] = {{"ranking", &_Sports_Standing::szRanking},
                                                               {"name", &_Sports_Standing::szName},
                                                               {"mascot", &_Sports_Standing::szMascot},
                                                               {"logo", &_Sports_Standing::szLogo}};

}  // namespace CAReplyKeys
