// The content items of a reply: the elements of "tvcontent".
#include "findings/Description.h"

namespace Description
{

namespace
{

constexpr const char* kTypeComment = "The item's kind.";
constexpr const char* kPosterComment = "The item's picture.";
constexpr const char* kDurationComment = "How long it is.";

std::vector<std::string_view> Kinds()
{
    std::vector<std::string_view> vWords;
    for (std::size_t i = 0; i < kItem.nKinds; ++i) vWords.push_back(kItem.pKinds[i].szType);
    return vWords;
}

// Without a flag an application has no picture.
std::vector<std::string_view> PremiumFlags()
{
    return {"s", "p", "ps", ""};
}

// An item's own key "type" is read before its kind is known.
constexpr Key kType = Key{"type", Type::TEXT, kTypeComment}.OneOf(Kinds).Otherwise("the item is dropped");

constexpr Key kImagesKeys[] = {
    {"url", Type::TEXT,
     "The address, with one %d for the size code. Shorter when filled, or with .jpg or .png at its end."},
    {"type", Type::TEXT, "The picture's type."},
    Key{"index", Type::INTEGERS, "The size codes on offer. Without it the address is taken as it stands."}.Otherwise(
        "the address is taken as it stands"),
};
constexpr Object kImages = Make("Images", "\"images\"", "A picture in several sizes.", kImagesKeys);

constexpr Key kPosterKeys[] = {Key{"images", Type::OBJECT, "The picture."}.Of(kImages)};
constexpr Object kPoster = Make("Poster", "\"poster\"", kPosterComment, kPosterKeys);

constexpr Key kAppPosterKeys[] = {
    Key{"images", Type::OBJECT, "The picture for the flag \"s\"."}.Of(kImages),
    Key{"images4premium", Type::OBJECT, "The picture for the flag \"p\"."}.Of(kImages),
};
constexpr Object kAppPoster = Make("AppPoster", "\"poster\"", kPosterComment, kAppPosterKeys);

constexpr Key kGenreKeys[] = {{"id", Type::TEXT, "The genre's id."}, {"name", Type::TEXT, "The genre's name."}};
constexpr Object kGenre = Make("Genre", "an object of \"genres\"", "A genre.", kGenreKeys);

constexpr Key kCertificationKeys[] = {
    {"cert-system", Type::TEXT, "Who rates."},
    {"certification", Type::TEXT, "The rating."},
};
constexpr Object kCertification =
    Make("Certification", "an object of \"certifications\"", "A rating.", kCertificationKeys);

constexpr Key kEpisodeKeys[] = {
    {"title", Type::TEXT, "The episode's title."},
    Key{"number", Type::INTEGER, "The episode's number."}.Otherwise("reads as an empty text"),
};
constexpr Object kEpisode = Make("Episode", "\"episode\"", "The episode of a TV show.", kEpisodeKeys);

constexpr Key kSeasonKeys[] = {Key{"number", Type::INTEGER, "The season's number."}.Otherwise("ignored")};
constexpr Object kSeason = Make("Season", "\"season\"", "The season of a TV show.", kSeasonKeys);

constexpr Key kNameKeys[] = {{"name", Type::TEXT, "The name."}};
constexpr Object kCasting = Make("Casting", "an object of \"casting\"", "Somebody of the cast.", kNameKeys);

constexpr Key kProgrammeChannelKeys[] = {
    {"name", Type::TEXT, "The channel's name."},
    {"source_id", Type::TEXTS, "The channel's source ids."},
};
constexpr Object kProgrammeChannel =
    Make("ProgrammeChannel", "\"channel\"", "The channel of a programme.", kProgrammeChannelKeys);

constexpr Key kScheduleKeys[] = {
    {"starttime", Type::TEXT, "When it begins."},
    {"endtime", Type::TEXT, "When it ends."},
    {"duration", Type::INTEGER, kDurationComment},
};
constexpr Object kSchedule = Make("Schedule", "\"schedule\"", "When a programme is broadcast.", kScheduleKeys);

#define SHARED_KEYS                                                                                                    \
    kType, {"id", Type::TEXT, "The item's id."}, {"title", Type::TEXT, "The item's title."},                           \
        {"year", Type::INTEGER, "The year that it is of."},                                                            \
        Key{"cert_flag", Type::TEXT, "\"No\" when it is not cleared for viewing under the adult lock."}.Exactly("No"), \
        Key{"genres", Type::OBJECTS, "Its genres."}.Of(kGenre),                                                        \
        Key{"certifications", Type::OBJECTS, "Its ratings."}.Of(kCertification),                                       \
        Key{"poster", Type::OBJECT, kPosterComment}.Of(kPoster)

constexpr Key kMovieKeys[] = {SHARED_KEYS, {"duration", Type::INTEGER, kDurationComment}};
constexpr Object kMovie = Make("Movie", "a movie", "A movie.", kMovieKeys);

constexpr Key kTVShowKeys[] = {
    SHARED_KEYS,
    {"duration", Type::INTEGER, kDurationComment},
    Key{"season", Type::ANYTHING, "The season. The record's season is 0 whatever it holds."}.Of(kSeason),
    Key{"episode", Type::OBJECT, "The episode."}.Of(kEpisode),
};
constexpr Object kTVShow = Make("TVShow", "a TV show", "A TV show.", kTVShowKeys);

constexpr Key kProgrammeKeys[] = {
    SHARED_KEYS,
    Key{"channel", Type::OBJECT, "The channel that shows it."}.Of(kProgrammeChannel),
    Key{"schedule", Type::OBJECT, "When it is shown."}.Of(kSchedule),
    Key{"casting", Type::OBJECTS, "Its cast."}.Of(kCasting),
};
constexpr Object kProgramme =
    Make("Programme", "a programme", "A broadcast programme. It is not offered to the viewer.", kProgrammeKeys);
#undef SHARED_KEYS

constexpr Key kAppInfoKeys[] = {
    Key{"id", Type::TEXT, "The application's id. Without it the item is dropped."}.Needed(),
    {"title", Type::TEXT, "The application's title."},
    {"runtitle", Type::TEXT, "The title under which it runs."},
    {"category", Type::TEXT, "What it is for."},
    Key{"premium_flag", Type::TEXT, "Which picture is taken: \"s\", \"p\", or \"ps\" for the one that suits the set."}
        .OneOf(PremiumFlags)
        .Otherwise("the application has no picture"),
    Key{"cert_flag", Type::TEXT, "\"No\" when it is not cleared for viewing under the adult lock."}.Exactly("No"),
    Key{"poster", Type::OBJECT, kPosterComment}.Of(kAppPoster),
};
constexpr Object kAppInfo = Make("AppInfo", "\"app_info\"", "What there is to know of an application.", kAppInfoKeys);

constexpr Key kAppKeys[] = {kType, Key{"app_info", Type::OBJECT, "The application."}.Of(kAppInfo).Needed()};
constexpr Object kApp = Make("App", "an application", "An application.", kAppKeys);

#define VIDEO_KEYS                                                                                     \
    kType, {"appid", Type::TEXT, "The id of the application that plays it."},                          \
        {"contentid", Type::TEXT, "Its id in that application."}, {"title", Type::TEXT, "Its title."}, \
        {"duration", Type::INTEGER, kDurationComment}, Key{"poster", Type::OBJECT, kPosterComment}.Of(kPoster)

constexpr Key kFitnessKeys[] = {
    VIDEO_KEYS,
    {"trainer", Type::TEXT, "Who trains."},
    {"category", Type::TEXT, "What is trained."},
};
constexpr Object kFitness =
    Make("Fitness", "a fitness video", "A fitness video. It is not offered to the viewer.", kFitnessKeys);

constexpr Key kKidsKeys[] = {VIDEO_KEYS, {"character", Type::TEXT, "Who it is about."}};
constexpr Object kKids =
    Make("Kids", "a video for children", "A video for children. It is not offered to the viewer.", kKidsKeys);
#undef VIDEO_KEYS

constexpr Key kValueKeys[] = {{"name", Type::TEXT, "What it is."}, {"value", Type::TEXT, "How much it is."}};
constexpr Object kWInfo = Make("WeatherValue", "an object of \"weather_info\"", "A value of the weather.", kValueKeys);
constexpr Object kStockValue = Make("StockValue", "an object of \"detailed\"", "A value of the stock.", kValueKeys);

constexpr Key kForecastKeys[] = {
    {"date", Type::TEXT, "The day."},
    {"tmin", Type::TEXT, "The lowest temperature."},
    {"tmax", Type::TEXT, "The highest temperature."},
    {"condition_icon", Type::SCALARS, "Its icons."},
};
constexpr Object kForecast =
    Make("ForecastDay", "an object of \"forecast_info\"", "A day of the forecast.", kForecastKeys);

#define LINK_KEYS                                                                            \
    kType, {"weblink", Type::TEXT, "A page about it."}, {"link", Type::TEXT, "A link."}, Key \
    {                                                                                        \
        "country", Type::TEXT, "The country."                                                \
    }

constexpr Key kWeatherKeys[] = {
    LINK_KEYS,
    {"current_temp", Type::TEXT, "The temperature."},
    {"condition", Type::TEXT, "The weather in words."},
    {"condition_icon", Type::TEXT, "The weather's icon."},
    {"local_time", Type::TEXT, "The time there."},
    {"cplogo", Type::TEXT, "The logo of who provides it."},
    {"location", Type::TEXT, "The place."},
    Key{"weather_info", Type::OBJECTS, "More values."}.Of(kWInfo),
    Key{"forecast_info", Type::OBJECTS, "The days to come."}.Of(kForecast),
};
constexpr Object kWeather =
    Make("Weather", "a weather report", "A weather report. It is not offered to the viewer.", kWeatherKeys);

constexpr Key kStockKeys[] = {
    LINK_KEYS,
    {"code", Type::TEXT, "The stock's code."},
    {"name", Type::TEXT, "The stock's name."},
    {"currentvalue", Type::TEXT, "What it is worth."},
    {"symbol", Type::TEXT, "Its symbol."},
    {"difference", Type::TEXT, "How much it rose or fell."},
    {"fluctuation", Type::TEXT, "The same in percent."},
    {"cplogo", Type::TEXT, "The logo of who provides it."},
    {"currency", Type::TEXT, "The currency."},
    {"category", Type::TEXT, "What it is."},
    Key{"detailed", Type::OBJECTS, "More values."}.Of(kStockValue),
};
constexpr Object kStock = Make("Stock", "a stock", "A stock. It is not offered to the viewer.", kStockKeys);

constexpr Key kStandingKeys[] = {
    {"ranking", Type::TEXT, "The team's rank. A \"text_color\" takes its place."},
    {"text_color", Type::BOOLEAN, "Whether it is emphasised."},
    {"name", Type::TEXT, "The team's name."},
    {"mascot", Type::TEXT, "The team's mascot."},
    {"logo", Type::TEXT, "The team's logo."},
    {"season_stats", Type::SCALARS, "The season in numbers."},
};
constexpr Object kStanding =
    Make("Standing", "an object of \"standing\"", "A team's standing.", kStandingKeys, Reading::TAKE);

constexpr Key kRecordKeys[] = {
    {"league_name", Type::TEXT, "The league."},
    {"division_name", Type::TEXT, "The division."},
    {"league_logo", Type::TEXT, "The league's logo."},
    {"match_code", Type::TEXT, "The match's code."},
    {"match_date", Type::TEXT, "The day of the match."},
    {"match_time", Type::TEXT, "The time of the match."},
    {"home_team_name", Type::TEXT, "The home team."},
    {"home_team_mascot", Type::TEXT, "The home team's mascot."},
    {"home_team_logo", Type::TEXT, "The home team's logo."},
    {"away_team_name", Type::TEXT, "The away team."},
    {"away_team_mascot", Type::TEXT, "The away team's mascot."},
    {"away_team_logo", Type::TEXT, "The away team's logo."},
    {"home_team_score", Type::TEXT, "The home team's score, as a text."},
    {"away_team_score", Type::TEXT, "The away team's score, as a text."},
    Key{"standing", Type::OBJECTS, "The teams of the league."}.Of(kStanding),
};
constexpr Object kRecord = Make("SportsRecord", "an object of \"records\"", "A league or a match.", kRecordKeys);

constexpr Key kSportsKeys[] = {
    LINK_KEYS,
    {"record_type", Type::TEXT, "What the records are."},
    Key{"records", Type::OBJECTS, "Leagues or matches."}.Of(kRecord),
};
constexpr Object kSports =
    Make("Sports", "sports results", "Sports results. They are not offered to the viewer.", kSportsKeys);
#undef LINK_KEYS

constexpr Kind kKinds[] = {
    {"movie", &kMovie, true, 57}, {"tvshow", &kTVShow, true, 57}, {"apps", &kApp, true},
    {"app", &kApp, true},         {"epg", &kProgramme, false},    {"fitness", &kFitness, false},
    {"kids", &kKids, false},      {"weather", &kWeather, false},  {"stock", &kStock, false},
    {"sports", &kSports, false},
};

constexpr Key kItemKeys[] = {kType};

}  // namespace

const Object kItem = {"ContentItem",
                      "an object of \"tvcontent\"",
                      "A search result or an information item.",
                      Reading::TAKE,
                      "reads as an item without a type: dropped",
                      kItemKeys,
                      1,
                      kKinds,
                      std::size(kKinds)};

}  // namespace Description
