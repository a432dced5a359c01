// Turns the server's action and intent words into codes, and a command into its code and parameters.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "CADataRepository/Enumerations.h"
#include "CADataRepository/TVControl.h"

// The service owns one and fills it once; from then on it is read-only and needs no lock.
// Every query returns a code, 0 when it does not apply to the command.
class __attribute__((visibility("default"))) CCASystemActionMap
{
public:
    CCASystemActionMap() = default;
    virtual ~CCASystemActionMap() = default;

    // Fill the two dictionaries. Before that every word is unknown.
    void InitializeMap();
    void InitializeActionIntentMap();

    // The code of the command's intent word.
    int GetActionIntent(const CADataRepository::_TVControl& stTVControl) const;

    // The code of the command's action word if it may follow another command.
    int Get2ndAction(const CADataRepository::_TVControl& stTVControl) const;

    // The action and its parameters, from the command's single values. Appends to `params`.
    int GetSystemAction(const CADataRepository::_TVControl& stTVControl, std::vector<std::string>& params) const;

    // The action and its names to choose from. Replaces `candidates` if it applies.
    E_CA_TVCONTROL GetSystemActionCandidate(const CADataRepository::_TVControl& stTVControl,
                                            std::vector<std::string>& candidates) const;

    // The action and its channels. Replaces `channels` if it applies.
    E_CA_TVCONTROL GetSystemActionChannel(const CADataRepository::_TVControl& stTVControl,
                                          std::vector<CADataRepository::_Channels>& channels) const;

private:
    int t_FindAction(const char* szOperation, const std::string& strAction) const;

    std::map<std::string, E_CA_TVCONTROL> m_mapSystemAction;
    std::map<std::string, E_CA_TVCONTROL_INTENT> m_mapActionIntent;
};
