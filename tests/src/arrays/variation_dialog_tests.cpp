// The graph control and the two curves of an array's dialog, by mouse and keys.
#include <gmock/gmock.h>

#include "arrays/variation/variation_dialog.h"
#include "core/dialog_language.h"
#include "support/dialogs.h"
#include "support/drawing.h"

using namespace corvane;

namespace {

class ArrayDialog : public CVariationDialog {
public:
    explicit ArrayDialog(const GraphTraits& traits = kOneCurveGraph, bool graph = true)
        : CVariationDialog(0, nullptr, traits), graph_(graph), id_(traits.id) {}
    bool open() {
        const support::TestTemplates templates;
        return Create(4002) && (ShowWindow(SW_SHOW), true);
    }
    HWND graph() const { return GetDlgItem(int(id_))->GetSafeHwnd(); }
    HWND gainEdit() const { return ::GetDlgItem(graph(), int(id_) + 1); }
    GraphPlot plot() const {
        CRect client;
        ::GetClientRect(graph(), client);
        return {client.Width(), client.Height()};
    }
    CPoint pixel(double t, double percent) const {
        const GraphPixel p = plot().toPixel({t, percent});
        return {p.x, p.y};
    }
    double percentAt(double t, double percent) const {
        return plot().toValue(plot().toPixel({t, percent})).percent;
    }
    void choose(int group, int kind) {
        SendDlgItemMessage(group ? 1088 : 1089, CB_SETCURSEL, WPARAM(kind));
        SendMessage(WM_COMMAND, MAKEWPARAM(group ? 1088 : 1089, CBN_SELCHANGE), 0);
    }
    using CVariationDialog::ReadVariation;
    int changes = 0;

protected:
    void OnVariationChanged() override { ++changes; }
    bool MakeGraph(const CRect& place) override { return graph_ && CVariationDialog::MakeGraph(place); }

private:
    bool graph_;
    UINT id_;
};

HWND groupBox(const CWnd& dialog, const wchar_t* caption) {
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (WindowText(child) == caption) return child;
    return nullptr;
}
COLORREF backgroundOf(HWND window) {
    const auto painted = host::paintWindow(window);
    for (const host::Primitive& p : painted->primitives)
        if (p.fill) return *p.fill;
    return 0;
}

} // namespace

TEST(VariationGraph, TakesThePlaceOfTheFourSliders) {
    ArrayDialog dialog;
    ASSERT_TRUE(dialog.open());
    for (const int id : {1096, 1097, 1098, 1099}) {
        EXPECT_FALSE(dialog.GetDlgItem(id)->IsWindowVisible());
        EXPECT_FALSE(dialog.GetDlgItem(id)->IsWindowEnabled());
    }
    CRect all = support::placeOf(dialog, 1098);
    all.UnionRect(all, support::placeOf(dialog, 1097));
    EXPECT_EQ(all, support::placeOf(dialog, 53001));
    CRect gain;
    ::GetWindowRect(dialog.gainEdit(), gain);
    MapWindowPoints(nullptr, dialog.graph(), gain);
    EXPECT_EQ(CRect(2, 2, 28, 18), gain);
}

TEST(VariationGraph, DraggingAHandleChangesTheActiveCurveAndTellsAtOnce) {
    ArrayDialog dialog;
    dialog.curves[kSizeGroup].kind = kLinear;
    ASSERT_TRUE(dialog.open());
    host::drag(dialog.graph(), {dialog.pixel(0, 100), dialog.pixel(0.3, 200), dialog.pixel(0.6, 250)});
    EXPECT_EQ(2, dialog.changes) << "one a move, none at the press and the release";
    EXPECT_DOUBLE_EQ(dialog.percentAt(0, 250), dialog.curves[kSizeGroup].start);
    EXPECT_EQ(100, dialog.curves[kSizeGroup].end);
    EXPECT_EQ(VariationCurve(), dialog.curves[kSpacingGroup]);
    host::drag(dialog.graph(), {dialog.pixel(0.5, 20), dialog.pixel(0.5, 280)});
    EXPECT_EQ(2, dialog.changes) << "there is no handle";
    // The mouse that leaves the plot keeps the handle at its edge.
    host::drag(dialog.graph(), {dialog.pixel(1, 100), CPoint(5000, 9000)});
    EXPECT_EQ(1, dialog.curves[kSizeGroup].end);
    EXPECT_EQ(nullptr, GetCapture());
}

TEST(VariationGraph, TheOtherGraphPostsAndLeavesTheControlsFree) {
    for (const GraphTraits& traits : {kOneCurveGraph, kMoreCurvesGraph}) {
        const bool posted = traits.posted;
        ArrayDialog dialog(traits);
        dialog.curves[kSizeGroup].kind = kBezier;
        ASSERT_TRUE(dialog.open());
        host::deliverPosted();
        host::drag(dialog.graph(), {dialog.pixel(1.0 / 3, 100), dialog.pixel(0.9, 150)});
        EXPECT_EQ(posted ? 0 : 1, dialog.changes);
        host::deliverPosted();
        EXPECT_EQ(1, dialog.changes);
        EXPECT_NEAR(posted ? 0.9 : 2.0 / 3 - 0.02, dialog.curves[kSizeGroup].t1, 0.01);
        EXPECT_DOUBLE_EQ(dialog.percentAt(0.9, 150), dialog.curves[kSizeGroup].c1);
        EXPECT_NE(nullptr, dialog.GetDlgItem(int(traits.id)));
    }
}

TEST(VariationGraph, ItsTextTellsWhereTheHandlesAre) {
    ArrayDialog dialog;
    dialog.curves[kSizeGroup] = {.kind = kBezier, .start = 40, .c1 = 260, .t1 = 0.25};
    ASSERT_TRUE(dialog.open());
    EXPECT_EQ(L"0,40 0.25,260 0.667,100 1,100", WindowText(dialog.graph()));
    dialog.choose(kSizeGroup, kLinear);
    EXPECT_EQ(L"0,40 1,100", WindowText(dialog.graph()));
    host::drag(dialog.graph(), {dialog.pixel(0, 40), CPoint(0, 9999)});
    EXPECT_EQ(L"0,1 1,100", WindowText(dialog.graph()));
}

TEST(VariationGraph, GainsAreWholeAndAtLeastOne) {
    ArrayDialog dialog;
    dialog.gain = -4;
    ASSERT_TRUE(dialog.open());
    EXPECT_EQ(L"1", WindowText(dialog.gainEdit()));
    SetWindowTextW(dialog.gainEdit(), L"7");
    EXPECT_EQ(7, dialog.gain);
    EXPECT_EQ(1, dialog.changes);
    SetWindowTextW(dialog.gainEdit(), L"007");
    EXPECT_EQ(1, dialog.changes) << "the same number is no change";
    for (const wchar_t* bad : {L"0", L"", L"99999999999999999999"}) {
        SetWindowTextW(dialog.gainEdit(), bad);
        EXPECT_GE(dialog.gain, 1) << host::utf8(bad);
    }
    SetWindowTextW(dialog.gainEdit(), L"");
    SetFocus(dialog.gainEdit());
    SetFocus(GetDlgItem(dialog, 1));
    EXPECT_EQ(L"1", WindowText(dialog.gainEdit())) << "leaving it shows what counts";
}

TEST(VariationDialog, GroupsTakeTurnsInTheGraphAndStoreNothingBySwitching) {
    ArrayDialog dialog;
    dialog.curves[kSizeGroup] = {.kind = kLinear, .start = 50};
    dialog.curves[kSpacingGroup] = {.kind = kSine, .start = 120};
    ASSERT_TRUE(dialog.open());
    EXPECT_EQ(RGB(214, 240, 214), backgroundOf(dialog.graph()));
    const HWND spacing = groupBox(dialog, L"间距变异"), size = groupBox(dialog, L"大小变异");
    host::click(spacing, CPoint(4, 12));
    EXPECT_EQ(0, dialog.changes);
    EXPECT_EQ(RGB(230, 214, 240), backgroundOf(dialog.graph()));
    host::drag(dialog.graph(), {dialog.pixel(0, 120), dialog.pixel(0, 240)});
    EXPECT_DOUBLE_EQ(dialog.percentAt(0, 240), dialog.curves[kSpacingGroup].start);
    EXPECT_EQ(50, dialog.curves[kSizeGroup].start);
    host::click(size, CPoint(4, 12));
    host::drag(dialog.graph(), {dialog.pixel(0, 50), dialog.pixel(0, 200)});
    EXPECT_DOUBLE_EQ(dialog.percentAt(0, 200), dialog.curves[kSizeGroup].start);
    EXPECT_DOUBLE_EQ(dialog.percentAt(0, 240), dialog.curves[kSpacingGroup].start);
}

TEST(VariationDialog, KindsComeFromTheirComboBoxesWhicheverGroupIsActive) {
    ArrayDialog dialog;
    ASSERT_TRUE(dialog.open());
    dialog.choose(kSpacingGroup, kBezier);
    EXPECT_EQ(kBezier, dialog.curves[kSpacingGroup].kind);
    EXPECT_EQ(kConstant, dialog.curves[kSizeGroup].kind);
    EXPECT_EQ(1, dialog.changes);
    dialog.choose(kSizeGroup, kSine);
    // The sine's amplitude handle stands where only a sine has one.
    host::drag(dialog.graph(), {dialog.pixel(0.25, 100), dialog.pixel(0.25, 180)});
    EXPECT_NEAR(dialog.percentAt(0.25, 180), dialog.curves[kSizeGroup].end, 1e-9);
}

TEST(VariationDialog, GroupBoxesAreFoundByTheirTranslatedCaptionsToo) {
    const support::Drawing drawing;
    class Translated : public ArrayDialog {
        BOOL OnInitDialog() override {
            for (const wchar_t* caption : {L"大小变异", L"间距变异"})
                SetWindowTextW(groupBox(*this, caption), Translate(caption));
            return ArrayDialog::OnInitDialog();
        }
    };
    host::setRequestedLanguage("en");
    Translated dialog;
    EXPECT_TRUE(dialog.open());
    host::click(groupBox(dialog, Translate(L"间距变异")), CPoint(4, 12));
    host::setRequestedLanguage("zh");
    EXPECT_EQ(RGB(230, 214, 240), backgroundOf(dialog.graph()));
}

TEST(VariationDialog, WithoutAGraphTheSlidersServe) {
    ArrayDialog dialog(kOneCurveGraph, false);
    dialog.curves[kSizeGroup] = {.kind = kBezier, .start = 40, .end = 500, .c1 = 33, .t1 = 0.1};
    ASSERT_TRUE(dialog.open());
    EXPECT_EQ(40, dialog.SendDlgItemMessage(1098, TBM_GETPOS));
    EXPECT_EQ(300, dialog.SendDlgItemMessage(1099, TBM_GETPOS)) << "no slider goes further";
    dialog.SendDlgItemMessage(1096, TBM_SETPOS, TRUE, 77);
    dialog.ReadVariation();
    EXPECT_EQ(77, dialog.curves[kSpacingGroup].start);
    EXPECT_EQ(33, dialog.curves[kSizeGroup].c1);
    EXPECT_EQ(0.1, dialog.curves[kSizeGroup].t1);
}

namespace {

// What the test's command shows and what came of it.
struct Shown {
    GraphTraits traits = kOneCurveGraph;
    VariationCurve curves[2]{};
    int gain = 0, changes = 0;
    INT_PTR ended = 0;
} shown;

void showDialog() {
    class Modal : public CVariationDialog {
    public:
        Modal() : CVariationDialog(4002, nullptr, shown.traits) {}
        void OnVariationChanged() override { ++shown.changes; }
    } dialog;
    const support::TestTemplates templates;
    shown.ended = dialog.DoModal();
    std::copy(std::begin(dialog.curves), std::end(dialog.curves), shown.curves);
    shown.gain = dialog.gain;
}

} // namespace

TEST(VariationDialog, ScriptsDragByPositionAndPercent) {
    support::Drawing drawing;
    auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACAD_REGISTERED_COMMANDS));
    stack->addCommand(L"GRAPHTEST", L"GRAPHTEST", L"GRAPHTEST", ACRX_CMD_MODAL, showDialog, nullptr, -1,
                      AcRxResourceInstance(), nullptr);
    for (const GraphTraits& traits : {kOneCurveGraph, kMoreCurvesGraph}) {
        shown = Shown();
        shown.traits = traits;
        const std::wstring id = std::to_wstring(traits.id), gain = std::to_wstring(traits.gainId);
        const std::string transcript = drawing.run(
            L"GRAPHTEST\n1089=贝塞尔\ndrag " + id + L" 0,100 0,250\ndrag " + id + L" 0.33333,100 0.25,40\n" +
            gain + L"=3\n\"间距变异\"!\n1088=2\ndrag " + id + L" 0.25,100 0.3,150\nOK\n");
        EXPECT_EQ(IDOK, shown.ended) << transcript;
        EXPECT_FALSE(drawing.ranDry) << transcript;
        EXPECT_EQ(6, shown.changes);
        // A pixel of the plot is a percent or two.
        EXPECT_EQ(kBezier, shown.curves[kSizeGroup].kind);
        EXPECT_NEAR(250, shown.curves[kSizeGroup].start, 1);
        EXPECT_NEAR(40, shown.curves[kSizeGroup].c1, 1);
        EXPECT_NEAR(0.25, shown.curves[kSizeGroup].t1, 0.005);
        EXPECT_EQ(kSine, shown.curves[kSpacingGroup].kind);
        EXPECT_NEAR(150, shown.curves[kSpacingGroup].end, 1);
        EXPECT_EQ(3, shown.gain);
    }
    stack->removeGroup(L"GRAPHTEST");
}
