// Worked numbers: results that follow from school geometry.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/db/blocktable.h"
#include "host/ent/filing.h"
#include "specimens.h"

namespace {

constexpr double kPi = std::numbers::pi;

std::unique_ptr<AcDbPolyline> square() {
    auto p = std::make_unique<AcDbPolyline>();
    for (const AcGePoint2d& at : {AcGePoint2d(0, 0), {4, 0}, {4, 4}, {0, 4}})
        p->addVertexAt(p->numVerts(), at);
    p->setClosed(true);
    return p;
}

void expectNear(const AcGePoint3d& a, const AcGePoint3d& b, double slack = 1e-12) {
    EXPECT_LE(a.distanceTo(b), slack)
        << a.x << " " << a.y << " " << a.z << " for " << b.x << " " << b.y << " " << b.z;
}

std::unique_ptr<AcDbCurve> onlyOne(const AcDbVoidPtrArray& made) {
    EXPECT_EQ(made.length(), 1);
    return std::unique_ptr<AcDbCurve>(static_cast<AcDbCurve*>(made[0]));
}

TEST(WorkedNumbers, DegreesOfFilesStayWhatTheyAreFromTheFirstSaveOn) {
    double radians = 4.932734838012; // near a number that no degrees lead to exactly
    for (int i = 0; i < 200000; ++i) {
        const double first = host::fileDegrees(radians);
        EXPECT_EQ(host::fileDegrees(host::toRadians(first)), first) << i;
        radians = std::nextafter(radians, 10) * (i % 1000 == 0 ? 0.999 : 1);
    }
}

TEST(WorkedNumbers, AreasOfKnownShapes) {
    const AcDbCircle circle({5, 5, 1}, AcGeVector3d(0, 0.6, 0.8), 2);
    const AcDbArc half({0, 0, 0}, 3, 0, kPi);
    const AcDbEllipse ellipse({0, 0, 0}, AcGeVector3d::kZAxis, {4, 0, 0}, 0.5);
    // A 2 by 2 square with half circles on two opposite sides.
    AcDbPolyline slot;
    slot.addVertexAt(0, {0, 0}), slot.addVertexAt(1, {2, 0}, 1), slot.addVertexAt(2, {2, 2}),
        slot.addVertexAt(3, {0, 2}, 1);
    slot.setClosed(true);
    const auto box = square();
    struct Row {
        const char* name;
        const AcDbCurve& curve;
        double area;
    } rows[] = {{"circle", circle, 4 * kPi},
                {"half disc", half, 4.5 * kPi},
                {"ellipse", ellipse, 8 * kPi},
                {"slot", slot, 4 + kPi},
                {"square", *box, 16}};
    for (const Row& row : rows) {
        double area = 0;
        EXPECT_EQ(row.curve.getArea(area), Acad::eOk) << row.name;
        EXPECT_NEAR(area, row.area, 1e-12 * row.area) << row.name;
    }
    double area = 0;
    EXPECT_EQ(AcDb3dPolyline(AcDb::k3dSimplePoly, specimens::zigzag(), true).getArea(area),
              Acad::eNonPlanarEntity);
}

TEST(WorkedNumbers, ArcParametersAreAnglesThatRise) {
    const AcDbArc arc({1, 1, 0}, 2, 1.5 * kPi, 0.5 * kPi);
    double start = 0, end = 0, length = 0, param = 0;
    arc.getStartParam(start), arc.getEndParam(end), arc.getDistAtParam(end, length);
    EXPECT_DOUBLE_EQ(start, 1.5 * kPi);
    EXPECT_DOUBLE_EQ(end, 2.5 * kPi);
    EXPECT_NEAR(length, 2 * kPi, 1e-12);
    AcGePoint3d p;
    EXPECT_EQ(arc.getPointAtParam(2 * kPi, p), Acad::eOk);
    expectNear(p, {3, 1, 0});
    EXPECT_EQ(arc.getPointAtParam(0, p), Acad::eOk); // the same place a turn earlier
    expectNear(p, {3, 1, 0});
    EXPECT_EQ(arc.getPointAtParam(kPi, p), Acad::eInvalidInput);
    EXPECT_EQ(arc.getParamAtPoint({1, 3, 0}, param), Acad::eOk);
    EXPECT_NEAR(param, 2.5 * kPi, 1e-9);
    EXPECT_EQ(arc.getParamAtPoint({-1, 1, 0}, param), Acad::eInvalidInput);
}

TEST(WorkedNumbers, PolylineParametersAreVertices) {
    const auto p = square();
    double end = 0, param = 0;
    p->getEndParam(end);
    EXPECT_EQ(end, 4);
    EXPECT_EQ(p->getParamAtDist(9, param), Acad::eOk);
    EXPECT_DOUBLE_EQ(param, 2.25);
    EXPECT_EQ(p->getParamAtDist(17, param), Acad::eInvalidInput);
    AcGeVector3d along;
    p->getFirstDeriv(1.0, along); // at a corner: of the side to come
    EXPECT_LE((along - AcGeVector3d(0, 4, 0)).length(), 1e-12);
}

TEST(WorkedNumbers, ParallelsOfASquareAndADisc) {
    AcDbVoidPtrArray made;
    ASSERT_EQ(square()->getOffsetCurves(1, made), Acad::eOk); // counter-clockwise: right is outside
    double area = 0;
    onlyOne(made)->getArea(area);
    EXPECT_NEAR(area, 36, 1e-12);
    made.removeAll();
    ASSERT_EQ(square()->getOffsetCurves(-1, made), Acad::eOk);
    onlyOne(made)->getArea(area);
    EXPECT_NEAR(area, 4, 1e-12);
    made.removeAll();
    const AcDbCircle disc({0, 0, 0}, AcGeVector3d::kZAxis, 2);
    EXPECT_EQ(disc.getOffsetCurves(-2, made), Acad::eInvalidInput);
    ASSERT_EQ(disc.getOffsetCurves(0.5, made), Acad::eOk);
    EXPECT_DOUBLE_EQ(AcDbCircle::cast(onlyOne(made).get())->radius(), 2.5);
    made.removeAll();
    ASSERT_EQ(AcDbLine({0, 0, 0}, {10, 0, 0}).getOffsetCurves(2, made), Acad::eOk);
    expectNear(AcDbLine::cast(onlyOne(made).get())->startPoint(), {0, -2, 0});
}

TEST(WorkedNumbers, RoundThingsSeenAskew) {
    const AcDbCircle circle({0, 0, 5}, AcGeVector3d::kZAxis, 2);
    AcDbCurve* image = nullptr;
    ASSERT_EQ(circle.getOrthoProjectedCurve(AcGePlane::kXYPlane, image), Acad::eOk);
    std::unique_ptr<AcDbCurve> owned(image);
    ASSERT_TRUE(AcDbCircle::cast(image));
    expectNear(AcDbCircle::cast(image)->center(), {0, 0, 0});
    // Edge-on the disc is its diameter.
    ASSERT_EQ(circle.getOrthoProjectedCurve(AcGePlane::kYZPlane, image), Acad::eOk);
    owned.reset(image);
    double length = 0, end = 0;
    ASSERT_TRUE(AcDbLine::cast(image));
    image->getEndParam(end), image->getDistAtParam(end, length);
    EXPECT_NEAR(length, 4, 1e-12);
    // Turned by 60 degrees it is half as wide.
    const AcDbCircle tilted({0, 0, 0}, AcGeVector3d(0, std::sqrt(3.0), 1), 2);
    ASSERT_EQ(tilted.getOrthoProjectedCurve(AcGePlane::kXYPlane, image), Acad::eOk);
    owned.reset(image);
    ASSERT_TRUE(AcDbEllipse::cast(image));
    EXPECT_NEAR(AcDbEllipse::cast(image)->radiusRatio(), 0.5, 1e-12);
}

TEST(WorkedNumbers, ExtendedLinesArcsAndPolylines) {
    AcDbLine line({0, 0, 0}, {3, 4, 0});
    EXPECT_EQ(line.extend(10.0), Acad::eOk);
    expectNear(line.endPoint(), {6, 8, 0});
    EXPECT_EQ(line.extend(true, {-3, -4, 7}), Acad::eOk);
    expectNear(line.startPoint(), {-3, -4, 0});
    AcDbArc arc({0, 0, 0}, 1, 0, kPi / 2);
    EXPECT_EQ(arc.extend(kPi), Acad::eOk);
    EXPECT_NEAR(arc.totalAngle(), kPi, 1e-12);
    EXPECT_EQ(arc.extend(1.0), Acad::eInvalidInput); // already inside
    AcDbPolyline bent;
    bent.addVertexAt(0, {-5, 0}), bent.addVertexAt(1, {1, 0}, std::tan(kPi / 8)), bent.addVertexAt(2, {0, 1});
    EXPECT_EQ(bent.extend(false, {-1, 0, 0}), Acad::eOk); // on along the circle about the origin
    AcGePoint3d end;
    bent.getEndPoint(end);
    expectNear(end, {-1, 0, 0});
    EXPECT_EQ(bent.extend(-1.0 / 6), Acad::eOk);
    bent.getStartPoint(end);
    expectNear(end, {-6, 0, 0});
    EXPECT_EQ(square()->extend(5.0), Acad::eInvalidInput);
}

TEST(WorkedNumbers, ClosestPointsAlongADirectionAndBeyondTheEnds) {
    const AcDbLine line({0, 0, 0}, {10, 0, 10});
    AcGePoint3d near;
    line.getClosestPointTo({5, 3, -100}, AcGeVector3d::kZAxis, near);
    expectNear(near, {5, 0, 5}, 1e-9);
    line.getClosestPointTo({12, 0, 12}, near);
    expectNear(near, {10, 0, 10});
    line.getClosestPointTo({12, 0, 12}, near, true);
    expectNear(near, {12, 0, 12});
    const AcDbArc arc({0, 0, 0}, 1, 0, kPi / 2);
    arc.getClosestPointTo({-3, -3, 0}, near, true);
    expectNear(near, {-std::sqrt(0.5), -std::sqrt(0.5), 0});
}

TEST(WorkedNumbers, Meetings) {
    const AcDbCircle circle({0, 0, 0}, AcGeVector3d::kZAxis, 5);
    const AcDbLine shortLine({3, -1, 0}, {3, 1, 0}), high({-9, 3, 7}, {9, 3, 7});
    const AcDbArc quarter({0, 0, 0}, 5, 0, kPi / 2);
    const AcDbArc other({6, 0, 0}, 5, kPi - 0.5, kPi);
    const auto box = square();
    const AcDbLine diagonal({-1, -1, 0}, {9, 9, 0});
    struct Row {
        const char* name;
        const AcDbEntity &a, &b;
        AcDb::Intersect extension;
        int count;
    } rows[] = {{"inside", shortLine, circle, AcDb::kOnBothOperands, 0},
                {"line extended", shortLine, circle, AcDb::kExtendThis, 2},
                {"the other extended", shortLine, circle, AcDb::kExtendArg, 0},
                {"line extended, swapped", circle, shortLine, AcDb::kExtendArg, 2},
                {"above", high, circle, AcDb::kOnBothOperands, 0},
                {"quarter", shortLine, quarter, AcDb::kExtendThis, 1},
                {"quarter extended", shortLine, quarter, AcDb::kExtendBoth, 2},
                {"arcs apart", quarter, other, AcDb::kOnBothOperands, 0},
                {"arcs extended", quarter, other, AcDb::kExtendBoth, 2},
                {"a square's corner counts once", *box, diagonal, AcDb::kOnBothOperands, 2},
                {"a square and a disc", *box, circle, AcDb::kOnBothOperands, 2}};
    for (const Row& row : rows) {
        AcGePoint3dArray points;
        EXPECT_EQ(row.a.intersectWith(&row.b, row.extension, points), Acad::eOk) << row.name;
        EXPECT_EQ(points.length(), row.count) << row.name;
        const bool onCircle = &row.b == &circle || &row.a == &circle;
        for (const AcGePoint3d& p : points)
            EXPECT_NEAR(onCircle ? p.asVector().length() : 5, 5, 1e-9) << row.name;
    }
    AcGePoint3dArray points;
    // Ends that go on meet however far away: these at a hundred thousand times their length.
    AcDbLine({0, 0, 0}, {1, 0, 0})
        .intersectWith(std::make_unique<AcDbLine>(AcGePoint3d(0, 1, 0), AcGePoint3d(1, 1 - 1e-5, 0)).get(),
                       AcDb::kExtendBoth, points);
    ASSERT_EQ(points.length(), 1);
    expectNear(points[0], {1e5, 0, 0}, 1e-4);
    points.removeAll();
    high.intersectWith(&circle, AcDb::kOnBothOperands, AcGePlane::kXYPlane, points);
    ASSERT_EQ(points.length(), 2);
    expectNear(points[0], {-4, 3, 0}, 1e-9);
}

TEST(WorkedNumbers, LongPolylinesMeetWhereTheyCross) {
    // Two combs of teeth across each other.
    AcDbPolyline rows, columns;
    std::vector<AcDbPolyline::Vertex> a, b;
    constexpr int kTeeth = 60;
    for (int i = 0; i < kTeeth; ++i) {
        const double low = i % 2 ? kTeeth : -1, high = i % 2 ? -1 : kTeeth;
        a.push_back({{low, i + 0.25}}), a.push_back({{high, i + 0.25}});
        b.push_back({{i + 0.5, low}}), b.push_back({{i + 0.5, high}});
    }
    rows.setVertices(a), columns.setVertices(b);
    AcGePoint3dArray points;
    rows.intersectWith(&columns, AcDb::kOnBothOperands, points);
    EXPECT_EQ(points.length(), kTeeth * kTeeth);
}

TEST(WorkedNumbers, SplittingClosedCurves) {
    AcDbVoidPtrArray pieces;
    // A circle has no ends, so two cuts make two arcs; a polyline begins at its first vertex.
    AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1).getSplitCurves(AcGeDoubleArray{1, 3}, pieces);
    EXPECT_EQ(pieces.length(), 2);
    square()->getSplitCurves(AcGeDoubleArray{1, 2.5}, pieces);
    EXPECT_EQ(pieces.length(), 5);
    for (void* piece : pieces) delete static_cast<AcDbEntity*>(piece);
    pieces.removeAll();
    EXPECT_EQ(square()->getSplitCurves(AcGeDoubleArray{2.5, 1}, pieces), Acad::eInvalidInput);
    EXPECT_EQ(square()->getSplitCurves(AcGePoint3dArray{{2, 2, 0}}, pieces), Acad::eInvalidInput);
    // Widths are cut with their segment.
    AcDbPolyline wide;
    wide.addVertexAt(0, {0, 0}, 0, 1, 3), wide.addVertexAt(1, {4, 0});
    wide.getSplitCurves(AcGeDoubleArray{0.5}, pieces);
    ASSERT_EQ(pieces.length(), 2);
    double start = 0, end = 0;
    static_cast<AcDbPolyline*>(pieces[1])->getWidthsAt(0, start, end);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 3);
    for (void* piece : pieces) delete static_cast<AcDbEntity*>(piece);
}

TEST(WorkedNumbers, SplinesThroughPointsAndTheirPolylines) {
    AcDbSpline spline(specimens::zigzag());
    AcGePoint3dArray given = specimens::zigzag();
    for (const AcGePoint3d& p : given) {
        AcGePoint3d near;
        spline.getClosestPointTo(p, near);
        expectNear(near, p, 1e-9);
    }
    EXPECT_EQ(spline.setFitPointAt(2, {3, -4, 0.5}), Acad::eOk);
    double param = 0;
    EXPECT_EQ(spline.getParamAtPoint({3, -4, 0.5}, param), Acad::eOk);
    EXPECT_EQ(spline.removeFitPointAt(2), Acad::eOk);
    EXPECT_EQ(spline.numFitPoints(), 5);
    const double before = spline.numControlPoints();
    EXPECT_EQ(spline.insertKnot(0.37 * spline.nurbs().end()), Acad::eOk);
    EXPECT_EQ(spline.numControlPoints(), before + 1);
    // A flat spline becomes arcs that stay near and meet without corners.
    AcDbSpline flat(AcGePoint3dArray{{0, 0, 0}, {2, 3, 0}, {5, 1, 0}, {8, 2, 0}});
    AcDbCurve* polyline = nullptr;
    ASSERT_EQ(flat.toPolyline(polyline, 20), Acad::eOk);
    const std::unique_ptr<AcDbCurve> owned(polyline);
    ASSERT_TRUE(AcDbPolyline::cast(polyline));
    double end = 0, length = 0, wanted = 0;
    polyline->getEndParam(end), polyline->getDistAtParam(end, length);
    flat.getDistAtParam(flat.nurbs().end(), wanted);
    EXPECT_NEAR(length, wanted, 1e-5 * wanted);
    for (int i = 1; i < int(end); ++i) {
        AcGeVector3d left, right;
        polyline->getFirstDeriv(i - 1e-7, left), polyline->getFirstDeriv(double(i), right);
        EXPECT_LE(left.angleTo(right), 1e-5);
    }
}

TEST(WorkedNumbers, SmoothedPolylinesGoBackToTheirFrame) {
    AcDb2dPolyline polyline(AcDb::k2dSimplePoly, specimens::zigzag());
    const auto kinds = [&] {
        std::vector<int> count(4);
        polyline.parts().each<AcDb2dVertex>([&](const AcDb2dVertex& v) { ++count[v.vertexType()]; });
        return count;
    };
    ASSERT_EQ(polyline.convertToPolyType(AcDb::k2dCubicSplinePoly), Acad::eOk);
    EXPECT_EQ(kinds(), (std::vector<int>{0, 6, 41, 0})); // 8 points for each of 5 segments
    ASSERT_EQ(polyline.convertToPolyType(AcDb::k2dFitCurvePoly), Acad::eOk);
    EXPECT_EQ(kinds()[AcDb::k2dVertex], 6);
    ASSERT_EQ(polyline.straighten(), Acad::eOk);
    EXPECT_EQ(kinds(), (std::vector<int>{6, 0, 0, 0}));
    int at = 0;
    polyline.parts().each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
        EXPECT_EQ(v.position().x, specimens::zigzag()[at++].x);
        EXPECT_EQ(v.bulge(), 0);
    });
}

TEST(WorkedNumbers, GripsMoveWhatTheyShould) {
    AcDbCircle circle({1, 0, 0}, AcGeVector3d::kZAxis, 2);
    AcGePoint3dArray grips;
    circle.getGripPoints(grips);
    ASSERT_EQ(grips.length(), 5);
    circle.moveGripPointsAt({1}, {1, 0, 0});
    EXPECT_DOUBLE_EQ(circle.radius(), 3);
    AcDbArc arc({0, 0, 0}, 1, 0, kPi);
    grips.removeAll();
    arc.getGripPoints(grips);
    arc.moveGripPointsAt({3}, {0, 1, 0}); // the middle up: through (1,0), (0,2), (-1,0)
    EXPECT_NEAR(arc.radius(), 1.25, 1e-12);
    auto p = square();
    p->moveStretchPointsAt({0, 1}, {0, -1, 0});
    double area = 0;
    p->getArea(area);
    EXPECT_NEAR(area, 20, 1e-12);
}

} // namespace
