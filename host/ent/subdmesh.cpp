// Meshes with subdivision levels: reading the lists, changing vertices in place, wires.
#include "host/ent/subdmesh.h"

#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDbSubDMesh, AcDbEntity, L"MESH")

namespace {

// Calls `visit(corners, count)` for each face of a list; false when the list is broken.
template <class Visit> bool eachFace(const std::vector<Adesk::Int32>& faces, size_t vertices, Visit visit) {
    for (size_t at = 0; at < faces.size();) {
        const Adesk::Int32 count = faces[at++];
        if (count < 0 || size_t(count) > faces.size() - at) return false;
        for (Adesk::Int32 i = 0; i < count; ++i)
            if (faces[at + size_t(i)] < 0 || size_t(faces[at + size_t(i)]) >= vertices) return false;
        visit(&faces[at], size_t(count));
        at += size_t(count);
    }
    return true;
}

} // namespace

Acad::ErrorStatus AcDbSubDMesh::getVertices(AcGePoint3dArray& vertices) const {
    return vertices = AcGePoint3dArray(vertices_), Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::getFaceArray(AcArray<Adesk::Int32>& faces) const {
    return faces = AcArray<Adesk::Int32>(faces_), Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::numOfVertices(Adesk::Int32& count) const {
    return count = Adesk::Int32(vertices_.size()), Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::numOfFaces(Adesk::Int32& count) const {
    count = 0;
    eachFace(faces_, vertices_.size(), [&](const Adesk::Int32*, size_t) { ++count; });
    return Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::subdLevel(Adesk::Int32& level) const {
    return level = Adesk::Int32(own_.integer(91)), Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::getVertexAt(int index, AcGePoint3d& vertex) const {
    if (index < 0 || size_t(index) >= vertices_.size()) return Acad::eInvalidIndex;
    return vertex = vertices_[size_t(index)], Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::setVertexAt(int index, const AcGePoint3d& vertex) {
    if (index < 0 || size_t(index) >= vertices_.size()) return Acad::eInvalidIndex;
    if (!host::finite(vertex)) return Acad::eInvalidInput;
    int at = 0;
    return moveVertices([&](const AcGePoint3d& p) { return at++ == index ? vertex : p; });
}

template <class Image> Acad::ErrorStatus AcDbSubDMesh::moveVertices(Image image) {
    if (auto es = change(); es != Acad::eOk) return es;
    own_.mapPoints({10}, image);
    vertices_ = own_.points(10);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSubDMesh::setSubDMesh(const AcGePoint3dArray& vertices,
                                            const AcArray<Adesk::Int32>& faces, int level) {
    const auto none = [](const Adesk::Int32*, size_t) {};
    if (level < 0 || level > 255 || !eachFace(faces.items(), vertices.items().size(), none))
        return Acad::eInvalidInput;
    for (const AcGePoint3d& p : vertices)
        if (!host::finite(p)) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    vertices_ = vertices.items(), faces_ = faces.items();
    host::GroupList groups;
    const auto integer = [&](int code, std::int64_t value) {
        groups.append(host::Group::ofInteger(code, value));
    };
    groups.append(host::Group::ofText(100, marker()));
    integer(71, 2), integer(72, 0), integer(91, level);
    integer(92, std::int64_t(vertices_.size()));
    for (const AcGePoint3d& p : vertices_)
        for (unsigned axis = 0; axis < 3; ++axis)
            groups.append(host::Group::ofReal(10 + 10 * int(axis), p[axis]));
    integer(93, std::int64_t(faces_.size()));
    for (Adesk::Int32 entry : faces_) integer(90, entry);
    integer(94, 0), integer(95, 0), integer(90, 0); // no edges, no creases, no overrides
    own_.assign(std::move(groups));
    return Acad::eOk;
}

// The face list follows its length (93); further lists have the same code.
void AcDbSubDMesh::inDone(host::ReadContext& context) {
    vertices_ = own_.points(10);
    faces_.clear();
    std::int64_t left = 0;
    for (const host::Group group : own_.list()) {
        if (group.code == 93) left = group.integer;
        if (group.code != 90 || left <= 0) continue;
        faces_.push_back(Adesk::Int32(group.integer));
        --left;
    }
    if (!eachFace(faces_, vertices_.size(), [](const Adesk::Int32*, size_t) {}))
        context.repaired("mesh whose faces point outside its vertices: the faces before are drawn");
}

host::Wires AcDbSubDMesh::wires() const {
    host::Wires wires{vertices_, {}};
    eachFace(faces_, vertices_.size(), [&](const Adesk::Int32* corners, size_t count) {
        for (size_t i = 0; i < count; ++i) wires.addEdge(corners[i], corners[(i + 1) % count]);
    });
    wires.finish();
    return wires;
}

Adesk::Boolean AcDbSubDMesh::subWorldDraw(AcGiWorldDraw* context) const {
    wires().draw(context->geometry());
    return true;
}
Acad::ErrorStatus AcDbSubDMesh::subTransformBy(const AcGeMatrix3d& matrix) {
    return moveVertices([&](const AcGePoint3d& p) { return matrix * p; });
}
Acad::ErrorStatus AcDbSubDMesh::subGetGeomExtents(AcDbExtents& extents) const {
    AcDbExtents box;
    for (const AcGePoint3d& p : vertices_) box.addPoint(p);
    if (!box.isValid()) return Acad::eInvalidExtents;
    return extents = box, Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::subGetGripPoints(AcGePoint3dArray& points) const {
    return points.append(AcGePoint3dArray(vertices_)), Acad::eOk;
}
Acad::ErrorStatus AcDbSubDMesh::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    int at = 0;
    return moveVertices([&](const AcGePoint3d& p) { return indices.contains(at++) ? p + offset : p; });
}
