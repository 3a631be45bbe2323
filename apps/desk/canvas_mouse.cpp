// The mouse over the drawing: moving the view, aiming with snaps and along the axes, picks, windows and
// grips.
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <cmath>

#include "apps/desk/canvas.h"
#include "apps/desk/drawing_aids.h"
#include "apps/desk/picking.h"
#include "apps/desk/view_state.h"
#include "host/ed/prompting.h"
#include "host/os/keys.h"
#include "host/ui/window.h"

namespace desk {
namespace {

constexpr double kPickRadius = 6, kSnapRadius = 11, kGripRadius = 6; // pixels
constexpr double kWheelStep = 1.25;                                  // a notch
constexpr double kDragged = 4;                                       // pixels: more than a trembling hand

} // namespace

void Canvas::want(const Want& want) {
    want_ = want;
    window_.reset();
    grips_.gather(want_.grips ? selected_ : std::vector<AcDbObjectId>());
    dragged_ = {};
    aim();
    update();
}

// -- aiming --------------------------------------------------------------------------------------------

bool Canvas::wantsPlaces() const { return want_.kind == Want::Kind::point || grips_.hot(); }

std::optional<AcGePoint3d> Canvas::rubberBase() const {
    if (grips_.hot()) return grips_.base();
    return want_.kind == Want::Kind::point ? want_.base : std::nullopt;
}

void Canvas::findSnap() {
    snap_.reset();
    const int wanted = want_.snaps ? want_.snaps : snapModes();
    const int modes = wantsPlaces() && cursor_ ? wanted : 0;
    if (!modes || hold_ != Hold::nothing) return;
    const QPointF reach(kSnapRadius, kSnapRadius);
    const auto near = scene_.ownersWithin(map_.covered(QRectF(*cursor_ - reach, *cursor_ + reach)), map_);
    const AcGePoint3d last = rubberBase().value_or(host::ucsToWorld(host::pointFrame().last));
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

// Snaps come before the axes.
void Canvas::aim() {
    findSnap();
    if (!cursor_) return;
    aimed_ = snap_ ? snap_->point : pointAt(*cursor_);
    const std::optional<AcGePoint3d> base = rubberBase();
    if (!snap_ && base && !want_.corner && orthoHolds(host::keyHeld(host::Key::shift)))
        aimed_ = alongAxis(*base, aimed_);
    if (!grips_.hot()) return;
    dragged_ = grips_.preview(aimed_);
    overlayStale_ = true;
}

void Canvas::moveCursor(const QPointF& at) {
    cursor_ = at;
    aim();
    const QPoint onScreen = mapToGlobal(at.toPoint());
    host::setMousePosition({LONG(onScreen.x()), LONG(onScreen.y())});
    const host::UserFrame user = host::surroundings().user;
    host::cursorMoved(aimed_, snap_ || map_.facesPlane(at, user.xAxis.crossProduct(user.yAxis)));
    if (onMove) onMove(aimed_);
}

// -- the view in the hand ------------------------------------------------------------------------------

// With Shift the eye goes round what lies in the middle of the picture.
void Canvas::pressMiddle(QMouseEvent* event) {
    held_ = event->position();
    hold_ = event->modifiers() & Qt::ShiftModifier ? Hold::orbit : Hold::pan;
    const AcDbExtents& all = scene_.list().extents;
    pivot_ = all.isValid() ? all.minPoint() + (all.maxPoint() - all.minPoint()) / 2 : map_.view().target;
    setCursor(Qt::ClosedHandCursor);
}

void Canvas::moveHeldView(const QPointF& at) {
    if (hold_ == Hold::nothing) return;
    const QPointF from = std::exchange(held_, at);
    setView(hold_ == Hold::pan ? panned(map_, from, at) : orbited(map_, at - from, pivot_));
}

void Canvas::wheelEvent(QWheelEvent* event) {
    const double notches = event->angleDelta().y() / 120.0;
    if (notches != 0) setView(zoomed(map_, event->position(), std::pow(kWheelStep, notches)));
    event->accept();
}

// -- grips ---------------------------------------------------------------------------------------------

std::optional<size_t> Canvas::gripAt(const QPointF& at) const {
    std::optional<size_t> best;
    double nearest = kGripRadius;
    for (size_t i = 0; want_.grips && i < grips_.places().size(); ++i) {
        const QPointF away = screen(grips_.places()[i]) - at;
        const double distance = std::max(std::abs(away.x()), std::abs(away.y()));
        if (distance > nearest) continue;
        nearest = distance;
        best = i;
    }
    return best;
}

bool Canvas::takeGrip(const QPointF& at) {
    const std::optional<size_t> place = gripAt(at);
    if (!place) return false;
    grips_.take(*place);
    pressed_ = at;
    aim();
    return true;
}

void Canvas::moveGrip(const AcGePoint3d& to) {
    const Grips held = grips_;
    letGo();
    if (onGrip && to != held.base()) onGrip([held, to] { held.move(to); });
}

bool Canvas::letGo() {
    const bool had = grips_.hot() || window_;
    grips_.leave();
    window_.reset();
    pressed_.reset();
    dragged_ = {};
    overlayStale_ = true;
    aim();
    update();
    return had;
}

// -- events --------------------------------------------------------------------------------------------

void Canvas::pressLeft(QMouseEvent* event) {
    const QPointF at = event->position();
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    if (grips_.hot()) return moveGrip(AcGePoint3d(aimed_));
    if (window_) return finishWindow(at, shift);
    if (want_.kind == Want::Kind::point && onPoint) return onPoint(aimed_);
    if (want_.kind == Want::Kind::nothing || (!shift && takeGrip(at))) return;
    const AcDbObjectId hit = entityUnder(scene_, map_, at, kPickRadius);
    if (hit.isNull() && want_.kind == Want::Kind::objects)
        window_ = map_.toDisplay(at);
    else if (onEntity)
        onEntity(hit, pointAt(at), shift);
}

void Canvas::finishWindow(const QPointF& at, bool shift) {
    const QPointF from = map_.fromDisplay(*window_);
    window_.reset();
    Window window;
    window.crossing = at.x() < from.x();
    window.shift = shift;
    window.corners = {pointAt(from), pointAt({at.x(), from.y()}), pointAt(at), pointAt({from.x(), at.y()})};
    window.entities = entitiesWithin(scene_, map_, QRectF(from, at), window.crossing);
    if (onWindow) onWindow(window);
}

void Canvas::mousePressEvent(QMouseEvent* event) {
    noteModifiers(event->modifiers());
    moveCursor(event->position());
    if (event->button() == Qt::MiddleButton)
        pressMiddle(event);
    else if (event->button() == Qt::LeftButton)
        pressLeft(event);
    else if (event->button() == Qt::RightButton && !letGo() && onEnter)
        onEnter();
    update();
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
    noteModifiers(event->modifiers());
    moveHeldView(event->position());
    moveCursor(event->position());
    update();
}

// Windows and grips are dragged, or given by two clicks.
void Canvas::mouseReleaseEvent(QMouseEvent* event) {
    noteModifiers(event->modifiers());
    if (event->button() == Qt::MiddleButton) {
        hold_ = Hold::nothing;
        setCursor(Qt::BlankCursor);
    }
    const QPointF at = event->position();
    const auto draggedFrom = [&](const QPointF& from) {
        return event->button() == Qt::LeftButton && (at - from).manhattanLength() > kDragged;
    };
    if (grips_.hot() && pressed_ && draggedFrom(*pressed_)) {
        moveCursor(at);
        moveGrip(AcGePoint3d(aimed_));
    } else if (window_ && draggedFrom(map_.fromDisplay(*window_))) {
        finishWindow(at, event->modifiers() & Qt::ShiftModifier);
    }
    update();
}

void Canvas::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton)
        zoomExtents();
    else
        mousePressEvent(event); // two quick clicks are two answers
}

void Canvas::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && letGo()) return;
    if (onKey) onKey(event);
}

void Canvas::leaveEvent(QEvent*) {
    cursor_.reset();
    snap_.reset();
    update();
}

} // namespace desk
