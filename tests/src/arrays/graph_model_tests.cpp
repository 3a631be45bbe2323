// The graph without its window: where things lie, what clicks take and drags do.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "arrays/variation/graph_model.h"

using namespace corvane;
using testing::ElementsAre;

namespace {

// A plot of 200 by 300 pixels: one pixel a percent, one for half a hundredth of the path.
const GraphPlot kPlot(232, 332);

std::vector<int> numbers(const VariationCurve& curve) {
    std::vector<int> all;
    for (const GraphHandle& handle : GraphHandles(curve)) all.push_back(handle.number);
    return all;
}

} // namespace

TEST(GraphPlot, ValuesLieUpwardsFromTheBottomLeftCorner) {
    const struct {
        GraphValue value;
        GraphPixel pixel;
    } rows[] = {{{0, 0}, {16, 316}},      {{1, 300}, {216, 16}},      {{0.5, 100}, {116, 216}},
                {{0.5, -20}, {116, 316}}, {{0.5, 1000}, {116, 16}},   {{-1, 100}, {16, 216}},
                {{2, 100}, {216, 216}},   {{0.0026, 99.6}, {17, 216}}};
    for (const auto& row : rows)
        EXPECT_EQ(row.pixel, kPlot.toPixel(row.value)) << row.value.t << ", " << row.value.percent;
    EXPECT_EQ((GraphPixel{16, 316}), kPlot.toPixel({std::nan(""), std::nan("")}));
}

TEST(GraphPlot, PixelsComeBackAndThoseOutsideAreMovedIn) {
    for (int x = 16; x <= 216; x += 25)
        for (int y = 16; y < 316; y += 37)
            EXPECT_EQ((GraphPixel{x, y}), kPlot.toPixel(kPlot.toValue({x, y})));
    EXPECT_EQ(0, kPlot.toValue({-500, 900}).t);
    EXPECT_EQ(1, kPlot.toValue({-500, 900}).percent) << "never 0 percent";
    EXPECT_EQ(1, kPlot.toValue({500, -900}).t);
    EXPECT_EQ(300, kPlot.toValue({500, -900}).percent);
}

TEST(GraphPlot, AreasWithoutExtentDivideByNothing) {
    for (const GraphPlot& plot : {GraphPlot(0, 0), GraphPlot(32, 32), GraphPlot(20, 300)}) {
        const GraphValue value = plot.toValue({100, 100});
        EXPECT_EQ(0, value.t);
        EXPECT_TRUE(value.percent >= 1 && value.percent <= 300);
    }
}

TEST(GraphHandles, AreThoseOfTheKindInTheOrderOfTheHitTest) {
    const auto of = [](int kind) { return numbers({.kind = kind}); };
    for (int kind : {kConstant, kLinear, kEase}) EXPECT_THAT(of(kind), ElementsAre(0, 1));
    EXPECT_THAT(of(kSine), ElementsAre(0, 1, 4));
    EXPECT_THAT(of(kBezier), ElementsAre(0, 1, 2, 3));
    // Period 40 %, amplitude -30: the crest stands at a tenth of the path, 30 above the start.
    const auto handles = GraphHandles({.kind = kSine, .start = 80, .end = 70, .c2 = 40});
    EXPECT_DOUBLE_EQ(0.4, handles[1].at.t);
    EXPECT_DOUBLE_EQ(70, handles[1].at.percent);
    EXPECT_DOUBLE_EQ(0.1, handles[2].at.t);
    EXPECT_DOUBLE_EQ(110, handles[2].at.percent);
    EXPECT_EQ(300, GraphHandles({.kind = kSine, .start = 280, .end = 190})[2].at.percent);
}

TEST(HitHandle, ReachesLessThanEightPixelsBothWaysAndTheFirstWins) {
    const VariationCurve curve{.kind = kBezier, .c1 = 200, .c2 = 200, .t1 = 0.5, .t2 = 0.52};
    EXPECT_EQ(kStartHandle, HitHandle(curve, kPlot, {23, 209}));
    EXPECT_EQ(kNoHandle, HitHandle(curve, kPlot, {24, 216}));
    EXPECT_EQ(kNoHandle, HitHandle(curve, kPlot, {16, 208}));
    EXPECT_EQ(kEndHandle, HitHandle(curve, kPlot, {216, 216}));
    EXPECT_EQ(kHandle1, HitHandle(curve, kPlot, {120, 116})) << "both controls lie there";
    EXPECT_EQ(kHandle2, HitHandle(curve, kPlot, {125, 116}));
    EXPECT_EQ(kStartHandle, HitHandle({.kind = kLinear, .start = 900}, kPlot, {16, 16}))
        << "what lies above the graph is taken at its edge";
}

TEST(DragHandle, ChangesWhatTheKindSaysAndNothingElse) {
    const VariationCurve from{.start = 90, .end = 110, .c1 = 120, .c2 = 130, .t1 = 0.3, .t2 = 0.6};
    const auto with = [&](int kind, auto change) {
        VariationCurve curve = from;
        curve.kind = kind;
        change(curve);
        return curve;
    };
    const struct {
        const char* what;
        int kind, handle;
        GraphValue to;
        VariationCurve after;
    } rows[] = {
        {"start", kEase, 0, {0.7, 44}, with(kEase, [](auto& c) { c.start = 44; })},
        {"end", kConstant, 1, {0.7, 44}, with(kConstant, [](auto& c) { c.end = 44; })},
        {"period", kSine, 1, {0.7, 44}, with(kSine, [](auto& c) { c.c2 = 70; })},
        {"shortest period", kSine, 1, {0.01, 44}, with(kSine, [](auto& c) { c.c2 = 5; })},
        {"amplitude", kSine, 4, {0.7, 140}, with(kSine, [](auto& c) { c.end = 150; })},
        {"lowest amplitude", kSine, 4, {0.7, 1}, with(kSine, [](auto& c) { c.end = 11; })},
        {"control 1", kBezier, 2, {0.5, 44}, with(kBezier, [](auto& c) { c.c1 = 44, c.t1 = 0.5; })},
        {"control 2", kBezier, 3, {0.9, 44}, with(kBezier, [](auto& c) { c.c2 = 44, c.t2 = 0.9; })},
        {"no controls but of Bezier", kLinear, 2, {0.5, 44}, with(kLinear, [](auto&) {})},
        {"no amplitude but of sine", kBezier, 4, {0.5, 44}, with(kBezier, [](auto&) {})},
        {"nothing held", kBezier, kNoHandle, {0.5, 44}, with(kBezier, [](auto&) {})},
    };
    for (const auto& row : rows)
        for (const ControlOrder order : {ControlOrder::apart, ControlOrder::free}) {
            VariationCurve curve = with(row.kind, [](auto&) {});
            DragHandle(curve, row.handle, row.to, order);
            EXPECT_EQ(row.after, curve) << row.what;
        }
}

TEST(DragHandle, ControlsStayInOrderOrGoFreelyByTheGraph) {
    VariationCurve apart{.kind = kBezier, .t1 = 0.3, .t2 = 0.6}, free = apart;
    DragHandle(apart, kHandle1, {0.9, 100}, ControlOrder::apart);
    DragHandle(free, kHandle1, {0.9, 100}, ControlOrder::free);
    EXPECT_DOUBLE_EQ(0.58, apart.t1);
    EXPECT_DOUBLE_EQ(0.9, free.t1);
    DragHandle(apart, kHandle2, {0.1, 100}, ControlOrder::apart);
    DragHandle(free, kHandle2, {0.1, 100}, ControlOrder::free);
    EXPECT_DOUBLE_EQ(0.6, apart.t2);
    EXPECT_DOUBLE_EQ(0.1, free.t2);
    // At the ends of the path the area counts for more than the distance.
    VariationCurve low{.kind = kBezier, .t1 = 0, .t2 = 0.01}, high{.kind = kBezier, .t1 = 0.99, .t2 = 1};
    DragHandle(low, kHandle1, {0, 100}, ControlOrder::apart);
    DragHandle(high, kHandle2, {1, 100}, ControlOrder::apart);
    EXPECT_EQ(0, low.t1);
    EXPECT_EQ(1, high.t2);
}

TEST(DragHandle, AHandleThatIsDraggedLiesUnderTheCursorAsFarAsItIsFree) {
    const GraphPixel target{100, 130};
    const struct {
        int kind, handle;
        bool across, up; // which way the handle follows
    } rows[] = {{kLinear, 0, false, true}, {kEase, 1, false, true}, {kBezier, 2, true, true},
                {kBezier, 3, true, true},  {kSine, 0, false, true}, {kSine, 1, true, false},
                {kSine, 4, false, true}};
    for (const auto& row : rows) {
        VariationCurve curve{.kind = row.kind, .start = 90, .end = 160, .c1 = 40, .c2 = 70};
        DragHandle(curve, row.handle, kPlot.toValue(target), ControlOrder::free);
        for (const GraphHandle& handle : GraphHandles(curve)) {
            if (handle.number != row.handle) continue;
            const GraphPixel at = kPlot.toPixel(handle.at);
            EXPECT_EQ(row.across, at.x == target.x) << row.kind << ", " << row.handle;
            EXPECT_EQ(row.up, at.y == target.y) << row.kind << ", " << row.handle;
        }
    }
}

TEST(CurvePixels, RunFromEdgeToEdgeThroughTheFactors) {
    const auto straight = CurvePixels({.kind = kLinear, .start = 0, .end = 200}, kPlot);
    ASSERT_EQ(121u, straight.size());
    EXPECT_EQ((GraphPixel{16, 315}), straight.front());
    EXPECT_EQ((GraphPixel{216, 116}), straight.back());
    EXPECT_EQ((GraphPixel{116, 216}), straight[60]) << "halfway from 1 to 200 percent is 100.5";
    for (const GraphPixel& p : CurvePixels({.kind = kConstant, .start = 7}, kPlot)) EXPECT_EQ(216, p.y);
}
