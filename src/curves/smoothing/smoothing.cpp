// Reading polylines into plain points, and making their successors.
#include "curves/smoothing/smoothing.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "core/appending.h"
#include "core/curve_services.h"
#include "curves/smoothing/thinning.h"

namespace corvane {

std::int32_t VerticesBefore = 0;
std::int32_t VerticesAfter = 0;

namespace {

constexpr double kShortestCurve = 1e-5;
constexpr double kThinShare = 0.001, kGapShare = 0.005; // of reference length times factor
constexpr double kSameVertex = 1e-6;                    // of 3D successors

// A polyline as plain data. The ids are those of vertex objects, empty for the lightweight kind.
struct WorkingPolyline {
    std::vector<AcGePoint3d> points;
    std::vector<AcDbObjectId> ids;
    double width = 0;
    bool closed = false, inSpace = false;
};

// The vertices that the curve is drawn through, in world coordinates. Control points of a smoothed polyline
// stand beside the curve and are left out.
std::optional<WorkingPolyline> readPolyline(const AcDbCurve& curve) {
    WorkingPolyline work;
    work.closed = curve.isClosed();
    if (const auto* polyline = AcDbPolyline::cast(&curve)) {
        work.points.resize(polyline->numVerts());
        for (unsigned i = 0; i < polyline->numVerts(); ++i) polyline->getPointAt(i, work.points[i]);
        polyline->getConstantWidth(work.width);
        return work;
    }
    const bool read = ForEachVertex(curve, [&](const AcGePoint3d& point, AcDbObjectId vertex) {
        work.points.push_back(point);
        work.ids.push_back(vertex);
    });
    if (!read) return std::nullopt;
    if (const auto* flat = AcDb2dPolyline::cast(&curve)) work.width = flat->defaultStartWidth();
    work.inSpace = AcDb3dPolyline::cast(&curve) != nullptr;
    return work;
}

void erase(AcDbEntity& entity) {
    if (!entity.isWriteEnabled()) entity.upgradeOpen();
    entity.erase();
}

void eraseVertices(const WorkingPolyline& work, const std::vector<bool>& marks) {
    for (size_t i = 0; i < marks.size(); ++i) {
        if (!marks[i]) continue;
        AcDbObjectPointer<AcDbEntity> vertex(work.ids[i], AcDb::kForWrite);
        if (vertex && vertex->erase() == Acad::eOk) ++VerticesBefore;
    }
}

std::unique_ptr<AcDbCurve> flatPolyline(const std::vector<AcGePoint3d>& points, double elevation,
                                        double width, bool closed) {
    auto polyline = std::make_unique<AcDbPolyline>();
    std::vector<AcDbPolyline::Vertex> vertices(points.size());
    for (size_t i = 0; i < points.size(); ++i) vertices[i] = {{points[i].x, points[i].y}, 0, -1, -1};
    polyline->setVertices(std::move(vertices));
    polyline->setElevation(elevation);
    polyline->setConstantWidth(width);
    polyline->setClosed(closed);
    return polyline;
}

std::unique_ptr<AcDbCurve> spatialPolyline(const std::vector<AcGePoint3d>& points, bool closed) {
    AcGePoint3dArray kept;
    AcGePoint3d previous(1e64, 1e64, 1e64);
    for (const AcGePoint3d& point : points) {
        if (point.distanceTo(previous) < kSameVertex) {
            --VerticesAfter;
            continue;
        }
        kept.append(point);
        previous = point;
    }
    return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, kept, closed);
}

// Into the target record, or beside the entity that it takes the place of. The id is null when that fails.
AcDbObjectId append(std::unique_ptr<AcDbCurve> curve, AcDbObjectId target, const AcDbEntity& beside) {
    AcDbObjectId id;
    const Acad::ErrorStatus status =
        target.isNull() ? AppendBesideEntity(beside.database(), curve.get(), beside.objectId(), id)
                        : AppendToRecord(target, curve.get(), id);
    if (status != Acad::eOk) return {};
    curve.release();
    return id;
}

// The 2D polyline of that type with the vertices of a lightweight one, not yet in the drawing.
std::unique_ptr<AcDb2dPolyline> toOldPolyline(const AcDbPolyline& light, AcDb::Poly2dType type, bool closed,
                                              double width) {
    AcDb2dPolyline* old = nullptr;
    if (light.convertTo(false, old) != Acad::eOk) return nullptr;
    std::unique_ptr<AcDb2dPolyline> polyline(old);
    if (closed) polyline->makeClosed(); // before the fit, which runs round a closed frame
    polyline->convertToPolyType(type);
    polyline->setDefaultStartWidth(width);
    polyline->setDefaultEndWidth(width);
    return polyline;
}

} // namespace

std::int32_t RemoveDuplicateVertices(AcDbCurve& curve) {
    if (CurveLength(curve) < kShortestCurve) return erase(curve), 0;
    const auto work = readPolyline(curve);
    if (!work) return VerticesBefore;
    const DuplicateMarks found = MarkDuplicates(work->points);
    const bool closed = work->closed || found.closesOnItself;
    const bool change = std::find(found.marks.begin(), found.marks.end(), true) != found.marks.end();
    if ((!change && closed == work->closed) || curve.upgradeOpen() != Acad::eOk) return VerticesBefore;
    if (auto* polyline = AcDbPolyline::cast(&curve)) {
        VerticesBefore += host_door::removeVertices(*polyline, found.marks);
        if (closed) polyline->setClosed(true);
        return VerticesBefore;
    }
    eraseVertices(*work, found.marks);
    if (auto* flat = AcDb2dPolyline::cast(&curve); flat && closed) flat->setClosed(true);
    if (auto* spatial = AcDb3dPolyline::cast(&curve); spatial && closed) spatial->setClosed(true);
    return VerticesBefore;
}

void SmoothPolyline(AcDbObjectId& id, AcDbObjectId target, AcDbCurve& curve, double referenceLength,
                    double factor) {
    id.setNull();
    if (CurveLength(curve) < kShortestCurve) return erase(curve);
    auto work = readPolyline(curve);
    if (!work) return;
    VerticesBefore += std::int32_t(work->points.size());
    const double tolerance = referenceLength * factor * kThinShare,
                 gap = referenceLength * factor * kGapShare;
    std::vector<AcGePoint3d> points = ThinPoints(std::move(work->points), tolerance);
    if (points.size() < 2) return;
    points = ClusterPoints(points, tolerance, gap);
    VerticesAfter += std::int32_t(points.size());
    auto successor = work->inSpace ? spatialPolyline(points, work->closed)
                                   : flatPolyline(points, 0.0, work->width, work->closed);
    successor->setColorIndex(curve.colorIndex());
    successor->setLayer(curve.layerId());
    id = append(std::move(successor), target, curve);
    if (!id.isNull()) erase(curve); // a curve without a successor stays: nothing drawn is lost
}

void RestorePolyType(AcDbObjectId& id, AcDb::Poly2dType type) {
    if (id.isNull() || type == AcDb::k2dSimplePoly) return;
    AcDbObjectPointer<AcDbPolyline> light(id, AcDb::kForWrite);
    if (!light) return;
    double width = 0;
    light->getConstantWidth(width);
    auto polyline = toOldPolyline(*light, type, light->isClosed(), width);
    if (!polyline) return;
    polyline->setLayer(light->layerId());
    polyline->setColor(light->color());
    const AcDbObjectId restored = append(std::move(polyline), {}, *light);
    if (restored.isNull()) return;
    light->erase();
    id = restored;
}

void SmoothToSplinePolyline(AcDbObjectId& id, AcDbObjectId target, AcDbCurve& curve, double referenceLength,
                            double factor) {
    id.setNull();
    if (CurveLength(curve) < kShortestCurve) return erase(curve);
    const auto work = readPolyline(curve);
    if (!work || work->points.size() < 3) return;
    AcGePoint3dArray samples;
    if (!SampleCurveEvenly(curve, samples, int(work->points.size()))) return;
    if (work->closed) samples.append(AcGePoint3d(samples.first()));
    auto even = flatPolyline(samples.items(), samples.first().z, 0, false);
    even->setLayer(curve.layerId());
    const AcDbObjectId evenId = append(std::move(even), target, curve);
    if (evenId.isNull()) return;
    const AcDbObjectId layer = curve.layerId();
    const AcCmColor color = curve.color();
    erase(curve);
    if (AcDbObjectPointer<AcDbPolyline> polyline(evenId, AcDb::kForWrite); polyline)
        SmoothPolyline(id, target, *polyline, referenceLength, factor);
    AcDbObjectPointer<AcDbPolyline> light(id, AcDb::kForWrite);
    if (!light) return;
    auto fitted = toOldPolyline(*light, AcDb::k2dCubicSplinePoly, work->closed, work->width);
    if (!fitted) return;
    fitted->setLayer(layer);
    fitted->setColor(color);
    const AcDbObjectId fittedId = append(std::move(fitted), target, *light);
    if (fittedId.isNull()) return;
    light->erase();
    id = fittedId;
}

} // namespace corvane
