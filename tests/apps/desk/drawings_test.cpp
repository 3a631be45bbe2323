// Several drawings in one window: tabs, questions about unsaved changes, recent files.
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <cstring>

#include "apps/desk/desk_settings.h"
#include "host/dxf/dxf.h"
#include "host/os/files.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

class DrawingsTest : public DeskTest {
protected:
    desk::DrawingTabs& tabs() { return desk_->window().tabs(); }
    std::function<void()> clickTab(int tab) {
        return [this, tab] { QTest::mouseClick(&tabs(), Qt::LeftButton, {}, tabs().tabRect(tab).center()); };
    }
    std::string path(const char* name) const { return folder() / name; }
    std::function<void()> saveAs(const char* name) {
        return type("SAVEAS \"" + QString::fromStdString(path(name)) + "\"");
    }
    static size_t linesIn(const std::string& file) {
        AcDbDatabase read(false);
        EXPECT_TRUE(host::readDrawing(file, read).ok) << file;
        AcDbObjectPointer<AcDbBlockTableRecord> space(read.modelSpaceId(), AcDb::kForRead);
        return space ? space->entities().size() : 0;
    }
};

TEST_F(DrawingsTest, EachTabHasItsOwnDrawingSelectionAndTitle) {
    size_t inSecond = 9, inFirst = 9, selected = 9;
    QString title, second;
    play({type("ZOOM W -10,-10 110,90"), type("LINE 0,0 50,40 "), click(25, 20), type("'NEW"), trigger("new"),
          [&] { inSecond = entities().size(), second = tabs().tabText(1); }, type("CIRCLE 0,0 5"),
          clickTab(0),
          [&] {
              inFirst = entities().size();
              selected = desk_->frontEnd().selection().size();
              title = desk_->window().windowTitle();
          },
          trigger("nextDrawing"), [&] { EXPECT_EQ(1, tabs().currentIndex()); }});
    EXPECT_EQ(inSecond, 0u);
    EXPECT_EQ(second, "Drawing2.dxf");
    EXPECT_EQ(inFirst, 1u);
    EXPECT_EQ(selected, 0u) << "a selection belongs to its drawing";
    EXPECT_TRUE(title.startsWith("Drawing1.dxf")) << title.toStdString();
}

TEST_F(DrawingsTest, EachDrawingComesBackInTheViewItWasLeftIn) {
    double left = 0, other = 0, back = 0;
    play({type("LINE 0,0 50,40 "), type("ZOOM W 3,3 5,5"), [&] { left = canvas().map().view().height; },
          trigger("new"), type("LINE 0,0 900,900 "), trigger("zoomExtents"),
          [&] { other = canvas().map().view().height; }, clickTab(0), pause(),
          [&] { back = canvas().map().view().height; }});
    EXPECT_DOUBLE_EQ(back, left);
    EXPECT_GT(other, left);
}

// A command that runs when a tab is clicked is cancelled in its own drawing.
TEST_F(DrawingsTest, ATabClickedAmidACommandCancelsIt) {
    size_t first = 9, second = 9;
    play({trigger("new"), type("LINE 0,0 5,5"), clickTab(0), pause(), [&] { first = entities().size(); },
          clickTab(1), pause(), [&] { second = entities().size(); }});
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(second, 1u) << "the segment that was drawn stays";
}

TEST_F(DrawingsTest, ClosingAsksAboutChangesAndDoesAsToldEachTime) {
    int kept = 0, saved = 0, discarded = 0;
    bool marked = false;
    play({trigger("new"), type("LINE 0,0 5,5 "), [&] { marked = tabs().tabText(1).endsWith('*'); },
          saveAs("kept.dxf"), type("LINE 9,9 5,5 "), trigger("closeDrawing"), pressInBox("Cancel"),
          [&] { kept = tabs().count(); }, trigger("closeDrawing"), pressInBox("Save"),
          [&] { saved = tabs().count(); }, type("LINE 0,0 1,1 "), trigger("closeDrawing"),
          pressInBox("Don't Save"), [&] { discarded = tabs().count(); }});
    EXPECT_TRUE(marked);
    EXPECT_EQ(kept, 2);
    EXPECT_EQ(saved, 1);
    EXPECT_EQ(linesIn(path("kept.dxf")), 2u);
    EXPECT_EQ(discarded, 1) << "there is always a drawing";
}

// Saved under a name that is asked for, a drawing keeps it though the window stays open after all.
TEST_F(DrawingsTest, StayingAfterOneOfSeveralWasSavedKeepsItsName) {
    QString title;
    bool changed = true;
    play({type("LINE 0,0 5,5 "), trigger("new"), type("LINE 1,0 5,5 "), [&] { desk_->window().close(); },
          pressInBox("Save"),
          [&] {
              auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
              ASSERT_TRUE(dialog);
              dialog->findChild<QLineEdit*>("fileNameEdit")
                  ->setText(QString::fromStdString(path("first.dxf")));
              static_cast<QDialog*>(dialog)->accept();
          },
          pressInBox("Cancel"),
          [&] {
              title = QString::fromStdWString(acDocManagerPtr()->documents().at(0)->docTitle());
              changed = acDocManagerPtr()->documents().at(0)->database()->undoLog().changedSinceSave();
          }});
    EXPECT_EQ(title, "first.dxf");
    EXPECT_FALSE(changed);
    EXPECT_EQ(linesIn(path("first.dxf")), 1u);
}

TEST_F(DrawingsTest, OpeningAFileTakesThePlaceOfTheUnusedFirstDrawing) {
    {
        AcDbDatabase drawing(true);
        ASSERT_TRUE(host::writeDrawing(path("a.dxf"), drawing).ok);
    }
    QStringList titles;
    play({type("OPEN \"" + QString::fromStdString(path("a.dxf")) + "\""), pause(), [&] {
              for (int i = 0; i < tabs().count(); ++i) titles += tabs().tabText(i);
          }});
    EXPECT_EQ(titles, QStringList{"a.dxf"});
}

TEST_F(DrawingsTest, RecentFilesAreOfferedLatestFirstAndForgottenWhenGone) {
    QStringList offered, rest;
    size_t opened = 9;
    const QString a = QString::fromStdString(path("a.dxf")), b = QString::fromStdString(path("b.dxf"));
    const auto recent = [this](int at) {
        return [this, at] {
            for (QMenu* menu : desk_->window().findChildren<QMenu*>())
                if (menu->title() == "&Recent Files") return menu->actions().at(at)->trigger();
        };
    };
    play({type("LINE 0,0 5,5 "), saveAs("a.dxf"), type("LINE 1,0 5,5 "), saveAs("b.dxf"),
          [&] { offered = desk::recentFiles(); }, trigger("new"), recent(1), pause(),
          [&] { opened = entities().size(); }, [&] { std::filesystem::remove(path("b.dxf")); },
          trigger("new"), recent(1), pressInBox("OK"), [&] { rest = desk::recentFiles(); }});
    EXPECT_EQ(offered, (QStringList{b, a}));
    EXPECT_EQ(opened, 1u);
    EXPECT_EQ(rest, QStringList{a});
}

TEST_F(DrawingsTest, PicturesAreWrittenInEachFormat) {
    struct Row {
        const char *name, *begins;
    };
    const Row rows[] = {{"a.svg", "<?xml"}, {"a.png", "\x89PNG"}, {"a.pdf", "%PDF"}};
    play({type("LINE 0,0 5,5 "), [&] {
              for (const Row& row : rows) desk_->window().onPicture(QString::fromStdString(path(row.name)));
          }});
    for (const Row& row : rows) {
        std::string bytes;
        EXPECT_FALSE(host::readWhole(path(row.name), bytes)) << row.name;
        EXPECT_EQ(bytes.substr(0, std::strlen(row.begins)), row.begins);
    }
    EXPECT_EQ(transcript().count("Written: "), 3);
}

TEST_F(DrawingsTest, SelectAllLeavesHiddenAndLockedLayersOut) {
    size_t selected = 9;
    play({type("LINE 0,0 5,5 "), type("-LAYER M Locked "), type("LINE 1,0 5,5 "), type("-LAYER LO Locked "),
          type("-LAYER M Off "), type("LINE 2,0 5,5 "), type("-LAYER S 0 OFF Off "), trigger("selectAll"),
          [&] { selected = desk_->frontEnd().selection().size(); }});
    EXPECT_EQ(selected, 1u) << transcript().toStdString();
}

} // namespace
} // namespace desktest
