// Documents: the envelope of a reply, and to which parser each of its parts goes.
#include "CAParseJson.h"

#include <utility>

#include "CADataHandler.h"
#include "CAJson.h"
#include "CALog.h"
#include "CAReplyKeys.h"

using namespace CADataRepository;
using namespace CAReplyKeys;
using CAJson::Child;
using CAJson::Int;
using CAJson::Text;

namespace
{

constexpr char kReplyParser[] = "t_ParseSearchServer";

// What the library reads of "rsp".
struct ReplyParts {
    const Json::Value* pStat;
    const Json::Value* pErr;
    const Json::Value* pDomain;
    const Json::Value* pDialog;
    const Json::Value* pSentence;
    const Json::Value* pCommands;
    const Json::Value* pResponseInfo;
    const Json::Value* pDisplayControl;
    const Json::Value* pContents;
    const Json::Value* pNluInfo;
};

constexpr CAJson::PartKey<ReplyParts> kReplyParts[] = {
    {"stat", &ReplyParts::pStat},
    {"err", &ReplyParts::pErr},
    {"domain", &ReplyParts::pDomain},
    {"dialog", &ReplyParts::pDialog},
    {"system_sentence", &ReplyParts::pSentence},
    {"tvcontrol", &ReplyParts::pCommands},
    {"response_info", &ReplyParts::pResponseInfo},
    {"displaycontrol", &ReplyParts::pDisplayControl},
    {"tvcontent", &ReplyParts::pContents},
    {"nlu_info", &ReplyParts::pNluInfo},
};

// The dialog id is cleared by a reply without one, the sequence number is kept.
void StoreDialog(const Json::Value& dialog, _DialogOpen& stDialogOpen)
{
    Text(dialog, "dialog_id").swap(stDialogOpen.strDialogId);  // unlike an assignment it lets go of a long one
    const Json::Value& sequence = Child(dialog, "dialog_seq");
    if (!sequence.isInt()) return;
    CA_LOGD_AS(kReplyParser, "TAG_DIALOG TAG_DIALOG_SEQ");
    stDialogOpen.nDialogSeq = Int(sequence);
}

void StoreSystemSentence(const Json::Value& sentence, bool bNoDisplayControl, CCADataHandler& dataHandler)
{
    std::string strSentence;
    if (!CAJson::Take(sentence, strSentence)) return;
    CA_LOGD_AS(kReplyParser, "TAG_SYSTEM_SENTENCE");
    if (strSentence == "{Null}" || !bNoDisplayControl) return;
    CA_LOGD_AS(kReplyParser, "displaycontrol");  // there is none: the line says which test was passed
    dataHandler.SetSystemMessage(strSentence);
}

// The application shows a search hand-over from the raw reply itself. Both conditions must hold, although the log
// line says "or".
bool IsHandOver(CCADataHandler& dataHandler)
{
    const std::vector<_TVControl>& vTVControl = dataHandler.GetTVControl();
    if (dataHandler.GetDomain().size() < 2 || vTVControl.empty() || vTVControl.front().szAction != "display_content")
        return false;
    CA_LOGE_AS(kReplyParser, "domain size >= 2 or action is display_content");
    return true;
}

}  // namespace

bool CCAParsePacket::ParseData(E_CA_PARSE_JSON_STATUS t_eStatus, const std::string& t_szRawData, unsigned& nCount)
{
    CA_LOGE("t_eStatus:%d", t_eStatus);
    switch (t_eStatus) {
        case CA_PARSE_JSON_SEARCH_SERVER:
            return t_ParseSearchServer(t_szRawData, nCount);
        case CA_PARSE_JSON_SEARCH_SCHEMA:
            return t_ParseSearchSchema(t_szRawData);
    }
    CA_LOGE("other t_eStatus");
    return false;
}

bool CCAParsePacket::t_ParseSearchServer(const std::string& t_szRawData, unsigned& nCount)
{
    CA_LOGE("Start to parse search server data.");
    nCount = 0;
    Json::Value root;
    if (!CAJson::Parse(t_szRawData, root)) {
        CA_LOGE("json parse error");
        return false;
    }
    if (!root.isObject()) return false;
    Json::Value& rsp = root["rsp"];
    if (rsp.isNull()) return false;
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    CA_LOGD("TAG_RSP");
    return t_ParseReply(rsp, *pDataHandler, nCount);
}

bool CCAParsePacket::t_ParseReply(Json::Value& rsp, CCADataHandler& dataHandler, unsigned& nCount)
{
    const ReplyParts stParts = CAJson::Split(rsp, kReplyParts);
    if (t_IsErrorReply(*stParts.pStat, *stParts.pErr)) return false;

    if (!stParts.pDomain->isNull()) {
        CA_LOGD_AS(kReplyParser, "TAG_DOMAIN");
        t_ParseDomian(*stParts.pDomain);
    }
    StoreDialog(*stParts.pDialog, dataHandler.m_stDialogOpen);
    StoreSystemSentence(*stParts.pSentence, stParts.pDisplayControl->isNull(), dataHandler);
    if (!stParts.pCommands->isNull()) {
        CA_LOGD_AS(kReplyParser, "TAG_TVCONTROL");
        t_ParseTVControl(*stParts.pCommands);
    }
    if (!stParts.pResponseInfo->isNull()) {
        CA_LOGD_AS(kReplyParser, "TAG_RESPONSE_INFO");
        t_ParseResponseInfo(*stParts.pResponseInfo);
    }
    if (!stParts.pDisplayControl->isNull()) t_ParseDisplayControl(*stParts.pDisplayControl);
    if (!stParts.pContents->isNull()) {
        if (IsHandOver(dataHandler)) return true;
        t_ParseContents(rsp["tvcontent"], dataHandler, nCount);
    }
    if (!stParts.pNluInfo->isNull()) {
        CA_LOGE_AS(kReplyParser, "TAG_NLU_INFO");
        t_ParseNluInfo(*stParts.pNluInfo);
    }
    return true;
}

CCADataHandler* CCAParsePacket::t_GetStore(const char* szOperation)
{
    CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
    if (pDataHandler == nullptr) CA_LOGE_AS(szOperation, "pDataHandler is NULL");
    return pDataHandler;
}

bool CCAParsePacket::t_IsErrorReply(const Json::Value& stat, const Json::Value& err)
{
    const std::string strStat = Text(stat);
    CA_LOGE_AS(kReplyParser, "strCode:%s", strStat.c_str());
    std::string strCode;
    std::string strMessage;
    if (!t_IsErrorAnswer(kReplyParser, err, strStat, strCode, strMessage)) return false;
    if (strCode.empty()) CA_LOGE_AS(kReplyParser, "nErrCode:%d", Int(err, "code"));
    return true;
}

bool CCAParsePacket::t_IsErrorAnswer(const char* szOperation, const Json::Value& err, const std::string& strStat,
                                     std::string& strCode, std::string& strMessage)
{
    if (strStat != "fail") return false;
    strCode = Text(err, "code");
    strMessage = CAJson::AnyText(Child(err, "msg"));
    CA_LOGE_AS(szOperation, "errCode:%s, msg:%s", strCode.c_str(), strMessage.c_str());
    return true;
}

bool CCAParsePacket::t_ParseDomian(const Json::Value& domain)
{
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    std::vector<std::string> vDomain;
    CAJson::AppendTexts(domain, vDomain);
    pDataHandler->SetDomain(std::move(vDomain));
    return true;
}

bool CCAParsePacket::t_ParseNluInfo(const Json::Value& nlu)
{
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    const Json::Value& type = Child(nlu, "dialog_type");
    if (!type.isInt()) return true;
    CA_LOGD("TAG_DIALOG TAG_DIALOG_TYPE");
    pDataHandler->m_stDialogOpen.nDialogType = Int(type);
    return true;
}

void CCAParsePacket::t_ParseResponseInfo(const Json::Value& info)
{
    _ResponseInfo stResponseInfo;  // for the debugger: nothing else looks at it
    CAJson::Fill(info, kResponseInfoKeys, stResponseInfo);
}

int CCAParsePacket::t_GetTimeZoneDifferenceByStr(const std::string& strOffset)
{
    const auto at = [&strOffset](std::size_t n) { return n < strOffset.size() ? strOffset[n] : '\0'; };
    const auto pair = [&at](std::size_t n) {
        int nValue = 0;
        for (std::size_t i = n; i < n + 2 && at(i) >= '0' && at(i) <= '9'; ++i) nValue = nValue * 10 + (at(i) - '0');
        return nValue;
    };
    int nMinutes = pair(1) * 60 + pair(4);
    if (at(0) == '-') nMinutes = -nMinutes;
    CA_LOGE(" t_GetTimeZoneDifferenceByStr time : %s %d", strOffset.c_str(), nMinutes);
    return nMinutes;
}
