// What circles, arcs and ellipses do as curves.
#include "host/ent/conics.h"
#include "host/ent/curve_make.h"
#include "host/ent/filing.h"

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;

double turned(double angle) {
    const double rest = std::fmod(angle, kTwoPi);
    return rest < 0 ? rest + kTwoPi : rest;
}

// A matrix as a circle's plane sees it.
struct PlaneImage {
    AcGeVector3d normal;
    AcGeMatrix2d local;
    bool staysRound;
    double scale;
};
PlaneImage planeImage(const AcGeMatrix3d& matrix, AcGeVector3d normal) {
    double elevation = 0;
    const AcGeMatrix2d local = matrix.convertToLocal(normal, elevation);
    return {normal, local, local.isUniScaledOrtho(), std::sqrt(std::fabs(local.det()))};
}

double imageAngle(const PlaneImage& image, double angle) {
    return turned((image.local * AcGeVector2d(std::cos(angle), std::sin(angle))).angle());
}

double scaledThickness(double thickness, const AcGeMatrix3d& matrix, const AcGeVector3d& normal) {
    return thickness == 0 ? 0 : thickness * (matrix * normal).length();
}

// Centre first, then the points at the quarters.
void appendQuarters(const host::ge::EllipticArc& arc, AcGePoint3dArray& points) {
    points.append(arc.center);
    for (int quarter = 0; quarter < 4; ++quarter) points.append(arc.point(quarter * std::numbers::pi / 2));
}

} // namespace

// -- circles ------------------------------------------------------------------------------------------

host::CurvePath AcDbCircle::makePath() const {
    return host::CurvePath::conic(host::ge::fullCircle(center_, normal_, radius_));
}
std::unique_ptr<AcDbCurve> AcDbCircle::makePart(double from, double to) const {
    auto part = std::make_unique<AcDbArc>(center_, normal_, radius_, turned(from), turned(to));
    part->setThickness(thickness_);
    return part;
}
Acad::ErrorStatus AcDbCircle::reverseCurve() { HOST_SET(normal_, -normal_); }

Acad::ErrorStatus AcDbCircle::subTransformBy(const AcGeMatrix3d& matrix) {
    const PlaneImage image = planeImage(matrix, normal_);
    if (!image.staysRound) return Acad::eCannotScaleNonUniformly;
    if (auto es = willModify(); es != Acad::eOk) return es;
    thickness_ = scaledThickness(thickness_, matrix, normal_);
    center_ = matrix * center_, normal_ = image.normal, radius_ *= image.scale;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::subGetGripPoints(AcGePoint3dArray& points) const {
    appendQuarters(host::ge::fullCircle(center_, normal_, radius_), points);
    return Acad::eOk;
}

// The centre moves the circle, a point at a quarter sets the radius.
Acad::ErrorStatus AcDbCircle::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (indices.contains(0)) return center_ += offset, Acad::eOk;
    const AcGePoint3d quarter =
        host::ge::fullCircle(center_, normal_, radius_).point((indices[0] - 1) * std::numbers::pi / 2);
    radius_ = (quarter + offset).distanceTo(center_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::subGetStretchPoints(AcGePoint3dArray& points) const {
    return points.append(center_), Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::subMoveStretchPointsAt(const AcGeIntArray&, const AcGeVector3d& offset) {
    return setCenter(center_ + offset);
}

// -- arcs ---------------------------------------------------------------------------------------------

host::CurvePath AcDbArc::makePath() const {
    return host::CurvePath::conic(
        host::ge::circularArc(center_, normal_, radius_, start_, start_ + totalAngle()));
}
std::unique_ptr<AcDbCurve> AcDbArc::makePart(double from, double to) const {
    auto part = std::make_unique<AcDbArc>(center_, normal_, radius_, turned(from), turned(to));
    part->thickness_ = thickness_;
    return part;
}
// Seen from the other side, whose X axis points elsewhere.
Acad::ErrorStatus AcDbArc::reverseCurve() {
    const host::ge::EllipticArc whole = *makePath().asConic();
    const AcGeVector3d up = -normal_, x = up.perpVector();
    if (auto es = willModify(); es != Acad::eOk) return es;
    start_ = x.angleTo(whole.endPoint() - center_, up);
    end_ = x.angleTo(whole.startPoint() - center_, up);
    normal_ = up;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::extend(double toParam) {
    const double total = totalAngle();
    if (!std::isfinite(toParam)) return Acad::eInvalidInput;
    const bool atStart = toParam < start_;
    const double grown = atStart ? start_ + total - toParam : toParam - start_;
    if (grown <= total || grown >= kTwoPi) return Acad::eInvalidInput;
    HOST_SET((atStart ? start_ : end_), turned(toParam));
}
Acad::ErrorStatus AcDbArc::extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) {
    if (!host::finite(toPoint)) return Acad::eInvalidInput;
    const auto circle = host::ge::fullCircle(center_, normal_, radius_);
    HOST_SET((atStart ? start_ : end_), turned(circle.closestTo(toPoint).param));
}

Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& matrix) {
    const PlaneImage image = planeImage(matrix, normal_);
    if (!image.staysRound) return Acad::eCannotScaleNonUniformly;
    if (auto es = willModify(); es != Acad::eOk) return es;
    const double start = imageAngle(image, start_), end = imageAngle(image, start_ + totalAngle());
    thickness_ = scaledThickness(thickness_, matrix, normal_);
    center_ = matrix * center_, normal_ = image.normal, radius_ *= image.scale;
    start_ = start, end_ = end;
    if (image.local.det() < 0) std::swap(start_, end_); // arcs run counter-clockwise
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subGetGripPoints(AcGePoint3dArray& points) const {
    const host::ge::EllipticArc arc = *makePath().asConic();
    points.append(center_);
    for (double u : {arc.start, arc.end, 0.5 * (arc.start + arc.end)}) points.append(arc.point(u));
    return Acad::eOk;
}

// The centre moves the arc; ends and middle bend it through the three points.
Acad::ErrorStatus AcDbArc::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (indices.contains(0)) return center_ += offset, Acad::eOk;
    AcGePoint3dArray grips;
    subGetGripPoints(grips);
    for (int index : indices)
        if (index > 0 && index < grips.length()) grips[index] += offset;
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal_);
    const auto flat = [&](int i) {
        const AcGePoint3d p = toPlane * grips[i];
        return AcGePoint2d(p.x, p.y);
    };
    const host::ge::BulgeSegment bent = host::ge::bulgeThrough(flat(1), flat(3), flat(2));
    if (bent.isStraight() || bent.chord() == 0) return Acad::eDegenerateGeometry;
    const host::ge::BulgeCircle circle = bent.circle();
    const double height = (toPlane * center_).z;
    center_ = host::toWorld({circle.center.x, circle.center.y, height}, normal_);
    radius_ = circle.radius;
    start_ = turned(circle.startAngle), end_ = turned(circle.endAngle());
    if (circle.isClockwise()) std::swap(start_, end_);
    return Acad::eOk;
}
Acad::ErrorStatus AcDbArc::subGetStretchPoints(AcGePoint3dArray& points) const {
    const host::ge::EllipticArc arc = *makePath().asConic();
    points.append(arc.startPoint());
    points.append(arc.endPoint());
    return Acad::eOk;
}
// An end that is stretched keeps the arc's turn, as the host's stretching does; both move it.
Acad::ErrorStatus AcDbArc::subMoveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (indices.length() > 1) return setCenter(center_ + offset);
    if (auto es = willModify(); es != Acad::eOk) return es;
    AcGePoint3dArray ends;
    subGetStretchPoints(ends);
    if (indices[0] < 0 || indices[0] > 1) return Acad::eInvalidIndex;
    const bool atStart = indices[0] == 0;
    const AcGePoint3d fixed = ends[atStart ? 1 : 0], moved = ends[atStart ? 0 : 1] + offset;
    const AcGeVector3d before = ends[atStart ? 0 : 1] - fixed, after = moved - fixed;
    if (!(after.length() > 0) || !(before.length() > 0)) return Acad::eDegenerateGeometry;
    const double turn = before.angleTo(after, normal_), scale = after.length() / before.length();
    const AcGeMatrix3d change =
        AcGeMatrix3d::rotation(turn, normal_, fixed) * AcGeMatrix3d::scaling(scale, fixed);
    return subTransformBy(change);
}

// -- ellipses -----------------------------------------------------------------------------------------

host::CurvePath AcDbEllipse::makePath() const {
    double sweep = end_ - start_;
    if (!(sweep > 0 && sweep <= kTwoPi + 1e-9)) sweep = turned(sweep);
    if (!(sweep > 0)) sweep = kTwoPi;
    return host::CurvePath::conic(
        {center_, normal_, major_, ratio_, start_, start_ + std::min(sweep, kTwoPi)});
}
std::unique_ptr<AcDbCurve> AcDbEllipse::makePart(double from, double to) const {
    auto part = std::make_unique<AcDbEllipse>(center_, normal_, major_, ratio_);
    part->start_ = from, part->end_ = to;
    return part;
}
Acad::ErrorStatus AcDbEllipse::reverseCurve() {
    const host::ge::EllipticArc back = makePath().asConic()->reversed();
    if (auto es = willModify(); es != Acad::eOk) return es;
    normal_ = back.normal, major_ = back.majorAxis, start_ = back.start, end_ = back.end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subTransformBy(const AcGeMatrix3d& matrix) {
    host::ge::EllipticArc image = host::ge::transformed(*makePath().asConic(), matrix);
    // A mirrored ellipse keeps facing the way its normal was taken to.
    if (image.normal.dotProduct(matrix * normal_) < 0) image = image.reversed();
    if (!(image.ratio > 0) || !(image.majorRadius() > 0)) return Acad::eDegenerateGeometry;
    if (auto es = willModify(); es != Acad::eOk) return es;
    center_ = image.center, normal_ = image.normal, major_ = image.majorAxis;
    ratio_ = std::max(image.ratio, 1e-6), start_ = image.start, end_ = image.end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::subGetGripPoints(AcGePoint3dArray& points) const {
    const host::CurvePath path = makePath();
    const host::ge::EllipticArc& arc = *path.asConic();
    appendQuarters(arc, points);
    if (!arc.isClosed()) points.append(arc.startPoint()), points.append(arc.endPoint());
    return Acad::eOk;
}
// The centre moves the ellipse, a point at a quarter sets its axis' length, an end its parameter.
Acad::ErrorStatus AcDbEllipse::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (indices.contains(0)) return center_ += offset, Acad::eOk;
    AcGePoint3dArray grips;
    subGetGripPoints(grips);
    const int index = indices[0];
    if (index < 0 || index >= grips.length()) return Acad::eInvalidIndex;
    const AcGePoint3d moved = grips[index] + offset;
    if (index > 4) {
        host::ge::EllipticArc whole{center_, normal_, major_, ratio_, 0, kTwoPi};
        (index == 5 ? start_ : end_) = whole.closestTo(moved).param;
        return Acad::eOk;
    }
    const double radius = moved.distanceTo(center_);
    if (!(radius > 0)) return Acad::eDegenerateGeometry;
    const double across = index % 2 ? minorRadius() : radius, along = index % 2 ? radius : majorRadius();
    host::ge::EllipticArc image = host::ge::ellipseFromConjugate(
        center_, major_.normal() * along, minorAxis().normal() * across, start_, end_, normal_);
    major_ = image.majorAxis, ratio_ = std::max(image.ratio, 1e-6), start_ = image.start, end_ = image.end;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::subGetStretchPoints(AcGePoint3dArray& points) const {
    return points.append(center_), Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::subMoveStretchPointsAt(const AcGeIntArray&, const AcGeVector3d& offset) {
    return setCenter(center_ + offset);
}
