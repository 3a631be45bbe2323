// Edges first, then bends.
#include "raster/evening.h"

#include <algorithm>
#include <cmath>

namespace corvane::raster {
namespace {

constexpr double kMostTolerance = 1, kSpeck = 16, kBendShare = 0.7;
constexpr double kFlatness = 0.05; // pixels between a parabola and its chords
constexpr double kMostLevel = 10, kSamePoint = 1e-9;
// A turn by one radian: 2 sin(1/2) / 4 away from the corner for each unit of leg.
constexpr double kSharp = 0.2397;
constexpr double kAngleOfAway = 4,
                 kMostTurn = 0.25; // radians for each unit of it, radians from piece to piece

PathPoint between(PathPoint a, PathPoint b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

double apart(PathPoint a, PathPoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

double squaredToSegment(PixelPoint p, PixelPoint a, PixelPoint b) {
    const double dx = b.x - a.x, dy = b.y - a.y, px = p.x - a.x, py = p.y - a.y;
    const double along = px * dx + py * dy, squared = dx * dx + dy * dy;
    if (squared == 0 || along <= 0) return px * px + py * py;
    if (along >= squared) return double(SquaredDistance(p, b));
    const double across = px * dy - py * dx;
    return across * across / squared;
}

std::size_t farthestFrom(const PixelPath& path, PixelPoint p) {
    const auto found = std::max_element(path.begin(), path.end(), [p](PixelPoint a, PixelPoint b) {
        return SquaredDistance(a, p) < SquaredDistance(b, p);
    });
    return std::size_t(found - path.begin());
}

// Marks the points between two kept ones that have to stay.
void keepBetween(const PixelPath& path, std::size_t from, std::size_t to, double tolerance,
                 std::vector<bool>& kept) {
    struct Stretch {
        std::size_t from, to;
    };
    std::vector<Stretch> open{{from, to}};
    while (!open.empty()) {
        const Stretch s = open.back();
        open.pop_back();
        double worst = tolerance * tolerance;
        std::size_t at = s.from;
        for (std::size_t i = s.from + 1; i < s.to; ++i)
            if (const double d = squaredToSegment(path[i], path[s.from], path[s.to]); d > worst)
                worst = d, at = i;
        if (at == s.from) continue;
        kept[at] = true;
        open.push_back({s.from, at});
        open.push_back({at, s.to});
    }
}

std::vector<PathPoint> edgesOf(PixelPath path, bool closed, double tolerance) {
    if (closed) {
        // A ring begins where it is farthest out, which is a place that stays.
        std::rotate(path.begin(), path.begin() + std::ptrdiff_t(farthestFrom(path, path[0])), path.end());
        path.push_back(path.front());
    }
    const std::size_t last = path.size() - 1, middle = closed ? farthestFrom(path, path[0]) : 0;
    std::vector<bool> kept(path.size());
    kept[0] = kept[middle] = kept[last] = true;
    keepBetween(path, 0, middle, tolerance, kept);
    keepBetween(path, middle, last, tolerance, kept);
    std::vector<PathPoint> corners;
    for (std::size_t i = 0; i < path.size() - (closed ? 1 : 0); ++i) {
        const PathPoint p{double(path[i].x), double(path[i].y)};
        if (kept[i] && (corners.empty() || apart(corners.back(), p) > 0)) corners.push_back(p);
    }
    return corners;
}

// Adds the corner, or a parabola over legs of equal length in its place. The parabola leaves the corner by a
// quarter of |from - 2 corner + to|, in proportion to its legs: they are at most half the edges, and shorter
// where that would lead too far away.
void turn(PathPoint before, PathPoint corner, PathPoint after, double most, std::vector<PathPoint>& line) {
    const double in = apart(corner, before), on = apart(after, corner);
    double leg = std::min(in, on) / 2;
    const PathPoint sum{(before.x - corner.x) / in + (after.x - corner.x) / on,
                        (before.y - corner.y) / in + (after.y - corner.y) / on};
    const double awayPerLeg = std::hypot(sum.x, sum.y) / 4;
    if (leg * awayPerLeg > most) {
        if (awayPerLeg > kSharp) return line.push_back(corner);
        leg = most / awayPerLeg;
    }
    const PathPoint from = between(corner, before, leg / in), to = between(corner, after, leg / on);
    const double pieces = std::ceil(
        std::max({1.0, std::sqrt(leg * awayPerLeg / kFlatness), awayPerLeg * kAngleOfAway / kMostTurn}));
    for (int i = 0; i <= pieces; ++i) {
        const double t = i / pieces;
        const PathPoint p = between(between(from, corner, t), between(corner, to, t), t);
        if (line.empty() || apart(line.back(), p) > kSamePoint) line.push_back(p);
    }
}

std::vector<PathPoint> asTraced(const PixelPath& path) {
    std::vector<PathPoint> line;
    for (const PixelPoint p : path) line.push_back({double(p.x), double(p.y)});
    return line;
}

} // namespace

double EveningTolerance(double size, double level) {
    return kMostTolerance * std::clamp(level / kMostLevel, 0.0, 1.0) * std::clamp(size / kSpeck, 0.0, 1.0);
}

std::vector<PathPoint> EvenPath(const PixelPath& path, bool closed, double tolerance) {
    if (!(tolerance > 0) || path.size() < 3) return asTraced(path);
    const std::vector<PathPoint> corners = edgesOf(path, closed, tolerance);
    const std::size_t n = corners.size();
    if (n < 3) return closed ? asTraced(path) : corners; // a sliver would be no ring any more
    std::vector<PathPoint> line;
    const double most = kBendShare * tolerance;
    if (!closed) line.push_back(corners.front());
    for (std::size_t i = closed ? 0 : 1; i < (closed ? n : n - 1); ++i)
        turn(corners[(i + n - 1) % n], corners[i], corners[(i + 1) % n], most, line);
    if (!closed) line.push_back(corners.back());
    if (closed && apart(line.front(), line.back()) <= kSamePoint) line.pop_back();
    return line;
}

} // namespace corvane::raster
