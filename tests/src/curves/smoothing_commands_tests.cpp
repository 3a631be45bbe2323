// PLYH, PLYH2, PLYH3 and QXTY on drawings, from the command line to what they leave.
#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "support/drawing.h"

using support::Drawing;
using testing::HasSubstr;

namespace {

std::vector<AcGePoint2d> wave(int count, double size) {
    std::vector<AcGePoint2d> points;
    for (int i = 0; i < count; ++i)
        points.push_back({size * i / (count - 1), size * 0.1 * std::sin(12.0 * i / (count - 1))});
    return points;
}
AcGePoint3dArray inSpace(const std::vector<AcGePoint2d>& points) {
    AcGePoint3dArray all;
    for (const AcGePoint2d& p : points) all.append({p.x, p.y, 0});
    return all;
}
unsigned vertexCount(AcDbObjectId id) {
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    return polyline ? polyline->numVerts() : 0;
}
template <class Polyline> size_t livingVertices(AcDbObjectId id) {
    AcDbObjectPointer<Polyline> polyline(id, AcDb::kForRead);
    size_t count = 0;
    for (const AcDbObjectId vertex : polyline->parts().ids()) count += !vertex.isErased();
    return count;
}

} // namespace

TEST(RemoveDuplicates, WorksInPlaceOnAllThreeKinds) {
    const std::vector<AcGePoint2d> doubled = {{0, 0}, {0, 0}, {5, 0}, {5, 0}, {5, 0}, {5, 5}};
    Drawing drawing;
    const AcDbObjectId light = drawing.addPolyline(doubled);
    const AcDbObjectId flat = drawing.add2dPolyline(inSpace(doubled));
    const AcDbObjectId spatial = drawing.add3dPolyline(inSpace(doubled));
    EXPECT_THAT(drawing.run(L"PLYH2\nall\n\n"), HasSubstr("删除了< 9 >个重复顶点。"));
    EXPECT_EQ(3u, vertexCount(light));
    EXPECT_EQ(3u, livingVertices<AcDb2dPolyline>(flat));
    EXPECT_EQ(3u, livingVertices<AcDb3dPolyline>(spatial));
    EXPECT_EQ((std::vector<AcDbObjectId>{light, flat, spatial}), drawing.entities())
        << "no entity is replaced";
}

TEST(RemoveDuplicates, ClosesWhatEndsWhereItStartsAndErasesWhatHasNoLength) {
    Drawing drawing;
    const AcDbObjectId ring = drawing.addPolyline({{0, 0}, {4, 0}, {4, 4}, {0, 0}});
    const AcDbObjectId closedRing = drawing.addPolyline({{0, 9}, {4, 9}, {4, 12}, {0, 9}}, true);
    const AcDbObjectId nothing = drawing.addPolyline({{1, 1}, {1, 1}, {1, 1}});
    EXPECT_THAT(drawing.run(L"PLYH2\nall\n\n"), HasSubstr("< 2 >"));
    for (const AcDbObjectId id : {ring, closedRing}) {
        AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
        EXPECT_TRUE(polyline->isClosed());
        EXPECT_EQ(3u, polyline->numVerts());
    }
    EXPECT_TRUE(nothing.isErased());
}

TEST(RemoveDuplicates, KeepsBulgesAndWidthsOfTheVerticesThatStay) {
    Drawing drawing;
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->addVertexAt(0, {0, 0}, 0.25, 1, 2);
    polyline->addVertexAt(1, {3, 0}, 0.5, 3, 4);
    polyline->addVertexAt(2, {3, 0}, -1, 5, 6);
    polyline->addVertexAt(3, {9, 0}, 0, 7, 8);
    const AcDbObjectId id = drawing.add(std::move(polyline));
    drawing.run(L"PLYH2\nall\n\n");
    AcDbObjectPointer<AcDbPolyline> after(id, AcDb::kForRead);
    ASSERT_EQ(3u, after->numVerts());
    double bulge = 0, start = 0, end = 0;
    after->getBulgeAt(1, bulge);
    after->getWidthsAt(1, start, end);
    EXPECT_EQ(-1, bulge) << "of equal vertices the last stays, with its own segment";
    EXPECT_EQ(5, start);
    EXPECT_EQ(6, end);
}

TEST(Thin, ReplacesThePolylineWithinTheToleranceAndReportsTheCounts) {
    Drawing drawing;
    const auto points = wave(2001, 1000);
    const AcDbObjectId source = drawing.addPolyline(points);
    const std::string transcript = drawing.run(L"PLYH\nall\n\n1\nY\n");
    EXPECT_THAT(transcript, HasSubstr("优化前顶点数: 2001"));
    EXPECT_TRUE(source.isErased());
    AcDbObjectPointer<AcDbPolyline> thinned(drawing.only<AcDbPolyline>(), AcDb::kForRead);
    ASSERT_TRUE(thinned);
    EXPECT_LT(thinned->numVerts(), 300u);
    EXPECT_GE(thinned->numVerts(), 2001u / 32);
    // Tolerance factor 0.5 of a box about 1013 across: half a unit at most from pass to pass.
    for (const AcGePoint2d& p : points) {
        AcGePoint3d nearest;
        ASSERT_EQ(Acad::eOk, thinned->getClosestPointTo({p.x, p.y, 0}, nearest));
        EXPECT_LT(nearest.distanceTo({p.x, p.y, 0}), 3.0);
    }
}

TEST(Thin, SmallShapesKeepTheirFormOnlyWhenDetailsAreProtected) {
    for (const bool protect : {true, false}) {
        Drawing drawing;
        drawing.addPolyline({{0, 0}, {1e6, 0}});
        std::vector<AcGePoint2d> circle;
        for (int i = 0; i < 64; ++i)
            circle.push_back(
                {3 * std::cos(i * std::numbers::pi / 32), 3 * std::sin(i * std::numbers::pi / 32)});
        drawing.addPolyline(circle, true);
        drawing.run(protect ? L"PLYH\nall\n\n1\nYes\n" : L"PLYH\nall\n\n1\nNo\n");
        const auto left = drawing.entities();
        ASSERT_EQ(2u, left.size());
        AcDbObjectPointer<AcDbPolyline> small(left[1], AcDb::kForRead);
        double area = 0;
        small->getArea(area);
        if (protect)
            EXPECT_NEAR(std::numbers::pi * 9, area, 1.5);
        else
            EXPECT_LT(area, 1.0) << "thinned by the size of the whole selection, it collapses";
    }
}

TEST(Thin, KeepsColourLayerWidthAndClosednessAndLosesTheElevation) {
    Drawing drawing;
    const AcDbObjectId id = drawing.addPolyline(wave(40, 10), true);
    {
        AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForWrite);
        polyline->setColorIndex(3);
        polyline->setConstantWidth(0.25);
        polyline->setElevation(7);
    }
    drawing.run(L"PLYH\nall\n\n5\n\n");
    AcDbObjectPointer<AcDbPolyline> after(drawing.only<AcDbPolyline>(), AcDb::kForRead);
    double width = 0;
    EXPECT_EQ(3, after->colorIndex());
    EXPECT_EQ(Acad::eOk, after->getConstantWidth(width));
    EXPECT_EQ(0.25, width);
    EXPECT_TRUE(after->isClosed());
    EXPECT_EQ(0, after->elevation());
}

TEST(Thin, ASplineFitPolylineComesBackAsOneOfItsType) {
    for (const auto type : {AcDb::k2dQuadSplinePoly, AcDb::k2dCubicSplinePoly, AcDb::k2dFitCurvePoly}) {
        Drawing drawing;
        drawing.add2dPolyline(inSpace(wave(30, 100)), type);
        drawing.run(L"PLYH\nall\n\n1\n\n");
        AcDbObjectPointer<AcDb2dPolyline> after(drawing.only<AcDb2dPolyline>(), AcDb::kForRead);
        ASSERT_TRUE(after);
        EXPECT_EQ(type, after->polyType());
    }
}

TEST(Thin, PolylinesOfSpaceStayInSpaceWithoutRepeatedVertices) {
    Drawing drawing;
    AcGePoint3dArray helix;
    for (int i = 0; i <= 400; ++i) helix.append({std::cos(i * 0.05), std::sin(i * 0.05), i * 0.01});
    drawing.add3dPolyline(helix);
    drawing.run(L"PLYH\nall\n\n1\n\n");
    AcDbObjectPointer<AcDb3dPolyline> after(drawing.only<AcDb3dPolyline>(), AcDb::kForRead);
    ASSERT_TRUE(after);
    AcGePoint3d end;
    after->getEndPoint(end);
    EXPECT_NEAR(4.0, end.z, 1e-9);
}

TEST(Thin, AnswersOutsideTheRangeAreClampedAndEscEndsWithoutAWord) {
    Drawing drawing;
    drawing.addPolyline(wave(200, 100));
    const std::string before = drawing.bytes();
    EXPECT_THAT(drawing.run(L"PLYH\nall\n\n^C\n"), testing::Not(HasSubstr("优化前")));
    EXPECT_EQ(before, drawing.bytes());
    const std::string clamped = drawing.run(L"PLYH\nall\n\n99\n\nU\n"),
                      ten = drawing.run(L"PLYH\nall\n\n10\n\n");
    const auto report = [](const std::string& text) {
        return text.substr(text.find("优化前"), text.find("％") - text.find("优化前"));
    };
    EXPECT_EQ(report(ten), report(clamped));
}

TEST(Thin, OneUndoBringsTheDrawingBackByteForByte) {
    Drawing drawing;
    auto doubled = wave(300, 50);
    doubled.push_back(doubled.back());
    drawing.addPolyline(doubled);
    drawing.add2dPolyline(inSpace(wave(60, 50)), AcDb::k2dCubicSplinePoly);
    drawing.add3dPolyline(inSpace(doubled));
    drawing.database().undoLog().commit();
    const std::string before = drawing.bytes();
    for (const wchar_t* script :
         {L"PLYH\nall\n\n3\n\n", L"PLYH2\nall\n\n", L"PLYH3\nall\n\n", L"QXTY\nall\n\n"}) {
        drawing.run(script);
        EXPECT_NE(before, drawing.bytes());
        drawing.run(L"U\n");
        EXPECT_EQ(before, drawing.bytes());
    }
}

TEST(SplineFit, GivesACubicFitPolylineNearTheSource) {
    Drawing drawing;
    const AcDbObjectId two = drawing.addPolyline({{0, 50}, {9, 50}});
    drawing.addPolyline(wave(121, 100));
    drawing.run(L"PLYH3\nall\n\n");
    ASSERT_EQ(2u, drawing.entities().size());
    EXPECT_FALSE(two.isErased()) << "two vertices are left alone";
    const auto left = drawing.entities();
    AcDbObjectPointer<AcDb2dPolyline> fitted(left[0] == two ? left[1] : left[0], AcDb::kForRead);
    ASSERT_TRUE(fitted);
    EXPECT_EQ(AcDb::k2dCubicSplinePoly, fitted->polyType());
    for (double x : {10.0, 35.0, 60.0, 90.0}) {
        AcGePoint3d nearest;
        const AcGePoint3d onWave(x, 10 * std::sin(12 * x / 100), 0);
        ASSERT_EQ(Acad::eOk, fitted->getClosestPointTo(onWave, nearest));
        EXPECT_LT(nearest.distanceTo(onWave), 1.0);
    }
}

TEST(Smoothing, PolylinesWithVertexObjectsEndWithAMarkInFiles) {
    // Other programs run on into the next entity where the mark is missing.
    Drawing drawing;
    drawing.addPolyline(wave(40, 100));
    drawing.add3dPolyline(inSpace(wave(40, 50)));
    drawing.run(L"PLYH3\nall\n\nPLYH\nall\n\n1\n\nmcopy\nall\n\n0,0\n9,9\n\n");
    const std::string bytes = drawing.bytes();
    const auto count = [&](const std::string& name) {
        size_t found = 0;
        for (size_t at = 0; (at = bytes.find("  0\n" + name + "\n", at)) != bytes.npos; ++at) ++found;
        return found;
    };
    EXPECT_GE(count("POLYLINE"), 4u);
    EXPECT_EQ(count("POLYLINE"), count("SEQEND"));
}

TEST(Project, LeavesTheSourceAndAddsItsPlan) {
    Drawing drawing;
    const AcDbObjectId tilted =
        drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(0, 0, 5), AcGeVector3d(0, 1, 1), 2.0));
    const AcDbObjectId line =
        drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 1), AcGePoint3d(3, 4, 9)));
    EXPECT_THAT(drawing.run(L"QXTY\nall\n\n"), HasSubstr("生成了< 2 >根投影曲线。"));
    EXPECT_FALSE(tilted.isErased() || line.isErased());
    const auto all = drawing.entities();
    ASSERT_EQ(4u, all.size());
    AcDbObjectPointer<AcDbCurve> ellipse(all[2], AcDb::kForRead), plan(all[3], AcDb::kForRead);
    double area = 0;
    EXPECT_EQ(Acad::eOk, ellipse->getArea(area));
    EXPECT_NEAR(std::numbers::pi * 4 * std::sqrt(0.5), area, 1e-9) << "a circle seen at 45 degrees";
    AcGePoint3d end;
    plan->getEndPoint(end);
    EXPECT_EQ(AcGePoint3d(3, 4, 0), end);
}

TEST(Smoothing, SelectionsWithoutPolylinesAndFlatBoxesSaySo) {
    Drawing drawing;
    drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 0)));
    EXPECT_THAT(drawing.run(L"PLYH\nall\n\n"), HasSubstr("未选中多段线。"));
    EXPECT_THAT(drawing.run(L"PLYH3\n\n"), HasSubstr("未选中多段线。"));
    drawing.addPolyline({{0, 0}, {0.0004, 0}, {0.0004, 0.0004}});
    EXPECT_THAT(drawing.run(L"PLYH\nall\n\n"), HasSubstr("多段线包围盒高度太低。"));
    EXPECT_THAT(drawing.run(L"PLYH3\nall\n\n"), HasSubstr("多段线包围盒太小。"));
    EXPECT_EQ(2u, drawing.entities().size());
}

TEST(LockedLayers, KeepTheirObjectsWhateverCommandComes) {
    constexpr const wchar_t* kCommands[] = {
        L"PLYH all\n\n1 Y\n",   L"PLYH2 all\n\n",   L"PLYH3 all\n\n",           L"PLDF all\n\n8\n",
        L"PLDJDF all\n\n1\n",   L"PLDD all\n\n",    L"PL2OLD all\n\n",          L"p2s all\n\nY 20\n",
        L"PLGXK all\n\n2\n",    L"PLCLOSE all\n\n", L"SPL2ARC 1 0.1 Y all\n\n", L"s2p all\n\n5\n",
        L"all2polyline all\n\n"};
    for (const wchar_t* command : kCommands) {
        Drawing drawing;
        drawing.run(L"-LAYER m\nfixed\nlo\nfixed\n\nPLINE 0,0 10,0 10,0 20,5 30,0 \n"
                    L"SPLINE 0,20 30,40 60,20 90,30 \nCIRCLE 50,50 9\nLINE 0,0 9,9 \n");
        ASSERT_EQ(4u, drawing.entities().size()) << host::utf8(command);
        drawing.run(L"PLYH2\n\n"); // commands set PICKSTYLE, which is saved
        const std::string before = drawing.bytes();
        EXPECT_THAT(drawing.run(command), testing::ContainsRegex("locked layers?[.]\n"))
            << host::utf8(command);
        EXPECT_EQ(before, drawing.bytes()) << host::utf8(command);
    }
}
