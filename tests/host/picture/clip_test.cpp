// Clipping against a slow twin that walks the path in small steps.
#include "host/picture/clip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace host;

namespace {

const ClipBox kBox{0, 0, 10, 10};

double lengthInside(const std::vector<AcGePoint2d>& line) {
    constexpr int steps = 4000;
    double inside = 0;
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        const AcGeVector2d way = line[i + 1] - line[i];
        for (int k = 0; k < steps; ++k)
            if (kBox.holds(line[i] + way * ((k + 0.5) / steps))) inside += std::hypot(way.x, way.y) / steps;
    }
    return inside;
}

} // namespace

TEST(Clip, LinesKeepExactlyWhatIsInside) {
    std::mt19937 random(20231);
    std::uniform_real_distribution<double> place(-15, 25);
    for (int round = 0; round < 200; ++round) {
        std::vector<AcGePoint2d> line(4), points;
        for (AcGePoint2d& p : line) p.set(place(random), place(random));
        std::vector<std::uint32_t> ends;
        clipLine(line, kBox, points, ends);
        double length = 0;
        std::uint32_t from = 0;
        for (std::uint32_t end : ends) {
            for (; from + 1 < end; ++from) length += points[from].distanceTo(points[from + 1]);
            from = end;
        }
        for (const AcGePoint2d& p : points)
            EXPECT_TRUE(ClipBox({-1e-9, -1e-9, 10 + 1e-9, 10 + 1e-9}).holds(p));
        EXPECT_NEAR(length, lengthInside(line), 0.05) << "seed 20231, round " << round;
    }
}

TEST(Clip, AreasKeepTheirShareOfTheBox) {
    const std::vector<AcGePoint2d> diamond{{5, -5}, {15, 5}, {5, 15}, {-5, 5}}; // takes all of the box
    std::vector<AcGePoint2d> points;
    std::vector<std::uint32_t> ends;
    clipArea(diamond, kBox, points, ends);
    double twice = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const AcGePoint2d &a = points[i], &b = points[(i + 1) % points.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    EXPECT_NEAR(twice / 2, 100, 1e-9);
    clipArea({{20, 20}, {30, 20}, {30, 30}}, kBox, points, ends);
    EXPECT_EQ(ends.size(), 1u);
}
