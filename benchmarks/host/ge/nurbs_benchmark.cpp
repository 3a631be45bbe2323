// Cost of the B-spline operations that everything else waits for, by the number of fit points.
#include <benchmark/benchmark.h>

#include <cmath>

#include "host/ge/curves/interpolate.h"
#include "host/ge/curves/intersect.h"
#include "host/ge/curves/nurbs_measure.h"
#include "host/ge/curves/sampling.h"

namespace {

using namespace host::ge;

Nurbs wave(int64_t count) {
    std::vector<AcGePoint3d> points;
    for (int64_t i = 0; i < count; ++i) {
        const double t = static_cast<double>(i);
        points.push_back({t, 3 * std::sin(0.9 * t), std::cos(1.7 * t)});
    }
    return interpolate(points).curve;
}

void interpolation(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(wave(state.range(0)));
}
BENCHMARK(interpolation)->Arg(10)->Arg(1000)->Arg(100000);

void evaluation(benchmark::State& state) {
    const Nurbs c = wave(state.range(0));
    double t = c.start();
    const double step = (c.end() - c.start()) * 0.618034;
    for (auto _ : state) {
        benchmark::DoNotOptimize(c.point(t));
        t += step;
        if (t > c.end()) t -= c.end() - c.start();
    }
}
BENCHMARK(evaluation)->Arg(10)->Arg(1000)->Arg(100000);

void secondDerivatives(benchmark::State& state) {
    const Nurbs c = wave(state.range(0));
    double t = c.start();
    const double step = (c.end() - c.start()) * 0.618034;
    for (auto _ : state) {
        benchmark::DoNotOptimize(c.derivatives(t, 2));
        t += step;
        if (t > c.end()) t -= c.end() - c.start();
    }
}
BENCHMARK(secondDerivatives)->Arg(10)->Arg(1000);

void lengthTable(benchmark::State& state) {
    const Nurbs c = wave(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(ArcLengthTable(c).length());
}
BENCHMARK(lengthTable)->Arg(10)->Arg(100)->Arg(1000);

void paramAtLength(benchmark::State& state) {
    const ArcLengthTable table(wave(state.range(0)));
    double f = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.paramAt(f * table.length()));
        f += 0.618034;
        if (f > 1) f -= 1;
    }
}
BENCHMARK(paramAtLength)->Arg(10)->Arg(1000);

void closest(benchmark::State& state) {
    const Nurbs c = wave(state.range(0));
    const ClosestPointFinder finder(c);
    double f = 0;
    for (auto _ : state) {
        const AcGePoint3d near = c.point(c.start() + f * (c.end() - c.start()));
        benchmark::DoNotOptimize(finder.closestTo(near + AcGeVector3d(0.3, -0.7, 1.1)));
        f += 0.618034;
        if (f > 1) f -= 1;
    }
}
BENCHMARK(closest)->Arg(10)->Arg(100)->Arg(1000);

void flattening(benchmark::State& state) {
    const Nurbs c = wave(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(flatten(c, {1e-3, 1000000}).size());
}
BENCHMARK(flattening)->Arg(10)->Arg(1000);

void intersections(benchmark::State& state) {
    const Nurbs c = wave(state.range(0)), moved = transformed(c, AcGeMatrix3d::translation({0.5, 0, 0}));
    const AcGeMatrix3d flat = AcGeMatrix3d::scaling(AcGeScale3d(1, 1, 0));
    const Nurbs first = transformed(c, flat), second = transformed(moved, flat);
    for (auto _ : state) benchmark::DoNotOptimize(intersect(first, second).points.size());
}
BENCHMARK(intersections)->Arg(10)->Arg(100)->Arg(1000);

void touchingCircles(benchmark::State& state) {
    const EllipticArc a = fullCircle({}, {0, 0, 1}, 5), b = fullCircle({4.2, 5.6, 0}, {0, 0, 1}, 2);
    for (auto _ : state) benchmark::DoNotOptimize(intersect(a, b).points.size());
}
BENCHMARK(touchingCircles);

} // namespace
