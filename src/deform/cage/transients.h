// The entities that show a cage while a command runs: they stand in no drawing, and are drawn by the
// transient manager. Who makes and updates them is in cage_graphics.h.
#pragma once
#include "core/host/interaction.h"
#include "deform/cage/gizmo.h"

namespace corvane::deform {

// A dot for a control point: a disc that faces the viewer.
class TransientCP : public AcDbEntity {
public:
    AcGePoint3d position;
    double size = 1; // radius
    ViewAxes facing;
    int colorIndex = 210;
    bool visible = true;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
};
using FFDTransientCP = TransientCP;

// A line between two neighbours.
class TransientLine : public AcDbEntity {
public:
    AcGePoint3d start, end;
    int colorIndex = 6;
    bool visible = true;

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
};
using FFDTransientLine = TransientLine;

// The gizmo with its handles, the one under the cursor lit, and the sector that a rotation sweeps.
class TransientGizmo : public AcDbEntity {
public:
    AcGePoint3d centre;
    GizmoAxes axes{AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis};
    double size = 1;
    ViewAxes facing; // of the mode's name
    GizmoMode mode = GizmoMode::move;
    int lockedHandle = kNoHandle, hoverHandle = kNoHandle;
    int hoverSign = 0; // -1: the far side of the hovered axis
    unsigned hiddenHandles = 0;
    bool visible = false;
    bool rotating = false;
    double rotateStartAngle = 0, rotateAngle = 0; // in the locked plane, radians
    AcGePoint3d rotateStart;                      // where the first click was
    Pixel rotateStartPixel, rotateCurrentPixel;

    GizmoPlace place() const { return {centre, size, mode, hiddenHandles, axes}; }

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* context) const override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
};
using FFDTransientGizmo = TransientGizmo;

} // namespace corvane::deform
