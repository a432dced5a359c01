// The television that the fuzz targets run on: settings from the input, and a log that formats every line in full,
// so that the address sanitizer sees each text that the library hands to it.
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>

#include "FuzzInput.h"
#include "ca_platform.h"

namespace
{

struct Settings {
    std::string strCountry;
    std::string strLanguage;
    std::string strFlag;
};
Settings g_Settings;
std::size_t g_nFailingLine = 0;
bool g_bFailsForGood = false;
bool g_bThrew = false;  // since FailLog, or the settings, said so

const char* Setting(const std::string& strValue)
{
    return strValue.empty() || strValue == "none" ? nullptr : strValue.c_str();
}

}  // namespace

void Fuzz::SetPlatform(const std::string& strLine)
{
    g_Settings = Settings();
    g_bThrew = false;
    std::istringstream(strLine) >> g_Settings.strCountry >> g_Settings.strLanguage >> g_Settings.strFlag;
}

void Fuzz::FailLog(std::size_t nLine, bool bForGood)
{
    g_nFailingLine = nLine;
    g_bFailsForGood = bForGood;
    g_bThrew = false;
}

int __dlog_print(int /*priority*/, const char* tag, const char* format, ...)
{
    static char line[4096];
    va_list args;
    va_start(args, format);
    const int nLength = std::vsnprintf(line, sizeof line, format, args);
    va_end(args);
    Fuzz::Require(std::strcmp(tag, "ParloAPI") == 0 && nLength > 0);
    Fuzz::Require(g_bThrew || std::strstr(format, "stopped by an exception") == nullptr);  // it would be hidden
    if (g_nFailingLine == 0 || --g_nFailingLine > 0) return 0;
    g_nFailingLine = g_bFailsForGood ? 1 : 0;
    g_bThrew = true;
    throw std::runtime_error("no log");
}

char* vconf_get_str(const char* /*key*/)
{
    const char* szCountry = Setting(g_Settings.strCountry);
    if (szCountry == nullptr) return nullptr;
    return strdup(std::strcmp(szCountry, "empty") == 0 ? "" : szCountry);
}

int vc_setting_initialize()
{
    return Setting(g_Settings.strLanguage) == nullptr ? -1 : 0;
}

int vc_setting_get_language(char** language)
{
    if (g_Settings.strLanguage == "throws") {
        g_bThrew = true;
        throw std::runtime_error("no settings");
    }
    if (g_Settings.strLanguage == "refused") {
        static char szOwn[] = "refused";  // the platform's own text, not to be freed
        *language = szOwn;
        return -1;
    }
    *language = strdup(g_Settings.strLanguage.c_str());
    return 0;
}

int vc_setting_deinitialize()
{
    return g_Settings.strLanguage == "stuck" ? -1 : 0;
}

int GetData(int /*item*/, void* buffer)
{
    const char* szFlag = Setting(g_Settings.strFlag);
    if (szFlag == nullptr) return 0;
    const auto nFlag = static_cast<std::int32_t>(std::strtol(szFlag, nullptr, 10));
    std::memset(buffer, 0x5A, 1008);  // the largest item, to the last byte
    std::memcpy(buffer, &nFlag, sizeof nFlag);
    return 1;
}
