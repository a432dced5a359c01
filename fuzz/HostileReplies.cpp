// What a reply made to hurt costs: time and memory of ca_get_speech_action for each of the shapes below.
//
//   parlo-hostile [KIB [SHAPE...]]    replies of KIB kibibytes (default 96), the shapes named or all of them
//   parlo-hostile limits              what memory each shape may take
//
// Every shape runs in processes of its own, at half the size and at the full one. "times" is how much longer the full
// one takes in processor time; "peak" is the resident memory of the process at its largest, less that of a process
// whose reply is short; "per byte" is that divided by the length of one reply. The log is on and every line is
// formatted. Replies without a command are handed over several times in one service life.
//
// The exit status is 1, with a line that says why, when a process did not end by itself, when twice the length takes
// more than kMostTimes as long, or when the memory is beyond the shape's limit.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <string_view>

#include "FuzzInput.h"
#include "parlo-api.h"

namespace
{

// A reply is `szBegin`, `szUnit` as often as it fits, `szEnd`. "#" in the unit is replaced by a running number, "<" by
// kDepth opening and ">" by kDepth closing brackets of a list, "(" and ")" by those of an object.
struct Shape {
    const char* szName;
    int nMostPerByte;  // the resident memory that it may take, in bytes for each byte of one reply
    const char* szBegin;
    const char* szUnit;
    const char* szEnd;
    bool bInARow = false;  // has no command: what it leaves waits for a reply that has one
};

#define IN_RSP(szKey) "{\"rsp\":{\"tvcontrol\":[{\"action\":\"play_content\"}],\"" szKey "\":["
#define IN_PARAMS(szAction, szKey) "{\"rsp\":{\"tvcontrol\":[{\"action\":\"" szAction "\",\"params\":[{\"" szKey "\":["

#define IN_PARAM_TEXT "{\"rsp\":{\"tvcontrol\":[{\"action\":\"login\",\"params\":[{\"x\":\""

constexpr Shape kShapes[] = {
    {"text", 10, "{\"rsp\":{\"system_sentence\":\"", "x", "\"}}"},
    {"escapes", 10, "{\"rsp\":{\"system_sentence\":\"", "\\u20ac", "\"}}"},
    {"blanks", 10, "{\"rsp\":{", " ", "}}"},
    {"digits", 10, "{\"rsp\":{\"x\":", "7", "}}"},
    {"integers", 64, IN_RSP("x"), "0,", "0]}}"},
    {"reals", 64, IN_RSP("x"), "0.1,", "0]}}"},
    {"lists", 64, IN_RSP("x"), "[],", "0]}}"},
    {"objects", 64, IN_RSP("x"), "{},", "0]}}"},
    {"same-key", 10, "{\"rsp\":{", "\"a\":0,", "\"a\":0}}"},
    {"keys", 20, "{\"rsp\":{", "\"#\":0,", "\"a\":0}}"},
    {"keys-alike", 10, "{\"rsp\":{", "\"a-long-beginning-that-all-of-the-keys-have-in-common-#\":0,", "\"a\":0}}"},
    {"deep-lists", 100, IN_RSP("x"), "<>,", "0]}}"},
    {"deep-objects", 64, IN_RSP("x"), "(),", "0]}}"},
    {"too-deep-objects", 10, "{\"rsp\":", "{\"x\":", "}"},
    {"too-deep", 10, "{\"rsp\":", "[", "}"},
    {"not-closed", 10, "{\"rsp\":{\"x\":[", "[0,", ""},
    {"not-json", 10, "{\"rsp\":[", "}", "]}"},
    {"comments-line", 10, IN_RSP("x"), "//\n", "0]}}"},
    {"comments-before", 10, IN_RSP("x"), "/**/", "0]}}"},
    {"comments-behind", 10, IN_RSP("x") "0", "/**/", "]}}"},
    {"comments-each", 20, IN_RSP("x"), "0/**/,", "0]}}"},
    {"comment-long", 10, IN_RSP("x") "0/*", "x", "*/]}}"},
    {"comments-commas", 10, "{\"rsp\":{\"a\":0", "//\n\"b\":0", "}}"},
    {"comments-scalar", 10, "1e5", "/**/", ""},
    {"comments-slash", 10, "{\"a\":1,/\"\" } \"", "/**/", "\"}"},
    {"comments-recovered", 10, "{\"rsp\":1,}1", "/**/", ""},
    {"hidden-values", 10, "{\"rsp\":{\"a\":1/**//\"\"k\":[", "0,", "0]/*\"*/}}"},
    {"hidden-comments", 10, "{\"rsp\":{\"a\":1/**//\"\"k\":[0", "/**/", "]/*\"*/}}"},
    {"hidden-levels", 10, "{\"rsp\":{\"a\":1/**//\"\"k\":", "[", "/*\"*/}}"},
    {"commands", 400, IN_RSP("x") "],\"tvcontrol\":[", "0,", "0]}}"},
    {"params", 64, "{\"rsp\":{\"tvcontrol\":[{\"action\":\"login\",\"params\":[", "0,", "0]}]}}"},
    {"params-deep", 240, "{\"rsp\":{\"tvcontrol\":[{\"action\":\"login\",\"params\":[", "<>,", "0]}]}}"},
    {"params-wide-deep", 400, "{\"rsp\":{\"tvcontrol\":[{\"action\":\"login\",\"params\":[<", "0,", "0>]}]}}"},
    {"params-objects", 100, "{\"rsp\":{\"tvcontrol\":[{\"action\":\"login\",\"params\":[", "(),", "0]}]}}"},
    {"params-control", 64, IN_PARAM_TEXT, "\x01", "\"}]}]}}"},
    {"params-escaped", 10, IN_PARAM_TEXT, "\\u0001", "\"}]}]}}"},
    {"params-not-utf8", 64, IN_PARAM_TEXT, "\xFF", "\"}]}]}}"},
    {"params-utf8", 20, IN_PARAM_TEXT, "\xE2\x82\xAC", "\"}]}]}}"},
    {"params-keys", 64, IN_PARAMS("login", "x"), "{\"\x01\x02\xFF\":0},", "0]}]}]}}"},
    {"commands-deep", 100, "{\"rsp\":{\"tvcontrol\":[", "{\"params\":[<>]},", "0]}}"},
    {"names", 100, IN_PARAMS("display_channel", "names"), "0,", "0]}]}]}}"},
    {"channels", 640, IN_PARAMS("set_channel", "channels"), "0,", "0]}]}]}}"},
    {"umd-channels", 640, IN_PARAMS("set_channel", "umd_channels"), "0,", "0]}]}]}}"},
    {"domains", 64, IN_RSP("domain"), "\"\",", "0]}}"},
    {"display-requests", 64, IN_RSP("displaycontrol"), "{},", "0]}}"},
    {"display-items", 100, IN_RSP("displaycontrol") "{\"params\":[", "0,", "0]}]}}"},
    {"content-unknown", 64, IN_RSP("tvcontent"), "0,", "0]}}"},
    {"content-movies", 1000, IN_RSP("tvcontent"), "{\"type\":\"movie\"},", "0]}}"},
    {"content-apps", 1000, IN_RSP("tvcontent"), "{\"type\":\"app\"},", "0]}}"},
    {"no-command-apps", 400, "{\"rsp\":{\"tvcontent\":[", "{\"type\":\"app\"},", "0]}}", true},
    {"no-command-movies", 400, "{\"rsp\":{\"tvcontent\":[", "{\"type\":\"movie\"},", "0]}}", true},
    {"no-command-title", 20, "{\"rsp\":{\"tvcontent\":[{\"type\":\"movie\",\"title\":\"", "x", "\"}]}}", true},
    {"no-command-genres", 400, "{\"rsp\":{\"tvcontent\":[{\"type\":\"movie\",\"genres\":[", "0,", "0]}]}}", true},
    {"no-command-display", 180, "{\"rsp\":{\"displaycontrol\":[{\"params\":[", "0,", "0]}]}}", true},
    {"genres", 130, IN_RSP("tvcontent") "{\"type\":\"movie\",\"genres\":[", "0,", "0]}]}}"},
    {"forecasts", 180, IN_RSP("tvcontent") "{\"type\":\"weather\",\"forecast_info\":[", "0,", "0]}]}}"},
    {"records", 400, IN_RSP("tvcontent") "{\"type\":\"sports\",\"records\":[", "0,", "0]}]}}"},
    {"standings", 180, IN_RSP("tvcontent") "{\"type\":\"sports\",\"records\":[{\"standing\":[", "0,", "0]}]}]}}"},
    {"poster-codes", 64, IN_RSP("tvcontent") "{\"type\":\"movie\",\"poster\":{\"images\":{\"index\":[", "0,",
     "0]}}}]}}"},
    {"poster-percents", 10, IN_RSP("tvcontent") "{\"type\":\"movie\",\"poster\":{\"images\":{\"index\":[0],\"url\":\"",
     "%%", "\"}}}]}}"},
    {"poster-slashes", 10, IN_RSP("tvcontent") "{\"type\":\"movie\",\"poster\":{\"images\":{\"index\":[0],\"url\":\"",
     "/", "\"}}}]}}"},
};

constexpr std::size_t kDepth = 120;     // as deep as the library reads, with what stands around it
constexpr int kReplies[] = {1, 3, 10};  // in a row
constexpr double kMostTimes = 2.4;
constexpr double kWaitingBytes =
    48 << 20;                            // of the memory, when several replies are in a row: what waits of older ones
constexpr double kSlackBytes = 1 << 20;  // of the memory: the allocator takes it in large pieces
constexpr double kShortSeconds = 0.05;   // of the time: not worth a comparison
constexpr int kMostRuns = 12;            // before a time is believed, since others use the processor too

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kJudgesCosts = false;  // they cost more than the reply
#else
constexpr bool kJudgesCosts = true;
#endif

void AppendTimes(std::string& strText, std::string_view szText)
{
    for (std::size_t i = 0; i < kDepth; ++i) strText += szText;
}

std::string Expand(const char* szText, unsigned nNumber)
{
    std::string strText;
    for (const char* p = szText; *p != '\0'; ++p) {
        switch (*p) {
            case '#':
                strText += std::to_string(nNumber);
                break;
            case '<':
                AppendTimes(strText, "[");
                break;
            case '>':
                AppendTimes(strText, "]");
                break;
            case '(':
                AppendTimes(strText, "{\"x\":");
                strText += '0';
                break;
            case ')':
                AppendTimes(strText, "}");
                break;
            default:
                strText += *p;
        }
    }
    return strText;
}

std::string Reply(const Shape& shape, std::size_t nSize)
{
    std::string strReply = Expand(shape.szBegin, 0);
    strReply.reserve(nSize + 8 * kDepth + 256);
    for (unsigned i = 0; strReply.size() < nSize; ++i) strReply += Expand(shape.szUnit, i);
    return strReply += Expand(shape.szEnd, 0);
}

double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

constexpr int kRefused = 3;  // how such a child exits

struct Cost {
    int nExit;  // negative: it was killed
    double fSeconds;
    double fPeakBytes;
};

// Handles such replies in a child. The child's own cost of making one is small beside that.
Cost Measure(const Shape& shape, std::size_t nSize, int nReplies)
{
    const pid_t nChild = fork();
    if (nChild == 0) {
        std::string strReply = Reply(shape, nSize);
        Fuzz::SetPlatform("US en_US 1");
        ca_initial_service("hostile");
        bool bSucceeded = false;
        for (int i = 0; i < nReplies; ++i) {
            CADataRepository::_ConvActionInfo info;
            bSucceeded = ca_get_speech_action("find a film", strReply, info);
        }
        _exit(bSucceeded ? 0 : kRefused);
    }
    int nStatus = 0;
    rusage usage = {};
    wait4(nChild, &nStatus, 0, &usage);
    return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, Seconds(usage.ru_utime) + Seconds(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) * 1024};
}

struct Doubling {
    Cost stHalf;
    Cost stFull;
    bool bSlow;
};

// The cost at half the size and at the full one: the shortest time of several runs as long as the ratio looks bad.
Doubling MeasureDoubling(const Shape& shape, std::size_t nSize, int nReplies)
{
    Doubling d{Measure(shape, nSize / 2, nReplies), Measure(shape, nSize, nReplies), false};
    for (int i = 0; i < kMostRuns; ++i) {
        d.bSlow = d.stFull.fSeconds > kShortSeconds && d.stFull.fSeconds > kMostTimes * d.stHalf.fSeconds;
        if (!d.bSlow || !kJudgesCosts) break;
        d.stHalf.fSeconds = std::min(d.stHalf.fSeconds, Measure(shape, nSize / 2, nReplies).fSeconds);
        d.stFull.fSeconds = std::min(d.stFull.fSeconds, Measure(shape, nSize, nReplies).fSeconds);
    }
    return d;
}

// Measures the shape and prints a line. False, and says why, when it costs too much. A step in the costs of the
// allocator makes one doubling slow, a time worse than linear the next one too.
bool Judge(const Shape& shape, std::size_t nSize, int nReplies, double fIdle)
{
    const Doubling d = MeasureDoubling(shape, nSize, nReplies);
    const double fPeak = std::max(d.stFull.fPeakBytes - fIdle, 0.0);
    const double fMost =
        shape.nMostPerByte * static_cast<double>(nSize) + kSlackBytes + (nReplies > 1 ? kWaitingBytes : 0);
    std::printf("%-20s %7d %8.3f %6.1f %9.1f %9.1f%s\n", shape.szName, nReplies, d.stFull.fSeconds,
                d.stFull.fSeconds / std::max(d.stHalf.fSeconds, 1e-3), fPeak / 1048576,
                fPeak / static_cast<double>(nSize), d.stFull.nExit == kRefused && !shape.bInARow ? "  refused" : "");
    const bool bKilled = d.stHalf.nExit < 0 || d.stFull.nExit < 0;
    const bool bSlow = kJudgesCosts && d.bSlow && MeasureDoubling(shape, nSize * 2, nReplies).bSlow;
    const bool bLarge = kJudgesCosts && fPeak > fMost;
    if (bKilled) std::printf("%s: the process was killed\n", shape.szName);
    if (bSlow) std::printf("%s: twice the length takes more than %.1f times as long\n", shape.szName, kMostTimes);
    if (bLarge) std::printf("%s: more than %d bytes for each byte\n", shape.szName, shape.nMostPerByte);
    std::fflush(stdout);
    return !bKilled && !bSlow && !bLarge;
}

void PrintLimits()
{
    std::map<int, std::string> lines;
    for (const Shape& shape : kShapes) (lines[shape.nMostPerByte] += ' ') += shape.szName;
    for (const auto& [nMostPerByte, strNames] : lines) std::printf("%4d:%s\n", nMostPerByte, strNames.c_str());
}

bool IsAsked(const char* szName, int argc, char* argv[])
{
    for (int i = 2; i < argc; ++i)
        if (std::strcmp(argv[i], szName) == 0) return true;
    return argc <= 2;
}

}  // namespace

int main(int argc, char* argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "limits") == 0) {
        PrintLimits();
        return 0;
    }
    const std::size_t nSize = (argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 96) * 1024;
    const double fIdle = Measure(kShapes[0], 0, 1).fPeakBytes;
    bool bGood = true;
    std::printf("replies of %zu bytes\n%-20s %7s %8s %6s %9s %9s\n", nSize, "shape", "replies", "s", "times",
                "peak MiB", "per byte");
    for (const Shape& shape : kShapes)
        for (const int nReplies : kReplies)
            if (IsAsked(shape.szName, argc, argv) && (nReplies == 1 || shape.bInARow))
                bGood = Judge(shape, nSize, nReplies, fIdle) && bGood;
    return bGood ? 0 : 1;
}
