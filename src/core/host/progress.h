// The door to the host: how far long work has come, shown to whoever waits for it.
#pragma once
#include <string>

namespace corvane::host_door {

// Shows the share, 0 to 1, with the caption where people watch: in the window, or in one line of a terminal.
// Cheap enough for a few hundred calls a second. False when the user wants the work stopped.
bool showProgress(const std::wstring& caption, double share);

} // namespace corvane::host_door
