// Block references: an instance of a block, placed, turned and scaled, perhaps in rows and
// columns, with attributes of its own.
#pragma once
#include "host/ent/filed_point.h"
#include "host/ent/polyline_parts.h"
#include "host/ent/text.h"
#include "host/ge/scale3d.h"

class AcDbBlockReference : public AcDbEntity {
    HOST_DB_CLASS(AcDbBlockReference)
public:
    AcDbBlockReference() = default;
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord);
    AcGePoint3d position() const { return position_; } // world coordinates
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    AcDbObjectId blockTableRecord() const { return block_; }
    Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block);
    AcGeScale3d scaleFactors() const { return scale_; }
    Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale); // eInvalidInput with a 0 in it
    double rotation() const { return rotation_; }                // radians
    Acad::ErrorStatus setRotation(double angle);
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    // From the block's coordinates (its origin taken off) to the world's.
    AcGeMatrix3d blockTransform() const;
    Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& matrix);
    // Rows and columns of a multiple insertion; 1 by 1 else.
    int rows() const { return rows_; }
    int columns() const { return columns_; }
    double rowSpacing() const { return rowSpacing_; }
    double columnSpacing() const { return columnSpacing_; }
    Acad::ErrorStatus setArray(int rows, int columns, double rowSpacing, double columnSpacing);

    Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
    Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);
    AcDbObjectIterator* attributeIterator() const;
    const host::OwnedParts& parts() const { return parts_; }
    // The box as a matrix shows it; not valid when nothing is shown.
    AcDbExtents extentsThrough(const AcGeMatrix3d& matrix) const;
    // The entities of the block, moved to where this reference shows them.
    Acad::ErrorStatus explodeToOwnerSpace() const;

    AcDbObjectId referencedBlock() const override { return block_; }
    // Copies own fresh copies of the attributes.
    AcRxObject* clone() const override;
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void inDone(host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;
    void ownedParts(std::vector<AcDbObjectId>& parts) const override { parts_.list(parts); }
    bool addOwnedPart(AcDbObjectId part) override { return parts_.adopt(part), true; }
    void joined(AcDbDatabase& database) override { parts_.join(*this, database); }

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                       const AcGePlane* plane, AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                        const AcGePoint3d& last, AcGePoint3dArray& points) const override;

private:
    // From column to column and from row to row, in world coordinates.
    struct Steps {
        AcGeVector3d column, row;
    };
    Steps steps() const;
    // Calls `visit` with the block's matrix in each row and column until it returns false.
    template <class Visit> void eachCell(Visit visit) const;

    host::OwnedParts parts_;
    host::FiledPoint position_;
    AcDbObjectId block_;
    AcGeScale3d scale_{1, 1, 1};
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double rotation_ = 0, rowSpacing_ = 0, columnSpacing_ = 0;
    int rows_ = 1, columns_ = 1;
    // What the file stated, although it may say nothing: the marker, and a bit for each of 70, 71, 44, 45.
    const char* marker_ = nullptr;
    int stated_ = 0;
};
