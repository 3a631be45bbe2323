// Circles, arcs and ellipses. Angles are radians; files of circles and arcs hold degrees.
#pragma once
#include "host/ent/curve.h"
#include "host/ent/filed_point.h"

class AcDbCircle : public AcDbCurve {
    HOST_DB_CLASS(AcDbCircle)
public:
    AcDbCircle() = default;
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    AcGePoint3d center() const { return center_; } // world coordinates
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const { return radius_; }
    Acad::ErrorStatus setRadius(double radius); // eInvalidInput below 0 or not finite
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double thickness() const { return thickness_; }
    Acad::ErrorStatus setThickness(double thickness);

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
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices,
                                             const AcGeVector3d& offset) override;

private:
    host::FiledPoint center_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double radius_ = 1, thickness_ = 0;
};

class AcDbArc : public AcDbCurve {
    HOST_DB_CLASS(AcDbArc)
public:
    AcDbArc() = default;
    AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
    AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
            double endAngle);
    AcGePoint3d center() const { return center_; }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const { return radius_; }
    Acad::ErrorStatus setRadius(double radius);
    double startAngle() const { return start_; } // from the X axis of the normal's coordinate system
    Acad::ErrorStatus setStartAngle(double angle);
    double endAngle() const { return end_; }
    Acad::ErrorStatus setEndAngle(double angle);
    double totalAngle() const; // in (0, 2 pi]
    double length() const { return radius_ * totalAngle(); }
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double thickness() const { return thickness_; }
    Acad::ErrorStatus setThickness(double thickness);

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
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices,
                                             const AcGeVector3d& offset) override;

private:
    host::FiledPoint center_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double radius_ = 1, start_ = 0, end_ = 1, thickness_ = 0;
};

class AcDbEllipse : public AcDbCurve {
    HOST_DB_CLASS(AcDbEllipse)
public:
    AcDbEllipse() = default;
    AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                double radiusRatio, double startAngle = 0.0, double endAngle = 6.28318530717958647692);
    AcGePoint3d center() const { return center_; }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    AcGeVector3d normal() const { return normal_; }
    AcGeVector3d majorAxis() const { return major_; }
    AcGeVector3d minorAxis() const;
    double majorRadius() const { return major_.length(); }
    double minorRadius() const { return major_.length() * ratio_; }
    double radiusRatio() const { return ratio_; } // above 0, at most 1
    Acad::ErrorStatus setRadiusRatio(double ratio);
    double startParam() const { return start_; }
    double endParam() const { return end_; }
    Acad::ErrorStatus setStartParam(double param);
    Acad::ErrorStatus setEndParam(double param);
    double startAngle() const; // true angles from the major axis
    double endAngle() const;
    Acad::ErrorStatus set(const AcGePoint3d& center, const AcGeVector3d& normal,
                          const AcGeVector3d& majorAxis, double radiusRatio, double startAngle = 0.0,
                          double endAngle = 6.28318530717958647692);
    Acad::ErrorStatus get(AcGePoint3d& center, AcGeVector3d& normal, AcGeVector3d& majorAxis,
                          double& radiusRatio, double& startAngle, double& endAngle) const;

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
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices,
                                             const AcGeVector3d& offset) override;

private:
    Acad::ErrorStatus extendTo(const host::ge::EllipticArc& arc, bool atStart, double param);
    AcGePoint3d center_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis, major_ = AcGeVector3d::kXAxis;
    double ratio_ = 1, start_ = 0, end_ = 6.28318530717958647692; // parameters, not true angles
};
