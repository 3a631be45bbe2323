// Splines through fit points: solving for them, and changing them one by one.
#include <algorithm>

#include "host/ent/filing.h"
#include "host/ent/spline.h"
#include "host/ge/curves/interpolate.h"

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, int order, double fitTolerance)
    : AcDbSpline(fitPoints, AcGeVector3d(), AcGeVector3d(), order, fitTolerance) {}

AcDbSpline::AcDbSpline(const AcGePoint3dArray& fitPoints, const AcGeVector3d& startTangent,
                       const AcGeVector3d& endTangent, int order, double fitTolerance)
    : startTangent_(startTangent), endTangent_(endTangent) {
    if (!std::all_of(fitPoints.begin(), fitPoints.end(),
                     [](const AcGePoint3d& p) { return host::finite(p); }))
        return;
    fitPoints_ = fitPoints.items();
    if (std::isfinite(fitTolerance) && fitTolerance > 0) fitTolerance_ = fitTolerance;
    solveFit();
    if (order - 1 > curve_.degree && order - 1 <= host::ge::kMaxDegree && curve_.isValid())
        curve_ = host::ge::elevated(curve_, order - 1);
}

// A last point on the first one makes the spline closed but not periodic, as long as the ends have
// tangents of their own.
void AcDbSpline::solveFit() {
    static constexpr host::ge::KnotSpacing kSpacings[] = {host::ge::KnotSpacing::chord,
                                                          host::ge::KnotSpacing::squareRootOfChord,
                                                          host::ge::KnotSpacing::uniform};
    const auto tangent = [](const AcGeVector3d& v) {
        return v.length() > 0 && host::finite(v) ? std::optional(v) : std::nullopt;
    };
    host::ge::FitOptions options;
    options.spacing = kSpacings[std::clamp(knotStyle_, 0, 2)];
    options.closed = curve_.periodic;
    options.startTangent = tangent(startTangent_), options.endTangent = tangent(endTangent_);
    curve_ = host::ge::interpolate(fitPoints_, options).curve;
}

Acad::ErrorStatus AcDbSpline::setFitData(const AcGePoint3dArray& fitPoints, Adesk::Boolean periodic,
                                         AcGe::KnotParameterization knots, int degree, double fitTolerance) {
    if (degree < 3 || degree > host::ge::kMaxDegree || !std::isfinite(fitTolerance))
        return Acad::eInvalidInput;
    AcDbSpline fitted;
    fitted.curve_.periodic = periodic, fitted.knotStyle_ = knots;
    for (const AcGePoint3d& p : fitPoints) {
        if (!host::finite(p)) return Acad::eInvalidInput;
        fitted.fitPoints_.push_back(p);
    }
    fitted.solveFit();
    if (!fitted.curve_.isValid()) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    curve_ = degree > fitted.curve_.degree ? host::ge::elevated(fitted.curve_, degree) : fitted.curve_;
    fitPoints_ = std::move(fitted.fitPoints_);
    knotStyle_ = knots, startTangent_ = endTangent_ = normal_ = AcGeVector3d();
    if (fitTolerance > 0) fitTolerance_ = fitTolerance;
    flags_ = 0, stated_ = 0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setFitPointAt(int index, const AcGePoint3d& point) {
    if (index < 0 || index >= numFitPoints()) return Acad::eInvalidIndex;
    if (!host::finite(point)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    fitPoints_[size_t(index)] = point;
    return solveFit(), Acad::eOk;
}

// Below 0 in front, beyond the last behind it.
Acad::ErrorStatus AcDbSpline::insertFitPointAt(int index, const AcGePoint3d& point) {
    if (!hasFitData()) return Acad::eNotApplicable;
    if (!host::finite(point)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    fitPoints_.insert(fitPoints_.begin() + std::clamp(index, 0, numFitPoints()), point);
    return solveFit(), Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::removeFitPointAt(int index) {
    if (index < 0 || index >= numFitPoints()) return Acad::eInvalidIndex;
    if (numFitPoints() <= 2) return Acad::eDegenerateGeometry;
    if (auto es = willModify(); es != Acad::eOk) return es;
    fitPoints_.erase(fitPoints_.begin() + index);
    return solveFit(), Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::setFitTangents(const AcGeVector3d& start, const AcGeVector3d& end) {
    if (!hasFitData()) return Acad::eNotApplicable;
    if (!host::finite(start) || !host::finite(end)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    startTangent_ = start, endTangent_ = end;
    return solveFit(), Acad::eOk;
}
