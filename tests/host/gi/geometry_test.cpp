// Primitives that come to a collector as polylines: they must stay on their curves and end where
// they should, whatever the size.
#include "host/gi/draw.h"
#include "host/gi/flatten.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Keeps the points of every polyline and polygon as they come.
class Lines : public AcGiWorldGeometry {
public:
    std::vector<std::vector<AcGePoint3d>> lines, polygons;

    void getModelToWorldTransform(AcGeMatrix3d& matrix) const override { matrix.setToIdentity(); }
    using AcGiWorldGeometry::pushModelTransform;
    Adesk::Boolean pushModelTransform(const AcGeMatrix3d&) override { return true; }
    Adesk::Boolean popModelTransform() override { return true; }
    Adesk::Boolean polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d*,
                            Adesk::GsMarker) override {
        lines.emplace_back(points, points + count);
        return false;
    }
    Adesk::Boolean polygon(Adesk::UInt32 count, const AcGePoint3d* points) override {
        polygons.emplace_back(points, points + count);
        return false;
    }
    Adesk::Boolean draw(const AcGiDrawable*) override { return false; }
};

} // namespace

TEST(Primitives, CirclesThroughThreePointsAreTheCircle) {
    for (double size : {1e-3, 1.0, 1e6}) {
        Lines out;
        const AcGePoint3d centre(7 * size, -3 * size, 2 * size);
        const AcGeVector3d x(0.6 * size, 0.8 * size, 0), y(0, 0, size);
        out.circle(centre + x, centre + y, centre - x);
        ASSERT_EQ(out.lines.size(), 1u);
        for (const auto& p : out.lines[0]) EXPECT_NEAR(p.distanceTo(centre), size, 1e-9 * size);
        EXPECT_LT(out.lines[0].front().distanceTo(out.lines[0].back()), 1e-9 * size);
        EXPECT_GT(out.lines[0].size(), 40u);
    }
    Lines out;
    out.circle(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0), AcGePoint3d(2, 2, 0));
    EXPECT_TRUE(out.lines.empty());
}

TEST(Primitives, ArcThroughThreePointsPassesTheMiddleOne) {
    // The long way round and the short way round between the same ends.
    const double h = std::sqrt(0.5);
    for (double side : {-1.0, 1.0}) {
        Lines out;
        const AcGePoint3d middle(side, 0, 0);
        out.circularArc(AcGePoint3d(h, h, 0), middle, AcGePoint3d(h, -h, 0));
        double nearest = 9;
        for (const auto& p : out.lines[0]) nearest = std::min(nearest, p.distanceTo(middle));
        EXPECT_LT(nearest, 0.05) << side;
        EXPECT_LT(out.lines[0].back().distanceTo(AcGePoint3d(h, -h, 0)), 1e-9);
    }
}

TEST(Primitives, SectorsAndChordsAreFilled) {
    Lines out;
    out.circularArc(AcGePoint3d::kOrigin, 1, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, M_PI / 2,
                    kAcGiArcSector);
    ASSERT_EQ(out.polygons.size(), 1u);
    EXPECT_EQ(out.polygons[0].back(), AcGePoint3d::kOrigin);
    EXPECT_TRUE(out.lines.empty());
}

TEST(Primitives, BulgedPolylineKeepsItsArcsOnEitherSide) {
    // An arc's height is its bulge times half its chord, to the right of the way for a positive bulge.
    for (double bulge : {1.0, -1.0, 0.3, -2.5}) {
        Lines out;
        const host::PlineVertex vertices[] = {{{0, 0}, bulge, 0, 0}, {{2, 0}, 0, 0, 0}};
        out.pline({.vertices = vertices, .elevation = 3});
        double farthest = 0;
        for (const auto& p : out.lines[0]) {
            if (std::fabs(p.y) > std::fabs(farthest)) farthest = p.y;
            EXPECT_EQ(p.z, 3);
        }
        EXPECT_NEAR(farthest, -bulge, 5e-3);
    }
}

TEST(Primitives, ClosedPolylineReturnsAndANormalTurnsIt) {
    Lines out;
    const host::PlineVertex vertices[] = {{{0, 0}, 0, 0, 0}, {{2, 0}, 0, 0, 0}, {{2, 5}, 0, 0, 0}};
    out.pline({.vertices = vertices, .closed = true, .elevation = 1, .normal = {0, 0, -1}});
    ASSERT_EQ(out.lines[0].size(), 4u);
    EXPECT_EQ(out.lines[0].back(), out.lines[0].front());
    EXPECT_EQ(out.lines[0][2], AcGePoint3d(-2, 5, -1));
}

TEST(Primitives, ShellListsThatPointOutsideAreCutOff) {
    const AcGePoint3d corners[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const Adesk::Int32 good[] = {3, 0, 1, 2}, outside[] = {3, 0, 1, 7}, shortList[] = {5, 0, 1},
                       least[] = {std::numeric_limits<Adesk::Int32>::min(), 0};
    Lines out;
    out.shell(3, corners, 4, good);
    EXPECT_EQ(out.lines.size(), 1u);
    out.shell(3, corners, 4, outside);
    out.shell(3, corners, 3, shortList);
    out.shell(3, corners, 2, least);
    EXPECT_EQ(out.lines.size(), 1u);
}

TEST(Flatten, ChordsKeepTheErrorAndNeverRunAway) {
    for (double radius : {1e-3, 1.0, 1e7}) {
        const double error = 1e-4 * radius;
        const int chords = host::arcChords(radius, 2 * M_PI, error);
        EXPECT_LE(radius * (1 - std::cos(M_PI / chords)), error * (1 + 1e-9));
        EXPECT_LT(chords, 300);
    }
    EXPECT_EQ(host::arcChords(1e300, 6, 1e-300), 4096);
    EXPECT_EQ(host::arcChords(std::nan(""), 1, 1), 1);
    EXPECT_EQ(host::arcChords(1, std::numeric_limits<double>::infinity(), 1), 1);
    EXPECT_EQ(host::arcChords(1, 2 * M_PI, 100), 4); // a circle stays a figure of some area
}
