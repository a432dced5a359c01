// The frame of an explanation: which sections there are, and where the findings go.
#include "explaining/Explanation.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "explaining/Teller.h"
#include "findings/Check.h"
#include "reading/Input.h"

namespace
{

std::size_t Characters(std::string_view szText)
{
    const auto Begins = [](char c) { return (c & 0xC0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(szText.begin(), szText.end(), Begins));
}

// Moves places in the reply to where the reply stands in its file.
void Place(const ServerReply& stReply, std::vector<Finding>& vFindings)
{
    if (stReply.szTurn.empty()) return;
    const std::size_t nBefore = Characters(stReply.szTurn.substr(0, stReply.nOffset));
    for (Finding& stFinding : vFindings) {
        stFinding.nLine = stReply.nLine;
        stFinding.nColumn = stReply.nOffset == 0 ? 0 : stFinding.nColumn + nBefore;
    }
}

bool IsWithin(const std::string& strPointer, const std::string& strRoot)
{
    return strPointer.compare(0, strRoot.size(), strRoot) == 0 &&
           (strPointer.size() == strRoot.size() || strPointer[strRoot.size()] == '/');
}

void TellRefusal(CTeller& teller)
{
    if (teller.m_stCase.bAccepted) return;
    teller.Begin("refused", "/rsp/err");
    const LogLine stLine{teller.m_stCase.strRefusalLine, {}, {}};
    teller.Say(teller.m_stCase.strRefusal, stLine.strLine.empty() ? nullptr : &stLine);
}

}  // namespace

std::string TextOf(const Json::Value& value)
{
    return value.isString() ? value.asString() : std::string();
}

CTeller::CTeller(const Case& stCase) : m_stCase(stCase), m_log(stCase.vLog)
{
    const ServerReply& stReply = stCase.stReply;
    if (stReply.strText.empty()) return;
    if (!ParseJson(stReply.strText, false, m_root)) m_root = Json::Value();
    m_vFindings = CheckReply(stReply.bMark ? std::string(kByteOrderMark) + stReply.strText : stReply.strText);
    Place(stReply, m_vFindings);
}

void CTeller::Begin(const std::string& strTitle, const std::string& strPointer)
{
    if (!m_vSections.empty() && m_vSections.back().vFindings.empty() && m_vSections.back().vStatements.empty())
        m_vSections.pop_back();
    Section& stSection = m_vSections.emplace_back();
    stSection.strTitle = strTitle;
    if (strPointer.empty()) return;
    const auto Other = [&](const Finding& stFinding) { return !IsWithin(stFinding.strPointer, strPointer); };
    const auto itMine = std::stable_partition(m_vFindings.begin(), m_vFindings.end(), Other);
    std::move(itMine, m_vFindings.end(), std::back_inserter(stSection.vFindings));
    m_vFindings.erase(itMine, m_vFindings.end());
}

void CTeller::Say(const std::string& strText, const LogLine* pLine)
{
    m_vSections.back().vStatements.push_back({strText, pLine == nullptr ? std::string() : pLine->strLine});
}

std::vector<Section> CTeller::Sections() &&
{
    Begin("", "");
    m_vSections.pop_back();
    if (!m_vFindings.empty()) m_vSections.insert(m_vSections.begin(), {"the reply", std::move(m_vFindings), {}});
    return std::move(m_vSections);
}

std::vector<Section> Explained(const Case& stCase)
{
    CTeller teller(stCase);
    TellRefusal(teller);
    TellBefore(teller);
    TellSentence(teller);
    TellCommands(teller);
    TellRequests(teller);
    TellContents(teller);
    TellLeft(teller);
    return std::move(teller).Sections();
}
