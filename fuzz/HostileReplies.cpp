// What a reply made to hurt costs: time and memory of one ca_get_speech_action for each of the shapes below.
//
//   parlo-hostile [KIB [SHAPE...]]    replies of KIB kibibytes (default 96), the shapes named or all of them
//
// Every shape runs in a process of its own, once at half the size and once at the full one: a time that much more
// than doubles is worse than linear. "peak" is the resident memory of the process at its largest, less that of a
// process whose reply is short; "per byte" is that divided by the length of the reply. The log is on and every line
// is formatted. The exit status is 1 when a process did not end by itself.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "FuzzInput.h"
#include "parlo-api.h"

namespace
{

// A reply is `szBegin`, `szUnit` as often as it fits, `szEnd`. "#" in the unit is replaced by a running number, and
// "<" by 120 opening, ">" by 120 closing brackets of a list.
struct Shape {
    const char* szName;
    const char* szBegin;
    const char* szUnit;
    const char* szEnd;
};

#define IN_RSP(szKey) "{\"rsp\":{\"tvcontrol\":[{\"action\":\"play_content\"}],\"" szKey "\":["
#define IN_PARAMS(szAction, szKey) "{\"rsp\":{\"tvcontrol\":[{\"action\":\"" szAction "\",\"params\":[{\"" szKey "\":["

constexpr Shape kShapes[] = {
    {"text", "{\"rsp\":{\"system_sentence\":\"", "x", "\"}}"},
    {"escapes", "{\"rsp\":{\"system_sentence\":\"", "\\u20ac", "\"}}"},
    {"blanks", "{\"rsp\":{", " ", "}}"},
    {"digits", "{\"rsp\":{\"x\":", "7", "}}"},
    {"integers", IN_RSP("x"), "0,", "0]}}"},
    {"reals", IN_RSP("x"), "0.1,", "0]}}"},
    {"lists", IN_RSP("x"), "[],", "0]}}"},
    {"objects", IN_RSP("x"), "{},", "0]}}"},
    {"same-key", "{\"rsp\":{", "\"a\":0,", "\"a\":0}}"},
    {"keys", "{\"rsp\":{", "\"#\":0,", "\"a\":0}}"},
    {"keys-alike", "{\"rsp\":{", "\"a-long-beginning-that-all-of-the-keys-have-in-common-#\":0,", "\"a\":0}}"},
    {"deep-lists", IN_RSP("x"), "<>,", "0]}}"},
    {"too-deep", "{\"rsp\":", "[", "}"},
    {"not-closed", "{\"rsp\":{\"x\":[", "[0,", ""},
    {"not-json", "{\"rsp\":[", "}", "]}"},
    {"comments-line", IN_RSP("x"), "//\n", "0]}}"},
    {"comments-before", IN_RSP("x"), "/**/", "0]}}"},
    {"comments-behind", IN_RSP("x") "0", "/**/", "]}}"},
    {"comments-each", IN_RSP("x"), "0/**/,", "0]}}"},
    {"comment-long", IN_RSP("x") "0/*", "x", "*/]}}"},
    {"commands", IN_RSP("x") "],\"tvcontrol\":[", "0,", "0]}}"},
    {"params", "{\"rsp\":{\"tvcontrol\":[{\"action\":\"login\",\"params\":[", "0,", "0]}]}}"},
    {"params-deep", "{\"rsp\":{\"tvcontrol\":[{\"action\":\"login\",\"params\":[", "<>,", "0]}]}}"},
    {"params-wide-deep", "{\"rsp\":{\"tvcontrol\":[{\"action\":\"login\",\"params\":[<", "0,", "0>]}]}}"},
    {"commands-deep", "{\"rsp\":{\"tvcontrol\":[", "{\"params\":[<>]},", "0]}}"},
    {"names", IN_PARAMS("display_channel", "names"), "0,", "0]}]}]}}"},
    {"channels", IN_PARAMS("set_channel", "channels"), "0,", "0]}]}]}}"},
    {"umd-channels", IN_PARAMS("set_channel", "umd_channels"), "0,", "0]}]}]}}"},
    {"domains", IN_RSP("domain"), "\"\",", "0]}}"},
    {"display-requests", IN_RSP("displaycontrol"), "{},", "0]}}"},
    {"display-items", IN_RSP("displaycontrol") "{\"params\":[", "0,", "0]}]}}"},
    {"content-unknown", IN_RSP("tvcontent"), "0,", "0]}}"},
    {"content-movies", IN_RSP("tvcontent"), "{\"type\":\"movie\"},", "0]}}"},
    {"content-apps", IN_RSP("tvcontent"), "{\"type\":\"app\"},", "0]}}"},
    {"content-no-command", "{\"rsp\":{\"tvcontent\":[", "{\"type\":\"app\"},", "0]}}"},
    {"genres", IN_RSP("tvcontent") "{\"type\":\"movie\",\"genres\":[", "0,", "0]}]}}"},
    {"forecasts", IN_RSP("tvcontent") "{\"type\":\"weather\",\"forecast_info\":[", "0,", "0]}]}}"},
    {"records", IN_RSP("tvcontent") "{\"type\":\"sports\",\"records\":[", "0,", "0]}]}}"},
    {"standings", IN_RSP("tvcontent") "{\"type\":\"sports\",\"records\":[{\"standing\":[", "0,", "0]}]}]}}"},
    {"poster-codes", IN_RSP("tvcontent") "{\"type\":\"movie\",\"poster\":{\"images\":{\"index\":[", "0,", "0]}}}]}}"},
    {"poster-percents", IN_RSP("tvcontent") "{\"type\":\"movie\",\"poster\":{\"images\":{\"index\":[0],\"url\":\"",
     "%%", "\"}}}]}}"},
    {"poster-slashes", IN_RSP("tvcontent") "{\"type\":\"movie\",\"poster\":{\"images\":{\"index\":[0],\"url\":\"", "/",
     "\"}}}]}}"},
};

constexpr std::size_t kDepth = 120;  // leaves room for what stands around it

std::string Expand(const char* szText, unsigned nNumber)
{
    std::string strText;
    for (const char* p = szText; *p != '\0'; ++p) {
        if (*p == '#')
            strText += std::to_string(nNumber);
        else if (*p == '<' || *p == '>')
            strText.append(kDepth, *p == '<' ? '[' : ']');
        else
            strText += *p;
    }
    return strText;
}

std::string Reply(const Shape& shape, std::size_t nSize)
{
    std::string strReply = Expand(shape.szBegin, 0);
    strReply.reserve(nSize + 2 * kDepth + 256);
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

// Handles one such reply in a child. The child's own cost of making the reply is small beside that.
Cost Measure(const Shape& shape, std::size_t nSize)
{
    const pid_t nChild = fork();
    if (nChild == 0) {
        std::string strReply = Reply(shape, nSize);
        Fuzz::SetPlatform("US en_US 1");
        ca_initial_service("hostile");
        CADataRepository::_ConvActionInfo info;
        _exit(ca_get_speech_action("find a film", strReply, info) ? 0 : kRefused);
    }
    int nStatus = 0;
    rusage usage = {};
    wait4(nChild, &nStatus, 0, &usage);
    return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, Seconds(usage.ru_utime) + Seconds(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) * 1024};
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
    const std::size_t nSize = (argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 96) * 1024;
    const double fIdle = Measure(kShapes[0], 0).fPeakBytes;
    bool bAllEnded = true;
    std::printf("replies of %zu bytes\n%-20s %9s %9s %9s %9s\n", nSize, "shape", "s (half)", "s", "peak MiB",
                "per byte");
    for (const Shape& shape : kShapes) {
        if (!IsAsked(shape.szName, argc, argv)) continue;
        const Cost stHalf = Measure(shape, nSize / 2);
        const Cost stFull = Measure(shape, nSize);
        bAllEnded = bAllEnded && stHalf.nExit >= 0 && stFull.nExit >= 0;
        const char* const szNote = stFull.nExit < 0 ? "  KILLED" : stFull.nExit == kRefused ? "  refused" : "";
        const double fPeak = stFull.fPeakBytes - fIdle;
        std::printf("%-20s %9.3f %9.3f %9.1f %9.1f%s\n", shape.szName, stHalf.fSeconds, stFull.fSeconds,
                    fPeak / 1048576, fPeak / static_cast<double>(nSize), szNote);
        std::fflush(stdout);
    }
    return bAllEnded ? 0 : 1;
}
