// The information items of a reply's "tvcontent": weather, stock and sports.
// Every text is taken from a JSON string only: a number, such as a score sent as 3, reads as empty.
#ifndef PARLO_CADATAREPOSITORY_INFORMATION_H
#define PARLO_CADATAREPOSITORY_INFORMATION_H

#include <string>
#include <vector>

namespace CADataRepository
{

// An element of "weather_info".
struct _WInfo {
    std::string szName;   // from "name"
    std::string szValue;  // from "value"
};

// A day of the forecast: an element of "forecast_info".
struct _ForeInfo {
    std::string szDate;                       // from "date"
    std::string szTMin;                       // from "tmin"
    std::string szTMax;                       // from "tmax"
    std::vector<std::string> vConditionIcon;  // from "condition_icon"
};

// An item of type "weather".
struct _WeatherInfo {
    std::string szTitle;               // unfilled
    std::string szCountry;             // from "country"
    std::string szCondition;           // from "condition"
    std::string szConditionCode;       // unfilled
    std::string szConditionIcon;       // from "condition_icon"
    std::string szHumidity;            // unfilled
    std::string szWind;                // unfilled
    std::string szUnit;                // unfilled
    std::string szLocalTime;           // from "local_time"
    std::string szCurrentTemp;         // from "current_temp"
    std::string szWeblink;             // from "weblink"
    std::string szLink;                // from "link"
    std::string szCPLogo;              // from "cplogo": logo of the content provider
    std::string szLocation;            // from "location"
    std::vector<_WInfo> vWInfo;        // from "weather_info"
    std::vector<_ForeInfo> vForeInfo;  // from "forecast_info"
    int nInfoKind = 0;                 // E_CA_CONTENT_KIND_WEATHER once parsed
};

// An element of a stock's "detailed".
struct _StockValue {
    std::string szName;   // from "name"
    std::string szValue;  // from "value"; empty when "name" is not a text
};

// An item of type "stock".
struct _Stock {
    std::string szCode;                  // from "code"
    std::string szName;                  // from "name"
    std::string szCurrentValue;          // from "currentvalue"
    std::string szSymbol;                // from "symbol"
    std::string szDifference;            // from "difference"
    std::string szFluctuation;           // from "fluctuation"
    std::string szCurrency;              // from "currency"
    std::string szCPLogo;                // from "cplogo": logo of the content provider
    std::string szMarket;                // unfilled
    std::string szCountry;               // from "country"
    std::string szCategory;              // from "category"
    std::string szWeblink;               // from "weblink"
    std::string szLink;                  // from "link"
    std::vector<_StockValue> vDetailed;  // from "detailed"
    int nInfoKind = 0;                   // E_CA_CONTENT_KIND_STOCK once parsed
};

// A team's standing: an element of a record's "standing".
struct _Sports_Standing {
    bool bTextColor = false;                // stays false; see szRanking
    std::string szRanking;                  // from "ranking"; a boolean "text_color" replaces it by one byte, 0 or 1
    std::string szName;                     // from "name"
    std::string szMascot;                   // from "mascot"
    std::string szLogo;                     // from "logo"
    std::vector<std::string> vSeasonStats;  // from "season_stats"
};

// A league or match: an element of "records".
struct _Sports_Records {
    std::string szLeagueName;                 // from "league_name"
    std::string szLeagueLogo;                 // from "league_logo"
    std::string szMatchDate;                  // from "match_date"
    std::string szMatchTime;                  // from "match_time"
    std::string szHomeTeamName;               // from "home_team_name"
    std::string szHomeTeamMascot;             // from "home_team_mascot"
    std::string szHomeTeamLogo;               // from "home_team_logo"
    std::string szAwayTeamName;               // from "away_team_name"
    std::string szAwayTeamMascot;             // from "away_team_mascot"
    std::string szAwayTeamLogo;               // from "away_team_logo"
    std::string szHomeTeamScore;              // from "home_team_score"
    std::string szAwayTeamScore;              // from "away_team_score"
    std::string szMatchCode;                  // from "match_code"
    std::string szDivisionName;               // from "division_name"
    std::vector<_Sports_Standing> vStanding;  // from "standing"
};

// An item of type "sports".
struct _Sports {
    std::string szCountry;                  // from "country"
    std::string szRecordType;               // from "record_type"
    std::string szWeblink;                  // from "weblink"
    std::string szLink;                     // from "link"
    std::vector<_Sports_Records> vRecords;  // from "records"
    int nInfoKind = 0;                      // E_CA_CONTENT_KIND_SPORTS once parsed
};

// The information part of a content item: only the part that matches szInfoType is filled.
struct _Info {
    std::string szInfoType;  // the item's "type" when it is "weather", "stock" or "sports"
    _WeatherInfo stWeather;
    _Stock stStock;
    _Sports stSports;
};

}  // namespace CADataRepository

#endif
