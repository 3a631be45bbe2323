// The loop with a gizmo on the selected control points.
#pragma once
#include "deform/cage/cage_state.h"

namespace corvane::deform {

// Runs while control points are selected. False, with the selection kept, when there is no document to
// listen to; what is selected can then be dragged at the control-point prompt.
bool RunGizmoLoop(CageState& state);

} // namespace corvane::deform
