// Handlers of the commands that turn curves of one kind into another. Those from files and texts
// are in import_commands.h.
#pragma once

namespace corvane {

void SplineToPolylineCommand();  // s2p
void CurvesToArcsCommand();      // SPL2ARC
void CurvesToSplinesCommand();   // p2s
void CurvesToPolylinesCommand(); // all2polyline
void LightToOldCommand();        // PL2OLD
void OldToLightCommand();        // OLDPL2LW
void PolylineWidthCommand();     // PLGXK
void ClosePolylinesCommand();    // PLCLOSE
void OpenPolylinesCommand();     // PLOPEN

} // namespace corvane
