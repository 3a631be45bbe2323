// Circles, ellipses and their arcs.
#include "host/ge/curves/conic.h"

#include <algorithm>
#include <cmath>

#include "host/ge/curves/numeric.h"

namespace host::ge {

namespace {

constexpr AcGeTol kExact = AcGeTol().setEqualPoint(0).setEqualVector(0);
constexpr double kTurn = 2 * kPi;

// Carlson's symmetric integral of the first kind.
double carlsonRF(double x, double y, double z) {
    double a = (x + y + z) / 3, dx = 0, dy = 0;
    for (int i = 0; i < 60; ++i) {
        dx = (a - x) / a;
        dy = (a - y) / a;
        if (std::max({std::fabs(dx), std::fabs(dy), std::fabs(dx + dy)}) < 1e-3) break;
        const double l = std::sqrt(x * y) + std::sqrt(y * z) + std::sqrt(z * x);
        x = (x + l) / 4;
        y = (y + l) / 4;
        z = (z + l) / 4;
        a = (x + y + z) / 3;
    }
    const double dz = -dx - dy, e2 = dx * dy - dz * dz, e3 = dx * dy * dz;
    return (1 + e2 * (e2 / 24 - 0.1 - 3 * e3 / 44) + e3 / 14) / std::sqrt(a);
}

// Carlson's degenerate integral of the third kind.
double carlsonRD(double x, double y, double z) {
    double sum = 0, factor = 1, a = 0, dx = 0, dy = 0;
    for (int i = 0; i < 60; ++i) {
        a = (x + y + 3 * z) / 5;
        dx = (a - x) / a;
        dy = (a - y) / a;
        if (std::max({std::fabs(dx), std::fabs(dy), std::fabs(dx + dy)}) < 1e-3) break;
        const double l = std::sqrt(x * y) + std::sqrt(y * z) + std::sqrt(z * x);
        sum += factor / (std::sqrt(z) * (z + l));
        factor /= 4;
        x = (x + l) / 4;
        y = (y + l) / 4;
        z = (z + l) / 4;
    }
    const double dz = -(dx + dy) / 3;
    const double ea = dx * dy, eb = dz * dz, ec = ea - eb, ed = ea - 6 * eb, ee = ed + ec + ec;
    const double series = 1 + ed * (-3.0 / 14 + 9.0 / 88 * ed - 9.0 / 52 * dz * ee) +
                          dz * (ee / 6 + dz * (-9.0 / 22 * ec + 3.0 / 26 * dz * ea));
    return 3 * sum + factor * series / (a * std::sqrt(a));
}

// Integral of sqrt(1 - m sin^2) from 0 to phi, |phi| <= pi / 2.
double ellipticE(double phi, double m) {
    const double s = std::sin(phi), c = std::cos(phi), q = 1 - m * s * s;
    return s * (carlsonRF(c * c, q, 1) - m * s * s * carlsonRD(c * c, q, 1) / 3);
}

// Length of the unit ellipse from the tip of its minor axis, for any angle from there.
double lengthFromMinorTip(double phi, double m) {
    const double turns = std::round(phi / kPi);
    return 2 * turns * ellipticE(kPi / 2, m) + ellipticE(phi - turns * kPi, m);
}

// Stationary angles of the distance from (x, y), both positive, to the ellipse with radii 1 and b.
struct Quadrants {
    double own = 0;
    bool hasOther = false;
    double other = 0; // in the fourth quadrant, as a negative angle
};

Quadrants stationaryAngles(double x, double y, double b) {
    const double k = (1 - b) * (1 + b), by = b * y;
    const auto slope = [=](double u) {
        const double s = std::sin(u), c = std::cos(u);
        return ValueAndSlope{x * s - by * c - k * s * c, x * c + by * s - k * (c * c - s * s)};
    };
    Quadrants result;
    // At the rounded right angle the sign is lost for points that lie on the minor axis.
    result.own = slope(kPi / 2).value <= 0 ? kPi / 2 : rootInBracket(slope, 0, kPi / 2, std::atan2(y, b * x));
    // Across the major axis the slope over sin cos is k - x / cos - b y / sin, highest where tan^3 = b y / x.
    const double crest = -std::atan(std::cbrt(by / x));
    if (slope(crest).value > 0 && crest > -kPi / 2) {
        result.hasOther = true;
        result.other = slope(-kPi / 2).value >= 0
                           ? -kPi / 2
                           : rootInBracket(slope, -kPi / 2, crest, 0.5 * (crest - kPi / 2));
    }
    return result;
}

} // namespace

bool EllipticArc::isCircular() const { return std::fabs(1 - ratio) <= tolerance::kCircle; }
bool EllipticArc::isClosed() const { return end - start >= kTurn - 1e-10; }

AcGePoint3d EllipticArc::point(double u) const {
    return center + majorAxis * std::cos(u) + minorAxis() * std::sin(u);
}

AcGeVector3d EllipticArc::derivative(double u, int order) const {
    const double c = std::cos(u), s = std::sin(u);
    switch (order & 3) {
    case 1: return minorAxis() * c - majorAxis * s;
    case 2: return -(majorAxis * c) - minorAxis() * s;
    case 3: return majorAxis * s - minorAxis() * c;
    default: return majorAxis * c + minorAxis() * s;
    }
}

double EllipticArc::lengthBetween(double from, double to) const {
    if (isCircular()) return majorRadius() * (to - from);
    const double m = (1 - ratio) * (1 + ratio);
    return majorRadius() * (lengthFromMinorTip(to - kPi / 2, m) - lengthFromMinorTip(from - kPi / 2, m));
}

double EllipticArc::paramAtLength(double length) const {
    const double whole = this->length();
    if (!(length > 0)) return start;
    if (length >= whole) return end;
    const double guess = start + sweep() * (length / whole);
    if (isCircular()) return guess;
    return rootInBracket(
        [&](double u) {
            return ValueAndSlope{lengthBetween(start, u) - length, derivative(u).length()};
        },
        start, end, guess);
}

double EllipticArc::paramInRange(double u) const {
    double beyond = std::fmod(u - start, kTurn);
    if (beyond < 0) beyond += kTurn;
    if (beyond <= sweep()) return start + beyond;
    return beyond - sweep() < kTurn - beyond ? end : start;
}

ConicClosest EllipticArc::closestTo(const AcGePoint3d& p) const {
    const double a = majorRadius();
    ConicClosest best{startPoint(), start, 0};
    best.distance = best.point.distanceTo(p);
    if (!(a > 0)) return best;
    const auto offer = [&](double u) {
        const AcGePoint3d q = point(u);
        const double d = q.distanceTo(p);
        if (d < best.distance) best = {q, u, d};
    };
    offer(end);
    const AcGeVector3d ux = majorAxis / a, uy = normal.crossProduct(ux), v = p - center;
    const double x = v.dotProduct(ux) / a, y = v.dotProduct(uy) / a;
    constexpr double kTiny = 1e-150; // keeps the brackets' signs for points on an axis
    if (isCircular()) {
        offer(paramInRange(std::atan2(y, x)));
        return best;
    }
    const Quadrants at =
        stationaryAngles(std::max(std::fabs(x), kTiny), std::max(std::fabs(y), kTiny), ratio);
    const auto unfolded = [&](double u) {
        return std::atan2(std::copysign(1.0, y) * std::sin(u), std::copysign(1.0, x) * std::cos(u));
    };
    offer(paramInRange(unfolded(at.own)));
    if (at.hasOther) offer(paramInRange(unfolded(at.other)));
    return best;
}

AcDbExtents EllipticArc::extents() const {
    AcDbExtents box;
    box.addPoint(startPoint());
    box.addPoint(endPoint());
    const AcGeVector3d minor = minorAxis();
    for (unsigned axis = 0; axis < 3; ++axis) {
        const double u = std::atan2(minor[axis], majorAxis[axis]);
        box.addPoint(point(paramInRange(u)));
        box.addPoint(point(paramInRange(u + kPi)));
    }
    return box;
}

double EllipticArc::area() const {
    const double half = 0.5 * majorRadius() * minorRadius();
    return isClosed() ? half * kTurn : half * (sweep() - std::sin(sweep()));
}

EllipticArc EllipticArc::reversed() const {
    EllipticArc r = *this;
    r.normal = -normal;
    r.start = -end;
    r.end = -start;
    // Keep the start in one turn about zero.
    const double shift = kTurn * std::floor(r.start / kTurn);
    r.start -= shift;
    r.end -= shift;
    return r;
}

EllipticArc EllipticArc::part(double from, double to) const {
    EllipticArc r = *this;
    r.start = from;
    r.end = to;
    return r;
}

EllipticArc circularArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius,
                        double startAngle, double endAngle) {
    const AcGeVector3d n = normal.normal(kExact);
    double sweep = std::fmod(endAngle - startAngle, kTurn);
    if (sweep <= 0) sweep += kTurn;
    return {center, n, n.perpVector() * radius, 1, startAngle, startAngle + sweep};
}

EllipticArc fullCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
    return circularArc(center, normal, radius, 0, kTurn);
}

EllipticArc ellipseFromConjugate(const AcGePoint3d& center, const AcGeVector3d& p, const AcGeVector3d& q,
                                 double start, double end, const AcGeVector3d& fallbackNormal) {
    const double pp = p.lengthSqrd(), qq = q.lengthSqrd(), pq = p.dotProduct(q);
    const double size = std::max(pp, qq), limit = tolerance::kCircle * size;
    const AcGeVector3d cross = p.crossProduct(q);
    const bool flat = !(cross.length() > tolerance::kParallel * size * 1e-3);
    const AcGeVector3d normal = flat ? fallbackNormal.normal(kExact) : cross.normal(kExact);
    if (std::fabs(pp - qq) <= limit && std::fabs(pq) <= limit) return {center, normal, p, 1, start, end};
    double turn = 0.5 * std::atan2(2 * pq, pp - qq);
    // Axes that were principal stay named as they were.
    if (std::fabs(pq) <= limit && pp > qq) turn = 0;
    const AcGeVector3d major = p * std::cos(turn) + q * std::sin(turn);
    // |major| |minor| = |p x q|
    const double ratio = flat ? 0 : std::min(1.0, cross.length() / major.lengthSqrd());
    return {center, normal, major, ratio, start - turn, end - turn};
}

EllipticArc transformed(const EllipticArc& arc, const AcGeMatrix3d& m) {
    return ellipseFromConjugate(m * arc.center, m * arc.majorAxis, m * arc.minorAxis(), arc.start, arc.end,
                                m * arc.normal);
}

} // namespace host::ge
