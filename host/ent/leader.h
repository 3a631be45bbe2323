// Leaders: an arrow along a polyline or a curve through its vertices. All groups stay as they came.
#pragma once
#include "host/ent/curve.h"
#include "host/ent/own_groups.h"

class AcDbLeader : public AcDbCurve {
    HOST_DB_CLASS(AcDbLeader)
public:
    int numVertices() const { return int(vertices_.size()); }
    AcGePoint3d vertexAt(int index) const { return vertices_.at(size_t(index)); }
    AcGePoint3d firstVertex() const { return vertices_.front(); } // of a leader with vertices
    AcGePoint3d lastVertex() const { return vertices_.back(); }
    Acad::ErrorStatus setVertexAt(int index, const AcGePoint3d& point); // eInvalidIndex beyond
    bool isSplined() const { return own_.integer(72) != 0; }
    bool hasArrowHead() const { return own_.integer(71, 1) != 0; }
    AcGeVector3d normal() const;
    AcDbObjectId dimensionStyle() const;
    AcDbObjectId annotationObjId() const; // the text or block that it leads to
    double arrowSize() const;             // of its dimension style, or its own

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void inDone(host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    host::CurvePath makePath() const override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override; // with the arrow
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

private:
    template <class Image> Acad::ErrorStatus moveVertices(Image image);
    std::vector<AcGePoint3d> arrow(const host::CurvePath& path) const; // its corners, or none
    host::OwnGroups own_;
    std::vector<AcGePoint3d> vertices_;
};
