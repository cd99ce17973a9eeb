// The trace is written on every call of the particle loops, so a push and pop
// pair has to cost next to nothing. The pair is measured inside a small call
// that cannot be inlined, beside the same call without it: the difference is
// what the trace adds to each operation.
#include <benchmark/benchmark.h>

#include "foundation/foundation.h"

namespace {

__attribute__((noinline)) float tracedStep(float value) {
    TRACE_LOCATION("ParticleMover::moveParticle");
    return value * 0.999f + 0.5f;
}

__attribute__((noinline)) float plainStep(float value) {
    return value * 0.999f + 0.5f;
}

void BM_CallWithTrace(benchmark::State& state) {
    float value = 1.0f;
    for (auto _ : state) benchmark::DoNotOptimize(value = tracedStep(value));
}
BENCHMARK(BM_CallWithTrace);

void BM_CallWithoutTrace(benchmark::State& state) {
    float value = 1.0f;
    for (auto _ : state) benchmark::DoNotOptimize(value = plainStep(value));
}
BENCHMARK(BM_CallWithoutTrace);

// The worst case: the pair alone, with the trace forced out to memory in between.
void BM_PushPopPairThroughMemory(benchmark::State& state) {
    for (auto _ : state) {
        LocationTrace::push("ParticleMover::moveParticle");
        benchmark::ClobberMemory();
        LocationTrace::pop();
    }
}
BENCHMARK(BM_PushPopPairThroughMemory);

}  // namespace
