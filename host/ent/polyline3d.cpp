// The polylines of space: vertices, flags and form in files.
#include "host/ent/polyline3d.h"

#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDb3dPolylineVertex, AcDbEntity, L"")
HOST_DEFINE_CLASS(AcDb3dPolyline, AcDbCurve, L"")

AcDb::Vertex3dType AcDb3dPolylineVertex::vertexType() const {
    if (flags_ & 16) return AcDb::k3dControlVertex;
    return flags_ & 8 ? AcDb::k3dFitVertex : AcDb::k3dSimpleVertex;
}
Acad::ErrorStatus AcDb3dPolylineVertex::setVertexType(AcDb::Vertex3dType type) {
    static constexpr int kBits[] = {0, 16, 8}; // by Vertex3dType
    HOST_SET(flags_, (flags_ & ~(16 | 8)) | kBits[type]);
}
Acad::ErrorStatus AcDb3dPolylineVertex::setPosition(const AcGePoint3d& position) {
    HOST_SET_FINITE(position_, position);
}

bool AcDb3dPolylineVertex::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDb3dPolylineVertex") || context.within("AcDbVertex")) {
        if (host::takeTriple(group, 10, position_)) return true;
        if (group.code == 70) return flags_ = int(group.integer) | 32, true;
    }
    return AcDbEntity::inGroup(group, context);
}

void AcDb3dPolylineVertex::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbVertex");
    writer.subclass("AcDb3dPolylineVertex");
    writer.point(10, position_);
    writer.integer(70, flags_);
}

AcDb3dPolyline::AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& vertices,
                               Adesk::Boolean closed) {
    closed_ = closed;
    for (const AcGePoint3d& point : vertices) appendVertex(new AcDb3dPolylineVertex(point));
    if (type != AcDb::k3dSimplePoly) convertToPolyType(type);
}

Acad::ErrorStatus AcDb3dPolyline::setPolyType(AcDb::Poly3dType type) { HOST_SET(type_, type); }

bool AcDb3dPolyline::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDb3dPolyline")) {
        switch (group.code) {
        case 10:
        case 20:
        case 30: return group.real == 0; // always 0; anything else is kept
        case 66: return true;
        case 70:
            closed_ = group.integer & 1;
            flags_ = int(group.integer) & ~(1 | 4);
            if ((group.integer & 4) && type_ == AcDb::k3dSimplePoly) type_ = AcDb::k3dCubicSplinePoly;
            return true;
        case 75:
            if (group.integer == 5) type_ = AcDb::k3dQuadSplinePoly;
            if (group.integer == 6) type_ = AcDb::k3dCubicSplinePoly;
            return group.integer == 0 || group.integer == 5 || group.integer == 6;
        default: break;
        }
    }
    return AcDbCurve::inGroup(group, context);
}

void AcDb3dPolyline::outGroups(host::GroupWriter& writer) const {
    static constexpr int kSmooth[] = {0, 5, 6}; // by Poly3dType
    AcDbCurve::outGroups(writer);
    writer.subclass("AcDb3dPolyline");
    writer.integer(66, 1);
    writer.point(10, AcGePoint3d::kOrigin);
    writer.integer(70, flags_ | 8 | (closed_ ? 1 : 0) | (type_ != AcDb::k3dSimplePoly ? 4 : 0));
    if (kSmooth[type_]) writer.integer(75, kSmooth[type_]);
}
