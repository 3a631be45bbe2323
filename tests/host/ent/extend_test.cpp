// Curves made longer: where each kind's ends go, and which refuse.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/ent/helix.h"
#include "specimens.h"

namespace {

constexpr double kPi = std::numbers::pi;
using Curve = std::unique_ptr<AcDbCurve>;

Curve line() { return std::make_unique<AcDbLine>(AcGePoint3d(1, 0, 2), AcGePoint3d(4, 4, 2)); }
Curve arc() { return std::make_unique<AcDbArc>(AcGePoint3d(1, 1, 0), 2, 1.5 * kPi, 0.5 * kPi); }
Curve oval(double from, double to) {
    return std::make_unique<AcDbEllipse>(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d(5, 0, 0), 0.6,
                                         from, to);
}
Curve hook(bool closed = false) { // a line, then a quarter circle to the left about (4, 1)
    auto out = std::make_unique<AcDbPolyline>();
    out->setVertices({{{0, 0}}, {{4, 0}, std::tan(kPi / 8)}, {{5, 1}}}), out->setClosed(closed);
    return out;
}
Curve old(AcDb::Poly2dType type) {
    auto out = std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly,
                                                AcGePoint3dArray{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}}, 0, false);
    EXPECT_EQ(out->convertToPolyType(type), Acad::eOk);
    return out;
}
Curve chain(AcDb::Poly3dType type, bool closed = false) {
    auto out = std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly,
                                                AcGePoint3dArray{{0, 0, 0}, {4, 0, 0}, {4, 3, 4}}, closed);
    EXPECT_EQ(out->convertToPolyType(type), Acad::eOk);
    return out;
}

// The curve's ends after the operation; a refused one keeps them.
struct Row {
    std::string name;
    Curve curve;
    Acad::ErrorStatus status;
    AcGePoint3d start, end;
};

void check(const Row& row, Acad::ErrorStatus status) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(status, row.status);
    AcGePoint3d start, end;
    row.curve->getStartPoint(start), row.curve->getEndPoint(end);
    EXPECT_LE(start.distanceTo(row.start), 1e-9) << start.x << ' ' << start.y << ' ' << start.z;
    EXPECT_LE(end.distanceTo(row.end), 1e-9) << end.x << ' ' << end.y << ' ' << end.z;
}

TEST(Extend, ToParameters) {
    struct ToParam {
        Row row;
        double param;
    };
    std::vector<ToParam> rows;
    const auto add = [&](const char* name, Curve curve, double param, AcGePoint3d start, AcGePoint3d end) {
        rows.push_back({{name, std::move(curve), Acad::eOk, start, end}, param});
    };
    add("line, end", line(), 10, {1, 0, 2}, {7, 8, 2});
    add("line, start", line(), -5, {-2, -4, 2}, {4, 4, 2});
    add("arc, end", arc(), 3 * kPi, {1, -1, 0}, {-1, 1, 0});
    add("arc, start", arc(), 1.25 * kPi, {1 - std::sqrt(2.0), 1 - std::sqrt(2.0), 0}, {1, 3, 0});
    add("elliptic arc, end", oval(0, kPi / 2), kPi, {5, 0, 0}, {-5, 0, 0});
    add("elliptic arc, start", oval(0, kPi / 2), -kPi / 2, {0, -3, 0}, {0, 3, 0});
    add("polyline, end", hook(), 3, {0, 0, 0}, {4, 2, 0});
    add("polyline, start", hook(), -0.5, {-2, 0, 0}, {5, 1, 0});
    add("2D polyline", old(AcDb::k2dSimplePoly), 3, {0, 0, 0}, {4, 6, 0});
    add("3D polyline", chain(AcDb::k3dSimplePoly), 2.5, {0, 0, 0}, {4, 4.5, 6});
    for (const ToParam& r : rows) check(r.row, r.row.curve->extend(r.param));
}

TEST(Extend, ToPoints) {
    struct ToPoint {
        Row row;
        bool atStart;
        AcGePoint3d to;
    };
    std::vector<ToPoint> rows;
    const auto add = [&](const char* name, Curve curve, bool atStart, AcGePoint3d to, AcGePoint3d start,
                         AcGePoint3d end) {
        rows.push_back({{name, std::move(curve), Acad::eOk, start, end}, atStart, to});
    };
    add("line", line(), false, {7, 8, -30}, {1, 0, 2}, {7, 8, 2});
    add("line, beside it", line(), true, {-2 + 4, -4 - 3, 2}, {-2, -4, 2}, {4, 4, 2});
    add("arc, end", arc(), false, {-9, 1, 5}, {1, -1, 0}, {-1, 1, 0});
    add("arc, start", arc(), true, {-9, 1, 5}, {-1, 1, 0}, {1, 3, 0});
    add("elliptic arc", oval(0, kPi / 2), false, {-7, 0, 0}, {5, 0, 0}, {-5, 0, 0});
    add("polyline", hook(), false, {4, 9, 0}, {0, 0, 0}, {4, 2, 0});
    add("polyline, start", hook(), true, {-2, 7, 0}, {-2, 0, 0}, {5, 1, 0});
    add("2D polyline", old(AcDb::k2dSimplePoly), true, {-1, 4, 0}, {-1, 0, 0}, {4, 3, 0});
    // Three points are fitted with one circle.
    add("curve-fit 2D polyline", old(AcDb::k2dFitCurvePoly), true, {0, 3, 0}, {0, 3, 0}, {4, 3, 0});
    add("3D polyline", chain(AcDb::k3dSimplePoly), false, {4, 6, 8}, {0, 0, 0}, {4, 6, 8});
    for (const ToPoint& r : rows) check(r.row, r.row.curve->extend(r.atStart, r.to));
}

TEST(Extend, WhatRefuses) {
    const Acad::ErrorStatus none = Acad::eNotApplicable, wrong = Acad::eInvalidInput;
    struct Refused {
        std::string name;
        Curve curve;
        Acad::ErrorStatus status;
        double param;
        bool atStart;
        AcGePoint3d to;
    };
    std::vector<Refused> rows;
    const auto add = [&](const char* name, Curve curve, Acad::ErrorStatus status, double param, bool atStart,
                         AcGePoint3d to) {
        rows.push_back({name, std::move(curve), status, param, atStart, to});
    };
    const auto circle = [] { return std::make_unique<AcDbCircle>(AcGePoint3d(), AcGeVector3d::kZAxis, 2); };
    add("circle", circle(), none, 9, true, {9, 9, 0});
    add("spline", std::make_unique<AcDbSpline>(specimens::zigzag()), none, 1e3, false, {99, 0, 0});
    add("helix", std::make_unique<AcDbHelix>(), none, 1e3, false, {99, 0, 0});
    add("ellipse", oval(0, 2 * kPi), wrong, 7, false, {9, 0, 0});
    add("line, inside", line(), wrong, 3, true, {2, 1, 2});
    add("line, beyond the wrong end", line(), wrong, 0, true, {7, 8, 2});
    add("arc, inside", arc(), wrong, 2 * kPi, false, {9, 1, 0});
    add("arc, all round", arc(), wrong, 3.5 * kPi, true, {9, 1, 0});
    add("elliptic arc, inside", oval(0, kPi), wrong, 1, true, {0, 9, 0});
    add("polyline, inside", hook(), wrong, 1.5, true, {2, 0, 0});
    add("curve-fit 2D polyline, at its start", old(AcDb::k2dFitCurvePoly), wrong, 1, true, {0, 0, 0});
    add("polyline, inside the arc", hook(), wrong, 2, false, {4.8, 0.3, 0});
    add("closed polyline", hook(true), wrong, 4, false, {4, 2, 0});
    add("cubic 2D polyline", old(AcDb::k2dCubicSplinePoly), none, 99, false, {4, 9, 0});
    add("cubic 3D polyline", chain(AcDb::k3dCubicSplinePoly), none, 99, false, {4, 9, 9});
    add("closed 3D polyline", chain(AcDb::k3dSimplePoly, true), wrong, 99, false, {4, 9, 9});
    add("3D polyline, inside", chain(AcDb::k3dSimplePoly), wrong, 1, false, {4, 1, 1});
    for (const Refused& r : rows) {
        SCOPED_TRACE(r.name);
        AcGePoint3d start, end, startAfter, endAfter;
        r.curve->getStartPoint(start), r.curve->getEndPoint(end);
        EXPECT_EQ(r.curve->extend(r.param), r.status);
        EXPECT_EQ(r.curve->extend(r.atStart, r.to), r.status);
        EXPECT_EQ(r.curve->extend(!r.atStart, AcGePoint3d(std::nan(""), 0, 0)), r.status);
        r.curve->getStartPoint(startAfter), r.curve->getEndPoint(endAfter);
        EXPECT_EQ(start.distanceTo(startAfter) + end.distanceTo(endAfter), 0);
    }
}

} // namespace
