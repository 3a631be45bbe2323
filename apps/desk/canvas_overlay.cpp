// What is painted over the picture: in a second one highlights, transients and vectors, which stay for a
// while; at every turn grips, rubber bands, snap marks and the crosshair.
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "apps/desk/canvas.h"
#include "host/view/screen.h"
#include "host/view/transients.h"

namespace desk {
namespace {

constexpr double kMark = 6;                     // half the side of a snap's mark, pixels
constexpr double kPickBox = 4;                  // half the side of the pick box
constexpr double kGrip = 4;                     // half the side of a grip
constexpr double kGlowWidth = 1.5;              // pixels added to lines that shine
constexpr int kInverting = -1, kForeground = 7; // colours of vectors
const QColor kGlow(0x3D, 0x9B, 0xFF), kMarkColor(0x2F, 0xC8, 0x5B);
const QColor kHotGrip(0xE0, 0x30, 0x30), kNearGrip(0xF0, 0xA0, 0x80);
const QColor kInside(0x3D, 0x9B, 0xFF, 48), kTouched(0x2F, 0xC8, 0x5B, 48);

QPainterPath markOf(SnapKind kind) {
    const double r = kMark;
    QPainterPath path;
    switch (kind) {
    case SnapKind::end: path.addRect(-r, -r, 2 * r, 2 * r); break;
    case SnapKind::middle: path.addPolygon({{0, -r}, {r, r}, {-r, r}, {0, -r}}); break;
    case SnapKind::center: path.addEllipse(QPointF(0, 0), r, r); break;
    case SnapKind::quadrant: path.addPolygon({{0, -r}, {r, 0}, {0, r}, {-r, 0}, {0, -r}}); break;
    case SnapKind::perpendicular: path.addPolygon({{-r, -r}, {-r, r}, {r, r}}); break;
    case SnapKind::nearest: path.addPolygon({{-r, -r}, {r, -r}, {-r, r}, {r, r}, {-r, -r}}); break;
    case SnapKind::tangent:
        path.addEllipse(QPointF(0, 1), r - 1, r - 1);
        path.moveTo(-r, -r), path.lineTo(r, -r);
        break;
    case SnapKind::node: path.addEllipse(QPointF(0, 0), r, r); [[fallthrough]];
    case SnapKind::insertion:
    case SnapKind::intersection:
        path.moveTo(-r, -r), path.lineTo(r, r);
        path.moveTo(-r, r), path.lineTo(r, -r);
        break;
    }
    return path;
}

} // namespace

QPointF Canvas::screen(const AcGePoint3d& world) const {
    AcGePoint2d p;
    return map_.toScreen(world, p) ? QPointF(p.x, p.y) : QPointF(-1e4, -1e4);
}

// -- the second picture --------------------------------------------------------------------------------

bool Canvas::hasOverlay() const {
    return !selected_.empty() || grips_.hot() || !host::screen().highlighted().empty() ||
           !host::screen().vectors().empty() || !acgiGetTransientManager()->entries().empty();
}

void Canvas::makeOverlay() {
    const OverlayMark now{host::screen().generation(), acgiGetTransientManager()->generation()};
    if (!hasOverlay() || (!overlayStale_ && overlayMark_ == now)) return;
    overlayMark_ = now;
    overlayStale_ = false;
    overlaid_ = picture_;
    PaintLook glow = look();
    glow.ink = kGlow.rgb() & 0xFFFFFF;
    glow.extraWidth = kGlowWidth;
    std::vector<AcDbObjectId> shining = selected_;
    const auto& highlighted = host::screen().highlighted();
    shining.insert(shining.end(), highlighted.begin(), highlighted.end());
    if (!shining.empty()) paintEntities(overlaid_, scene_, map_, glow, texts_, shining);
    for (const AcGiTransientManager::Entry& entry : acgiGetTransientManager()->entries())
        paintList(overlaid_, entry.picture, map_, entry.mode == kAcGiHighlight ? glow : look());
    paintList(overlaid_, dragged_, map_, look());
    paintVectors();
}

// The lines of acedGrDraw. Those that invert show in whatever the ground isn't.
void Canvas::paintVectors() {
    QPainter painter(&overlaid_);
    for (const host::Screen::Vector& vector : host::screen().vectors()) {
        AcCmColor color;
        color.setColorIndex(Adesk::UInt16(std::max(vector.color, 0)));
        QColor ink = QColor::fromRgb(color.rgb());
        if (vector.color == 0) ink = groundColor(dark_);
        if (vector.color == kInverting || vector.color == kForeground) ink = dark_ ? Qt::white : Qt::black;
        painter.setPen(QPen(ink, 1, vector.highlight ? Qt::DashLine : Qt::SolidLine));
        painter.drawLine(screen(vector.from), screen(vector.to));
    }
}

// -- at every turn -------------------------------------------------------------------------------------

void Canvas::paintGrips(QPainter& painter) {
    if (!want_.grips || selected_.empty() || hold_ != Hold::nothing) return;
    const std::optional<size_t> near = cursor_ && !grips_.hot() ? gripAt(*cursor_) : std::nullopt;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(dark_ ? QColor(0xA8, 0xC8, 0xF0) : QColor(0x10, 0x38, 0x70), 1));
    for (size_t i = 0; i < grips_.places().size(); ++i) {
        const QPointF at = screen(grips_.places()[i]);
        const bool hot = grips_.hot() && grips_.places()[i] == grips_.base();
        painter.setBrush(hot ? kHotGrip : near == i ? kNearGrip : kGlow);
        painter.drawRect(
            QRectF(std::round(at.x()) - kGrip, std::round(at.y()) - kGrip, 2 * kGrip, 2 * kGrip));
    }
}

void Canvas::paintRubber(QPainter& painter) {
    if (!cursor_) return;
    const QColor ink = dark_ ? QColor(0xE8, 0xE8, 0xE8) : QColor(0x30, 0x30, 0x30);
    const std::optional<AcGePoint3d> base = rubberBase();
    painter.setRenderHint(QPainter::Antialiasing);
    if (window_) {
        const QPointF from = map_.fromDisplay(*window_);
        const bool crossing = cursor_->x() < from.x();
        painter.setPen(QPen(ink, 1, crossing ? Qt::DashLine : Qt::SolidLine));
        painter.setBrush(crossing ? kTouched : kInside);
        painter.drawRect(QRectF(from, *cursor_).normalized());
    } else if (base) {
        const QPointF from = screen(*base), to = screen(aimed_);
        painter.setPen(QPen(ink, 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        want_.corner ? painter.drawRect(QRectF(from, to).normalized()) : painter.drawLine(from, to);
    }
}

void Canvas::paintSnap(QPainter& painter) {
    if (!snap_) return;
    painter.setPen(QPen(kMarkColor, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(markOf(snap_->kind).translated(screen(snap_->point)));
}

void Canvas::paintCursor(QPainter& painter) {
    if (!cursor_ || hold_ != Hold::nothing) return;
    const QPointF at = *cursor_;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(dark_ ? QColor(0xC8, 0xCC, 0xD2) : QColor(0x50, 0x54, 0x5A), 1));
    painter.setBrush(Qt::NoBrush);
    const bool picks =
        !grips_.hot() && (want_.kind == Want::Kind::entity || want_.kind == Want::Kind::objects);
    const double gap = picks ? kPickBox : 0;
    if (want_.kind != Want::Kind::entity) {
        painter.drawLine(QPointF(0, at.y()), QPointF(at.x() - gap, at.y()));
        painter.drawLine(QPointF(at.x() + gap, at.y()), QPointF(width(), at.y()));
        painter.drawLine(QPointF(at.x(), 0), QPointF(at.x(), at.y() - gap));
        painter.drawLine(QPointF(at.x(), at.y() + gap), QPointF(at.x(), height()));
    }
    if (picks) painter.drawRect(QRectF(at.x() - kPickBox, at.y() - kPickBox, 2 * kPickBox, 2 * kPickBox));
}

} // namespace desk
