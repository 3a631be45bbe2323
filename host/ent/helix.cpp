// Helices: data, form in files, and moving the winding along with the spline.
#include "host/ent/helix.h"

#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDbHelix, AcDbSpline, L"HELIX")

bool AcDbHelix::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.subclass != "AcDbHelix") return AcDbSpline::inGroup(group, context);
    if (host::takeTriple(group, 10, base_) || host::takeTriple(group, 11, start_) ||
        host::takeTriple(group, 12, axis_))
        return true;
    switch (group.code) {
    case 40: radius_ = group.real; return true;
    case 41: turns_ = group.real; return true;
    case 42: turnHeight_ = group.real; return true;
    case 90: release_ = int(group.integer); return true;
    case 91: maintenance_ = int(group.integer); return true;
    case 280: constraint_ = int(group.integer); return true;
    case 290: rightHanded_ = group.integer != 0; return true;
    default: return false;
    }
}

void AcDbHelix::outGroups(host::GroupWriter& writer) const {
    AcDbSpline::outGroups(writer);
    writer.subclass("AcDbHelix");
    writer.integer(90, release_), writer.integer(91, maintenance_);
    writer.point(10, base_), writer.point(11, start_), writer.vector(12, axis_);
    writer.real(40, radius_), writer.real(41, turns_), writer.real(42, turnHeight_);
    writer.integer(290, rightHanded_), writer.integer(280, constraint_);
}

Acad::ErrorStatus AcDbHelix::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    if (auto es = AcDbSpline::subTransformBy(matrix); es != Acad::eOk) return es;
    const double scale = matrix.scale();
    base_ = matrix * base_, start_ = matrix * start_, axis_ = (matrix * axis_) / scale;
    radius_ *= scale, turnHeight_ *= scale;
    if (matrix.det() < 0) rightHanded_ = !rightHanded_;
    return Acad::eOk;
}

// The winding rules the poles: all move together.
Acad::ErrorStatus AcDbHelix::subMoveGripPointsAt(const AcGeIntArray&, const AcGeVector3d& offset) {
    return subTransformBy(AcGeMatrix3d::translation(offset));
}
