// One table a record says which fields it has; a template turns any of them into an object.
#include "rendering/RecordJson.h"

#include <json/writer.h>

#include <memory>
#include <sstream>
#include <tuple>
#include <type_traits>
#include <vector>

namespace
{

using namespace CADataRepository;

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
       FIELD(szProvider), FIELD(szBroadcaster), FIELD(szCertFlag), FIELD(stPoster), FIELD(stSchedule),
       FIELD(stChannelInfo), FIELD(vRatings), FIELD(vGenres), FIELD(nKind));
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

template <typename Value>
Json::Value AnyToJson(const Value& value);

template <typename Element>
Json::Value AnyToJson(const std::vector<Element>& vList)
{
    Json::Value list(Json::arrayValue);
    for (const Element& element : vList) list.append(AnyToJson(element));
    return list;
}

// Calls `visit` with the name and the value of each field.
template <typename Record, typename Visit>
void ForEachField(const Record& record, const Visit& visit)
{
    std::apply([&](const auto&... field) { (visit(field.szName, record.*field.pMember), ...); }, Fields<Record>::v);
}

template <typename Record>
Json::Value Object(const Record& record)
{
    Json::Value object(Json::objectValue);
    ForEachField(record, [&](const char* szName, const auto& value) { object[szName] = AnyToJson(value); });
    return object;
}

template <typename Value>
Json::Value AnyToJson(const Value& value)
{
    if constexpr (std::is_enum_v<Value>)
        return static_cast<int>(value);
    else if constexpr (std::is_constructible_v<Json::Value, const Value&>)
        return value;
    else
        return Object(value);
}

// JSON text allows DEL and the C1 controls raw inside texts; `strJson` with them written as \u00XX.
std::string EscapeControls(const std::string& strJson)
{
    constexpr char kHex[] = "0123456789abcdef";
    std::string strLine;
    strLine.reserve(strJson.size());
    for (std::size_t i = 0; i < strJson.size(); ++i) {
        const bool bC1 = strJson[i] == '\xC2' && i + 1 < strJson.size() && (strJson[i + 1] & 0xE0) == 0x80;
        if (!bC1 && strJson[i] != '\x7F') {
            strLine += strJson[i];
            continue;
        }
        if (bC1) ++i;
        const auto nCode = static_cast<unsigned char>(strJson[i]);
        strLine.append("\\u00").append({kHex[nCode >> 4U], kHex[nCode & 0xFU]});
    }
    return strLine;
}

// Writes values on one line; making one costs more than using it.
class CLineWriter
{
public:
    CLineWriter()
    {
        Json::StreamWriterBuilder builder;
        builder["emitUTF8"] = true;
        builder["indentation"] = "";
        m_pWriter.reset(builder.newStreamWriter());
    }
    std::string Text(const Json::Value& value) const
    {
        std::ostringstream stream;
        m_pWriter->write(value, &stream);
        return EscapeControls(stream.str());
    }

private:
    std::unique_ptr<Json::StreamWriter> m_pWriter;
};

template <typename Value, typename Write>
void WriteValue(const CLineWriter& writer, const Value& value, const Write& write)
{
    write(writer.Text(AnyToJson(value)));
}

template <typename Element, typename Write>
void WriteValue(const CLineWriter& writer, const std::vector<Element>& vList, const Write& write)
{
    const char* szBefore = "[";
    for (const Element& element : vList) {
        write(szBefore + writer.Text(AnyToJson(element)));
        szBefore = ",";
    }
    write(vList.empty() ? "[]" : "]");
}

}  // namespace

Json::Value ToJson(const _ConvActionInfo& info)
{
    return Object(info);
}
Json::Value ToJson(const _ContentsItem& stItem)
{
    return Object(stItem);
}
Json::Value ToJson(const _SAContents& stContents)
{
    return Object(stContents);
}
Json::Value ToJson(const _Content& stContent)
{
    return Object(stContent);
}

void WriteJsonLine(const _ConvActionInfo& info, const std::function<void(const std::string&)>& write)
{
    const CLineWriter writer;
    const char* szBefore = "{";
    ForEachField(info, [&](const char* szName, const auto& value) {
        write(szBefore + ('"' + std::string(szName) + "\":"));
        szBefore = ",";
        WriteValue(writer, value, write);
    });
    write("}\n");
}

std::string JsonLine(const Json::Value& value)
{
    return CLineWriter().Text(value) + '\n';
}
