// Paths of curves: closest points, boxes, planes, areas, B-splines and images.
#include <algorithm>
#include <cmath>

#include "host/ent/curve_path.h"
#include "host/ent/filing.h"
#include "host/ge/curves/nurbs_make.h"
#include "host/ge/tolerances.h"

namespace host {

namespace {

// Conics flatter than this are seen edge-on.
constexpr double kEdgeOn = 1e-9;

PathClosest from(const ge::NurbsClosest& c) { return {c.point, c.param, c.distance}; }

// Everything on a segment keeps this near to the middle of its chord.
double reachOf(const ge::BulgeSegment& s) { return std::max(0.5 * s.chord(), std::fabs(s.sagitta())); }

bool isFartherThan(const ge::BulgeSegment& s, const AcGePoint2d& point, double best) {
    const AcGePoint2d middle = s.start + (s.end - s.start) * 0.5;
    return point.distanceTo(middle) - reachOf(s) > best;
}

} // namespace

// -- closest points -----------------------------------------------------------------------------------

PathClosest CurvePath::closestOnChain(const PlaneChain& chain, const AcGePoint3d& point) const {
    const AcGePoint2d foot = chain.toPlane(point);
    ge::BulgeClosest best;
    int bestPiece = 0;
    best.distance = 1e300;
    for (int i = 0; i < pieces_; ++i) {
        const ge::BulgeSegment s = segment(i);
        if (isFartherThan(s, foot, best.distance)) continue;
        const ge::BulgeClosest c = s.closestTo(foot);
        if (c.distance < best.distance) best = c, bestPiece = i;
    }
    const AcGePoint3d onCurve = chain.toWorld(best.point);
    return {onCurve, std::min(start_ + bestPiece + best.fraction, end_), onCurve.distanceTo(point)};
}

PathClosest CurvePath::closestOnChain(const SpaceChain&, const AcGePoint3d& point) const {
    PathClosest best;
    best.distance = 1e300;
    for (int i = 0; i < pieces_; ++i) {
        const AcGeLineSeg3d line = straight(i);
        const double t = line.paramOf(point);
        const AcGePoint3d p = line.evalPoint(t);
        const double distance = p.distanceTo(point);
        if (distance < best.distance) best = {p, std::min(start_ + paramStep() * (i + t), end_), distance};
    }
    return best;
}

PathClosest CurvePath::closestTo(const AcGePoint3d& point) const {
    if (const auto* conic = asConic()) {
        const ge::ConicClosest c = conic->closestTo(point);
        return {c.point, c.param, c.distance};
    }
    if (const auto* nurbs = asNurbs()) {
        if (!finder_) finder_ = std::make_shared<ge::ClosestPointFinder>(*nurbs);
        return from(finder_->closestTo(point));
    }
    if (const auto* plane = asPlaneChain()) return closestOnChain(*plane, point);
    return closestOnChain(*asSpaceChain(), point);
}

PathClosest CurvePath::closestAlong(const AcGePoint3d& point, const AcGeVector3d& direction) const {
    const AcGeMatrix3d flat = AcGeMatrix3d::projection(AcGePlane(point, direction), direction);
    PathClosest best;
    best.distance = 1e300;
    const auto offer = [&](int index, double own, const AcGePoint3d& onCurve) {
        const double distance = (flat * onCurve).distanceTo(point);
        if (distance < best.distance) best = {onCurve, paramOfPiece(index, own), distance};
    };
    for (int i = 0; i < pieces_; ++i) {
        const PathPiece any = piece(i);
        if (const auto* line = std::get_if<AcGeLineSeg3d>(&any)) {
            const double t = AcGeLineSeg3d(flat * line->startPoint(), flat * line->endPoint()).paramOf(point);
            offer(i, t, line->evalPoint(t));
            continue;
        }
        // Images of B-splines keep their parameters, so the curve's own point is at the image's parameter.
        const auto* conic = std::get_if<ge::EllipticArc>(&any);
        const ge::Nurbs curve = conic ? ge::conicNurbs(*conic) : std::get<ge::Nurbs>(any);
        const double t = ge::closestPoint(ge::transformed(curve, flat), point).param;
        const AcGePoint3d onCurve = curve.point(t);
        offer(i, conic ? conic->closestTo(onCurve).param : t, onCurve);
    }
    return best;
}

// -- boxes, planes, areas -----------------------------------------------------------------------------

// Arcs whose disc the vertices' box holds already can't make it larger.
AcDbExtents CurvePath::chainExtents(const PlaneChain& chain) const {
    AcDbExtents box;
    for (const ge::BulgeVertex& v : chain.vertices) box.addPoint(chain.toWorld(v.point));
    const AcGeVector3d& n = chain.normal;
    const AcGeVector3d share(std::sqrt(std::max(0.0, 1 - n.x * n.x)), std::sqrt(std::max(0.0, 1 - n.y * n.y)),
                             std::sqrt(std::max(0.0, 1 - n.z * n.z)));
    const auto holds = [&](const AcGePoint3d& middle, double reach) {
        for (unsigned axis = 0; axis < 3; ++axis)
            if (middle[axis] - reach * share[axis] < box.minPoint()[axis] ||
                middle[axis] + reach * share[axis] > box.maxPoint()[axis])
                return false;
        return true;
    };
    for (int i = 0; i < pieces_; ++i) {
        const ge::BulgeSegment s = segment(i);
        if (s.isStraight() || holds(chain.toWorld(s.start + (s.end - s.start) * 0.5), reachOf(s))) continue;
        const PathPiece any = piece(i);
        if (const auto* arc = std::get_if<ge::EllipticArc>(&any)) box.addExt(arc->extents());
    }
    return box;
}

AcDbExtents CurvePath::extents() const {
    if (extents_) return *extents_;
    AcDbExtents box;
    if (const auto* conic = asConic()) {
        box = conic->extents();
    } else if (const auto* nurbs = asNurbs()) {
        box = ge::tightExtents(*nurbs);
    } else if (const auto* space = asSpaceChain()) {
        for (const AcGePoint3d& p : space->points) box.addPoint(p);
    } else if (const auto* plane = asPlaneChain()) {
        box = chainExtents(*plane);
    }
    extents_ = box;
    return box;
}

double CurvePath::size() const {
    const AcDbExtents box = extents();
    return box.isValid() ? box.minPoint().distanceTo(box.maxPoint()) : 0;
}

ge::Planarity CurvePath::planarity() const {
    if (const auto* conic = asConic()) return {true, false, conic->center, conic->normal};
    if (const auto* nurbs = asNurbs()) return ge::planarity(*nurbs);
    if (const auto* plane = asPlaneChain())
        return {true, false, plane->toWorld(AcGePoint2d()), plane->normal};
    const auto* space = asSpaceChain();
    return space ? ge::planarity(space->points) : ge::Planarity();
}

AcGeVector3d CurvePath::areaVector() const {
    if (const auto* nurbs = asNurbs()) return ge::areaVector(*nurbs);
    if (const auto* conic = asConic()) return conic->normal * conic->area();
    if (const auto* plane = asPlaneChain()) return plane->normal * ge::polylineArea(plane->vertices);
    const auto& points = std::get<SpaceChain>(form_).points;
    AcGeVector3d sum;
    for (size_t i = 1; i + 1 < points.size(); ++i)
        sum += (points[i] - points[0]).crossProduct(points[i + 1] - points[0]) * 0.5;
    return sum;
}

ge::Nurbs CurvePath::nurbs() const {
    if (const auto* nurbs = asNurbs()) return *nurbs;
    if (const auto* conic = asConic()) return conic->majorRadius() > 0 ? ge::conicNurbs(*conic) : ge::Nurbs();
    if (const auto* plane = asPlaneChain())
        return ge::polylineNurbs(plane->vertices, plane->closed, plane->matrix());
    const auto* space = asSpaceChain();
    if (!space) return {};
    if (!isLine_) return ge::polylineNurbs(space->points, space->closed);
    if (!(end_ > 0)) return {};
    return ge::onDomain(ge::lineNurbs(space->points[0], space->points[1]), 0, end_);
}

// -- images -------------------------------------------------------------------------------------------

namespace {

// The stretch that a conic seen edge-on covers.
CurvePath edgeOn(const ge::EllipticArc& arc) {
    AcGePoint3d low = arc.startPoint(), high = low;
    double least = 0, most = 0;
    const auto offer = [&](double u) {
        const double at = (arc.point(u) - arc.startPoint()).dotProduct(arc.majorAxis);
        if (at < least) least = at, low = arc.point(u);
        if (at > most) most = at, high = arc.point(u);
    };
    for (double u : {arc.end, arc.paramInRange(0), arc.paramInRange(std::numbers::pi)}) offer(u);
    return CurvePath::line(low, high);
}

std::optional<PlaneChain> image(const PlaneChain& chain, const AcGeMatrix3d& m) {
    PlaneChain out;
    out.closed = chain.closed, out.normal = chain.normal, out.elevation = chain.elevation;
    AcGeVector3d x = chain.toWorld(AcGeVector2d(1, 0)), y = chain.toWorld(AcGeVector2d(0, 1));
    x = m * x, y = m * y;
    if (!(x.crossProduct(y).length() > kEdgeOn * std::max(x.lengthSqrd(), y.lengthSqrd()))) return {};
    const AcGeMatrix2d local = m.convertToLocal(out.normal, out.elevation);
    const bool hasArcs = std::any_of(chain.vertices.begin(), chain.vertices.end(),
                                     [](const ge::BulgeVertex& v) { return v.bulge != 0; });
    if (hasArcs && !local.isUniScaledOrtho()) return {};
    const double sense = local.det() < 0 ? -1 : 1;
    out.vertices.reserve(chain.vertices.size());
    for (const ge::BulgeVertex& v : chain.vertices)
        out.vertices.push_back({local * v.point, sense * v.bulge});
    return out;
}

} // namespace

CurvePath CurvePath::transformed(const AcGeMatrix3d& m) const {
    if (const auto* nurbs = asNurbs()) return spline(ge::transformed(*nurbs, m));
    if (const auto* conic = asConic()) {
        const ge::EllipticArc arc = ge::transformed(*conic, m);
        return arc.ratio > kEdgeOn ? CurvePath::conic(arc) : edgeOn(arc);
    }
    if (const auto* space = asSpaceChain()) {
        SpaceChain out{{}, space->closed};
        out.points.reserve(space->points.size());
        for (const AcGePoint3d& p : space->points) out.points.push_back(m * p);
        return isLine_ ? line(out.points[0], out.points[1]) : chain(std::move(out));
    }
    const auto* plane = asPlaneChain();
    if (!plane) return {};
    if (auto out = image(*plane, m)) return chain(std::move(*out));
    const bool hasArcs = std::any_of(plane->vertices.begin(), plane->vertices.end(),
                                     [](const ge::BulgeVertex& v) { return v.bulge != 0; });
    if (hasArcs) return spline(ge::transformed(nurbs(), m));
    SpaceChain out{{}, plane->closed};
    for (const ge::BulgeVertex& v : plane->vertices) out.points.push_back(m * plane->toWorld(v.point));
    return chain(std::move(out));
}

} // namespace host
