// Bulged segments, conics and the smoothing of polylines: laws, and numbers reasoned out by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "host/ge/curves/bulge.h"
#include "host/ge/curves/conic.h"
#include "host/ge/curves/numeric.h"
#include "host/ge/curves/polyframe.h"
#include "host/ge/curves/sampling.h"

namespace {

using namespace host::ge;

const double kSizes[] = {1e-3, 1, 1e6};
const double kBulges[] = {-3,    -1,   -0.4,  -0.031, -0.029, -1e-5, -1e-11, 0,
                          1e-11, 1e-5, 0.029, 0.031,  0.4,    1,     3};

TEST(Bulge, KnownArcs) {
    const BulgeSegment half{{0, 0}, {2, 0}, 1}, quarter{{1, 0}, {0, 1}, std::tan(kPi / 8)};
    EXPECT_NEAR(half.length(), kPi, 1e-14);
    EXPECT_TRUE(half.midPoint().isEqualTo({1, -1}));
    EXPECT_TRUE(half.circle().center.isEqualTo({1, 0}));
    EXPECT_NEAR(half.areaAbout({0, 0}), kPi / 2, 1e-14);
    EXPECT_TRUE(quarter.circle().center.isEqualTo({0, 0}));
    EXPECT_NEAR(quarter.circle().startAngle, 0, 1e-14);
    EXPECT_NEAR(quarter.circle().sweep, kPi / 2, 1e-14);
    EXPECT_NEAR(quarter.areaAbout({0, 0}), kPi / 4, 1e-14);
    EXPECT_NEAR(half.sagitta(), 1, 1e-15);
}

TEST(Bulge, LawsHoldForEveryBulgeAndSizeFarFromTheOrigin) {
    for (const double size : kSizes)
        for (const double b : kBulges) {
            const AcGePoint2d at(3e6, -2e6);
            const BulgeSegment s{at, at + AcGeVector2d(3 * size, 4 * size), b};
            const double chord = s.chord(), eps = 1e-9 * chord + 2e-9; // coordinates of 1e6 have 1e-9
            SCOPED_TRACE(testing::Message() << "bulge " << b << " size " << size);
            EXPECT_NEAR(s.reversed().length(), s.length(), eps);
            EXPECT_LT(s.reversed().pointAt(0.3).distanceTo(s.pointAt(0.7)), eps);
            EXPECT_NEAR(s.reversed().areaAbout(s.start), -s.areaAbout(s.start), eps * chord);
            const BulgeSplit cut = s.splitAt(0.37);
            EXPECT_NEAR(cut.first.length(), 0.37 * s.length(), eps);
            EXPECT_NEAR(cut.first.areaAbout(s.start) + cut.second.areaAbout(s.start), s.areaAbout(s.start),
                        eps * s.length());
            EXPECT_LT(cut.second.pointAt(0.5).distanceTo(s.pointAt(0.685)), eps);
            // A point off the arc along its normal comes back to where it left.
            const double off = 0.1 * std::min(chord, s.radius());
            for (const double f : {0.0, 0.2, 0.5, 0.9}) {
                const AcGePoint2d p = s.pointAt(f) + s.tangentAt(f).perpVector() * off;
                EXPECT_NEAR(s.closestTo(p).distance, off, eps);
                EXPECT_LT(s.closestTo(p).point.distanceTo(s.pointAt(f)), 4 * eps);
            }
            const AcDbExtents2d box = s.extents();
            AcDbExtents2d sampled;
            for (int i = 0; i <= 2000; ++i) sampled.addPoint(s.pointAt(i / 2000.0));
            const double gap = 1e-5 * s.length();
            EXPECT_LE(box.minPoint().x, sampled.minPoint().x + eps);
            EXPECT_GE(box.maxPoint().y, sampled.maxPoint().y - eps);
            EXPECT_NEAR(box.minPoint().x, sampled.minPoint().x, gap + eps);
            EXPECT_NEAR(box.maxPoint().x, sampled.maxPoint().x, gap + eps);
            EXPECT_NEAR(box.minPoint().y, sampled.minPoint().y, gap + eps);
        }
}

TEST(Bulge, BuildsBackFromThreePointsFromTangentAndFromCentre) {
    for (const double b : kBulges) {
        const BulgeSegment s{{1, 2}, {4, -1}, b};
        const double eps = 1e-9 * (1 + b * b);
        EXPECT_NEAR(bulgeThrough(s.start, s.pointAt(0.3), s.end).bulge, b, eps);
        EXPECT_NEAR(bulgeWithTangent(s.start, s.tangentAt(0), s.end).bulge, b, eps);
        if (std::fabs(b) > 1e-6) {
            EXPECT_NEAR(bulgeSegment(s.circle()).bulge, b, eps);
            EXPECT_LT(bulgeSegment(s.circle()).end.distanceTo(s.end), 1e-9);
        }
    }
}

TEST(Bulge, PolylineMeasuresOfARoundedRectangle) {
    // 10 x 6 with corners of radius 1, counter-clockwise.
    const double q = std::tan(kPi / 8);
    const std::vector<BulgeVertex> v = {{{1, 0}, 0}, {{9, 0}, q}, {{10, 1}, 0}, {{10, 5}, q},
                                        {{9, 6}, 0}, {{1, 6}, q}, {{0, 5}, 0},  {{0, 1}, q}};
    EXPECT_NEAR(polylineLength(v, true), 24 + 2 * kPi, 1e-12);
    EXPECT_NEAR(polylineArea(v), 60 - 4 + kPi, 1e-12);
    EXPECT_NEAR(polylineArea(reversedPolyline(v, true)), -(60 - 4 + kPi), 1e-12);
    EXPECT_TRUE(polylineExtents(v, true).maxPoint().isEqualTo({10, 6}));
}

EllipticArc tilted(double size, double ratio, double from, double to) {
    const AcGeVector3d n = AcGeVector3d(1, -2, 3).normal();
    return {AcGePoint3d(5 * size, -7 * size, size), n, n.perpVector() * (4 * size), ratio, from, to};
}

TEST(Conic, LengthsAgreeWithQuadratureAndWithKnownPerimeters) {
    // Perimeters by the series in h = ((a - b) / (a + b))^2, to 15 digits.
    EXPECT_NEAR((EllipticArc{{}, {0, 0, 1}, {2, 0, 0}, 0.5}).length(), 9.688448220547675, 1e-12);
    for (const double size : kSizes)
        for (const double ratio : {1.0, 0.99, 0.5, 0.01, 1e-5}) {
            const EllipticArc e = tilted(size, ratio, -1.1, 4.2);
            const double by =
                integrate([&](double u) { return e.derivative(u).length(); }, e.start, e.end, 1e-13 * size);
            EXPECT_NEAR(e.length() / by, 1, 1e-12) << ratio;
            for (const double f : {0.01, 0.4, 0.97}) {
                const double u = e.paramAtLength(f * by);
                EXPECT_NEAR(e.lengthBetween(e.start, u), f * by, 1e-11 * by) << ratio;
            }
        }
}

TEST(Conic, ClosestPointBeatsEverySample) {
    for (const double ratio : {1.0, 0.6, 0.05})
        for (const double to : {0.9, 2.5, 4.4, 2 * kPi - 0.3})
            for (int k = 0; k < 60; ++k) {
                const EllipticArc e = tilted(1, ratio, -0.3, to);
                const AcGeVector3d w(std::cos(k * 2.4), std::sin(k * 2.4), std::cos(k * 1.1));
                const AcGePoint3d p = k == 0 ? e.center : e.center + w * (0.12 * k);
                const ConicClosest c = e.closestTo(p);
                EXPECT_GE(c.param, e.start);
                EXPECT_LE(c.param, e.end);
                EXPECT_NEAR(e.point(c.param).distanceTo(p), c.distance, 1e-12);
                for (int i = 0; i <= 720; ++i)
                    ASSERT_LE(c.distance, e.point(e.start + e.sweep() * i / 720).distanceTo(p) + 1e-12)
                        << ratio << ' ' << to << ' ' << k << ' ' << i;
            }
}

TEST(Conic, AffineImagesKeepPointsAndBecomeProperEllipses) {
    AcGeMatrix3d skew =
        AcGeMatrix3d::rotation(1, {1, 1, 0}) * AcGeMatrix3d::scaling(AcGeScale3d(1, -3, 0.5), {1, 2, 3});
    skew(0, 1) += 0.8;
    for (const double ratio : {1.0, 0.4}) {
        const EllipticArc e = tilted(1, ratio, 0.2, 3.9), image = transformed(e, skew);
        EXPECT_NEAR(image.majorAxis.dotProduct(image.normal), 0, 1e-12);
        EXPECT_LE(image.ratio, 1);
        EXPECT_NEAR(image.sweep(), e.sweep(), 1e-12);
        for (int i = 0; i <= 10; ++i) {
            const double f = i / 10.0;
            EXPECT_LT(image.point(image.start + f * image.sweep())
                          .distanceTo(skew * e.point(e.start + f * e.sweep())),
                      1e-12);
        }
        const EllipticArc back = transformed(image, skew.inverse());
        EXPECT_NEAR(back.ratio, ratio, 1e-10);
    }
    EXPECT_TRUE(transformed(tilted(1, 1, 0, 1), AcGeMatrix3d::rotation(0.3, {3, 1, 2})).isCircular());
}

TEST(Conic, BoxesTouchOnAllSides) {
    const EllipticArc e = tilted(1, 0.3, 0.4, 5.1);
    const AcDbExtents box = e.extents();
    AcDbExtents sampled;
    for (int i = 0; i <= 4000; ++i) sampled.addPoint(e.point(e.start + e.sweep() * i / 4000));
    EXPECT_LT(box.minPoint().distanceTo(sampled.minPoint()), 1e-5);
    EXPECT_LT(box.maxPoint().distanceTo(sampled.maxPoint()), 1e-5);
    EXPECT_LE(box.minPoint().z, sampled.minPoint().z);
    EXPECT_GE(box.maxPoint().x, sampled.maxPoint().x);
    const EllipticArc back = e.reversed();
    EXPECT_LT(back.startPoint().distanceTo(e.endPoint()), 1e-12);
    EXPECT_LT(back.point(back.start + 1).distanceTo(e.point(e.end - 1)), 1e-12);
}

TEST(Frame, SplinesHaveTheirTextbookPoints) {
    const std::vector<AcGePoint3d> frame = {{0, 0, 0}, {6, 0, 0}, {6, 6, 0}, {0, 6, 0}};
    const auto open = frameSplinePoints(frame, 3, false, 8);
    ASSERT_EQ(open.size(), 25u);
    EXPECT_TRUE(open.front().isEqualTo(frame.front()));
    EXPECT_TRUE(open[12].isEqualTo({4.5, 3, 0})); // Bezier middle: 6 * 3 / 4
    EXPECT_TRUE(open.back().isEqualTo(frame.back()));
    const auto cubic = frameSplinePoints(frame, 3, true, 4);
    ASSERT_EQ(cubic.size(), 16u);
    EXPECT_TRUE(cubic[0].isEqualTo({1, 1, 0})); // (P3 + 4 P0 + P1) / 6
    EXPECT_TRUE(cubic[4].isEqualTo({5, 1, 0}));
    const auto quadratic = frameSplinePoints(frame, 2, true, 4);
    EXPECT_TRUE(quadratic[2].isEqualTo({3, 0, 0})); // middle of an edge
    EXPECT_TRUE(quadratic[0].isEqualTo({0.75, 0.75, 0}));
    EXPECT_EQ(frameSplinePoints({{1, 1, 0}}, 3, true, 8).size(), 1u);
}

TEST(Frame, FitCurvePassesItsVerticesWithoutCorners) {
    const std::vector<FitVertex> shapes[] = {
        {{{0, 0}, {}}, {{4, 3}, {}}, {{9, -2}, {}}, {{6, -8}, {}}},
        {{{0, 0}, AcGeVector2d(0, 2)}, {{5, 0}, AcGeVector2d(0, 1)}, {{5, 6}, AcGeVector2d(-1, 0)}},
        {{{0, 0}, {}}, {{1, 0}, {}}},
    };
    for (const auto& shape : shapes)
        for (const bool closed : {false, true}) {
            const FitCurve fit = fitCurve(shape, closed);
            size_t given = 0;
            for (size_t i = 0; i < fit.vertices.size(); ++i)
                if (!fit.isAdded[i]) {
                    EXPECT_TRUE(fit.vertices[i].point.isEqualTo(shape[given].point));
                    ++given;
                }
            EXPECT_EQ(given, shape.size());
            const int n = segmentCount(fit.vertices, closed);
            for (int i = 0; i + (closed ? 0 : 1) < n; ++i) {
                const AcGeVector2d out = segmentOf(fit.vertices, i).tangentAt(1);
                const AcGeVector2d in = segmentOf(fit.vertices, (i + 1) % n).tangentAt(0);
                EXPECT_LT((out - in).length(), 1e-9) << "joint " << i << " closed " << closed;
            }
        }
    // On a circle the fit is the circle.
    std::vector<FitVertex> ring;
    for (const double a : {0.0, 1.0, 2.5, 3.0, 4.9}) ring.push_back({{5 * std::cos(a), 5 * std::sin(a)}, {}});
    EXPECT_NEAR(polylineArea(fitCurve(ring, true).vertices), 25 * kPi, 1e-9);
}

TEST(Sampling, ChordsKeepTheirToleranceAndTheBoundOnPoints) {
    const Flattening fine{1e-3, 10000}, few{1e-12, 50};
    const EllipticArc e = tilted(1, 0.4, 0, 5);
    const auto points = flatten(e, fine);
    for (size_t i = 1; i < points.size(); ++i) {
        const AcGePoint3d middle = points[i - 1].point + (points[i].point - points[i - 1].point) * 0.5;
        EXPECT_LT(e.closestTo(middle).distance, 1e-3);
    }
    EXPECT_LT(points.size(), 120u);
    EXPECT_EQ(flatten(e, few).size(), 50u);
    const std::vector<BulgeVertex> v = {{{0, 0}, 1}, {{2, 0}, 1}};
    EXPECT_GT(flatten(v, true, fine).size(), 40u);
    EXPECT_LE(flatten(v, true, few).size(), 50u);
}

} // namespace
