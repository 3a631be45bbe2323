// AAC by script: what is asked, where the copies stand, what the drawing keeps. Editing and batches are in
// array_editing_tests.cpp.
#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "support/arrays.h"

using namespace corvane;
using support::ArrayDrawing;
using support::contentsOf;
using support::expectAt;
using support::handleAnswer;
using support::middlesOf;
using support::recordOf;
using support::runArray;
using testing::HasSubstr;

namespace {

constexpr double kPi = std::numbers::pi;

} // namespace

TEST(ArrayAlongCurve, StandsInABlockThatKnowsWhatItWasMadeOf) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addPolyline({{10, 0}, {110, 0}, {110, 60}});
    const AcDbObjectId object = drawing.addLine({-3, 40, 0}, {3, 40, 0});
    const std::string before = drawing.bytes();
    const std::string transcript = runArray(drawing, path, object, L"0,0\n1090=5\n1089=1\n53002=2");
    EXPECT_THAT(transcript, HasSubstr("请选择起点端(靠近端点处点一下，回车=起点)>>"));
    const AcDbObjectId array = drawing.array();
    const std::vector<AcGePoint3d> expected{{10, 0, 0}, {50, 0, 0}, {90, 0, 0}, {110, 20, 0}, {110, 60, 0}};
    const auto stand = middlesOf(array);
    ASSERT_EQ(5u, stand.size());
    for (size_t i = 0; i < 5; ++i) expectAt(expected[i], stand[i]);
    const auto lines = contentsOf<AcDbLine>(array);
    EXPECT_NEAR(0, lines[1]->startPoint().y, 1e-9);
    EXPECT_NEAR(110, lines[3]->startPoint().x, 1e-9) << "turned to the path";
    expectAt({10, 0, 0}, AcDbObjectPointer<AcDbBlockReference>(array, AcDb::kForRead)->position());

    const ArrayRecord record = recordOf(array);
    EXPECT_EQ(path.handle().ascii(), record.path);
    EXPECT_EQ(object.handle().ascii(), record.prototype);
    EXPECT_TRUE(record.name.starts_with(L"AAC_") && record.name.size() == 40);
    EXPECT_EQ(5, record.params.settings.count);
    EXPECT_EQ(8, record.params.settings.spacing) << "a twentieth of the length";
    EXPECT_EQ(2, record.params.settings.gain);
    EXPECT_EQ(3u, drawing.entities().size()) << "the preview is gone";
    drawing.run(L"U\n");
    EXPECT_EQ(before, drawing.bytes());
}

TEST(ArrayAlongCurve, SizesFollowTheGraph) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {100, 0, 0});
    runArray(drawing, path, drawing.addCircle({0, 50, 0}, 2),
             L"\n1090=3\n1089=1\ndrag 53001 0,100 0,200\ndrag 53001 1,100 1,50");
    const VariationCurve sizes = recordOf(drawing.array()).params.settings.sizes;
    EXPECT_NEAR(200, sizes.start, 1);
    EXPECT_NEAR(50, sizes.end, 1);
    const auto circles = contentsOf<AcDbCircle>(drawing.array());
    ASSERT_EQ(3u, circles.size());
    EXPECT_NEAR(2 * sizes.start / 100, circles[0]->radius(), 1e-9);
    EXPECT_NEAR((sizes.start + sizes.end) / 100, circles[1]->radius(), 1e-9);
    EXPECT_NEAR(2 * sizes.end / 100, circles[2]->radius(), 1e-9);
}

TEST(ArrayAlongCurve, RingsBeginAtTheirRayAndRunAsAsked) {
    const struct {
        bool clockwise;
        const wchar_t *ray, *direction;
        AcGePoint3d first, second; // of four
        AcGeVector3d travel;       // at the first
        int kept;
    } rows[] = {
        {false, L"5,30", L"CCW", {5, 10, 0}, {0, 5, 0}, {-1, 0, 0}, 1},
        {false, L"5,30", L"CW", {5, 10, 0}, {10, 5, 0}, {1, 0, 0}, -1},
        {true, L"5,30", L"CW", {5, 10, 0}, {10, 5, 0}, {1, 0, 0}, 1},
        {true, L"5,30", L"CCW", {5, 10, 0}, {0, 5, 0}, {-1, 0, 0}, -1},
        // Enter goes with the curve, whatever is offered.
        {true, L"5,30", L"", {5, 10, 0}, {10, 5, 0}, {1, 0, 0}, 1},
        {false, L"", L"", {10, 5, 0}, {5, 10, 0}, {0, 1, 0}, 1},
    };
    for (const auto& row : rows) {
        ArrayDrawing drawing;
        std::vector<AcGePoint2d> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
        if (row.clockwise) std::reverse(square.begin(), square.end());
        const AcDbObjectId path = drawing.addPolyline(square, true);
        runArray(drawing, path, drawing.addLine({89, 90, 0}, {91, 90, 0}),
                 std::wstring(row.ray) + L"\n" + row.direction + L"\n1090=4");
        const auto stand = middlesOf(drawing.array());
        ASSERT_EQ(4u, stand.size());
        expectAt(row.first, stand[0], host::utf8(row.direction));
        expectAt(row.second, stand[1], host::utf8(row.direction));
        const auto lines = contentsOf<AcDbLine>(drawing.array());
        ASSERT_EQ(4u, lines.size());
        expectAt(stand[0] + row.travel, lines[0]->endPoint(), "copies look where the array runs");
        EXPECT_EQ(row.kept, recordOf(drawing.array()).params.start.direction);
        EXPECT_NEAR(*row.ray ? kPi / 2 : 0, recordOf(drawing.array()).params.start.ray, 1e-9);
    }
}

TEST(ArrayAlongCurve, OpenPathsBeginAtTheEndThatIsNearer) {
    for (const bool far : {false, true}) {
        ArrayDrawing drawing;
        const AcDbObjectId path = drawing.addLine({0, 0, 0}, {40, 0, 0});
        runArray(drawing, path, drawing.addLine({0, 50, 0}, {6, 50, 0}),
                 far ? L"33,5\n1090=2" : L"7,5\n1090=2");
        const auto lines = contentsOf<AcDbLine>(drawing.array());
        ASSERT_EQ(2u, lines.size());
        expectAt({far ? 37.0 : -3, 0, 0}, lines[0]->startPoint());
        expectAt({far ? 43.0 : 3, 0, 0}, lines[0]->endPoint(), "the tangent stays the curve's");
        EXPECT_EQ(far, recordOf(drawing.array()).params.start.fromEnd);
    }
}

TEST(ArrayAlongCurve, PromptsTakePointsOfTheUcs) {
    ArrayDrawing drawing;
    const AcDbObjectId ring = drawing.addCircle({100, 0, 0}, 10);
    drawing.run(L"UCS\nZ\n90\n");
    // Straight up in the UCS is to the left in the world.
    runArray(drawing, ring, drawing.addCircle({0, 0, 0}, 1), L"0,-50\n\n1090=2");
    expectAt({90, 0, 0}, middlesOf(drawing.array())[0]);
}

TEST(ArrayAlongCurve, CurvesRememberThePathAndOtherObjectsDoNot) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {30, 40, 0});
    runArray(drawing, path, drawing.addCircle({0, 90, 0}, 1), L"\n1090=2");
    for (const auto& circle : contentsOf<AcDbCircle>(drawing.array())) {
        const auto direction = RememberedDirection(*circle);
        ASSERT_TRUE(direction);
        EXPECT_NEAR(0, (*direction - AcGeVector3d(0.6, 0.8, 0)).length(), 1e-12);
    }
    ArrayDrawing other;
    const AcDbObjectId line = other.addLine({0, 0, 0}, {30, 40, 0});
    const AcDbObjectId text = other.add(std::make_unique<AcDbText>(AcGePoint3d(0, 90, 0), L"A"));
    runArray(other, line, text, L"\n1090=2");
    EXPECT_EQ(2u, contentsOf<AcDbText>(other.array()).size());
    EXPECT_EQ(std::string::npos, other.bytes().find("SCVN_WoldSpaceDirection"));
}

// Each object's own normal comes to lie along a path that climbs.
TEST(ArrayAlongCurve, ObjectsStandAcrossPathsInSpace) {
    const AcGePoint3dArray climbing(std::vector<AcGePoint3d>{{0, 0, 0}, {30, 0, 40}, {30, 0, 90}});
    const auto normalOf = [](const AcDbEntity& entity) {
        if (const auto* circle = AcDbCircle::cast(&entity)) return circle->normal();
        if (const auto* text = AcDbText::cast(&entity)) return text->normal();
        const auto* reference = AcDbBlockReference::cast(&entity);
        return reference ? reference->normal() : AcGeVector3d();
    };
    for (int kind = 0; kind < 3; ++kind) {
        ArrayDrawing drawing;
        const AcDbObjectId path = drawing.add3dPolyline(climbing);
        AcDbObjectId object;
        if (kind == 0)
            object = drawing.add(
                std::make_unique<AcDbCircle>(AcGePoint3d(9, 9, 9), AcGeVector3d(1, 1, 1).normal(), 2));
        if (kind == 1)
            object =
                drawing.add(std::make_unique<AcDbText>(AcGePoint3d(9, 9, 9), L"A", AcDbObjectId(), 2, 0.5));
        if (kind == 2)
            object = drawing.addBlock(L"POST", new AcDbLine(AcGePoint3d(), AcGePoint3d(1, 2, 0)), {9, 9, 9});
        runArray(drawing, path, object, L"\n1090=3\n1086=on");
        const auto copies = contentsOf<AcDbEntity>(drawing.array());
        ASSERT_EQ(3u, copies.size()) << kind;
        EXPECT_NEAR(0, (normalOf(*copies[0]) - AcGeVector3d(0.6, 0, 0.8)).length(), 1e-9) << kind;
        EXPECT_NEAR(0, (normalOf(*copies[2]) - AcGeVector3d::kZAxis).length(), 1e-9) << kind;
        EXPECT_TRUE(recordOf(drawing.array()).params.acrossPath);
    }
}

TEST(ArrayAlongCurve, TwistsGrowFromStartToEnd) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {0, 0, 30});
    const AcDbObjectId post =
        drawing.addBlock(L"POST", new AcDbLine(AcGePoint3d(), AcGePoint3d(1, 0, 0)), {});
    runArray(drawing, path, post, L"\n1090=3\n1086=on\n1092=30\n1091=90");
    const auto posts = contentsOf<AcDbBlockReference>(drawing.array());
    ASSERT_EQ(3u, posts.size());
    // On an upright path the X axis stands for no twist.
    for (size_t i = 0; i < 3; ++i) EXPECT_NEAR((30 + 30 * double(i)) * kPi / 180, posts[i]->rotation(), 1e-9);
}

TEST(ArrayAlongCurve, PathsThatRememberADirectionPutItFirst) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {30, 0, 0});
    const AcDbObjectId post =
        drawing.addBlock(L"POST", new AcDbLine(AcGePoint3d(), AcGePoint3d(1, 0, 0)), {});
    for (const bool remembers : {false, true}) {
        if (remembers) {
            acdbRegApp(RegisteredAppNames::kWorldDirection);
            AcDbObjectPointer<AcDbEntity> entity(path, AcDb::kForWrite);
            ASSERT_EQ(Acad::eOk, RememberDirection(*entity, {7, 0, 2}));
        }
        runArray(drawing, path, post, L"\n1090=2\n1086=on");
        const auto posts = contentsOf<AcDbBlockReference>(drawing.arrays().back());
        ASSERT_EQ(2u, posts.size());
        const AcGeVector3d x = posts[0]->blockTransform() * AcGeVector3d::kXAxis;
        const AcGeVector3d expected = remembers ? AcGeVector3d::kZAxis : AcGeVector3d::kYAxis;
        EXPECT_NEAR(0, (x - expected).length(), 1e-9) << remembers;
    }
}

TEST(ArrayAlongCurve, ObjectsWithoutAPlaneStayUpright) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {30, 0, 0});
    const AcDbObjectId bent = drawing.add3dPolyline(
        AcGePoint3dArray(std::vector<AcGePoint3d>{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1, 1, 5}}));
    const std::string transcript = runArray(drawing, path, bent, L"\n1086=on\n1092=5");
    EXPECT_THAT(transcript, HasSubstr("Control 1086 is disabled."));
    EXPECT_THAT(transcript, HasSubstr("Control 1092 is disabled."));
    EXPECT_FALSE(recordOf(drawing.array()).params.acrossPath);
}

TEST(ArrayAlongCurve, EndsSilentlyWhereThereIsNothingToDo) {
    ArrayDrawing drawing;
    const AcDbObjectId path = drawing.addLine({0, 0, 0}, {30, 0, 0});
    const AcDbObjectId ring = drawing.addCircle({60, 0, 0}, 5);
    const AcDbObjectId point = drawing.addLine({90, 0, 0}, {90, 0, 1e-7});
    const AcDbObjectId block = drawing.addBlock(L"B", new AcDbLine(AcGePoint3d(), AcGePoint3d(1, 0, 0)), {});
    const AcDbObjectId text = drawing.add(std::make_unique<AcDbText>(AcGePoint3d(0, 90, 0), L"A"));
    const size_t present = drawing.entities().size();
    const std::wstring aac = L"AAC\n", onPath = aac + handleAnswer(path) + L"\n" + handleAnswer(text) + L"\n";
    for (const std::wstring& script :
         {aac + L"\n", aac + L"^C", aac + L"500,500\n", aac + handleAnswer(text) + L"\n",
          aac + handleAnswer(block) + L"\n", aac + handleAnswer(path) + L"\n\n", onPath + L"^C",
          onPath + L"\nCANCEL\n", aac + handleAnswer(point) + L"\n" + handleAnswer(text) + L"\n\n",
          aac + handleAnswer(ring) + L"\n" + handleAnswer(text) + L"\n9,0\n^C"}) {
        const std::string transcript = drawing.run(script);
        EXPECT_EQ(present, drawing.entities().size()) << host::utf8(script);
        EXPECT_TRUE(drawing.outcome.strays.empty()) << host::utf8(script) << transcript;
        EXPECT_FALSE(drawing.ranDry) << host::utf8(script) << transcript;
    }
    // A script that ends inside the dialog or a pick of its own leaves nothing behind.
    for (const wchar_t* rest : {L"\n", L"\n1084!\n", L"\n1085!\n"}) {
        drawing.run(onPath + rest);
        EXPECT_EQ(present, drawing.entities().size()) << host::utf8(rest);
    }
}
