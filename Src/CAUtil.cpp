#define CA_LOG_FILE "CAUtil"

#include "CAUtil.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "CADataRepository/Vocabulary.h"
#include "CALog.h"

// The C library's checked formatting, which the compiler's fortification calls too: it refuses a "%n" in
// writable memory, whatever optimisation this file is built with.
extern "C" int __vsnprintf_chk(char* pStr, std::size_t nSize, int nFlag, std::size_t nObjectSize, const char* format,
                               va_list args) noexcept;

namespace
{

constexpr int kVoiceRecogItem = 830;              // ID_MRT_VOICE_RECOG
constexpr std::size_t kFactoryItemSize = 1008;    // room for the largest item
constexpr std::size_t kPieceSize = 500;           // a line that the platform log takes
constexpr std::size_t kLastPieceBefore = 102400;  // twice what the header line announces, on purpose

bool Contains(const std::array<std::string_view, 3>& vLanguages, std::string_view szLanguage)
{
    return !szLanguage.empty() && std::find(vLanguages.begin(), vLanguages.end(), szLanguage) != vLanguages.end();
}

// The languages that are available in the country; null when conversation is not.
const CADataRepository::CountryLanguages* FindCountry(const std::string& strCountry)
{
    for (const CADataRepository::CountryLanguages& stRow : CADataRepository::kConversationCountries)
        if (stRow.szCountry == strCountry) return &stRow;
    return nullptr;
}

struct Free {
    void operator()(char* sz) const { std::free(sz); }
};
using PlatformText = std::unique_ptr<char, Free>;  // a text that the platform hands out and leaves to us

// Asks the voice control settings, which are open.
std::string AskLanguage()
{
    char* szLanguage = nullptr;
    const int nResult = vc_setting_get_language(&szLanguage);
    if (nResult != 0 || szLanguage == nullptr) {
        CA_LOGE_AS("GetVCSettingLanguage", "vc_setting_get_language failed or pLanguage is NULL:%d", nResult);
        return "";  // what a service that failed has left there is not ours to release
    }
    return PlatformText(szLanguage).get();
}

}  // namespace

std::string CCAUtil::GetCountry()
{
    const PlatformText country(vconf_get_str("db/comss/countrycode"));
    if (country == nullptr) {
        CA_LOGE("vconf get CountryCode error");
        return "US";
    }
    if (*country == '\0') {
        CA_LOGE("vconf get CountryCode is empty");
        return "US";
    }
    CA_LOGD("Countrycode is %s", country.get());
    return country.get();
}

std::string CCAUtil::GetVCSettingLanguage()
{
    const int nRet = vc_setting_initialize();
    if (nRet != 0) {
        CA_LOGE("vc setting initialize failed. nRet=%d", nRet);
        return "";
    }

    // The settings are closed however the question ends; not by a destructor, which must not call the platform: a call
    // that throws there, or in which the thread is cancelled, ends the process.
    std::string strLanguage;
    try {
        strLanguage = AskLanguage();
    } catch (...) {
        vc_setting_deinitialize();
        throw;
    }
    if (vc_setting_deinitialize() != 0) CA_LOGE("vc_setting_deinitialize failed");
    return strLanguage;
}

bool CCAUtil::IsEnLanguage(const std::string& strLanguage)
{
    return Contains(CADataRepository::kEnglish, strLanguage);
}

bool CCAUtil::IsPTLanguage(const std::string& strLanguage)
{
    return Contains(CADataRepository::kPortuguese, strLanguage);
}

bool CCAUtil::CompareCountryLanguage()
{
    const std::string strCountry = GetCountry();
    const std::string strLanguage = GetVCSettingLanguage();
    CA_LOGE("country[%s], voice language[%s]", strCountry.c_str(), strLanguage.c_str());
    const auto* const pRow = FindCountry(strCountry);
    return pRow != nullptr && Contains(pRow->vLanguages, strLanguage);
}

bool CCAUtil::IsCountrySupportConv()
{
    const std::string strCountry = GetCountry();
    CA_LOGE("country[%s]", strCountry.c_str());
    if (FindCountry(strCountry) != nullptr) return true;
    CA_LOGE("This country [%s] not support conversation", strCountry.c_str());
    return false;
}

bool CCAUtil::IsConversationFactorySupport()
{
    CA_LOGD("");
    alignas(std::int32_t) char buffer[kFactoryItemSize] = {};
    const int nResult = GetData(kVoiceRecogItem, buffer);
    std::int32_t nVoiceRecog = 0;
    std::memcpy(&nVoiceRecog, buffer, sizeof nVoiceRecog);
    CA_LOGE("GetData return:%d, ID_MRT_VOICE_RECOG:%d", nResult, nVoiceRecog);
    if (nResult == 0) {
        CA_LOGE("GetData failed");
        return false;
    }
    if (nVoiceRecog == 0) {
        CA_LOGE("not support voice recongition, so not support conversation");
        return false;
    }
    return true;
}

int CCAUtil::VsnPrint(char* pStr, int nSize, const char* format, ...)
{
    if (pStr == nullptr) {
        CA_LOGE("pStr is NULL");
        return 0;
    }
    va_list args;
    va_start(args, format);
    const auto nRoom = static_cast<std::size_t>(std::max(nSize, 0));
    const int nLength = __vsnprintf_chk(pStr, nRoom, 1, static_cast<std::size_t>(-1), format, args);
    va_end(args);
    return nLength;
}

std::string CCAUtil::itoa(int nInput)
{
    if (nInput < 0) {
        CA_LOGE(" ERROR - nInput:%d", nInput);
        return "";
    }
    char buffer[256] = {};
    VsnPrint(buffer, sizeof buffer - 1, "%d", nInput);
    return buffer;
}

std::string CCAUtil::ConvertIntToString(int n)
{
    return std::to_string(n);
}

void CCAUtil::PrintRcvData(const std::string& strRawData)
{
    const std::size_t nLength = strRawData.size();
    CA_LOGE("=================print all receive data================");
    CA_LOGE("###########strRawData############(print max length:50KB; actural size:%d)\n", static_cast<int>(nLength));
    for (std::size_t nOffset = 0; nOffset < nLength && nOffset < kLastPieceBefore; nOffset += kPieceSize) {
        char piece[kPieceSize + 1];
        piece[strRawData.copy(piece, kPieceSize, nOffset)] = '\0';
        CA_LOGE("%s", piece);
    }
}

bool CCAUtil::FlagAdultLock(bool /*bBroadcast*/)
{
    CA_LOGE("need to be intergrated");
    return false;
}

bool CCAUtil::IsSupportGamePanel()
{
    CA_LOGE("need to be intergration");
    return true;
}
