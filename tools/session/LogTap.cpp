// The program's own platform log function and what it takes out of a line.
#include "session/LogTap.h"

#include <dlfcn.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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
LogFilter g_pWanted = nullptr;
bool g_bLogged = false;  // whether lines go on to the platform's log, as long as there is a sink

// The variable is the substitute's; without it the program keeps a set's own log free of its replies too.
bool IsLogged()
{
    const char* szLevel = std::getenv("PARLO_LOG");
    return szLevel != nullptr && std::strcmp(szLevel, "off") != 0;
}

// The message's part of a line's format.
std::string_view MessageFormat(const char* szFormat)
{
    constexpr std::string_view kFrame = "%s: %s(%d) > ";
    std::string_view szMessage = szFormat;
    if (szMessage.substr(0, kFrame.size()) == kFrame) szMessage.remove_prefix(kFrame.size());
    return szMessage;
}

void HandOver(int nPriority, std::string_view szText)
{
    static LogLine stLine;  // its texts keep their room
    stLine.nPriority = nPriority;
    Host::CutColour(szText);
    stLine.strLine = szText.substr(0, kLongestKept);
    LogForm stForm;
    if (!ParseLogForm(stLine.strLine, stForm)) stForm = {};
    stLine.strFunction = stForm.szFunction;
    stLine.strMessage = stForm.szMessage;
    g_Sink(stLine);
}

// Whether there is a sink that wants the line. A format is a text of the library and stands where it stands, so the
// answer is remembered by its address.
bool IsWanted(const char* szFormat)
{
    struct Answer {
        const char* szFormat = nullptr;
        LogFilter pWanted = nullptr;
        bool bWanted = false;
    };
    constexpr std::size_t kFormats = 2048;  // at 8 bytes each more than the library has, so few share an answer's place
    static Answer vAnswers[kFormats];
    if (!g_Sink || g_pWanted == nullptr) return static_cast<bool>(g_Sink);
    Answer& stAnswer = vAnswers[(reinterpret_cast<std::uintptr_t>(szFormat) >> 3U) % kFormats];
    if (stAnswer.szFormat != szFormat || stAnswer.pWanted != g_pWanted)
        stAnswer = {szFormat, g_pWanted, g_pWanted(MessageFormat(szFormat))};
    return stAnswer.bWanted;
}

}  // namespace

CLogTap::CLogTap(LogSink sink, LogFilter pWanted)
{
    g_Sink = std::move(sink);
    g_pWanted = pWanted;
    g_bLogged = IsLogged();
}

CLogTap::~CLogTap()
{
    g_Sink = nullptr;
}

bool SubstituteAnswers()
{
    Dl_info stFound{};
    return dladdr(dlsym(RTLD_DEFAULT, "GetData"), &stFound) != 0 &&
           std::strstr(stFound.dli_fname, "libparlo-platform-host") != nullptr;
}

int __dlog_print(int priority, const char* tag, const char* format, ...)
{
    const bool bWanted = IsWanted(format);
    const bool bLogged = g_Sink ? g_bLogged : IsLogged();
    if (CLogQuiet::IsQuiet() || (!bWanted && !bLogged)) return 0;

    using Writer = int (*)(int, const char*, const char*, ...);
    static const auto pPlatformLog = reinterpret_cast<Writer>(dlsym(RTLD_NEXT, "__dlog_print"));

    va_list args;
    va_start(args, format);
    char* pText = nullptr;
    const int nLength = vasprintf(&pText, format, args);
    va_end(args);
    if (nLength < 0) return -1;
    const std::unique_ptr<char, decltype(&std::free)> owner(pText, &std::free);

    if (bLogged && pPlatformLog != nullptr) pPlatformLog(priority, tag, "%s", pText);
    try {
        if (bWanted) HandOver(priority, {pText, static_cast<std::size_t>(nLength)});
    } catch (const std::exception&) {
        // No memory for the line: whoever listens misses it, the library is not disturbed.
    }
    return 0;
}
