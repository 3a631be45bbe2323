// Kinds of controls as widgets: what the dialog draws itself, lines of text, limits, labels, changes
// meanwhile, and the size that a dialog takes on a screen.
#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "apps/desk/dialog_window.h"
#include "host/ui/monitors.h"
#include "tests/apps/desk/desk_play.h"
#include "tests/host/ui/support.h"

namespace desktest {
namespace {

constexpr COLORREF kInks[] = {RGB(255, 0, 0), RGB(0, 0, 255), RGB(0, 160, 0)};

// Fills each item with a colour of its own.
class DrawnDialog : public CDialog {
public:
    afx_msg void OnDrawItem(int, LPDRAWITEMSTRUCT draw) {
        CDC::FromHandle(draw->hDC)->FillSolidRect(CRect(draw->rcItem), kInks[draw->itemID % 3]);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(DrawnDialog, CDialog)
ON_WM_DRAWITEM()
END_MESSAGE_MAP()

class DialogWidgetsTest : public DeskTest {
protected:
    void make(const std::string& controls) {
        shape_ = uitest::dialogFrom(uitest::withControls(controls));
        ASSERT_TRUE(dialog_.CreateIndirect(&shape_));
        dialog_.ShowWindow(SW_SHOW);
        window().sync();
    }
    desk::DialogWindow& window() { return *desk_->dialogs().windowOf(dialog_.m_hWnd); }
    HWND control(int id) { return GetDlgItem(dialog_.m_hWnd, id); }
    template <class Widget> Widget* widget(int id) {
        return dynamic_cast<Widget*>(window().widgetOf(control(id)));
    }
    std::wstring text(int id) { return host::windowOf(control(id))->text; }
    int ask(int id, UINT message) { return int(SendMessageW(control(id), message, 0, 0)); }
    void fill(int id, UINT message) {
        for (const wchar_t* item : {L"one", L"two", L"three"})
            SendMessageW(control(id), message, 0, reinterpret_cast<LPARAM>(item));
        window().sync();
    }

    host::DialogTemplate shape_;
    DrawnDialog dialog_;
};

TEST_F(DialogWidgetsTest, LinesOfTextGoBothWays) {
    make("EDITTEXT 5, 5, 5, 100, 40, ES_MULTILINE | ES_WANTRETURN\nEDITTEXT 6, 5, 60, 50, 12");
    auto* lines = widget<QPlainTextEdit>(5);
    ASSERT_TRUE(lines);
    lines->setFocus();
    QTest::keyClicks(lines, "one");
    QTest::keyClick(lines, Qt::Key_Return);
    QTest::keyClicks(lines, "two");
    EXPECT_EQ(text(5), L"") << "it counts once the field is left";
    QFocusEvent left(QEvent::FocusOut);
    QApplication::sendEvent(lines, &left);
    EXPECT_EQ(text(5), L"one\r\ntwo");
    SetWindowTextW(control(5), L"three\r\nfour");
    window().sync();
    EXPECT_EQ(lines->toPlainText(), "three\nfour");
}

TEST_F(DialogWidgetsTest, FieldsTakeWhatTheirControlsTake) {
    make("EDITTEXT 5, 5, 5, 100, 12, ES_NUMBER\nEDITTEXT 6, 5, 25, 100, 12");
    SendMessageW(control(6), EM_SETLIMITTEXT, 4, 0);
    window().sync();
    QTest::keyClicks(widget<QLineEdit>(5), "1a2-3");
    QTest::keyClicks(widget<QLineEdit>(6), "abcdefgh");
    QTest::keyClick(widget<QLineEdit>(6), Qt::Key_Return);
    EXPECT_EQ(text(5), L"123");
    EXPECT_EQ(text(6), L"abcd");
}

TEST_F(DialogWidgetsTest, ItemsThatTheDialogDrawsAreChosenByKeysAndShownInTheirColours) {
    make("COMBOBOX 5, 5, 5, 100, 60, CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS\n"
         "LISTBOX 6, 5, 30, 100, 60, LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOTIFY");
    fill(5, CB_ADDSTRING);
    fill(6, LB_ADDSTRING);
    auto* combo = widget<QComboBox>(5);
    auto* list = widget<QListWidget>(6);
    ASSERT_TRUE(combo && list);
    SendMessageW(control(5), CB_SETCURSEL, 0, 0);
    window().sync();
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(ask(5, CB_GETCURSEL), 1);
    EXPECT_EQ(combo->grab().toImage().pixelColor(20, combo->height() / 2), QColor(0, 0, 255));
    list->setFocus();
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(ask(6, LB_GETCURSEL), 2);
    const QImage shown = list->viewport()->grab().toImage();
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(
            shown.pixelColor(list->visualItemRect(list->item(row)).center()),
            QColor(QRgb(GetRValue(kInks[row]) << 16 | GetGValue(kInks[row]) << 8 | GetBValue(kInks[row]))));
}

TEST_F(DialogWidgetsTest, ALabelLeadsToTheFieldBehindIt) {
    make("LTEXT \"&Count\", -1, 5, 5, 30, 10\nEDITTEXT 5, 40, 5, 100, 12\n"
         "LTEXT \"Note\", 8, 5, 25, 30, 10\nPUSHBUTTON \"Go\", 9, 40, 25, 30, 12");
    for (QLabel* label : window().findChildren<QLabel*>())
        EXPECT_EQ(label->buddy(),
                  label->text() == "Note" ? window().widgetOf(control(9)) : window().widgetOf(control(5)));
}

TEST_F(DialogWidgetsTest, ControlsTitlesAndFontsFollowWhileItStands) {
    make("EDITTEXT 5, 5, 5, 100, 12");
    CreateWindowExW(0, L"Button", L"Later", WS_CHILD | WS_VISIBLE, 10, 60, 80, 24, dialog_.m_hWnd, 7, nullptr,
                    nullptr);
    dialog_.SetWindowText(L"Renamed");
    LOGFONTW big;
    big.lfHeight = -31;
    CFont font;
    font.CreateFontIndirect(&big);
    SendMessageW(control(5), WM_SETFONT, WPARAM(HFONT(font)), TRUE);
    window().sync();
    auto* later = widget<QPushButton>(7);
    ASSERT_TRUE(later);
    EXPECT_EQ(later->text(), "Later");
    EXPECT_EQ(window().windowTitle(), "Renamed");
    EXPECT_EQ(widget<QLineEdit>(5)->font().pixelSize(), 31);
    DestroyWindow(control(7));
    window().sync();
    EXPECT_TRUE(later->isHidden());
}

// Drawn once for 1920 by 1080, larger by a third on 2560 by 1440.
TEST_F(DialogWidgetsTest, DialogsFitTheScreenTheyOpenOn) {
    std::vector<QSize> sizes;
    std::vector<int> letters;
    std::vector<std::function<void()>> steps = {type("LINE 0,0 100,0 "), type("CIRCLE 0,50 2")};
    for (const int width : {1920, 2560}) {
        steps.push_back([width] {
            host::Monitor screen;
            screen.area = screen.work = CRect(0, 0, width, width * 9 / 16);
            host::setMonitors({screen});
        });
        steps.push_back(type("AAC 50,0 2,50 0,0"));
        steps.push_back(pause());
        steps.push_back([&] {
            ASSERT_FALSE(host::modalDialogs().empty());
            auto* shown = desk_->dialogs().windowOf(host::modalDialogs().back());
            sizes.push_back(shown->size());
            letters.push_back(
                shown->widgetOf(GetDlgItem(host::modalDialogs().back(), IDOK))->font().pixelSize());
            QTest::keyClick(shown, Qt::Key_Escape);
        });
        steps.push_back(pause());
    }
    play(steps);
    ASSERT_EQ(sizes.size(), 2u);
    EXPECT_NEAR(sizes[1].width(), sizes[0].width() * 4 / 3.0, 1);
    EXPECT_NEAR(sizes[1].height(), sizes[0].height() * 4 / 3.0, 1);
    EXPECT_EQ(letters[1], letters[0] * 4 / 3);
}

} // namespace
} // namespace desktest
