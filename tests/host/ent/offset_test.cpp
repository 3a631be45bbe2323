// Parallels of curves of the drawing: at their distance, none of it nearer, however the source bends.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "specimens.h"

namespace {

constexpr double kPi = std::numbers::pi;

using Curves = std::vector<std::unique_ptr<AcDbCurve>>;

Curves parallels(const AcDbCurve& curve, double distance) {
    AcDbVoidPtrArray made;
    curve.getOffsetCurves(distance, made);
    Curves out;
    for (void* one : made) out.emplace_back(static_cast<AcDbCurve*>(one));
    return out;
}

double lengthOf(const AcDbCurve& curve) {
    double end = 0, length = 0;
    curve.getEndParam(end), curve.getDistAtParam(end, length);
    return length;
}

// The least and the greatest distance of a curve's places from another.
struct Apart {
    double least = 1e300, most = 0;
};
Apart apart(const AcDbCurve& curve, const AcDbCurve& from) {
    Apart out;
    const double length = lengthOf(curve);
    for (int i = 0; i <= 400; ++i) {
        AcGePoint3d p, near;
        EXPECT_EQ(curve.getPointAtDist(length * i / 400, p), Acad::eOk);
        EXPECT_EQ(from.getClosestPointTo(p, near), Acad::eOk);
        out.least = std::min(out.least, p.distanceTo(near)),
        out.most = std::max(out.most, p.distanceTo(near));
    }
    return out;
}

struct Row {
    const char* name;
    std::shared_ptr<AcDbCurve> curve;
    double distance;
    int pieces;
    int corners = 0; // where what is too near was left out
};

std::shared_ptr<AcDbCurve> ellipse(double from = 0, double to = 2 * kPi) {
    return std::make_shared<AcDbEllipse>(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis, AcGeVector3d(5, 0, 0),
                                         0.4, from, to);
}
std::shared_ptr<AcDbCurve> spline(const AcGePoint3dArray& points) {
    return std::make_shared<AcDbSpline>(points);
}

// Of a spline, the one where it closes included.
int cornersOf(const AcDbCurve& curve) {
    const AcDbSpline* made = AcDbSpline::cast(&curve);
    if (!made) return 0;
    const host::ge::Nurbs& c = made->nurbs();
    const auto turns = [](const AcGeVector3d& u, const AcGeVector3d& v) { return u.angleTo(v) > 1e-3; };
    int out = 0;
    for (const double knot : c.distinctKnots())
        if (knot > c.start() && knot < c.end())
            out += turns(c.derivativesFromLeft(knot, 1).d[0], c.derivatives(knot, 1).d[0]);
    if (curve.isClosed()) out += turns(c.derivatives(c.end(), 1).d[0], c.derivatives(c.start(), 1).d[0]);
    return out;
}

// The ellipse's sharpest bend has the radius 0.8 (b^2 / a), its flattest 12.5 (a^2 / b); half as wide as it
// is high it has a middle at 2.
TEST(Offset, SmoothCurvesHaveCornersWhereTheyWouldComeTooNear) {
    host::registerEntityClasses();
    const auto bend = spline({{0, 0, 0}, {4, 0.2, 0}, {5, 2, 0}, {4, 3.8, 0}, {0, 4, 0}});
    const auto wave = spline({{0, 0, 0}, {2, 2, 0}, {4, -2, 0}, {6, 2, 0}, {8, 0, 0}});
    const Row rows[] = {{"ellipse, outside", ellipse(), 1, 1},
                        {"ellipse, inside, before its bends", ellipse(), -0.7, 1},
                        {"ellipse, inside, past its bends", ellipse(), -1.2, 1, 2},
                        {"ellipse, nothing left", ellipse(), -2.1, 0},
                        {"elliptic arc past a bend", ellipse(-1.5, 1.5), -1.2, 1, 1},
                        {"elliptic arc, outer side", ellipse(-1.5, 1.5), 1.2, 1},
                        {"bend, outer side", bend, 0.5, 1},
                        {"bend, inner side, past its radius", bend, -1.9, 1, 1},
                        {"wave, small", wave, 0.2, 1},
                        {"wave, past the radius of its hills", wave, 1.5, 1, 2}};
    for (const Row& row : rows)
        for (double scale : {1e-3, 1.0, 1e6}) {
            SCOPED_TRACE(std::string(row.name) + " at scale " + std::to_string(scale));
            const std::unique_ptr<AcDbCurve> curve(static_cast<AcDbCurve*>(row.curve->clone()));
            curve->transformBy(AcGeMatrix3d::scaling(scale));
            const double d = row.distance * scale, slack = 2e-5 * scale;
            const Curves made = parallels(*curve, d);
            EXPECT_EQ(int(made.size()), row.pieces);
            int corners = 0;
            for (const auto& one : made) corners += cornersOf(*one);
            EXPECT_EQ(corners, row.corners);
            for (const auto& one : made) {
                const Apart a = apart(*one, *curve);
                EXPECT_NEAR(a.least, std::fabs(d), slack);
                EXPECT_NEAR(a.most, std::fabs(d), slack);
            }
        }
}

// A closed convex curve grows by 2 pi times the distance (Cauchy, 1841).
TEST(Offset, TheEllipsesParallelIsLongerByTheTurn) {
    const auto source = ellipse();
    const Curves out = parallels(*source, 1.5), in = parallels(*source, -0.5);
    ASSERT_EQ(out.size(), 1u);
    ASSERT_EQ(in.size(), 1u);
    EXPECT_TRUE(out[0]->isClosed());
    EXPECT_NEAR(lengthOf(*out[0]), lengthOf(*source) + 3 * kPi, 1e-5);
    EXPECT_NEAR(lengthOf(*in[0]), lengthOf(*source) - kPi, 1e-5);
}

TEST(Offset, PolylinesOfEveryKindInTheirPlanes) {
    host::registerEntityClasses();
    const AcGeVector3d up = AcGeVector3d(1, -2, 2).normal();
    const AcGeMatrix3d tilt = AcGeMatrix3d::planeToWorld(up);
    for (const bool tilted : {false, true})
        for (const double away : {0.0, 3e6}) {
            AcGePoint3dArray corners{{0, 0, 1}, {4, 0, 1}, {4, 4, 1}, {0, 4, 1}};
            AcDbPolyline light;
            for (AcGePoint3d& p : corners) light.addVertexAt(light.numVerts(), {p.x, p.y});
            light.setElevation(1), light.setClosed(true), light.setConstantWidth(0.25);
            AcDb2dPolyline old(AcDb::k2dSimplePoly, corners, 1, true);
            AcDb3dPolyline space(AcDb::k3dSimplePoly, corners, true);
            for (AcDbCurve* curve : std::initializer_list<AcDbCurve*>{&light, &old, &space}) {
                if (tilted) curve->transformBy(tilt);
                curve->transformBy(AcGeMatrix3d::translation({away, -away, away}));
                for (double d : {1.0, -1.0}) {
                    SCOPED_TRACE(std::to_string(d) + (tilted ? " tilted" : " flat"));
                    const Curves made = parallels(*curve, d);
                    ASSERT_EQ(made.size(), 1u);
                    double area = 0;
                    EXPECT_EQ(made[0]->getArea(area), Acad::eOk);
                    // A 3D polyline has no upper side of its own when it stands askew.
                    if (curve != &space || !tilted) {
                        EXPECT_NEAR(area, d > 0 ? 36 : 4, away > 0 ? 1e-7 : 1e-12);
                    }
                    const Apart a = apart(*made[0], *curve);
                    EXPECT_NEAR(a.least, 1, away > 0 ? 1e-8 : 1e-12);
                    EXPECT_EQ(AcDb3dPolyline::cast(made[0].get()) != nullptr, curve == &space);
                    if (const auto* own = AcDbPolyline::cast(made[0].get()); own && curve == &light) {
                        double width = 0;
                        own->getConstantWidth(width);
                        EXPECT_EQ(width, 0.25);
                    }
                }
            }
        }
    AcDbVoidPtrArray made;
    EXPECT_EQ(AcDb3dPolyline(AcDb::k3dSimplePoly, specimens::zigzag()).getOffsetCurves(0.1, made),
              Acad::eNonPlanarEntity);
}

} // namespace
