// The hand over the drawing: axes, grips, views in the hand, and what programs hear and show meanwhile.
#include <QTest>

#include "host/ed/commands.h"
#include "host/ed/document.h"
#include "host/ed/editor.h"
#include "host/ed/input_point.h"
#include "host/ed/jig.h"
#include "host/ed/message_filter.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/os/keys.h"
#include "host/ui/window.h"
#include "host/view/screen.h"
#include "host/view/transients.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

const QString kView = "ZOOM W -10,-10 110,90"; // a pixel is about a sixth of a unit
constexpr double kPixel = 0.3;

class HandTest : public DeskTest {
protected:
    std::function<void()> set(const wchar_t* name, const wchar_t* value) {
        return [name, value] {
            std::wstring why;
            ASSERT_TRUE(host::setSystemVariableText(*host::findSystemVariable(name), value, why));
        };
    }
    std::function<void()> move(double x, double y, Qt::KeyboardModifiers held = {}) {
        return [this, x, y, held] {
            const QPointF at = pixel(x, y);
            QMouseEvent event(QEvent::MouseMove, at, canvas().mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                              held);
            QApplication::sendEvent(&canvas(), &event);
        };
    }
    AcGePoint3d endOf(size_t line) {
        AcDbObjectPointer<AcDbLine> one(entities().at(line), AcDb::kForRead);
        return one ? one->endPoint() : AcGePoint3d();
    }
    std::function<void()> noteEnd(AcGePoint3d& into, size_t line = 0) {
        return [this, &into, line] { into = endOf(line); };
    }
    // The canvas without its crosshair.
    QImage picture() {
        QEvent away(QEvent::Leave);
        QApplication::sendEvent(&canvas(), &away);
        return canvas().grab().toImage();
    }
    // The brightest of the pixels round a place of the drawing.
    int light(double x, double y) {
        const QImage image = picture();
        const QPoint at = pixel(x, y);
        int most = 0;
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx) most = std::max(most, qGray(image.pixel(at + QPoint(dx, dy))));
        return most;
    }
    void dragMiddle(QPoint from, QPoint to, Qt::KeyboardModifiers held = {}) {
        QTest::mousePress(&canvas(), Qt::MiddleButton, held, from);
        QTest::mouseMove(&canvas(), to);
        QTest::mouseRelease(&canvas(), Qt::MiddleButton, held, to);
    }
};
constexpr int kLit = 110;

TEST_F(HandTest, AlongTheAxesByF8AndRoundByShift) {
    AcGePoint3d free, level, turned;
    play({set(L"OSMODE", L"0"),
          type(kView),
          type("LINE"),
          click(10, 10),
          click(60, 22),
          noteEnd(free),
          type(""),
          type("ERASE ALL "),
          type("LINE"),
          click(10, 10),
          press(Qt::Key_F8),
          click(60, 22),
          type(""),
          noteEnd(level),
          type("ERASE ALL "),
          type("LINE"),
          click(10, 10),
          click(60, 22, Qt::ShiftModifier),
          type(""),
          noteEnd(turned),
          press(Qt::Key_F8)});
    EXPECT_NEAR(free.y, 22, kPixel);
    EXPECT_NEAR(level.x, 60, kPixel);
    EXPECT_NEAR(level.y, 10, kPixel);
    EXPECT_NEAR(turned.y, 22, kPixel);
    EXPECT_TRUE(transcript().contains("<Ortho on>")) << transcript().toStdString();
    EXPECT_TRUE(transcript().contains("<Ortho off>"));
}

TEST_F(HandTest, SnapsGoBeforeTheAxesAndF3SwitchesThem) {
    AcGePoint3d snapped, free;
    play({set(L"OSMODE", L"1"), set(L"ORTHOMODE", L"1"), type(kView), type("LINE 60,30 90,80 "), type("LINE"),
          click(10, 10), click(60.6, 30.4), type(""), noteEnd(snapped, 1), press(Qt::Key_F3), type("LINE"),
          click(10, 10), click(60.6, 30.4), type(""), noteEnd(free, 2), press(Qt::Key_F3),
          set(L"ORTHOMODE", L"0")});
    EXPECT_EQ(snapped, AcGePoint3d(60, 30, 0));
    EXPECT_NEAR(free.x, 60.6, kPixel);
    EXPECT_NEAR(free.y, 10, kPixel);
}

TEST_F(HandTest, TheAxesAreTheUsers) {
    AcGePoint3d end;
    play({set(L"OSMODE", L"0"), type("UCS Z 30"), type(kView), set(L"ORTHOMODE", L"1"), type("LINE"),
          click(10, 10), click(60, 30), type(""), noteEnd(end), set(L"ORTHOMODE", L"0")});
    EXPECT_NEAR((end.y - 10) / (end.x - 10), std::tan(M_PI / 6), 0.02);
}

TEST_F(HandTest, AGripIsDraggedInOneStepThatCanBeTakenBack) {
    AcGePoint3d dragged, back;
    size_t steps = 0;
    play({set(L"OSMODE", L"0"), type(kView), type("LINE 0,0 50,40 "), click(25, 20),
          [&] { steps = drawing().undoLog().undoSteps(); }, drag(50, 40, 80, 10),
          [&] {
              dragged = endOf(0);
              steps = drawing().undoLog().undoSteps() - steps;
          },
          type("U"), noteEnd(back)});
    EXPECT_NEAR(dragged.distanceTo({80, 10, 0}), 0, kPixel);
    EXPECT_EQ(back, AcGePoint3d(50, 40, 0));
    EXPECT_EQ(steps, 1u);
}

TEST_F(HandTest, AGripInHandShowsWhatWillBeSnapsAndIsLeftByEscape) {
    AcGePoint3d left, snapped;
    int before = 0, meanwhile = 0, after = 0;
    play({set(L"OSMODE", L"1"), type(kView), type("LINE 0,0 50,0 "), type("LINE 80,60 90,60 "), click(25, 0),
          [&] { before = light(25, 30); }, click(50, 0), move(50, 60), [&] { meanwhile = light(25, 30); },
          press(Qt::Key_Escape), [&] { after = light(25, 30); }, noteEnd(left), click(50, 0),
          click(80.5, 60.5), noteEnd(snapped), press(Qt::Key_Escape)});
    EXPECT_LT(before, kLit);
    EXPECT_GT(meanwhile, kLit); // the line would go through it
    EXPECT_LT(after, kLit);
    EXPECT_EQ(left, AcGePoint3d(50, 0, 0));
    EXPECT_EQ(snapped, AcGePoint3d(80, 60, 0));
}

TEST_F(HandTest, PointsAreTypedForAGripInHand) {
    AcGePoint3d relative, absolute;
    play({set(L"OSMODE", L"0"), type(kView), type("LINE 0,0 50,40 "), click(25, 20), click(50, 40),
          type("@10,-5"), noteEnd(relative), click(60, 35), type("1,70"), noteEnd(absolute),
          press(Qt::Key_Escape)});
    EXPECT_EQ(relative, AcGePoint3d(60, 35, 0));
    EXPECT_EQ(absolute, AcGePoint3d(1, 70, 0));
}

TEST_F(HandTest, ATypedSnapHoldsForThePointThatFollows) {
    AcGePoint3d from, to;
    play({set(L"OSMODE", L"0"), type(kView), type("LINE 0,0 50,40 "), type("LINE"), type("mid"),
          click(26, 20.5), click(50.5, 40.5), type(""), [&] {
              AcDbObjectPointer<AcDbLine> line(entities().at(1), AcDb::kForRead);
              from = line->startPoint(), to = line->endPoint();
          }});
    EXPECT_EQ(from, AcGePoint3d(25, 20, 0));
    EXPECT_NEAR(to.distanceTo({50.5, 40.5, 0}), 0, kPixel); // once
}

// Between its two corners a window stays where it is in the drawing, whatever the view does.
TEST_F(HandTest, AWindowStaysWhereItWasBegun) {
    size_t left = 9;
    play({type(kView), type("LINE 20,20 30,30 "), type("ERASE"), click(10, 10),
          [this] { canvas().zoomBy(0.5); }, click(40, 40), type(""), [&] { left = entities().size(); }});
    EXPECT_EQ(left, 0u);
}

TEST_F(HandTest, TheGridStandsUnderTheDrawingWhileItIsOn) {
    QImage off, on, offAgain;
    play({type(kView), [&] { off = picture(); }, press(Qt::Key_F7), [&] { on = picture(); },
          press(Qt::Key_F7), [&] { offAgain = picture(); }});
    EXPECT_NE(off, on);
    EXPECT_EQ(off, offAgain);
    EXPECT_TRUE(transcript().contains("<Grid on>"));
}

// Marks of points are as large on the screen as they were, whatever the view.
TEST_F(HandTest, PointsKeepTheirSizeOnTheScreen) {
    const auto inked = [this] {
        const QImage image = picture().copy(QRect(pixel(50, 40) - QPoint(40, 40), QSize(80, 80)));
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) count += qGray(image.pixel(x, y)) > kLit;
        return count;
    };
    int before = 0, after = 0;
    play({type("PDMODE 3"), type(kView), type("POINT 50,40"), [&] {
              before = inked();
              canvas().zoomBy(1.5);
              after = inked();
          }});
    EXPECT_GT(before, 20);
    EXPECT_NEAR(after, before, 6);
}

// Two lines that meet are moved by the point that they share, and both stay selected.
TEST_F(HandTest, GripsInOnePlaceMoveTogether) {
    AcGePoint3d first, second;
    play({set(L"OSMODE", L"0"), type(kView), type("LINE 0,0 50,40 100,0 "), click(25, 20), click(75, 20),
          drag(50, 40, 50, 70), noteEnd(first), [&] {
              AcDbObjectPointer<AcDbLine> line(entities().at(1), AcDb::kForRead);
              second = line->startPoint();
          }});
    EXPECT_NEAR(first.distanceTo({50, 70, 0}), 0, kPixel);
    EXPECT_EQ(first, second);
}

TEST_F(HandTest, LockedLayersHaveNoGrips) {
    AcGePoint3d end;
    play({set(L"OSMODE", L"0"), type(kView), type("LINE 0,0 50,40 "),
          [&] {
              AcDbObjectPointer<AcDbLayerTableRecord> layer(drawing().layerZero(), AcDb::kForWrite);
              layer->setIsLocked(true);
          },
          click(25, 20), drag(50, 40, 80, 10), noteEnd(end), press(Qt::Key_Escape)});
    EXPECT_EQ(end, AcGePoint3d(50, 40, 0));
}

class Listener : public AcEdInputPointMonitor {
public:
    std::vector<AcGePoint3d> heard;
    Acad::ErrorStatus monitorInputPoint(const AcEdInputPoint& input, AcEdInputPointMonitorResult&) override {
        heard.push_back(input.computedPoint());
        return Acad::eOk;
    }
};

TEST_F(HandTest, MonitorsHearTheCursorWithItsSnaps) {
    Listener listener;
    QPoint mouse;
    play({set(L"OSMODE", L"1"), type(kView), type("LINE 0,0 50,40 "),
          [&] { curDoc()->inputPointManager()->addPointMonitor(&listener); }, type("LINE"), move(20, 60),
          move(50.5, 40.5),
          [&] {
              POINT at;
              GetCursorPos(&at);
              mouse = QPoint(at.x, at.y) - canvas().mapToGlobal(pixel(50.5, 40.5));
              curDoc()->inputPointManager()->removePointMonitor(&listener);
          },
          press(Qt::Key_Escape)});
    ASSERT_GE(listener.heard.size(), 2u);
    EXPECT_NEAR(listener.heard[listener.heard.size() - 2].distanceTo({20, 60, 0}), 0, kPixel);
    EXPECT_EQ(listener.heard.back(), AcGePoint3d(50, 40, 0));
    EXPECT_LE(mouse.manhattanLength(), 1);
}

class PlaneListener : public AcEdInputPointMonitor {
public:
    int computed = 0, missed = 0;
    Acad::ErrorStatus monitorInputPoint(const AcEdInputPoint& input, AcEdInputPointMonitorResult&) override {
        ++(input.pointComputed() ? computed : missed);
        return Acad::eOk;
    }
};

// From the front the user's plane is a line: the cursor stands for no point there.
TEST_F(HandTest, MonitorsHearWhereTheViewGivesNoPoint) {
    PlaneListener above, before;
    play({set(L"OSMODE", L"0"), type(kView), [&] { curDoc()->inputPointManager()->addPointMonitor(&above); },
          move(20, 60),
          [&] {
              curDoc()->inputPointManager()->removePointMonitor(&above);
              curDoc()->inputPointManager()->addPointMonitor(&before);
          },
          type("-VIEW O F"), move(20, 0),
          [&] { curDoc()->inputPointManager()->removePointMonitor(&before); }});
    EXPECT_GT(above.computed, 0);
    EXPECT_EQ(above.missed, 0);
    EXPECT_GT(before.missed, 0);
}

TEST_F(HandTest, TransientsAndVectorsStandOverThePicture) {
    AcDbCircle circle({30, 50, 0}, AcGeVector3d::kZAxis, 10);
    const AcArray<int> everywhere;
    int none = 0, shown = 0, moved = 0, gone = 0, line = 0, lineAfterZoom = 0;
    play({type(kView), [&] {
              none = light(40, 50);
              acgiGetTransientManager()->addTransient(&circle, kAcGiDirectShortTerm, 0, everywhere);
              shown = light(40, 50);
              circle.setRadius(20);
              acgiGetTransientManager()->updateTransient(&circle, everywhere);
              moved = light(50, 50);
              acgiGetTransientManager()->eraseTransient(&circle, everywhere);
              gone = light(50, 50);
              const ads_point from{0, 20, 0}, to{100, 20, 0};
              acedGrDraw(from, to, 7, 0);
              line = light(50, 20);
              canvas().zoomBy(1.01);
              lineAfterZoom = light(50, 20);
          }});
    EXPECT_LT(none, kLit);
    EXPECT_GT(shown, kLit);
    EXPECT_GT(moved, kLit);
    EXPECT_LT(gone, kLit);
    EXPECT_GT(line, kLit);
    EXPECT_LT(lineAfterZoom, kLit);
}

// A jig of a command drags its circle while the prompt waits, and the drawing gets it in the end.
class CircleJig : public AcEdJig {
public:
    DragStatus sampler() override { return acquireDist(radius_, {50, 40, 0}); }
    Adesk::Boolean update() override { return circle_->setRadius(radius_) == Acad::eOk; }
    AcDbEntity* entity() const override { return circle_; }
    AcDbCircle* circle_ = new AcDbCircle({50, 40, 0}, AcGeVector3d::kZAxis, 1);

private:
    double radius_ = 1;
};
void dragCircle() {
    CircleJig jig;
    jig.setDispPrompt(L"\nRadius: ");
    jig.circle_->setDatabaseDefaults();
    if (jig.drag() == AcEdJig::kNormal)
        jig.append();
    else
        delete jig.circle_;
}

TEST_F(HandTest, AJigFollowsTheCursor) {
    int small = 0, large = 0, smallThen = 0;
    double radius = 0;
    auto* commands = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    commands->addCommand(L"TESTS", L"DRAGCIRCLE", L"DRAGCIRCLE", ACRX_CMD_MODAL, dragCircle);
    play({set(L"OSMODE", L"0"), type(kView), type("DRAGCIRCLE"), move(60, 40), [&] { small = light(50, 50); },
          move(50, 70), [&] { smallThen = light(50, 50), large = light(20, 40); }, click(50, 65),
          [&] {
              AcDbObjectPointer<AcDbCircle> circle(entities().at(0), AcDb::kForRead);
              radius = circle->radius();
          }});
    commands->removeGroup(L"TESTS");
    EXPECT_GT(small, kLit);
    EXPECT_GT(large, kLit);
    EXPECT_LT(smallThen, kLit);
    EXPECT_NEAR(radius, 25, kPixel);
}

TEST_F(HandTest, WhatProgramsHighlightShines) {
    QColor plain, shining, after;
    const auto note = [this](QColor& into) { into = picture().pixelColor(pixel(50, 40)); };
    play({type(kView), type("PLINE 0,40 W 6 6 100,40 "), [&] {
              note(plain);
              AcDbObjectPointer<AcDbEntity> entity(entities().at(0), AcDb::kForRead);
              entity->highlight();
              note(shining);
              entity->unhighlight();
              note(after);
          }});
    EXPECT_EQ(plain, QColor(Qt::white));
    EXPECT_NE(plain, shining);
    EXPECT_EQ(plain, after);
}

TEST_F(HandTest, BlackIsSeenOnDarkGroundAndWhiteOnLight) {
    for (const bool dark : {true, false}) {
        const int ground = qGray(desk::groundColor(dark).rgb());
        for (const std::uint32_t rgb : {0x000000u, 0x202428u, 0xFFFFFFu, 0xFF0000u})
            EXPECT_GE(std::abs(qGray(desk::readableInk(rgb, dark)) - ground), 36) << rgb;
        EXPECT_EQ(desk::readableInk(0xFF0000, dark), 0xFF0000u);
    }
}

int tabs = 0;
BOOL takeTab(MSG* message) { return message->wParam == VK_TAB ? ++tabs : FALSE; }

TEST_F(HandTest, FiltersTakeKeysFromCanvasAndCommandLineAlike) {
    tabs = 0;
    QString typed;
    play({[&] {
        acedRegisterFilterWinMsg(takeTab);
        QLineEdit* input = desk_->window().commandLine().input();
        QTest::keyClick(&canvas(), Qt::Key_Tab);
        desk_->window().activateWindow();
        input->setFocus();
        QTest::keyClicks(input, "PLBL");
        QTest::keyClick(input, Qt::Key_Tab);
        typed = input->text();
        acedRemoveFilterWinMsg(takeTab);
        input->clear();
    }});
    EXPECT_GE(tabs, 1);
    EXPECT_TRUE(typed == "PLBL" || tabs == 1)
        << typed.toStdString(); // without focus it isn't the window's key
}

TEST_F(HandTest, HeldKeysAreKnownWhileTheyAreHeld) {
    bool ctrl = false, after = true, space = false;
    play({[&] {
        QTest::keyPress(&canvas(), Qt::Key_Control);
        ctrl = host::keyHeld(host::Key::ctrl);
        QTest::keyRelease(&canvas(), Qt::Key_Control);
        after = host::keyHeld(host::Key::ctrl);
        QTest::keyPress(&canvas(), Qt::Key_Space);
        space = GetAsyncKeyState(VK_SPACE) < 0;
        QTest::keyRelease(&canvas(), Qt::Key_Space);
    }});
    EXPECT_TRUE(ctrl);
    EXPECT_FALSE(after);
    EXPECT_TRUE(space);
}

TEST_F(HandTest, TheEyeGoesRoundWhatLiesInTheMiddle) {
    host::ViewFrame view;
    QPoint before, after;
    bool asks = true;
    size_t steps = 9;
    play({type(kView), type("LINE 0,0 100,80 "),
          [&] {
              drawing().undoLog().markSaved();
              steps = drawing().undoLog().undoSteps();
              before = pixel(50, 40);
              dragMiddle({300, 200}, {360, 150}, Qt::ShiftModifier);
              after = pixel(50, 40);
              view = host::surroundings().view;
              asks = drawing().undoLog().changedSinceSave();
              steps = drawing().undoLog().undoSteps() - steps;
          },
          type("-VIEW O T")});
    EXPECT_LE((after - before).manhattanLength(), 1);
    const AcGeVector3d d = view.direction.normal();
    EXPECT_NEAR(d.z, std::sin(M_PI / 2 - 0.5), 1e-3); // 50 pixels, a hundredth each
    EXPECT_FALSE(asks);
    EXPECT_EQ(steps, 0u);
}

// What panning shows, moved and with strips added, is the picture that the view would get anew.
TEST_F(HandTest, APannedPictureIsAsIfMadeAnew) {
    QImage panned, anew;
    play({type(kView), type("CIRCLE 50,40 30"), type("LINE -50,-30 150,110 "),
          type("TEXT 20,20 10 0 Corvane"), [&] {
              canvas().grab();
              dragMiddle({300, 200}, {383, 141});
              panned = picture();
              canvas().setDark(false);
              canvas().setDark(true);
              anew = picture();
          }});
    ASSERT_EQ(panned.size(), anew.size());
    int off = 0;
    for (int y = 0; y < anew.height(); ++y)
        for (int x = 0; x < anew.width(); ++x)
            off += std::abs(qGray(panned.pixel(x, y)) - qGray(anew.pixel(x, y))) > 8;
    EXPECT_LE(off, 4);
    EXPECT_GT(anew.width(), 500);
}

// Where something has changed the picture is painted anew, and is then what the view would get as a whole.
TEST_F(HandTest, AChangedPictureIsAsIfMadeAnew) {
    const QString changes[] = {"MOVE 50,10  0,0 7,-3", "CIRCLE 70,60 12", "ERASE 50,10 ", "U", "U", "U",
                               "TEXT 5,60 6 0 Text"};
    std::vector<std::function<void()>> steps{type(kView), type("LINE 0,0 100,80 "), type("CIRCLE 50,40 30"),
                                             type("PLINE 0,80 W 6 2 100,0 ")};
    for (const QString& change : changes) {
        steps.push_back(type(change));
        steps.push_back([this, change] {
            const QImage followed = picture();
            canvas().setDark(false);
            canvas().setDark(true);
            EXPECT_EQ(followed, picture()) << change.toStdString();
        });
    }
    play(steps);
}

TEST_F(HandTest, LineweightsShowWhereTheDrawingWantsThem) {
    int thin = 0, wide = 0;
    play({type(kView), type("LINE 0,40 100,40 "),
          [&] {
              AcDbObjectPointer<AcDbLine> line(entities().at(0), AcDb::kForWrite);
              line->setLineWeight(AcDb::kLnWt211);
          },
          [&] { thin = light(50, 40.6); }, set(L"LWDISPLAY", L"1"), type(""),
          [&] { wide = light(50, 40.4); }});
    EXPECT_LT(thin, kLit);
    EXPECT_GT(wide, kLit);
}

} // namespace
} // namespace desktest
