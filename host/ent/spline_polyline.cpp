// Polylines of splines: pairs of arcs that leave every sample with the spline's tangent, or chords.
#include <algorithm>

#include "host/ent/filing.h"
#include "host/ent/polyline.h"
#include "host/ent/polyline2d.h"
#include "host/ent/polyline3d.h"
#include "host/ent/spline.h"
#include "host/ge/curves/polyframe.h"

namespace {

// Samples a span for a precision of 0 and more for every step above; 10 when none is given.
constexpr int kUsualPrecision = 10;

struct Samples {
    std::vector<AcGePoint3d> points;
    std::vector<AcGeVector3d> tangents;
};

// Ends of spans are samples, so corners stay corners.
Samples sample(const host::ge::Nurbs& curve, int precision) {
    const int steps = precision + 1;
    Samples out;
    const std::vector<double> knots = curve.distinctKnots();
    const auto add = [&](double t) {
        const auto at = curve.derivatives(t, 1);
        out.points.push_back(at.point), out.tangents.push_back(at.d[0]);
    };
    for (size_t span = 0; span + 1 < knots.size(); ++span)
        for (int i = 0; i < steps; ++i) add(knots[span] + (knots[span + 1] - knots[span]) * i / steps);
    add(knots.back());
    return out;
}

std::unique_ptr<AcDbCurve> spatial(const Samples& samples, bool closed) {
    AcGePoint3dArray points(samples.points);
    if (closed && points.length() > 2) points.removeLast();
    return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, points, closed);
}

std::vector<AcDbPolyline::Vertex> flatVertices(const Samples& samples, const AcGeMatrix3d& toPlane,
                                               bool arcs) {
    const auto at = [&](size_t i) {
        const AcGePoint3d p = toPlane * samples.points[i];
        return AcGePoint2d(p.x, p.y);
    };
    const auto along = [&](size_t i) {
        const AcGeVector3d v = toPlane * samples.tangents[i];
        return AcGeVector2d(v.x, v.y).normal();
    };
    std::vector<AcDbPolyline::Vertex> out;
    for (size_t i = 0; i + 1 < samples.points.size(); ++i) {
        const AcGePoint2d from = at(i), to = at(i + 1);
        if (!arcs) {
            out.push_back({from});
            continue;
        }
        const host::ge::Biarc pair = host::ge::biarc(from, along(i), to, along(i + 1));
        out.push_back({from, pair.firstBulge});
        if (pair.joint.distanceTo(from) > 0 && pair.joint.distanceTo(to) > 0)
            out.push_back({pair.joint, pair.secondBulge});
    }
    out.push_back({at(samples.points.size() - 1)});
    return out;
}

std::unique_ptr<AcDbCurve> flat(std::vector<AcDbPolyline::Vertex> vertices, const AcGeVector3d& normal,
                                double elevation, bool closed, bool lightweight) {
    if (closed && vertices.size() > 2) vertices.pop_back();
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->setNormal(normal), polyline->setElevation(elevation), polyline->setClosed(closed);
    polyline->setVertices(std::move(vertices));
    if (lightweight) return polyline;
    AcDb2dPolyline* old = nullptr;
    polyline->convertTo(false, old);
    return std::unique_ptr<AcDbCurve>(old);
}

std::unique_ptr<AcDbCurve> polylineOf(const AcDbSpline& spline, int precision, bool arcs, bool lightweight) {
    const host::ge::Nurbs& curve = spline.nurbs();
    if (!curve.isValid()) return nullptr;
    const Samples samples = sample(curve, precision);
    const host::ge::Planarity plane = host::ge::planarity(curve);
    if (!plane.isPlanar) return spatial(samples, spline.isClosed());
    AcGeVector3d normal = plane.normal;
    if (plane.isLinear) normal = AcGeVector3d::kZAxis;
    // The plane of the drawing is seen from above.
    if (std::fabs(normal.z) > 1 - 1e-12) normal = AcGeVector3d::kZAxis;
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
    const double low = (toPlane * samples.points.front()).z, high = (toPlane * samples.points.back()).z;
    if (std::fabs(high - low) > 1e-9 * (1 + curve.size())) return spatial(samples, spline.isClosed());
    return flat(flatVertices(samples, toPlane, arcs), normal, low, spline.isClosed(), lightweight);
}

} // namespace

Acad::ErrorStatus AcDbSpline::toPolyline(AcDbCurve*& polyline, Adesk::Boolean useArcs,
                                         Adesk::Boolean lightweight) const {
    auto made = polylineOf(*this, kUsualPrecision, useArcs, lightweight);
    if (!made) return Acad::eDegenerateGeometry;
    made->setPropertiesFrom(this);
    return polyline = made.release(), Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::toPolyline(AcDbCurve*& polyline, int precision, Adesk::Boolean useArcs) const {
    if (precision < 0 || precision > 99) return Acad::eInvalidInput;
    auto made = polylineOf(*this, precision, useArcs, true);
    if (!made) return Acad::eDegenerateGeometry;
    made->setPropertiesFrom(this);
    return polyline = made.release(), Acad::eOk;
}
