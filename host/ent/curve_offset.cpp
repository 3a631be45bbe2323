// Parallel curves: lines, circles and arcs by themselves, chains by plane_offset.h, ellipses and plane
// splines as splines through samples of the parallel curve.
#include <algorithm>
#include <cmath>

#include "host/ent/curve_make.h"
#include "host/ent/filing.h"
#include "host/ent/line.h"
#include "host/ent/plane_offset.h"
#include "host/ge/curves/interpolate.h"

namespace {

constexpr double kFitError = 1e-6; // of the curve's size, that a fitted parallel may be off
constexpr int kFewest = 16, kMost = 4096;

// A point of the parallel curve; nothing at a cusp.
std::optional<AcGePoint3d> parallelPoint(const host::CurvePath& path, const AcGeVector3d& normal,
                                         double distance, double param) {
    const AcGeVector3d along = path.derivative(param, 1);
    if (!(along.length() > 0)) return {};
    return path.pointAt(param) + along.crossProduct(normal) * (distance / along.length());
}

struct Fit {
    host::ge::Nurbs curve;
    bool isClose = false;
};

Fit fitParallel(const host::CurvePath& path, const AcGeVector3d& normal, double distance, int steps) {
    const double from = path.startParam(), range = path.endParam() - from;
    std::vector<AcGePoint3d> points, between;
    for (int i = 0; i <= 2 * steps; ++i) {
        const auto p = parallelPoint(path, normal, distance, from + range * i / (2 * steps));
        if (!p) return {};
        (i % 2 ? between : points).push_back(*p);
    }
    host::ge::FitOptions options;
    // A parallel through the evolute turns back; its tangent then runs against the curve's.
    const auto tangent = [&](double a, double b) {
        return *parallelPoint(path, normal, distance, b) - *parallelPoint(path, normal, distance, a);
    };
    const double h = 1e-6 * range;
    options.closed =
        path.isClosed() && path.derivative(from, 1).isParallelTo(path.derivative(path.endParam(), 1));
    if (!options.closed) {
        options.startTangent = tangent(from, from + h);
        options.endTangent = tangent(path.endParam() - h, path.endParam());
    }
    Fit fit{host::ge::interpolate(points, options).curve, false};
    if (!fit.curve.isValid()) return fit;
    const host::ge::ClosestPointFinder finder(fit.curve);
    const double bound = kFitError * path.size();
    fit.isClose = std::all_of(between.begin(), between.end(),
                              [&](const AcGePoint3d& p) { return finder.closestTo(p).distance <= bound; });
    return fit;
}

std::unique_ptr<AcDbCurve> offsetByFit(const host::CurvePath& path, const AcGeVector3d& normal,
                                       double distance) {
    for (int steps = kFewest; steps <= kMost; steps *= 2) {
        Fit fit = fitParallel(path, normal, distance, steps);
        if (fit.isClose) return host::makeCurve(host::CurvePath::spline(std::move(fit.curve)));
    }
    return nullptr;
}

std::unique_ptr<AcDbCurve> offsetLine(const host::CurvePath& path, const AcGeVector3d& normal,
                                      double distance) {
    const AcGePoint3d start = path.pointAt(path.startParam()), end = path.pointAt(path.endParam());
    AcGeVector3d right = (end - start).crossProduct(normal);
    if (!(right.length() > 1e-12 * start.distanceTo(end))) right = (end - start).perpVector();
    if (!(right.length() > 0)) return nullptr;
    right *= distance / right.length();
    return host::makeCurve(host::CurvePath::line(start + right, end + right));
}

std::unique_ptr<AcDbCurve> offsetOf(const host::CurvePath& path, const AcGeVector3d& normal,
                                    double distance) {
    if (path.isLine()) return offsetLine(path, normal, distance);
    if (const auto* chain = path.asPlaneChain()) {
        const host::PlaneChain moved = host::offsetChain(*chain, distance);
        return moved.vertices.size() < 2 ? nullptr : host::makeCurve(host::CurvePath::chain(moved));
    }
    if (const auto* conic = path.asConic(); conic && conic->isCircular()) {
        host::ge::EllipticArc arc = *conic;
        const double radius = arc.majorRadius() + distance;
        if (!(radius > 0) || !(arc.majorRadius() > 0)) return nullptr;
        arc.majorAxis *= radius / arc.majorRadius();
        return host::makeConic(arc);
    }
    if (path.asSpaceChain()) return nullptr;
    return offsetByFit(path, normal, distance);
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
        // Splines in a plane of the drawing are seen from above, whichever way they turn.
        if (p->asNurbs() && normal.z < -1e-9) normal = -normal;
    }
    if (!std::isfinite(distance) || distance == 0) return Acad::eInvalidInput;
    auto made = offsetOf(*p, normal, distance);
    if (!made) return Acad::eInvalidInput;
    made->setPropertiesFrom(this);
    curves.append(made.release());
    return Acad::eOk;
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
    auto made = offsetOf(*path(), normal.normal(), distance);
    if (!made) return Acad::eInvalidInput;
    made->setPropertiesFrom(this);
    curves.append(made.release());
    return Acad::eOk;
}
