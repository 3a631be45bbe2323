// The old meshes, whose vertices are objects: faces over a list of vertices, and grids of rows and columns.
// Both are POLYLINEs in files. The mesh with subdivision levels lives in subdmesh.h.
#pragma once
#include "host/ent/polyline_parts.h"
#include "host/ent/wires.h"

namespace host {

// A corner of either mesh.
class MeshVertex : public VertexEntity {
public:
    AcGePoint3d position() const { return position_; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    bool inGroup(const Group& group, ReadContext& context) override;
    void outGroups(GroupWriter& writer) const override;

protected:
    MeshVertex(const char* marker, int flags) : marker_(marker), flags_(flags) {}
    const char* marker_;
    AcGePoint3d position_;
    int flags_; // as in files
};

// What both meshes have in common: the parts, and the counts and flags in front of them.
class PartedMesh : public AcDbEntity {
public:
    const OwnedParts& parts() const { return parts_; }
    AcDbObjectIterator* vertexIterator() const; // of residents, faces included; the caller deletes it
    virtual Wires wires() const = 0;

    std::string dxfName() const override { return "POLYLINE"; }
    AcRxObject* clone() const override; // owns fresh copies of the parts
    bool inGroup(const Group& group, ReadContext& context) override;
    void outGroups(GroupWriter& writer) const override;
    void ownedParts(std::vector<AcDbObjectId>& parts) const override { parts_.list(parts); }
    bool addOwnedPart(AcDbObjectId part) override { return parts_.adopt(part), true; }
    void joined(AcDbDatabase& database) override { parts_.join(*this, database); }

protected:
    PartedMesh(const char* marker, int flags) : marker_(marker), flags_(flags) {}
    Acad::ErrorStatus append(AcDbObjectId& id, AcDbEntity* part);
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

    const char* marker_;
    OwnedParts parts_;
    int flags_;            // as in files
    int counts_[4] = {};   // 71 to 74
    int smoothing_ = 0;    // 75
    bool counted_ = false; // files without counts stay without
};

} // namespace host

class AcDbPolyFaceMeshVertex : public host::MeshVertex {
    HOST_DB_CLASS(AcDbPolyFaceMeshVertex)
public:
    AcDbPolyFaceMeshVertex() : MeshVertex("AcDbPolyFaceMeshVertex", 64 | 128) {}
    explicit AcDbPolyFaceMeshVertex(const AcGePoint3d& position) : AcDbPolyFaceMeshVertex() {
        position_ = position;
    }
};

// A face of up to four corners. A corner is the number of a vertex, from 1; 0 for none; negative when the
// edge that begins there is hidden.
class AcDbFaceRecord : public host::VertexEntity {
    HOST_DB_CLASS(AcDbFaceRecord)
public:
    AcDbFaceRecord() = default;
    AcDbFaceRecord(Adesk::Int16 a, Adesk::Int16 b, Adesk::Int16 c, Adesk::Int16 d) : corners_{a, b, c, d} {}
    // Corners 0 to 3; eInvalidIndex beyond.
    Acad::ErrorStatus getVertexAt(Adesk::UInt16 corner, Adesk::Int16& vertex) const;
    Acad::ErrorStatus setVertexAt(Adesk::UInt16 corner, Adesk::Int16 vertex);
    Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 corner, Adesk::Boolean& visible) const;
    Acad::ErrorStatus makeEdgeVisibleAt(Adesk::UInt16 corner);
    Acad::ErrorStatus makeEdgeInvisibleAt(Adesk::UInt16 corner);
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

private:
    Adesk::Int16 corners_[4] = {};
    int flags_ = 128;
};

class AcDbPolyFaceMesh : public host::PartedMesh {
    HOST_DB_CLASS(AcDbPolyFaceMesh)
public:
    AcDbPolyFaceMesh() : PartedMesh("AcDbPolyFaceMesh", 64) {}
    Adesk::Int16 numVertices() const { return Adesk::Int16(counts_[0]); }
    Adesk::Int16 numFaces() const { return Adesk::Int16(counts_[1]); }
    // The mesh owns what is appended; in a drawing it stays open for write. eOutOfRange beyond 32767.
    Acad::ErrorStatus appendVertex(AcDbPolyFaceMeshVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDbPolyFaceMeshVertex* vertex);
    Acad::ErrorStatus appendFaceRecord(AcDbFaceRecord* face);
    Acad::ErrorStatus appendFaceRecord(AcDbObjectId& id, AcDbFaceRecord* face);
    host::Wires wires() const override; // the visible edges

protected:
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override; // AcDbFace each
};

class AcDbPolygonMeshVertex : public host::MeshVertex {
    HOST_DB_CLASS(AcDbPolygonMeshVertex)
public:
    AcDbPolygonMeshVertex() : MeshVertex("AcDbPolygonMeshVertex", 64) {}
    explicit AcDbPolygonMeshVertex(const AcGePoint3d& position) : AcDbPolygonMeshVertex() {
        position_ = position;
    }
    AcDb::Vertex3dType vertexType() const;
    Acad::ErrorStatus setVertexType(AcDb::Vertex3dType type);
};

// M rows of N vertices. A smoothed mesh has its control vertices first, then the surface's.
class AcDbPolygonMesh : public host::PartedMesh {
    HOST_DB_CLASS(AcDbPolygonMesh)
public:
    AcDbPolygonMesh() : PartedMesh("AcDbPolygonMesh", 16) {}
    AcDbPolygonMesh(Adesk::Int16 mSize, Adesk::Int16 nSize, const AcGePoint3dArray& vertices,
                    Adesk::Boolean mClosed = false, Adesk::Boolean nClosed = false);
    Adesk::Int16 mSize() const { return Adesk::Int16(counts_[0]); }
    Adesk::Int16 nSize() const { return Adesk::Int16(counts_[1]); }
    Acad::ErrorStatus setMSize(Adesk::Int16 size); // 2 or more
    Acad::ErrorStatus setNSize(Adesk::Int16 size);
    Adesk::Int16 mSurfaceDensity() const { return Adesk::Int16(counts_[2]); }
    Adesk::Int16 nSurfaceDensity() const { return Adesk::Int16(counts_[3]); }
    bool isMClosed() const { return flags_ & 1; }
    bool isNClosed() const { return flags_ & 32; }
    Acad::ErrorStatus makeMClosed() { return setFlag(1, true); }
    Acad::ErrorStatus makeMOpen() { return setFlag(1, false); }
    Acad::ErrorStatus makeNClosed() { return setFlag(32, true); }
    Acad::ErrorStatus makeNOpen() { return setFlag(32, false); }
    Acad::ErrorStatus appendVertex(AcDbPolygonMeshVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDbPolygonMeshVertex* vertex);
    host::Wires wires() const override; // of the surface where there is one, else of the frame

protected:
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override; // AcDbFace each

private:
    struct Grid {
        std::vector<AcGePoint3d> points;
        int rows = 0, columns = 0;
    };
    Grid grid() const;
    Acad::ErrorStatus setFlag(int bit, bool on);
};
