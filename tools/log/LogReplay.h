// The calls of a log once more, through this library: does it decide and log what the set's did?
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "log/LineCompare.h"
#include "log/LogCalls.h"

// Keeps one service, and puts it into the state that the calls before have left in the process of each call. It
// uses the television's substitute, whose settings it changes to those of the log.
class CLogReplay
{
public:
    CLogReplay() = default;
    ~CLogReplay();
    CLogReplay(const CLogReplay&) = delete;
    CLogReplay& operator=(const CLogReplay&) = delete;

    // Runs `call`, which carries its lines, and compares. Call it in the order of the log.
    Comparison Run(const LogCall& call);

    // What this library answers to a status call on the set as the log shows it; nothing when it does not.
    std::optional<int> Status(const LogCall& call);

private:
    // What of the calls before still matters in a process: a reply that is refused leaves parts of itself behind.
    struct Process {
        bool bStarted = false;
        bool bUnknown = false;  // a reply that the log does not hold may have left something
        std::vector<std::string> vLeftBehind;
        std::size_t nUsed = 0;
    };

    Process& Enter(const LogCall& call);
    void SetService(Process& stProcess, bool bStarted);
    Comparison Skip(const LogCall& call, Process& stProcess, const std::string& strWhy);
    Comparison RunReply(const LogCall& call, Process& stProcess);
    void LeaveBehind(const LogCall& call, Process& stProcess, bool bAccepted);

    std::map<std::string, Process> m_mapProcesses;
    std::string m_strProcess;  // whose state the service is in
    std::size_t m_nTime = 0;
    bool m_bDebug = false;  // the log has lines of debug priority
};
