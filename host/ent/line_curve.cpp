// What lines do as curves, and what points do as entities.
#include <algorithm>

#include "host/ent/filing.h"
#include "host/ent/line.h"
#include "host/gi/draw.h"

host::CurvePath AcDbLine::makePath() const { return host::CurvePath::line(start_, end_); }

std::unique_ptr<AcDbCurve> AcDbLine::makePart(double from, double to) const {
    const host::CurvePath whole = makePath();
    auto part = std::make_unique<AcDbLine>(whole.pointAt(from), whole.pointAt(to));
    part->normal_ = normal_, part->thickness_ = thickness_;
    return part;
}

Acad::ErrorStatus AcDbLine::reverseCurve() {
    if (auto es = willModify(); es != Acad::eOk) return es;
    std::swap(start_, end_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::extend(double toParam) {
    const AcGeVector3d along = end_ - start_;
    const double length = along.length();
    if (!std::isfinite(toParam) || !(length > 0)) return Acad::eInvalidInput;
    if (toParam >= 0 && toParam <= length) return Acad::eInvalidInput; // nothing to go on to
    return extend(toParam < 0, start_ + along * (toParam / length));
}

Acad::ErrorStatus AcDbLine::extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) {
    if (!host::finite(toPoint) || !(start_.distanceTo(end_) > 0)) return Acad::eInvalidInput;
    const AcGePoint3d onLine = AcGeLine3d(start_, end_).closestPointTo(toPoint);
    const AcGeVector3d beyond = onLine - (atStart ? start_ : end_);
    if (!(beyond.dotProduct(atStart ? start_ - end_ : end_ - start_) > 0)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    (atStart ? start_ : end_) = onLine;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subTransformBy(const AcGeMatrix3d& matrix) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    const AcGeVector3d up = matrix * normal_;
    start_ = matrix * start_, end_ = matrix * end_;
    thickness_ *= up.length();
    normal_ = host::unitNormal(up);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(start_);
    points.append(end_);
    points.append(start_ + (end_ - start_) * 0.5);
    return Acad::eOk;
}

// The grip in the middle moves the whole line.
Acad::ErrorStatus AcDbLine::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    const bool all = indices.contains(2);
    if (all || indices.contains(0)) start_ += offset;
    if (all || indices.contains(1)) end_ += offset;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetStretchPoints(AcGePoint3dArray& points) const {
    points.append(start_);
    points.append(end_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subMoveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    return subMoveGripPointsAt(indices, offset);
}

// -- points -------------------------------------------------------------------------------------------

Adesk::Boolean AcDbPoint::subWorldDraw(AcGiWorldDraw* context) const {
    context->geometry().polyline(1, &position_, &normal_);
    return true;
}

Acad::ErrorStatus AcDbPoint::subTransformBy(const AcGeMatrix3d& matrix) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    const AcGeVector3d up = matrix * normal_;
    position_ = matrix * position_;
    thickness_ *= up.length();
    normal_ = host::unitNormal(up);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetGeomExtents(AcDbExtents& extents) const {
    extents.set(position_, position_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subGetGripPoints(AcGePoint3dArray& points) const {
    points.append(position_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subMoveGripPointsAt(const AcGeIntArray&, const AcGeVector3d& offset) {
    return setPosition(position_ + offset);
}

Acad::ErrorStatus AcDbPoint::subGetOsnapPoints(AcDb::OsnapMode mode, const AcGePoint3d&, const AcGePoint3d&,
                                               AcGePoint3dArray& points) const {
    if (mode == AcDb::kOsModeNode) points.append(position_);
    return Acad::eOk;
}
