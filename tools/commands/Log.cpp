// "log": from a set's log to the replies, and to the reasons.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "explaining/RenderExplanation.h"
#include "log/LogCalls.h"
#include "log/LogExtract.h"
#include "log/LogReplay.h"
#include "log/LogReport.h"
#include "reading/LineFile.h"
#include "records/RecordJson.h"
#include "text/Output.h"
#include "text/Progress.h"

namespace
{

constexpr std::size_t kPart = 1 << 18;  // bytes that are read at once

struct LogOptions {
    bool bExplain = false;
    bool bReplay = false;
    std::string strFolder;  // --extract; empty: not wanted
    std::size_t nCall = 0;  // the one call to tell of; 0: all
    std::vector<std::string> vFiles;
};

// Reads logs and prints their calls while they end.
class CLogRun
{
public:
    CLogRun(const Options& stOptions, const LogOptions& stLog)
        : m_stOptions(stOptions),
          m_stLog(stLog),
          m_paint(stOptions.Paint()),
          m_list(stLog.vFiles, m_paint),
          m_calls([this](LogCall& call) { Show(call); }, stLog.bExplain || stLog.bReplay),
          m_reader([this](const LogRecord& stRecord) { m_calls.Take(stRecord); },
                   [this](const std::string& strLine) { m_calls.Dropped(strLine); })
    {
        if (!stLog.strFolder.empty()) m_extract.emplace(stLog.strFolder);
    }

    int Run();

private:
    void Read(const std::string& strFile);
    bool IsDone() const { return m_bFound && m_stLog.nCall > 0; }
    void Show(LogCall& call);
    CallReport Report(LogCall& call);
    void ExplainTo(CallReport& stReport, LogCall& call) const;

    const Options& m_stOptions;
    const LogOptions& m_stLog;
    CPaint m_paint;
    CCallList m_list;
    CLogCalls m_calls;
    CLogReader m_reader;
    CLogReplay m_replay;
    std::optional<CLogExtract> m_extract;
    bool m_bFound = false;  // a call was shown
};

int CLogRun::Run()
{
    for (const std::string& strFile : m_stLog.vFiles) Read(strFile);
    m_reader.End();
    m_calls.End();
    if (!m_bFound && !HasFailed())
        Fail(m_stLog.nCall > 0 ? "there is no call " + std::to_string(m_stLog.nCall) : "there is no call in the log");
    return HasFailed() ? kExitFailure : kExitOk;
}

void CLogRun::Read(const std::string& strFile)
{
    CLineFile file(strFile);
    CProgress progress(strFile, file.Size());
    m_reader.BeginFile(strFile);
    std::string strPart;
    do {
        m_reader.Feed(strPart);
        strPart.clear();
        progress.Show(file.Position());
        if (!IsDone()) file.Rest(kPart, strPart);
    } while (!strPart.empty());
    m_reader.EndFile();
    if (!file.Failure().empty()) Fail(strFile + " cannot be read: " + file.Failure());
}

void CLogRun::Show(LogCall& call)
{
    const bool bWanted = m_stLog.nCall == 0 || call.nNumber == m_stLog.nCall;
    if (!bWanted && !m_stLog.bReplay) return;
    const CallReport stReport = Report(call);
    if (!bWanted) return;
    if (!m_bFound && !m_stOptions.bJson && !m_stLog.bExplain) Print(m_list.Heading());
    m_bFound = true;
    Print(m_stOptions.bJson ? JsonLine(CallJson(call, stReport)) : m_list.Call(call, stReport));
    if (!m_extract && !m_stLog.bReplay) StopWithoutReader();  // the files and the comparison are for all calls
}

CallReport CLogRun::Report(LogCall& call)
{
    CallReport stReport;
    stReport.nStatus = m_replay.Status(call);
    if (m_extract) stReport.strFile = m_extract->Add(call);
    if (m_stLog.bReplay) stReport.stReplayed = m_replay.Run(call);
    if (stReport.stReplayed && stReport.stReplayed->eResult == Comparison::Result::DIFFERS) NoteFailure();
    if (m_stLog.bExplain && call.digest.Kind() == CallKind::REPLY) ExplainTo(stReport, call);
    return stReport;
}

void CLogRun::ExplainTo(CallReport& stReport, LogCall& call) const
{
    Case stCase;
    stCase.stReply.strSource = PlaceOf(call);
    stCase.stReply.strFile = *call.pFile;
    stCase.stReply.strUtterance = call.strUtterance;
    stCase.stReply.bNoUtterance = call.strUtterance.empty();
    if (call.reply.GetState() == CLogReply::State::WHOLE) stCase.stReply.strText = call.reply.Text();
    stCase.vLog = std::move(call.vLines);
    stCase.bAccepted = call.digest.GetResult() == CCallDigest::Result::DONE;
    if (call.digest.GetResult() == CCallDigest::Result::REFUSED) {
        stCase.strRefusal = call.digest.Reason(call.reply.Text());
        stCase.strRefusalLine = call.digest.ReasonLine();
    }
    if (m_stOptions.bJson)
        static_cast<void>(ParseJson(ExplainJson(stCase), true, stReport.explanation));
    else
        stReport.strExplanation = Explain(stCase, m_paint);
}

// "--explain 3 FILE" and "--explain FILE" mean what they say: a number in front of other files is the call's.
int RunLog(const Options& stOptions, LogOptions& stLog)
{
    stLog.vFiles = stOptions.vFiles;
    const std::string& strFirst = stLog.vFiles.front();
    const bool bNumber = strFirst.size() < 10 && strFirst.find_first_not_of("0123456789") == std::string::npos;
    if (stLog.bExplain && bNumber && stLog.vFiles.size() > 1) {
        stLog.nCall = std::stoul(strFirst);
        stLog.vFiles.erase(stLog.vFiles.begin());
        if (stLog.nCall == 0) {
            Complain("calls are numbered from 1; see parlo log --help");
            return kExitUsage;
        }
    }
    return CLogRun(stOptions, stLog).Run();
}

}  // namespace

void AddLog(CCommandLine& line)
{
    const auto pLog = std::make_shared<LogOptions>();
    CCommand command = line.Add("log", "Tell from a set's log what was called and what came of it",
                                "  parlo log set.log\n  parlo log --explain 3 set.log\n"
                                "  parlo log --extract case set.log\n  parlo log --replay set.log",
                                [pLog](const Options& stOptions) { return RunLog(stOptions, *pLog); });
    command.Files("a platform log as text; - for standard input. A number behind --explain is the call to tell of");
    command.Flag("--explain", pLog->bExplain, "Tell what became of each part of the replies, or of call N alone");
    command.Text("--extract", pLog->strFolder, "Write each reply and a conversation of all to this folder");
    command.Flag("--replay", pLog->bReplay, "Run the calls through this library and show what differs");
    command.Json("Print one JSON object a call");
}
