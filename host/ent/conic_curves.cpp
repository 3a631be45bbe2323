// What circles, arcs and ellipses do as curves.
#include <optional>

#include "host/ent/conics.h"
#include "host/ent/curve_make.h"
#include "host/ent/filing.h"

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kRounding = 1e-12; // of angles

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

// The parameter of an arc's new start or end.
struct LongerArc {
    bool atStart;
    double param;
};
std::optional<LongerArc> longerArc(const host::ge::EllipticArc& arc, double toParam) {
    if (!std::isfinite(toParam) || !(arc.majorRadius() > 0)) return {};
    const bool atStart = toParam < arc.start;
    const double sweep = atStart ? arc.end - toParam : toParam - arc.start;
    if (sweep <= arc.sweep() || sweep >= kTwoPi) return {};
    return LongerArc{atStart, toParam};
}
// To the nearest place of the whole circle or ellipse, unless the arc has it already.
std::optional<LongerArc> longerArc(const host::ge::EllipticArc& arc, bool atStart, const AcGePoint3d& to) {
    if (!host::finite(to) || !(arc.majorRadius() > 0) || arc.isClosed()) return {};
    const double at = arc.part(0, kTwoPi).closestTo(to).param;
    const double beyond = atStart ? turned(arc.start - at) : turned(at - arc.end);
    if (!(beyond > kRounding) || !(beyond + arc.sweep() < kTwoPi - kRounding)) return {};
    return LongerArc{atStart, atStart ? arc.start - beyond : arc.end + beyond};
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
    const auto longer = longerArc(*makePath().asConic(), toParam);
    if (!longer) return Acad::eInvalidInput;
    HOST_SET((longer->atStart ? start_ : end_), turned(longer->param));
}
Acad::ErrorStatus AcDbArc::extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) {
    const auto longer = longerArc(*makePath().asConic(), atStart, toPoint);
    if (!longer) return Acad::eInvalidInput;
    HOST_SET((atStart ? start_ : end_), turned(longer->param));
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

Acad::ErrorStatus AcDbEllipse::extend(double toParam) {
    const host::CurvePath whole = makePath();
    const auto longer = longerArc(*whole.asConic(), toParam);
    if (!longer) return Acad::eInvalidInput;
    return extendTo(*whole.asConic(), longer->atStart, longer->param);
}
Acad::ErrorStatus AcDbEllipse::extend(Adesk::Boolean atStart, const AcGePoint3d& toPoint) {
    const host::CurvePath whole = makePath();
    const auto longer = longerArc(*whole.asConic(), atStart, toPoint);
    if (!longer) return Acad::eInvalidInput;
    return extendTo(*whole.asConic(), atStart, longer->param);
}
Acad::ErrorStatus AcDbEllipse::extendTo(const host::ge::EllipticArc& arc, bool atStart, double param) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    // The parameters of both ends rise, however they were told before.
    start_ = atStart ? param : arc.start, end_ = atStart ? arc.end : param;
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
