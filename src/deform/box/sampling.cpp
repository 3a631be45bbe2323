// Samples by kind of object.
#include "deform/box/sampling.h"

#include <algorithm>
#include <cmath>

#include "core/curve_services.h"
#include "core/host/entities.h"
#include "deform/box/lattice.h"
#include "deform/box/vertices.h"

namespace corvane::deform {
namespace {

constexpr double kTurn = 6.28318530717958;
constexpr double kWholeTurn = 0.001; // an ellipse whose ends miss each other by less is closed
constexpr double kStraight = 1e-10;  // bulges below it
constexpr int kMostPieces = 500, kPiecesALevel = 24;

double meanSide(const AcDbExtents& box) {
    const AcGeVector3d sides = box.maxPoint() - box.minPoint();
    return std::max((sides.x + sides.y + sides.z) / 3, 1e-10);
}

AcGePoint3d between(const AcGePoint3d& from, const AcGePoint3d& to, double share) {
    return from + (to - from) * share;
}

class Sampler {
public:
    Sampler(const AcDbExtents& box, const Subdivision& subdivision, FFDEntityRecord& record)
        : box_(box), subdivision_(subdivision), record_(record), points_(record.points) {}

    void sample(const AcDbEntity& entity) {
        if (IsRigid(entity)) {
            record_.rigid = true;
        } else if (const auto* face = AcDbFace::cast(&entity)) {
            points_.resize(4);
            for (unsigned i = 0; i < 4; ++i) face->getVertexAt(i, points_[i]);
        } else if (const auto* curve = AcDbCurve::cast(&entity)) {
            subdivision_.on ? along(*curve) : vertices(*curve);
        } else if (entity.isKindOf(AcDb3dSolid::desc()) || entity.isKindOf(AcDbSurface::desc())) {
            corners(entity);
        }
    }

private:
    int pieces(double length, int low) const { return PieceCount(length, box_, subdivision_.level, low); }

    void corners(const AcDbEntity& entity) {
        AcDbExtents extents;
        if (entity.getGeomExtents(extents) != Acad::eOk) return;
        const AcGePoint3d ends[] = {extents.minPoint(), extents.maxPoint()};
        for (size_t n = 0; n < 8; ++n) points_.push_back({ends[n & 1].x, ends[n >> 1 & 1].y, ends[n >> 2].z});
    }

    void along(const AcDbCurve& curve) {
        if (curve.isKindOf(AcDbLine::desc())) return line(curve);
        if (curve.isKindOf(AcDbCircle::desc())) return ring(curve);
        if (const auto* ellipse = AcDbEllipse::cast(&curve))
            return std::abs(std::abs(ellipse->endParam() - ellipse->startParam()) - kTurn) < kWholeTurn
                       ? ring(curve)
                       : evenly(curve, 2);
        if (const auto* polyline = AcDbPolyline::cast(&curve)) return segments(*polyline);
        if (curve.isKindOf(AcDb3dPolyline::desc())) return chords(curve, PolylineVertices(curve));
        if (const auto* spline = AcDbSpline::cast(&curve); spline && spline->numFitPoints() >= 2)
            return chords(curve, FitPoints(*spline));
        evenly(curve, 2);
    }

    void vertices(const AcDbCurve& curve) {
        if (const auto* polyline = AcDbPolyline::cast(&curve)) {
            for (unsigned i = 0; i < polyline->numVerts(); ++i) {
                AcGePoint3d point;
                if (polyline->getPointAt(i, point) == Acad::eOk) points_.push_back(point);
            }
            return;
        }
        if (const auto* spline = AcDbSpline::cast(&curve)) {
            points_ = spline->numFitPoints() >= 2 ? FitPoints(*spline) : ControlPoints(*spline);
            return;
        }
        for (const VertexObject& vertex : VertexObjects(curve)) points_.push_back(vertex.point);
        if (!points_.empty()) return;
        ends(curve);
        if (const auto centre = CentreOf(curve)) points_.push_back(*centre);
    }

    void ends(const AcDbCurve& curve) {
        AcGePoint3d point;
        if (curve.getStartPoint(point) == Acad::eOk) points_.push_back(point);
        if (curve.getEndPoint(point) == Acad::eOk) points_.push_back(point);
    }

    void line(const AcDbCurve& curve) {
        AcGePoint3d from, to;
        curve.getStartPoint(from), curve.getEndPoint(to);
        const int count = pieces((to - from).length(), 1);
        for (int k = 0; k <= count; ++k) points_.push_back(between(from, to, double(k) / count));
    }

    // At even parameters, both ends included.
    void evenly(const AcDbCurve& curve, int low) {
        double from = 0, to = 0;
        if (curve.getStartParam(from) != Acad::eOk || curve.getEndParam(to) != Acad::eOk) return;
        const int count = pieces(CurveLength(curve), low);
        for (int k = 0; k <= count; ++k) {
            AcGePoint3d point;
            if (curve.getPointAtParam(from + (to - from) * k / count, point) == Acad::eOk)
                points_.push_back(point);
        }
    }

    void ring(const AcDbCurve& curve) {
        evenly(curve, 4);
        if (!points_.empty()) points_.pop_back();
        record_.closed = true;
    }

    void segments(const AcDbPolyline& polyline) {
        record_.closed = polyline.isClosed();
        const unsigned vertexCount = polyline.numVerts();
        const unsigned count = record_.closed || vertexCount == 0 ? vertexCount : vertexCount - 1;
        for (unsigned i = 0; i < count; ++i) segment(polyline, i);
        AcGePoint3d last;
        if (!record_.closed && vertexCount > 0 && polyline.getPointAt(vertexCount - 1, last) == Acad::eOk)
            points_.push_back(last);
    }

    void segment(const AcDbPolyline& polyline, unsigned i) {
        AcGePoint3d from, to;
        if (polyline.getPointAt(i, from) != Acad::eOk) return;
        if (polyline.getPointAt((i + 1) % polyline.numVerts(), to) != Acad::eOk) return;
        points_.push_back(from);
        double start = 0, end = 0, bulge = 0;
        polyline.getDistAtParam(i, start), polyline.getDistAtParam(i + 1, end);
        polyline.getBulgeAt(i, bulge);
        const bool straight = std::abs(bulge) < kStraight;
        const int count = pieces(end - start, straight ? 1 : 2);
        for (int k = 1; k < count; ++k) {
            AcGePoint3d point = between(from, to, double(k) / count);
            if (straight || polyline.getPointAtParam(i + double(k) / count, point) == Acad::eOk)
                points_.push_back(point);
        }
    }

    void chords(const AcDbCurve& curve, const std::vector<AcGePoint3d>& corners) {
        record_.closed = curve.isClosed();
        const size_t count = record_.closed || corners.empty() ? corners.size() : corners.size() - 1;
        for (size_t i = 0; i < count; ++i) {
            const AcGePoint3d &from = corners[i], &to = corners[(i + 1) % corners.size()];
            const int parts = pieces((to - from).length(), 1);
            for (int k = 0; k < parts; ++k) points_.push_back(between(from, to, double(k) / parts));
        }
        if (!record_.closed && !corners.empty()) points_.push_back(corners.back());
    }

    const AcDbExtents& box_;
    const Subdivision& subdivision_;
    FFDEntityRecord& record_;
    std::vector<AcGePoint3d>& points_;
};

} // namespace

int PieceCount(double length, const AcDbExtents& box, int level, int low) {
    const double share = std::min(1.0, length / meanSide(box));
    return std::clamp(int(level * share * kPiecesALevel), low, kMostPieces);
}

bool SampleEntity(AcDbObjectId id, const AcDbExtents& box, const Subdivision& subdivision,
                  FFDEntityRecord& record) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (!entity) return false;
    record = {};
    record.entityId = id;
    Sampler(box, subdivision, record).sample(*entity);
    if (record.points.empty()) {
        AcDbExtents extents;
        if (entity->getGeomExtents(extents) != Acad::eOk) return false;
        record.points.push_back(between(extents.minPoint(), extents.maxPoint(), 0.5));
    }
    record.carried = record.points.front();
    SetParams(record, box);
    return true;
}

void SetParams(FFDEntityRecord& record, const AcDbExtents& box) {
    record.params.clear();
    record.params.reserve(record.points.size());
    for (const AcGePoint3d& point : record.points)
        record.params.push_back(ToBoxCoordinates(point, box.minPoint(), box.maxPoint()));
}

} // namespace corvane::deform
