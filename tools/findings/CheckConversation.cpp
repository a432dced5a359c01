// Conversations, and what a file seems to be.
#include <algorithm>

#include "findings/Check.h"
#include "findings/Description.h"
#include "findings/Report.h"
#include "findings/Shape.h"
#include "findings/Syntax.h"
#include "reading/Input.h"
#include "rendering/Text.h"

namespace
{

using Description::Key;
using Description::Type;

constexpr Key kTurnKeys[] = {
    {"utterance", Type::TEXT, "What the viewer said."},
    {"reply", Type::ANYTHING, "The server's reply, as an object or as a text."},
    {"expect", Type::OBJECT, "What a test expects of the record."},
};
constexpr Description::Object kTurn = {
    "Turn", "the line", "One turn of a conversation.", Description::Reading::FILL, kTurnKeys, std::size(kTurnKeys)};

// Calls `visit` with each line that is not blank, and where it begins.
template <typename Visit>
void ForEachLine(std::string_view szText, const Visit& visit)
{
    for (std::size_t nStart = HasByteOrderMark(szText) ? kByteOrderMark.size() : 0; nStart < szText.size();) {
        const std::size_t nEnd = std::min(szText.find('\n', nStart), szText.size());
        const std::string_view szLine = szText.substr(nStart, nEnd - nStart);
        if (szLine.find_first_not_of(" \t\r") != std::string_view::npos) visit(szLine, nStart);
        nStart = nEnd + 1;
    }
}

// Findings of one line, their offsets from its start.
class CTurn
{
public:
    explicit CTurn(std::string_view szLine) : m_szLine(szLine), m_places(szLine), m_report(szLine, m_places) {}
    std::vector<Finding> Check();

private:
    void Parts(const Node& turn);
    void Reply(const Node& reply);

    std::string_view m_szLine;
    CPlaces m_places;
    CReport m_report;
    std::vector<Finding> m_vOfReply;
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
    vFindings.insert(vFindings.end(), m_vOfReply.begin(), m_vOfReply.end());
    return vFindings;
}

void CTurn::Parts(const Node& turn)
{
    CheckShape(turn, kTurn, m_report);
    const Node utterance = turn.Member("utterance");
    const Node reply = turn.Member("reply");
    if (utterance.Text().empty() && !m_report.IsDoubted(utterance))
        m_report.AtValue(turn, {Severity::ERROR, "not-a-turn", "the line has no \"utterance\": it is refused"});
    if (reply.value.isObject() || reply.value.isString())
        Reply(reply);
    else if (!m_report.IsDoubted(reply))
        m_report.AtValue(turn,
                         {Severity::ERROR, "not-a-turn", "the line has no \"reply\" that is an object or a text"});
}

void CTurn::Reply(const Node& reply)
{
    const auto nStart = static_cast<std::size_t>(reply.value.getOffsetStart());
    const auto nLength = static_cast<std::size_t>(reply.value.getOffsetLimit()) - nStart;
    const bool bText = reply.value.isString();
    m_vOfReply = CheckReply(bText ? std::string_view(reply.Text()) : m_szLine.substr(nStart, nLength));
    for (Finding& stFinding : m_vOfReply) {
        stFinding.nOffset = nStart + (bText ? 0 : stFinding.nOffset);
        if (!bText) continue;
        stFinding.nLength = nLength;
        stFinding.strText = "in line " + std::to_string(stFinding.nLine) + ", column " +
                            std::to_string(stFinding.nColumn) + " of this text: " + stFinding.strText;
    }
}

}  // namespace

std::vector<Finding> CheckConversation(std::string_view szText)
{
    std::vector<Finding> vFindings;
    ForEachLine(szText, [&vFindings](std::string_view szLine, std::size_t nStart) {
        for (Finding& stFinding : CTurn(szLine).Check()) {
            stFinding.nOffset += nStart;
            vFindings.push_back(std::move(stFinding));
        }
    });
    std::stable_sort(vFindings.begin(), vFindings.end(),
                     [](const Finding& stOne, const Finding& stOther) { return stOne.nOffset < stOther.nOffset; });
    CLines lines(szText);
    for (Finding& stFinding : vFindings) lines.Find(stFinding.nOffset, stFinding.nLine, stFinding.nColumn);
    return vFindings;
}

std::vector<Finding> CheckByForm(std::string_view szText)
{
    bool bTurn = false;
    ForEachLine(szText, [&bTurn](std::string_view szLine, std::size_t) { bTurn = bTurn || IsTurn(szLine); });
    if (bTurn) return CheckConversation(szText);
    if (IsTurn(szText))
        return {{Severity::ERROR, "not-a-turn", "", 0, 1, 1, 1, "a turn of a conversation must stand on one line", ""}};
    Json::Value root;
    const Json::Value& rsp =
        ParseJson(szText, false, root) && root.isObject() ? root["rsp"] : Json::Value::nullSingleton();
    const bool bSchema = rsp.isObject() && rsp.isMember("schema") && !rsp.isMember("tvcontrol");
    return bSchema ? CheckSchema(szText) : CheckReply(szText);
}
