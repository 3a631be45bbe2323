// The mesh with subdivision levels (MESH): faces of any number of corners over a list of vertices. It is
// drawn and measured at level 0, by its own faces. All groups stay as they came.
#pragma once
#include "host/ent/own_groups.h"
#include "host/ent/wires.h"

class AcDbSubDMesh : public host::GroupedEntity {
    HOST_DB_CLASS(AcDbSubDMesh)
public:
    // At level 0. Face lists hold a count, then so many vertex numbers from 0, for each face.
    Acad::ErrorStatus getVertices(AcGePoint3dArray& vertices) const;
    Acad::ErrorStatus getFaceArray(AcArray<Adesk::Int32>& faces) const;
    Acad::ErrorStatus numOfVertices(Adesk::Int32& count) const;
    Acad::ErrorStatus numOfFaces(Adesk::Int32& count) const;
    Acad::ErrorStatus subdLevel(Adesk::Int32& level) const;
    Acad::ErrorStatus getVertexAt(int index, AcGePoint3d& vertex) const;
    Acad::ErrorStatus setVertexAt(int index, const AcGePoint3d& vertex);
    // Another mesh, without creases. eInvalidInput for lists that point outside or end inside a face.
    Acad::ErrorStatus setSubDMesh(const AcGePoint3dArray& vertices, const AcArray<Adesk::Int32>& faces,
                                  int subdLevel);
    host::Wires wires() const;

    void inDone(host::ReadContext& context) override;

protected:
    const char* marker() const override { return "AcDbSubDMesh"; }
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

private:
    template <class Image> Acad::ErrorStatus moveVertices(Image image);
    std::vector<AcGePoint3d> vertices_;
    std::vector<Adesk::Int32> faces_;
};
