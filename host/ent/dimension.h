// Dimensions of all kinds: the points that they measure stay as groups; what they look like is a block of
// their own.
#pragma once
#include "host/ent/own_groups.h"

class AcDbBlockReference;

class AcDbDimension : public host::GroupedEntity {
    HOST_DB_CLASS(AcDbDimension)
public:
    enum Kind { kRotated, kAligned, kAngular, kDiametric, kRadial, kAngular3Point, kOrdinate, kOther };
    Kind kind() const;
    // The block that is shown; null when there is none.
    AcDbObjectId dimBlockId() const;
    // Where its origin is placed, in world coordinates: other than the origin after a move.
    AcGePoint3d dimBlockPosition() const;
    AcGePoint3d dimLinePoint() const {
        return own_.point(10);
    }                                 // what kinds name it: definition point, centre
    AcGePoint3d textPosition() const; // the middle of the text, world coordinates
    AcGeVector3d normal() const;
    double measurement() const { return own_.real(42); }        // as it was when the block was made
    std::wstring dimensionText() const { return own_.text(1); } // empty: the measurement; <> stands for it
    Acad::ErrorStatus setDimensionText(const ACHAR* text);
    double textRotation() const;       // radians
    double horizontalRotation() const; // radians
    AcDbObjectId dimensionStyle() const;
    bool isUsingDefaultTextPosition() const { return !(own_.integer(70) & 128); }

    AcDbObjectId referencedBlock() const override { return dimBlockId(); }
    void outGroups(host::GroupWriter& writer) const override;

protected:
    const char* marker() const override { return "AcDbDimension"; }
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    // Translations, which move the block with the points; eNotApplicable for others, since the block would
    // have to be made anew.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override; // what the block holds
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;

private:
    AcDbBlockReference shown() const;
};

class AcDbArcDimension : public AcDbDimension {
    HOST_DB_CLASS(AcDbArcDimension)
};
class AcDbRadialDimensionLarge : public AcDbDimension {
    HOST_DB_CLASS(AcDbRadialDimensionLarge)
};
