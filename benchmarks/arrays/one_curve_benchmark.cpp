// What an array along a curve costs as its copies grow, along a spline of 500 control points: distances,
// copies in memory, the preview of a dialog's change, and the finished block.
#include <benchmark/benchmark.h>

#include <cmath>

#include "arrays/one_curve/copies.h"
#include "core/host/editor.h"
#include "host/ed/startup.h"

namespace {

using namespace corvane;

// A wavy spline and a block reference to set along it.
class ArrayDrawing {
public:
    ArrayDrawing() {
        host::startHost();
        document_ = acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
        constexpr int kControls = 500;
        AcGePoint3dArray points;
        for (int i = 0; i < kControls; ++i) points.append({double(i), 40 * std::sin(i / 20.0), 0});
        source.path = add(new AcDbSpline(points, 4, 0.0));
        source.prototype = add(new AcDbBlockReference(AcGePoint3d(0, -100, 0), smallBlock()));
        source.base = MiddleOf(source.prototype);
    }
    ~ArrayDrawing() { acDocManagerPtr()->close(document_); }
    ArrayDrawing(const ArrayDrawing&) = delete;
    ArrayDrawing& operator=(const ArrayDrawing&) = delete;

    ArraySource source;

private:
    AcDbDatabase& database() { return *document_->database(); }
    AcDbObjectId addTo(AcDbObjectId record, AcDbEntity* entity) {
        entity->setDatabaseDefaults(&database());
        AcDbObjectPointer<AcDbBlockTableRecord> space(record, AcDb::kForWrite);
        AcDbObjectId id;
        space->appendAcDbEntity(id, entity);
        entity->close();
        return id;
    }
    AcDbObjectId add(AcDbEntity* entity) { return addTo(database().modelSpaceId(), entity); }
    AcDbObjectId smallBlock() {
        AcDbBlockTable* table = nullptr;
        database().getBlockTable(table, AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        record->setName(L"LEAF");
        AcDbObjectId id;
        table->add(id, record);
        table->close();
        record->close();
        addTo(id, new AcDbLine(AcGePoint3d(-1, 0, 0), AcGePoint3d(1, 0, 0)));
        return id;
    }

    AcApDocument* document_;
};

ArrayParams paramsFor(benchmark::State& state) {
    ArrayParams params;
    params.settings.count = int(state.range(0));
    params.settings.sizes = {.kind = kBezier, .start = 40, .end = 100, .c1 = 260, .t1 = 0.2};
    params.settings.gaps = {.kind = kLinear, .start = 50, .end = 150};
    return params;
}

void finish(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

void BM_Distances(benchmark::State& state) {
    const ArrayParams params = paramsFor(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            SampleDistances(GuideMeasure{1000, false, 0}, params.settings, params.start));
    finish(state);
}

void BM_Copies(benchmark::State& state) {
    const ArrayDrawing drawing;
    const ArrayParams params = paramsFor(state);
    for (auto _ : state) benchmark::DoNotOptimize(MakeCopies(drawing.source, params));
    finish(state);
}

void BM_CopiesInSpace(benchmark::State& state) {
    const ArrayDrawing drawing;
    ArrayParams params = paramsFor(state);
    params.acrossPath = true;
    params.endTwist = 360;
    for (auto _ : state) benchmark::DoNotOptimize(MakeCopies(drawing.source, params));
    finish(state);
}

// A change in the dialog: the former copies go, new ones come.
void BM_Preview(benchmark::State& state) {
    const ArrayDrawing drawing;
    const ArrayParams params = paramsFor(state);
    ArrayPreview preview;
    for (auto _ : state) preview.Show(std::move(MakeCopies(drawing.source, params)->entities));
    preview.Clear();
    finish(state);
}

void BM_FinishedArray(benchmark::State& state) {
    const ArrayDrawing drawing;
    const ArrayParams params = paramsFor(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(CreateArray(*MakeCopies(drawing.source, params),
                                             EncodeArray({L"AAC_1", L"", L"", params}), kArrayAlongCurve));
    finish(state);
}

void sizes(benchmark::internal::Benchmark* one) {
    one->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond)->Complexity();
}

} // namespace

BENCHMARK(BM_Distances)->Apply(sizes);
BENCHMARK(BM_Copies)->Apply(sizes);
BENCHMARK(BM_CopiesInSpace)->Apply(sizes);
BENCHMARK(BM_Preview)->Apply(sizes);
BENCHMARK(BM_FinishedArray)->Apply(sizes);
