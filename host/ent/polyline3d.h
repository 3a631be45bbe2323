// The polylines of space, whose vertices are objects: simple, or smoothed over a frame.
#pragma once
#include "host/ent/vertexed_curve.h"

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

class AcDb3dPolyline : public host::VertexedCurve<AcDb3dPolylineVertex> {
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

    Acad::ErrorStatus extend(double toParam) override;
    Acad::ErrorStatus extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) override;
    Acad::ErrorStatus reverseCurve() override;
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    host::CurvePath makePath() const override;
    std::unique_ptr<AcDbCurve> makePart(double from, double to) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

private:
    std::vector<AcGePoint3d> drawnPoints() const;
    AcDb::Poly3dType type_ = AcDb::k3dSimplePoly;
    int flags_ = 8;
};
