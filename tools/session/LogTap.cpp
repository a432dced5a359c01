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

namespace
{

constexpr std::size_t kLongestKept = 2000;  // bytes; some lines hold a whole reply

LogSink g_Sink;
int g_nQuiet = 0;

// "file: function(line) > message"
LogLine Dissect(std::string_view szText)
{
    LogLine stLine;
    Host::CutColour(szText);
    stLine.strLine = szText.substr(0, kLongestKept);
    const std::string_view szLine = stLine.strLine;
    const std::size_t nFunction = szLine.find(": ");
    const std::size_t nParen = szLine.find('(', nFunction);
    const std::size_t nMessage = szLine.find(") > ", nParen);
    if (nMessage == std::string_view::npos) return stLine;
    stLine.strFunction = szLine.substr(nFunction + 2, nParen - nFunction - 2);
    stLine.strMessage = szLine.substr(nMessage + 4);
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

CLogQuiet::CLogQuiet()
{
    ++g_nQuiet;
}

CLogQuiet::~CLogQuiet()
{
    --g_nQuiet;
}

int __dlog_print(int priority, const char* tag, const char* format, ...)
{
    using Writer = int (*)(int, const char*, const char*, ...);
    static const auto pPlatformLog = reinterpret_cast<Writer>(dlsym(RTLD_NEXT, "__dlog_print"));

    if (g_nQuiet > 0) return 0;
    va_list args;
    va_start(args, format);
    char* pText = nullptr;
    const int nLength = vasprintf(&pText, format, args);
    va_end(args);
    if (nLength < 0) return -1;
    const std::unique_ptr<char, decltype(&std::free)> owner(pText, &std::free);

    if (pPlatformLog != nullptr) pPlatformLog(priority, tag, "%s", pText);
    try {
        if (g_Sink) g_Sink(Dissect({pText, static_cast<std::size_t>(nLength)}));
    } catch (const std::exception&) {
        // No memory for the line: whoever listens misses it, the library is not disturbed.
    }
    return 0;
}
