// Choosing control points by regions of the screen: a rectangle, a circle or a polygon, and several of them
// while Ctrl is held.
#pragma once
#include <optional>
#include <vector>

#include "deform/cage/cage_state.h"

namespace corvane::deform {

// Indices of the control points that are seen within one region, in the cage's order; nothing when the user
// gave none.
std::optional<std::vector<int>> SelectRegion(const Cage& cage);

// Key M: a region, added to or taken away from the selection by held keys. Ctrl toggles and goes on asking
// while it stays down; Alt takes away. What was chosen is selected afterwards.
void MultiSelectControlPoints(CageState& state);

} // namespace corvane::deform
