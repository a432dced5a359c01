// The lines that tell what the set is.
#include "log/SetValues.h"

#include <cstdlib>
#include <tuple>

#include "session/LogForm.h"
#include "text/Text.h"

namespace
{

constexpr const char* kNone = "none";

// A line that ends in a value, or stands for one.
struct Row {
    std::optional<std::string> SetValues::*pValue;
    std::string_view szFunction;
    std::string_view szBefore;
    std::string_view szBehind;  // the value stands between the two
    const char* szMeans;        // null: what stands there
};

constexpr Row kRows[] = {
    {&SetValues::strCountry, "GetCountry", "Countrycode is ", "", nullptr},
    {&SetValues::strCountry, "GetCountry", "vconf get CountryCode error", "", kNone},
    {&SetValues::strCountry, "GetCountry", "vconf get CountryCode is empty", "", ""},
    {&SetValues::strLanguage, "CompareCountryLanguage", "], voice language[", "]", nullptr},
    {&SetValues::strLanguage, "GetVCSettingLanguage", "vc setting initialize failed", "", kNone},
    {&SetValues::strLanguage, "GetVCSettingLanguage", "vc_setting_get_language failed", "", kNone},
    {&SetValues::strVoiceRecog, "IsConversationFactorySupport", "ID_MRT_VOICE_RECOG:", "", nullptr},
    {&SetValues::strVoiceRecog, "IsConversationFactorySupport", "GetData failed", "", kNone},
    // Logged at the priority that every set logs; the lines above say more where they are there.
    {&SetValues::strCountry, "IsCountrySupportConv", "country[", "]", nullptr},
    {&SetValues::strCountry, "CompareCountryLanguage", "country[", "], voice", nullptr},
};

// Each value with its option and its variable.
constexpr std::tuple<std::optional<std::string> SetValues::*, const char*, const char*> kOptions[] = {
    {&SetValues::strCountry, "--country", "PARLO_COUNTRY"},
    {&SetValues::strLanguage, "--language", "PARLO_LANGUAGE"},
    {&SetValues::strVoiceRecog, "--voice-recog", "PARLO_VOICE_RECOG"},
};

}  // namespace

void SetValues::Listen(const LogLine& stLine)
{
    for (const Row& row : kRows) {
        if (stLine.strFunction != row.szFunction) continue;
        const std::string_view szMessage = stLine.strMessage;
        const std::size_t nBefore = szMessage.find(row.szBefore);
        if (nBefore == szMessage.npos) continue;
        const bool bSaid = (this->*row.pValue).has_value();
        if (bSaid && row.pValue == &SetValues::strCountry && !row.szBehind.empty()) continue;
        if (bSaid && row.pValue == &SetValues::strLanguage && *strLanguage == kNone) continue;
        std::string_view szValue = szMessage.substr(nBefore + row.szBefore.size());
        if (!row.szBehind.empty()) szValue = szValue.substr(0, szValue.rfind(row.szBehind));
        this->*row.pValue = row.szMeans != nullptr ? row.szMeans : std::string(szValue);
    }
}

void SetValues::Apply() const
{
    for (const auto& [pValue, szFlag, szVariable] : kOptions)
        if (const auto& strValue = this->*pValue) setenv(szVariable, strValue->c_str(), 1);
}

std::string SetValues::Options() const
{
    std::string strOptions;
    for (const auto& [pValue, szFlag, szVariable] : kOptions)
        if (const auto& strValue = this->*pValue)
            strOptions += (strOptions.empty() ? "" : " ") + std::string(szFlag) + ' ' + Shown(*strValue);
    return strOptions;
}

bool IsAnswer(const LogLine& stLine)
{
    constexpr std::string_view kAnswering[] = {"GetCountry", "GetVCSettingLanguage"};
    return IsOneOf(stLine.strFunction, kAnswering);
}
