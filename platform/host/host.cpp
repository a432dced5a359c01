// The television's functions for a machine that is none: settings come from the environment, the log goes to
// standard error. The environment is read at each call; platform/host/CMakeLists.txt builds this as a library of
// its own, so that a set's libraries can take its place.
//
//   PARLO_COUNTRY      the set's country; "none": the store has no such key      default US
//   PARLO_LANGUAGE     the voice language; "none": the service does not start    default en_US
//   PARLO_VOICE_RECOG  the factory flag, 0 or 1; "none": it cannot be read       default 1
//   PARLO_LOG          off, error or debug: what is written to standard error    default off
//
// A record of the log is one line of "LETTER TAG: TEXT", fit for a terminal and reversible: a line break is \n, a tab
// \t, a backslash \\, and each byte of any other control character, of a character that turns the direction of text,
// and of what is no UTF-8 is \xNN. One record says which functions are the substitute's: those that a program meant to
// define itself, and that the library does not find there, are among them.
#include <dlfcn.h>
#include <unistd.h>

#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)
#include "ca_platform.h"
#pragma GCC visibility pop

#include "Printable.h"

namespace
{

constexpr int kErrorPriority = 6;
constexpr int kVoiceRecognitionItem = 830;
constexpr std::string_view kCountryKey = "db/comss/countrycode";
constexpr const char* kColourReset = "\033[0m";

// The variable's value, `szDefault` when it is not set, null when it is the word "none".
const char* Setting(const char* szName, const char* szDefault)
{
    const char* szValue = std::getenv(szName);
    if (szValue == nullptr) return szDefault;
    return std::strcmp(szValue, "none") == 0 ? nullptr : szValue;
}

char* HeapCopy(const char* szText)
{
    return szText == nullptr ? nullptr : strdup(szText);
}

bool IsLogged(int nPriority)
{
    const char* szLevel = Setting("PARLO_LOG", "off");
    if (szLevel == nullptr) return false;
    return (std::strcmp(szLevel, "error") == 0 && nPriority >= kErrorPriority) ||
           (std::strcmp(szLevel, "debug") == 0 && nPriority >= 3);
}

char PriorityLetter(int nPriority)
{
    constexpr std::string_view kLetters = "??VDIWEF";
    const auto nIndex = static_cast<std::size_t>(nPriority);
    return nIndex < kLetters.size() ? kLetters[nIndex] : '?';
}

bool IsColoured()
{
    const char* szNoColour = std::getenv("NO_COLOR");
    return (szNoColour == nullptr || *szNoColour == '\0') && isatty(STDERR_FILENO) != 0;
}

// One record is one line and one write.
void WriteRecord(int nPriority, const char* szTag, std::string_view szText)
{
    std::string_view szColour = Host::CutColour(szText);
    if (!IsColoured()) szColour = {};
    std::string strLine(szColour);
    strLine.append({PriorityLetter(nPriority), ' '}).append(Host::Printable(szTag == nullptr ? "" : szTag));
    strLine.append(": ")
        .append(Host::Printable(szText, "\\"))
        .append(szColour.empty() ? "" : kColourReset)
        .append("\n");
    static_cast<void>(std::fwrite(strLine.data(), 1, strLine.size(), stderr));  // nobody to tell
}

// Whether a program that asks for the function gets this library's.
bool Answers(const char* szFunction)
{
    Dl_info stHere{};
    Dl_info stFound{};
    return dladdr(kColourReset, &stHere) != 0 && dladdr(dlsym(RTLD_DEFAULT, szFunction), &stFound) != 0 &&
           stFound.dli_fbase == stHere.dli_fbase;
}

// Says once which functions a program gets from here.
void SayWhoAnswers()
{
    static std::atomic<bool> s_bSaid{false};
    if (!IsLogged(kErrorPriority) || s_bSaid.exchange(true)) return;
    try {
        std::string strLine = "no television: the substitute answers";
        for (const char* szName : {"__dlog_print", "vconf_get_str", "vc_setting_initialize", "vc_setting_get_language",
                                   "vc_setting_deinitialize", "GetData"})
            if (Answers(szName)) strLine.append(" ").append(szName);
        WriteRecord(kErrorPriority, "parlo-platform-host", strLine);
    } catch (const std::exception&) {
        return;  // no memory for it, as for any line
    }
}

}  // namespace

int __dlog_print(int priority, const char* tag, const char* format, ...)
{
    if (!IsLogged(priority)) return 0;
    static const bool bAnswers = Answers(__func__);  // else a program's own function hands its lines on
    if (bAnswers) SayWhoAnswers();
    va_list args;
    va_start(args, format);
    char* pText = nullptr;
    const int nLength = vasprintf(&pText, format, args);
    va_end(args);
    if (nLength < 0) return 0;
    const std::unique_ptr<char, decltype(&std::free)> owner(pText, &std::free);
    try {
        WriteRecord(priority, tag, {pText, static_cast<std::size_t>(nLength)});
    } catch (const std::exception&) {
        // No memory for the line: it is lost, the caller is not disturbed.
    }
    return 0;
}

char* vconf_get_str(const char* key)
{
    SayWhoAnswers();
    return key != nullptr && key == kCountryKey ? HeapCopy(Setting("PARLO_COUNTRY", "US")) : nullptr;
}

int vc_setting_initialize()
{
    SayWhoAnswers();
    return Setting("PARLO_LANGUAGE", "en_US") == nullptr ? -1 : 0;
}

int vc_setting_get_language(char** language)
{
    SayWhoAnswers();
    if (language == nullptr) return -1;
    *language = HeapCopy(Setting("PARLO_LANGUAGE", "en_US"));
    return *language == nullptr ? -1 : 0;
}

int vc_setting_deinitialize()
{
    return 0;
}

int GetData(int item, void* buffer)
{
    SayWhoAnswers();
    const char* szFlag = Setting("PARLO_VOICE_RECOG", "1");
    if (item != kVoiceRecognitionItem || buffer == nullptr || szFlag == nullptr) return 0;
    const auto nFlag = static_cast<std::int32_t>(std::strtol(szFlag, nullptr, 10));
    std::memcpy(buffer, &nFlag, sizeof nFlag);
    return 1;
}
