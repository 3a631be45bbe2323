// Transformations, planes, and the lines and arcs of the host's classes.
#include <gtest/gtest.h>

#include <cmath>

#include "host/ge/ge.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

TEST(Matrix, ArbitraryAxesFollowTheDxfRule) {
    struct Row {
        AcGeVector3d normal, x, y;
    };
    const double s = std::sqrt(0.5);
    const Row rows[] = {
        {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
        {{0, 0, -1}, {-1, 0, 0}, {0, 1, 0}},
        {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {{0, -3, 0}, {1, 0, 0}, {0, 0, 1}},
        {{1, 0, 1}, {0, 1, 0}, {-s, 0, s}},
        // Just inside the 1/64 limit the Y axis rules, just outside the Z axis.
        {{0.0156, 0, 0.99988}, {0.99988, 0, -0.0156}, {0, 1, 0}},
        {{0.0157, 0, 0.99988}, {0, 1, 0}, {-0.99988, 0, 0.0157}},
    };
    const AcGeTol loose = AcGeTol().setEqualVector(1e-5);
    for (const Row& row : rows) {
        AcGePoint3d origin;
        AcGeVector3d x, y, z;
        AcGeMatrix3d::planeToWorld(row.normal).getCoordSystem(origin, x, y, z);
        EXPECT_TRUE(x.isEqualTo(row.x, loose)) << row.normal.x << ' ' << row.normal.z;
        EXPECT_TRUE(y.isEqualTo(row.y, loose)) << row.normal.x << ' ' << row.normal.z;
        EXPECT_TRUE(z.isCodirectionalTo(row.normal, loose));
        EXPECT_TRUE(AcGeMatrix3d::worldToPlane(row.normal) * AcGeMatrix3d::planeToWorld(row.normal) ==
                    AcGeMatrix3d::kIdentity);
    }
}

TEST(Matrix, RotationTurnsCounterClockwiseAboutItsCentre) {
    const auto m = AcGeMatrix3d::rotation(kPi / 2, {0, 0, 5}, {10, 0, 0});
    EXPECT_TRUE((m * AcGePoint3d(11, 0, 3)).isEqualTo({10, 1, 3}));
    const auto third = AcGeMatrix3d::rotation(2 * kPi / 3, {1, 1, 1}); // cycles the axes
    EXPECT_TRUE((third * AcGeVector3d::kXAxis).isEqualTo(AcGeVector3d::kYAxis));
    EXPECT_TRUE((third * AcGeVector3d::kZAxis).isEqualTo(AcGeVector3d::kXAxis));
    EXPECT_TRUE(third * third * third == AcGeMatrix3d::kIdentity);
}

TEST(Matrix, InverseUndoesSkewedScaledAndPerspectiveMaps) {
    AcGeMatrix3d skew = AcGeMatrix3d::scaling(AcGeScale3d(1e-4, 3e-4, 2e-4), {5, 6, 7}) *
                        AcGeMatrix3d::rotation(0.7, {1, 2, 3});
    skew(0, 1) += 2e-4;
    AcGeMatrix3d lens;
    lens(3, 2) = -0.25;
    lens(2, 3) = 2;
    for (const AcGeMatrix3d& m : {skew, lens}) {
        ASSERT_FALSE(m.isSingular());
        const AcGePoint3d p(0.25, -1.5, 2);
        // A scale of 1e-4 about a point far off by its measure leaves ten digits.
        EXPECT_LT((m.inverse() * (m * p)).distanceTo(p), 1e-9);
    }
    const AcGeMatrix3d flat = AcGeMatrix3d::projection(AcGePlane::kXYPlane, {0, 1, 1});
    EXPECT_TRUE(flat.isSingular());
    EXPECT_TRUE(flat.inverse() == flat);
    EXPECT_TRUE((flat * AcGePoint3d(1, 5, 2)).isEqualTo({1, 3, 0}));
}

TEST(Matrix, MirrorsFixTheirMirrorAndUndoThemselves) {
    const AcGePlane plane({1, 2, 3}, AcGeVector3d(1, -2, 2));
    const AcGeLine3d line(AcGePoint3d(4, 0, 1), AcGeVector3d(1, 1, 0));
    const AcGePoint3d p(7, -3, 2);
    const auto inPlane = AcGeMatrix3d::mirroring(plane), inLine = AcGeMatrix3d::mirroring(line);
    EXPECT_NEAR(plane.signedDistanceTo(inPlane * p), -plane.signedDistanceTo(p), 1e-12);
    EXPECT_TRUE((inPlane * plane.pointOnPlane()).isEqualTo(plane.pointOnPlane()));
    EXPECT_TRUE((inPlane * p).isEqualTo(AcGePoint3d(p).mirror(plane)));
    EXPECT_NEAR(inPlane.det(), -1, 1e-12);
    const AcGePoint3d foot = line.closestPointTo(p);
    EXPECT_TRUE((inLine * p).isEqualTo(foot + (foot - p)));
    EXPECT_NEAR(inLine.det(), 1, 1e-12);
}

TEST(Matrix, JudgesItsKindRelativeToItsScale) {
    for (const double size : {1e-6, 1.0, 1e6}) {
        const auto even = AcGeMatrix3d::scaling(size) * AcGeMatrix3d::rotation(1, {1, 0, 2});
        EXPECT_TRUE(even.isUniScaledOrtho());
        EXPECT_NEAR(even.scale() / size, 1, 1e-12);
        const auto uneven = even * AcGeMatrix3d::scaling(AcGeScale3d(1, 2, 3));
        EXPECT_TRUE(uneven.isScaledOrtho());
        EXPECT_FALSE(uneven.isUniScaledOrtho());
        EXPECT_FALSE((AcGeMatrix3d::rotation(1, {0, 1, 1}) * uneven * AcGeMatrix3d::rotation(1, {0, 0, 1}))
                         .isScaledOrtho());
    }
}

TEST(Matrix, AlignTakesOneSystemOntoAnother) {
    const auto m = AcGeMatrix3d::alignCoordSys({1, 1, 1}, {2, 0, 0}, {1, 1, 0}, {0, 0, 4}, {9, 8, 7},
                                               {0, 1, 0}, {0, 0, 1}, {1, 0, 0});
    EXPECT_TRUE((m * AcGePoint3d(1, 1, 1)).isEqualTo({9, 8, 7}));
    EXPECT_TRUE((m * AcGePoint3d(3, 1, 1)).isEqualTo({9, 9, 7}));
    EXPECT_TRUE((m * AcGePoint3d(2, 2, 5)).isEqualTo({10, 8, 8}));
}

TEST(Vector, AnglesKeepTheirPrecisionAtTheEnds) {
    EXPECT_DOUBLE_EQ(AcGeVector3d(1, 0, 0).angleTo({1, 1e-9, 0}), 1e-9);
    EXPECT_NEAR(AcGeVector3d(0, 1, 0).angleTo({1, 0, 0}, AcGeVector3d::kZAxis), 1.5 * kPi, 1e-14);
    EXPECT_NEAR(AcGeVector2d(1, 0).angleToCCW({0, -1}), 1.5 * kPi, 1e-14);
    EXPECT_EQ(AcGeVector2d(1, -1e-300).angle(), 0); // not a whole turn
    EXPECT_FALSE(AcGeVector3d().isParallelTo({1, 0, 0}));
}

TEST(Plane, ConvertsThereAndBackWithAxesOfAnyShape) {
    const AcGePlane skew(AcGePoint3d(3, -1, 2), AcGeVector3d(2, 0, 0), AcGeVector3d(1, 3, 0.5));
    const AcGePoint2d p(1.5, -0.25);
    EXPECT_TRUE(AcGePoint3d(skew, p).convert2d(skew).isEqualTo(p));
    EXPECT_TRUE(skew.isOn(AcGePoint3d(skew, p)));
    AcGeLine3d line;
    ASSERT_TRUE(skew.intersectWith(AcGePlane::kYZPlane, line));
    for (const double t : {-5.0, 0.0, 2.0}) {
        EXPECT_TRUE(skew.isOn(line.evalPoint(t)));
        EXPECT_NEAR(line.evalPoint(t).x, 0, 1e-10);
    }
    EXPECT_FALSE(skew.intersectWith(AcGePlane(skew).translateBy({0, 0, 9}), line));
}

TEST(Arc, ThreePointsAreMetInOrder) {
    const AcGePoint2d cases[][3] = {
        {{1, 0}, {0, 1}, {-1, 0}}, {{-1, 0}, {0, 1}, {1, 0}}, {{5, 5}, {9, 5}, {5, 6}}};
    for (const auto& c : cases) {
        const AcGeCircArc2d arc(c[0], c[1], c[2]);
        EXPECT_TRUE(arc.startPoint().isEqualTo(c[0]));
        EXPECT_TRUE(arc.endPoint().isEqualTo(c[2]));
        EXPECT_TRUE(arc.isOn(c[1]));
        const AcGePlane tilted({1, 2, 3}, AcGeVector3d(1, 1, 1));
        const AcGePoint3d a(tilted, c[0]), b(tilted, c[1]), d(tilted, c[2]);
        const AcGeCircArc3d space(a, b, d);
        EXPECT_TRUE(space.startPoint().isEqualTo(a));
        EXPECT_TRUE(space.endPoint().isEqualTo(d));
        EXPECT_TRUE(space.isOn(b));
        EXPECT_NEAR(space.radius(), arc.radius(), 1e-12);
    }
    AcGeError error = AcGe::kOk;
    AcGeCircArc2d unit;
    EXPECT_NEAR(unit.set({0, 0}, {1, 1}, {2, 2}, error).radius(), 1, 0);
    EXPECT_EQ(error, AcGe::kLinearlyDependentArg1Arg2Arg3);
}

TEST(Arc, BulgeFormsAgreeWithTheirHeight) {
    const AcGeCircArc2d right({0, 0}, {2, 0}, 1), left({0, 0}, {2, 0}, -0.5, false);
    EXPECT_TRUE(right.midPoint().isEqualTo({1, -1})); // counter-clockwise bulges to the right
    EXPECT_TRUE(left.midPoint().isEqualTo({1, 0.5}));
    EXPECT_TRUE(left.endPoint().isEqualTo({2, 0}));
}

TEST(Arc, CrossesLinesCirclesAndPlanesWhereItShould) {
    int n = 0;
    AcGePoint2d a, b;
    const AcGeCircArc2d circle({0, 0}, 5), upper({0, 0}, 5, 0, kPi);
    EXPECT_TRUE(circle.intersectWith(AcGeLine2d(AcGePoint2d(0, 3), AcGeVector2d(1, 0)), n, a, b));
    EXPECT_EQ(n, 2);
    EXPECT_NEAR(std::fabs(a.x - b.x), 8, 1e-12);
    EXPECT_TRUE(upper.intersectWith(AcGeLine2d(AcGePoint2d(3, 0), AcGeVector2d(0, 2)), n, a, b));
    EXPECT_EQ(n, 1);
    EXPECT_TRUE(a.isEqualTo({3, 4}));
    EXPECT_TRUE(circle.intersectWith(AcGeCircArc2d({8, 0}, 5), n, a, b));
    EXPECT_EQ(n, 2);
    EXPECT_TRUE(a.isEqualTo({4, -3}) || b.isEqualTo({4, -3}));
    EXPECT_TRUE(circle.intersectWith(AcGeCircArc2d({7, 0}, 2), n, a, b)); // touching
    EXPECT_EQ(n, 1);
    AcGePoint3d c, d;
    const AcGeCircArc3d standing({0, 0, 0}, {1, 0, 0}, 5);
    EXPECT_TRUE(standing.intersectWith(AcGePlane({0, 0, 4}, AcGeVector3d(0, 0, 1)), n, c, d));
    EXPECT_EQ(n, 2);
    EXPECT_NEAR(std::fabs(c.y), 3, 1e-10);
}

TEST(Arc, ParameterOutsideGoesToTheNearerEnd) {
    const AcGeCircArc2d arc({0, 0}, 1, 0, kPi / 2, AcGeVector2d::kXAxis, true); // fourth quadrant
    EXPECT_TRUE(arc.endPoint().isEqualTo({0, -1}));
    EXPECT_TRUE(arc.closestPointTo({3, 0.5}).isEqualTo({1, 0}));
    EXPECT_TRUE(arc.closestPointTo({-0.5, -3}).isEqualTo({0, -1}));
    EXPECT_TRUE(arc.closestPointTo({2, -2}).isEqualTo({std::sqrt(0.5), -std::sqrt(0.5)}));
}

TEST(Array, AppendsItselfAndRemovesByRange) {
    AcGeIntArray a{1, 2, 3};
    a.append(a);
    a.removeSubArray(1, 3).insertAt(1, 9).swap(0, 3);
    EXPECT_EQ(a.items(), (std::vector<int>{3, 9, 2, 1}));
    EXPECT_EQ(a.find(2), 2);
    EXPECT_FALSE(a.remove(7));
    EXPECT_THROW(a.removeAt(4), std::out_of_range);
    a.setPhysicalLength(2);
    EXPECT_EQ(a.length(), 2);
}

TEST(Extents, IgnoresWhatIsEmptyAndTurnsWithItsCorners) {
    AcDbExtents box;
    box.addExt(AcDbExtents());
    EXPECT_FALSE(box.isValid());
    EXPECT_EQ(box.minPoint().x, 1e20);
    box.addPoint({0, 0, 0});
    box.addPoint({2, 1, 0});
    box.transformBy(AcGeMatrix3d::rotation(kPi / 2, {0, 0, 1}));
    EXPECT_TRUE(box.minPoint().isEqualTo({-1, 0, 0}));
    EXPECT_TRUE(box.maxPoint().isEqualTo({0, 2, 0}));
    box.expandBy({0, 0, -3});
    EXPECT_TRUE(box.minPoint().isEqualTo({-1, 0, -3}));
}

} // namespace
