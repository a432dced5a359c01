// The fixed order of the library's lines as a table, and what they say.
#include "log/CallDigest.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <utility>

#include "session/LogForm.h"
#include "text/Text.h"

namespace
{

// A line of a call of the kind, before which the first `nStep` steps of the fixed order were written, and none behind
// step `nMost`. It is the next step itself, which a call always writes when it comes so far, or one of a branch.
struct Row {
    CallKind eKind;
    std::string_view szFunction;
    std::string_view szStart;
    int nStep;
    unsigned nEffect = NOTHING;
    int nMost = nStep - 1;

    bool IsStep() const { return (nEffect & BRANCH) == 0; }
};

constexpr Row kRows[] = {
    {CallKind::START, "InitializeMap", "", 0, DEBUG},
    {CallKind::START, "InitService", "m_strAppName:", 1},
    {CallKind::START, "ca_initial_service", "initial succeed", 2, ENDS | ACCEPTS},
    {CallKind::START, "InitService", "init service again", 0, BRANCH | TWICE},
    {CallKind::START, "ca_initial_service", "InitService failed", 0, BRANCH | ENDS | REFUSES, 1},
    {CallKind::START, "ca_initial_service", "create CCAService failed", 0, BRANCH | ENDS | REFUSES, 1},
    {CallKind::START, "ca_initial_service", "stopped by an exception", 0, BRANCH | ENDS | REFUSES, 1},

    {CallKind::REPLY, "ca_get_speech_action", "get action from json package", 0},
    {CallKind::REPLY, "PrintRcvData", "=================print all receive data", 1},
    {CallKind::REPLY, "PrintRcvData", "###########strRawData", 2},
    {CallKind::REPLY, "ParseData", "t_eStatus:", CCallDigest::kPieces + 1},
    {CallKind::REPLY, "t_ParseSearchServer", "Start to parse", 5},
    {CallKind::REPLY, "t_ParseSearchServer", "TAG_RSP", 6, DEBUG},
    {CallKind::REPLY, "t_ParseSearchServer", "strCode:", CCallDigest::kCode},
    {CallKind::REPLY, "GetSpeechActionData", "strSysResponse:", 8},
    {CallKind::REPLY, "t_IsContentsSearchAction", "domain[0]:", 9},
    {CallKind::REPLY, "t_IsContentsSearchAction", "vDomain is empty", 9},
    {CallKind::REPLY, "GetSystemAction", "strAction = ", 10},
    {CallKind::REPLY, "GetSystemAction", "eControl = ", 11},
    {CallKind::REPLY, "GetSystemAction", "eControl:", 12},
    {CallKind::REPLY, "t_SetSpeechInfo", "it is not tv control", 13},
    {CallKind::REPLY, "GetSystemActionChannel", "strAction = ", 14},
    {CallKind::REPLY, "GetSystemActionChannel", "eControl = ", 15},
    {CallKind::REPLY, "GetSystemActionChannel", "eControl:", 16},
    {CallKind::REPLY, "GetSystemActionCandidate", "strAction = ", 17},
    {CallKind::REPLY, "GetSystemActionCandidate", "eControl = ", 18},
    {CallKind::REPLY, "GetSystemActionCandidate", "eControl:", 19},
    {CallKind::REPLY, "t_SetSpeechInfo", "eSysAction:", 20},
    {CallKind::REPLY, "t_SetSpeechInfo", "No one match", 21, ENDS | ACCEPTS},
    {CallKind::REPLY, "ca_get_speech_action", "m_pCAService is NULL", 1, BRANCH | ENDS | REFUSES | NO_SERVICE},
    {CallKind::REPLY, "ca_get_speech_action", "stopped by an exception", 1, BRANCH | ENDS | REFUSES, 21},
    {CallKind::REPLY, "ParseDataFlow", "strPreAllResult is empty", 1, BRANCH},
    {CallKind::REPLY, "ParseDataFlow", "parse speech data failed", 6, BRANCH, CCallDigest::kCode},
    {CallKind::REPLY, "ca_get_speech_action", "ParseDataFlow failed", 1, BRANCH | ENDS | REFUSES, CCallDigest::kCode},
    {CallKind::REPLY, "GetSpeechActionData", "vTVControl is empty", 9, BRANCH},
    {CallKind::REPLY, "ca_get_speech_action", "GetSpeechActionData failed", 9, BRANCH | ENDS | REFUSES},
    {CallKind::REPLY, "t_IsContentsSearchAction", "search_failed will", 10, BRANCH | ENDS | ACCEPTS | SEARCHES},
    {CallKind::REPLY, "t_IsContentsSearchAction", "Show search result", 10, BRANCH | HANDS_OVER},
    {CallKind::REPLY, "t_UpdateSearchResult", "strSearchKeywords:", 10, BRANCH | ENDS | ACCEPTS | HANDS_OVER},
    {CallKind::REPLY, "t_Get2ndAction", "2ndeAction is", 17, BRANCH, 20},
    {CallKind::REPLY, "t_GetActionIntent", "tv control error", 21, BRANCH | ENDS | ACCEPTS},
    {CallKind::REPLY, "t_GetActionIntent", "eActionIntent is", 21, BRANCH | ENDS | ACCEPTS},

    {CallKind::STATUS, "ca_get_conv_status", "get action from json package", 0},
    {CallKind::STATUS, "GetConversationStatus", "Get conversation status", 1, DEBUG},
    {CallKind::STATUS, "IsConversationFactorySupport", "GetData return:", 2},
    {CallKind::STATUS, "IsCountrySupportConv", "country[", 3},
    {CallKind::STATUS, "CompareCountryLanguage", "country[", 4, ENDS | ACCEPTS},
    {CallKind::STATUS, "ca_get_conv_status", "m_pCAService is NULL", 1, BRANCH | ENDS | REFUSES | NO_SERVICE},
    {CallKind::STATUS, "ca_get_conv_status", "stopped by an exception", 1, BRANCH | ENDS | REFUSES, 4},
    {CallKind::STATUS, "IsConversationFactorySupport", "GetData failed", 3, BRANCH | ENDS | ACCEPTS | UNSUPPORTED},
    {CallKind::STATUS, "IsConversationFactorySupport", "not support voice", 3, BRANCH | ENDS | ACCEPTS | UNSUPPORTED},
    {CallKind::STATUS, "IsCountrySupportConv", "This country [", 4, BRANCH | ENDS | ACCEPTS | UNSUPPORTED},

    {CallKind::STOP, "ca_uninitial", "delete the thread", 0, ENDS | ACCEPTS},
    {CallKind::STOP, "ca_uninitial", "m_pCAService is NULL", 1, BRANCH | ENDS | ACCEPTS | NO_SERVICE},
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

// Whether the library writes the line, which is none of the above, while it reads what the reply holds.
bool IsParsing(const LogLine& stLine)
{
    return Begins(stLine.strLine, "CAParseJson: ") && stLine.strMessage != "json parse error";
}

// The number behind `szStart`; nothing when the message is another one.
std::optional<int> Number(const std::string& strMessage, std::string_view szStart)
{
    if (!Begins(strMessage, szStart)) return {};
    return static_cast<int>(std::strtol(strMessage.c_str() + szStart.size(), nullptr, 10));
}

constexpr const char* kNone = "none";

// A line that ends in a value, or stands for one.
struct ValueRow {
    std::optional<std::string> SetValues::*pValue;
    std::string_view szFunction;
    std::string_view szBefore;
    std::string_view szBehind;  // the value stands between the two
    const char* szMeans;        // null: what stands there
};

constexpr ValueRow kValueRows[] = {
    {&SetValues::strCountry, "GetCountry", "Countrycode is ", "", nullptr},
    {&SetValues::strCountry, "GetCountry", "vconf get CountryCode error", "", kNone},
    {&SetValues::strCountry, "GetCountry", "vconf get CountryCode is empty", "", ""},
    {&SetValues::strLanguage, "CompareCountryLanguage", "], voice language[", "]", nullptr},
    {&SetValues::strLanguage, "GetVCSettingLanguage", "vc setting initialize failed", "", kNone},
    {&SetValues::strLanguage, "GetVCSettingLanguage", "vc_setting_get_language failed", "", kNone},
    {&SetValues::strVoiceRecog, "IsConversationFactorySupport", "ID_MRT_VOICE_RECOG:", "", nullptr},
    {&SetValues::strVoiceRecog, "IsConversationFactorySupport", "GetData failed", "", kNone},
    // Logged at the priority that every set logs; the lines above say more where they are there.
    {&SetValues::strCountry, "IsCountrySupportConv", "country[", "]", nullptr},
    {&SetValues::strCountry, "CompareCountryLanguage", "country[", "], voice", nullptr},
};

// Each value with its option and its variable.
constexpr std::tuple<std::optional<std::string> SetValues::*, const char*, const char*> kOptions[] = {
    {&SetValues::strCountry, "--country", "PARLO_COUNTRY"},
    {&SetValues::strLanguage, "--language", "PARLO_LANGUAGE"},
    {&SetValues::strVoiceRecog, "--voice-recog", "PARLO_VOICE_RECOG"},
};

}  // namespace

const char* NameOf(CallKind eKind)
{
    constexpr const char* kNames[] = {"start", "reply", "status", "stop"};
    return kNames[static_cast<int>(eKind)];
}

bool IsStep(std::string_view szLine)
{
    LogForm stForm;
    const Row* pRow = ParseLogForm(szLine, stForm) ? FindRow(stForm.szFunction, stForm.szMessage) : nullptr;
    return pRow != nullptr && pRow->eKind != CallKind::STOP;
}

CallKind KindOf(const LogLine& stLine)
{
    if (const Row* pRow = FindRow(stLine.strFunction, stLine.strMessage)) return pRow->eKind;
    return IsOneOf(stLine.strFunction, kStatusFunctions) ? CallKind::STATUS : CallKind::REPLY;
}

void CCallDigest::Listen(const LogLine& stLine)
{
    m_refusal.Listen(stLine);
    TakeValues(stLine);
    const Row* pRow = FindRow(stLine.strFunction, stLine.strMessage);
    if (pRow == nullptr && IsParsing(stLine)) m_nStep = std::max(m_nStep, kCode);
    if (pRow == nullptr || pRow->eKind != m_eKind) return;
    if (pRow->IsStep()) {
        m_nStep = std::max(m_nStep, pRow->nStep);
        m_vSeen.insert(pRow->nStep);
    }
    m_nNeeded = std::max(m_nNeeded, pRow->nStep);
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
    const Row* pRow = FindRow(stLine.strFunction, stLine.strMessage);
    if ((pRow != nullptr ? pRow->eKind : KindOf(stLine)) != m_eKind) return true;
    if (pRow == nullptr) return m_nStep > kCode && IsParsing(stLine);
    const bool bEndedStop = m_eKind == CallKind::STOP && !Has(NO_SERVICE) && (pRow->nEffect & NO_SERVICE) != 0;
    if (Has(ENDS) || m_nStep > pRow->nMost) return !bEndedStop;
    return pRow->IsStep() && pRow->nStep < m_nNeeded;
}

void CCallDigest::TakeValues(const LogLine& stLine)
{
    constexpr std::string_view kLookUps[] = {"GetSystemAction", "GetSystemActionChannel", "GetSystemActionCandidate"};
    constexpr std::string_view kWords[] = {"szAction[0]:", "strAction = "};  // the second when there is no domain
    const bool bLookUp = IsOneOf(stLine.strFunction, kLookUps);
    for (const std::string_view szWord : kWords) {
        const bool bHolds = stLine.strFunction == "t_IsContentsSearchAction" || bLookUp;
        if (!bHolds || !Begins(stLine.strMessage, szWord)) continue;
        const std::string strBefore = std::exchange(m_strNamed, stLine.strMessage.substr(szWord.size()));
        // One with a line break must be said twice: a log's reader may have broken it.
        if (m_strNamed.find('\n') == std::string::npos || m_strNamed == strBefore) m_strAction = m_strNamed;
    }

    // A lookup that knows no such command leaves it to the next one; it is the last of them that decides.
    const std::optional<int> nCode = Number(stLine.strMessage, "eControl:");
    if (bLookUp && nCode > 0) {
        m_nCode = *nCode;
        m_bChannel = stLine.strFunction == kLookUps[1];
        if (stLine.strFunction == kLookUps[0]) m_nEffects |= ENDS;
    } else if (stLine.strFunction == "t_SetSpeechInfo") {
        m_nCode = Number(stLine.strMessage, "No one match, error ouccured:").value_or(m_nCode);
    } else if (stLine.strFunction == "t_Get2ndAction" && m_bChannel) {
        m_nEffects |= ENDS;  // no more follows
    }
    if (m_eKind == CallKind::REPLY && Has(ENDS) && m_nCode > 0) m_eResult = Result::DONE;
}

const char* CCallDigest::Outcome() const
{
    constexpr const char* kNames[] = {"unknown", "done", "refused"};
    return m_eKind == CallKind::STOP && Has(NO_SERVICE) ? "no_service" : kNames[static_cast<int>(m_eResult)];
}

std::vector<std::string> CCallDigest::Missing() const
{
    std::vector<std::string> vMissing = MissingBelow(m_nNeeded);
    if (!Has(ENDS)) vMissing.emplace_back("the end");
    return vMissing;
}

std::vector<std::string> CCallDigest::MissingWords() const
{
    std::vector<std::string> vWords;
    const std::size_t nAll = MissingBelow(m_nNeeded).size();
    const std::size_t nBegin = m_vSeen.empty() ? nAll : MissingBelow(std::min(*m_vSeen.begin(), m_nNeeded)).size();
    if (nBegin > 0) vWords.emplace_back("its beginning is lost");
    if (nAll > nBegin) vWords.push_back(std::to_string(nAll - nBegin) + " of its lines in between lost");
    if (!Has(ENDS)) vWords.emplace_back("its end is lost");
    return vWords;
}

bool CCallDigest::LacksBefore(const LogLine& stLine) const
{
    const Row* pRow = FindRow(stLine.strFunction, stLine.strMessage);
    return !MissingBelow(pRow != nullptr ? pRow->nStep : IsParsing(stLine) ? kCode : m_nNeeded).empty();
}

std::vector<std::string> CCallDigest::MissingBelow(int nStep) const
{
    std::vector<std::string> vMissing;
    int nLast = -1;
    for (const Row& row : kRows) {
        if (row.eKind != m_eKind || !row.IsStep() || row.nStep >= nStep || row.nStep == nLast) continue;
        if (m_vSeen.count(row.nStep) != 0 || (row.nEffect & DEBUG) != 0) continue;
        nLast = row.nStep;
        vMissing.push_back(std::string(row.szFunction) + ": " + std::string(row.szStart));
    }
    return vMissing;
}

std::string CCallDigest::Reason(std::string_view szReply) const
{
    if (Has(NO_SERVICE)) return "there is no service";
    return Has(TWICE) ? "the service was there already" : m_refusal.Reason(szReply);
}

std::string CCallDigest::Words(std::string_view szReply) const
{
    if (Has(NO_SERVICE) && m_eKind == CallKind::STOP) return "there was no service";
    if (m_eResult == Result::REFUSED) return "refused: " + Reason(szReply);
    if (m_eResult == Result::UNKNOWN) return "unknown";
    if (m_eKind != CallKind::REPLY) return "done";
    if (Has(HANDS_OVER)) return "search hand-over";
    if (Has(SEARCHES)) return "failed search";
    const std::string strCode = m_nCode < 0 ? "unknown" : std::to_string(m_nCode);
    return (m_strAction.empty() ? "action unknown" : m_strAction) + ", code " + strCode;
}

void SetValues::Listen(const LogLine& stLine)
{
    for (const ValueRow& row : kValueRows) {
        if (stLine.strFunction != row.szFunction) continue;
        const std::string_view szMessage = stLine.strMessage;
        const std::size_t nBefore = szMessage.find(row.szBefore);
        if (nBefore == szMessage.npos) continue;
        const bool bSaid = (this->*row.pValue).has_value();
        if (bSaid && row.pValue == &SetValues::strCountry && !row.szBehind.empty()) continue;
        if (bSaid && row.pValue == &SetValues::strLanguage && *strLanguage == kNone) continue;
        std::string_view szValue = szMessage.substr(nBefore + row.szBefore.size());
        if (!row.szBehind.empty()) szValue = szValue.substr(0, szValue.rfind(row.szBehind));
        this->*row.pValue = row.szMeans != nullptr ? row.szMeans : std::string(szValue);
    }
}

void SetValues::Apply() const
{
    for (const auto& [pValue, szFlag, szVariable] : kOptions)
        if (const auto& strValue = this->*pValue) setenv(szVariable, strValue->c_str(), 1);
}

std::string SetValues::Options() const
{
    std::string strOptions;
    for (const auto& [pValue, szFlag, szVariable] : kOptions)
        if (const auto& strValue = this->*pValue)
            strOptions += (strOptions.empty() ? "" : " ") + std::string(szFlag) + ' ' + Shown(*strValue);
    return strOptions;
}

bool IsAnswer(const LogLine& stLine)
{
    constexpr std::string_view kAnswering[] = {"GetCountry", "GetVCSettingLanguage"};
    return IsOneOf(stLine.strFunction, kAnswering);
}
