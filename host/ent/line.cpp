// Lines and points: their data and their form in files.
#include "host/ent/line.h"

#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDbLine, AcDbCurve, L"LINE")
HOST_DEFINE_CLASS(AcDbPoint, AcDbEntity, L"POINT")

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) { HOST_SET_FINITE(start_, point); }
Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) { HOST_SET_FINITE(end_, point); }
Acad::ErrorStatus AcDbLine::setThickness(double thickness) { HOST_SET_FINITE(thickness_, thickness); }
Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}

bool AcDbLine::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbLine")) {
        if (host::takeTriple(group, 10, start_) || host::takeTriple(group, 11, end_) ||
            host::takeTriple(group, 210, normal_))
            return true;
        if (group.code == 39) return thickness_ = group.real, true;
    }
    return AcDbCurve::inGroup(group, context);
}

void AcDbLine::outGroups(host::GroupWriter& writer) const {
    AcDbCurve::outGroups(writer);
    writer.subclass("AcDbLine");
    if (thickness_ != 0) writer.real(39, thickness_);
    writer.point(10, start_);
    writer.point(11, end_);
    writer.normal(210, normal_);
}

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& position) {
    HOST_SET_FINITE(position_, position);
}
Acad::ErrorStatus AcDbPoint::setThickness(double thickness) { HOST_SET_FINITE(thickness_, thickness); }
Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}
Acad::ErrorStatus AcDbPoint::setEcsRotation(double angle) { HOST_SET_FINITE(rotation_, angle); }

bool AcDbPoint::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbPoint")) {
        if (host::takeTriple(group, 10, position_) || host::takeTriple(group, 210, normal_)) return true;
        if (group.code == 39) return thickness_ = group.real, true;
        if (group.code == 50) return rotation_ = host::toRadians(group.real), true;
    }
    return AcDbEntity::inGroup(group, context);
}

void AcDbPoint::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbPoint");
    writer.point(10, position_);
    if (thickness_ != 0) writer.real(39, thickness_);
    writer.normal(210, normal_);
    if (rotation_ != 0) writer.real(50, host::fileDegrees(rotation_));
}
