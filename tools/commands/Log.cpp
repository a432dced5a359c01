// "log": from a set's log to the replies, and to the reasons.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "explaining/RenderExplanation.h"
#include "log/CallFilter.h"
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

struct LogOptions {
    bool bExplain = false;
    bool bReplay = false;
    bool bDiffers = false;  // only the calls that differ
    std::string strFolder;  // --extract; empty: not wanted
    CallFilter filter;
};

// Reads logs and prints their calls while they end.
class CLogRun
{
public:
    CLogRun(const Options& stOptions, const LogOptions& stLog)
        : m_stOptions(stOptions),
          m_stLog(stLog),
          m_paint(stOptions.Paint()),
          m_list(stOptions.vFiles, m_paint),
          m_calls([this](LogCall& call) { Show(call); }, stLog.bExplain || stLog.bReplay),
          m_reader([this](const LogTextLine& stLine) { return m_calls.Take(stLine); })
    {
        if (!stLog.strFolder.empty()) m_extract.emplace(stLog.strFolder);
    }

    int Run();

private:
    void Read(const std::string& strFile);
    void Show(LogCall& call);
    void Close() const;
    CallReport Report(LogCall& call, bool bWanted);
    void ExplainTo(CallReport& stReport, LogCall& call) const;

    const Options& m_stOptions;
    const LogOptions& m_stLog;
    CPaint m_paint;
    CCallList m_list;
    CLogCalls m_calls;
    CLogReader m_reader;
    CLogReplay m_replay;
    std::optional<CLogExtract> m_extract;
    bool m_bFound = false;   // a call was shown
    bool m_bPassed = false;  // none of those to come is wanted
    std::size_t m_nCalls = 0;
};

int CLogRun::Run()
{
    for (const std::string& strFile : m_stOptions.vFiles) Read(strFile);
    m_calls.End();
    Close();
    return HasFailed() ? kExitFailure : kExitOk;
}

// Says what all came to, or why there is nothing.
void CLogRun::Close() const
{
    if (m_bFound && !m_stOptions.bJson && !m_stLog.bExplain && !m_bPassed) Print(m_list.Closing(m_calls.Strays()));
    if (m_bFound || HasFailed()) return;
    if (!m_stLog.filter.strCalls.empty()) return Fail("there is no call " + m_stLog.filter.strCalls);
    if (m_nCalls > 0) return Complain("none of the " + Count(m_nCalls, "call", "calls") + " is wanted");
    std::vector<std::string> vForms;
    for (const LogFormat& stFormat : LogFormats()) vForms.emplace_back(stFormat.szName);
    Fail("there is no call in " + Joined(m_stOptions.vFiles) + ", where the tag " + std::string(kTag) + " stands in " +
         Count(m_reader.Tagged(), "line", "lines") + "; the forms that are known are " + Joined(vForms));
}

void CLogRun::Read(const std::string& strFile)
{
    CLineFile file(strFile);
    CProgress progress(strFile, file.Size());
    m_reader.BeginFile(strFile);
    std::string strPart;
    do {
        strPart.clear();
        if (file.IsPausing()) {  // whoever writes the log waits
            m_calls.Pause();
            FlushOutput();
        }
        if (!m_bPassed) file.Some(strPart);
        const std::string strMark = file.Position() == strPart.size() ? strPart.substr(0, 2) : "";
        if (strMark == "\x1F\x8B") return Fail(strFile + " is compressed: zcat FILE | parlo log -");
        if (strMark == "\xFF\xFE" || strMark == "\xFE\xFF")
            return Fail(strFile + " is UTF-16: iconv -f UTF-16 FILE | parlo log -");
        m_reader.Feed(strPart);
        progress.Show(file.Position());
    } while (!strPart.empty());
    m_reader.EndFile();
    if (!file.Failure().empty()) Fail(strFile + " cannot be read: " + file.Failure());
}

void CLogRun::Show(LogCall& call)
{
    ++m_nCalls;
    bool bWanted = m_stLog.filter.Wants(call);
    if (!bWanted && !m_stLog.bReplay) return;
    const CallReport stReport = Report(call, bWanted);
    if (m_stLog.bDiffers) bWanted = bWanted && stReport.stReplayed->eResult == Comparison::Result::DIFFERS;
    if (!bWanted) return;
    if (!m_bFound && !m_stOptions.bJson && !m_stLog.bExplain) Print(m_list.Heading());
    m_bFound = true;
    m_bPassed = !m_stLog.bReplay && call.nNumber == m_stLog.filter.nLast;
    Print(m_stOptions.bJson ? JsonLine(CallJson(call, stReport)) : m_list.Call(call, stReport));
    if (!m_extract && !m_stLog.bReplay) StopWithoutReader();  // the files and the comparison are for all calls
}

CallReport CLogRun::Report(LogCall& call, bool bWanted)
{
    CallReport stReport;
    stReport.nStatus = m_replay.Status(call);
    if (m_extract && bWanted) stReport.strFile = m_extract->Add(call);
    if (m_stLog.bReplay) stReport.stReplayed = m_replay.Run(call);
    if (stReport.stReplayed && stReport.stReplayed->eResult == Comparison::Result::DIFFERS) NoteFailure();
    if (m_stLog.bExplain && bWanted && call.digest.Kind() == CallKind::REPLY) ExplainTo(stReport, call);
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

int RunLog(const Options& stOptions, LogOptions& stLog)
{
    if (!stLog.filter.ReadCalls()) {
        Complain(Quoted(stLog.filter.strCalls) + " is neither a call, 3, nor a range, 3-5; see parlo log --help");
        return kExitUsage;
    }
    stLog.bReplay = stLog.bReplay || stLog.bDiffers;
    return CLogRun(stOptions, stLog).Run();
}

}  // namespace

void AddLog(CCommandLine& line)
{
    const auto pLog = std::make_shared<LogOptions>();
    CCommand command = line.Add("log", "Tell from a set's log what was called and what came of it",
                                "  parlo log set.log\n  parlo log --call 3 --explain set.log\n"
                                "  parlo log --extract case set.log\n  parlo log --replay set.log\n"
                                "  tail -f set.log | parlo log -",
                                [pLog](const Options& stOptions) { return RunLog(stOptions, *pLog); });
    command.Files("a platform log as text; - for standard input");
    command.Text("--call", pLog->filter.strCalls, "Tell of this call alone, or of a range, 3-5");
    command.Text("--since", pLog->filter.strSince, "Tell of calls from this time on, written as the log does or 18:42");
    command.Text("--until", pLog->filter.strUntil, "Tell of calls up to this time");
    command.Text("--process", pLog->filter.strProcess, "Tell of the calls of this process");
    command.Text("--kind", pLog->filter.strKind, "Tell of calls of this kind", {"start", "reply", "status", "stop"});
    command.Flag("--refused", pLog->filter.bRefused, "Tell of the calls that were refused");
    command.Flag("--differs", pLog->bDiffers, "Tell of the calls that --replay, which this is too, finds different");
    command.Flag("--explain", pLog->bExplain, "Tell what became of each part of the replies");
    command.Text("--extract", pLog->strFolder, "Write each reply and each process's conversation to this folder");
    command.Flag("--replay", pLog->bReplay, "Run the calls through this library and show what differs");
    command.Json("Print one JSON object a call");
}
