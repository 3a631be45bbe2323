// Helices: splines that know the axis, radius and turns they were made from.
#pragma once
#include "host/ent/spline.h"

class AcDbHelix : public AcDbSpline {
    HOST_DB_CLASS(AcDbHelix)
public:
    AcGePoint3d axisPoint() const { return base_; }
    AcGePoint3d startPoint() const { return start_; }
    AcGeVector3d axisVector() const { return axis_; }
    double baseRadius() const { return radius_; }
    double turns() const { return turns_; }
    double turnHeight() const { return turnHeight_; }
    double height() const { return turns_ * turnHeight_; }
    Adesk::Boolean twist() const { return rightHanded_; } // true: counter-clockwise

    // What was wound one way can't be told as wound from the other end.
    Acad::ErrorStatus reverseCurve() override { return Acad::eNotApplicable; }
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    // eCannotScaleNonUniformly; a copy so scaled is a plain spline.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

private:
    AcGePoint3d base_, start_{1, 0, 0};
    AcGeVector3d axis_ = AcGeVector3d::kZAxis;
    double radius_ = 1, turns_ = 3, turnHeight_ = 1;
    int release_ = 29, maintenance_ = 63, constraint_ = 0;
    bool rightHanded_ = true;
};
