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

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;

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

private:
    AcGePoint3d position_;
    AcGeVector3d normal_ = AcGeVector3d::kZAxis;
    double thickness_ = 0, rotation_ = 0;
};
