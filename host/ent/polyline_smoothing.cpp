// Smoothing of old polylines: B-splines over a frame and arcs through the vertices. What was added is
// flagged as in files; a frame's vertices come first, then those that were fitted to it.
#include <algorithm>
#include <cmath>

#include "host/db/database.h"
#include "host/ent/filing.h"
#include "host/ent/polyline2d.h"
#include "host/ent/polyline3d.h"
#include "host/ge/curves/polyframe.h"

namespace {

// Points a frame segment where no drawing tells.
constexpr int kUsualSegments = 8;
// More than anybody draws; keeps a wrong setting from filling the memory.
constexpr int kMostSegments = 1000;

int segmentsOf(const AcDbObject& polyline) {
    const int set = polyline.database() ? polyline.database()->splinesegs() : kUsualSegments;
    return set == 0 ? kUsualSegments : std::clamp(set, -kMostSegments, kMostSegments);
}

// Erases residents and drops waiting vertices that `isAdded` names.
template <class Vertex, class Test> void removeAdded(host::OwnedParts& parts, Test isAdded) {
    parts.removeIf([&](const AcDbEntity& part) { return isAdded(static_cast<const Vertex&>(part)); });
}

AcGePoint2d flat(const AcGePoint3d& p) { return {p.x, p.y}; }

// Width of a point that lies `share` of the way along a polyline whose widths are in `widths`.
struct Taper {
    std::vector<AcDb2dPolyline::Widths> widths; // a segment each
    double at(double share) const {
        if (widths.empty()) return 0;
        const double place = std::clamp(share, 0.0, 1.0) * double(widths.size());
        const size_t i = std::min(size_t(place), widths.size() - 1);
        return widths[i].start + (widths[i].end - widths[i].start) * (place - double(i));
    }
};

} // namespace

// -- plane polylines ----------------------------------------------------------------------------------

Acad::ErrorStatus AcDb2dPolyline::straighten() {
    if (auto es = willModify(); es != Acad::eOk) return es;
    removeAdded<AcDb2dVertex>(parts_, [](const AcDb2dVertex& v) { return (v.flags_ & (1 | 8)) != 0; });
    const bool wasFitted = type_ == AcDb::k2dFitCurvePoly;
    parts_.eachForWrite<AcDb2dVertex>([&](AcDb2dVertex& v) {
        if (!(v.flags_ & 16) && !wasFitted) return;
        if (v.willModify() != Acad::eOk) return;
        v.flags_ &= ~16;
        if (wasFitted) v.bulge_ = 0;
    });
    type_ = AcDb::k2dSimplePoly;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::convertToPolyType(AcDb::Poly2dType type) {
    switch (type) {
    case AcDb::k2dSimplePoly: return straighten();
    case AcDb::k2dFitCurvePoly: return curveFit();
    case AcDb::k2dQuadSplinePoly:
    case AcDb::k2dCubicSplinePoly: return splineFit(type, Adesk::Int16(segmentsOf(*this)));
    }
    return Acad::eInvalidInput;
}

Acad::ErrorStatus AcDb2dPolyline::splineFit() {
    return splineFit(AcDb::k2dCubicSplinePoly, Adesk::Int16(segmentsOf(*this)));
}

Acad::ErrorStatus AcDb2dPolyline::splineFit(AcDb::Poly2dType type, Adesk::Int16 segments) {
    if (type < AcDb::k2dQuadSplinePoly || segments == 0) return Acad::eInvalidInput;
    if (auto es = straighten(); es != Acad::eOk) return es;
    std::vector<AcGePoint3d> frame;
    Taper taper;
    parts_.each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
        frame.push_back(v.position_);
        taper.widths.push_back(widthsOf(v));
    });
    if (frame.size() < 3) return Acad::eDegenerateGeometry;
    if (!closed_) taper.widths.pop_back();
    const int degree = type == AcDb::k2dQuadSplinePoly ? 2 : 3;
    const auto points = host::ge::frameSplinePoints(frame, degree, closed_, segments);
    parts_.eachForWrite<AcDb2dVertex>([](AcDb2dVertex& v) {
        if (v.willModify() == Acad::eOk) v.flags_ |= 16;
    });
    // Fewer segments than none ask for arcs through the points.
    std::vector<host::ge::BulgeVertex> bulged;
    std::vector<host::ge::FitVertex> through;
    for (const AcGePoint3d& p : points)
        segments < 0 ? through.push_back({flat(p), {}}) : bulged.push_back({flat(p), 0});
    if (segments < 0) bulged = host::ge::fitCurve(through, closed_).vertices;
    const double pieces = double(bulged.size() - (closed_ ? 0 : 1));
    for (size_t i = 0; i < bulged.size(); ++i) {
        const auto& v = bulged[i];
        auto* vertex = new AcDb2dVertex({v.point.x, v.point.y, elevation_}, v.bulge,
                                        taper.at(double(i) / pieces), taper.at(double(i + 1) / pieces));
        vertex->flags_ = 8;
        AcDbObjectId id;
        appendVertex(id, vertex);
        if (!id.isNull()) vertex->close();
    }
    type_ = type;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::curveFit() {
    if (auto es = straighten(); es != Acad::eOk) return es;
    std::vector<host::ge::FitVertex> given;
    std::vector<Widths> widths;
    parts_.each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
        host::ge::FitVertex at{flat(v.position_), {}};
        if (v.isTangentUsed()) at.tangent = AcGeVector2d(std::cos(v.tangent_), std::sin(v.tangent_));
        given.push_back(at);
        widths.push_back(widthsOf(v));
    });
    if (given.size() < 3) return Acad::eDegenerateGeometry;
    const host::ge::FitCurve fit = host::ge::fitCurve(given, closed_);
    // The given vertices take their bulges; the joints are put in behind them.
    struct Joint {
        size_t behind; // the number of the given vertex
        host::ge::BulgeVertex vertex;
    };
    std::vector<Joint> joints;
    std::vector<double> bulges;
    for (size_t i = 0; i < fit.vertices.size(); ++i) {
        if (fit.isAdded[i])
            joints.push_back({bulges.size() - 1, fit.vertices[i]});
        else
            bulges.push_back(fit.vertices[i].bulge);
    }
    std::vector<bool> isSplit(given.size());
    for (const auto& joint : joints) isSplit[joint.behind] = true;
    size_t at = 0;
    parts_.eachForWrite<AcDb2dVertex>([&](AcDb2dVertex& v) {
        const size_t i = at++;
        if (i >= bulges.size() || v.willModify() != Acad::eOk) return;
        v.bulge_ = bulges[i];
        if (!isSplit[i]) return;
        v.startWidth_ = widths[i].start, v.endWidth_ = 0.5 * (widths[i].start + widths[i].end);
        v.ownWidths_ = v.ownWidths_ || widths[i].start != widths[i].end;
    });
    for (size_t j = joints.size(); j-- > 0;) {
        const auto& [behind, v] = joints[j];
        auto* vertex =
            new AcDb2dVertex({v.point.x, v.point.y, elevation_}, v.bulge,
                             0.5 * (widths[behind].start + widths[behind].end), widths[behind].end);
        vertex->flags_ = 1;
        parts_.insertBehind(*this, behind, vertex);
    }
    type_ = AcDb::k2dFitCurvePoly;
    return Acad::eOk;
}

// -- polylines of space -------------------------------------------------------------------------------

Acad::ErrorStatus AcDb3dPolyline::straighten() {
    if (auto es = willModify(); es != Acad::eOk) return es;
    removeAdded<AcDb3dPolylineVertex>(
        parts_, [](const AcDb3dPolylineVertex& v) { return v.vertexType() == AcDb::k3dFitVertex; });
    parts_.eachForWrite<AcDb3dPolylineVertex>([](AcDb3dPolylineVertex& v) {
        if (v.vertexType() != AcDb::k3dSimpleVertex) v.setVertexType(AcDb::k3dSimpleVertex);
    });
    type_ = AcDb::k3dSimplePoly;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::convertToPolyType(AcDb::Poly3dType type) {
    return type == AcDb::k3dSimplePoly ? straighten() : splineFit(type, Adesk::Int16(segmentsOf(*this)));
}

Acad::ErrorStatus AcDb3dPolyline::splineFit() {
    return splineFit(AcDb::k3dCubicSplinePoly, Adesk::Int16(segmentsOf(*this)));
}

Acad::ErrorStatus AcDb3dPolyline::splineFit(AcDb::Poly3dType type, Adesk::Int16 segments) {
    if (type == AcDb::k3dSimplePoly || segments == 0) return Acad::eInvalidInput;
    if (auto es = straighten(); es != Acad::eOk) return es;
    std::vector<AcGePoint3d> frame;
    parts_.each<AcDb3dPolylineVertex>([&](const AcDb3dPolylineVertex& v) { frame.push_back(v.position()); });
    if (frame.size() < 3) return Acad::eDegenerateGeometry;
    const int degree = type == AcDb::k3dQuadSplinePoly ? 2 : 3;
    const auto points = host::ge::frameSplinePoints(frame, degree, closed_, segments);
    parts_.eachForWrite<AcDb3dPolylineVertex>(
        [](AcDb3dPolylineVertex& v) { v.setVertexType(AcDb::k3dControlVertex); });
    for (const AcGePoint3d& p : points) {
        auto* vertex = new AcDb3dPolylineVertex(p);
        vertex->setVertexType(AcDb::k3dFitVertex);
        AcDbObjectId id;
        appendVertex(id, vertex);
        if (!id.isNull()) vertex->close();
    }
    type_ = type;
    return Acad::eOk;
}
