// Dialogs answered by scripts: actions, refusals, picks in between, files.
#include "host/ed/dialog_script.h"

#include "host/ed/dialog_action.h"
#include "host/ed/startup.h"
#include "host/ui/ui.h"
#include "tests/host/ed/support.h"

using namespace host;
using edtest::Bench;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* kTemplate = R"(53 DIALOGEX 0, 0, 240, 160
STYLE DS_SETFONT | WS_POPUP | WS_CAPTION
CAPTION "阵列"
FONT 9, "MS Shell Dlg"
BEGIN
    AUTORADIOBUTTON "总数量", 1094, 5, 5, 50, 10, WS_GROUP
    EDITTEXT 1090, 60, 5, 40, 12, ES_NUMBER
    AUTORADIOBUTTON "间距", 1095, 5, 20, 50, 10
    EDITTEXT 1093, 60, 20, 40, 12
    LTEXT "大小(&S)：", -1, 5, 35, 30, 8
    COMBOBOX 1089, 40, 35, 60, 80, CBS_DROPDOWNLIST
    LTEXT "强度:", -1, 5, 50, 30, 8
    EDITTEXT 1410, 40, 50, 20, 12
    CONTROL "", 1411, "msctls_trackbar32", 0, 65, 50, 40, 12
    AUTOCHECKBOX "三维 路径", 1086, 5, 65, 60, 10
    EDITTEXT 1092, 60, 65, 40, 12, WS_DISABLED
    EDITTEXT 1091, 60, 65, 40, 12, NOT WS_VISIBLE
    LISTBOX 1273, 110, 5, 60, 60, WS_TABSTOP
    PUSHBUTTON "重选物体", 1084, 5, 80, 60, 14
    PUSHBUTTON "打开...", 1156, 5, 96, 60, 14
    CONTROL "", 53001, "EdTestGraph", WS_CHILD, 110, 70, 60, 60
    DEFPUSHBUTTON "确定", 1, 5, 140, 40, 14
    PUSHBUTTON "取消", 2, 50, 140, 40, 14
END
)";

class Graph : public CWnd {
public:
    std::vector<std::string> heard;

protected:
    void note(const char* what, CPoint at) {
        heard.push_back(what + std::to_string(at.x) + "," + std::to_string(at.y));
    }
    void OnLButtonDown(UINT, CPoint at) { SetCapture(), note("down ", at); }
    void OnMouseMove(UINT, CPoint at) { note(GetCapture() == this ? "drag " : "move ", at); }
    void OnLButtonUp(UINT, CPoint at) { ReleaseCapture(), note("up ", at); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Graph, CWnd)
ON_WM_LBUTTONDOWN()
ON_WM_MOUSEMOVE()
ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

class ArrayDialog : public CAcUiDialog {
public:
    Graph graph;
    std::vector<std::string> heard;
    AcGePoint3d picked;
    int timers = 0;

protected:
    BOOL OnInitDialog() override {
        CAcUiDialog::OnInitDialog();
        for (const wchar_t* kind : {L"不变", L"线性", L"正弦"})
            SendDlgItemMessage(1089, CB_ADDSTRING, 0, LPARAM(kind));
        for (const wchar_t* name : {L"first", L"second set", L"third"})
            SendDlgItemMessage(1273, LB_ADDSTRING, 0, LPARAM(name));
        SetDlgItemText(1090, L"10");
        graph.SubclassDlgItem(53001, this);
        heard.clear();
        return FALSE; // nothing has the focus
    }
    void note(const char* what, UINT id) {
        CString text;
        GetDlgItemText(int(id), text);
        heard.push_back(what + std::to_string(id) + " " + utf8(text.str()));
    }
    void OnEdit(UINT id) { note("change ", id); }
    void OnLeave(UINT id) { note("leave ", id); }
    void OnCombo(UINT id) { note("choice ", id); }
    void OnClick(UINT id) {
        heard.push_back("click " + std::to_string(id) + " " + std::to_string(IsDlgButtonChecked(int(id))));
    }
    void OnList() { heard.push_back("list " + std::to_string(SendDlgItemMessage(1273, LB_GETCURSEL))); }
    void OnHScroll(UINT code, UINT, CScrollBar* bar) {
        heard.push_back("scroll " + std::to_string(code) + " " +
                        std::to_string(static_cast<CSliderCtrl*>(bar)->GetPos()));
        SetTimer(2, 50, nullptr);
    }
    void OnTimer(UINT_PTR id) { KillTimer(id), ++timers; }
    void OnPick() {
        BeginEditorCommand();
        heard.push_back(IsWindowVisible() ? "shown" : "hidden");
        ads_point point;
        if (acedGetPoint(nullptr, L"\nPick>>", point) == RTNORM) picked.set(point[X], point[Y], point[Z]);
        CompleteEditorCommand();
    }
    void OnOpen() {
        CFileDialog files(TRUE, nullptr, nullptr, OFN_FILEMUSTEXIST, L"图像(*.png)|*.png||", this);
        heard.push_back(files.DoModal() == IDOK ? "file " + utf8(files.GetFileName().str()) : "no file");
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(ArrayDialog, CAcUiDialog)
ON_CONTROL_RANGE(EN_CHANGE, 1090, 1410, &ArrayDialog::OnEdit)
ON_CONTROL_RANGE(EN_KILLFOCUS, 1090, 1410, &ArrayDialog::OnLeave)
ON_CONTROL_RANGE(CBN_SELCHANGE, 1089, 1089, &ArrayDialog::OnCombo)
ON_CONTROL_RANGE(BN_CLICKED, 1086, 1095, &ArrayDialog::OnClick)
ON_LBN_SELCHANGE(1273, &ArrayDialog::OnList)
ON_BN_CLICKED(1084, &ArrayDialog::OnPick)
ON_BN_CLICKED(1156, &ArrayDialog::OnOpen)
ON_WM_HSCROLL()
ON_WM_TIMER()
END_MESSAGE_MAP()

struct Ran {
    std::string transcript;
    std::vector<std::string> heard, graph;
    INT_PTR result = 0;
    AcGePoint3d picked;
    int timers = 0;
    bool dry = false, unread = false;
};

Ran run(const std::wstring& script) {
    Bench bench;
    WNDCLASSW kind;
    kind.lpszClassName = L"EdTestGraph";
    AfxRegisterClass(&kind);
    const DialogTemplate shape = parseResourceScript(kTemplate).dialogs.at(0);
    Ran ran;
    ran.transcript = bench.answer(script, [&] {
        ArrayDialog dialog;
        dialog.InitModalIndirect(&shape);
        ran.result = dialog.DoModal();
        ran.heard = dialog.heard, ran.graph = dialog.graph.heard;
        ran.picked = dialog.picked, ran.timers = dialog.timers;
    });
    ran.dry = bench.ranDry, ran.unread = bench.unread;
    return ran;
}

} // namespace

TEST(DialogScript, EveryKindOfControlIsSetThroughItsMessages) {
    const Ran ran = run(L"1090=20 \"间距\"=on 1089=2 1089=线性 \"大小\"=0 1411=7 1273@2 1273@\"second set\" "
                        L"\"三维 路径\"=on \"三维 路径\"=on 1086! OK");
    EXPECT_THAT(ran.heard, ElementsAre("change 1090 20", "leave 1090 20", "click 1095 1", "choice 1089 正弦",
                                       "choice 1089 线性", "choice 1089 不变", "scroll 5 7", "scroll 4 7",
                                       "scroll 8 7", "list 2", "list 1", "click 1086 1", "click 1086 0"));
    EXPECT_EQ(IDOK, ran.result);
    EXPECT_EQ(1, ran.timers);
    EXPECT_FALSE(ran.dry || ran.unread);
    EXPECT_THAT(ran.transcript, HasSubstr("阵列: 1090=20\n阵列: \"间距\"=on\n"));
}

TEST(DialogScript, WhatDoesNotServeIsRefusedAndChangesNothing) {
    const struct {
        const wchar_t* action;
        const char* says;
    } rows[] = {
        {L"1999=3", "There is no control \"1999\""},
        {L"\"数量\"=3", "There is no control \"数量\""},
        {L"1090=-5", "takes digits only"},
        {L"1089=3", "it takes an item's text or 0 to 2"},
        {L"1089=波", "has no \"波\""},
        {L"1411=101", "whole numbers from 0 to 100"},
        {L"1411=x", "whole numbers from 0 to 100"},
        {L"1094=off", "goes off when another"},
        {L"1086=2", "takes on or off"},
        {L"1092=1", "1092 is disabled"},
        {L"1091=1", "1091 is hidden"},
        {L"1084=1", "is pressed with !"},
        {L"1273@9", "it takes an item's text or 0 to 2"},
        {L"1090@1", "is no list"},
        {L"53001=1", "has no value"},
        {L"drag 53001", "A drag needs"},
        {L"drag 53001 1,2 1e9,3", "A drag needs"},
        {L"nonsense", "is no action"},
        {L"=5", "is no action"},
        {L"\"open=5", "is no action"},
        {L"1086!x", "Nothing may stand behind"},
        {L"picture /no/such/folder/a.png", "Nobody here draws pictures"},
    };
    for (const auto& row : rows) {
        // One action in one answer: drags end with their line.
        const Ran ran = run(row.action + std::wstring(L"\nCANCEL\n"));
        EXPECT_THAT(ran.transcript, HasSubstr(row.says)) << utf8(row.action);
        EXPECT_TRUE(ran.heard.empty()) << utf8(row.action);
        EXPECT_EQ(IDCANCEL, ran.result);
    }
}

TEST(DialogScript, LabelsStandForTheFieldBeforeTheSlider) {
    const Ran ran = run(L"\"强度\"=0.5\n1093=\"1 2\"\nOK");
    EXPECT_THAT(ran.heard,
                ElementsAre("change 1410 0.5", "leave 1410 0.5", "change 1093 1 2", "leave 1093 1 2"));
}

TEST(DialogScript, DragsArePixelsOrTheControlsOwnUnits) {
    EXPECT_THAT(run(L"drag 53001 1,2 3.6,4 OK").graph, ElementsAre("down 1,2", "drag 4,4", "up 4,4"));
    EXPECT_THAT(run(L"drag 53001 5,6\nOK").graph, ElementsAre("down 5,6", "up 5,6"));
}

TEST(DialogScript, ListingTellsValuesAndChoices) {
    const std::string text = run(L"? CANCEL").transcript;
    EXPECT_THAT(text, HasSubstr("\n  1090   edit    "));
    EXPECT_THAT(text, HasSubstr(" = 10\n"));
    EXPECT_THAT(text, HasSubstr("1089   combo   大小 =   (0 不变, 1 线性, 2 正弦)"));
    EXPECT_THAT(text, HasSubstr("1411   slider  强度 = 0  (0 to 100)"));
    EXPECT_THAT(text, HasSubstr("1095   radio   间距 = off"));
    EXPECT_THAT(text, HasSubstr("  disabled"));
    EXPECT_THAT(text, Not(HasSubstr("1091")));
}

TEST(DialogScript, PicksComeBetweenActionsWhileTheDialogIsHidden) {
    const Ran ran = run(L"1084! 3,4 OK");
    EXPECT_THAT(ran.heard, ElementsAre("hidden"));
    EXPECT_TRUE(edtest::near(AcGePoint3d(3, 4, 0), ran.picked));
    EXPECT_EQ(IDOK, ran.result);
    EXPECT_THAT(ran.transcript, HasSubstr("Pick>>3,4\n"));
}

TEST(DialogScript, FilesAreAskedForOnALine) {
    EXPECT_THAT(run(L"1156!\n/no such file\nCANCEL").heard, ElementsAre("no file"));
    EXPECT_THAT(run(L"1156!\n" + wide(CORVANE_SOURCE_DIR) + L"/CMakeLists.txt\nOK").heard,
                ElementsAre("file CMakeLists.txt"));
}

TEST(DialogScript, DialogIsCancelledByEscAndWhenTheScriptEnds) {
    const Ran escaped = run(L"1090=5 ^C");
    EXPECT_EQ(IDCANCEL, escaped.result);
    EXPECT_FALSE(escaped.dry);
    const Ran dry = run(L"1090=5\n");
    EXPECT_EQ(IDCANCEL, dry.result);
    EXPECT_TRUE(dry.dry);
}

TEST(DialogScript, SeveralOfOneNameAreToldByTheirNumbers) {
    const DialogTemplate shape =
        parseResourceScript("5 DIALOGEX 0,0,99,99 BEGIN\nPUSHBUTTON \"A\", 3,0,0,9,9\n"
                            "PUSHBUTTON \"&A\", 4,0,9,9,9\nEND")
            .dialogs.at(0);
    Bench bench;
    const std::string text = bench.answer(L"\"A\"!\nCANCEL", [&] {
        CDialog dialog;
        dialog.InitModalIndirect(&shape);
        dialog.DoModal();
    });
    EXPECT_THAT(text, HasSubstr("Several controls are called \"A\": 3 4."));
}
