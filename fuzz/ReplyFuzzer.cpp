// Several replies in one service life, through the entry points. Input: a line of settings (SetPlatform), then the
// replies.
#include "FuzzInput.h"
#include "parlo-api.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    std::string_view szInput = Fuzz::Input(pData, nSize);
    Fuzz::SetPlatform(Fuzz::TakeLine(szInput));
    Fuzz::Require(ca_initial_service("fuzz"));
    const int nStatus = ca_get_conv_status();
    Fuzz::Require(nStatus == 0 || nStatus == 4 || nStatus == 6);

    while (!szInput.empty()) {
        std::string strReply = Fuzz::TakeDocument(szInput);
        CADataRepository::_ConvActionInfo info;
        const bool bSucceeded = ca_get_speech_action("find a film", strReply, info);
        Fuzz::Require(bSucceeded || (info.eActionType == 0 && info.strAction.empty() && info.vDomain.empty()));
    }

    // Whatever came before: a command works, and the one after it is alone in the store.
    std::string strCommand = R"({"rsp":{"domain":["tvcontrol"],"tvcontrol":[{"action":"volumeup"}]}})";
    for (const bool bAlone : {false, true}) {
        CADataRepository::_ConvActionInfo info;
        Fuzz::Require(ca_get_speech_action("louder", strCommand, info));
        Fuzz::Require(!bAlone || info.eSystemAction == E_CA_TVCONTROL_VOLUMEUP);
    }
    ca_uninitial();
    return 0;
}
