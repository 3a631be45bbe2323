// What the arc fit makes of ten curves: arcs, how far they stray (in parts of the tolerance, by dense
// points), and time; beside it a fit that takes the longest pair of arcs at each step. And how time grows
// with samples.
#include <benchmark/benchmark.h>

#include "support/fit_curves.h"

namespace {

using Fit = std::vector<support::FitArc> (*)(const std::vector<support::FitSample>&, double);

void fit(benchmark::State& state, const support::FitCurve& curve, Fit method, int count) {
    const auto samples = support::samplesOf(curve, count);
    std::vector<support::FitArc> arcs;
    for (auto _ : state) benchmark::DoNotOptimize(arcs = method(samples, curve.tolerance));
    state.counters["arcs"] = double(arcs.size());
    state.counters["strays"] = support::deviationOf(arcs, curve) / curve.tolerance;
    state.SetComplexityN(count);
}

void BM_Growth(benchmark::State& state) {
    fit(state, support::fitCurves()[0], corvane::FitArcs, int(state.range(0)));
}

[[maybe_unused]] const bool registered = [] {
    constexpr int kSamples = 12000;
    for (const support::FitCurve& curve : support::fitCurves()) {
        for (const bool planned : {true, false}) {
            const std::string name = std::string(planned ? "BM_FitArcs/" : "BM_GreedyArcs/") + curve.name;
            benchmark::RegisterBenchmark(name.c_str(),
                                         [&curve, planned](benchmark::State& state) {
                                             fit(state, curve,
                                                 planned ? corvane::FitArcs : support::greedyArcs, kSamples);
                                         })
                ->Unit(benchmark::kMillisecond)
                ->Iterations(1);
        }
    }
    return true;
}();

} // namespace

BENCHMARK(BM_Growth)
    ->RangeMultiplier(2)
    ->Range(3000, 12000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Complexity();
