// Runs the calls of a log and compares line by line.
#include "log/LogReplay.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "log/LineCompare.h"
#include "parlo-api.h"

namespace
{

constexpr std::size_t kMostProcesses = 64;
constexpr std::size_t kMostLeftBehind = 1 << 20;  // bytes of replies
constexpr std::size_t kLongestUtterance = 1 << 20;
constexpr int kUnsupported = 4;
constexpr const char* kPlaceholder = "(utterance)";

// Hands a reply to the library; what it logs goes nowhere, what it says is the result.
bool Ask(const std::string& strUtterance, std::string strReply)
{
    CADataRepository::_ConvActionInfo info;
    return ca_get_speech_action(strUtterance, strReply, info);
}

// The length of the utterance in the line that says that it or the reply is empty.
std::size_t UtteranceLength(const std::string& strLine)
{
    const std::size_t nParen = strLine.rfind('(');
    return nParen == std::string::npos ? 0 : std::strtoul(strLine.c_str() + nParen + 1, nullptr, 10);
}

// Runs `call` on this library and compares; `ask` runs its function. Notes in `bDebug` whether the set logs at debug
// priority, as far as it is known.
template <typename Function>
Comparison Compare(const LogCall& call, bool& bDebug, const Function& ask)
{
    CCallDigest digest(call.digest.Kind());
    CLineCompare compare(call.vLines, call.bLinesDropped, bDebug);
    std::size_t nPieces = 0;
    {
        const CLogTap tap([&](const LogLine& stLine) {
            if (nPieces > 0 && stLine.strFunction == "PrintRcvData") {
                --nPieces;
                return;
            }
            if (stLine.strMessage.rfind("###########strRawData", 0) == 0) nPieces = call.reply.Pieces();
            digest.Listen(stLine);
            compare.Here(stLine);
        });
        ask();
    }
    bDebug = compare.LogsDebug();
    Comparison stResult = compare.Result();
    const bool bDecided = call.digest.GetResult() != CCallDigest::Result::UNKNOWN;
    const bool bSame = call.digest.GetResult() == digest.GetResult() && call.digest.Code() == digest.Code();
    if (stResult.eResult != Comparison::Result::DIFFERS && bDecided && !bSame && call.digest.Missing().empty()) {
        stResult.eResult = Comparison::Result::DIFFERS;
        stResult.strWhy = "the set came to: " + call.digest.Words() + "; this version comes to: " + digest.Words();
    }
    return stResult;
}

}  // namespace

CLogReplay::~CLogReplay()
{
    const CLogQuiet quiet;
    const auto process = m_mapProcesses.find(m_strProcess);
    if (process != m_mapProcesses.end() && process->second.bStarted) ca_uninitial();
}

Comparison CLogReplay::Run(const LogCall& call)
{
    Process& stProcess = Enter(call);
    call.stSet.Apply();
    switch (call.digest.Kind()) {
        case CallKind::START:
            SetService(stProcess, call.digest.StartedTwice());
            stProcess.bStarted = true;
            return Compare(call, m_bDebug, [&call] { ca_initial_service(call.strAppName); });
        case CallKind::STOP:
            SetService(stProcess, !call.digest.NoService());
            stProcess = Process();
            return Compare(call, m_bDebug, [] { ca_uninitial(); });
        case CallKind::STATUS:
            SetService(stProcess, !call.digest.NoService());
            return Compare(call, m_bDebug, [] { ca_get_conv_status(); });
        case CallKind::REPLY:
            SetService(stProcess, !call.digest.NoService());
            return RunReply(call, stProcess);
    }
    return {};
}

std::optional<int> CLogReplay::Status(const LogCall& call)
{
    if (call.digest.Kind() != CallKind::STATUS || !call.digest.HasEnded()) return {};
    if (call.digest.GetResult() == CCallDigest::Result::REFUSED) return -1;
    if (call.digest.Unsupported()) return kUnsupported;
    if (!call.stSet.strCountry || !call.stSet.strLanguage) return {};
    // The set came to compare country and language: that it recognises voice and has conversation there is sure.
    SetService(Enter(call), true);
    SetValues stSet = call.stSet;
    stSet.strVoiceRecog = "1";
    stSet.Apply();
    const CLogQuiet quiet;
    const int nStatus = ca_get_conv_status();
    return nStatus == kUnsupported ? std::optional<int>() : nStatus;
}

// Puts the service into the state of the call's process.
CLogReplay::Process& CLogReplay::Enter(const LogCall& call)
{
    if (m_mapProcesses.count(call.stPrefix.strProcess) == 0 && m_mapProcesses.size() == kMostProcesses) {
        const auto Older = [](const auto& a, const auto& b) { return a.second.nUsed < b.second.nUsed; };
        const auto oldest = std::min_element(m_mapProcesses.begin(), m_mapProcesses.end(), Older);
        if (oldest->first != m_strProcess) m_mapProcesses.erase(oldest);
    }
    if (m_strProcess != call.stPrefix.strProcess) {
        const auto before = m_mapProcesses.find(m_strProcess);
        const CLogQuiet quiet;
        if (before != m_mapProcesses.end() && before->second.bStarted) ca_uninitial();
    }
    Process& stProcess = m_mapProcesses[call.stPrefix.strProcess];
    stProcess.nUsed = ++m_nTime;
    if (std::exchange(m_strProcess, call.stPrefix.strProcess) == call.stPrefix.strProcess || !stProcess.bStarted)
        return stProcess;
    const CLogQuiet quiet;
    ca_initial_service("parlo");
    for (const std::string& strReply : stProcess.vLeftBehind) Ask(kPlaceholder, strReply);
    return stProcess;
}

// Starts or stops the service where the log does not show how the set came to have one or not.
void CLogReplay::SetService(Process& stProcess, bool bStarted)
{
    if (stProcess.bStarted == bStarted) return;
    const CLogQuiet quiet;
    const std::size_t nUsed = stProcess.nUsed;
    if (bStarted)
        ca_initial_service("parlo");
    else
        ca_uninitial();
    stProcess = Process();
    stProcess.bStarted = bStarted;
    stProcess.nUsed = nUsed;
}

Comparison CLogReplay::Skip(const LogCall& call, Process& stProcess, const std::string& strWhy)
{
    // A reply that the set accepted has cleared what those before it had left. One that it could not read has
    // left nothing. What any other left is not known.
    const bool bAccepted = call.digest.GetResult() == CCallDigest::Result::DONE;
    if (bAccepted) {
        SetService(stProcess, false);
        SetService(stProcess, true);
    } else if (call.digest.GetResult() != CCallDigest::Result::REFUSED || call.digest.HasRecord()) {
        stProcess.bUnknown = true;
    }
    Comparison stResult;
    stResult.strWhy = strWhy;
    return stResult;
}

Comparison CLogReplay::RunReply(const LogCall& call, Process& stProcess)
{
    if (call.digest.NoService()) return Compare(call, m_bDebug, [] { Ask(kPlaceholder, "{}"); });
    if (!call.strNoReply.empty()) {
        const std::size_t nLength = std::min(UtteranceLength(call.strNoReply), kLongestUtterance);
        return Compare(call, m_bDebug, [nLength] { Ask(std::string(nLength, '?'), ""); });
    }
    const CLogReply::State eState = call.reply.GetState();
    if (eState == CLogReply::State::CUT) return Skip(call, stProcess, "the log's limit cut the reply");
    if (eState != CLogReply::State::WHOLE) return Skip(call, stProcess, "the log does not have the whole reply");
    if (stProcess.bUnknown) return Skip(call, stProcess, "it may rest on a reply before it that the log does not have");

    bool bAccepted = false;
    const std::string strUtterance = call.strUtterance.empty() ? kPlaceholder : call.strUtterance;
    Comparison stResult = Compare(call, m_bDebug, [&] { bAccepted = Ask(strUtterance, call.reply.Text()); });
    LeaveBehind(call, stProcess, bAccepted);
    return stResult;
}

// Notes what the reply leaves to the next ones; where the set decided otherwise than this library, what it leaves
// is the set's.
void CLogReplay::LeaveBehind(const LogCall& call, Process& stProcess, bool bAccepted)
{
    const CCallDigest::Result eSet = call.digest.GetResult();
    if (bAccepted) {
        stProcess.vLeftBehind.clear();
        stProcess.bUnknown = eSet == CCallDigest::Result::REFUSED;
    } else if (eSet == CCallDigest::Result::DONE) {
        SetService(stProcess, false);
        SetService(stProcess, true);
    } else {
        std::size_t nBytes = call.reply.Text().size();
        for (const std::string& strReply : stProcess.vLeftBehind) nBytes += strReply.size();
        if (nBytes > kMostLeftBehind) stProcess.vLeftBehind.erase(stProcess.vLeftBehind.begin());
        stProcess.vLeftBehind.push_back(call.reply.Text());
    }
}
