// What blends cost: making one anew as its copies and samples grow, and what a drawing with many of them
// takes to open, and to follow one moved curve.
#include <benchmark/benchmark.h>

#include <cmath>

#include "assoc/blend/blend.h"
#include "core/host/editor.h"
#include "core/host/entities.h"
#include "host/dxf/dxf.h"
#include "host/ed/startup.h"

namespace {

using namespace corvane;

AcDbObjectId addWave(AcDbDatabase& database, double y) {
    AcGePoint3dArray points;
    for (int i = 0; i <= 40; ++i) points.append({i * 5.0, y + 10 * std::sin(i / 3.0 + y), 0});
    auto* wave = new AcDbSpline(points);
    wave->setDatabaseDefaults(&database);
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    space->appendAcDbEntity(id, wave);
    wave->close();
    return id;
}

// A document with blends one above the other, each of its own two waves.
class Blends {
public:
    Blends(int blends, int copies, int surftab1) {
        host::startHost();
        LoadBlends();
        document_ = acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
        database().setHeaderInteger("$SURFTAB1", 70, surftab1);
        for (int i = 0; i < blends; ++i) {
            BlendRecord record;
            record.family.count = copies;
            record.curve1 = addWave(database(), i * 100.0);
            record.curve2 = addWave(database(), i * 100.0 + 50);
            last_ = CreateBlend(record).reference;
            curve_ = record.curve1;
        }
    }
    ~Blends() { acDocManagerPtr()->close(document_); }
    AcDbDatabase& database() const { return *document_->database(); }
    AcDbObjectId last() const { return last_; }
    AcDbObjectId curve() const { return curve_; }

private:
    AcApDocument* document_;
    AcDbObjectId last_, curve_;
};

void BM_Rebuild(benchmark::State& state) {
    const Blends blends(1, int(state.range(0)), int(state.range(1)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(RebuildBlend(blends.last()));
        state.PauseTiming();
        blends.database().undoLog().commit();
        blends.database().undoLog().undo();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(1) * 6);
}

// Reading, with and without what makes the blends follow: their reactors and their index.
void BM_Open(benchmark::State& state) {
    std::string bytes;
    {
        const Blends blends(int(state.range(0)), 4, 6);
        if (state.range(1)) {
            bytes = host::drawingBytes(blends.database());
        } else {
            AcDbDictionary* objects = nullptr;
            blends.database().getNamedObjectsDictionary(objects, AcDb::kForWrite);
            objects->remove(L"SCVN_DICT");
            objects->close();
            bytes = host::drawingBytes(blends.database());
        }
    }
    for (auto _ : state) {
        auto database = std::make_unique<AcDbDatabase>(false);
        host::readDrawingBytes(bytes, "blends", *database);
        AcApDocument* document = acDocManagerPtr()->add(std::move(database));
        state.PauseTiming();
        acDocManagerPtr()->close(document);
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}

// One curve moves: the first time, when the lists are loaded, and every further time.
void BM_Follow(benchmark::State& state) {
    const Blends blends(int(state.range(0)), 4, 6);
    const bool first = state.range(1);
    for (auto _ : state) {
        state.PauseTiming();
        if (first) BlendAssociation().Detach();
        state.ResumeTiming();
        AcDbObjectPointer<AcDbEntity> curve(blends.curve(), AcDb::kForWrite);
        curve->transformBy(AcGeMatrix3d::translation({0, 0.01, 0}));
        curve.close();
        BlendAssociation().Flush();
        state.PauseTiming();
        blends.database().undoLog().clear();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(BM_Rebuild)
    ->ArgNames({"copies", "surftab1"})
    ->ArgsProduct({{1, 10, 100}, {6, 36}})
    ->Args({100, 360})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Open)
    ->ArgNames({"blends", "following"})
    ->ArgsProduct({{10, 100, 1000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Follow)
    ->ArgNames({"blends", "first"})
    ->ArgsProduct({{10, 100, 1000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
