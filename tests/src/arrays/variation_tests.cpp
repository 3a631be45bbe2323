// Variation curves: numbers worked by hand, and laws that all kinds keep.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "arrays/variation/variation.h"

using namespace corvane;

namespace {
constexpr double kThird = 1.0 / 3, kNoNumber = std::numeric_limits<double>::quiet_NaN();
}

TEST(EvalVariation, GivesWorkedNumbers) {
    // Each from the kind's formula in fractions: the sine of 30 degrees is 1/2, of 90 degrees 1; the smooth
    // step at 1/4 is (3 - 1/2) / 16 = 5/32; the Bézier through 1/2, 2, 1/4, 3/2 at 1/4 is
    // (27/64)(1/2) + (27/64)(2) + (9/64)(1/4) + (1/64)(3/2) = 285/256.
    const struct {
        const char* what;
        int kind;
        double t, start, end, c1, c2, t1, t2, factor;
    } rows[] = {
        {"constant whatever the rest", 0, 0.3, 20, 250, 1, 1, 0, 1, 1},
        {"linear", 1, 0.25, 40, 200, 100, 100, kThird, 2 * kThird, 0.8},
        {"linear before the path", 1, -3, 40, 200, 100, 100, kThird, 2 * kThird, 0.4},
        {"linear behind the path", 1, 7, 40, 200, 100, 100, kThird, 2 * kThird, 2},
        {"start 0 counts as 1 percent", 1, 0, 0, 200, 100, 100, kThird, 2 * kThird, 0.01},
        {"end above 100 times", 1, 1, 0, 1e9, 100, 100, kThird, 2 * kThird, 100},
        {"sine at a twelfth of its period", 2, 1.0 / 12, 100, 150, 100, 100, 0, 0, 1.25},
        {"sine with period 1/2, at its crest", 2, 0.125, 80, 130, 100, 50, 0, 0, 1.1},
        {"sine's trough, held at 1 percent", 2, 0.75, 50, 199, 100, 100, 0, 0, 0.01},
        {"amplitude below -0.99", 2, 0.25, 200, -300, 100, 100, 0, 0, 1.01},
        {"end 100 is flat", 2, 0.4, 70, 100, 100, 37, 0, 0, 0.7},
        {"smooth step", 3, 0.25, 100, 420, 100, 100, 0, 0, 1.5},
        {"Bezier, even controls", 4, 0.25, 50, 150, 200, 25, kThird, 2 * kThird, 285.0 / 256},
        {"kinds beyond are Bezier curves", 9, 0.25, 50, 150, 200, 25, kThird, 2 * kThird, 285.0 / 256},
        {"negative kinds too", -1, 0.25, 50, 150, 200, 25, kThird, 2 * kThird, 285.0 / 256},
        {"t that is no number is the start", 3, kNoNumber, 60, 420, 100, 100, 0, 0, 0.6},
        {"values that are no number are 1 percent", 1, 0.5, kNoNumber, 199, 100, 100, 0, 0, 1},
    };
    for (const auto& r : rows)
        EXPECT_NEAR(r.factor, EvalVariation(r.kind, r.t, r.start, r.end, r.c1, r.c2, r.t1, r.t2), 1e-12)
            << r.what;
}

TEST(EvalVariation, ShortPeriodsAreTwentiethsOfThePath) {
    for (double t : {0.01, 0.03, 0.77})
        EXPECT_EQ(EvalVariation(2, t, 100, 150, 0, 5, 0, 0), EvalVariation(2, t, 100, 150, 0, -40, 0, 0));
}

TEST(EvalVariation, UnevenControlsAreSolvedByFourteenHalvings) {
    // X(1/2) = 3/8 (0.1 + 0.2) + 1/8 = 0.2375. The halvings end in an interval of 2^-14 whose middle lies
    // 2^-15 from 1/2, below it since an equal abscissa goes to the lower half.
    const double u = 0.5 - std::pow(2, -15), r = 1 - u;
    const double expected = 0.5 * r * r * r + 6 * r * r * u + 0.75 * r * u * u + 1.5 * u * u * u;
    EXPECT_NEAR(expected, EvalVariation(4, 0.2375, 50, 150, 200, 25, 0.1, 0.2), 1e-12);
    EXPECT_NE(35.0 / 32, EvalVariation(4, 0.2375, 50, 150, 200, 25, 0.1, 0.2)) << "not the exact root";
}

TEST(EvalVariation, ThirdsAreTakenAsEvenWithinABillionth) {
    const auto at = [](double t1) { return EvalVariation(4, 0.4, 50, 150, 200, 25, t1, 2 * kThird); };
    EXPECT_EQ(at(kThird), at(kThird + 0.9e-9));
    EXPECT_NE(at(kThird), at(kThird + 1.1e-9));
    EXPECT_NEAR(at(kThird), at(kThird + 1.1e-9), 1e-3);
}

TEST(EvalVariation, CurvesWithEndsRunFromStartToEnd) {
    for (int kind : {kLinear, kEase, kBezier})
        for (double start : {1.0, 55.0, 300.0})
            for (double end : {1.0, 140.0}) {
                VariationCurve curve{kind, start, end, 30, 270};
                EXPECT_NEAR(start / 100, EvalVariation(curve, 0), 1e-12);
                EXPECT_NEAR(end / 100, EvalVariation(curve, 1), 1e-12);
                // Run backwards, the mirrored curve gives the same factors.
                const VariationCurve mirrored{kind, end, start, 270, 30};
                for (double t : {0.1, 0.5, 0.85})
                    EXPECT_NEAR(EvalVariation(curve, t), EvalVariation(mirrored, 1 - t), 1e-12);
            }
}

TEST(EvalVariation, BezierWithControlsOnTheChordIsTheStraightLine) {
    const VariationCurve chord{kBezier, 40, 200, 72, 168, 0.2, 0.8};
    for (int i = 0; i <= 20; ++i) {
        const double t = i / 20.0;
        // Values a fifth and four fifths up at abscissae a fifth and four fifths along.
        EXPECT_NEAR(0.4 + 1.6 * t, EvalVariation(chord, t), 1e-3);
    }
}

TEST(ApplyGain, StretchesTheDistanceFromOneAndIsHeldToUse) {
    EXPECT_DOUBLE_EQ(2.5, ApplyGain(1.5, 3));
    EXPECT_DOUBLE_EQ(-0.5, ApplyGain(0.5, 3));
    for (int gain : {1, 0, -7}) EXPECT_DOUBLE_EQ(0.5, ApplyGain(0.5, gain));
    const VariationCurve curve{kLinear, 1, 10000};
    EXPECT_DOUBLE_EQ(0.001, SizeFactor(curve, 0, 50)) << "0.01 - 1 times 50 is far below nothing";
    EXPECT_DOUBLE_EQ(1000, SizeFactor(curve, 1, 50));
    EXPECT_DOUBLE_EQ(0.01, SpacingWeight(curve, 0, 50));
    EXPECT_DOUBLE_EQ(100, SpacingWeight(curve, 1, 50));
    EXPECT_DOUBLE_EQ(100, SizeFactor(curve, 1, 1));
}
