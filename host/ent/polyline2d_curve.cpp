// What the old polylines of the plane do as curves. The drawn curve runs through the vertices that
// aren't control vertices.
#include <algorithm>

#include "host/ent/filing.h"
#include "host/ent/polyline2d.h"
#include "host/ent/wide_chain.h"

namespace {
AcGePoint2d flat(const AcGePoint3d& p) { return {p.x, p.y}; }
bool isControl(const AcDb2dVertex& v) { return v.vertexType() == AcDb::k2dSplineCtlVertex; }
} // namespace

AcDb2dPolyline::Widths AcDb2dPolyline::widthsOf(const AcDb2dVertex& v) const {
    return v.ownWidths_ ? Widths{v.startWidth_, v.endWidth_} : Widths{startWidth_, endWidth_};
}
void AcDb2dPolyline::setLinetypeGeneration(bool on) {
    if (willModify() == Acad::eOk) flags_ = on ? flags_ | 128 : flags_ & ~128;
}

// Frames that nothing was fitted to are drawn themselves.
std::vector<AcDbPolyline::Vertex> AcDb2dPolyline::drawnVertices() const {
    std::vector<AcDbPolyline::Vertex> drawn, frame;
    parts_.each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
        auto& list = isControl(v) ? frame : drawn;
        const Widths widths = widthsOf(v);
        list.push_back({flat(v.position_), v.bulge_, widths.start, widths.end});
    });
    return drawn.empty() ? frame : drawn;
}

host::CurvePath AcDb2dPolyline::makePath() const {
    host::PlaneChain chain;
    chain.closed = closed_, chain.normal = normal_, chain.elevation = elevation_;
    chain.vertices = host::WideChain{drawnVertices(), closed_}.plain();
    return host::CurvePath::chain(std::move(chain));
}

std::unique_ptr<AcDbCurve> AcDb2dPolyline::makePart(double from, double to) const {
    const host::WideChain chain{drawnVertices(), closed_};
    if (chain.segments() == 0) return nullptr;
    auto part = std::make_unique<AcDb2dPolyline>();
    part->normal_ = normal_, part->elevation_ = elevation_, part->thickness_ = thickness_;
    part->flags_ = flags_, part->startWidth_ = startWidth_, part->endWidth_ = endWidth_;
    for (const auto& v : chain.part(from, to).vertices)
        part->appendVertex(
            new AcDb2dVertex({v.point.x, v.point.y, elevation_}, v.bulge, v.startWidth, v.endWidth));
    return part;
}

// Gives the drawn vertices new places, bulges and widths, in order; there are as many as before.
void AcDb2dPolyline::assignDrawn(const std::vector<AcDbPolyline::Vertex>& drawn) {
    const bool hasDrawn = [&] {
        bool any = false;
        parts_.each<AcDb2dVertex>([&](const AcDb2dVertex& v) { any |= !isControl(v); });
        return any;
    }();
    size_t next = 0;
    parts_.eachForWrite<AcDb2dVertex>([&](AcDb2dVertex& v) {
        if ((hasDrawn && isControl(v)) || next >= drawn.size()) return;
        const auto& to = drawn[next++];
        if (v.willModify() != Acad::eOk) return;
        v.position_.x = to.point.x, v.position_.y = to.point.y;
        v.bulge_ = to.bulge, v.startWidth_ = to.startWidth, v.endWidth_ = to.endWidth;
        v.ownWidths_ = to.startWidth != startWidth_ || to.endWidth != endWidth_ || v.ownWidths_;
    });
}

Acad::ErrorStatus AcDb2dPolyline::reverseCurve() {
    std::vector<AcGePoint3d> frame;
    parts_.each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
        if (isControl(v)) frame.push_back(v.position());
    });
    const auto drawn = host::WideChain{drawnVertices(), closed_}.reversed().vertices;
    if (auto es = willModify(); es != Acad::eOk) return es;
    // The frame of a closed one keeps its first vertex, too.
    if (!frame.empty()) std::reverse(frame.begin() + (closed_ ? 1 : 0), frame.end());
    size_t next = 0;
    parts_.eachForWrite<AcDb2dVertex>([&](AcDb2dVertex& v) {
        if (isControl(v)) v.setPosition(frame[next++]);
    });
    assignDrawn(drawn);
    parts_.eachForWrite<AcDb2dVertex>([&](AcDb2dVertex& v) {
        if (v.isTangentUsed()) v.setTangent(v.tangent() + std::numbers::pi);
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::extend(double toParam) {
    const host::WideChain chain{drawnVertices(), closed_};
    if (!std::isfinite(toParam) || closed_ || chain.segments() == 0) return Acad::eInvalidInput;
    if (toParam >= 0 && toParam <= chain.segments()) return Acad::eInvalidInput;
    const AcGePoint2d to = chain.beyond(toParam);
    return extend(toParam < 0, host::toWorld({to.x, to.y, elevation_}, normal_));
}

Acad::ErrorStatus AcDb2dPolyline::extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) {
    if (type_ >= AcDb::k2dQuadSplinePoly) return Acad::eNotApplicable;
    if (!host::finite(toPoint)) return Acad::eInvalidInput;
    host::WideChain chain{drawnVertices(), closed_};
    if (!chain.extend(atStart, flat(host::toPlane(toPoint, normal_)))) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    assignDrawn(chain.vertices);
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    AcGeVector3d normal = normal_;
    double elevation = elevation_;
    const AcGeMatrix2d local = matrix.convertToLocal(normal, elevation);
    bool hasArcs = false;
    parts_.each<AcDb2dVertex>([&](const AcDb2dVertex& v) { hasArcs |= v.bulge_ != 0; });
    if (hasArcs && !local.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    if (auto es = willModify(); es != Acad::eOk) return es;
    const double det = local.det(), scale = std::sqrt(std::fabs(det));
    parts_.eachForWrite<AcDb2dVertex>([&](AcDb2dVertex& v) {
        if (v.willModify() != Acad::eOk) return;
        const AcGePoint2d p = local * flat(v.position_);
        v.position_.set(p.x, p.y, elevation);
        if (det < 0) v.bulge_ = -v.bulge_;
        v.startWidth_ *= scale, v.endWidth_ *= scale;
        if (v.isTangentUsed() || v.tangent_ != 0)
            v.tangent_ = (local * AcGeVector2d(std::cos(v.tangent_), std::sin(v.tangent_))).angle();
    });
    startWidth_ *= scale, endWidth_ *= scale;
    if (thickness_ != 0) thickness_ *= (matrix * normal_).length();
    normal_ = normal, elevation_ = elevation;
    return Acad::eOk;
}

// Frames have the grips where there are some.
Acad::ErrorStatus AcDb2dPolyline::subGetGripPoints(AcGePoint3dArray& points) const {
    parts_.each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
        if (type_ < AcDb::k2dQuadSplinePoly || isControl(v)) points.append(vertexPosition(v));
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subMoveGripPointsAt(const AcGeIntArray& indices,
                                                      const AcGeVector3d& offset) {
    const AcGeVector3d move = AcGeMatrix3d::worldToPlane(normal_) * offset;
    if (auto es = willModify(); es != Acad::eOk) return es;
    int at = 0, moved = 0;
    parts_.eachForWrite<AcDb2dVertex>([&](AcDb2dVertex& v) {
        if (type_ >= AcDb::k2dQuadSplinePoly && !isControl(v)) return;
        if (indices.contains(at++)) v.setPosition(v.position() + AcGeVector3d(move.x, move.y, 0)), ++moved;
    });
    if (moved == at) elevation_ += move.z;
    return type_ >= AcDb::k2dQuadSplinePoly ? convertToPolyType(type_) : Acad::eOk;
}
