// "log": from a set's log to the replies, and to the reasons.
#include <glib.h>

#include <cstdlib>

#include "commands/Command.h"
#include "explaining/RenderExplanation.h"
#include "log/LogReport.h"
#include "reading/LineFile.h"
#include "records/RecordJson.h"
#include "text/Output.h"
#include "text/Progress.h"

namespace
{

constexpr std::string_view kMonths = "JanFebMarAprMayJunJulAugSepOctNovDec";

// "Nov  5 10:00" as "11-05 10:00", "2026-11-05T10:00" with a blank: so texts of one log compare as their times do.
std::string Comparable(std::string strTime)
{
    const std::size_t nMonth = strTime.size() < 6 ? kMonths.npos : kMonths.find(strTime.substr(0, 3));
    if (nMonth != kMonths.npos && nMonth % 3 == 0) {
        strTime.replace(0, 4, std::to_string(101 + nMonth / 3).substr(1) + '-');
        if (strTime[3] == ' ') strTime[3] = '0';
    }
    std::replace(strTime.begin(), strTime.end(), 'T', ' ');
    return strTime;
}

// Less than 0 when `strTime` is before `strBound`, 0 when it begins so. A bound without a day, or without a year, is
// compared with what the log's time has of that form; each time begins with an empty one.
int Compare(const std::string& strTime, const std::string& strBound)
{
    const auto Form = [](std::string strText) {
        std::replace_if(strText.begin(), strText.end(), IsDigit, '0');
        return strText;
    };
    const std::string strLeft = Comparable(strTime);
    const std::string strRight = Comparable(strBound);
    const std::size_t nStart = Form(strLeft).find(Form(strRight));
    return strLeft.compare(nStart == strLeft.npos ? 0 : nStart, strRight.size(), strRight);
}

// A log's bytes may be no UTF-8, as JSON has to be: U+FFFD stands for each that is none.
std::string Utf8(const std::string& strText)
{
    g_autofree char* pText = g_utf8_make_valid(strText.data(), static_cast<gssize>(strText.size()));
    return pText;
}

struct LogOptions {
    bool bExplain = false;
    bool bReplay = false;
    bool bDiffers = false;  // only the calls that differ
    std::string strFolder;  // --extract; empty: not wanted

    // Which calls are wanted.
    std::string strCalls;  // "3" or "3-5"; empty: all, as with the others
    std::string strSince;  // a time as the log writes them, or its beginning, or a time of day
    std::string strUntil;
    std::string strProcess;
    std::string strKind;
    bool bRefused = false;

    std::size_t nFirst = 1;
    std::size_t nLast = SIZE_MAX;

    // Reads `strCalls`; false when it is no range.
    bool ReadCalls()
    {
        if (strCalls.empty()) return true;
        if (strCalls.find_first_not_of("0123456789-") != std::string::npos) return false;
        char* pEnd = nullptr;
        nFirst = std::strtoul(strCalls.c_str(), &pEnd, 10);
        nLast = *pEnd == '-' && pEnd[1] != '\0' ? std::strtoul(pEnd + 1, &pEnd, 10) : nFirst;
        return *pEnd == '\0' && nFirst > 0 && nFirst <= nLast;
    }

    bool Wants(const LogCall& call) const
    {
        if (call.nNumber < nFirst || call.nNumber > nLast) return false;
        if (!strProcess.empty() && call.stPrefix.strProcess != strProcess) return false;
        if (!strKind.empty() && strKind != NameOf(call.digest.Kind())) return false;
        if (bRefused && call.digest.GetResult() != CCallDigest::Result::REFUSED) return false;
        if (call.stPrefix.strTime.empty()) return strSince.empty() && strUntil.empty();
        return Compare(call.stPrefix.strTime, strSince) >= 0 && Compare(call.stPrefix.strTime, strUntil) <= 0;
    }
};

// Reads logs and prints their calls while they end.
class CLogRun
{
public:
    CLogRun(const Options& stOptions, const LogOptions& stLog)
        : m_stOptions(stOptions),
          m_stLog(stLog),
          m_list(stOptions.vFiles, stOptions.Paint()),
          m_calls([this](LogCall& call) { Show(call); }, stLog.bExplain || stLog.bReplay),
          m_reader([this](const LogTextLine& stLine) { return m_calls.Take(stLine); })
    {
        if (!stLog.strFolder.empty()) BeginExtraction(stLog.strFolder);
    }

    int Run();

private:
    void Read(const std::string& strFile);
    void Show(LogCall& call);
    void Close() const;
    void ExplainTo(CallReport& stReport, LogCall& call) const;

    const Options& m_stOptions;
    const LogOptions& m_stLog;
    CCallList m_list;
    CLogCalls m_calls;
    CLogReader m_reader;
    CLogReplay m_replay;
    bool m_bFound = false;   // a call was shown
    bool m_bPassed = false;  // none of those to come is wanted
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
    if (!m_stLog.strCalls.empty()) return Fail("there is no call " + m_stLog.strCalls);
    if (m_calls.Calls() > 0) return Complain("none of the " + Count(m_calls.Calls(), "call", "calls") + " is wanted");
    std::string strForms;
    for (const LogFormat& stFormat : kLogFormats) strForms.append(strForms.empty() ? "" : ", ").append(stFormat.szName);
    Fail("there is no call in " + Joined(m_stOptions.vFiles) + ", where the tag " + std::string(kTag) + " stands in " +
         Count(m_reader.Tagged(), "line", "lines") + "; the forms that are known are " + strForms);
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
    const bool bWanted = m_stLog.Wants(call);
    if (!bWanted && !m_stLog.bReplay) return;
    CallReport stReport;
    stReport.nStatus = m_replay.Status(call);
    if (bWanted && !m_stLog.strFolder.empty()) stReport.strFile = Extract(call, m_stLog.strFolder);
    if (m_stLog.bReplay) stReport.stReplayed = m_replay.Run(call);
    const bool bDiffers = stReport.stReplayed && stReport.stReplayed->eResult == Comparison::Result::DIFFERS;
    if (bDiffers) NoteFailure();
    if (!bWanted || (m_stLog.bDiffers && !bDiffers)) return;
    if (m_stLog.bExplain && call.digest.Kind() == CallKind::REPLY) ExplainTo(stReport, call);
    if (!m_bFound && !m_stOptions.bJson && !m_stLog.bExplain) Print(m_list.Heading());
    m_bFound = true;
    m_bPassed = !m_stLog.bReplay && call.nNumber == m_stLog.nLast;
    Print(m_stOptions.bJson ? Utf8(JsonLine(CallJson(call, stReport))) : m_list.Call(call, stReport));
    // The files and the comparison are for all calls.
    if (m_stLog.strFolder.empty() && !m_stLog.bReplay) StopWithoutReader();
}

void CLogRun::ExplainTo(CallReport& stReport, LogCall& call) const
{
    Case stCase;
    const bool bWhole = call.reply.GetState() == CLogReply::State::WHOLE;
    stCase.stReply = {call.Place(), call.strUtterance, bWhole ? call.reply.Text() : "", *call.pFile};
    stCase.stReply.bNoUtterance = call.strUtterance.empty();
    stCase.vLog = std::move(call.vLines);
    stCase.bAccepted = call.digest.GetResult() == CCallDigest::Result::DONE;
    if (call.digest.GetResult() == CCallDigest::Result::REFUSED) {
        stCase.strRefusal = call.digest.Reason(call.reply.Text());
        stCase.strRefusalLine = call.digest.ReasonLine();
    }
    if (m_stOptions.bJson)
        static_cast<void>(ParseJson(ExplainJson(stCase), true, stReport.explanation));
    else
        stReport.strExplanation = Explain(stCase, m_stOptions.Paint());
}

int RunLog(const Options& stOptions, LogOptions& stLog)
{
    if (!stLog.ReadCalls()) {
        Complain(Quoted(stLog.strCalls) + " is neither a call, 3, nor a range, 3-5; see parlo log --help");
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
    command.Text("--call", pLog->strCalls, "Tell of this call alone, or of a range, 3-5");
    command.Text("--since", pLog->strSince, "Tell of calls from this time on, written as the log does or 18:42");
    command.Text("--until", pLog->strUntil, "Tell of calls up to this time");
    command.Text("--process", pLog->strProcess, "Tell of the calls of this process");
    command.Text("--kind", pLog->strKind, "Tell of calls of this kind", {"start", "reply", "status", "stop"});
    command.Flag("--refused", pLog->bRefused, "Tell of the calls that were refused");
    command.Flag("--differs", pLog->bDiffers, "Tell of the calls that --replay, which this is too, finds different");
    command.Flag("--explain", pLog->bExplain, "Tell what became of each part of the replies");
    command.Text("--extract", pLog->strFolder, "Write each reply and each process's conversation to this folder");
    command.Flag("--replay", pLog->bReplay, "Run the calls through this library and show what differs");
    command.Json("Print one JSON object a call");
}
