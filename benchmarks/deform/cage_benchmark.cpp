// What a moving mouse and a moved cage cost: hovering over a gizmo, and showing a lattice whose points have
// all moved.
#include <benchmark/benchmark.h>

#include "deform/cage/cage_graphics.h"

namespace {

using namespace corvane::deform;

// A cube of control points, `side` along each axis.
class Cube final : public Cage {
public:
    explicit Cube(int side) : side_(side), points_(size_t(side * side * side)) {
        const auto at = [side](int i, int j, int k) { return (i * side + j) * side + k; };
        for (int i = 0; i < side; ++i)
            for (int j = 0; j < side; ++j)
                for (int k = 0; k < side; ++k) {
                    points_[size_t(at(i, j, k))].position.set(i, j, k);
                    if (i + 1 < side) edges_.push_back({at(i, j, k), at(i + 1, j, k)});
                    if (j + 1 < side) edges_.push_back({at(i, j, k), at(i, j + 1, k)});
                    if (k + 1 < side) edges_.push_back({at(i, j, k), at(i, j, k + 1)});
                }
    }
    int size() const override { return int(points_.size()); }
    ControlPoint& point(int index) override { return points_[size_t(index)]; }
    const std::vector<CageEdge>& edges() const override { return edges_; }
    AcDbExtents box() const override { return {{0, 0, 0}, {double(side_), double(side_), double(side_)}}; }
    void apply() override {}
    CString pickedText(int) const override { return {}; }
    bool keyword(wchar_t) override { return false; }

private:
    int side_;
    std::vector<ControlPoint> points_;
    std::vector<CageEdge> edges_;
};

void Hover(benchmark::State& state) {
    GizmoPlace gizmo;
    gizmo.mode = GizmoMode(state.range(0));
    const ScreenMap screen({1920, 1080, 8, {}});
    int x = 0, hits = 0;
    for (auto _ : state) {
        const Pixel cursor{700 + (x = (x + 7) % 500), 400};
        hits += HitTestGizmo(gizmo, screen, cursor) + AxisTowards(gizmo, screen, cursor).handle;
        benchmark::DoNotOptimize(hits);
    }
}
BENCHMARK(Hover)->Arg(0)->Arg(2)->ArgName("mode");

void ShowMovedLattice(benchmark::State& state) {
    Cube cube(int(state.range(0)));
    CageGraphics graphics(cube);
    graphics.DrawLattice();
    for (auto _ : state) {
        for (int i = 0; i < cube.size(); ++i) cube.point(i).position.x += 0.01;
        graphics.DrawLattice();
    }
    state.SetItemsProcessed(state.iterations() * cube.size());
}
BENCHMARK(ShowMovedLattice)->Arg(3)->Arg(8)->Arg(16)->ArgName("side")->Unit(benchmark::kMillisecond);

void MakeAndDropLattice(benchmark::State& state) {
    Cube cube(int(state.range(0)));
    for (auto _ : state) {
        CageGraphics graphics(cube);
        graphics.DrawLattice();
    }
}
BENCHMARK(MakeAndDropLattice)->Arg(3)->Arg(8)->Arg(16)->ArgName("side")->Unit(benchmark::kMillisecond);

} // namespace
