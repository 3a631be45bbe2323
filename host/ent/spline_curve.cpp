// What splines do as curves, and editing that keeps their shape. Fit points are in spline_fit.cpp,
// polylines of splines in spline_polyline.cpp.
#include <algorithm>

#include "host/ent/filing.h"
#include "host/ent/spline.h"

host::CurvePath AcDbSpline::makePath() const { return host::CurvePath::spline(curve_); }

std::unique_ptr<AcDbCurve> AcDbSpline::makePart(double from, double to) const {
    auto part = std::make_unique<AcDbSpline>();
    if (part->setNurbs(host::ge::part(curve_, from, to)) != Acad::eOk) return nullptr;
    return part;
}

Acad::ErrorStatus AcDbSpline::reverseCurve() {
    if (!curve_.isValid()) return Acad::eDegenerateGeometry;
    if (auto es = willModify(); es != Acad::eOk) return es;
    curve_ = host::ge::reversed(curve_);
    std::reverse(fitPoints_.begin(), fitPoints_.end());
    const AcGeVector3d start = startTangent_;
    startTangent_ = -endTangent_, endTangent_ = -start;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    for (AcGePoint3d& pole : curve_.poles) pole = matrix * pole;
    for (AcGePoint3d& point : fitPoints_) point = matrix * point;
    startTangent_ = matrix * startTangent_, endTangent_ = matrix * endTangent_;
    if (normal_.length() > 0) {
        const AcGeVector3d x = normal_.perpVector(), y = normal_.crossProduct(x);
        normal_ = host::unitNormal((matrix * x).crossProduct(matrix * y));
    }
    return Acad::eOk;
}

// Splines through fit points have their grips there, others at their poles; the poles that a periodic
// spline repeats have none.
Acad::ErrorStatus AcDbSpline::subGetGripPoints(AcGePoint3dArray& points) const {
    if (hasFitData()) {
        for (const AcGePoint3d& p : fitPoints_) points.append(p);
        return Acad::eOk;
    }
    const size_t own = curve_.poles.size() - (curve_.periodic ? size_t(curve_.degree) : 0);
    for (size_t i = 0; i < own; ++i) points.append(curve_.poles[i]);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    auto& points = hasFitData() ? fitPoints_ : curve_.poles;
    const size_t own = points.size() - (!hasFitData() && curve_.periodic ? size_t(curve_.degree) : 0);
    if (auto es = willModify(); es != Acad::eOk) return es;
    for (size_t i = 0; i < own; ++i)
        if (indices.contains(int(i))) points[i] += offset;
    if (hasFitData())
        solveFit();
    else
        for (size_t i = own; i < points.size(); ++i) points[i] = points[i - own];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::insertKnot(double param) {
    if (!curve_.isValid() || !(param > curve_.start() && param < curve_.end())) return Acad::eInvalidInput;
    if (curve_.multiplicityAt(param) >= curve_.degree) return Acad::eInvalidInput;
    host::ge::Nurbs finer = host::ge::withKnot(curve_, param);
    if (auto es = willModify(); es != Acad::eOk) return es;
    curve_ = std::move(finer);
    fitPoints_.clear();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::elevateDegree(int newDegree) {
    if (!curve_.isValid() || newDegree < curve_.degree || newDegree > host::ge::kMaxDegree)
        return Acad::eInvalidInput;
    host::ge::Nurbs higher = host::ge::elevated(curve_, newDegree);
    if (auto es = willModify(); es != Acad::eOk) return es;
    curve_ = std::move(higher);
    fitPoints_.clear();
    return Acad::eOk;
}
