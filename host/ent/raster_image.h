// Pictures placed in drawings, and wipeouts, which are pictures of nothing. Their frame is what is drawn;
// the picture's own data are kept.
#pragma once
#include "host/ent/own_groups.h"

class AcDbRasterImage : public host::GroupedEntity {
    HOST_DB_CLASS(AcDbRasterImage)
public:
    enum ClipBoundaryType { kInvalid, kRect, kPoly };
    // The lower left corner and the sides of the whole picture.
    void getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const;
    AcGeVector2d imageSize() const; // in pixels
    AcDbObjectId imageDefId() const;
    bool isClipped() const { return own_.integer(280) != 0; }
    ClipBoundaryType clipBoundaryType() const { return ClipBoundaryType(own_.integer(71)); }
    // In pixels, from the middle of the upper left one, X to the right and Y down; two opposite corners of
    // a rectangle, or a polygon's corners.
    AcGePoint2dArray clipBoundary() const;
    // The corners of what is shown, in world coordinates; the first isn't repeated.
    Acad::ErrorStatus getVertices(AcGePoint3dArray& corners) const;

protected:
    const char* marker() const override { return "AcDbRasterImage"; }
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
};

class AcDbWipeout : public AcDbRasterImage {
    HOST_DB_CLASS(AcDbWipeout)
protected:
    const char* marker() const override { return "AcDbWipeout"; }
};
