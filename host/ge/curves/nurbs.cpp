// Evaluation of B-splines. All sums run over differences to one pole of the span, so that curves far from the
// origin keep the precision of their own size.
#include "host/ge/curves/nurbs.h"

#include <algorithm>
#include <cmath>

#include "host/ge/extents.h"

namespace host::ge {

namespace {

using Basis = std::array<double, kMaxDegree + 1>;

// The basis functions that are not zero in the span (A2.2).
void basisFunctions(const Nurbs& c, int span, double t, Basis& n) {
    const double* u = c.knots.data() + span;
    Basis left, right;
    n[0] = 1;
    for (int j = 1; j <= c.degree; ++j) {
        left[j] = t - u[1 - j];
        right[j] = u[j] - t;
        double saved = 0;
        for (int r = 0; r < j; ++r) {
            const double ratio = n[r] / (right[r + 1] + left[j - r]);
            n[r] = saved + right[r + 1] * ratio;
            saved = left[j - r] * ratio;
        }
        n[j] = saved;
    }
}

// Rows of basis functions and their derivatives (A2.3).
using BasisRows = std::array<Basis, kMaxCurveOrder + 1>;

void basisDerivatives(const Nurbs& c, int span, double t, int order, BasisRows& rows) {
    const int p = c.degree;
    const double* u = c.knots.data() + span;
    double table[kMaxDegree + 1][kMaxDegree + 1];
    Basis left, right;
    table[0][0] = 1;
    for (int j = 1; j <= p; ++j) {
        left[j] = t - u[1 - j];
        right[j] = u[j] - t;
        double saved = 0;
        for (int r = 0; r < j; ++r) {
            table[j][r] = right[r + 1] + left[j - r];
            const double ratio = table[r][j - 1] / table[j][r];
            table[r][j] = saved + right[r + 1] * ratio;
            saved = left[j - r] * ratio;
        }
        table[j][j] = saved;
    }
    for (int j = 0; j <= p; ++j) rows[0][j] = table[j][p];
    for (int r = 0; r <= p; ++r) {
        double a[2][kMaxDegree + 1];
        int now = 0, next = 1;
        a[0][0] = 1;
        for (int k = 1; k <= std::min(order, p); ++k) {
            double d = 0;
            const int rk = r - k, pk = p - k;
            if (r >= k) {
                a[next][0] = a[now][0] / table[pk + 1][rk];
                d = a[next][0] * table[rk][pk];
            }
            const int low = rk >= -1 ? 1 : -rk, high = r - 1 <= pk ? k - 1 : p - r;
            for (int j = low; j <= high; ++j) {
                a[next][j] = (a[now][j] - a[now][j - 1]) / table[pk + 1][rk + j];
                d += a[next][j] * table[rk + j][pk];
            }
            if (r <= pk) {
                a[next][k] = -a[now][k - 1] / table[pk + 1][r];
                d += a[next][k] * table[r][pk];
            }
            rows[k][r] = d;
            std::swap(now, next);
        }
    }
    double factor = p;
    for (int k = 1; k <= std::min(order, p); ++k) {
        for (int j = 0; j <= p; ++j) rows[k][j] *= factor;
        factor *= p - k;
    }
    for (int k = p + 1; k <= order; ++k) rows[k].fill(0);
}

CurvePoint derivativesInSpan(const Nurbs& c, int span, double t, int order) {
    BasisRows rows;
    basisDerivatives(c, span, t, order, rows);
    const size_t first = static_cast<size_t>(span - c.degree);
    const AcGePoint3d origin = c.poles[first];
    std::array<AcGeVector3d, kMaxCurveOrder + 1> a{};
    std::array<double, kMaxCurveOrder + 1> w{};
    for (int j = 0; j <= c.degree; ++j) {
        const size_t i = first + static_cast<size_t>(j);
        const AcGeVector3d v = (c.poles[i] - origin) * c.weight(i);
        for (int k = 0; k <= order; ++k) {
            a[k] += v * rows[k][j];
            w[k] += c.weight(i) * rows[k][j];
        }
    }
    if (c.rational) { // A4.2
        static constexpr double kBinomial[4][4] = {{1, 0, 0, 0}, {1, 1, 0, 0}, {1, 2, 1, 0}, {1, 3, 3, 1}};
        for (int k = 0; k <= order; ++k) {
            for (int i = 1; i <= k; ++i) a[k] -= a[k - i] * (kBinomial[k][i] * w[i]);
            a[k] /= w[0];
        }
    }
    CurvePoint result;
    result.point = origin + a[0];
    for (int k = 1; k <= order; ++k) result.d[static_cast<size_t>(k - 1)] = a[k];
    return result;
}

} // namespace

bool Nurbs::isValid() const {
    if (degree < 1 || degree > kMaxDegree || poles.size() < static_cast<size_t>(degree) + 1) return false;
    if (knots.size() != poles.size() + static_cast<size_t>(degree) + 1) return false;
    if (rational ? weights.size() != poles.size() : !weights.empty()) return false;
    for (const AcGePoint3d& p : poles)
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) return false;
    for (const double w : weights)
        if (!(w > 0) || !std::isfinite(w)) return false;
    for (const double k : knots)
        if (!std::isfinite(k)) return false;
    return std::is_sorted(knots.begin(), knots.end()) && start() < end();
}

int Nurbs::spanOf(double t) const {
    const auto first = knots.begin() + degree, last = knots.begin() + static_cast<long>(poles.size());
    t = std::clamp(t, *first, *last);
    // At the end, the last interval that is not empty.
    const auto above = t < *last ? std::upper_bound(first, last, t) : std::lower_bound(first, last, t);
    return static_cast<int>(above - knots.begin()) - 1;
}

AcGePoint3d Nurbs::point(double t) const {
    t = std::clamp(t, start(), end());
    const int span = spanOf(t);
    Basis n;
    basisFunctions(*this, span, t, n);
    const size_t first = static_cast<size_t>(span - degree);
    const AcGePoint3d origin = poles[first];
    AcGeVector3d sum;
    double w = rational ? n[0] * weights[first] : 1;
    for (int j = 1; j <= degree; ++j) {
        const size_t i = first + static_cast<size_t>(j);
        const double f = rational ? n[j] * weights[i] : n[j];
        sum += (poles[i] - origin) * f;
        if (rational) w += f;
    }
    return origin + (rational ? sum / w : sum);
}

CurvePoint Nurbs::derivatives(double t, int order) const {
    t = std::clamp(t, start(), end());
    return derivativesInSpan(*this, spanOf(t), t, std::clamp(order, 0, kMaxCurveOrder));
}

CurvePoint Nurbs::derivativesFromLeft(double t, int order) const {
    t = std::clamp(t, start(), end());
    int span = spanOf(t);
    while (span > degree && knots[static_cast<size_t>(span)] >= t) --span;
    while (knots[static_cast<size_t>(span)] == knots[static_cast<size_t>(span) + 1]) ++span;
    return derivativesInSpan(*this, span, t, std::clamp(order, 0, kMaxCurveOrder));
}

std::vector<double> Nurbs::distinctKnots() const {
    std::vector<double> result;
    for (size_t i = static_cast<size_t>(degree); i <= poles.size(); ++i)
        if (result.empty() || knots[i] > result.back()) result.push_back(knots[i]);
    return result;
}

int Nurbs::multiplicityAt(double t) const {
    const auto range = std::equal_range(knots.begin(), knots.end(), t);
    return static_cast<int>(range.second - range.first);
}

double Nurbs::size() const {
    AcDbExtents box;
    for (const AcGePoint3d& p : poles) box.addPoint(p);
    return box.minPoint().distanceTo(box.maxPoint());
}

bool Nurbs::endsMeet(double relativeTolerance) const {
    return startPoint().distanceTo(endPoint()) <= relativeTolerance * size();
}

} // namespace host::ge
