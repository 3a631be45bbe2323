// Dots and lines. The gizmo is drawn in gizmo_graphic.cpp.
#include "deform/cage/transients.h"

#include <cmath>

namespace corvane::deform {
namespace {

// The cube round a point.
Acad::ErrorStatus extentsRound(const AcGePoint3d& point, double size, AcDbExtents& extents) {
    const AcGeVector3d reach(size, size, size);
    extents.set(point - reach, point + reach);
    return Acad::eOk;
}

} // namespace

Adesk::Boolean TransientCP::subWorldDraw(AcGiWorldDraw* context) const {
    if (!visible) return true;
    // Thousands of them may be shown: few corners, worked out once.
    constexpr int kCorners = 24;
    static const std::array<AcGePoint2d, kCorners> kCircle = [] {
        std::array<AcGePoint2d, kCorners> circle;
        for (int i = 0; i < kCorners; ++i)
            circle[size_t(i)].set(std::cos(2 * M_PI * i / kCorners), std::sin(2 * M_PI * i / kCorners));
        return circle;
    }();
    context->subEntityTraits().setColor(Adesk::UInt16(colorIndex));
    context->subEntityTraits().setFillType(kAcGiFillAlways);
    AcGePoint3d disc[kCorners];
    for (size_t i = 0; i < kCorners; ++i)
        disc[i] = position + facing.right * (size * kCircle[i].x) + facing.up * (size * kCircle[i].y);
    context->geometry().polygon(kCorners, disc);
    return true;
}

Acad::ErrorStatus TransientCP::subGetGeomExtents(AcDbExtents& extents) const {
    return extentsRound(position, size, extents);
}

Adesk::Boolean TransientLine::subWorldDraw(AcGiWorldDraw* context) const {
    if (!visible) return true;
    const AcGePoint3d points[] = {start, end};
    context->subEntityTraits().setColor(Adesk::UInt16(colorIndex));
    context->geometry().polyline(2, points);
    return true;
}

Acad::ErrorStatus TransientLine::subGetGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    extents.addPoint(start);
    extents.addPoint(end);
    return Acad::eOk;
}

Acad::ErrorStatus TransientGizmo::subGetGeomExtents(AcDbExtents& extents) const {
    return extentsRound(centre, size, extents);
}

} // namespace corvane::deform
