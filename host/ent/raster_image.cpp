// Pictures in drawings: the frame, its box and its images.
#include "host/ent/raster_image.h"

#include "host/db/database.h"
#include "host/ent/filing.h"
#include "host/gi/draw.h"

HOST_DEFINE_CLASS(AcDbRasterImage, AcDbEntity, L"IMAGE")
HOST_DEFINE_CLASS(AcDbWipeout, AcDbRasterImage, L"WIPEOUT")

AcGeVector2d AcDbRasterImage::imageSize() const { return {own_.real(13), own_.real(23)}; }

void AcDbRasterImage::getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const {
    const AcGeVector2d size = imageSize();
    origin = own_.point(10), u = own_.vector(11) * size.x, v = own_.vector(12) * size.y;
}

AcDbObjectId AcDbRasterImage::imageDefId() const {
    AcDbObjectId id;
    if (database() && own_.handle(340)) database()->getAcDbObjectId(id, false, AcDbHandle(own_.handle(340)));
    return id;
}

AcGePoint2dArray AcDbRasterImage::clipBoundary() const {
    AcGePoint2dArray boundary;
    for (const AcGePoint3d& p : own_.points(14)) boundary.append(AcGePoint2d(p.x, p.y));
    return boundary;
}

Acad::ErrorStatus AcDbRasterImage::getVertices(AcGePoint3dArray& corners) const {
    const AcGeVector2d size = imageSize();
    AcGePoint2dArray boundary = isClipped() ? clipBoundary() : AcGePoint2dArray();
    if (boundary.length() < 2) boundary = {{-0.5, -0.5}, {size.x - 0.5, size.y - 0.5}};
    if (boundary.length() == 2) {
        const AcGePoint2d a = boundary[0], b = boundary[1];
        boundary = {a, {b.x, a.y}, b, {a.x, b.y}};
    }
    if (boundary.first().distanceTo(boundary.last()) == 0) boundary.removeLast();
    const AcGePoint3d origin = own_.point(10);
    const AcGeVector3d u = own_.vector(11), v = own_.vector(12);
    corners.removeAll();
    for (const AcGePoint2d& p : boundary) {
        const AcGePoint3d corner = origin + u * (p.x + 0.5) + v * (size.y - 0.5 - p.y);
        if (!host::finite(corner)) return Acad::eInvalidExtents;
        corners.append(corner);
    }
    return Acad::eOk;
}

Adesk::Boolean AcDbRasterImage::subWorldDraw(AcGiWorldDraw* context) const {
    AcGePoint3dArray corners;
    if (getVertices(corners) != Acad::eOk || corners.isEmpty()) return true;
    corners.append(AcGePoint3d(corners.first()));
    context->geometry().polyline(Adesk::UInt32(corners.length()), corners.asArrayPtr());
    return true;
}

Acad::ErrorStatus AcDbRasterImage::subTransformBy(const AcGeMatrix3d& matrix) {
    if (auto es = change(); es != Acad::eOk) return es;
    own_.mapPoints({10}, [&](const AcGePoint3d& p) { return matrix * p; });
    own_.mapPoints({11, 12},
                   [&](const AcGePoint3d& p) { return AcGePoint3d::kOrigin + matrix * p.asVector(); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImage::subGetGeomExtents(AcDbExtents& extents) const {
    AcGePoint3dArray corners;
    if (auto es = getVertices(corners); es != Acad::eOk) return es;
    AcDbExtents box;
    for (const AcGePoint3d& p : corners) box.addPoint(p);
    return extents = box, Acad::eOk;
}

Acad::ErrorStatus AcDbRasterImage::subGetGripPoints(AcGePoint3dArray& points) const {
    return getVertices(points);
}
