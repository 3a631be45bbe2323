// The basis, the normal equations, the samples. Four basis functions differ from zero at a place, so that
// only a band of the equations is ever touched; what is left out would add zeros.
#include "raster/spline_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace corvane::raster {
namespace {

constexpr std::size_t kDegree = 3, kOrder = kDegree + 1, kMostControls = 200, kPointsPerControl = 5;

struct Point {
    double x = 0, y = 0;
};

// The four functions that may differ from zero, and the index of the first.
struct Basis {
    std::size_t first = 0;
    std::array<double, kOrder> values{};
};

class ClampedKnots {
public:
    explicit ClampedKnots(std::size_t controls) : controls_(controls) {
        knots_.assign(kDegree, 0.0);
        for (std::size_t k = 0; k + kDegree <= controls; ++k)
            knots_.push_back(double(k) / double(controls - kDegree));
        knots_.insert(knots_.end(), kDegree, 1.0);
    }

    // Cox and de Boor (1972), from the constant functions up.
    Basis at(double u) const {
        u = std::max(u, 0.0);
        Basis basis{controls_ - kOrder, {}};
        if (u >= 1) {
            basis.values[kDegree] = 1;
            return basis;
        }
        const std::size_t span =
            std::size_t(std::upper_bound(knots_.begin(), knots_.end(), u) - knots_.begin()) - 1;
        basis.first = span - kDegree;
        std::array<double, kOrder + 1> level{}; // functions first .. span + 1
        level[kDegree] = 1;
        for (std::size_t degree = 1; degree <= kDegree; ++degree)
            for (std::size_t k = kDegree - degree; k <= kDegree; ++k)
                level[k] = rising(basis.first + k, degree, u) * level[k] +
                           falling(basis.first + k, degree, u) * level[k + 1];
        std::copy_n(level.begin(), kOrder, basis.values.begin());
        return basis;
    }

private:
    double rising(std::size_t i, std::size_t degree, double u) const {
        const double span = knots_[i + degree] - knots_[i];
        return span == 0 ? 0 : (u - knots_[i]) / span;
    }
    double falling(std::size_t i, std::size_t degree, double u) const {
        const double span = knots_[i + degree + 1] - knots_[i + 1];
        return span == 0 ? 0 : (knots_[i + degree + 1] - u) / span;
    }

    std::size_t controls_;
    std::vector<double> knots_;
};

// Symmetric equations with a band of kDegree beside the diagonal, two right sides.
class NormalEquations {
public:
    explicit NormalEquations(std::size_t size) : size_(size), rows_(size), right_(size) {}

    void add(const Basis& basis, Point p) {
        for (std::size_t i = 0; i < kOrder; ++i) {
            const std::size_t row = basis.first + i;
            for (std::size_t j = 0; j < kOrder; ++j)
                at(row, basis.first + j) += basis.values[i] * basis.values[j];
            right_[row].x += basis.values[i] * p.x;
            right_[row].y += basis.values[i] * p.y;
        }
    }

    void steady() {
        double trace = 0;
        for (std::size_t i = 0; i < size_; ++i) trace += std::abs(at(i, i));
        const double lambda = trace > 0 ? trace * 1e-10 + 1e-12 : 1e-10;
        for (std::size_t i = 0; i < size_; ++i) at(i, i) += lambda;
    }

    // Elimination with the largest pivot of each column; exchanged rows reach up to twice the band to the
    // right.
    std::optional<std::vector<Point>> solve() {
        constexpr double kLeastPivot = 1e-12;
        for (std::size_t column = 0; column < size_; ++column) {
            const std::size_t below = std::min(column + kDegree, size_ - 1);
            std::size_t pivot = column;
            for (std::size_t row = column + 1; row <= below; ++row)
                if (std::abs(at(row, column)) > std::abs(at(pivot, column))) pivot = row;
            if (std::abs(at(pivot, column)) < kLeastPivot) return std::nullopt;
            exchange(pivot, column);
            for (std::size_t row = column + 1; row <= below; ++row) eliminate(row, column);
        }
        return substituteBack();
    }

private:
    static constexpr std::size_t kReach = 2 * kDegree;
    // Columns from kDegree before the diagonal to kReach after it.
    using Row = std::array<double, kDegree + 1 + kReach>;
    double& at(std::size_t row, std::size_t column) { return rows_[row][column + kDegree - row]; }
    std::size_t lastColumn(std::size_t row) const { return std::min(row + kReach, size_ - 1); }

    void exchange(std::size_t a, std::size_t b) {
        if (a == b) return;
        for (std::size_t column = b; column <= lastColumn(b); ++column)
            std::swap(at(a, column), at(b, column));
        std::swap(right_[a], right_[b]);
    }
    void eliminate(std::size_t row, std::size_t column) {
        const double factor = at(row, column) / at(column, column);
        if (factor == 0) return;
        for (std::size_t c = column; c <= lastColumn(column); ++c) at(row, c) -= factor * at(column, c);
        right_[row].x -= factor * right_[column].x;
        right_[row].y -= factor * right_[column].y;
    }
    std::vector<Point> substituteBack() {
        std::vector<Point> solution(size_);
        for (std::size_t row = size_; row-- > 0;) {
            Point sum = right_[row];
            for (std::size_t c = row + 1; c <= lastColumn(row); ++c) {
                sum.x -= at(row, c) * solution[c].x;
                sum.y -= at(row, c) * solution[c].y;
            }
            solution[row] = {sum.x / at(row, row), sum.y / at(row, row)};
        }
        return solution;
    }

    std::size_t size_;
    std::vector<Row> rows_;
    std::vector<Point> right_;
};

// Chord lengths from the start to each point.
std::vector<double> chordLengths(const PixelPath& path) {
    std::vector<double> lengths{0};
    for (std::size_t i = 1; i < path.size(); ++i)
        lengths.push_back(lengths.back() + std::sqrt(double(SquaredDistance(path[i - 1], path[i]))));
    return lengths;
}

PixelPoint onGrid(const Basis& basis, const std::vector<Point>& controls) {
    Point p;
    for (std::size_t k = 0; k < kOrder; ++k) {
        p.x += basis.values[k] * controls[basis.first + k].x;
        p.y += basis.values[k] * controls[basis.first + k].y;
    }
    return {std::int32_t(std::floor(p.x + 0.5)), std::int32_t(std::floor(p.y + 0.5))};
}

PixelPath sampled(const ClampedKnots& knots, const std::vector<Point>& controls, double length) {
    const int samples = int(std::clamp(std::floor(length * 20 + 0.5), 200.0, 5000.0));
    PixelPath path;
    for (int j = 0; j < samples; ++j) {
        const PixelPoint p = onGrid(knots.at(double(j) / (samples - 1)), controls);
        if (path.empty() || path.back() != p) path.push_back(p);
    }
    return path;
}

} // namespace

PixelPath FitCubicBSpline(const PixelPath& path) {
    PixelPath points = path;
    points.erase(std::unique(points.begin(), points.end()), points.end());
    const std::size_t m = points.size(),
                      controls = std::min({std::max(m / kPointsPerControl, kOrder), m, kMostControls});
    if (controls < kOrder) return {};
    const std::vector<double> lengths = chordLengths(points);
    if (!(lengths.back() > 0)) return {};
    const ClampedKnots knots(controls);
    NormalEquations equations(controls);
    for (std::size_t i = 0; i < m; ++i)
        equations.add(knots.at(lengths[i] / lengths.back()), {double(points[i].x), double(points[i].y)});
    equations.steady();
    const auto solution = equations.solve();
    if (!solution) return {};
    PixelPath fitted = sampled(knots, *solution, lengths.back());
    return fitted.size() < 2 ? PixelPath() : fitted;
}

} // namespace corvane::raster
