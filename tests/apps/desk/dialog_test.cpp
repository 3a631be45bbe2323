// Dialogs with real widgets, worked by hand.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "apps/desk/dialog_window.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

class DialogTest : public DeskTest {
protected:
    desk::DialogWindow* dialog() {
        return host::modalDialogs().empty() ? nullptr
                                            : desk_->dialogs().windowOf(host::modalDialogs().back());
    }
    template <class Widget> Widget* control(int id) {
        QWidget* widget =
            dialog() ? dialog()->widgetOf(GetDlgItem(host::modalDialogs().back(), id)) : nullptr;
        return dynamic_cast<Widget*>(widget);
    }
    // Draws a line and a circle and starts an array of the circle along the line.
    std::vector<std::function<void()>> array() {
        return {type("LINE 0,0 100,0 "), type("CIRCLE 0,50 2"), type("AAC 50,0 2,50 0,0")};
    }
};

constexpr int kCount = 1090; // the edit control of the number of copies

TEST_F(DialogTest, WhatIsTypedIntoAWidgetReachesItsControl) {
    std::wstring held;
    bool shown = false, gone = false;
    auto steps = array();
    steps.push_back([&] {
        auto* edit = control<QLineEdit>(kCount);
        shown = edit && dialog()->isVisible();
        if (!edit) return;
        edit->selectAll();
        QTest::keyClicks(edit, "23");
        QTest::mouseClick(dialog()->findChild<QCheckBox*>(), Qt::LeftButton); // goes on to another
        held = host::windowOf(GetDlgItem(host::modalDialogs().back(), kCount))->text;
    });
    steps.push_back([&] {
        if (auto* ok = control<QPushButton>(IDOK)) QTest::mouseClick(ok, Qt::LeftButton);
    });
    steps.push_back([&] { gone = host::modalDialogs().empty(); });
    play(steps);
    EXPECT_TRUE(shown) << transcript().toStdString();
    EXPECT_EQ(held, L"23");
    EXPECT_TRUE(gone);
    EXPECT_GT(entities().size(), 2u) << "the array stands in the drawing";
}

TEST_F(DialogTest, EscapeClosesTheDialogAndLeavesTheDrawingAlone) {
    size_t before = 0, after = 0;
    bool gone = false;
    auto steps = array();
    steps.insert(steps.begin() + 2, [&] { before = entities().size(); });
    steps.push_back([&] {
        if (dialog()) QTest::keyClick(dialog(), Qt::Key_Escape);
    });
    steps.push_back([&] { gone = host::modalDialogs().empty(), after = entities().size(); });
    play(steps);
    EXPECT_TRUE(gone);
    EXPECT_EQ(before, 2u);
    EXPECT_EQ(after, before);
}

// The model's change shows in the widget.
TEST_F(DialogTest, WhatAControlIsToldShowsInItsWidget) {
    QString shown;
    auto steps = array();
    steps.push_back([&] {
        SetWindowTextW(GetDlgItem(host::modalDialogs().back(), kCount), L"31");
        dialog()->sync();
        shown = control<QLineEdit>(kCount)->text();
        QTest::keyClick(dialog(), Qt::Key_Escape);
    });
    play(steps);
    EXPECT_EQ(shown, "31");
}

TEST_F(DialogTest, ADialogStepsAsideForAPickAndComesBack) {
    bool aside = false, back = false, ended = false;
    std::vector<std::function<void()>> steps = {type("ZOOM W -10,-10 110,90")};
    for (auto& step : array()) steps.push_back(step);
    steps.push_back(pause());
    steps.push_back([&] {
        for (QPushButton* button : dialog()->findChildren<QPushButton*>())
            if (button->text() == "Pick Start Again") return QTest::mouseClick(button, Qt::LeftButton);
        ADD_FAILURE() << "no button to pick";
    });
    steps.push_back([&] { aside = dialog() && !dialog()->isVisible(); });
    steps.push_back(click(100, 0));
    steps.push_back(pause());
    steps.push_back([&] {
        back = dialog() && dialog()->isVisible();
        if (dialog()) QTest::keyClick(dialog(), Qt::Key_Escape);
    });
    steps.push_back(pause());
    steps.push_back([&] { ended = host::modalDialogs().empty(); });
    play(steps);
    EXPECT_TRUE(aside) << transcript().toStdString();
    EXPECT_TRUE(back) << transcript().toStdString();
    EXPECT_TRUE(ended);
}

// The whole way: drawn and arrayed by hand, saved, opened beside the first drawing, and taken up again.
TEST_F(DialogTest, AnArrayIsSavedOpenedAgainAndItsDialogHoldsWhatWasSet) {
    const QString path = QString::fromStdString(folder() / "array.dxf");
    std::wstring count;
    QString size;
    auto steps = array();
    const auto then = [&](std::vector<std::function<void()>> more) {
        steps.insert(steps.end(), more.begin(), more.end());
    };
    then({pause(),
          [&] {
              auto* edit = control<QLineEdit>(kCount);
              ASSERT_TRUE(edit) << transcript().toStdString();
              edit->selectAll();
              QTest::keyClicks(edit, "7");
              auto* variation = control<QComboBox>(1089);
              variation->setFocus();
              QTest::keyClick(variation, Qt::Key_Down); // another than the first
              size = variation->currentText();
              QTest::mouseClick(control<QPushButton>(IDOK), Qt::LeftButton);
          },
          pause(), type("SAVEAS \"" + path + "\""), type("CLOSE"), pause(), type("OPEN \"" + path + "\""),
          pause(),
          [&] {
              EXPECT_EQ(desk_->window().tabs().tabText(desk_->window().tabs().currentIndex()), "array.dxf");
              const QString handle = QString::number(Adesk::UInt64(entities().back().handle()), 16);
              desk_->frontEnd().typeLine(("AAC (handent \"" + handle + "\")").toStdWString());
          },
          pause(100),
          [&] {
              ASSERT_TRUE(dialog()) << transcript().toStdString();
              count = host::windowOf(GetDlgItem(host::modalDialogs().back(), kCount))->text;
              EXPECT_EQ(control<QComboBox>(1089)->currentText(), size);
              QTest::keyClick(dialog(), Qt::Key_Escape);
          },
          pause()});
    play(steps);
    EXPECT_EQ(count, L"7") << transcript().toStdString();
    EXPECT_NE(size, "Constant");
}

} // namespace
} // namespace desktest
