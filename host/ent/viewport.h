// Viewports of layouts: windows in paper space through which model space is seen. Their frame is drawn.
#pragma once
#include "host/ent/own_groups.h"

class AcDbViewport : public host::GroupedEntity {
    HOST_DB_CLASS(AcDbViewport)
public:
    AcGePoint3d centerPoint() const { return own_.point(10); } // of the frame, on the paper
    Acad::ErrorStatus setCenterPoint(const AcGePoint3d& center);
    double width() const { return own_.real(40); }
    Acad::ErrorStatus setWidth(double width); // above 0
    double height() const { return own_.real(41); }
    Acad::ErrorStatus setHeight(double height);
    // 1 is the paper itself, whose frame isn't drawn.
    Adesk::Int16 number() const { return Adesk::Int16(own_.integer(69)); }
    bool isOn() const { return own_.integer(68, 1) != 0; }
    // What is seen: the middle in the view's plane and its height in model units, along the direction from
    // the target, turned by the twist angle (radians).
    AcGePoint2d viewCenter() const { return {own_.real(12), own_.real(22)}; }
    double viewHeight() const { return own_.real(45); }
    AcGeVector3d viewDirection() const { return own_.vector(16, AcGeVector3d::kZAxis); }
    AcGePoint3d viewTarget() const { return own_.point(17); }
    double twistAngle() const;
    double lensLength() const { return own_.real(42, 50); }
    double customScale() const; // paper units a model unit; 0 when the view has no height

protected:
    const char* marker() const override { return "AcDbViewport"; }
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    // Similarities in the paper's plane without a turn; eCannotScaleNonUniformly for others.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;

private:
    void corners(AcGePoint3d (&out)[5]) const;
};
