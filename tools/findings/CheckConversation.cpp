// Conversations, and what a file seems to be.
#include <algorithm>

#include "findings/Check.h"
#include "findings/Description.h"
#include "findings/Report.h"
#include "findings/Shape.h"
#include "findings/Suggestion.h"
#include "findings/Syntax.h"
#include "reading/Files.h"
#include "records/RecordJson.h"
#include "text/Text.h"

namespace
{

using Description::Key;
using Description::Type;

constexpr Key kTurnKeys[] = {
    {"utterance", Type::TEXT, "What the viewer said."},
    {"reply", Type::ANYTHING, "The server's reply, as an object or as a text."},
    Key{"expect", Type::OBJECT, "What a test expects of the record."}.Otherwise("the turn fails a test"),
    {"name", Type::TEXT, "The turn's name, for a test's results."},
    {"comment", Type::ANYTHING, "Whatever its author says of it."},
    {"call", Type::INTEGER, "The call of the log that it was extracted from."},
    {"state", Type::TEXT, "Whether the log had all of the reply."},
    {"utterance_known", Type::BOOLEAN, "Whether the log had the utterance."},
};
constexpr Description::Object kTurn = Description::Make("Turn", "the line", "One turn of a conversation.", kTurnKeys);

// Findings of one line, their offsets from its start.
class CTurn
{
public:
    // `vBefore`: what the turns before have left; becomes what this one leaves.
    CTurn(std::string_view szLine, Texts& vBefore)
        : m_szLine(szLine), m_vBefore(vBefore), m_places(szLine), m_report(szLine, m_places)
    {
    }
    std::vector<Finding> Check();

private:
    void Parts(const Node& turn);
    void Reply(const Node& reply);
    void Expectation(const Node& part, const Json::Value& outcome);

    std::string_view m_szLine;
    Texts& m_vBefore;
    CPlaces m_places;
    CReport m_report;
    std::vector<Finding> m_vOfReply;
    Span m_stReply;
};

std::vector<Finding> CTurn::Check()
{
    Json::Value root;
    if (ParseDocument(m_szLine, root, m_report)) {
        if (const Span stRest = m_places.Rest(); stRest.nLength > 0)
            m_report.At(stRest, "", {Severity::ERROR, "not-a-turn", "text follows the turn's object"});
        else if (!root.isObject())
            m_report.At({0, 1}, "", {Severity::ERROR, "not-a-turn", "the line is no object"});
        else
            Parts({root, ""});
    }
    std::vector<Finding> vFindings = m_report.Take();
    const auto IsOfReply = [this](const Finding& stFinding) {
        return stFinding.nOffset >= m_stReply.nStart && stFinding.nOffset - m_stReply.nStart < m_stReply.nLength;
    };
    if (m_stReply.nLength > 0)  // its own findings tell of its text
        vFindings.erase(std::remove_if(vFindings.begin(), vFindings.end(), IsOfReply), vFindings.end());
    vFindings.insert(vFindings.end(), m_vOfReply.begin(), m_vOfReply.end());
    return vFindings;
}

void CTurn::Parts(const Node& turn)
{
    CheckText(m_szLine, m_report);
    CheckShape(turn, kTurn, m_report);
    const Node reply = turn.Member("reply");
    m_report.AtMissing(turn, "utterance", "not-a-turn", "the line", "the line is refused");
    const Node expect = turn.Member("expect");
    if (expect.value.isObject()) Expectation(expect, OutcomeNames());
    if (reply.value.isObject() || reply.value.isString())
        Reply(reply);
    else if (reply.value.isNull())
        m_report.AtMissing(turn, "reply", "not-a-turn", "the line", "the line is refused");
    else if (!m_report.IsDoubted(reply))
        m_report.AtValue(
            reply, {Severity::ERROR, "not-a-turn", "\"reply\" is neither an object nor a text: the line is refused"});
}

// What the record has no place for can never come true.
void CTurn::Expectation(const Node& part, const Json::Value& outcome)
{
    const Json::Value::Members vMembers = outcome.getMemberNames();
    const std::vector<std::string_view> vNames(vMembers.begin(), vMembers.end());
    for (const KeyPlace& stPlace : m_places.Keys(static_cast<std::size_t>(part.value.getOffsetStart()))) {
        const Node member = part.Member(stPlace.strKey);
        const Json::Value& known = outcome[stPlace.strKey];
        if (!outcome.isMember(stPlace.strKey))
            m_report.At(
                stPlace.stSpan, member.strPointer,
                {Severity::ERROR, "unknown-key", Quoted(stPlace.strKey) + " is no part of what comes out: never true",
                 DidYouMean(Nearest(stPlace.strKey, vNames))});
        else if (known.isBool() && !member.value.isBool())
            m_report.AtValue(
                member, {Severity::ERROR, "wrong-type", Quoted(stPlace.strKey) + " is not true or false: never true"});
        else if (known.isObject() && member.value.isObject())
            Expectation(member, known);
    }
}

void CTurn::Reply(const Node& reply)
{
    const auto nStart = static_cast<std::size_t>(reply.value.getOffsetStart());
    const auto nLength = static_cast<std::size_t>(reply.value.getOffsetLimit()) - nStart;
    const bool bText = reply.value.isString();
    const std::string strReply = bText ? reply.Text() : std::string(m_szLine.substr(nStart, nLength));
    m_stReply = {nStart, nLength};
    m_vOfReply = CheckReply(strReply, m_vBefore);
    m_vBefore = LeftBy(strReply, std::move(m_vBefore));
    for (Finding& stFinding : m_vOfReply) {
        stFinding.bOneLine = true;
        if (!bText) stFinding.Shift(nStart);
        if (!bText) continue;
        stFinding.nOffset = nStart;
        stFinding.nOther = Finding::kNoOther;
        stFinding.nLength = nLength;
        stFinding.strText = "in line " + std::to_string(stFinding.nLine) + ", column " +
                            std::to_string(stFinding.nColumn) + " of this text: " + stFinding.strText;
    }
}

}  // namespace

Json::Value OutcomeNames()
{
    Json::Value outcome = ToJson(CADataRepository::_ConvActionInfo());
    outcome["accepted"] = outcome["refused"] = true;
    outcome["reason"] = "";
    return outcome;
}

std::vector<Finding> CheckConversation(std::string_view szText)
{
    std::vector<Finding> vFindings;
    Texts vBefore;
    for (std::size_t nStart = HasByteOrderMark(szText) ? kByteOrderMark.size() : 0; nStart < szText.size();) {
        const std::size_t nEnd = std::min(szText.find('\n', nStart), szText.size());
        const std::string_view szLine = szText.substr(nStart, nEnd - nStart);
        const bool bBlank = szLine.find_first_not_of(" \t\r") == std::string_view::npos;
        for (Finding& stFinding : bBlank ? std::vector<Finding>() : CTurn(szLine, vBefore).Check()) {
            stFinding.Shift(nStart);
            vFindings.push_back(std::move(stFinding));
        }
        nStart = nEnd + 1;
    }
    Locate(szText, vFindings);
    return vFindings;
}

std::vector<Finding> CheckByForm(std::string_view szText, const std::string& strName)
{
    if (LooksLikeConversation(strName, szText)) return CheckConversation(szText);
    if (IsTurn(szText))
        return {{Severity::ERROR, "not-a-turn", "", 0, 1, 1, 1, "a turn of a conversation must stand on one line", ""}};
    Json::Value root;
    const Node rsp = Node{ParseJson(szText, false, root) ? root : Json::Value::nullSingleton(), ""}.Member("rsp");
    const Json::Value::Members vKeys = rsp.value.isObject() ? rsp.value.getMemberNames() : Json::Value::Members();
    const auto IsSchema = [](const std::string& strKey) { return !MostAlike(strKey, {"schema"}).empty(); };
    const bool bSchema = !rsp.Has("tvcontrol") && std::any_of(vKeys.begin(), vKeys.end(), IsSchema);
    return bSchema ? CheckSchema(szText) : CheckReply(szText);
}
