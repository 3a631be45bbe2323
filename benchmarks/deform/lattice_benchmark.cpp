// Moving samples through lattices of three sizes, and a drawing's objects with them.
#include <benchmark/benchmark.h>

#include <random>

#include "core/host/entities.h"
#include "deform/box/ffd.h"
#include "host/ed/startup.h"

namespace {

using namespace corvane::deform;

void moveSamples(benchmark::State& state) {
    const int count = int(state.range(1));
    std::mt19937 random(3);
    std::uniform_real_distribution<double> unit(0, 1);
    const LatticeGrid grid({count, count, count}, {0, 0, 0}, {1, 1, 1});
    std::vector<AcGePoint3d> positions;
    for (int n = 0; n < grid.size(); ++n) positions.push_back({unit(random), unit(random), unit(random)});
    std::vector<LatticeSample> samples(static_cast<size_t>(state.range(0)));
    for (LatticeSample& sample : samples) {
        sample.params = {unit(random), unit(random), unit(random)};
        sample.point = sample.params;
    }
    std::vector<AcGePoint3d> moved(samples.size());
    const LatticeVolume volume(grid, positions);
    for (auto _ : state) {
        volume.move(samples, moved);
        benchmark::DoNotOptimize(moved.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(moveSamples)
    ->ArgNames({"samples", "points"})
    ->ArgsProduct({{10'000, 100'000, 1'000'000}, {4, 8, 16}})
    ->Unit(benchmark::kMillisecond);

// Polylines of ten vertices.
void moveDrawing(benchmark::State& state) {
    host::startHost();
    AcDbDatabase database(true);
    std::vector<AcDbObjectId> ids;
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    for (std::int64_t n = 0; n < state.range(0); ++n) {
        auto polyline = std::make_unique<AcDbPolyline>();
        for (unsigned i = 0; i < 10; ++i)
            polyline->addVertexAt(i, {double(n % 100) + i, double(n / 100) + i % 2});
        ids.emplace_back();
        space->appendAcDbEntity(ids.back(), polyline.get());
        polyline.release()->close();
    }
    space.close();
    FFDCage cage(ids);
    cage.FitBox();
    cage.SampleEntities();
    cage.BuildLattice();
    for (auto _ : state) {
        cage.point(0).position.x -= 1;
        cage.ApplyDeformation();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(moveDrawing)->Arg(100)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace
