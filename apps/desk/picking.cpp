// Distances in pixels from the cursor to primitives.
#include "apps/desk/picking.h"

#include <algorithm>
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

} // namespace desk
