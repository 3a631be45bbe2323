// Hovering, tooltips and sectors.
#include "deform/cage/gizmo_monitor.h"

#include "deform/cage/gizmo_names.h"

namespace corvane::deform {

Acad::ErrorStatus GizmoInputMonitor::monitorInputPoint(const AcEdInputPoint& input,
                                                       AcEdInputPointMonitorResult&) {
    const TransientGizmo& gizmo = state_.graphics.gizmo();
    if (!gizmo.visible || !input.pointComputed()) return Acad::eOk;
    const ScreenMap screen = CurrentScreen();
    const Pixel cursor = screen.pixel(input.computedPoint());
    const bool changed = hover(screen, cursor);
    if (sweep(screen, cursor) || changed) state_.graphics.updateGizmo();
    tellScale(input.computedPoint());
    return Acad::eOk;
}

// True when the gizmo looks different now.
bool GizmoInputMonitor::hover(const ScreenMap& screen, Pixel cursor) {
    TransientGizmo& gizmo = state_.graphics.gizmo();
    AxisHover found{HitTestGizmo(gizmo.place(), screen, cursor), 0};
    const bool moves = gizmo.mode == GizmoMode::move;
    if (moves && !IsPlane(state_.lockedHandle)) {
        if (!IsPlane(found.handle)) found = AxisTowards(gizmo.place(), screen, cursor);
    } else if (gizmo.mode == GizmoMode::scale && IsPlane(found.handle)) {
        found.handle = kNoHandle;
    }
    const bool locks = !moves && !gizmo.rotating && (IsAxis(found.handle) || IsPlane(found.handle)) &&
                       found.handle != state_.lockedHandle;
    if (locks) state_.lockedHandle = gizmo.lockedHandle = found.handle;
    const bool changed = found.handle != gizmo.hoverHandle || found.sign != gizmo.hoverSign;
    gizmo.hoverHandle = found.handle, gizmo.hoverSign = found.sign;
    return changed || locks;
}

// The sector starts where the rotation began and goes as far as a click here would turn.
bool GizmoInputMonitor::sweep(const ScreenMap& screen, Pixel cursor) {
    TransientGizmo& gizmo = state_.graphics.gizmo();
    if (!gizmo.rotating || !IsPlane(gizmo.lockedHandle) || cursor == gizmo.rotateCurrentPixel) return false;
    const GizmoPlace place = gizmo.place();
    gizmo.rotateCurrentPixel = cursor;
    gizmo.rotateStartPixel = screen.pixel(gizmo.rotateStart); // the view may have changed meanwhile
    gizmo.rotateAngle =
        gizmo.rotateStartAngle + Turn(screen.pixel(place.centre), gizmo.rotateStartPixel, cursor,
                                      SeenFromBehind(place, screen, gizmo.lockedHandle));
    return true;
}

void GizmoInputMonitor::tellScale(const AcGePoint3d& cursor) {
    const TransientGizmo& gizmo = state_.graphics.gizmo();
    if (gizmo.mode != GizmoMode::scale || state_.lockedHandle == kNoHandle) return tooltip_.hide();
    const double factor = ScaleFactor(cursor - gizmo.centre, state_.lockedHandle, gizmo.size, gizmo.axes);
    CPoint mouse;
    GetCursorPos(&mouse);
    tooltip_.show(TranslateFormat(L"缩放%s: %.3f", ShortHandleName(state_.lockedHandle), factor), mouse);
}

GizmoListening::GizmoListening(CageState& state) : state_(state) {
    state_.cage.turnGizmo = [this] {
        if (!state_.graphics.gizmo().visible) return;
        state_.showGizmo();
        acedUpdateDisplay();
    };
}

} // namespace corvane::deform
