// Hull, and the rectangle that turns round it with four fingers on it (Toussaint 1983).
#include "curves/reports/smallest_box.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

double cross(const AcGePoint2d& o, const AcGePoint2d& a, const AcGePoint2d& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

// Counter-clockwise, without points on its edges.
std::vector<AcGePoint2d> hullOf(std::vector<AcGePoint2d> points) {
    std::sort(points.begin(), points.end(), [](const AcGePoint2d& a, const AcGePoint2d& b) {
        return a.x < b.x || (a.x == b.x && a.y < b.y);
    });
    points.erase(std::unique(points.begin(), points.end(),
                             [](const auto& a, const auto& b) { return a.x == b.x && a.y == b.y; }),
                 points.end());
    if (points.size() < 3) return points;
    std::vector<AcGePoint2d> hull;
    const auto add = [&](const AcGePoint2d& p, std::size_t floor) {
        while (hull.size() > floor + 1 && cross(hull[hull.size() - 2], hull.back(), p) <= 0) hull.pop_back();
        hull.push_back(p);
    };
    for (const AcGePoint2d& p : points) add(p, 0);
    const std::size_t below = hull.size() - 1;
    for (auto p = points.rbegin() + 1; p != points.rend(); ++p) add(*p, below);
    hull.pop_back();
    return hull;
}

} // namespace

BoxSize SmallestBox(std::vector<AcGePoint2d> points) {
    const std::vector<AcGePoint2d> hull = hullOf(std::move(points));
    const std::size_t n = hull.size();
    if (n < 2) return {};
    if (n == 2) return {hull[0].distanceTo(hull[1]), 0};
    BoxSize best;
    double bestArea = HUGE_VAL;
    std::size_t far = 1, right = 1, left = 1; // the fingers only go forward
    for (std::size_t i = 0; i < n; ++i) {
        const AcGeVector2d along = (hull[(i + 1) % n] - hull[i]).normal();
        const AcGeVector2d up(-along.y, along.x);
        const auto at = [&](std::size_t k, const AcGeVector2d& axis) {
            const AcGeVector2d v = hull[k % n] - hull[i];
            return v.x * axis.x + v.y * axis.y;
        };
        while (at(right + 1, along) > at(right, along)) ++right;
        far = std::max(far, right);
        while (at(far + 1, up) > at(far, up)) ++far;
        left = std::max(left, far);
        while (at(left + 1, along) < at(left, along)) ++left;
        const double length = at(right, along) - at(left, along), width = at(far, up);
        if (length * width >= bestArea) continue;
        bestArea = length * width;
        best = {std::max(length, width), std::min(length, width)};
    }
    return best;
}

} // namespace corvane
