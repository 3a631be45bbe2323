// Lengths, boxes, areas and planarity of B-splines. Closest points are in nurbs_closest.cpp.
#include "host/ge/curves/nurbs_measure.h"

#include <algorithm>
#include <cmath>

#include "host/ge/curves/numeric.h"

namespace host::ge {

ArcLengthTable::ArcLengthTable(Nurbs curve) : curve_(std::move(curve)) {
    const std::vector<double> knots = curve_.distinctKnots();
    double polygon = 0; // at least the length, and of its order
    for (size_t i = 1; i < curve_.poles.size(); ++i)
        polygon += curve_.poles[i].distanceTo(curve_.poles[i - 1]);
    params_.push_back(knots.front());
    lengths_.push_back(0);
    const double error = tolerance::kQuadrature * polygon / std::sqrt(static_cast<double>(knots.size()));
    for (size_t i = 0; i + 1 < knots.size(); ++i) addSpan(knots[i], knots[i + 1], error);
}

double ArcLengthTable::pieceLength(double from, double to) const {
    return kronrod15([this](double t) { return speed(t); }, from, to);
}

void ArcLengthTable::addSpan(double from, double to, double error) {
    constexpr int kDepth = 40;
    struct Piece {
        double from, to, length;
        int depth;
    };
    std::vector<Piece> stack{{from, to, pieceLength(from, to), kDepth}};
    while (!stack.empty()) {
        const Piece p = stack.back();
        stack.pop_back();
        const double middle = 0.5 * (p.from + p.to);
        const double left = pieceLength(p.from, middle), right = pieceLength(middle, p.to);
        if (p.depth > 0 && std::fabs(left + right - p.length) > error) {
            stack.push_back({middle, p.to, right, p.depth - 1});
            stack.push_back({p.from, middle, left, p.depth - 1});
            continue;
        }
        params_.push_back(p.to);
        lengths_.push_back(lengths_.back() + left + right);
    }
}

double ArcLengthTable::lengthAt(double param) const {
    if (!(param > params_.front())) return 0;
    if (param >= params_.back()) return length();
    const auto i =
        static_cast<size_t>(std::upper_bound(params_.begin(), params_.end(), param) - params_.begin());
    // From the nearer end of the piece.
    const bool fromLeft = param - params_[i - 1] < params_[i] - param;
    return fromLeft ? lengths_[i - 1] + pieceLength(params_[i - 1], param)
                    : lengths_[i] - pieceLength(param, params_[i]);
}

double ArcLengthTable::paramAt(double length) const {
    if (!(length > 0)) return params_.front();
    if (length >= this->length()) return params_.back();
    const auto i =
        static_cast<size_t>(std::upper_bound(lengths_.begin(), lengths_.end(), length) - lengths_.begin());
    const double a = params_[i - 1], b = params_[i], rest = length - lengths_[i - 1];
    const double whole = lengths_[i] - lengths_[i - 1];
    if (!(whole > 0)) return a;
    // Newton, kept inside a bracket; stops at 1e-14 of the whole length.
    double low = a, high = b, t = a + (b - a) * (rest / whole);
    for (int step = 0; step < 100; ++step) {
        const double miss = pieceLength(a, t) - rest;
        if (std::fabs(miss) <= 1e-14 * this->length()) break;
        (miss < 0 ? low : high) = t;
        const double next = t - miss / speed(t);
        t = next > low && next < high ? next : 0.5 * (low + high);
        if (t <= low || t >= high) break;
    }
    return t;
}

double curveLength(const Nurbs& curve) { return ArcLengthTable(curve).length(); }

namespace {

// One coordinate's largest value by subdivision: a half is dropped as soon as its poles cannot beat the best
// found.
class Extreme {
public:
    Extreme(double tolerance, double best) : tolerance_(tolerance), best_(best) {}
    double best() const { return best_; }

    // Poles as (value * w, w).
    struct Pole {
        double v, w;
    };
    using Poles = std::array<Pole, kMaxDegree + 1>;
    void search(const Poles& poles, int degree, int depth = 60) {
        best_ = std::max({best_, poles[0].v / poles[0].w, poles[degree].v / poles[degree].w});
        double hull = best_;
        for (int i = 1; i < degree; ++i) hull = std::max(hull, poles[i].v / poles[i].w);
        if (hull <= best_ + tolerance_ || depth == 0) return;
        Poles left, right = poles;
        for (int n = degree; n >= 0; --n) {
            left[degree - n] = right[0];
            for (int i = 0; i < n; ++i)
                right[i] = {0.5 * (right[i].v + right[i + 1].v), 0.5 * (right[i].w + right[i + 1].w)};
        }
        search(left, degree, depth - 1);
        search(right, degree, depth - 1);
    }

private:
    double tolerance_, best_;
};

double largestAlong(const BezierPiece& piece, unsigned axis, double sign, double best, double tolerance) {
    const double origin = sign * piece.origin[axis];
    Extreme::Poles poles;
    const int degree = static_cast<int>(piece.poles.size()) - 1;
    for (int i = 0; i <= degree; ++i) {
        const HomogeneousPole& p = piece.poles[static_cast<size_t>(i)];
        poles[i] = {sign * (axis == 0 ? p.x : axis == 1 ? p.y : p.z), p.w};
    }
    Extreme extreme(tolerance, best - origin);
    extreme.search(poles, degree);
    return origin + extreme.best();
}

} // namespace

AcDbExtents tightExtents(const Nurbs& curve) {
    const double tolerance = tolerance::kExtents * curve.size();
    const std::vector<BezierPiece> pieces = bezierPieces(curve);
    AcGePoint3d low = curve.startPoint(), high = low;
    for (const BezierPiece& piece : pieces)
        for (unsigned axis = 0; axis < 3; ++axis) {
            high[axis] = largestAlong(piece, axis, 1, high[axis], tolerance);
            low[axis] = -largestAlong(piece, axis, -1, -low[axis], tolerance);
        }
    return {low, high};
}

AcGeVector3d areaVector(const Nurbs& curve) {
    const AcGePoint3d base = curve.startPoint();
    const std::vector<double> knots = curve.distinctKnots();
    const double size = curve.size(), error = tolerance::kQuadrature * size * size;
    AcGeVector3d sum;
    const auto swept = [&](double t) {
        const CurvePoint c = curve.derivatives(t, 1);
        return (c.point - base).crossProduct(c.d[0]) * 0.5;
    };
    for (size_t i = 0; i + 1 < knots.size(); ++i) {
        if (!curve.rational && 2 * curve.degree - 1 <= 22) {
            sum += kronrod15(swept, knots[i], knots[i + 1]); // exact
            continue;
        }
        for (unsigned axis = 0; axis < 3; ++axis)
            sum[axis] +=
                integrate([&](double t) { return swept(t)[axis]; }, knots[i], knots[i + 1], error, 20);
    }
    return sum;
}

Planarity planarity(const std::vector<AcGePoint3d>& points) {
    Planarity result;
    if (points.empty()) return result;
    const AcGeTol exact = AcGeTol().setEqualVector(0);
    result.origin = points.front();
    AcGeVector3d along, across;
    for (const AcGePoint3d& p : points)
        if ((p - result.origin).lengthSqrd() > along.lengthSqrd()) along = p - result.origin;
    const double limit = tolerance::kFlat * along.length();
    const AcGeVector3d u = along.normal(exact);
    for (const AcGePoint3d& p : points) {
        const AcGeVector3d v = p - result.origin, off = v - u * v.dotProduct(u);
        if (off.lengthSqrd() > across.lengthSqrd()) across = off;
    }
    result.isLinear = across.length() <= limit;
    if (result.isLinear) {
        const bool flat = std::fabs(u.z) <= tolerance::kFlat;
        result.normal = flat ? AcGeVector3d::kZAxis : u.perpVector();
        result.isPlanar = true;
        return result;
    }
    result.normal = u.crossProduct(across).normal(exact);
    result.isPlanar = std::all_of(points.begin(), points.end(), [&](const AcGePoint3d& p) {
        return std::fabs((p - result.origin).dotProduct(result.normal)) <= limit;
    });
    return result;
}

Planarity planarity(const Nurbs& curve) {
    Planarity result = planarity(curve.poles);
    if (result.isPlanar && !result.isLinear && areaVector(curve).dotProduct(result.normal) < 0)
        result.normal.negate();
    return result;
}

} // namespace host::ge
