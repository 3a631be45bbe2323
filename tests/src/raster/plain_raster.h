// Plain twins of the raster library: pixel by pixel, over whole images, every step as it is defined.
#pragma once
#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <set>

#include "raster/image.h"

namespace plain {

using corvane::raster::Byte;
using corvane::raster::PixelPath;
using corvane::raster::PixelPoint;
using corvane::raster::RasterImage;
using corvane::raster::SquaredDistance;

inline bool on(const RasterImage& mask, int x, int y) {
    return x >= 0 && y >= 0 && x < mask.cols && y < mask.rows && mask.row(y)[x];
}

inline RasterImage thin(RasterImage mask) {
    for (bool changed = true; changed;) {
        changed = false;
        for (int half = 0; half < 2; ++half) {
            std::vector<Byte*> going;
            for (int y = 1; y < mask.rows - 1; ++y)
                for (int x = 1; x < mask.cols - 1; ++x) {
                    if (!on(mask, x, y)) continue;
                    const int p[] = {on(mask, x, y - 1),     on(mask, x + 1, y - 1), on(mask, x + 1, y),
                                     on(mask, x + 1, y + 1), on(mask, x, y + 1),     on(mask, x - 1, y + 1),
                                     on(mask, x - 1, y),     on(mask, x - 1, y - 1)};
                    int changes = 0, sum = 0;
                    for (int k = 0; k < 8; ++k) changes += !p[k] && p[(k + 1) % 8], sum += p[k];
                    const bool first = p[0] * p[2] * p[4] == 0 && p[2] * p[4] * p[6] == 0;
                    const bool second = p[0] * p[2] * p[6] == 0 && p[0] * p[4] * p[6] == 0;
                    if (changes == 1 && sum >= 2 && sum <= 6 && (half == 0 ? first : second))
                        going.push_back(mask.row(y) + x);
                }
            for (Byte* cell : going) *cell = 0, changed = true;
        }
    }
    for (Byte& cell : mask.data) cell = cell ? 255 : 0;
    return mask;
}

inline std::vector<PixelPoint> around(const RasterImage& mask, PixelPoint p) {
    std::vector<PixelPoint> found;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            if ((dx || dy) && on(mask, p.x + dx, p.y + dy)) found.push_back({p.x + dx, p.y + dy});
    return found;
}

inline RasterImage prune(RasterImage mask, int limit) {
    for (bool changed = true; changed;) {
        changed = false;
        std::vector<PixelPoint> ends;
        for (int y = 0; y < mask.rows; ++y)
            for (int x = 0; x < mask.cols; ++x)
                if (on(mask, x, y) && around(mask, {x, y}).size() == 1) ends.push_back({x, y});
        for (const PixelPoint end : ends) {
            if (!on(mask, end.x, end.y)) continue;
            PixelPath walk{end};
            bool spur = false;
            while (int(walk.size()) <= limit) {
                auto beside = around(mask, walk.back());
                if (beside.size() > 2) {
                    spur = true;
                    break;
                }
                if (walk.size() > 1) std::erase(beside, walk[walk.size() - 2]);
                if (beside.size() != 1) break;
                walk.push_back(beside[0]);
            }
            if (!spur) continue;
            for (const PixelPoint p : walk) mask.row(p.y)[p.x] = 0;
            changed = true;
        }
    }
    return mask;
}

struct ByRows {
    bool operator()(PixelPoint a, PixelPoint b) const { return a.y != b.y ? a.y < b.y : a.x < b.x; }
};

inline bool takeNext(std::set<PixelPoint, ByRows>& left, PixelPoint& current) {
    for (const PixelPoint step : corvane::raster::kNeighbours)
        if (const PixelPoint next{current.x + step.x, current.y + step.y}; left.erase(next))
            return current = next, true;
    const PixelPoint* nearest = nullptr;
    for (const PixelPoint& p : left)
        if (std::abs(p.x - current.x) <= 5 && std::abs(p.y - current.y) <= 5 &&
            SquaredDistance(p, current) <= 25 &&
            (!nearest || SquaredDistance(p, current) < SquaredDistance(*nearest, current)))
            nearest = &p;
    if (!nearest) return false;
    current = *nearest;
    left.erase(current);
    return true;
}

inline std::vector<PixelPath> trace(const std::vector<PixelPoint>& pixels) {
    if (pixels.size() < 3) return {pixels};
    std::set<PixelPoint, ByRows> left(pixels.begin(), pixels.end());
    std::vector<PixelPath> paths;
    while (!left.empty()) {
        const PixelPoint start = *left.begin();
        left.erase(start);
        PixelPath path{start};
        for (PixelPoint at = start; takeNext(left, at);) path.push_back(at);
        for (PixelPoint at = start; takeNext(left, at);) path.insert(path.begin(), at);
        paths.push_back(path);
    }
    return paths;
}

inline std::int64_t leastSquared(PixelPoint p, const PixelPath& path, size_t m) {
    std::int64_t least = INT64_MAX;
    for (size_t i = 0; i < m; ++i) least = std::min(least, SquaredDistance(p, path[i]));
    return least;
}

inline size_t foldedTail(const PixelPath& path) {
    const size_t n = path.size(), most = std::min<size_t>(n / 2, 48);
    size_t cut = n;
    for (size_t k = 4; n >= 8 && k <= most; ++k) {
        const size_t from = n - k, m = from - 4;
        if (m < 3) break;
        if (leastSquared(path.back(), path, m) > 9) continue;
        size_t near = 0, far = 0;
        double length = 0;
        for (size_t j = from; j < n; ++j) {
            const auto e = leastSquared(path[j], path, m);
            near += e<5, far += e> 9;
            if (j + 1 < n) length += std::sqrt(double(SquaredDistance(path[j], path[j + 1])));
        }
        const double chord = std::sqrt(double(SquaredDistance(path[from], path.back())));
        if (near * 100 >= k * 75 && far <= 1 && length >= 6 && length >= 1.8 * chord + 2) cut = from;
    }
    return cut;
}

inline bool covers(const PixelPath& longer, const PixelPath& path) {
    if (path.size() < 2 || longer.size() < path.size() + 3) return false;
    for (const PixelPoint p : {path.front(), path.back()})
        for (const PixelPoint q : {longer.front(), longer.back()})
            if (SquaredDistance(p, q) <= 9) return false;
    std::int64_t sum = 0, worst = 0;
    size_t near = 0;
    for (const PixelPoint p : path) {
        const auto e = leastSquared(p, longer, longer.size());
        sum += e, worst = std::max(worst, e), near += e < 5;
    }
    return near >= 1 && near * 100 / path.size() >= 75 && worst <= 9 && sum / std::int64_t(path.size()) < 5;
}

inline std::vector<PixelPath> dropCovered(const std::vector<PixelPath>& paths) {
    std::vector<size_t> order;
    std::vector<bool> used(paths.size()), dropped(paths.size());
    while (order.size() < paths.size()) {
        size_t best = paths.size();
        for (size_t i = 0; i < paths.size(); ++i)
            if (!used[i] && (best == paths.size() || paths[i].size() > paths[best].size())) best = i;
        used[best] = true;
        order.push_back(best);
    }
    for (size_t a = 0; a < order.size(); ++a)
        for (size_t b = a + 1; b < order.size() && !dropped[order[a]]; ++b)
            if (!dropped[order[b]] && covers(paths[order[a]], paths[order[b]])) dropped[order[b]] = true;
    std::vector<PixelPath> kept;
    for (size_t i = 0; i < paths.size(); ++i)
        if (!dropped[i]) kept.push_back(paths[i]);
    return kept;
}

// Borders over the mask as it is, looked up pixel by pixel.
inline std::vector<PixelPath> borders(const RasterImage& mask) {
    const PixelPoint round[8] = {{1, 0}, {1, -1}, {0, -1}, {-1, -1}, {-1, 0}, {-1, 1}, {0, 1}, {1, 1}};
    const auto beside = [&](PixelPoint p, int s) {
        return PixelPoint{p.x + round[s & 7].x, p.y + round[s & 7].y};
    };
    const auto lit = [&](PixelPoint p) { return on(mask, p.x, p.y); };
    std::set<PixelPoint, ByRows> visited;
    std::vector<PixelPath> contours;
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x) {
            const PixelPoint start{x, y};
            if (!lit(start) || visited.count(start)) continue;
            if (lit(beside(start, 0)) && lit(beside(start, 2)) && lit(beside(start, 4)) &&
                lit(beside(start, 6)))
                continue;
            visited.insert(start);
            const int s0 = !lit(beside(start, 2)) && !lit(beside(start, 4)) ? 0 : 4;
            int s = s0;
            do s = (s + 7) % 8;
            while (!lit(beside(start, s)) && s != s0);
            PixelPath path;
            if (s == s0) {
                contours.push_back({start});
                continue;
            }
            const PixelPoint first = beside(start, s);
            int previous = s ^ 4;
            for (PixelPoint at = start;;) {
                for (++s; !lit(beside(at, s)) && s < 15;) ++s;
                if (s % 8 != previous) path.push_back(at), previous = s % 8;
                const PixelPoint left = at;
                at = beside(at, s);
                visited.insert(at);
                if (at == start && left == first) break;
                s = (s + 4) % 8;
            }
            contours.push_back(path);
        }
    std::stable_sort(contours.begin(), contours.end(),
                     [](const PixelPath& a, const PixelPath& b) { return a.size() > b.size(); });
    return contours;
}

// One basis function by the recursion, over all knots.
inline double basis(const std::vector<double>& knots, size_t i, size_t degree, double u) {
    const size_t count = knots.size() - 4;
    if (degree == 3 && u >= 1) return i == count - 1 ? 1 : 0;
    if (degree == 0) return knots[i] <= u && u < knots[i + 1] ? 1 : 0;
    double sum = 0;
    if (const double span = knots[i + degree] - knots[i]; span != 0)
        sum += (u - knots[i]) / span * basis(knots, i, degree - 1, u);
    if (const double span = knots[i + degree + 1] - knots[i + 1]; span != 0)
        sum += (knots[i + degree + 1] - u) / span * basis(knots, i + 1, degree - 1, u);
    return sum;
}

// The fit with full matrices.
inline PixelPath fit(PixelPath p) {
    p.erase(std::unique(p.begin(), p.end()), p.end());
    const size_t m = p.size(), c = std::min<size_t>(std::min(std::max<size_t>(m / 5, 4), m), 200);
    if (c < 4) return {};
    std::vector<double> chord{0}, knots{0, 0, 0};
    for (size_t i = 1; i < m; ++i)
        chord.push_back(chord.back() + std::sqrt(double(SquaredDistance(p[i - 1], p[i]))));
    for (size_t k = 0; k <= c - 3; ++k) knots.push_back(double(k) / double(c - 3));
    knots.insert(knots.end(), 3, 1.0);
    std::vector<std::vector<double>> a(c, std::vector<double>(c + 2));
    for (size_t i = 0; i < m; ++i) {
        std::vector<double> n(c);
        for (size_t k = 0; k < c; ++k) n[k] = basis(knots, k, 3, chord[i] / chord.back());
        for (size_t r = 0; r < c; ++r) {
            for (size_t k = 0; k < c; ++k) a[r][k] += n[r] * n[k];
            a[r][c] += n[r] * p[i].x, a[r][c + 1] += n[r] * p[i].y;
        }
    }
    double trace = 0;
    for (size_t i = 0; i < c; ++i) trace += std::abs(a[i][i]);
    for (size_t i = 0; i < c; ++i) a[i][i] += trace * 1e-10 + 1e-12;
    for (size_t k = 0; k < c; ++k) {
        size_t best = k;
        for (size_t r = k + 1; r < c; ++r)
            if (std::abs(a[r][k]) > std::abs(a[best][k])) best = r;
        if (std::abs(a[best][k]) < 1e-12) return {};
        std::swap(a[k], a[best]);
        for (size_t r = k + 1; r < c; ++r) {
            const double f = a[r][k] / a[k][k];
            for (size_t j = k; j < c + 2; ++j) a[r][j] -= f * a[k][j];
        }
    }
    std::vector<double> x(c), y(c);
    for (size_t r = c; r-- > 0;) {
        double sx = a[r][c], sy = a[r][c + 1];
        for (size_t k = r + 1; k < c; ++k) sx -= a[r][k] * x[k], sy -= a[r][k] * y[k];
        x[r] = sx / a[r][r], y[r] = sy / a[r][r];
    }
    const int samples = int(std::clamp(std::floor(chord.back() * 20 + 0.5), 200.0, 5000.0));
    PixelPath out;
    for (int j = 0; j < samples; ++j) {
        double px = 0, py = 0;
        for (size_t k = 0; k < c; ++k) {
            const double n = basis(knots, k, 3, double(j) / (samples - 1));
            px += n * x[k], py += n * y[k];
        }
        const PixelPoint q{int(std::floor(px + 0.5)), int(std::floor(py + 0.5))};
        if (out.empty() || out.back() != q) out.push_back(q);
    }
    return out;
}

} // namespace plain
