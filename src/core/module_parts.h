// What features do when the module comes and goes, beyond their commands: classes of objects, reactors. Like
// the command table, the one place that names them all.
#pragma once

namespace corvane {

void LoadModuleParts();
// In the opposite order; afterwards nothing in the host leads into the module.
void UnloadModuleParts();

} // namespace corvane
