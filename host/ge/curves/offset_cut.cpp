// Cutting the raw parallel where it meets the edge of the band around the source, and what of it is valid.
#include <algorithm>
#include <cmath>

#include "host/ge/curves/bulge_meet.h"
#include "host/ge/curves/offset_parts.h"

namespace host::ge::offsetting {

namespace {

constexpr int kSteps = 12;          // from an end of an edge, looking for where it begins to be valid
constexpr double kMerge = 10;       // slacks between cuts that are one
constexpr double kFlatBulge = 1e-5; // of arcs that are too flat to be seen from their centre

struct Range {
    double from = 1, to = 0;
    bool isEmpty() const { return !(from < to); }
};

// How far an edge goes on, in length from its start, inside a disc that its start lies in.
double lengthInside(const BulgeSegment& edge, const AcGePoint2d& center, double radius) {
    const AcGeVector2d from = edge.start - center, along = edge.tangentAt(0);
    if (edge.isStraight()) {
        const double at = -from.dotProduct(along), off = from.crossProduct(along);
        return at + std::sqrt(std::max((radius - off) * (radius + off), 0.0));
    }
    // Nearer than the way out: the distance changes no faster than the place.
    if (std::fabs(edge.bulge) < kFlatBulge) return radius - from.length();
    const BulgeCircle circle = edge.circle();
    const AcGeVector2d to = center - circle.center;
    const double r = circle.radius, apart = to.length();
    if (!(apart > 1e-12 * r)) return r < radius ? edge.length() : 0;
    const double cosine = 0.5 * (r / apart + (apart - radius) * (apart + radius) / (apart * r));
    if (cosine <= -1) return edge.length();
    // Angles from the line of centres, rising along the edge.
    const double sense = circle.isClockwise() ? -1 : 1;
    const AcGeVector2d start = edge.start - circle.center;
    const double angle = sense * std::atan2(to.crossProduct(start), to.dotProduct(start));
    return r * (std::acos(std::min(cosine, 1.0)) - angle);
}

// Finds what of the edges is surely too near. Where a place of the source is nearer than the distance, an
// edge is out until it leaves the disc about that place. The segment that put out the last edge mostly puts
// out the next one too, at the cost of one question instead of a search.
class Reaper {
public:
    explicit Reaper(const Source& source) : source_(source) {}

    // All valid places of an edge are in it. Large insets shrink to little, and few pairs of edges remain to
    // be cut.
    Range liveRange(const Edge& edge) {
        const double length = edge.shape.length(), reach = kMerge * source_.slack;
        const double first = deadLength(edge.shape, length);
        if (first > length + reach) return {};
        const double last = length - deadLength(edge.shape.reversed(), length);
        if (last < first - reach) return {};
        const auto inside = [](double f) { return std::clamp(f, 0.0, 1.0); };
        return {inside((first - reach) / length), inside((last + reach) / length)};
    }

private:
    struct Nearest {
        AcGePoint2d place;
        double distance;
        int segment;
    };

    // From the start of the edge.
    double deadLength(const BulgeSegment& edge, double length) {
        const double all = length + kMerge * source_.slack;
        double dead = 0;
        for (int step = 0; step < kSteps && dead < length; ++step) {
            const BulgeSegment rest = step == 0 ? edge : edge.part(dead / length, 1);
            if (last_ >= 0) {
                const BulgeClosest c = source_.segments[size_t(last_)].closestTo(rest.start);
                const double out = insideDisc(rest, c.point, c.distance);
                if (dead + out > all) return dead + out;
            }
            const Nearest near = nearest(rest, all - dead);
            const double out = insideDisc(rest, near.place, near.distance);
            if (!(out > source_.slack)) break;
            dead += out, last_ = near.segment;
        }
        return dead;
    }

    // What of the source is nearest to the start of the rest; any place that puts out as much as asked for
    // ends the search. Most edges begin where the one before ended.
    Nearest nearest(const BulgeSegment& rest, double enough) {
        const AcGePoint2d& point = rest.start;
        if (isKnown_ && point.x == asked_.x && point.y == asked_.y) return known_;
        Nearest best{point, source_.distance, -1};
        bool isFound = false;
        const auto measure = [&](int i) {
            const BulgeClosest c = source_.segments[size_t(i)].closestTo(point);
            if (c.distance >= best.distance) return c.distance;
            best = {c.point, c.distance, i};
            isFound = insideDisc(rest, c.point, c.distance) > enough;
            return isFound ? 0.0 : c.distance;
        };
        source_.tree.nearest(point, source_.distance, 0, measure);
        if (!isFound) known_ = best, asked_ = point, isKnown_ = true;
        return best;
    }

    double insideDisc(const BulgeSegment& rest, const AcGePoint2d& place, double distance) const {
        if (distance >= source_.distance - source_.slack) return 0;
        return lengthInside(rest, place, source_.distance);
    }

    const Source& source_;
    int last_ = -1;
    AcGePoint2d asked_;
    Nearest known_{{}, 0, -1};
    bool isKnown_ = false;
};

struct Cut {
    double at;
    AcGePoint2d point;
};

struct Cutter {
    const Source& source;
    std::vector<Edge> edges; // the right ones first
    size_t rightCount;
    std::vector<Range> live{};
    std::vector<std::vector<Cut>> cuts{};

    // Of the others only those count that reach a right edge which is left.
    void findLive() {
        live.resize(edges.size());
        Reaper reaper(source);
        std::vector<AcDbExtents2d> boxes;
        for (size_t i = 0; i < rightCount; ++i) {
            live[i] = reaper.liveRange(edges[i]);
            if (!live[i].isEmpty()) boxes.push_back(boxOf(i));
        }
        const BoxTree right(std::move(boxes));
        for (size_t i = rightCount; i < edges.size(); ++i) {
            bool reaches = false;
            right.visitMeeting(edges[i].shape.extents(), [&](int) { return reaches = true, false; });
            if (reaches) live[i] = reaper.liveRange(edges[i]);
        }
    }

    AcDbExtents2d boxOf(size_t i) const {
        AcDbExtents2d box = edges[i].shape.part(live[i].from, live[i].to).extents();
        const AcGeVector2d reach(kMerge * source.slack, kMerge * source.slack);
        return {box.minPoint() - reach, box.maxPoint() + reach};
    }

    void findCuts() {
        std::vector<AcDbExtents2d> boxes;
        std::vector<size_t> which;
        for (size_t i = 0; i < edges.size(); ++i)
            if (!live[i].isEmpty()) boxes.push_back(boxOf(i)), which.push_back(i);
        const BoxTree tree(boxes);
        cuts.resize(rightCount);
        for (size_t k = 0; k < which.size() && which[k] < rightCount; ++k)
            tree.visitMeeting(boxes[k], [&](int other) {
                if (size_t(other) > k) cut(which[k], which[size_t(other)]);
                return true;
            });
    }

    void cut(size_t i, size_t j) {
        for (const BulgeMeeting& m : meetings(edges[i].shape, edges[j].shape, source.slack)) {
            cuts[i].push_back({m.first, m.point});
            if (j < rightCount) cuts[j].push_back({m.second, m.point});
        }
    }

    // The pieces between the cuts; the ends of the edge are cuts, too.
    void addPieces(size_t i, std::vector<Piece>& out) {
        const BulgeSegment& shape = edges[i].shape;
        std::vector<Cut>& own = cuts[i];
        std::sort(own.begin(), own.end(), [](const Cut& p, const Cut& q) { return p.at < q.at; });
        const double merge = kMerge * source.slack;
        Cut before{0, shape.start};
        const auto close = [&](const Cut& next) {
            Piece p{int(i), before.at, next.at, {}};
            p.shape = {before.point, next.point, bulgeOfSweep((next.at - before.at) * shape.sweep())};
            before = next;
            if (p.shape.chord() > 0 && !source.isTooNear(p.shape.midPoint())) out.push_back(p);
        };
        const double length = shape.length();
        for (const Cut& c : own) {
            if ((c.at - before.at) * length <= merge || (1 - c.at) * length <= merge) continue;
            close(c);
        }
        close({1, shape.end});
    }
};

bool isSame(const AcGePoint2d& p, const AcGePoint2d& q, double reach) { return p.distanceTo(q) <= reach; }

// Pieces that lie on one another: of two that run the same way one stays; two that run against each other
// bound nothing, both go.
void dropDoubles(std::vector<Piece>& pieces, double reach) {
    std::vector<AcDbExtents2d> boxes;
    boxes.reserve(pieces.size());
    for (const Piece& p : pieces) {
        const AcGePoint2d middle = p.shape.midPoint();
        boxes.push_back({middle - AcGeVector2d(reach, reach), middle + AcGeVector2d(reach, reach)});
    }
    const BoxTree tree(boxes);
    std::vector<char> gone(pieces.size());
    for (size_t i = 0; i < pieces.size(); ++i)
        tree.visitMeeting(boxes[i], [&](int found) {
            const size_t j = size_t(found);
            const BulgeSegment &a = pieces[i].shape, &b = pieces[j].shape;
            if (j <= i || gone[i] || gone[j] || !isSame(a.midPoint(), b.midPoint(), reach)) return true;
            if (isSame(a.start, b.start, reach) && isSame(a.end, b.end, reach)) gone[j] = 1;
            if (isSame(a.start, b.end, reach) && isSame(a.end, b.start, reach)) gone[i] = gone[j] = 1;
            return true;
        });
    size_t kept = 0;
    for (size_t i = 0; i < pieces.size(); ++i)
        if (!gone[i]) pieces[kept++] = pieces[i];
    pieces.resize(kept);
}

} // namespace

std::vector<Piece> validPieces(const Source& source, const std::vector<Edge>& right) {
    Cutter cutter{source, right, right.size()};
    const std::vector<Edge> others = otherEdges(source);
    cutter.edges.insert(cutter.edges.end(), others.begin(), others.end());
    cutter.findLive();
    cutter.findCuts();
    std::vector<Piece> pieces;
    for (size_t i = 0; i < right.size(); ++i)
        if (!cutter.live[i].isEmpty()) cutter.addPieces(i, pieces);
    dropDoubles(pieces, 4 * kMerge * source.slack);
    return pieces;
}

} // namespace host::ge::offsetting
