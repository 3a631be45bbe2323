// B-splines: shapes kept by every edit, measures against closed forms, closest points against brute force.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "host/ge/curves/interpolate.h"
#include "host/ge/curves/numeric.h"
#include "host/ge/curves/nurbs_make.h"
#include "host/ge/curves/nurbs_measure.h"
#include "host/ge/curves/sampling.h"
#include "host/ge/line.h"

namespace {

using namespace host::ge;

std::mt19937 seeded(11);
double random(double low, double high) { return std::uniform_real_distribution<double>(low, high)(seeded); }

AcGePoint3d randomPoint() { return {random(-5, 5), random(-5, 5), random(-5, 5)}; }

Nurbs randomCurve(int degree, bool rational, int inner, bool isClamped) {
    Nurbs c;
    c.degree = degree;
    c.rational = rational;
    std::vector<double> mid;
    for (int i = 0; i < inner; ++i) mid.push_back(random(0.05, 0.95));
    if (inner > 2 && degree > 1) mid[1] = mid[0]; // a double knot
    std::sort(mid.begin(), mid.end());
    for (int i = 0; i <= degree; ++i) c.knots.push_back(isClamped ? 0 : 0.3 * (i - degree));
    c.knots.insert(c.knots.end(), mid.begin(), mid.end());
    for (int i = 0; i <= degree; ++i) c.knots.push_back(isClamped ? 1 : 1 + 0.2 * i * i);
    for (int i = 0; i < degree + 1 + inner; ++i) {
        c.poles.push_back(randomPoint());
        if (rational) c.weights.push_back(random(0.3, 3));
    }
    return c;
}

std::vector<Nurbs> corpus() {
    std::vector<Nurbs> curves;
    for (const int degree : {1, 2, 3, 5, 9})
        for (const bool rational : {false, true})
            for (const bool isClamped : {true, false})
                curves.push_back(randomCurve(degree, rational, 6, isClamped));
    curves.push_back(interpolate({{0, 0, 0}, {5, 1, 0}, {6, 7, 2}, {-1, 4, 1}}, {.closed = true}).curve);
    curves.push_back(conicNurbs(fullCircle({1, 2, 3}, {1, 1, 1}, 2)));
    return curves;
}

// Greatest distance between equal parameters; map takes those of a to those of b.
template <class Map> double difference(const Nurbs& a, const Nurbs& b, Map map) {
    double most = 0;
    for (int i = 0; i <= 97; ++i) {
        const double t = a.start() + (a.end() - a.start()) * i / 97;
        most = std::max(most, a.point(t).distanceTo(b.point(map(t))));
    }
    return most;
}
double difference(const Nurbs& a, const Nurbs& b) {
    return difference(a, b, [](double t) { return t; });
}

TEST(Nurbs, EveryEditKeepsTheShape) {
    for (const Nurbs& c : corpus()) {
        SCOPED_TRACE(testing::Message()
                     << "degree " << c.degree << " rational " << c.rational << " first knot " << c.knots[0]);
        ASSERT_TRUE(c.isValid());
        const double middle = 0.5 * (c.start() + c.end());
        const double eps = 1e-11;
        for (const Nurbs& same :
             {clamped(c), withKnot(c, middle, 2), refined(c, {c.start() + 0.01, middle, middle + 0.1}),
              elevated(c, c.degree + 2)}) {
            ASSERT_TRUE(same.isValid());
            EXPECT_LT(difference(c, same), eps);
            EXPECT_DOUBLE_EQ(same.start(), c.start());
            EXPECT_DOUBLE_EQ(same.end(), c.end());
        }
        EXPECT_LT(difference(c, reversed(c), [&](double t) { return c.start() + c.end() - t; }), eps);
        const Nurbs moved = onDomain(c, -3, 7);
        EXPECT_LT(
            difference(c, moved, [&](double t) { return -3 + 10 * (t - c.start()) / (c.end() - c.start()); }),
            eps);
        const std::vector<Nurbs> pieces = splitAt(c, {middle, c.start() + 0.1, middle, c.end(), -99});
        ASSERT_EQ(pieces.size(), 3u);
        for (const Nurbs& piece : pieces) EXPECT_LT(difference(piece, c), eps);
        const Nurbs again = joined(pieces);
        ASSERT_TRUE(again.isValid());
        EXPECT_LT(difference(c, again, [&](double t) { return t - c.start() + again.start(); }), 1e-10);
        for (const BezierPiece& piece : bezierPieces(c))
            for (const double s : {0.0, 0.3, 1.0})
                EXPECT_LT(piece.point(s).distanceTo(c.point(piece.from + s * (piece.to - piece.from))), eps);
    }
}

TEST(Nurbs, DerivativesAreTheDifferencesOfOneOrderLess) {
    for (const Nurbs& c : corpus())
        for (const double f : {0.013, 0.41, 0.77}) {
            const double t = c.start() + f * (c.end() - c.start()), h = 1e-6 * (c.end() - c.start());
            const CurvePoint at = c.derivatives(t, 3), before = c.derivatives(t - h, 3),
                             after = c.derivatives(t + h, 3);
            EXPECT_LT(at.point.distanceTo(c.point(t)), 1e-13);
            AcGeVector3d low = before.point.asVector(), high = after.point.asVector();
            for (unsigned k = 0; k < 3; ++k) {
                const double scale = 1 + at.d[k].length();
                EXPECT_LT(((high - low) / (2 * h) - at.d[k]).length(), 2e-3 * scale)
                    << c.degree << " order " << k + 1;
                low = before.d[k];
                high = after.d[k];
            }
        }
    const Nurbs corner = polylineNurbs(std::vector<AcGePoint3d>{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, false);
    EXPECT_TRUE(corner.derivatives(1, 1).d[0].isEqualTo({0, 1, 0}));
    EXPECT_TRUE(corner.derivativesFromLeft(1, 1).d[0].isEqualTo({1, 0, 0}));
}

TEST(Nurbs, RefusesBrokenInput) {
    const Nurbs good = randomCurve(3, true, 2, true);
    Nurbs c = good;
    c.weights[1] = -1;
    EXPECT_FALSE(c.isValid());
    c = good;
    c.poles[0].y = std::nan("");
    EXPECT_FALSE(c.isValid());
    c = good;
    std::swap(c.knots[3], c.knots[4]);
    EXPECT_FALSE(c.isValid());
    c = good;
    c.knots.pop_back();
    EXPECT_FALSE(c.isValid());
    EXPECT_FALSE(joined({}).isValid());
    EXPECT_FALSE(polylineNurbs(std::vector<AcGePoint3d>(5, AcGePoint3d(1, 1, 1)), true).isValid());
}

TEST(Nurbs, ConicsAndBulgesBecomeExact) {
    for (const double to : {0.3, 1.6, 3.5, 2 * kPi}) {
        const EllipticArc e{{1, 2, 3}, {0, 0, 1}, {3, 4, 0}, 0.35, 0, to};
        const Nurbs c = conicNurbs(e);
        ASSERT_TRUE(c.isValid());
        for (int i = 0; i <= 50; ++i) EXPECT_LT(e.closestTo(c.point(to * i / 50)).distance, 1e-12);
        EXPECT_NEAR(curveLength(c), e.length(), 1e-11);
        EXPECT_NEAR(areaVector(c).z, e.area(), 1e-11);
    }
    const std::vector<BulgeVertex> v = {{{0, 0}, 1}, {{2, 0}, 0}, {{2, 0}, 0}, {{2, 5}, -0.3}, {{0, 5}, 2.5}};
    const Nurbs c = polylineNurbs(v, true, AcGeMatrix3d::planeToWorld({1, 2, 3}));
    ASSERT_TRUE(c.isValid());
    EXPECT_NEAR(curveLength(c), polylineLength(v, true), 1e-10);
    EXPECT_NEAR(areaVector(c).length(), std::fabs(polylineArea(v)), 1e-10);
    EXPECT_TRUE(planarity(c).isPlanar);
    EXPECT_TRUE(planarity(c).normal.isParallelTo({1, 2, 3}, AcGeTol().setEqualVector(1e-9)));
}

TEST(ArcLength, ParabolaByItsClosedFormAtEverySize) {
    // y = x^2 from 0 to 1: sqrt(5) / 2 + asinh(2) / 4.
    const double known = std::sqrt(5.0) / 2 + std::asinh(2.0) / 4;
    for (const double size : {1e-3, 1.0, 1e6})
        for (const double far : {0.0, 1e7}) {
            const AcGeVector3d off(far * size, -far * size, 0);
            Nurbs c;
            c.degree = 2;
            c.knots = {0, 0, 0, 1, 1, 1};
            c.poles = {AcGePoint3d(0, 0, 0) + off, AcGePoint3d(0.5 * size, 0, 0) + off,
                       AcGePoint3d(size, size, 0) + off};
            const double eps = far > 0 ? 1e-8 : 1e-12; // seven digits are in the coordinates
            EXPECT_NEAR(curveLength(c) / size, known, eps);
        }
}

TEST(ArcLength, ThereAndBackAlongEveryCurve) {
    for (const Nurbs& c : corpus()) {
        const ArcLengthTable table(c);
        double by = 0;
        const std::vector<double> knots = c.distinctKnots();
        for (size_t i = 0; i + 1 < knots.size(); ++i)
            by += integrate([&](double t) { return c.derivatives(t, 1).d[0].length(); }, knots[i],
                            knots[i + 1], 1e-12);
        EXPECT_NEAR(table.length(), by, 1e-11 * by);
        double before = 0;
        for (int i = 0; i <= 40; ++i) {
            const double s = table.length() * i / 40, t = table.paramAt(s);
            EXPECT_NEAR(table.lengthAt(t), s, 1e-10 * table.length());
            EXPECT_GE(t, i == 0 ? c.start() : before);
            before = t;
        }
    }
    // A cusp: (t^3, t^2) has speed |t| sqrt(4 + 9 t^2); from -1 to 1 its length is 2 (13 sqrt 13 - 8) / 27.
    Nurbs cusp;
    cusp.knots = {-1, -1, -1, -1, 1, 1, 1, 1};
    cusp.poles = {{-1, 1, 0}, {1, -1.0 / 3, 0}, {-1, -1.0 / 3, 0}, {1, 1, 0}};
    EXPECT_NEAR(curveLength(cusp), 2 * (13 * std::sqrt(13.0) - 8) / 27, 1e-11);
}

TEST(ClosestPoint, BeatsEverySampleAndEndsAtEqualDistances) {
    for (const Nurbs& c : corpus()) {
        const ClosestPointFinder finder(c);
        for (int k = 0; k < 25; ++k) {
            const AcGePoint3d p = randomPoint() * 1.5;
            const NurbsClosest found = finder.closestTo(p);
            EXPECT_NEAR(c.point(found.param).distanceTo(p), found.distance, 1e-12);
            for (int i = 0; i <= 500; ++i)
                ASSERT_LE(found.distance,
                          c.point(c.start() + (c.end() - c.start()) * i / 500).distanceTo(p) + 1e-11);
        }
        const double t = c.start() + 0.37 * (c.end() - c.start());
        EXPECT_LT(finder.closestTo(c.point(t)).distance, 1e-11);
    }
    const Nurbs circle = conicNurbs(fullCircle({1, 2, 3}, {1, 1, 1}, 2));
    EXPECT_NEAR(closestPoint(circle, {1, 2, 3}).distance, 2, 1e-12);
    EXPECT_NEAR(closestPoint(circle, AcGePoint3d(1, 2, 3) + AcGeVector3d(1, 1, 1)).distance, std::sqrt(7.0),
                1e-12);
}

TEST(Extents, TouchTheCurve) {
    for (const Nurbs& c : corpus()) {
        const AcDbExtents box = tightExtents(c);
        AcDbExtents sampled;
        for (int i = 0; i <= 20000; ++i)
            sampled.addPoint(c.point(c.start() + (c.end() - c.start()) * i / 20000));
        for (const double knot : c.distinctKnots()) sampled.addPoint(c.point(knot)); // corners
        for (unsigned axis = 0; axis < 3; ++axis) {
            EXPECT_LE(box.minPoint()[axis], sampled.minPoint()[axis] + 1e-11);
            EXPECT_GE(box.maxPoint()[axis], sampled.maxPoint()[axis] - 1e-11);
            const double gap = 2e-4;
            EXPECT_NEAR(box.minPoint()[axis], sampled.minPoint()[axis], gap);
            EXPECT_NEAR(box.maxPoint()[axis], sampled.maxPoint()[axis], gap);
        }
    }
}

TEST(Interpolation, MeetsItsPointsSmoothlyUnderEverySpacing) {
    std::vector<AcGePoint3d> points = {{0, 0, 0}, {1, 3, 0},  {1, 3, 0}, {1.001, 3, 0},
                                       {8, 2, 5}, {9, -4, 1}, {0, -3, 2}};
    for (const auto spacing : {KnotSpacing::chord, KnotSpacing::squareRootOfChord, KnotSpacing::uniform})
        for (const bool closed : {false, true})
            for (const bool guided : {false, true}) {
                FitOptions options{spacing, closed, {}, {}};
                if (guided) options.startTangent = AcGeVector3d(0, 0, 3);
                const FitResult fit = interpolate(points, options);
                ASSERT_TRUE(fit.curve.isValid());
                ASSERT_EQ(fit.fit.size(), points.size() - 1); // the doubled one is one
                for (size_t i = 0; i < fit.fit.size(); ++i) {
                    const double t = fit.params[i];
                    EXPECT_LT(fit.curve.point(t).distanceTo(fit.fit[i]), 1e-11);
                    const CurvePoint left = fit.curve.derivativesFromLeft(t, 2),
                                     right = fit.curve.derivatives(t, 2);
                    if (i == 0) continue;
                    EXPECT_LT((left.d[0] - right.d[0]).length(), 1e-9 * (1 + left.d[0].length()));
                    EXPECT_LT((left.d[1] - right.d[1]).length(), 1e-6 * (1 + left.d[1].length()));
                }
                const CurvePoint first = fit.curve.derivatives(fit.curve.start(), 2);
                const CurvePoint last = fit.curve.derivativesFromLeft(fit.curve.end(), 2);
                if (closed) {
                    EXPECT_LT((first.d[0] - last.d[0]).length() + (first.d[1] - last.d[1]).length(), 1e-9);
                    EXPECT_LT(first.point.distanceTo(last.point), 1e-11);
                } else {
                    EXPECT_LT(last.d[1].length(), 1e-8);
                    EXPECT_TRUE(guided ? first.d[0].isCodirectionalTo({0, 0, 1})
                                       : first.d[1].length() < 1e-8);
                }
            }
}

TEST(Interpolation, ReproducesACubicAndEndsWithFewPoints) {
    // With a cubic's own end tangents and uniform knots the spline is that cubic.
    std::vector<AcGePoint3d> points;
    for (int i = 0; i <= 4; ++i) points.push_back({double(i), 0.1 * i * i * i, 0});
    FitOptions options{KnotSpacing::uniform, false, AcGeVector3d(1, 0, 0), AcGeVector3d(1, 4.8, 0)};
    const Nurbs c = interpolate(points, options).curve;
    EXPECT_TRUE(c.derivatives(c.start(), 1).d[0].isCodirectionalTo({1, 0, 0}));
    EXPECT_TRUE(c.derivativesFromLeft(c.end(), 1).d[0].isCodirectionalTo(AcGeVector3d(1, 4.8, 0)));
    const Nurbs straight = interpolate({{1, 1, 1}, {4, 5, 1}}).curve;
    EXPECT_NEAR(curveLength(straight), 5, 1e-12);
    EXPECT_FALSE(interpolate({{1, 1, 1}, {1, 1, 1}}).curve.isValid());
    const Nurbs lens = interpolate({{0, 0, 0}, {2, 0, 0}}, {.closed = true}).curve;
    ASSERT_TRUE(lens.isValid());
    EXPECT_LT(lens.startPoint().distanceTo(lens.endPoint()), 1e-12);
}

TEST(Sampling, SplineChordsStayWithinTolerance) {
    for (const Nurbs& c : corpus()) {
        const auto points = flatten(c, {1e-2, 100000});
        for (size_t i = 1; i < points.size(); ++i) {
            const AcGeLineSeg3d chord(points[i - 1].point, points[i].point);
            for (const double f : {0.25, 0.5, 0.75}) {
                const double t = points[i - 1].param + f * (points[i].param - points[i - 1].param);
                ASSERT_LT(chord.distanceTo(c.point(t)), 1e-2);
            }
        }
        EXPECT_LE(flatten(c, {1e-12, 40}).size(), 40u);
        EXPECT_EQ(flatten(c, {1e-2, 4}).back().param, c.end());
    }
}

} // namespace
