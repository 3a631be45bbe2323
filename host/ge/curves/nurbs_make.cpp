// B-splines from lines, conics and polylines, and joining.
#include "host/ge/curves/nurbs_make.h"

#include <algorithm>
#include <cmath>

#include "host/ge/curves/numeric.h"

namespace host::ge {

namespace {

// Appends a rational quadratic piece: the pole between two ends and the new end, with a double knot at the
// joint.
void addQuadratic(Nurbs& c, const AcGePoint3d& middle, double weight, const AcGePoint3d& end, double knot) {
    c.poles.push_back(middle);
    c.poles.push_back(end);
    c.weights.push_back(weight);
    c.weights.push_back(1);
    c.knots.insert(c.knots.end(), 2, knot);
}

Nurbs beginQuadratic(const AcGePoint3d& start, double knot) {
    Nurbs c;
    c.degree = 2;
    c.rational = true;
    c.poles.push_back(start);
    c.weights.push_back(1);
    c.knots.assign(3, knot);
    return c;
}

// Parameters are angles at both ends of a piece only, so pieces are at most a quarter turn.
int quarterPieces(double sweep) {
    return std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / (kPi / 2) - 1e-9)));
}

void addBulge(Nurbs& c, const BulgeSegment& s, const AcGeMatrix3d& toWorld, double knot) {
    const int pieces = quarterPieces(s.sweep());
    const double half = 0.5 * s.sweep() / pieces;
    for (int i = 0; i < pieces; ++i) {
        const AcGePoint2d a = s.pointAt(static_cast<double>(i) / pieces), b = s.pointAt((i + 1.0) / pieces);
        // The tangents meet over the middle of the chord.
        const AcGePoint2d m = a + (b - a) * 0.5 - (b - a).perpVector() * (0.5 * std::tan(half));
        addQuadratic(c, toWorld * AcGePoint3d(m.x, m.y, 0), std::cos(half),
                     toWorld * AcGePoint3d(b.x, b.y, 0), knot + (i + 1.0) / pieces);
    }
}

void finish(Nurbs& c, bool closed) {
    if (!c.knots.empty()) c.knots.push_back(c.knots.back());
    c.closed = closed;
}

} // namespace

Nurbs lineNurbs(const AcGePoint3d& start, const AcGePoint3d& end) {
    Nurbs c;
    c.degree = 1;
    c.knots = {0, 0, 1, 1};
    c.poles = {start, end};
    return c;
}

Nurbs conicNurbs(const EllipticArc& arc) {
    const int pieces = quarterPieces(arc.sweep());
    const double step = arc.sweep() / pieces, weight = std::cos(0.5 * step);
    Nurbs c = beginQuadratic(arc.startPoint(), arc.start);
    for (int i = 0; i < pieces; ++i) {
        const double middle = arc.start + (i + 0.5) * step;
        const bool last = i + 1 == pieces;
        const double to = last ? arc.end : arc.start + (i + 1) * step;
        const AcGePoint3d pole = arc.center + (arc.point(middle) - arc.center) / weight;
        addQuadratic(c, pole, weight, last && arc.isClosed() ? c.poles.front() : arc.point(to), to);
    }
    finish(c, arc.isClosed());
    return c;
}

Nurbs polylineNurbs(const std::vector<BulgeVertex>& vertices, bool closed, const AcGeMatrix3d& toWorld) {
    const int n = segmentCount(vertices, closed);
    const auto world = [&](const AcGePoint2d& p) { return toWorld * AcGePoint3d(p.x, p.y, 0); };
    const bool curved =
        std::any_of(vertices.begin(), vertices.end(), [](const BulgeVertex& v) { return v.bulge != 0; });
    if (n == 0) return {};
    if (!curved) {
        std::vector<AcGePoint3d> points;
        for (const BulgeVertex& v : vertices) points.push_back(world(v.point));
        return polylineNurbs(points, closed);
    }
    Nurbs c = beginQuadratic(world(vertices[0].point), 0);
    double knot = 0;
    for (int i = 0; i < n; ++i) {
        const BulgeSegment s = segmentOf(vertices, i);
        if (s.chord() == 0) continue;
        addBulge(c, s, toWorld, knot++);
    }
    finish(c, closed);
    return c;
}

Nurbs polylineNurbs(const std::vector<AcGePoint3d>& points, bool closed) {
    Nurbs c;
    c.degree = 1;
    const size_t n = points.size() + (closed ? 1 : 0);
    for (size_t i = 0; i < n && !points.empty(); ++i) {
        const AcGePoint3d& p = points[i % points.size()];
        if (!c.poles.empty() && c.poles.back().distanceTo(p) == 0) continue;
        c.knots.push_back(static_cast<double>(c.poles.size()));
        c.poles.push_back(p);
    }
    if (c.poles.size() < 2) return {};
    c.knots.insert(c.knots.begin(), c.knots.front());
    c.knots.push_back(c.knots.back());
    c.closed = closed;
    return c;
}

Nurbs joined(const std::vector<Nurbs>& curves) {
    Nurbs result;
    int degree = 1;
    bool rational = false;
    for (const Nurbs& c : curves) {
        degree = std::max(degree, c.degree);
        rational = rational || c.rational;
    }
    for (const Nurbs& c : curves) {
        Nurbs next = elevated(c, degree);
        if (rational && !next.rational) next.weights.assign(next.poles.size(), 1);
        next.rational = rational;
        if (result.poles.empty()) {
            result = std::move(next);
            continue;
        }
        const double shift = result.knots.back() - next.knots.front();
        result.knots.pop_back();
        for (size_t i = static_cast<size_t>(degree) + 1; i < next.knots.size(); ++i)
            result.knots.push_back(next.knots[i] + shift);
        result.poles.insert(result.poles.end(), next.poles.begin() + 1, next.poles.end());
        if (!rational) continue;
        const double scale = result.weights.back() / next.weights.front();
        for (size_t i = 1; i < next.weights.size(); ++i) result.weights.push_back(next.weights[i] * scale);
    }
    if (!result.poles.empty()) result.closed = result.endsMeet();
    return result;
}

} // namespace host::ge
