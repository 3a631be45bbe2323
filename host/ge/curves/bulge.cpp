// Bulged segments from their chord and bulge. With theta = 4 atan(bulge) the turn, the point at fraction f of
// the arc lies at the chord turned by -(1 - f) theta / 2 and stretched by sin(f theta / 2) / sin(theta / 2).
#include "host/ge/curves/bulge.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/ge/curves/numeric.h"

namespace host::ge {

namespace {

constexpr AcGeTol kExact = AcGeTol().setEqualPoint(0).setEqualVector(0);

AcGeVector2d rotated(AcGeVector2d v, double angle) { return v.rotateBy(angle); }

// atan(b) / b
double arcTangentQuotient(double b) {
    if (std::fabs(b) >= tolerance::kSmallBulge) return std::atan(b) / b;
    const double s = b * b;
    return 1 - s * (1.0 / 3 - s * (1.0 / 5 - s * (1.0 / 7 - s * (1.0 / 9 - s / 11))));
}

// Area between arc and chord over the chord squared.
double capArea(double b) {
    const double s = b * b;
    if (std::fabs(b) < tolerance::kSmallBulge)
        return b * (1.0 / 3 + s * (1.0 / 15 - s * (1.0 / 105 - s * (1.0 / 315 - s / 693))));
    return ((1 + s) * (1 + s) * std::atan(b) - b * (1 - s)) / (8 * s);
}

// sin(f x) / sin(x)
double sineRatio(double f, double x) {
    if (std::fabs(x) < 1e-8) return f;
    return std::sin(f * x) / std::sin(x);
}

} // namespace

double BulgeSegment::sweep() const { return 4 * std::atan(bulge); }

double BulgeSegment::radius() const {
    if (bulge == 0) return std::numeric_limits<double>::infinity();
    return chord() * (1 + bulge * bulge) / (4 * std::fabs(bulge));
}

double BulgeSegment::length() const { return chord() * (1 + bulge * bulge) * arcTangentQuotient(bulge); }

BulgeCircle BulgeSegment::circle() const {
    const AcGeVector2d c = end - start;
    // From the start: exact for the centre of small arcs at large coordinates, too.
    const AcGeVector2d toCenter = c * 0.5 + c.perpVector() * ((1 - bulge * bulge) / (4 * bulge));
    return {start + toCenter, radius(), (-toCenter).angle(), sweep()};
}

double BulgeSegment::areaAbout(const AcGePoint2d& base) const {
    return 0.5 * (start - base).crossProduct(end - base) + capArea(bulge) * (end - start).lengthSqrd();
}

AcGePoint2d BulgeSegment::pointAt(double f) const {
    if (f == 0) return start;
    if (f == 1) return end;
    const AcGeVector2d c = end - start;
    if (bulge == 0) return start + c * f;
    const double half = 0.5 * sweep();
    return start + rotated(c, (f - 1) * half) * sineRatio(f, half);
}

AcGeVector2d BulgeSegment::tangentAt(double f) const {
    const AcGeVector2d c = (end - start).normal(kExact);
    return bulge == 0 ? c : rotated(c, (f - 0.5) * sweep());
}

BulgeClosest BulgeSegment::closestTo(const AcGePoint2d& point) const {
    const AcGeVector2d c = end - start, v = point - start;
    const double size = c.lengthSqrd();
    double f = 0;
    if (size > 0 && bulge == 0) {
        f = std::clamp(v.dotProduct(c) / size, 0.0, 1.0);
    } else if (size > 0) {
        // The angle from the middle of the arc, seen from the centre, with both lengths times the bulge.
        const AcGeVector2d w = v - c * 0.5;
        const double across = bulge * w.dotProduct(c);
        const double along = 0.25 * (1 - bulge * bulge) * size - bulge * w.dotProduct(c.perpVector());
        f = 0.5 + std::atan2(across, along) / sweep();
        if (!(f >= 0 && f <= 1)) f = point.distanceTo(start) <= point.distanceTo(end) ? 0 : 1;
    }
    const AcGePoint2d foot = pointAt(f);
    return {foot, f, foot.distanceTo(point)};
}

AcDbExtents2d BulgeSegment::extents() const {
    AcDbExtents2d box;
    box.addPoint(start);
    box.addPoint(end);
    const AcGeVector2d c = end - start;
    if (bulge == 0 || c.lengthSqrd() == 0) return box;
    // Where the tangent runs along an axis.
    const double turn = sweep(), first = c.angle() - 0.5 * turn, quarter = 0.5 * kPi;
    const double low = std::min(first, first + turn), high = std::max(first, first + turn);
    for (double k = std::ceil(low / quarter); k * quarter < high; ++k)
        box.addPoint(pointAt((k * quarter - first) / turn));
    return box;
}

BulgeSplit BulgeSegment::splitAt(double f) const {
    const AcGePoint2d p = pointAt(f);
    const double quarter = std::atan(bulge);
    return {{start, p, std::tan(f * quarter)}, {p, end, std::tan((1 - f) * quarter)}};
}

BulgeSegment BulgeSegment::part(double from, double to) const {
    return {pointAt(from), pointAt(to), std::tan((to - from) * std::atan(bulge))};
}

double bulgeOfSweep(double sweep) { return std::tan(0.25 * sweep); }

BulgeSegment bulgeSegment(const BulgeCircle& circle) {
    const auto at = [&](double angle) {
        return circle.center + AcGeVector2d(std::cos(angle), std::sin(angle)) * circle.radius;
    };
    return {at(circle.startAngle), at(circle.endAngle()), bulgeOfSweep(circle.sweep)};
}

BulgeSegment bulgeThrough(const AcGePoint2d& start, const AcGePoint2d& via, const AcGePoint2d& end) {
    const AcGeVector2d a = start - via, b = end - via;
    const double cross = a.crossProduct(b), size = a.length() * b.length();
    if (!(std::fabs(cross) > tolerance::kParallel * size)) return {start, end, 0};
    // The angle seen from the middle point is half the turn less than a half turn.
    const double seen = std::atan2(std::fabs(cross), a.dotProduct(b));
    return {start, end, std::copysign(std::tan(0.5 * (kPi - seen)), -cross)};
}

BulgeSegment bulgeWithTangent(const AcGePoint2d& start, const AcGeVector2d& tangent, const AcGePoint2d& end) {
    const AcGeVector2d c = end - start;
    const double angle = std::atan2(tangent.crossProduct(c), tangent.dotProduct(c));
    const bool back = kPi - std::fabs(angle) < tolerance::kPoint;
    return {start, end, back ? 0 : std::tan(0.5 * angle)};
}

int segmentCount(const std::vector<BulgeVertex>& vertices, bool closed) {
    const int n = static_cast<int>(vertices.size());
    return n < 2 ? 0 : closed ? n : n - 1;
}

BulgeSegment segmentOf(const std::vector<BulgeVertex>& vertices, int index) {
    const size_t i = static_cast<size_t>(index), next = i + 1 == vertices.size() ? 0 : i + 1;
    return {vertices[i].point, vertices[next].point, vertices[i].bulge};
}

double polylineLength(const std::vector<BulgeVertex>& vertices, bool closed) {
    double sum = 0;
    for (int i = 0, n = segmentCount(vertices, closed); i < n; ++i) sum += segmentOf(vertices, i).length();
    return sum;
}

double polylineArea(const std::vector<BulgeVertex>& vertices) {
    double sum = 0;
    for (int i = 0, n = segmentCount(vertices, true); i < n; ++i)
        sum += segmentOf(vertices, i).areaAbout(vertices[0].point);
    return sum;
}

AcDbExtents2d polylineExtents(const std::vector<BulgeVertex>& vertices, bool closed) {
    AcDbExtents2d box;
    for (const BulgeVertex& v : vertices) box.addPoint(v.point);
    for (int i = 0, n = segmentCount(vertices, closed); i < n; ++i)
        if (vertices[static_cast<size_t>(i)].bulge != 0) box.addExt(segmentOf(vertices, i).extents());
    return box;
}

std::vector<BulgeVertex> reversedPolyline(const std::vector<BulgeVertex>& vertices, bool closed) {
    const size_t n = vertices.size();
    std::vector<BulgeVertex> result(n);
    for (size_t i = 0; i < n; ++i) {
        result[i].point = vertices[n - 1 - i].point;
        result[i].bulge = i + 1 < n ? -vertices[n - 2 - i].bulge : closed ? -vertices[n - 1].bulge : 0;
    }
    return result;
}

} // namespace host::ge
