// Chords of arcs.
#include "host/gi/flatten.h"

#include <algorithm>
#include <cmath>

namespace host {

int arcChords(double radius, double sweep, double error) {
    const double angle = std::fabs(sweep);
    if (!std::isfinite(radius) || !std::isfinite(angle) || radius <= 0) return 1;
    const int fewest = std::max(1, static_cast<int>(std::ceil(std::min(angle, 1e3) / (M_PI / 2) - 1e-9)));
    if (!(error > 0)) return 4096;
    // The sagitta of a chord over the angle a is r (1 - cos(a / 2)).
    const double step = 2 * std::acos(std::clamp(1 - error / radius, -1.0, 1.0));
    if (!(step > 0) || angle / step > 4096) return 4096;
    return std::max(fewest, static_cast<int>(std::ceil(angle / step)));
}

void appendBulge(std::vector<AcGePoint2d>& out, const AcGePoint2d& from, const AcGePoint2d& to, double bulge,
                 double error) {
    out.push_back(from);
    const AcGeVector2d chord = to - from;
    const double length = std::hypot(chord.x, chord.y);
    if (bulge == 0 || length == 0 || !std::isfinite(bulge)) return;
    const double sweep = 4 * std::atan(bulge);
    const double radius = length * (1 + bulge * bulge) / (4 * std::fabs(bulge));
    const int chords = arcChords(radius, sweep, error);
    // From the middle of the chord to the centre, to the left of the direction for a positive bulge.
    const double rise = (1 - bulge * bulge) / (4 * bulge);
    const AcGePoint2d center(from.x + chord.x / 2 - chord.y * rise, from.y + chord.y / 2 + chord.x * rise);
    const double start = std::atan2(from.y - center.y, from.x - center.x);
    for (int i = 1; i < chords; ++i) {
        const double angle = start + sweep * i / chords;
        out.emplace_back(center.x + radius * std::cos(angle), center.y + radius * std::sin(angle));
    }
}

void appendEllipse(std::vector<AcGePoint3d>& out, const EllipticArc& arc, double error) {
    const double sweep = arc.end - arc.start;
    const int chords = arcChords(std::max(arc.major.length(), arc.minor.length()), sweep, error);
    for (int i = 0; i <= chords; ++i) {
        const double t = i == chords ? arc.end : arc.start + sweep * i / chords;
        out.push_back(arc.center + arc.major * std::cos(t) + arc.minor * std::sin(t));
    }
}

CircleThrough circleThrough(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
    const AcGeVector3d u = b - a, v = c - a;
    const AcGeVector3d cross = u.crossProduct(v);
    const double area = cross.lengthSqrd();
    CircleThrough result;
    if (!(area > 1e-24 * u.lengthSqrd() * v.lengthSqrd())) return result;
    const AcGeVector3d toCenter =
        (cross.crossProduct(u) * v.lengthSqrd() + v.crossProduct(cross) * u.lengthSqrd()) / (2 * area);
    result.center = a + toCenter;
    result.radius = toCenter.length();
    result.normal = cross / std::sqrt(area);
    return result;
}

} // namespace host
