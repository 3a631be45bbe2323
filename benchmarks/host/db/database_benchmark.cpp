// What the database's hot paths cost: opening and closing, changing, appending, undo.
#include <benchmark/benchmark.h>

#include "host/db/database.h"

namespace {

class Spot : public AcDbEntity {
    HOST_DB_CLASS(Spot)
public:
    Acad::ErrorStatus setAt(const AcGePoint3d& at) {
        if (auto es = willModify(); es != Acad::eOk) return es;
        return at_ = at, Acad::eOk;
    }

private:
    AcGePoint3d at_;
};
HOST_DEFINE_CLASS(Spot, AcDbEntity, L"SPOT")

std::vector<AcDbObjectId> fill(AcDbDatabase& database, long count) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    std::vector<AcDbObjectId> ids(static_cast<size_t>(count));
    for (auto& id : ids) {
        auto* spot = new Spot;
        space->appendAcDbEntity(id, spot);
        spot->close();
    }
    return ids;
}

void openAndClose(benchmark::State& state) {
    AcDbDatabase database;
    const auto id = fill(database, 1).front();
    const auto mode = state.range(0) ? AcDb::kForWrite : AcDb::kForRead;
    for (auto _ : state) {
        Spot* spot = nullptr;
        benchmark::DoNotOptimize(acdbOpenObject(spot, id, mode));
        spot->close();
    }
}
BENCHMARK(openAndClose)->ArgName("write")->Arg(0)->Arg(1);

void append(benchmark::State& state) {
    for (auto _ : state) {
        AcDbDatabase database;
        fill(database, state.range(0));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(append)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// One entity more, each a step of its own, in a drawing that has a million.
void appendToAMillion(benchmark::State& state) {
    AcDbDatabase database;
    fill(database, 1'000'000);
    database.undoLog().commit();
    for (auto _ : state) {
        fill(database, 1);
        database.undoLog().commit();
    }
}
BENCHMARK(appendToAMillion)->Unit(benchmark::kMicrosecond);

void undoAndRedo(benchmark::State& state) {
    AcDbDatabase database;
    const auto ids = fill(database, state.range(0));
    database.undoLog().commit();
    for (auto id : ids) {
        AcDbObjectPointer<Spot> spot(id, AcDb::kForWrite);
        spot->setAt({1, 2, 3});
    }
    database.undoLog().commit();
    for (auto _ : state) {
        database.undoLog().undo();
        database.undoLog().redo();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * 2);
}
BENCHMARK(undoAndRedo)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
