// Curves without vertices, lengths or radii: every service answers with a status or finite numbers.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "specimens.h"

namespace {

std::vector<specimens::Specimen> degenerates() {
    host::registerEntityClasses();
    std::vector<specimens::Specimen> out;
    const auto add = [&](const char* name, AcDbCurve* curve) {
        out.push_back({name, std::unique_ptr<AcDbCurve>(curve)});
    };
    const auto polyline = [](std::initializer_list<AcGePoint2d> points, bool closed, double bulge) {
        auto* p = new AcDbPolyline;
        for (const auto& at : points) p->addVertexAt(p->numVerts(), at, bulge);
        return p->setClosed(closed), p;
    };
    add("line without length", new AcDbLine({1, 1, 1}, {1, 1, 1}));
    add("circle without radius", new AcDbCircle({1, 1, 1}, AcGeVector3d::kZAxis, 0));
    add("arc without radius", new AcDbArc({1, 1, 1}, 0, 0, 1));
    add("arc without turn", new AcDbArc({1, 1, 1}, 1, 2, 2));
    add("sliver", new AcDbEllipse({1, 1, 1}, AcGeVector3d::kZAxis, {1, 0, 0}, 1e-6));
    add("no vertex", polyline({}, false, 0));
    add("no vertex, closed", polyline({}, true, 0));
    add("one vertex", polyline({{1, 2}}, false, 0));
    add("one vertex, closed", polyline({{1, 2}}, true, 0.5));
    add("two on one place", polyline({{1, 2}, {1, 2}}, false, 0.5));
    add("all on one place, closed", polyline({{1, 2}, {1, 2}, {1, 2}}, true, -1));
    add("there and back", polyline({{0, 0}, {1, 0}}, true, 0));
    add("old, no vertex", new AcDb2dPolyline);
    add("old, one vertex", new AcDb2dPolyline(AcDb::k2dSimplePoly, {{1, 1, 0}}, 0, true));
    add("space, no vertex", new AcDb3dPolyline);
    add("space, one vertex", new AcDb3dPolyline(AcDb::k3dSimplePoly, {{1, 1, 0}}, true));
    add("space, one place",
        new AcDb3dPolyline(AcDb::k3dSimplePoly, {{1, 1, 0}, {1, 1, 0}, {1, 1, 0}}, false));
    add("empty spline", new AcDbSpline);
    add("spline through one place", new AcDbSpline(AcGePoint3dArray{{1, 1, 1}, {1, 1, 1}}));
    add("spline of one place",
        new AcDbSpline(1, false, false, false, {{1, 1, 1}, {1, 1, 1}}, {0, 0, 1, 1}, AcGeDoubleArray()));
    return out;
}

// A result counts only when the status says so; then it must be finite.
bool isFinite(const AcGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

template <class Test> void expect(Acad::ErrorStatus status, Test isSound) {
    EXPECT_TRUE(status != Acad::eOk || isSound());
}

void askEverything(AcDbCurve& curve) {
    const AcDbLine probe({-5, 1, 1}, {5, 1, 1});
    AcGePoint3d point;
    AcGeVector3d vector;
    double start = 0, end = 0, value = 0;
    curve.isClosed(), curve.isPlanar(), curve.isPeriodic();
    curve.getStartParam(start), curve.getEndParam(end);
    EXPECT_TRUE(std::isfinite(start) && std::isfinite(end));
    for (double t : {start, 0.5 * (start + end), end, end + 1, -1.0, std::nan("")}) {
        expect(curve.getPointAtParam(t, point), [&] { return isFinite(point); });
        curve.getFirstDeriv(t, vector), curve.getSecondDeriv(t, vector);
        expect(curve.getDistAtParam(t, value), [&] { return std::isfinite(value); });
        expect(curve.getPointAtDist(t, point), [&] { return isFinite(point); });
    }
    for (bool extend : {false, true}) {
        expect(curve.getClosestPointTo({3, 3, 3}, point, extend), [&] { return isFinite(point); });
        expect(curve.getClosestPointTo({3, 3, 3}, {0, 1, 1}, point, extend), [&] { return isFinite(point); });
    }
    EXPECT_NE(curve.getClosestPointTo({std::nan(""), 0, 0}, point), Acad::eOk);
    curve.getParamAtPoint({1, 1, 1}, value);
    AcDbVoidPtrArray made;
    curve.getOffsetCurves(0.1, made), curve.getOffsetCurves(-0.1, made), curve.explode(made);
    curve.getSplitCurves(AcGeDoubleArray{0.5 * (start + end)}, made);
    for (void* one : made) delete static_cast<AcDbEntity*>(one);
    AcDbCurve* image = nullptr;
    if (curve.getOrthoProjectedCurve(AcGePlane::kZXPlane, image) == Acad::eOk) delete image;
    AcDbSpline* spline = nullptr;
    if (curve.getSpline(spline) == Acad::eOk) delete spline;
    AcGePoint3dArray points;
    curve.intersectWith(&probe, AcDb::kExtendBoth, points),
        probe.intersectWith(&curve, AcDb::kExtendBoth, points);
    curve.intersectWith(&curve, AcDb::kOnBothOperands, points);
    curve.getGripPoints(points), curve.getStretchPoints(points);
    for (int mode = 1; mode <= 10; ++mode)
        curve.getOsnapPoints(AcDb::OsnapMode(mode), {1, 1, 1}, {4, 4, 4}, points);
    for (const AcGePoint3d& p : points) EXPECT_TRUE(isFinite(p));
    AcDbExtents box;
    expect(curve.getGeomExtents(box), [&] { return isFinite(box.minPoint()) && isFinite(box.maxPoint()); });
    expect(curve.getArea(value), [&] { return std::isfinite(value); });
    curve.reverseCurve(), curve.extend(end + 1), curve.extend(true, {9, 9, 9});
    curve.moveGripPointsAt({0}, {1, 0, 0}), curve.moveGripPointsAt({77}, {1, 0, 0});
    curve.transformBy(AcGeMatrix3d::scaling(1e-3));
    AcDbEntity* copy = nullptr;
    if (curve.getTransformedCopy(AcGeMatrix3d::scaling(AcGeScale3d(1, 2, 3)), copy) == Acad::eOk) delete copy;
}

TEST(DegenerateCurves, AnswerEverything) {
    for (const auto& s : degenerates()) {
        SCOPED_TRACE(s.name);
        askEverything(*s.curve);
    }
}

TEST(DegenerateCurves, SmoothingAndConversionRefuseOrWork) {
    for (const auto& s : degenerates()) {
        SCOPED_TRACE(s.name);
        if (auto* old = AcDb2dPolyline::cast(s.curve.get())) {
            EXPECT_NE(old->splineFit(), Acad::eOk);
            EXPECT_NE(old->curveFit(), Acad::eOk);
            EXPECT_EQ(old->straighten(), Acad::eOk);
        }
        if (auto* space = AcDb3dPolyline::cast(s.curve.get())) space->splineFit();
        if (auto* spline = AcDbSpline::cast(s.curve.get())) {
            AcDbCurve* polyline = nullptr;
            if (spline->toPolyline(polyline, 3) == Acad::eOk) delete polyline;
            EXPECT_NE(spline->insertKnot(0), Acad::eOk);
        }
        if (auto* light = AcDbPolyline::cast(s.curve.get())) {
            AcDb2dPolyline* old = nullptr;
            ASSERT_EQ(light->convertTo(false, old), Acad::eOk);
            const std::unique_ptr<AcDb2dPolyline> owned(old);
            EXPECT_EQ(old->parts().size(), light->numVerts());
        }
    }
}

// Whoever asks for more than there is gets an answer, not a crash.
TEST(DegenerateCurves, NumbersThatAreNoneAreRefused) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN(),
                     kEndless = std::numeric_limits<double>::infinity();
    for (const auto& s : specimens::all())
        for (double bad : {kNone, kEndless}) {
            SCOPED_TRACE(s.name);
            AcGePoint3d point;
            double value = 0;
            AcDbVoidPtrArray made;
            EXPECT_NE(s.curve->getPointAtParam(bad, point), Acad::eOk);
            EXPECT_NE(s.curve->getPointAtDist(bad, point), Acad::eOk);
            EXPECT_NE(s.curve->getParamAtPoint({bad, 0, 0}, value), Acad::eOk);
            EXPECT_NE(s.curve->getOffsetCurves(bad, made), Acad::eOk);
            EXPECT_NE(s.curve->getSplitCurves(AcGeDoubleArray{bad}, made), Acad::eOk);
            EXPECT_NE(s.curve->extend(bad), Acad::eOk);
            EXPECT_NE(s.curve->transformBy(AcGeMatrix3d::translation({bad, 0, 0})), Acad::eOk);
            EXPECT_EQ(made.length(), 0);
        }
}

} // namespace
