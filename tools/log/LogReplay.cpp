// Runs the calls of a log and compares line by line.
#include "log/LogReplay.h"

#include <cstdlib>

#include "parlo-api.h"

namespace
{

constexpr std::size_t kMostProcesses = 64;
constexpr std::size_t kMostLeftBehind = 1 << 20;  // bytes of replies
constexpr std::size_t kLongestUtterance = 1 << 20;
constexpr int kUnsupported = 4;
constexpr int kErrorPriority = 6;
constexpr std::size_t kCutLine = 500;                    // bytes; a set's log may cut lines that are longer
constexpr std::size_t kKeptLine = 1900;                  // bytes; more than that may be cut here
constexpr std::string_view kAnswer = "GetData return:";  // what the television answers follows
constexpr const char* kPlaceholder = "(utterance)";

// Readers take blanks and colours off the end of a line.
std::string_view Trimmed(std::string_view szText)
{
    szText = szText.substr(0, szText.find_last_not_of("\r\n") + 1);
    CutShownColour(szText);
    return szText.substr(0, szText.find_last_not_of(" \t\r\n") + 1);
}

// Whether a message that has several lines can be `szHere`, whatever blanks a log's reader has put between them and
// whichever of them it has lost.
bool IsWithin(std::string_view szSet, std::string_view szHere)
{
    if (szSet.find('\n') == szSet.npos && szHere.find('\n') == szHere.npos) return false;
    std::size_t nFound = 0;
    for (const char c : szSet) {
        if (std::string_view(" \t\r\n").find(c) != std::string_view::npos) continue;
        nFound = szHere.find(c, nFound) + 1;
        if (nFound == 0) return szHere.size() >= kKeptLine;
    }
    return true;
}

bool IsSameLine(const LogLine& stSet, const LogLine& stHere)
{
    const std::size_t nSet = stSet.strLine.find('(');
    if (stSet.strLine.compare(0, nSet, stHere.strLine, 0, stHere.strLine.find('(')) != 0) return false;
    if (Begins(stSet.strMessage, kAnswer) && Begins(stHere.strMessage, kAnswer)) return true;
    const std::string_view szSet = Trimmed(stSet.strMessage);
    const std::string_view szHere = Trimmed(stHere.strMessage);
    if (szSet.size() >= kCutLine && szSet.size() < szHere.size()) return Begins(szHere, szSet);
    if (!Begins(szSet, szHere)) return IsWithin(szSet, szHere);
    // Behind the message there may be lines that only seem to belong to it.
    const std::string_view szBehind = szSet.substr(szHere.size());
    return szBehind.empty() || szHere.size() >= kKeptLine || szBehind.front() == '\n' || ColourLength(szBehind) > 0;
}

// Compares the set's lines, which have no answers, with this library's. The numbers of the source lines are not
// compared, nor is what the television's own functions answered. With `bCut` there were more lines than `vSet` has.
// `bDebug`: the set is known to log at debug priority, as one of its lines may show.
Comparison CompareLines(const std::vector<LogLine>& vSet, bool bCut, const std::vector<LogLine>& vHere, bool& bDebug)
{
    const auto IsDebug = [&vHere](std::size_t n) { return vHere[n].nPriority < kErrorPriority; };
    std::vector<std::size_t> vMissing;
    std::size_t nNext = 0;    // the set's line whose like is awaited
    std::size_t nBehind = 0;  // where the lines behind the last one that the log has begin
    for (std::size_t n = 0; n < vHere.size(); ++n) {
        if (nNext == vSet.size() || !IsSameLine(vSet[nNext], vHere[n])) {
            vMissing.push_back(n);
            continue;
        }
        ++nNext;
        nBehind = n + 1;
        bDebug = bDebug || IsDebug(n);
    }
    if (nNext < vSet.size())
        return {Comparison::Result::DIFFERS, "", vSet[nNext].strLine,
                nBehind < vHere.size() ? vHere[nBehind].strLine : "", 0};
    const auto IsNoLoss = [&](std::size_t n) { return (bCut && n >= nBehind) || (!bDebug && IsDebug(n)); };
    vMissing.erase(std::remove_if(vMissing.begin(), vMissing.end(), IsNoLoss), vMissing.end());
    if (vMissing.empty()) return {Comparison::Result::SAME, "", "", "", 0};
    return {Comparison::Result::MISSING, "", "", vHere[vMissing.front()].strLine, vMissing.size()};
}

// Hands a reply to the library; what it logs goes nowhere, what it says is the result.
bool Ask(const std::string& strUtterance, std::string strReply)
{
    CADataRepository::_ConvActionInfo info;
    return ca_get_speech_action(strUtterance, strReply, info);
}

// Runs `call` on this library and compares; `ask` runs its function. Notes in `bDebug` whether the set logs at debug
// priority, as far as it is known.
template <typename Function>
Comparison Compare(const LogCall& call, bool& bDebug, const Function& ask)
{
    CCallDigest digest(call.digest.Kind());
    std::vector<LogLine> vHere;
    std::size_t nPieces = 0;
    {
        const CLogTap tap([&](const LogLine& stLine) {
            if (nPieces > 0 && stLine.strFunction == "PrintRcvData") {
                --nPieces;
                return;
            }
            if (stLine.strMessage.rfind("###########strRawData", 0) == 0) nPieces = call.reply.Pieces();
            digest.Listen(stLine);
            if (!IsAnswer(stLine)) vHere.push_back(stLine);
        });
        ask();
    }
    Comparison stResult = CompareLines(call.vLines, call.bLinesDropped, vHere, bDebug);
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
    if (m_pProcess != nullptr && m_pProcess->bStarted) ca_uninitial();
}

Comparison CLogReplay::Run(const LogCall& call)
{
    Process& stProcess = Enter(call);
    call.stSet.Apply();
    const CallKind eKind = call.digest.Kind();
    SetService(stProcess, eKind == CallKind::START ? call.digest.Has(TWICE) : !call.digest.Has(NO_SERVICE));
    if (eKind == CallKind::REPLY) return RunReply(call, stProcess);
    if (eKind == CallKind::STATUS) return Compare(call, m_bDebug, [] { ca_get_conv_status(); });
    if (eKind == CallKind::START) {
        stProcess.bStarted = true;
        return Compare(call, m_bDebug, [&call] { ca_initial_service(call.strAppName); });
    }
    stProcess = {false, false, {}, stProcess.nUsed};
    return Compare(call, m_bDebug, [] { ca_uninitial(); });
}

std::optional<int> CLogReplay::Status(const LogCall& call)
{
    if (call.digest.Kind() != CallKind::STATUS || !call.digest.Has(ENDS)) return {};
    if (call.digest.GetResult() == CCallDigest::Result::REFUSED) return -1;
    if (call.digest.Has(UNSUPPORTED)) return kUnsupported;
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
    const auto Older = [](const auto& a, const auto& b) { return a.second.nUsed < b.second.nUsed; };
    if (m_mapProcesses.count(call.stPrefix.strProcess) == 0 && m_mapProcesses.size() == kMostProcesses)
        m_mapProcesses.erase(std::min_element(m_mapProcesses.begin(), m_mapProcesses.end(), Older));
    Process& stProcess = m_mapProcesses[call.stPrefix.strProcess];
    stProcess.nUsed = ++m_nTime;
    const Process* pBefore = std::exchange(m_pProcess, &stProcess);
    if (pBefore == &stProcess) return stProcess;
    const CLogQuiet quiet;
    if (pBefore != nullptr && pBefore->bStarted) ca_uninitial();
    if (!stProcess.bStarted) return stProcess;
    ca_initial_service("parlo");
    for (const std::string& strReply : stProcess.vLeftBehind) Ask(kPlaceholder, strReply);
    return stProcess;
}

// Starts or stops the service where the log does not show how the set came to have one or not.
void CLogReplay::SetService(Process& stProcess, bool bStarted)
{
    if (stProcess.bStarted == bStarted) return;
    const CLogQuiet quiet;
    if (bStarted)
        ca_initial_service("parlo");
    else
        ca_uninitial();
    stProcess = {bStarted, false, {}, stProcess.nUsed};
}

Comparison CLogReplay::RunReply(const LogCall& call, Process& stProcess)
{
    if (call.digest.Has(NO_SERVICE)) return Compare(call, m_bDebug, [] { Ask(kPlaceholder, "{}"); });
    if (!call.strNoReply.empty()) {
        // The line ends in the utterance's length, in brackets.
        const char* szLength = call.strNoReply.c_str() + (call.strNoReply.rfind('(') + 1);
        const std::size_t nLength = std::min(std::strtoul(szLength, nullptr, 10), kLongestUtterance);
        return Compare(call, m_bDebug, [nLength] { Ask(std::string(nLength, '?'), ""); });
    }
    const CLogReply::State eState = call.reply.GetState();
    Comparison stResult;
    bool bAccepted = false;
    if (eState == CLogReply::State::CUT)
        stResult.strWhy = "the log's limit cut the reply";
    else if (eState != CLogReply::State::WHOLE)
        stResult.strWhy = "the log does not have the whole reply";
    else if (stProcess.bUnknown)
        stResult.strWhy = "it may rest on a reply before it that the log does not have";
    else
        stResult = Compare(call, m_bDebug, [&] {
            bAccepted = Ask(call.strUtterance.empty() ? kPlaceholder : call.strUtterance, call.reply.Text());
        });
    LeaveBehind(call, stProcess, stResult.eResult != Comparison::Result::NOT_COMPARED, bAccepted);
    return stResult;
}

// Notes what the reply leaves to the next ones: one that is accepted clears what those before it had left. Where the
// set decided otherwise than this library, what it leaves is the set's.
void CLogReplay::LeaveBehind(const LogCall& call, Process& stProcess, bool bRun, bool bAccepted)
{
    const CCallDigest::Result eSet = call.digest.GetResult();
    if (bAccepted) {
        stProcess.vLeftBehind.clear();
        stProcess.bUnknown = eSet == CCallDigest::Result::REFUSED;
    } else if (eSet == CCallDigest::Result::DONE) {
        SetService(stProcess, false);
        SetService(stProcess, true);
    } else if (bRun) {
        std::size_t nBytes = call.reply.Text().size();
        for (const std::string& strReply : stProcess.vLeftBehind) nBytes += strReply.size();
        if (nBytes > kMostLeftBehind) stProcess.vLeftBehind.erase(stProcess.vLeftBehind.begin());
        stProcess.vLeftBehind.push_back(call.reply.Text());
    } else if (eSet != CCallDigest::Result::REFUSED || call.digest.HasRecord()) {  // else it could not be read
        stProcess.bUnknown = true;
    }
}
