// The program's own platform log function and what it takes out of a line.
#include "session/LogTap.h"

#include <dlfcn.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string_view>
#include <utility>

#pragma GCC visibility push(default)
#include "ca_platform.h"
#pragma GCC visibility pop

#include "Printable.h"
#include "session/LogForm.h"

namespace
{

constexpr std::size_t kLongestKept = 2000;  // bytes; some lines hold a whole reply

LogSink g_Sink;

LogLine Dissect(int nPriority, std::string_view szText)
{
    LogLine stLine;
    stLine.nPriority = nPriority;
    Host::CutColour(szText);
    stLine.strLine = szText.substr(0, kLongestKept);
    LogForm stForm;
    if (!ParseLogForm(stLine.strLine, stForm)) return stLine;
    stLine.strFunction = stForm.szFunction;
    stLine.strMessage = stForm.szMessage;
    return stLine;
}

}  // namespace

CLogTap::CLogTap(LogSink sink)
{
    g_Sink = std::move(sink);
}

CLogTap::~CLogTap()
{
    g_Sink = nullptr;
}

int __dlog_print(int priority, const char* tag, const char* format, ...)
{
    using Writer = int (*)(int, const char*, const char*, ...);
    static const auto pPlatformLog = reinterpret_cast<Writer>(dlsym(RTLD_NEXT, "__dlog_print"));

    va_list args;
    va_start(args, format);
    char* pText = nullptr;
    const int nLength = vasprintf(&pText, format, args);
    va_end(args);
    if (nLength < 0) return -1;
    const std::unique_ptr<char, decltype(&std::free)> owner(pText, &std::free);

    if (pPlatformLog != nullptr) pPlatformLog(priority, tag, "%s", pText);
    try {
        if (g_Sink) g_Sink(Dissect(priority, {pText, static_cast<std::size_t>(nLength)}));
    } catch (const std::exception&) {
        // No memory for the line: whoever listens misses it, the library is not disturbed.
    }
    return 0;
}
