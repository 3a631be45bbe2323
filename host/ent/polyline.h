// AcDbPolyline: the lightweight polyline. Vertices in the plane of a normal and an elevation, each
// with a bulge and two widths for the segment that starts there, in one contiguous array.
#pragma once
#include "host/ent/curve.h"
#include "host/ge/arc.h"
#include "host/ge/line.h"

class AcDb2dPolyline;

class AcDbPolyline : public AcDbCurve {
    HOST_DB_CLASS(AcDbPolyline)
public:
    enum SegType { kLine, kArc, kCoincident, kPoint, kEmpty };
    struct Vertex {
        AcGePoint2d point;
        double bulge = 0, startWidth = 0, endWidth = 0;
    };

    AcDbPolyline() = default;
    explicit AcDbPolyline(unsigned vertexCount) { vertices_.reserve(vertexCount); }

    unsigned numVerts() const { return unsigned(vertices_.size()); }
    // eInvalidIndex beyond the last vertex; getPointAt in world coordinates, or in the plane's own.
    Acad::ErrorStatus getPointAt(unsigned index, AcGePoint3d& point) const;
    Acad::ErrorStatus getPointAt(unsigned index, AcGePoint2d& point) const;
    Acad::ErrorStatus setPointAt(unsigned index, const AcGePoint2d& point);
    Acad::ErrorStatus getBulgeAt(unsigned index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned index, double bulge);
    Acad::ErrorStatus getWidthsAt(unsigned index, double& start, double& end) const;
    Acad::ErrorStatus setWidthsAt(unsigned index, double start, double end);
    // Widths of -1 mean the polyline's constant width, 0 when it has none; indices beyond the end append.
    Acad::ErrorStatus addVertexAt(unsigned index, const AcGePoint2d& point, double bulge = 0,
                                  double startWidth = -1, double endWidth = -1,
                                  Adesk::Int32 vertexIdentifier = 0);
    // eDegenerateGeometry when fewer than two would remain.
    Acad::ErrorStatus removeVertexAt(unsigned index);
    // Keeps the closed flag, normal and elevation.
    Acad::ErrorStatus reset(Adesk::Boolean reuse, unsigned vertexCount);
    SegType segType(unsigned index) const;
    Acad::ErrorStatus getLineSegAt(unsigned index, AcGeLineSeg3d& line) const;
    Acad::ErrorStatus getArcSegAt(unsigned index, AcGeCircArc3d& arc) const;

    Acad::ErrorStatus setClosed(Adesk::Boolean closed);
    bool hasPlinegen() const { return plinegen_; }
    void setPlinegen(bool on);
    double elevation() const { return elevation_; }
    Acad::ErrorStatus setElevation(double elevation);
    double thickness() const { return thickness_; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    // eInvalidInput when the widths differ.
    Acad::ErrorStatus getConstantWidth(double& width) const;
    Acad::ErrorStatus setConstantWidth(double width);
    bool hasBulges() const;
    bool hasWidth() const;
    bool isOnlyLines() const { return !hasBulges(); }
    bool isOnlyArcs() const;

    // A 2D polyline with the same vertices; with `transferId` it takes this one's place in the
    // drawing and this one belongs to the caller.
    Acad::ErrorStatus convertTo(Adesk::Boolean transferId, AcDb2dPolyline*& polyline) const;
    // Takes over a simple or curve-fit 2D polyline. eIllegalEntityType for a spline-fit one.
    Acad::ErrorStatus convertFrom(AcDbEntity*& polyline2d, Adesk::Boolean transferId = true);

    const std::vector<Vertex>& vertices() const { return vertices_; }
    // Replaces all vertices at once. eInvalidInput when a number isn't finite.
    Acad::ErrorStatus setVertices(std::vector<Vertex> vertices);

    Adesk::Boolean isClosed() const override { return closed_; }
    Acad::ErrorStatus extend(double toParam) override;
    Acad::ErrorStatus extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) override;
    Acad::ErrorStatus reverseCurve() override;
    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void inDone(host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    host::CurvePath makePath() const override;
    std::unique_ptr<AcDbCurve> makePart(double from, double to) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subExplode(AcDbVoidPtrArray& parts) const override;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;

private:
    std::vector<Vertex> vertices_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double elevation_ = 0, thickness_ = 0;
    double constantWidth_ = 0; // counts while no vertex has widths of its own
    bool closed_ = false, plinegen_ = false, ownWidths_ = false;
};
