// The fixed order of the library's lines as a table, and what they say.
#include "log/CallDigest.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "session/LogForm.h"

namespace
{

constexpr int kAside = -1;

// A line that a call of the kind always writes when it comes so far, `nStep` being its place in the order; or one of
// a branch, kAside, before which the first `nNeeds` steps were written, and none behind step `nMost`.
struct Row {
    CallKind eKind;
    std::string_view szFunction;
    std::string_view szStart;
    int nStep;
    int nNeeds;
    int nMost;
    unsigned nEffect;
};

constexpr Row Step(CallKind eKind, std::string_view szFunction, std::string_view szStart, int nStep,
                   unsigned nEffect = NOTHING)
{
    return {eKind, szFunction, szStart, nStep, nStep, nStep - 1, nEffect};
}

constexpr Row Aside(CallKind eKind, std::string_view szFunction, std::string_view szStart, int nNeeds, unsigned nEffect,
                    int nMost = kAside)
{
    return {eKind, szFunction, szStart, kAside, nNeeds, std::max(nMost, nNeeds - 1), nEffect};
}

constexpr CallKind kStart = CallKind::START;
constexpr CallKind kReply = CallKind::REPLY;
constexpr CallKind kStatus = CallKind::STATUS;
constexpr CallKind kStop = CallKind::STOP;

constexpr Row kRows[] = {
    Step(kStart, "InitializeMap", "", 0, DEBUG),
    Step(kStart, "InitService", "m_strAppName:", 1),
    Step(kStart, "ca_initial_service", "initial succeed", 2, ENDS | ACCEPTS),
    Aside(kStart, "InitService", "init service again", 0, TWICE),
    Aside(kStart, "ca_initial_service", "InitService failed", 0, ENDS | REFUSES, 1),
    Aside(kStart, "ca_initial_service", "create CCAService failed", 0, ENDS | REFUSES, 1),
    Aside(kStart, "ca_initial_service", "stopped by an exception", 0, ENDS | REFUSES, 1),

    Step(kReply, "ca_get_speech_action", "get action from json package", 0),
    Step(kReply, "PrintRcvData", "=================print all receive data", 1),
    Step(kReply, "PrintRcvData", "###########strRawData", 2),
    Step(kReply, "ParseData", "t_eStatus:", CCallDigest::kPieces + 1),
    Step(kReply, "t_ParseSearchServer", "Start to parse", 5),
    Step(kReply, "t_ParseSearchServer", "TAG_RSP", 6, DEBUG),
    Step(kReply, "t_ParseSearchServer", "strCode:", CCallDigest::kCode),
    Step(kReply, "GetSpeechActionData", "strSysResponse:", 8),
    Step(kReply, "t_IsContentsSearchAction", "domain[0]:", 9),
    Step(kReply, "t_IsContentsSearchAction", "vDomain is empty", 9),
    Step(kReply, "GetSystemAction", "strAction = ", 10),
    Step(kReply, "GetSystemAction", "eControl = ", 11),
    Step(kReply, "GetSystemAction", "eControl:", 12),
    Step(kReply, "t_SetSpeechInfo", "it is not tv control", 13),
    Step(kReply, "GetSystemActionChannel", "strAction = ", 14),
    Step(kReply, "GetSystemActionChannel", "eControl = ", 15),
    Step(kReply, "GetSystemActionChannel", "eControl:", 16),
    Step(kReply, "GetSystemActionCandidate", "strAction = ", 17),
    Step(kReply, "GetSystemActionCandidate", "eControl = ", 18),
    Step(kReply, "GetSystemActionCandidate", "eControl:", 19),
    Step(kReply, "t_SetSpeechInfo", "eSysAction:", 20),
    Step(kReply, "t_SetSpeechInfo", "No one match", 21, ENDS | ACCEPTS),
    Aside(kReply, "ca_get_speech_action", "m_pCAService is NULL", 1, ENDS | REFUSES | NO_SERVICE),
    Aside(kReply, "ca_get_speech_action", "stopped by an exception", 1, ENDS | REFUSES, 21),
    Aside(kReply, "ParseDataFlow", "strPreAllResult is empty", 1, NOTHING),
    Aside(kReply, "ParseDataFlow", "parse speech data failed", 6, NOTHING, CCallDigest::kCode),
    Aside(kReply, "ca_get_speech_action", "ParseDataFlow failed", 1, ENDS | REFUSES, CCallDigest::kCode),
    Aside(kReply, "GetSpeechActionData", "vTVControl is empty", 9, NOTHING),
    Aside(kReply, "ca_get_speech_action", "GetSpeechActionData failed", 9, ENDS | REFUSES),
    Aside(kReply, "t_IsContentsSearchAction", "search_failed will", 10, ENDS | ACCEPTS | SEARCHES),
    Aside(kReply, "t_IsContentsSearchAction", "Show search result", 10, HANDS_OVER),
    Aside(kReply, "t_UpdateSearchResult", "strSearchKeywords:", 10, ENDS | ACCEPTS | HANDS_OVER),
    Aside(kReply, "t_Get2ndAction", "2ndeAction is", 17, NOTHING, 20),
    Aside(kReply, "t_GetActionIntent", "tv control error", 21, ENDS | ACCEPTS),
    Aside(kReply, "t_GetActionIntent", "eActionIntent is", 21, ENDS | ACCEPTS),

    Step(kStatus, "ca_get_conv_status", "get action from json package", 0),
    Step(kStatus, "GetConversationStatus", "Get conversation status", 1, DEBUG),
    Step(kStatus, "IsConversationFactorySupport", "GetData return:", 2),
    Step(kStatus, "IsCountrySupportConv", "country[", 3),
    Step(kStatus, "CompareCountryLanguage", "country[", 4, ENDS | ACCEPTS),
    Aside(kStatus, "ca_get_conv_status", "m_pCAService is NULL", 1, ENDS | REFUSES | NO_SERVICE),
    Aside(kStatus, "ca_get_conv_status", "stopped by an exception", 1, ENDS | REFUSES, 4),
    Aside(kStatus, "IsConversationFactorySupport", "GetData failed", 3, ENDS | ACCEPTS | UNSUPPORTED),
    Aside(kStatus, "IsConversationFactorySupport", "not support voice", 3, ENDS | ACCEPTS | UNSUPPORTED),
    Aside(kStatus, "IsCountrySupportConv", "This country [", 4, ENDS | ACCEPTS | UNSUPPORTED),

    Step(kStop, "ca_uninitial", "delete the thread", 0, ENDS | ACCEPTS),
    Aside(kStop, "ca_uninitial", "m_pCAService is NULL", 1, ENDS | ACCEPTS | NO_SERVICE),
};

// The functions whose other lines are a status call's; all others' are a reply's.
constexpr std::string_view kStatusFunctions[] = {"GetCountry", "GetVCSettingLanguage", "IsConversationFactorySupport",
                                                 "IsCountrySupportConv", "CompareCountryLanguage"};

const Row* FindRow(std::string_view szFunction, std::string_view szMessage)
{
    const auto Matches = [&](const Row& r) { return szFunction == r.szFunction && Begins(szMessage, r.szStart); };
    const auto row = std::find_if(std::begin(kRows), std::end(kRows), Matches);
    return row == std::end(kRows) ? nullptr : &*row;
}

const Row* FindRow(const LogLine& stLine)
{
    return FindRow(stLine.strFunction, stLine.strMessage);
}

// Whether the library writes the line, which is none of the above, while it reads what the reply holds.
bool IsParsing(const LogLine& stLine)
{
    return Begins(stLine.strLine, "CAParseJson: ") && stLine.strMessage != "json parse error";
}

// The number behind `szStart`; false when the line has another message.
bool Number(const LogLine& stLine, std::string_view szFunction, std::string_view szStart, int& nNumber)
{
    if (stLine.strFunction != szFunction || !Begins(stLine.strMessage, szStart)) return false;
    nNumber = static_cast<int>(std::strtol(stLine.strMessage.c_str() + szStart.size(), nullptr, 10));
    return true;
}

}  // namespace

const char* NameOf(CallKind eKind)
{
    constexpr const char* kNames[] = {"start", "reply", "status", "stop"};
    return kNames[static_cast<int>(eKind)];
}

bool IsStep(std::string_view szFunction, std::string_view szMessage)
{
    const Row* pRow = FindRow(szFunction, szMessage);
    return pRow != nullptr && pRow->nStep != kAside && pRow->eKind != kStop;
}

CallKind KindOf(const LogLine& stLine)
{
    if (const Row* pRow = FindRow(stLine)) return pRow->eKind;
    return IsOneOf(stLine.strFunction, kStatusFunctions) ? CallKind::STATUS : CallKind::REPLY;
}

void CCallDigest::Listen(const LogLine& stLine)
{
    m_refusal.Listen(stLine);
    TakeValues(stLine);
    const Row* pRow = FindRow(stLine);
    if (pRow == nullptr && IsParsing(stLine)) m_nStep = std::max(m_nStep, kCode);
    if (pRow == nullptr || pRow->eKind != m_eKind) return;
    if (pRow->nStep != kAside) {
        m_nStep = std::max(m_nStep, pRow->nStep);
        m_vSeen.insert(pRow->nStep);
    }
    m_nNeeded = std::max(m_nNeeded, pRow->nNeeds);
    m_nEffects |= pRow->nEffect;
    if ((pRow->nEffect & ACCEPTS) != 0) m_eResult = Result::DONE;
    if ((pRow->nEffect & REFUSES) != 0) m_eResult = Result::REFUSED;
}

void CCallDigest::ListenToPiece()
{
    m_nStep = std::max(m_nStep, kPieces);
    m_nNeeded = std::max(m_nNeeded, kPieces);
}

bool CCallDigest::IsOfNext(const LogLine& stLine) const
{
    if (KindOf(stLine) != m_eKind) return true;
    const Row* pRow = FindRow(stLine);
    if (pRow == nullptr) return m_nStep > kCode && IsParsing(stLine);
    const bool bEndedStop = m_eKind == CallKind::STOP && !NoService() && (pRow->nEffect & NO_SERVICE) != 0;
    if (HasEnded() || m_nStep > pRow->nMost) return !bEndedStop;
    return pRow->nStep != kAside && pRow->nStep < m_nNeeded;
}

void CCallDigest::TakeValues(const LogLine& stLine)
{
    constexpr std::string_view kLookUps[] = {"GetSystemAction", "GetSystemActionChannel", "GetSystemActionCandidate"};
    constexpr std::string_view kWords[] = {"szAction[0]:", "strAction = "};  // the second when there is no domain
    const bool bLookUp = IsOneOf(stLine.strFunction, kLookUps);
    if (stLine.strFunction == "t_IsContentsSearchAction" || bLookUp)
        for (const std::string_view szWord : kWords)
            if (Begins(stLine.strMessage, szWord)) TakeAction(stLine.strMessage.substr(szWord.size()));

    // A lookup that knows no such command leaves it to the next one; it is the last of them that decides.
    int nCode = 0;
    if (bLookUp && Number(stLine, stLine.strFunction, "eControl:", nCode) && nCode > 0) {
        m_nCode = nCode;
        m_bChannel = stLine.strFunction == kLookUps[1];
        if (stLine.strFunction == kLookUps[0]) m_nEffects |= ENDS;
    } else if (Number(stLine, "t_SetSpeechInfo", "No one match, error ouccured:", nCode)) {
        m_nCode = nCode;
    } else if (stLine.strFunction == "t_Get2ndAction" && m_bChannel) {
        m_nEffects |= ENDS;  // no more follows
    }
    if (m_eKind == CallKind::REPLY && HasEnded() && m_nCode > 0) m_eResult = Result::DONE;
}

// Takes what a line calls the action. One with a line break must be said twice: a log's reader may have broken it, and
// then elsewhere in each line.
void CCallDigest::TakeAction(const std::string& strAction)
{
    const auto Joined = [](std::string strText) {
        strText.erase(std::remove(strText.begin(), strText.end(), '\n'), strText.end());
        return strText;
    };
    const std::string strBefore = std::exchange(m_strNamed, strAction);
    if (strAction.find('\n') == std::string::npos || strAction == strBefore)
        m_strAction = strAction;
    else if (Joined(strAction) == Joined(strBefore))
        m_strAction = Joined(strAction);
}

const char* CCallDigest::Outcome() const
{
    constexpr const char* kNames[] = {"unknown", "done", "refused"};
    return m_eKind == CallKind::STOP && NoService() ? "no_service" : kNames[static_cast<int>(m_eResult)];
}

std::vector<std::string> CCallDigest::Missing() const
{
    std::vector<std::string> vMissing = MissingBelow(m_nNeeded);
    if (!HasEnded()) vMissing.emplace_back("the end");
    return vMissing;
}

std::vector<std::string> CCallDigest::MissingWords() const
{
    std::vector<std::string> vWords;
    const std::size_t nAll = MissingBelow(m_nNeeded).size();
    const std::size_t nBegin = m_vSeen.empty() ? nAll : MissingBelow(std::min(*m_vSeen.begin(), m_nNeeded)).size();
    if (nBegin > 0) vWords.emplace_back("its beginning is lost");
    if (nAll > nBegin) vWords.push_back(std::to_string(nAll - nBegin) + " of its lines in between lost");
    if (!HasEnded()) vWords.emplace_back("its end is lost");
    return vWords;
}

bool CCallDigest::LacksBefore(const LogLine& stLine) const
{
    const Row* pRow = FindRow(stLine);
    return !MissingBelow(pRow == nullptr ? m_nNeeded : pRow->nNeeds).empty();
}

std::vector<std::string> CCallDigest::MissingBelow(int nStep) const
{
    std::vector<std::string> vMissing;
    int nLast = kAside;
    for (const Row& row : kRows) {
        if (row.eKind != m_eKind || row.nStep == kAside || row.nStep >= nStep || row.nStep == nLast) continue;
        if (m_vSeen.count(row.nStep) != 0 || (row.nEffect & DEBUG) != 0) continue;
        nLast = row.nStep;
        vMissing.push_back(std::string(row.szFunction) + ": " + std::string(row.szStart));
    }
    return vMissing;
}

std::string CCallDigest::Reason(std::string_view szReply) const
{
    if (NoService()) return "there is no service";
    return StartedTwice() ? "the service was there already" : m_refusal.Reason(szReply);
}

std::string CCallDigest::Words(std::string_view szReply) const
{
    if (NoService() && m_eKind == CallKind::STOP) return "there was no service";
    if (m_eResult == Result::REFUSED) return "refused: " + Reason(szReply);
    if (m_eResult == Result::UNKNOWN) return "unknown";
    return m_eKind == CallKind::REPLY ? RecordWords() : "done";
}

std::string CCallDigest::RecordWords() const
{
    if (IsHandOver()) return "search hand-over";
    if (IsFailedSearch()) return "failed search";
    const std::string strCode = m_nCode < 0 ? "code unknown" : "code " + std::to_string(m_nCode);
    return (m_strAction.empty() ? "action unknown" : m_strAction) + ", " + strCode;
}
