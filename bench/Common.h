// What the benchmarks share: replies of the sizes that matter, the bare parse that all figures are ratios to, and a
// platform whose log either drops or formats its lines.
#pragma once

#include <string>

#include "CADataRepository.h"

namespace Bench
{

// Replies of one command with as many content items or channels as asked for.
std::string SingleCommand();
std::string SearchHandOver(int nItems);
std::string Contents(int nItems);
std::string Channels(int nChannels);

// What the library cannot do without: Json::Reader::parse of the text, which is not copied for it. The document is gone
// when it returns.
void BareParse(const std::string& strReply);

// The call that is compared with it. The names of the two are those that callgrind is told.
void Call(std::string& strReply, CADataRepository::_ConvActionInfo& info);

// Whether the platform's log formats each line, as a set does, or drops it.
extern bool g_bFormatLog;

// A service for as long as it lives.
struct Service {
    Service();
    ~Service();
};

}  // namespace Bench
