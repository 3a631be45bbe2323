// The cost of a display list: many short entities, dashes along long paths, wide polylines.
#include <benchmark/benchmark.h>

#include <cmath>
#include <functional>

#include "host/view/collector.h"

using namespace host;

namespace {

class Thing : public AcGiDrawable {
public:
    std::function<void(AcGiWorldDraw&)> draws;
    bool worldDraw(AcGiWorldDraw* context) const override { return draws(*context), true; }
    void viewportDraw(AcGiViewportDraw*) const override {}
};

class Plain : public DrawingSource {
public:
    std::vector<double> dashes;
    DrawableLook look(const AcGiDrawable&) override {
        DrawableLook look;
        look.traits.linetype = AcDbObjectId(&cell_);
        return look;
    }
    LayerLook layer(AcDbObjectId) override { return {}; }
    LinetypeLook linetype(AcDbObjectId) override { return {LinetypeKind::pattern, dashes}; }

private:
    host::IdCell cell_;
};

void run(benchmark::State& state, DrawingSource& source, const Thing& thing, int times) {
    for (auto _ : state) {
        DisplayCollector collector(source);
        for (int i = 0; i < times; ++i) collector.add(thing);
        benchmark::DoNotOptimize(collector.take().points.size());
    }
    state.SetItemsProcessed(state.iterations() * times);
}

std::vector<AcGePoint3d> wave(int count) {
    std::vector<AcGePoint3d> points;
    for (int i = 0; i < count; ++i) points.emplace_back(i * 0.1, std::sin(i * 0.05) * 10, 0);
    return points;
}

void ShortLines(benchmark::State& state) {
    Plain source;
    Thing thing;
    const auto points = wave(2);
    thing.draws = [&](AcGiWorldDraw& c) { c.geometry().polyline(2, points.data()); };
    run(state, source, thing, int(state.range(0)));
}
BENCHMARK(ShortLines)->Arg(10'000)->Arg(100'000);

void DashedPath(benchmark::State& state) {
    Plain source;
    source.dashes = {1, -0.5, 0, -0.5};
    Thing thing;
    const auto points = wave(int(state.range(0)));
    thing.draws = [&](AcGiWorldDraw& c) {
        c.geometry().polyline(Adesk::UInt32(points.size()), points.data());
    };
    run(state, source, thing, 1);
}
BENCHMARK(DashedPath)->Arg(10'000)->Arg(100'000);

void WidePolyline(benchmark::State& state) {
    Plain source;
    Thing thing;
    std::vector<PlineVertex> vertices;
    for (const AcGePoint3d& p : wave(int(state.range(0)))) vertices.push_back({{p.x, p.y}, 0.1, 0.05, 0.05});
    thing.draws = [&](AcGiWorldDraw& c) { c.geometry().pline({.vertices = vertices}); };
    run(state, source, thing, 1);
}
BENCHMARK(WidePolyline)->Arg(10'000)->Arg(100'000);

} // namespace
