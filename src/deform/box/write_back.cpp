// Writing moved samples back, by kind of object.
#include "deform/box/write_back.h"

#include <memory>

#include "core/appending.h"
#include "core/host/entities.h"
#include "deform/box/vertices.h"

namespace corvane::deform {
namespace {

using Points = std::span<const AcGePoint3d>;

AcGePoint3dArray arrayOf(Points points) {
    return AcGePoint3dArray(std::vector<AcGePoint3d>(points.begin(), points.end()));
}

// Moves what stands at `from` to `to` and scales it there.
AcGeMatrix3d carriedTo(const AcGePoint3d& from, const AcGePoint3d& to, double scale) {
    AcGeMatrix3d move = AcGeMatrix3d::translation(to - from);
    if (scale != 1) move.preMultBy(AcGeMatrix3d::scaling(scale, to));
    return move;
}

// Attributes stand beside their reference, so they are brought along.
void writeReference(AcDbBlockReference& reference, const AcGePoint3d& to, double scale) {
    const AcGeMatrix3d along = carriedTo(reference.position(), to, scale);
    reference.setPosition(to);
    if (scale != 1) {
        const AcGeScale3d now = reference.scaleFactors();
        reference.setScaleFactors({now.sx * scale, now.sy * scale, now.sz * scale});
    }
    const std::unique_ptr<AcDbObjectIterator> each(reference.attributeIterator());
    for (; !each->done(); each->step()) {
        AcDbObjectPointer<AcDbEntity> attribute(each->objectId(), AcDb::kForWrite);
        if (attribute) attribute->transformBy(along);
    }
}

// A text that isn't aligned at its left hangs on its alignment point, so that goes too.
void writeText(AcDbText& text, const AcGePoint3d& to, double scale) {
    const AcGeVector3d shift = to - text.position();
    if (!text.isDefaultAlignment()) text.setAlignmentPoint(text.alignmentPoint() + shift);
    text.setPosition(to);
    if (scale != 1) text.setHeight(text.height() * scale);
}

void writeRigid(AcDbEntity& entity, const AcGePoint3d& to, double scale) {
    if (auto* reference = AcDbBlockReference::cast(&entity)) return writeReference(*reference, to, scale);
    if (auto* text = AcDbText::cast(&entity)) return writeText(*text, to, scale);
    auto& multi = *AcDbMText::cast(&entity);
    multi.setLocation(to);
    if (scale != 1) multi.setTextHeight(multi.textHeight() * scale);
}

// Where a flat polyline's vertices went, in its plane's coordinates, and their mean height.
struct Flat {
    std::vector<AcGePoint2d> points;
    double elevation = 0;
};

// Heights count from the first one, so that equal ones give exactly theirs.
Flat flattened(Points moved, size_t count, const AcGeVector3d& normal) {
    const AcGeMatrix3d toPlane = WorldToPlane(normal);
    Flat flat;
    double first = 0, rise = 0;
    for (size_t i = 0; i < count; ++i) {
        const AcGePoint3d p = toPlane * moved[i];
        if (i == 0) first = p.z;
        flat.points.push_back({p.x, p.y});
        rise += p.z - first;
    }
    flat.elevation = count ? first + rise / double(count) : 0;
    return flat;
}

void writePolyline(AcDbPolyline& polyline, Points moved) {
    auto vertices = polyline.vertices();
    const Flat flat = flattened(moved, std::min(vertices.size(), moved.size()), polyline.normal());
    if (flat.points.empty()) return;
    for (size_t i = 0; i < flat.points.size(); ++i) vertices[i].point = flat.points[i];
    polyline.setVertices(std::move(vertices));
    polyline.setElevation(flat.elevation);
}

void writeFlatVertices(AcDb2dPolyline& polyline, Points moved) {
    const auto vertices = VertexObjects(polyline);
    const Flat flat = flattened(moved, std::min(vertices.size(), moved.size()), polyline.normal());
    if (flat.points.empty()) return;
    for (size_t i = 0; i < flat.points.size(); ++i) {
        AcDbObjectPointer<AcDb2dVertex> vertex(vertices[i].id, AcDb::kForWrite);
        if (vertex) vertex->setPosition({flat.points[i].x, flat.points[i].y, vertex->position().z});
    }
    polyline.setElevation(flat.elevation);
}

void writeVertices(const AcDb3dPolyline& polyline, Points moved) {
    const auto vertices = VertexObjects(polyline);
    for (size_t i = 0; i < std::min(vertices.size(), moved.size()); ++i) {
        AcDbObjectPointer<AcDb3dPolylineVertex> vertex(vertices[i].id, AcDb::kForWrite);
        if (vertex) vertex->setPosition(moved[i]);
    }
}

void fitThrough(AcDbSpline& spline, Points moved, bool periodic) {
    if (moved.size() >= 2) spline.setFitData(arrayOf(moved), periodic, AcGe::kChord, 3, 0.0);
}

// Through its fit points the spline is solved anew, open. One without fit points keeps degree, weights and
// knots: a curve through nothing but its two ends would be a straight line.
void writeSpline(AcDbSpline& spline, Points moved) {
    if (spline.numFitPoints() >= 2) return fitThrough(spline, moved, false);
    for (size_t i = 0; i < moved.size(); ++i) spline.setControlPointAt(int(i), moved[i]);
}

// The last of the samples is the centre.
void writeConic(AcDbCurve& curve, Points moved, double scale) {
    const AcGePoint3d centre = moved.back();
    if (auto* circle = AcDbCircle::cast(&curve)) {
        circle->setCenter(centre);
        if (scale != 1) circle->setRadius(circle->radius() * scale);
    } else if (auto* arc = AcDbArc::cast(&curve)) {
        arc->setCenter(centre);
        if (scale != 1) arc->setRadius(arc->radius() * scale);
    } else if (auto* ellipse = AcDbEllipse::cast(&curve)) {
        ellipse->set(centre, ellipse->normal(), ellipse->majorAxis() * scale, ellipse->radiusRatio(),
                     ellipse->startParam(), ellipse->endParam());
    }
}

void writeOwnKind(AcDbCurve& curve, Points moved, double scale) {
    if (auto* polyline = AcDbPolyline::cast(&curve)) return writePolyline(*polyline, moved);
    if (auto* flat = AcDb2dPolyline::cast(&curve)) return writeFlatVertices(*flat, moved);
    if (const auto* inSpace = AcDb3dPolyline::cast(&curve)) return writeVertices(*inSpace, moved);
    if (auto* spline = AcDbSpline::cast(&curve)) return writeSpline(*spline, moved);
    if (auto* line = AcDbLine::cast(&curve)) {
        if (moved.size() < 2) return;
        line->setStartPoint(moved.front());
        line->setEndPoint(moved.back());
        return;
    }
    writeConic(curve, moved, scale);
}

// Puts a spline through the samples in the curve's place. The curve stays when there is none, or no place.
void replaceBySpline(AcDbObjectPointer<AcDbEntity>& curve, FFDEntityRecord& record, Points moved) {
    auto spline = std::make_unique<AcDbSpline>();
    if (spline->setFitData(arrayOf(moved), record.closed, AcGe::kChord, 3, 0.0) != Acad::eOk) return;
    spline->setPropertiesFrom(curve.object());
    AcDbDatabase* database = curve->database();
    curve.close();
    AcDbObjectId id;
    if (AppendBesideEntity(database, spline.get(), record.entityId, id) != Acad::eOk) return;
    spline.release();
    AcDbObjectPointer<AcDbEntity> old(record.entityId, AcDb::kForWrite);
    if (old) old->erase();
    record.entityId = id;
}

} // namespace

void WriteBackEntity(FFDEntityRecord& record, std::span<const AcGePoint3d> moved, const LatticeScale& scale,
                     const Subdivision& subdivision) {
    AcDbObjectPointer<AcDbEntity> entity(record.entityId, AcDb::kForWrite);
    if (!entity || moved.empty()) return;
    record.rewritten = true;
    if (record.rigid) return writeRigid(*entity, moved.front(), scale.inSpace);
    auto* curve = AcDbCurve::cast(entity.object());
    if (!curve) {
        entity->transformBy(carriedTo(record.carried, moved.front(), scale.inSpace));
        record.carried = moved.front();
    } else if (!subdivision.on) {
        writeOwnKind(*curve, moved, scale.inPlane);
    } else if (auto* spline = AcDbSpline::cast(curve)) {
        fitThrough(*spline, moved, record.closed);
    } else if (moved.size() >= 2) {
        replaceBySpline(entity, record, moved);
    }
}

} // namespace corvane::deform
