// A command that watches the cursor, at the desk: the real mouse lights handles, locks them and is told
// factors.
#include <QTest>
#include <gmock/gmock.h>

#include "host/view/transients.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

class GizmoAtDesk : public DeskTest {
protected:
    std::function<void()> hover(double x, double y) {
        return [this, x, y] {
            QTest::mouseMove(&canvas(), pixel(x, y));
            canvas().repaint();
        };
    }
    // How many pixels round a place have the colour.
    int inColor(double x, double y, const QColor& color, int reach = 6) {
        const QImage picture = canvas().grab().toImage();
        const QPoint at = pixel(x, y);
        int count = 0;
        for (int i = -reach; i <= reach; ++i)
            for (int j = -reach; j <= reach; ++j) count += picture.pixelColor(at + QPoint(i, j)) == color;
        return count;
    }
};

const QColor kYellow(255, 255, 0), kRed(255, 0, 0), kTooltip(255, 255, 220);

} // namespace

// The box of 110 by 66 has a gizmo of 8 percent of its diagonal on the three points at the right: 105,30.
TEST_F(GizmoAtDesk, HandlesLightUpLockAndTellTheirFactor) {
    const double size = 0.08 * std::hypot(110, 66);
    play({type("LINE 0,0 100,0 100,60 0,60 c"),
          type("CVFFD all"),
          type(""),
          type("N"),
          type("N"),
          type("'ZOOM W 60,-25 180,85"),
          type("M"),
          click(104, -20),
          click(106, 80),
          pause(),
          [&] { EXPECT_GT(inColor(105 + size * 0.7, 30, kRed), 5); },
          hover(110, 30.2),
          [&] {
              EXPECT_GT(inColor(105 + size * 0.7, 30, kYellow), 5);
              EXPECT_EQ(0, inColor(105 + size * 0.7, 30, kRed));
          },
          click(115, 31),
          pause(), // ten to the right
          type("G"),
          hover(115, 37),
          hover(115 + size, 30 + 2 * size),
          [&] {
              // Beside the mouse, twice the gizmo's size above the pivot.
              EXPECT_GT(inColor(115 + size, 30 + 2 * size, kTooltip, 40), 200);
          },
          press(Qt::Key_Escape),
          press(Qt::Key_Escape),
          press(Qt::Key_Escape)});
    // To the nearest pixel.
    EXPECT_THAT(transcript().toStdString(),
                testing::ContainsRegex("3 control points moved along X by \\((9\\.9|10\\.)"));
    EXPECT_TRUE(transcript().contains("Free-form deformation finished."));
    EXPECT_TRUE(acgiGetTransientManager()->entries().empty());
}

} // namespace desktest
