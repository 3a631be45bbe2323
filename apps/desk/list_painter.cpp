// Projection, levels of detail, and the letters of texts.
#include "apps/desk/list_painter.h"
#include "apps/desk/box_index.h"

#include <algorithm>
#include <cmath>

namespace desk {
namespace {

using Kind = host::DisplayPrimitive::Kind;
using Point = RasterBand::Point;

constexpr double kPixelsPerMm = 96 / 25.4;
constexpr double kTiny = 1.2;       // pixels: boxes below it are dots
constexpr double kUnreadable = 2.5; // pixels: texts below it are lines
constexpr double kClose = 0.5;      // pixels: points nearer than it to the one before make no difference
constexpr double kThin = 1.5;       // pixels: lines up to it are drawn as thin ones
constexpr double kFarAway = 1e12;   // pixels: what lies beyond is no place on the screen

bool isClose(Point a, Point b) { return std::abs(a.x - b.x) < kClose && std::abs(a.y - b.y) < kClose; }

// Places of a bow of letters, its own axes on the screen.
struct LetterFrame {
    Point origin, right, up;
    Point operator()(const AcGePoint2d& p) const {
        return {origin.x + right.x * p.x + up.x * p.y, origin.y + right.y * p.x + up.y * p.y};
    }
};

Point between(Point a, Point b, double t) { return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t}; }

} // namespace

std::uint32_t readableInk(std::uint32_t rgb, bool dark) {
    constexpr int kTellable = 36, kAway = 110; // of 255 shades of grey
    const QColor ink = QColor::fromRgb(rgb), ground = groundColor(dark);
    if (std::abs(qGray(ink.rgb()) - qGray(ground.rgb())) >= kTellable) return rgb;
    const int step = dark ? kAway : -kAway;
    const auto moved = [&](int part) { return std::clamp(part + step, 0, 255); };
    return QColor(moved(ink.red()), moved(ink.green()), moved(ink.blue())).rgb() & 0xFFFFFF;
}

QColor groundColor(bool dark) { return dark ? QColor(0x1E, 0x23, 0x29) : QColor(Qt::white); }

void TextOutlines::prepare(const host::DisplayList& list, const ScreenMap& map, const QRectF& part) {
    constexpr double kOverhang = 32; // pixels that letters may reach beyond their boxes
    outlines_.resize(std::max(outlines_.size(), list.texts.size()));
    const bool inDepth = map.view().perspective;
    const AcDbExtents2d seen = map.covered(part.adjusted(-kOverhang, -kOverhang, kOverhang, kOverhang));
    const AcGeMatrix3d toDisplay = map.view().worldToDisplay();
    const double least = kUnreadable / map.pixelsPerUnit();
    for (std::size_t i = 0; i < list.texts.size(); ++i) {
        const host::DisplayText& text = list.texts[i];
        if (outlines_[i] || (!inDepth && text.up.lengthSqrd() < least * least)) continue;
        AcDbExtents2d box;
        for (unsigned corner = 0; corner < 4; ++corner) {
            const AcGePoint3d p =
                toDisplay * (text.origin + text.right * (corner & 1 ? text.high.x : text.low.x) +
                             text.up * (corner & 2 ? text.high.y : text.low.y));
            box.addPoint({p.x, p.y});
        }
        if (inDepth || meets(box, seen))
            outlines_[i] = std::make_unique<const host::TextOutline>(
                host::textMetrics()->outlines(list.faces[text.face], 1, text.text));
    }
}

ListPainter::ListPainter(RasterBand& band, const ScreenMap& map, double ratio, const PaintLook& look,
                         const TextOutlines& texts)
    : band_(band), map_(map), inDepth_(map.view().perspective), ratio_(ratio),
      perUnit_(map.pixelsPerUnit() * ratio), look_(look), texts_(texts) {
    const AcGeMatrix3d toScreen = map.worldToPixels();
    for (unsigned row = 0; row < 2; ++row)
        for (unsigned column = 0; column < 4; ++column)
            toPixels_[row][column] = toScreen(row, column) * ratio;
}

inline bool ListPainter::project(const AcGePoint3d& p, Point& out) const {
    if (inDepth_) return projectInDepth(p, out);
    out = {toPixels_[0][0] * p.x + toPixels_[0][1] * p.y + toPixels_[0][2] * p.z + toPixels_[0][3],
           toPixels_[1][0] * p.x + toPixels_[1][1] * p.y + toPixels_[1][2] * p.z + toPixels_[1][3]};
    return std::abs(out.x) < kFarAway && std::abs(out.y) < kFarAway;
}

bool ListPainter::projectInDepth(const AcGePoint3d& p, Point& out) const {
    AcGePoint2d seen;
    if (!map_.toScreen(p, seen)) return false;
    out = {seen.x * ratio_, seen.y * ratio_};
    return std::abs(out.x) < kFarAway && std::abs(out.y) < kFarAway;
}

void ListPainter::use(const host::DisplayStyle& style) {
    if (style_ == &style) return;
    style_ = &style;
    const std::uint32_t foreground = look_.dark ? 0xFFFFFFu : 0x000000u;
    const std::uint32_t rgb = style.color.foreground ? foreground : readableInk(style.color.rgb, look_.dark);
    band_.setInk(look_.ink.value_or(rgb), look_.ink ? 255 : style.opacity);
    const double weight = look_.lineWeights ? style.weight / 100.0 * kPixelsPerMm : 0;
    width_ = (std::max(weight, 1.0) + look_.extraWidth) * ratio_;
}

void ListPainter::paint(const host::DisplayList& list, const host::DisplayPrimitive& primitive,
                        const host::DisplayContours& contours) {
    use(list.styleOf(primitive));
    switch (primitive.kind) {
    case Kind::text: return paintText(list, primitive.first);
    case Kind::ray:
    case Kind::xline: return paintEndless(contours[0], primitive.kind == Kind::xline);
    case Kind::line:
        if (!paintTiny(primitive)) paintLines(contours);
        return;
    case Kind::area:
    case Kind::ribbon:
        if (!paintTiny(primitive)) paintArea(contours, primitive.kind == Kind::area);
    }
}

bool ListPainter::paintTiny(const host::DisplayPrimitive& primitive) {
    const AcGeVector3d size = primitive.box.maxPoint() - primitive.box.minPoint();
    const double tiny = kTiny * ratio_ / perUnit_;
    if (inDepth_ || !(size.lengthSqrd() <= tiny * tiny)) return false;
    Point at;
    if (!project(primitive.box.minPoint(), at)) return true;
    band_.dot(at);
    return true;
}

// -- lines ---------------------------------------------------------------------------------------------

void ListPainter::paintLines(const host::DisplayContours& contours) {
    const bool thin = width_ <= kThin * ratio_;
    for (std::uint32_t c = 0; c < contours.count; ++c) thin ? thinPath(contours[c]) : widePath(contours[c]);
}

// Where the path goes behind the eye it is cut.
void ListPainter::thinPath(std::span<const AcGePoint3d> world) {
    Point last, p;
    bool under = false;
    for (std::size_t i = 0; i < world.size(); ++i) {
        if (!project(world[i], p)) {
            under = false;
            continue;
        }
        if (under && isClose(last, p) && i + 1 < world.size()) continue;
        if (under) band_.thinLine(last, p);
        under = true;
        last = p;
    }
    if (under && world.size() == 1) band_.dot(last);
}

void ListPainter::widePath(std::span<const AcGePoint3d> world) {
    path_.clear();
    const auto finish = [&] {
        if (!path_.empty()) band_.wideLine(path_, width_);
        path_.clear();
    };
    Point p;
    for (std::size_t i = 0; i < world.size(); ++i) {
        if (!project(world[i], p))
            finish();
        else if (path_.empty() || i + 1 == world.size() || !isClose(path_.back(), p))
            path_.push_back(p);
    }
    finish();
}

void ListPainter::paintEndless(std::span<const AcGePoint3d> given, bool bothWays) {
    Point a, b;
    if (given.size() < 2 || !project(given[0], a) || !project(given[1], b)) return;
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (!(length > 0)) return;
    const QSizeF size = QSizeF(map_.pixels()) * ratio_;
    const double far = std::hypot(a.x, a.y) + 2 * (size.width() + size.height());
    const Point step{(b.x - a.x) / length * far, (b.y - a.y) / length * far};
    const Point from = bothWays ? Point{a.x - step.x, a.y - step.y} : a;
    const Point path[] = {from, {a.x + step.x, a.y + step.y}};
    width_ <= kThin* ratio_ ? band_.thinLine(path[0], path[1]) : band_.wideLine(path, width_);
}

// -- areas and texts -----------------------------------------------------------------------------------

void ListPainter::paintArea(const host::DisplayContours& contours, bool oddEven) {
    Point p;
    for (std::uint32_t c = 0; c < contours.count; ++c) {
        path_.clear();
        for (const AcGePoint3d& world : contours[c])
            if (project(world, p)) path_.push_back(p);
        band_.contour(path_);
    }
    band_.fill(oddEven);
    if (look_.extraWidth > 0) paintLines(contours);
}

void ListPainter::paintText(const host::DisplayList& list, std::uint32_t index) {
    const host::DisplayText& text = list.texts[index];
    Point origin, right, up;
    if (!project(text.origin, origin) || !project(text.origin + text.right, right) ||
        !project(text.origin + text.up, up))
        return;
    right = {right.x - origin.x, right.y - origin.y};
    up = {up.x - origin.x, up.y - origin.y};
    const host::TextOutline* outline = texts_.of(index);
    if (!outline || std::hypot(up.x, up.y) < kUnreadable * ratio_) {
        const LetterFrame place{origin, right, up};
        band_.thinLine(place({text.low.x, 0.5}), place({text.high.x, 0.5}));
    } else {
        fillLetters(*outline, origin, right, up);
    }
}

// Bows are flattened as finely as their size on the screen asks for.
void ListPainter::fillLetters(const host::TextOutline& outline, Point origin, Point right, Point up) {
    using Step = host::TextOutline::Step;
    const LetterFrame place{origin, right, up};
    const double size = std::max(std::hypot(up.x, up.y), std::hypot(right.x, right.y));
    const int parts = std::clamp(int(std::sqrt(size) / 1.5), 2, 40);
    const AcGePoint2d* p = outline.points.data();
    Point start{}, at{};
    const auto lineTo = [&](Point to) {
        band_.side(at, to);
        at = to;
    };
    const auto bow = [&](Point a, Point b, Point to) {
        const Point from = at;
        for (int i = 1; i <= parts; ++i) {
            const double t = double(i) / parts;
            const Point ab = between(a, b, t), left = between(between(from, a, t), ab, t);
            lineTo(between(left, between(ab, between(b, to, t), t), t));
        }
    };
    for (const Step step : outline.steps) {
        switch (step) {
        case Step::move: start = at = place(p[0]), p += 1; break;
        case Step::line: lineTo(place(p[0])), p += 1; break;
        case Step::quadratic: { // as the cubic that it is
            const Point handle = place(p[0]), to = place(p[1]);
            bow(between(at, handle, 2.0 / 3), between(to, handle, 2.0 / 3), to), p += 2;
            break;
        }
        case Step::cubic: bow(place(p[0]), place(p[1]), place(p[2])), p += 3; break;
        case Step::close: lineTo(start); break;
        }
    }
    band_.fill(false);
}

void paintList(QImage& picture, const host::DisplayList& list, const ScreenMap& map, const PaintLook& look) {
    TextOutlines texts;
    texts.prepare(list, map, QRectF(QPointF(0, 0), QSizeF(map.pixels())));
    RasterBand band(reinterpret_cast<std::uint32_t*>(picture.bits()), picture.bytesPerLine() / 4,
                    {0, picture.width(), 0, picture.height()});
    ListPainter painter(band, map, picture.devicePixelRatio(), look, texts);
    for (const host::DisplayPrimitive& primitive : list.primitives) painter.paint(list, primitive);
}

} // namespace desk
