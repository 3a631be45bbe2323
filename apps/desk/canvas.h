// The canvas: shows the current drawing, and turns the mouse into points, picks and windows for whoever asks.
// What the view shows is kept as a picture, made anew when the drawing or the view has changed, and a second
// one with what shines or stands for a moment over it; crosshair, rubber band and marks are painted at every
// turn.
#pragma once
#include <QImage>
#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "apps/desk/drawing_watch.h"
#include "apps/desk/grips.h"
#include "apps/desk/key_watch.h"
#include "apps/desk/scene_picture.h"
#include "apps/desk/snaps.h"

namespace desk {

class Canvas : public QWidget {
public:
    explicit Canvas(QWidget* parent = nullptr);

    // What the mouse is to give.
    struct Want {
        enum class Kind { nothing, point, entity, objects } kind = Kind::nothing;
        std::optional<AcGePoint3d> base; // of the rubber band; world
        bool corner = false;             // the rubber band is a rectangle
        bool grips = false;              // what is selected can be taken by its grips
        int snaps = 0;                   // the object snap that is asked for this time, instead of OSMODE's
    };
    void want(const Want& want);

    std::function<void(const AcGePoint3d& world)> onPoint;
    // Null where nothing was hit; `shift` takes away from a selection.
    std::function<void(AcDbObjectId entity, const AcGePoint3d& world, bool shift)> onEntity;
    // A window on the screen: its corners on the user's plane, and what lies in it; from right to left what
    // touches it counts too.
    struct Window {
        std::array<AcGePoint3d, 4> corners;
        std::vector<AcDbObjectId> entities;
        bool crossing = false, shift = false;
    };
    std::function<void(const Window& window)> onWindow;
    std::function<void(const std::function<void()>& move)> onGrip; // does the move as a command
    std::function<void()> onEnter;                                 // the right button
    std::function<void(QKeyEvent* event)> onKey;                   // typed over the drawing
    std::function<void(const AcGePoint3d& world)> onMove;          // where the cursor stands
    std::function<void(const QString& text)> onNote;               // what a key has switched

    // Looks whether the drawing or its view has changed.
    void refresh();
    // The drawing is closed: should another one come in its place, it is seen for the first time.
    void forget(const AcDbDatabase* database) { seen_.erase(database); }
    void zoomExtents();
    void zoomBy(double factor); // about the middle
    void setDark(bool dark);
    bool isDark() const { return dark_; }
    void setSelected(std::vector<AcDbObjectId> entities);
    // Lets go of a grip in hand, or gives up a window begun; false when there was neither.
    bool letGo();
    // Where the grip in hand was taken, world coordinates; nothing when there is none.
    std::optional<AcGePoint3d> gripInHand() const {
        return grips_.hot() ? std::optional(grips_.base()) : std::nullopt;
    }
    void moveGrip(const AcGePoint3d& to); // and lets go of it
    const ScreenMap& map() const { return map_; }
    // The world point of the user's plane under a pixel.
    AcGePoint3d pointAt(const QPointF& pixel) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool focusNextPrevChild(bool) override { return false; } // Tab completes

private:
    enum class State { stale, rough, fine };

    // canvas.cpp: the picture
    void followDrawing();
    void followView();
    void drawForView();
    void setView(const host::ViewFrame& view);
    void tellSize();
    void makePicture();
    bool mayStandIn() const;
    bool shiftPicture();
    void paintPart(const QRect& part);
    void paintChanges(const Scene::Touched& touched);
    PaintLook look() const;
    void showPicture(QPainter& painter);

    // canvas_mouse.cpp: the hand
    void aim();
    void findSnap();
    void moveCursor(const QPointF& at);
    void moveHeldView(const QPointF& at);
    void pressLeft(QMouseEvent* event);
    void pressMiddle(QMouseEvent* event);
    void finishWindow(const QPointF& at, bool shift);
    bool takeGrip(const QPointF& at);
    std::optional<size_t> gripAt(const QPointF& at) const;
    bool wantsPlaces() const;
    std::optional<AcGePoint3d> rubberBase() const;

    // canvas_overlay.cpp: what lies over the picture
    bool hasOverlay() const;
    void makeOverlay();
    void paintVectors();
    void paintGrips(QPainter& painter);
    void paintRubber(QPainter& painter);
    void paintSnap(QPainter& painter);
    void paintCursor(QPainter& painter);
    QPointF screen(const AcGePoint3d& world) const;

    DrawingWatch watch_;
    KeyWatch keys_{*this};
    Scene scene_;
    TextOutlines texts_;
    ScreenMap map_, pictured_; // now, and when the picture was made
    QImage picture_, overlaid_;
    State state_ = State::stale;
    struct OverlayMark { // what the second picture was made of
        unsigned screen = 0, transients = 0;
        bool operator==(const OverlayMark&) const = default;
    } overlayMark_;
    bool overlayStale_ = true;
    QTimer settle_;   // makes the picture again when the view has come to rest
    double cost_ = 0; // milliseconds that the last picture took
    bool dark_ = true, gridded_ = false;
    std::set<const AcDbDatabase*> seen_; // drawings whose view was made to show everything once

    Want want_;
    std::vector<AcDbObjectId> selected_;
    Grips grips_;
    host::DisplayList dragged_;               // what hangs on the grip in hand
    std::optional<QPointF> cursor_, pressed_; // pressed_: where the grip in hand was taken
    std::optional<AcGePoint2d> window_;       // its first corner, display coordinates
    enum class Hold { nothing, pan, orbit } hold_ = Hold::nothing;
    QPointF held_; // where the hand that moves the view was last
    AcGePoint3d pivot_;
    AcGePoint3d aimed_; // the point that the cursor stands for
    std::optional<Snap> snap_;
};

} // namespace desk
