// Information items: weather, stock and sports.
#define CA_LOG_FILE "CAParseJson"  // all parsers log under the name of their class's file

#include "CAParseJson.h"

#include "CAJson.h"
#include "CALog.h"
#include "CAReplyKeys.h"

using namespace CADataRepository;
using namespace CAReplyKeys;
using namespace CAJson;

namespace
{

void ParseStanding(const Json::Value& element, _Sports_Standing& stStanding)
{
    Take(element, kStandingKeys, stStanding);
    // The colour flag lands in the ranking, as one byte; the application counts on finding it there.
    const Json::Value& textColor = Child(element, "text_color");
    if (textColor.isBool()) stStanding.szRanking.assign(1, textColor.asBool() ? '\1' : '\0');
    AppendAnyTexts(Child(element, "season_stats"), stStanding.vSeasonStats);
}

}  // namespace

void CCAParsePacket::t_ParseWeatherInfo(const Json::Value& element, _WeatherInfo& weather)
{
    weather.nInfoKind = E_CA_CONTENT_KIND_WEATHER;
    Fill(element, kWeatherKeys, weather);
    AppendRecords(Child(element, "weather_info"), kWInfoKeys, weather.vWInfo);
    for (const Json::Value& day : Elements(Child(element, "forecast_info"))) {
        _ForeInfo& stDay = weather.vForeInfo.emplace_back();
        Fill(day, kForeInfoKeys, stDay);
        AppendAnyTexts(Child(day, "condition_icon"), stDay.vConditionIcon);
    }
}

void CCAParsePacket::t_ParseStockInfo(const Json::Value& element, _Stock& stock)
{
    stock.nInfoKind = E_CA_CONTENT_KIND_STOCK;
    Fill(element, kStockKeys, stock);
    t_ParseStockValue(Child(element, "detailed"), stock.vDetailed);
}

void CCAParsePacket::t_ParseStockValue(const Json::Value& detailed, std::vector<_StockValue>& list)
{
    for (const Json::Value& element : Elements(detailed)) {
        _StockValue& stValue = list.emplace_back();
        if (Take(Child(element, "name"), stValue.szName)) stValue.szValue = Text(element, "value");
    }
}

void CCAParsePacket::t_ParseSportsInfo(const Json::Value& element, _Sports& sports)
{
    Fill(element, kSportsKeys, sports);
    for (const Json::Value& record : Elements(Child(element, "records"))) {
        _Sports_Records& stRecord = sports.vRecords.emplace_back();
        Fill(record, kSportsRecordKeys, stRecord);
        for (const Json::Value& standing : Elements(Child(record, "standing"))) {
            _Sports_Standing& stStanding = stRecord.vStanding.emplace_back();
            ParseStanding(standing, stStanding);
            for (const std::string& strStat : stStanding.vSeasonStats) CA_LOGD(" season stat is %s", strStat.c_str());
        }
    }
    sports.nInfoKind = E_CA_CONTENT_KIND_SPORTS;
}
