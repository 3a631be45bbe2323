// Puts the host together: classes, services, the host's own commands. Programs and tests call it first.
#pragma once

namespace host {
// Harmless when repeated.
void startHost();
} // namespace host
