// Parallel curves: lines, circles and arcs by themselves, chains by the offsets of polylines, ellipses and
// plane splines by curve_offset_fit.h.
#include <algorithm>
#include <cmath>

#include "host/ent/curve_make.h"
#include "host/ent/curve_offset_fit.h"
#include "host/ent/filing.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/ge/curves/offset.h"

namespace {

using Made = std::vector<std::unique_ptr<AcDbCurve>>;

std::unique_ptr<AcDbCurve> offsetLine(const host::CurvePath& path, const AcGeVector3d& normal,
                                      double distance) {
    const AcGePoint3d start = path.pointAt(path.startParam()), end = path.pointAt(path.endParam());
    AcGeVector3d right = (end - start).crossProduct(normal);
    if (!(right.length() > 1e-12 * start.distanceTo(end))) right = (end - start).perpVector();
    if (!(right.length() > 0)) return nullptr;
    right *= distance / right.length();
    return host::makeCurve(host::CurvePath::line(start + right, end + right));
}

std::unique_ptr<AcDbCurve> offsetCircle(host::ge::EllipticArc arc, double distance) {
    const double radius = arc.majorRadius() + distance;
    if (!(radius > 1e-12 * arc.majorRadius()) || !(arc.majorRadius() > 0)) return nullptr;
    arc.majorAxis *= radius / arc.majorRadius();
    return host::makeConic(arc);
}

Made offsetChain(const host::PlaneChain& chain, double distance) {
    Made out;
    for (auto& one : host::ge::offsetPolyline(chain.vertices, chain.closed, distance))
        out.push_back(host::makeCurve(host::CurvePath::chain(
            host::PlaneChain{std::move(one.vertices), one.closed, chain.normal, chain.elevation})));
    return out;
}

// Chains of space that lie in a plane: as there, and back.
Made offsetSpaceChain(const host::SpaceChain& chain, const AcGeVector3d& normal, double distance) {
    host::PlaneChain plane{{}, chain.closed, normal, 0};
    plane.elevation = (AcGeMatrix3d::worldToPlane(normal) * chain.points[0]).z;
    for (const AcGePoint3d& p : chain.points) plane.vertices.push_back({plane.toPlane(p), 0});
    Made out;
    for (const auto& one : host::ge::offsetPolyline(plane.vertices, plane.closed, distance)) {
        // Arcs about corners, which only spikes have left, become their chords.
        host::SpaceChain made{{}, one.closed};
        for (const auto& v : one.vertices) made.points.push_back(plane.toWorld(v.point));
        out.push_back(host::makeCurve(host::CurvePath::chain(std::move(made))));
    }
    return out;
}

Made offsetsOf(const host::CurvePath& path, const AcGeVector3d& normal, double distance) {
    if (const auto* chain = path.asPlaneChain()) return offsetChain(*chain, distance);
    Made out;
    const auto* conic = path.asConic();
    if (path.isLine()) {
        out.push_back(offsetLine(path, normal, distance));
    } else if (const auto* chain = path.asSpaceChain()) {
        return offsetSpaceChain(*chain, normal, distance);
    } else if (conic && conic->isCircular()) {
        out.push_back(offsetCircle(*conic, distance));
    } else {
        for (auto& curve : host::fitParallels(path, normal, distance))
            out.push_back(host::makeCurve(host::CurvePath::spline(std::move(curve))));
    }
    return out;
}

// Gives the curves their source's look, and to the caller. Parallels keep a polyline's constant width.
Acad::ErrorStatus handOver(const AcDbCurve& source, Made made, AcDbVoidPtrArray& curves) {
    std::erase(made, nullptr);
    if (made.empty()) return Acad::eInvalidInput;
    const auto* polyline = AcDbPolyline::cast(&source);
    double width = 0;
    if (polyline) polyline->getConstantWidth(width);
    for (auto& curve : made) {
        curve->setPropertiesFrom(&source);
        if (auto* own = AcDbPolyline::cast(curve.get()); own && polyline) {
            own->setConstantWidth(width), own->setThickness(polyline->thickness());
            own->setPlinegen(polyline->hasPlinegen());
        }
        curves.append(curve.release());
    }
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus AcDbCurve::getOffsetCurves(double distance, AcDbVoidPtrArray& curves) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    if (const auto* line = AcDbLine::cast(this)) {
        normal = line->normal();
    } else {
        const host::ge::Planarity plane = p->planarity();
        if (!plane.isPlanar) return Acad::eNonPlanarEntity;
        if (!plane.isLinear) normal = plane.normal;
        // Splines and 3D polylines in a plane of the drawing are seen from above, whichever way they turn.
        if ((p->asNurbs() || p->asSpaceChain()) && normal.z < -1e-9) normal = -normal;
    }
    if (!std::isfinite(distance) || distance == 0) return Acad::eInvalidInput;
    return handOver(*this, offsetsOf(*p, normal, distance), curves);
}

Acad::ErrorStatus AcDbCurve::getOffsetCurvesGivenPlaneNormal(const AcGeVector3d& normal, double distance,
                                                             AcDbVoidPtrArray& curves) const {
    if (!host::finite(normal) || normal.isZeroLength()) return Acad::eInvalidInput;
    if (!AcDbLine::cast(this)) {
        const auto p = path();
        if (p->isEmpty()) return Acad::eDegenerateGeometry;
        const bool fromBehind = p->planarity().normal.dotProduct(normal) < 0;
        return getOffsetCurves(fromBehind ? -distance : distance, curves);
    }
    if (!std::isfinite(distance) || distance == 0) return Acad::eInvalidInput;
    return handOver(*this, offsetsOf(*path(), normal.normal(), distance), curves);
}
