// What measuring long polylines costs: boxes and lengths grow with the vertices, places along them with
// their logarithm once the curve was measured.
#include <benchmark/benchmark.h>

#include <cmath>

#include "host/ent/polyline.h"

namespace {

std::unique_ptr<AcDbPolyline> spiral(int count) {
    auto polyline = std::make_unique<AcDbPolyline>();
    std::vector<AcDbPolyline::Vertex> vertices;
    vertices.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        const double angle = 0.05 * i, radius = 1 + 0.001 * i;
        vertices.push_back({{radius * std::cos(angle), radius * std::sin(angle)}, i % 3 ? 0.02 : 0});
    }
    polyline->setVertices(std::move(vertices));
    return polyline;
}

double lengthOf(const AcDbCurve& curve) {
    double end = 0, length = 0;
    curve.getEndParam(end);
    curve.getDistAtParam(end, length);
    return length;
}

// A change before each question, so that nothing measured earlier serves.
void Extents(benchmark::State& state) {
    const auto polyline = spiral(int(state.range(0)));
    for (auto _ : state) {
        polyline->setElevation(1);
        AcDbExtents box;
        polyline->getGeomExtents(box);
        benchmark::DoNotOptimize(box);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Extents)->RangeMultiplier(10)->Range(1000, 1000000)->Complexity(benchmark::oN);

void Length(benchmark::State& state) {
    const auto polyline = spiral(int(state.range(0)));
    for (auto _ : state) {
        polyline->setElevation(1);
        benchmark::DoNotOptimize(lengthOf(*polyline));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Length)->RangeMultiplier(10)->Range(1000, 1000000)->Complexity(benchmark::oN);

void PointAtDistance(benchmark::State& state) {
    const auto polyline = spiral(int(state.range(0)));
    const double length = lengthOf(*polyline);
    double at = 0;
    for (auto _ : state) {
        at = std::fmod(at + 0.618 * length, length);
        AcGePoint3d point;
        polyline->getPointAtDist(at, point);
        benchmark::DoNotOptimize(point);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(PointAtDistance)->RangeMultiplier(10)->Range(1000, 1000000)->Complexity(benchmark::oLogN);

} // namespace
