#include "FakePlatform.h"

#include <atomic>
#include <clocale>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <thread>

#pragma GCC visibility push(default)  // in place of the library's own platform
#include <glib.h>

#include "ca_platform.h"
#pragma GCC visibility pop

FakePlatform g_Platform;
FakeMutex g_Mutex;

static std::mutex g_LogMutex;

namespace
{

struct OddMarks : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

}  // namespace

std::locale OddLocale()
{
    return std::locale(std::locale::classic(), new OddMarks);
}

// With PARLO_TEST_LOCALE set to a C locale the program runs under that one and the odd one of C++.
static const bool g_bLocaleSet = [] {
    const char* const szLocale = std::getenv("PARLO_TEST_LOCALE");
    if (szLocale == nullptr) return false;
    if (std::setlocale(LC_NUMERIC, szLocale) == nullptr) std::abort();
    std::locale::global(OddLocale());
    return true;
}();

static char* HeapCopy(const std::optional<std::string>& strText)
{
    return strText ? strdup(strText->c_str()) : nullptr;
}

ReadLine Read(const LogLine& line)
{
    constexpr std::size_t kColour = 5;
    const std::string& str = line.strText;
    const std::string strEnd = str.size() < kColour ? "" : str.substr(str.size() - kColour);
    const std::size_t nFile = str.find(": "), nOpen = str.find('('), nClose = str.find(") > ");
    const bool bError = line.nPriority == 6 && strEnd == "\033[31m";
    const bool bDebug = line.nPriority == 3 && strEnd == "\033[34m";
    if (line.strTag != "ParloAPI" || !(bError || bDebug) || nFile > nOpen || nClose == std::string::npos ||
        nClose != str.find_first_not_of("0123456789", nOpen + 1))
        return {'?', line.strTag, std::to_string(line.nPriority), str};
    return {bError ? 'E' : 'D', str.substr(0, nFile), str.substr(nFile + 2, nOpen - nFile - 2),
            str.substr(nClose + 4, str.size() - nClose - 4 - kColour)};
}

int FakePlatform::Count(const std::string& strMessage) const
{
    int nCount = 0;
    for (const LogLine& line : vLog) nCount += line.strText.find(") > " + strMessage + "\033[3") != std::string::npos;
    return nCount;
}

int __dlog_print(int priority, const char* tag, const char* format, ...)
{
    g_Platform.Called();
    if (!g_Platform.bKeepLog) return 0;
    char* szText = nullptr;
    va_list args;
    va_start(args, format);
    if (vasprintf(&szText, format, args) < 0) std::abort();
    va_end(args);
    const LogLine line{priority, tag, szText};
    std::free(szText);
    {
        const std::lock_guard<std::mutex> lock(g_LogMutex);
        g_Platform.vLog.push_back(line);
    }
    if (g_Platform.onLog) g_Platform.onLog(line);
    return 0;
}

char* vconf_get_str(const char* key)
{
    g_Platform.Called();
    return std::strcmp(key, "db/comss/countrycode") == 0 ? HeapCopy(g_Platform.strCountry) : nullptr;
}

int vc_setting_initialize()
{
    g_Platform.Called();
    g_Platform.nSettingOpen += g_Platform.nInitResult == 0;
    return g_Platform.nInitResult;
}

// Allocates the text whatever it reports.
int vc_setting_get_language(char** language)
{
    static char szOwn[] = "not for the caller to release";
    g_Platform.Called();
    *language = g_Platform.nLanguageResult == 0 ? HeapCopy(g_Platform.strLanguage) : szOwn;
    return g_Platform.nLanguageResult;
}

int vc_setting_deinitialize()
{
    --g_Platform.nSettingOpen;
    g_Platform.Called();
    return g_Platform.nDeinitResult;
}

int GetData(int item, void* buffer)
{
    g_Platform.Called();
    if (item == 830) std::memcpy(buffer, &g_Platform.nFactoryValue, sizeof g_Platform.nFactoryValue);
    return item == 830 ? g_Platform.nFactoryResult : 0;
}

// In place of GLib's own, which the thread sanitizer does not see into.
void g_mutex_init(GMutex* mutex)
{
    ++g_Mutex.nMade;
    mutex->i[0] = 0;
}
void g_mutex_clear(GMutex* /*mutex*/)
{
    --g_Mutex.nMade;
}
gboolean g_mutex_trylock(GMutex* mutex)
{
    const bool bRefused = g_Mutex.nRefusals > 0 && g_Mutex.nRefusals-- > 0;
    if (bRefused || __atomic_exchange_n(&mutex->i[0], 1U, __ATOMIC_ACQUIRE) != 0U) return FALSE;
    if (g_Mutex.bRecord) g_Mutex.strCalls += 'l';
    return TRUE;
}
void g_mutex_unlock(GMutex* mutex)
{
    if (g_Mutex.bRecord) g_Mutex.strCalls += 'u';
    __atomic_store_n(&mutex->i[0], 0U, __ATOMIC_RELEASE);
}
void g_usleep(gulong microseconds)
{
    static std::atomic<int> nWaits{0};
    if (++nWaits > 10000000) std::abort();  // nobody holds a lock for so long: it is never released
    if (g_Mutex.bRecord) g_Mutex.strCalls += microseconds == 5000 ? 'w' : 'W';
    std::this_thread::yield();
}
