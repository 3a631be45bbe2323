// What the old polylines of the plane and of space have in common: vertices that are objects, held in order,
// and whether the last one leads back to the first.
#pragma once

#include "host/ent/curve.h"
#include "host/ent/polyline_parts.h"

namespace host {

template <class Vertex> class VertexedCurve : public AcDbCurve {
public:
    Acad::ErrorStatus makeClosed() { return setClosed(true); }
    Acad::ErrorStatus makeOpen() { return setClosed(false); }
    Acad::ErrorStatus setClosed(Adesk::Boolean closed) {
        if (auto es = willModify(); es != Acad::eOk) return es;
        return closed_ = closed, Acad::eOk;
    }
    Adesk::Boolean isClosed() const override { return closed_; }

    // The vertex belongs to the polyline; in a drawing it stays open for write.
    Acad::ErrorStatus appendVertex(Vertex* vertex) {
        AcDbObjectId id;
        return appendVertex(id, vertex);
    }
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, Vertex* vertex) {
        return insertVertexAt(id, parts_.ids().empty() ? AcDbObjectId() : parts_.ids().back(), vertex);
    }
    // Behind the vertex `after`; without one in front of all.
    Acad::ErrorStatus insertVertexAt(AcDbObjectId& id, AcDbObjectId after, Vertex* vertex) {
        if (!vertex) return Acad::eNullEntityPointer;
        if (!vertex->objectId().isNull()) return Acad::eAlreadyInDb;
        if (auto es = willModify(); es != Acad::eOk) return es;
        const bool isFirst = after.isNull() && !parts_.ids().empty();
        id = isFirst ? parts_.insertFirst(*this, vertex) : parts_.append(*this, vertex, after);
        return Acad::eOk;
    }
    Acad::ErrorStatus openVertex(Vertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const {
        return acdbOpenObject(vertex, id, mode, openErased);
    }
    // Of residents; the caller deletes it.
    AcDbObjectIterator* vertexIterator() const { return new AcDbObjectIterator(parts_.ids()); }
    const OwnedParts& parts() const { return parts_; }

    std::string dxfName() const override { return "POLYLINE"; }
    // Copies own fresh copies of the vertices.
    AcRxObject* clone() const override {
        AcRxObject* copy = AcDbCurve::clone();
        if (copy) static_cast<VertexedCurve*>(copy)->parts_.detach();
        return copy;
    }
    void ownedParts(std::vector<AcDbObjectId>& parts) const override { parts_.list(parts); }
    bool addOwnedPart(AcDbObjectId part) override { return parts_.adopt(part), true; }
    void joined(AcDbDatabase& database) override { parts_.join(*this, database); }

protected:
    VertexedCurve() = default;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override { return explodePieces(parts); }
    std::uint64_t state() const override { return parts_.state(AcDbCurve::state()); }

    OwnedParts parts_;
    bool closed_ = false;
};

} // namespace host
