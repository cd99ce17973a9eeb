// The trace is written on every call of the particle loops, so a push and pop
// pair has to cost next to nothing.
#include <benchmark/benchmark.h>

#include "foundation/foundation.h"

namespace {

void BM_PushPopPair(benchmark::State& state) {
    for (auto _ : state) {
        LocationTrace::push("ParticleMover::moveParticle");
        benchmark::ClobberMemory();
        LocationTrace::pop();
    }
}
BENCHMARK(BM_PushPopPair);

void BM_ScopeGuard(benchmark::State& state) {
    for (auto _ : state) {
        TRACE_LOCATION("ParticleMover::moveParticle");
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ScopeGuard);

}  // namespace
