// The nearest point of a B-spline by branch and bound over its Bezier pieces.
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "host/ge/curves/nurbs_measure.h"
#include "host/ge/tolerances.h"

namespace host::ge {

namespace {

constexpr int kDepth = 50;

double squaredDistance(const AcDbExtents& box, const AcGePoint3d& p) {
    double sum = 0;
    for (unsigned axis = 0; axis < 3; ++axis) {
        const double off = std::max({box.minPoint()[axis] - p[axis], p[axis] - box.maxPoint()[axis], 0.0});
        sum += off * off;
    }
    return sum;
}

BezierPiece aboutPoint(const BezierPiece& piece, const AcGePoint3d& point) {
    BezierPiece r = piece;
    const AcGeVector3d v = piece.origin - point;
    r.origin = point;
    for (HomogeneousPole& p : r.poles) p = {p.x + v.x * p.w, p.y + v.y * p.w, p.z + v.z * p.w, p.w};
    return r;
}

// Whether the squared distance to the origin is at least `bound` everywhere: no Bernstein coefficient of
// |N|^2 - bound w^2 is negative. The coefficients are those of the product of two Bernstein forms.
bool staysBeyond(const BezierPiece& piece, double bound) {
    const size_t p = piece.poles.size() - 1;
    std::array<double, kMaxDegree + 1> binomial;
    binomial[0] = 1;
    for (size_t i = 1; i <= p; ++i)
        binomial[i] = binomial[i - 1] * static_cast<double>(p + 1 - i) / static_cast<double>(i);
    for (size_t k = 0; k <= 2 * p; ++k) {
        double sum = 0;
        for (size_t i = k > p ? k - p : 0; i <= std::min(k, p); ++i) {
            const HomogeneousPole &a = piece.poles[i], &b = piece.poles[k - i];
            sum += binomial[i] * binomial[k - i] * (a.x * b.x + a.y * b.y + a.z * b.z - bound * a.w * b.w);
        }
        if (sum < 0) return false;
    }
    return true;
}

} // namespace

struct ClosestPointFinder::Search {
    AcGePoint3d point;
    NurbsClosest best;
    double bound = 0; // squared distance that a piece has to beat
};

// Everything is measured from the first pole: far from the origin the places compared keep their digits.
ClosestPointFinder::ClosestPointFinder(const Nurbs& curve)
    : base_(curve.poles[0] - AcGePoint3d(0, 0, 0)),
      curve_(transformed(curve, AcGeMatrix3d::translation(-base_))), pieces_(bezierPieces(curve_)) {
    boxes_.resize(pieces_.size());
    for (size_t i = 0; i < pieces_.size(); ++i)
        for (size_t k = 0; k < pieces_[i].poles.size(); ++k) boxes_[i].addPoint(pieces_[i].pole(k));
    size_ = curve_.size();
}

void ClosestPointFinder::offer(Search& search, double param) const {
    const AcGePoint3d p = curve_.point(param);
    const double d = p.distanceTo(search.point);
    if (d >= search.best.distance) return;
    search.best = {p, param, d};
    // What a nearer point would gain less than this is noise of the coordinates.
    const double noise = tolerance::kClosest * size_ * size_;
    search.bound = std::max(0.0, d * d * (1 - 1e-13) - noise);
}

// Newton on the derivative of the squared distance, for a better bound early; stays on the curve, may fail.
double ClosestPointFinder::polish(const AcGePoint3d& point, double t) const {
    const double low = curve_.start(), high = curve_.end();
    for (int step = 0; step < 12; ++step) {
        const CurvePoint c = curve_.derivatives(t, 2);
        const AcGeVector3d v = c.point - point;
        const double slope = v.dotProduct(c.d[0]), bend = c.d[0].lengthSqrd() + v.dotProduct(c.d[1]);
        const double by = bend > 0 ? slope / bend : slope / c.d[0].lengthSqrd();
        if (!std::isfinite(by)) break;
        const double next = std::clamp(t - by, low, high);
        const bool settled = std::fabs(next - t) <= 1e-15 * (high - low);
        t = next;
        if (settled) break;
    }
    return t;
}

// Distances hardly change about the nearest point, which leaves it known to half the digits; their slope
// knows the rest.
void ClosestPointFinder::settle(Search& search) const {
    const double param = polish(search.point, search.best.param);
    const AcGePoint3d p = curve_.point(param);
    const double d = p.distanceTo(search.point);
    if (d <= search.best.distance + 1e-15 * (size_ + d)) search.best = {p, param, d};
}

void ClosestPointFinder::descend(Search& search, const BezierPiece& piece, int depth) const {
    if (staysBeyond(piece, search.bound)) return;
    const double middle = 0.5 * (piece.from + piece.to);
    if (depth <= 0 || !(piece.from < middle && middle < piece.to)) return offer(search, middle);
    offer(search, middle);
    if (depth > kDepth - 6 || depth % 8 == 0) offer(search, polish(search.point, middle));
    const BezierHalves h = halved(piece);
    descend(search, h.first, depth - 1);
    descend(search, h.second, depth - 1);
}

NurbsClosest ClosestPointFinder::closestTo(const AcGePoint3d& given) const {
    const AcGePoint3d point = given - base_;
    Search search{point, {}, 0};
    search.best.distance = std::numeric_limits<double>::infinity();
    offer(search, curve_.start());
    offer(search, curve_.end());
    // Nearest boxes first: the first pieces give a bound that most others do not pass.
    std::vector<size_t> order(pieces_.size());
    std::vector<double> reach(pieces_.size());
    for (size_t i = 0; i < pieces_.size(); ++i) reach[i] = squaredDistance(boxes_[i], point);
    std::iota(order.begin(), order.end(), size_t{0});
    const auto farther = [&](size_t a, size_t b) {
        return reach[a] > reach[b] || (reach[a] == reach[b] && a > b);
    };
    std::make_heap(order.begin(), order.end(), farther);
    while (!order.empty()) {
        std::pop_heap(order.begin(), order.end(), farther);
        const size_t i = order.back();
        order.pop_back();
        if (reach[i] >= search.bound) break;
        descend(search, aboutPoint(pieces_[i], point), kDepth);
    }
    settle(search);
    search.best.point += base_;
    return search.best;
}

NurbsClosest closestPoint(const Nurbs& curve, const AcGePoint3d& point) {
    return ClosestPointFinder(curve).closestTo(point);
}

} // namespace host::ge
