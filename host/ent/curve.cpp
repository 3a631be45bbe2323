// The services that all curves share, on their paths. What is special to a kind lives in its own
// source; offsets are in curve_offset.cpp, intersections in curve_intersect.cpp, drawing and snap
// points in curve_draw.cpp.
#include "host/ent/curve.h"

#include <algorithm>

#include "host/ent/curve_make.h"
#include "host/ent/filing.h"
#include "host/ent/spline.h"

HOST_DEFINE_ABSTRACT_CLASS(AcDbCurve, AcDbEntity)

namespace {
// How far off a curve a point may lie and still be taken as on it, as a part of the curve's size.
constexpr double kOnCurve = 1e-6;
// Parts of a parameter range or a length that are no more than rounding.
constexpr double kSameParam = 1e-9;
} // namespace

std::shared_ptr<const host::CurvePath> AcDbCurve::path() const {
    const std::uint64_t now = state();
    if (auto kept = host::keptPath(now)) return kept;
    auto made = std::make_shared<const host::CurvePath>(makePath());
    host::keepPath(now, made);
    return made;
}

Adesk::Boolean AcDbCurve::isClosed() const { return path()->isClosed(); }
Adesk::Boolean AcDbCurve::isPeriodic() const {
    const auto p = path();
    return p->asConic() && p->isClosed();
}

// -- parameters, points, derivatives ------------------------------------------------------------------

Acad::ErrorStatus AcDbCurve::getStartParam(double& param) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    return param = p->startParam(), Acad::eOk;
}
Acad::ErrorStatus AcDbCurve::getEndParam(double& param) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    return param = p->endParam(), Acad::eOk;
}
Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d& point) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    return point = p->pointAt(p->startParam()), Acad::eOk;
}
Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d& point) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    return point = p->pointAt(p->endParam()), Acad::eOk;
}

namespace {
// The parameter meant on a path, or the status that says why there is none.
struct Asked {
    Acad::ErrorStatus status = Acad::eOk;
    double param = 0;
};
Asked ask(const host::CurvePath& path, double param) {
    if (path.isEmpty()) return {Acad::eDegenerateGeometry, 0};
    const auto inside = path.inRange(param);
    return inside ? Asked{Acad::eOk, *inside} : Asked{Acad::eInvalidInput, 0};
}
} // namespace

Acad::ErrorStatus AcDbCurve::getPointAtParam(double param, AcGePoint3d& point) const {
    const auto p = path();
    const Asked at = ask(*p, param);
    if (at.status == Acad::eOk) point = p->pointAt(at.param);
    return at.status;
}

std::optional<double> AcDbCurve::paramNear(const AcGePoint3d& point) const {
    const auto p = path();
    if (p->isEmpty() || !host::finite(point)) return {};
    const host::PathClosest c = p->closestTo(point);
    const double reach = std::max(kOnCurve * p->size(), 1e-12 * (1 + point.asVector().length()));
    if (!(c.distance <= reach)) return {};
    return c.param;
}

Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    const auto at = paramNear(point);
    if (!at) return Acad::eInvalidInput;
    return param = *at, Acad::eOk;
}
Acad::ErrorStatus AcDbCurve::getFirstDeriv(double param, AcGeVector3d& derivative) const {
    const auto p = path();
    const Asked at = ask(*p, param);
    if (at.status == Acad::eOk) derivative = p->derivative(at.param, 1);
    return at.status;
}
Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const {
    const auto at = paramNear(point);
    return at ? getFirstDeriv(*at, derivative) : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbCurve::getSecondDeriv(double param, AcGeVector3d& derivative) const {
    const auto p = path();
    const Asked at = ask(*p, param);
    if (at.status == Acad::eOk) derivative = p->derivative(at.param, 2);
    return at.status;
}
Acad::ErrorStatus AcDbCurve::getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const {
    const auto at = paramNear(point);
    return at ? getSecondDeriv(*at, derivative) : Acad::eInvalidInput;
}

// -- lengths ------------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbCurve::getDistAtParam(double param, double& distance) const {
    const auto p = path();
    const Asked at = ask(*p, param);
    if (at.status == Acad::eOk) distance = p->lengthAt(at.param);
    return at.status;
}
Acad::ErrorStatus AcDbCurve::getParamAtDist(double distance, double& param) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    const double length = p->length(), slack = kSameParam * length;
    if (!(distance >= -slack && distance <= length + slack)) return Acad::eInvalidInput;
    return param = p->paramAtLength(distance), Acad::eOk;
}
Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& distance) const {
    const auto at = paramNear(point);
    return at ? getDistAtParam(*at, distance) : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbCurve::getPointAtDist(double distance, AcGePoint3d& point) const {
    double param = 0;
    if (auto es = getParamAtDist(distance, param); es != Acad::eOk) return es;
    return point = path()->pointAt(param), Acad::eOk;
}

// -- closest points -----------------------------------------------------------------------------------

namespace {

// What lies beyond the ends of an open path: the lines that its ends run on along, or whole circles.
std::vector<host::PathPiece> beyondEnds(const host::CurvePath& path) {
    std::vector<host::PathPiece> out;
    if (path.isClosed() || path.asNurbs()) return out;
    for (int index : {0, path.pieceCount() - 1}) {
        host::PathPiece piece = path.piece(index);
        if (auto* arc = std::get_if<host::ge::EllipticArc>(&piece))
            arc->end = arc->start + 2 * std::numbers::pi;
        out.push_back(piece);
    }
    return out;
}

host::PathClosest closestBeyond(const host::PathPiece& piece, const AcGePoint3d& point) {
    if (const auto* arc = std::get_if<host::ge::EllipticArc>(&piece)) {
        const auto c = arc->closestTo(point);
        return {c.point, 0, c.distance};
    }
    const AcGePoint3d p = std::get<AcGeLineSeg3d>(piece).getLine().closestPointTo(point);
    return {p, 0, p.distanceTo(point)};
}

} // namespace

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& onCurve,
                                               Adesk::Boolean extend) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    if (!host::finite(given)) return Acad::eInvalidInput;
    host::PathClosest best = p->closestTo(given);
    if (extend)
        for (const auto& piece : beyondEnds(*p))
            if (const auto c = closestBeyond(piece, given); c.distance < best.distance) best = c;
    return onCurve = best.point, Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                               AcGePoint3d& onCurve, Adesk::Boolean extend) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    if (!host::finite(given) || !host::finite(direction) || direction.isZeroLength())
        return Acad::eInvalidInput;
    const AcGeVector3d along = direction.normal();
    host::PathClosest best = p->closestAlong(given, along);
    const auto flat = AcGeMatrix3d::projection(AcGePlane(given, along), along);
    const auto offer = [&](const AcGePoint3d& point) {
        const double distance = (flat * point).distanceTo(given);
        if (distance < best.distance) best = {point, 0, distance};
    };
    for (const auto& piece : extend ? beyondEnds(*p) : std::vector<host::PathPiece>()) {
        if (const auto* arc = std::get_if<host::ge::EllipticArc>(&piece)) {
            offer(host::CurvePath::conic(*arc).closestAlong(given, along).point);
            continue;
        }
        const auto& line = std::get<AcGeLineSeg3d>(piece);
        const AcGePoint3d start = flat * line.startPoint();
        const AcGeVector3d seen = flat * line.endPoint() - start;
        if (seen.lengthSqrd() > 0)
            offer(line.evalPoint((given - start).dotProduct(seen) / seen.lengthSqrd()));
    }
    return onCurve = best.point, Acad::eOk;
}

// -- images, pieces, areas ----------------------------------------------------------------------------

Acad::ErrorStatus AcDbCurve::getOrthoProjectedCurve(const AcGePlane& plane, AcDbCurve*& projected) const {
    return getProjectedCurve(plane, plane.normal(), projected);
}

Acad::ErrorStatus AcDbCurve::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& direction,
                                               AcDbCurve*& projected) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    const AcGeVector3d normal = plane.normal();
    if (!host::finite(direction) || normal.isZeroLength() || direction.isZeroLength() ||
        std::fabs(direction.normal().dotProduct(normal)) < 1e-12)
        return Acad::eInvalidInput;
    auto image = p->transformed(AcGeMatrix3d::projection(plane, direction));
    auto made = host::makeCurve(image);
    if (!made) return Acad::eDegenerateGeometry;
    made->setPropertiesFrom(this);
    projected = made.release();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getSpline(AcDbSpline*& spline) const {
    auto made = std::make_unique<AcDbSpline>();
    if (made->setNurbs(path()->nurbs()) != Acad::eOk) return Acad::eDegenerateGeometry;
    made->setPropertiesFrom(this);
    spline = made.release();
    return Acad::eOk;
}

namespace {

struct Stretch {
    double from, to;
};

// Between the parameters, and from the ends to them; closed conics have no ends.
std::vector<Stretch> stretches(const host::CurvePath& path, const std::vector<double>& cuts) {
    std::vector<Stretch> out;
    const bool turns = path.asConic() && path.isClosed();
    if (turns) {
        for (size_t i = 0; i + 1 < cuts.size(); ++i) out.push_back({cuts[i], cuts[i + 1]});
        out.push_back({cuts.back(), cuts.front() + (path.endParam() - path.startParam())});
        return out;
    }
    double from = path.startParam();
    for (double cut : cuts) out.push_back({std::exchange(from, cut), cut});
    out.push_back({from, path.endParam()});
    return out;
}

} // namespace

Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& pieces) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    std::vector<double> cuts;
    for (double param : params) {
        const auto inside = p->inRange(param);
        if (!inside || (!cuts.empty() && *inside < cuts.back())) return Acad::eInvalidInput;
        cuts.push_back(*inside);
    }
    if (cuts.empty()) return Acad::eInvalidInput;
    const double least = kSameParam * (p->endParam() - p->startParam());
    std::vector<std::unique_ptr<AcDbCurve>> made;
    for (const Stretch& s : stretches(*p, cuts)) {
        if (!(s.to - s.from > least)) continue;
        auto part = makePart(s.from, s.to);
        if (!part) return Acad::eDegenerateGeometry;
        part->setPropertiesFrom(this);
        made.push_back(std::move(part));
    }
    for (auto& part : made) pieces.append(part.release());
    return made.empty() ? Acad::eDegenerateGeometry : Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGePoint3dArray& points, AcDbVoidPtrArray& pieces) const {
    AcGeDoubleArray params;
    for (const AcGePoint3d& point : points) {
        const auto at = paramNear(point);
        if (!at) return Acad::eInvalidInput;
        params.append(*at);
    }
    return getSplitCurves(params, pieces);
}

Acad::ErrorStatus AcDbCurve::extend(double) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::extend(Adesk::Boolean, const AcGePoint3d&) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::reverseCurve() { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbCurve::getArea(double& area) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    if (!p->planarity().isPlanar) return Acad::eNonPlanarEntity;
    return area = p->areaVector().length(), Acad::eOk;
}

Adesk::Boolean AcDbCurve::isPlanar() const {
    const auto p = path();
    return !p->isEmpty() && p->planarity().isPlanar;
}

Acad::ErrorStatus AcDbCurve::getPlane(AcGePlane& plane) const {
    const auto p = path();
    if (p->isEmpty()) return Acad::eDegenerateGeometry;
    const host::ge::Planarity found = p->planarity();
    if (!found.isPlanar) return Acad::eNonPlanarEntity;
    return plane.set(found.origin, found.normal), Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::subGetGeomExtents(AcDbExtents& extents) const {
    const AcDbExtents box = path()->extents();
    if (!box.isValid()) return Acad::eInvalidExtents;
    return extents = box, Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::subGetTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const {
    const auto es = AcDbEntity::subGetTransformedCopy(matrix, copy);
    if (es != Acad::eCannotScaleNonUniformly) return es;
    auto made = host::makeCurve(path()->transformed(matrix));
    if (!made) return Acad::eDegenerateGeometry;
    made->setPropertiesFrom(this);
    copy = made.release();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::explodePieces(AcDbVoidPtrArray& parts) const {
    const auto p = path();
    for (int i = 0; i < p->pieceCount(); ++i) {
        const host::PathPiece piece = p->piece(i);
        std::unique_ptr<AcDbCurve> made;
        if (const auto* line = std::get_if<AcGeLineSeg3d>(&piece)) {
            if (line->length() > 0)
                made = host::makeCurve(host::CurvePath::line(line->startPoint(), line->endPoint()));
        } else if (const auto* arc = std::get_if<host::ge::EllipticArc>(&piece)) {
            made = host::makeConic(*arc);
        }
        if (!made) continue;
        made->setPropertiesFrom(this);
        parts.append(made.release());
    }
    return Acad::eOk;
}
