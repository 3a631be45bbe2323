// The lightweight polyline: its vertices and its form in files. What it does as a curve lives in
// polyline_curve.cpp, conversion to and from the old kind in polyline_convert.cpp.
#include "host/ent/polyline.h"

#include <algorithm>

#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDbPolyline, AcDbCurve, L"LWPOLYLINE")

namespace {
// Segments shorter than this count as coincident points.
constexpr double kCoincidentLength = 1e-10;
} // namespace

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint3d& point) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    const AcGePoint2d& p = vertices_[index].point;
    point = host::toWorld({p.x, p.y, elevation_}, normal_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned index, AcGePoint2d& point) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    return point = vertices_[index].point, Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned index, const AcGePoint2d& point) {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    HOST_SET_FINITE(vertices_[index].point, point);
}
Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned index, double& bulge) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    return bulge = vertices_[index].bulge, Acad::eOk;
}
Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned index, double bulge) {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    HOST_SET_FINITE(vertices_[index].bulge, bulge);
}
Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned index, double& start, double& end) const {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    const Vertex& v = vertices_[index];
    start = ownWidths_ ? v.startWidth : constantWidth_;
    end = ownWidths_ ? v.endWidth : constantWidth_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned index, double start, double end) {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    if (!std::isfinite(start) || !std::isfinite(end)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (start < 0) start = constantWidth_;
    if (end < 0) end = constantWidth_;
    if (!ownWidths_) {
        if (start == constantWidth_ && end == constantWidth_) return Acad::eOk;
        for (Vertex& v : vertices_) v.startWidth = v.endWidth = constantWidth_;
        ownWidths_ = true;
    }
    vertices_[index].startWidth = start, vertices_[index].endWidth = end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned index, const AcGePoint2d& point, double bulge,
                                            double startWidth, double endWidth, Adesk::Int32) {
    if (!host::finite(point) || !std::isfinite(bulge)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    index = std::min(index, numVerts());
    vertices_.insert(vertices_.begin() + index, {point, bulge, constantWidth_, constantWidth_});
    return setWidthsAt(index, startWidth, endWidth);
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned index) {
    if (index >= vertices_.size()) return Acad::eInvalidIndex;
    if (vertices_.size() <= 2) return Acad::eDegenerateGeometry;
    if (auto es = willModify(); es != Acad::eOk) return es;
    vertices_.erase(vertices_.begin() + index);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::reset(Adesk::Boolean reuse, unsigned vertexCount) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (!reuse) vertices_.clear();
    vertices_.resize(std::min<size_t>(vertexCount, vertices_.size()));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setVertices(std::vector<Vertex> vertices) {
    for (Vertex& v : vertices) {
        if (!host::finite(v.point) || !std::isfinite(v.bulge)) return Acad::eInvalidInput;
        if (!(v.startWidth >= 0)) v.startWidth = constantWidth_;
        if (!(v.endWidth >= 0)) v.endWidth = constantWidth_;
    }
    if (auto es = willModify(); es != Acad::eOk) return es;
    vertices_ = std::move(vertices);
    ownWidths_ = std::any_of(vertices_.begin(), vertices_.end(), [this](const Vertex& v) {
        return v.startWidth != constantWidth_ || v.endWidth != constantWidth_;
    });
    return Acad::eOk;
}

AcDbPolyline::SegType AcDbPolyline::segType(unsigned index) const {
    if (vertices_.empty() || index >= vertices_.size()) return kEmpty;
    if (vertices_.size() == 1 || (index + 1 == vertices_.size() && !closed_)) return kPoint;
    const Vertex& from = vertices_[index];
    const Vertex& to = vertices_[(index + 1) % vertices_.size()];
    if (from.point.distanceTo(to.point) < kCoincidentLength) return kCoincident;
    return from.bulge != 0 ? kArc : kLine;
}

Acad::ErrorStatus AcDbPolyline::setClosed(Adesk::Boolean closed) { HOST_SET(closed_, closed); }
void AcDbPolyline::setPlinegen(bool on) {
    if (willModify() == Acad::eOk) plinegen_ = on;
}
Acad::ErrorStatus AcDbPolyline::setElevation(double elevation) { HOST_SET_FINITE(elevation_, elevation); }
Acad::ErrorStatus AcDbPolyline::setThickness(double thickness) { HOST_SET_FINITE(thickness_, thickness); }
Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
    double common = constantWidth_;
    if (ownWidths_ && !vertices_.empty()) {
        common = vertices_.front().startWidth;
        for (const Vertex& v : vertices_)
            if (v.startWidth != common || v.endWidth != common) return Acad::eInvalidInput;
    }
    return width = common, Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
    if (!std::isfinite(width) || width < 0) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    constantWidth_ = width, ownWidths_ = false;
    for (Vertex& v : vertices_) v.startWidth = v.endWidth = width;
    return Acad::eOk;
}

bool AcDbPolyline::hasBulges() const {
    return std::any_of(vertices_.begin(), vertices_.end(), [](const Vertex& v) { return v.bulge != 0; });
}
bool AcDbPolyline::hasWidth() const {
    if (!ownWidths_) return constantWidth_ != 0;
    return std::any_of(vertices_.begin(), vertices_.end(),
                       [](const Vertex& v) { return v.startWidth != 0 || v.endWidth != 0; });
}
bool AcDbPolyline::isOnlyArcs() const {
    const unsigned segments = closed_ ? numVerts() : numVerts() - (numVerts() > 0);
    for (unsigned i = 0; i < segments; ++i)
        if (segType(i) != kArc) return false;
    return segments > 0;
}

bool AcDbPolyline::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbPolyline")) return AcDbCurve::inGroup(group, context);
    const auto last = [this]() -> Vertex* { return vertices_.empty() ? nullptr : &vertices_.back(); };
    switch (group.code) {
    case 90: // the count; only a hint, since files lie
        vertices_.reserve(size_t(std::clamp<std::int64_t>(group.integer, 0, 4096)));
        return true;
    case 70: closed_ = group.integer & 1, plinegen_ = group.integer & 128; return (group.integer & ~129) == 0;
    case 43: constantWidth_ = group.real; return true;
    case 38: elevation_ = group.real; return true;
    case 39: thickness_ = group.real; return true;
    case 10: vertices_.push_back({{group.real, 0}, 0, -1, -1}); return true;
    case 20:
        if (auto* v = last()) v->point.y = group.real;
        return true;
    case 40:
        if (auto* v = last()) return v->startWidth = group.real, true;
        break;
    case 41:
        if (auto* v = last()) return v->endWidth = group.real, true;
        break;
    case 42:
        if (auto* v = last()) return v->bulge = group.real, true;
        break;
    case 91: return group.integer == 0; // vertex identifiers other than 0 are kept
    default:
        if (host::takeTriple(group, 210, normal_)) return true;
    }
    return AcDbCurve::inGroup(group, context);
}

void AcDbPolyline::inDone(host::ReadContext&) {
    normal_ = host::unitNormal(normal_);
    if (!(constantWidth_ >= 0)) constantWidth_ = 0;
    for (Vertex& v : vertices_) {
        const bool given = v.startWidth >= 0 || v.endWidth >= 0;
        v.startWidth = v.startWidth >= 0 ? v.startWidth : (given ? 0 : constantWidth_);
        v.endWidth = v.endWidth >= 0 ? v.endWidth : (given ? 0 : constantWidth_);
        ownWidths_ |= v.startWidth != constantWidth_ || v.endWidth != constantWidth_;
    }
    vertices_.shrink_to_fit();
}

void AcDbPolyline::outGroups(host::GroupWriter& writer) const {
    AcDbCurve::outGroups(writer);
    writer.subclass("AcDbPolyline");
    writer.integer(90, std::int64_t(vertices_.size()));
    writer.integer(70, (closed_ ? 1 : 0) | (plinegen_ ? 128 : 0));
    if (!ownWidths_) writer.real(43, constantWidth_);
    if (elevation_ != 0) writer.real(38, elevation_);
    if (thickness_ != 0) writer.real(39, thickness_);
    for (const Vertex& v : vertices_) {
        writer.point(10, v.point);
        if (ownWidths_) writer.real(40, v.startWidth), writer.real(41, v.endWidth);
        if (v.bulge != 0) writer.real(42, v.bulge);
    }
    writer.normal(210, normal_);
}
