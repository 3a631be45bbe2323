// Opening files and addresses in the user's own viewer. Who opens is set at start-up: the desk asks
// the system, the script front end writes a line that says what would have been opened.
#pragma once

#include <functional>
#include <string>

namespace host {

struct ShellRequest {
    std::wstring target;     // a file, an address or a program
    std::wstring parameters; // for a program; empty otherwise
};

using ShellHandler = std::function<bool(const ShellRequest&)>; // false: it could not be opened

void setShellHandler(ShellHandler handler);

// Hands the request to the handler; false without one, for an empty target, or when it failed.
bool shellOpen(const ShellRequest& request);

} // namespace host
