// What is painted over the picture: highlights, transients, rubber bands, snap marks, the crosshair.
#include <QPainter>
#include <QPainterPath>

#include "apps/desk/canvas.h"
#include "host/view/screen.h"
#include "host/view/transients.h"

namespace desk {
namespace {

constexpr double kMark = 6;    // half the side of a snap's mark, pixels
constexpr double kPickBox = 4; // half the side of the pick box
const QColor kGlow(0x3D, 0x9B, 0xFF), kMarkColor(0x2F, 0xC8, 0x5B);
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

void Canvas::paintHighlights(QPainter& painter) {
    PaintLook look;
    look.dark = dark_;
    look.ink = kGlow;
    look.extraWidth = 1.5;
    ListPainter glow(painter, map_, QRectF(rect()), look);
    const auto paint = [&](AcDbObjectId id) {
        const PrimitiveRange range = scene_.of(id);
        for (std::uint32_t i = range.first; i < range.end; ++i)
            if (scene_.list().owners[scene_.list().primitives[i].owner] == id)
                glow.paint(scene_.list(), scene_.list().primitives[i], texts_);
    };
    for (const AcDbObjectId id : selected_) paint(id);
    for (const AcDbObjectId id : host::screen().highlighted()) paint(id);
}

void Canvas::paintTransients(QPainter& painter) {
    for (const AcGiTransientManager::Entry& entry : acgiGetTransientManager()->entries()) {
        PaintLook look;
        look.dark = dark_;
        if (entry.mode == kAcGiHighlight) look.ink = kGlow;
        ListPainter(painter, map_, QRectF(rect()), look).paint(entry.picture);
    }
}

void Canvas::paintRubber(QPainter& painter) {
    if (!cursor_) return;
    const QPointF to = snap_ ? screen(snap_->point) : *cursor_;
    const QColor ink = dark_ ? QColor(0xE8, 0xE8, 0xE8) : QColor(0x30, 0x30, 0x30);
    painter.setRenderHint(QPainter::Antialiasing);
    if (window_) {
        const bool crossing = to.x() < window_->x();
        painter.setPen(QPen(ink, 1, crossing ? Qt::DashLine : Qt::SolidLine));
        painter.setBrush(crossing ? kTouched : kInside);
        painter.drawRect(QRectF(*window_, to).normalized());
    } else if (want_.kind == Want::Kind::point && want_.base) {
        const QPointF from = screen(*want_.base);
        painter.setPen(QPen(ink, 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        want_.corner ? painter.drawRect(QRectF(from, to).normalized()) : painter.drawLine(from, to);
    }
    if (!snap_) return;
    painter.setPen(QPen(kMarkColor, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(markOf(snap_->kind).translated(to));
}

void Canvas::paintCursor(QPainter& painter) {
    if (!cursor_ || pan_) return;
    const QPointF at = *cursor_;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(dark_ ? QColor(0xC8, 0xCC, 0xD2) : QColor(0x50, 0x54, 0x5A), 1));
    painter.setBrush(Qt::NoBrush);
    const bool picks = want_.kind == Want::Kind::entity || want_.kind == Want::Kind::objects;
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
