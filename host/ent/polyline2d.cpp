// The old polylines of the plane: vertices, flags and form in files. The smoothing lives in
// polyline_smoothing.cpp, what they do as curves in polyline2d_curve.cpp.
#include "host/ent/polyline2d.h"

#include "host/db/blocktable.h"
#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDb2dVertex, AcDbEntity, L"")
HOST_DEFINE_CLASS(AcDb2dPolyline, AcDbCurve, L"")

AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double startWidth, double endWidth,
                           double tangent)
    : position_(position), bulge_(bulge), startWidth_(startWidth), endWidth_(endWidth), tangent_(tangent),
      ownWidths_(startWidth != 0 || endWidth != 0) {}

AcDb::Vertex2dType AcDb2dVertex::vertexType() const {
    if (flags_ & 16) return AcDb::k2dSplineCtlVertex;
    if (flags_ & 8) return AcDb::k2dSplineFitVertex;
    if (flags_ & 1) return AcDb::k2dCurveFitVertex;
    return AcDb::k2dVertex;
}
Acad::ErrorStatus AcDb2dVertex::setVertexType(AcDb::Vertex2dType type) {
    static constexpr int kBits[] = {0, 16, 8, 1}; // by Vertex2dType
    HOST_SET(flags_, (flags_ & ~(16 | 8 | 1)) | kBits[type]);
}
Acad::ErrorStatus AcDb2dVertex::setPosition(const AcGePoint3d& position) {
    HOST_SET_FINITE(position_, position);
}
Acad::ErrorStatus AcDb2dVertex::setBulge(double bulge) { HOST_SET_FINITE(bulge_, bulge); }
Acad::ErrorStatus AcDb2dVertex::setStartWidth(double width) {
    if (!std::isfinite(width) || width < 0) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    startWidth_ = width, ownWidths_ = true;
    return Acad::eOk;
}
Acad::ErrorStatus AcDb2dVertex::setEndWidth(double width) {
    if (!std::isfinite(width) || width < 0) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    endWidth_ = width, ownWidths_ = true;
    return Acad::eOk;
}
Acad::ErrorStatus AcDb2dVertex::setTangent(double angle) { HOST_SET_FINITE(tangent_, angle); }
Acad::ErrorStatus AcDb2dVertex::useTangent() { HOST_SET(flags_, flags_ | 2); }

bool AcDb2dVertex::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDb2dVertex") || context.within("AcDbVertex")) {
        switch (group.code) {
        case 40: startWidth_ = group.real, ownWidths_ = true; return true;
        case 41: endWidth_ = group.real, ownWidths_ = true; return true;
        case 42: bulge_ = group.real; return true;
        case 50: tangent_ = host::toRadians(group.real); return true;
        case 70: flags_ = int(group.integer); return true;
        default:
            if (host::takeTriple(group, 10, position_)) return true;
        }
    }
    return AcDbEntity::inGroup(group, context);
}

void AcDb2dVertex::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbVertex");
    writer.subclass("AcDb2dVertex");
    writer.point(10, position_);
    if (ownWidths_) writer.real(40, startWidth_), writer.real(41, endWidth_);
    if (bulge_ != 0) writer.real(42, bulge_);
    writer.integer(70, flags_);
    if (tangent_ != 0 || (flags_ & 2)) writer.real(50, host::fileDegrees(tangent_));
}

AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation,
                               Adesk::Boolean closed, double defaultStartWidth, double defaultEndWidth,
                               const AcGeDoubleArray* bulges)
    : elevation_(elevation), startWidth_(defaultStartWidth), endWidth_(defaultEndWidth) {
    closed_ = closed;
    for (int i = 0; i < vertices.length(); ++i)
        appendVertex(new AcDb2dVertex(vertices[i], bulges && i < bulges->length() ? (*bulges)[i] : 0));
    if (type != AcDb::k2dSimplePoly) convertToPolyType(type);
}

Acad::ErrorStatus AcDb2dPolyline::setPolyType(AcDb::Poly2dType type) { HOST_SET(type_, type); }
Acad::ErrorStatus AcDb2dPolyline::setDefaultStartWidth(double width) {
    if (!std::isfinite(width) || width < 0) return Acad::eInvalidInput;
    HOST_SET(startWidth_, width);
}
Acad::ErrorStatus AcDb2dPolyline::setDefaultEndWidth(double width) {
    if (!std::isfinite(width) || width < 0) return Acad::eInvalidInput;
    HOST_SET(endWidth_, width);
}
Acad::ErrorStatus AcDb2dPolyline::setElevation(double elevation) { HOST_SET_FINITE(elevation_, elevation); }
Acad::ErrorStatus AcDb2dPolyline::setThickness(double thickness) { HOST_SET_FINITE(thickness_, thickness); }
Acad::ErrorStatus AcDb2dPolyline::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}

Acad::ErrorStatus AcDb2dPolyline::getConstantWidth(double& width) const {
    bool same = startWidth_ == endWidth_;
    double common = startWidth_;
    bool first = true;
    parts_.each<AcDb2dVertex>([&](const AcDb2dVertex& v) {
        const double start = v.ownWidths_ ? v.startWidth_ : startWidth_,
                     end = v.ownWidths_ ? v.endWidth_ : endWidth_;
        if (std::exchange(first, false)) common = start, same = true;
        same &= start == common && end == common;
    });
    if (!same) return Acad::eInvalidInput;
    return width = common, Acad::eOk;
}

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const {
    return host::toWorld({vertex.position().x, vertex.position().y, elevation_}, normal_);
}

bool AcDb2dPolyline::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDb2dPolyline")) {
        switch (group.code) {
        case 10:
        case 20: return group.real == 0; // always 0; anything else is kept
        case 30: elevation_ = group.real; return true;
        case 39: thickness_ = group.real; return true;
        case 40: startWidth_ = group.real, startStated_ = true; return true;
        case 41: endWidth_ = group.real, endStated_ = true; return true;
        case 66: return true;
        case 70:
            closed_ = group.integer & 1;
            flags_ = int(group.integer) & ~(1 | 2 | 4);
            if (group.integer & 2) type_ = AcDb::k2dFitCurvePoly;
            if ((group.integer & 4) && type_ < AcDb::k2dQuadSplinePoly) type_ = AcDb::k2dCubicSplinePoly;
            return true;
        case 75:
            if (group.integer == 5) type_ = AcDb::k2dQuadSplinePoly;
            if (group.integer == 6) type_ = AcDb::k2dCubicSplinePoly;
            return group.integer == 0 || group.integer == 5 || group.integer == 6;
        default:
            if (host::takeTriple(group, 210, normal_)) return true;
        }
    }
    return AcDbCurve::inGroup(group, context);
}

void AcDb2dPolyline::outGroups(host::GroupWriter& writer) const {
    static constexpr int kTypeBits[] = {0, 2, 4, 4}; // by Poly2dType
    static constexpr int kSmooth[] = {0, 0, 5, 6};
    AcDbCurve::outGroups(writer);
    writer.subclass("AcDb2dPolyline");
    writer.integer(66, 1);
    writer.point(10, AcGePoint3d(0, 0, elevation_));
    if (thickness_ != 0) writer.real(39, thickness_);
    writer.integer(70, flags_ | (closed_ ? 1 : 0) | kTypeBits[type_]);
    if (startStated_ || startWidth_ != 0) writer.real(40, startWidth_);
    if (endStated_ || endWidth_ != 0) writer.real(41, endWidth_);
    if (kSmooth[type_]) writer.integer(75, kSmooth[type_]);
    writer.normal(210, normal_);
}
