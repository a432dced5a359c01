// Commands and display control: "tvcontrol" and "displaycontrol".
#define CA_LOG_FILE "CAParseJson"  // all parsers log under the name of their class's file

#include "CAParseJson.h"

#include <utility>

#include "CADataHandler.h"
#include "CADataRepository/Vocabulary.h"
#include "CAJson.h"
#include "CALog.h"
#include "CAReplyKeys.h"
#include "CAStyledJson.h"

using namespace CADataRepository;
using namespace CAReplyKeys;
using namespace CAJson;

namespace
{

constexpr char kOperation[] = "t_ParseTVControl";

// Reads "keyword" or "website", with a line of each format for it.
void TakeLogged(const Json::Value& value, const char* szRead, const char* szStored, std::string& field)
{
    if (!Take(value, field)) return;
    CA_LOG_FORMATTED(CALog::kDebugPriority, kOperation, szRead, field.c_str());
    CA_LOG_FORMATTED(CALog::kDebugPriority, kOperation, szStored, field.c_str());
}

void ParseCommandParam(CCAParsePacket& parser, const Json::Value& param, _TVControl& stTVCtl)
{
    const Json::Value& keyword = Child(param, "keyword");
    const Json::Value& website = Child(param, "website");
    CA_LOGD_AS(kOperation, "keyword is string[%d], website is string:[%d]", keyword.isString(), website.isString());
    Take(param, kParamKeys, stTVCtl);
    // The server marks a position by "index" and writes it under "idx".
    if (Child(param, "index").isInt()) stTVCtl.nIndex = Int(param, "idx");
    TakeLogged(keyword, CA_LOGD_FORMAT("jPrm[i][TAG_KEYWORD].asString():[%s]"),
               CA_LOGD_FORMAT("stTVCtl.szKeyword:[%s]"), stTVCtl.szKeyword);
    TakeLogged(website, CA_LOGD_FORMAT("jPrm[i][TAG_WEBSITE].asString():[%s]"),
               CA_LOGD_FORMAT("stTVCtl.szWebsite:[%s]"), stTVCtl.szWebsite);
    if (const Json::Value& names = Child(param, "names"); !names.isNull()) {
        stTVCtl.vNames.clear();
        AppendAnyTexts(names, stTVCtl.vNames);
    }
    parser.t_ParseChannelTVControl(Child(param, "channels"), stTVCtl.vChannels);
    parser.t_ParseUSChannelTVControl(Child(param, "umd_channels"), stTVCtl.vChannels);
}

void ParseCommandParams(CCAParsePacket& parser, const Json::Value& params, _TVControl& stTVCtl)
{
    CA_LOGD_AS(kOperation, "jPrm[%s]", CAStyledJson::Styled(params).c_str());
    int nIndex = 0;
    for (const Json::Value& param : Elements(params)) {
        CA_LOGD_AS(kOperation, "jPrm[%d][%s]", nIndex++, CAStyledJson::Styled(param).c_str());
        ParseCommandParam(parser, param, stTVCtl);
    }
}

}  // namespace

bool CCAParsePacket::t_ParseTVControl(const Json::Value& tvcontrol)
{
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    for (const Json::Value& command : Elements(tvcontrol)) {
        _TVControl stTVCtl;
        stTVCtl.szAction = Text(command, "action");
        stTVCtl.szIntent = Text(command, "intent");
        CA_LOGE("szAction:[%s], szIntent:%s", stTVCtl.szAction.c_str(), stTVCtl.szIntent.c_str());
        const Json::Value& params = Child(command, "params");
        if (!params.isNull()) ParseCommandParams(*this, params, stTVCtl);
        CA_LOGD("stTVCtl:website[%s], keyword:[%s]", stTVCtl.szWebsite.c_str(), stTVCtl.szKeyword.c_str());
        pDataHandler->SetTVControl(std::move(stTVCtl));
    }
    return true;
}

void CCAParsePacket::t_ParseChannelTVControl(const Json::Value& channels, std::vector<_Channels>& list)
{
    AppendRecords(channels, kChannelKeys, list);
}

void CCAParsePacket::t_ParseUSChannelTVControl(const Json::Value& umdChannels, std::vector<_Channels>& list)
{
    for (const Json::Value& element : Elements(umdChannels)) {
        _Channels& stChannel = list.emplace_back();
        stChannel.bUMDChannel = true;
        t_ParseUSChannelUMDChannel(Child(element, "umd_channel"), stChannel.stUMDChannel);
        const _UMD_Channel& stUMD = stChannel.stUMDChannel;
        stChannel.szNumber = stUMD.szChannelNumber;
        stChannel.szName = stUMD.szChannelName;
        stChannel.szSourceID = stUMD.szSourceID;
        stChannel.szType = stUMD.szAttributes.find("Analog") != std::string::npos ? "A" : "H";
    }
}

void CCAParsePacket::t_ParseUSChannelUMDChannel(const Json::Value& umdChannel, _UMD_Channel& channel)
{
    Fill(umdChannel, kUMDChannelKeys, channel);
}

bool CCAParsePacket::t_ParseDisplayControl(const Json::Value& displaycontrol)
{
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    CA_LOGE("jvalue type:%d, size:%d", displaycontrol.type(), static_cast<int>(displaycontrol.size()));
    for (const Json::Value& request : Elements(displaycontrol)) {
        CA_LOGD("disobj type is %d", request.type());
        if (!request.isObject()) continue;
        _DisplayControlInfo stInfo;
        LookUp(kDisplayActionWords, Text(request, "action"), stInfo.nAction);
        const Json::Value& params = Child(request, "params");
        if (!params.isNull()) CA_LOGD(" disparam type is %d", params.type());
        for (const Json::Value& param : Elements(params)) Take(param, kDisplayItemKeys, stInfo.vItems.emplace_back());
        stInfo.numberOfItem = static_cast<int>(stInfo.vItems.size());
        pDataHandler->SetDisplayControlResult(std::move(stInfo));
    }
    return true;
}
