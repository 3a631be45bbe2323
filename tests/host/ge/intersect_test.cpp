// Intersections: counts and places known beforehand, symmetry, touching and shared stretches.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "host/ge/curves/interpolate.h"
#include "host/ge/curves/intersect.h"
#include "host/ge/curves/numeric.h"
#include "host/ge/curves/nurbs_make.h"

namespace {

using namespace host::ge;

EllipticArc circle(double x, double y, double r, double size = 1) {
    return fullCircle(AcGePoint3d(x * size, y * size, 0), {0, 0, 1}, r * size);
}

TEST(Intersect, CirclesCrossTouchAndMissAtEverySize) {
    struct Row {
        double distance, radius;
        size_t points;
    };
    const Row rows[] = {{8, 5, 2}, {7, 2, 1},   {3, 2, 1}, {8, 2.9, 0},
                        {1, 2, 0}, {0, 4.9, 0}, {5, 5, 2}, {9.999, 5, 2}};
    for (const double size : {1e-3, 1.0, 1e6})
        for (const Row& row : rows) {
            const Intersections r = intersect(
                circle(0, 0, 5, size), circle(row.distance * 0.6, row.distance * 0.8, row.radius, size));
            EXPECT_EQ(r.points.size(), row.points) << row.distance << ' ' << row.radius << ' ' << size;
            EXPECT_TRUE(r.shared.empty());
            EXPECT_TRUE(r.isComplete);
            for (const Crossing& c : r.points)
                EXPECT_NEAR(c.point.asVector().length(), 5 * size, 1e-8 * size);
        }
}

TEST(Intersect, LinesMeetArcsAtTheirAngles) {
    const EllipticArc arc{{}, {0, 0, 1}, {5, 0, 0}, 1, 0, kPi};
    const Intersections r = intersect(AcGeLineSeg3d(AcGePoint3d(3, -10, 0), AcGePoint3d(3, 10, 0)), arc);
    ASSERT_EQ(r.points.size(), 1u);
    EXPECT_NEAR(r.points[0].first, 0.7, 1e-10);
    EXPECT_NEAR(r.points[0].second, std::acos(0.6), 1e-9);
    EXPECT_TRUE(intersect(AcGeLineSeg3d(AcGePoint3d(3, -10, 1), AcGePoint3d(3, 10, 1)), arc).points.empty());
    const Intersections skew = intersect(AcGeLineSeg3d(AcGePoint3d(0, 5, -1), AcGePoint3d(0, 5, 3)), arc);
    ASSERT_EQ(skew.points.size(), 1u);
    EXPECT_NEAR(skew.points[0].first, 0.25, 1e-10);
}

TEST(Intersect, SharedStretchesAreToldAsStretches) {
    const Intersections lines = intersect(AcGeLineSeg3d(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)),
                                          AcGeLineSeg3d(AcGePoint3d(14, 0, 0), AcGePoint3d(4, 0, 0)));
    ASSERT_EQ(lines.shared.size(), 1u);
    EXPECT_TRUE(lines.points.empty());
    EXPECT_NEAR(lines.shared[0].firstFrom, 0.4, 1e-9);
    EXPECT_NEAR(lines.shared[0].secondFrom, 1, 1e-9);
    EXPECT_NEAR(lines.shared[0].secondTo, 0.4, 1e-9);
    const Intersections ends = intersect(AcGeLineSeg3d(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)),
                                         AcGeLineSeg3d(AcGePoint3d(1, 0, 0), AcGePoint3d(2, 0, 0)));
    EXPECT_EQ(ends.points.size(), 1u);
    EXPECT_TRUE(ends.shared.empty());
    EllipticArc a{{}, {0, 0, 1}, {5, 0, 0}, 1, 0, 2}, b = a;
    b.start = 1;
    b.end = 4;
    const Intersections arcs = intersect(a, b);
    ASSERT_EQ(arcs.shared.size(), 1u);
    EXPECT_NEAR(arcs.shared[0].firstFrom, 1, 1e-8);
    EXPECT_NEAR(arcs.shared[0].firstTo, 2, 1e-8);
    EXPECT_TRUE(arcs.points.empty());
    const Intersections same = intersect(circle(0, 0, 5), circle(0, 0, 5));
    ASSERT_EQ(same.shared.size(), 1u);
    EXPECT_NEAR(same.shared[0].firstTo - same.shared[0].firstFrom, 2 * kPi, 1e-8);
    EXPECT_TRUE(same.points.empty());
}

TEST(Intersect, WavesCrossAsOftenAsTheyMustFromEitherSide) {
    std::vector<AcGePoint3d> sine;
    for (int i = 0; i <= 80; ++i) sine.push_back({0.25 * i, std::sin(0.25 * i * kPi), 0});
    const Nurbs wave = interpolate(sine).curve;
    const Nurbs axis = lineNurbs({-1, 0.1, 0}, {30, 0.1, 0});
    const Intersections r = intersect(wave, axis), back = intersect(axis, wave);
    EXPECT_EQ(r.points.size(), 20u);
    ASSERT_EQ(back.points.size(), r.points.size());
    for (size_t i = 0; i < r.points.size(); ++i) {
        EXPECT_LT(r.points[i].point.distanceTo(axis.point(r.points[i].second)), 1e-8);
        EXPECT_LT(back.points[i].point.distanceTo(r.points[i].point), 1e-8);
    }
    const EllipticArc wide{{10, 0, 0}, {0, 0, 1}, {9.75, 0, 0}, 0.05, 0, 2 * kPi};
    const Intersections e = intersect(wide, wave);
    EXPECT_GE(e.points.size(), 30u);
    for (const Crossing& c : e.points) {
        EXPECT_LT(wide.point(c.first).distanceTo(c.point), 1e-8);
        EXPECT_LT(wave.point(c.second).distanceTo(c.point), 1e-7);
    }
}

TEST(Intersect, BulgesByFraction) {
    const BulgeSegment half{{0, 0}, {2, 0}, 1}, up{{1, -5}, {1, 5}, 0};
    const Intersections r = intersect(half, up);
    ASSERT_EQ(r.points.size(), 1u);
    EXPECT_NEAR(r.points[0].first, 0.5, 1e-10);
    EXPECT_NEAR(r.points[0].second, 0.4, 1e-10);
}

// Lines and circles have closed forms: what the halving of boxes finds is found, and nothing else.
TEST(Intersect, ClosedFormsFindWhatHalvingFinds) {
    std::mt19937 random(20240517);
    const auto number = [&] { return double(random() % 20001) / 1000 - 10; };
    const auto place = [&](bool flat) { return AcGePoint3d(number(), number(), flat ? 0 : number()); };
    const auto arc = [&](bool flat) {
        const AcGeVector3d up = flat ? AcGeVector3d(0, 0, 1) : place(false).asVector().normal();
        return circularArc(place(flat), up, std::fabs(number()) + 0.5, number(), number());
    };
    int met = 0;
    const auto check = [&](const Intersections& plain, const Intersections& halved) {
        ASSERT_EQ(plain.points.size(), halved.points.size());
        EXPECT_TRUE(plain.shared.empty());
        for (size_t i = 0; i < plain.points.size(); ++i, ++met)
            EXPECT_LE(plain.points[i].point.distanceTo(halved.points[i].point), 1e-7);
    };
    for (int i = 0; i < 600; ++i) {
        SCOPED_TRACE(i);
        const bool flat = i % 3 != 0;
        const EllipticArc a = arc(flat), b = arc(flat);
        const AcGeLineSeg3d p(place(flat), place(flat)), q(place(flat), place(flat));
        const Nurbs line = lineNurbs(p.startPoint(), p.endPoint());
        check(intersect(a, b), intersect(conicNurbs(a), conicNurbs(b)));
        check(intersect(p, b), intersect(line, conicNurbs(b)));
        check(intersect(p, q), intersect(line, lineNurbs(q.startPoint(), q.endPoint())));
    }
    EXPECT_GE(met, 250);
}

TEST(Intersect, LoopsOfOneCurveCrossOnce) {
    // A figure of eight through its middle, and a flower whose every petal crosses the one before.
    std::vector<AcGePoint3d> eight, flower;
    for (int i = 0; i < 24; ++i) {
        const double t = 2 * kPi * (i + 0.5) / 24;
        eight.push_back({std::sin(t), std::sin(2 * t), 0});
    }
    for (int i = 0; i < 70; ++i) {
        const double t = 4 * kPi * i / 70; // two turns with five petals
        flower.push_back({(2 + std::cos(2.5 * t)) * std::cos(t), (2 + std::cos(2.5 * t)) * std::sin(t), 0});
    }
    FitOptions ring;
    ring.closed = true;
    const Nurbs a = interpolate(eight, ring).curve, b = interpolate(flower, ring).curve;
    const Intersections r = intersect(a, a), petals = intersect(b, b);
    ASSERT_EQ(r.points.size(), 1u);
    EXPECT_LE(r.points[0].point.asVector().length(), 1e-9);
    EXPECT_EQ(petals.points.size(), 5u);
    for (const Crossing& c : petals.points) {
        EXPECT_GT(c.second - c.first, 0.05 * (b.end() - b.start()));
        EXPECT_LE(b.point(c.first).distanceTo(b.point(c.second)), 1e-8);
    }
    EXPECT_EQ(petals.shared.size(), 1u);
}

} // namespace
