// How curves are drawn, and their snap points.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/ent/curve.h"
#include "host/ent/polyline.h"
#include "host/ent/polyline2d.h"
#include "host/ge/curves/sampling.h"
#include "host/gi/draw.h"

namespace {

void drawConic(const host::ge::EllipticArc& arc, AcGiWorldGeometry& to) {
    if (arc.isCircular() && arc.isClosed()) {
        to.circle(arc.center, arc.majorRadius(), arc.normal);
        return;
    }
    to.ellipArc({arc.center, arc.majorAxis, arc.minorAxis(), arc.start, arc.end});
}

void drawPoints(const std::vector<AcGePoint3d>& points, bool closed, AcGiWorldGeometry& to) {
    if (points.empty()) return;
    if (!closed) {
        to.polyline(Adesk::UInt32(points.size()), points.data());
        return;
    }
    std::vector<AcGePoint3d> round(points);
    round.push_back(points.front());
    to.polyline(Adesk::UInt32(round.size()), round.data());
}

void drawNurbs(const host::ge::Nurbs& curve, AcGiWorldDraw& context) {
    host::ge::Flattening how;
    how.chordTolerance = context.deviation(kAcGiMaxDevForCurve, curve.startPoint());
    if (!(how.chordTolerance > 0)) how.chordTolerance = 1e-4 * curve.size();
    std::vector<AcGePoint3d> points;
    for (const host::ge::FlatPoint& p : host::ge::flatten(curve, how)) points.push_back(p.point);
    drawPoints(points, false, context.geometry());
}

void drawChain(const host::PlaneChain& chain, AcGiWorldGeometry& to) {
    std::vector<host::PlineVertex> vertices;
    vertices.reserve(chain.vertices.size());
    for (const auto& v : chain.vertices) vertices.push_back({v.point, v.bulge, 0, 0});
    to.pline({vertices, chain.closed, false, chain.elevation, chain.normal});
}

} // namespace

// Drawing asks once, so the path isn't kept.
Adesk::Boolean AcDbCurve::subWorldDraw(AcGiWorldDraw* context) const {
    const host::CurvePath path = makePath();
    if (path.isEmpty()) return true;
    AcGiWorldGeometry& to = context->geometry();
    if (const auto* space = path.asSpaceChain())
        drawPoints(space->points, space->closed, to);
    else if (const auto* plane = path.asPlaneChain())
        drawChain(*plane, to);
    else if (const auto* conic = path.asConic())
        drawConic(*conic, to);
    else
        drawNurbs(*path.asNurbs(), *context);
    return true;
}

namespace {
std::vector<host::PlineVertex> shown(const std::vector<AcDbPolyline::Vertex>& vertices) {
    std::vector<host::PlineVertex> out;
    out.reserve(vertices.size());
    for (const auto& v : vertices) out.push_back({v.point, v.bulge, v.startWidth, v.endWidth});
    return out;
}
} // namespace

Adesk::Boolean AcDbPolyline::subWorldDraw(AcGiWorldDraw* context) const {
    std::vector<host::PlineVertex> vertices = shown(vertices_);
    if (!ownWidths_)
        for (auto& v : vertices) v.startWidth = v.endWidth = constantWidth_;
    if (thickness_ != 0) context->subEntityTraits().setThickness(thickness_);
    if (!vertices.empty()) context->geometry().pline({vertices, closed_, plinegen_, elevation_, normal_});
    return true;
}

Adesk::Boolean AcDb2dPolyline::subWorldDraw(AcGiWorldDraw* context) const {
    const std::vector<host::PlineVertex> vertices = shown(drawnVertices());
    if (thickness_ != 0) context->subEntityTraits().setThickness(thickness_);
    if (!vertices.empty())
        context->geometry().pline({vertices, closed_, isLinetypeGenerationOn(), elevation_, normal_});
    return true;
}

// -- snap points --------------------------------------------------------------------------------------

namespace {

using host::PathPiece;

void snapEnds(const host::CurvePath& path, AcGePoint3dArray& points) {
    if (path.asConic() && path.isClosed()) return;
    const int count = path.pieceCount();
    if (path.asNurbs() || path.asConic() || count == 1) {
        points.append(path.pointAt(path.startParam()));
        points.append(path.pointAt(path.endParam()));
        return;
    }
    for (int i = 0; i <= count; ++i) {
        if (i == count && path.isClosed()) break;
        points.append(path.pointAt(path.startParam() + i));
    }
}

void snapMiddles(const host::CurvePath& path, AcGePoint3dArray& points) {
    if (path.asConic() && path.isClosed()) return;
    double from = 0;
    for (int i = 0; i < path.pieceCount(); ++i) {
        const bool whole = path.pieceCount() == 1;
        const double to = whole ? path.length() : path.lengthAt(path.startParam() + i + 1);
        points.append(path.pointAt(path.paramAtLength(0.5 * (from + to))));
        from = to;
    }
}

template <class Visit> void eachArc(const host::CurvePath& path, Visit visit) {
    for (int i = 0; i < path.pieceCount(); ++i) {
        const PathPiece piece = path.piece(i);
        if (const auto* arc = std::get_if<host::ge::EllipticArc>(&piece)) visit(*arc);
    }
}

void snapQuadrants(const host::CurvePath& path, AcGePoint3dArray& points) {
    eachArc(path, [&](const host::ge::EllipticArc& arc) {
        // Of circles seen from the axes of their plane, of ellipses seen from their own.
        const double zero =
            arc.isCircular() ? -arc.normal.perpVector().angleTo(arc.majorAxis, arc.normal) : 0;
        for (int quarter = 0; quarter < 4; ++quarter) {
            const double u = zero + quarter * std::numbers::pi / 2, inside = arc.paramInRange(u);
            if (arc.point(inside).distanceTo(arc.point(u)) <= 1e-9 * arc.majorRadius())
                points.append(arc.point(u));
        }
    });
}

// Feet of perpendiculars on each piece's line or circle, the curve's own nearest point else.
void snapPerpendicular(const host::CurvePath& path, const AcGePoint3d& last, AcGePoint3dArray& points) {
    for (int i = 0; i < path.pieceCount(); ++i) {
        const PathPiece piece = path.piece(i);
        if (const auto* line = std::get_if<AcGeLineSeg3d>(&piece)) {
            if (line->length() > 0) points.append(line->getLine().closestPointTo(last));
        } else if (const auto* arc = std::get_if<host::ge::EllipticArc>(&piece)) {
            host::ge::EllipticArc whole = *arc;
            whole.start = 0, whole.end = 2 * std::numbers::pi;
            if (arc->majorRadius() > 0) points.append(whole.closestTo(last).point);
        } else {
            points.append(path.closestTo(last).point);
        }
    }
}

// On circles: where a line from `last` touches.
void snapTangent(const host::CurvePath& path, const AcGePoint3d& last, AcGePoint3dArray& points) {
    eachArc(path, [&](const host::ge::EllipticArc& arc) {
        if (!arc.isCircular()) return;
        const AcGeVector3d out = (last - arc.center).orthoProject(arc.normal);
        const double distance = out.length(), radius = arc.majorRadius();
        if (!(distance > radius) || !(radius > 0)) return;
        const double turn = std::acos(radius / distance);
        for (double sense : {-1.0, 1.0}) {
            AcGeVector3d spoke = out * (radius / distance);
            points.append(arc.center + spoke.rotateBy(sense * turn, arc.normal));
        }
    });
}

} // namespace

Acad::ErrorStatus AcDbCurve::subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                               const AcGePoint3d& last, AcGePoint3dArray& points) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eOk;
    switch (mode) {
    case AcDb::kOsModeEnd: snapEnds(*p, points); break;
    case AcDb::kOsModeMid: snapMiddles(*p, points); break;
    case AcDb::kOsModeCen:
        eachArc(*p, [&](const host::ge::EllipticArc& arc) { points.append(arc.center); });
        break;
    case AcDb::kOsModeQuad: snapQuadrants(*p, points); break;
    case AcDb::kOsModePerp: snapPerpendicular(*p, last, points); break;
    case AcDb::kOsModeTan: snapTangent(*p, last, points); break;
    case AcDb::kOsModeNear: points.append(p->closestTo(pick).point); break;
    default: break;
    }
    return Acad::eOk;
}
