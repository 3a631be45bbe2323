// What lines do as curves, and what points do as entities.
#include <algorithm>
#include <initializer_list>
#include <vector>

#include "host/db/database.h"
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

namespace {

// The drawing's look of points: PDMODE is 0 a dot, 1 nothing, 2 a plus, 3 a cross, 4 a tick, with 32 for a
// circle and 64 for a square round it.
struct PointLook {
    int mode = 0;
    double size = 0; // PDSIZE; up to 0: seen alike at every magnification
};
PointLook pointLook(const AcDbDatabase* database) {
    if (!database) return {};
    return {int(database->headerInteger("$PDMODE", 0)), database->headerReal("$PDSIZE", 0)};
}

// `half` is half the figure's size; strokes of plus and cross reach beyond what stands round them.
void drawPointFigure(AcGiGeometry& geometry, const AcGePoint3d& at, const AcGeVector3d& normal, int mode,
                     double half) {
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal);
    const auto stroke = [&](std::initializer_list<AcGePoint2d> corners) {
        std::vector<AcGePoint3d> points;
        for (const AcGePoint2d& c : corners)
            points.push_back(at + plane * AcGeVector3d(c.x * half, c.y * half, 0));
        geometry.polyline(Adesk::UInt32(points.size()), points.data(), &normal);
    };
    switch (mode & 7) {
    case 0: geometry.polyline(1, &at, &normal); break;
    case 2: stroke({{-2, 0}, {2, 0}}), stroke({{0, -2}, {0, 2}}); break;
    case 3: stroke({{-1.5, -1.5}, {1.5, 1.5}}), stroke({{-1.5, 1.5}, {1.5, -1.5}}); break;
    case 4: stroke({{0, 0}, {0, 1}}); break;
    default: break;
    }
    if (mode & 32) geometry.circle(at, half, normal);
    if (mode & 64) stroke({{-1, -1}, {1, -1}, {1, 1}, {-1, 1}, {-1, -1}});
}

} // namespace

Adesk::Boolean AcDbPoint::subWorldDraw(AcGiWorldDraw* context) const {
    const PointLook look = pointLook(database());
    if (look.mode != 0 && !(look.size > 0)) return false; // its size hangs on the view
    drawPointFigure(context->geometry(), position_, normal_, look.mode, look.size / 2);
    return true;
}

void AcDbPoint::subViewportDraw(AcGiViewportDraw* context) const {
    constexpr double kPixels = 24;
    AcGePoint2d unit;
    context->viewport().getNumPixelsInUnitSquare(position_, unit);
    if (unit.x > 0)
        drawPointFigure(context->geometry(), position_, normal_, pointLook(database()).mode,
                        kPixels / unit.x / 2);
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
