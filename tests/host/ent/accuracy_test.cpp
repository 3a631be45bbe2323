// Every curve against numbers made with 40 digits (data/make_curve_numbers.py): places, derivatives, lengths
// both ways, closest places, boxes and areas, at several sizes and far from the origin.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

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

std::vector<Measured> measured() {
    std::ifstream file(CORVANE_SOURCE_DIR "/tests/host/ent/data/curve_numbers.txt");
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

std::unique_ptr<AcDbCurve> splineOf(const Numbers& n) {
    const int degree = int(n[0]), count = int(n[2]);
    const bool rational = n[1] != 0;
    AcGePoint3dArray poles;
    size_t at = 3;
    for (int i = 0; i < count; ++i, at += 3) poles.append(point(n, at));
    AcGeDoubleArray knots, weights;
    for (int i = 0; i < count + degree + 1; ++i) knots.append(n[at++]);
    for (int i = 0; rational && i < count; ++i) weights.append(n[at++]);
    return std::make_unique<AcDbSpline>(degree, rational, false, false, poles, knots, weights);
}

std::unique_ptr<AcDbCurve> curveOf(const Measured& m) {
    const Numbers& n = m.data;
    const AcGeVector3d up = AcGeVector3d::kZAxis;
    if (m.kind == "line") return std::make_unique<AcDbLine>(point(n, 0), point(n, 3));
    if (m.kind == "circle") return std::make_unique<AcDbCircle>(point(n, 0), up, n[3]);
    if (m.kind == "arc") return std::make_unique<AcDbArc>(point(n, 0), n[3], n[4], n[5]);
    if (m.kind == "spline") return splineOf(n);
    if (m.kind == "ellipse") {
        auto ellipse = std::make_unique<AcDbEllipse>(point(n, 0), up, vector(n, 3), n[6]);
        ellipse->setStartParam(n[7]), ellipse->setEndParam(n[8]);
        return ellipse;
    }
    if (m.kind == "chain") {
        AcGePoint3dArray points;
        for (size_t i = 2; i < n.size(); i += 3) points.append(point(n, i));
        return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points, n[0] != 0);
    }
    auto polyline = std::make_unique<AcDbPolyline>();
    for (size_t i = 2; i < n.size(); i += 3)
        polyline->addVertexAt(polyline->numVerts(), {n[i], n[i + 1]}, n[i + 2]);
    polyline->setClosed(n[0] != 0);
    return polyline;
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
        // As far as the closest place is; where, as exactly as that tells it.
        AcGePoint3d near;
        EXPECT_EQ(curve.getClosestPointTo(s.place(n, 0), near), Acad::eOk);
        EXPECT_NEAR(near.distanceTo(s.place(n, 0)), s.place(n, 3).distanceTo(s.place(n, 0)), s.slack());
        EXPECT_LE(near.distanceTo(s.place(n, 3)), 1e-7 * s.size + 10 * s.slack());
    }
}

void checkAll(std::unique_ptr<AcDbCurve> curve, const Measured& m, Setting s) {
    curve->transformBy(AcGeMatrix3d::scaling(s.scale));
    curve->transformBy(AcGeMatrix3d::translation(s.away));
    AcDbExtents box;
    ASSERT_EQ(curve->getGeomExtents(box), Acad::eOk);
    s.size = box.minPoint().distanceTo(box.maxPoint());
    for (const Fact& fact : m.facts) {
        SCOPED_TRACE(m.name + ", " + fact.what + ", scale " + std::to_string(s.scale) + " at " +
                     std::to_string(s.away.x));
        check(*curve, fact, s);
    }
}

TEST(Accuracy, EveryCurveIsWhatManyDigitsSay) {
    host::registerEntityClasses();
    const std::vector<Measured> all = measured();
    ASSERT_GE(all.size(), 20u);
    const Setting settings[] = {
        {1, {0, 0, 0}}, {1e-3, {0, 0, 0}}, {1e6, {0, 0, 0}}, {1, {3e6, -2e6, 1e6}}, {1e3, {-4e8, 1e8, 0}}};
    for (const Measured& m : all)
        for (const Setting& s : settings) {
            checkAll(curveOf(m), m, s);
            if (auto old = oldForm(*curveOf(m))) checkAll(std::move(old), m, s);
        }
}

} // namespace
