// Where curves meet, by school geometry: all kinds, all four ways of going on beyond the ends, touchings,
// shared stretches, curves with themselves; each at several sizes and far from the origin, from both sides
// and backwards.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "specimens.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr AcDb::Intersect kOn = AcDb::kOnBothOperands, kThis = AcDb::kExtendThis, kArg = AcDb::kExtendArg,
                          kBoth = AcDb::kExtendBoth;

using Curve = std::shared_ptr<AcDbCurve>;
using Points = std::vector<AcGePoint3d>;

struct Row {
    std::string name;
    Curve a, b;
    AcDb::Intersect how;
    Points points;
    double exact = 1e-8; // of the curves' size; a touching is known to the root of the tolerance
    bool projected = false;
};
constexpr double kTouching = 1e-4;

Curve line(const AcGePoint3d& from, const AcGePoint3d& to) { return std::make_shared<AcDbLine>(from, to); }
Curve circle(const AcGePoint3d& center, double radius, const AcGeVector3d& up = AcGeVector3d::kZAxis) {
    return std::make_shared<AcDbCircle>(center, up, radius);
}
Curve arc(const AcGePoint3d& center, double radius, double from, double to) {
    return std::make_shared<AcDbArc>(center, radius, from, to);
}
Curve ellipse(const AcGeVector3d& major, double ratio, double from = 0, double to = 2 * kPi) {
    return std::make_shared<AcDbEllipse>(AcGePoint3d(), AcGeVector3d::kZAxis, major, ratio, from, to);
}
Curve polyline(const std::vector<AcDbPolyline::Vertex>& vertices, bool closed = false) {
    auto out = std::make_shared<AcDbPolyline>();
    out->setVertices(vertices), out->setClosed(closed);
    return out;
}
Curve chain(const AcGePoint3dArray& points, bool closed = false) {
    return std::make_shared<AcDb3dPolyline>(AcDb::k3dSimplePoly, points, closed);
}
Curve bezier(const AcGePoint3dArray& poles) {
    AcGeDoubleArray knots;
    for (int i = 0; i < 2 * poles.length(); ++i) knots.append(i < poles.length() ? 0 : 1);
    return std::make_shared<AcDbSpline>(poles.length() - 1, false, false, false, poles, knots,
                                        AcGeDoubleArray());
}

std::vector<Row> straightRows() {
    const Curve east = line({0, 0, 0}, {1, 0, 0}), rise = line({0, 0, 0}, {2, 2, 0});
    const Curve fall = line({0, 2, 0}, {2, 0, 0}), above = line({0, 2, 1}, {2, 0, 1});
    const Curve ahead = line({3, -1, 0}, {3, 1, 0}), high = line({3, 1, 0}, {3, 2, 0});
    return {
        {"lines cross", rise, fall, kOn, {{1, 1, 0}}},
        {"lines apart", east, ahead, kOn, {}},
        {"one goes on", east, ahead, kThis, {{3, 0, 0}}},
        {"the other goes on", east, ahead, kArg, {}},
        {"both go on", east, ahead, kBoth, {{3, 0, 0}}},
        {"one isn't enough", east, high, kThis, {}},
        {"the other isn't either", east, high, kArg, {}},
        {"both are", east, high, kBoth, {{3, 0, 0}}},
        {"parallels", east, line({0, 1, 0}, {1, 1, 0}), kBoth, {}},
        {"in one line, apart", east, line({3, 0, 0}, {4, 0, 0}), kOn, {}},
        {"in one line, one goes on", east, line({3, 0, 0}, {4, 0, 0}), kThis, {{3, 0, 0}, {4, 0, 0}}},
        {"a shared stretch",
         line({0, 0, 0}, {4, 0, 0}),
         line({6, 0, 0}, {2, 0, 0}),
         kOn,
         {{2, 0, 0}, {4, 0, 0}}},
        {"one inside the other",
         line({0, 0, 0}, {4, 0, 0}),
         line({1, 0, 0}, {2, 0, 0}),
         kOn,
         {{1, 0, 0}, {2, 0, 0}}},
        {"ends touch", east, line({1, 0, 0}, {1, 5, 0}), kOn, {{1, 0, 0}}},
        {"an end in the middle", line({0, 0, 0}, {4, 0, 0}), line({1, 0, 0}, {1, 5, 0}), kOn, {{1, 0, 0}}},
        {"one passes above", rise, above, kBoth, {}},
        {"one passes above, seen from there", rise, above, kOn, {{1, 1, 0}}, 1e-8, true},
        {"upright through flat", line({0, 0, -1}, {0, 0, 1}), line({-1, 0, 0}, {1, 0, 0}), kOn, {{0, 0, 0}}},
        {"skew", line({0, 0, 0}, {1, 1, 1}), line({0, 1, 0}, {1, 0, 0.5}), kBoth, {}}};
}

std::vector<Row> roundRows() {
    const Curve disc = circle({0, 0, 0}, 5), quarter = arc({0, 0, 0}, 5, 0, kPi / 2);
    const Curve shortLine = line({3, -1, 0}, {3, 1, 0});
    return {{"a secant", line({3, -9, 0}, {3, 9, 0}), disc, kOn, {{3, -4, 0}, {3, 4, 0}}},
            {"a line inside", shortLine, disc, kOn, {}},
            {"a line inside goes on", shortLine, disc, kThis, {{3, -4, 0}, {3, 4, 0}}},
            {"the disc can't", shortLine, disc, kArg, {}},
            {"a tangent", line({-9, 5, 0}, {9, 5, 0}), disc, kOn, {{0, 5, 0}}, kTouching},
            {"nearly a tangent", line({-9, 5.001, 0}, {9, 5.001, 0}), disc, kBoth, {}},
            {"a line's end on the disc", line({3, 4, 0}, {9, 9, 0}), disc, kOn, {{3, 4, 0}}},
            {"a line through the disc's plane", line({3, 4, -1}, {3, 4, 2}), disc, kOn, {{3, 4, 0}}},
            {"a line above", line({3, -9, 1}, {3, 9, 1}), disc, kBoth, {}},
            {"a line above, seen from there",
             line({3, -9, 1}, {3, 9, 2}),
             disc,
             kOn,
             {{3, -4, 0}, {3, 4, 0}},
             1e-8,
             true},
            {"a quarter", line({3, -9, 0}, {3, 9, 0}), quarter, kOn, {{3, 4, 0}}},
            {"a quarter goes on", line({3, -9, 0}, {3, 9, 0}), quarter, kArg, {{3, -4, 0}, {3, 4, 0}}},
            {"a short line at a quarter", shortLine, quarter, kBoth, {{3, -4, 0}, {3, 4, 0}}},
            {"discs", disc, circle({8, 0, 0}, 5), kOn, {{4, -3, 0}, {4, 3, 0}}},
            {"discs that touch", disc, circle({7, 0, 0}, 2), kOn, {{5, 0, 0}}, kTouching},
            {"discs that touch inside", disc, circle({3, 0, 0}, 2), kOn, {{5, 0, 0}}, kTouching},
            {"discs around one centre", disc, circle({0, 0, 0}, 4.9), kOn, {}},
            {"arcs apart", quarter, arc({8, 0, 0}, 5, 0, 1), kOn, {}},
            {"arcs go on", quarter, arc({8, 0, 0}, 5, 0, 1), kBoth, {{4, -3, 0}, {4, 3, 0}}},
            {"one arc goes on", quarter, arc({8, 0, 0}, 5, kPi - 1, kPi + 1), kOn, {{4, 3, 0}}},
            {"arcs of one circle",
             arc({0, 0, 0}, 5, 0, kPi),
             arc({0, 0, 0}, 5, kPi / 2, 1.5 * kPi),
             kOn,
             {{0, 5, 0}, {-5, 0, 0}}},
            {"discs across", disc, circle({3, 0, 0}, 2, AcGeVector3d::kYAxis), kOn, {{5, 0, 0}}},
            {"discs linked like a chain", disc, circle({5, 0, 0}, 2, AcGeVector3d::kYAxis), kOn, {}},
            {"great circles", disc, circle({0, 0, 0}, 5, {0, 1, 1}), kOn, {{-5, 0, 0}, {5, 0, 0}}}};
}

std::vector<Row> ovalRows() {
    const Curve oval = ellipse({5, 0, 0}, 0.6), bow = bezier({{-1, 1, 0}, {0, -1, 0}, {1, 1, 0}}); // y = x^2
    const Curve side = bezier({{1, -1, 0}, {-1, 0, 0}, {1, 1, 0}});                                // x = y^2
    const double root = std::sqrt(175.0) / 4, both = std::sqrt(225.0 / 34);
    const Curve low = line({-9, -1.8, 0}, {9, -1.8, 0}), top = line({-9, 3, 0}, {9, 3, 0});
    return {
        {"an ellipse and a line", oval, low, kOn, {{-4, -1.8, 0}, {4, -1.8, 0}}},
        {"its arc doesn't reach", ellipse({5, 0, 0}, 0.6, 0, kPi / 2), low, kOn, {}},
        {"its arc goes on", ellipse({5, 0, 0}, 0.6, 0, kPi / 2), low, kThis, {{-4, -1.8, 0}, {4, -1.8, 0}}},
        {"an ellipse and a tangent", oval, top, kOn, {{0, 3, 0}}, kTouching},
        {"an ellipse and a circle",
         oval,
         circle({0, 0, 0}, 4),
         kOn,
         {{root, 2.25, 0}, {-root, 2.25, 0}, {root, -2.25, 0}, {-root, -2.25, 0}}},
        {"an ellipse around a circle", oval, circle({0, 0, 0}, 3), kOn, {{0, 3, 0}, {0, -3, 0}}, kTouching},
        {"ellipses across",
         oval,
         ellipse({0, 5, 0}, 0.6),
         kOn,
         {{both, both, 0}, {-both, both, 0}, {both, -both, 0}, {-both, -both, 0}}},
        {"a parabola and a line",
         bow,
         line({-2, 0.25, 0}, {2, 0.25, 0}),
         kOn,
         {{-0.5, 0.25, 0}, {0.5, 0.25, 0}}},
        {"its tangent", bow, line({-2, 0, 0}, {2, 0, 0}), kOn, {{0, 0, 0}}, kTouching},
        {"splines don't go on", bow, line({-3, 4, 0}, {3, 4, 0}), kBoth, {}},
        {"a line goes on to a spline", line({0.5, 3, 0}, {0.5, 4, 0}), bow, kThis, {{0.5, 0.25, 0}}},
        {"parabolas", bow, side, kOn, {{0, 0, 0}, {1, 1, 0}}},
        {"a spline that passes above", bow, line({-2, 0.25, 1}, {2, 0.25, 1}), kBoth, {}},
        {"a spline and its copy",
         bow,
         bezier({{-1, 1, 0}, {0, -1, 0}, {1, 1, 0}}),
         kOn,
         {{-1, 1, 0}, {1, 1, 0}}},
        {"a loop",
         bezier({{-1, 0, 0}, {3, 3, 0}, {-3, 3, 0}, {1, 0, 0}}),
         nullptr,
         kOn,
         {{-1, 0, 0}, {1, 0, 0}, {0, 0.9, 0}}},
        {"a spline without a loop", bow, nullptr, kOn, {{-1, 1, 0}, {1, 1, 0}}}};
}

std::vector<Row> chainRows() {
    const Curve square = polyline({{{0, 0}}, {{4, 0}}, {{4, 4}}, {{0, 4}}}, true);
    const Curve hook = polyline({{{0, 0}}, {{1, 0}}, {{1, 1}}});
    const Curve bent = polyline({{{0, 2}}, {{0, 0}, 1}, {{2, 0}}}); // a half circle below the axis
    const Curve doubled = polyline({{{0, 0}}, {{0, 0}}, {{1, 0}}, {{1, 0}}});
    const Curve tie = polyline({{{0, 0}}, {{2, 2}}, {{2, 0}}, {{0, 2}}});
    return {
        {"through corners", square, line({-1, -1, 0}, {9, 9, 0}), kOn, {{0, 0, 0}, {4, 4, 0}}},
        {"along a side", square, line({-1, 4, 0}, {9, 4, 0}), kOn, {{0, 4, 0}, {4, 4, 0}}},
        {"closed ones don't go on", square, line({-1, 6, 0}, {1, 6, 0}), kBoth, {}},
        {"the last side goes on", hook, line({-1, 3, 0}, {5, 3, 0}), kThis, {{1, 3, 0}}},
        {"the first side goes on", hook, line({-2, -3, 0}, {-2, 3, 0}), kThis, {{-2, 0, 0}}},
        {"doubled ends go on", doubled, line({-2, -3, 0}, {-2, 3, 0}), kThis, {{-2, 0, 0}}},
        {"an arc at the end goes on", bent, line({1, 0.5, 0}, {1, 3, 0}), kThis, {{1, 1, 0}}},
        {"an arc at the end", bent, line({1, -3, 0}, {1, 3, 0}), kOn, {{1, -1, 0}}},
        {"a square and a disc", square, circle({4, 4, 0}, 1), kOn, {{4, 3, 0}, {3, 4, 0}}},
        {"squares with a shared side",
         square,
         polyline({{{4, 1}}, {{6, 1}}, {{6, 3}}, {{4, 3}}}, true),
         kOn,
         {{4, 1, 0}, {4, 3, 0}}},
        {"a knot met once", tie, line({1, -1, 0}, {1, 3, 0}), kOn, {{1, 1, 0}}},
        {"corners and knot of itself",
         tie,
         nullptr,
         kOn,
         {{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 2, 0}, {1, 1, 0}}},
        {"in space", chain({{0, 0, 0}, {2, 0, 2}, {4, 0, 0}}), line({1, -1, 1}, {1, 1, 1}), kOn, {{1, 0, 1}}},
        {"in space, goes on",
         chain({{0, 0, 0}, {2, 0, 2}, {4, 0, 0}}),
         line({5, -1, -1}, {5, 1, -1}),
         kThis,
         {{5, 0, -1}}},
        {"in space, below",
         chain({{0, 0, 0}, {2, 0, 2}, {4, 0, 0}}),
         line({1, -1, 0}, {1, 1, 0}),
         kBoth,
         {}}};
}

struct Setting {
    double scale;
    AcGeVector3d away;
};
constexpr AcDb::Intersect swapped(AcDb::Intersect how) {
    return how == kThis ? kArg : how == kArg ? kThis : how;
}

Curve placed(const Curve& curve, const Setting& s, bool backwards) {
    Curve out(static_cast<AcDbCurve*>(curve->clone()));
    if (backwards) out->reverseCurve();
    out->transformBy(AcGeMatrix3d::scaling(s.scale));
    out->transformBy(AcGeMatrix3d::translation(s.away));
    return out;
}

std::string listed(const AcGePoint3dArray& points) {
    std::string out;
    for (const AcGePoint3d& p : points)
        out += " (" + std::to_string(p.x) + " " + std::to_string(p.y) + " " + std::to_string(p.z) + ")";
    return out;
}

void check(const Row& row, const AcDbCurve& a, const AcDbCurve& b, AcDb::Intersect how, const Setting& s) {
    AcGePoint3dArray found;
    const AcGePlane floor(AcGePoint3d(0, 0, s.away.z), AcGeVector3d::kZAxis);
    EXPECT_EQ(row.projected ? a.intersectWith(&b, how, floor, found) : a.intersectWith(&b, how, found),
              Acad::eOk);
    EXPECT_EQ(size_t(found.length()), row.points.size()) << listed(found);
    for (const AcGePoint3d& p : row.points) {
        const AcGePoint3d there = AcGePoint3d() + p.asVector() * s.scale + s.away;
        double nearest = 1e300;
        for (const AcGePoint3d& q : found) nearest = std::min(nearest, there.distanceTo(q));
        EXPECT_LE(nearest, row.exact * 10 * s.scale + 1e-13 * s.away.length()) << listed(found);
    }
}

void checkRows(const std::vector<Row>& rows) {
    host::registerEntityClasses();
    const Setting settings[] = {{1, {}}, {1e-3, {}}, {1e6, {}}, {1, {3e5, -2e5, 1e5}}, {1e3, {0, 4e8, 0}}};
    for (const Row& row : rows)
        for (const Setting& s : settings)
            for (const bool backwards : {false, true}) {
                SCOPED_TRACE(row.name + ", scale " + std::to_string(s.scale) + " at " +
                             std::to_string(s.away.y) + (backwards ? ", backwards" : ""));
                const Curve a = placed(row.a, s, backwards), b = row.b ? placed(row.b, s, backwards) : a;
                check(row, *a, *b, row.how, s);
                check(row, *b, *a, swapped(row.how), s);
            }
}

TEST(Meetings, StraightCurves) { checkRows(straightRows()); }
TEST(Meetings, RoundCurves) { checkRows(roundRows()); }
TEST(Meetings, EllipsesAndSplines) { checkRows(ovalRows()); }
TEST(Meetings, ChainsOfPieces) { checkRows(chainRows()); }

// The smaller curve decides what counts as one place.
TEST(Meetings, SmallCurvesOnLongLinesAreMetTwice) {
    struct Far {
        Curve line;
        AcDb::Intersect how;
        double at;
    } rows[] = {{line({0, 0, 0}, {1, 0, 0}), kThis, 1e6},
                {line({-1e6, 0, 0}, {1e6, 0, 0}), kOn, 5},
                {line({-1e9, 0, 0}, {1e9, 0, 0}), kOn, 5},
                {polyline({{{0, 0}}, {{0, 3}}, {{1, 3}}, {{1, 0}}, {{2, 0}}}), kThis, 1e5}};
    for (const Far& row : rows)
        for (const Curve& small :
             {circle({row.at, 0, 0}, 1e-3), ellipse({1e-3, 0, 0}, 0.5),
              bezier({{-1e-3, 0, 0}, {-1e-3, 1e-3, 0}, {1e-3, 1e-3, 0}, {1e-3, 0, 0}})}) {
            if (!AcDbCircle::cast(small.get())) small->transformBy(AcGeMatrix3d::translation({row.at, 0, 0}));
            AcGePoint3dArray found;
            row.line->intersectWith(small.get(), row.how, found);
            ASSERT_EQ(found.length(), 2) << row.at;
            EXPECT_NEAR(found[0].x, row.at - 1e-3, 1e-8);
            EXPECT_NEAR(found[1].x, row.at + 1e-3, 1e-8);
        }
}

} // namespace
