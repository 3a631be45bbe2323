// Parallel chains: every segment moved by itself, then joined with its neighbours.
#include "host/ent/plane_offset.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host {

namespace {

// A segment's line or circle after the move, and where the segment itself went.
struct Moved {
    AcGePoint2d start, end;
    AcGePoint2d center;
    double radius = 0; // 0: straight
    double sense = 0;  // of the turn
    int corner = 0;    // the vertex that it began at
};

std::optional<Moved> move(const ge::BulgeSegment& s, double distance) {
    if (!(s.chord() > 0)) return {};
    const auto right = [&](double at) { return -s.tangentAt(at).perpVector() * distance; };
    Moved out{s.start + right(0), s.end + right(1), {}, 0, 0, 0};
    if (s.isStraight()) return out;
    const ge::BulgeCircle circle = s.circle();
    out.sense = circle.sweep < 0 ? -1 : 1;
    out.center = circle.center;
    out.radius = circle.radius + out.sense * distance;
    if (!(out.radius > 1e-12 * circle.radius)) return {};
    return out;
}

void meetLineLine(const Moved& a, const Moved& b, std::vector<AcGePoint2d>& out) {
    const AcGeVector2d u = a.end - a.start, v = b.end - b.start;
    const double cross = u.crossProduct(v);
    if (std::fabs(cross) <= 1e-12 * u.length() * v.length()) return;
    out.push_back(a.start + u * ((b.start - a.start).crossProduct(v) / cross));
}

void meetLineCircle(const Moved& line, const Moved& arc, std::vector<AcGePoint2d>& out) {
    const AcGeVector2d along = (line.end - line.start).normal();
    const double at = (arc.center - line.start).dotProduct(along);
    const AcGePoint2d foot = line.start + along * at;
    const double off = foot.distanceTo(arc.center), square = arc.radius * arc.radius - off * off;
    if (square < -1e-12 * arc.radius * arc.radius) return;
    const double half = std::sqrt(std::max(square, 0.0));
    out.push_back(foot + along * half);
    out.push_back(foot - along * half);
}

void meetCircles(const Moved& a, const Moved& b, std::vector<AcGePoint2d>& out) {
    const AcGeVector2d between = b.center - a.center;
    const double d = between.length();
    if (!(d > 1e-12 * (a.radius + b.radius))) return;
    const double at = (d * d + a.radius * a.radius - b.radius * b.radius) / (2 * d);
    const double square = a.radius * a.radius - at * at;
    if (square < -1e-12 * a.radius * a.radius) return;
    const double half = std::sqrt(std::max(square, 0.0));
    const AcGeVector2d unit = between / d;
    out.push_back(a.center + unit * at + unit.perpVector() * half);
    out.push_back(a.center + unit * at - unit.perpVector() * half);
}

// Where the one goes over into the other; nothing when their lines and circles don't meet.
std::optional<AcGePoint2d> joint(const Moved& a, const Moved& b) {
    const double near = 1e-9 * (a.start.distanceTo(a.end) + b.start.distanceTo(b.end));
    if (a.end.distanceTo(b.start) <= near) return a.end;
    std::vector<AcGePoint2d> found;
    if (a.radius == 0 && b.radius == 0)
        meetLineLine(a, b, found);
    else if (a.radius == 0)
        meetLineCircle(a, b, found);
    else if (b.radius == 0)
        meetLineCircle(b, a, found);
    else
        meetCircles(a, b, found);
    const auto score = [&](const AcGePoint2d& p) { return p.distanceTo(a.end) + p.distanceTo(b.start); };
    const auto best = std::min_element(found.begin(), found.end(),
                                       [&](const auto& p, const auto& q) { return score(p) < score(q); });
    return best == found.end() ? std::nullopt : std::optional(*best);
}

// The segment between its joints; nothing when they turned it round.
std::optional<double> bulgeBetween(const Moved& m, const AcGePoint2d& from, const AcGePoint2d& to) {
    if (m.radius == 0) {
        if (!((to - from).dotProduct(m.end - m.start) > 0)) return {};
        return 0.0;
    }
    const auto turn = [&](const AcGePoint2d& p, const AcGePoint2d& q) {
        const double angle =
            std::fmod(((q - m.center).angle() - (p - m.center).angle()) * m.sense, 2 * std::numbers::pi);
        return angle < 0 ? angle + 2 * std::numbers::pi : angle;
    };
    const double sweep = turn(from, to), before = turn(m.start, m.end);
    // Cut back beyond its own start, an arc would run nearly all the way round.
    if (sweep > before + std::numbers::pi && sweep > 1.5 * std::numbers::pi) return {};
    if (!(sweep > 1e-12)) return {};
    return ge::bulgeOfSweep(m.sense * sweep);
}

} // namespace

PlaneChain offsetChain(const PlaneChain& chain, double distance) {
    PlaneChain out = chain;
    out.vertices.clear();
    std::vector<Moved> moved;
    const int count = ge::segmentCount(chain.vertices, chain.closed);
    for (int i = 0; i < count; ++i)
        if (auto m = move(ge::segmentOf(chain.vertices, i), distance)) moved.push_back(*m);
    const size_t n = moved.size();
    if (n == 0) return out;
    std::vector<AcGePoint2d> begins(n), ends(n);
    for (size_t i = 0; i < n; ++i) begins[i] = moved[i].start, ends[i] = moved[i].end;
    for (size_t i = 0; i + 1 < n + (chain.closed ? 1 : 0); ++i) {
        const size_t next = (i + 1) % n;
        if (next == i) break;
        if (const auto at = joint(moved[i], moved[next])) ends[i] = begins[next] = *at;
    }
    for (size_t i = 0; i < n; ++i) {
        const auto bulge = bulgeBetween(moved[i], begins[i], ends[i]);
        if (!bulge) continue;
        auto& v = out.vertices;
        // Joints that missed are bridged by a line.
        if (!v.empty() &&
            v.back().point.distanceTo(begins[i]) <= 1e-12 * moved[i].start.distanceTo(moved[i].end))
            v.pop_back();
        v.push_back({begins[i], *bulge});
        v.push_back({ends[i], 0});
    }
    if (chain.closed && out.vertices.size() > 2 &&
        out.vertices.back().point.distanceTo(out.vertices.front().point) <= 1e-9 * std::fabs(distance))
        out.vertices.pop_back();
    return out;
}

} // namespace host
