// Distances in pixels from the cursor to primitives.
#include "apps/desk/picking.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace desk {
namespace {

constexpr double kFar = std::numeric_limits<double>::infinity();

double toSegment(const AcGePoint2d& p, const AcGePoint2d& a, const AcGePoint2d& b) {
    const AcGeVector2d along = b - a, from = p - a;
    const double square = along.dotProduct(along);
    const double t = square > 0 ? std::clamp(from.dotProduct(along) / square, 0.0, 1.0) : 0;
    return p.distanceTo(a + along * t);
}

// To the strokes of the contours; `crossings` counts those of a ray to the right, for areas.
double toContours(const host::DisplayList& list, const host::DisplayPrimitive& primitive,
                  const ScreenMap& map, const AcGePoint2d& p, int& crossings) {
    double nearest = kFar;
    for (std::uint32_t c = primitive.first; c < primitive.first + primitive.count; ++c) {
        const auto contour = list.contour(c);
        AcGePoint2d before, at;
        bool known = false;
        const auto step = [&](const AcGePoint3d& world) {
            if (!map.toScreen(world, at)) return void(known = false);
            nearest = std::min(nearest, known ? toSegment(p, before, at) : p.distanceTo(at));
            if (known && (before.y > p.y) != (at.y > p.y))
                crossings += p.x < before.x + (at.x - before.x) * (p.y - before.y) / (at.y - before.y);
            before = at;
            known = true;
        };
        for (const AcGePoint3d& world : contour) step(world);
        const bool closes = primitive.kind != host::DisplayPrimitive::Kind::line;
        if (closes && !contour.empty()) step(contour.front());
    }
    return nearest;
}

double toText(const host::DisplayText& text, const ScreenMap& map, const AcGePoint2d& p) {
    AcGePoint2d origin, right, up;
    if (!map.toScreen(text.origin, origin) || !map.toScreen(text.origin + text.right, right) ||
        !map.toScreen(text.origin + text.up, up))
        return kFar;
    const AcGeVector2d x = right - origin, y = up - origin, from = p - origin;
    const double area = x.x * y.y - x.y * y.x;
    if (area == 0) return kFar;
    const double u = (from.x * y.y - from.y * y.x) / area, v = (x.x * from.y - x.y * from.x) / area;
    return u >= text.low.x && u <= text.high.x && v >= text.low.y && v <= text.high.y ? 0 : kFar;
}

double toEndless(const host::DisplayList& list, const host::DisplayPrimitive& primitive, const ScreenMap& map,
                 const AcGePoint2d& p) {
    const auto given = list.contour(primitive.first);
    AcGePoint2d a, b;
    if (given.size() < 2 || !map.toScreen(given[0], a) || !map.toScreen(given[1], b)) return kFar;
    const AcGeVector2d along = b - a, from = p - a;
    const double length = along.length();
    if (!(length > 0)) return kFar;
    if (primitive.kind == host::DisplayPrimitive::Kind::ray && from.dotProduct(along) < 0)
        return p.distanceTo(a);
    return std::abs(along.x * from.y - along.y * from.x) / length;
}

} // namespace

AcDbObjectId entityUnder(Scene& scene, const ScreenMap& map, const QPointF& pixel, double radius) {
    using Kind = host::DisplayPrimitive::Kind;
    const host::DisplayList& list = scene.list();
    const AcGePoint2d p(pixel.x(), pixel.y());
    const QRectF around(pixel - QPointF(radius, radius), pixel + QPointF(radius, radius));
    AcDbObjectId best;
    double nearest = radius;
    for (const std::uint32_t i : scene.within(map.covered(around), map)) {
        const host::DisplayPrimitive& primitive = list.primitives[i];
        int crossings = 0;
        double distance = kFar;
        if (primitive.kind == Kind::text)
            distance = toText(list.texts[primitive.first], map, p);
        else if (primitive.kind == Kind::ray || primitive.kind == Kind::xline)
            distance = toEndless(list, primitive, map, p);
        else
            distance = toContours(list, primitive, map, p, crossings);
        if (crossings % 2 && primitive.kind != Kind::line) distance = std::min(distance, radius);
        if (distance > nearest) continue;
        nearest = distance;
        best = list.owners[primitive.owner];
    }
    return best;
}

// -- windows -------------------------------------------------------------------------------------------

namespace {

// A rectangle of pixels, and what is asked of strokes.
class Window {
public:
    Window(const host::DisplayList& list, const ScreenMap& map, const QRectF& pixels)
        : list_(list), map_(map), box_(pixels.normalized()) {}

    bool touches(const host::DisplayPrimitive& primitive) const {
        return anyStroke(primitive,
                         [this](const AcGePoint2d& a, const AcGePoint2d& b) { return meets(a, b); });
    }
    bool holds(const host::DisplayPrimitive& primitive) const {
        return !isEndless(primitive) &&
               !anyStroke(primitive, [this](const AcGePoint2d& a, const AcGePoint2d& b) {
                   return !box_.contains(a.x, a.y) || !box_.contains(b.x, b.y);
               });
    }

private:
    using Kind = host::DisplayPrimitive::Kind;
    static bool isEndless(const host::DisplayPrimitive& p) {
        return p.kind == Kind::ray || p.kind == Kind::xline;
    }
    // A stretch of the segment lies in the rectangle (Liang, Barsky 1984).
    bool meets(const AcGePoint2d& a, const AcGePoint2d& b) const {
        double first = 0, last = 1;
        const auto keep = [&](double step, double room) {
            if (step == 0) return room >= 0;
            step < 0 ? first = std::max(first, room / step) : last = std::min(last, room / step);
            return first <= last;
        };
        const double dx = b.x - a.x, dy = b.y - a.y;
        return keep(-dx, a.x - box_.left()) && keep(dx, box_.right() - a.x) && keep(-dy, a.y - box_.top()) &&
               keep(dy, box_.bottom() - a.y);
    }
    template <class Test> bool anyStroke(const host::DisplayPrimitive& primitive, Test test) const {
        if (primitive.kind == Kind::text)
            return anyStroke(cornersOf(list_.texts[primitive.first]), true, test);
        const host::DisplayContours contours = list_.contours(primitive);
        for (std::uint32_t c = 0; c < contours.count; ++c)
            if (anyStroke(contours[c], primitive.kind == Kind::area || primitive.kind == Kind::ribbon, test))
                return true;
        return isEndless(primitive) && beyond(contours[0], primitive.kind == Kind::xline, test);
    }
    template <class Test> bool anyStroke(std::span<const AcGePoint3d> points, bool closed, Test test) const {
        AcGePoint2d before, at;
        bool known = false;
        const size_t count = points.size() + (closed ? 1 : 0);
        for (size_t i = 0; i < count; ++i) {
            const bool seen = map_.toScreen(points[i % points.size()], at);
            if (seen && test(known ? before : at, at)) return true;
            known = seen;
            before = at;
        }
        return false;
    }
    // The parts of an endless line that its two points don't span, as far as the screen may reach.
    template <class Test> bool beyond(std::span<const AcGePoint3d> points, bool bothWays, Test test) const {
        constexpr double kReach = 1e6; // pixels
        AcGePoint2d a, b;
        if (points.size() < 2 || !map_.toScreen(points[0], a) || !map_.toScreen(points[1], b)) return false;
        const double length = a.distanceTo(b);
        if (!(length > 0)) return false;
        const AcGeVector2d step = (b - a) * (kReach / length);
        return test(b, b + step) || (bothWays && test(a - step, a));
    }
    static std::array<AcGePoint3d, 4> cornersOf(const host::DisplayText& text) {
        const auto at = [&](double x, double y) { return text.origin + text.right * x + text.up * y; };
        return {at(text.low.x, text.low.y), at(text.high.x, text.low.y), at(text.high.x, text.high.y),
                at(text.low.x, text.high.y)};
    }

    const host::DisplayList& list_;
    const ScreenMap& map_;
    QRectF box_;
};

} // namespace

std::vector<AcDbObjectId> entitiesWithin(Scene& scene, const ScreenMap& map, const QRectF& pixels,
                                         bool crossing) {
    const Window window(scene.list(), map, pixels);
    std::vector<AcDbObjectId> found;
    for (const AcDbObjectId owner : scene.ownersWithin(map.covered(pixels.normalized()), map)) {
        const PrimitiveRange range = scene.of(owner);
        const auto first = scene.list().primitives.begin() + range.first;
        const auto end = scene.list().primitives.begin() + range.end;
        const auto touches = [&](const host::DisplayPrimitive& p) { return window.touches(p); };
        const auto holds = [&](const host::DisplayPrimitive& p) { return window.holds(p); };
        if (crossing ? std::any_of(first, end, touches) : std::all_of(first, end, holds))
            found.push_back(owner);
    }
    return found;
}

} // namespace desk
