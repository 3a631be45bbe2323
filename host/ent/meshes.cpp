// The old meshes: their parts, their form in files, and what they draw.
#include "host/ent/meshes.h"

#include <algorithm>

#include "host/ent/faces.h"
#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDbPolyFaceMeshVertex, AcDbEntity, L"")
HOST_DEFINE_CLASS(AcDbFaceRecord, AcDbEntity, L"")
HOST_DEFINE_CLASS(AcDbPolyFaceMesh, AcDbEntity, L"")
HOST_DEFINE_CLASS(AcDbPolygonMeshVertex, AcDbEntity, L"")
HOST_DEFINE_CLASS(AcDbPolygonMesh, AcDbEntity, L"")

namespace host {

namespace {
constexpr int kMostParts = 32767; // what the counts in files can hold

bool isFace(const AcDbEntity& part) { return AcDbFaceRecord::cast(&part) != nullptr; }
} // namespace

Acad::ErrorStatus MeshVertex::setPosition(const AcGePoint3d& position) {
    HOST_SET_FINITE(position_, position);
}

bool MeshVertex::inGroup(const Group& group, ReadContext& context) {
    if (context.within(marker_) || context.within("AcDbVertex")) {
        if (takeTriple(group, 10, position_)) return true;
        if (group.code == 70) return flags_ = int(group.integer), true;
    }
    return AcDbEntity::inGroup(group, context);
}

void MeshVertex::outGroups(GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbVertex");
    writer.subclass(marker_);
    writer.point(10, position_);
    writer.integer(70, flags_);
}

AcDbObjectIterator* PartedMesh::vertexIterator() const { return new AcDbObjectIterator(parts_.ids()); }

AcRxObject* PartedMesh::clone() const {
    AcRxObject* copy = AcDbEntity::clone();
    if (copy) static_cast<PartedMesh*>(copy)->parts_.detach();
    return copy;
}

bool PartedMesh::inGroup(const Group& group, ReadContext& context) {
    if (!context.within(marker_)) return AcDbEntity::inGroup(group, context);
    switch (group.code) {
    case 10:
    case 20:
    case 30: return group.real == 0; // always 0; anything else is kept
    case 66: return true;
    case 70: flags_ = int(group.integer); return true;
    case 71:
    case 72:
    case 73:
    case 74: counts_[group.code - 71] = int(group.integer), counted_ = true; return true;
    case 75: smoothing_ = int(group.integer); return true;
    default: return AcDbEntity::inGroup(group, context);
    }
}

void PartedMesh::outGroups(GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass(marker_);
    writer.integer(66, 1);
    writer.point(10, AcGePoint3d::kOrigin);
    writer.integer(70, flags_);
    for (int i = 0; counted_ && i < 4; ++i)
        if (i < 2 || counts_[i] != 0) writer.integer(71 + i, counts_[i]);
    if (smoothing_ != 0) writer.integer(75, smoothing_);
}

Acad::ErrorStatus PartedMesh::append(AcDbObjectId& id, AcDbEntity* part) {
    if (!part) return Acad::eNullEntityPointer;
    if (!part->objectId().isNull()) return Acad::eAlreadyInDb;
    if (parts_.size() >= 2 * kMostParts) return Acad::eOutOfRange;
    if (auto es = willModify(); es != Acad::eOk) return es;
    id = parts_.append(*this, part);
    return Acad::eOk;
}

Adesk::Boolean PartedMesh::subWorldDraw(AcGiWorldDraw* context) const {
    wires().draw(context->geometry());
    return true;
}

Acad::ErrorStatus PartedMesh::subGetGeomExtents(AcDbExtents& extents) const {
    const AcDbExtents box = wires().extents();
    if (!box.isValid()) return Acad::eInvalidExtents;
    return extents = box, Acad::eOk;
}

Acad::ErrorStatus PartedMesh::subTransformBy(const AcGeMatrix3d& matrix) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    parts_.eachForWrite<AcDbEntity>([&](AcDbEntity& part) {
        if (isFace(part)) return;
        auto& vertex = static_cast<MeshVertex&>(part);
        vertex.setPosition(matrix * vertex.position());
    });
    return Acad::eOk;
}

Acad::ErrorStatus PartedMesh::subGetGripPoints(AcGePoint3dArray& points) const {
    parts_.each<AcDbEntity>([&](const AcDbEntity& part) {
        if (!isFace(part)) points.append(static_cast<const MeshVertex&>(part).position());
    });
    return Acad::eOk;
}

Acad::ErrorStatus PartedMesh::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    int at = 0;
    parts_.eachForWrite<AcDbEntity>([&](AcDbEntity& part) {
        if (isFace(part) || !indices.contains(at++)) return;
        auto& vertex = static_cast<MeshVertex&>(part);
        vertex.setPosition(vertex.position() + offset);
    });
    return Acad::eOk;
}

} // namespace host

// -- faces over vertices ------------------------------------------------------------------------------

Acad::ErrorStatus AcDbFaceRecord::getVertexAt(Adesk::UInt16 corner, Adesk::Int16& vertex) const {
    if (corner > 3) return Acad::eInvalidIndex;
    return vertex = Adesk::Int16(std::abs(corners_[corner])), Acad::eOk;
}
Acad::ErrorStatus AcDbFaceRecord::setVertexAt(Adesk::UInt16 corner, Adesk::Int16 vertex) {
    if (corner > 3) return Acad::eInvalidIndex;
    HOST_SET(corners_[corner], vertex);
}
Acad::ErrorStatus AcDbFaceRecord::isEdgeVisibleAt(Adesk::UInt16 corner, Adesk::Boolean& visible) const {
    if (corner > 3) return Acad::eInvalidIndex;
    return visible = corners_[corner] > 0, Acad::eOk;
}
Acad::ErrorStatus AcDbFaceRecord::makeEdgeVisibleAt(Adesk::UInt16 corner) {
    if (corner > 3) return Acad::eInvalidIndex;
    HOST_SET(corners_[corner], Adesk::Int16(std::abs(corners_[corner])));
}
Acad::ErrorStatus AcDbFaceRecord::makeEdgeInvisibleAt(Adesk::UInt16 corner) {
    if (corner > 3) return Acad::eInvalidIndex;
    HOST_SET(corners_[corner], Adesk::Int16(-std::abs(corners_[corner])));
}

bool AcDbFaceRecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbFaceRecord")) {
        switch (group.code) {
        case 10:
        case 20:
        case 30: return group.real == 0; // always 0; anything else is kept
        case 70: flags_ = int(group.integer); return true;
        case 71:
        case 72:
        case 73:
        case 74: corners_[group.code - 71] = Adesk::Int16(group.integer); return true;
        default: break;
        }
    }
    return AcDbEntity::inGroup(group, context);
}

void AcDbFaceRecord::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbFaceRecord");
    writer.point(10, AcGePoint3d::kOrigin);
    writer.integer(70, flags_);
    for (int i = 0; i < 4; ++i)
        if (corners_[i] != 0) writer.integer(71 + i, corners_[i]);
}

Acad::ErrorStatus AcDbPolyFaceMesh::appendVertex(AcDbPolyFaceMeshVertex* vertex) {
    AcDbObjectId id;
    return appendVertex(id, vertex);
}
Acad::ErrorStatus AcDbPolyFaceMesh::appendVertex(AcDbObjectId& id, AcDbPolyFaceMeshVertex* vertex) {
    if (counts_[0] >= host::kMostParts) return Acad::eOutOfRange;
    if (auto es = append(id, vertex); es != Acad::eOk) return es;
    ++counts_[0], counted_ = true;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbPolyFaceMesh::appendFaceRecord(AcDbFaceRecord* face) {
    AcDbObjectId id;
    return appendFaceRecord(id, face);
}
Acad::ErrorStatus AcDbPolyFaceMesh::appendFaceRecord(AcDbObjectId& id, AcDbFaceRecord* face) {
    if (counts_[1] >= host::kMostParts) return Acad::eOutOfRange;
    if (auto es = append(id, face); es != Acad::eOk) return es;
    ++counts_[1], counted_ = true;
    return Acad::eOk;
}

namespace {

// The corners of a face that are there, as places in the list of vertices.
struct Face {
    int corners[4] = {}, count = 0;
    bool visible[4] = {};
};
Face faceOf(const AcDbFaceRecord& record) {
    Face face;
    for (Adesk::UInt16 i = 0; i < 4; ++i) {
        Adesk::Int16 vertex = 0;
        record.getVertexAt(i, vertex);
        if (vertex == 0) continue;
        record.isEdgeVisibleAt(i, face.visible[face.count]);
        face.corners[face.count++] = vertex - 1;
    }
    return face;
}

void setCorners(AcDbFace& face, const AcGePoint3d (&corners)[4]) {
    for (unsigned i = 0; i < 4; ++i) face.setVertexAt(i, corners[i]);
}

template <class Visit> void eachFace(const host::OwnedParts& parts, Visit visit) {
    parts.each<AcDbEntity>([&](const AcDbEntity& part) {
        if (const auto* record = AcDbFaceRecord::cast(&part)) visit(faceOf(*record));
    });
}

} // namespace

host::Wires AcDbPolyFaceMesh::wires() const {
    host::Wires wires;
    parts_.each<AcDbEntity>([&](const AcDbEntity& part) {
        if (const auto* vertex = AcDbPolyFaceMeshVertex::cast(&part))
            wires.points.push_back(vertex->position());
    });
    eachFace(parts_, [&](const Face& face) {
        for (int i = 0; i < face.count; ++i)
            if (face.visible[i]) wires.addEdge(face.corners[i], face.corners[(i + 1) % face.count]);
    });
    wires.finish();
    return wires;
}

Acad::ErrorStatus AcDbPolyFaceMesh::subExplode(AcDbVoidPtrArray& parts) const {
    const std::vector<AcGePoint3d> points = wires().points;
    eachFace(parts_, [&](const Face& face) {
        const bool there = std::all_of(face.corners, face.corners + face.count,
                                       [&](int corner) { return size_t(corner) < points.size(); });
        if (!there || face.count < 3) return;
        auto made = std::make_unique<AcDbFace>();
        for (unsigned i = 0; i < 4; ++i) {
            const int k = std::min(int(i), face.count - 1);
            made->setVertexAt(i, points[size_t(face.corners[k])]);
            if (!face.visible[k]) made->makeEdgeInvisibleAt(i);
        }
        made->setPropertiesFrom(this);
        parts.append(static_cast<AcDbEntity*>(made.release()));
    });
    return Acad::eOk;
}

// -- grids --------------------------------------------------------------------------------------------

AcDb::Vertex3dType AcDbPolygonMeshVertex::vertexType() const {
    if (flags_ & 16) return AcDb::k3dControlVertex;
    return flags_ & 8 ? AcDb::k3dFitVertex : AcDb::k3dSimpleVertex;
}
Acad::ErrorStatus AcDbPolygonMeshVertex::setVertexType(AcDb::Vertex3dType type) {
    static constexpr int kBits[] = {0, 16, 8}; // by Vertex3dType
    HOST_SET(flags_, (flags_ & ~(16 | 8)) | kBits[type]);
}

AcDbPolygonMesh::AcDbPolygonMesh(Adesk::Int16 mSize, Adesk::Int16 nSize, const AcGePoint3dArray& vertices,
                                 Adesk::Boolean mClosed, Adesk::Boolean nClosed)
    : AcDbPolygonMesh() {
    counts_[0] = mSize, counts_[1] = nSize, counted_ = true;
    flags_ |= (mClosed ? 1 : 0) | (nClosed ? 32 : 0);
    for (const AcGePoint3d& p : vertices) appendVertex(new AcDbPolygonMeshVertex(p));
}

Acad::ErrorStatus AcDbPolygonMesh::setMSize(Adesk::Int16 size) {
    if (size < 2) return Acad::eInvalidInput;
    counted_ = true;
    HOST_SET(counts_[0], size);
}
Acad::ErrorStatus AcDbPolygonMesh::setNSize(Adesk::Int16 size) {
    if (size < 2) return Acad::eInvalidInput;
    counted_ = true;
    HOST_SET(counts_[1], size);
}
Acad::ErrorStatus AcDbPolygonMesh::setFlag(int bit, bool on) {
    HOST_SET(flags_, on ? flags_ | bit : flags_ & ~bit);
}
Acad::ErrorStatus AcDbPolygonMesh::appendVertex(AcDbPolygonMeshVertex* vertex) {
    AcDbObjectId id;
    return appendVertex(id, vertex);
}
Acad::ErrorStatus AcDbPolygonMesh::appendVertex(AcDbObjectId& id, AcDbPolygonMeshVertex* vertex) {
    return append(id, vertex);
}

AcDbPolygonMesh::Grid AcDbPolygonMesh::grid() const {
    std::vector<AcGePoint3d> frame, surface;
    parts_.each<AcDbPolygonMeshVertex>([&](const AcDbPolygonMeshVertex& v) {
        (v.vertexType() == AcDb::k3dFitVertex ? surface : frame).push_back(v.position());
    });
    if (surface.empty()) return {std::move(frame), counts_[0], counts_[1]};
    return {std::move(surface), counts_[2], counts_[3]};
}

host::Wires AcDbPolygonMesh::wires() const {
    Grid grid = this->grid();
    host::Wires wires{std::move(grid.points), {}};
    const std::int64_t rows = grid.rows, columns = grid.columns, count = std::int64_t(wires.points.size());
    if (rows < 1 || columns < 1) return wires;
    // Vertices beyond the grid, or missing from it, make no edges.
    for (std::int64_t at = 0; at < std::min(count, rows * columns); ++at) {
        const std::int64_t row = at / columns, column = at % columns;
        if (column + 1 < columns || isNClosed()) wires.addEdge(at, row * columns + (column + 1) % columns);
        if (row + 1 < rows || isMClosed()) wires.addEdge(at, (row + 1) % rows * columns + column);
    }
    wires.finish();
    return wires;
}

Acad::ErrorStatus AcDbPolygonMesh::subExplode(AcDbVoidPtrArray& parts) const {
    const Grid grid = this->grid();
    const int lastRow = grid.rows - (isMClosed() ? 0 : 1), lastColumn = grid.columns - (isNClosed() ? 0 : 1);
    const auto at = [&](int row, int column) {
        return grid.points[size_t(row % grid.rows) * size_t(grid.columns) + size_t(column % grid.columns)];
    };
    if (grid.rows < 1 || grid.columns < 1 || size_t(grid.rows) * size_t(grid.columns) > grid.points.size())
        return Acad::eDegenerateGeometry;
    for (int row = 0; row < lastRow; ++row)
        for (int column = 0; column < lastColumn; ++column) {
            auto face = std::make_unique<AcDbFace>();
            setCorners(*face,
                       {at(row, column), at(row, column + 1), at(row + 1, column + 1), at(row + 1, column)});
            face->setPropertiesFrom(this);
            parts.append(static_cast<AcDbEntity*>(face.release()));
        }
    return Acad::eOk;
}
