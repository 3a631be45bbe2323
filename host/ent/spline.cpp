// Splines: data and form in files. Fit points are solved in spline_fit.cpp, what splines do as
// curves lives in spline_curve.cpp.
#include "host/ent/spline.h"

#include <algorithm>

#include "host/ent/filing.h"

HOST_DEFINE_CLASS(AcDbSpline, AcDbCurve, L"SPLINE")

namespace {
enum SplineFlags { kClosed = 1, kPeriodic = 2, kRational = 4, kPlanar = 8, kLinear = 16 };
enum Stated { kFitTolerance = 1, kNormal = 2, kStartTangent = 4, kEndTangent = 8 };

int statedBy(int code) {
    return code == 44    ? kFitTolerance
           : code == 210 ? kNormal
           : code == 12  ? kStartTangent
           : code == 13  ? kEndTangent
                         : 0;
}
} // namespace

AcDbSpline::AcDbSpline(int degree, Adesk::Boolean rational, Adesk::Boolean closed, Adesk::Boolean periodic,
                       const AcGePoint3dArray& controlPoints, const AcGeDoubleArray& knots,
                       const AcGeDoubleArray& weights, double controlPointTolerance, double knotTolerance) {
    setNurbsData(degree, rational, closed, periodic, controlPoints, knots, weights, controlPointTolerance,
                 knotTolerance);
}

Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
    if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
    return point = curve_.poles[size_t(index)], Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::setControlPointAt(int index, const AcGePoint3d& point) {
    if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
    if (!host::finite(point)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    fitPoints_.clear();
    curve_.poles[size_t(index)] = point;
    return Acad::eOk;
}
double AcDbSpline::weightAt(int index) const {
    if (index < 0 || index >= numControlPoints()) return -1;
    return curve_.weight(size_t(index));
}
Acad::ErrorStatus AcDbSpline::setWeightAt(int index, double weight) {
    if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
    if (!std::isfinite(weight) || weight <= 0) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    if (!curve_.rational) curve_.weights.assign(curve_.poles.size(), 1.0);
    curve_.rational = true;
    curve_.weights[size_t(index)] = weight;
    fitPoints_.clear();
    return Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::getFitPointAt(int index, AcGePoint3d& point) const {
    if (index < 0 || index >= numFitPoints()) return Acad::eInvalidIndex;
    return point = fitPoints_[size_t(index)], Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::purgeFitData() {
    if (auto es = willModify(); es != Acad::eOk) return es;
    fitPoints_.clear();
    return Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::getFitTangents(AcGeVector3d& start, AcGeVector3d& end) const {
    return start = startTangent_, end = endTangent_, Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getNurbsData(int& degree, Adesk::Boolean& rational, Adesk::Boolean& closed,
                                           Adesk::Boolean& periodic, AcGePoint3dArray& controlPoints,
                                           AcGeDoubleArray& knots, AcGeDoubleArray& weights,
                                           double& controlPointTolerance, double& knotTolerance) const {
    degree = curve_.degree, rational = curve_.rational, closed = isClosed(), periodic = isPeriodic();
    controlPoints = AcGePoint3dArray(curve_.poles);
    knots = AcGeDoubleArray(curve_.knots), weights = AcGeDoubleArray(curve_.weights);
    controlPointTolerance = poleTolerance_, knotTolerance = knotTolerance_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setNurbsData(int degree, Adesk::Boolean rational, Adesk::Boolean closed,
                                           Adesk::Boolean periodic, const AcGePoint3dArray& controlPoints,
                                           const AcGeDoubleArray& knots, const AcGeDoubleArray& weights,
                                           double controlPointTolerance, double knotTolerance) {
    host::ge::Nurbs curve;
    curve.degree = degree, curve.rational = rational, curve.closed = closed, curve.periodic = periodic;
    curve.poles = controlPoints.items(), curve.knots = knots.items();
    if (rational) curve.weights = weights.items();
    if (auto es = setNurbs(std::move(curve)); es != Acad::eOk) return es;
    if (controlPointTolerance > 0) poleTolerance_ = controlPointTolerance;
    if (knotTolerance > 0) knotTolerance_ = knotTolerance;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setNurbs(host::ge::Nurbs curve) {
    if (!curve.isValid()) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    curve_ = std::move(curve);
    fitPoints_.clear();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitData(AcGePoint3dArray& fitPoints, int& degree, double& fitTolerance,
                                         Adesk::Boolean& tangentsExist, AcGeVector3d& startTangent,
                                         AcGeVector3d& endTangent) const {
    if (!hasFitData()) return Acad::eNotApplicable;
    fitPoints = AcGePoint3dArray(fitPoints_);
    degree = curve_.degree, fitTolerance = fitTolerance_;
    startTangent = startTangent_, endTangent = endTangent_;
    tangentsExist = !startTangent_.isZeroLength() || !endTangent_.isZeroLength();
    return Acad::eOk;
}

bool AcDbSpline::isClosed() const {
    return curve_.closed || curve_.periodic || (curve_.isValid() && curve_.endsMeet());
}
bool AcDbSpline::isPeriodic() const { return curve_.periodic; }

bool AcDbSpline::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbSpline")) return AcDbCurve::inGroup(group, context);
    stated_ |= statedBy(group.code);
    const auto set = [&](std::vector<AcGePoint3d>& points, double AcGePoint3d::*part) {
        if (!points.empty()) points.back().*part = group.real;
        return true;
    };
    switch (group.code) {
    case 70: flags_ = int(group.integer); return true;
    case 71: curve_.degree = int(group.integer); return true;
    case 72:
    case 73:
    case 74: return true; // counts; what is there counts more
    case 42: knotTolerance_ = group.real; return true;
    case 43: poleTolerance_ = group.real; return true;
    case 44: fitTolerance_ = group.real; return true;
    case 40: curve_.knots.push_back(group.real); return true;
    case 41: curve_.weights.push_back(group.real); return true;
    case 10: curve_.poles.push_back({group.real, 0, 0}); return true;
    case 20: return set(curve_.poles, &AcGePoint3d::y);
    case 30: return set(curve_.poles, &AcGePoint3d::z);
    case 11: fitPoints_.push_back({group.real, 0, 0}); return true;
    case 21: return set(fitPoints_, &AcGePoint3d::y);
    case 31: return set(fitPoints_, &AcGePoint3d::z);
    default:
        if (host::takeTriple(group, 210, normal_) || host::takeTriple(group, 12, startTangent_) ||
            host::takeTriple(group, 13, endTangent_))
            return true;
    }
    return AcDbCurve::inGroup(group, context);
}

void AcDbSpline::inDone(host::ReadContext& context) {
    host::ge::Nurbs& c = curve_;
    // Splines given by fit points alone, as some programs write them.
    if (c.poles.empty() && fitPoints_.size() >= 2) return solveFit();
    c.rational = (flags_ & kRational) ||
                 std::any_of(c.weights.begin(), c.weights.end(), [](double w) { return w != 1; });
    if (c.weights.size() != c.poles.size()) {
        if (!c.weights.empty())
            context.repaired("spline whose weights don't match its control points: weights of 1 taken");
        c.rational = false;
    }
    if (!c.rational) c.weights.clear();
    c.periodic = flags_ & kPeriodic;
    c.closed = flags_ & kClosed;
    if (!c.isValid() && c.degree >= 1 && c.poles.size() > size_t(c.degree)) {
        // Knots that can't serve are replaced by the uniform clamped ones.
        c.periodic = false;
        c.knots.assign(c.poles.size() + size_t(c.degree) + 1, 0.0);
        const double last = double(c.poles.size() - size_t(c.degree));
        for (size_t i = 0; i < c.knots.size(); ++i) c.knots[i] = std::clamp(double(i) - c.degree, 0.0, last);
        context.repaired("spline with unusable knots: uniform knots taken");
    }
    if (!c.isValid()) context.repaired("spline that can't be drawn: it is kept as it is");
    c.poles.shrink_to_fit(), c.knots.shrink_to_fit(), c.weights.shrink_to_fit(), fitPoints_.shrink_to_fit();
}

void AcDbSpline::outGroups(host::GroupWriter& writer) const {
    AcDbCurve::outGroups(writer);
    writer.subclass("AcDbSpline");
    int flags = flags_ & ~(kClosed | kPeriodic | kRational);
    flags |=
        (curve_.closed ? kClosed : 0) | (curve_.periodic ? kPeriodic : 0) | (curve_.rational ? kRational : 0);
    const auto holds = [&](int what, const AcGeVector3d& v) { return (stated_ & what) || v.length() > 0; };
    if (holds(kNormal, normal_)) writer.vector(210, normal_);
    writer.integer(70, flags);
    writer.integer(71, curve_.degree);
    writer.integer(72, std::int64_t(curve_.knots.size()));
    writer.integer(73, std::int64_t(curve_.poles.size()));
    writer.integer(74, std::int64_t(fitPoints_.size()));
    writer.real(42, knotTolerance_);
    writer.real(43, poleTolerance_);
    if (hasFitData() || (stated_ & kFitTolerance)) writer.real(44, fitTolerance_);
    if (holds(kStartTangent, startTangent_)) writer.vector(12, startTangent_);
    if (holds(kEndTangent, endTangent_)) writer.vector(13, endTangent_);
    for (double knot : curve_.knots) writer.real(40, knot);
    for (size_t i = 0; i < curve_.poles.size(); ++i) {
        writer.point(10, curve_.poles[i]);
        if (curve_.rational) writer.real(41, curve_.weights[i]);
    }
    for (const AcGePoint3d& point : fitPoints_) writer.point(11, point);
}
