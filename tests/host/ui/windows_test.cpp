// How messages reach windows, dialogs run, and screens are asked about.
#include "host/os/clock.h"
#include "tests/host/ui/support.h"

using namespace host;
using testing::ElementsAre;
using uitest::dialogFrom;
using uitest::Recorder;
using uitest::Runner;
using uitest::withControls;

namespace {

constexpr UINT kOwnMessage = WM_APP + 400;

class Base : public CDialog {
public:
    std::vector<std::string> heard;

protected:
    void OnFirst() { heard.push_back("base first"); }
    void OnSecond() { heard.push_back("base second"); }
    LRESULT OnOwn(WPARAM w, LPARAM l) { return heard.push_back("own"), LRESULT(w) + l; }
    void OnDrawItem(int id, LPDRAWITEMSTRUCT item) {
        heard.push_back("draw " + std::to_string(id) + (item->itemState & ODS_DISABLED ? " disabled" : ""));
        CDialog::OnDrawItem(id, item);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Base, CDialog)
ON_BN_CLICKED(10, &Base::OnFirst)
ON_BN_CLICKED(11, &Base::OnSecond)
ON_MESSAGE(kOwnMessage, &Base::OnOwn)
ON_WM_DRAWITEM()
END_MESSAGE_MAP()

class Derived : public Base {
public:
    std::function<void(HWND)> hand;
    int closeAsked = 0;
    bool stays = false;

protected:
    void OnSecond() { heard.push_back("derived second"); }
    void OnAny(UINT id) { heard.push_back("range " + std::to_string(id)); }
    void OnCancel() override { ++closeAsked, stays ? void() : CDialog::OnCancel(); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Derived, Base)
ON_BN_CLICKED(11, &Derived::OnSecond)
ON_CONTROL_RANGE(BN_CLICKED, 12, 20, &Derived::OnAny)
END_MESSAGE_MAP()

// Takes clicks of its own before the dialog hears of them, and draws itself.
class OwnButton : public CButton {
public:
    int clicks = 0, drawn = 0;

protected:
    void OnReflected() { ++clicks; }
    void DrawItem(LPDRAWITEMSTRUCT item) override {
        ++drawn;
        CDC* dc = CDC::FromHandle(item->hDC);
        dc->FillSolidRect(&item->rcItem, RGB(1, 2, 3));
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(OwnButton, CButton)
ON_CONTROL_REFLECT(BN_CLICKED, &OwnButton::OnReflected)
END_MESSAGE_MAP()

template <class Dialog>
INT_PTR runModal(Dialog& dialog, const std::string& controls, std::function<void(HWND)> hand) {
    const DialogTemplate shape = dialogFrom(withControls(controls));
    Runner runner(std::move(hand));
    dialog.InitModalIndirect(&shape);
    const INT_PTR result = dialog.DoModal();
    EXPECT_EQ(nullptr, dialog.m_hWnd);
    return result;
}
const char* const kFourButtons = "PUSHBUTTON \"a\", 10, 0,0,30,14\nPUSHBUTTON \"b\", 11, 0,0,30,14\n"
                                 "PUSHBUTTON \"c\", 12, 0,0,30,14\nDEFPUSHBUTTON \"ok\", 1, 0,0,30,14";

} // namespace

TEST(Messages, DerivedMapsComeBeforeThoseOfTheirBase) {
    Derived dialog;
    runModal(dialog, kFourButtons, [&](HWND handle) {
        for (const int id : {10, 11, 12}) press(GetDlgItem(handle, id));
        EXPECT_EQ(12, SendMessageW(handle, kOwnMessage, 5, 7));
        EXPECT_EQ(0, SendMessageW(handle, kOwnMessage + 1, 5, 7));
    });
    EXPECT_THAT(dialog.heard, ElementsAre("base first", "derived second", "range 12", "own"));
}

TEST(Messages, SubclassedControlsDrawThemselvesAndTakeTheirClicks) {
    Base dialog;
    OwnButton button;
    runModal(dialog,
             "CONTROL \"a\", 10, Button, BS_OWNERDRAW, 0,0,30,14\nCONTROL \"\", 11, Static, SS_OWNERDRAW | "
             "WS_DISABLED, 0,0,9,9",
             [&](HWND handle) {
                 ASSERT_TRUE(button.SubclassDlgItem(10, &dialog));
                 EXPECT_FALSE(OwnButton().SubclassDlgItem(10, &dialog)); // it has its wrapper
                 EXPECT_EQ(&button, dialog.GetDlgItem(10));
                 press(button);
                 const auto painted = paintDialog(handle);
                 EXPECT_EQ(1, button.drawn);
                 const auto inside = paintWindow(button);
                 ASSERT_EQ(1u, inside->primitives.size());
                 EXPECT_EQ(RGB(1, 2, 3), inside->primitives[0].fill.value_or(0));
             });
    EXPECT_EQ(1, button.clicks);
    EXPECT_EQ(nullptr, button.m_hWnd);
    EXPECT_THAT(dialog.heard, ElementsAre("draw 10", "draw 11 disabled", "draw 10"));
}

TEST(Messages, PostedOnesComeInOrderAndEndlessOnesEnd) {
    class Poster : public Recorder {
    public:
        LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
            if (message == WM_APP + 1) order.push_back(int(w));
            if (message == WM_APP + 1 && w == 1) PostMessage(WM_APP + 1, 9);
            if (message == WM_APP + 2) PostMessage(WM_APP + 2);
            return Recorder::WindowProc(message, w, l);
        }
        std::vector<int> order;
    } dialog;
    runModal(dialog, "", [&](HWND handle) {
        for (const int n : {1, 2, 3}) PostMessageW(handle, WM_APP + 1, WPARAM(n), 0);
        EXPECT_TRUE(dialog.order.empty());
        EXPECT_EQ(4, deliverPosted());
        PostMessageW(handle, WM_APP + 2, 0, 0);
        EXPECT_EQ(50, deliverPosted(50));
    });
    EXPECT_THAT(dialog.order, ElementsAre(1, 2, 3, 9));
    EXPECT_EQ(0, deliverPosted()); // what was left went with the window
}

TEST(Messages, WindowsThatSendToEachOtherForEverAreStopped) {
    class Echo : public CDialog {
    public:
        int depth = 0;
        LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
            if (message == WM_APP) ++depth, SendMessage(WM_APP);
            return CDialog::WindowProc(message, w, l);
        }
    } dialog;
    runModal(dialog, "", [&](HWND handle) { SendMessageW(handle, WM_APP, 0, 0); });
    EXPECT_GT(dialog.depth, 20);
    EXPECT_LT(dialog.depth, 1000);
}

TEST(Timers, FireOnceASettlingAndByTheClockOtherwise) {
    class Ticking : public CDialog {
    public:
        std::vector<int> fired;
        LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
            if (message == WM_TIMER) {
                fired.push_back(int(w));
                if (w == 2) KillTimer(2), SetTimer(3, 20, nullptr);
                if (w == 3) KillTimer(3);
            }
            return CDialog::WindowProc(message, w, l);
        }
    } dialog;
    setClock(ClockSetting{0, 4'294'967'200u}); // about to wrap
    runModal(dialog, "", [&](HWND) {
        dialog.SetTimer(1001, 120, nullptr);
        dialog.SetTimer(2, 50, nullptr);
        settle();
        EXPECT_THAT(dialog.fired, ElementsAre(2, 1001, 3));
        dialog.fired.clear();
        EXPECT_EQ(20, fireTimers(4'294'967'200u + 100u)); // the wrapped clock
        EXPECT_EQ(120, fireTimers(4'294'967'200u + 120u));
        EXPECT_THAT(dialog.fired, ElementsAre(1001));
    });
    setClock(std::nullopt);
    EXPECT_EQ(0, runningTimers());
}

TEST(Dialogs, ModalOnesEndWithTheirResultAndLeaveNothing) {
    std::size_t objects = 0, contexts = 0;
    for (int run = 0; run < 3; ++run) {
        // What all windows share is made with the first.
        if (run == 1) objects = gdiObjectCount(), contexts = deviceCount();
        Derived dialog;
        EXPECT_EQ(IDOK, runModal(dialog, kFourButtons, [](HWND handle) {
                      EXPECT_TRUE(IsWindowVisible(handle));
                      EXPECT_THAT(modalDialogs(), ElementsAre(handle));
                      paintDialog(handle);
                      press(GetDlgItem(handle, IDOK));
                      EXPECT_TRUE(dialogEnded(handle));
                  }));
        EXPECT_EQ(IDCANCEL,
                  runModal(dialog, kFourButtons, [](HWND handle) { SendMessageW(handle, WM_CLOSE, 0, 0); }));
        EXPECT_EQ(42, runModal(dialog, kFourButtons, [](HWND handle) { EndDialog(handle, 42); }));
        EXPECT_EQ(1, dialog.closeAsked);
    }
    EXPECT_TRUE(modalDialogs().empty());
    EXPECT_EQ(objects, gdiObjectCount());
    EXPECT_EQ(contexts, deviceCount());
    Derived stubborn; // without a front end nobody is asked, and nobody waits
    const DialogTemplate shape = dialogFrom(withControls(""));
    stubborn.stays = true;
    stubborn.InitModalIndirect(&shape);
    EXPECT_EQ(IDCANCEL, stubborn.DoModal());
}

TEST(Dialogs, WhatCannotBeMadeIsTold) {
    Runner runner([](HWND) { FAIL(); });
    EXPECT_EQ(-1, CDialog(54321).DoModal());
    const DialogTemplate shape = dialogFrom(withControls("CONTROL \"\", 10, NoSuchClass, 0, 0,0,9,9"));
    CDialog dialog;
    dialog.InitModalIndirect(&shape);
    EXPECT_EQ(-1, dialog.DoModal());
    EXPECT_THAT(runner.log,
                ElementsAre(testing::HasSubstr("no template of dialog 54321"),
                            testing::HasSubstr("\"NoSuchClass\" of control 10 is not registered")));
}

TEST(Dialogs, ModelessOnesAreToldAndPicksHideThem) {
    Runner runner([](HWND) {});
    const DialogTemplate shape = dialogFrom(withControls("EDITTEXT 10, 0,0,30,14"));
    CAcUiDialog dialog;
    ASSERT_TRUE(dialog.CreateIndirect(&shape));
    dialog.ShowWindow(SW_SHOW);
    EXPECT_EQ(10, dialog.GetFocus()->GetDlgCtrlID()); // the first that takes it
    dialog.BeginEditorCommand();
    dialog.BeginEditorCommand();
    EXPECT_FALSE(dialog.IsWindowVisible() || dialog.GetDlgItem(10)->IsWindowVisible());
    dialog.CompleteEditorCommand();
    EXPECT_TRUE(dialog.GetDlgItem(10)->IsWindowVisible());
    dialog.DestroyWindow();
    EXPECT_THAT(runner.log, ElementsAre("shown", "pick begins", "pick ends", "hidden"));
}

TEST(Dialogs, ValuesAreExchangedOrRefused) {
    class Values : public CDialog {
    public:
        int count = 5, mode = 1, kind = 0, on = 1;
        double gap = 2.5;
        CString name = L"n";
        void DoDataExchange(CDataExchange* exchange) override {
            DDX_Text(exchange, 10, count);
            DDV_MinMaxInt(exchange, count, 1, 100);
            DDX_Text(exchange, 11, gap);
            DDX_Text(exchange, 12, name);
            DDX_Check(exchange, 13, on);
            DDX_Radio(exchange, 14, mode);
            DDX_CBIndex(exchange, 16, kind);
        }
    } dialog;
    const char* controls =
        "EDITTEXT 10,0,0,9,9\nEDITTEXT 11,0,0,9,9\nEDITTEXT 12,0,0,9,9\nAUTOCHECKBOX \"\",13,0,0,9,9\n"
        "AUTORADIOBUTTON \"\",14,0,0,9,9,WS_GROUP\nAUTORADIOBUTTON \"\",15,0,0,9,9\n"
        "COMBOBOX 16,0,0,9,9,CBS_DROPDOWNLIST | WS_GROUP";
    EXPECT_EQ(IDOK, runModal(dialog, controls, [&](HWND handle) {
                  EXPECT_EQ(15, dialog.GetCheckedRadioButton(14, 15));
                  EXPECT_EQ(5u, dialog.GetDlgItemInt(10));
                  for (const wchar_t* wrong : {L"", L"x", L"0", L"101", L"99999999999"}) {
                      typeText(GetDlgItem(handle, 10), wrong);
                      SendMessageW(handle, WM_COMMAND, IDOK, 0);
                      EXPECT_FALSE(dialogEnded(handle)) << utf8(wrong);
                      EXPECT_EQ(GetDlgItem(handle, 10), GetFocus());
                  }
                  typeText(GetDlgItem(handle, 10), L"77");
                  typeText(GetDlgItem(handle, 11), L"-1e3");
                  press(GetDlgItem(handle, 14)), press(GetDlgItem(handle, 13));
                  SendMessageW(handle, WM_COMMAND, IDOK, 0);
              }));
    EXPECT_EQ(77, dialog.count);
    EXPECT_EQ(-1000.0, dialog.gap);
    EXPECT_EQ(0, dialog.mode);
    EXPECT_EQ(0, dialog.on);
    EXPECT_EQ(CB_ERR, dialog.kind);
}

TEST(Dialogs, MouseFallsThroughGroupBoxesAndHiddenControls) {
    Recorder dialog;
    runModal(dialog,
             "EDITTEXT 10, 0,0,60,20\nEDITTEXT 12, 0,0,60,20, NOT WS_VISIBLE\nGROUPBOX \"g\", 11, 0,0,100,60",
             [&](HWND handle) {
                 EXPECT_EQ(10, GetDlgCtrlID(mouseTarget(handle, POINT{5, 5})));
                 CRect client;
                 dialog.GetClientRect(client);
                 EXPECT_EQ(handle, mouseTarget(handle, POINT{client.right - 1, client.bottom - 1}));
                 EXPECT_EQ(nullptr, mouseTarget(handle, POINT{-1, 5}));
             });
}

TEST(Dialogs, HundredsOfControlsAreHandledQuickly) {
    std::string controls;
    for (int i = 0; i < 1500; ++i)
        controls += "AUTORADIOBUTTON \"r\", " + std::to_string(1000 + i) + ",0,0,50,9\n";
    Recorder dialog;
    runModal(dialog, controls, [&](HWND handle) {
        for (int i = 0; i < 300; ++i) press(GetDlgItem(handle, 1000 + i * 5));
        EXPECT_EQ(1000 + 299 * 5, dialog.GetCheckedRadioButton(1000, 2499));
        EXPECT_GT(paintDialog(handle)->primitives.size(), 1500u);
    });
}

TEST(Monitors, TellSizeAndResolutionWhereTheWindowStands) {
    const DialogTemplate shape = dialogFrom(withControls("EDITTEXT 10, 4, 8, 40, 16"));
    setMonitors({{CRect(0, 0, 1920, 1080), CRect(0, 0, 1920, 1040), 96},
                 {CRect(1920, 0, 5760, 2160), CRect(1920, 0, 5760, 2120), 192}});
    const auto widthAt = [&](CWnd* parent, UINT& dpi, CRect& monitor) {
        CDialog dialog;
        EXPECT_TRUE(dialog.CreateIndirect(&shape, parent));
        dpi = GetDpiForWindow(dialog);
        MONITORINFO info;
        EXPECT_TRUE(GetMonitorInfoW(MonitorFromWindow(dialog, MONITOR_DEFAULTTONEAREST), &info));
        monitor = info.rcMonitor;
        CRect edit;
        dialog.GetDlgItem(10)->GetWindowRect(edit);
        return edit.Width();
    };
    UINT dpi = 0;
    CRect monitor;
    const int usual = widthAt(nullptr, dpi, monitor);
    EXPECT_EQ(96u, dpi);
    EXPECT_EQ(CRect(0, 0, 1920, 1080), monitor);
    CDialog parent;
    parent.CreateIndirect(&shape);
    parent.SetWindowPos(nullptr, 2500, 500, 0, 0, SWP_NOSIZE);
    parent.ShowWindow(SW_SHOW);
    EXPECT_NEAR(2 * usual, widthAt(&parent, dpi, monitor), 10);
    EXPECT_EQ(192u, dpi);
    EXPECT_EQ(CRect(1920, 0, 5760, 2160), monitor);
    EXPECT_EQ(1920, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(&GetDpiForWindow, dpiForWindowFunction());
    setDpiForWindowPresent(false);
    EXPECT_EQ(nullptr, dpiForWindowFunction());
    setDpiForWindowPresent(true);
    const RECT beyond{9000, 9000, 9100, 9100};
    EXPECT_EQ(nullptr, MonitorFromRect(&beyond, MONITOR_DEFAULTTONULL));
    EXPECT_NE(nullptr, MonitorFromRect(&beyond, MONITOR_DEFAULTTONEAREST));
    setMonitors({});
}

TEST(Windows, ClientAreaAndFrameFitTogether) {
    CRect wanted(0, 0, 400, 300);
    AdjustWindowRectEx(wanted, WS_POPUP | WS_CAPTION, FALSE, 0);
    const DialogTemplate shape = dialogFrom(
        "7 DIALOGEX 0,0,90,90\nSTYLE WS_POPUP | WS_CAPTION\nBEGIN\nEDITTEXT 10, 4, 8, 40, 16\nEND");
    CDialog dialog;
    dialog.CreateIndirect(&shape);
    dialog.SetWindowPos(nullptr, 0, 0, wanted.Width(), wanted.Height(), SWP_NOMOVE);
    CRect client, edit, onScreen;
    dialog.GetClientRect(client);
    EXPECT_EQ(CRect(0, 0, 400, 300), client);
    dialog.GetDlgItem(10)->GetWindowRect(edit);
    onScreen = edit;
    dialog.ScreenToClient(edit);
    dialog.GetDlgItem(10)->MoveWindow(edit); // where it was
    CRect again;
    dialog.GetDlgItem(10)->GetWindowRect(again);
    EXPECT_EQ(onScreen, again);
}

TEST(FileDialog, FiltersAndNamesAreTakenApart) {
    Runner runner([](HWND) {});
    runner.chosen = {L"/data/pictures/a.b.png"};
    CFileDialog open(TRUE, L"png", nullptr, OFN_FILEMUSTEXIST, L"图像(*.bmp;*.png) | *.bmp;*.png || ");
    EXPECT_EQ(IDOK, open.DoModal());
    ASSERT_EQ(1u, runner.question.filters.size());
    EXPECT_EQ(L"图像(*.bmp;*.png)", runner.question.filters[0].label);
    EXPECT_EQ((std::vector<std::wstring>{L"*.bmp", L"*.png"}), runner.question.filters[0].patterns);
    EXPECT_TRUE(runner.question.mustExist && runner.question.open);
    EXPECT_EQ(L"a.b.png", open.GetFileName().str());
    EXPECT_EQ(L"a.b", open.GetFileTitle().str());
    EXPECT_EQ(L"png", open.GetFileExt().str());
    runner.chosen = {L"/data/out"};
    CFileDialog save(FALSE, L"txt");
    save.DoModal();
    EXPECT_EQ(L"/data/out.txt", save.GetPathName().str());
    runner.chosen.clear();
    EXPECT_EQ(IDCANCEL, CFileDialog(TRUE).DoModal());
}
