// Intersections of entities. Pieces are looked at in order of their left sides, so that long polylines
// meet in less than quadratic time.
#include "host/ent/curve_intersect.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "host/ent/blockreference.h"
#include "host/ent/curve.h"
#include "host/ent/ray.h"
#include "host/ge/curves/intersect.h"

namespace host {

namespace {

constexpr double kSamePoint = 1e-9;        // of the smaller curve
constexpr double kCoordinateNoise = 4e-15; // of the largest coordinate

struct Part {
    PathPiece piece;
    int index = 0;
    int side = 0; // of its path: -1 before the start, 1 beyond the end
    AcDbExtents box;
};
struct Hit {
    double at = 0;
    AcGePoint3d point;
};

AcDbExtents boxOf(const PathPiece& piece) {
    AcDbExtents box;
    if (const auto* line = std::get_if<AcGeLineSeg3d>(&piece)) {
        box.addPoint(line->startPoint());
        box.addPoint(line->endPoint());
    } else if (const auto* conic = std::get_if<ge::EllipticArc>(&piece)) {
        box = conic->extents();
    } else {
        for (const AcGePoint3d& pole : std::get<ge::Nurbs>(piece).poles) box.addPoint(pole);
    }
    return box;
}

double diagonal(const AcDbExtents& box) {
    return box.isValid() ? box.minPoint().distanceTo(box.maxPoint()) : 0;
}

// What an end piece of a path goes on as, as far as the box.
PathPiece beyond(const PathPiece& end, bool atStart, const AcDbExtents& box) {
    if (const auto* conic = std::get_if<ge::EllipticArc>(&end)) {
        ge::EllipticArc rest = *conic;
        rest.start = conic->end, rest.end = conic->start + 2 * std::numbers::pi;
        return rest;
    }
    const auto& line = std::get<AcGeLineSeg3d>(end);
    const AcGePoint3d from = atStart ? line.startPoint() : line.endPoint();
    const double reach = box.isValid() ? from.distanceTo(box.minPoint()) + diagonal(box) : 0;
    const AcGeVector3d far = line.direction() * reach;
    if (atStart) return AcGeLineSeg3d(from - far, from);
    return AcGeLineSeg3d(from, from + far);
}

bool hasLength(const PathPiece& piece) {
    if (const auto* line = std::get_if<AcGeLineSeg3d>(&piece)) return line->length() > 0;
    if (const auto* conic = std::get_if<ge::EllipticArc>(&piece)) return conic->majorRadius() > 0;
    return true;
}

bool goesOn(const CurvePath& path, bool extended) { return extended && !path.isClosed() && !path.asNurbs(); }

// The path's pieces; extended, also what its outermost pieces with a length go on as to reach the box.
std::vector<Part> partsOf(const CurvePath& path, bool extended, const AcDbExtents& box) {
    std::vector<Part> out;
    out.reserve(size_t(path.pieceCount()) + 2);
    const auto add = [&](PathPiece piece, int index, int side) {
        if (hasLength(piece)) out.push_back({piece, index, side, boxOf(piece)});
    };
    for (int i = 0; i < path.pieceCount(); ++i) add(path.piece(i), i, 0);
    if (out.empty() || !goesOn(path, extended)) return out;
    const Part first = out.front(), last = out.back();
    add(beyond(first.piece, true, box), first.index, -1);
    // The rest of a lone arc's circle is beyond both its ends at once.
    if (!path.asConic()) add(beyond(last.piece, false, box), last.index, 1);
    return out;
}

ge::Intersections swapped(ge::Intersections found) {
    for (auto& c : found.points) std::swap(c.first, c.second);
    for (auto& s : found.shared) {
        std::swap(s.firstFrom, s.secondFrom), std::swap(s.firstTo, s.secondTo);
        if (s.firstFrom > s.firstTo) std::swap(s.firstFrom, s.firstTo), std::swap(s.secondFrom, s.secondTo);
    }
    return found;
}

struct Meet {
    double slack;
    template <class A, class B> ge::Intersections operator()(const A& a, const B& b) const {
        if constexpr (requires { ge::intersect(a, b, slack); })
            return ge::intersect(a, b, slack);
        else
            return swapped(ge::intersect(b, a, slack));
    }
};

AcGePoint3d pointOf(const PathPiece& piece, double own) {
    if (const auto* line = std::get_if<AcGeLineSeg3d>(&piece)) return line->evalPoint(own);
    if (const auto* conic = std::get_if<ge::EllipticArc>(&piece)) return conic->point(own);
    return std::get<ge::Nurbs>(piece).point(own);
}

// Where hits beyond the ends stand in the order: by their distance from the end.
double orderOf(const CurvePath& path, const Part& part, double own, const AcGePoint3d& point) {
    if (part.side == 0) return path.paramOfPiece(part.index, own);
    if (part.side < 0) return path.startParam() - point.distanceTo(path.pointAt(path.startParam()));
    return path.endParam() + point.distanceTo(path.pointAt(path.endParam()));
}

bool apart(const AcDbExtents& a, const AcDbExtents& b, double slack) {
    for (unsigned axis = 0; axis < 3; ++axis)
        if (a.minPoint()[axis] > b.maxPoint()[axis] + slack ||
            b.minPoint()[axis] > a.maxPoint()[axis] + slack)
            return true;
    return false;
}

// The share of a line that runs through a box.
struct Share {
    double from = 0, to = 1;
    bool isEmpty() const { return !(from <= to); }
    // Of the whole, at a parameter of the share.
    double at(double param) const { return from + (to - from) * param; }
};
Share shareInside(const AcGeLineSeg3d& line, const AcDbExtents& box, double slack) {
    Share out;
    const AcGePoint3d start = line.startPoint();
    const AcGeVector3d along = line.endPoint() - start;
    for (unsigned axis = 0; axis < 3; ++axis) {
        const double low = box.minPoint()[axis] - slack - start[axis],
                     high = box.maxPoint()[axis] + slack - start[axis];
        if (along[axis] == 0) {
            if (low > 0 || high < 0) return {1, 0};
            continue;
        }
        const auto [in, past] = std::minmax({low / along[axis], high / along[axis]});
        out.from = std::max(out.from, in), out.to = std::min(out.to, past);
    }
    return out;
}

// Of a line no more than passes the other piece: beside a long line a small curve would be a mere point.
struct Passing {
    PathPiece piece;
    Share share;
};
Passing passing(const Part& part, const Part& other, double slack) {
    const auto* line = std::get_if<AcGeLineSeg3d>(&part.piece);
    if (!line || std::holds_alternative<AcGeLineSeg3d>(other.piece)) return {part.piece, {}};
    const Share share = shareInside(*line, other.box, slack + 0.1 * diagonal(other.box));
    return {AcGeLineSeg3d(line->evalPoint(share.from), line->evalPoint(share.to)), share};
}

void meet(const CurvePath& first, const Part& a, const Part& b, double slack, std::vector<Hit>& hits) {
    const Passing ours = passing(a, b, slack), theirs = passing(b, a, slack);
    if (ours.share.isEmpty() || theirs.share.isEmpty()) return;
    const ge::Intersections found = std::visit(Meet{slack}, ours.piece, theirs.piece);
    // The smaller piece's parameters tell the place with more digits.
    const bool isOurs = diagonal(a.box) <= diagonal(b.box);
    const auto add = [&](double ownParam, double theirParam) {
        const double own = ours.share.at(ownParam);
        const AcGePoint3d point =
            isOurs ? pointOf(a.piece, own) : pointOf(b.piece, theirs.share.at(theirParam));
        hits.push_back({orderOf(first, a, own, point), point});
    };
    for (const auto& crossing : found.points) add(crossing.first, crossing.second);
    for (const auto& stretch : found.shared)
        add(stretch.firstFrom, stretch.secondFrom), add(stretch.firstTo, stretch.secondTo);
}

} // namespace

namespace {

// With the whole circles that the end pieces go on as.
AcDbExtents reachOf(const CurvePath& path, bool extended) {
    AcDbExtents box = path.extents();
    if (!goesOn(path, extended)) return box;
    for (int index : {0, path.pieceCount() - 1}) {
        const PathPiece end = path.piece(index);
        if (const auto* conic = std::get_if<ge::EllipticArc>(&end))
            if (conic->majorRadius() > 0) box.addExt(boxOf(beyond(end, true, {})));
    }
    return box;
}

bool isRay(const Part& part) { return part.side != 0 && std::holds_alternative<AcGeLineSeg3d>(part.piece); }

AcGeRay3d rayOf(const Part& part) {
    const auto& line = std::get<AcGeLineSeg3d>(part.piece);
    if (part.side < 0) return {line.endPoint(), line.startPoint() - line.endPoint()};
    return {line.startPoint(), line.endPoint() - line.startPoint()};
}

// Two straight ends that both go on may meet however far away.
void meetRays(const CurvePath& first, const std::vector<Part>& as, const std::vector<Part>& bs, double slack,
              std::vector<Hit>& hits) {
    const AcGeTol tolerance = AcGeTol().setEqualPoint(slack);
    for (const Part& a : as) {
        if (!isRay(a)) continue;
        for (const Part& b : bs) {
            AcGePoint3d point;
            if (isRay(b) && rayOf(a).intersectWith(rayOf(b), point, tolerance))
                hits.push_back({orderOf(first, a, 0, point), point});
        }
    }
}

// In order of the first path; what lies on another hit is the same: corners are met by both their pieces,
// seams by both ends.
std::vector<AcGePoint3d> distinct(std::vector<Hit> hits, double slack) {
    std::stable_sort(hits.begin(), hits.end(), [](const Hit& p, const Hit& q) { return p.at < q.at; });
    std::vector<size_t> byX(hits.size());
    std::iota(byX.begin(), byX.end(), size_t{0});
    const auto x = [&](size_t i) { return hits[i].point.x; };
    std::sort(byX.begin(), byX.end(), [&](size_t i, size_t j) { return x(i) != x(j) ? x(i) < x(j) : i < j; });
    std::vector<char> kept(hits.size());
    std::vector<AcGePoint3d> out;
    for (size_t i = 0; i < hits.size(); ++i) {
        auto at = std::lower_bound(byX.begin(), byX.end(), x(i) - slack,
                                   [&](size_t j, double value) { return x(j) < value; });
        bool again = false;
        for (; at != byX.end() && x(*at) <= x(i) + slack && !again; ++at)
            again = kept[*at] && hits[*at].point.distanceTo(hits[i].point) <= slack;
        if (again) continue;
        kept[i] = 1;
        out.push_back(hits[i].point);
    }
    return out;
}

// How near paths come where they meet: what the smaller of them would call one place, and what coordinates
// so far from the origin can tell.
double slackOf(const CurvePath& first, const CurvePath& second) {
    double farthest = 0;
    for (const AcDbExtents& box : {first.extents(), second.extents()})
        for (unsigned axis = 0; axis < 3; ++axis)
            farthest = std::max({farthest, std::fabs(box.minPoint()[axis]), std::fabs(box.maxPoint()[axis])});
    return kSamePoint * std::min(first.size(), second.size()) + kCoordinateNoise * farthest;
}

void meetAll(const CurvePath& first, const std::vector<Part>& as, std::vector<Part> bs, double slack,
             std::vector<Hit>& hits) {
    std::sort(bs.begin(), bs.end(),
              [](const Part& p, const Part& q) { return p.box.minPoint().x < q.box.minPoint().x; });
    // The widest of them tells how far left of a box a piece may begin that still reaches it.
    double widest = 0;
    for (const Part& b : bs) widest = std::max(widest, b.box.maxPoint().x - b.box.minPoint().x);
    for (const Part& a : as) {
        auto b = std::lower_bound(bs.begin(), bs.end(), a.box.minPoint().x - widest - slack,
                                  [](const Part& p, double x) { return p.box.minPoint().x < x; });
        for (; b != bs.end() && b->box.minPoint().x <= a.box.maxPoint().x + slack; ++b)
            if (!apart(a.box, b->box, slack) && !(isRay(a) && isRay(*b))) meet(first, a, *b, slack, hits);
    }
}

} // namespace

void intersectPaths(const CurvePath& first, const CurvePath& second, AcDb::Intersect extension,
                    std::vector<AcGePoint3d>& points) {
    if (first.isEmpty() || second.isEmpty()) return;
    const bool extendFirst = extension & AcDb::kExtendThis, extendSecond = extension & AcDb::kExtendArg;
    const AcDbExtents reachA = reachOf(first, extendFirst), reachB = reachOf(second, extendSecond);
    const double slack = slackOf(first, second);
    const auto as = partsOf(first, extendFirst, reachB), bs = partsOf(second, extendSecond, reachA);
    std::vector<Hit> hits;
    meetAll(first, as, bs, slack, hits);
    if (extendFirst && extendSecond) {
        const double far = std::max(slack, kSamePoint * std::max(first.size(), second.size()));
        meetRays(first, as, bs, far, hits);
    }
    const std::vector<AcGePoint3d> found = distinct(std::move(hits), 2 * slack);
    points.insert(points.end(), found.begin(), found.end());
}

namespace {

using Paths = std::vector<std::shared_ptr<const CurvePath>>;

// False when the entity is no curve and not made of parts that are.
bool gatherPaths(const AcDbEntity& entity, Paths& paths, int depth) {
    if (const auto* curve = AcDbCurve::cast(&entity)) return paths.push_back(curve->path()), true;
    if (!AcDbBlockReference::cast(&entity) || depth > 16) return false;
    AcDbVoidPtrArray parts;
    if (entity.explode(parts) != Acad::eOk) return false;
    for (void* part : parts) {
        const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
        gatherPaths(*owned, paths, depth + 1);
    }
    return true;
}

} // namespace

Acad::ErrorStatus intersectEntities(const AcDbEntity& first, const AcDbEntity& second,
                                    AcDb::Intersect extension, const AcGePlane* plane,
                                    AcGePoint3dArray& points) {
    if (dynamic_cast<const EndlessCurve*>(&second)) return Acad::eNotImplementedYet; // asks the other way
    Paths as, bs;
    if (!gatherPaths(first, as, 0) || !gatherPaths(second, bs, 0)) return Acad::eNotImplementedYet;
    if (plane) {
        const AcGeMatrix3d flat = AcGeMatrix3d::projection(*plane, plane->normal());
        for (Paths* paths : {&as, &bs})
            for (auto& path : *paths) path = std::make_shared<const CurvePath>(path->transformed(flat));
    }
    for (const auto& a : as)
        for (const auto& b : bs) intersectPaths(*a, *b, extension, points.items());
    return Acad::eOk;
}

} // namespace host

Acad::ErrorStatus AcDbCurve::subIntersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                              const AcGePlane* plane, AcGePoint3dArray& points) const {
    return host::intersectEntities(*this, *other, extension, plane, points);
}
