// Cutting in the clip's own coordinates; heights go along.
#include "host/view/clip_shape.h"

#include <algorithm>
#include <cmath>

#include "host/ge/polygon2d.h"

namespace host {
namespace {

double cross(const AcGePoint2d& o, const AcGePoint2d& a, const AcGePoint2d& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}
double cross(const AcGePoint2d& o, const AcGePoint2d& a, const AcGePoint3d& b) {
    return cross(o, a, AcGePoint2d(b.x, b.y));
}
AcGePoint3d between(const AcGePoint3d& a, const AcGePoint3d& b, double t) { return a + (b - a) * t; }

double areaOf(const std::vector<AcGePoint2d>& polygon) {
    double twice = 0;
    for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++)
        twice += polygon[j].x * polygon[i].y - polygon[j].y * polygon[i].x;
    return twice / 2;
}

bool isConvex(const std::vector<AcGePoint2d>& p) {
    for (size_t i = 0; i < p.size(); ++i)
        if (cross(p[i], p[(i + 1) % p.size()], p[(i + 2) % p.size()]) < 0) return false;
    return true;
}

bool isEar(const std::vector<AcGePoint2d>& p, size_t i) {
    const AcGePoint2d &a = p[(i + p.size() - 1) % p.size()], &b = p[i], &c = p[(i + 1) % p.size()];
    if (cross(a, b, c) <= 0) return false;
    return std::none_of(p.begin(), p.end(), [&](const AcGePoint2d& q) {
        if (q == a || q == b || q == c) return false;
        return cross(a, b, q) >= 0 && cross(b, c, q) >= 0 && cross(c, a, q) >= 0;
    });
}

// A polygon that crosses itself has no ears at some point; what is left then is taken as it is.
std::vector<std::vector<AcGePoint2d>> convexPieces(std::vector<AcGePoint2d> p) {
    std::vector<std::vector<AcGePoint2d>> pieces;
    while (p.size() > 3 && !isConvex(p)) {
        size_t ear = 0;
        while (ear < p.size() && !isEar(p, ear)) ++ear;
        if (ear == p.size()) break;
        pieces.push_back({p[(ear + p.size() - 1) % p.size()], p[ear], p[(ear + 1) % p.size()]});
        p.erase(p.begin() + std::ptrdiff_t(ear));
    }
    pieces.push_back(std::move(p));
    return pieces;
}

ClipShape::Contour cutToConvex(ClipShape::Contour contour, const std::vector<AcGePoint2d>& piece) {
    for (size_t e = 0; e < piece.size() && !contour.empty(); ++e) {
        const AcGePoint2d &a = piece[e], &b = piece[(e + 1) % piece.size()];
        ClipShape::Contour kept;
        for (size_t i = 0; i < contour.size(); ++i) {
            const AcGePoint3d &from = contour[i], &to = contour[(i + 1) % contour.size()];
            const double s = cross(a, b, from), t = cross(a, b, to);
            if (s >= 0) kept.push_back(from);
            if ((s < 0) != (t < 0)) kept.push_back(between(from, to, s / (s - t)));
        }
        contour = std::move(kept);
    }
    return contour;
}

} // namespace

ClipShape::ClipShape(std::vector<AcGePoint2d> polygon, const AcGeMatrix3d& worldToClip)
    : worldToClip_(worldToClip), polygon_(std::move(polygon)) {
    if (polygon_.size() < 3 || worldToClip.isSingular() || areaOf(polygon_) == 0) {
        polygon_.clear();
        return;
    }
    clipToWorld_ = worldToClip.inverse();
    if (areaOf(polygon_) < 0) std::reverse(polygon_.begin(), polygon_.end());
    pieces_ = convexPieces(polygon_);
}

bool ClipShape::inside(const AcGePoint3d& p) const { return polygonHolds(polygon_, {p.x, p.y}); }

bool ClipShape::holds(const AcGePoint3d& world) const {
    return polygon_.empty() || inside(worldToClip_ * world);
}

ClipShape::Contour ClipShape::toClip(std::span<const AcGePoint3d> world) const {
    Contour clip(world.begin(), world.end());
    for (AcGePoint3d& p : clip) p = worldToClip_ * p;
    return clip;
}
ClipShape::Contour ClipShape::toWorld(const Contour& clip) const {
    Contour world(clip);
    for (AcGePoint3d& p : world) p = clipToWorld_ * p;
    return world;
}

// Where the segment crosses the polygon's edges, 0 to 1, in order.
void ClipShape::cutSegment(const AcGePoint3d& from, const AcGePoint3d& to, std::vector<double>& at) const {
    at = {0, 1};
    const AcGePoint2d start(from.x, from.y), end(to.x, to.y);
    for (size_t i = 0, j = polygon_.size() - 1; i < polygon_.size(); j = i++) {
        const double s = cross(polygon_[j], polygon_[i], start), t = cross(polygon_[j], polygon_[i], end);
        if ((s < 0) == (t < 0)) continue;
        const double u = cross(start, end, polygon_[j]), v = cross(start, end, polygon_[i]);
        if ((u < 0) != (v < 0)) at.push_back(s / (s - t));
    }
    std::sort(at.begin(), at.end());
}

void ClipShape::cutPath(std::span<const AcGePoint3d> world, const Take& take) const {
    const Contour path = toClip(world);
    if (polygon_.empty()) return take(Contour(world.begin(), world.end()));
    if (path.size() == 1) return inside(path[0]) ? take(Contour(world.begin(), world.end())) : void();
    Contour run;
    const auto finish = [&] {
        if (run.size() > 1) take(toWorld(run));
        run.clear();
    };
    std::vector<double> at;
    for (size_t i = 1; i < path.size(); ++i) {
        cutSegment(path[i - 1], path[i], at);
        for (size_t k = 1; k < at.size(); ++k) {
            if (at[k] <= at[k - 1]) continue;
            if (!inside(between(path[i - 1], path[i], (at[k - 1] + at[k]) / 2))) {
                finish();
                continue;
            }
            if (run.empty()) run.push_back(between(path[i - 1], path[i], at[k - 1]));
            run.push_back(between(path[i - 1], path[i], at[k]));
        }
    }
    finish();
}

void ClipShape::cutArea(std::span<const AcGePoint3d> world, const Take& take) const {
    if (polygon_.empty()) return take(Contour(world.begin(), world.end()));
    const Contour contour = toClip(world);
    for (const auto& piece : pieces_)
        if (const Contour cut = cutToConvex(contour, piece); cut.size() > 2) take(toWorld(cut));
}

} // namespace host
