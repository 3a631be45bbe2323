// Intersections of entities. Pieces are looked at in order of their left sides, so that long polylines
// meet in less than quadratic time.
#include "host/ent/curve_intersect.h"

#include <algorithm>

#include "host/ent/blockreference.h"
#include "host/ent/curve.h"
#include "host/ent/ray.h"
#include "host/ge/curves/intersect.h"

namespace host {

namespace {

constexpr double kSamePoint = 1e-9; // of the larger curve

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

// What the path's end piece goes on as.
PathPiece beyond(const PathPiece& end, bool atStart, double reach) {
    if (const auto* conic = std::get_if<ge::EllipticArc>(&end)) {
        ge::EllipticArc rest = *conic;
        rest.start = conic->end, rest.end = conic->start + 2 * std::numbers::pi;
        return rest;
    }
    const auto& line = std::get<AcGeLineSeg3d>(end);
    const AcGeVector3d far = line.direction() * reach;
    if (atStart) return AcGeLineSeg3d(line.startPoint() - far, line.startPoint());
    return AcGeLineSeg3d(line.endPoint(), line.endPoint() + far);
}

bool hasLength(const PathPiece& piece) {
    if (const auto* line = std::get_if<AcGeLineSeg3d>(&piece)) return line->length() > 0;
    if (const auto* conic = std::get_if<ge::EllipticArc>(&piece)) return conic->majorRadius() > 0;
    return true;
}

bool goesOn(const CurvePath& path, bool extended) { return extended && !path.isClosed() && !path.asNurbs(); }

std::vector<Part> partsOf(const CurvePath& path, bool extended, double reach) {
    std::vector<Part> out;
    out.reserve(size_t(path.pieceCount()) + 2);
    const auto add = [&](PathPiece piece, int index, int side) {
        if (hasLength(piece)) out.push_back({piece, index, side, boxOf(piece)});
    };
    const bool isExtended = goesOn(path, extended);
    const int last = path.pieceCount() - 1;
    if (isExtended && hasLength(path.piece(0))) add(beyond(path.piece(0), true, reach), 0, -1);
    for (int i = 0; i <= last; ++i) add(path.piece(i), i, 0);
    // The rest of a lone arc's circle is beyond both its ends at once.
    const bool alone = last == 0 && path.asConic();
    if (isExtended && !alone && hasLength(path.piece(last)))
        add(beyond(path.piece(last), false, reach), last, 1);
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
    ge::Intersections operator()(const AcGeLineSeg3d& a, const AcGeLineSeg3d& b) const {
        return ge::intersect(a, b);
    }
    ge::Intersections operator()(const AcGeLineSeg3d& a, const ge::EllipticArc& b) const {
        return ge::intersect(a, b);
    }
    ge::Intersections operator()(const AcGeLineSeg3d& a, const ge::Nurbs& b) const {
        return ge::intersect(a, b);
    }
    ge::Intersections operator()(const ge::EllipticArc& a, const ge::EllipticArc& b) const {
        return ge::intersect(a, b);
    }
    ge::Intersections operator()(const ge::EllipticArc& a, const ge::Nurbs& b) const {
        return ge::intersect(a, b);
    }
    ge::Intersections operator()(const ge::Nurbs& a, const ge::Nurbs& b) const { return ge::intersect(a, b); }
    template <class A, class B> ge::Intersections operator()(const A& a, const B& b) const {
        return swapped((*this)(b, a));
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

void meet(const CurvePath& first, const Part& a, const Part& b, std::vector<Hit>& hits) {
    const ge::Intersections found = std::visit(Meet(), a.piece, b.piece);
    const auto add = [&](double own) {
        const AcGePoint3d point = pointOf(a.piece, own);
        hits.push_back({orderOf(first, a, own, point), point});
    };
    for (const auto& crossing : found.points) add(crossing.first);
    for (const auto& stretch : found.shared) add(stretch.firstFrom), add(stretch.firstTo);
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
            if (conic->majorRadius() > 0) box.addExt(boxOf(beyond(end, true, 0)));
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
    for (const Part& a : as)
        for (const Part* b : {&bs.front(), &bs.back()}) {
            AcGePoint3d point;
            if (isRay(a) && isRay(*b) && rayOf(a).intersectWith(rayOf(*b), point, tolerance))
                hits.push_back({orderOf(first, a, 0, point), point});
        }
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
            if (!apart(a.box, b->box, slack) && !(isRay(a) && isRay(*b))) meet(first, a, *b, hits);
    }
}

} // namespace

void intersectPaths(const CurvePath& first, const CurvePath& second, AcDb::Intersect extension,
                    std::vector<AcGePoint3d>& points) {
    if (first.isEmpty() || second.isEmpty()) return;
    const bool extendFirst = extension & AcDb::kExtendThis, extendSecond = extension & AcDb::kExtendArg;
    AcDbExtents both = reachOf(first, extendFirst);
    both.addExt(reachOf(second, extendSecond));
    const double size = diagonal(both), slack = kSamePoint * size;
    const auto as = partsOf(first, extendFirst, 2 * size), bs = partsOf(second, extendSecond, 2 * size);
    if (as.empty() || bs.empty()) return;
    std::vector<Hit> hits;
    meetAll(first, as, bs, slack, hits);
    if (extendFirst && extendSecond) {
        const std::vector<Part> ends{as.front(), as.back()};
        meetRays(first, ends, bs, slack, hits);
    }
    std::stable_sort(hits.begin(), hits.end(), [](const Hit& p, const Hit& q) { return p.at < q.at; });
    std::vector<AcGePoint3d> found;
    for (const Hit& hit : hits) {
        // Corners are met by both their pieces, seams by both ends.
        const bool again = !found.empty() && (found.back().distanceTo(hit.point) <= slack ||
                                              found.front().distanceTo(hit.point) <= slack);
        if (!again) found.push_back(hit.point);
    }
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
