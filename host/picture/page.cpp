// Layout of the page, and projection of primitives onto it.
#include "host/picture/page.h"

#include <algorithm>
#include <cmath>

#include "host/picture/clip.h"

namespace host {
namespace {

constexpr double kLongerSideMm = 280, kLongerSidePixels = 1600;
constexpr double kMostMm = 5000, kMostPixels = 32767, kMostImage = 2e8;
constexpr double kPixelsPerMm = 96 / 25.4;
constexpr double kThinnestMm = 0.13, kThinnestPixels = 1;
constexpr double kCaptionMm = 9, kCaptionCapital = 2.8, kMarkMm = 1.8, kGapMm = 4;

AcDbExtents2d united(const AcDbExtents2d& a, const AcDbExtents2d& b) {
    AcDbExtents2d both = a;
    both.addExt(b);
    return both;
}

bool isFinite(const AcDbExtents2d& box) {
    return std::isfinite(box.minPoint().x) && std::isfinite(box.minPoint().y) &&
           std::isfinite(box.maxPoint().x) && std::isfinite(box.maxPoint().y);
}

} // namespace

Page::Page(std::span<const PicturePanel> panels, PictureFormat format, const PictureOptions& options)
    : options_(options), view_(options.view) {
    const bool pixels = format == PictureFormat::png;
    perMillimetre_ = pixels ? kPixelsPerMm : 1;
    const double most = pixels ? kMostPixels : kMostMm;
    for (double size : {options.width, options.height}) {
        if (size >= 0 && size <= most) continue;
        error_ = pixels ? "the picture's sides must be 1 to 32767 pixels"
                        : "the picture's sides must be above 0 and at most 5000 mm";
        return;
    }
    if (view_.direction.isZeroLength()) view_.direction = AcGeVector3d::kZAxis;
    toDisplay_ = view_.worldToDisplay();
    AcDbExtents2d shown = shownPart(panels);
    if (!isFinite(shown)) {
        error_ = "the part to be shown has no finite size";
        return;
    }
    layOut(panels, shown);
    if (pixels && width_ * height_ > kMostImage) error_ = "the picture is larger than 200 million pixels";
}

AcDbExtents2d Page::shownPart(std::span<const PicturePanel> panels) const {
    AcDbExtents2d shown;
    if (options_.window && options_.window->isValid()) return *options_.window;
    for (const PicturePanel& panel : panels) shown = united(shown, seenExtents(*panel.list, view_));
    if (!shown.isValid()) return {AcGePoint2d(0, 0), AcGePoint2d(1, 1)};
    return shown;
}

void Page::layOut(std::span<const PicturePanel> panels, const AcDbExtents2d& shown) {
    const double longer = perMillimetre_ == 1 ? kLongerSideMm : kLongerSidePixels;
    const auto count = static_cast<double>(std::max<std::size_t>(panels.size(), 1));
    const bool captions =
        std::any_of(panels.begin(), panels.end(), [](const PicturePanel& p) { return !p.caption.empty(); });
    captionHeight_ = captions ? kCaptionMm * perMillimetre_ : 0;
    const double gap = kGapMm * perMillimetre_;
    double across = shown.maxPoint().x - shown.minPoint().x, up = shown.maxPoint().y - shown.minPoint().y;
    const double size = std::max({across, up, 1e-300});
    // Very flat drawings get a strip, not a hair.
    across = std::max(across, size / 8);
    up = std::max(up, size / 8);
    width_ = options_.width;
    height_ = options_.height;
    const double aspect = across / up; // of one panel
    const auto heightFor = [&](double w) {
        return (w - gap * (count - 1)) / count / aspect + captionHeight_;
    };
    const auto widthFor = [&](double h) { return (h - captionHeight_) * aspect * count + gap * (count - 1); };
    if (width_ == 0 && height_ == 0) {
        width_ = longer;
        height_ = heightFor(width_);
        if (height_ > longer) width_ = std::max(widthFor(height_ = longer), gap * count);
    } else if (height_ == 0) {
        height_ = std::clamp(heightFor(width_), width_ / 50, width_ * 50);
    } else if (width_ == 0) {
        width_ = std::clamp(widthFor(height_), height_ / 50, height_ * 50);
    }
    if (perMillimetre_ != 1) {
        width_ = std::clamp(std::round(width_), 1.0, kMostPixels);
        height_ = std::clamp(std::round(height_), 1.0, kMostPixels);
    }
    captionHeight_ = std::min(captionHeight_, height_ / 2);
    const double panelWidth = std::max((width_ - gap * (count - 1)) / count, width_ / count / 2);
    const double panelHeight = height_ - captionHeight_;
    double x = 0;
    for (const PicturePanel& panel : panels) {
        panels_.push_back({{x, 0, panelWidth, panelHeight}, &panel});
        x += panelWidth + gap;
    }
    const double margin = options_.window ? 0 : std::clamp(options_.margin, 0.0, 0.45);
    const double free = 1 - 2 * margin;
    scale_ = std::min(panelWidth * free / across, panelHeight * free / up);
    view_.center.set((shown.minPoint().x + shown.maxPoint().x) / 2,
                     (shown.minPoint().y + shown.maxPoint().y) / 2);
}

std::optional<std::uint32_t> Page::ground() const {
    if (options_.ground == Ground::none) return std::nullopt;
    return options_.ground == Ground::dark ? 0x1E2329u : 0xFFFFFFu;
}

std::uint32_t Page::ink() const { return options_.ground == Ground::dark ? 0xFFFFFFu : 0x000000u; }

bool Page::place(const PagePanel& panel, const AcGePoint3d& world, AcGePoint2d& out) const {
    AcGePoint3d seen;
    if (view_.perspective) {
        const auto found = view_.seen(world);
        if (!found) return false;
        seen = *found;
    } else {
        seen = toDisplay_ * world;
    }
    out.set(panel.frame.x + panel.frame.width / 2 + (seen.x - view_.center.x) * scale_,
            panel.frame.y + panel.frame.height / 2 - (seen.y - view_.center.y) * scale_);
    return std::isfinite(out.x) && std::isfinite(out.y);
}

double Page::strokeWidth(int weight) const {
    const double thinnest = perMillimetre_ == 1 ? kThinnestMm : kThinnestPixels;
    if (!options_.lineWeights) return thinnest;
    return std::max(weight / 100.0 * perMillimetre_, thinnest);
}

// Far outside, coordinates only cost; a band kept round a single frame hides the cut. Side by side, nothing
// may reach into the neighbour.
double Page::clipBand(double strokeWidth) const { return panels_.size() > 1 ? 0 : 10 + strokeWidth; }

void Page::forEachShape(const PagePanel& panel, std::uint32_t layer, const Visit& visit) const {
    const DisplayList& list = *panel.content->list;
    for (const DisplayPrimitive& primitive : list.primitives)
        if (list.styleOf(primitive).layer == layer) draw(panel, primitive, visit);
}

void Page::forEachShape(const PagePanel& panel, const Visit& visit) const {
    for (const DisplayPrimitive& primitive : panel.content->list->primitives) draw(panel, primitive, visit);
}

void Page::draw(const PagePanel& panel, const DisplayPrimitive& primitive, const Visit& visit) const {
    using Kind = DisplayPrimitive::Kind;
    const DisplayStyle& style = panel.content->list->styleOf(primitive);
    PageShape shape;
    shape.rgb = style.color.foreground ? ink() : style.color.rgb;
    shape.opacity = style.opacity;
    bool any = false;
    switch (primitive.kind) {
    case Kind::text:
        shape.fill = PageShape::Fill::nonZero;
        any = drawText(panel, panel.content->list->texts[primitive.first], shape);
        break;
    case Kind::ray:
    case Kind::xline:
        shape.width = strokeWidth(style.weight);
        any = addEndless(panel, primitive, shape);
        break;
    case Kind::area:
    case Kind::ribbon:
        shape.fill = primitive.kind == Kind::area ? PageShape::Fill::oddEven : PageShape::Fill::nonZero;
        any = addContours(panel, primitive, shape);
        break;
    case Kind::line:
        shape.width = strokeWidth(style.weight);
        any = addContours(panel, primitive, shape);
        break;
    }
    if (any) visit(shape);
}

bool Page::addContours(const PagePanel& panel, const DisplayPrimitive& primitive, PageShape& shape) const {
    const bool open = shape.fill == PageShape::Fill::stroke;
    const ClipBox box = ClipBox::around(panel.frame, clipBand(shape.width));
    std::vector<AcGePoint2d> flat;
    const auto end = [&] {
        if (open)
            clipLine(flat, box, shape.points, shape.ends);
        else
            clipArea(flat, box, shape.points, shape.ends);
        flat.clear();
    };
    for (std::uint32_t c = primitive.first; c < primitive.first + primitive.count; ++c) {
        for (const AcGePoint3d& world : panel.content->list->contour(c)) {
            AcGePoint2d p;
            if (place(panel, world, p))
                flat.push_back(p);
            else if (open)
                end(); // behind the eye: the line is cut there
        }
        end();
    }
    return !shape.ends.empty();
}

bool Page::addEndless(const PagePanel& panel, const DisplayPrimitive& primitive, PageShape& shape) const {
    const auto given = panel.content->list->contour(primitive.first);
    AcGePoint2d a, b;
    if (given.size() < 2 || !place(panel, given[0], a) || !place(panel, given[1], b)) return false;
    const double length = a.distanceTo(b);
    if (!(length > 0)) return false;
    const AcGePoint2d middle(panel.frame.x + panel.frame.width / 2, panel.frame.y + panel.frame.height / 2);
    const double far = a.distanceTo(middle) + panel.frame.width + panel.frame.height;
    const AcGeVector2d step = (b - a) * (far / length);
    std::vector<AcGePoint2d> line{primitive.kind == DisplayPrimitive::Kind::ray ? a : a - step, a + step};
    clipLine(line, ClipBox::around(panel.frame, clipBand(shape.width)), shape.points, shape.ends);
    return !shape.ends.empty();
}

bool Page::drawText(const PagePanel& panel, const DisplayText& text, PageShape& shape) const {
    AcGePoint2d origin, right, up;
    if (!place(panel, text.origin, origin) || !place(panel, text.origin + text.right, right) ||
        !place(panel, text.origin + text.up, up))
        return false;
    const AcGeVector2d across = right - origin, rise = up - origin;
    if (!(std::hypot(across.x, across.y) + std::hypot(rise.x, rise.y) > 0)) return false;
    const TextFace& face = panel.content->list->faces[text.face];
    const PlacedText placed{&face, text.text, origin, across, rise};
    const TextExtents size = textMetrics()->measure(face, 1, text.text);
    AcDbExtents2d box;
    for (int corner = 0; corner < 4; ++corner)
        box.addPoint(
            placed.place({corner & 1 ? size.high.x : size.low.x, corner & 2 ? size.high.y : size.low.y}));
    shape.text = placed;
    return ClipBox::around(panel.frame, 0).meets(box);
}

void Page::forEachMark(const PagePanel& panel, const Visit& visit) const {
    if (panel.content->vertices.empty()) return;
    PageShape shape;
    shape.rgb = options_.ground == Ground::dark ? 0x5AB0FFu : 0x1F6FD0u;
    shape.width = perMillimetre_ == 1 ? 0.2 : 1.2;
    const double half = kMarkMm * perMillimetre_ / 2;
    const ClipBox box = ClipBox::around(panel.frame, 0);
    for (const AcGePoint3d& vertex : panel.content->vertices) {
        AcGePoint2d p;
        if (!place(panel, vertex, p) || !box.holds(p)) continue;
        const double x0 = p.x - half, x1 = p.x + half, y0 = p.y - half, y1 = p.y + half;
        shape.points.insert(shape.points.end(), {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}, {x0, y0}});
        shape.ends.push_back(static_cast<std::uint32_t>(shape.points.size()));
    }
    if (!shape.ends.empty()) visit(shape);
}

void Page::forEachFrame(const PagePanel& panel, const Visit& visit) const {
    if (panels_.size() < 2) return;
    PageShape shape;
    shape.rgb = options_.ground == Ground::dark ? 0x4A525Cu : 0xC4C8CCu;
    shape.width = strokeWidth(0);
    const PageRect& f = panel.frame;
    const double in = shape.width / 2, x1 = f.x + f.width - in, y1 = f.y + f.height - in;
    shape.points = {{f.x + in, f.y + in}, {x1, f.y + in}, {x1, y1}, {f.x + in, y1}, {f.x + in, f.y + in}};
    shape.ends = {5};
    visit(shape);
}

void Page::forEachCaption(const PagePanel& panel, const Visit& visit) const {
    if (panel.content->caption.empty() || captionHeight_ <= 0) return;
    static const TextFace face;
    const std::wstring& caption = panel.content->caption;
    double capital = kCaptionCapital / kCaptionMm * captionHeight_;
    const double room = panel.frame.width * 0.96;
    double length = textMetrics()->measure(face, capital, caption).advance;
    if (length > room) {
        capital *= room / length;
        length = room;
    }
    PageShape shape;
    shape.fill = PageShape::Fill::nonZero;
    shape.rgb = ink();
    const AcGePoint2d origin(panel.frame.x + (panel.frame.width - length) / 2,
                             panel.frame.y + panel.frame.height + (captionHeight_ + capital) / 2);
    shape.text = PlacedText{&face, caption, origin, {capital, 0}, {0, -capital}};
    visit(shape);
}

} // namespace host
