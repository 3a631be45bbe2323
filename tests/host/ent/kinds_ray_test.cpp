// Rays and construction lines as curves, in intersections and in files.
#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/ray.h"
#include "kinds_support.h"

namespace {

AcDbRay ray(const AcGePoint3d& base, const AcGeVector3d& direction) {
    AcDbRay r;
    r.setBasePoint(base), r.setUnitDir(direction);
    return r;
}
AcDbXline xline(const AcGePoint3d& base, const AcGeVector3d& direction) {
    AcDbXline x;
    x.setBasePoint(base), x.setUnitDir(direction);
    return x;
}
int meetings(const AcDbEntity& a, const AcDbEntity& b, AcDb::Intersect how = AcDb::kOnBothOperands) {
    AcGePoint3dArray points;
    EXPECT_EQ(a.intersectWith(&b, how, points), Acad::eOk);
    for (const AcGePoint3d& p : points) {
        AcGePoint3d foot;
        if (const auto* curve = AcDbCurve::cast(&a); curve && how == AcDb::kOnBothOperands) {
            curve->getClosestPointTo(p, foot);
            kinds::expectPoint(foot, p, 1e-7);
        }
    }
    return points.length();
}

} // namespace

TEST(EndlessLines, GroupsComeBack) {
    const std::string rays = "100|AcDbRay|10|1|20|2|30|3|11|0.6|21|0|31|0.8";
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbRay>(rays)), rays);
    const std::string lines = "100|AcDbXline|10|-1|20|2|30|3|11|0|21|-1|31|0";
    EXPECT_EQ(kinds::rowsOf(*kinds::made<AcDbXline>(lines)), lines);
}

TEST(EndlessLines, ADirectionIsBroughtToUnitLengthAndNoneIsRepaired) {
    EXPECT_EQ(kinds::made<AcDbRay>("100|AcDbRay|11|0|21|5|31|0")->unitDir(), AcGeVector3d::kYAxis);
    EXPECT_EQ(kinds::made<AcDbRay>("100|AcDbRay|11|0|21|0|31|0")->unitDir(), AcGeVector3d::kXAxis);
    AcDbRay r;
    EXPECT_EQ(r.setUnitDir({0, 0, 0}), Acad::eInvalidInput);
    EXPECT_EQ(r.setBasePoint({NAN, 0, 0}), Acad::eInvalidInput);
}

TEST(EndlessLines, ParametersAreDistancesFromTheBase) {
    const AcDbRay r = ray({1, 1, 1}, {3, 4, 0});
    const AcDbXline x = xline({1, 1, 1}, {3, 4, 0});
    AcGePoint3d point;
    double value = 0;
    ASSERT_EQ(r.getPointAtDist(10, point), Acad::eOk);
    kinds::expectPoint(point, {7, 9, 1});
    ASSERT_EQ(r.getDistAtPoint(point, value), Acad::eOk);
    EXPECT_NEAR(value, 10, 1e-12);
    EXPECT_EQ(r.getPointAtParam(-1, point), Acad::eInvalidInput);
    EXPECT_EQ(x.getPointAtParam(-5, point), Acad::eOk);
    kinds::expectPoint(point, {-2, -3, 1});
    EXPECT_EQ(x.getParamAtPoint({-2, -3, 1}, value), Acad::eOk);
    EXPECT_NEAR(value, -5, 1e-12);
    EXPECT_EQ(x.getParamAtPoint({-2, -3, 1.01}, value), Acad::eInvalidInput);
    EXPECT_EQ(x.getStartParam(value), Acad::eNotApplicable);
    EXPECT_EQ(r.getEndPoint(point), Acad::eNotApplicable);
    ASSERT_EQ(r.getClosestPointTo({-9, 1, 1}, point), Acad::eOk);
    kinds::expectPoint(point, {1, 1, 1});
    AcDbExtents box;
    EXPECT_EQ(x.getGeomExtents(box), Acad::eInvalidExtents);
}

TEST(EndlessLines, TheyMeetOthersFromEitherSideAndFarAway) {
    const AcDbRay r = ray({0, 0, 0}, {1, 0, 0});
    const AcDbXline x = xline({0, 0, 0}, {1, 0, 0});
    const AcDbCircle near({0, 0, 0}, AcGeVector3d::kZAxis, 2), far({1e5, 1, 0}, AcGeVector3d::kZAxis, 3);
    const AcDbLine behind({-4, -1, 0}, {-4, 1, 0}), shortOf({5, 1, 0}, {5, 2, 0});
    EXPECT_EQ(meetings(r, near), 1);
    EXPECT_EQ(meetings(near, r), 1);
    EXPECT_EQ(meetings(x, near), 2);
    EXPECT_EQ(meetings(near, x), 2);
    EXPECT_EQ(meetings(r, far), 2);
    EXPECT_EQ(meetings(r, behind), 0);
    EXPECT_EQ(meetings(r, behind, AcDb::kExtendThis), 1);
    EXPECT_EQ(meetings(behind, r, AcDb::kExtendArg), 1);
    EXPECT_EQ(meetings(x, shortOf), 0);
    EXPECT_EQ(meetings(shortOf, x, AcDb::kExtendThis), 1);
    EXPECT_EQ(meetings(x, xline({7, 7, 0}, {0, 1, 0})), 1);
    EXPECT_EQ(meetings(r, ray({7, 7, 0}, {0, 1, 0})), 0);
    EXPECT_EQ(meetings(r, ray({7, 7, 0}, {0, -1, 0})), 1);
    EXPECT_EQ(meetings(x, xline({7, 7, 1}, {0, 1, 0})), 0);
}

TEST(EndlessLines, MovesAndDrawing) {
    AcDbRay r = ray({1, 0, 0}, {1, 0, 0});
    ASSERT_EQ(r.transformBy(AcGeMatrix3d::scaling(5) *
                            AcGeMatrix3d::rotation(std::acos(-1) / 2, AcGeVector3d::kZAxis)),
              Acad::eOk);
    kinds::expectPoint(r.basePoint(), {0, 5, 0});
    EXPECT_TRUE(r.unitDir().isEqualTo(AcGeVector3d::kYAxis));
    const kinds::Sketch sketch(r);
    ASSERT_EQ(sketch.rays.size(), 1u);
    kinds::expectPoint(sketch.rays[0].second, {0, 6, 0});
    AcDbVoidPtrArray parallels;
    ASSERT_EQ(r.getOffsetCurves(2, parallels), Acad::eOk);
    const std::unique_ptr<AcDbRay> parallel(static_cast<AcDbRay*>(static_cast<AcDbCurve*>(parallels[0])));
    kinds::expectPoint(parallel->basePoint(), {2, 5, 0}); // to the right of upward
}
