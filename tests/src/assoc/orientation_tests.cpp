// Which way the curves of a blend run, on plain points.
#include <gtest/gtest.h>

#include "assoc/blend/blend_orientation.h"

using namespace corvane;

namespace {

CurveEnds ends(double x0, double y0, double x1, double y1) { return {{x0, y0, 0}, {x1, y1, 0}}; }

} // namespace

TEST(BlendOrientation, ACurveStartsNearItsPick) {
    struct Row {
        const char* caption;
        CurveEnds curve;
        AcGePoint3d pick;
        bool reversed;
    };
    const Row rows[] = {
        {"near the start", ends(0, 0, 10, 0), {1, 0, 0}, false},
        {"near the end", ends(0, 0, 10, 0), {9, 0, 0}, true},
        {"in the middle, the lesser x first", ends(10, 0, 0, 0), {5, 0, 0}, true},
        {"in the middle, in order", ends(0, 0, 10, 0), {5, 0, 0}, false},
        {"in the middle but for rounding", ends(10, 0, 0, 0), {5 + 1e-9, 0, 0}, true},
        {"the same x: the lesser y", ends(0, 10, 0, 0), {0, 5, 0}, true},
        {"the same x and y: the lesser z", {{0, 0, 4}, {0, 0, 1}}, {0, 0, 2.5}, true},
        {"closed", ends(3, 3, 3, 3), {8, 1, 0}, false},
    };
    for (const Row& row : rows) EXPECT_EQ(row.reversed, ReversedByPick(row.curve, row.pick)) << row.caption;
}

TEST(BlendOrientation, WithGuidesCurvesRunTowardGreaterX) {
    // Both curves run leftward; the guide joins their left ends.
    const BlendOrientation found = OrientByGuides(ends(10, 0, 0, 0), ends(12, 5, 0, 5), ends(0, 0, 0, 5), {});
    EXPECT_TRUE(found.reversed1 && found.reversed2);
    EXPECT_EQ(0, found.atStarts);
    EXPECT_EQ(-1, found.atEnds);
}

TEST(BlendOrientation, AGuideSteersTheEndThatItMeets) {
    const CurveEnds low = ends(0, 0, 10, 0), high = ends(0, 5, 10, 5);
    const CurveEnds left = ends(0, 5, 0, 0), right = ends(10, 0, 10.00005, 5), apart = ends(40, 0, 40, 5);
    struct Row {
        const char* caption;
        CurveEnds first;
        std::optional<CurveEnds> second;
        int atStarts, atEnds;
    };
    const Row rows[] = {
        {"left alone", left, {}, 0, -1},    {"right alone", right, {}, -1, 0},
        {"left, right", left, right, 0, 1}, {"right, left", right, left, 1, 0},
        {"apart, alone", apart, {}, 0, -1}, {"apart, then left", apart, left, 1, 0},
        {"both apart", apart, apart, 0, 1},
    };
    for (const Row& row : rows) {
        const BlendOrientation found = OrientByGuides(low, high, row.first, row.second);
        EXPECT_EQ(row.atStarts, found.atStarts) << row.caption;
        EXPECT_EQ(row.atEnds, found.atEnds) << row.caption;
        EXPECT_FALSE(found.reversed1 || found.reversed2) << row.caption;
    }
}

TEST(BlendOrientation, AGuideFromStartToEndTurnsTheSecondCurve) {
    // The right end of the one and the left end of the other are joined.
    const BlendOrientation found =
        OrientByGuides(ends(0, 0, 10, 0), ends(11, 5, 20, 5), ends(10, 0, 11, 5), {});
    EXPECT_FALSE(found.reversed1);
    EXPECT_TRUE(found.reversed2);
    EXPECT_EQ(-1, found.atStarts);
    EXPECT_EQ(0, found.atEnds);
}

TEST(BlendOrientation, OnlyATurnMakesACurveTurned) {
    const CurveEnds curve = ends(0, 0, 10, 0);
    for (const bool reversed : {false, true}) {
        const AcGePoint3d anchor = curve.turnedIf(reversed).start;
        EXPECT_FALSE(TurnedSince(curve, reversed, anchor));
        EXPECT_TRUE(TurnedSince(curve.turned(), reversed, anchor));
        EXPECT_FALSE(TurnedSince(curve.turned(), !reversed, anchor)) << "once the flag has followed";
    }
}
