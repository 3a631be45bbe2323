// What the standard controls do by themselves and tell their dialog.
#include "tests/host/ui/support.h"

using namespace host;
using testing::ElementsAre;
using uitest::Recorder;
using uitest::Runner;

namespace {

// Runs `hand` on a dialog of these controls.
void withDialog(const std::string& controls, const std::function<void(Recorder&)>& hand) {
    const DialogTemplate shape = uitest::dialogFrom(uitest::withControls(controls));
    Recorder dialog;
    bool ran = false;
    Runner runner([&](HWND) { ran = true, hand(dialog); });
    dialog.InitModalIndirect(&shape);
    dialog.DoModal();
    EXPECT_TRUE(ran) << testing::PrintToString(runner.log);
}
CString textOf(const Recorder& dialog, int id) {
    CString text;
    dialog.GetDlgItemText(id, text);
    return text;
}

} // namespace

TEST(Controls, RadioButtonsExcludeThoseOfTheirGroupOnly) {
    withDialog("AUTORADIOBUTTON \"a\", 10, 0,0,9,9, WS_GROUP\nAUTORADIOBUTTON \"b\", 11, 0,0,9,9\n"
               "AUTORADIOBUTTON \"c\", 12, 0,0,9,9, WS_GROUP\nAUTOCHECKBOX \"d\", 13, 0,0,9,9\n",
               [](Recorder& dialog) {
                   for (const int id : {10, 12, 13, 11}) press(dialog.item(id));
                   EXPECT_EQ(11, dialog.GetCheckedRadioButton(10, 11));
                   EXPECT_TRUE(dialog.IsDlgButtonChecked(12) && dialog.IsDlgButtonChecked(13));
                   EXPECT_THAT(dialog.heard, ElementsAre("10:0", "12:0", "13:0", "11:0"));
                   press(dialog.item(13));
                   EXPECT_FALSE(dialog.IsDlgButtonChecked(13));
               });
}

TEST(Controls, ButtonsDoNothingWhenDisabledOrLeftBeforeLettingGo) {
    withDialog("PUSHBUTTON \"a\", 10, 0,0,50,14\nPUSHBUTTON \"b\", 11, 0,0,50,14, WS_DISABLED",
               [](Recorder& dialog) {
                   press(dialog.item(11));
                   drag(dialog.item(10), {CPoint(2, 2), CPoint(2, 500)});
                   EXPECT_TRUE(dialog.heard.empty());
                   drag(dialog.item(10), {CPoint(2, 2), CPoint(3, 3)});
                   EXPECT_THAT(dialog.heard, ElementsAre("10:0"));
               });
}

TEST(Controls, EditsTellChangesOfTheHandAndOfTheProgram) {
    withDialog("EDITTEXT 10, 0,0,50,14\nEDITTEXT 11, 0,0,50,30, ES_MULTILINE", [](Recorder& dialog) {
        const std::string update = ":1024", change = ":768", focus = ":256", left = ":512";
        dialog.SetDlgItemText(10, L"12");
        EXPECT_THAT(dialog.heard, ElementsAre("10" + update, "10" + change));
        dialog.heard.clear();
        dialog.SetDlgItemText(11, L"a\r\nb"); // several lines: not told
        EXPECT_TRUE(dialog.heard.empty());
        typeText(dialog.item(10), L"345");
        EXPECT_THAT(dialog.heard, ElementsAre("10" + focus, "10" + update, "10" + change, "10" + left));
        EXPECT_EQ(345u, dialog.GetDlgItemInt(10));
        BOOL good = TRUE;
        dialog.SetDlgItemText(10, L"-7x");
        EXPECT_EQ(0u, dialog.GetDlgItemInt(10, &good));
        EXPECT_FALSE(good);
    });
}

TEST(Controls, TypingReplacesTheSelectionWithinLimits) {
    withDialog("EDITTEXT 10, 0,0,50,14, ES_NUMBER", [](Recorder& dialog) {
        auto& edit = static_cast<CEdit&>(*dialog.GetDlgItem(10));
        for (const wchar_t c : std::wstring(L"1x23\b4")) edit.SendMessage(WM_CHAR, WPARAM(c));
        EXPECT_EQ(L"124", textOf(dialog, 10).str());
        edit.SetLimitText(4);
        edit.SetSel(1, 2);
        edit.ReplaceSel(L"98765");
        EXPECT_EQ(L"1984", textOf(dialog, 10).str());
    });
}

TEST(Controls, ComboKeepsItsChoiceWhileItemsComeAndGo) {
    withDialog(
        "COMBOBOX 10, 0,0,50,80, CBS_DROPDOWNLIST\nCOMBOBOX 11, 0,0,50,80, CBS_DROPDOWNLIST | CBS_SORT",
        [](Recorder& dialog) {
            auto& combo = static_cast<CComboBox&>(*dialog.GetDlgItem(10));
            EXPECT_EQ(CB_ERR, combo.GetCurSel());
            for (const wchar_t* text : {L"one", L"two", L"three"}) combo.AddString(text);
            combo.SetCurSel(1);
            combo.InsertString(0, L"zero");
            EXPECT_EQ(2, combo.GetCurSel());
            EXPECT_EQ(L"two", textOf(dialog, 10).str());
            combo.DeleteString(0);
            EXPECT_EQ(1, combo.GetCurSel());
            combo.DeleteString(1);
            EXPECT_EQ(CB_ERR, combo.GetCurSel());
            EXPECT_EQ(1, combo.FindStringExact(-1, L"THREE"));
            EXPECT_EQ(CB_ERR, combo.FindStringExact(-1, L"thr"));
            EXPECT_EQ(1, combo.SelectString(-1, L"thr"));
            combo.SetItemData(1, 77);
            EXPECT_EQ(77u, combo.GetItemData(1));
            CString text;
            combo.GetLBText(0, text);
            EXPECT_EQ(L"one", text.str());
            EXPECT_TRUE(dialog.heard.empty()); // the program's own doings aren't told
            chooseItem(combo, 0);
            EXPECT_THAT(dialog.heard, ElementsAre("10:3", "10:7", "10:9", "10:8", "10:1"));
            auto& sorted = static_cast<CComboBox&>(*dialog.GetDlgItem(11));
            for (const wchar_t* word : {L"b", L"C", L"a"}) sorted.AddString(word);
            sorted.GetLBText(2, text);
            EXPECT_EQ(L"C", text.str());
        });
}

TEST(Controls, ListsChooseOneOrSeveral) {
    withDialog("LISTBOX 10, 0,0,50,80\nLISTBOX 11, 0,0,50,80, LBS_EXTENDEDSEL", [](Recorder& dialog) {
        auto& one = static_cast<CListBox&>(*dialog.GetDlgItem(10));
        auto& many = static_cast<CListBox&>(*dialog.GetDlgItem(11));
        for (int i = 0; i < 100; ++i) one.AddString(std::to_wstring(i).c_str()), many.AddString(L"x");
        chooseItems(one, {50});
        EXPECT_EQ(50, one.GetCurSel());
        EXPECT_LE(one.GetTopIndex(), 50);
        EXPECT_GT(one.GetTopIndex(), 30); // it was brought into sight
        chooseItems(many, {3, 7});
        int chosen[4] = {};
        EXPECT_EQ(2, many.GetSelItems(4, chosen));
        EXPECT_TRUE(chosen[0] == 3 && chosen[1] == 7);
        EXPECT_EQ(LB_ERR, many.SetCurSel(1));
        doubleClickItem(one, 2);
        EXPECT_THAT(dialog.heard,
                    ElementsAre("10:4", "10:1", "10:5", "11:4", "11:1", "11:5", "10:4", "10:1", "10:2"));
    });
}

TEST(Controls, SlidersStayInTheirRangeAndTellTheWayOfTheThumb) {
    withDialog("CONTROL \"\", 10, \"msctls_trackbar32\", 0, 0, 0, 100, 14", [](Recorder& dialog) {
        auto& slider = static_cast<CSliderCtrl&>(*dialog.GetDlgItem(10));
        slider.SetRange(1, 300);
        slider.SetPos(1000);
        EXPECT_EQ(300, slider.GetPos());
        slider.SetRange(5, 50);
        EXPECT_EQ(50, slider.GetPos());
        EXPECT_TRUE(dialog.heard.empty());
        moveSlider(slider, 7);
        EXPECT_EQ(7, slider.GetPos());
        EXPECT_THAT(dialog.heard, ElementsAre("scroll:5", "scroll:4", "scroll:8", "notify:-16"));
        CRect area;
        slider.GetClientRect(area);
        drag(slider, {CPoint(0, 5), CPoint(area.right - 1, 5)});
        EXPECT_EQ(50, slider.GetPos());
    });
}

TEST(Controls, StaleHandlesDoNothing) {
    HWND gone = nullptr;
    withDialog("EDITTEXT 10, 0,0,50,14", [&](Recorder& dialog) { gone = dialog.item(10); });
    EXPECT_FALSE(IsWindow(gone));
    RECT rect;
    EXPECT_FALSE(GetWindowRect(gone, &rect) || SetWindowTextW(gone, L"x") ||
                 PostMessageW(gone, WM_APP, 0, 0));
    EXPECT_EQ(0, SendMessageW(gone, WM_GETTEXTLENGTH, 0, 0));
    EXPECT_EQ(nullptr, CWnd::FromHandle(gone));
    typeText(gone, L"x"), press(gone), moveSlider(gone, 1), chooseItem(gone, 1), chooseItems(gone, {1});
}
