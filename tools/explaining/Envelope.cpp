// The sentence, the display control, and what goes from one reply to the next.
#include "explaining/Teller.h"
#include "text/Text.h"

namespace
{

using namespace CADataRepository;

constexpr const char* kSentence = "strSysResponse:[";

// Whether the log has the lines at debug priority that tell what a reply held. Without them nothing can be said of what
// it did not hold.
bool IsWholeLog(const CTeller& teller)
{
    return teller.Find(kReplyReader, "TAG_RSP") != nullptr;
}

// `pRecord`: the line that says that it is in the record; null: it is not, or another one is.
void TellRequest(CTeller& teller, const std::string& strName, const Node& request, bool bLast, const LogLine* pStored,
                 const LogLine* pRecord)
{
    const std::string strAction = request.Member("action").Text();
    const std::string strWhat = request.value.isObject() ? strName + ": " + Quoted(strAction) : strName;
    if (bLast && pRecord != nullptr) return teller.Say(strWhat + "; it is in the record", pRecord);
    teller.Say(strWhat + (!bLast                      ? "; a later request replaces it: ignored"
                          : teller.m_stCase.bAccepted ? "; it does not reach the record"
                                                      : "; it is kept"),
               pStored);
}

}  // namespace

void TellSentence(CTeller& teller)
{
    teller.Begin("sentence", "/rsp/system_sentence");
    const LogLine* pFound = teller.Find(kReplyReader, "TAG_SYSTEM_SENTENCE");
    if (pFound == nullptr) return;
    const LogLine* pStored = teller.Find(kReplyReader, "displaycontrol");
    const LogLine* pSaid = teller.Find("GetSpeechActionData", kSentence);
    const bool bBeside = teller.Find("t_ParseDisplayControl", "jvalue type:") != nullptr;
    const LogLine* pHandOver = teller.Find("GetSpeechActionData", "content list for search");
    if (pStored == nullptr)
        return teller.Say(bBeside ? "not stored: there is a \"displaycontrol\" beside it"
                                  : "\"{Null}\" stands for no sentence: not stored",
                          pFound);
    if (pHandOver != nullptr) return teller.Say("stored, then emptied by the search hand-over", pHandOver);
    if (pSaid != nullptr) teller.Say("stored: " + Quoted(Behind(*pSaid, kSentence)), pSaid);
}

void TellRequests(CTeller& teller)
{
    teller.Begin("display control", "/rsp/displaycontrol");
    const Node requests = teller.Rsp().Member("displaycontrol");
    const std::vector<const LogLine*> vTypes = teller.FindAll("t_ParseDisplayControl", "disobj type is ");
    const std::vector<const LogLine*> vStored = teller.FindAll("SetDisplayControlResult", "");
    const LogLine* pRecord = teller.Find("t_SetSpeechInfo", "nAction:");
    std::size_t nStored = 0;
    for (std::size_t i = 0; i < vTypes.size(); ++i) {
        const std::string strName = "request " + std::to_string(i + 1);
        if (NumberOf(*vTypes[i]) != Json::objectValue) {
            teller.Say(strName + " is no object: skipped", vTypes[i]);
            continue;
        }
        if (nStored == vStored.size()) return;
        TellRequest(teller, strName, requests.Element(static_cast<Json::ArrayIndex>(i)), nStored + 1 == vStored.size(),
                    vStored[nStored], pRecord);
        ++nStored;
    }
}

// Of what is in the record, that which this reply did not bring.
void TellBefore(CTeller& teller)
{
    if (!IsWholeLog(teller) || !teller.m_stCase.bAccepted) return;
    const auto Older = [&teller](const char* szFunction, const char* szStart, const char* szOwner, const char* szOwn) {
        return teller.Find(szOwner, szOwn) != nullptr ? nullptr : teller.Find(szFunction, szStart);
    };
    teller.Begin("from an earlier reply", "");
    const LogLine* pSentence = Older("GetSpeechActionData", kSentence, kReplyReader, "displaycontrol");
    const std::string strSentence = pSentence == nullptr ? std::string() : Behind(*pSentence, kSentence);
    if (!strSentence.empty()) teller.Say("the sentence " + Quoted(strSentence), pSentence);
    teller.SayIf(Older("t_IsContentsSearchAction", "domain[", kReplyReader, "TAG_DOMAIN"), "the domains");
    const std::vector<const LogLine*> vCommands = teller.FindAll("t_IsContentsSearchAction", "szAction[");
    const std::size_t nOwn = teller.FindAll("t_ParseTVControl", "szAction:[").size();
    if (vCommands.size() > nOwn)
        teller.Say(Count(vCommands.size() - nOwn, "command", "commands") + ", before this reply's own", vCommands[0]);
    teller.SayIf(Older("t_SetSpeechInfo", "nAction:", "SetDisplayControlResult", ""), "the display control request");
    const _ConvActionInfo* pInfo = teller.m_stCase.pInfo;
    if (pInfo == nullptr) return;
    const std::size_t nKept = KeptItems(teller);
    if (pInfo->vSAContents.size() > nKept)
        teller.Say(Count(pInfo->vSAContents.size() - nKept, "entry", "entries") + " of the result list",
                   teller.Find("GetSAContentsList", " set the contents list data"));
    if (pInfo->nDialogSeq != -1 && teller.Find(kReplyReader, "TAG_DIALOG TAG_DIALOG_SEQ") == nullptr)
        teller.Say("the dialog's sequence number " + std::to_string(pInfo->nDialogSeq), nullptr);
    if (pInfo->nDialogType != -1 && teller.Find("t_ParseNluInfo", "TAG_DIALOG TAG_DIALOG_TYPE") == nullptr)
        teller.Say("the dialog's type " + std::to_string(pInfo->nDialogType), nullptr);
}

// A refused reply whose parts were read leaves them.
void TellLeft(CTeller& teller)
{
    if (!IsWholeLog(teller) || teller.m_stCase.bAccepted || teller.Find(kReplyReader, "errCode:") != nullptr) return;
    teller.Begin("what it leaves for the next reply", "");
    const struct {
        const char* szFunction;
        const char* szStart;
        const char* szText;
    } kParts[] = {{kReplyReader, "displaycontrol", "the sentence"},
                  {kReplyReader, "TAG_DOMAIN", "the domains"},
                  {kReplyReader, "TAG_DIALOG TAG_DIALOG_SEQ", "the dialog's sequence number"},
                  {"t_ParseNluInfo", "TAG_DIALOG TAG_DIALOG_TYPE", "the dialog's type"},
                  {"SetDisplayControlResult", "", "the display control request"},
                  {"t_ParseTVControl", "szAction:[", "the commands"}};
    for (const auto& [szFunction, szStart, szText] : kParts) teller.SayIf(teller.FindLast(szFunction, szStart), szText);
    if (const std::size_t nKept = KeptItems(teller); nKept > 0)
        teller.Say(Count(nKept, "content item", "content items"), teller.FindLast("t_CheckPermit", " t_CheckPlay"));
}
