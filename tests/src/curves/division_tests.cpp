// PLDF, PLDJDF, PLDD, PLBH and the thread figures: what they leave, and the rules by which threads are tied.
#include <gmock/gmock.h>

#include <cmath>
#include <map>
#include <numbers>
#include <set>

#include "core/curve_services.h"
#include "core/settings.h"
#include "curves/division/division.h"
#include "curves/division/thread_art.h"
#include "tests/src/support/drawing.h"

using namespace corvane;
using support::Drawing;
using testing::HasSubstr;

namespace {

std::vector<AcGePoint3d> verticesOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
    return curve ? PolylineVertices(*curve) : std::vector<AcGePoint3d>();
}
AcDbObjectId addCircle(Drawing& drawing, const AcGePoint3d& centre, double radius) {
    return drawing.add(std::make_unique<AcDbCircle>(centre, AcGeVector3d::kZAxis, radius));
}
std::vector<std::pair<int, int>> plain(const std::vector<LinePair>& lines) {
    std::vector<std::pair<int, int>> pairs;
    for (const LinePair& line : lines) pairs.emplace_back(line.start + 1, line.end + 1);
    return pairs;
}

} // namespace

TEST(Division, EqualPartsReplaceTheCurveAndMeetItsEnds) {
    Drawing drawing;
    const auto line = drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(30, 0, 0)));
    const std::string told = drawing.run(L"PLDF all\n\n3 101 4\n"); // asked again until the count serves
    EXPECT_THAT(told, HasSubstr("< 1 >"));
    EXPECT_TRUE(line.isErased());
    const auto points = verticesOf(drawing.only<AcDbPolyline>());
    ASSERT_EQ(4u, points.size());
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(10.0 * i, points[size_t(i)].x, 1e-9);

    Drawing ring;
    addCircle(ring, {5, 5, 0}, 10);
    ring.run(L"PLDF all\n\n16\n");
    const auto round = verticesOf(ring.only<AcDbPolyline>());
    ASSERT_EQ(16u, round.size());
    EXPECT_LT(round.front().distanceTo(round.back()), 1e-9);
    AcDbObjectPointer<AcDbPolyline> polyline(ring.only<AcDbPolyline>(), AcDb::kForRead);
    EXPECT_TRUE(polyline->isClosed());
}

TEST(Division, WhatReplacesACurveKeepsItsLayerAndColour) {
    Drawing drawing;
    drawing.run(L"-LAYER m\nthin\n\n\nLINE 0,0 30,0 \n-LAYER s\n0\n\n");
    const auto line = drawing.only<AcDbLine>();
    AcDbObjectPointer<AcDbEntity>(line, AcDb::kForWrite)->setColorIndex(3);
    for (const wchar_t* script : {L"PLDF all\n\n7\n", L"PLDJDF all\n\n3\n"}) {
        drawing.run(script);
        AcDbObjectPointer<AcDbEntity> made(drawing.only<AcDbPolyline>(), AcDb::kForRead);
        EXPECT_STREQ(L"thin", made->layer());
        EXPECT_EQ(3, made->colorIndex());
    }
}

TEST(Division, TheLastSpanTakesUpTheRestAndShortCurvesAreToldAndLeft) {
    Drawing drawing;
    drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)));
    EXPECT_THAT(drawing.run(L"PLDJDF all\n\n2.5001\n"), HasSubstr("< 0 >"));
    drawing.only<AcDbLine>();
    drawing.run(L"PLDJDF all\n\n2.5\n"); // a quarter of the length still serves
    EXPECT_EQ(5u, verticesOf(drawing.only<AcDbPolyline>()).size());
    Drawing rest;
    rest.add(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0)));
    rest.run(L"PLDJDF all\n\n1.5\n");
    const auto points = verticesOf(rest.only<AcDbPolyline>());
    ASSERT_EQ(7u, points.size());
    EXPECT_NEAR(7.5, points[5].x, 1e-9);
    EXPECT_NEAR(10, points[6].x, 1e-9);
}

TEST(Division, CurvesAreTurnedRound) {
    Drawing drawing;
    const auto id = drawing.addPolyline({{0, 0}, {10, 0}, {10, 5}});
    EXPECT_THAT(drawing.run(L"PLDD all\n\n"), HasSubstr("< 1 >"));
    EXPECT_NEAR(5, verticesOf(id).front().y, 0);
}

TEST(Division, MarksAreNumberedFromTheLowerLeft) {
    Drawing drawing;
    drawing.addPolyline({{10, 10}, {0, 10}, {0, 0}, {10, 0}}, true);
    drawing.run(L"PLBH all\n\n2.5 y\n");
    std::map<std::wstring, AcGePoint3d> numbers;
    size_t points = 0;
    for (const AcDbObjectId id : drawing.entities()) {
        AcDbObjectPointer<AcDbText> text(id, AcDb::kForRead);
        if (text) {
            numbers[text->textStringConst()] = text->position();
            EXPECT_EQ(2.5, text->height());
        }
        points += id.objectClass()->isDerivedFrom(AcDbPoint::desc());
    }
    EXPECT_EQ(4u, points);
    ASSERT_EQ(4u, numbers.size());
    EXPECT_LT(numbers[L"1"].distanceTo({0, 0, 0}), 2);
    EXPECT_LT(numbers[L"2"].distanceTo({10, 0, 0}), 2);
    resbuf mode;
    acedGetVar(L"PDMODE", &mode);
    EXPECT_EQ(35, mode.resval.rint);
}

// -- threads ------------------------------------------------------------------------------------------

TEST(Threads, EndsRunTogetherFixedSlowOrAhead) {
    using Pairs = std::vector<std::pair<int, int>>;
    const auto lines = [](int m, int n, ThreadMode mode, bool closed) {
        return plain(SingleCurveThreads(m, n, mode, closed, 1000));
    };
    EXPECT_EQ((Pairs{{1, 2}, {2, 3}, {3, 4}}), lines(4, 1, ThreadMode::together, false));
    EXPECT_EQ((Pairs{{1, 3}, {2, 4}, {3, 5}, {4, 1}, {5, 2}}), lines(5, 2, ThreadMode::together, true));
    // Worked by hand: the end stays at 3 for three starts, then jumps to 6; 3 to 3 has no length.
    EXPECT_EQ((Pairs{{1, 3}, {2, 3}, {4, 6}, {5, 6}}), lines(8, 3, ThreadMode::fixed, false));
    // The first round of the creeping mode: 1/2 + 2, 2/2 + 2, 3/2 + 4, 4/2 + 4, all at most 6.
    const auto slow = lines(6, 2, ThreadMode::slow, false);
    EXPECT_EQ((Pairs{{1, 2}, {2, 3}, {3, 5}, {4, 6}}), Pairs(slow.begin(), slow.begin() + 4));
    EXPECT_NE(slow, lines(6, 2, ThreadMode::ahead, false));
}

TEST(Threads, NoLineStandsTwiceAndClosedFiguresAreTheSameAllRound) {
    for (const ThreadMode mode :
         {ThreadMode::together, ThreadMode::fixed, ThreadMode::slow, ThreadMode::ahead})
        for (const bool closed : {false, true}) {
            const int m = 24, n = 5;
            const auto lines = plain(SingleCurveThreads(m, n, mode, closed, 100000));
            const std::set<std::pair<int, int>> once(lines.begin(), lines.end());
            EXPECT_EQ(once.size(), lines.size());
            EXPECT_FALSE(lines.empty());
            for (const auto& [from, to] : lines) {
                EXPECT_TRUE(from >= 1 && from <= m && to >= 1 && to <= m && from != to);
                const bool alike = closed && mode == ThreadMode::fixed;
                EXPECT_TRUE(!alike || once.contains({from % m + 1, to % m + 1}));
            }
        }
    EXPECT_EQ(500u, SingleCurveThreads(1000, 300, ThreadMode::fixed, true, 500).size());
}

TEST(Threads, RingPassesDrawEachLineOnce) {
    LinePairs drawn;
    EXPECT_EQ(18u,
              RingThreads(8, 6, 0, 0, drawn).size()); // 8 + 10 steps, all new: 24 pairs before they repeat
    const auto second = RingThreads(8, 6, 1, 1, drawn);
    ASSERT_EQ(1u, second.size());
    EXPECT_EQ((LinePair{18 % 8, 18 % 6}), second[0]);
    LinePairs same;
    EXPECT_EQ(12u, RingThreads(12, 12, 0, 0, same).size());
    EXPECT_TRUE(RingThreads(12, 12, 1, 1, same).empty());
}

TEST(Threads, FiguresAreDrawnOnTheCurvesAndKeepTheirNumbers) {
    Drawing drawing;
    addCircle(drawing, {0, 0, 0}, 10);
    EXPECT_THAT(drawing.run(L"DevideLine1 10,0 60 20 t\n"), testing::Not(HasSubstr("M/10")));
    std::vector<AcDbObjectId> lines = drawing.entities();
    ASSERT_EQ(61u, lines.size());
    for (size_t i = 1; i < lines.size(); ++i) {
        AcDbObjectPointer<AcDbLine> line(lines[i], AcDb::kForRead);
        EXPECT_NEAR(10, line->startPoint().distanceTo({0, 0, 0}), 1e-9);
        // Twenty sixtieths of a circle apart: a third of a turn.
        EXPECT_NEAR(20 * std::sin(std::numbers::pi / 3), line->startPoint().distanceTo(line->endPoint()),
                    1e-9);
    }
    Drawing rings;
    addCircle(rings, {0, 0, 0}, 10);
    addCircle(rings, {0, 0, 0}, 40);
    EXPECT_THAT(rings.run(L"DevideLine3 10,0 40,0 3\n"), HasSubstr("3 < M1 < 999"));
    rings.run(L"DevideLine3 10,0 40,0 12 12 90 n\n");
    EXPECT_EQ(14u, rings.entities().size());
    AcDbObjectPointer<AcDbLine> first(rings.entities()[2], AcDb::kForRead);
    EXPECT_LT(first->startPoint().distanceTo({10, 0, 0}), 1e-9);
    EXPECT_LT(first->endPoint().distanceTo({0, 40, 0}), 1e-9);
    EXPECT_EQ(12u, SettingsStore::ReadInt(L"devideLineM1"));
    EXPECT_THAT(rings.run(L"DevideLine2 -7.0710678,7.0710678\n\n\n\n"), HasSubstr("M2[12]"));
    Drawing open;
    open.addPolyline({{0, 0}, {10, 0}});
    EXPECT_THAT(open.run(L"DevideLine2 5,0\n"), HasSubstr("不是封闭曲线"));
    EXPECT_THAT(open.run(L"DevideLine1 5,0 8 8\n"), HasSubstr("1 <= N < M"));
}
