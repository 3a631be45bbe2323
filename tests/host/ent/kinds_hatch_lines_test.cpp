// Hatch lines clipped to outlines: lengths are areas over spacings, nothing lies outside.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/ent/hatch_lines.h"

using namespace host;

namespace {

constexpr double kPi = std::numbers::pi;

std::vector<AcGePoint2d> ring(const AcGePoint2d& center, double radius, int corners, double turn = 0) {
    std::vector<AcGePoint2d> out;
    for (int i = 0; i < corners; ++i) {
        const double a = turn + 2 * kPi * i / corners;
        out.push_back(center + AcGeVector2d(radius * std::cos(a), radius * std::sin(a)));
    }
    return out;
}
std::vector<AcGePoint2d> box(double x0, double y0, double x1, double y1) {
    return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}
double lengthOf(const std::vector<HatchSegment>& segments) {
    double sum = 0;
    for (const HatchSegment& s : segments) sum += s.from.distanceTo(s.to);
    return sum;
}
std::vector<HatchSegment> hatched(const HatchContours& contours, const HatchLineFamily& family) {
    std::vector<HatchSegment> out;
    EXPECT_TRUE(appendHatchLines(contours, family, 1'000'000, out));
    return out;
}
HatchLineFamily family(double angle, double spacing, std::vector<double> dashes = {}, double shift = 0) {
    const AcGeVector2d along(std::cos(angle), std::sin(angle));
    return {angle, {0.37, -0.21}, along.perpVector() * spacing + along * shift, std::move(dashes)};
}

struct Case {
    const char* caption;
    HatchContours contours;
    double area;
};
std::vector<Case> cases() {
    const double circle = 0.5 * 64 * std::sin(2 * kPi / 64);
    HatchContours star;
    for (int i = 0; i < 10; ++i) // a star that crosses itself: two pentagons' worth of corners
        if (i % 2 == 0) star.resize(1), star[0].push_back(ring({0, 0}, 3, 10)[size_t(i)]);
    return {{"square", {box(0, 0, 4, 4)}, 16},
            {"ring", {ring({2, 1}, 5, 64), ring({2, 1}, 2, 64, 0.1)}, 21 * circle},
            {"clockwise hole", {box(0, 0, 9, 5), {{1, 1}, {1, 2}, {8, 2}, {8, 1}}}, 38},
            {"two apart", {box(0, 0, 2, 2), ring({50, 7}, 3, 64)}, 4 + 9 * circle},
            {"far from the origin", {box(1e6, -1e6, 1e6 + 3, -1e6 + 7)}, 21},
            {"pentagon", star, contourArea(star[0])}};
}

} // namespace

TEST(HatchLines, TheirLengthTimesTheSpacingIsTheArea) {
    for (const Case& c : cases())
        for (double angle : {0.0, kPi / 4, 1.1, kPi / 2, 3.5, -0.3}) {
            SCOPED_TRACE(std::string(c.caption) + " at " + std::to_string(angle));
            const double spacing = 0.002;
            EXPECT_NEAR(lengthOf(hatched(c.contours, family(angle, spacing))) * spacing, c.area,
                        4e-3 * c.area);
            EXPECT_NEAR(lengthOf(hatched(c.contours, family(angle, -spacing))) * spacing, c.area,
                        4e-3 * c.area);
        }
}

TEST(HatchLines, DashesCoverTheirShareAndLieInside) {
    const std::vector<double> dashes{0.3, -0.1, 0.15, -0.2, 0, -0.05};
    for (const Case& c : cases())
        for (double angle : {0.0, 0.8, 2.0}) {
            SCOPED_TRACE(std::string(c.caption) + " at " + std::to_string(angle));
            const double spacing = 0.01;
            const auto segments = hatched(c.contours, family(angle, spacing, dashes, 0.123));
            EXPECT_NEAR(lengthOf(segments) * spacing, c.area * 0.45 / 0.8, 2e-2 * c.area);
            size_t outside = 0, longest = 0, dots = 0;
            for (const HatchSegment& s : segments) {
                const AcGePoint2d middle = s.from + (s.to - s.from) * 0.5;
                const double length = s.from.distanceTo(s.to);
                if (length > 1e-6 && !isInside(c.contours, middle)) ++outside;
                longest += length > 0.3 + 1e-7;
                dots += length == 0;
            }
            EXPECT_EQ(outside, 0u);
            EXPECT_EQ(longest, 0u);
            EXPECT_NEAR(double(dots) * 0.8 * spacing, c.area, 2e-2 * c.area);
        }
}

TEST(HatchLines, LinesThroughCornersAndAlongEdgesAreWhole) {
    // Lines at whole numbers run through the corners of a rhombus and along two sides of a square.
    const HatchLineFamily level{0, {0, 0}, {0, 1}, {}};
    EXPECT_NEAR(lengthOf(hatched({{{-2, 0}, {0, -2}, {2, 0}, {0, 2}}}, level)), 2 + 4 + 2, 1e-12);
    EXPECT_NEAR(lengthOf(hatched({box(0, 0, 5, 3)}, level)), 15, 1e-12); // the upper side is left out
    EXPECT_EQ(hatched({box(0, 0.25, 5, 0.75)}, level).size(), 0u);
    // The dashes of the next line begin where the offset says.
    const auto bricks = hatched({box(0, -0.5, 4, 1.5)}, {0, {0, 0}, {0.5, 1}, {0.5, -0.5}});
    ASSERT_EQ(bricks.size(), 8u);
    EXPECT_NEAR(bricks[0].from.x, 0, 1e-12);
    EXPECT_NEAR(bricks[4].from.x, 0.5, 1e-12);
}

TEST(HatchLines, TooManyOrNotFiniteIsRefused) {
    std::vector<HatchSegment> out;
    EXPECT_FALSE(appendHatchLines({box(0, 0, 1e9, 1e9)}, family(0.3, 1e-9), 1000, out));
    EXPECT_FALSE(appendHatchLines({box(0, 0, 1e9, 1)}, family(0, 0.1, {1e-9, -1e-9}), 1000, out));
    EXPECT_FALSE(appendHatchLines({box(0, 0, NAN, 1)}, family(0.3, 0.1), 1000, out));
    EXPECT_TRUE(appendHatchLines({}, family(0, 1), 10, out));
    EXPECT_TRUE(out.empty());
    EXPECT_TRUE(appendHatchLines({box(0, -1, 4, 1)}, {0, {0, 0}, {1, 0}, {}}, 10, out)); // one line
    EXPECT_EQ(out.size(), 1u);
}

TEST(HatchLines, StylesLeaveOutWhatLiesDeeper) {
    const HatchContours nest{box(2, 2, 3, 3), box(0, 0, 10, 10), box(1, 1, 5, 5), box(6, 6, 7, 7)};
    EXPECT_EQ(withoutInner(nest, 0).size(), 1u);
    EXPECT_EQ(withoutInner(nest, 1).size(), 3u);
    EXPECT_EQ(withoutInner(nest, 2).size(), 4u);
}
