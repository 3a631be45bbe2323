// Smoothing of polylines from their control frame.
#include "host/ge/curves/polyframe.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "host/ge/tolerances.h"

namespace host::ge {

namespace {

constexpr AcGeTol kExact = AcGeTol().setEqualPoint(0).setEqualVector(0);

Nurbs openSpline(const std::vector<AcGePoint3d>& frame, int degree) {
    Nurbs c;
    c.degree = degree;
    c.poles = frame;
    const int spans = static_cast<int>(frame.size()) - degree;
    for (int i = -degree; i <= spans + degree; ++i) c.knots.push_back(std::clamp(i, 0, spans));
    return c;
}

// The domain begins where the first point weighs most: at a knot for odd degrees, between two for even ones.
Nurbs closedSpline(const std::vector<AcGePoint3d>& frame, int degree) {
    const int n = static_cast<int>(frame.size()), p = degree;
    Nurbs c;
    c.degree = p;
    c.closed = c.periodic = true;
    const int lead = p / 2;
    for (int i = 0; i < n + p; ++i) c.poles.push_back(frame[static_cast<size_t>(((i - lead) % n + n) % n)]);
    for (int i = -p; i <= n + p; ++i) c.knots.push_back(i);
    return c;
}

AcGeVector2d circleTangent(const AcGePoint2d& before, const AcGePoint2d& at, const AcGePoint2d& after) {
    const AcGeVector2d a = at - before, b = after - at;
    const double la = a.length(), lb = b.length();
    if (la == 0 || lb == 0) return (la == 0 ? b : a).normal(kExact);
    // Weights that make it exact for points of a circle.
    const AcGeVector2d t = a * (lb / la) + b * (la / lb);
    return (t.length() > tolerance::kParallel * (la + lb) ? t : a.perpVector()).normal(kExact);
}

// The other end's tangent of the arc that leaves with this one.
AcGeVector2d acrossArc(const AcGeVector2d& tangent, const AcGeVector2d& chord) {
    const AcGeVector2d u = chord.normal(kExact);
    return u.lengthSqrd() > 0 ? u * (2 * tangent.dotProduct(u)) - tangent : tangent;
}

std::vector<AcGeVector2d> fitTangents(const std::vector<FitVertex>& v, bool closed) {
    const size_t n = v.size();
    std::vector<AcGeVector2d> t(n);
    for (size_t i = 0; i < n; ++i) {
        const bool inside = closed || (i > 0 && i + 1 < n);
        if (v[i].tangent && !v[i].tangent->isZeroLength(kExact))
            t[i] = v[i].tangent->normal(kExact);
        else if (inside)
            t[i] = circleTangent(v[(i + n - 1) % n].point, v[i].point, v[(i + 1) % n].point);
    }
    if (closed || n < 2) return t;
    const bool firstFree = t[0].isZeroLength(kExact), lastFree = t[n - 1].isZeroLength(kExact);
    const AcGeVector2d first = v[1].point - v[0].point, last = v[n - 1].point - v[n - 2].point;
    if (n == 2 && firstFree && lastFree) return {first.normal(kExact), first.normal(kExact)};
    if (firstFree) t[0] = acrossArc(t[1], first);
    if (lastFree) t[n - 1] = acrossArc(t[n - 2], last);
    return t;
}

} // namespace

Nurbs frameSpline(const std::vector<AcGePoint3d>& frame, int degree, bool closed) {
    const int n = static_cast<int>(frame.size());
    if (n < (closed ? 3 : 2)) return {};
    const int p = std::clamp(degree, 1, std::min(kMaxDegree, closed ? n : n - 1));
    return closed ? closedSpline(frame, p) : openSpline(frame, p);
}

std::vector<AcGePoint3d> frameSplinePoints(const std::vector<AcGePoint3d>& frame, int degree, bool closed,
                                           int segments) {
    const Nurbs c = frameSpline(frame, degree, closed);
    if (!c.isValid()) return frame;
    const size_t each = static_cast<size_t>(std::clamp(std::abs(std::max(segments, -32767)), 1, 32767));
    const size_t steps = (closed ? frame.size() : frame.size() - 1) * each;
    // Even degrees peak over a pole between two knots.
    const double from = c.start(), range = c.end() - from;
    const double offset = closed && c.degree % 2 == 0 ? 0.5 : 0;
    std::vector<AcGePoint3d> points;
    points.reserve(steps + 1);
    for (size_t i = 0; i < steps + (closed ? 0 : 1); ++i) {
        double t = from + offset + range * static_cast<double>(i) / static_cast<double>(steps);
        if (closed && t >= c.end()) t -= range;
        points.push_back(c.point(t));
    }
    return points;
}

Biarc biarc(const AcGePoint2d& start, const AcGeVector2d& startTangent, const AcGePoint2d& end,
            const AcGeVector2d& endTangent) {
    const AcGeVector2d v = end - start, t = startTangent + endTangent;
    // Tangent length d at both ends: 2 (1 - t0 . t1) d^2 + 2 (v . t) d - v . v = 0, its positive root written
    // so that nothing cancels.
    const double a = 2 * (1 - startTangent.dotProduct(endTangent)), b = v.dotProduct(t), c = v.lengthSqrd();
    if (c == 0) return {start, 0, 0};
    const double root = std::sqrt(std::max(0.0, b * b + a * c));
    const double below = b + root;
    double d = 0;
    if (below > tolerance::kParallel * std::sqrt(c))
        d = c / below;
    else if (a > 0)
        d = (root - b) / a;
    else // tangents alike and across the chord: half circles
        return {start + v * 0.5, bulgeWithTangent(start, startTangent, start + v * 0.5).bulge,
                bulgeWithTangent(end, -endTangent, start + v * 0.5).bulge * -1};
    const AcGePoint2d joint =
        (start + startTangent * d) + ((end - endTangent * d) - (start + startTangent * d)) * 0.5;
    const double first = bulgeWithTangent(start, startTangent, joint).bulge;
    return {joint, first, -bulgeWithTangent(end, -endTangent, joint).bulge};
}

FitCurve fitCurve(const std::vector<FitVertex>& vertices, bool closed) {
    FitCurve result;
    const size_t n = vertices.size();
    const auto add = [&](const AcGePoint2d& p, double bulge, bool added) {
        result.vertices.push_back({p, bulge});
        result.isAdded.push_back(added);
    };
    if (n < 2) {
        for (const FitVertex& v : vertices) add(v.point, 0, false);
        return result;
    }
    const std::vector<AcGeVector2d> tangents = fitTangents(vertices, closed);
    const size_t segments = closed ? n : n - 1;
    for (size_t i = 0; i < segments; ++i) {
        const size_t next = (i + 1) % n;
        const Biarc arcs = biarc(vertices[i].point, tangents[i], vertices[next].point, tangents[next]);
        add(vertices[i].point, arcs.firstBulge, false);
        const double same = tolerance::kPoint * vertices[i].point.distanceTo(vertices[next].point);
        const bool apart = arcs.joint.distanceTo(vertices[next].point) > same;
        if (apart && arcs.joint.distanceTo(vertices[i].point) > same) add(arcs.joint, arcs.secondBulge, true);
    }
    if (!closed) add(vertices[n - 1].point, 0, false);
    return result;
}

} // namespace host::ge
