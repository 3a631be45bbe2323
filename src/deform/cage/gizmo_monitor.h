// What happens while the cursor moves over a gizmo: its handles light up, scales and rotations lock the one
// under the cursor, a scale tells its factor, a rotation shows the sector it sweeps. The drawing's objects
// stay as they are; of what is shown the gizmo alone is drawn again.
#pragma once
#include "deform/cage/cage_state.h"
#include "deform/cage/scale_tooltip.h"

namespace corvane::deform {

class GizmoInputMonitor : public AcEdInputPointMonitor {
public:
    explicit GizmoInputMonitor(CageState& state) : state_(state) {}
    Acad::ErrorStatus monitorInputPoint(const AcEdInputPoint& input,
                                        AcEdInputPointMonitorResult& output) override;

private:
    bool hover(const ScreenMap& screen, Pixel cursor);
    void tellScale(const AcGePoint3d& cursor);
    bool sweep(const ScreenMap& screen, Pixel cursor);

    CageState& state_;
    ScaleTooltip tooltip_;
};
using FFDGizmoInputMonitor = GizmoInputMonitor;

// While one lives the gizmo hears where the cursor goes over the current document, and turns when the cage
// says so; ok() is false when there is no document.
class GizmoListening {
public:
    explicit GizmoListening(CageState& state);
    ~GizmoListening() { state_.cage.turnGizmo = {}; }
    GizmoListening(const GizmoListening&) = delete;
    GizmoListening& operator=(const GizmoListening&) = delete;
    bool ok() const { return listening_.ok(); }

private:
    CageState& state_;
    GizmoInputMonitor monitor_{state_};
    InputListening listening_{monitor_};
};

} // namespace corvane::deform
