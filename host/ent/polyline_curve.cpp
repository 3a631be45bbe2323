// What lightweight polylines do as curves. Conversion is in polyline_convert.cpp, drawing in
// curve_draw.cpp.
#include <algorithm>

#include "host/ent/filing.h"
#include "host/ent/polyline.h"
#include "host/ent/wide_chain.h"

namespace {
// The chain with the widths that count.
host::WideChain chainOf(const AcDbPolyline& polyline) {
    host::WideChain chain{polyline.vertices(), polyline.isClosed()};
    for (unsigned i = 0; i < polyline.numVerts(); ++i)
        polyline.getWidthsAt(i, chain.vertices[i].startWidth, chain.vertices[i].endWidth);
    return chain;
}
} // namespace

host::CurvePath AcDbPolyline::makePath() const {
    host::PlaneChain chain;
    chain.closed = closed_, chain.normal = normal_, chain.elevation = elevation_;
    chain.vertices.reserve(vertices_.size());
    for (const Vertex& v : vertices_) chain.vertices.push_back({v.point, v.bulge});
    return host::CurvePath::chain(std::move(chain));
}

std::unique_ptr<AcDbCurve> AcDbPolyline::makePart(double from, double to) const {
    if (vertices_.size() < 2) return nullptr;
    auto part = std::make_unique<AcDbPolyline>();
    part->normal_ = normal_, part->elevation_ = elevation_, part->thickness_ = thickness_;
    part->plinegen_ = plinegen_, part->constantWidth_ = constantWidth_;
    part->setVertices(chainOf(*this).part(from, to).vertices);
    return part;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned index, AcGeLineSeg3d& line) const {
    if (segType(index) != kLine) return Acad::eInvalidIndex;
    AcGePoint3d from, to;
    getPointAt(index, from);
    getPointAt((index + 1) % numVerts(), to);
    return line.set(from, to), Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned index, AcGeCircArc3d& arc) const {
    if (segType(index) != kArc) return Acad::eInvalidIndex;
    const Vertex& v = vertices_[index];
    const host::ge::BulgeSegment s{v.point, vertices_[(index + 1) % vertices_.size()].point, v.bulge};
    const host::ge::BulgeCircle circle = s.circle();
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(normal_);
    const AcGeVector3d up = circle.isClockwise() ? -normal_ : normal_;
    const AcGeVector3d x =
        toWorld * AcGeVector3d(std::cos(circle.startAngle), std::sin(circle.startAngle), 0);
    arc.set(host::toWorld({circle.center.x, circle.center.y, elevation_}, normal_), up, x, circle.radius, 0,
            std::fabs(circle.sweep));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::reverseCurve() {
    if (auto es = willModify(); es != Acad::eOk) return es;
    vertices_ = host::WideChain{std::move(vertices_), closed_}.reversed().vertices;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::extend(double toParam) {
    const host::WideChain chain{vertices_, closed_};
    if (!std::isfinite(toParam) || closed_ || chain.segments() == 0) return Acad::eInvalidInput;
    if (toParam >= 0 && toParam <= chain.segments()) return Acad::eInvalidInput;
    const AcGePoint2d to = chain.beyond(toParam);
    return extend(toParam < 0, host::toWorld({to.x, to.y, elevation_}, normal_));
}

Acad::ErrorStatus AcDbPolyline::extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) {
    if (!host::finite(toPoint)) return Acad::eInvalidInput;
    host::WideChain chain{vertices_, closed_};
    const AcGePoint3d to = host::toPlane(toPoint, normal_);
    if (!chain.extend(atStart, {to.x, to.y})) return Acad::eInvalidInput;
    HOST_SET(vertices_, std::move(chain.vertices));
}

Acad::ErrorStatus AcDbPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    AcGeVector3d normal = normal_;
    double elevation = elevation_;
    const AcGeMatrix2d local = matrix.convertToLocal(normal, elevation);
    host::WideChain chain{vertices_, closed_};
    if (!chain.transformBy(local)) return Acad::eCannotScaleNonUniformly;
    if (auto es = willModify(); es != Acad::eOk) return es;
    vertices_ = std::move(chain.vertices);
    const double scale = std::sqrt(std::fabs(local.det()));
    if (std::fabs(scale - 1) >= 1e-14) constantWidth_ *= scale;
    if (thickness_ != 0) thickness_ *= (matrix * normal_).length();
    normal_ = normal, elevation_ = elevation;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subExplode(AcDbVoidPtrArray& parts) const { return explodePieces(parts); }

Acad::ErrorStatus AcDbPolyline::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const Vertex& v : vertices_)
        points.append(host::toWorld({v.point.x, v.point.y, elevation_}, normal_));
    return Acad::eOk;
}

// All vertices together leave the plane with it; single ones move inside it.
Acad::ErrorStatus AcDbPolyline::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    const AcGeVector3d move = host::isWorldZ(normal_) ? offset : AcGeMatrix3d::worldToPlane(normal_) * offset;
    std::vector<bool> chosen(vertices_.size());
    for (int index : indices)
        if (index >= 0 && size_t(index) < chosen.size()) chosen[size_t(index)] = true;
    if (auto es = willModify(); es != Acad::eOk) return es;
    bool all = true;
    for (size_t i = 0; i < chosen.size(); ++i) {
        if (chosen[i]) vertices_[i].point += AcGeVector2d(move.x, move.y);
        all = all && chosen[i];
    }
    if (all) elevation_ += move.z;
    return Acad::eOk;
}
