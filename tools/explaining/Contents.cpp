// The content items: which were kept, which not, and what became of their posters.
#include <algorithm>

#include "explaining/Teller.h"
#include "text/Text.h"

namespace
{

constexpr const char* kPoster = "t_ParsePoster";

// Whether an item begins with the line: its type, or that it has none.
bool BeginsItem(const LogLine& stLine, const LogLine* pBefore)
{
    if (Is(stLine, kReplyReader, "Type[")) return true;
    return Is(stLine, kReplyReader, " __FAIL__") && (pBefore == nullptr || !Is(*pBefore, kReplyReader, "Type["));
}

// The lines of each item.
std::vector<std::vector<const LogLine*>> Items(const CTeller& teller)
{
    std::vector<std::vector<const LogLine*>> vItems;
    const LogLine* pBefore = nullptr;
    for (const LogLine& stLine : teller.m_stCase.vLog) {
        if (Is(stLine, kReplyReader, "TAG_NLU_INFO") || stLine.strFunction == "GetSpeechActionData") break;
        if (BeginsItem(stLine, pBefore)) vItems.emplace_back();
        if (!vItems.empty()) vItems.back().push_back(&stLine);
        pBefore = &stLine;
    }
    return vItems;
}

bool IsKept(const LogLine& stLine)
{
    return Is(stLine, "t_CheckPermit", " t_CheckPlay") && stLine.strMessage.find("return 1###") != std::string::npos;
}

// What is told of the poster; `nWanted` is the size that suits the set, -1 when none is preferred.
void TellPoster(CTeller& teller, const LogLine& stLine, int& nWanted)
{
    if (Is(stLine, kPoster, "####t_ParsePoster::nTmpIndex:")) nWanted = NumberOf(stLine);
    if (Is(stLine, kPoster, " the poster template is not usable"))
        teller.Say("the poster's address is no template that can be filled: taken as it is", &stLine);
    if (Is(stLine, kPoster, " the server's ontv type url is error"))
        teller.Say("the poster's address had a doubled slash: one taken out", &stLine);
    if (!Is(stLine, kPoster, "####t_ParsePoster::nIndex:") || NumberOf(stLine) == nWanted) return;
    const int nTaken = NumberOf(stLine);
    const std::string strTaken = nTaken == 0 ? ": size 0 taken, as no size stands first in its list"
                                             : ": size " + std::to_string(nTaken) + " taken, the first one offered";
    if (nWanted < 0)
        teller.Say("the poster has no preferred size for this type" + strTaken, &stLine);
    else
        teller.Say("the poster is not offered in size " + std::to_string(nWanted) + strTaken, &stLine);
}

void TellItem(CTeller& teller, const std::vector<const LogLine*>& vLines)
{
    if (!Is(*vLines.front(), kReplyReader, "Type[")) return teller.Say("it has no type: dropped", vLines.front());
    const LogLine* pOther = nullptr;
    int nWanted = -1;
    for (const LogLine* pLine : vLines) {
        if (Is(*pLine, kReplyReader, " __FAIL__")) return teller.Say("unknown type: dropped", pLine);
        TellPoster(teller, *pLine, nWanted);
        if (Is(*pLine, "t_CheckPermit", "Other type")) pOther = pLine;
        if (!Is(*pLine, "t_CheckPermit", " t_CheckPlay")) continue;
        if (pOther != nullptr) return teller.Say("refused: items of this type are not offered", pOther);
        return teller.Say(IsKept(*pLine) ? "kept" : "refused: not cleared under the adult lock", pLine);
    }
    teller.Say("dropped: an app without an id", vLines.front());
}

// What the item is called: by the reply, or by the log where there is none.
std::string TitleOf(const Node& item, const std::vector<const LogLine*>& vLines)
{
    const Node title = item.Member("title");
    if (!item.value.isNull())
        return title.value.isString() ? title.Text() : item.Member("app_info").Member("title").Text();
    for (const LogLine* pLine : vLines) {
        const std::size_t nTitle = pLine->strMessage.find("Content:");
        const std::size_t nArrow = pLine->strMessage.find("->", std::min(nTitle, pLine->strMessage.size()));
        if (Is(*pLine, "t_CheckPermit", " t_CheckPlay") && nArrow != std::string::npos)
            return pLine->strMessage.substr(nArrow + 2);
    }
    return {};
}

void TellEnd(CTeller& teller)
{
    const LogLine* pListed = teller.Find("GetSAContentsList", " set the contents list data");
    if (!teller.m_stCase.bAccepted) return;
    if (pListed == nullptr)
        teller.Say("the action shows no contents: the record's result list stays empty", nullptr);
    else if (teller.m_stCase.pInfo != nullptr)
        teller.Say(
            "the record's result list has " + Count(teller.m_stCase.pInfo->vSAContents.size(), "entry", "entries"),
            pListed);
}

}  // namespace

std::size_t KeptItems(const CTeller& teller)
{
    const std::vector<LogLine>& vLog = teller.m_stCase.vLog;
    return static_cast<std::size_t>(std::count_if(vLog.begin(), vLog.end(), IsKept));
}

void TellContents(CTeller& teller)
{
    const std::vector<std::vector<const LogLine*>> vItems = Items(teller);
    const Node contents = teller.Rsp().Member("tvcontent");
    for (std::size_t i = 0; i < vItems.size(); ++i) {
        const LogLine& stFirst = *vItems[i].front();
        const std::string strType = Is(stFirst, kReplyReader, "Type[") ? Behind(stFirst, "Type[") : "";
        const Node item = contents.Element(static_cast<Json::ArrayIndex>(i));
        teller.Begin("content " + std::to_string(i + 1) + " of " + std::to_string(vItems.size()) + ": " +
                         (strType.empty() ? std::string() : Shown(strType) + ' ') + Quoted(TitleOf(item, vItems[i])),
                     item.strPointer);
        TellItem(teller, vItems[i]);
    }
    teller.Begin("contents", "/rsp/tvcontent");
    const LogLine* pUnread = teller.Find(kReplyReader, "domain size >= 2");
    if (pUnread != nullptr)
        teller.Say("not read: a search hand-over carries the whole reply", pUnread);
    else if (!vItems.empty())
        TellEnd(teller);
}
