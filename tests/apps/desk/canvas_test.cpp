// The canvas: what counts as hit, what is highlighted, views by hand, and many entities.
#include <QPainter>
#include <QTest>

#include <random>

#include "apps/desk/list_painter.h"
#include "apps/desk/picking.h"
#include "apps/desk/scene.h"
#include "host/ed/prompting.h"
#include "host/ent/line.h"
#include "host/ent/ray.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

const QString kView = "ZOOM W -10,-10 110,90";

class CanvasTest : public DeskTest {
protected:
    // The scene of the drawing as the canvas shows it.
    desk::Scene& scene() {
        scene_.rebuild(drawing(), canvas().map());
        return scene_;
    }
    AcDbObjectId under(double x, double y) {
        return desk::entityUnder(scene(), canvas().map(), QPointF(pixel(x, y)), 5);
    }

private:
    desk::Scene scene_;
};

TEST_F(CanvasTest, HitsAreByWhatIsDrawn) {
    struct Row {
        const char* what;
        QString draws;
        double x, y;
        bool hit;
    };
    const Row rows[] = {{"on a line", "LINE 0,0 40,0 ", 20, 0, true},
                        {"beside it", "LINE 0,0 40,0 ", 20, 4, false},
                        {"behind its end", "LINE 0,0 40,0 ", 44, 0, false},
                        {"on a circle", "CIRCLE 50,50 20", 70, 50, true},
                        {"in its middle", "CIRCLE 50,50 20", 50, 50, false},
                        {"within a wide polyline", "PLINE 0,60 W 10 10 40,60 ", 20, 62, true},
                        {"on a letter", "TEXT 60,10 20 0 HHH", 75, 20, true}};
    std::vector<std::function<void()>> steps{type(kView)};
    for (const Row& row : rows) {
        steps.push_back(type(row.draws));
        steps.push_back([this, &row] { EXPECT_EQ(!under(row.x, row.y).isNull(), row.hit) << row.what; });
        steps.push_back(type("ERASE ALL  "));
        steps.push_back(press(Qt::Key_Escape));
    }
    play(steps);
}

TEST_F(CanvasTest, TheLaterOfTwoInOnePlaceIsHit) {
    AcDbObjectId hit, second;
    play({type(kView), type("LINE 0,0 40,0 "), type("LINE 10,0 30,0 "), [&] {
              hit = under(20, 0);
              second = entities().at(1);
          }});
    EXPECT_EQ(hit, second);
}

TEST_F(CanvasTest, ASelectionShinesAndEscapePutsItOut) {
    QImage plain, shining, after;
    const auto shot = [this](QImage& into) {
        return [this, &into] {
            QEvent away(QEvent::Leave); // no crosshair in the picture
            QApplication::sendEvent(&canvas(), &away);
            into = canvas().grab().toImage();
        };
    };
    play({type(kView), type("LINE 0,0 100,80 "), shot(plain), click(50, 40), shot(shining),
          press(Qt::Key_Escape), shot(after)});
    EXPECT_NE(plain, shining);
    EXPECT_EQ(plain, after);
}

TEST_F(CanvasTest, PanByTheMiddleButtonMovesThePictureAlong) {
    QPoint before, after;
    play({type(kView), type("LINE 0,0 100,80 "), [&] {
              before = pixel(50, 40);
              QTest::mousePress(&canvas(), Qt::MiddleButton, {}, {300, 200});
              QTest::mouseMove(&canvas(), {360, 170});
              QTest::mouseRelease(&canvas(), Qt::MiddleButton, {}, {360, 170});
              after = pixel(50, 40);
          }});
    EXPECT_LE((after - before - QPoint(60, -30)).manhattanLength(), 1);
}

TEST_F(CanvasTest, ZoomExtentsShowsEverything) {
    play({type("LINE 1000,2000 1500,2200 "), [&] {
              canvas().zoomExtents();
              const QRect inside = canvas().rect().adjusted(5, 5, -5, -5);
              EXPECT_TRUE(inside.contains(pixel(1000, 2000)));
              EXPECT_TRUE(inside.contains(pixel(1500, 2200)));
          }});
}

// Windows on the canvas take what the editor's own take. Lines have no width here: the editor goes by the
// middle of wide ones, the canvas by what is seen.
TEST_F(CanvasTest, WindowsTakeWhatTheEditorsDo) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> place(0, 100);
    std::vector<std::function<void()>> steps{type(kView)};
    const auto number = [&] { return QString::number(place(random), 'f', 3); };
    for (int i = 0; i < 40; ++i) {
        const QString at = number() + "," + number(), to = number() + "," + number();
        const QString kinds[] = {"LINE " + at + " " + to + " ",
                                 "CIRCLE " + at + " " + QString::number(i % 9 + 1),
                                 "PLINE " + at + " " + to + " 50,50 "};
        steps.push_back(type(kinds[i % 3]));
    }
    const char* views[] = {"ZOOM W -10,-10 110,90", "-VIEW O SE"};
    for (const char* view : views) {
        steps.push_back(type(view));
        steps.push_back([&] {
            size_t taken = 0;
            for (int i = 0; i < 60; ++i) {
                const QRectF window(QPointF(place(random) * 6, place(random) * 5),
                                    QPointF(place(random) * 6, place(random) * 5));
                std::vector<AcGePoint3d> corners;
                for (const QPointF corner :
                     {window.topLeft(), window.topRight(), window.bottomRight(), window.bottomLeft()})
                    corners.push_back(canvas().pointAt(corner));
                for (const bool crossing : {false, true}) {
                    const auto here = desk::entitiesWithin(scene(), canvas().map(), window, crossing);
                    EXPECT_EQ(here, host::entitiesIn(corners, crossing))
                        << i << (crossing ? " crossing" : " window");
                    taken += here.size();
                }
            }
            EXPECT_GT(taken, 200u);
        });
    }
    play(steps);
}

TEST_F(CanvasTest, EndlessLinesAreTouchedAnywhereAndNeverHeld) {
    const auto add = [this](host::EndlessCurve* line, const AcGePoint3d& base,
                            const AcGeVector3d& direction) {
        line->setBasePoint(base);
        line->setUnitDir(direction);
        AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().modelSpaceId(), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
        line->close();
    };
    play({type(kView), [&] {
              add(new AcDbXline, {0, 0, 0}, {1, 1, 0});
              add(new AcDbRay, {50, 10, 0}, {1, 0, 0});
              const auto within = [&](double x, double y, double toX, double toY, bool crossing) {
                  const QRectF window(pixel(x, y), pixel(toX, toY));
                  return desk::entitiesWithin(scene(), canvas().map(), window, crossing).size();
              };
              EXPECT_EQ(within(70, 75, 80, 65, true), 1u);
              EXPECT_EQ(within(90, 15, 95, 5, true), 1u);
              EXPECT_EQ(within(30, 15, 40, 5, true), 0u); // behind the ray's start
              EXPECT_EQ(within(-5, 50, 105, -5, false), 0u);
          }});
}

// The index gives what a look at every primitive gives.
TEST_F(CanvasTest, OwnersInAWindowAreThoseWhoseBoxesMeetIt) {
    play({type(kView), [&] {
              std::mt19937 random(7);
              std::uniform_real_distribution<double> place(-500, 500), size(-30, 30);
              AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().modelSpaceId(), AcDb::kForWrite);
              std::vector<AcDbExtents2d> boxes;
              std::vector<AcDbObjectId> ids;
              for (int i = 0; i < 500; ++i) {
                  const AcGePoint3d from(place(random), place(random), 0);
                  const AcGePoint3d to(from.x + size(random), from.y + size(random), 0);
                  auto* line = new AcDbLine(from, to);
                  AcDbObjectId id;
                  ASSERT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
                  line->close();
                  ids.push_back(id);
                  boxes.emplace_back();
                  boxes.back().addPoint({from.x, from.y});
                  boxes.back().addPoint({to.x, to.y});
              }
              space.close();
              const AcDbExtents2d window({-80, -120}, {160, 90});
              std::vector<AcDbObjectId> plain;
              for (size_t i = 0; i < ids.size(); ++i)
                  if (boxes[i].minPoint().x <= 160 && boxes[i].maxPoint().x >= -80 &&
                      boxes[i].minPoint().y <= 90 && boxes[i].maxPoint().y >= -120)
                      plain.push_back(ids[i]);
              EXPECT_FALSE(plain.empty());
              EXPECT_EQ(scene().ownersWithin(window, canvas().map()), plain);
          }});
}

} // namespace
} // namespace desktest
