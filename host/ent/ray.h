// Construction lines without end: rays, which begin somewhere, and lines that go on both ways. Their
// parameter is the distance from the base point.
#pragma once
#include "host/ent/curve.h"

namespace host {

// What the two have in common.
class EndlessCurve : public AcDbCurve {
public:
    AcGePoint3d basePoint() const { return base_; }
    Acad::ErrorStatus setBasePoint(const AcGePoint3d& point);
    AcGeVector3d unitDir() const { return direction_; }
    // Any length above 0; eInvalidInput without a direction.
    Acad::ErrorStatus setUnitDir(const AcGeVector3d& direction);
    virtual bool hasStart() const = 0;

    Adesk::Boolean isClosed() const override { return false; }
    Adesk::Boolean isPeriodic() const override { return false; }
    // What asks for an end that isn't there gives eNotApplicable.
    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double&) const override { return Acad::eNotApplicable; }
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d&) const override { return Acad::eNotApplicable; }
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
    // Distances count from the start of a ray.
    Acad::ErrorStatus getDistAtParam(double param, double& distance) const override;
    Acad::ErrorStatus getParamAtDist(double distance, double& param) const override;
    Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& distance) const override;
    Acad::ErrorStatus getPointAtDist(double distance, AcGePoint3d& point) const override;
    Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& derivative) const override;
    Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const override;
    Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& derivative) const override;
    Acad::ErrorStatus getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& onCurve,
                                        Adesk::Boolean extend = false) const override;
    Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                        AcGePoint3d& onCurve, Adesk::Boolean extend = false) const override;
    // One parallel in the XY plane; eNotApplicable for one that stands upright.
    Acad::ErrorStatus getOffsetCurves(double distance, AcDbVoidPtrArray& curves) const override;
    Adesk::Boolean isPlanar() const override { return true; }
    Acad::ErrorStatus getPlane(AcGePlane& plane) const override;

    bool inGroup(const Group& group, ReadContext& context) override;
    void inDone(ReadContext& context) override;
    void outGroups(GroupWriter& writer) const override;

protected:
    virtual const char* marker() const = 0;
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents&) const override { return Acad::eInvalidExtents; }
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                       const AcGePlane* plane, AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices,
                                             const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                        const AcGePoint3d& last, AcGePoint3dArray& points) const override;

private:
    bool holds(double param) const;
    std::optional<double> paramNear(const AcGePoint3d& point) const;
    AcGePoint3d base_;
    AcGeVector3d direction_ = AcGeVector3d::kXAxis;
};

} // namespace host

class AcDbRay : public host::EndlessCurve {
    HOST_DB_CLASS(AcDbRay)
public:
    bool hasStart() const override { return true; }

protected:
    const char* marker() const override { return "AcDbRay"; }
};

class AcDbXline : public host::EndlessCurve {
    HOST_DB_CLASS(AcDbXline)
public:
    bool hasStart() const override { return false; }

protected:
    const char* marker() const override { return "AcDbXline"; }
};
