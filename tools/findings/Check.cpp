// From the text to the findings: encoding and syntax, shape, effects.
#include <json/value.h>

#include "findings/Description.h"
#include "findings/Effects.h"
#include "findings/Report.h"
#include "findings/Syntax.h"
#include "reading/Input.h"

namespace
{

void CheckDocument(const Json::Value& root, const Description::Object& stObject, const Texts& vBefore, CReport& report)
{
    if (!root.isObject())
        return report.At({0, 1}, "", {Severity::ERROR, "no-rsp", "the document is no object: it is refused"});
    const Node document{root, ""};
    const Node rsp = document.Member("rsp");
    const Texts vDomains = rsp.Has("domain") ? DomainsOf(rsp) : vBefore;
    if (IsHandOver(rsp, vDomains, report) && rsp.Has("tvcontent"))
        for (const char* szKey : {"tvcontent", "nlu_info"}) report.LeaveToApplication(rsp.Member(szKey).strPointer);
    CheckShape(document, stObject, report);
    if (!rsp.value.isNull() && &stObject == &Description::kReply)
        CheckReplyEffects(document, vDomains, report);
    else if (!rsp.value.isNull())
        CheckSchemaEffects(document, report);
    else if (root.isMember("rsp"))
        report.AtValue(rsp, {Severity::ERROR, "no-rsp", "\"rsp\" is null: it is refused"});
    else if (!report.IsDoubted(rsp))
        report.AtValue(document, {Severity::ERROR, "no-rsp", "it has no \"rsp\": it is refused"});
}

std::vector<Finding> Check(std::string_view szText, const Description::Object& stObject, const Texts& vBefore = {})
{
    const std::size_t nMark = MarkLength(szText);
    szText.remove_prefix(nMark);
    const CPlaces places(szText);
    CReport report(szText, places);
    if (nMark > 0)
        report.At({0, 0}, "",
                  {Severity::ERROR, "byte-order-mark",
                   "the text begins with a byte order mark, which the library takes for no JSON",
                   "save it as UTF-8 without one"});
    Json::Value root;
    if (ParseDocument(szText, root, report)) {
        CheckText(szText, report);
        CheckDocument(root, stObject, vBefore, report);
    }
    std::vector<Finding> vFindings = report.Take();
    for (Finding& stFinding : vFindings) stFinding.Shift(nMark);
    return vFindings;
}

}  // namespace

std::vector<Finding> CheckReply(std::string_view szReply, const Texts& vBefore)
{
    return Check(szReply, Description::kReply, vBefore);
}

Texts LeftBy(std::string_view szReply, Texts vBefore)
{
    const Json::Value root = MembersOf(szReply);
    const Node rsp = Node{root, ""}.Member("rsp");
    if (rsp.Member("stat").Text() == "fail") return vBefore;
    if (rsp.Member("tvcontrol").Size() > 0) return {};
    return rsp.Has("domain") ? DomainsOf(rsp) : std::move(vBefore);
}

std::vector<Finding> CheckSchema(std::string_view szDocument)
{
    return Check(szDocument, Description::kSearchSchema);
}
