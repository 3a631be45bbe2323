// Circles, arcs and ellipses: their data and their form in files. What they do as curves lives
// in conic_curves.cpp.
#include "host/ent/conics.h"

#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDbCircle, AcDbCurve, L"CIRCLE")
HOST_DEFINE_CLASS(AcDbArc, AcDbCurve, L"ARC")
HOST_DEFINE_CLASS(AcDbEllipse, AcDbCurve, L"ELLIPSE")

namespace {
constexpr double kTwoPi = 2 * std::numbers::pi;

bool takeRadius(double radius) { return std::isfinite(radius) && radius >= 0; }

// What circles and arcs have in files alike.
struct RoundFields {
    host::FiledPoint& center;
    AcGeVector3d& normal;
    double &radius, &thickness;

    bool take(const host::Group& group) const {
        if (host::takeTriple(group, 10, center) || host::takeTriple(group, 210, normal)) return true;
        if (group.code == 40) return radius = group.real, true;
        if (group.code == 39) return thickness = group.real, true;
        return false;
    }
    void settle(host::ReadContext& context, const char* repair) const {
        normal = host::unitNormal(normal);
        center.fromPlane(normal);
        if (radius < 0) radius = -radius, context.repaired(repair);
    }
};
void writeRound(host::GroupWriter& writer, const host::FiledPoint& center, const AcGeVector3d& normal,
                double radius, double thickness) {
    writer.subclass("AcDbCircle");
    if (thickness != 0) writer.real(39, thickness);
    writer.point(10, center.inPlane(normal));
    writer.real(40, radius);
    writer.normal(210, normal);
}
} // namespace

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : center_(center), normal_(host::unitNormal(normal)), radius_(radius) {}

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) { HOST_SET_FINITE(center_, center); }
Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
    if (!takeRadius(radius)) return Acad::eInvalidInput;
    HOST_SET(radius_, radius);
}
Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}
Acad::ErrorStatus AcDbCircle::setThickness(double thickness) { HOST_SET_FINITE(thickness_, thickness); }

bool AcDbCircle::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbCircle")) {
        if (RoundFields{center_, normal_, radius_, thickness_}.take(group)) return true;
    }
    return AcDbCurve::inGroup(group, context);
}

void AcDbCircle::inDone(host::ReadContext& context) {
    const RoundFields fields{center_, normal_, radius_, thickness_};
    fields.settle(context, "circle with a negative radius: taken as positive");
}

void AcDbCircle::outGroups(host::GroupWriter& writer) const {
    AcDbCurve::outGroups(writer);
    writeRound(writer, center_, normal_, radius_, thickness_);
}

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}
AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle)
    : center_(center), normal_(host::unitNormal(normal)), radius_(radius), start_(startAngle),
      end_(endAngle) {}

Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& center) { HOST_SET_FINITE(center_, center); }
Acad::ErrorStatus AcDbArc::setRadius(double radius) {
    if (!takeRadius(radius)) return Acad::eInvalidInput;
    HOST_SET(radius_, radius);
}
Acad::ErrorStatus AcDbArc::setStartAngle(double angle) { HOST_SET_FINITE(start_, angle); }
Acad::ErrorStatus AcDbArc::setEndAngle(double angle) { HOST_SET_FINITE(end_, angle); }
Acad::ErrorStatus AcDbArc::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}
Acad::ErrorStatus AcDbArc::setThickness(double thickness) { HOST_SET_FINITE(thickness_, thickness); }

double AcDbArc::totalAngle() const {
    double sweep = std::fmod(end_ - start_, kTwoPi);
    if (sweep < 0) sweep += kTwoPi;
    return sweep > 0 ? sweep : kTwoPi;
}

bool AcDbArc::inGroup(const host::Group& group, host::ReadContext& context) {
    // Arcs stand behind two markers: the circle's and their own.
    if (context.within("AcDbCircle") || context.within("AcDbArc")) {
        if (RoundFields{center_, normal_, radius_, thickness_}.take(group)) return true;
        if (group.code == 50) return start_ = host::toRadians(group.real), true;
        if (group.code == 51) return end_ = host::toRadians(group.real), true;
    }
    return AcDbCurve::inGroup(group, context);
}

void AcDbArc::inDone(host::ReadContext& context) {
    const RoundFields fields{center_, normal_, radius_, thickness_};
    fields.settle(context, "arc with a negative radius: taken as positive");
}

void AcDbArc::outGroups(host::GroupWriter& writer) const {
    AcDbCurve::outGroups(writer);
    writeRound(writer, center_, normal_, radius_, thickness_);
    writer.subclass("AcDbArc");
    writer.real(50, host::fileDegrees(start_));
    writer.real(51, host::fileDegrees(end_));
}

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                         double radiusRatio, double startAngle, double endAngle) {
    set(center, normal, majorAxis, radiusRatio, startAngle, endAngle);
}

AcGeVector3d AcDbEllipse::minorAxis() const { return normal_.crossProduct(major_) * ratio_; }
Acad::ErrorStatus AcDbEllipse::setCenter(const AcGePoint3d& center) { HOST_SET_FINITE(center_, center); }
Acad::ErrorStatus AcDbEllipse::setRadiusRatio(double ratio) {
    if (!(ratio > 0 && ratio <= 1)) return Acad::eInvalidInput;
    HOST_SET(ratio_, ratio);
}
Acad::ErrorStatus AcDbEllipse::setStartParam(double param) { HOST_SET_FINITE(start_, param); }
Acad::ErrorStatus AcDbEllipse::setEndParam(double param) { HOST_SET_FINITE(end_, param); }

namespace {
// Between the parameter of a point on the ellipse and its true angle, turn kept.
double angleOf(double param, double ratio) {
    const double turn = std::floor((param + std::numbers::pi) / kTwoPi) * kTwoPi;
    return turn + std::atan2(ratio * std::sin(param), std::cos(param));
}
double paramOf(double angle, double ratio) { return angleOf(angle, 1 / ratio); }
} // namespace

double AcDbEllipse::startAngle() const { return angleOf(start_, ratio_); }
double AcDbEllipse::endAngle() const { return angleOf(end_, ratio_); }

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& center, const AcGeVector3d& normal,
                                   const AcGeVector3d& majorAxis, double radiusRatio, double startAngle,
                                   double endAngle) {
    if (!host::finite(center) || !host::finite(majorAxis) || !(radiusRatio > 0 && radiusRatio <= 1) ||
        !std::isfinite(startAngle) || !std::isfinite(endAngle) || majorAxis.length() == 0)
        return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    center_ = center, normal_ = host::unitNormal(normal), major_ = majorAxis, ratio_ = radiusRatio;
    start_ = paramOf(startAngle, ratio_);
    end_ = endAngle - startAngle == kTwoPi ? start_ + kTwoPi : paramOf(endAngle, ratio_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::get(AcGePoint3d& center, AcGeVector3d& normal, AcGeVector3d& majorAxis,
                                   double& radiusRatio, double& startAngleOut, double& endAngleOut) const {
    center = center_, normal = normal_, majorAxis = major_, radiusRatio = ratio_;
    startAngleOut = startAngle(), endAngleOut = endAngle();
    return Acad::eOk;
}

bool AcDbEllipse::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbEllipse")) {
        if (host::takeTriple(group, 10, center_) || host::takeTriple(group, 11, major_) ||
            host::takeTriple(group, 210, normal_))
            return true;
        if (group.code == 40) return ratio_ = group.real, true;
        if (group.code == 41) return start_ = group.real, true;
        if (group.code == 42) return end_ = group.real, true;
    }
    return AcDbCurve::inGroup(group, context);
}

void AcDbEllipse::inDone(host::ReadContext& context) {
    normal_ = host::unitNormal(normal_);
    if (ratio_ < 0) ratio_ = -ratio_;
    if (ratio_ > 1) {
        // The longer axis is the major one; the parameters turn with it.
        major_ = normal_.crossProduct(major_) * ratio_;
        ratio_ = 1 / ratio_;
        start_ -= std::numbers::pi / 2, end_ -= std::numbers::pi / 2;
        context.repaired("ellipse whose minor axis was the longer one: axes exchanged");
    }
    if (ratio_ < 1e-6) {
        ratio_ = 1e-6;
        context.repaired("ellipse with an axis ratio below 0.000001: ratio raised to that");
    }
}

void AcDbEllipse::outGroups(host::GroupWriter& writer) const {
    AcDbCurve::outGroups(writer);
    writer.subclass("AcDbEllipse");
    writer.point(10, center_);
    writer.vector(11, major_);
    writer.vector(210, normal_);
    writer.real(40, ratio_);
    writer.real(41, start_);
    writer.real(42, end_);
}
