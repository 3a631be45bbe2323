// Scatters on plain data: the random sequence, chains of curves, overlap, winding numbers; and typed xdata.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "core/keyed_xdata.h"
#include "scatter/random/chain.h"
#include "scatter/random/generator.h"
#include "scatter/random/overlap.h"
#include "scatter/random/winding.h"
#include "support/drawing.h"

using namespace corvane;
using namespace corvane::scatter;

namespace {

constexpr unsigned kSeed = 20240611;

std::vector<bool> overlappedByPairs(const std::vector<Disc>& discs) {
    std::vector<bool> gone(discs.size(), false);
    for (size_t i = 0; i < discs.size(); ++i)
        for (size_t j = 0; j < i && !gone[i]; ++j) {
            const double reach = discs[i].radius + discs[j].radius + 0.001;
            gone[i] = !gone[j] && (discs[i].centre - discs[j].centre).lengthSqrd() < reach * reach;
        }
    return gone;
}

int windingByAllEdges(const std::vector<AcGePoint2d>& polygon, const AcGePoint2d& p) {
    int winding = 0;
    for (size_t i = 0; i < polygon.size(); ++i) {
        const AcGePoint2d &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
        const double d = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
        if (a.y <= p.y && b.y > p.y && d > 0) ++winding;
        if (a.y > p.y && b.y <= p.y && d <= 0) --winding;
    }
    return winding;
}

} // namespace

TEST(ScatterGenerator, FollowsTheCongruenceAndDrawsItsUpperBits) {
    // By hand: 1 * 1664525 + 1013904223 = 1015568748, and so on modulo 2^32.
    Generator random(1);
    for (const double state : {1015568748.0, 1586005467.0, 2165703038.0})
        EXPECT_DOUBLE_EQ(std::floor(state / 256) / (1 << 24), random.Draw());
    Generator many(kSeed);
    std::vector<int> drawn(5, 0);
    for (int i = 0; i < 50000; ++i) ++drawn.at(many.Index(5));
    for (const int times : drawn) EXPECT_NEAR(10000, times, 400);
}

TEST(CurveChain, FindsThePathOfADistance) {
    CurveChain chain;
    EXPECT_TRUE(chain.empty());
    chain.Add(7, 0, 10);
    chain.Add(8, 3, 3 + 1e-10); // too short
    chain.Add(9, 25, 5);        // from 5 to 25, whichever way it was given
    EXPECT_DOUBLE_EQ(30, chain.length());
    const struct {
        double distance;
        size_t curve;
        double local;
    } rows[] = {{0, 7, 0}, {4, 7, 4}, {10, 7, 10}, {10.5, 9, 5.5}, {30, 9, 25}, {31, 9, 25}, {-1, 7, 0}};
    for (const auto& row : rows) {
        const ChainPlace place = chain.At(row.distance);
        EXPECT_EQ(row.curve, chain.path(place.path).curve) << row.distance;
        EXPECT_DOUBLE_EQ(row.local, place.distance) << row.distance;
    }
}

TEST(Band, IsADiscAcrossTheTangent) {
    // Across the X axis lie -Y and -Z, across Z lies Y: X and Z are only taken where they can be.
    const AcGePoint3d centre(1, 2, 3);
    EXPECT_LT(AcrossTangent(centre, {5, 0, 0}, 2, 1, 0).distanceTo({1, 0, 3}), 1e-12);
    EXPECT_LT(AcrossTangent(centre, {5, 0, 0}, 2, 1, 0.25).distanceTo({1, 2, 1}), 1e-12);
    EXPECT_LT(AcrossTangent(centre, {0, 0, 4}, 2, 1, 0).distanceTo({1, 4, 3}), 1e-12);
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> unit(0, 1);
    int near = 0;
    for (int i = 0; i < 4000; ++i) {
        const AcGeVector3d tangent(unit(random) - 0.5, unit(random) - 0.5, unit(random) - 0.5);
        const AcGeVector3d off = AcrossTangent(centre, tangent, 3, unit(random), unit(random)) - centre;
        EXPECT_NEAR(0, off.dotProduct(tangent), 1e-9);
        EXPECT_LE(off.length(), 3 + 1e-9);
        near += off.length() < 1.5;
    }
    EXPECT_NEAR(1000, near, 120) << "half the radius holds a quarter of the disc";
}

TEST(OverlappedDiscs, AreThoseOfComparingAllPairs) {
    std::mt19937 random(kSeed);
    const struct {
        const char* caption;
        double spread, depth, least, most, offset;
    } rows[] = {{"like sizes", 60, 0, 1, 2, 0},
                {"in space", 30, 30, 0.5, 3, 0},
                {"far from the origin", 60, 5, 1, 4, 1e7},
                {"of every size", 400, 1, 1e-4, 90, -3000},
                {"no size at all", 0.05, 0, 0, 0, 0},
                {"all on one place", 0, 0, 0, 1, 5}};
    for (const auto& row : rows) {
        std::uniform_real_distribution<double> side(-row.spread, row.spread), depth(-row.depth, row.depth);
        std::uniform_real_distribution<double> power(std::log(row.least + 1e-9), std::log(row.most + 1e-9));
        std::vector<Disc> discs;
        for (int i = 0; i < 1500; ++i)
            discs.push_back(
                {{row.offset + side(random), side(random), depth(random)}, std::exp(power(random))});
        const auto gone = OverlappedDiscs(discs);
        EXPECT_EQ(overlappedByPairs(discs), gone) << row.caption << ", seed " << kSeed;
        EXPECT_GT(std::count(gone.begin(), gone.end(), true), 20) << row.caption;
    }
    EXPECT_TRUE(OverlappedDiscs({}).empty());
}

TEST(PlacementGrid, FindsWhatAllPlacementsWouldShow) {
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> side(0, 40), size(0.1, 2);
    for (const bool boxed : {true, false}) {
        PlacementGrid grid({0, 0}, 4); // a square round a circle's diagonal reaches no farther
        std::vector<ScatterPlacement> all;
        for (int i = 0; i < 1500; ++i) {
            const double w = size(random), h = boxed ? size(random) : w;
            const ScatterPlacement next{side(random), side(random), 0, std::hypot(w, h) / 2, w, h, boxed};
            bool taken = false;
            for (const auto& p : all) {
                const double halfW = boxed ? p.width / 2 : p.radius, halfH = boxed ? p.height / 2 : p.radius;
                taken |= std::abs(next.x - p.x) < halfW + w / 2 - 1e-9 &&
                         std::abs(next.y - p.y) < halfH + h / 2 - 1e-9;
            }
            ASSERT_EQ(taken, grid.IsTaken({next.x, next.y}, w, h)) << i << ", seed " << kSeed;
            if (taken) continue;
            grid.Add(next);
            all.push_back(next);
        }
        EXPECT_GT(all.size(), 100u);
        EXPECT_LT(all.size(), 1400u);
    }
}

TEST(PlacementGrid, BoxesThatOnlyTouchLeaveEachOtherAlone) {
    PlacementGrid grid({0, 0}, 2);
    grid.Add({1, 1, 0, std::sqrt(2.0), 2, 2, true});
    EXPECT_FALSE(grid.IsTaken({3, 1}, 2, 2));
    EXPECT_TRUE(grid.IsTaken({2.999, 1}, 2, 2));
}

TEST(WindingIndex, CountsAsAllEdgesWould) {
    std::mt19937 random(kSeed);
    for (const int corners : {3, 4, 7, 60, 500}) {
        // Corners on a coarse raster: horizontal edges, coinciding heights and points on edges are common.
        std::uniform_int_distribution<int> raster(0, 9);
        std::vector<AcGePoint2d> polygon;
        for (int i = 0; i < corners; ++i) polygon.emplace_back(raster(random), raster(random));
        const WindingIndex index(polygon);
        for (int i = 0; i < 2000; ++i) {
            const AcGePoint2d p(raster(random) + 0.25 * (i % 3), raster(random) + 0.5 * (i % 2));
            ASSERT_EQ(windingByAllEdges(polygon, p), index.At(p)) << corners << ", seed " << kSeed;
        }
        EXPECT_EQ(0, index.At({5, -1}));
        EXPECT_EQ(0, index.At({5, 10}));
    }
    EXPECT_EQ(0, WindingIndex().At({0, 0}));
}

TEST(SignedArea, TellsTheSenseAndKeepsItsDigitsFarAway) {
    std::vector<AcGePoint2d> square{{1e8, 1e8}, {1e8 + 1, 1e8}, {1e8 + 1, 1e8 + 1}, {1e8, 1e8 + 1}};
    EXPECT_DOUBLE_EQ(1, SignedArea(square));
    std::reverse(square.begin(), square.end());
    EXPECT_DOUBLE_EQ(-1, SignedArea(square));
}

TEST(KeyedXData, ComesBackByKeyAndType) {
    support::Drawing drawing;
    const AcDbObjectId id = drawing.addPolyline({{0, 0}, {1, 0}});
    KeyedXData data;
    data.AddShort(L"A", 7).AddLong(L"B", -100000).AddReal(L"C", 0.1).AddTexts(L"L", {L"2F", L"3A"});
    data.AddReal(L"A2", 1).AddShort(L"B", 1).AddTexts(L"NONE", {}).AddShort(L"YES", 1);
    ASSERT_EQ(Acad::eOk, data.Write(id, L"CVN_TEST"));
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    const KeyedXData read = KeyedXData::Read(*entity, L"CVN_TEST");
    int number = 0;
    double real = 0;
    bool flag = false;
    std::vector<std::wstring> texts;
    EXPECT_TRUE(read.GetShort(L"A", number) && number == 7);
    EXPECT_TRUE(read.GetLong(L"B", number) && number == -100000);
    EXPECT_TRUE(read.GetShort(L"B", number) && number == 1) << "the one of that type counts";
    EXPECT_TRUE(read.GetReal(L"C", real) && real == 0.1);
    EXPECT_TRUE(read.GetTexts(L"L", texts) && texts == (std::vector<std::wstring>{L"2F", L"3A"}));
    EXPECT_TRUE(read.GetTexts(L"NONE", texts) && texts.empty());
    EXPECT_TRUE(read.GetFlag(L"YES", flag) && flag);
    number = 5;
    EXPECT_FALSE(read.GetLong(L"A", number) || read.GetShort(L"Z", number) || read.GetReal(L"A", real));
    EXPECT_EQ(5, number);
    EXPECT_TRUE(KeyedXData::Read(*entity, L"OTHER").empty());
}

TEST(KeyedXData, SaysWhenItDoesNotFit) {
    support::Drawing drawing;
    const AcDbObjectId id = drawing.addPolyline({{0, 0}, {1, 0}});
    KeyedXData data;
    data.AddTexts(L"L", std::vector<std::wstring>(4000, L"ABCDEF"));
    EXPECT_NE(Acad::eOk, data.Write(id, L"CVN_TEST"));
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    EXPECT_TRUE(KeyedXData::Read(*entity, L"CVN_TEST").empty());
}
