// The desk by real mouse and key events.
#include <QTest>
#include <QWheelEvent>

#include "host/dxf/dxf.h"
#include "host/ed/sysvars.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

const QString kView = "ZOOM W -10,-10 110,90"; // a pixel is about a sixth of a unit
constexpr double kPixel = 0.3;

void setSnaps(const wchar_t* modes) {
    std::wstring why;
    ASSERT_TRUE(host::setSystemVariableText(*host::findSystemVariable(L"OSMODE"), modes, why));
}

TEST_F(DeskTest, ClicksDrawALineThatIsSelectedErasedAndTakenBack) {
    size_t erased = 99, back = 99;
    AcGePoint3d from, to;
    play({type(kView), type("LINE"), click(20, 10), click(70, 60), type(""),
          [&] {
              AcDbObjectPointer<AcDbLine> line(entities().at(0), AcDb::kForRead);
              from = line->startPoint(), to = line->endPoint();
          },
          click(45, 35), type("ERASE"), [&] { erased = entities().size(); }, type("U"),
          [&] { back = entities().size(); }});
    EXPECT_NEAR(from.distanceTo({20, 10, 0}), 0, kPixel);
    EXPECT_NEAR(to.distanceTo({70, 60, 0}), 0, kPixel);
    EXPECT_EQ(erased, 0u) << transcript().toStdString();
    EXPECT_EQ(back, 1u) << transcript().toStdString();
}

TEST_F(DeskTest, WindowsSelectWhatIsInsideAndFromRightToLeftWhatTheyTouch) {
    size_t inside = 99, touched = 99;
    play({type(kView), type("LINE 0,0 10,0 "), type("LINE 5,20 60,20 "), type("ERASE"), drag(-5, 25, 30, -5),
          type(""), [&] { inside = entities().size(); }, type("U"), drag(30, -5, -5, 25), type("ERASE"),
          [&] { touched = entities().size(); }});
    EXPECT_EQ(inside, 1u) << transcript().toStdString();
    EXPECT_EQ(touched, 0u) << transcript().toStdString();
}

TEST_F(DeskTest, ATypedPolylineIsCleanedSavedAndReadAgain) {
    const std::string path = folder() / "clean.dxf";
    unsigned before = 0;
    play({type("PLINE 0,0 10,0 20,0 30,0 30,20 "),
          [&] {
              AcDbObjectPointer<AcDbPolyline> line(entities().at(0), AcDb::kForRead);
              before = line->numVerts();
          },
          type("PLYH all  2 Yes"), type("SAVEAS \"" + QString::fromStdString(path) + "\"")});
    EXPECT_EQ(before, 5u);
    desk_.reset();
    AcDbDatabase read(false);
    ASSERT_TRUE(host::readDrawing(path, read).ok);
    AcDbObjectPointer<AcDbBlockTableRecord> space(read.modelSpaceId(), AcDb::kForRead);
    ASSERT_EQ(space->entities().size(), 1u);
    AcDbObjectPointer<AcDbPolyline> line(*space->entities().begin(), AcDb::kForRead);
    EXPECT_EQ(line->numVerts(), 3u); // the corner and the ends
}

TEST_F(DeskTest, PicksSnapToEndsWithinReach) {
    AcGePoint3d from;
    play({[] { setSnaps(L"1"); }, type(kView), type("LINE 0,0 50,40 "), type("LINE"), click(51, 40.6),
          click(90, 10), type(""),
          [&] {
              AcDbObjectPointer<AcDbLine> line(entities().at(1), AcDb::kForRead);
              from = line->startPoint();
          }});
    EXPECT_EQ(from.x, 50);
    EXPECT_EQ(from.y, 40);
}

TEST_F(DeskTest, EscapeCancelsAndEnterRepeats) {
    size_t none = 99;
    play({type("LINE"), press(Qt::Key_Escape), [&] { none = entities().size(); }, type(""), type("1,1"),
          type("2,2"), type("")});
    EXPECT_EQ(none, 0u);
    EXPECT_TRUE(transcript().contains("*Cancel*"));
    EXPECT_EQ(transcript().count("Specify first point:"), 2) << transcript().toStdString();
}

TEST_F(DeskTest, TheWheelKeepsThePlaceAndAsksForNoSaving) {
    AcGePoint3d before, after;
    double heightBefore = 0, heightAfter = 0;
    bool changed = true;
    play({type(kView), [&] {
              drawing().undoLog().markSaved();
              const QPointF at(200, 150);
              before = canvas().pointAt(at);
              heightBefore = canvas().map().view().height;
              QWheelEvent event(at, at, {}, {0, 240}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
              QApplication::sendEvent(&canvas(), &event);
              after = canvas().pointAt(at);
              heightAfter = canvas().map().view().height;
              changed = drawing().undoLog().changedSinceSave();
          }});
    EXPECT_NEAR(before.distanceTo(after), 0, 1e-9);
    EXPECT_NEAR(heightAfter, heightBefore / 1.5625, 1e-9); // two notches
    EXPECT_FALSE(changed);
}

TEST_F(DeskTest, TabCompletesNamesOfCommands) {
    QString completed;
    play({[&] {
        QLineEdit* input = desk_->window().commandLine().input();
        QTest::keyClicks(input, "PLBL");
        QTest::keyClick(input, Qt::Key_Tab);
        completed = input->text();
        input->clear();
    }});
    EXPECT_EQ(completed, "PLBLENDS");
}

TEST_F(DeskTest, WhatIsDrawnShowsOnTheCanvas) {
    QImage empty, drawn;
    QPoint on, off;
    play({type(kView), [&] { empty = canvas().grab().toImage(); }, type("LINE 0,0 100,80 "),
          [&] {
              drawn = canvas().grab().toImage();
              on = pixel(50, 40), off = pixel(20, 70);
          }});
    const auto part = [](const QImage& image, QPoint at) { return image.copy(at.x() - 2, at.y() - 2, 5, 5); };
    EXPECT_NE(part(empty, on), part(drawn, on));
    EXPECT_EQ(part(empty, off), part(drawn, off));
}

} // namespace
} // namespace desktest
