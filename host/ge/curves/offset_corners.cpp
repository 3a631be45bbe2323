// Points in place of the arcs about outer corners: the neighbours go on until they meet. A point is refused
// where it isn't clear of the source, of the other chains and of other points; then the arc stays.
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "host/ge/curves/bulge_meet.h"
#include "host/ge/curves/numeric.h"
#include "host/ge/curves/offset_parts.h"

namespace host::ge::offsetting {

namespace {

constexpr double kFarthest = 100; // distances from the corner to its point
constexpr int kProbes = 8;        // places on each side of a point that must be clear of the source

// A point in place of the arc at `index` of a chain; both neighbours grow by parts of their own length.
struct Point {
    size_t chain = 0, index = 0, before = 0, after = 0;
    AcGePoint2d tip;
    double growBefore = 0, growAfter = 0;
    std::array<BulgeSegment, 2> sides; // from the one neighbour to the tip, from the tip to the other
};

// How far beyond its end a segment reaches a place of its line or circle, as a part of its length; forwards
// from the end, or backwards from the start.
double growth(const BulgeSegment& s, const AcGePoint2d& place, bool atEnd) {
    const BulgeSegment own = atEnd ? s : s.reversed();
    const AcGeVector2d tangent = own.tangentAt(1), way = place - own.end;
    if (own.isStraight()) return way.dotProduct(tangent) / own.chord();
    // Half the turn is the angle between tangent and chord.
    double half = std::atan2(tangent.crossProduct(way), tangent.dotProduct(way));
    if (half * own.bulge < 0) half += std::copysign(kPi, own.bulge);
    return 2 * half / own.sweep();
}

BulgeSegment grown(const BulgeSegment& s, double before, double after) {
    return {s.pointAt(-before), s.pointAt(1 + after), bulgeOfSweep((1 + before + after) * s.sweep())};
}

// Where the growth of both meets, by Newton's steps on their own forms from where their tangents meet.
std::optional<Point> meetingPoint(const BulgeSegment& a, const BulgeSegment& b) {
    const AcGeVector2d u = a.tangentAt(1), v = b.tangentAt(0), gap = b.start - a.end;
    const double cross = u.crossProduct(v);
    if (!(std::fabs(cross) > 1e-9)) return {};
    const double lengthA = a.length(), lengthB = b.length();
    double f = gap.crossProduct(v) / cross / lengthA, g = -gap.crossProduct(u) / cross / lengthB;
    for (int step = 0; step < 30; ++step) {
        const AcGeVector2d du = a.tangentAt(1 + f) * lengthA, dv = b.tangentAt(-g) * lengthB;
        const AcGeVector2d miss = b.pointAt(-g) - a.pointAt(1 + f);
        const double det = du.crossProduct(dv);
        if (!(std::fabs(det) > 1e-9 * lengthA * lengthB)) return {};
        const double df = miss.crossProduct(dv) / det, dg = -miss.crossProduct(du) / det;
        f += df, g += dg;
        if (!std::isfinite(f) || !std::isfinite(g)) return {};
        if (std::fabs(df) + std::fabs(dg) < 1e-15 * (1 + std::fabs(f) + std::fabs(g))) break;
    }
    if (a.pointAt(1 + f).distanceTo(b.pointAt(-g)) > 1e-9 * (lengthA + lengthB)) return {};
    Point out;
    out.tip = a.pointAt(1 + f);
    out.growBefore = growth(a, out.tip, true), out.growAfter = growth(b, out.tip, false);
    if (!(out.growBefore > 0) || !(out.growAfter > 0)) return {};
    if (out.growBefore * std::fabs(a.sweep()) > kPi || out.growAfter * std::fabs(b.sweep()) > kPi) return {};
    out.sides = {BulgeSegment{a.end, out.tip, bulgeOfSweep(out.growBefore * a.sweep())},
                 BulgeSegment{out.tip, b.start, bulgeOfSweep(out.growAfter * b.sweep())}};
    return out;
}

bool isClearOfSource(const Source& source, const Point& point) {
    for (const BulgeSegment& side : point.sides)
        for (int i = 1; i < kProbes; ++i)
            if (source.isTooNear(side.pointAt(double(i) / kProbes))) return false;
    return true;
}

std::optional<Point> pointAt(const Source& source, const std::vector<Edge>& edges, const Chain& chain,
                             size_t index) {
    const size_t n = chain.pieces.size();
    const Piece& arc = chain.pieces[index];
    const Edge& corner = edges[size_t(arc.edge)];
    if (!corner.isCorner() || arc.from != 0 || arc.to != 1 || n < 3) return {};
    if (!chain.closed && (index == 0 || index + 1 == n)) return {};
    const size_t before = (index + n - 1) % n, after = (index + 1) % n;
    const Piece &a = chain.pieces[before], &b = chain.pieces[after];
    const Edge &ea = edges[size_t(a.edge)], &eb = edges[size_t(b.edge)];
    const bool areNeighbours = !ea.isCorner() && !eb.isCorner() && ea.before == corner.before &&
                               eb.before == corner.after && a.to == 1 && b.from == 0;
    if (!areNeighbours) return {};
    std::optional<Point> point = meetingPoint(a.shape, b.shape);
    if (!point) return {};
    point->index = index, point->before = before, point->after = after;
    const AcGePoint2d vertex = source.segments[size_t(corner.before)].end;
    if (point->tip.distanceTo(vertex) > kFarthest * source.distance || !isClearOfSource(source, *point))
        return {};
    return point;
}

// Everything that points must be clear of: the chains' pieces and the sides of all points.
struct Obstacles {
    std::vector<BulgeSegment> shapes{};
    std::vector<AcDbExtents2d> boxes{};
    std::vector<size_t> chain{}, piece{}; // of pieces
    size_t pieceCount = 0;                // sides follow, two a point

    void add(const BulgeSegment& s) {
        shapes.push_back(s);
        boxes.push_back(s.extents());
    }
};

bool isBlocked(const Obstacles& all, const BoxTree& tree, const std::vector<Point>& points, size_t which,
               double slack) {
    const Point& point = points[which];
    bool blocked = false;
    for (const BulgeSegment& side : point.sides)
        tree.visitMeeting(side.extents(), [&](int found) {
            const size_t i = size_t(found);
            if (i < all.pieceCount) {
                const size_t k = all.piece[i];
                const bool isOwn = all.chain[i] == point.chain &&
                                   (k == point.index || k == point.before || k == point.after);
                if (isOwn) return true;
            } else if ((i - all.pieceCount) / 2 == which) {
                return true;
            }
            for (const BulgeMeeting& m : meetings(side, all.shapes[i], slack)) {
                // The next point may begin where this one ends.
                const bool isEnd = m.point.distanceTo(point.sides[0].start) <= 100 * slack ||
                                   m.point.distanceTo(point.sides[1].end) <= 100 * slack;
                blocked = blocked || !isEnd;
            }
            return !blocked;
        });
    return blocked;
}

void apply(std::vector<Chain>& chains, const std::vector<Point>& points, const std::vector<char>& accepted) {
    for (size_t c = 0; c < chains.size(); ++c) {
        Chain& chain = chains[c];
        const size_t n = chain.pieces.size();
        std::vector<double> growStart(n), growEnd(n);
        std::vector<char> gone(n);
        std::vector<std::optional<AcGePoint2d>> start(n), end(n);
        for (size_t i = 0; i < points.size(); ++i) {
            const Point& p = points[i];
            if (p.chain != c || !accepted[i]) continue;
            growEnd[p.before] = p.growBefore, growStart[p.after] = p.growAfter, gone[p.index] = 1;
            end[p.before] = start[p.after] = p.tip;
        }
        std::vector<Piece> out;
        for (size_t i = 0; i < n; ++i) {
            if (gone[i]) continue;
            Piece p = chain.pieces[i];
            p.shape = grown(p.shape, growStart[i], growEnd[i]);
            if (start[i]) p.shape.start = *start[i];
            if (end[i]) p.shape.end = *end[i];
            out.push_back(p);
        }
        chain.pieces = std::move(out);
    }
}

} // namespace

void sharpen(const Source& source, const std::vector<Edge>& edges, std::vector<Chain>& chains) {
    std::vector<Point> points;
    Obstacles all;
    for (size_t c = 0; c < chains.size(); ++c)
        for (size_t i = 0; i < chains[c].pieces.size(); ++i) {
            all.add(chains[c].pieces[i].shape), all.chain.push_back(c), all.piece.push_back(i);
            if (auto point = pointAt(source, edges, chains[c], i)) point->chain = c, points.push_back(*point);
        }
    all.pieceCount = all.shapes.size();
    for (const Point& p : points)
        for (const BulgeSegment& side : p.sides) all.add(side);
    const BoxTree tree(all.boxes);
    std::vector<char> accepted(points.size());
    for (size_t i = 0; i < points.size(); ++i) accepted[i] = !isBlocked(all, tree, points, i, source.slack);
    // An arc that grows at both ends must not close up on itself.
    for (size_t i = 0; i < points.size(); ++i) {
        const size_t next = (i + 1) % points.size();
        if (points[i].chain != points[next].chain || points[i].after != points[next].before) continue;
        const double sweep = chains[points[i].chain].pieces[points[i].after].shape.sweep();
        if ((1 + points[i].growAfter + points[next].growBefore) * std::fabs(sweep) > 1.95 * kPi)
            accepted[i] = accepted[next] = 0;
    }
    apply(chains, points, accepted);
}

} // namespace host::ge::offsetting
