// PLBLENDS: what it makes, how picks are taken, its dialog, its records in drawings of all formats.
#include <gmock/gmock.h>

#include <fstream>

#include "assoc/blend/blend_build.h"
#include "assoc/spacing_graph.h"
#include "core/app_names.h"
#include "core/appending.h"
#include "support/blends.h"

using namespace corvane;
using support::BlendDrawing;
using support::copiesOf;
using testing::HasSubstr;

namespace {

BlendRecord recordOf(AcDbObjectId reference) { return ReadBlend(reference).value_or(BlendRecord()); }

void setXData(AcDbObjectId id, std::initializer_list<std::pair<int, std::wstring>> groups) {
    acdbRegApp(RegisteredAppNames::kBlend);
    resbuf head;
    resbuf* last = &head;
    last = last->rbnext = acutNewRb(1001);
    acutNewString(RegisteredAppNames::kBlend, last->resval.rstring);
    for (const auto& [code, value] : groups) {
        last = last->rbnext = acutNewRb(code);
        if (code == 1070) last->resval.rint = short(std::stoi(value));
        if (code == 1040) last->resval.rreal = std::stod(value);
        if (code == 1000) acutNewString(value.c_str(), last->resval.rstring);
    }
    AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite)->setXData(head.rbnext);
    acutRelRb(head.rbnext);
}

} // namespace

TEST(Blend, SpreadsCopiesEvenlyBetweenTwoLines) {
    BlendDrawing drawing;
    const auto copies = copiesOf(drawing.blendTwoLines(L"2"));
    ASSERT_EQ(2u, copies.size());
    for (size_t k = 0; k < 2; ++k) {
        ASSERT_EQ(36u, copies[k].size()) << "SURFTAB1 is 6";
        for (size_t i = 0; i < 36; ++i)
            EXPECT_LT(copies[k][i].distanceTo({60.0 * double(i) / 35, 10.0 * double(k + 1), 0}), 1e-9)
                << k << ", " << i;
    }
    EXPECT_EQ(3u, drawing.entities().size());
    EXPECT_FALSE(drawing.ranDry || drawing.outcome.leftOver);
}

TEST(Blend, AccelerationBringsCopiesNearerToTheFirstCurve) {
    BlendDrawing drawing;
    const auto copies = copiesOf(drawing.blendTwoLines(L"1", L"999"));
    ASSERT_EQ(1u, copies.size());
    EXPECT_NEAR(30 * 0.125, copies[0].front().y, 1e-9) << "counts as 100: t cubed";
}

TEST(Blend, EnterTakesSixteenCopiesAndNumbersOutsideAreAskedAgain) {
    BlendDrawing drawing;
    drawing.addTwoLines();
    drawing.run(L"PLBLENDS\n10,0\n10,30\n\n\n\n");
    EXPECT_EQ(16u, copiesOf(drawing.blend()).size());
    drawing.run(L"PLBLENDS\n10,0\n10,30\n\n101\n100\n0\n");
    EXPECT_EQ(100u, copiesOf(drawing.blend()).size());
}

TEST(Blend, CurvesRunFromTheirPicks) {
    // The second line is drawn from the right; picked on the left it is turned, picked on the right the
    // copies cross.
    for (const bool left : {true, false}) {
        BlendDrawing drawing;
        drawing.addLine(0, 0, 60, 0);
        drawing.addLine(60, 30, 0, 30);
        drawing.run(std::wstring(L"PLBLENDS\n10,0\n") + (left ? L"10,30" : L"50,30") + L"\n\n1\n0\n");
        const auto copies = copiesOf(drawing.blend());
        const BlendRecord record = recordOf(drawing.blend());
        EXPECT_EQ(left, record.reversed2);
        EXPECT_TRUE(record.hasAnchors);
        EXPECT_EQ(AcGePoint3d(left ? 0 : 60, 30, 0), record.anchor2);
        // Crossing lines meet in one point half-way: such a copy is left out.
        ASSERT_EQ(left ? 1u : 0u, copies.size());
        if (left) {
            EXPECT_LT(copies[0].front().distanceTo({0, 15, 0}), 1e-9);
        }
    }
}

TEST(Blend, AGuideBendsTheWayOfTheStarts) {
    BlendDrawing drawing;
    drawing.addTwoLines();
    // From the start of the one to the start of the other by the left; drawn upward, and downward.
    for (const bool upward : {true, false}) {
        AcGePoint3dArray points;
        for (const AcGePoint3d& p :
             {AcGePoint3d(0, 0, 0), AcGePoint3d(-20, 0, 0), AcGePoint3d(-20, 30, 0), AcGePoint3d(0, 30, 0)})
            points.append(p);
        if (!upward) std::reverse(points.begin(), points.end());
        const AcDbObjectId guide = drawing.add3dPolyline(points);
        drawing.run(L"PLBLENDS\n10,0\n10,30\n-20,15\n\n1\n0\n");
        const auto copies = copiesOf(drawing.blend());
        ASSERT_EQ(1u, copies.size());
        EXPECT_LT(copies[0].front().distanceTo({-20, 15, 0}), 1e-9) << "the guide's middle";
        EXPECT_LT(copies[0].back().distanceTo({60, 15, 0}), 1e-9);
        // In between the pull fades: at a third of the way, two thirds of it.
        EXPECT_NEAR(60.0 / 35 * 14 - 20 * (1 - 14.0 / 35), copies[0][14].x, 1e-9);
        EXPECT_EQ(guide, recordOf(drawing.blend()).guide1);
        AcDbObjectPointer<AcDbEntity>(guide, AcDb::kForWrite)->erase();
    }
}

TEST(Blend, AGuideThatIsTooShortIsNoGuide) {
    BlendDrawing drawing;
    drawing.addTwoLines();
    drawing.addLine(-5, 15, -5.00005, 15);
    drawing.run(L"PLBLENDS\n10,0\n10,30\n-5,15\n\n1\n0\n");
    const auto copies = copiesOf(drawing.blend());
    ASSERT_EQ(1u, copies.size());
    EXPECT_LT(copies[0].front().distanceTo({0, 15, 0}), 1e-9);
}

TEST(Blend, ColoursGoFromTheOneToTheOther) {
    BlendDrawing drawing;
    drawing.addTwoLines();
    AcCmColor red, other;
    red.setColorIndex(1), other.setRGB(0, 100, 7);
    AcDbObjectPointer<AcDbEntity>(drawing.first, AcDb::kForWrite)->setColor(red);
    AcDbObjectPointer<AcDbEntity>(drawing.second, AcDb::kForWrite)->setColor(other);
    BlendRecord record;
    record.family.count = 2;
    record.curve1 = drawing.first, record.curve2 = drawing.second;
    const auto mixed = ComputeBlend(record);
    ASSERT_TRUE(mixed);
    EXPECT_EQ(0xAA2102u, mixed->colors[0].rgb()) << "170, 33.3, 2.3";
    EXPECT_EQ(0x554204u, mixed->colors[1].rgb()) << "85, 66.7, 4.7";
    record.curve2 = record.curve1;
    const auto same = ComputeBlend(record);
    ASSERT_TRUE(same);
    EXPECT_EQ(red, same->colors[0]) << "the colour itself, not its components";
}

TEST(Blend, SamplesFollowSurftab1) {
    struct Row {
        int surftab1, samples;
    };
    for (const Row& row : {Row{6, 36}, Row{1, 6}, Row{0, 36}, Row{-3, 36}, Row{36, 216}, Row{32766, 12000}})
        EXPECT_EQ(row.samples, BlendSamples(row.surftab1)) << row.surftab1;
}

TEST(Blend, WrongPicksAreToldAndNothingIsMade) {
    struct Row {
        std::wstring answers;
        const char* message;
    };
    BlendDrawing drawing;
    drawing.addTwoLines();
    drawing.addLine(100, 0, 100.00001, 0);
    drawing.run(L"TEXT\n0,60\n8\n0\nword\n\n");
    const std::wstring word = L"(handent \"" + drawing.entities().back().handle().ascii() + L"\")\n";
    AcDbBlockTableRecord* record = nullptr;
    AcDbObjectId plain;
    ASSERT_TRUE(MakeAnonymousBlock(&drawing.database(), record, plain));
    record->close();
    const AcDbObjectId other = drawing.add(std::make_unique<AcDbBlockReference>(AcGePoint3d(), plain));
    const std::wstring otherPick = L"(handent \"" + other.handle().ascii() + L"\")";
    const std::string before = drawing.bytes();
    const Row rows[] = {
        {L"500,500\n", "未选中。"},
        {word, "错误：选中的不是曲线。"},
        {otherPick + L"\n", "选择错误：不是本命令生成的匿名块。"},
        {L"10,0\n500,500\n", "未选中。"},
        {L"10,0\n" + word, "错误：选中的不是曲线。"},
        {L"10,0\n20,0\n", "选择错误。"},
        {L"10,0\n100,0\n\n1\n0\n", "创建融合曲线失败：曲线太短或没有端点。"},
    };
    for (const Row& row : rows) {
        EXPECT_THAT(drawing.run(L"PLBLENDS\n" + row.answers), HasSubstr(row.message));
        EXPECT_FALSE(drawing.outcome.leftOver) << row.message;
        EXPECT_TRUE(before == drawing.bytes()) << row.message;
    }
}

TEST(Blend, ACurveOfABlendPickedInsideItsBlockMeansTheBlend) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    AcDbObjectPointer<AcDbBlockReference> opened(blend, AcDb::kForRead);
    AcDbObjectPointer<AcDbBlockTableRecord> block(opened->blockTableRecord(), AcDb::kForRead);
    const AcDbObjectId inside = block->entities()[0];
    opened.close(), block.close();
    EXPECT_EQ(blend, FindBlend(inside, {500, 500, 0}));
    // A second reference far away takes the picks that lie on it.
    drawing.run(L"COPY\n(handent \"" + blend.handle().ascii() + L"\")\n\n0,0\n1000,0\n\n");
    const AcDbObjectId copy = drawing.blend();
    ASSERT_NE(blend, copy);
    EXPECT_EQ(copy, FindBlend(inside, {1030, 10, 77}));
    EXPECT_EQ(blend, FindBlend(inside, {30, 10, 0}));
    EXPECT_TRUE(FindBlend(drawing.first, {10, 0, 0}).isNull());
}

TEST(BlendDialog, EditsTheBlendThatWasPicked) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    const std::string before = drawing.bytes();
    const std::string transcript = drawing.run(L"PLBLENDS\n30,10\n?\n1003=线性\n\"数量\"=4\n"
                                               L"drag 1004 0,0 0,0.2\ndrag 1004 1,1 1,0.6\nOK\n");
    EXPECT_THAT(transcript, HasSubstr("编辑渐变"));
    EXPECT_THAT(transcript, HasSubstr("= 加速度  (0 线性, 1 加速度, 2 正弦, 3 平滑, 4 贝塞尔)"));
    EXPECT_THAT(transcript, HasSubstr("drawn    = 0.5,0.5"));
    const BlendRecord record = recordOf(blend);
    EXPECT_EQ(4, record.family.count);
    EXPECT_EQ(kLinearSpacing, record.family.spacing.kind);
    const double a = record.family.spacing.d[0], b = record.family.spacing.d[5];
    EXPECT_NEAR(0.2, a, 0.01);
    EXPECT_NEAR(0.6, b, 0.01);
    const auto copies = copiesOf(blend);
    ASSERT_EQ(4u, copies.size());
    for (size_t k = 0; k < 4; ++k)
        EXPECT_NEAR(30 * (a + (b - a) * double(k + 1) / 5), copies[k][7].y, 0.003) << "stored to four digits";
    drawing.run(L"U\n");
    EXPECT_TRUE(before == drawing.bytes()) << "one command, one step";
}

TEST(BlendDialog, CancelTakesAllBack) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines(L"1");
    const auto before = copiesOf(blend);
    const BlendRecord record = recordOf(blend);
    drawing.run(L"PLBLENDS\n30,15\n1003=4\ndrag 1004 0.3333,0 0.3,0.9\n1001=9\nCANCEL\n");
    EXPECT_EQ(record, recordOf(blend));
    EXPECT_EQ(before, copiesOf(blend));
    // The changes did reach the drawing in between: the first copy was replaced, more than once.
    AcDbObjectPointer<AcDbBlockReference> opened(blend, AcDb::kForRead);
    AcDbObjectPointer<AcDbBlockTableRecord> block(opened->blockTableRecord(), AcDb::kForRead);
    EXPECT_EQ(4u, block->entities().size()) << "the first, the kind's, the drag's, and that of Cancel";
}

TEST(BlendDialog, RefusesCountsOutsideOneToAHundred) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    const std::string transcript = drawing.run(L"PLBLENDS\n30,10\n1001=0\nOK\n1001=101\nOK\n1001=100\nOK\n");
    EXPECT_THAT(transcript, HasSubstr("[提示] 数量必须在 1~100。"));
    EXPECT_EQ(100u, copiesOf(blend).size());
    EXPECT_FALSE(drawing.outcome.leftOver);
}

TEST(BlendDialog, TheGraphAnswersItsMessages) {
    BlendDrawing drawing;
    CopyFamily last;
    class Dialog : public CSpacingDialog {
    public:
        using CSpacingDialog::CSpacingDialog;
        bool open() {
            host::DialogTemplate made;
            made.rect = CRect(0, 0, 200, 200);
            made.controls = {
                {L"Edit", L"", kCountEdit, WS_CHILD | WS_VISIBLE, 0, CRect(0, 0, 40, 12)},
                {L"ComboBox", L"", kKindBox, WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, 0,
                 CRect(50, 0, 100, 50)},
                {L"CVN_BLEND_GRAPH", L"", kGraph, WS_CHILD | WS_VISIBLE, 0, CRect(0, 20, 150, 170)}};
            return CreateIndirect(&made) && (ShowWindow(SW_SHOW), true);
        }
    };
    Dialog dialog({L"a", L"b", L"c", L"CVN_BLEND_GRAPH"}, {}, 0b10010,
                  [&](const CopyFamily& now) { last = now; });
    ASSERT_TRUE(dialog.open());
    EXPECT_EQ(2, dialog.SendDlgItemMessage(CSpacingDialog::kKindBox, CB_GETCOUNT)) << "two kinds are let in";
    const auto tell = [&](UINT message, WPARAM w = 0, LPARAM l = 0) {
        return dialog.SendDlgItemMessage(CSpacingDialog::kGraph, message, w, l);
    };
    tell(1225, WPARAM(-40));
    tell(1227, 4);
    const double in[6] = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6};
    double out[6] = {};
    tell(1229, 0, reinterpret_cast<LPARAM>(in));
    tell(1230, 0, reinterpret_cast<LPARAM>(out));
    EXPECT_EQ(-40, int(tell(1226)));
    EXPECT_EQ(4, tell(1228));
    EXPECT_THAT(out, testing::ElementsAreArray(in));
    EXPECT_EQ(0, tell(1230)) << "nowhere to put them";
    dialog.SendMessage(33299);
    EXPECT_EQ((SpacingFunction{4, -40, {0.1, 0.2, 0.3, 0.4, 0.5, 0.6}}), last.spacing);
}

TEST(BlendRecord, ComesBackAsItWasWritten) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    BlendRecord record = recordOf(blend);
    record.family = {77, {kBezierSpacing, -35, {0.1, 0.25, 0.3, 0.4, 0.5, 1}}};
    record.reversed1 = true;
    record.anchor1.set(1.0 / 3, -2e6, 1e-9);
    record.guide2 = drawing.second, record.hasGuide2 = true;
    ASSERT_EQ(Acad::eOk, WriteBlend(blend, record));
    EXPECT_EQ(record, recordOf(blend));
    const support::Reopened reopened(drawing.bytes());
    const BlendRecord read = recordOf(reopened.blend());
    EXPECT_EQ(record.family, read.family);
    EXPECT_EQ(record.anchor1, read.anchor1);
    EXPECT_EQ(reopened.same(drawing.second), read.guide2);
    EXPECT_FALSE(read.hasGuide1);
}

TEST(BlendRecord, OlderFormatsAreRead) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    const std::wstring a = drawing.first.handle().ascii(), b = drawing.second.handle().ascii();
    const std::pair<int, std::wstring> first{1000, a}, second{1000, b}, none{1000, L""};
    setXData(blend, {{1070, L"1"},
                     {1070, L"9"},
                     {1070, L"-20"},
                     {1070, L"4"},
                     {1070, L"1000"},
                     {1070, L"2000"},
                     {1070, L"3000"},
                     {1070, L"4000"},
                     {1070, L"500"},
                     {1070, L"20000"},
                     first,
                     second,
                     none,
                     none});
    BlendRecord read = recordOf(blend);
    EXPECT_EQ((CopyFamily{9, {4, -20, {0.05, 0.1, 0.2, 0.3, 0.4, 1}}}), read.family);
    EXPECT_FALSE(read.reversed1 || read.reversed2 || read.hasAnchors || read.hasGuide1);
    // The second knows turned curves; this one ends before its values, which are the usual ones then.
    setXData(blend, {{1070, L"2"},
                     {1070, L"5"},
                     {1070, L"0"},
                     {1070, L"0"},
                     {1070, L"0"},
                     {1070, L"1"},
                     first,
                     second,
                     second,
                     {1000, L"FFFFF"}});
    read = recordOf(blend);
    EXPECT_TRUE(!read.reversed1 && read.reversed2 && !read.hasAnchors);
    EXPECT_EQ(FromStored(kUsualShares), read.family.spacing.d);
    EXPECT_TRUE(read.hasGuide1 && !read.hasGuide2) << "no object has that handle";
    // The third with its anchors.
    setXData(blend,
             {{1070, L"3"},   {1070, L"5"},   {1070, L"0"},   {1070, L"0"},   {1070, L"1"},   {1070, L"0"},
              {1070, L"1"},   {1070, L"0"},   {1070, L"0"},   {1070, L"0"},   {1070, L"0"},   {1070, L"0"},
              {1070, L"0"},   {1040, L"1.5"}, {1040, L"2.5"}, {1040, L"3.5"}, {1040, L"4.5"}, {1040, L"5.5"},
              {1040, L"6.5"}, first,          second});
    read = recordOf(blend);
    EXPECT_TRUE(read.reversed1 && read.hasAnchors);
    EXPECT_EQ(AcGePoint3d(4.5, 5.5, 6.5), read.anchor2);
}

TEST(BlendRecord, WhatIsNoneIsRefused) {
    BlendDrawing drawing;
    const AcDbObjectId blend = drawing.blendTwoLines();
    const std::pair<int, std::wstring> first{1000, drawing.first.handle().ascii()};
    const std::initializer_list<std::pair<int, std::wstring>> cases[] = {
        {{1070, L"4"}, first, first},
        {{1070, L"0"}, first, first},
        {first, {1070, L"3"}, first},
        {{1040, L"3"}, {1070, L"3"}, first, first},
        {{1070, L"3"}, first},
        {{1070, L"3"}, first, {1000, L""}},
        {{1070, L"3"}, first, {1000, L"nonsense"}},
    };
    for (const auto& groups : cases) {
        setXData(blend, groups);
        EXPECT_FALSE(ReadBlend(blend)) << groups.size();
    }
    EXPECT_FALSE(ReadBlend(drawing.first));
    EXPECT_FALSE(ReadBlend(AcDbObjectId()));
}
