// The TV control commands and display control requests of a reply ("tvcontrol", "displaycontrol").
#ifndef PARLO_CADATAREPOSITORY_TVCONTROL_H
#define PARLO_CADATAREPOSITORY_TVCONTROL_H

#include <string>
#include <vector>

#include "Enumerations.h"

namespace CADataRepository
{

// The channel of an element of "umd_channels": its object "umd_channel".
struct _UMD_Channel {
    std::string szLineupID;       // from "lineup_id"
    std::string szChannelID;      // from "channel_id"
    std::string szChannelNumber;  // from "channel_number"
    std::string szChannelName;    // from "channel_name"
    std::string szAttributes;     // from "attributes"; "Analog" anywhere in it makes the channel analogue
    std::string szSourceID;       // unfilled
    int nSourceIndex = -1;        // unfilled
    std::string szNetwork;        // unfilled
    std::string szRegion;         // unfilled
};

// One channel that a command names: an element of its "channels" or of its "umd_channels". The library looks for
// "Analog" in the attributes and passes everything else on unread: what a text says is between server and application.
struct _Channels {
    int nMajor = 0;            // from "major"; 0 when absent
    int nMinor = 0;            // from "minor"; 0 when absent
    int nPTC = -1;             // from "ptc"; 0 when absent, also of an element that fills nothing; -1 of "umd_channels"
    bool bUMDChannel = false;  // true for an element of "umd_channels"
    std::string szDTV;         // from "dtv"
    std::string szNumber;      // from "number", or the UMD channel's "channel_number"
    std::string szName;        // from "name", or the UMD channel's "channel_name"
    std::string szONID;        // from "onid": original network
    std::string szTSID;        // from "tsid": transport stream
    std::string szSID;         // from "sid": service
    std::string szFreq;        // from "freq", as the server writes it
    std::string szSourceID;    // from "source_id"; empty for a channel of "umd_channels"
    std::string szType;        // from "type"; for a channel of "umd_channels" "A" (analogue) or "H"
    _UMD_Channel stUMDChannel;  // from "umd_channel"
};

// One command: an element of "tvcontrol". All objects of its "params" feed this one record, a later one
// overwriting what an earlier one set. A number is -1 when absent, unless its line says otherwise. What no action takes
// (Vocabulary.h) does not reach the application: "play_speed", "listorder", "direction", "type", "prevnext" and
// "target_status". Of the rest the library reads "action" and "intent", and passes on the others unread.
struct _TVControl {
    int nAmount = -1;            // from "amount": volume or channel steps, or the volume to set; any int
    int nIndex = -1;             // from "idx", counted from 0; 0 when absent beside an integer "index", else unread
    int nPlaySpeed = -1;         // from "play_speed"
    int nListOrder = -1;         // from "listorder"
    int nTime = -1;              // from "time", in the unit that the server uses (sleep timer: minutes)
    std::string szDirection;     // from "direction"
    std::string szGBFunction;    // from "gb_function"
    std::string szAction;        // from "action" of the command, then of "params"; see Vocabulary.h
    std::string szIntent;        // from "intent" of the command; see Vocabulary.h
    std::string szType;          // from "type"
    std::string szPrevNext;      // from "prevnext"
    std::string szTargetDevice;  // from "target_device"
    std::string szTargetStatus;  // from "target_status"
    std::string szColorkey;      // from "colorkey"
    std::string szChannelNo;     // from "channel_no"
    std::string szKeyword;       // from "keyword"
    std::string szWebsite;       // from "website"
    std::vector<std::string> vNames;   // from "names"; the last "names" replaces an earlier one
    std::vector<_Channels> vChannels;  // from "channels" and then "umd_channels" of each object of "params"
};

// The channel of a broadcast programme ("channel" of a content item).
struct _ChannelInfo {
    std::vector<std::string> vSourceID;  // the texts of "source_id"
    std::string szName;                  // from "name"
};

// One entry that a display control request concerns: an object of its "params".
struct _DisplayControlItemData {
    int nIndex = -1;      // from "index": its position in the list on screen, counted from 0
    std::string szTitle;  // from "title"
};

// One display control request: an element of "displaycontrol".
struct _DisplayControlInfo {
    bool bSet = false;                            // unfilled; the store keeps a flag of its own
    int numberOfItem = 0;                         // entries in vItems
    int nAction = E_CA_DISPLAY_ACTION_NONE;       // from "action"; see E_CA_DISPLAY_ACTION
    std::vector<_DisplayControlItemData> vItems;  // from "params"
};

}  // namespace CADataRepository

#endif
