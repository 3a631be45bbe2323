// The picture of the drawing. The mouse stands in canvas_mouse.cpp, what is painted over the picture in
// canvas_overlay.cpp.
#include "apps/desk/canvas.h"

#include <QElapsedTimer>
#include <QPainter>
#include <algorithm>
#include <cstring>
#include <utility>

#include "apps/desk/drawing_aids.h"
#include "apps/desk/ground.h"
#include "apps/desk/popups.h"
#include "apps/desk/view_state.h"
#include "host/ed/document.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/view/screen.h"

namespace desk {
namespace {

constexpr double kMargin = 0.03;     // round everything
constexpr double kSlow = 30;         // milliseconds: pictures that take longer are made later
constexpr int kRest = 90;            // milliseconds without a change of the view
constexpr size_t kFewForView = 1000; // entities that are drawn anew with each step of the view
constexpr double kWhole = 1e-3;      // pixels: moves that are this near to whole ones are

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
        drawForView();
        state_ = State::stale;
        cost_ = 0;
        update();
    });
    keys_.onHeld = [this] {
        if (cursor_) moveCursor(*cursor_);
        update();
    };
    keys_.onPress = [this](int key) {
        const std::optional<QString> note = switchAid(key);
        if (!note) return false;
        if (onNote) onNote(*note);
        state_ = State::stale;
        keys_.onHeld();
        return true;
    };
}

void Canvas::setDark(bool dark) {
    dark_ = dark;
    state_ = State::stale;
    update();
}

void Canvas::setSelected(std::vector<AcDbObjectId> entities) {
    selected_ = std::move(entities);
    grips_.gather(want_.grips ? selected_ : std::vector<AcDbObjectId>());
    overlayStale_ = true;
    update();
}

// -- the drawing and its view --------------------------------------------------------------------------

void Canvas::refresh() {
    followDrawing();
    followView();
    // A drawing opens with everything in view, and comes back as it was left.
    if (watch_.database() && isVisible() && seen_.insert(watch_.database()).second) zoomExtents();
    update();
}

void Canvas::followDrawing() {
    AcDbDatabase* database = curDoc() ? curDoc()->database() : nullptr;
    if (database != watch_.database()) selected_.clear();
    watch_.follow(database);
    DrawingWatch::Changes changes = watch_.take();
    const std::vector<AcDbObjectId> asked = host::screen().takeRedrawn();
    changes.entities.insert(changes.entities.end(), asked.begin(), asked.end());
    if (!changes.any()) return;
    Scene::Touched touched{.everything = true, .anywhere = true, .box = {}};
    if (!database)
        scene_.clear();
    else if (changes.everything)
        scene_.rebuild(*database, map_);
    else
        touched = scene_.update(*database, map_, changes.entities);
    if (touched.everything) texts_.clear();
    paintChanges(touched);
    snap_.reset();
    grips_.gather(want_.grips ? selected_ : std::vector<AcDbObjectId>());
}

// The grid may have been switched, and the axes it lies in turned.
void Canvas::followView() {
    const ScreenMap now(storedView(), size());
    const bool hadGrid = std::exchange(gridded_, gridShows());
    if (hadGrid || gridded_ || !now.sameSide(map_) || now.view().height != map_.view().height ||
        now.view().center != map_.view().center)
        state_ = State::stale;
    map_ = now;
}

// Marks of points, for one, keep their size on the screen. Many of them are made anew when the view has come
// to rest.
void Canvas::drawForView() {
    if (scene_.viewed().empty() || !watch_.database()) return;
    if (scene_.update(*watch_.database(), map_, scene_.viewed()).everything) texts_.clear();
    state_ = State::stale;
}

// An exact picture would take too long for a view that is on its way, and the last one shows enough of it.
// The nearer the view the fewer things are in it.
bool Canvas::mayStandIn() const {
    constexpr double kMost = 4; // times larger or smaller
    const double scale = map_.pixelsPerUnit() / pictured_.pixelsPerUnit();
    if (!map_.sameSide(pictured_) || scale > kMost || scale * kMost < 1) return false;
    const QRectF there(map_.fromDisplay(pictured_.toDisplay({0, 0})), QSizeF(pictured_.pixels()) * scale);
    const QRectF common = there & QRectF(rect());
    const bool enough = scale < 1 || common.width() * common.height() > 0.25 * width() * height();
    return enough && cost_ / std::max(1.0, scale * scale) > kSlow;
}

void Canvas::setView(const host::ViewFrame& view) {
    const bool onlyMoved = view.height == map_.view().height && view.direction == map_.view().direction;
    map_ = ScreenMap(view, size());
    storeView(map_.view());
    if (!onlyMoved && scene_.viewed().size() <= kFewForView) drawForView();
    // A picture that takes long is moved and scaled until the view has come to rest.
    if (state_ == State::fine && shiftPicture()) {
        settle_.start();
    } else if (state_ != State::stale && mayStandIn()) {
        state_ = State::rough;
        settle_.start();
    } else {
        state_ = State::stale;
    }
    if (cursor_) moveCursor(*cursor_);
    update();
}

void Canvas::zoomExtents() {
    const AcDbExtents2d box = scene_.extents(map_.view());
    if (!box.isValid()) return;
    host::ViewFrame view = map_.view();
    view.fit(box.minPoint(), box.maxPoint(), kMargin);
    setView(view);
    state_ = State::stale; // what is shown first is no makeshift
}

void Canvas::zoomBy(double factor) { setView(zoomed(map_, QRectF(rect()).center(), factor)); }

void Canvas::resizeEvent(QResizeEvent*) {
    map_ = ScreenMap(map_.view(), size());
    host::setSessionVariable(L"SCREENSIZE", std::to_wstring(width()) + L"," + std::to_wstring(height()));
    storeView(map_.view());
    state_ = State::stale;
    refresh();
}

AcGePoint3d Canvas::pointAt(const QPointF& pixel) const {
    const host::UserFrame user = host::surroundings().user;
    return map_.toPlane(pixel, user.origin, user.xAxis.crossProduct(user.yAxis));
}

// -- the picture ---------------------------------------------------------------------------------------

// Widths show where the drawing wants them to.
PaintLook Canvas::look() const {
    PaintLook look;
    look.dark = dark_;
    look.lineWeights = watch_.database() && watch_.database()->headerInteger("$LWDISPLAY", 0) != 0;
    return look;
}

void Canvas::makePicture() {
    QElapsedTimer clock;
    clock.start();
    const qreal ratio = devicePixelRatioF();
    if (picture_.size() != size() * ratio) picture_ = QImage(size() * ratio, QImage::Format_RGB32);
    picture_.setDevicePixelRatio(ratio);
    picture_.fill(groundColor(dark_));
    if (gridShows()) paintGrid(picture_, map_, dark_);
    paintScene(picture_, scene_, map_, look(), texts_, picture_.rect());
    pictured_ = map_;
    cost_ = double(clock.nsecsElapsed()) / 1e6;
    state_ = State::fine;
    overlayStale_ = true;
}

void Canvas::paintPart(const QRect& part) {
    for (int y = part.top(); y <= part.bottom(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture_.scanLine(y));
        std::fill(row + part.left(), row + part.right() + 1, groundColor(dark_).rgb());
    }
    paintScene(picture_, scene_, map_, look(), texts_, part);
    overlayStale_ = true;
}

// Of a picture that is right but for what has changed only that part is painted.
void Canvas::paintChanges(const Scene::Touched& touched) {
    constexpr int kRound = 16; // pixels that widths of lines reach beyond boxes
    const bool other = !map_.sameSide(pictured_) || map_.view().height != pictured_.view().height ||
                       map_.view().center != pictured_.view().center || map_.pixels() != pictured_.pixels();
    if (touched.everything || touched.anywhere || other || gridded_ || state_ != State::fine)
        return void(state_ = State::stale);
    if (!touched.box.isValid()) return;
    AcDbExtents2d seen;
    AcGePoint2d at;
    for (unsigned corner = 0; corner < 8; ++corner)
        if (map_.toScreen({(corner & 1 ? touched.box.maxPoint() : touched.box.minPoint()).x,
                           (corner & 2 ? touched.box.maxPoint() : touched.box.minPoint()).y,
                           (corner & 4 ? touched.box.maxPoint() : touched.box.minPoint()).z},
                          at))
            seen.addPoint(at);
    const qreal ratio = picture_.devicePixelRatio();
    const QRectF part(QPointF(seen.minPoint().x, seen.minPoint().y) * ratio,
                      QPointF(seen.maxPoint().x, seen.maxPoint().y) * ratio);
    const QRectF whole = picture_.rect();
    paintPart((part.adjusted(-kRound, -kRound, kRound, kRound) & whole).toAlignedRect() & picture_.rect());
}

// A view that has moved by whole pixels needs nothing but the strips that have come into it.
bool Canvas::shiftPicture() {
    const qreal ratio = picture_.devicePixelRatio();
    if (!map_.sameSide(pictured_) || map_.view().height != pictured_.view().height ||
        map_.pixels() != pictured_.pixels() || picture_.size() != size() * ratio || gridShows())
        return false;
    const QPointF moved = map_.fromDisplay(pictured_.toDisplay({0, 0})) * ratio;
    const QPoint by = moved.toPoint();
    const QRect kept = picture_.rect() & picture_.rect().translated(by);
    if ((moved - by).manhattanLength() > kWhole || kept.isEmpty()) return false;
    QImage shifted(picture_.size(), QImage::Format_RGB32);
    for (int y = kept.top(); y <= kept.bottom(); ++y)
        std::memcpy(shifted.scanLine(y) + 4 * kept.left(),
                    picture_.constScanLine(y - by.y()) + 4 * (kept.left() - by.x()),
                    size_t(4 * kept.width()));
    shifted.setDevicePixelRatio(ratio);
    picture_ = std::move(shifted);
    for (const QRect& strip : QRegion(picture_.rect()) - kept) paintPart(strip);
    pictured_ = map_;
    state_ = State::fine;
    overlayStale_ = true;
    return true;
}

void Canvas::showPicture(QPainter& painter) {
    if (state_ != State::rough) {
        makeOverlay();
        return painter.drawImage(QPointF(0, 0), hasOverlay() ? overlaid_ : picture_);
    }
    const QImage& last = hasOverlay() && !overlaid_.isNull() ? overlaid_ : picture_;
    const double scale = map_.pixelsPerUnit() / pictured_.pixelsPerUnit();
    const QPointF origin = map_.fromDisplay(pictured_.toDisplay({0, 0}));
    painter.fillRect(rect(), groundColor(dark_));
    painter.drawImage(QRectF(origin, QSizeF(pictured_.pixels()) * scale), last);
}

void Canvas::paintEvent(QPaintEvent*) {
    if (state_ == State::stale) makePicture();
    QPainter painter(this);
    showPicture(painter);
    paintAxes(painter, map_, dark_);
    paintGrips(painter);
    paintRubber(painter);
    paintSnap(painter);
    paintCursor(painter);
    paintPopups(painter, mapToGlobal(QPoint(0, 0)));
}

} // namespace desk
