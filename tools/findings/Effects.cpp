// A reply's flow: which of its commands count, and what follows from that for its other parts.
#include "findings/Effects.h"

#include <utility>

#include "text/Text.h"

namespace
{

// That a part has no effect; of an empty list there is nothing to say.
void PartHasNoEffect(const Node& rsp, std::string_view szKey, const std::string& strWhy, CReport& report)
{
    const Json::Value& value = rsp.Member(szKey).value;
    if (!value.isArray() || !value.empty()) report.KeyHasNoEffect(rsp, szKey, strWhy);
}

void CheckRequest(const Node& request, CReport& report)
{
    const Node params = request.Member("params");
    report.AtMissing(request, "action", "no-action", "the request", "code -1");
    for (Json::ArrayIndex i = 0; i < params.Size(); ++i)
        if (const Node index = params.Element(i).Member("index"); index.Number() < 0 && !params.Element(i).Has("title"))
            report.AtValue(index, {Severity::ERROR, "negative", "\"index\" is negative: no entry stands there"});
}

// Requests to act on the list on screen, and the sentence that they silence.
void CheckRequests(const Node& rsp, CReport& report)
{
    const Node requests = rsp.Member("displaycontrol");
    if (requests.value.isNull()) return;
    const std::string strSentence = rsp.Member("system_sentence").Text();
    if (!strSentence.empty() && strSentence != "{Null}")
        PartHasNoEffect(rsp, "system_sentence", "nothing is said beside a \"displaycontrol\"", report);
    bool bLast = true;
    for (Json::ArrayIndex i = requests.Size(); i > 0; --i) {
        const Node request = requests.Element(i - 1);
        if (!request.value.isObject()) continue;
        if (!std::exchange(bLast, false))
            report.AtValue(request, NoEffect("the request", "a later one takes its place"));
        else
            CheckRequest(request, report);
    }
}

void CheckFlow(const Node& rsp, const Texts& vDomains, CReport& report)
{
    const Node commands = rsp.Member("tvcontrol");
    if (IsHandOver(rsp, vDomains, report)) {
        for (Json::ArrayIndex i = 1; i < commands.Size(); ++i)
            if (!report.IsDoubted(commands.Element(i)))
                report.AtValue(commands.Element(i), {Severity::WARNING, "not-looked-at",
                                                     "the command is not looked at: the search is handed over"});
        return;
    }
    const Node action = ActionIn(commands.Element(0), &report);
    const std::string strAction = action.Text();

    const bool bFailedSearch = strAction == "search_failed" && vDomains == Texts{"tvcontrol"};
    if (!bFailedSearch) CheckRequests(rsp, report);
    if (bFailedSearch) {
        for (const char* szKey : {"displaycontrol", "tvcontent"})
            PartHasNoEffect(rsp, szKey, "after a failed search the application searches by itself", report);
    } else if (strAction == "display_content" || strAction == "search_failed") {
        const char* szDomains = strAction == "display_content" ? "two or more domains" : "the one domain \"tvcontrol\"";
        if (!report.IsDoubtedWithin(rsp.Member("domain")))
            report.AtValue(action, {Severity::ERROR, "wrong-domains",
                                    Quoted(strAction) + " counts only with " + szDomains + ": no match, code 0"});
        return;
    }
    const bool bContents = CheckCommands(commands, bFailedSearch, report);
    if (bFailedSearch || report.IsDoubted(action)) return;
    if (bContents)
        CheckItems(rsp.Member("tvcontent"), report);
    else
        PartHasNoEffect(rsp, "tvcontent", "the command " + Quoted(strAction) + " shows no contents", report);
}

}  // namespace

Texts DomainsOf(const Node& rsp)
{
    const Node domains = rsp.Member("domain");
    Texts vDomains;
    for (Json::ArrayIndex i = 0; i < domains.Size(); ++i)
        if (domains.value[i].isString()) vDomains.push_back(domains.Element(i).Text());
    return vDomains;
}

bool IsHandOver(const Node& rsp, const Texts& vDomains, const CReport& report)
{
    const Node commands = rsp.Member("tvcontrol");
    return vDomains.size() > 1 && commands.Size() > 0 &&
           ActionIn(commands.Element(0), &report).Text() == "display_content";
}

void CheckReplyEffects(const Node& document, const Texts& vDomains, CReport& report)
{
    const Node rsp = document.Member("rsp");
    if (report.IsDoubted(rsp)) return;
    const Node stat = rsp.Member("stat");
    if (stat.Text() == "fail") {  // that is all that the library reads
        for (const char* szKey :
             {"domain", "dialog", "system_sentence", "tvcontrol", "displaycontrol", "tvcontent", "nlu_info"})
            PartHasNoEffect(rsp, szKey, "\"stat\" is \"fail\", so the reply is refused", report);
        return;
    }
    if (!report.IsDoubted(stat)) PartHasNoEffect(rsp, "err", "it is read only when \"stat\" is \"fail\"", report);
    const Node commands = rsp.Member("tvcontrol");
    if (!report.IsDoubted(commands) && commands.Size() > 0) return CheckFlow(rsp, vDomains, report);
    CheckRequests(rsp, report);
    if (!report.IsDoubted(commands) && !report.IsDoubted(stat))
        report.AtValue(commands.value.isNull() ? rsp : commands,
                       {Severity::ERROR, "no-command", "the reply is refused: it holds no command"});
}
