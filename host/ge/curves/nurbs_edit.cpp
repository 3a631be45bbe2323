// Editing of B-splines that keeps the shape. One engine serves insertion, splitting, clamping, elevation and
// Bezier pieces: a pole on any knot vector is the blossom of the polynomial of one span at the knots it
// depends on.
#include <algorithm>
#include <cmath>

#include "host/ge/curves/nurbs.h"
#include "host/ge/tolerances.h"

namespace host::ge {

namespace {

HomogeneousPole mix(const HomogeneousPole& a, const HomogeneousPole& b, double s) {
    return {a.x + (b.x - a.x) * s, a.y + (b.y - a.y) * s, a.z + (b.z - a.z) * s, a.w + (b.w - a.w) * s};
}

// The blossom of one span: symmetric, affine in each argument, and the curve itself on the diagonal.
class SpanBlossom {
public:
    SpanBlossom(const Nurbs& c, int span, const AcGePoint3d& origin) : degree_(c.degree) {
        knots_ = c.knots.data() + span;
        for (int j = 0; j <= degree_; ++j) {
            const size_t i = static_cast<size_t>(span - degree_ + j);
            const double w = c.weight(i);
            const AcGeVector3d v = (c.poles[i] - origin) * w;
            poles_[static_cast<size_t>(j)] = {v.x, v.y, v.z, w};
        }
    }

    // de Boor's triangle with an argument of its own at each level; skips one argument if asked to.
    HomogeneousPole at(const double* args, int skip = -1) const {
        auto p = poles_;
        for (int level = 1, next = 0; level <= degree_; ++level, ++next) {
            if (next == skip) ++next;
            const double t = args[next];
            for (int j = degree_; j >= level; --j) {
                const double a = knots_[j - degree_], b = knots_[j - level + 1];
                const size_t i = static_cast<size_t>(j);
                p[i] = mix(p[i - 1], p[i], (t - a) / (b - a));
            }
        }
        return p[static_cast<size_t>(degree_)];
    }

    // The same polynomial one degree higher: the mean over the arguments left out.
    HomogeneousPole atRaised(const double* args) const {
        HomogeneousPole sum{0, 0, 0, 0};
        for (int skip = 0; skip <= degree_; ++skip) {
            const HomogeneousPole p = at(args, skip);
            sum = {sum.x + p.x, sum.y + p.y, sum.z + p.z, sum.w + p.w};
        }
        const double f = 1.0 / (degree_ + 1);
        return {sum.x * f, sum.y * f, sum.z * f, sum.w * f};
    }

private:
    int degree_;
    const double* knots_;
    std::array<HomogeneousPole, kMaxDegree + 1> poles_;
};

// A parameter inside the non-empty interval nearest to the middle of a pole's knots, within the curve's
// domain.
double insideOfSupport(const Nurbs& old, const double* knots, int first, int last) {
    const double low = old.start(), high = old.end();
    const int middle = (first + last) / 2;
    for (int off = 0; off <= last - first; ++off)
        for (const int j : {middle - off, middle + off}) {
            if (j < first || j >= last) continue;
            const double a = std::max(knots[j], low), b = std::min(knots[j + 1], high);
            if (a < b) return 0.5 * (a + b);
        }
    return std::clamp(knots[middle], low, high);
}

Nurbs rebuilt(const Nurbs& old, std::vector<double> knots, int degree) {
    Nurbs result;
    result.degree = degree;
    result.rational = old.rational;
    result.closed = old.closed;
    const size_t n = knots.size() - static_cast<size_t>(degree) - 1;
    result.poles.reserve(n);
    for (size_t i = 0; i < n; ++i) {
        const double inside = insideOfSupport(old, knots.data() + i, 0, degree + 1);
        const int span = old.spanOf(inside);
        const AcGePoint3d origin = old.poles[static_cast<size_t>(span - old.degree / 2)];
        const SpanBlossom blossom(old, span, origin);
        const double* args = knots.data() + i + 1;
        const HomogeneousPole p = degree == old.degree ? blossom.at(args) : blossom.atRaised(args);
        result.poles.push_back(origin + AcGeVector3d(p.x, p.y, p.z) / p.w);
        if (old.rational) result.weights.push_back(p.w);
    }
    result.knots = std::move(knots);
    return result;
}

// Knots of the piece [from, to] with full multiplicity at both ends.
std::vector<double> clampedKnots(const Nurbs& c, double from, double to) {
    std::vector<double> knots(static_cast<size_t>(c.degree) + 1, from);
    const auto first = std::upper_bound(c.knots.begin(), c.knots.end(), from);
    const auto last = std::lower_bound(c.knots.begin(), c.knots.end(), to);
    if (first < last) knots.insert(knots.end(), first, last);
    knots.insert(knots.end(), static_cast<size_t>(c.degree) + 1, to);
    return knots;
}

} // namespace

AcGePoint3d BezierPiece::pole(size_t i) const {
    const HomogeneousPole& p = poles[i];
    return origin + AcGeVector3d(p.x, p.y, p.z) / p.w;
}

AcGePoint3d BezierPiece::point(double s) const {
    std::array<HomogeneousPole, kMaxDegree + 2> p;
    std::copy(poles.begin(), poles.end(), p.begin());
    for (size_t n = poles.size() - 1; n > 0; --n)
        for (size_t i = 0; i < n; ++i) p[i] = mix(p[i], p[i + 1], s);
    return origin + AcGeVector3d(p[0].x, p[0].y, p[0].z) / p[0].w;
}

// de Casteljau at the middle.
BezierHalves halved(const BezierPiece& piece) {
    BezierHalves h{piece, piece};
    const double middle = 0.5 * (piece.from + piece.to);
    h.first.to = h.second.from = middle;
    const size_t degree = piece.poles.size() - 1;
    auto& right = h.second.poles;
    for (size_t n = degree + 1; n-- > 0;) {
        h.first.poles[degree - n] = right[0];
        for (size_t i = 0; i < n; ++i)
            right[i] = {0.5 * (right[i].x + right[i + 1].x), 0.5 * (right[i].y + right[i + 1].y),
                        0.5 * (right[i].z + right[i + 1].z), 0.5 * (right[i].w + right[i + 1].w)};
    }
    return h;
}

Nurbs onKnots(const Nurbs& curve, std::vector<double> knots) {
    return rebuilt(curve, std::move(knots), curve.degree);
}

Nurbs clamped(const Nurbs& curve) { return part(curve, curve.start(), curve.end()); }

Nurbs withKnot(const Nurbs& curve, double t, int times) {
    if (!(t >= curve.start() && t <= curve.end())) return curve;
    const int room = std::max(0, curve.degree - curve.multiplicityAt(t));
    return refined(curve, std::vector<double>(static_cast<size_t>(std::clamp(times, 0, room)), t));
}

Nurbs refined(const Nurbs& curve, std::vector<double> params) {
    std::sort(params.begin(), params.end());
    std::vector<double> knots;
    knots.reserve(curve.knots.size() + params.size());
    std::merge(curve.knots.begin(), curve.knots.end(), params.begin(), params.end(),
               std::back_inserter(knots));
    return onKnots(curve, std::move(knots));
}

Nurbs part(const Nurbs& curve, double from, double to) {
    Nurbs piece = onKnots(curve, clampedKnots(curve, from, to));
    piece.closed = curve.closed && from == curve.start() && to == curve.end();
    return piece;
}

std::vector<Nurbs> splitAt(const Nurbs& curve, std::vector<double> params) {
    const double gap = tolerance::kKnot * (curve.end() - curve.start());
    std::sort(params.begin(), params.end());
    std::vector<Nurbs> pieces;
    double from = curve.start();
    for (const double t : params) {
        if (!(t > from + gap && t < curve.end() - gap)) continue;
        pieces.push_back(part(curve, from, t));
        from = t;
    }
    pieces.push_back(part(curve, from, curve.end()));
    return pieces;
}

Nurbs withSeamAt(const Nurbs& curve, double t) {
    const double gap = tolerance::kKnot * (curve.end() - curve.start());
    if (!(t > curve.start() + gap && t < curve.end() - gap)) return clamped(curve);
    Nurbs result = part(curve, t, curve.end());
    const Nurbs rest = part(curve, curve.start(), t);
    const double shift = curve.end() - curve.start();
    result.knots.pop_back();
    for (size_t i = static_cast<size_t>(rest.degree) + 1; i < rest.knots.size(); ++i)
        result.knots.push_back(rest.knots[i] + shift);
    result.poles.insert(result.poles.end(), rest.poles.begin() + 1, rest.poles.end());
    if (curve.rational) {
        const double scale = result.weights.back() / rest.weights.front();
        for (size_t i = 1; i < rest.weights.size(); ++i) result.weights.push_back(rest.weights[i] * scale);
    }
    result.closed = true;
    return result;
}

Nurbs reversed(const Nurbs& curve) {
    Nurbs r = curve;
    std::reverse(r.poles.begin(), r.poles.end());
    std::reverse(r.weights.begin(), r.weights.end());
    const double sum = curve.start() + curve.end();
    std::transform(curve.knots.rbegin(), curve.knots.rend(), r.knots.begin(),
                   [=](double k) { return sum - k; });
    return r;
}

Nurbs elevated(const Nurbs& curve, int toDegree) {
    Nurbs result = clamped(curve);
    for (toDegree = std::min(toDegree, kMaxDegree); result.degree < toDegree;) {
        std::vector<double> knots;
        for (const double k : result.knots) {
            if (knots.empty() || knots.back() != k) knots.push_back(k);
            knots.push_back(k);
        }
        result = rebuilt(result, std::move(knots), result.degree + 1);
    }
    return result;
}

Nurbs transformed(const Nurbs& curve, const AcGeMatrix3d& m) {
    Nurbs r = curve;
    for (AcGePoint3d& p : r.poles) p = m * p;
    return r;
}

Nurbs onDomain(const Nurbs& curve, double start, double end) {
    Nurbs r = curve;
    const double a = curve.start(), b = curve.end(), scale = (end - start) / (b - a);
    // Both ends exactly.
    for (double& k : r.knots) k = k == b ? end : start + (k - a) * scale;
    return r;
}

std::vector<BezierPiece> bezierPieces(const Nurbs& curve) {
    const std::vector<double> at = curve.distinctKnots();
    const int p = curve.degree;
    std::vector<BezierPiece> pieces(at.size() - 1);
    std::array<double, 2 * kMaxDegree> args;
    for (size_t k = 0; k + 1 < at.size(); ++k) {
        BezierPiece& piece = pieces[k];
        piece.from = at[k];
        piece.to = at[k + 1];
        const int span = curve.spanOf(at[k]);
        piece.origin = curve.poles[static_cast<size_t>(span - p / 2)];
        const SpanBlossom blossom(curve, span, piece.origin);
        std::fill_n(args.begin(), p, at[k]);
        std::fill_n(args.begin() + p, p, at[k + 1]);
        for (int j = 0; j <= p; ++j) piece.poles.push_back(blossom.at(args.data() + j));
    }
    return pieces;
}

} // namespace host::ge
