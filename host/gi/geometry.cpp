// What a collector doesn't take as it is comes to it as polylines and polygons.
#include "host/gi/geometry.h"

#include "host/gi/flatten.h"

#include <cmath>
#include <vector>

void AcGiGeometry::getWorldToModelTransform(AcGeMatrix3d& matrix) const {
    getModelToWorldTransform(matrix);
    matrix.invert();
}

Adesk::Boolean AcGiGeometry::pushModelTransform(const AcGeVector3d& normal) {
    AcGeMatrix3d matrix;
    return pushModelTransform(matrix.setToPlaneToWorld(normal));
}

Adesk::Boolean AcGiGeometry::polyPolygon(Adesk::UInt32 loops, const Adesk::UInt32* counts,
                                         const AcGePoint3d* points) {
    for (Adesk::UInt32 i = 0; i < loops; points += counts[i++]) polygon(counts[i], points);
    return false;
}

Adesk::Boolean AcGiGeometry::circle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) {
    return circularArc(center, radius, normal, normal.perpVector(), 2 * M_PI);
}

Adesk::Boolean AcGiGeometry::circle(const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3) {
    const auto found = host::circleThrough(p1, p2, p3);
    return found.radius > 0 && circle(found.center, found.radius, found.normal);
}

Adesk::Boolean AcGiGeometry::circularArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                                         const AcGeVector3d& startVector, double sweepAngle,
                                         AcGiArcType type) {
    const AcGeVector3d x = startVector.normal() * radius;
    return ellipArc({center, x, normal.normal().crossProduct(x), 0, sweepAngle}, type);
}

Adesk::Boolean AcGiGeometry::circularArc(const AcGePoint3d& start, const AcGePoint3d& point,
                                         const AcGePoint3d& end, AcGiArcType type) {
    const auto found = host::circleThrough(start, point, end);
    if (found.radius <= 0) {
        const AcGePoint3d straight[] = {start, point, end};
        return polyline(3, straight);
    }
    const AcGeVector3d from = start - found.center;
    const double sweep = from.angleTo(end - found.center, found.normal);
    return circularArc(found.center, found.radius, found.normal, from, sweep, type);
}

Adesk::Boolean AcGiGeometry::ellipArc(const host::EllipticArc& arc, AcGiArcType type) {
    std::vector<AcGePoint3d> points;
    host::appendEllipse(points, arc, chordError(std::max(arc.major.length(), arc.minor.length())));
    if (type == kAcGiArcSector) points.push_back(arc.center);
    const auto count = static_cast<Adesk::UInt32>(points.size());
    if (type != kAcGiArcSimple) return polygon(count, points.data());
    const AcGeVector3d normal = arc.major.crossProduct(arc.minor).normal();
    return polyline(count, points.data(), &normal);
}

Adesk::Boolean AcGiGeometry::pline(const host::Pline& given) {
    const std::size_t count = given.vertices.size();
    if (count == 0) return false;
    std::vector<AcGePoint2d> flat;
    for (std::size_t i = 0; i + 1 < count + given.closed; ++i) {
        const auto &from = given.vertices[i], &to = given.vertices[(i + 1) % count];
        const double chord = from.point.distanceTo(to.point);
        host::appendBulge(flat, from.point, to.point, from.bulge, chordError(chord));
    }
    flat.push_back(given.vertices[given.closed ? 0 : count - 1].point);
    std::vector<AcGePoint3d> points;
    points.reserve(flat.size());
    AcGeMatrix3d plane;
    plane.setToPlaneToWorld(given.normal);
    for (const auto& p : flat) points.push_back(plane * AcGePoint3d(p.x, p.y, given.elevation));
    return polyline(static_cast<Adesk::UInt32>(points.size()), points.data(), &given.normal);
}

Adesk::Boolean AcGiGeometry::mesh(Adesk::UInt32 rows, Adesk::UInt32 columns, const AcGePoint3d* points) {
    std::vector<AcGePoint3d> line(rows);
    for (Adesk::UInt32 r = 0; r < rows; ++r) polyline(columns, points + std::size_t(r) * columns);
    for (Adesk::UInt32 c = 0; c < columns; ++c) {
        for (Adesk::UInt32 r = 0; r < rows; ++r) line[r] = points[std::size_t(r) * columns + c];
        polyline(rows, line.data());
    }
    return false;
}

Adesk::Boolean AcGiGeometry::shell(Adesk::UInt32 vertexCount, const AcGePoint3d* vertices,
                                   Adesk::UInt32 faceListSize, const Adesk::Int32* faceList) {
    std::vector<AcGePoint3d> face;
    for (Adesk::UInt32 i = 0; i < faceListSize;) {
        const Adesk::Int64 count = std::abs(Adesk::Int64(faceList[i++]));
        if (count > Adesk::Int64(faceListSize - i)) break;
        face.clear();
        for (Adesk::Int64 k = 0; k < count; ++k) {
            const Adesk::Int32 index = faceList[i++];
            if (index < 0 || Adesk::UInt32(index) >= vertexCount) return false;
            face.push_back(vertices[index]);
        }
        if (face.size() < 2) continue;
        face.push_back(face.front());
        polyline(static_cast<Adesk::UInt32>(face.size()), face.data());
    }
    return false;
}

Adesk::Boolean AcGiGeometry::text(const AcGePoint3d& position, const AcGeVector3d& normal,
                                  const AcGeVector3d& direction, double height, double width, double oblique,
                                  const ACHAR* message) {
    AcGiTextStyle style;
    style.setTextSize(height);
    style.setXScale(width);
    style.setObliquingAngle(oblique);
    return text(position, normal, direction, message, -1, false, style);
}

Adesk::Boolean AcGiGeometry::text(const AcGePoint3d&, const AcGeVector3d&, const AcGeVector3d&, const ACHAR*,
                                  Adesk::Int32, Adesk::Boolean, const AcGiTextStyle&) {
    return false;
}

Adesk::Boolean AcGiGeometry::xline(const AcGePoint3d&, const AcGePoint3d&) { return false; }
Adesk::Boolean AcGiGeometry::ray(const AcGePoint3d&, const AcGePoint3d&) { return false; }
