// The library's log lines, as they are written.
//
// The program defines the platform's log function itself, so that every line passes here first; when a log is wanted
// (PARLO_LOG, --log) it then goes on to the platform's own, which writes it. A line that nobody wants costs a look at
// its format.
#pragma once

#include <functional>
#include <string>
#include <string_view>

// One line, "CAService: InitService(41) > message", without its colour sequence and cut to a readable length.
struct LogLine {
    std::string strLine;      // the whole line
    std::string strFunction;  // "InitService"; empty when the line has another form
    std::string strMessage;   // "message"
    int nPriority = 0;        // 6 error, 3 debug; 0 when it is not known
};

using LogSink = std::function<void(const LogLine&)>;

// Whether lines whose message has the given format are wanted.
using LogFilter = bool (*)(std::string_view szFormat);

// Hands every line that `pWanted` wants, null: every line, to `sink` while it lives; there is one at a time. Not
// thread-safe. The sink must not log.
class CLogTap
{
public:
    explicit CLogTap(LogSink sink, LogFilter pWanted = nullptr);
    ~CLogTap();
    CLogTap(const CLogTap&) = delete;
    CLogTap& operator=(const CLogTap&) = delete;
};

// While it lives no line goes anywhere: for questions to the library that are no reply's.
class CLogQuiet
{
public:
    CLogQuiet() { ++s_nQuiet; }
    ~CLogQuiet() { --s_nQuiet; }
    CLogQuiet(const CLogQuiet&) = delete;
    CLogQuiet& operator=(const CLogQuiet&) = delete;
    static bool IsQuiet() { return s_nQuiet > 0; }

private:
    static inline int s_nQuiet = 0;
};

// Whether the substitute of the television's functions answers, and no set's own libraries.
bool SubstituteAnswers();
