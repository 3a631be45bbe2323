// Flattening of curves to polylines.
#include "host/ge/curves/sampling.h"

#include <algorithm>
#include <cmath>

#include "host/ge/curves/numeric.h"

namespace host::ge {

namespace {

// Steps of one Bezier piece: its second differences bound the height of every chord, d^2 |C''| / 8 (Wang,
// 1984). Rational pieces take the bound of Zheng and Sederberg's shape: the differences of their weights
// widen it.
double stepsFor(const BezierPiece& piece, double tolerance) {
    const size_t p = piece.poles.size() - 1;
    if (p < 2) return 1;
    double bend = 0, least = piece.poles[0].w, reach = 0, change = 0;
    for (size_t i = 0; i <= p; ++i) {
        const HomogeneousPole& a = piece.poles[i];
        least = std::min(least, a.w);
        reach = std::max(reach, piece.origin.distanceTo(piece.pole(i)));
    }
    for (size_t i = 0; i + 2 <= p; ++i) {
        const HomogeneousPole &a = piece.poles[i], &b = piece.poles[i + 1], &c = piece.poles[i + 2];
        bend = std::max(bend, std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y, a.z - 2 * b.z + c.z));
        change = std::max(change, std::fabs(a.w - 2 * b.w + c.w));
    }
    const double degree = static_cast<double>(p);
    const double second = degree * (degree - 1) * (bend + change * reach) / least;
    return std::max(1.0, std::ceil(std::sqrt(second / (8 * tolerance))));
}

} // namespace

int circleSteps(double radius, double sweep, double chordTolerance, int maxSteps) {
    const int most = std::max(1, maxSteps);
    // Height of a chord over angle h: 2 r sin^2(h / 4).
    const double quarter = std::asin(std::sqrt(std::clamp(0.5 * chordTolerance / radius, 0.0, 1.0)));
    const double steps = std::ceil(std::fabs(sweep) / std::min(4 * quarter, kPi / 2));
    return steps < most ? std::max(1, static_cast<int>(steps)) : most; // also when infinite
}

std::vector<FlatPoint> flatten(const EllipticArc& arc, const Flattening& how) {
    // A chord of an ellipse is no higher than that of its major circle.
    const int n =
        std::max(2, circleSteps(arc.majorRadius(), arc.sweep(), how.chordTolerance, how.maxPoints - 1));
    std::vector<FlatPoint> points(static_cast<size_t>(n) + 1);
    for (int i = 0; i <= n; ++i) {
        const double u = i == n ? arc.end : arc.start + arc.sweep() * i / n;
        points[static_cast<size_t>(i)] = {arc.point(u), u};
    }
    return points;
}

std::vector<FlatPoint> flatten(const Nurbs& curve, const Flattening& how) {
    const std::vector<BezierPiece> pieces = bezierPieces(curve);
    const double tolerance = std::max(how.chordTolerance, 1e-300);
    std::vector<double> steps(pieces.size());
    double total = 0;
    for (size_t i = 0; i < pieces.size(); ++i) total += steps[i] = stepsFor(pieces[i], tolerance);
    const double room = std::max(2, how.maxPoints - 1);
    std::vector<FlatPoint> points{{curve.startPoint(), curve.start()}};
    if (static_cast<double>(pieces.size()) > room) { // more pieces than points: even steps over the whole
        for (int i = 1; i <= static_cast<int>(room); ++i) {
            const double t =
                i == room ? curve.end() : curve.start() + (curve.end() - curve.start()) * i / room;
            points.push_back({curve.point(t), t});
        }
        return points;
    }
    const double spare = room - static_cast<double>(pieces.size());
    const double share = total <= room ? 1 : spare / total;
    for (size_t i = 0; i < pieces.size(); ++i) {
        const double count = share == 1 ? steps[i] : 1 + std::floor((steps[i] - 1) * share);
        const double from = pieces[i].from, width = pieces[i].to - from;
        for (double k = 1; k <= count; ++k) {
            const double t = k == count ? pieces[i].to : from + width * k / count;
            points.push_back({curve.point(t), t});
        }
    }
    return points;
}

std::vector<AcGePoint2d> flatten(const std::vector<BulgeVertex>& vertices, bool closed,
                                 const Flattening& how) {
    std::vector<AcGePoint2d> points;
    const int n = segmentCount(vertices, closed);
    if (!vertices.empty()) points.push_back(vertices[0].point);
    const int room = std::max(1, (how.maxPoints - 1) / std::max(1, n));
    for (int i = 0; i < n; ++i) {
        const BulgeSegment s = segmentOf(vertices, i);
        const int steps = s.isStraight() ? 1 : circleSteps(s.radius(), s.sweep(), how.chordTolerance, room);
        for (int k = 1; k <= steps; ++k)
            points.push_back(s.pointAt(k == steps ? 1 : static_cast<double>(k) / steps));
    }
    if (closed && points.size() > 1) points.pop_back();
    return points;
}

} // namespace host::ge
