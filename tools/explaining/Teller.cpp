// The frame of an explanation: which sections there are, and where the findings go.
#include "explaining/Teller.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "findings/Check.h"
#include "reading/Input.h"

namespace
{

constexpr int kLevels = 3;  // of the pointer of a section: "/rsp/tvcontrol/0"

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

void TellRefusal(CTeller& teller)
{
    if (teller.m_stCase.bAccepted) return;
    teller.Begin("refused", "/rsp/err");
    const LogLine stLine{teller.m_stCase.strRefusalLine, {}, {}};
    teller.Say(teller.m_stCase.strRefusal, &stLine);
}

// The domains that an earlier reply left and this one did not replace.
Texts DomainsBefore(const CTeller& teller)
{
    Texts vDomains;
    if (teller.Find(kReplyReader, "TAG_DOMAIN") != nullptr) return vDomains;
    for (const LogLine* pLine : teller.FindAll("t_IsContentsSearchAction", "domain["))
        vDomains.push_back(pLine->strMessage.substr(pLine->strMessage.find(':') + 1));
    return vDomains;
}

}  // namespace

bool Is(const LogLine& stLine, std::string_view szFunction, std::string_view szStart)
{
    return stLine.strFunction == szFunction && stLine.strMessage.compare(0, szStart.size(), szStart) == 0;
}

int NumberOf(const LogLine& stLine)
{
    const std::size_t nStart = stLine.strMessage.find_last_not_of("-0123456789") + 1;
    return static_cast<int>(std::strtol(stLine.strMessage.c_str() + nStart, nullptr, 10));
}

std::string Behind(const LogLine& stLine, std::string_view szStart)
{
    const std::string strText = stLine.strMessage.substr(szStart.size());
    return strText.substr(0, strText.size() - (!strText.empty() && strText.back() == ']' ? 1 : 0));
}

std::vector<const LogLine*> CTeller::FindAll(std::string_view szFunction, std::string_view szStart) const
{
    std::vector<const LogLine*> vFound;
    for (const LogLine& stLine : m_stCase.vLog)
        if (Is(stLine, szFunction, szStart)) vFound.push_back(&stLine);
    return vFound;
}

const LogLine* CTeller::Find(std::string_view szFunction, std::string_view szStart) const
{
    for (const LogLine& stLine : m_stCase.vLog)
        if (Is(stLine, szFunction, szStart)) return &stLine;
    return nullptr;
}

const LogLine* CTeller::FindLast(std::string_view szFunction, std::string_view szStart) const
{
    const std::vector<const LogLine*> vFound = FindAll(szFunction, szStart);
    return vFound.empty() ? nullptr : vFound.back();
}

CTeller::CTeller(const Case& stCase) : m_stCase(stCase)
{
    const ServerReply& stReply = stCase.stReply;
    if (stReply.strText.empty()) return;
    m_root = MembersOf(stReply.strText);
    m_vFindings = CheckReply(stReply.bMark ? std::string(kByteOrderMark) + stReply.strText : stReply.strText,
                             DomainsBefore(*this));
    Place(stReply, m_vFindings);
}

void CTeller::Begin(const std::string& strTitle, const std::string& strPointer)
{
    if (!strPointer.empty()) m_mapSections.emplace(strPointer, m_vSections.size());
    m_vSections.push_back({strTitle, {}, {}});
}

void CTeller::Say(const std::string& strText, const LogLine* pLine)
{
    m_vSections.back().vStatements.push_back({strText, pLine == nullptr ? std::string() : pLine->strLine});
}

void CTeller::SayIf(const LogLine* pLine, const std::string& strText)
{
    if (pLine != nullptr) Say(strText, pLine);
}

std::vector<Section> CTeller::Sections() &&
{
    Section stWhole{"the reply", {}, {}};
    for (Finding& stFinding : m_vFindings) {
        const std::string& strPointer = stFinding.strPointer;
        Section* pSection = &stWhole;
        std::size_t nEnd = 0;
        for (int i = 0; i < kLevels && nEnd < strPointer.size(); ++i) {
            nEnd = std::min(strPointer.find('/', nEnd + 1), strPointer.size());
            const auto it = m_mapSections.find(strPointer.substr(0, nEnd));
            if (it != m_mapSections.end()) pSection = &m_vSections[it->second];
        }
        pSection->vFindings.push_back(std::move(stFinding));
    }
    const auto IsEmpty = [](const Section& stSection) {
        return stSection.vFindings.empty() && stSection.vStatements.empty();
    };
    m_vSections.erase(std::remove_if(m_vSections.begin(), m_vSections.end(), IsEmpty), m_vSections.end());
    if (!IsEmpty(stWhole)) m_vSections.insert(m_vSections.begin(), std::move(stWhole));
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
