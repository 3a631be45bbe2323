// The arc fit on plain curves: promises checked by dense points, laws, and a plain twin of the search.
#include <gtest/gtest.h>

#include <array>

#include "curves/conversion/arcfit_nodes.h"
#include "support/fit_curves.h"

using corvane::Biarc;
using corvane::FitArcs;
using corvane::FitNode;
using corvane::SolveBiarc;
using support::FitArc;
using support::FitCurve;
using support::FitSample;
using support::pointOn;

namespace {

constexpr double kSmooth = 1e-6; // radians

std::vector<FitSample> transformed(std::vector<FitSample> samples, double scale, bool mirror, double shift) {
    for (FitSample& s : samples) {
        s.point.set(s.point.x * scale + shift, (mirror ? -1 : 1) * s.point.y * scale - shift);
        if (mirror) s.tangent.y = -s.tangent.y, s.curvature = -s.curvature;
        s.curvature /= scale, s.distance *= scale;
    }
    return samples;
}

// A polyline as the fit sees it: two samples at each corner, and `each` on every side.
std::vector<FitSample> polylineSamples(const std::vector<AcGePoint2d>& points, int each) {
    std::vector<FitSample> samples;
    double way = 0;
    for (size_t i = 1; i < points.size(); ++i) {
        const AcGeVector2d side = points[i] - points[i - 1];
        for (int k = 0; k <= each; ++k)
            samples.push_back({points[i - 1] + side * (double(k) / each), side / side.length(), 0,
                               way + side.length() * k / each});
        way += side.length();
    }
    return samples;
}

// -- The plain twin: every pair of nodes, every sample, distances by centre and radius --------------------

double distanceTo(const FitArc& arc, const AcGePoint2d& p) {
    const AcGeVector2d chord = arc.end - arc.start;
    if (arc.bulge == 0) {
        const double t = std::clamp((p - arc.start).dotProduct(chord) / chord.dotProduct(chord), 0.0, 1.0);
        return p.distanceTo(arc.start + chord * t);
    }
    const double radius = chord.length() * (1 + arc.bulge * arc.bulge) / (4 * arc.bulge);
    const AcGeVector2d left = AcGeVector2d(-chord.y, chord.x) / chord.length();
    const AcGePoint2d centre =
        arc.start + chord * 0.5 + left * (chord.length() * (1 - arc.bulge * arc.bulge) / (4 * arc.bulge));
    const AcGeVector2d middle = (pointOn(arc, 0.5) - centre), w = p - centre;
    const double half = 2 * std::abs(std::atan(arc.bulge));
    const double off =
        std::acos(std::clamp(w.dotProduct(middle) / (w.length() * middle.length()), -1.0, 1.0));
    return off <= half ? std::abs(w.length() - std::abs(radius))
                       : std::min(p.distanceTo(arc.start), p.distanceTo(arc.end));
}

double curvatureOf(const FitArc& arc) {
    return 4 * arc.bulge / (arc.start.distanceTo(arc.end) * (1 + arc.bulge * arc.bulge));
}

// Every sample by its distance to the nearer arc, and what curve and arc may bow apart up to its neighbour.
bool fitsPlainly(const std::vector<FitSample>& samples, size_t from, size_t to, const Biarc& biarc,
                 double tolerance) {
    std::vector<FitArc> arcs{{samples[from].point, biarc.joint, biarc.firstBulge}};
    if (biarc.count == 2) arcs.push_back({biarc.joint, samples[to].point, biarc.secondBulge});
    const auto beside = [&](size_t k) -> const FitArc& {
        return arcs.size() == 1 ||
                       distanceTo(arcs[0], samples[k].point) < distanceTo(arcs[1], samples[k].point)
                   ? arcs[0]
                   : arcs[1];
    };
    for (size_t k = from; k <= to; ++k) {
        const double here = distanceTo(beside(k), samples[k].point);
        if (here > tolerance) return false;
        if (k == from) continue;
        double bend = 0;
        for (const FitArc* arc : {&beside(k - 1), &beside(k)})
            for (const size_t end : {k - 1, k})
                bend = std::max(bend, std::abs(samples[end].curvature - curvatureOf(*arc)));
        const double step = samples[k].point.distanceTo(samples[k - 1].point);
        const double before = distanceTo(beside(k - 1), samples[k - 1].point);
        if (std::max(before, here) + step * step / 8 * bend > tolerance) return false;
    }
    return true;
}

size_t fewestArcs(const std::vector<FitSample>& samples, double tolerance) {
    const std::vector<FitNode> nodes = corvane::FindFitNodes(samples, 0, samples.size() - 1, tolerance);
    std::vector<std::array<size_t, 4>> cost(nodes.size(), {100000, 100000, 100000, 100000});
    cost[0].fill(0);
    for (size_t i = 0; i < nodes.size(); ++i) {
        bool across = false; // of a change of sides
        for (size_t j = i + 1; j < nodes.size() && !across; across = nodes[j++].inflection)
            for (int a = 0; a < nodes[i].directionCount; ++a)
                for (int b = 0; b < nodes[j].directionCount; ++b) {
                    const Biarc biarc =
                        SolveBiarc(samples[nodes[i].leaving].point, nodes[i].directions[size_t(a)],
                                   samples[nodes[j].arriving].point, nodes[j].directions[size_t(b)]);
                    const size_t sum = cost[i][size_t(a)] + size_t(biarc.count);
                    if (biarc.count > 0 && sum < cost[j][size_t(b)] &&
                        fitsPlainly(samples, nodes[i].leaving, nodes[j].arriving, biarc, tolerance))
                        cost[j][size_t(b)] = sum;
                }
    }
    return cost.back()[0];
}

} // namespace

TEST(ArcFit, StaysWithinTheToleranceAndKeepsItsDirection) {
    for (const FitCurve& curve : support::fitCurves())
        for (const int count : {700, &curve == &support::fitCurves()[0] ? 12000 : 3000}) {
            const auto samples = support::samplesOf(curve, count);
            const std::vector<FitArc> arcs = FitArcs(samples, curve.tolerance);
            ASSERT_FALSE(arcs.empty()) << curve.name;
            EXPECT_LE(support::deviationOf(arcs, curve), curve.tolerance * 1.0001)
                << curve.name << " " << count;
            EXPECT_LE(support::worstJoint(arcs), kSmooth) << curve.name;
            EXPECT_EQ(samples.front().point, arcs.front().start) << curve.name;
            EXPECT_EQ(samples.back().point, arcs.back().end) << curve.name;
            for (const FitArc& arc : arcs) EXPECT_LE(std::abs(arc.bulge), 1.0) << curve.name;
        }
}

TEST(ArcFit, KeepsTheCurvesDirectionAtItsEnds) {
    for (const FitCurve& curve : support::fitCurves()) {
        const auto samples = support::samplesOf(curve, 900);
        const std::vector<FitArc> arcs = FitArcs(samples, curve.tolerance);
        const auto off = [](double angle, const AcGeVector2d& tangent) {
            return std::abs(std::remainder(angle - std::atan2(tangent.y, tangent.x), 2 * std::numbers::pi));
        };
        EXPECT_LT(off(support::angleAt(arcs.front(), false), samples.front().tangent), kSmooth) << curve.name;
        EXPECT_LT(off(support::angleAt(arcs.back(), true), samples.back().tangent), kSmooth) << curve.name;
    }
}

// 290 arcs by the greedy fit; the theory of evenly swinging arcs promises three quarters of that, and the
// joints at the changes of sides take some back.
TEST(ArcFit, NeedsFarFewerArcsThanAFitWithoutAPlan) {
    for (const FitCurve& curve : support::fitCurves()) {
        const auto samples = support::samplesOf(curve, 2500);
        const size_t planned = FitArcs(samples, curve.tolerance).size();
        const size_t greedy = support::greedyArcs(samples, curve.tolerance).size();
        EXPECT_LE(planned, greedy) << curve.name;
        if (greedy > 40) {
            EXPECT_LE(double(planned), 0.85 * double(greedy)) << curve.name;
        }
    }
    EXPECT_LE(FitArcs(support::samplesOf(support::fitCurves()[0], 12000), 0.01).size(), 235u);
}

TEST(ArcFit, FindsAsFewArcsAsThePlainSearch) {
    for (const FitCurve& curve : support::fitCurves()) {
        // Coarse, so that the twin comes to an end: no more than its time decides the factors.
        const double length = support::samplesOf(curve, 2).back().distance;
        const double tolerance = length / 1200;
        const auto samples = support::samplesOf(curve, 180);
        const size_t arcs = FitArcs(samples, tolerance).size();
        EXPECT_EQ(fewestArcs(samples, tolerance), arcs) << curve.name;
    }
}

TEST(ArcFit, AJointStandsWhereTheCurveChangesSides) {
    // Of the s-curve in its middle; of the wave wherever its second derivative passes zero.
    for (const FitCurve& curve : support::fitCurves()) {
        const auto samples = support::samplesOf(curve, 3000);
        const std::vector<FitArc> arcs = FitArcs(samples, curve.tolerance);
        for (size_t i = 1; i < samples.size(); ++i) {
            const FitSample &a = samples[i - 1], &b = samples[i];
            if (!(a.curvature * b.curvature < 0) || b.distance - a.distance <= 0) continue;
            double nearest = 1e300;
            for (const FitArc& arc : arcs)
                nearest = std::min({nearest, arc.start.distanceTo(a.point), arc.start.distanceTo(b.point)});
            EXPECT_LE(nearest, 1e-9) << curve.name << " " << i;
        }
    }
}

TEST(ArcFit, SizePlaceAndSideChangeNothing) {
    for (const FitCurve& curve : support::fitCurves()) {
        const auto samples = support::samplesOf(curve, 800);
        const std::vector<FitArc> arcs = FitArcs(samples, curve.tolerance);
        const std::vector<FitArc> mirrored = FitArcs(transformed(samples, 1, true, 0), curve.tolerance);
        ASSERT_EQ(arcs.size(), mirrored.size()) << curve.name;
        for (size_t i = 0; i < arcs.size(); ++i) EXPECT_EQ(arcs[i].bulge, -mirrored[i].bulge) << curve.name;
        for (const double scale : {1.0 / 1024, 1048576.0}) // powers of two round nothing
            EXPECT_EQ(arcs.size(),
                      FitArcs(transformed(samples, scale, false, 0), curve.tolerance * scale).size())
                << curve.name << " at " << scale;
        const auto far = FitArcs(transformed(samples, 1, false, 1e6), curve.tolerance);
        EXPECT_NEAR(double(arcs.size()), double(far.size()), 2) << curve.name;
        EXPECT_LE(support::worstJoint(far), kSmooth) << curve.name << " far from the origin";
    }
}

TEST(ArcFit, FindsTheArcsThatTheCurveIsMadeOf) {
    // A slot: side, half circle, side, half circle, with jumps of the curvature between them.
    std::vector<FitSample> samples;
    const auto add = [&](const AcGePoint2d& p, double angle, double curvature) {
        const double way = samples.empty() ? 0 : samples.back().distance + samples.back().point.distanceTo(p);
        samples.push_back({p, {std::cos(angle), std::sin(angle)}, curvature, way});
    };
    const double pi = std::numbers::pi;
    for (const int side : {0, 1}) {
        const double s = side == 0 ? 1 : -1;
        for (int i = 0; i <= 100; ++i) add({s * (i - 50.0), s * -20}, side * pi, 0);
        for (int i = 0; i <= 100; ++i) {
            const double angle = -pi / 2 + side * pi + pi * i / 100;
            add({s * 50 + 20 * std::cos(angle), 20 * std::sin(angle)}, angle + pi / 2, 0.05);
        }
    }
    const std::vector<FitArc> arcs = FitArcs(samples, 0.05);
    ASSERT_EQ(4u, arcs.size());
    for (const size_t i : {0u, 2u}) EXPECT_EQ(0, arcs[i].bulge);
    for (const size_t i : {1u, 3u}) EXPECT_NEAR(1, arcs[i].bulge, 1e-9);
}

TEST(ArcFit, KeepsSharpCornersAndSmoothsGentleOnes) {
    const std::vector<FitArc> square =
        FitArcs(polylineSamples({{0, 0}, {50, 0}, {50, 50}, {0, 50}}, 20), 0.1);
    ASSERT_EQ(3u, square.size());
    for (const FitArc& side : square) EXPECT_EQ(0, side.bulge);

    std::vector<AcGePoint2d> ring; // a circle drawn with 180 sides
    for (int i = 0; i <= 180; ++i)
        ring.push_back({40 * std::cos(i * std::numbers::pi / 90), 40 * std::sin(i * std::numbers::pi / 90)});
    const std::vector<FitArc> arcs = FitArcs(polylineSamples(ring, 2), 0.05);
    EXPECT_LE(arcs.size(), 8u);
    EXPECT_LE(support::worstJoint(arcs), kSmooth);
}

// The side of 100 beside sides of 1: an arc over it that agrees with its ends and bows out between them must
// not pass, however few samples stand there.
TEST(ArcFit, LongSidesBesideShortOnesDontBowOut) {
    std::vector<AcGePoint2d> points{{-100, 0}, {0, 0}};
    double angle = 0;
    for (int i = 0; i < 20; ++i) {
        angle += 0.1;
        points.push_back(points.back() + AcGeVector2d(std::cos(angle), std::sin(angle)));
    }
    const std::vector<FitArc> arcs = FitArcs(polylineSamples(points, 1), 0.05);
    ASSERT_FALSE(arcs.empty());
    for (int i = 0; i <= 1000; ++i) {
        const AcGePoint2d onSide(-100 + 0.1 * i, 0);
        double best = 1e9;
        for (const FitArc& arc : arcs) best = std::min(best, distanceTo(arc, onSide));
        EXPECT_LE(best, 0.05) << i;
    }
    for (const FitArc& arc : arcs)
        if (arc.start.x < -1) {
            EXPECT_LE(std::abs(pointOn(arc, 0.5).y), 0.05);
        }
}

TEST(ArcFit, CurvesWithoutAWayBackAreEmpty) {
    const auto samples = support::samplesOf(support::fitCurves()[1], 500);
    EXPECT_TRUE(FitArcs({}, 0.1).empty());
    EXPECT_TRUE(FitArcs({samples[0]}, 0.1).empty());
    for (const double tolerance : {0.0, -1.0, std::nan("")}) EXPECT_TRUE(FitArcs(samples, tolerance).empty());
    auto broken = samples;
    broken[99].point.x = std::nan("");
    EXPECT_TRUE(FitArcs(broken, 0.1).empty());
}

TEST(Biarc, LeavesAndArrivesAsAsked) {
    for (int a = -150; a <= 150; a += 7)
        for (int b = -150; b <= 150; b += 11) {
            const AcGeVector2d from(std::cos(a / 60.0), std::sin(a / 60.0)),
                to(std::cos(b / 60.0), std::sin(b / 60.0));
            const Biarc biarc = SolveBiarc({3, 4}, from, {13, 4}, to);
            if (biarc.count != 2) continue;
            const std::vector<FitArc> arcs{{{3, 4}, biarc.joint, biarc.firstBulge},
                                           {biarc.joint, {13, 4}, biarc.secondBulge}};
            EXPECT_LT(support::worstJoint(arcs), 1e-9);
            EXPECT_NEAR(0, std::remainder(support::angleAt(arcs[0], false) - a / 60.0, 2 * std::numbers::pi),
                        1e-9);
            EXPECT_NEAR(0, std::remainder(support::angleAt(arcs[1], true) - b / 60.0, 2 * std::numbers::pi),
                        1e-9);
        }
    EXPECT_EQ(1, SolveBiarc({0, 0}, {1, 0}, {5, 5}, {0, 1}).count) << "a quarter circle is one arc";
    EXPECT_EQ(0, SolveBiarc({0, 0}, {-1, 0}, {5, 0}, {-1, 0}).count) << "there is no way back";
}
