// A long life of the library: replies of mixed kinds in one service life, and whether memory stays what it was.
//
//   parlo-soak [COUNT]    at least COUNT replies (default 1000000), in whole rounds of the kinds below
//
// Prints the resident memory and the heap in use after the first thousand replies and at the end. The exit status is
// 1 when the heap in use has grown by more than a page in between, or a reply was not answered as its kind is.
#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

#include "parlo-api.h"

namespace
{

constexpr long kSettled = 1000;         // replies after which nothing should grow any more
constexpr std::size_t kAllowed = 4096;  // bytes of growth that are put down to the C library

// "#" is replaced by a text whose length differs from round to round.
struct Kind {
    bool bAnswered;  // what ca_get_speech_action returns
    const char* szReply;
};

constexpr Kind kRound[] = {
    // Commands, alone and with parameters.
    {true, R"({"rsp":{"stat":"ok","domain":["tvcontrol"],"dialog":{"dialog_id":"#","dialog_seq":1},
      "system_sentence":"Louder. #","tvcontrol":[{"action":"volumeup","params":[{"amount":5}]}],
      "response_info":{"engine_time":"184","query":"#"},"nlu_info":{"dialog_type":0}}})"},
    {true, R"({"rsp":{"domain":["tvcontrol"],"tvcontrol":[{"action":"run_webbrowser","params":[{"website":"http://#",
      "keyword":"#"}]},{"action":"go_back"}]}})"},
    {true, R"({"rsp":{"tvcontrol":[{"action":"no_such_action_#"}]}})"},
    // Channels and candidates.
    {true,
     R"({"rsp":{"domain":["tvcontrol"],"tvcontrol":[{"action":"set_channel","params":[{"channels":[{"number":"11-1",
      "name":"#","major":11,"minor":1,"ptc":38,"source_id":"#"}],"umd_channels":[{"umd_channel":{"channel_number":"13",
      "channel_name":"#","attributes":"Analog"}}]}]},{"action":"channelup"}]}})"},
    {true,
     R"({"rsp":{"domain":["tvcontrol"],"tvcontrol":[{"action":"display_candidates","params":[{"names":["#","Ann #",
      7]}]},{"action":"display_cast"},{"intent":"search_title"}]}})"},
    // Content and information items.
    {true,
     R"({"rsp":{"domain":["movie"],"system_sentence":"#","tvcontrol":[{"action":"play_content","params":[{"index":1,
      "idx":2}]}],"tvcontent":[{"type":"movie","id":"#","title":"#","year":2011,"genres":[{"id":"1","name":"#"}],
      "certifications":[{"cert-system":"MPAA","certification":"PG"}],"poster":{"images":{"index":[55,57],
      "url":"http://h.example.com/#/%d.jpg"}}},{"type":"tvshow","id":"2","title":"#","episode":{"title":"#",
      "number":7}},{"type":"apps","app_info":{"id":"#","premium_flag":"ps","poster":{"images4premium":{"index":[58],
      "url":"http://h.example.com//#/%d.png"}}}},
      {"type":"weather","condition":"#","forecast_info":[{"date":"#","condition_icon":["#"]}]},
      {"type":"sports","records":[{"standing":[{"ranking":"#","text_color":true,"season_stats":["#",3]}]}]},
      {"type":"unknown"}]}})"},
    // A display control request, a hand-over, a failed search.
    {true,
     R"({"rsp":{"system_sentence":"#","tvcontrol":[{"action":"control_focus"}],"displaycontrol":[{"action":
      "play_content","params":[{"title":"#","index":0},{"title":"#"}]}]}})"},
    {true, R"({"rsp":{"domain":["movie","tv"],"system_sentence":"#","tvcontrol":[{"action":"display_content"}],
      "tvcontent":[{"type":"movie","title":"#"}]}})"},
    {true, R"({"rsp":{"domain":["tvcontrol"],"system_sentence":"#","tvcontrol":[{"action":"search_failed"}]}})"},
    // Content without a command: refused, and kept until the next success.
    {false, R"({"rsp":{"domain":["#"],"system_sentence":"#","tvcontent":[{"type":"movie","title":"#"}]}})"},
    // Error replies, nothing, garbage.
    {false, R"({"rsp":{"stat":"fail","err":{"code":"E#","msg":"#"}}})"},
    {false, R"({"rsp":{"stat":"fail","err":{"code":404,"msg":{}}}})"},
    {false, R"({"rsp":{}})"},
    {false, R"({"other":"#"})"},
    {false, ""},
    {false, "#"},
    {false, R"({"rsp":{"tvcontrol":[{"action":"volumeup","params":[{"keyword":"#)"},
    {false, R"({"rsp":[1,{"stat":5}],"x":"\ud800"})"},
    // Wrong types all the way, with comments, and a command behind them that works.
    {true,
     R"(/* # */ {"rsp":{"domain":{},"dialog":[1],"system_sentence":3,"tvcontrol":[5,{"action":{},"params":[{"names":{},
      "channels":[1,[]],"umd_channels":[null]}]},{"params":{"amount":"#"}}],"displaycontrol":{},"tvcontent":[[],
      {"type":"movie","poster":[],"genres":[1]},{"type":"apps","app_info":"#"}],"nlu_info":"#"}} // #)"},
    {true,
     R"({"rsp":{"dialog":{"dialog_id":"end of the round"},"system_sentence":"done","tvcontrol":[
      {"action":"muteon"}]}})"},
};
constexpr long kRoundLength = sizeof kRound / sizeof *kRound;
static_assert(kSettled % kRoundLength == 0, "the memory is looked at between two rounds");

std::string Reply(const char* szReply, const std::string& strText)
{
    std::string strReply = szReply;
    for (std::size_t n = strReply.find('#'); n != std::string::npos; n = strReply.find('#', n + strText.size()))
        strReply.replace(n, 1, strText);
    return strReply;
}

// One round. Returns how many replies were answered otherwise than their kind is.
long PlayRound(long nRound)
{
    const std::string strText(static_cast<std::size_t>(nRound * 7 % 64), static_cast<char>('a' + nRound % 26));
    long nWrong = 0;
    for (const Kind& kind : kRound) {
        std::string strReply = Reply(kind.szReply, strText);
        CADataRepository::_ConvActionInfo info;
        if (ca_get_speech_action("utterance " + strText, strReply, info) != kind.bAnswered) ++nWrong;
    }
    ca_get_conv_status();
    return nWrong;
}

std::size_t HeapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

std::size_t Resident()
{
    std::size_t nTotalPages = 0;
    std::size_t nPages = 0;
    std::ifstream("/proc/self/statm") >> nTotalPages >> nPages;
    return nPages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::size_t Report(long nReplies)
{
    const std::size_t nHeap = HeapInUse();
    std::printf("after %8ld replies: resident %8zu KiB, heap in use %8zu bytes\n", nReplies, Resident() / 1024, nHeap);
    return nHeap;
}

}  // namespace

int main(int argc, char* argv[])
{
    const long nCount = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 1000000;
    std::setvbuf(stdout, nullptr, _IONBF, 0);  // its buffer would count as heap
    ca_initial_service("soak");
    long nWrong = 0;
    long nReplies = 0;
    std::size_t nSettledHeap = 0;
    for (long nRound = 0; nReplies < nCount || nReplies < kSettled; ++nRound) {
        nWrong += PlayRound(nRound);
        nReplies += kRoundLength;
        if (nReplies == kSettled) nSettledHeap = Report(nReplies);
    }
    const std::size_t nHeap = Report(nReplies);
    ca_uninitial();

    const double fSeconds = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    std::printf("%ld not answered as expected, %.1f s of processor time\n", nWrong, fSeconds);
    if (nHeap > nSettledHeap + kAllowed) std::printf("the heap in use has grown\n");
    return nWrong == 0 && nHeap <= nSettledHeap + kAllowed ? 0 : 1;
}
