// The calls of a log once more, through this library: does it decide and log what the set's did?
#pragma once

#include "log/LogCalls.h"

struct Comparison {
    enum class Result {
        SAME,
        MISSING,  // the same, but for lines that the log does not have: lost, or not written by the set
        DIFFERS,
        NOT_COMPARED
    };
    Result eResult = Result::NOT_COMPARED;
    std::string strWhy;        // why it was not compared, or what differs when it is no line
    std::string strSet;        // the set's line
    std::string strHere;       // this library's line; of missing ones the first
    std::size_t nMissing = 0;  // how many
};

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
    Comparison RunReply(const LogCall& call, Process& stProcess);
    void LeaveBehind(const LogCall& call, Process& stProcess, bool bRun, bool bAccepted);

    std::map<std::string, Process> m_mapProcesses;
    Process* m_pProcess = nullptr;  // whose state the service is in
    std::size_t m_nTime = 0;
    bool m_bDebug = false;  // the log has lines of debug priority
};
