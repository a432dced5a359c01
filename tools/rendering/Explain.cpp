// Brings the reply's commands and items together with the log lines that they left.
#include "rendering/Explain.h"

#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include "findings/ReplyShape.h"
#include "reading/Input.h"
#include "rendering/Render.h"

namespace
{

using namespace CADataRepository;

constexpr const char* kReader = "t_ParseSearchServer";

struct Lookup {
    const char* szFunction;
    const char* szName;
};

constexpr Lookup kLookups[] = {
    {"GetSystemAction", "system action"},
    {"GetSystemActionChannel", "channel"},
    {"GetSystemActionCandidate", "candidate"},
};

// The lines of one call, in order.
class CLog
{
public:
    explicit CLog(const std::vector<LogLine>& vLines) : m_vLines(vLines) {}

    // The first line of `szFunction` that begins with `szStart`; null when there is none.
    const LogLine* Find(std::string_view szFunction, std::string_view szStart) const
    {
        return FindFrom(0, szFunction, szStart);
    }
    const LogLine* FindLast(std::string_view szFunction, std::string_view szStart) const;

    // The same behind the last line that Next found: for what leaves a line each time.
    const LogLine* Next(std::string_view szFunction, std::string_view szStart);

    // The line behind the last one that Next found; null at the end. Skip goes past it.
    const LogLine* Peek() const { return m_nNext < m_vLines.size() ? &m_vLines[m_nNext] : nullptr; }
    void Skip() { ++m_nNext; }

private:
    const LogLine* FindFrom(std::size_t n, std::string_view szFunction, std::string_view szStart) const;

    const std::vector<LogLine>& m_vLines;
    std::size_t m_nNext = 0;
};

bool Is(const LogLine& stLine, std::string_view szFunction, std::string_view szStart)
{
    return stLine.strFunction == szFunction && stLine.strMessage.compare(0, szStart.size(), szStart) == 0;
}

const LogLine* CLog::FindFrom(std::size_t n, std::string_view szFunction, std::string_view szStart) const
{
    for (; n < m_vLines.size(); ++n)
        if (Is(m_vLines[n], szFunction, szStart)) return &m_vLines[n];
    return nullptr;
}

const LogLine* CLog::FindLast(std::string_view szFunction, std::string_view szStart) const
{
    const LogLine* pLast = nullptr;
    for (const LogLine& stLine : m_vLines)
        if (Is(stLine, szFunction, szStart)) pLast = &stLine;
    return pLast;
}

const LogLine* CLog::Next(std::string_view szFunction, std::string_view szStart)
{
    const LogLine* pLine = FindFrom(m_nNext, szFunction, szStart);
    if (pLine != nullptr) m_nNext = static_cast<std::size_t>(pLine - m_vLines.data()) + 1;
    return pLine;
}

// The number at the end of a line such as "eControl = 12".
int NumberOf(const LogLine& stLine)
{
    const std::size_t nStart = stLine.strMessage.find_last_not_of("-0123456789") + 1;
    return static_cast<int>(std::strtol(stLine.strMessage.c_str() + nStart, nullptr, 10));
}

std::string TextOf(const Json::Value& value)
{
    return value.isString() ? value.asString() : std::string();
}

// The action word that counts: the last one that the command or its "params" give.
std::string ActionOf(const Json::Value& command)
{
    std::string strAction = TextOf(Child(command, "action"));
    const Json::Value& params = Child(command, "params");
    if (!params.isArray()) return strAction;
    for (const Json::Value& param : params)
        if (Child(param, "action").isString()) strAction = TextOf(Child(param, "action"));
    return strAction;
}

class CExplanation
{
public:
    CExplanation(const Case& stCase, const Json::Value& rsp, const CPaint& paint);
    std::string Text() &&;

private:
    template <typename Body>
    void Section(const std::string& strTitle, const Body& body);
    void Say(const std::string& strText, const LogLine* pLine);
    void SayAll(const std::vector<std::string>& vTexts, const LogLine* pLine);

    void Refusal();
    void Sentence();
    void Command(Json::ArrayIndex n, Json::ArrayIndex nCount);
    void FirstCommand();
    void Lookups();
    void Payload();
    void LaterCommand(Json::ArrayIndex n, Json::ArrayIndex nCount);
    void SecondAction();
    void Requests();
    void Request(const Json::Value& request, const std::string& strName, bool bLast);
    void Contents();
    void Item(const Json::Value& item);
    void KnownItem(const LogLine& stType);
    void Poster(const LogLine& stLine);
    void ContentsEnd();

    const Case& m_stCase;
    const Json::Value& m_rsp;
    const CPaint& m_paint;
    CLog m_log;
    const LogLine* m_pHandOver;      // the line that says that this is a search hand-over
    const LogLine* m_pFailedSearch;  // the line that says that this is a failed search
    const LogLine* m_pRequest;       // the line that says that a display control request reached the record
    bool m_bFollowUps;               // whether the first command made the library look at a second one
    int m_nWantedPoster = -1;        // the poster size that suits the set; -1 when none is preferred
    std::string m_strText;
};

CExplanation::CExplanation(const Case& stCase, const Json::Value& rsp, const CPaint& paint)
    : m_stCase(stCase),
      m_rsp(rsp),
      m_paint(paint),
      m_log(stCase.vLog),
      m_pHandOver(m_log.Find("t_IsContentsSearchAction", "Show search result")),
      m_pFailedSearch(m_log.Find("t_IsContentsSearchAction", "search_failed will goto search")),
      m_pRequest(m_log.Find("t_SetSpeechInfo", "nAction:")),
      m_bFollowUps(m_log.Find("t_Get2ndAction", "2ndeAction is ") != nullptr)
{
}

std::string CExplanation::Text() &&
{
    Section("refused", [this] { Refusal(); });
    if (m_log.Find(kReader, "TAG_RSP") == nullptr || m_log.Find(kReader, "errCode:") != nullptr)
        return std::move(m_strText);

    Section("envelope", [this] { SayAll(IgnoredInEnvelope(m_rsp), nullptr); });
    Section("sentence", [this] { Sentence(); });
    const Json::Value& commands = Child(m_rsp, "tvcontrol");
    const Json::ArrayIndex nCount = commands.isArray() ? commands.size() : 0;
    for (Json::ArrayIndex i = 0; i < nCount; ++i)
        Section(
            "command " + std::to_string(i + 1) + " of " + std::to_string(nCount) + ": " + Quoted(ActionOf(commands[i])),
            [&] { Command(i, nCount); });
    Section("display control", [this] { Requests(); });
    Contents();
    return std::move(m_strText);
}

// A title and what `body` says; nothing when it says nothing.
template <typename Body>
void CExplanation::Section(const std::string& strTitle, const Body& body)
{
    const std::size_t nStart = m_strText.size();
    body();
    if (m_strText.size() > nStart) m_strText.insert(nStart, "  " + m_paint.Label(strTitle) + '\n');
}

void CExplanation::Say(const std::string& strText, const LogLine* pLine)
{
    m_strText += "    " + strText + '\n';
    if (pLine != nullptr) m_strText += "      " + m_paint.Faint("log: " + Shown(pLine->strLine)) + '\n';
}

// Statements that rest on one line, which follows the last of them.
void CExplanation::SayAll(const std::vector<std::string>& vTexts, const LogLine* pLine)
{
    for (const std::string& strText : vTexts) Say(strText, &strText == &vTexts.back() ? pLine : nullptr);
}

void CExplanation::Refusal()
{
    if (m_stCase.bAccepted) return;
    const LogLine stLine{m_stCase.strRefusalLine, {}, {}};
    Say(m_stCase.strRefusal, stLine.strLine.empty() ? nullptr : &stLine);
}

void CExplanation::Sentence()
{
    const Json::Value& sentence = Child(m_rsp, "system_sentence");
    if (!sentence.isString()) return;  // a wrong type is the envelope's finding
    const LogLine* pFound = m_log.Find(kReader, "TAG_SYSTEM_SENTENCE");
    const LogLine* pStored = m_log.Find(kReader, "displaycontrol");
    if (pStored == nullptr && TextOf(sentence) == "{Null}")
        Say("\"{Null}\" stands for no sentence: not stored", pFound);
    else if (pStored == nullptr)
        Say("not stored: there is a \"displaycontrol\" beside it", pFound);
    else if (m_pHandOver != nullptr)
        Say("stored, then emptied by the search hand-over",
            m_log.Find("GetSpeechActionData", "content list for search"));
    else
        Say("stored: " + Quoted(TextOf(sentence)), m_log.Find("GetSpeechActionData", "strSysResponse:"));
}

void CExplanation::Command(Json::ArrayIndex n, Json::ArrayIndex nCount)
{
    const Json::Value& command = Child(m_rsp, "tvcontrol")[n];
    SayAll(IgnoredInCommand(command), m_log.Next("t_ParseTVControl", "szAction:["));
    const Json::Value& params = Child(command, "params");
    for (Json::ArrayIndex i = 0; params.isArray() && i < params.size(); ++i) {
        const std::string strIndex = '[' + std::to_string(i) + ']';
        const LogLine* pLine = m_log.Next("t_ParseTVControl", "jPrm" + strIndex + '[');
        SayAll(IgnoredInCommandParam(params[i], "params" + strIndex), pLine);
    }
    if (!m_stCase.bAccepted) return;
    if (n == 0)
        FirstCommand();
    else
        LaterCommand(n, nCount);
}

void CExplanation::FirstCommand()
{
    if (m_pHandOver != nullptr)
        return Say(
            "two or more domains and display_content: a search hand-over, no lookup; the record gets the "
            "utterance and the whole reply",
            m_pHandOver);
    if (m_pFailedSearch != nullptr)
        return Say(
            "the one domain tvcontrol and search_failed: a failed search, no lookup; the record gets the "
            "action word and the sentence",
            m_pFailedSearch);
    Lookups();
    Payload();
}

void CExplanation::Lookups()
{
    const LogLine* pWord = m_log.Find(kLookups[0].szFunction, "eControl = ");
    if (pWord != nullptr && NumberOf(*pWord) == 0) return Say("unknown word: no lookup knows it, code 0", pWord);
    for (const Lookup& stLookup : kLookups) {
        const LogLine* pResult = m_log.Find(stLookup.szFunction, "eControl:");
        if (pResult == nullptr) return;
        const int nCode = NumberOf(*pResult);
        const std::string strLookup = std::string("the ") + stLookup.szName + " lookup ";
        if (nCode == 0)
            Say(strLookup + "has no answer for it", pResult);
        else if (nCode == E_CA_TVCONTROL_PLAY_CONTENT_NO_INDEX)
            Say(strLookup + "answers: code " + std::to_string(nCode) + ", there is no position", pResult);
        else
            Say(strLookup + "answers: code " + std::to_string(nCode), pResult);
    }
}

// What the answer brought along, and what it lacked.
void CExplanation::Payload()
{
    const _ConvActionInfo& info = *m_stCase.pInfo;
    std::vector<std::string> vParams;
    for (const std::string& strParam : info.vSystemActionParam) vParams.push_back(Quoted(strParam));
    const LogLine* pValue = m_log.Find(kLookups[0].szFunction, "stTVControl.");
    if (!vParams.empty()) Say("parameters: " + Joined(vParams), pValue);
    const LogLine* pAbsent = m_log.Find("itoa", " ERROR - nInput:");
    if (pAbsent != nullptr) Say("a number is absent: its parameter is empty", pAbsent);
    if (!info.vChannels.empty()) Say(Count(info.vChannels.size(), "channel", "channels") + " in the record", nullptr);
    if (!info.vCandidates.empty())
        Say(Count(info.vCandidates.size(), "candidate", "candidates") + " in the record", nullptr);
    const LogLine* pNoIntent = m_log.Find("t_GetActionIntent", "tv control error");
    if (pNoIntent != nullptr) Say("no intent is looked up: that takes two or three commands", pNoIntent);
    if (info.eActionType == E_CA_ACTION_TYPE_NO_MATCH)
        Say("the record's kind is no match", m_log.Find("t_SetSpeechInfo", "No one match"));
}

void CExplanation::LaterCommand(Json::ArrayIndex n, Json::ArrayIndex nCount)
{
    const bool bSecond = n == 1 && m_log.Find("Get2ndAction", "eControl = ") != nullptr;
    const LogLine* pIntent = n + 1 == nCount ? m_log.Find("t_GetActionIntent", "eActionIntent is ") : nullptr;
    if (bSecond) SecondAction();
    if (pIntent != nullptr && NumberOf(*pIntent) != 0)
        Say("the intent lookup answers: code " + std::to_string(NumberOf(*pIntent)), pIntent);
    else if (pIntent != nullptr)
        Say("its intent is absent or an unknown word: code 0", pIntent);
    if (bSecond || pIntent != nullptr) return;
    Say(m_bFollowUps ? "not looked at: only a second command is, and with candidates the last intent of two or three"
                     : "not looked at: only channels or candidates of the first command ask for a second one",
        nullptr);
}

void CExplanation::SecondAction()
{
    const LogLine* pWord = m_log.Find("Get2ndAction", "eControl = ");
    const LogLine* pResult = m_log.FindLast("Get2ndAction", "eControl = ");
    if (NumberOf(*pResult) != 0)
        Say("the second action lookup answers: code " + std::to_string(NumberOf(*pResult)), pResult);
    else if (NumberOf(*pWord) != 0)
        Say("code " + std::to_string(NumberOf(*pWord)) + " cannot be a second action: ignored", pWord);
    else
        Say("unknown word: no second action", pWord);
}

void CExplanation::Requests()
{
    const Json::Value& requests = Child(m_rsp, "displaycontrol");
    const LogLine* pLine = m_log.Next("t_ParseDisplayControl", "jvalue type:");
    if (requests.isNull() || pLine == nullptr) return;
    if (!requests.isArray()) return Say(std::string("it is ") + KindInWords(requests) + ", not a list: ignored", pLine);
    Json::ArrayIndex nLast = requests.size();
    for (Json::ArrayIndex i = 0; i < requests.size(); ++i)
        if (requests[i].isObject()) nLast = i;
    for (Json::ArrayIndex i = 0; i < requests.size(); ++i)
        Request(requests[i], "request " + std::to_string(i + 1), i == nLast);
}

void CExplanation::Request(const Json::Value& request, const std::string& strName, bool bLast)
{
    const LogLine* pType = m_log.Next("t_ParseDisplayControl", "disobj type is ");
    if (!request.isObject()) return Say(strName + " is " + KindInWords(request) + ", not an object: skipped", pType);
    SayAll(IgnoredInRequest(request), pType);
    const LogLine* pStored = m_log.Next("SetDisplayControlResult", "");
    const std::string strAction = TextOf(Child(request, "action"));
    const bool bKnown = CodeOf(kDisplayActionWords, strAction, E_CA_DISPLAY_ACTION_NONE) != E_CA_DISPLAY_ACTION_NONE;
    const std::string strWhat = strName + ": " + Quoted(strAction) + (bKnown ? "" : ", an unknown word, code -1");
    if (!bLast)
        Say(strWhat + "; a later request replaces it: ignored", pStored);
    else if (m_pRequest != nullptr)
        Say(strWhat + "; it is in the record", m_pRequest);
    else
        Say(strWhat + "; it does not reach the record", pStored);
}

void CExplanation::Contents()
{
    const Json::Value& contents = Child(m_rsp, "tvcontent");
    if (contents.isNull()) return;
    const LogLine* pUnread = m_log.Find(kReader, "domain size >= 2");
    if (pUnread != nullptr)
        return Section("contents", [&] { Say("not read: a search hand-over carries the whole reply", pUnread); });
    for (Json::ArrayIndex i = 0; contents.isArray() && i < contents.size(); ++i) {
        const Json::Value& item = contents[i];
        const Json::Value& title =
            Child(item, "title").isString() ? Child(item, "title") : Child(Child(item, "app_info"), "title");
        Section("content " + std::to_string(i + 1) + " of " + std::to_string(contents.size()) + ": " +
                    TextOf(Child(item, "type")) + ' ' + Quoted(TextOf(title)),
                [&] { Item(item); });
    }
    Section("contents", [this] { ContentsEnd(); });
}

void CExplanation::Item(const Json::Value& item)
{
    const bool bTyped = Child(item, "type").isString();
    const LogLine* pType = m_log.Next(kReader, bTyped ? "Type[" : " __FAIL__");
    if (pType == nullptr) return;
    SayAll(IgnoredInItem(item), pType);
    const LogLine* pNext = m_log.Peek();
    if (!bTyped) return Say("it has no type: dropped", pType);
    if (pNext != nullptr && Is(*pNext, kReader, " __FAIL__")) return m_log.Skip(), Say("unknown type: dropped", pNext);
    KnownItem(*pType);
}

void CExplanation::KnownItem(const LogLine& stType)
{
    const LogLine* pOther = nullptr;
    m_nWantedPoster = -1;
    for (const LogLine* pLine = m_log.Peek(); pLine != nullptr; pLine = m_log.Peek()) {
        if (Is(*pLine, kReader, "Type[") || Is(*pLine, kReader, " __FAIL__")) break;
        m_log.Skip();
        Poster(*pLine);
        if (Is(*pLine, "t_CheckPermit", "Other type")) pOther = pLine;
        if (!Is(*pLine, "t_CheckPermit", " t_CheckPlay")) continue;
        if (pOther != nullptr) return Say("refused: items of this type are not offered", pOther);
        const bool bPermitted = pLine->strMessage.find("return 1###") != std::string::npos;
        return Say(bPermitted ? "kept" : "refused: not cleared under the adult lock", pLine);
    }
    Say("dropped: an app without an id", &stType);
}

void CExplanation::Poster(const LogLine& stLine)
{
    constexpr const char* kPoster = "t_ParsePoster";
    if (Is(stLine, kPoster, "####t_ParsePoster::nTmpIndex:")) m_nWantedPoster = NumberOf(stLine);
    if (Is(stLine, kPoster, " the poster template is not usable"))
        Say("the poster's address is no template that can be filled: taken as it is", &stLine);
    if (Is(stLine, kPoster, " the server's ontv type url is error"))
        Say("the poster's address had a doubled slash: one taken out", &stLine);
    if (!Is(stLine, kPoster, "####t_ParsePoster::nIndex:") || NumberOf(stLine) == m_nWantedPoster) return;
    const int nTaken = NumberOf(stLine);
    const std::string strTaken = nTaken == 0 ? ": size 0 taken, as no size stands first in its list"
                                             : ": size " + std::to_string(nTaken) + " taken, the first one offered";
    if (m_nWantedPoster < 0)
        Say("the poster has no preferred size for this type" + strTaken, &stLine);
    else
        Say("the poster is not offered in size " + std::to_string(m_nWantedPoster) + strTaken, &stLine);
}

void CExplanation::ContentsEnd()
{
    const std::size_t nResults = m_stCase.pInfo->vSAContents.size();
    const LogLine* pListed = m_log.Find("GetSAContentsList", " set the contents list data");
    if (!m_stCase.bAccepted)
        Say("what was kept stays for the next reply, as this one is refused", nullptr);
    else if (pListed != nullptr)
        Say("the record's result list has " + Count(nResults, "entry", "entries"), pListed);
    else
        Say("the action shows no contents: the record's result list stays empty", nullptr);
}

}  // namespace

std::string Explain(const Case& stCase, const CPaint& paint)
{
    Json::Value root;
    if (!ParseJson(stCase.stReply.strText, false, root)) root = Json::Value();
    return Heading(stCase.stReply, paint) + CExplanation(stCase, Child(root, "rsp"), paint).Text();
}
