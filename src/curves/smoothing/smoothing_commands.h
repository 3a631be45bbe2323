// Handlers of the four commands that clean up polylines.
#pragma once

namespace corvane {

void ThinPolylinesCommand();    // PLYH
void RemoveDuplicatesCommand(); // PLYH2
void SplineFitCommand();        // PLYH3
void ProjectCurvesCommand();    // QXTY

} // namespace corvane
