// Colours, layers, views and planes.
#include "core/properties.h"

#include <algorithm>
#include <cmath>

#include "core/host/editor.h"
#include "core/sysvar_stack.h"

namespace corvane {
namespace {

void transform(AcGePoint3d& point, short from, short to) {
    resbuf source, target;
    source.restype = target.restype = RTSHORT;
    source.resval.rint = from, target.resval.rint = to;
    ads_point in{point.x, point.y, point.z}, out;
    if (acedTrans(in, &source, &target, 0, out) == RTNORM) point.set(out[X], out[Y], out[Z]);
}

void aroundViewCenter(double width, double height, AcGePoint3d& lowerLeft, AcGePoint3d& upperRight) {
    AcGePoint3d center;
    ReadSysVar(L"VIEWCTR", center);
    lowerLeft.set(center.x - width / 2, center.y - height / 2, center.z);
    upperRight.set(center.x + width / 2, center.y + height / 2, center.z);
    UcsToWcs(lowerLeft);
    UcsToWcs(upperRight);
}

// X and Y axes by the arbitrary axis rule.
struct Axes {
    AcGeVector3d x, y, z;
};
Axes arbitraryAxes(const AcGeVector3d& normal) {
    constexpr double kNearZ = 1.0 / 64;
    const AcGeVector3d z = normal.normal();
    if (z == AcGeVector3d::kZAxis) return {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, z};
    const bool steep = std::abs(z.x) < kNearZ && std::abs(z.y) < kNearZ;
    const AcGeVector3d x = (steep ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis).crossProduct(z).normal();
    return {x, z.crossProduct(x).normal(), z};
}

} // namespace

void ResolvedColor(const AcDbEntity& entity, AcCmColor& color) {
    color = entity.color();
    if (color.isByBlock()) color.setColorIndex(AcCmEntityColor::kACIforeground);
    if (!color.isByLayer()) return;
    AcDbObjectPointer<AcDbLayerTableRecord> layer(entity.layerId(), AcDb::kForRead);
    if (layer) color = layer->color();
}

Acad::ErrorStatus LayerNameAndColor(const AcDbEntity& entity, std::wstring& name, int& colorIndex) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(entity.layerId(), AcDb::kForRead);
    if (!layer) return layer.openStatus();
    name = layer->name();
    colorIndex = layer->color().colorIndex();
    return Acad::eOk;
}

void ViewWindow(AcGePoint3d& lowerLeft, AcGePoint3d& upperRight) {
    AcGePoint3d screen(16, 9, 0);
    ReadSysVar(L"SCREENSIZE", screen);
    double height = 0;
    ReadSysVar(L"viewsize", height);
    aroundViewCenter(screen.x * height / std::max(screen.y, 1.0), height, lowerLeft, upperRight);
}

void ActiveViewWindow(AcGePoint3d& lowerLeft, AcGePoint3d& upperRight) {
    acedVports2VportTableRecords();
    AcDbViewportTable* table = nullptr;
    double width = 0, height = 0;
    if (acdbHostApplicationServices()->workingDatabase()->getViewportTable(table, AcDb::kForRead) ==
        Acad::eOk) {
        AcDbViewportTableRecord* active = nullptr;
        if (table->getAt(L"*Active", active, AcDb::kForRead) == Acad::eOk) {
            width = active->width(), height = active->height();
            active->close();
        }
        table->close();
    }
    aroundViewCenter(width, height, lowerLeft, upperRight);
}

void UcsToWcs(AcGePoint3d& point) { transform(point, 1, 0); }
void WcsToUcs(AcGePoint3d& point) { transform(point, 0, 1); }

void PlaneFromNormal(const AcGeVector3d& normal, AcGePlane& plane) {
    const Axes axes = arbitraryAxes(normal);
    plane.set(AcGePoint3d::kOrigin, axes.x, axes.y);
}

void MatrixFromNormal(const AcGeVector3d& normal, AcGeMatrix3d& matrix) {
    const Axes axes = arbitraryAxes(normal);
    matrix.setCoordSystem(AcGePoint3d::kOrigin, axes.x, axes.y, axes.z);
}

} // namespace corvane
