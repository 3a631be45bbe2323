// What finding all meetings of many curves costs: the sweep over boxes beside the plain loop over all pairs.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "core/host/editor.h"
#include "curves/reports/meetings.h"
#include "host/ed/startup.h"

namespace {

// Short lines scattered so that each meets a few others whatever their number.
class ScatteredLines {
public:
    explicit ScatteredLines(int count) {
        host::startHost();
        document_ = acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
        std::mt19937 random(5);
        const double side = 10 * std::sqrt(double(count));
        std::uniform_real_distribution<double> place(0, side), way(-12, 12);
        AcDbObjectPointer<AcDbBlockTableRecord> space(document_->database()->modelSpaceId(), AcDb::kForWrite);
        for (int i = 0; i < count; ++i) {
            const AcGePoint3d from(place(random), place(random), 0);
            auto* line = new AcDbLine(from, from + AcGeVector3d(way(random), way(random), 0));
            line->setDatabaseDefaults(document_->database());
            AcDbObjectId id;
            space->appendAcDbEntity(id, line);
            line->close();
            ids_.push_back(id);
        }
    }
    ~ScatteredLines() { acDocManagerPtr()->close(document_); }
    const std::vector<AcDbObjectId>& ids() const { return ids_; }

private:
    AcApDocument* document_;
    std::vector<AcDbObjectId> ids_;
};

void Swept(benchmark::State& state) {
    const ScatteredLines lines(int(state.range(0)));
    size_t points = 0;
    for (auto _ : state) points = corvane::MeetingsOf(lines.ids()).points.size();
    state.counters["points"] = double(points);
    state.SetComplexityN(state.range(0));
}

void PlainLoop(benchmark::State& state) {
    const ScatteredLines lines(int(state.range(0)));
    size_t points = 0;
    for (auto _ : state) {
        points = 0;
        for (size_t i = 0; i < lines.ids().size(); ++i)
            for (size_t j = i + 1; j < lines.ids().size(); ++j) {
                AcDbObjectPointer<AcDbCurve> a(lines.ids()[i], AcDb::kForRead),
                    b(lines.ids()[j], AcDb::kForRead);
                AcGePoint3dArray found;
                a->intersectWith(b.object(), AcDb::kOnBothOperands, found);
                points += size_t(found.length());
            }
    }
    state.counters["points"] = double(points);
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(Swept)->Arg(1000)->Arg(4000)->Arg(16000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(PlainLoop)->Arg(250)->Arg(500)->Arg(1000)->Unit(benchmark::kMillisecond)->Complexity();
