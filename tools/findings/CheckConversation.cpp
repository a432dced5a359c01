// Conversations, and what a file seems to be.
#include <algorithm>

#include "findings/Check.h"
#include "findings/Description.h"
#include "findings/Effects.h"
#include "findings/Report.h"
#include "findings/Suggestion.h"
#include "findings/Syntax.h"
#include "reading/Files.h"
#include "records/RecordJson.h"
#include "text/Text.h"

namespace
{

// What the record has no place for can never come true.
void CheckExpectation(const Node& part, const Json::Value& outcome, CReport& report)
{
    const Json::Value::Members vMembers = outcome.getMemberNames();
    const std::vector<std::string_view> vNames(vMembers.begin(), vMembers.end());
    for (const KeyPlace& stPlace : report.Places().Keys(SpanOf(part.value).nStart)) {
        const Node member = part.Member(stPlace.strKey);
        const Json::Value& known = outcome[stPlace.strKey];
        if (!outcome.isMember(stPlace.strKey))
            report.At(
                stPlace.stSpan, member.strPointer,
                {Severity::ERROR, "unknown-key", Quoted(stPlace.strKey) + " is no part of what comes out: never true",
                 DidYouMean(Nearest(stPlace.strKey, vNames))});
        else if (known.type() != member.value.type() && !(known.isNumeric() && member.value.isNumeric()))
            report.AtValue(member,
                           {Severity::ERROR, "wrong-type",
                            Quoted(stPlace.strKey) + " is " + KindOf(known) + " in what comes out: never true"});
        else if (known.isObject())
            CheckExpectation(member, known, report);
    }
}

// The findings of a reply, at their places in its line. `vBefore` becomes what it leaves.
std::vector<Finding> OfReply(const Node& reply, std::string_view szLine, Texts& vBefore)
{
    const auto [nStart, nLength] = SpanOf(reply.value);
    const bool bText = reply.value.isString();
    const std::string strReply = bText ? reply.Text() : std::string(szLine.substr(nStart, nLength));
    std::vector<Finding> vFindings = CheckReply(strReply, vBefore);
    vBefore = LeftBy(strReply, std::move(vBefore));
    for (Finding& stFinding : vFindings) {
        stFinding.bOneLine = true;
        if (!bText) stFinding.Shift(nStart);
        if (!bText) continue;
        stFinding.nOffset = nStart;
        stFinding.nOther = Finding::kNoOther;
        stFinding.nLength = nLength;
        stFinding.strText = "in line " + std::to_string(stFinding.nLine) + ", column " +
                            std::to_string(stFinding.nColumn) + " of this text: " + stFinding.strText;
    }
    return vFindings;
}

std::vector<Finding> CheckParts(const Node& turn, std::string_view szLine, Texts& vBefore, CReport& report)
{
    CheckText(szLine, report);
    CheckShape(turn, Description::kTurn, report);
    const Node reply = turn.Member("reply");
    report.AtMissing(turn, "utterance", "not-a-turn", "the line", "the line is refused");
    const Node expect = turn.Member("expect");
    if (expect.value.isObject()) CheckExpectation(expect, OutcomeNames(), report);
    const bool bReply = reply.value.isObject() || reply.value.isString();
    if (reply.value.isNull())
        report.AtMissing(turn, "reply", "not-a-turn", "the line", "the line is refused");
    else if (!bReply && !report.IsDoubted(reply))
        report.AtValue(
            reply, {Severity::ERROR, "not-a-turn", "\"reply\" is neither an object nor a text: the line is refused"});
    std::vector<Finding> vFindings = report.Take();
    if (!bReply) return vFindings;
    const auto IsWithin = [stReply = SpanOf(reply.value)](const Finding& stFinding) {
        return stFinding.nOffset >= stReply.nStart && stFinding.nOffset - stReply.nStart < stReply.nLength;
    };
    const std::vector<Finding> vOfReply = OfReply(reply, szLine, vBefore);  // they tell of its text
    vFindings.erase(std::remove_if(vFindings.begin(), vFindings.end(), IsWithin), vFindings.end());
    vFindings.insert(vFindings.end(), vOfReply.begin(), vOfReply.end());
    return vFindings;
}

// Findings of one line, their offsets from its start. `vBefore`: what the turns before have left; becomes what this one
// leaves.
std::vector<Finding> CheckTurn(std::string_view szLine, Texts& vBefore)
{
    const CPlaces places(szLine);
    CReport report(szLine, places);
    Json::Value root;
    if (!ParseDocument(szLine, root, report)) return report.Take();
    const bool bRest = places.Rest().nLength > 0;
    if (!bRest && root.isObject()) return CheckParts({root, ""}, szLine, vBefore, report);
    report.At(bRest ? places.Rest() : Span{0, 1}, "",
              {Severity::ERROR, "not-a-turn", bRest ? "text follows the turn's object" : "the line is no object"});
    return report.Take();
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
    std::string_view szRest = szText.substr(MarkLength(szText));
    for (std::string_view szLine; TakeLine(szRest, szLine);) {
        if (IsBlank(szLine)) continue;
        for (Finding& stFinding : CheckTurn(szLine, vBefore)) {
            stFinding.Shift(static_cast<std::size_t>(szLine.data() - szText.data()));
            vFindings.push_back(std::move(stFinding));
        }
    }
    Locate(szText, vFindings);
    return vFindings;
}

std::vector<Finding> CheckByForm(std::string_view szText, const std::string& strName)
{
    if (LooksLikeConversation(strName, szText)) return CheckConversation(szText);
    if (IsTurn(szText))
        return {{Severity::ERROR, "not-a-turn", "", 0, 1, 1, 1, "a turn of a conversation must stand on one line", ""}};
    const Json::Value root = MembersOf(szText);
    const Node rsp = Node{root, ""}.Member("rsp");
    const Json::Value::Members vKeys = rsp.value.isObject() ? rsp.value.getMemberNames() : Json::Value::Members();
    const auto IsSchema = [](const std::string& strKey) { return !MostAlike(strKey, {"schema"}).empty(); };
    const bool bSchema = !rsp.Has("tvcontrol") && std::any_of(vKeys.begin(), vKeys.end(), IsSchema);
    return bSchema ? CheckSchema(szText) : CheckReply(szText);
}
