// The command line by keys alone: earlier lines, completion, several lines pasted, keys it leaves to the
// window.
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include "apps/desk/desk_settings.h"
#include "host/ed/sysvars.h"
#include "host/ent/line.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

class CommandLineTest : public DeskTest {
protected:
    desk::CommandLine& line() { return desk_->window().commandLine(); }
    QString after(std::initializer_list<Qt::Key> keys, const QString& typed = {}) {
        QTest::keyClicks(line().input(), typed);
        for (const Qt::Key key : keys) QTest::keyClick(line().input(), key);
        const QString text = line().typed();
        QTest::keyClick(line().input(), Qt::Key_Escape);
        return text;
    }
};

TEST_F(CommandLineTest, UpBringsBackTheLinesThatBeginWithWhatIsTyped) {
    play({[&] {
        line().setHistory({"LTSCALE 2", "PDMODE 3", "LTSCALE 5"});
        EXPECT_EQ(after({Qt::Key_Up}), "LTSCALE 5");
        EXPECT_EQ(after({Qt::Key_Up, Qt::Key_Up}), "PDMODE 3");
        EXPECT_EQ(after({Qt::Key_Up, Qt::Key_Up}, "lt"), "LTSCALE 2");
        EXPECT_EQ(after({Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up}, "lt"), "LTSCALE 2") << "the first";
        EXPECT_EQ(after({Qt::Key_Up, Qt::Key_Up, Qt::Key_Down, Qt::Key_Down}, "lt"), "lt");
        EXPECT_EQ(after({Qt::Key_Up}, "nothing"), "nothing");
    }});
}

TEST_F(CommandLineTest, PastedLinesAreAnsweredInTurn) {
    AcGePoint3d end;
    QString rest;
    play({[&] {
              QApplication::clipboard()->setText("LINE\n0,0\n30,40\n\nLTSC");
              line().input()->setFocus();
              QTest::keySequence(line().input(), QKeySequence::Paste);
          },
          pause(),
          [&] {
              ASSERT_EQ(entities().size(), 1u) << transcript().toStdString();
              AcDbObjectPointer<AcDbLine> drawn(entities().at(0), AcDb::kForRead);
              end = drawn->endPoint();
              rest = line().typed();
          }});
    EXPECT_EQ(end, AcGePoint3d(30, 40, 0));
    EXPECT_EQ(rest, "LTSC") << "the last line has no end yet";
}

TEST_F(CommandLineTest, WithNothingTypedTakingBackIsAboutTheDrawing) {
    size_t undone = 9, kept = 9;
    QString text;
    play({type("LINE 0,0 1,1 "), [this] { line().input()->setFocus(); },
          [this] { QTest::keyClick(line().input(), Qt::Key_Z, Qt::ControlModifier); }, pause(),
          [&] { undone = entities().size(); }, type("LINE 0,0 1,1 "),
          [&] {
              QTest::keyClicks(line().input(), "LIN");
              QTest::keyClick(line().input(), Qt::Key_Z, Qt::ControlModifier);
              text = line().typed();
              kept = entities().size();
          }});
    EXPECT_EQ(undone, 0u) << transcript().toStdString();
    EXPECT_EQ(kept, 1u);
    EXPECT_NE(text, "LIN") << "what is typed is taken back first";
}

TEST_F(CommandLineTest, ACommandInsideAnotherOneAndItsKeywordsClicked) {
    double before = 0, after = 0;
    AcGePoint3d end;
    play({type("ZOOM W -10,-10 110,90"), [&] { before = canvas().map().view().height; }, type("LINE"),
          type("0,0"), type("'ZOOM"), type("2x"), [&] { after = canvas().map().view().height; }, type("5,5"),
          type("6,6"),
          [&] { // [Undo] in the prompt
              for (QLabel* label : line().findChildren<QLabel*>())
                  if (label->text().contains("href=\"Undo\"")) emit label->linkActivated("Undo");
          },
          type(""),
          [&] {
              ASSERT_EQ(entities().size(), 1u) << transcript().toStdString();
              AcDbObjectPointer<AcDbLine> drawn(entities().at(0), AcDb::kForRead);
              end = drawn->endPoint();
          }});
    EXPECT_NEAR(after, before / 2, 1e-9);
    EXPECT_EQ(end, AcGePoint3d(5, 5, 0));
}

TEST_F(CommandLineTest, TabOffersWhatCanBeAnsweredKeywordsAndTransparentCommands) {
    QString keyword, inside, none;
    play({type("LINE"), type("0,0"), [&] { keyword = after({Qt::Key_Tab}, "u"); }, type("LINE"), type("0,0"),
          [&] { inside = after({Qt::Key_Tab}, "'ZO"); }, type("LINE"),
          [&] { none = after({Qt::Key_Tab}, "ZO"); }});
    EXPECT_EQ(keyword, "Undo");
    EXPECT_EQ(inside, "'ZOOM");
    EXPECT_EQ(none, "ZO") << "without the mark it is no answer to a point";
}

TEST_F(CommandLineTest, EscapeLeadsFromAPanelBackToTheLineAndCancels) {
    bool focused = false;
    play({type("LINE"), type("0,0"), [&] {
              QTreeWidget* list = desk_->window().layers().list();
              list->setFocus();
              QTest::keyClick(list, Qt::Key_Escape);
              focused = line().input()->hasFocus() || desk_->window().focusWidget() == line().input();
          }});
    EXPECT_TRUE(focused);
    EXPECT_TRUE(transcript().contains("*Cancel*"));
}

// Menu items and tool buttons type their command; those that aren't built yet are grey.
TEST_F(CommandLineTest, ModulesMenusAndToolButtonsStartCommands) {
    size_t buttons = 0;
    bool iconed = true;
    play({[&] {
              const auto* bar = desk_->window().findChild<QToolBar*>("moduleBar");
              ASSERT_TRUE(bar);
              for (QAction* action : bar->actions()) {
                  ++buttons;
                  iconed = iconed && !action->icon().isNull() && action->toolTip().contains(" - ");
              }
              bar->actions().front()->trigger();
          },
          pause(), press(Qt::Key_Escape),
          [&] {
              for (QAction* menu : desk_->window().menuBar()->actions())
                  if (menu->text() == "Corvane Tools")
                      menu->menu()->actions().front()->menu()->actions().front()->setObjectName("found");
              auto* action = desk_->window().findChild<QAction*>("found");
              ASSERT_TRUE(action);
              EXPECT_FALSE(action->statusTip().isEmpty());
          }});
    EXPECT_GT(buttons, 8u);
    EXPECT_TRUE(iconed);
    EXPECT_TRUE(transcript().contains("_SCVN_PLYH")) << transcript().toStdString();
}

TEST_F(CommandLineTest, StatusButtonsSwitchTheAidsAndShowWhatIsTyped) {
    bool on = false, off = true, byVariable = false;
    play({[&] { QTest::mouseClick(desk_->window().aids().button(2), Qt::LeftButton); },
          [&] { on = desk_->window().aids().button(2)->isChecked(); }, press(Qt::Key_F8),
          [&] { off = !desk_->window().aids().button(2)->isChecked(); }, type("ORTHOMODE 1"),
          [&] { byVariable = desk_->window().aids().button(2)->isChecked(); }});
    EXPECT_TRUE(on && off && byVariable) << transcript().toStdString();
}

TEST_F(CommandLineTest, TypedLinesAndTheWindowsPartsComeBackAtTheNextStart) {
    desk_->remember();
    play({type("LTSCALE 4"), [this] { desk_->window().layers().parentWidget()->hide(); }});
    desk_.reset();
    desk_ = std::make_unique<desk::Desk>();
    desk_->remember();
    desk_->window().show();
    EXPECT_EQ(line().history(), (QStringList{"LTSCALE", "4"})) << "the space bar ends a line";
    EXPECT_FALSE(desk_->window().layers().isVisible());
    EXPECT_TRUE(desk_->window().properties().isVisible());
}

} // namespace
} // namespace desktest
