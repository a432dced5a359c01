// A small voice application: reads one reply of the voice server, and does what the television is to do next.
//
//     voice-app UTTERANCE REPLY-FILE
#include <parlo-api.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

using CADataRepository::_ConvActionInfo;

// The action's first parameter; empty when the reply did not bring it.
static std::string Parameter(const _ConvActionInfo& info)
{
    return info.vSystemActionParam.empty() ? std::string() : info.vSystemActionParam.front();
}

// "volume up 5", one step when the viewer named no amount.
static std::string Volume(const char* szWay, const _ConvActionInfo& info)
{
    const std::string strAmount = Parameter(info);
    return std::string("volume ") + szWay + " " + (strAmount.empty() ? "1" : strAmount);
}

// Positions count from 0, viewers from 1.
static std::string Play(const _ConvActionInfo& info)
{
    const std::size_t nPosition = std::strtoul(Parameter(info).c_str(), nullptr, 10);
    if (nPosition >= info.vSAContents.size()) return "say that there is no such result";
    return "play result " + std::to_string(nPosition + 1) + ", " + info.vSAContents[nPosition].stItem.GetPrintString();
}

static std::string WhatToDo(const _ConvActionInfo& info)
{
    if (info.eActionType == E_CA_ACTION_TYPE_NO_MATCH) return "ask again: " + info.strAction + " means nothing here";
    if (info.strAction == "display_content") return "show a search for " + Parameter(info);
    if (info.strAction == "search_failed") return "start a search of our own";
    switch (info.eSystemAction) {
        case E_CA_TVCONTROL_POWEROFF:
            return "power off";
        case E_CA_TVCONTROL_VOLUMEUP:
            return Volume("up", info);
        case E_CA_TVCONTROL_VOLUMEDOWN:
            return Volume("down", info);
        case E_CA_TVCONTROL_SET_CHANNEL:
            return "offer " + std::to_string(info.vChannels.size()) + " channels";
        case E_CA_TVCONTROL_PLAY_CONTENT:
            return Play(info);
        case E_CA_TVCONTROL_DISPLAY_CANDIDATES:
            return "let the viewer choose among " + std::to_string(info.vCandidates.size()) + " names";
        default:
            return "do action " + std::to_string(info.eSystemAction);
    }
}

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: voice-app UTTERANCE REPLY-FILE\n";
        return 2;
    }
    std::ifstream file(argv[2], std::ios::binary);
    std::string strReply(std::istreambuf_iterator<char>(file), {});

    if (!ca_initial_service("voice-app")) {
        std::cerr << "the service does not start\n";
        return 1;
    }
    if (ca_get_conv_status() != E_CA_CONV_STATUS_AVAILABLE) std::cout << "note: conversation is not offered here\n";

    _ConvActionInfo info;  // a fresh one for each reply
    const bool bUsable = ca_get_speech_action(argv[1], strReply, info);
    if (bUsable) std::cout << WhatToDo(info) << '\n';
    if (!info.strSysResponse.empty()) std::cout << "say: " << info.strSysResponse << '\n';
    if (!bUsable) std::cerr << "the reply cannot be used; the platform log says why\n";
    ca_uninitial();
    return bUsable ? 0 : 1;
}
