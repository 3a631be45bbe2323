// ROTATE, SCALE, MIRROR, STRETCH, EXPLODE, OFFSET and PEDIT, with what they leave in the drawing.
#include <numbers>

#include "host/ent/blockreference.h"
#include "host/ent/polyline2d.h"
#include "host/ent/polyline3d.h"
#include "host/ent/spline.h"
#include "host/ent/text.h"
#include "host/os/text.h"
#include "tests/host/ed/support.h"

using edtest::Bench;
using edtest::near;
using testing::HasSubstr;

namespace {

AcGePoint3d startOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    AcGePoint3d point;
    if (curve) curve->getStartPoint(point);
    return point;
}
AcGePoint3d endOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    AcGePoint3d point;
    if (curve) curve->getEndPoint(point);
    return point;
}
double lengthOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    double end = 0, length = -1;
    if (curve && curve->getEndParam(end) == Acad::eOk) curve->getDistAtParam(end, length);
    return length;
}

} // namespace

TEST(Modify, RotatesAboutThePointByAngleOrReferenceAndLeavesCopies) {
    Bench bench;
    const auto line = bench.addLine({1, 0, 0}, {3, 0, 0});
    bench.run(L"ROTATE l\n\n1,0 90\n");
    EXPECT_TRUE(near({1, 2, 0}, endOf(line)));
    bench.run(L"ROTATE l\n\n1,0 r 90 0\n");
    EXPECT_TRUE(near({3, 0, 0}, endOf(line)));
    bench.run(L"ROTATE l\n\n0,0 c 180\n");
    ASSERT_EQ(2u, bench.entities().size());
    EXPECT_TRUE(near({3, 0, 0}, endOf(line)));
    EXPECT_TRUE(near({-3, 0, 0}, endOf(bench.entities()[1])));
}

TEST(Modify, ScalesByFactorOrReferenceAndRefusesZero) {
    Bench bench;
    const auto line = bench.addLine({1, 1, 0}, {3, 1, 0});
    bench.run(L"SCALE l\n\n1,1 2.5\n");
    EXPECT_DOUBLE_EQ(5, lengthOf(line));
    bench.run(L"SCALE l\n\n1,1 r 5 1\n");
    EXPECT_DOUBLE_EQ(1, lengthOf(line));
    bench.run(L"SCALE l\n\n1,1 0 -2 3\n"); // asked again until a factor comes that serves
    EXPECT_DOUBLE_EQ(3, lengthOf(line));
    EXPECT_TRUE(near({1, 1, 0}, startOf(line)));
}

TEST(Modify, MirroredWordsStayReadableUnlessMirrtextIsOn) {
    struct Row {
        const wchar_t* axis;
        double rotation;
        AcGePoint3d boxMiddle; // where the middle of the words' box must lie, seen from that before
    };
    // Across the Y axis and the X axis: the box is mirrored, the reading direction stays.
    for (const Row& row : {Row{L"0,0 0,5", 0, {-1, 1, 1}}, Row{L"0,0 5,0", 0, {1, -1, 1}}}) {
        Bench bench;
        bench.add(std::make_unique<AcDbText>(AcGePoint3d(10, 5, 0), L"Corvane", AcDbObjectId(), 2.5, 0));
        AcDbExtents before, after;
        bench.last<AcDbText>()->getGeomExtents(before);
        bench.run(L"MIRROR l\n\n" + std::wstring(row.axis) + L" y\n");
        const auto text = bench.last<AcDbText>();
        text->getGeomExtents(after);
        EXPECT_NEAR(row.rotation, std::remainder(text->rotation(), 2 * std::numbers::pi), 1e-9) << row.axis;
        EXPECT_FALSE(text->isMirroredInX() || text->isMirroredInY());
        const auto middle = [](const AcDbExtents& box) {
            return box.minPoint() + (box.maxPoint() - box.minPoint()) / 2;
        };
        const AcGePoint3d expected(middle(before).x * row.boxMiddle.x, middle(before).y * row.boxMiddle.y, 0);
        EXPECT_TRUE(near(expected, middle(after), 1e-6)) << row.axis;
    }
    Bench bench;
    bench.add(std::make_unique<AcDbText>(AcGePoint3d(10, 5, 0), L"Corvane", AcDbObjectId(), 2.5, 0));
    bench.run(L"MIRRTEXT 1\nMIRROR l\n\n0,0 0,5 n\n");
    ASSERT_EQ(2u, bench.entities().size());
    EXPECT_TRUE(bench.last<AcDbText>()->isMirroredInX() || bench.last<AcDbText>()->normal().z < 0);
    EXPECT_THAT(bench.run(L"MIRROR l\n\n3,3 3,3\n"), HasSubstr("a mirror line needs two"));
}

TEST(Modify, StretchMovesWhatLiesInTheCrossingWindow) {
    Bench bench;
    const auto through = bench.addLine({0, 0, 0}, {10, 0, 0});
    const auto within = bench.addLine({9, 1, 0}, {11, 1, 0});
    const auto outside = bench.addLine({0, 5, 0}, {5, 5, 0});
    bench.run(L"PLINE 0,2 10,2 10,3 0,3 c\n");
    const auto loop = bench.last<AcDbPolyline>()->objectId();
    bench.run(L"STRETCH c 8,-1 12,4\n\n0,0 5,1\n");
    EXPECT_TRUE(near({0, 0, 0}, startOf(through)));
    EXPECT_TRUE(near({15, 1, 0}, endOf(through)));
    EXPECT_TRUE(near({14, 2, 0}, startOf(within)));
    EXPECT_TRUE(near({16, 2, 0}, endOf(within)));
    EXPECT_TRUE(near({5, 5, 0}, endOf(outside)));
    AcDbObjectPointer<AcDbPolyline> polyline(loop, AcDb::kForRead);
    AcGePoint3d corner;
    polyline->getPointAt(1, corner);
    EXPECT_TRUE(near({15, 3, 0}, corner));
    polyline->getPointAt(0, corner);
    EXPECT_TRUE(near({0, 2, 0}, corner));
}

TEST(Modify, ExplodesPolylinesAndBlocksWhereTheyStand) {
    Bench bench;
    bench.addLayer(L"Walls");
    bench.run(L"PLINE 0,0 10,0 10,10 c\n");
    bench.putOnLayer(bench.entities().back(), L"Walls");
    bench.run(L"EXPLODE l\n\n");
    ASSERT_EQ(3u, bench.entities().size());
    EXPECT_EQ(L"Walls", bench.last<AcDbLine>()->layerName());
    bench.run(L"BLOCK tri\n0,0 all\n\nINSERT tri\n100,0 2\n\n90\n");
    ASSERT_EQ(1u, bench.entities().size());
    bench.run(L"EXPLODE l\n\n");
    ASSERT_EQ(3u, bench.entities().size());
    EXPECT_TRUE(near({100, 0, 0}, startOf(bench.entities()[0])));
    EXPECT_TRUE(near({100, 20, 0}, endOf(bench.entities()[0])));
    EXPECT_THAT(bench.run(L"POINT 1,1\nEXPLODE l\n\n"), HasSubstr("1 could not be exploded."));
}

TEST(Modify, OffsetsGoToTheSideOfThePointOrThroughIt) {
    Bench bench;
    const auto circle = bench.addCircle({0, 0, 0}, 10);
    const auto radius = [&] { return bench.last<AcDbCircle>()->radius(); };
    bench.run(L"OFFSET 2 10,0 0,0 \n");
    EXPECT_NEAR(8, radius(), 1e-12);
    bench.run(L"OFFSET 3 10,0 20,0 \n");
    EXPECT_NEAR(13, radius(), 1e-12);
    bench.run(L"OFFSET t 10,0 17,0 \n");
    EXPECT_NEAR(17, radius(), 1e-12);
    EXPECT_THAT(bench.run(L"OFFSET 30 10,0 0,0 \n"), HasSubstr("no offset at that distance"));
    const size_t before = bench.entities().size();
    bench.run(L"OFFSET 1 10,0 20,0 u \n");
    EXPECT_EQ(before, bench.entities().size());
    EXPECT_FALSE(circle.isErased());
}

// -- PEDIT --------------------------------------------------------------------------------------------

TEST(PolylineEdit, JoinsPiecesOfAllKindsWhicheverWayTheyRun) {
    Bench bench;
    bench.run(L"LINE 10,0 0,0 \nARC 10,0 15,5 10,10\nPLINE 0,10 5,10 10,10 \nLINE 50,0 60,0 \n");
    const std::string told = bench.run(L"PEDIT 5,0 y j all\n\nx\n");
    EXPECT_THAT(told, HasSubstr("3 segments added"));
    ASSERT_EQ(2u, bench.entities().size());
    AcDbObjectPointer<AcDbPolyline> polyline(bench.entities()[0], AcDb::kForRead);
    ASSERT_TRUE(polyline);
    EXPECT_EQ(5u, polyline->numVerts());
    EXPECT_FALSE(polyline->isClosed());
    EXPECT_NEAR(20 + 5 * std::numbers::pi, lengthOf(polyline->objectId()), 1e-9);
    polyline.close();
    bench.run(L"LINE 0,0 0,10 \nPEDIT 5,0 j all\n\nx\n");
    AcDbObjectPointer<AcDbPolyline> closed(bench.entities()[0], AcDb::kForRead);
    EXPECT_TRUE(closed->isClosed());
    EXPECT_EQ(5u, closed->numVerts());
    EXPECT_NEAR(30 + 5 * std::numbers::pi, lengthOf(closed->objectId()), 1e-9);
}

TEST(PolylineEdit, JoinsManyWithinTheFuzzDistance) {
    Bench bench;
    for (int i = 0; i < 20; ++i) bench.addLine({i * 10.0, 0, 0}, {i * 10.0 + 9.95, 0, 0});
    bench.run(L"PEDIT m all\n\ny j 0.01 x\n");
    EXPECT_EQ(20u, bench.entities().size());
    bench.run(L"PEDIT m all\n\nj 0.1 x\n");
    ASSERT_EQ(1u, bench.entities().size());
    EXPECT_EQ(21u, bench.last<AcDbPolyline>()->numVerts());
}

TEST(PolylineEdit, WidthsClosingAndTurningReachAllKinds) {
    Bench bench;
    bench.run(L"PLINE 0,0 10,0 10,10 0,10 \n");
    AcGePoint3dArray points;
    for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 5), AcGePoint3d(10, 10, 0)})
        points.append(p);
    bench.add(std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, points));
    bench.add(std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points));
    const auto ids = bench.entities();
    const std::string told = bench.run(L"PEDIT m all\n\nc w 2.5 r x\n");
    EXPECT_THAT(told, HasSubstr("1 could not be changed that way.")); // 3D polylines have no width
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
        EXPECT_TRUE(curve->isClosed());
    }
    double width = 0;
    AcDbObjectPointer<AcDbPolyline> light(ids[0], AcDb::kForRead);
    EXPECT_EQ(Acad::eOk, light->getConstantWidth(width));
    EXPECT_EQ(2.5, width);
    AcDbObjectPointer<AcDb2dPolyline> old(ids[1], AcDb::kForRead);
    EXPECT_EQ(Acad::eOk, old->getConstantWidth(width));
    EXPECT_EQ(2.5, width);
    // Turned round it starts where it did, and goes the other way.
    AcDbObjectPointer<AcDb3dPolyline> spatial(ids[2], AcDb::kForRead);
    AcGePoint3d second;
    spatial->getPointAtParam(1, second);
    EXPECT_TRUE(near({10, 10, 0}, second));
}

TEST(PolylineEdit, SmoothsAndTakesTheSmoothingBackUnderTheSameHandle) {
    Bench bench;
    bench.run(L"PLINE 0,0 10,10 20,0 30,10 \n");
    const AcDbObjectId id = bench.entities().back();
    const std::string before = bench.bytes();
    bench.run(L"PEDIT 5,5 s x\n");
    AcDbObjectPointer<AcDb2dPolyline> smooth(id, AcDb::kForRead);
    ASSERT_TRUE(smooth);
    EXPECT_EQ(AcDb::k2dCubicSplinePoly, smooth->polyType());
    smooth.close();
    bench.run(L"PEDIT (handent \"" + std::wstring(host::wide(host::utf8(id.handle().ascii()))) +
              L"\") d x\n");
    smooth.open(id, AcDb::kForRead);
    EXPECT_EQ(AcDb::k2dSimplePoly, smooth->polyType());
    EXPECT_EQ(4u, smooth->parts().living());
    smooth.close();
    bench.run(L"UNDO 2\n");
    EXPECT_EQ(before, bench.bytes());
}
