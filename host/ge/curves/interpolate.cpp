// The cubic spline through given points. It is solved for its derivatives at the points; the B-spline poles
// are then blossoms of its segments.
#include "host/ge/curves/interpolate.h"

#include <algorithm>
#include <cmath>

#include "host/ge/extents.h"
#include "host/ge/tolerances.h"

namespace host::ge {

namespace {

using Vectors = std::vector<AcGeVector3d>;

struct Row {
    double before = 0, own = 1, after = 0;
};

// Thomas' elimination; the rows are diagonally dominant, so no pivots are sought.
Vectors solveTridiagonal(std::vector<Row> rows, Vectors right) {
    const size_t n = rows.size();
    for (size_t i = 1; i < n; ++i) {
        const double f = rows[i].before / rows[i - 1].own;
        rows[i].own -= f * rows[i - 1].after;
        right[i] -= right[i - 1] * f;
    }
    right[n - 1] /= rows[n - 1].own;
    for (size_t i = n - 1; i-- > 0;) right[i] = (right[i] - right[i + 1] * rows[i].after) / rows[i].own;
    return right;
}

// With corners: rows[0].before reaches the last unknown, rows[n-1].after the first (Sherman and Morrison,
// 1950).
Vectors solveCyclic(std::vector<Row> rows, const Vectors& right) {
    const size_t n = rows.size();
    const double corner = rows[0].before, opposite = rows[n - 1].after, gamma = -rows[0].own;
    rows[0].own -= gamma;
    rows[n - 1].own -= corner * opposite / gamma;
    Vectors aside(n);
    aside[0].x = gamma;
    aside[n - 1].x = opposite;
    Vectors x = solveTridiagonal(rows, right);
    const Vectors z = solveTridiagonal(rows, aside);
    const double ratio = corner / gamma;
    const AcGeVector3d f = (x[0] + x[n - 1] * ratio) / (1 + z[0].x + ratio * z[n - 1].x);
    for (size_t i = 0; i < n; ++i) x[i] -= f * z[i].x;
    return x;
}

double spacingOf(double chord, KnotSpacing spacing) {
    return spacing == KnotSpacing::uniform ? 1 : spacing == KnotSpacing::chord ? chord : std::sqrt(chord);
}

std::vector<AcGePoint3d> distinctNeighbours(const std::vector<AcGePoint3d>& points, bool closed) {
    AcDbExtents box;
    for (const AcGePoint3d& p : points) box.addPoint(p);
    const double same = points.empty() ? 0 : tolerance::kKnot * box.minPoint().distanceTo(box.maxPoint());
    std::vector<AcGePoint3d> kept;
    for (const AcGePoint3d& p : points)
        if (kept.empty() || kept.back().distanceTo(p) > same) kept.push_back(p);
    while (closed && kept.size() > 1 && kept.back().distanceTo(kept.front()) <= same) kept.pop_back();
    return kept;
}

// Cubic segments by their ends, derivatives and parameter steps.
struct Hermite {
    std::vector<AcGePoint3d> at; // one more than steps
    Vectors slope;
    std::vector<double> step;

    AcGeVector3d chordSpeed(size_t i) const { return (at[i + 1] - at[i]) / step[i]; }
    // The blossom at the knots before, at and after point i, from the longer of the two segments.
    AcGePoint3d poleAround(size_t i, double before, double after) const {
        const bool left = before >= after;
        const AcGeVector3d d = slope[i] * ((left ? -before : after) / 3);
        // Inner Bezier points of the segment next to point i and beyond: f(a, c, c) and f(a, a, c) in its own
        // order.
        const AcGePoint3d near = at[i] + d;
        const size_t other = left ? i - 1 : i + 1;
        const AcGePoint3d far = at[other] - slope[other] * ((left ? -before : after) / 3);
        // On the segment's line of f(x, point, far end): at the far end's knot `far..near`; go on past the
        // point.
        const double beyond = left ? after / before : before / after;
        return near + (near - far) * beyond;
    }
};

AcGeVector3d unit(const AcGeVector3d& v) { return v.normal(AcGeTol().setEqualVector(0)); }

Vectors openSlopes(const Hermite& h, const FitOptions& options) {
    const size_t n = h.at.size();
    std::vector<Row> rows(n);
    Vectors right(n);
    for (size_t i = 1; i + 1 < n; ++i) {
        rows[i] = {h.step[i], 2 * (h.step[i - 1] + h.step[i]), h.step[i - 1]};
        right[i] = h.chordSpeed(i - 1) * (3 * h.step[i]) + h.chordSpeed(i) * (3 * h.step[i - 1]);
    }
    const AcGeVector3d first = h.chordSpeed(0), last = h.chordSpeed(n - 2);
    const auto given = [](const std::optional<AcGeVector3d>& v) { return v && unit(*v).lengthSqrd() > 0; };
    if (given(options.startTangent)) {
        right[0] = unit(*options.startTangent) * first.length();
    } else {
        rows[0] = {0, 2, 1};
        right[0] = first * 3;
    }
    if (given(options.endTangent)) {
        right[n - 1] = unit(*options.endTangent) * last.length();
    } else {
        rows[n - 1] = {1, 2, 0};
        right[n - 1] = last * 3;
    }
    return solveTridiagonal(std::move(rows), std::move(right));
}

Vectors closedSlopes(const Hermite& h) {
    const size_t n = h.step.size();
    std::vector<Row> rows(n);
    Vectors right(n);
    for (size_t i = 0; i < n; ++i) {
        const size_t b = i == 0 ? n - 1 : i - 1;
        rows[i] = {h.step[i], 2 * (h.step[b] + h.step[i]), h.step[b]};
        right[i] = h.chordSpeed(b) * (3 * h.step[i]) + h.chordSpeed(i) * (3 * h.step[b]);
    }
    if (n == 2) { // both neighbours are the same point
        for (Row& row : rows) row = {row.before + row.after, row.own, row.before + row.after};
        rows[0].before = rows[1].after = 0;
        return solveTridiagonal(std::move(rows), std::move(right));
    }
    return solveCyclic(std::move(rows), right);
}

Nurbs openCurve(const Hermite& h, const std::vector<double>& params) {
    const size_t n = h.at.size();
    Nurbs c;
    c.knots.assign(3, params.front());
    c.knots.insert(c.knots.end(), params.begin(), params.end());
    c.knots.insert(c.knots.end(), 3, params.back());
    c.poles.push_back(h.at[0]);
    c.poles.push_back(h.at[0] + h.slope[0] * (h.step[0] / 3));
    for (size_t i = 1; i + 1 < n; ++i) c.poles.push_back(h.poleAround(i, h.step[i - 1], h.step[i]));
    c.poles.push_back(h.at[n - 1] - h.slope[n - 1] * (h.step[n - 2] / 3));
    c.poles.push_back(h.at[n - 1]);
    return c;
}

Nurbs periodicCurve(const Hermite& h, const std::vector<double>& params) {
    const size_t n = h.step.size();
    const double period = params.back() - params.front();
    Nurbs c;
    c.closed = c.periodic = true;
    for (size_t i = 0; i < n + 7; ++i) { // params[-3] to params[n + 3]
        const long k = static_cast<long>(i) - 3, count = static_cast<long>(n);
        const long turns = k >= 0 ? k / count : -((count - 1 - k) / count);
        const double base =
            params[static_cast<size_t>(k - turns * count)] + static_cast<double>(turns) * period;
        c.knots.push_back(k == count ? params.back() : base);
    }
    // Pole i belongs to the knots around params[i - 1].
    Hermite around = h;
    around.at.insert(around.at.begin(), h.at[n - 1]);
    around.slope.insert(around.slope.begin(), h.slope[n - 1]);
    std::vector<AcGePoint3d> ring;
    for (size_t i = 0; i < n; ++i)
        ring.push_back(around.poleAround(i + 1, h.step[i == 0 ? n - 1 : i - 1], h.step[i]));
    for (size_t i = 0; i < n + 3; ++i) c.poles.push_back(ring[(i + n - 1) % n]);
    return c;
}

} // namespace

FitResult interpolate(const std::vector<AcGePoint3d>& points, const FitOptions& options) {
    FitResult result;
    result.fit = distinctNeighbours(points, options.closed);
    if (result.fit.size() < 2) return result;
    Hermite h;
    h.at = result.fit;
    if (options.closed) h.at.push_back(h.at.front());
    result.params.push_back(0);
    for (size_t i = 0; i + 1 < h.at.size(); ++i) {
        const double step = spacingOf(h.at[i].distanceTo(h.at[i + 1]), options.spacing);
        result.params.push_back(result.params.back() + step);
        h.step.push_back(result.params[i + 1] - result.params[i]);
    }
    if (options.closed) {
        h.slope = closedSlopes(h);
        h.slope.push_back(h.slope.front());
        result.curve = periodicCurve(h, result.params);
        result.params.pop_back();
    } else {
        h.slope = openSlopes(h, options);
        result.curve = openCurve(h, result.params);
    }
    return result;
}

} // namespace host::ge
