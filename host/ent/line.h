// Straight lines and single points.
#pragma once
#include "host/ent/curve.h"

class AcDbLine : public AcDbCurve {
    HOST_DB_CLASS(AcDbLine)
public:
    AcDbLine() = default;
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : start_(start), end_(end) {}
    AcGePoint3d startPoint() const { return start_; }
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
    AcGePoint3d endPoint() const { return end_; }
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
    double thickness() const { return thickness_; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

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
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices,
                                             const AcGeVector3d& offset) override;

private:
    AcGePoint3d start_, end_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double thickness_ = 0;
};

class AcDbPoint : public AcDbEntity {
    HOST_DB_CLASS(AcDbPoint)
public:
    AcDbPoint() = default;
    explicit AcDbPoint(const AcGePoint3d& position) : position_(position) {}
    AcGePoint3d position() const { return position_; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    double thickness() const { return thickness_; }
    Acad::ErrorStatus setThickness(double thickness);
    AcGeVector3d normal() const { return normal_; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    double ecsRotation() const { return rotation_; } // radians
    Acad::ErrorStatus setEcsRotation(double angle);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    void subViewportDraw(AcGiViewportDraw* context) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d& pick,
                                        const AcGePoint3d& last, AcGePoint3dArray& points) const override;

private:
    AcGePoint3d position_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double thickness_ = 0, rotation_ = 0;
};
