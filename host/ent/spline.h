// AcDbSpline: a B-spline curve, plain or rational, made from control points or through fit points.
#pragma once
#include "host/ent/curve.h"
#include "host/ge/curves/nurbs.h"

class AcDbSpline : public AcDbCurve {
    HOST_DB_CLASS(AcDbSpline)
public:
    AcDbSpline() = default;
    // Through fit points, with chord-length parameters; order 4. A zero tangent leaves that end natural.
    explicit AcDbSpline(const AcGePoint3dArray& fitPoints, int order = 4, double fitTolerance = 0.0);
    AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent,
               const AcGeVector3d& endTangent, int order = 4, double fitTolerance = 0.0);
    AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
               const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
               const AcGeDoubleArray& weights, double controlPointTolerance = 0.0,
               double knotTolerance = 0.0);

    int degree() const { return curve_.degree; }
    bool isRational() const { return curve_.rational; }
    int numControlPoints() const { return int(curve_.poles.size()); }
    Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setControlPointAt(int index, const AcGePoint3d& point); // drops the fit data
    double weightAt(int index) const;
    Acad::ErrorStatus setWeightAt(int index, double weight);
    int numFitPoints() const { return int(fitPoints_.size()); }
    Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setFitPointAt(int index, const AcGePoint3d& point); // solves anew
    Acad::ErrorStatus insertFitPointAt(int index, const AcGePoint3d& point);
    Acad::ErrorStatus removeFitPointAt(int index);
    bool hasFitData() const { return !fitPoints_.empty(); }
    Acad::ErrorStatus purgeFitData();
    Acad::ErrorStatus getFitTangents(AcGeVector3d& start, AcGeVector3d& end) const;
    Acad::ErrorStatus setFitTangents(const AcGeVector3d& start, const AcGeVector3d& end);
    Acad::ErrorStatus getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed,
                                   Adesk::Boolean& periodic, AcGePoint3dArray& controlPoints,
                                   AcGeDoubleArray& knots, AcGeDoubleArray& weights,
                                   double& controlPointTolerance, double& knotTolerance) const;
    Acad::ErrorStatus setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed,
                                   Adesk::Boolean periodic, const AcGePoint3dArray& controlPoints,
                                   const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                                   double controlPointTolerance, double knotTolerance);
    Acad::ErrorStatus getFitData(AcGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                                 Adesk::Boolean& tangentsExist, AcGeVector3d& startTangent,
                                 AcGeVector3d& endTangent) const;
    // A curve anew through other points, with natural ends unless it is periodic. Degrees above 3 are raised
    // from the cubic. eInvalidInput, and nothing changed, for fewer than two different points (periodic:
    // three) or a degree beyond 3 to 25.
    Acad::ErrorStatus setFitData(const AcGePoint3dArray& fitPoints, Adesk::Boolean periodic,
                                 AcGe::KnotParameterization knots, int degree, double fitTolerance);
    Acad::ErrorStatus insertKnot(double param);
    Acad::ErrorStatus elevateDegree(int newDegree);
    double fitTolerance() const { return fitTolerance_; }
    // A polyline through precision + 1 samples of each span (11 in the first form): pairs of arcs with the
    // spline's tangents, or chords. Splines in space give 3D polylines. eInvalidInput for other precisions.
    Acad::ErrorStatus toPolyline(AcDbCurve*& polyline, Adesk::Boolean useArcs = true,
                                 Adesk::Boolean lightweight = true) const;
    Acad::ErrorStatus toPolyline(AcDbCurve*& polyline, int precision,
                                 Adesk::Boolean useArcs = true) const; // 0 to 99

    const host::ge::Nurbs& nurbs() const { return curve_; }
    Acad::ErrorStatus setNurbs(host::ge::Nurbs curve); // drops the fit data
    Adesk::Boolean isClosed() const override;
    Adesk::Boolean isPeriodic() const override;
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

private:
    void solveFit();
    host::ge::Nurbs curve_;
    std::vector<AcGePoint3d> fitPoints_;
    AcGeVector3d startTangent_, endTangent_, normal_;
    double knotTolerance_ = 1e-7, poleTolerance_ = 1e-7, fitTolerance_ = 1e-10;
    int flags_ = 0; // as in files: 1 closed, 2 periodic, 4 rational, 8 planar, 16 linear; 1024.. as they came
    int knotStyle_ = 0;
    int stated_ = 0; // what the file stated, although it may say nothing
};
