// The picture of the drawing, and the mouse over it. What is painted over the picture stands in
// canvas_overlay.cpp.
#include "apps/desk/canvas.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

#include "apps/desk/picking.h"
#include "apps/desk/view_state.h"
#include "host/ed/document.h"
#include "host/ed/prompting.h"
#include "host/os/keys.h"

namespace desk {
namespace {

constexpr double kPickRadius = 6, kSnapRadius = 11; // pixels
constexpr double kWheelStep = 1.25;                 // a notch
constexpr double kMargin = 0.03;                    // round everything
constexpr double kSlow = 25;                        // milliseconds: pictures that take longer are made later
constexpr int kRest = 90;                           // milliseconds without a change of the view
constexpr double kDragged = 4;                      // pixels: more than a trembling hand

void noteKeys(Qt::KeyboardModifiers held) {
    host::HeldKeys& keys = host::heldKeys();
    keys.shift = held & Qt::ShiftModifier;
    keys.ctrl = held & Qt::ControlModifier;
    keys.alt = held & Qt::AltModifier;
}

} // namespace

Canvas::Canvas(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::BlankCursor);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(200, 150);
    settle_.setSingleShot(true);
    settle_.setInterval(kRest);
    QObject::connect(&settle_, &QTimer::timeout, this, [this] {
        state_ = State::stale;
        cost_ = 0;
        update();
    });
}

void Canvas::want(const Want& want) {
    want_ = want;
    window_.reset();
    findSnap();
    update();
}

void Canvas::setDark(bool dark) {
    dark_ = dark;
    state_ = State::stale;
    update();
}

void Canvas::setSelected(std::vector<AcDbObjectId> entities) {
    selected_ = std::move(entities);
    update();
}

// -- the view ------------------------------------------------------------------------------------------

void Canvas::refresh() {
    AcDbDatabase* database = curDoc() ? curDoc()->database() : nullptr;
    const bool another = database != watch_.database();
    watch_.follow(database);
    if (another) selected_.clear(), shown_ = false;
    if (watch_.takeChange()) {
        database ? scene_.rebuild(*database, map_) : scene_.clear();
        texts_.clear();
        snap_.reset();
        state_ = State::stale;
    }
    const ScreenMap now(storedView(), size());
    if (!now.sameSide(map_) || now.view().height != map_.view().height ||
        now.view().center != map_.view().center)
        state_ = State::stale;
    map_ = now;
    if (!shown_ && database && isVisible()) {
        shown_ = true;
        zoomExtents();
    }
    update();
}

void Canvas::setView(const host::ViewFrame& view) {
    map_ = ScreenMap(view, size());
    storeView(map_.view());
    // A picture that takes long is moved and scaled until the view has come to rest.
    if (cost_ > kSlow && map_.sameSide(pictured_)) {
        state_ = State::rough;
        settle_.start();
    } else {
        state_ = State::stale;
    }
    if (cursor_) moveCursor(*cursor_);
    update();
}

void Canvas::zoomExtents() {
    const AcDbExtents2d box = host::seenExtents(scene_.list(), map_.view());
    if (!box.isValid()) return;
    host::ViewFrame view = map_.view();
    view.fit(box.minPoint(), box.maxPoint(), kMargin);
    setView(view);
}

void Canvas::zoomBy(double factor) { setView(zoomed(map_, QRectF(rect()).center(), factor)); }

void Canvas::resizeEvent(QResizeEvent*) {
    map_ = ScreenMap(map_.view(), size());
    storeView(map_.view());
    state_ = State::stale;
    refresh();
}

AcGePoint3d Canvas::pointAt(const QPointF& pixel) const {
    const host::UserFrame user = host::surroundings().user;
    return map_.toPlane(pixel, user.origin, user.xAxis.crossProduct(user.yAxis));
}

QPointF Canvas::screen(const AcGePoint3d& world) const {
    AcGePoint2d p;
    return map_.toScreen(world, p) ? QPointF(p.x, p.y) : QPointF(-1e4, -1e4);
}

// -- the picture ---------------------------------------------------------------------------------------

void Canvas::makePicture() {
    QElapsedTimer clock;
    clock.start();
    const qreal ratio = devicePixelRatioF();
    if (picture_.size() != size() * ratio)
        picture_ = QImage(size() * ratio, QImage::Format_ARGB32_Premultiplied);
    picture_.setDevicePixelRatio(ratio);
    picture_.fill(groundColor(dark_));
    QPainter painter(&picture_);
    PaintLook look;
    look.dark = dark_;
    ListPainter list(painter, map_, QRectF(rect()), look);
    for (const std::uint32_t i : scene_.within(map_.covered(), map_))
        list.paint(scene_.list(), scene_.list().primitives[i], texts_);
    pictured_ = map_;
    cost_ = double(clock.nsecsElapsed()) / 1e6;
    state_ = State::fine;
}

void Canvas::showPicture(QPainter& painter) {
    if (state_ != State::rough) return painter.drawImage(QPointF(0, 0), picture_);
    const double scale = map_.pixelsPerUnit() / pictured_.pixelsPerUnit();
    const QPointF origin = map_.fromDisplay(pictured_.toDisplay({0, 0}));
    painter.fillRect(rect(), groundColor(dark_));
    painter.drawImage(QRectF(origin, QSizeF(pictured_.pixels()) * scale), picture_);
}

void Canvas::paintEvent(QPaintEvent*) {
    if (state_ == State::stale) makePicture();
    QPainter painter(this);
    showPicture(painter);
    paintHighlights(painter);
    paintTransients(painter);
    paintRubber(painter);
    paintCursor(painter);
}

// -- the mouse -----------------------------------------------------------------------------------------

void Canvas::findSnap() {
    snap_.reset();
    const int modes = want_.kind == Want::Kind::point && cursor_ ? snapModes() : 0;
    if (!modes || pan_) return;
    const QPointF reach(kSnapRadius, kSnapRadius);
    const auto near = scene_.ownersWithin(map_.covered(QRectF(*cursor_ - reach, *cursor_ + reach)), map_);
    const AcGePoint3d last = host::ucsToWorld(host::pointFrame().last);
    double nearest = kSnapRadius;
    for (const Snap& snap : snapsOf(near, modes, pointAt(*cursor_), last)) {
        const QPointF away = screen(snap.point) - *cursor_;
        // Points anywhere on a curve give way to those that stand out.
        const double distance =
            std::hypot(away.x(), away.y()) + (snap.kind == SnapKind::nearest ? kSnapRadius / 2 : 0);
        if (distance >= nearest) continue;
        nearest = distance;
        snap_ = snap;
    }
}

void Canvas::moveCursor(const QPointF& at) {
    cursor_ = at;
    findSnap();
    const AcGePoint3d world = snap_ ? snap_->point : pointAt(at);
    host::cursorMoved(world);
    if (onMove) onMove(world);
}

void Canvas::pressLeft(QMouseEvent* event) {
    const QPointF at = event->position();
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    if (window_) return finishWindow(at, shift);
    if (want_.kind == Want::Kind::point && onPoint) return onPoint(snap_ ? snap_->point : pointAt(at));
    if (want_.kind == Want::Kind::nothing) return;
    const AcDbObjectId hit = entityUnder(scene_, map_, at, kPickRadius);
    if (hit.isNull() && want_.kind == Want::Kind::objects)
        window_ = at;
    else if (onEntity)
        onEntity(hit, pointAt(at), shift);
}

void Canvas::finishWindow(const QPointF& at, bool shift) {
    const QPointF from = *window_;
    window_.reset();
    if (onWindow) onWindow(pointAt(from), pointAt(at), at.x() < from.x(), shift);
}

void Canvas::mousePressEvent(QMouseEvent* event) {
    noteKeys(event->modifiers());
    moveCursor(event->position());
    if (event->button() == Qt::MiddleButton) {
        pan_ = event->position();
        setCursor(Qt::ClosedHandCursor);
    } else if (event->button() == Qt::LeftButton) {
        pressLeft(event);
    } else if (event->button() == Qt::RightButton && onEnter) {
        onEnter();
    }
    update();
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
    noteKeys(event->modifiers());
    if (pan_) setView(panned(map_, *pan_, event->position())), pan_ = event->position();
    moveCursor(event->position());
    update();
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
    noteKeys(event->modifiers());
    if (event->button() == Qt::MiddleButton) {
        pan_.reset();
        setCursor(Qt::BlankCursor);
    }
    const QPointF at = event->position();
    // A window is dragged, or given by two clicks.
    if (event->button() == Qt::LeftButton && window_ && (at - *window_).manhattanLength() > kDragged)
        finishWindow(at, event->modifiers() & Qt::ShiftModifier);
    update();
}

void Canvas::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton)
        zoomExtents();
    else
        mousePressEvent(event); // two quick clicks are two answers
}

void Canvas::wheelEvent(QWheelEvent* event) {
    const double notches = event->angleDelta().y() / 120.0;
    if (notches != 0) setView(zoomed(map_, event->position(), std::pow(kWheelStep, notches)));
    event->accept();
}

void Canvas::keyPressEvent(QKeyEvent* event) {
    noteKeys(event->modifiers());
    if (onKey) onKey(event);
}

void Canvas::leaveEvent(QEvent*) {
    cursor_.reset();
    snap_.reset();
    update();
}

} // namespace desk
