// Resources and screens by this host's own services.
#include "core/host/dialogs.h"

#include "core/host/system.h"
#include "host/os/text.h"

namespace corvane::host_door {

int windowDpi(HWND window) {
    constexpr int kLogPixelsX = 88;
    if (const host::DpiForWindow known = host::dpiForWindowFunction()) return int(known(window));
    const HDC dc = GetDC(window);
    const int dots = dc ? GetDeviceCaps(dc, kLogPixelsX) : 0;
    ReleaseDC(window, dc);
    return dots;
}

HINSTANCE moduleResources() { return host::resourceModule(host::utf8(moduleFolder())); }

std::optional<std::string> moduleResource(UINT id, const wchar_t* type) {
    host::ResourceBytes found = host::resourceBytes(moduleResources(), id, type);
    if (!found) return std::nullopt;
    return std::move(found.bytes);
}

void setDragUnits(HWND window, std::function<CPoint(double, double)> toPixel) {
    host::setPointMapper(window, std::move(toPixel));
}

bool dialogsAreSeen() { return host::dialogRunner().seen(); }

} // namespace corvane::host_door
