// One of each kind of curve, at a size and a place, for laws that hold for all of them.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "host/ent/conics.h"
#include "host/ent/helix.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/ent/polyline2d.h"
#include "host/ent/polyline3d.h"
#include "host/ent/register.h"
#include "host/ent/spline.h"

namespace specimens {

struct Specimen {
    std::string name;
    std::unique_ptr<AcDbCurve> curve;
};

struct Setting {
    double size;
    AcGeVector3d away;
};
inline const Setting kSettings[] = {
    {1, {0, 0, 0}}, {1e-3, {0, 0, 0}}, {1e6, {0, 0, 0}}, {1, {1e5, -2e5, 3e4}}};

inline AcGePoint3dArray zigzag() {
    return {{0, 0, 0}, {2, 1, 0}, {3, -1, 0.5}, {5, 2, 1}, {6, 0, -1}, {8, 1, 0}};
}
inline std::unique_ptr<AcDbPolyline> bulged(bool closed, const AcGeVector3d& normal = AcGeVector3d::kZAxis) {
    auto p = std::make_unique<AcDbPolyline>();
    p->addVertexAt(0, {0, 0}, 0.5, 0.1, 0.3);
    p->addVertexAt(1, {4, 0}, 0, 0.3, 0.2);
    p->addVertexAt(2, {5, 3}, -1.5, 0, 0);
    p->addVertexAt(3, {2, 4}, 0.2, 0, 0);
    p->addVertexAt(4, {-1, 2}, 0, 0, 0);
    p->setNormal(normal), p->setElevation(0.7), p->setClosed(closed);
    return p;
}

inline std::unique_ptr<AcDbPolyline> doubled() {
    auto p = std::make_unique<AcDbPolyline>();
    p->setVertices(
        {{{0, 0}, 0.4}, {{0, 0}}, {{3, 0}, -0.7}, {{4, 3}, 0.3}, {{4, 3}, 2}, {{4, 3}}, {{-1, 2}}});
    return p;
}
inline std::unique_ptr<AcDbPolyline> turn() {
    auto p = std::make_unique<AcDbPolyline>();
    p->setVertices({{{0, 0}, 12}, {{0.25, 0}}, {{3, 0}}});
    return p;
}
inline std::unique_ptr<AcDb2dPolyline> smoothed2d(AcDb::Poly2dType type) {
    auto p = std::make_unique<AcDb2dPolyline>(
        AcDb::k2dSimplePoly, AcGePoint3dArray{{0, 0, 0}, {4, -1, 0}, {6, 3, 0}, {2, 5, 0}}, 0, true);
    p->convertToPolyType(type);
    return p;
}
inline std::unique_ptr<AcDb3dPolyline> smoothed3d() {
    auto p = std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, zigzag(), true);
    p->convertToPolyType(AcDb::k3dCubicSplinePoly);
    return p;
}
inline std::unique_ptr<AcDbSpline> ring(bool rational) {
    host::ge::Nurbs c;
    c.closed = c.periodic = true, c.rational = rational;
    c.poles = {{2, 0, 0}, {1, 2, 0}, {-2, 1, 0}, {-1, -2, 0}, {2, 0, 0}, {1, 2, 0}, {-2, 1, 0}};
    if (rational) c.weights = {1, 3, 0.4, 2, 1, 3, 0.4};
    for (int i = -3; i <= 7; ++i) c.knots.push_back(i);
    auto spline = std::make_unique<AcDbSpline>();
    spline->setNurbs(c);
    return spline;
}
inline std::unique_ptr<AcDbHelix> helix() {
    host::ge::Nurbs c;
    c.poles = {{1, 0, 0},      {1, 0.6, 0.1},  {0.6, 1, 0.2}, {0, 1, 0.3},
               {-0.6, 1, 0.4}, {-1, 0.6, 0.5}, {-1, 0, 0.6}};
    c.knots = {0, 0, 0, 0, 1, 1, 1, 2, 2, 2, 2};
    auto out = std::make_unique<AcDbHelix>();
    out->setNurbs(c);
    return out;
}

inline std::vector<Specimen> all(const Setting& setting = kSettings[0]) {
    host::registerEntityClasses();
    std::vector<Specimen> out;
    const auto add = [&](std::string name, AcDbCurve* curve) {
        curve->transformBy(AcGeMatrix3d::scaling(setting.size));
        curve->transformBy(AcGeMatrix3d::translation(setting.away));
        out.push_back({std::move(name), std::unique_ptr<AcDbCurve>(curve)});
    };
    constexpr double kPi = 3.14159265358979323846;
    const AcGeVector3d tilted = AcGeVector3d(1, 2, 3).normal();
    add("line", new AcDbLine({1, 2, 3}, {4, 6, 3}));
    add("arc", new AcDbArc({1, 1, 0}, 2, 5.5, 1));
    add("tilted arc", new AcDbArc({1, 1, 0}, tilted, 2, 0.3, 3));
    add("circle", new AcDbCircle({1, 2, 0}, tilted, 1.5));
    add("ellipse", new AcDbEllipse({1, 0, 0}, AcGeVector3d::kZAxis, {3, 1, 0}, 0.4));
    add("elliptic arc", new AcDbEllipse({1, 0, 0}, AcGeVector3d::kZAxis, {3, 1, 0}, 0.4, 0.5, 4));
    add("open polyline", bulged(false).release());
    add("closed polyline", bulged(true).release());
    add("tilted polyline", bulged(true, tilted).release());
    const AcGeDoubleArray bulges{0, 0.3, -0.6, 0, 1, 0};
    add("old polyline", new AcDb2dPolyline(AcDb::k2dSimplePoly, zigzag(), 0, false, 0, 0, &bulges));
    add("curve-fit polyline", new AcDb2dPolyline(AcDb::k2dFitCurvePoly, zigzag(), 0, true));
    add("cubic polyline", new AcDb2dPolyline(AcDb::k2dCubicSplinePoly, zigzag(), 0, false));
    add("3D polyline", new AcDb3dPolyline(AcDb::k3dSimplePoly, zigzag(), true));
    add("quadratic 3D polyline", new AcDb3dPolyline(AcDb::k3dQuadSplinePoly, zigzag(), false));
    add("fit spline", new AcDbSpline(zigzag()));
    add("circle from behind", new AcDbCircle({-2, 0, 1}, {0, 0, -1}, 2.5));
    add("ellipse begun elsewhere",
        new AcDbEllipse({1, 0, 0}, tilted, tilted.perpVector() * 2, 0.7, 2, 2 + 2 * kPi));
    add("arc over the X axis of an ellipse",
        new AcDbEllipse({}, AcGeVector3d::kZAxis, {0, 3, 0}, 0.3, 5, 7.5));
    add("polyline with doubled vertices", doubled().release());
    add("nearly full turn", turn().release());
    add("old closed polyline", new AcDb2dPolyline(AcDb::k2dSimplePoly, zigzag(), 0, true, 0, 0, &bulges));
    add("quadratic polyline, closed", smoothed2d(AcDb::k2dQuadSplinePoly).release());
    add("curve-fit polyline, fitted", smoothed2d(AcDb::k2dFitCurvePoly).release());
    add("cubic 3D polyline, closed", smoothed3d().release());
    add("helix", helix().release());
    add("fit spline with tangents", new AcDbSpline(zigzag(), {0, 1, 0}, {1, 1, 1}));
    add("plane fit spline", new AcDbSpline({{0, 0, 0}, {2, 3, 0}, {5, 1, 0}, {8, 2, 0}}));
    add("periodic spline", ring(false).release());
    add("rational periodic spline", ring(true).release());
    // A corner, and knots that are nearly one.
    add("spline with degenerate knots",
        new AcDbSpline(2, false, false, false,
                       {{0, 0, 0}, {1, 3, 0}, {3, 3, 0}, {4, 0, 0}, {6, -1, 0}, {7, 2, 0}, {9, 2, 0}},
                       {0, 0, 0, 1, 1 + 1e-9, 2, 3, 4, 4, 4}, AcGeDoubleArray()));
    add("closed spline of clamped knots",
        new AcDbSpline(3, false, true, false, {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {-1, 3, 0}, {0, 0, 0}},
                       {0, 0, 0, 0, 1, 2, 2, 2, 2}, AcGeDoubleArray()));
    add("rational spline",
        new AcDbSpline(2, true, false, false, {{0, 0, 0}, {2, 4, 0}, {5, 4, 0}, {6, -1, 0}},
                       {0, 0, 0, 1, 2, 2, 2}, {1, 2, 0.5, 1}));
    return out;
}

} // namespace specimens
