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

double Seconds(Clock::duration nTime)
{
    return std::chrono::duration<double>(nTime).count();
}

enum class Start { ONCE, EACH };  // the service: once for all calls, or anew for each of them

void Run(benchmark::State& state, std::string strReply, Start eStart)
{
    auto pService = std::make_unique<Bench::Service>();
    double nParse = 0;
    double nWhole = 0;
    for (auto _ : state) {
        if (eStart == Start::EACH) {
            pService.reset();
            pService = std::make_unique<Bench::Service>();
        }
        const auto nStart = Clock::now();
        Bench::BareParse(strReply);
        const auto nParsed = Clock::now();
        CADataRepository::_ConvActionInfo info;
        const auto nBegin = Clock::now();
        if (!ca_get_speech_action("show me something", strReply, info)) state.SkipWithError("refused");
        const auto nEnd = Clock::now();
        nParse += Seconds(nParsed - nStart);
        nWhole += Seconds(nEnd - nBegin);
        state.SetIterationTime(Seconds(nEnd - nBegin));
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
