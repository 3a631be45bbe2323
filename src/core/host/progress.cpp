// Progress by the front end in use.
#include "core/host/progress.h"

#include "host/ed/frontend.h"

namespace corvane::host_door {

bool showProgress(const std::wstring& caption, double share) {
    return host::frontEnd().progress(caption, share);
}

} // namespace corvane::host_door
