// The way through the steps: the source made ready, edges, valid pieces, chains, corners.
#include "host/ge/curves/offset.h"

#include <algorithm>
#include <cmath>

#include "host/ge/curves/numeric.h"
#include "host/ge/curves/offset_parts.h"

namespace host::ge {

namespace offsetting {

namespace {

constexpr AcGeTol kExact = AcGeTol().setEqualPoint(0).setEqualVector(0);
constexpr double kSlack = 1e-11;      // of the size: distances that are the same
constexpr double kSmallest = 1e-12;   // radii of moved arcs, of their own, that are none
constexpr double kSameTangent = 1e-9; // turns, in radians, that are no corner

AcGeVector2d right(const BulgeSegment& s, double at) { return -s.tangentAt(at).perpVector(); }

// Nothing for arcs whose radius the distance uses up.
void addMoved(const BulgeSegment& s, double distance, int index, std::vector<Edge>& out) {
    if (!s.isStraight()) {
        const double radius = s.radius(), left = radius + std::copysign(distance, s.bulge * distance);
        if (!(left > kSmallest * radius)) return;
    }
    out.push_back(
        {{s.start + right(s, 0) * distance, s.end + right(s, 1) * distance, s.bulge}, index, index});
}

// About the corner between two segments, where the side of the signed distance is the outer one. Segments
// that turn straight back have an outer side both ways.
void addCorner(const Source& source, int before, int after, double distance, std::vector<Edge>& out) {
    const BulgeSegment &a = source.segments[size_t(before)], &b = source.segments[size_t(after)];
    const AcGeVector2d u = a.tangentAt(1), v = b.tangentAt(0);
    double turn = std::atan2(u.crossProduct(v), u.dotProduct(v));
    if (kPi - std::fabs(turn) < kSameTangent) turn = std::copysign(kPi, distance);
    if (!(turn * distance > 0) || std::fabs(turn) < kSameTangent) return;
    const AcGePoint2d from = a.end + right(a, 1) * distance;
    const AcGePoint2d to = a.end + right(b, 0) * distance;
    out.push_back({{from, to, bulgeOfSweep(turn)}, before, after});
}

std::vector<Edge> side(const Source& source, double distance) {
    std::vector<Edge> out;
    const int n = int(source.segments.size());
    out.reserve(size_t(2 * n));
    for (int i = 0; i < n; ++i) {
        addMoved(source.segments[size_t(i)], distance, i, out);
        if (i + 1 < n) addCorner(source, i, i + 1, distance, out);
    }
    if (source.closed) addCorner(source, n - 1, 0, distance, out);
    return out;
}

void addCap(const AcGePoint2d& center, double radius, std::vector<Edge>& out) {
    const AcGeVector2d x(radius, 0);
    out.push_back({{center - x, center + x, 1}, -1, -1});
    out.push_back({{center + x, center - x, 1}, -1, -1});
}

} // namespace

bool Source::isTooNear(const AcGePoint2d& point) const {
    const double enough = distance - slack;
    const auto measure = [&](int i) { return segments[size_t(i)].closestTo(point).distance; };
    return tree.nearest(point, distance, enough, measure) < enough;
}

std::vector<Edge> rightEdges(const Source& source) { return side(source, source.distance); }

std::vector<Edge> otherEdges(const Source& source) {
    std::vector<Edge> out = side(source, -source.distance);
    if (!source.closed) {
        addCap(source.segments.front().start, source.distance, out);
        addCap(source.segments.back().end, source.distance, out);
    }
    return out;
}

namespace {

struct Setting {
    AcGePoint2d base;
    bool mirrored = false;
    AcGePoint2d in(const AcGePoint2d& p) const {
        const AcGeVector2d v = p - base;
        return {v.x, mirrored ? -v.y : v.y};
    }
    AcGePoint2d out(const AcGePoint2d& p) const { return base + AcGeVector2d(p.x, mirrored ? -p.y : p.y); }
    double bulge(double b) const { return mirrored ? -b : b; }
};

bool isFinite(const std::vector<BulgeVertex>& vertices) {
    return std::all_of(vertices.begin(), vertices.end(), [](const BulgeVertex& v) {
        return std::isfinite(v.point.x) && std::isfinite(v.point.y) && std::isfinite(v.bulge);
    });
}

Source sourceOf(const std::vector<BulgeVertex>& vertices, bool closed, double distance,
                const Setting& setting) {
    Source out;
    out.closed = closed, out.distance = distance;
    AcDbExtents2d all;
    std::vector<AcDbExtents2d> boxes;
    for (int i = 0, n = segmentCount(vertices, closed); i < n; ++i) {
        const BulgeSegment s = segmentOf(vertices, i);
        const BulgeSegment own{setting.in(s.start), setting.in(s.end), setting.bulge(s.bulge)};
        if (!(own.chord() > 0)) continue;
        out.segments.push_back(own);
        boxes.push_back(own.extents());
        all.addExt(boxes.back());
    }
    if (boxes.empty()) return out;
    out.slack = kSlack * (all.minPoint().distanceTo(all.maxPoint()) + distance);
    out.tree = BoxTree(std::move(boxes));
    return out;
}

OffsetChain outward(const Chain& chain, const Setting& setting) {
    OffsetChain out;
    out.closed = chain.closed;
    out.vertices.reserve(chain.pieces.size() + 1);
    for (const Piece& p : chain.pieces)
        out.vertices.push_back({setting.out(p.shape.start), setting.bulge(p.shape.bulge)});
    if (!chain.closed) out.vertices.push_back({setting.out(chain.pieces.back().shape.end), 0});
    return out;
}

} // namespace

} // namespace offsetting

std::vector<OffsetChain> offsetPolyline(const std::vector<BulgeVertex>& vertices, bool closed,
                                        double distance, OffsetCorner corners) {
    using namespace offsetting;
    std::vector<OffsetChain> out;
    if (vertices.empty() || !std::isfinite(distance) || distance == 0 || !isFinite(vertices)) return out;
    const AcDbExtents2d box = polylineExtents(vertices, closed);
    const Setting setting{box.minPoint() + (box.maxPoint() - box.minPoint()) * 0.5, distance < 0};
    const Source source = sourceOf(vertices, closed, std::fabs(distance), setting);
    if (source.segments.empty()) return out;
    const std::vector<Edge> edges = rightEdges(source);
    std::vector<Chain> chains = stitched(validPieces(source, edges), source.slack);
    if (corners == OffsetCorner::sharp) sharpen(source, edges, chains);
    for (const Chain& chain : chains) out.push_back(outward(chain, setting));
    return out;
}

} // namespace host::ge
