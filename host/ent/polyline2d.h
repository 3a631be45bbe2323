// The old polylines of the plane, whose vertices are objects: simple, fitted with arcs, or
// smoothed as quadratic or cubic B-splines over a frame of control vertices.
#pragma once
#include "host/ent/polyline.h"
#include "host/ent/vertexed_curve.h"

class AcDb2dVertex : public host::VertexEntity {
    HOST_DB_CLASS(AcDb2dVertex)
public:
    AcDb2dVertex() = default;
    explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0, double startWidth = 0,
                          double endWidth = 0, double tangent = 0);
    AcDb::Vertex2dType vertexType() const;
    Acad::ErrorStatus setVertexType(AcDb::Vertex2dType type);
    AcGePoint3d position() const { return position_; } // X and Y in the polyline's plane
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    double bulge() const { return bulge_; }
    Acad::ErrorStatus setBulge(double bulge);
    double startWidth() const { return startWidth_; }
    Acad::ErrorStatus setStartWidth(double width);
    double endWidth() const { return endWidth_; }
    Acad::ErrorStatus setEndWidth(double width);
    bool isTangentUsed() const { return flags_ & 2; }
    double tangent() const { return tangent_; } // radians
    Acad::ErrorStatus setTangent(double angle);
    Acad::ErrorStatus useTangent();

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

private:
    AcGePoint3d position_;
    double bulge_ = 0, startWidth_ = 0, endWidth_ = 0, tangent_ = 0;
    int flags_ = 0; // as in files: 1 added by curve fit, 2 tangent, 8 added by spline fit, 16 control
    bool ownWidths_ = false; // else the polyline's default widths
    friend class AcDb2dPolyline;
};

class AcDb2dPolyline : public host::VertexedCurve<AcDb2dVertex> {
    HOST_DB_CLASS(AcDb2dPolyline)
public:
    AcDb2dPolyline() = default;
    AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation = 0,
                   Adesk::Boolean closed = false, double defaultStartWidth = 0, double defaultEndWidth = 0,
                   const AcGeDoubleArray* bulges = nullptr);

    AcDb::Poly2dType polyType() const { return type_; }
    Acad::ErrorStatus setPolyType(AcDb::Poly2dType type); // the flag alone
    // Adds or takes away the fitted vertices. From a fitted kind to simple only the frame stays.
    Acad::ErrorStatus convertToPolyType(AcDb::Poly2dType type);
    Acad::ErrorStatus straighten();
    Acad::ErrorStatus splineFit();
    Acad::ErrorStatus splineFit(AcDb::Poly2dType type, Adesk::Int16 segments);
    Acad::ErrorStatus curveFit();
    double defaultStartWidth() const { return startWidth_; }
    Acad::ErrorStatus setDefaultStartWidth(double width);
    double defaultEndWidth() const { return endWidth_; }
    Acad::ErrorStatus setDefaultEndWidth(double width);
    double elevation() const { return elevation_; }
    Acad::ErrorStatus setElevation(double elevation);
    double thickness() const { return thickness_; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool isLinetypeGenerationOn() const { return flags_ & 128; }
    void setLinetypeGeneration(bool on);
    struct Widths {
        double start = 0, end = 0;
    };
    Widths widthsOf(const AcDb2dVertex& vertex) const; // its own or the default ones
    // eInvalidInput when start and end or two vertices differ.
    Acad::ErrorStatus getConstantWidth(double& width) const;

    AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const; // in world coordinates

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
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;

private:
    std::vector<AcDbPolyline::Vertex> drawnVertices() const;
    void assignDrawn(const std::vector<AcDbPolyline::Vertex>& drawn);
    AcDb::Poly2dType type_ = AcDb::k2dSimplePoly;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double elevation_ = 0, thickness_ = 0, startWidth_ = 0, endWidth_ = 0;
    int flags_ = 0;                                // bits that nothing else holds, such as 128
    bool startStated_ = false, endStated_ = false; // the widths, by the file
};
