// Dashes along paths and outlines of wide polylines, judged by lengths and areas.
#include "host/view/dashes.h"
#include "host/view/ribbon.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace host;

namespace {

double area(const RibbonOutline& outline) {
    double twice = 0;
    std::uint32_t from = 0;
    for (std::uint32_t end : outline.ends) {
        for (std::uint32_t i = from; i < end; ++i) {
            const AcGePoint2d &a = outline.points[i], &b = outline.points[i + 1 < end ? i + 1 : from];
            twice += a.x * b.y - b.x * a.y;
        }
        from = end;
    }
    return twice / 2;
}

RibbonOutline ribbonOf(std::vector<RibbonPoint> points, bool closed) {
    RibbonOutline out;
    appendRibbon(out, points, closed);
    return out;
}

} // namespace

TEST(Dashes, BothEndsAreDrawnAndAlike) {
    const std::vector<double> dashDot{4, -1, 0, -1};
    for (double scale : {1e-3, 1.0, 1e5}) {
        const auto pattern = DashPattern::scaled(dashDot, scale);
        for (double repeats : {1.7, 2.0, 7.3, 100.99}) {
            const double length = repeats * pattern.total;
            const auto dashes = layDashes(pattern, length);
            ASSERT_GT(dashes.size(), 1u);
            EXPECT_EQ(dashes.front().from, 0);
            EXPECT_EQ(dashes.back().to, length);
            EXPECT_NEAR(dashes.front().to, length - dashes.back().from, 1e-9 * length);
            EXPECT_GE(dashes.front().to, 4 * scale * 0.999);
            for (std::size_t i = 1; i < dashes.size(); ++i)
                EXPECT_NEAR(dashes[i].from - dashes[i - 1].to, scale, 1e-9 * length);
        }
    }
}

TEST(Dashes, ShortPathsTinyPatternsAndNonsenseAreDrawnFull) {
    const std::vector<double> dashed{2, -1}, full{3}, bad{1, -std::numeric_limits<double>::infinity()};
    EXPECT_EQ(layDashes(DashPattern::scaled(dashed, 1), 4.9).size(), 1u);
    EXPECT_EQ(layDashes(DashPattern::scaled(dashed, 1), 5.0).size(), 2u);
    EXPECT_EQ(layDashes(DashPattern::scaled(dashed, 1e-9), 5.0).size(), 1u);
    for (double scale : {0.0, -1.0, std::nan("")})
        EXPECT_TRUE(DashPattern::scaled(dashed, scale).isContinuous());
    EXPECT_TRUE(DashPattern::scaled(full, 1).isContinuous());
    EXPECT_TRUE(DashPattern::scaled(bad, 1).isContinuous());
}

TEST(Dashes, RunRoundCorners) {
    const std::vector<AcGePoint3d> path{{0, 0, 0}, {3, 0, 0}, {3, 0, 0}, {3, 4, 0}};
    const auto at = pathDistances(path);
    std::vector<std::vector<AcGePoint3d>> dashes;
    forEachDash(std::span<const AcGePoint3d>(path), std::span<const double>(at),
                DashPattern::scaled(std::vector<double>{2, -1}, 1),
                [&](std::span<const AcGePoint3d> d) { dashes.emplace_back(d.begin(), d.end()); });
    // 7 long, of which a repeat and a dash take 5: dashes from 0 to 3 and from 4 to 7.
    ASSERT_EQ(dashes.size(), 2u);
    EXPECT_EQ(dashes[0].back(), AcGePoint3d(3, 0, 0));
    EXPECT_EQ(dashes[1].front(), AcGePoint3d(3, 1, 0));
    EXPECT_EQ(dashes[1].back(), AcGePoint3d(3, 4, 0));
}

TEST(Ribbon, AreasAreThoseOfTheFiguresDrawn) {
    const double h = 0.5; // half widths
    EXPECT_NEAR(area(ribbonOf({{{0, 0}, 0, h}, {{10, 0}, h, 0}}, false)), 10, 1e-12);
    EXPECT_NEAR(area(ribbonOf({{{0, 0}, 0, 2}, {{10, 0}, 0, 0}}, false)), 20, 1e-12); // an arrow head
    const std::vector<RibbonPoint> square{{{0, 0}, h, h}, {{10, 0}, h, h}, {{10, 10}, h, h}, {{0, 10}, h, h}};
    EXPECT_NEAR(area(ribbonOf(square, true)), 11 * 11 - 9 * 9, 1e-9);
    EXPECT_NEAR(area(ribbonOf({square.rbegin(), square.rend()}, true)), 11 * 11 - 9 * 9, 1e-9);
    std::vector<RibbonPoint> ring;
    for (int i = 0; i < 360; ++i)
        ring.push_back({{5 * std::cos(i * M_PI / 180), 5 * std::sin(i * M_PI / 180)}, h, h});
    const RibbonOutline outline = ribbonOf(ring, true);
    EXPECT_NEAR(area(outline), 2 * M_PI * 5 * 2 * h, 1e-2);
    EXPECT_EQ(outline.ends.size(), 1u); // smooth all the way round
}

TEST(Ribbon, SharpTurnsDontShootOutAndTightArcsKeepTheirSense) {
    const RibbonOutline spike = ribbonOf({{{0, 0}, 1, 1}, {{10, 0}, 1, 1}, {{0, 0.01}, 1, 1}}, false);
    for (const AcGePoint2d& p : spike.points) EXPECT_LT(std::hypot(p.x, p.y), 12);
    std::vector<RibbonPoint> tight; // radius 1, half width 2: its inner side runs backwards
    for (int i = 0; i <= 20; ++i) tight.push_back({{std::cos(i * 0.2), std::sin(i * 0.2)}, 2, 2});
    const RibbonOutline outline = ribbonOf(tight, false);
    std::uint32_t from = 0;
    for (std::uint32_t end : outline.ends) {
        RibbonOutline one{{outline.points.begin() + from, outline.points.begin() + end}, {end - from}};
        EXPECT_GE(area(one), -1e-12);
        from = end;
    }
}

TEST(Ribbon, CoincidingPointsAndSingleOnesAreNoPiece) {
    EXPECT_TRUE(ribbonOf({{{1, 1}, 1, 1}}, false).points.empty());
    EXPECT_TRUE(ribbonOf({{{1, 1}, 1, 1}, {{1, 1}, 1, 1}}, true).points.empty());
    EXPECT_NEAR(area(ribbonOf({{{0, 0}, 0, 1}, {{0, 0}, 1, 1}, {{5, 0}, 1, 0}}, false)), 10, 1e-12);
}
