// How often ca_get_speech_action allocates and how much heap it needs at its peak, as ratios to the bare parse of the
// same text. Counted by replacing the program's operator new, which the libraries use too, but for the JSON library's
// texts.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include "Common.h"

namespace
{

struct HeapUse {
    long nAllocations = 0;
    long nBytes = 0;  // in use, relative to the last Reset
    long nPeak = 0;
};

HeapUse g_Heap;

}  // namespace

void* operator new(std::size_t nSize)
{
    void* p = std::malloc(nSize);
    if (p == nullptr) throw std::bad_alloc();
    ++g_Heap.nAllocations;
    g_Heap.nBytes += static_cast<long>(malloc_usable_size(p));
    g_Heap.nPeak = std::max(g_Heap.nPeak, g_Heap.nBytes);
    return p;
}

void operator delete(void* p) noexcept
{
    if (p != nullptr) g_Heap.nBytes -= static_cast<long>(malloc_usable_size(p));
    std::free(p);
}

void operator delete(void* p, std::size_t /*nSize*/) noexcept
{
    operator delete(p);
}

namespace
{

template <typename Work>
HeapUse Measure(Work work)
{
    g_Heap = HeapUse();
    work();
    return g_Heap;
}

void Heap(benchmark::State& state, std::string (*pMake)(int))
{
    std::string strReply = pMake(static_cast<int>(state.range(0)));
    Bench::Service service;
    for (auto _ : state) {
        const HeapUse parse = Measure([&strReply] { Bench::BareParse(strReply); });
        const HeapUse whole = Measure([&strReply] {
            CADataRepository::_ConvActionInfo info;
            Bench::Call(strReply, info);
        });
        state.counters["allocations_ratio"] =
            static_cast<double>(whole.nAllocations) / static_cast<double>(parse.nAllocations);
        state.counters["peak_ratio"] = static_cast<double>(whole.nPeak) / static_cast<double>(parse.nPeak);
        state.counters["peak_bytes"] = static_cast<double>(whole.nPeak);
    }
}

std::string Single(int /*nOne*/)
{
    return Bench::SingleCommand();
}

// The second reply is measured: the first one fills what lasts for the process.
BENCHMARK_CAPTURE(Heap, command, Single)->Arg(1)->Iterations(2);
BENCHMARK_CAPTURE(Heap, handover, Bench::SearchHandOver)->Arg(200)->Iterations(2);
BENCHMARK_CAPTURE(Heap, contents, Bench::Contents)->Arg(20)->Arg(1000)->Arg(10000)->Iterations(2);
BENCHMARK_CAPTURE(Heap, channels, Bench::Channels)->Arg(500)->Iterations(2);

}  // namespace

BENCHMARK_MAIN();
