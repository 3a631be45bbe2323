// What entities show that the host has no class for.
#pragma once

namespace host {

// Lets kept entities be drawn and measured: by the block that shows them, else by the picture that the
// program they came from left beside them.
void showKeptEntities();

} // namespace host
