// The dialogs that edit scatters: what follows their controls, and what stays.
#include <gmock/gmock.h>

#include <cmath>

#include "core/editable_block.h"
#include "host/dxf/audit.h"
#include "host/ui/actions.h"
#include "scatter/random/edit_dialog.h"
#include "scatter/random/scatter_block.h"
#include "support/scatters.h"

using namespace corvane;
using namespace corvane::scatter;
using support::contentsOf;
using support::middlesOf;
using support::paramsOf;
using support::ScatterDrawing;
using testing::HasSubstr;

namespace {

// A scatter of 20 circles of diameter 2 about a line along X, within 5 of it.
class OnLine : public ScatterDrawing {
public:
    OnLine() {
        line = addLine({0, 0, 0}, {100, 0, 0});
        scatter(L"rndScatter1", {line}, L"C\n2\nN\n5\nN\n20\nN\n");
        made = array();
    }
    std::string edit(const std::wstring& actions) {
        return run(L"rndScatter1\n" + support::handleAnswer(made) + L"\n\n" + actions + L"\n");
    }
    ScatterOnCurveParams params() const { return paramsOf<ScatterOnCurveParams>(made); }
    AcDbObjectId block() const {
        AcDbObjectPointer<AcDbBlockReference> reference(made, AcDb::kForRead);
        return reference->blockTableRecord();
    }
    AcDbObjectId line, made;
};

} // namespace

TEST(ScatterEditing, EveryControlReachesTheScatter) {
    OnLine drawing;
    drawing.edit(L"1257=30\n1262=on\n1256=4\n1253=on\n1255=off\n1254=on\n1258=.5\nOK");
    EXPECT_TRUE(drawing.outcome.strays.empty());
    EXPECT_EQ(drawing.made, drawing.array());
    const auto params = drawing.params();
    EXPECT_EQ(30, params.count);
    EXPECT_EQ(PatternType::square, params.pattern);
    EXPECT_EQ(4, params.baseSize);
    EXPECT_EQ(0.5, params.scaleMax);
    EXPECT_TRUE(params.onCurve && !params.spacingRandom && params.sizeRandom);
    const auto middles = middlesOf(drawing.made);
    ASSERT_EQ(30u, middles.size());
    for (size_t i = 0; i < 30; ++i) support::expectAt({(double(i) + 0.5) * 100 / 30, 0, 0}, middles[i]);
    for (const auto& square : contentsOf<AcDbPolyline>(drawing.made)) {
        double area = 0;
        square->getArea(area);
        EXPECT_TRUE(area >= 1.2 * 1.2 - 1e-9 && area <= 4 + 1e-9) << area;
    }
    EXPECT_TRUE(host::audit(drawing.database()).empty());
}

TEST(ScatterEditing, ControlsAreEnabledWhereTheyCount) {
    OnLine drawing;
    const std::string transcript = drawing.edit(L"?\n1253=on\n1261=on\n?\nOK");
    EXPECT_THAT(transcript, HasSubstr("1256   edit    直径/边长 = 2.000000\n"));
    const auto second = transcript.substr(transcript.find("1261=on"));
    EXPECT_THAT(transcript, testing::ContainsRegex("1255 [^\n]*disabled"));
    EXPECT_THAT(transcript, testing::ContainsRegex("1258 [^\n]*disabled"));
    EXPECT_THAT(second, testing::ContainsRegex("1256 [^\n]*disabled"));
    EXPECT_THAT(second, testing::ContainsRegex("1259 [^\n]*disabled"));
    EXPECT_THAT(second, testing::Not(testing::ContainsRegex("1255 [^\n]*disabled")));
    EXPECT_EQ(PatternType::circle, drawing.params().pattern) << "without templates nothing is rebuilt";
}

TEST(ScatterEditing, ValuesThatDoNotServeArePassedOver) {
    OnLine drawing;
    const AcDbObjectId block = drawing.block();
    drawing.edit(L"1256=0\n1257=0\n1259=0\n1259=\n1256=\n1257=\nCANCEL");
    EXPECT_EQ(2, drawing.params().baseSize);
    EXPECT_EQ(20, drawing.params().count);
    EXPECT_NE(block, drawing.block()) << "leaving builds the scatter anew";
    EXPECT_EQ(20u, middlesOf(drawing.made).size());
    drawing.edit(L"1254=on\n1258=0.2\nOK");
    EXPECT_EQ(3, drawing.params().scaleMax) << "below the least scale";
    drawing.edit(L"1258=101\nOK");
    EXPECT_EQ(3, drawing.params().scaleMax);
}

TEST(ScatterEditing, AStoredWidthOfZeroStopsEveryRebuild) {
    OnLine drawing;
    auto params = drawing.params();
    params.width = 0;
    Encode(params).Write(drawing.made, ScatterOnCurveParams::kApplication);
    const AcDbObjectId block = drawing.block();
    drawing.edit(L"1257=30\nOK");
    EXPECT_EQ(block, drawing.block());
    drawing.edit(L"1259=3\nOK");
    EXPECT_NE(block, drawing.block());
}

TEST(ScatterEditing, CancelBringsBackTheParametersInANewArrangement) {
    OnLine drawing;
    const auto before = middlesOf(drawing.made);
    drawing.edit(L"1257=50\n1253=on\nCANCEL");
    const auto params = drawing.params();
    EXPECT_EQ(20, params.count);
    EXPECT_FALSE(params.onCurve);
    const auto after = middlesOf(drawing.made);
    ASSERT_EQ(before.size(), after.size());
}

TEST(ScatterEditing, TheSliderTurnsTheCountAndFollowsIt) {
    OnLine drawing;
    const std::string transcript = drawing.edit(L"?\n1263=60\n?\nOK");
    EXPECT_EQ(60, drawing.params().count);
    EXPECT_THAT(transcript, HasSubstr("= 60  (6 to 600)"));
    EXPECT_EQ(60u, middlesOf(drawing.made).size());
}

TEST(ScatterEditing, PatternsStayOnTheCurveWhereverTheReferenceWent) {
    OnLine drawing;
    {
        AcDbObjectPointer<AcDbBlockReference> reference(drawing.made, AcDb::kForWrite);
        reference->setPosition({500, 400, 30});
        reference->setRotation(0.7);
        reference->setScaleFactors({2, 2, 2});
    }
    drawing.edit(L"1253=on\n1255=off\n1257=4\nOK");
    const auto middles = middlesOf(drawing.made);
    ASSERT_EQ(4u, middles.size());
    for (size_t i = 0; i < 4; ++i) support::expectAt({12.5 + 25 * double(i), 0, 0}, middles[i]);
    EXPECT_NEAR(1, contentsOf<AcDbCircle>(drawing.made)[0]->radius(), 1e-9);
}

TEST(ScatterEditing, TemplatesAndCurvesAreReadAnew) {
    ScatterDrawing drawing;
    const AcDbObjectId first = drawing.addLine({0, 0, 0}, {10, 0, 0}),
                       second = drawing.addLine({0, 9, 0}, {10, 9, 0});
    const AcDbObjectId circle = drawing.addCircle({0, 80, 0}, 1), text = drawing.addText(L"AB");
    drawing.run(L"rndScatter1\n" + drawing.selection({first, second}) + L"S\n" +
                drawing.selection({circle, text}) + L"N\nY\nN\nY\n60\nN\n");
    const AcDbObjectId made = drawing.array();
    EXPECT_EQ(60u, contentsOf<AcDbText>(made).size() + contentsOf<AcDbCircle>(made).size());
    for (const auto& one : contentsOf<AcDbText>(made)) EXPECT_STREQ(L"AB", one->textStringConst());
    drawing.run(L"ERASE\n" + drawing.selection({text, second}));
    drawing.run(L"rndScatter1\n" + support::handleAnswer(made) + L"\n\nOK\n");
    EXPECT_EQ(60u, contentsOf<AcDbCircle>(made).size());
    for (const AcGePoint3d& p : middlesOf(made)) EXPECT_NEAR(0, p.y, 1e-9);
    const auto params = paramsOf<ScatterOnCurveParams>(made);
    EXPECT_EQ(std::vector<AcDbObjectId>{circle}, params.templates);
    EXPECT_EQ(std::vector<AcDbObjectId>{first}, params.sources);
}

TEST(ScatterEditing, RegionsAreRebuiltWithOverlapsAndKeepTheirClip) {
    ScatterDrawing drawing;
    const AcDbObjectId ring = drawing.addCircle({0, 0, 0}, 10);
    drawing.scatter(L"rndScatter2", {ring}, L"C\n4\nN\n200\nY\nY\n");
    const AcDbObjectId made = drawing.array();
    EXPECT_LT(middlesOf(made).size(), 60u);
    drawing.run(L"rndScatter2\n" + support::handleAnswer(made) + L"\n\n1246=150\n1250=on\nOK\n");
    EXPECT_TRUE(drawing.outcome.strays.empty());
    EXPECT_EQ(150u, contentsOf<AcDbPolyline>(made).size());
    AcDbObjectPointer<AcDbBlockReference> reference(made, AcDb::kForRead);
    EXPECT_FALSE(reference->extensionDictionary().isNull()) << "the clip";
    reference.close();
    // Each command edits its own scatters.
    EXPECT_THAT(drawing.run(L"rndScatter1\n" + support::handleAnswer(made) + L"\n\n"),
                HasSubstr("未选择有效曲线或散布块。"));
}

// A file may name a scatter among its own templates: each rebuild would hold all patterns of the one before.
TEST(ScatterEditing, AScatterIsNoTemplateOfItsOwn) {
    ScatterDrawing drawing;
    const AcDbObjectId ring = drawing.addCircle({0, 0, 0}, 10), small = drawing.addCircle({0, 80, 0}, 1);
    drawing.scatter(L"rndScatter2", {ring}, L"S\n" + drawing.selection({small}) + L"N\nN\n20\nN\nN\n");
    const AcDbObjectId made = drawing.array();
    auto params = paramsOf<ScatterInRegionParams>(made);
    params.templates.push_back(made);
    ASSERT_EQ(Acad::eOk, Encode(params).Write(made, ScatterInRegionParams::kApplication));
    drawing.run(L"rndScatter2\n" + support::handleAnswer(made) + L"\n\nOK\n");
    EXPECT_EQ(20u, contentsOf<AcDbCircle>(made).size());
    EXPECT_EQ(std::vector<AcDbObjectId>{small}, paramsOf<ScatterInRegionParams>(made).templates);
}

TEST(ScatterEditing, LockedScattersStayAsTheyAre) {
    OnLine drawing;
    drawing.run(L"LAYER\nLO\n0\n\n");
    const std::string before = drawing.bytes();
    EXPECT_THAT(drawing.edit(L""), HasSubstr("散布块位于锁定图层上"));
    EXPECT_EQ(before, drawing.bytes());
    // Curves on such layers are only looked at.
    drawing.scatter(L"rndScatter1", {drawing.line}, L"C\n2\nY\nN\nY\n20\nN\n");
    EXPECT_EQ(2u, drawing.arrays().size());
}

TEST(ScatterEditing, UndoTakesBackTheWholeSession) {
    OnLine drawing;
    const std::string before = drawing.bytes();
    drawing.edit(L"1257=30\n1257=40\n1262=on\nOK");
    EXPECT_NE(before, drawing.bytes());
    drawing.run(L"U\n");
    EXPECT_EQ(before, drawing.bytes());
}

TEST(ScatterParams, ComeBackFromTheDrawing) {
    OnLine drawing;
    ScatterInRegionParams params;
    params.seed = -5;
    params.pattern = PatternType::templates;
    params.baseSize = 0.1;
    params.sizeRandom = false;
    params.scaleMin = 0.25, params.scaleMax = 7;
    params.rotate = true, params.rotationRange = 33;
    params.alignTangent = true, params.tangentJitter = 12;
    params.count = 123456;
    params.sources = {drawing.line};
    params.templates = {drawing.addText(L"A"), drawing.line};
    Encode(params).Write(drawing.made, ScatterInRegionParams::kApplication);
    const auto read = paramsOf<ScatterInRegionParams>(drawing.made);
    params.templates.pop_back(); // a line is no template
    EXPECT_EQ(params.templates, read.templates);
    EXPECT_EQ(params.sources, read.sources);
    EXPECT_TRUE(read.pattern == params.pattern && read.seed == -5 && read.baseSize == 0.1 &&
                !read.sizeRandom && read.scaleMin == 0.25 && read.scaleMax == 7 && read.rotate &&
                read.rotationRange == 33 && read.alignTangent && read.tangentJitter == 12 &&
                read.count == 123456);
    // Other pattern types count as circles.
    KeyedXData other;
    other.AddShort(L"PTYPE", 9);
    other.Write(drawing.made, ScatterInRegionParams::kApplication);
    EXPECT_EQ(PatternType::circle, paramsOf<ScatterInRegionParams>(drawing.made).pattern);
}

TEST(Scatter, StopsWhenTheUserWantsItStopped) {
    OnLine drawing;
    auto params = drawing.params();
    params.count = 100000;
    EntityList made;
    int told = 0;
    EXPECT_FALSE(Generate(params, made, [&](double share) { return ++told, share < 0.2; }));
    EXPECT_LT(told, 40);
    const AcDbObjectId block = drawing.block();
    EXPECT_FALSE(RebuildScatter(drawing.made, params, [](double) { return false; }));
    EXPECT_EQ(block, drawing.block());
}
