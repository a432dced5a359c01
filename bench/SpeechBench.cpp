// How long ca_get_speech_action takes, as a ratio to the bare parse of the same text.
// Both are timed in turn, reply by reply, so that the machine's mood meets both.

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>

#include "Common.h"
#include "parlo-api.h"

namespace
{

using Clock = std::chrono::steady_clock;

template <typename Action>
double Seconds(const Action& action)
{
    const auto nStart = Clock::now();
    action();
    return std::chrono::duration<double>(Clock::now() - nStart).count();
}

// A call that is not compared. Comes before each that is, and before each parse: both take longer in a heap that a
// parse has left than in one that a call has.
void CallBefore(std::string& strReply)
{
    CADataRepository::_ConvActionInfo info;
    ca_get_speech_action("show me something", strReply, info);
}

enum class Start { ONCE, EACH };  // the service: once for all calls, or anew for each of them

void Run(benchmark::State& state, std::string strReply, Start eStart)
{
    auto pService = std::make_unique<Bench::Service>();
    double nParse = 0;
    double nWhole = 0;
    for (auto _ : state) {
        CallBefore(strReply);
        nParse += Seconds([&] { Bench::BareParse(strReply); });
        CallBefore(strReply);
        if (eStart == Start::EACH) {
            pService.reset();
            pService = std::make_unique<Bench::Service>();
        }
        CADataRepository::_ConvActionInfo info;  // its release is the caller's, and not timed
        const double nCall = Seconds([&] { Bench::Call(strReply, info); });
        nWhole += nCall;
        state.SetIterationTime(nCall);
    }
    state.counters["ratio"] = nWhole / nParse;
    state.counters["parse_us"] = benchmark::Counter(nParse * 1e6, benchmark::Counter::kAvgIterations);
    state.counters["reply_bytes"] = static_cast<double>(strReply.size());
}

void Silent(benchmark::State& state, std::string (*pMake)(int))
{
    Bench::g_bFormatLog = false;
    Run(state, pMake(static_cast<int>(state.range(0))), Start::ONCE);
}

void First(benchmark::State& state, std::string (*pMake)(int))
{
    Bench::g_bFormatLog = false;
    Run(state, pMake(static_cast<int>(state.range(0))), Start::EACH);
}

void Logged(benchmark::State& state, std::string (*pMake)(int))
{
    Bench::g_bFormatLog = true;
    Run(state, pMake(static_cast<int>(state.range(0))), Start::ONCE);
}

std::string Single(int /*nOne*/)
{
    return Bench::SingleCommand();
}

BENCHMARK_CAPTURE(Silent, command, Single)->Arg(1)->UseManualTime();
BENCHMARK_CAPTURE(First, command, Single)->Arg(1)->UseManualTime();
BENCHMARK_CAPTURE(Silent, handover, Bench::SearchHandOver)->Arg(200)->UseManualTime();
BENCHMARK_CAPTURE(Silent, contents, Bench::Contents)
    ->Arg(20)
    ->Arg(200)
    ->Arg(1000)
    ->Arg(2000)
    ->Arg(10000)
    ->UseManualTime();
BENCHMARK_CAPTURE(Silent, channels, Bench::Channels)->Arg(500)->UseManualTime();
BENCHMARK_CAPTURE(Logged, command, Single)->Arg(1)->UseManualTime();
BENCHMARK_CAPTURE(Logged, handover, Bench::SearchHandOver)->Arg(200)->UseManualTime();
BENCHMARK_CAPTURE(Logged, contents, Bench::Contents)->Arg(20)->Arg(1000)->UseManualTime();
BENCHMARK_CAPTURE(Logged, channels, Bench::Channels)->Arg(500)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
