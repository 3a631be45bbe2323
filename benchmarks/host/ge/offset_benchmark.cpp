// Offsetting long polylines: the cost grows little faster than the vertices, also where a large distance
// makes most of the raw parallel fall away.
#include <benchmark/benchmark.h>

#include <cmath>

#include "host/ge/curves/offset.h"

namespace {

using namespace host::ge;

// A coast: a ring with teeth of several sizes, every third segment an arc.
std::vector<BulgeVertex> coast(int count) {
    std::vector<BulgeVertex> out;
    out.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * i / count;
        const double radius = 100 + 3 * std::sin(17 * angle) + (i % 2 ? 100.0 : -100.0) / count;
        out.push_back({{radius * std::cos(angle), radius * std::sin(angle)}, i % 3 ? 0 : 0.2});
    }
    return out;
}

void offsetBy(benchmark::State& state, double distance) {
    const auto source = coast(int(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(offsetPolyline(source, true, distance));
    state.SetComplexityN(state.range(0));
}

void OffsetNear(benchmark::State& state) { offsetBy(state, 100.0 / double(state.range(0))); }
BENCHMARK(OffsetNear)->RangeMultiplier(10)->Range(1000, 100000)->Complexity()->Unit(benchmark::kMillisecond);

void OffsetOutwards(benchmark::State& state) { offsetBy(state, 5); }
BENCHMARK(OffsetOutwards)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Complexity()
    ->Unit(benchmark::kMillisecond);

void OffsetFarInwards(benchmark::State& state) { offsetBy(state, -60); }
BENCHMARK(OffsetFarInwards)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Complexity()
    ->Unit(benchmark::kMillisecond);

} // namespace
