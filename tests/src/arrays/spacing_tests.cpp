// Distances of copies along a guide, on numbers alone.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <string>

#include "arrays/common/spacing.h"

using namespace corvane;
using testing::DoubleNear;
using testing::Pointwise;

namespace {

constexpr VariationCurve kGrowing{.kind = kLinear, .start = 50, .end = 150};
constexpr VariationCurve kWidening{.kind = kLinear, .start = 100, .end = 300};
constexpr GuideMeasure kOpen{100, false, 0}, kRing{100, true, 0}, kRingFrom90{100, true, 90};
constexpr GuideStart kFromEnd{.fromEnd = true}, kAgainst{.direction = -1};

ArraySettings byCount(int count, const VariationCurve& gaps = {}) {
    ArraySettings settings;
    settings.count = count;
    settings.gaps = gaps;
    return settings;
}
ArraySettings bySpacing(double spacing, const VariationCurve& gaps = {}, int gain = 1) {
    ArraySettings settings;
    settings.mode = kBySpacing;
    settings.spacing = spacing;
    settings.gaps = gaps;
    settings.gain = gain;
    return settings;
}

} // namespace

TEST(SampleDistances, StandWhereTheSettingsSay) {
    const struct {
        const char* caption;
        GuideMeasure guide;
        ArraySettings settings;
        GuideStart start;
        std::vector<double> expected;
    } rows[] = {
        {"equal steps to the far end", kOpen, byCount(5), {}, {0, 25, 50, 75, 100}},
        {"from the end point", kOpen, byCount(5), kFromEnd, {100, 75, 50, 25, 0}},
        {"a ring has its start once", kRing, byCount(4), {}, {0, 25, 50, 75}},
        {"a ring from its ray", kRingFrom90, byCount(4), {}, {90, 15, 40, 65}},
        {"against the ring's sense", kRingFrom90, byCount(4), kAgainst, {90, 65, 40, 15}},
        {"fewer than two are two", kOpen, byCount(-7), {}, {0, 100}},
        // Two gaps weigh 0.75 and 1.25.
        {"growing gaps", kOpen, byCount(3, kGrowing), {}, {0, 37.5, 100}},
        {"growing gaps from the end point", kOpen, byCount(3, kGrowing), kFromEnd, {100, 62.5, 0}},
        {"the gap that closes the ring keeps its share", kRing, byCount(2, kGrowing), {}, {0, 37.5}},
        {"by spacing", kOpen, bySpacing(30), {}, {0, 30, 60, 90}},
        {"by spacing from the end point", kOpen, bySpacing(30), kFromEnd, {100, 70, 40, 10}},
        {"by spacing up to the end itself", kOpen, bySpacing(25), {}, {0, 25, 50, 75, 100}},
        {"by spacing round a ring", kRing, bySpacing(30), {}, {0, 30, 60}},
        {"by spacing round a ring from its ray", kRingFrom90, bySpacing(30), kAgainst, {90, 60, 30}},
        {"spacings beyond a half count as a half", kOpen, bySpacing(80), {}, {0, 50, 100}},
        // Steps of 30 weigh 5/3 and 7/3: the second would end at 120.
        {"what falls beyond the end is dropped", kOpen, bySpacing(30, kWidening), {}, {0, 50}},
        // Weights of 2 and 3 with a gain of 4 are 5 and 9: nothing fits.
        {"two stand at least", kOpen, bySpacing(50, kWidening, 4), {}, {0, 50}},
    };
    for (const auto& row : rows)
        EXPECT_THAT(SampleDistances(row.guide, row.settings, row.start),
                    Pointwise(DoubleNear(1e-9), row.expected))
            << row.caption;
}

TEST(SampleDistances, CountsAndSpacingsAreHeldWithinReason) {
    EXPECT_EQ(1001u, SampleDistances(kOpen, bySpacing(1e-6), {}).size());
    EXPECT_EQ(size_t(kMostCopies), SampleDistances(kOpen, byCount(2000000000), {}).size());
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(1001u, SampleDistances(kOpen, bySpacing(kNan), {}).size());
    for (const double length : {0.0, 9e-7, -5.0, kNan, std::numeric_limits<double>::infinity()})
        EXPECT_TRUE(SampleDistances(GuideMeasure{length, false, 0}, byCount(5), {}).empty()) << length;
}

// Every kind of gap, both modes, open guides and rings, short and long: the distances run one way, stay on
// the guide, reach its end by count, grow with the guide and run back to front from the other end.
TEST(SampleDistances, KeepTheirLawsForAllKindsOfGaps) {
    for (int kind = 0; kind < kVariationKinds; ++kind)
        for (const bool closed : {false, true})
            for (const int mode : {kByCount, kBySpacing})
                for (const double length : {1e-3, 1.0, 1e6}) {
                    const std::string caption = std::to_string(kind) + (closed ? " ring " : " open ") +
                                                std::to_string(mode) + " " + std::to_string(length);
                    ArraySettings settings = byCount(37, {kind, 40, 220, 30, 90, 0.2, 0.9});
                    settings.mode = mode;
                    settings.spacing = length / 23.5;
                    const GuideMeasure guide{length, closed, 0};
                    const auto distances = SampleDistances(guide, settings, {});
                    ASSERT_GE(distances.size(), 2u) << caption;
                    EXPECT_EQ(0, distances.front()) << caption;
                    for (size_t i = 1; i < distances.size(); ++i)
                        EXPECT_GT(distances[i], distances[i - 1]) << caption;
                    EXPECT_LT(distances.back(), length * (closed ? 1 : 1 + 1e-12)) << caption;
                    const bool reaches = !closed && mode == kByCount;
                    EXPECT_NEAR(length, reaches ? distances.back() : length, 1e-12 * length) << caption;

                    settings.spacing *= 3;
                    const auto longer = SampleDistances({length * 3, closed, 0}, settings, {});
                    settings.spacing /= 3;
                    const GuideStart other = closed ? kAgainst : kFromEnd;
                    const auto back = SampleDistances(guide, settings, other);
                    ASSERT_EQ(distances.size(), longer.size()) << caption;
                    ASSERT_EQ(distances.size(), back.size()) << caption;
                    for (size_t i = 0; i < distances.size(); ++i) {
                        EXPECT_NEAR(distances[i] * 3, longer[i], 1e-9 * length) << caption;
                        const double mirrored = closed && i == 0 ? 0 : length - distances[i];
                        EXPECT_NEAR(mirrored, back[i], 1e-9 * length) << caption;
                    }
                }
}

TEST(CopyPosition, RunsToTheEndOnlyWhereThereIsOne) {
    EXPECT_EQ(1.0, CopyPosition(4, 5, false));
    EXPECT_EQ(0.8, CopyPosition(4, 5, true));
    EXPECT_EQ(0.0, CopyPosition(0, 1, false));
}
