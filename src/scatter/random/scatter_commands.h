// Handlers of random scatters.
#pragma once

namespace corvane {

void ScatterOnCurvesCommand();  // rndScatter1
void ScatterInRegionsCommand(); // rndScatter2

} // namespace corvane
