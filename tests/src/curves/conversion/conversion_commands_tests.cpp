// s2p, SPL2ARC, p2s, all2polyline, PL2OLD, OLDPL2LW, PLGXK, PLCLOSE and PLOPEN on drawings, from the command
// line to what they leave.
#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "curves/conversion/arc_polyline.h"
#include "support/drawing.h"

using support::Drawing;
using testing::HasSubstr;

namespace {

constexpr double kPi = std::numbers::pi;

std::unique_ptr<AcDbSpline> waveSpline(double to = 200) {
    AcGePoint3dArray points;
    for (double x = 0; x <= to; x += 2) points.append({x, 20 * std::sin(x / 20), 0});
    return std::make_unique<AcDbSpline>(points, 4, 0.0);
}
AcDbObjectId addEllipse(Drawing& drawing, double start = 0, double end = 2 * kPi) {
    return drawing.add(std::make_unique<AcDbEllipse>(AcGePoint3d(5, 6, 7), AcGeVector3d::kZAxis,
                                                     AcGeVector3d(40, 0, 0), 0.4, start, end));
}

template <class Entity> size_t countOf(const Drawing& drawing) {
    size_t count = 0;
    for (const AcDbObjectId id : drawing.entities()) count += id.objectClass()->isDerivedFrom(Entity::desc());
    return count;
}
// The farthest that points of `from` lie from `to`.
double farthest(AcDbObjectId fromId, AcDbObjectId toId) {
    AcDbObjectPointer<AcDbCurve> from(fromId, AcDb::kForRead), to(toId, AcDb::kForRead);
    double start = 0, end = 0, worst = 0;
    from->getStartParam(start);
    from->getEndParam(end);
    for (int i = 0; i <= 2000; ++i) {
        AcGePoint3d point, nearest;
        from->getPointAtParam(start + (end - start) * i / 2000, point);
        to->getClosestPointTo(point, nearest);
        worst = std::max(worst, point.distanceTo(nearest));
    }
    return worst;
}
double lengthOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    double end = 0, length = 0;
    curve->getEndParam(end);
    curve->getDistAtParam(end, length);
    return length;
}

} // namespace

TEST(CurvesToArcs, SplinesBecomeFewArcsWithinTheTolerance) {
    Drawing drawing;
    const AcDbObjectId spline = drawing.add(waveSpline());
    EXPECT_THAT(drawing.run(L"SPL2ARC\n1\n0.01\nN\nall\n\n"),
                HasSubstr("高阶算法处理完成：成功 1 根曲线，失败 0 根。"));
    ASSERT_EQ(2u, drawing.entities().size());
    const AcDbObjectId arcs = drawing.entities()[1];
    EXPECT_LE(farthest(spline, arcs), 0.01);
    EXPECT_LE(farthest(arcs, spline), 0.01);
    AcDbObjectPointer<AcDbPolyline> polyline(arcs, AcDb::kForRead);
    EXPECT_LE(polyline->numVerts(), 40u) << "100 fit points, 40 arcs with the curve's own directions";
    for (unsigned i = 0; i + 1 < polyline->numVerts(); ++i)
        EXPECT_EQ(AcDbPolyline::kArc, polyline->segType(i)) << i;
}

TEST(CurvesToArcs, TakesEveryKindOfCurveAndErasesWhatStood) {
    Drawing drawing;
    drawing.add(waveSpline());
    drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(0, 100, 0), AcGeVector3d::kZAxis, 30));
    drawing.add(std::make_unique<AcDbArc>(AcGePoint3d(0, 200, 0), 30, 0.3, 5.5));
    addEllipse(drawing);
    drawing.add2dPolyline({{0, 300, 0}, {10, 320, 0}, {30, 330, 0}, {60, 310, 0}}, AcDb::k2dCubicSplinePoly);
    drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0)));
    const std::string before = drawing.bytes();
    EXPECT_THAT(drawing.run(L"SPL2ARC\n\n\nY\nall\n\n"), HasSubstr("成功 5 根曲线，失败 0 根"));
    EXPECT_EQ(5u, countOf<AcDbPolyline>(drawing));
    EXPECT_EQ(6u, drawing.entities().size()) << "the line was not asked for";
    drawing.run(L"U\n");
    EXPECT_TRUE(before == drawing.bytes());
}

TEST(CurvesToArcs, CirclesAndArcsAreKeptExactly) {
    Drawing drawing;
    const AcDbObjectId circle =
        drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(9, 1, 0), -AcGeVector3d::kZAxis, 30));
    drawing.run(L"SPL2ARC\n1\n0.5\nN\nall\n\n");
    AcDbObjectPointer<AcDbPolyline> polyline(drawing.entities()[1], AcDb::kForRead);
    ASSERT_EQ(3u, polyline->numVerts());
    double bulge = 0;
    for (const unsigned i : {0u, 1u}) {
        polyline->getBulgeAt(i, bulge);
        EXPECT_NEAR(-1, bulge, 1e-12) << "clockwise, as seen from above";
    }
    polyline.close();
    EXPECT_LT(farthest(circle, drawing.entities()[1]), 1e-9);
}

TEST(CurvesToArcs, StraightCurvesFail) {
    Drawing drawing;
    drawing.addPolyline({{0, 0}, {100, 50}});
    drawing.addPolyline({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    EXPECT_THAT(drawing.run(L"SPL2ARC\n1\n0.1\nY\nall\n\n"), HasSubstr("成功 0 根曲线，失败 2 根"));
    EXPECT_EQ(2u, drawing.entities().size()) << "nothing is erased that has no successor";
}

TEST(CurvesToArcs, CornersCuspsAndRepeatedVerticesAreKept) {
    Drawing drawing;
    // Sides and round corners, with a vertex given twice and a sharp corner.
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->addVertexAt(0, {0, 0});
    polyline->addVertexAt(1, {50, 0}, std::tan(kPi / 8));
    polyline->addVertexAt(2, {60, 10});
    polyline->addVertexAt(3, {60, 10});
    polyline->addVertexAt(4, {60, 50});
    polyline->addVertexAt(5, {0, 50});
    const AcDbObjectId shape = drawing.add(std::move(polyline));
    // A cusp: the control polygon turns straight back.
    const AcGePoint3dArray poles{{100, 0, 0}, {160, 60, 0}, {100, 60, 0}, {160, 0, 0}};
    AcGeDoubleArray knots;
    for (const double knot : {0, 0, 0, 0, 1, 1, 1, 1}) knots.append(knot);
    const AcDbObjectId cusp =
        drawing.add(std::make_unique<AcDbSpline>(3, false, false, false, poles, knots, AcGeDoubleArray()));
    EXPECT_THAT(drawing.run(L"SPL2ARC\n1\n0.02\nN\nall\n\n"), HasSubstr("成功 2 根"));
    const auto made = drawing.entities();
    ASSERT_EQ(4u, made.size());
    EXPECT_LE(farthest(shape, made[2]), 0.02);
    EXPECT_LE(farthest(cusp, made[3]), 0.02);
    AcDbObjectPointer<AcDbPolyline> arcs(made[2], AcDb::kForRead);
    EXPECT_EQ(5u, arcs->numVerts()) << "side, arc, side, side";
}

TEST(CurvesToArcs, NativeArcsSetTheVariableAndPutItBack) {
    Drawing drawing;
    const AcDbObjectId spline = drawing.add(waveSpline(40));
    EXPECT_THAT(drawing.run(L"SPL2ARC\n0\n5\nN\nall\n\n"), HasSubstr("原生算法处理完成：成功 1 根曲线"));
    EXPECT_LT(farthest(spline, drawing.entities()[1]), 0.01);
    EXPECT_THAT(drawing.run(L"PLINECONVERTMODE\n\n"), HasSubstr("<0>"));
    EXPECT_THAT(drawing.run(L"SPL2ARC\n7\n\nN\nall\n\n"), HasSubstr("无效选项"));
}

TEST(SplineToPolyline, TurnsSplinesAloneAndCountsThem) {
    Drawing drawing;
    drawing.add(std::make_unique<AcDbArc>(AcGePoint3d(0, 0, 0), 5, 0, 1));
    EXPECT_THAT(drawing.run(L"s2p\nall\n\n10\n"), HasSubstr("处理了< 0 >根曲线。"));
    drawing.add(waveSpline(40));
    EXPECT_THAT(drawing.run(L"s2p\nall\n\n4\n"), HasSubstr("处理了< 1 >根曲线。"));
    ASSERT_EQ(1u, countOf<AcDbPolyline>(drawing));
    AcDbObjectPointer<AcDbPolyline> polyline(drawing.entities()[1], AcDb::kForRead);
    EXPECT_EQ(20u * 5 + 1, polyline->numVerts()) << "five chords on each of 20 spans";
}

TEST(CurvesToSplines, EvenPointsOrTheCurvesOwnSpline) {
    for (const bool even : {true, false}) {
        Drawing drawing;
        drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(3, 4, 0), AcGeVector3d::kZAxis, 10));
        addEllipse(drawing);
        const double length = lengthOf(drawing.entities()[0]);
        EXPECT_THAT(drawing.run(even ? L"p2s\nall\n\nY\n100\n" : L"p2s\nall\n\nN\n"),
                    HasSubstr("处理了< 2 >根曲线。"));
        ASSERT_EQ(2u, countOf<AcDbSpline>(drawing));
        EXPECT_NEAR(length, lengthOf(drawing.entities()[0]), 1e-4 * length);
        AcDbObjectPointer<AcDbCurve> spline(drawing.entities()[0], AcDb::kForRead);
        EXPECT_TRUE(spline->isClosed()) << even;
    }
}

TEST(CurvesToPolylines, KeepShapeAndProperties) {
    const std::pair<std::function<AcDbObjectId(Drawing&)>, double> rows[] = {
        {[](Drawing& d) {
             return d.add(std::make_unique<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 3)));
         },
         1e-9},
        {[](Drawing& d) { return d.add(std::make_unique<AcDbArc>(AcGePoint3d(1, 2, 3), 10, 5, 1)); }, 1e-9},
        {[](Drawing& d) {
             return d.add(std::make_unique<AcDbArc>(AcGePoint3d(1, 2, 3),
                                                    AcGeVector3d(0.3, -0.2, 0.7).normal(), 10, 0.5, 4));
         },
         1e-9},
        {[](Drawing& d) {
             return d.add(std::make_unique<AcDbCircle>(AcGePoint3d(1, 2, 3), AcGeVector3d(0, 1, 0), 10));
         },
         1e-9},
        {[](Drawing& d) { return addEllipse(d); }, 0.01},
        {[](Drawing& d) { return addEllipse(d, 0.3, 4); }, 0.01},
        {[](Drawing& d) { return d.add(waveSpline(60)); }, 0.05},
        {[](Drawing& d) {
             return d.add2dPolyline({{0, 0, 5}, {9, 0, 5}, {9, 9, 5}}, AcDb::k2dCubicSplinePoly, true);
         },
         1e-9},
        {[](Drawing& d) {
             return d.add3dPolyline({{0, 0, 5}, {9, 0, 5}, {9, 9, 5}}, true);
         },
         1e-9},
    };
    int row = 0;
    for (const auto& [make, tolerance] : rows) {
        SCOPED_TRACE(row++);
        Drawing drawing;
        const AcDbObjectId source = make(drawing);
        AcDbObjectPointer<AcDbEntity> entity(source, AcDb::kForWrite);
        entity->setColorIndex(3);
        std::unique_ptr<AcDbEntity> copy(AcDbEntity::cast(entity->clone()));
        entity.close();
        EXPECT_THAT(drawing.run(L"all2polyline\nall\n\n6\n"), HasSubstr("处理了< 1 >根曲线。"));
        const AcDbObjectId polyline = drawing.only<AcDbPolyline>();
        AcDbObjectPointer<AcDbPolyline> made(polyline, AcDb::kForRead);
        ASSERT_TRUE(made);
        EXPECT_EQ(3, made->colorIndex());
        EXPECT_EQ(AcDbCurve::cast(copy.get())->isClosed(), made->isClosed());
        made.close();
        const AcDbObjectId kept = drawing.add(std::move(copy));
        EXPECT_LE(farthest(kept, polyline), tolerance);
        EXPECT_LE(farthest(polyline, kept), tolerance);
    }
}

TEST(CurvesToPolylines, AskForAPrecisionOnlyWhenACurveNeedsOne) {
    Drawing drawing;
    drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
    EXPECT_THAT(drawing.run(L"all2polyline\nall\n\n"), testing::Not(HasSubstr("请输入精度")));
    addEllipse(drawing);
    const std::string transcript = drawing.run(L"all2polyline\nall\n\n13\n12\n");
    EXPECT_THAT(transcript, HasSubstr("输入值范围必须为 1--12。"));
    EXPECT_EQ(2u, countOf<AcDbPolyline>(drawing));
}

TEST(OldPolylines, GoThereAndBackUnderTheirHandle) {
    Drawing drawing;
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->addVertexAt(0, {0, 0}, 0.5, 1, 2);
    polyline->addVertexAt(1, {5, 5}, -1, 2, 3);
    polyline->addVertexAt(2, {9, 0});
    polyline->setClosed(true);
    const AcDbObjectId id = drawing.add(std::move(polyline));
    const AcDbHandle handle = id.handle();
    const double length = lengthOf(id);
    EXPECT_THAT(drawing.run(L"PL2OLD\nall\n\n"), HasSubstr("处理了< 1 >根曲线。"));
    const AcDbObjectId old = drawing.only<AcDb2dPolyline>();
    EXPECT_EQ(handle, old.handle());
    EXPECT_DOUBLE_EQ(length, lengthOf(old));
    EXPECT_THAT(drawing.run(L"OLDPL2LW\nall\n\n"), HasSubstr("处理了< 1 >根曲线。"));
    const AcDbObjectId light = drawing.only<AcDbPolyline>();
    EXPECT_EQ(handle, light.handle());
    AcDbObjectPointer<AcDbPolyline> back(light, AcDb::kForRead);
    double start = 0, end = 0;
    back->getWidthsAt(1, start, end);
    EXPECT_EQ(2, start);
    EXPECT_EQ(3, end);
    EXPECT_TRUE(back->isClosed());
}

TEST(PolylineEdits, WidthCloseAndOpenAllAtOnce) {
    Drawing drawing;
    const AcDbObjectId first = drawing.addPolyline({{0, 0}, {5, 0}, {5, 5}});
    const AcDbObjectId second = drawing.addPolyline({{9, 0}, {15, 0}, {15, 5}});
    drawing.run(L"PLGXK\nall\n\n0.7\n");
    drawing.run(L"PLCLOSE\nall\n\n");
    for (const AcDbObjectId id : {first, second}) {
        AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
        double width = 0;
        polyline->getConstantWidth(width);
        EXPECT_EQ(0.7, width);
        EXPECT_TRUE(polyline->isClosed());
    }
    drawing.run(L"PLOPEN\nall\n\n");
    AcDbObjectPointer<AcDbPolyline> polyline(second, AcDb::kForRead);
    EXPECT_FALSE(polyline->isClosed());
}
