// The log lines that end a reply, and what they mean.
#include "session/Refusal.h"

#include <json/value.h>

#include <algorithm>
#include <string_view>

#include "reading/Input.h"
#include "text/Text.h"

namespace
{

struct Meaning {
    std::string_view szMessage;  // how the line begins
    const char* szReason;        // empty: all is well so far
    bool bOften = false;         // every reply has it: only a log that may begin anywhere needs it
};

constexpr std::size_t kTold = 12;  // characters that tell each of the lines from all others that are written often

constexpr const char* kNoRsp = "it has no \"rsp\"";

// Every line overrules those before it.
constexpr Meaning kMeanings[] = {
    {"Start to parse search server data.", kNoRsp, true},  // no line tells that "rsp" is missing
    {"TAG_RSP", "", true},
    {"strCode:", "", true},  // a log without its debug lines has this one only
    {"strPreAllResult is empty()", "the utterance or the reply is empty"},
    {"json parse error", "it is not JSON, or beyond a limit"},
    {"vTVControl is empty", "it holds no TV control command"},
    {"pDataHandler is NULL", "memory ran out"},
    {"stopped by an exception", ""},
    {"stopped by an exception: std::bad_alloc", "memory ran out"},
    {"create CCAService failed", "memory ran out"},
    {"m_pDataMgr is NULL", "memory ran out"},
};

// The rest of `szText` behind `szPrefix`; false when it begins otherwise.
bool Behind(std::string_view szText, std::string_view szPrefix, std::string_view& szRest)
{
    if (szText.substr(0, szPrefix.size()) != szPrefix) return false;
    szRest = szText.substr(szPrefix.size());
    return true;
}

// A failure of which the log says that its code is 0: that of the reply may be, or there is none.
std::string CodeZeroInWords(std::string_view szReply)
{
    Json::Value root;
    if (szReply.empty() || !ParseJson(szReply, false, root))
        return "the server reported error 0, or a failure without a code";
    const bool bCode = Json::Path(".rsp.err.code").resolve(root).isInt();
    return bCode ? "the server reported error 0" : "the server reported a failure without a code";
}

}  // namespace

CRefusal CRefusal::OfCall()
{
    CRefusal refusal;
    refusal.m_strReason = kNoRsp;
    return refusal;
}

bool CRefusal::Hears(std::string_view szFormat)
{
    std::string_view szRest;
    if (Behind(szFormat, "errCode:", szRest) || Behind(szFormat, "nErrCode:", szRest)) return true;
    const auto Begins = [&](const Meaning& stMeaning) {
        return !stMeaning.bOften && Behind(szFormat, stMeaning.szMessage.substr(0, kTold), szRest);
    };
    return std::any_of(std::begin(kMeanings), std::end(kMeanings), Begins);
}

void CRefusal::Listen(const LogLine& stLine)
{
    std::string_view szRest;
    if (stLine.strFunction == "t_ParseSearchServer" && Behind(stLine.strMessage, "errCode:", szRest)) {
        const std::size_t nMessage = std::min(szRest.find(", msg:"), szRest.size());
        m_strServerMessage = szRest.substr(std::min(nMessage + 6, szRest.size()));
        m_strReason = "the server reported error " + Shown(szRest.substr(0, nMessage));
        m_strLine = stLine.strLine;
    } else if (stLine.strFunction == "t_ParseSearchServer" && Behind(stLine.strMessage, "nErrCode:", szRest)) {
        m_bCodeZero = szRest == "0";
        m_strReason = "the server reported error " + std::string(szRest);
    }
    for (const Meaning& stMeaning : kMeanings) {
        if (!Behind(stLine.strMessage, stMeaning.szMessage, szRest)) continue;
        m_bCodeZero = false;
        m_strReason = stMeaning.szReason;
        m_strLine = stLine.strLine;
    }
}

std::string CRefusal::Reason(std::string_view szReply) const
{
    if (m_strReason.empty()) return "the library does not say why";
    const std::string strReason = m_bCodeZero ? CodeZeroInWords(szReply) : m_strReason;
    return m_strServerMessage.empty() ? strReason : strReason + ": " + Shown(m_strServerMessage);
}
