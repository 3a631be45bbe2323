// rndScatter2 on drawings, and what it is clipped to.
#include <gmock/gmock.h>

#include <cmath>
#include <map>

#include "host/ent/block_clip.h"
#include "scatter/random/loops.h"
#include "scatter/random/pattern.h"
#include "scatter/random/winding.h"
#include "support/scatters.h"

using namespace corvane;
using namespace corvane::scatter;
using support::contentsOf;
using support::expectAt;
using support::middlesOf;
using support::paramsOf;
using support::ScatterDrawing;
using testing::HasSubstr;

namespace {

using Params = ScatterInRegionParams;
constexpr const wchar_t* kCommand = L"rndScatter2";

AcDbObjectId addSquare(ScatterDrawing& drawing, double side, double bulge = 0, double elevation = 0) {
    auto square = std::make_unique<AcDbPolyline>();
    for (const AcGePoint2d& p : {AcGePoint2d(0, 0), {side, 0}, {side, side}, {0, side}})
        square->addVertexAt(square->numVerts(), p, bulge);
    square->setClosed(true);
    square->setElevation(elevation);
    return drawing.add(std::move(square));
}

std::vector<AcGePoint3d> clipOf(AcDbObjectId scatter) {
    AcDbObjectPointer<AcDbBlockReference> reference(scatter, AcDb::kForRead);
    const auto clip = host::blockClip(*reference);
    return clip ? clip->corners(*reference) : std::vector<AcGePoint3d>();
}

} // namespace

TEST(ScatterInRegions, CentresLieInsideAtTheBoundarysHeight) {
    ScatterDrawing drawing;
    const AcDbObjectId rounded = addSquare(drawing, 10, std::tan(std::atan(1.0) / 2), 6);
    const AcDbObjectId ellipse = drawing.addEllipse({100, 0, 2}, {0, 20, 0}, 0.25);
    const AcDbObjectId ring = drawing.addCircle({-100, 0, 0}, 8);
    drawing.scatter(kCommand, {rounded, ellipse, ring}, L"\n1\nN\n3000\nN\nN\n");
    EXPECT_FALSE(drawing.ranDry);
    std::map<int, int> counts;
    for (const AcGePoint3d& p : middlesOf(drawing.array())) {
        if (p.x > 50) {
            EXPECT_LT(std::pow((p.x - 100) / 5, 2) + std::pow(p.y / 20, 2), 1);
            EXPECT_EQ(2, p.z);
            ++counts[1];
        } else if (p.x < -50) {
            EXPECT_LT(std::hypot(p.x + 100, p.y), 8);
            EXPECT_EQ(0, p.z);
            ++counts[2];
        } else {
            // A square of side 10 with quarter circles: bulge tan(pi/8) makes its circumscribed circle.
            EXPECT_LT(std::hypot(p.x - 5, p.y - 5), 5 * std::sqrt(2.0) + 1e-9);
            EXPECT_EQ(6, p.z);
            ++counts[0];
        }
    }
    // In proportion to the areas: 50 pi, 100 pi and 64 pi.
    EXPECT_NEAR(3000 * 50.0 / 214, counts[0], 110);
    EXPECT_NEAR(3000 * 100.0 / 214, counts[1], 130);
    EXPECT_NEAR(3000 * 64.0 / 214, counts[2], 110);
}

TEST(ScatterInRegions, AFullBoundaryEndsWithFewerPatternsThatKeepClear) {
    ScatterDrawing drawing;
    const AcDbObjectId square = addSquare(drawing, 20);
    const std::string before = drawing.bytes();
    const std::string transcript = drawing.scatter(kCommand, {square}, L"F\n2\nY\n90\nY\n2\n1\n500\nY\nN\n");
    const auto squares = contentsOf<AcDbPolyline>(drawing.array());
    EXPECT_GT(squares.size(), 20u);
    EXPECT_LT(squares.size(), 110u);
    std::vector<AcDbExtents> boxes;
    for (const auto& one : squares) {
        AcDbExtents box;
        one->getGeomExtents(box);
        for (const AcDbExtents& other : boxes) {
            const bool apart = box.minPoint().x >= other.maxPoint().x - 1e-8 ||
                               box.maxPoint().x <= other.minPoint().x + 1e-8 ||
                               box.minPoint().y >= other.maxPoint().y - 1e-8 ||
                               box.maxPoint().y <= other.minPoint().y + 1e-8;
            EXPECT_TRUE(apart);
        }
        boxes.push_back(box);
    }
    drawing.run(L"U\n");
    EXPECT_EQ(before, drawing.bytes());
}

TEST(ScatterInRegions, TextsComeApartIntoTheirCharacters) {
    ScatterDrawing drawing;
    const AcDbObjectId square = addSquare(drawing, 100), text = drawing.addText(L"A B");
    auto lines = std::make_unique<AcDbMText>();
    lines->setLocation({0, -900, 0});
    lines->setContents(L"{\\C1;x}\\P\\\\");
    const AcDbObjectId several = drawing.add(std::move(lines));
    drawing.run(L"rndScatter2\n" + drawing.selection({square}) + L"S\n" + drawing.selection({text, several}) +
                L"\nN\n400\nN\nN\n");
    std::map<std::wstring, int> counts;
    for (const auto& one : contentsOf<AcDbText>(drawing.array())) ++counts[one->textStringConst()];
    for (const auto& one : contentsOf<AcDbMText>(drawing.array())) ++counts[one->plainText()];
    ASSERT_EQ(4u, counts.size());
    for (const wchar_t* character : {L"A", L"B", L"x", L"\\"}) EXPECT_NEAR(100, counts[character], 35);
    EXPECT_EQ(400u, middlesOf(drawing.array()).size());
}

TEST(ScatterCharacters, AreWhatTheTextShows) {
    const struct {
        const wchar_t* text;
        std::vector<std::wstring> characters;
    } rows[] = {{L"a b\tc", {L"a", L"b", L"c"}},
                {L"%%c12", {L"%%c", L"1", L"2"}},
                {L"%%uX%%u%%176", {L"X", L"%%176"}},
                {L"5%", {L"5", L"%"}},
                {L" ", {}},
                {L"文字", {L"文", L"字"}}};
    for (const auto& row : rows)
        EXPECT_EQ(row.characters, CharactersOf(AcDbText(AcGePoint3d(), row.text))) << host::utf8(row.text);
    EXPECT_TRUE(CharactersOf(AcDbLine({0, 0, 0}, {1, 0, 0})).empty());
}

TEST(ScatterInRegions, RotationStaysInItsRangeWhichIsOfferedAgain) {
    ScatterDrawing drawing;
    const AcDbObjectId square = addSquare(drawing, 100),
                       leaf = drawing.addEllipse({0, 900, 0}, {2, 0, 0}, 0.5);
    const std::wstring begin =
        L"rndScatter2\n" + drawing.selection({square}) + L"S\n" + drawing.selection({leaf}) + L"Y\n";
    EXPECT_THAT(drawing.run(begin + L"9\n60\nN\n300\nN\nN\n"),
                HasSubstr("数值范围必须在 10.000 ~ 360.000 之间。"));
    EXPECT_THAT(drawing.run(begin + L"\nN\n300\nN\nN\n"), HasSubstr("ang(10~360) <60>:"));
    ASSERT_EQ(2u, drawing.arrays().size());
    for (const AcDbObjectId scatter : drawing.arrays()) {
        EXPECT_EQ(60, paramsOf<Params>(scatter).rotationRange);
        double most = 0;
        for (const auto& one : contentsOf<AcDbEllipse>(scatter))
            most = std::max(most, std::abs(std::atan2(one->majorAxis().y, one->majorAxis().x)));
        EXPECT_NEAR(std::acos(-1.0) / 6, most, 0.03);
        EXPECT_LE(most, std::acos(-1.0) / 6 + 1e-9);
    }
    drawing.run(begin + L"360\nN\n1\nN\nN\n"); // as at the start, for the tests behind this one
}

TEST(ScatterInRegions, TurnedTemplatesKeepClearByTheirOwnBoxes) {
    ScatterDrawing drawing;
    const AcDbObjectId ring = drawing.addCircle({0, 0, 0}, 30),
                       leaf = drawing.addEllipse({0, 900, 0}, {4, 0, 0}, 0.2);
    drawing.run(L"rndScatter2\n" + drawing.selection({ring}) + L"S\n" + drawing.selection({leaf}) +
                L"Y\n360\nN\n200\nY\nN\n");
    const auto leaves = contentsOf<AcDbEllipse>(drawing.array());
    EXPECT_GT(leaves.size(), 30u);
    for (size_t i = 0; i < leaves.size(); ++i)
        for (size_t j = 0; j < i; ++j) {
            AcGePoint3dArray shared;
            leaves[i]->intersectWith(leaves[j].get(), AcDb::kOnBothOperands, shared);
            EXPECT_TRUE(shared.isEmpty());
        }
}

TEST(ScatterClip, FollowsTheBoundary) {
    ScatterDrawing drawing;
    const AcDbObjectId straight = addSquare(drawing, 20, 0, 3), rounded = addSquare(drawing, 30, 0.5);
    const AcDbObjectId ring = drawing.addCircle({200, 0, 0}, 10);
    const struct {
        AcDbObjectId boundary;
        size_t corners;
    } rows[] = {{straight, 4}, {rounded, 16}, {ring, 12}};
    for (const auto& row : rows) {
        const size_t present = drawing.entities().size();
        const std::string transcript = drawing.scatter(kCommand, {row.boundary}, L"C\n9\nN\n50\nN\nY\n");
        EXPECT_EQ(transcript.find("剪裁失败"), transcript.npos);
        EXPECT_EQ(present + 1, drawing.entities().size()) << "no helping polyline is left";
        const auto corners = clipOf(drawing.arrays().back());
        ASSERT_EQ(row.corners, corners.size());
        AcDbObjectPointer<AcDbCurve> curve(row.boundary, AcDb::kForRead);
        for (const AcGePoint3d& corner : corners) {
            AcGePoint3d nearest;
            curve->getClosestPointTo(corner, nearest);
            expectAt(nearest, corner);
        }
    }
    drawing.scatter(kCommand, {ring}, L"C\n9\nN\n50\nN\nN\n");
    EXPECT_TRUE(clipOf(drawing.arrays().back()).empty());
}

TEST(ScatterClip, FollowsTheOutlineOfBoundariesThatHangTogether) {
    ScatterDrawing drawing;
    const AcDbObjectId ring = drawing.addCircle({0, 0, 0}, 10), square = addSquare(drawing, 12);
    const AcDbObjectId within = drawing.addCircle({2, 2, 0}, 1), apart = drawing.addCircle({100, 0, 0}, 10);
    const std::string before = drawing.bytes();
    drawing.scatter(kCommand, {ring, square, within}, L"C\n3\nN\n200\nN\nY\n");
    AcGePoint3dArray corners;
    for (const AcGePoint3d& corner : clipOf(drawing.arrays().back())) {
        const double r = std::hypot(corner.x, corner.y);
        const bool onRing =
            r < 10 + 1e-6 && r > 10 * std::cos(std::acos(-1.0) / 17) - 1e-6; // or a chord of it
        EXPECT_TRUE(onRing ||
                    (corner.x > -1e-6 && corner.y > -1e-6 && std::max(corner.x, corner.y) > 12 - 1e-6))
            << corner.x << "," << corner.y;
        corners.append(corner);
    }
    drawing.run(L"U\n");
    EXPECT_EQ(before, drawing.bytes()) << "patterns and clip are one step";
    // Of the square, which sticks out of the circle, the corner away from it; and where they cross.
    for (const AcGePoint3d& expected :
         {AcGePoint3d(12, 12, 0), AcGePoint3d(0, 10, 0), AcGePoint3d(0, 12, 0)}) {
        const bool found = std::any_of(corners.begin(), corners.end(), [&](const AcGePoint3d& corner) {
            return corner.distanceTo(expected) < 0.2;
        });
        EXPECT_TRUE(found) << expected.x << "," << expected.y;
    }
    const std::string transcript = drawing.scatter(kCommand, {ring, apart}, L"C\n3\nN\n50\nN\nY\n");
    EXPECT_THAT(transcript, HasSubstr("剪裁失败或无法创建范围并集轮廓，已保留未剪裁的匿名块。"));
    EXPECT_TRUE(clipOf(drawing.arrays().back()).empty());
    EXPECT_EQ(50u, middlesOf(drawing.arrays().back()).size());
}

TEST(ScatterInRegions, HolesOfRegionsStayFreeAndPartsFill) {
    ScatterDrawing drawing;
    const auto discAt = [](double x, double radius) {
        AcDbVoidPtrArray curves, made;
        AcDbCircle circle({x, 0, 5}, AcGeVector3d::kZAxis, radius);
        curves.append(static_cast<AcDbEntity*>(&circle));
        AcDbRegion::createFromCurves(curves, made);
        return std::unique_ptr<AcDbRegion>(AcDbRegion::cast(static_cast<AcDbEntity*>(made[0])));
    };
    auto ring = discAt(0, 10), hole = discAt(0, 6), island = discAt(50, 10);
    ASSERT_EQ(Acad::eOk, ring->booleanOper(AcDb::kBoolSubtract, hole.get()));
    ASSERT_EQ(Acad::eOk, ring->booleanOper(AcDb::kBoolUnite, island.get()));
    const AcDbObjectId region = drawing.add(std::move(ring));
    drawing.scatter(kCommand, {region}, L"C\n1\nN\n2000\nN\nN\n");
    int inRing = 0;
    for (const AcGePoint3d& p : middlesOf(drawing.array())) {
        const double r = std::hypot(p.x, p.y);
        inRing += r < 20;
        EXPECT_TRUE(r < 20 ? r > 6 - 0.01 && r < 10 : std::hypot(p.x - 50, p.y) < 10) << p.x << "," << p.y;
        EXPECT_EQ(5, p.z);
    }
    EXPECT_NEAR(2000 * 64.0 / 164, inRing, 80);
}

TEST(ScatterLoops, AreJoinedHoweverTheirPiecesRunAndNestByDepth) {
    const AcGePoint3d a(0, 0, 0), b(9, 0, 0), c(9, 9, 0), d(0, 9, 0);
    auto loops = ChainLoops({{a, b}, {d, c}, {d, a}, {b, c}, {{50, 0, 0}, {60, 0, 0}}});
    ASSERT_EQ(1u, loops.size());
    EXPECT_EQ(4u, loops[0].size());
    for (const double inset : {1.0, 2.0})
        loops.push_back(
            {{inset, inset, 0}, {inset, 9 - inset, 0}, {9 - inset, 9 - inset, 0}, {9 - inset, inset, 0}});
    const auto nested = NestLoops(loops);
    const double areas[] = {81, -49, 25};
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(int(i), nested[i].depth);
        EXPECT_DOUBLE_EQ(areas[i], SignedArea(nested[i].points));
    }
}

// The square of such a radius, and the size of the larger patterns, are beyond what numbers hold.
TEST(ScatterInRegions, SizesBeyondAllNumbersEndInAWord) {
    ScatterDrawing drawing;
    const AcDbObjectId endless = drawing.addCircle({}, 1e200), round = drawing.addCircle({}, 10);
    EXPECT_THAT(drawing.scatter(kCommand, {endless}, L"\n1\nN\n5\nN\n"), HasSubstr("散布生成失败"));
    drawing.scatter(kCommand, {round}, L"\n1e308\nY\n3\n.3\n20\nN\nN\n");
    const auto circles = contentsOf<AcDbCircle>(drawing.array());
    for (const auto& circle : circles) EXPECT_TRUE(std::isfinite(circle->radius()));
    EXPECT_EQ(20u, circles.size()) << "what can't be is tried again";
}

TEST(ScatterInRegions, OpenCurvesAreNoBoundaries) {
    ScatterDrawing drawing;
    const AcDbObjectId open = drawing.addPolyline({{0, 0}, {9, 0}, {9, 9}});
    const AcDbObjectId flat = drawing.addPolyline({{0, 0}, {9, 0}}, true);
    EXPECT_THAT(drawing.scatter(kCommand, {open}, L""), HasSubstr("未选择有效封闭曲线或散布块。"));
    EXPECT_THAT(drawing.scatter(kCommand, {flat}, L"\n1\nN\n\n\n"), HasSubstr("散布生成失败。"));
}
