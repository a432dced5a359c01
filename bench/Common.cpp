#include "Common.h"

#include <json/reader.h>

#include <cstdarg>
#include <cstdio>
#include <stdexcept>

#include "ca_platform.h"
#include "parlo-api.h"

bool Bench::g_bFormatLog = false;

int __dlog_print(int /*priority*/, const char* /*tag*/, const char* format, ...)
{
    if (!Bench::g_bFormatLog) return 0;
    static char buffer[4096];
    va_list args;
    va_start(args, format);
    const int nLength = std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    return nLength;
}

namespace
{

// "head" + nCount elements of the shape that `make` gives + "tail".
template <typename Make>
std::string Repeat(const std::string& strHead, int nCount, Make make, const std::string& strTail)
{
    std::string strText = strHead;
    for (int i = 0; i < nCount; ++i) strText += (i == 0 ? "" : ",\n") + make(std::to_string(i));
    return strText + strTail;
}

std::string Movie(const std::string& strNumber)
{
    return R"({"type": "movie", "id": "mv-)" + strNumber + R"(", "title": "The Voyage Home, Part )" + strNumber +
           R"(", "year": 2014, "duration": 7260, "cert_flag": "Yes",
 "poster": {"images": {"url": "http://img.example.com/posters/)" +
           strNumber +
           R"(/%d.jpg", "type": "vertical", "index": [55, 56, 57]}},
 "certifications": [{"cert-system": "MPAA", "certification": "PG-13"}],
 "genres": [{"id": "g1", "name": "Science fiction"}, {"id": "g7", "name": "Adventure"}]})";
}

std::string Channel(const std::string& strNumber)
{
    return R"({"major": )" + strNumber + R"(, "minor": 1, "ptc": 30, "dtv": "T", "number": ")" + strNumber +
           R"(-1", "name": "Channel )" + strNumber + R"(", "onid": "8442", "tsid": "4100", "sid": ")" + strNumber +
           R"(", "freq": "506000", "source_id": "src-)" + strNumber + R"(", "type": "D"})";
}

std::string Head(const std::string& strDomains, const std::string& strAction)
{
    return R"({"rsp": {"stat": "ok", "domain": [)" + strDomains +
           R"(], "dialog": {"dialog_id": "d-81723", "dialog_seq": 3},
 "system_sentence": "Here is what I found.", "tvcontrol": [{"action": ")" +
           strAction + R"(", "intent": "search_title", "params": [)";
}

constexpr char kTail[] = R"(],
 "response_info": {"engine_time": "12", "server_time": "2026-01-01T20:15:00"}, "nlu_info": {"dialog_type": 1}}})";

}  // namespace

std::string Bench::SingleCommand()
{
    return Head(R"("tvcontrol")", "volumeup") + R"({"amount": 3}]})" + kTail;
}

std::string Bench::SearchHandOver(int nItems)
{
    return Repeat(Head(R"("tvcontrol", "search")", "display_content") + R"({}]}], "tvcontent": [)", nItems, Movie,
                  kTail);
}

std::string Bench::Contents(int nItems)
{
    return Repeat(Head(R"("search")", "display_candidates") + R"({"names": ["movies"]}]}], "tvcontent": [)", nItems,
                  Movie, kTail);
}

std::string Bench::Channels(int nChannels)
{
    return Repeat(Head(R"("tvcontrol")", "set_channel") + R"({"channels": [)", nChannels, Channel,
                  std::string("]}]}") + kTail);
}

void Bench::BareParse(const std::string& strReply)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // as the library calls it
    Json::Value root;
    const char* const pBegin = strReply.data();
    if (!Json::Reader().parse(pBegin, pBegin + strReply.size(), root, true))
        throw std::runtime_error("a benchmark's reply is not JSON");
#pragma GCC diagnostic pop
}

void Bench::Call(std::string& strReply, CADataRepository::_ConvActionInfo& info)
{
    if (!ca_get_speech_action("show me something", strReply, info))
        throw std::runtime_error("a benchmark's reply is refused");
}

Bench::Service::Service()
{
    if (!ca_initial_service("bench")) throw std::runtime_error("no service");
}

Bench::Service::~Service()
{
    ca_uninitial();
}
