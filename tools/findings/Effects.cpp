// A reply's flow: which of its commands count, and what follows from that for its other parts.
#include "findings/Effects.h"

#include <utility>

#include "findings/CommandEffects.h"
#include "findings/ItemEffects.h"
#include "text/Text.h"

namespace
{

class CReplyEffects
{
public:
    CReplyEffects(const Node& rsp, const Texts& vDomains, CReport& report)
        : m_rsp(rsp), m_vDomains(vDomains), m_report(report)
    {
    }
    void Check();

private:
    void NoEffect(std::string_view szKey, const std::string& strWhy);
    void Requests();
    void Flow(const Node& commands);
    bool AreDomainsDoubted() const;

    const Node& m_rsp;
    const Texts& m_vDomains;
    CReport& m_report;
};

void CReplyEffects::NoEffect(std::string_view szKey, const std::string& strWhy)
{
    const Json::Value& value = m_rsp.Member(szKey).value;
    if (!value.isArray() || !value.empty()) m_report.KeyHasNoEffect(m_rsp, szKey, strWhy);
}

void CReplyEffects::Check()
{
    const Node stat = m_rsp.Member("stat");
    if (stat.Text() == "fail") {  // that is all that the library reads
        for (const char* szKey :
             {"domain", "dialog", "system_sentence", "tvcontrol", "displaycontrol", "tvcontent", "nlu_info"})
            NoEffect(szKey, "\"stat\" is \"fail\", so the reply is refused");
        return;
    }
    if (!m_report.IsDoubted(stat)) NoEffect("err", "it is read only when \"stat\" is \"fail\"");
    const Node commands = m_rsp.Member("tvcontrol");
    if (!m_report.IsDoubted(commands) && commands.Size() > 0) return Flow(commands);
    Requests();
    if (!m_report.IsDoubted(commands) && !m_report.IsDoubted(stat))
        m_report.AtValue(commands.value.isNull() ? m_rsp : commands,
                         {Severity::ERROR, "no-command", "the reply is refused: it holds no command"});
}

// Requests to act on the list on screen, and the sentence that they silence.
void CReplyEffects::Requests()
{
    const Node requests = m_rsp.Member("displaycontrol");
    if (requests.value.isNull()) return;
    const std::string strSentence = m_rsp.Member("system_sentence").Text();
    if (!strSentence.empty() && strSentence != "{Null}")
        NoEffect("system_sentence", "nothing is said beside a \"displaycontrol\"");
    bool bLast = true;
    for (Json::ArrayIndex i = requests.Size(); i > 0; --i) {
        const Node request = requests.Element(i - 1);
        if (!request.value.isObject()) continue;
        if (!std::exchange(bLast, false))
            m_report.AtValue(request, ::NoEffect("the request", "a later one takes its place"));
        else
            m_report.AtMissing(request, "action", "no-action", "the request", "code -1");
    }
}

bool CReplyEffects::AreDomainsDoubted() const
{
    const Node domains = m_rsp.Member("domain");
    bool bDoubted = m_report.IsDoubted(domains);
    for (Json::ArrayIndex i = 0; i < domains.Size(); ++i) bDoubted = bDoubted || m_report.IsDoubted(domains.Element(i));
    return bDoubted;
}

void CReplyEffects::Flow(const Node& commands)
{
    if (IsHandOver(m_rsp, m_vDomains, m_report)) return;
    const Node action = ActionIn(commands.Element(0), m_report);
    const std::string strAction = action.Text();

    const bool bFailedSearch = strAction == "search_failed" && m_vDomains == Texts{"tvcontrol"};
    if (!bFailedSearch) Requests();
    if (bFailedSearch) {
        for (const char* szKey : {"displaycontrol", "tvcontent"})
            NoEffect(szKey, "after a failed search the application searches by itself");
    } else if (strAction == "display_content" || strAction == "search_failed") {
        const char* szDomains = strAction == "display_content" ? "two or more domains" : "the one domain \"tvcontrol\"";
        if (!AreDomainsDoubted())
            m_report.AtValue(action, {Severity::ERROR, "wrong-domains",
                                      Quoted(strAction) + " counts only with " + szDomains + ": no match, code 0"});
        return;
    }
    const bool bContents = CheckCommands(commands, bFailedSearch, m_report);
    if (bFailedSearch || m_report.IsDoubted(action)) return;
    if (bContents)
        CheckItems(m_rsp.Member("tvcontent"), m_report);
    else
        NoEffect("tvcontent", "the command " + Quoted(strAction) + " shows no contents");
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
           ActionIn(commands.Element(0), report).Text() == "display_content";
}

void CheckReplyEffects(const Node& document, const Texts& vDomains, CReport& report)
{
    const Node rsp = document.Member("rsp");
    if (!report.IsDoubted(rsp)) CReplyEffects(rsp, vDomains, report).Check();
}
