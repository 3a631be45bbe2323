// Filled triangles and quadrilaterals: those of a plane (solids and traces, which differ in name) and
// faces in space.
#pragma once
#include <array>

#include "host/db/entity.h"
#include "host/ent/filed_point.h"

// Corners run in the field's zigzag order: the third lies behind the first, the fourth behind the second.
class AcDbTrace : public AcDbEntity {
    HOST_DB_CLASS(AcDbTrace)
public:
    AcDbTrace() = default;
    AcDbTrace(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3)
        : corners_{p0, p1, p2, p3} {}
    // 0 to 3, in world coordinates; eInvalidIndex beyond.
    Acad::ErrorStatus getPointAt(unsigned index, AcGePoint3d& point) const;
    Acad::ErrorStatus setPointAt(unsigned index, const AcGePoint3d& point);
    double thickness() const { return thickness_; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane) const override;
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void inDone(host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                        const AcGePoint3d& last, AcGePoint3dArray& points) const override;

private:
    std::array<host::FiledPoint, 4> corners_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double thickness_ = 0;
    bool hasFourth_ = false; // while a file is read
};

class AcDbSolid : public AcDbTrace {
    HOST_DB_CLASS(AcDbSolid)
public:
    using AcDbTrace::AcDbTrace;
};

// Corners run round the face; one with its last two corners on one place is a triangle.
class AcDbFace : public AcDbEntity {
    HOST_DB_CLASS(AcDbFace)
public:
    AcDbFace() = default;
    AcDbFace(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3)
        : corners_{p0, p1, p2, p3} {}
    Acad::ErrorStatus getVertexAt(unsigned index, AcGePoint3d& point) const; // 0 to 3
    Acad::ErrorStatus setVertexAt(unsigned index, const AcGePoint3d& point);
    Acad::ErrorStatus isEdgeVisibleAt(unsigned index, Adesk::Boolean& visible) const;
    Acad::ErrorStatus makeEdgeVisibleAt(unsigned index);
    Acad::ErrorStatus makeEdgeInvisibleAt(unsigned index);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void inDone(host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                        const AcGePoint3d& last, AcGePoint3dArray& points) const override;

private:
    std::array<AcGePoint3d, 4> corners_;
    int hiddenEdges_ = 0;    // a bit an edge
    bool hasFourth_ = false; // while a file is read
};
