// The screens that the window system believes in: one of 1920 by 1080 at 96 dots to the inch until someone
// says otherwise: the desk tells the real ones, tests those they want.
#pragma once

#include <optional>
#include <vector>

#include "host/ui/messages.h"
#include "host/ui/rect.h"

namespace host {

struct Monitor {
    CRect area{0, 0, 1920, 1080};
    CRect work{0, 0, 1920, 1040};
    int dotsPerInch = 96;
};
const std::vector<Monitor>& monitors();
// The first is the primary one. An empty list gives the standard one back.
void setMonitors(std::vector<Monitor> list);
const Monitor& monitorAt(const CRect& rect); // the one that holds most of it, else the nearest

// The system's GetDpiForWindow, or null where it hasn't one, as old systems.
using DpiForWindow = UINT (*)(HWND);
DpiForWindow dpiForWindowFunction();
void setDpiForWindowPresent(bool present);

} // namespace host

int GetSystemMetrics(int index); // of the primary monitor; 0 for what isn't known
HMONITOR MonitorFromWindow(HWND window, DWORD otherwise);
HMONITOR MonitorFromRect(const RECT* rect, DWORD otherwise);
BOOL GetMonitorInfoW(HMONITOR monitor, MONITORINFO* info);
UINT GetDpiForWindow(HWND window); // 0 for a stale handle
