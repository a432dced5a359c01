// One table a record says which fields it has; a template turns any of them into an object.
#include "records/RecordJson.h"

#include <json/writer.h>

#include <memory>
#include <sstream>
#include <tuple>
#include <type_traits>
#include <vector>

#include "text/Text.h"

using namespace CADataRepository;

namespace
{

using Writer = std::function<void(const std::string&)>;

template <typename Record, typename Value>
struct Field {
    const char* szName;
    Value Record::*pMember;
};

// The fields of `Record`, as a tuple of Field.
template <typename Record>
struct Fields;

#define FIELD(Name)             \
    Field<R, decltype(R::Name)> \
    {                           \
#Name, &R::Name         \
    }
#define FIELDS(Record, ...)                                     \
    template <>                                                 \
    struct Fields<Record> {                                     \
        using R = Record;                                       \
        static constexpr auto v = std::make_tuple(__VA_ARGS__); \
    }

FIELDS(_UMD_Channel, FIELD(szLineupID), FIELD(szChannelID), FIELD(szChannelNumber), FIELD(szChannelName),
       FIELD(szAttributes), FIELD(szSourceID), FIELD(nSourceIndex), FIELD(szNetwork), FIELD(szRegion));
FIELDS(_Channels, FIELD(nMajor), FIELD(nMinor), FIELD(nPTC), FIELD(bUMDChannel), FIELD(szDTV), FIELD(szNumber),
       FIELD(szName), FIELD(szONID), FIELD(szTSID), FIELD(szSID), FIELD(szFreq), FIELD(szSourceID), FIELD(szType),
       FIELD(stUMDChannel));
FIELDS(_ChannelInfo, FIELD(vSourceID), FIELD(szName));

FIELDS(_Poster, FIELD(szUrl), FIELD(szType), FIELD(vIndex));
FIELDS(_Genres, FIELD(szId), FIELD(szName));
FIELDS(_Certification, FIELD(szRatingSystem), FIELD(szRating));
FIELDS(_Casting, FIELD(szName));
FIELDS(_Episode, FIELD(szTitle), FIELD(szNumber));
FIELDS(_ScheduleInfo, FIELD(nDuration), FIELD(szStartTime), FIELD(szEndTime));
FIELDS(_OnTVContents, FIELD(nYear), FIELD(szId), FIELD(szTitle), FIELD(szSubtitle), FIELD(szSynopsis),
       FIELD(szProvider), FIELD(szCertFlag), FIELD(stPoster), FIELD(stSchedule), FIELD(stChannelInfo), FIELD(vRatings),
       FIELD(vGenres), FIELD(nKind));
FIELDS(_MnTContents, FIELD(nYear), FIELD(nSeason), FIELD(nDuration), FIELD(szId), FIELD(szTitle), FIELD(szCertFlag),
       FIELD(stEpisode), FIELD(stPoster), FIELD(vRatings), FIELD(vGenres), FIELD(nKind));
FIELDS(_AppContents, FIELD(szId), FIELD(szTitle), FIELD(szRunTitle), FIELD(szCategory), FIELD(szCertFlag),
       FIELD(szPremiumFlag), FIELD(stPoster));
FIELDS(_VideoContents, FIELD(nDuration), FIELD(nViews), FIELD(nLikes), FIELD(nPosition), FIELD(szTitle),
       FIELD(szSubtitle), FIELD(szDescription), FIELD(szAppId), FIELD(szContentId), FIELD(szType), FIELD(szTrainer),
       FIELD(szCharacter), FIELD(szCategory), FIELD(szUrl), FIELD(szThumbnail), FIELD(szUploader), FIELD(szUploadTime),
       FIELD(szLanguage), FIELD(szQuality), FIELD(szLevel), FIELD(szPrice), FIELD(nKind), FIELD(stPoster));

FIELDS(_WInfo, FIELD(szName), FIELD(szValue));
FIELDS(_ForeInfo, FIELD(szDate), FIELD(szTMin), FIELD(szTMax), FIELD(vConditionIcon));
FIELDS(_WeatherInfo, FIELD(szTitle), FIELD(szCountry), FIELD(szCondition), FIELD(szConditionCode),
       FIELD(szConditionIcon), FIELD(szHumidity), FIELD(szWind), FIELD(szUnit), FIELD(szLocalTime),
       FIELD(szCurrentTemp), FIELD(szWeblink), FIELD(szLink), FIELD(szCPLogo), FIELD(szLocation), FIELD(vWInfo),
       FIELD(vForeInfo), FIELD(nInfoKind));
FIELDS(_StockValue, FIELD(szName), FIELD(szValue));
FIELDS(_Stock, FIELD(szCode), FIELD(szName), FIELD(szCurrentValue), FIELD(szSymbol), FIELD(szDifference),
       FIELD(szFluctuation), FIELD(szCurrency), FIELD(szCPLogo), FIELD(szMarket), FIELD(szCountry), FIELD(szCategory),
       FIELD(szWeblink), FIELD(szLink), FIELD(vDetailed), FIELD(nInfoKind));
FIELDS(_Sports_Standing, FIELD(bTextColor), FIELD(szRanking), FIELD(szName), FIELD(szMascot), FIELD(szLogo),
       FIELD(vSeasonStats));
FIELDS(_Sports_Records, FIELD(szLeagueName), FIELD(szLeagueLogo), FIELD(szMatchDate), FIELD(szMatchTime),
       FIELD(szHomeTeamName), FIELD(szHomeTeamMascot), FIELD(szHomeTeamLogo), FIELD(szAwayTeamName),
       FIELD(szAwayTeamMascot), FIELD(szAwayTeamLogo), FIELD(szHomeTeamScore), FIELD(szAwayTeamScore),
       FIELD(szMatchCode), FIELD(szDivisionName), FIELD(vStanding));
FIELDS(_Sports, FIELD(szCountry), FIELD(szRecordType), FIELD(szWeblink), FIELD(szLink), FIELD(vRecords),
       FIELD(nInfoKind));
FIELDS(_Info, FIELD(szInfoType), FIELD(stWeather), FIELD(stStock), FIELD(stSports));

FIELDS(_ContentsItem, FIELD(stOnTV), FIELD(stMnT), FIELD(stApp), FIELD(stVideo), FIELD(stInfo), FIELD(szType));
FIELDS(_Content, FIELD(vCasting), FIELD(stOnTV));
FIELDS(_MusicContents, FIELD(nKind));
FIELDS(_PhotoContents, FIELD(nKind));
FIELDS(_TuneInContents, FIELD(nKind));
FIELDS(_GameContents, FIELD(nKind));
FIELDS(_WebBrowser, FIELD(szUrl));
FIELDS(_LintraContents, FIELD(nKind));
FIELDS(_SocialContents, FIELD(nKind));
FIELDS(_CastContents, FIELD(nKind));
FIELDS(_SAContents, FIELD(nSource), FIELD(stItem), FIELD(szYouTubeQuery), FIELD(stYouTube), FIELD(stMusic),
       FIELD(stPhoto), FIELD(stVideo), FIELD(szPlacement), FIELD(stSocialVideo), FIELD(stSocialPhoto),
       FIELD(szSocialId), FIELD(szSocialUser), FIELD(szSocialText), FIELD(stTuneIn), FIELD(stGame), FIELD(stWebBrowser),
       FIELD(stLintra), FIELD(stSocial), FIELD(stCast));

FIELDS(ExternalItemData, FIELD(nNumber), FIELD(szText));
FIELDS(_DisCtrlInfo, FIELD(numberOfItem), FIELD(nAction), FIELD(vItems));
FIELDS(_ConvActionInfo, FIELD(eActionType), FIELD(eSystemAction), FIELD(e2ndAction), FIELD(eActionIntent),
       FIELD(nReserved1), FIELD(strSysResponse), FIELD(nReserved2), FIELD(strAction), FIELD(vSystemActionParam),
       FIELD(vChannels), FIELD(vCandidates), FIELD(vSAContents), FIELD(stDisCtrlInfo), FIELD(strDialogId),
       FIELD(vDomain), FIELD(strFirstAction), FIELD(strUserInputVoice), FIELD(nDialogType), FIELD(nDialogSeq));

#undef FIELDS
#undef FIELD

// The record as it is before anything is filled.
template <typename Record>
const Record kFresh{};

// Calls `visit` with the name, the value and the value in the record `fresh`, for each field.
template <typename Record, typename Visit>
void ForEachField(const Record& record, const Record& fresh, const Visit& visit)
{
    std::apply([&](const auto&... field) { (visit(field.szName, record.*field.pMember, fresh.*field.pMember), ...); },
               Fields<Record>::v);
}

// Whether a value is the same as in a fresh record.
template <typename Element>
bool IsSame(const std::vector<Element>& vList, const std::vector<Element>& fresh)
{
    return vList.empty() && fresh.empty();
}

template <typename Value>
bool IsSame(const Value& value, const Value& fresh)
{
    if constexpr (std::is_enum_v<Value> || std::is_constructible_v<Json::Value, const Value&>) {
        return value == fresh;
    } else {
        bool bSame = true;
        ForEachField(value, fresh, [&](const char*, const auto& field, const auto& freshField) {
            bSame = bSame && IsSame(field, freshField);
        });
        return bSame;
    }
}

// A value as JSON; with `pFresh` without the fields that are the same there.
template <typename Value>
Json::Value AnyToJson(const Value& value, const Value* pFresh);

template <typename Element>
Json::Value AnyToJson(const std::vector<Element>& vList, const std::vector<Element>* pFresh)
{
    Json::Value list(Json::arrayValue);
    for (const Element& element : vList)
        list.append(AnyToJson(element, pFresh == nullptr ? nullptr : &kFresh<Element>));
    return list;
}

template <typename Value>
Json::Value AnyToJson(const Value& value, [[maybe_unused]] const Value* pFresh)
{
    if constexpr (std::is_enum_v<Value>) {
        return static_cast<int>(value);
    } else if constexpr (std::is_constructible_v<Json::Value, const Value&>) {
        return value;
    } else {
        Json::Value object(Json::objectValue);
        ForEachField(value, pFresh == nullptr ? kFresh<Value> : *pFresh,
                     [&](const char* szName, const auto& field, const auto& fresh) {
                         if (pFresh != nullptr && IsSame(field, fresh)) return;
                         object[szName] = AnyToJson(field, pFresh == nullptr ? nullptr : &fresh);
                     });
        return object;
    }
}

// The elements of a list one by one, anything else at once.
template <typename Value>
void WriteValue(const Value& value, const Value* pFresh, const Writer& write)
{
    write(JsonText(AnyToJson(value, pFresh)));
}

template <typename Element>
void WriteValue(const std::vector<Element>& vList, const std::vector<Element>* pFresh, const Writer& write)
{
    write("[");
    for (const Element& element : vList)
        write((&element == vList.data() ? "" : ",") +
              JsonText(AnyToJson(element, pFresh == nullptr ? nullptr : &kFresh<Element>)));
    write("]");
}

}  // namespace

template <typename Record>
Json::Value ToJson(const Record& record, bool bCompact)
{
    return AnyToJson(record, bCompact ? &kFresh<Record> : nullptr);
}
template Json::Value ToJson(const _ConvActionInfo& record, bool bCompact);
template Json::Value ToJson(const _ContentsItem& record, bool bCompact);
template Json::Value ToJson(const _SAContents& record, bool bCompact);
template Json::Value ToJson(const _Content& record, bool bCompact);

void WriteMembers(const _ConvActionInfo& info, bool bCompact, const Writer& write)
{
    ForEachField(info, kFresh<_ConvActionInfo>, [&](const char* szName, const auto& field, const auto& fresh) {
        if (bCompact && IsSame(field, fresh)) return;
        write(",\"" + std::string(szName) + "\":");
        WriteValue(field, bCompact ? &fresh : nullptr, write);
    });
}

std::string JsonText(const Json::Value& value)
{
    static const std::unique_ptr<Json::StreamWriter> pWriter = [] {  // making one costs more than using it
        Json::StreamWriterBuilder builder;
        builder["emitUTF8"] = true;
        builder["indentation"] = "";
        return std::unique_ptr<Json::StreamWriter>(builder.newStreamWriter());
    }();
    std::ostringstream stream;
    pWriter->write(value, &stream);
    return EscapedInJson(stream.str());
}

std::string JsonLine(const Json::Value& value)
{
    return JsonText(value) + '\n';
}
