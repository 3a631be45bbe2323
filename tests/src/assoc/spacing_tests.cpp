// Spacing functions on numbers worked by hand, their laws, their stored form, and the graph's handles.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "assoc/spacing_graph_model.h"

using namespace corvane;

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
using Values = std::array<double, 6>;

SpacingFunction of(int kind, Values d = SpacingFunction().d, int accel = 0) { return {kind, accel, d}; }

} // namespace

TEST(Spacing, GivesTheNumbersWorkedByHand) {
    const Values usual = SpacingFunction().d;
    struct Row {
        const char* caption;
        SpacingFunction f;
        double t, expected;
    };
    const Row rows[] = {
        {"straight", of(kLinearSpacing), 0.25, 0.25},
        {"between two values", of(kLinearSpacing, {0.2, 0, 0, 0, 0, 0.7}), 0.4, 0.4},
        {"falling", of(kLinearSpacing, {0.9, 0, 0, 0, 0, 0.1}), 0.75, 0.3},
        {"values beyond their range", of(kLinearSpacing, {-3, 0, 0, 0, 0, 7}), 0.3, 0.3},
        {"no acceleration is no change", of(kAccelerated), 0.37, 0.37},
        {"full acceleration: t cubed", of(kAccelerated, usual, 100), 0.5, 0.125},
        {"half acceleration: t squared", of(kAccelerated, usual, 50), 0.3, 0.09},
        {"full deceleration: 1 - (1-t) cubed", of(kAccelerated, usual, -100), 0.5, 0.875},
        {"half deceleration", of(kAccelerated, usual, -50), 0.3, 0.51},
        {"acceleration beyond its range", of(kAccelerated, usual, 30000), 0.5, 0.125},
        {"sine at its crest", of(kSineSpacing), 0.25, 0.5},
        {"sine below the bottom", of(kSineSpacing), 0.75, 0},
        {"half the height round a half", of(kSineSpacing, {0.5, 0, 0, 0, 0.5, 0.75}), 0.125, 0.75},
        {"sine at 1/12 of its length", of(kSineSpacing, {0.25, 0, 0, 0, 1, 1}), 1.0 / 12, 0.5},
        {"shortest sine: a twentieth", of(kSineSpacing, {0.5, 0, 0, 0, 0, 0.7}), 0.0125, 0.7},
        {"upside down", of(kSineSpacing, {0.5, 0, 0, 0, 1, 0.2}), 0.25, 0.2},
        {"smooth at a quarter: 10/64", of(kSmoothSpacing), 0.25, 0.15625},
        {"smooth between values", of(kSmoothSpacing, {0.2, 0, 0, 0, 0, 0.6}), 0.5, 0.4},
        // Controls at thirds: the parameter is t itself. B(1/2) = (d0 + 3 d2 + 3 d4 + d5) / 8.
        {"Bezier at thirds", of(kBezierSpacing, {0, 1.0 / 3, 0.8, 2.0 / 3, 0.8, 0}), 0.5, 0.6},
        // x1 = x2 = 1/2: X(u) = 3u/2 - 3u^2/2 + u^3; X(1/4) = 0.296875; B(1/4) = 27/64 d2 + 9/64 d4 + 1/64.
        {"Bezier with both controls in the middle", of(kBezierSpacing, {0, 0.5, 0, 0.5, 1, 1}), 0.296875,
         0.15625},
        {"Bezier that overshoots", of(kBezierSpacing, {0, 1.0 / 3, 3, 2.0 / 3, 3, 1}), 0.5, 1},
        {"a kind that there isn't", of(9), 0.42, 0.42},
        {"t below 0", of(kSmoothSpacing), -5, 0},
        {"t above 1", of(kSmoothSpacing), 5, 1},
        {"t that is no number", of(kLinearSpacing), kNan, 0},
        {"value that is no number", of(kLinearSpacing, {kNan, 0, 0, 0, 0, 1}), 0.5, 0.5},
    };
    for (const Row& row : rows) EXPECT_NEAR(row.expected, BlendSpacing(row.t, row.f), 1e-9) << row.caption;
}

TEST(Spacing, StaysWithinItsRangeAndRisesWhereItShould) {
    for (int kind = 0; kind < kSpacingKinds; ++kind)
        for (const int accel : {-100, -30, 0, 70, 100}) {
            double before = 0;
            for (int i = 0; i <= 200; ++i) {
                const double s = BlendSpacing(i / 200.0, of(kind, SpacingFunction().d, accel));
                EXPECT_GE(s, 0);
                EXPECT_LE(s, 1);
                if (kind != kSineSpacing) {
                    EXPECT_GE(s, before - 1e-9) << kind << " at " << i;
                }
                before = s;
            }
        }
}

TEST(Spacing, SlowingDownIsSpeedingUpSeenFromTheOtherEnd) {
    for (const int accel : {10, 45, 100})
        for (const double t : {0.1, 0.35, 0.8})
            EXPECT_NEAR(1 - BlendSpacing(1 - t, of(kAccelerated, {}, accel)),
                        BlendSpacing(t, of(kAccelerated, {}, -accel)), 1e-15);
}

TEST(Spacing, CopiesStandBetweenTheCurvesNotOnThem) {
    EXPECT_DOUBLE_EQ(0.5, CopyShare(0, 1, of(kLinearSpacing)));
    EXPECT_DOUBLE_EQ(0.25, CopyShare(0, 3, of(kLinearSpacing)));
    EXPECT_DOUBLE_EQ(0.75, CopyShare(2, 3, of(kLinearSpacing)));
    EXPECT_DOUBLE_EQ(0.125, CopyShare(0, 1, of(kAccelerated, {}, 100)));
}

TEST(Spacing, StoredValuesAreTenThousandthsInTheirOwnOrder) {
    EXPECT_THAT(ToStored({0.1, 0.2, 0.3, 0.4, 0.5, 0.6}),
                testing::ElementsAre(2000, 3000, 4000, 5000, 1000, 6000));
    EXPECT_EQ(kUsualShares, ToStored(SpacingFunction().d));
    EXPECT_THAT(ToStored({-1, 0.00005, 0.99996, 2, kNan, 0.33334}),
                testing::ElementsAre(1, 10000, 10000, 0, 0, 3333));
    EXPECT_THAT(FromStored({2000, 3000, -7, 12000, 1000, 6000}),
                testing::ElementsAre(0.1, 0.2, 0.3, 0, 1, 0.6));
}

TEST(SpacingGraph, HandlesLieOnTheCurveAndComeWhereTheyAreDragged) {
    const UnitPlot plot(232, 132); // 200 by 100 inside
    struct Row {
        int kind;
        SpacingHandle handle;
        PlotShare to, shown;
    };
    const Row rows[] = {
        {kLinearSpacing, SpacingHandle::start, {0.6, 0.3}, {0, 0.3}},
        {kSmoothSpacing, SpacingHandle::end, {0.2, 0.7}, {1, 0.7}},
        {kAccelerated, SpacingHandle::bend, {0.9, 0.25}, {0.5, 0.25}},
        {kAccelerated, SpacingHandle::bend, {0.5, 0.01}, {0.5, 0.125}},
        {kSineSpacing, SpacingHandle::length, {0.4, 0.9}, {0.4, 0}},
        {kSineSpacing, SpacingHandle::length, {0.01, 0}, {0.05, 0}},
        {kSineSpacing, SpacingHandle::height, {0.4, 0.3}, {0.25, 0.3}},
        {kBezierSpacing, SpacingHandle::control1, {0.8, 0.9}, {0.8, 0.9}},
        {kBezierSpacing, SpacingHandle::control2, {-1, 2}, {0, 1}},
    };
    for (const Row& row : rows) {
        SpacingFunction f = of(row.kind);
        DragSpacingHandle(f, row.handle, row.to);
        bool found = false;
        for (const PlacedHandle& placed : SpacingHandles(f)) {
            if (placed.handle != row.handle) continue;
            found = true;
            EXPECT_NEAR(row.shown.t, placed.at.t, 1e-12) << row.kind;
            EXPECT_NEAR(row.shown.value, placed.at.value, 0.004) << row.kind; // whole accelerations
            const PlotPixel at = plot.toPixel(placed.at);
            EXPECT_EQ(row.handle, HitSpacingHandle(f, plot, {at.x + 7, at.y - 7})) << row.kind;
            EXPECT_NE(row.handle, HitSpacingHandle(f, plot, {at.x + 8, at.y})) << row.kind;
        }
        EXPECT_TRUE(found);
    }
}

TEST(SpacingGraph, AHandleThatTheKindLacksChangesNothing) {
    for (int kind = -1; kind <= kSpacingKinds; ++kind)
        for (int h = 0; h <= int(SpacingHandle::height); ++h) {
            SpacingFunction f = of(kind);
            bool has = false;
            for (const PlacedHandle& placed : SpacingHandles(f)) has |= placed.handle == SpacingHandle(h);
            if (has) continue;
            DragSpacingHandle(f, SpacingHandle(h), {0.123, 0.456});
            EXPECT_EQ(of(kind), f) << kind << ", handle " << h;
        }
}

TEST(SpacingGraph, ThePlotLeavesAMarginAndTurnsPixelsBack) {
    const UnitPlot plot(232, 132);
    EXPECT_EQ((PlotPixel{16, 116}), plot.toPixel({0, 0}));
    EXPECT_EQ((PlotPixel{216, 16}), plot.toPixel({1, 1}));
    EXPECT_EQ((PlotPixel{216, 116}), plot.toPixel({9, kNan}));
    EXPECT_DOUBLE_EQ(0.5, plot.toShare({116, 66}).t);
    EXPECT_DOUBLE_EQ(0.5, plot.toShare({116, 66}).value);
    EXPECT_DOUBLE_EQ(1, plot.toShare({500, -500}).value);
    EXPECT_EQ(0, UnitPlot(10, 10).toShare({5, 5}).t) << "no room";
}
