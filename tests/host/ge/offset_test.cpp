// Parallels of polylines: what holds for every source, and forms whose parallels are known.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "host/ge/curves/bulge_meet.h"
#include "host/ge/curves/numeric.h"
#include "host/ge/curves/offset.h"

namespace {

using namespace host::ge;
using Vertices = std::vector<BulgeVertex>;

struct Shape {
    const char* name;
    Vertices vertices;
    bool closed;
};

double distanceTo(const Vertices& vertices, bool closed, const AcGePoint2d& p) {
    double best = 1e300;
    for (int i = 0; i < segmentCount(vertices, closed); ++i)
        best = std::min(best, segmentOf(vertices, i).closestTo(p).distance);
    return best;
}

template <class Check> void forSamples(const OffsetChain& chain, Check check) {
    for (int i = 0; i < segmentCount(chain.vertices, chain.closed); ++i)
        for (int k = 0; k <= 16; ++k) check(segmentOf(chain.vertices, i).pointAt(k / 16.0));
}

double sizeOf(const Vertices& vertices, bool closed) {
    const AcDbExtents2d box = polylineExtents(vertices, closed);
    return box.minPoint().distanceTo(box.maxPoint());
}

double total(const std::vector<OffsetChain>& chains) {
    double sum = 0;
    for (const auto& c : chains) sum += polylineLength(c.vertices, c.closed);
    return sum;
}

// A star with bulges of every kind; radii, so that it doesn't cross itself.
Vertices blob(unsigned seed, int count, double bulge) {
    std::mt19937 random(seed);
    const auto next = [&] { return double(random()) / double(std::mt19937::max()); };
    Vertices out;
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * kPi * i / count, radius = 4 + 6 * next();
        out.push_back({{radius * std::cos(angle), radius * std::sin(angle)}, bulge * (next() - 0.5)});
    }
    return out;
}

Vertices moved(Vertices v, double scale, double turn, const AcGeVector2d& by) {
    for (auto& p : v) {
        AcGeVector2d w = p.point.asVector();
        p.point = AcGePoint2d(0, 0) + w.rotateBy(turn) * scale + by;
    }
    return v;
}

std::vector<Shape> corpus() {
    std::vector<Shape> out{
        {"square", {{{0, 0}, 0}, {{4, 0}, 0}, {{4, 4}, 0}, {{0, 4}, 0}}, true},
        {"slot", {{{0, 0}, 0}, {{6, 0}, 1}, {{6, 2}, 0}, {{0, 2}, 1}}, true},
        {"disc", {{{3, 0}, 1}, {{-3, 0}, 1}}, true},
        {"disc begun elsewhere", {{{1.8, 2.4}, -1}, {{-1.8, -2.4}, -1}}, true},
        {"dumb-bell", {{{-5, -1}, 0}, {{5, -1}, 3}, {{5, 1}, 0}, {{-5, 1}, 3}}, true},
        {"hook", {{{0, 0}, 0}, {{8, 0}, 1}, {{8, 5}, 0}, {{2, 5}, 0.3}, {{3, 1.5}, 0}}, false},
        {"zigzag", {{{0, 0}, 0}, {{1, 5}, 0}, {{2, 0}, 0}, {{3, 5}, 0}, {{4, 0}, 0}}, false},
        {"waves", {{{0, 0}, 1}, {{2, 0}, -1}, {{4, 0}, 1}, {{6, 0}, -1}, {{8, 0}, 0}}, false},
        {"doubled vertices", {{{0, 0}, 0}, {{0, 0}, 0.7}, {{5, 0}, 0}, {{5, 0}, 0}, {{5, 3}, 0}}, false},
        {"nearly straight", {{{0, 0}, 1e-9}, {{5, 0}, -1e-7}, {{9, 3}, 1e-12}, {{12, 3}, 0}}, false},
        {"figure of eight", {{{0, 0}, 0}, {{6, 4}, -1}, {{6, 0}, 0}, {{0, 4}, 1}}, true},
        {"there and back", {{{0, 0}, 0}, {{6, 0}, 0}}, true},
        {"comb", {}, true}};
    for (int i = 0; i < 5; ++i)
        for (const AcGePoint2d& p :
             {AcGePoint2d(3 * i, 0), {3 * i + 1.0, 0}, {3 * i + 1.0, 6}, {3 * i + 3.0, 6}})
            out.back().vertices.push_back({p, 0});
    out.back().vertices.push_back({{15, 8}, 0}), out.back().vertices.push_back({{0, 8}, 0});
    for (unsigned seed = 1; seed <= 12; ++seed) {
        out.push_back({"blob", blob(seed, 8 + int(seed), seed % 3 ? 1.2 : 0), true});
        out.push_back({"open blob", blob(seed + 50, 8 + int(seed), 0.8), false});
    }
    return out;
}

const double kShares[] = {0.01, 0.05, 0.2, 0.5};

template <class Check> void forAll(Check check) {
    const AcGeVector2d away[] = {{0, 0}, {3e6, -5e6}};
    for (double scale : {1.0, 1e-3, 1e6})
        for (const AcGeVector2d& by : away)
            for (const Shape& s : corpus()) {
                if (by.x != 0 && scale != 1) continue;
                const Vertices v = moved(s.vertices, scale, 0.3, by);
                for (double share : kShares)
                    for (double sign : {1.0, -1.0}) {
                        const double d = sign * share * 10 * scale;
                        SCOPED_TRACE(std::string(s.name) + " of scale " + std::to_string(scale) + " at " +
                                     std::to_string(by.x) + ", distance " + std::to_string(d));
                        check(v, s.closed, d);
                    }
            }
}

TEST(Offset, NothingIsNearerThanTheDistanceAndRoundOnesAreAtIt) {
    int checked = 0;
    forAll([&](const Vertices& v, bool closed, double d) {
        const double slack = 1e-7 * sizeOf(v, closed);
        for (OffsetCorner corner : {OffsetCorner::round, OffsetCorner::sharp})
            for (const OffsetChain& chain : offsetPolyline(v, closed, d, corner)) {
                double least = 1e300, most = 0;
                forSamples(chain, [&](const AcGePoint2d& p) {
                    const double at = distanceTo(v, closed, p);
                    least = std::min(least, at), most = std::max(most, at);
                });
                EXPECT_GE(least, std::fabs(d) - slack);
                if (corner == OffsetCorner::round) {
                    EXPECT_LE(most, std::fabs(d) + slack);
                }
                ++checked;
            }
    });
    EXPECT_GT(checked, 2000);
}

// Of the plane around a source that doesn't cross itself, all that is at the distance on one side is found.
TEST(Offset, NothingValidIsMissing) {
    forAll([&](const Vertices& v, bool closed, double d) {
        const auto chains = offsetPolyline(v, closed, d, OffsetCorner::round);
        const double size = sizeOf(v, closed);
        for (int i = 0; i < segmentCount(v, closed); ++i)
            for (double f : {0.113, 0.41, 0.52, 0.77}) {
                const BulgeSegment s = segmentOf(v, i);
                if (!(s.chord() > 0)) continue;
                const AcGePoint2d p = s.pointAt(f) - s.tangentAt(f).perpVector() * d;
                // A place with no room beyond it is the spine of a passage, which bounds nothing.
                const AcGePoint2d beyond = s.pointAt(f) - s.tangentAt(f).perpVector() * (d * 1.0001);
                if (distanceTo(v, closed, p) < std::fabs(d) - 1e-9 * size ||
                    distanceTo(v, closed, beyond) < std::fabs(d))
                    continue;
                double best = 1e300;
                for (const auto& c : chains) best = std::min(best, distanceTo(c.vertices, c.closed, p));
                EXPECT_LE(best, 1e-7 * size);
            }
    });
}

std::vector<BulgeSegment> segmentsOf(const Vertices& vertices, bool closed) {
    std::vector<BulgeSegment> out;
    for (int i = 0; i < segmentCount(vertices, closed); ++i) out.push_back(segmentOf(vertices, i));
    return out;
}

// Places where segments meet that are the inside of one of them.
int crossings(const std::vector<BulgeSegment>& all) {
    int count = 0;
    for (size_t i = 0; i < all.size(); ++i)
        for (size_t k = i + 1; k < all.size(); ++k)
            for (const BulgeMeeting& m : meetings(all[i], all[k], 1e-10))
                count += std::min(m.first, 1 - m.first) * all[i].length() > 1e-6 ||
                         std::min(m.second, 1 - m.second) * all[k].length() > 1e-6;
    return count;
}

TEST(Offset, ClosedSourcesGiveClosedParallelsThatCrossNothing) {
    int checked = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const Vertices v = blob(seed, 30, seed % 2 ? 0.6 : 0);
        if (crossings(segmentsOf(v, true)) > 0) continue;
        ++checked;
        for (double d : {0.1, 0.7, -0.1, -0.7, -2.0}) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", distance " + std::to_string(d));
            for (OffsetCorner corner : {OffsetCorner::round, OffsetCorner::sharp}) {
                std::vector<BulgeSegment> all;
                for (const auto& c : offsetPolyline(v, true, d, corner)) {
                    EXPECT_TRUE(c.closed);
                    for (const BulgeSegment& s : segmentsOf(c.vertices, c.closed)) all.push_back(s);
                }
                EXPECT_EQ(crossings(all), 0);
            }
        }
    }
    EXPECT_GT(checked, 20);
}

// Area A + P d + d^2 times pi for round corners, times the sum of tan(turn / 2) for sharp ones (Steiner,
// 1840).
TEST(Offset, ConvexShapesGrowBySteinersFormula) {
    for (double scale : {1e-3, 1.0, 1e6})
        for (int n : {3, 4, 7, 20})
            for (double bulge : {0.0, 0.1}) {
                Vertices v;
                for (int i = 0; i < n; ++i) {
                    const double angle = 2 * kPi * i / n;
                    v.push_back({{3 * std::cos(angle), 2 * std::sin(angle)}, bulge / n});
                }
                v = moved(v, scale, 0.4, {7 * scale, 0});
                const double d = 0.6 * scale, area = polylineArea(v), around = polylineLength(v, true);
                double sharp = 0;
                for (int i = 0; i < n; ++i) {
                    const AcGeVector2d a = segmentOf(v, i).tangentAt(1),
                                       b = segmentOf(v, (i + 1) % n).tangentAt(0);
                    const double turn = std::atan2(a.crossProduct(b), a.dotProduct(b));
                    sharp += std::tan(turn / 2);
                }
                SCOPED_TRACE(std::to_string(n) + " corners, bulge " + std::to_string(bulge));
                const auto round = offsetPolyline(v, true, d, OffsetCorner::round);
                ASSERT_EQ(round.size(), 1u);
                EXPECT_NEAR(polylineArea(round[0].vertices), area + around * d + kPi * d * d, 1e-12 * area);
                const auto points = offsetPolyline(v, true, d);
                ASSERT_EQ(points.size(), 1u);
                EXPECT_EQ(points[0].vertices.size(), size_t(n));
                if (bulge == 0) {
                    EXPECT_NEAR(polylineArea(points[0].vertices), area + around * d + sharp * d * d,
                                1e-12 * area);
                }
            }
}

TEST(Offset, InwardParallelsOfEverythingEndInNothing) {
    for (const Shape& s : corpus()) {
        if (!s.closed || polylineArea(s.vertices) == 0 || crossings(segmentsOf(s.vertices, true)) > 0)
            continue;
        const double inward = polylineArea(s.vertices) > 0 ? -1 : 1;
        EXPECT_TRUE(offsetPolyline(s.vertices, true, inward * 0.51 * sizeOf(s.vertices, true)).empty())
            << s.name;
    }
    const Vertices disc{{{3, 0}, 1}, {{-3, 0}, 1}};
    EXPECT_TRUE(offsetPolyline(disc, true, -3).empty());
    EXPECT_EQ(offsetPolyline(disc, true, -2.999).size(), 1u);
    const Vertices slot{{{0, 0}, 0}, {{6, 0}, 1}, {{6, 2}, 0}, {{0, 2}, 1}};
    EXPECT_TRUE(offsetPolyline(slot, true, -1).empty()); // its spine, which bounds nothing
}

TEST(Offset, ReversedAndMirroredSourcesGiveTheSame) {
    forAll([&](const Vertices& v, bool closed, double d) {
        const double size = sizeOf(v, closed);
        Vertices mirror = v;
        for (auto& p : mirror) p.point.x = -p.point.x, p.bulge = -p.bulge;
        for (OffsetCorner corner : {OffsetCorner::round, OffsetCorner::sharp}) {
            const auto chains = offsetPolyline(v, closed, d, corner);
            const auto back = offsetPolyline(reversedPolyline(v, closed), closed, -d, corner);
            const auto seen = offsetPolyline(mirror, closed, -d, corner);
            EXPECT_EQ(chains.size(), back.size());
            EXPECT_EQ(chains.size(), seen.size());
            EXPECT_NEAR(total(chains), total(back), 1e-7 * size);
            EXPECT_NEAR(total(chains), total(seen), 1e-7 * size);
        }
    });
}

TEST(Offset, KnownParallels) {
    struct Row {
        const char* name;
        Shape shape;
        double distance;
        size_t chains;
        double length;
    };
    const Shape square{"", {{{0, 0}, 0}, {{4, 0}, 0}, {{4, 4}, 0}, {{0, 4}, 0}}, true};
    const Shape angle{"", {{{0, 0}, 0}, {{4, 0}, 0}, {{4, 3}, 0}}, false};
    // Two chambers with a passage 1 wide.
    const Shape rooms{"", {}, true};
    Shape chambers = rooms;
    for (const AcGePoint2d& p : {AcGePoint2d(0, 0),
                                 {4, 0},
                                 {4, 1.5},
                                 {6, 1.5},
                                 {6, 0},
                                 {10, 0},
                                 {10, 4},
                                 {6, 4},
                                 {6, 2.5},
                                 {4, 2.5},
                                 {4, 4},
                                 {0, 4}})
        chambers.vertices.push_back({p, 0});
    const Shape quarter{"", {{{-3, 0}, 0}, {{0, 0}, std::tan(kPi / 8)}, {{2, 2}, 0}, {{2, 5}, 0}}, false};
    // A half circle with legs that leave it at right angles: the circle and the legs meet outside.
    const Shape arch{"", {{{-6, 0}, 0}, {{-2, 0}, -1}, {{2, 0}, 0}, {{6, 0}, 0}}, false};
    const Row rows[] = {
        {"square, outside", square, 1, 1, 24},
        {"square, inside", square, -1, 1, 8},
        {"square, nothing left", square, -2, 0, 0},
        {"angle, outer side", angle, 1, 1, 9},
        {"angle, inner side", angle, -1, 1, 5},
        {"a passage parts the chambers", chambers, -0.6, 2, 22.4 - 2 + 2.4 * std::asin(5.0 / 6)},
        {"tangent arc, outer side", quarter, 1, 1, 3 + 3 * kPi / 2 + 3},
        {"tangent arc, inner side", quarter, -1, 1, 3 + kPi / 2 + 3},
        // Left of the arch: legs at height 1 meet the circle of radius 3 at x = sqrt(8).
        {"arch, outside", arch, -1, 1, 2 * (6 - std::sqrt(8.0)) + 3 * (kPi - 2 * std::asin(1.0 / 3))},
        // Right of it: the inner circle and the legs don\'t meet, so the corners stay round.
        {"arch, inside", arch, 1.5, 1, 8 + 2 * kPi}};
    for (const Row& row : rows) {
        const auto chains = offsetPolyline(row.shape.vertices, row.shape.closed, row.distance);
        EXPECT_EQ(chains.size(), row.chains) << row.name;
        EXPECT_NEAR(total(chains), row.length, 1e-9) << row.name;
    }
}

TEST(Offset, WhatIsNoPolylineHasNone) {
    const double none = std::nan("");
    EXPECT_TRUE(offsetPolyline({}, true, 1).empty());
    EXPECT_TRUE(offsetPolyline({{{1, 1}, 0}}, true, 1).empty());
    EXPECT_TRUE(offsetPolyline({{{1, 1}, 0}, {{1, 1}, 2}}, false, 1).empty());
    EXPECT_TRUE(offsetPolyline({{{1, 1}, 0}, {{2, none}, 2}}, false, 1).empty());
    EXPECT_TRUE(offsetPolyline({{{1, 1}, 0}, {{2, 1}, 0}}, false, none).empty());
}

} // namespace
