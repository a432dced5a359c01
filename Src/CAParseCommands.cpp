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
using CAJson::Child;
using CAJson::Elements;
using CAJson::Has;
using CAJson::Int;
using CAJson::Text;

namespace
{

constexpr char kOperation[] = "t_ParseTVControl";

// What the library reads of a command.
struct CommandParts {
    const Json::Value* pAction;
    const Json::Value* pIntent;
    const Json::Value* pParams;
};

constexpr CAJson::PartKey<CommandParts> kCommandParts[] = {
    {"action", &CommandParts::pAction},
    {"intent", &CommandParts::pIntent},
    {"params", &CommandParts::pParams},
};

// What of an object in "params" does not plainly fill a field.
struct ParamParts {
    const Json::Value* pIndex;
    const Json::Value* pIdx;
    const Json::Value* pKeyword;
    const Json::Value* pWebsite;
    const Json::Value* pNames;
    const Json::Value* pChannels;
    const Json::Value* pUMDChannels;
};

constexpr CAJson::PartKey<ParamParts> kParamParts[] = {
    {"index", &ParamParts::pIndex},
    {"idx", &ParamParts::pIdx},
    {"keyword", &ParamParts::pKeyword},
    {"website", &ParamParts::pWebsite},
    {"names", &ParamParts::pNames},
    {"channels", &ParamParts::pChannels},
    {"umd_channels", &ParamParts::pUMDChannels},
};

void TakeKeyword(const Json::Value& keyword, _TVControl& stTVCtl)
{
    if (!CAJson::Take(keyword, stTVCtl.szKeyword)) return;
    CA_LOGD_AS(kOperation, "jPrm[i][TAG_KEYWORD].asString():[%s]", stTVCtl.szKeyword.c_str());
    CA_LOGD_AS(kOperation, "stTVCtl.szKeyword:[%s]", stTVCtl.szKeyword.c_str());
}

void TakeWebsite(const Json::Value& website, _TVControl& stTVCtl)
{
    if (!CAJson::Take(website, stTVCtl.szWebsite)) return;
    CA_LOGD_AS(kOperation, "jPrm[i][TAG_WEBSITE].asString():[%s]", stTVCtl.szWebsite.c_str());
    CA_LOGD_AS(kOperation, "stTVCtl.szWebsite:[%s]", stTVCtl.szWebsite.c_str());
}

void ParseCommandParam(CCAParsePacket& parser, const Json::Value& param, _TVControl& stTVCtl)
{
    const ParamParts stParts = CAJson::SplitAndTake(param, kParamParts, kParamKeys, stTVCtl);
    CA_LOGD_AS(kOperation, "keyword is string[%d], website is string:[%d]", stParts.pKeyword->isString(),
               stParts.pWebsite->isString());
    // The server marks a position by "index" and writes it under "idx".
    if (stParts.pIndex->isInt()) stTVCtl.nIndex = Int(*stParts.pIdx);
    TakeKeyword(*stParts.pKeyword, stTVCtl);
    TakeWebsite(*stParts.pWebsite, stTVCtl);
    if (!stParts.pNames->isNull()) {
        stTVCtl.vNames.clear();
        CAJson::AppendAnyTexts(*stParts.pNames, stTVCtl.vNames);
    }
    parser.t_ParseChannelTVControl(*stParts.pChannels, stTVCtl.vChannels);
    parser.t_ParseUSChannelTVControl(*stParts.pUMDChannels, stTVCtl.vChannels);
}

// Logs and reads a command's "params". What the log shows of them comes out of `nLogBudget`.
void ParseCommandParams(CCAParsePacket& parser, const Json::Value& params, std::size_t& nLogBudget, _TVControl& stTVCtl)
{
    const std::string strParams = CAStyledJson::Styled(params, nLogBudget);
    CA_LOGD_AS(kOperation, "jPrm[%s]", strParams.c_str());
    CAStyledJson::CElementTexts texts(params, strParams);
    int nIndex = 0;
    for (const Json::Value& param : Elements(params)) {
        CA_LOGD_AS(kOperation, "jPrm[%d][%s]", nIndex++, texts.Next(param, nLogBudget).c_str());
        ParseCommandParam(parser, param, stTVCtl);
    }
}

}  // namespace

bool CCAParsePacket::t_ParseTVControl(const Json::Value& tvcontrol)
{
    CCADataHandler* pDataHandler = t_GetStore(__func__);
    if (pDataHandler == nullptr) return false;
    std::size_t nLogBudget = std::size_t{16} << 20;
    for (const Json::Value& command : Elements(tvcontrol)) {
        _TVControl stTVCtl;
        const CommandParts stParts = CAJson::Split(command, kCommandParts);
        CAJson::Take(*stParts.pAction, stTVCtl.szAction);
        CAJson::Take(*stParts.pIntent, stTVCtl.szIntent);
        CA_LOGE("szAction:[%s], szIntent:%s", stTVCtl.szAction.c_str(), stTVCtl.szIntent.c_str());
        if (!stParts.pParams->isNull()) ParseCommandParams(*this, *stParts.pParams, nLogBudget, stTVCtl);
        CA_LOGD("stTVCtl:website[%s], keyword:[%s]", stTVCtl.szWebsite.c_str(), stTVCtl.szKeyword.c_str());
        pDataHandler->SetTVControl(std::move(stTVCtl));
    }
    return true;
}

void CCAParsePacket::t_ParseChannelTVControl(const Json::Value& channels, std::vector<_Channels>& list)
{
    CAJson::AppendRecords(channels, kChannelKeys, list);
}

void CCAParsePacket::t_ParseUSChannelTVControl(const Json::Value& umdChannels, std::vector<_Channels>& list)
{
    for (const Json::Value& element : Elements(umdChannels)) {
        _Channels& stChannel = list.emplace_back();
        stChannel.bUMDChannel = true;
        if (Has(element, "umd_channel"))
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
    CAJson::Fill(umdChannel, kUMDChannelKeys, channel);
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
        for (const Json::Value& param : Elements(params))
            CAJson::Take(param, kDisplayItemKeys, stInfo.vItems.emplace_back());
        stInfo.numberOfItem = static_cast<int>(stInfo.vItems.size());
        pDataHandler->SetDisplayControlResult(std::move(stInfo));
    }
    return true;
}
