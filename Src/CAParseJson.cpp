// Documents: the envelope of a reply, and to which parser each of its parts goes.
#define CA_LOG_FILE "CAParseJson"

#include "CAParseJson.h"

#include <utility>

#include "CADataHandler.h"
#include "CAJson.h"
#include "CALog.h"
#include "CAReplyKeys.h"

using namespace CADataRepository;
using namespace CAReplyKeys;
using namespace CAJson;

namespace
{

constexpr char kReplyParser[] = "t_ParseSearchServer";

// The dialog id is cleared by a reply without one, the sequence number is kept.
void StoreDialog(const Json::Value& dialog, _DialogOpen& stDialogOpen)
{
    Text(dialog, "dialog_id").swap(stDialogOpen.strDialogId);  // unlike an assignment it lets go of a long one
    if (!Take(Child(dialog, "dialog_seq"), stDialogOpen.nDialogSeq)) return;
    CA_LOGD_AS(kReplyParser, "TAG_DIALOG TAG_DIALOG_SEQ");
}

void StoreSystemSentence(const Json::Value& sentence, bool bNoDisplayControl, CCADataHandler& dataHandler)
{
    std::string strSentence;
    if (!Take(sentence, strSentence)) return;
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
    const Json::Value& rsp = Child(root, "rsp");
    if (rsp.isNull()) return false;
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    CA_LOGD("TAG_RSP");
    return t_ParseReply(rsp, *pDataHandler, nCount);
}

bool CCAParsePacket::t_ParseReply(const Json::Value& rsp, CCADataHandler& dataHandler, unsigned& nCount)
{
    const std::string strStat = Text(rsp, "stat");
    CA_LOGE_AS(kReplyParser, "strCode:%s", strStat.c_str());
    if (strStat == "fail") {
        const Json::Value& err = Child(rsp, "err");
        if (t_LogError(kReplyParser, err).first.empty()) CA_LOGE_AS(kReplyParser, "nErrCode:%d", Int(err, "code"));
        return false;
    }

    if (const Json::Value& domain = Child(rsp, "domain"); !domain.isNull()) {
        CA_LOGD_AS(kReplyParser, "TAG_DOMAIN");
        t_ParseDomian(domain);
    }
    StoreDialog(Child(rsp, "dialog"), dataHandler.m_stDialogOpen);
    const Json::Value& displaycontrol = Child(rsp, "displaycontrol");
    StoreSystemSentence(Child(rsp, "system_sentence"), displaycontrol.isNull(), dataHandler);
    if (const Json::Value& tvcontrol = Child(rsp, "tvcontrol"); !tvcontrol.isNull()) {
        CA_LOGD_AS(kReplyParser, "TAG_TVCONTROL");
        t_ParseTVControl(tvcontrol);
    }
    if (const Json::Value& info = Child(rsp, "response_info"); !info.isNull()) {
        CA_LOGD_AS(kReplyParser, "TAG_RESPONSE_INFO");
        t_ParseResponseInfo(info);
    }
    if (!displaycontrol.isNull()) t_ParseDisplayControl(displaycontrol);
    if (const Json::Value& tvcontent = Child(rsp, "tvcontent"); !tvcontent.isNull()) {
        if (IsHandOver(dataHandler)) return true;
        t_ParseContents(tvcontent, dataHandler, nCount);
    }
    if (const Json::Value& nlu = Child(rsp, "nlu_info"); !nlu.isNull()) {
        CA_LOGE_AS(kReplyParser, "TAG_NLU_INFO");
        t_ParseNluInfo(nlu);
    }
    return true;
}

CCADataHandler* CCAParsePacket::t_GetStore(const char* szOperation)
{
    CCADataHandler* pDataHandler = CCADataHandler::GetInstance();
    if (pDataHandler == nullptr) CA_LOGE_AS(szOperation, "pDataHandler is NULL");
    return pDataHandler;
}

std::pair<std::string, std::string> CCAParsePacket::t_LogError(const char* szOperation, const Json::Value& err)
{
    std::pair<std::string, std::string> error(Text(err, "code"), AnyText(Child(err, "msg")));
    CA_LOGE_AS(szOperation, "errCode:%s, msg:%s", error.first.c_str(), error.second.c_str());
    return error;
}

bool CCAParsePacket::t_ParseDomian(const Json::Value& domain)
{
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    std::vector<std::string> vDomain;
    AppendTexts(domain, vDomain);
    pDataHandler->SetDomain(std::move(vDomain));
    return true;
}

bool CCAParsePacket::t_ParseNluInfo(const Json::Value& nlu)
{
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    if (Take(Child(nlu, "dialog_type"), pDataHandler->m_stDialogOpen.nDialogType))
        CA_LOGD("TAG_DIALOG TAG_DIALOG_TYPE");
    return true;
}

void CCAParsePacket::t_ParseResponseInfo(const Json::Value& info)
{
    _ResponseInfo stResponseInfo;  // for the debugger: nothing else looks at it
    Fill(info, kResponseInfoKeys, stResponseInfo);
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
