// rndScatter1 on drawings.
#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "support/scatters.h"

using namespace corvane;
using namespace corvane::scatter;
using support::contentsOf;
using support::expectAt;
using support::middlesOf;
using support::paramsOf;
using support::ScatterDrawing;
using support::StandingClock;
using testing::HasSubstr;

namespace {

using Params = ScatterOnCurveParams;
constexpr const wchar_t* kCommand = L"rndScatter1";

std::vector<AcDbObjectId> twoLines(ScatterDrawing& drawing) {
    return {drawing.addLine({0, 0, 0}, {30, 0, 0}), drawing.addLine({100, 0, 4}, {100, 10, 4})};
}

} // namespace

TEST(ScatterOnCurves, EvenSpacingDividesTheWholeChain) {
    ScatterDrawing drawing;
    const auto lines = twoLines(drawing);
    const std::string before = drawing.bytes();
    drawing.scatter(kCommand, lines, L"F\n2\nY\nN\nN\n4\nN\n");
    EXPECT_FALSE(drawing.ranDry);
    const AcDbObjectId scatter = drawing.array();
    const auto squares = contentsOf<AcDbPolyline>(scatter);
    ASSERT_EQ(4u, squares.size());
    const auto middles = middlesOf(scatter);
    const AcGePoint3d expected[] = {{5, 0, 0}, {15, 0, 0}, {25, 0, 0}, {100, 5, 4}};
    for (size_t i = 0; i < 4; ++i) expectAt(expected[i], middles[i]);
    AcGePoint3d corner;
    for (const auto& [index, at] : {std::pair(0u, AcGePoint3d(99, 4, 4)),
                                    {1u, AcGePoint3d(101, 4, 4)},
                                    {2u, AcGePoint3d(101, 6, 4)},
                                    {3u, AcGePoint3d(99, 6, 4)}}) {
        squares[3]->getPointAt(index, corner);
        expectAt(at, corner);
    }
    EXPECT_TRUE(squares[3]->isClosed());
    drawing.run(L"U\n");
    EXPECT_EQ(before, drawing.bytes());
}

TEST(ScatterOnCurves, ASinglePatternStandsAtHalfTheLength) {
    ScatterDrawing drawing;
    drawing.scatter(kCommand, {drawing.addCircle({0, 0, 0}, 10)}, L"\n3\nY\nN\nN\n1\nN\n");
    const auto circles = contentsOf<AcDbCircle>(drawing.array());
    ASSERT_EQ(1u, circles.size());
    expectAt({-10, 0, 0}, circles[0]->center());
    EXPECT_DOUBLE_EQ(1.5, circles[0]->radius());
}

TEST(ScatterOnCurves, ABandIsFilledInSpaceWithSizesInTheirRange) {
    ScatterDrawing drawing;
    drawing.scatter(kCommand, {drawing.addLine({0, 0, 0}, {100, 0, 0})}, L"C\n2\nN\n5\nY\n2\n0.5\n1000\nN\n");
    const auto circles = contentsOf<AcDbCircle>(drawing.array());
    ASSERT_EQ(1000u, circles.size());
    double least = 9, most = 0;
    AcGeVector3d sum;
    double heights = 0;
    for (const auto& circle : circles) {
        const AcGePoint3d p = circle->center();
        EXPECT_LE(std::hypot(p.y, p.z), 5 + 1e-9);
        EXPECT_TRUE(p.x >= 0 && p.x <= 100);
        least = std::min(least, circle->radius());
        most = std::max(most, circle->radius());
        sum += p.asVector();
        heights += p.z * p.z;
    }
    EXPECT_TRUE(least >= 0.5 && least < 0.52 && most <= 2 && most > 1.98) << least << " " << most;
    EXPECT_NEAR(50, sum.x / 1000, 3);
    EXPECT_NEAR(25.0 / 4, heights / 1000, 1) << "a disc's mean square along an axis is r*r/4";
}

TEST(ScatterOnCurves, TemplatesTurnWithTheTangentAndSwayAboutIt) {
    ScatterDrawing drawing;
    const AcDbObjectId path = drawing.addCircle({0, 0, 0}, 50);
    const AcDbObjectId leaf = drawing.addEllipse({7, 300, 0}, {2, 0, 0}, 0.5);
    for (const double sway : {0.0, 20.0}) {
        drawing.run(L"rndScatter1\n" + drawing.selection({path}) + L"S\n" + drawing.selection({leaf}) +
                    L"Y\n" + std::to_wstring(sway) + L"\nY\nN\nY\n200\nN\n");
        const auto leaves = contentsOf<AcDbEllipse>(drawing.arrays().back());
        ASSERT_EQ(200u, leaves.size());
        double most = 0;
        for (const auto& one : leaves) {
            const AcGePoint3d p = one->center();
            EXPECT_NEAR(50, std::hypot(p.x, p.y), 1e-6);
            const AcGeVector3d tangent = AcGeVector3d(-p.y, p.x, 0).normal(),
                               along = one->majorAxis().normal();
            most = std::max(most, std::acos(std::clamp(std::abs(tangent.dotProduct(along)), 0.0, 1.0)));
        }
        const double bound = sway * std::numbers::pi / 180;
        EXPECT_LE(most, bound + 1e-6);
        EXPECT_GE(most, bound * 0.9);
    }
}

TEST(ScatterOnCurves, NoTwoPatternsTouchOnceOverlapsAreDeleted) {
    ScatterDrawing drawing;
    drawing.scatter(kCommand, {drawing.addLine({0, 0, 0}, {60, 0, 0})}, L"C\n2\nY\nY\n\n\nY\n300\nY\n");
    const auto circles = contentsOf<AcDbCircle>(drawing.array());
    EXPECT_GT(circles.size(), 5u);
    EXPECT_LT(circles.size(), 60u);
    for (size_t i = 0; i < circles.size(); ++i)
        for (size_t j = 0; j < i; ++j)
            EXPECT_GE(circles[i]->center().distanceTo(circles[j]->center()),
                      circles[i]->radius() + circles[j]->radius() + 0.001);
}

TEST(ScatterOnCurves, ArrangementsComeAgainOnlyUnderTheSameClockAndTicks) {
    const auto arrangement = [](std::uint32_t ticks) {
        const StandingClock clock(ticks);
        ScatterDrawing drawing;
        drawing.scatter(kCommand, twoLines(drawing), L"C\n2\nN\n5\n\n\n\n20\nN\n");
        return middlesOf(drawing.array());
    };
    const auto first = arrangement(5), again = arrangement(5), later = arrangement(6);
    ASSERT_EQ(20u, first.size());
    for (size_t i = 0; i < first.size(); ++i) expectAt(first[i], again[i]);
    EXPECT_GT(first[0].distanceTo(later[0]), 1e-6);
}

TEST(ScatterOnCurves, TheParametersStandOnTheReferenceInTheirOrder) {
    const StandingClock clock;
    ScatterDrawing drawing;
    const auto lines = twoLines(drawing);
    drawing.scatter(kCommand, lines, L"C\n2\nN\n5\nY\n.5\n2\n20\nY\n");
    AcDbObjectPointer<AcDbEntity> reference(drawing.array(), AcDb::kForRead);
    const host::ResbufChain chain(reference->xData(L"CVN_RNDSCATTER1"));
    std::wstring text;
    for (const resbuf* group = chain.get(); group; group = group->rbnext) {
        text += std::to_wstring(group->restype) + L":";
        if (group->restype < 1010) text += group->resval.rstring;
        if (group->restype == 1040) text += std::to_wstring(group->resval.rreal).substr(0, 3);
        if (group->restype == 1070) text += std::to_wstring(group->resval.rint);
        if (group->restype == 1071) text += std::to_wstring(group->resval.rlong);
        text += L" ";
    }
    EXPECT_EQ(L"1001:CVN_RNDSCATTER1 1000:VER 1070:1 1000:SEED 1071:1700000000 1000:PTYPE 1070:0 1000:BASE "
              L"1040:2.0 1000:ONCURVE 1070:0 1000:WIDTH 1040:5.0 1000:SIZERND 1070:1 1000:SCMIN 1040:0.5 "
              L"1000:SCMAX 1040:2.0 1000:SPACERND 1070:1 1000:COUNT 1071:20 1000:DELOVL 1070:1 1000:ALIGNTAN "
              L"1070:0 1000:TANJITTER 1040:0.0 1000:CURVES 1071:2 1000:" +
                  lines[0].handle().ascii() + L" 1000:" + lines[1].handle().ascii() + L" 1000:TEMPLS 1071:0 ",
              text);
}

TEST(ScatterOnCurves, AnswersOutOfRangeAreToldAndAskedAgain) {
    ScatterDrawing drawing;
    const std::string transcript =
        drawing.scatter(kCommand, twoLines(drawing), L"C\n0\n2\nN\n-1\n5\nY\n101\n3\n0.0001\n\n0\n12\nN\n");
    EXPECT_THAT(transcript, HasSubstr("距离必须大于0。"));
    EXPECT_THAT(transcript, HasSubstr("数值范围必须在 0.001 ~ 100.000 之间。"));
    EXPECT_THAT(transcript, HasSubstr("数值必须大于0。"));
    EXPECT_EQ(12u, contentsOf<AcDbCircle>(drawing.array()).size());
    EXPECT_DOUBLE_EQ(0.3, paramsOf<Params>(drawing.array()).scaleMin);
}

TEST(ScatterOnCurves, NothingIsMadeOfNothing) {
    ScatterDrawing drawing;
    const AcDbObjectId text = drawing.addText(L"A");
    const AcDbObjectId dot = drawing.addLine({1, 1, 0}, {1, 1, 0}), line = drawing.addLine({}, {9, 0, 0});
    const AcDbObjectId block = drawing.addBlock(L"B", new AcDbLine({0, 0, 0}, {1, 0, 0}), {50, 0, 0});
    const std::string before = drawing.bytes();
    EXPECT_THAT(drawing.run(L"rndScatter1\n\n"), HasSubstr("未选择有效曲线或散布块。"));
    EXPECT_THAT(drawing.scatter(kCommand, {block}, L""), HasSubstr("未选择有效曲线或散布块。"));
    EXPECT_THAT(drawing.scatter(kCommand, {text}, L""), HasSubstr("未选择有效曲线或散布块。"));
    EXPECT_THAT(drawing.scatter(kCommand, {dot}, L"\n1\nN\n1\n\n\n\n\n\n"), HasSubstr("散布生成失败。"));
    EXPECT_THAT(drawing.scatter(kCommand, {line}, L"S\n\n"), HasSubstr("未选择有效模板物体。"));
    drawing.scatter(kCommand, {line}, L"C\n^C\n");
    drawing.scatter(kCommand, {line}, L"C\n1\nN\n^C\n");
    EXPECT_EQ(before, drawing.bytes());
}

TEST(ScatterOnCurves, MoreSourcesThanAReferenceCanKeepAreTold) {
    ScatterDrawing drawing;
    for (int i = 0; i < 3000; ++i) drawing.addLine({0, double(i), 0}, {1, double(i), 0});
    const std::string transcript = drawing.run(L"rndScatter1\nall\n\nC\n1\nY\nN\nN\n3000\nN\n");
    EXPECT_THAT(transcript, HasSubstr("参数无法保存在散布块中"));
    EXPECT_EQ(3000u, contentsOf<AcDbCircle>(drawing.array()).size());
    EXPECT_FALSE(ReadParams<Params>(drawing.array()));
}
