// The polylines of space, whose vertices are objects: simple, or smoothed over a frame.
#pragma once
#include "host/ent/curve.h"
#include "host/ent/polyline_parts.h"

class AcDb3dPolylineVertex : public host::VertexEntity {
    HOST_DB_CLASS(AcDb3dPolylineVertex)
public:
    AcDb3dPolylineVertex() = default;
    explicit AcDb3dPolylineVertex(const AcGePoint3d& position) : position_(position) {}
    AcDb::Vertex3dType vertexType() const;
    Acad::ErrorStatus setVertexType(AcDb::Vertex3dType type);
    AcGePoint3d position() const { return position_; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

private:
    AcGePoint3d position_;
    int flags_ = 32; // as in files: 8 added by spline fit, 16 control, 32 always
};

class AcDb3dPolyline : public AcDbCurve {
    HOST_DB_CLASS(AcDb3dPolyline)
public:
    AcDb3dPolyline() = default;
    AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& vertices, Adesk::Boolean closed = false);

    AcDb::Poly3dType polyType() const { return type_; }
    Acad::ErrorStatus setPolyType(AcDb::Poly3dType type);
    Acad::ErrorStatus convertToPolyType(AcDb::Poly3dType type);
    Acad::ErrorStatus straighten();
    Acad::ErrorStatus splineFit();
    Acad::ErrorStatus splineFit(AcDb::Poly3dType type, Adesk::Int16 segments);
    Acad::ErrorStatus makeClosed();
    Acad::ErrorStatus makeOpen();
    Acad::ErrorStatus setClosed(Adesk::Boolean closed) { return closed ? makeClosed() : makeOpen(); }

    Acad::ErrorStatus appendVertex(AcDb3dPolylineVertex* vertex);
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex);
    Acad::ErrorStatus insertVertexAt(AcDbObjectId& id, AcDbObjectId after, AcDb3dPolylineVertex* vertex);
    Acad::ErrorStatus openVertex(AcDb3dPolylineVertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false) const;
    AcDbObjectIterator* vertexIterator() const;

    const host::OwnedParts& parts() const { return parts_; }
    Adesk::Boolean isClosed() const override { return closed_; }
    std::string dxfName() const override { return "POLYLINE"; }
    Acad::ErrorStatus extend(double toParam) override;
    Acad::ErrorStatus extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) override;
    Acad::ErrorStatus reverseCurve() override;
    // Copies own fresh copies of the vertices.
    AcRxObject* clone() const override;
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;
    void ownedParts(std::vector<AcDbObjectId>& parts) const override { parts_.list(parts); }
    bool addOwnedPart(AcDbObjectId part) override { return parts_.adopt(part), true; }
    void joined(AcDbDatabase& database) override { parts_.join(*this, database); }

protected:
    host::CurvePath makePath() const override;
    std::unique_ptr<AcDbCurve> makePart(double from, double to) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override;
    std::uint64_t state() const override;

private:
    std::vector<AcGePoint3d> drawnPoints() const;
    host::OwnedParts parts_;
    AcDb::Poly3dType type_ = AcDb::k3dSimplePoly;
    int flags_ = 8;
    bool closed_ = false;
};
