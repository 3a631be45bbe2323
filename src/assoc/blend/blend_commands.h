// Handlers of the commands that blend between curves.
#pragma once

namespace corvane {

// PLBLENDS: makes a blend from two picked curves, or edits the one that was picked.
void BlendCommand();

} // namespace corvane
