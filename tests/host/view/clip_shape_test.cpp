// Cutting paths and areas to polygons, against what plain points say.
#include "host/view/clip_shape.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

using host::ClipShape;

namespace {

const std::vector<AcGePoint2d> kNotched = {{0, 0}, {10, 0}, {10, 10}, {5, 4}, {0, 10}};

double lengthOf(const ClipShape& clip, const std::vector<AcGePoint3d>& path) {
    double length = 0;
    clip.cutPath(path, [&](const ClipShape::Contour& part) {
        for (size_t i = 1; i < part.size(); ++i) length += part[i].distanceTo(part[i - 1]);
    });
    return length;
}
double areaOf(const ClipShape& clip, const std::vector<AcGePoint3d>& loop) {
    double area = 0;
    clip.cutArea(loop, [&](const ClipShape::Contour& part) {
        double twice = 0;
        for (size_t i = 0, j = part.size() - 1; i < part.size(); j = i++)
            twice += part[j].x * part[i].y - part[j].y * part[i].x;
        area += std::abs(twice) / 2;
    });
    return area;
}

} // namespace

TEST(ClipShape, KeepsTheLengthsAndAreasThatLieInside) {
    const ClipShape clip(kNotched, AcGeMatrix3d::kIdentity);
    // Across the notch at height 7: it reaches from x = 2.5 to 7.5 there.
    EXPECT_NEAR(lengthOf(clip, {{-5, 7, 0}, {15, 7, 0}}), 5, 1e-12);
    EXPECT_NEAR(lengthOf(clip, {{1, 1, 0}, {2, 1, 0}, {2, -8, 0}, {3, -8, 0}, {3, 1, 0}}), 3, 1e-12);
    EXPECT_EQ(lengthOf(clip, {{-5, 11, 0}, {15, 11, 0}}), 0);
    EXPECT_NEAR(areaOf(clip, {{-5, -5, 0}, {20, -5, 0}, {20, 20, 0}, {-5, 20, 0}}), 100 - 30, 1e-9);
    EXPECT_NEAR(areaOf(clip, {{4, 0, 0}, {6, 0, 0}, {6, 2, 0}, {4, 2, 0}}), 4, 1e-12);
    EXPECT_EQ(areaOf(clip, {{4, 9, 0}, {6, 9, 0}, {5, 8, 0}}), 0);
    int dots = 0;
    for (const AcGePoint3d& dot : {AcGePoint3d(1, 1, 0), AcGePoint3d(5, 9, 0)})
        clip.cutPath(std::span(&dot, 1), [&](const ClipShape::Contour&) { ++dots; });
    EXPECT_EQ(dots, 1);
}

TEST(ClipShape, AgreesWithPlainPointsOnRandomPathsInAnyPlaneAndSense) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(-3, 13);
    auto reversed = kNotched;
    std::reverse(reversed.begin(), reversed.end());
    const AcGeMatrix3d tilt = AcGeMatrix3d::rotation(0.7, {1, 2, 3}, {4, 5, 6}) * AcGeMatrix3d::scaling(3);
    const ClipShape flat(kNotched, AcGeMatrix3d::kIdentity), tilted(reversed, tilt.inverse());
    for (int round = 0; round < 200; ++round) {
        std::vector<AcGePoint3d> path, moved;
        for (int i = 0; i < 4; ++i) {
            path.push_back({place(random), place(random), 0});
            moved.push_back(tilt * path.back());
        }
        constexpr int kSteps = 3000;
        double expected = 0;
        for (size_t i = 1; i < path.size(); ++i)
            for (int k = 0; k < kSteps; ++k)
                if (flat.holds(path[i - 1] + (path[i] - path[i - 1]) * ((k + 0.5) / kSteps)))
                    expected += path[i].distanceTo(path[i - 1]) / kSteps;
        EXPECT_NEAR(lengthOf(flat, path), expected, 0.05);
        EXPECT_NEAR(lengthOf(tilted, moved), 3 * lengthOf(flat, path), 1e-9);
    }
}

TEST(ClipShape, WithoutAnAreaCutsNothing) {
    for (const auto& polygon : {std::vector<AcGePoint2d>{}, {{0, 0}, {1, 1}}, {{0, 0}, {1, 1}, {2, 2}}})
        EXPECT_EQ(lengthOf(ClipShape(polygon, AcGeMatrix3d::kIdentity), {{0, 0, 0}, {9, 0, 0}}), 9);
}
