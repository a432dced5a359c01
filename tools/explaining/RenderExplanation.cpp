// Lines of text, and members of JSON.
#include "explaining/RenderExplanation.h"

#include <json/value.h>

#include "explaining/Render.h"
#include "explaining/Teller.h"
#include "findings/FindingText.h"
#include "records/RecordJson.h"

namespace
{

// "12:7: warning: TEXT; did you mean ...?"
std::string FindingText(const Finding& stFinding)
{
    std::string strText = std::to_string(stFinding.nLine) + ':';
    if (stFinding.nColumn > 0) strText += std::to_string(stFinding.nColumn) + ':';
    strText += std::string(" ") + SeverityWord(stFinding.eSeverity) + ": " + stFinding.strText;
    return stFinding.strSuggestion.empty() ? strText : strText + "; " + stFinding.strSuggestion;
}

Json::Value FindingValue(const Finding& stFinding)
{
    Json::Value value = FindingMembers(stFinding);
    if (stFinding.nColumn == 0) value.removeMember("column");
    if (stFinding.strSuggestion.empty()) value.removeMember("suggestion");
    return value;
}

Json::Value SectionValue(const Section& stSection)
{
    Json::Value value;
    value["section"] = stSection.strTitle;
    value["findings"] = value["statements"] = Json::arrayValue;
    for (const Finding& stFinding : stSection.vFindings) value["findings"].append(FindingValue(stFinding));
    for (const auto& [strText, strLog] : stSection.vStatements) {
        Json::Value statement;
        statement["text"] = strText;
        if (!strLog.empty()) statement["log"] = strLog;
        value["statements"].append(statement);
    }
    return value;
}

}  // namespace

std::string Explain(const Case& stCase, const CPaint& paint)
{
    std::string strResult = Heading(stCase.stReply, paint);
    if (stCase.stReply.bMark) strResult += "  a byte order mark at the file's start was left out for the library\n";
    for (const Section& stSection : Explained(stCase)) {
        strResult += "  " + paint.Label(stSection.strTitle) + '\n';
        for (const Finding& stFinding : stSection.vFindings) strResult += "    " + FindingText(stFinding) + '\n';
        for (const auto& [strText, strLog] : stSection.vStatements) {
            strResult += "    " + strText + '\n';
            if (!strLog.empty()) strResult += "      " + paint.Faint("log: " + Shown(strLog)) + '\n';
        }
    }
    return strResult;
}

std::string ExplainJson(const Case& stCase)
{
    Json::Value value;
    value["file"] = stCase.stReply.strFile;
    value["line"] = static_cast<Json::UInt64>(stCase.stReply.nLine);
    value["accepted"] = stCase.bAccepted;
    if (!stCase.bAccepted) value["reason"] = stCase.strRefusal;
    value["sections"] = Json::arrayValue;
    for (const Section& stSection : Explained(stCase)) value["sections"].append(SectionValue(stSection));
    return JsonLine(value);
}
