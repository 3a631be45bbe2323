// AcDbCurve: what every curve of a drawing answers. Parameters are each kind's own: radians on
// arcs and ellipses, vertex number plus fraction on polylines, knots on splines, length on lines.
// Unless told otherwise an operation that fails returns a status and leaves its results untouched.
#pragma once
#include "host/db/entity.h"
#include "host/ent/curve_state.h"

class AcDbSpline;

class AcDbCurve : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbCurve)
public:
    virtual Adesk::Boolean isClosed() const;
    virtual Adesk::Boolean isPeriodic() const;

    virtual Acad::ErrorStatus getStartParam(double& param) const;
    virtual Acad::ErrorStatus getEndParam(double& param) const;
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;

    // eInvalidInput for parameters outside the curve by more than rounding.
    virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
    // eInvalidInput for a point farther than 1e-6 of the curve's size from it.
    virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
    virtual Acad::ErrorStatus getDistAtParam(double param, double& distance) const;
    virtual Acad::ErrorStatus getParamAtDist(double distance, double& param) const;
    virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& distance) const;
    virtual Acad::ErrorStatus getPointAtDist(double distance, AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& derivative) const;
    virtual Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const;
    virtual Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& derivative) const;
    virtual Acad::ErrorStatus getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const;
    // With `extend`, lines, arcs and open polylines go on beyond their ends.
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& onCurve,
                                                Adesk::Boolean extend = false) const;
    // Closest as seen along `direction`.
    virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                                AcGePoint3d& onCurve, Adesk::Boolean extend = false) const;
    // New curves belong to the caller.
    virtual Acad::ErrorStatus getOrthoProjectedCurve(const AcGePlane& plane, AcDbCurve*& projected) const;
    virtual Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                                AcDbCurve*& projected) const;
    // AcDbCurve* each; positive distances lie to the right of an open curve, outside arcs and circles. None
    // of them comes nearer to the curve than the distance, so there may be several; eInvalidInput when
    // nothing remains. Corners of polylines stay sharp. Parallels of both kinds of plane polyline are
    // lightweight, as the host's are.
    virtual Acad::ErrorStatus getOffsetCurves(double distance, AcDbVoidPtrArray& curves) const;
    virtual Acad::ErrorStatus getOffsetCurvesGivenPlaneNormal(const AcGeVector3d& normal, double distance,
                                                              AcDbVoidPtrArray& curves) const;
    virtual Acad::ErrorStatus getSpline(AcDbSpline*& spline) const;
    // The pieces between the parameters, which must ascend; AcDbCurve* each.
    virtual Acad::ErrorStatus getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& pieces) const;
    virtual Acad::ErrorStatus getSplitCurves(const AcGePoint3dArray& points, AcDbVoidPtrArray& pieces) const;
    // Longer on along the end's line, circle or ellipse, to a parameter outside the range or the place
    // nearest to a point. Lines, arcs and open polylines have it, others give eNotApplicable; eInvalidInput
    // for closed curves and where the curve wouldn't grow, or would come round to its other end.
    virtual Acad::ErrorStatus extend(double toParam);
    virtual Acad::ErrorStatus extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint);
    // The area enclosed with the chord between the ends; eNonPlanarEntity in space.
    virtual Acad::ErrorStatus getArea(double& area) const;
    virtual Acad::ErrorStatus reverseCurve();

    Adesk::Boolean isPlanar() const override;
    Acad::ErrorStatus getPlane(AcGePlane& plane) const override; // eNonPlanarEntity in space
    // The curve as the shared services see it; stands as long as the pointer does, whatever happens
    // to the entity. Empty for curves without a vertex.
    std::shared_ptr<const host::CurvePath> path() const;

protected:
    AcDbCurve() = default;
    AcDbCurve(const AcDbCurve&) = default;
    AcDbCurve& operator=(const AcDbCurve&) = default;

    // What a kind of curve fills in: its path, and a new curve of what lies between two parameters of
    // the path, widths included (null: there is none).
    virtual host::CurvePath makePath() const { return {}; }
    virtual std::unique_ptr<AcDbCurve> makePart(double, double) const { return nullptr; }
    // Differs whenever the path may; for wholes with parts it tells of the parts, too.
    virtual std::uint64_t state() const { return mark_.value(); }
    // The door of every setter of a curve.
    Acad::ErrorStatus willModify() {
        const auto es = AcDbEntity::willModify();
        return mark_.touch(), es;
    }

    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subGetTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect extension,
                                       const AcGePlane* plane, AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                        const AcGePoint3d& last, AcGePoint3dArray& points) const override;

    // Appends the pieces as lines and arcs of this curve's look.
    Acad::ErrorStatus explodePieces(AcDbVoidPtrArray& parts) const;

private:
    std::optional<double> paramNear(const AcGePoint3d& point) const;
    host::StateMark mark_;
};
