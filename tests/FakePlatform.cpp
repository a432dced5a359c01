#include "FakePlatform.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#pragma GCC visibility push(default)  // in place of the library's own platform
#include <glib.h>

#include "ca_platform.h"
#pragma GCC visibility pop

FakePlatform g_Platform;

static std::mutex g_LogMutex;

static char* HeapCopy(const std::optional<std::string>& strText)
{
    return strText ? strdup(strText->c_str()) : nullptr;
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
    *language = HeapCopy(g_Platform.strLanguage);
    g_Platform.Called();
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

#ifdef PARLO_THREAD_SANITIZER
// The thread sanitizer does not see into GLib's mutex. This one, which it understands, takes its place.
gboolean g_mutex_trylock(GMutex* mutex)
{
    return __atomic_exchange_n(&mutex->i[0], 1U, __ATOMIC_ACQUIRE) == 0U ? TRUE : FALSE;
}
void g_mutex_unlock(GMutex* mutex)
{
    __atomic_store_n(&mutex->i[0], 0U, __ATOMIC_RELEASE);
}
#endif
