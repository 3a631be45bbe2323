// Viewports of layouts: data and frame.
#include "host/ent/viewport.h"

#include "host/db/blocktable.h"
#include "host/ent/filing.h"
#include "host/gi/draw.h"

HOST_DEFINE_CLASS(AcDbViewport, AcDbEntity, L"VIEWPORT")

Acad::ErrorStatus AcDbViewport::setCenterPoint(const AcGePoint3d& center) {
    if (!host::finite(center)) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    return own_.setPoint(10, center, 10), Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::setWidth(double width) {
    if (!std::isfinite(width) || !(width > 0)) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    return own_.setReal(40, width), Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::setHeight(double height) {
    if (!std::isfinite(height) || !(height > 0)) return Acad::eInvalidInput;
    if (auto es = change(); es != Acad::eOk) return es;
    return own_.setReal(41, height), Acad::eOk;
}
double AcDbViewport::twistAngle() const { return host::toRadians(own_.real(51)); }
double AcDbViewport::customScale() const { return viewHeight() > 0 ? height() / viewHeight() : 0; }

void AcDbViewport::corners(AcGePoint3d (&out)[5]) const {
    const AcGeVector3d across(width() / 2, 0, 0), up(0, height() / 2, 0);
    const AcGePoint3d center = centerPoint();
    out[0] = out[4] = center - across - up, out[1] = center + across - up;
    out[2] = center + across + up, out[3] = center - across + up;
}

// Frames belong to the paper; in model space and in blocks there is nothing to see.
Adesk::Boolean AcDbViewport::subWorldDraw(AcGiWorldDraw* context) const {
    const AcDbObjectId owner = blockId();
    const auto* block = owner.isNull() ? nullptr : AcDbBlockTableRecord::cast(owner.cell()->object);
    if (number() == 1 || !block || !block->isPaperSpace()) return true;
    AcGePoint3d round[5];
    corners(round);
    context->geometry().polyline(5, round);
    return true;
}

Acad::ErrorStatus AcDbViewport::subTransformBy(const AcGeMatrix3d& matrix) {
    const bool turned =
        std::fabs(matrix(0, 1)) > 1e-12 * matrix.scale() || matrix(0, 0) <= 0 || matrix(1, 1) <= 0;
    if (turned || !matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
    if (auto es = change(); es != Acad::eOk) return es;
    own_.mapPoints({10}, [&](const AcGePoint3d& p) { return matrix * p; });
    own_.setReal(40, width() * matrix.scale()), own_.setReal(41, height() * matrix.scale());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::subGetGeomExtents(AcDbExtents& extents) const {
    AcGePoint3d round[5];
    corners(round);
    AcDbExtents box;
    for (const AcGePoint3d& p : round) box.addPoint(p);
    return extents = box, Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::subGetGripPoints(AcGePoint3dArray& points) const {
    AcGePoint3d round[5];
    corners(round);
    for (int i = 0; i < 4; ++i) points.append(round[i]);
    points.append(centerPoint());
    return Acad::eOk;
}
