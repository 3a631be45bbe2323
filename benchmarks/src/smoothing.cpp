// What cleaning a polyline costs as its vertices grow: PLYH and PLYH2, file work aside.
#include <benchmark/benchmark.h>

#include <cmath>

#include "core/host/editor.h"
#include "curves/smoothing/smoothing.h"
#include "host/ed/startup.h"

namespace {

// A drawing with one wavy polyline in which every tenth vertex stands twice.
class WavyDrawing {
public:
    WavyDrawing(int count, bool old) {
        host::startHost();
        document_ = acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
        std::vector<AcDbPolyline::Vertex> vertices(static_cast<size_t>(count));
        AcGePoint3dArray points(old ? count : 0);
        for (int i = 0; i < count; ++i) {
            const double x = i - i % 10 / 9;
            vertices[size_t(i)].point.set(x, 50 * std::sin(x / 300));
            if (old) points.append({x, 50 * std::sin(x / 300), 0});
        }
        AcDbCurve* curve;
        if (old) {
            curve = new AcDb2dPolyline(AcDb::k2dSimplePoly, points);
        } else {
            auto* polyline = new AcDbPolyline;
            polyline->setVertices(std::move(vertices));
            curve = polyline;
        }
        curve->setDatabaseDefaults(document_->database());
        AcDbObjectPointer<AcDbBlockTableRecord> space(document_->database()->modelSpaceId(), AcDb::kForWrite);
        space->appendAcDbEntity(id_, curve);
        curve->close();
    }
    ~WavyDrawing() { acDocManagerPtr()->close(document_); }
    AcDbObjectId id() const { return id_; }

private:
    AcApDocument* document_;
    AcDbObjectId id_;
};

template <class Work> void onFreshDrawings(benchmark::State& state, bool old, Work work) {
    for (auto _ : state) {
        state.PauseTiming();
        auto drawing = std::make_unique<WavyDrawing>(int(state.range(0)), old);
        AcDbObjectPointer<AcDbCurve> curve(drawing->id(), AcDb::kForRead);
        state.ResumeTiming();
        work(*curve);
        curve.close();
        state.PauseTiming();
        drawing.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

void thin(AcDbCurve& curve) {
    AcDbObjectId id;
    corvane::SmoothPolyline(id, AcDbObjectId(), curve, 1000, 0.5);
}

void BM_ThinPolyline(benchmark::State& state) { onFreshDrawings(state, false, thin); }
void BM_ThinOldPolyline(benchmark::State& state) { onFreshDrawings(state, true, thin); }
void BM_RemoveDuplicates(benchmark::State& state) {
    onFreshDrawings(state, false, corvane::RemoveDuplicateVertices);
}
void BM_RemoveDuplicatesOld(benchmark::State& state) {
    onFreshDrawings(state, true, corvane::RemoveDuplicateVertices);
}

} // namespace

BENCHMARK(BM_ThinPolyline)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(BM_ThinOldPolyline)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(BM_RemoveDuplicates)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(BM_RemoveDuplicatesOld)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
