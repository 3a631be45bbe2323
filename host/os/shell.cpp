// One handler for the process.
#include "host/os/shell.h"

namespace host {
namespace {

ShellHandler& handler() {
    static ShellHandler kept;
    return kept;
}

} // namespace

void setShellHandler(ShellHandler newHandler) { handler() = std::move(newHandler); }

bool shellOpen(const ShellRequest& request) {
    return !request.target.empty() && handler() && handler()(request);
}

} // namespace host
