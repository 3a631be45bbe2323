// Every curve against numbers made with 40 digits (data/make_curve_numbers.py) and by another geometry kernel
// (data/make_kernel_numbers.cpp): places, derivatives, lengths both ways, closest places, boxes, areas and
// meetings, at several sizes and far from the origin.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "host/ent/helix.h"
#include "host/ge/curves/interpolate.h"
#include "specimens.h"

namespace {

using Numbers = std::vector<double>;

struct Fact {
    std::string what;
    Numbers n;
};
struct Measured {
    std::string name, kind;
    Numbers data;
    std::vector<Fact> facts;
};

Numbers numbersOf(std::istream& in) {
    Numbers out;
    for (double x; in >> x;) out.push_back(x);
    return out;
}

std::vector<Measured> measured(const std::string& name) {
    std::ifstream file(CORVANE_SOURCE_DIR "/tests/host/ent/data/" + name);
    std::vector<Measured> out;
    for (std::string line; std::getline(file, line);) {
        std::istringstream in(line);
        std::string word;
        in >> word;
        if (word == "curve") {
            out.push_back({line.substr(6), "", {}, {}});
        } else if (word != "#" && out.back().kind.empty()) {
            out.back().kind = word, out.back().data = numbersOf(in);
        } else if (word != "#") {
            out.back().facts.push_back({word, numbersOf(in)});
        }
    }
    return out;
}

AcGePoint3d point(const Numbers& n, size_t at) { return {n[at], n[at + 1], n[at + 2]}; }
AcGeVector3d vector(const Numbers& n, size_t at) { return point(n, at).asVector(); }

AcGePoint3dArray points(const Numbers& n, size_t from) {
    AcGePoint3dArray out;
    for (size_t i = from; i < n.size(); i += 3) out.append(point(n, i));
    return out;
}

// degree, rational, periodic, number of poles; poles, knots, weights
host::ge::Nurbs nurbsOf(const Numbers& n) {
    host::ge::Nurbs out;
    out.degree = int(n[0]), out.rational = n[1] != 0, out.closed = out.periodic = n[2] != 0;
    const size_t count = size_t(n[3]), knots = 4 + 3 * count,
                 weights = knots + count + size_t(out.degree) + 1;
    for (size_t i = 4; i < knots; i += 3) out.poles.push_back(point(n, i));
    out.knots.assign(n.begin() + long(knots), n.begin() + long(weights));
    out.weights.assign(n.begin() + long(weights), n.end());
    return out;
}
template <class Spline> std::unique_ptr<AcDbCurve> splineOf(host::ge::Nurbs curve) {
    auto out = std::make_unique<Spline>();
    EXPECT_EQ(out->setNurbs(std::move(curve)), Acad::eOk);
    return out;
}

// closed; the plane's normal and elevation; vertices with bulges
std::unique_ptr<AcDbCurve> polylineOf(const Numbers& n) {
    auto out = std::make_unique<AcDbPolyline>();
    for (size_t i = 5; i < n.size(); i += 3) out->addVertexAt(out->numVerts(), {n[i], n[i + 1]}, n[i + 2]);
    out->setClosed(n[0] != 0), out->setNormal(vector(n, 1)), out->setElevation(n[4]);
    return out;
}
std::unique_ptr<AcDbCurve> fittedOf(const Numbers& n) {
    AcGePoint3dArray through;
    for (size_t i = 1; i < n.size(); i += 2) through.append({n[i], n[i + 1], 0});
    auto out = std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, through, 0, n[0] != 0);
    EXPECT_EQ(out->curveFit(), Acad::eOk);
    return out;
}
// degree, closed; the frame, in eight steps a side
template <class Polyline, class Type>
std::unique_ptr<AcDbCurve> smoothedOf(std::unique_ptr<Polyline> frame, Type type) {
    EXPECT_EQ(frame->splineFit(type, 8), Acad::eOk);
    return frame;
}

std::unique_ptr<AcDbCurve> conicOf(const Measured& m) {
    const Numbers& n = m.data;
    if (m.kind == "circle") return std::make_unique<AcDbCircle>(point(n, 0), vector(n, 3), n[6]);
    if (m.kind == "arc") return std::make_unique<AcDbArc>(point(n, 0), vector(n, 3), n[6], n[7], n[8]);
    if (m.kind != "ellipse") return nullptr;
    auto out = std::make_unique<AcDbEllipse>(point(n, 0), vector(n, 3), vector(n, 6), n[9]);
    out->setStartParam(n[10]), out->setEndParam(n[11]);
    return out;
}

std::unique_ptr<AcDbCurve> splineCurveOf(const Measured& m) {
    const Numbers& n = m.data;
    if (m.kind == "spline") return splineOf<AcDbSpline>(nurbsOf(n));
    if (m.kind == "helix") return splineOf<AcDbHelix>(nurbsOf(n));
    if (m.kind == "fit") return std::make_unique<AcDbSpline>(points(n, 0));
    if (m.kind == "tangents") return std::make_unique<AcDbSpline>(points(n, 6), vector(n, 0), vector(n, 3));
    host::ge::FitOptions ring;
    ring.closed = true;
    if (m.kind == "round")
        return splineOf<AcDbSpline>(host::ge::interpolate(points(n, 0).items(), ring).curve);
    return nullptr;
}

std::unique_ptr<AcDbCurve> curveOf(const Measured& m) {
    const Numbers& n = m.data;
    if (auto conic = conicOf(m)) return conic;
    if (auto spline = splineCurveOf(m)) return spline;
    if (m.kind == "line") return std::make_unique<AcDbLine>(point(n, 0), point(n, 3));
    if (m.kind == "chain")
        return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points(n, 1), n[0] != 0);
    if (m.kind == "polyline") return polylineOf(n);
    if (m.kind == "arcs") return fittedOf(n);
    if (m.kind == "smooth2d")
        return smoothedOf(std::make_unique<AcDb2dPolyline>(AcDb::k2dSimplePoly, points(n, 2), 0, n[1] != 0),
                          n[0] == 2 ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly);
    if (m.kind == "smooth3d")
        return smoothedOf(std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points(n, 2), n[1] != 0),
                          n[0] == 2 ? AcDb::k3dQuadSplinePoly : AcDb::k3dCubicSplinePoly);
    ADD_FAILURE() << "a kind without a maker: " << m.kind;
    return nullptr;
}

// A polyline's old form of the same vertices.
std::unique_ptr<AcDbCurve> oldForm(const AcDbCurve& curve) {
    AcDb2dPolyline* old = nullptr;
    if (const auto* light = AcDbPolyline::cast(&curve)) light->convertTo(false, old);
    return std::unique_ptr<AcDbCurve>(old);
}

struct Setting {
    double scale;
    AcGeVector3d away;
    double size = 0; // of the scaled curve
    double slack() const { return 1e-9 * size + 1e-15 * away.length(); }
    AcGePoint3d place(const Numbers& n, size_t at) const {
        return AcGePoint3d(0, 0, 0) + vector(n, at) * scale + away;
    }
};

void checkAt(const AcDbCurve& curve, const Numbers& n, const Setting& s) {
    // Lines count their parameter in length.
    const double unit = AcDbLine::cast(&curve) ? s.scale : 1, param = n[0] * unit;
    SCOPED_TRACE("parameter " + std::to_string(param));
    AcGePoint3d p;
    AcGeVector3d d;
    double value = 0;
    EXPECT_EQ(curve.getPointAtParam(param, p), Acad::eOk);
    EXPECT_LE(p.distanceTo(s.place(n, 2)), s.slack());
    EXPECT_EQ(curve.getFirstDeriv(param, d), Acad::eOk);
    const AcGeVector3d first = vector(n, 5) * (s.scale / unit), second = vector(n, 8) * (s.scale / unit);
    EXPECT_LE((d - first).length(), 1e-9 * first.length() + 1e-14 * s.away.length());
    EXPECT_EQ(curve.getSecondDeriv(param, d), Acad::eOk);
    EXPECT_LE((d - second).length(), 1e-9 * (first.length() + second.length()) + 1e-13 * s.away.length());
    EXPECT_EQ(curve.getDistAtParam(param, value), Acad::eOk);
    EXPECT_NEAR(value, n[1] * s.scale, s.slack());
    EXPECT_EQ(curve.getPointAtDist(n[1] * s.scale, p), Acad::eOk);
    EXPECT_LE(p.distanceTo(s.place(n, 2)), 2 * s.slack());
    EXPECT_EQ(curve.getParamAtPoint(s.place(n, 2), value), Acad::eOk);
    EXPECT_EQ(curve.getPointAtParam(value, p), Acad::eOk);
    EXPECT_LE(p.distanceTo(s.place(n, 2)), 2 * s.slack());
}

void check(const AcDbCurve& curve, const Fact& fact, const Setting& s) {
    const Numbers& n = fact.n;
    double value = 0, end = 0;
    if (fact.what == "at") {
        checkAt(curve, n, s);
    } else if (fact.what == "length") {
        curve.getEndParam(end);
        EXPECT_EQ(curve.getDistAtParam(end, value), Acad::eOk);
        EXPECT_NEAR(value, n[0] * s.scale, 1e-10 * value + s.slack());
    } else if (fact.what == "area") {
        EXPECT_EQ(curve.getArea(value), Acad::eOk);
        EXPECT_NEAR(value, n[0] * s.scale * s.scale, s.slack() * s.size);
    } else if (fact.what == "box") {
        AcDbExtents box;
        EXPECT_EQ(curve.getGeomExtents(box), Acad::eOk);
        EXPECT_LE(box.minPoint().distanceTo(s.place(n, 0)), s.slack());
        EXPECT_LE(box.maxPoint().distanceTo(s.place(n, 3)), s.slack());
    } else {
        ASSERT_EQ(fact.what, "closest");
        AcGePoint3d near;
        EXPECT_EQ(curve.getClosestPointTo(s.place(n, 0), near), Acad::eOk);
        EXPECT_NEAR(near.distanceTo(s.place(n, 0)), s.place(n, 3).distanceTo(s.place(n, 0)), s.slack());
        EXPECT_LE(near.distanceTo(s.place(n, 3)), s.slack());
    }
}

std::unique_ptr<AcDbCurve> inSetting(std::unique_ptr<AcDbCurve> curve, Setting& s) {
    curve->transformBy(AcGeMatrix3d::scaling(s.scale));
    curve->transformBy(AcGeMatrix3d::translation(s.away));
    AcDbExtents box;
    EXPECT_EQ(curve->getGeomExtents(box), Acad::eOk);
    s.size = box.minPoint().distanceTo(box.maxPoint());
    return curve;
}

std::string caption(const Measured& m, const std::string& what, const Setting& s) {
    return m.name + ", " + what + ", scale " + std::to_string(s.scale) + " at " + std::to_string(s.away.x);
}

void checkAll(std::unique_ptr<AcDbCurve> made, const Measured& m, Setting s) {
    const auto curve = inSetting(std::move(made), s);
    for (const Fact& fact : m.facts) {
        SCOPED_TRACE(caption(m, fact.what, s));
        if (fact.what != "meets") check(*curve, fact, s);
    }
}

const Setting kSettings[] = {
    {1, {0, 0, 0}}, {1e-3, {0, 0, 0}}, {1e6, {0, 0, 0}}, {1, {3e6, -2e6, 1e6}}, {1e3, {-4e8, 1e8, 0}}};

TEST(Accuracy, EveryCurveIsWhatManyDigitsSay) {
    host::registerEntityClasses();
    const std::vector<Measured> all = measured("curve_numbers.txt");
    ASSERT_GE(all.size(), 55u);
    for (const Measured& m : all)
        for (const Setting& s : kSettings) {
            checkAll(curveOf(m), m, s);
            if (auto old = oldForm(*curveOf(m))) checkAll(std::move(old), m, s);
        }
}

// The other kernel overlooks some meetings: all of its are found, and what else is found lies on both curves.
void checkMeetings(const AcDbCurve& first, const AcDbCurve& second, const Numbers& n, const Setting& s) {
    AcGePoint3dArray found;
    EXPECT_EQ(first.intersectWith(&second, AcDb::kOnBothOperands, found), Acad::eOk);
    for (size_t i = 1; i < n.size(); i += 3) {
        double nearest = 1e300;
        for (const AcGePoint3d& p : found) nearest = std::min(nearest, p.distanceTo(s.place(n, i)));
        EXPECT_LE(nearest, 4 * s.slack());
    }
    for (const AcGePoint3d& p : found)
        for (const AcDbCurve* curve : {&first, &second}) {
            AcGePoint3d near;
            curve->getClosestPointTo(p, near);
            EXPECT_LE(near.distanceTo(p), 2 * s.slack());
        }
}

TEST(Accuracy, CurvesAreAndMeetAsAnotherKernelSays) {
    const std::vector<Measured> all = measured("kernel_numbers.txt");
    ASSERT_GE(all.size(), 9u);
    int met = 0;
    for (const Measured& m : all)
        for (const Setting& setting : kSettings) {
            checkAll(curveOf(m), m, setting);
            for (const Fact& fact : m.facts) {
                if (fact.what != "meets") continue;
                Setting s = setting, own = setting;
                const Measured& other = all[size_t(fact.n[0])];
                const auto first = inSetting(curveOf(m), s), second = inSetting(curveOf(other), own);
                SCOPED_TRACE(caption(m, "meets " + other.name, s));
                checkMeetings(*first, *second, fact.n, s);
                ++met;
            }
        }
    EXPECT_GE(met, 100);
}

} // namespace
