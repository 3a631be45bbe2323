// Multiple lines: parallel elements along a run of vertices, with gaps. Files hold what is drawn: at each
// vertex the miter, and for each element its distance on the miter and its gaps.
#pragma once
#include "host/ent/own_groups.h"

class AcDbMline : public host::GroupedEntity {
    HOST_DB_CLASS(AcDbMline)
public:
    int numVertices() const { return int(vertices_.size()); }
    AcGePoint3d vertexAt(int index) const { return vertices_.at(size_t(index)).point; }
    double scale() const { return own_.real(40, 1); }
    bool closedMline() const { return own_.integer(71) & 2; }
    AcGeVector3d normal() const;
    std::wstring styleName() const { return own_.text(2); }
    // The strokes of all elements, in order.
    struct Stroke {
        AcGePoint3d from, to;
    };
    std::vector<Stroke> strokes() const;

    void inDone(host::ReadContext& context) override;

protected:
    const char* marker() const override { return "AcDbMline"; }
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    // Similarities; eCannotScaleNonUniformly for others.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override; // AcDbLine each
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;

private:
    // The numbers of an element: its distance on the miter, then where its strokes begin and end along the
    // segment; the last one that begins runs to the segment's end.
    struct Vertex {
        AcGePoint3d point;
        AcGeVector3d direction, miter;
        std::vector<std::vector<double>> elements;
    };
    void parse();
    std::vector<Vertex> vertices_;
};
