// The canvas: shows the current drawing, and turns the mouse into points, picks and windows for whoever asks.
// What the view shows is kept as a picture, made anew when the drawing or the view has changed; crosshair,
// rubber band, marks and highlights are painted over it.
#pragma once
#include <QImage>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "apps/desk/drawing_watch.h"
#include "apps/desk/list_painter.h"
#include "apps/desk/scene.h"
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
    };
    void want(const Want& want);

    std::function<void(const AcGePoint3d& world)> onPoint;
    // Null where nothing was hit; `shift` takes away from a selection.
    std::function<void(AcDbObjectId entity, const AcGePoint3d& world, bool shift)> onEntity;
    // Two corners on the user's plane; from right to left what touches the window counts too.
    std::function<void(const AcGePoint3d& from, const AcGePoint3d& to, bool crossing, bool shift)> onWindow;
    std::function<void()> onEnter;                        // the right button
    std::function<void(QKeyEvent* event)> onKey;          // typed over the drawing
    std::function<void(const AcGePoint3d& world)> onMove; // where the cursor stands

    // Looks whether the drawing or its view has changed.
    void refresh();
    void zoomExtents();
    void zoomBy(double factor); // about the middle
    void setDark(bool dark);
    bool isDark() const { return dark_; }
    void setSelected(std::vector<AcDbObjectId> entities);
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
    void setView(const host::ViewFrame& view);
    void makePicture();
    void showPicture(QPainter& painter);
    void paintTransients(QPainter& painter);
    void paintHighlights(QPainter& painter);
    void paintRubber(QPainter& painter);
    void paintCursor(QPainter& painter);
    void pressLeft(QMouseEvent* event);
    void finishWindow(const QPointF& at, bool shift);
    void moveCursor(const QPointF& at);
    void findSnap();
    QPointF screen(const AcGePoint3d& world) const;

    DrawingWatch watch_;
    Scene scene_;
    TextPaths texts_;
    ScreenMap map_, pictured_; // now, and when the picture was made
    QImage picture_;
    enum class State { stale, rough, fine } state_ = State::stale;
    QTimer settle_;   // makes the picture again when the view has come to rest
    double cost_ = 0; // milliseconds that the last picture took
    bool dark_ = true, shown_ = false;
    Want want_;
    std::vector<AcDbObjectId> selected_;
    std::optional<QPointF> cursor_, pan_, window_; // window_: its first corner
    std::optional<Snap> snap_;
};

} // namespace desk
