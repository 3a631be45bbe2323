// Strokes, areas, texts. What is smaller than a pixel becomes a dot, what can't be read a line.
#include "apps/desk/list_painter.h"
#include "host/picture/outline_path.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace desk {
namespace {

constexpr double kPixelsPerMm = 96 / 25.4;
constexpr double kTiny = 0.75;      // pixels: boxes below it are dots
constexpr double kUnreadable = 2.5; // pixels: texts below it are lines
constexpr double kBand = 12;        // pixels round the area that clipping leaves

AcDbExtents2d boxOf(const ScreenMap& map, const AcDbExtents& box) {
    AcDbExtents2d seen;
    AcGePoint2d p;
    for (unsigned corner = 0; corner < 8; ++corner)
        if (map.toScreen({(corner & 1 ? box.maxPoint() : box.minPoint()).x,
                          (corner & 2 ? box.maxPoint() : box.minPoint()).y,
                          (corner & 4 ? box.maxPoint() : box.minPoint()).z},
                         p))
            seen.addPoint(p);
    return seen;
}

} // namespace

QColor groundColor(bool dark) { return dark ? QColor(0x1E, 0x23, 0x29) : QColor(Qt::white); }

const QPainterPath& TextPaths::of(const host::DisplayList& list, std::uint32_t text) {
    if (paths_.size() < list.texts.size()) paths_.resize(list.texts.size());
    auto& path = paths_[text];
    const host::DisplayText& source = list.texts[text];
    if (!path)
        path = host::outlinePath(host::textMetrics()->outlines(list.faces[source.face], 1, source.text),
                                 [](const AcGePoint2d& p) { return QPointF(p.x, p.y); });
    return *path;
}

ListPainter::ListPainter(QPainter& painter, const ScreenMap& map, const QRectF& area, const PaintLook& look)
    : painter_(painter),
      map_(map), clip_{area.left() - kBand, area.top() - kBand, area.right() + kBand, area.bottom() + kBand},
      look_(look) {
    painter_.setRenderHint(QPainter::Antialiasing);
}

void ListPainter::use(const host::DisplayStyle& style) {
    if (style_ == style) return;
    style_ = style;
    const std::uint32_t rgb = style.color.foreground ? (look_.dark ? 0xFFFFFFu : 0x000000u) : style.color.rgb;
    color_ = look_.ink.value_or(QColor::fromRgb(rgb));
    if (!look_.ink) color_.setAlpha(style.opacity);
    width_ =
        (look_.lineWeights ? std::max(style.weight / 100.0 * kPixelsPerMm, 1.0) : 1.0) + look_.extraWidth;
    painter_.setPen(QPen(color_, width_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter_.setBrush(Qt::NoBrush);
}

void ListPainter::paint(const host::DisplayList& list) {
    TextPaths texts;
    for (const host::DisplayPrimitive& primitive : list.primitives) paint(list, primitive, texts);
}

void ListPainter::paint(const host::DisplayList& list, const host::DisplayPrimitive& primitive,
                        TextPaths& texts) {
    using Kind = host::DisplayPrimitive::Kind;
    use(list.styleOf(primitive));
    switch (primitive.kind) {
    case Kind::text: return paintText(list.texts[primitive.first], texts.of(list, primitive.first));
    case Kind::ray:
    case Kind::xline: return paintEndless(list, primitive);
    default:
        if (!paintTiny(primitive)) paintContours(list, primitive);
    }
}

bool ListPainter::paintTiny(const host::DisplayPrimitive& primitive) {
    if (!primitive.box.isValid()) return false;
    const double size = (primitive.box.maxPoint() - primitive.box.minPoint()).length();
    if (map_.view().perspective || size * map_.pixelsPerUnit() > kTiny) return false;
    const AcDbExtents2d box = boxOf(map_, primitive.box);
    if (box.isValid()) painter_.drawPoint(QPointF(box.minPoint().x, box.minPoint().y));
    return true;
}

void ListPainter::clipContour(std::vector<AcGePoint2d>& flat, bool open) {
    const bool inside =
        std::all_of(flat.begin(), flat.end(), [&](const AcGePoint2d& p) { return clip_.holds(p); });
    if (inside && !flat.empty()) {
        points_.insert(points_.end(), flat.begin(), flat.end());
        ends_.push_back(std::uint32_t(points_.size()));
    } else if (open) {
        host::clipLine(flat, clip_, points_, ends_);
    } else {
        host::clipArea(flat, clip_, points_, ends_);
    }
    flat.clear();
}

void ListPainter::paintContours(const host::DisplayList& list, const host::DisplayPrimitive& primitive) {
    using Kind = host::DisplayPrimitive::Kind;
    const bool open = primitive.kind == Kind::line;
    points_.clear(), ends_.clear(), flat_.clear();
    for (std::uint32_t c = primitive.first; c < primitive.first + primitive.count; ++c) {
        for (const AcGePoint3d& world : list.contour(c)) {
            AcGePoint2d p;
            if (map_.toScreen(world, p))
                flat_.push_back(p);
            else if (open)
                clipContour(flat_, open); // behind the eye: the line is cut there
        }
        clipContour(flat_, open);
    }
    if (ends_.empty()) return;
    open ? stroke() : fill(primitive.kind == Kind::area);
}

void ListPainter::paintEndless(const host::DisplayList& list, const host::DisplayPrimitive& primitive) {
    const auto given = list.contour(primitive.first);
    AcGePoint2d a, b;
    if (given.size() < 2 || !map_.toScreen(given[0], a) || !map_.toScreen(given[1], b)) return;
    const double length = a.distanceTo(b);
    if (!(length > 0)) return;
    const AcGePoint2d middle((clip_.left + clip_.right) / 2, (clip_.top + clip_.bottom) / 2);
    const double far = a.distanceTo(middle) + (clip_.right - clip_.left) + (clip_.bottom - clip_.top);
    const AcGeVector2d step = (b - a) * (far / length);
    points_.clear(), ends_.clear();
    flat_ = {primitive.kind == host::DisplayPrimitive::Kind::ray ? a : a - step, a + step};
    clipContour(flat_, true);
    stroke();
}

void ListPainter::stroke() {
    std::uint32_t from = 0;
    for (const std::uint32_t end : ends_) {
        line_.clear();
        for (; from < end; ++from) line_.emplace_back(points_[from].x, points_[from].y);
        if (line_.size() == 1)
            painter_.drawPoint(line_.front());
        else
            painter_.drawPolyline(line_.constData(), int(line_.size()));
    }
}

void ListPainter::fill(bool oddEven) {
    QPainterPath path;
    path.setFillRule(oddEven ? Qt::OddEvenFill : Qt::WindingFill);
    std::uint32_t from = 0;
    for (const std::uint32_t end : ends_) {
        for (std::uint32_t i = from; i < end; ++i) {
            const QPointF p(points_[i].x, points_[i].y);
            i == from ? path.moveTo(p) : path.lineTo(p);
        }
        path.closeSubpath();
        from = end;
    }
    painter_.fillPath(path, color_);
    if (look_.extraWidth > 0) painter_.drawPath(path);
}

void ListPainter::paintText(const host::DisplayText& text, const QPainterPath& path) {
    AcGePoint2d origin, right, up;
    if (path.isEmpty() || !map_.toScreen(text.origin, origin) ||
        !map_.toScreen(text.origin + text.right, right) || !map_.toScreen(text.origin + text.up, up))
        return;
    const QTransform place(right.x - origin.x, right.y - origin.y, up.x - origin.x, up.y - origin.y, origin.x,
                           origin.y);
    const QRectF box = place.mapRect(path.boundingRect());
    if (box.right() < clip_.left || box.left() > clip_.right || box.bottom() < clip_.top ||
        box.top() > clip_.bottom)
        return;
    if (std::hypot(up.x - origin.x, up.y - origin.y) < kUnreadable) {
        painter_.drawLine(place.map(QLineF(0, 0, path.boundingRect().right(), 0)));
    } else {
        painter_.fillPath(place.map(path), color_);
    }
}

} // namespace desk
