// What scatters cost as their patterns grow, overlaps removed: along a spline, inside a circle, and with
// templates that are turned. Boundaries and curves grow with the count, so that it is reached.
#include <benchmark/benchmark.h>

#include <cmath>

#include "core/host/editor.h"
#include "core/host/entities.h"
#include "host/ed/startup.h"
#include "scatter/random/generate.h"
#include "scatter/random/scatter_block.h"

namespace {

using namespace corvane;
using namespace corvane::scatter;

class ScatterDrawing {
public:
    ScatterDrawing() {
        host::startHost();
        document_ = acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
    }
    ~ScatterDrawing() { acDocManagerPtr()->close(document_); }
    ScatterDrawing(const ScatterDrawing&) = delete;
    ScatterDrawing& operator=(const ScatterDrawing&) = delete;

    AcDbObjectId add(AcDbEntity* entity) {
        entity->setDatabaseDefaults(document_->database());
        AcDbObjectPointer<AcDbBlockTableRecord> space(document_->database()->modelSpaceId(), AcDb::kForWrite);
        AcDbObjectId id;
        space->appendAcDbEntity(id, entity);
        entity->close();
        return id;
    }

private:
    AcApDocument* document_;
};

void finish(benchmark::State& state, double patterns) {
    state.counters["patterns"] = patterns;
    state.SetComplexityN(state.range(0));
}

// A band of width 30 along a wave of 500 control points.
void BM_OnCurves(benchmark::State& state) {
    ScatterDrawing drawing;
    const double size = double(state.range(0)) / 20000; // dense enough that some are in others' way
    AcGePoint3dArray points;
    for (int i = 0; i < 500; ++i) points.append({i * size, 40 * size * std::sin(i / 20.0), 0});
    ScatterOnCurveParams params;
    params.sources = {drawing.add(new AcDbSpline(points, 4, 0.0))};
    params.width = 30;
    params.count = int(state.range(0));
    params.deleteOverlap = true;
    EntityList made;
    for (auto _ : state) Generate(params, made);
    finish(state, double(made.size()));
}

template <class Prepare> void inRegion(benchmark::State& state, Prepare prepare) {
    ScatterDrawing drawing;
    ScatterInRegionParams params;
    params.count = int(state.range(0));
    params.deleteOverlap = true;
    const double radius = 2.6 * std::sqrt(double(state.range(0)));
    params.sources = {drawing.add(new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, radius))};
    prepare(drawing, params);
    EntityList made;
    for (auto _ : state) Generate(params, made);
    finish(state, double(made.size()));
}

void BM_InRegion(benchmark::State& state) {
    inRegion(state, [](ScatterDrawing&, ScatterInRegionParams&) {});
}

void BM_TurnedCharacters(benchmark::State& state) {
    inRegion(state, [](ScatterDrawing& drawing, ScatterInRegionParams& params) {
        params.pattern = PatternType::templates;
        params.rotate = true;
        params.templates = {drawing.add(new AcDbText(AcGePoint3d(), L"ABCD", AcDbObjectId(), 1))};
    });
}

// A change in a dialog: patterns, block, reference.
void BM_Rebuild(benchmark::State& state) {
    ScatterDrawing drawing;
    ScatterInRegionParams params;
    params.count = int(state.range(0));
    params.sources = {drawing.add(new AcDbCircle(AcGePoint3d(), AcGeVector3d::kZAxis, 1000))};
    EntityList made;
    Generate(params, made);
    const PlacedScatter placed = PlaceScatter(std::move(made), params);
    for (auto _ : state) RebuildScatter(placed.reference, params);
    finish(state, params.count);
}

void sizes(benchmark::internal::Benchmark* one) {
    one->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();
}

} // namespace

BENCHMARK(BM_OnCurves)->Apply(sizes);
BENCHMARK(BM_InRegion)->Apply(sizes);
BENCHMARK(BM_TurnedCharacters)->Apply(sizes);
BENCHMARK(BM_Rebuild)->Apply(sizes);
