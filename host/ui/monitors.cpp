// Screens: a settable list, and the window system's questions about them.
#include "host/ui/monitors.h"

#include <algorithm>
#include <cmath>

#include "host/ui/windows.h"

namespace host {
namespace {

struct State {
    std::vector<Monitor> list{Monitor()};
    bool hasDpiForWindow = true;
};
State& state() {
    static State all;
    return all;
}

double distance(const CRect& a, const CRect& b) {
    const double dx = std::max({0, a.left - b.right, b.left - a.right});
    const double dy = std::max({0, a.top - b.bottom, b.top - a.bottom});
    return std::hypot(dx, dy);
}
HMONITOR handleOf(const Monitor& monitor) {
    return reinterpret_cast<HMONITOR>(std::uintptr_t(&monitor - state().list.data() + 1));
}

} // namespace

const std::vector<Monitor>& monitors() { return state().list; }
void setMonitors(std::vector<Monitor> list) {
    state().list = std::move(list);
    if (state().list.empty()) state().list.push_back(Monitor());
}

const Monitor& monitorAt(const CRect& rect) {
    const auto& list = state().list;
    const Monitor* best = &list.front();
    double most = 0;
    for (const Monitor& monitor : list) {
        CRect common;
        common.IntersectRect(monitor.area, rect);
        const double area = double(common.Width()) * common.Height();
        if (area > most) most = area, best = &monitor;
    }
    if (most > 0) return *best;
    return *std::min_element(list.begin(), list.end(), [&](const Monitor& a, const Monitor& b) {
        return distance(a.area, rect) < distance(b.area, rect);
    });
}

DpiForWindow dpiForWindowFunction() { return state().hasDpiForWindow ? &GetDpiForWindow : nullptr; }
void setDpiForWindowPresent(bool present) { state().hasDpiForWindow = present; }

} // namespace host

using namespace host;

int GetSystemMetrics(int index) {
    const CRect& screen = monitors().front().area;
    switch (index) {
    case SM_CXSCREEN: return screen.Width();
    case SM_CYSCREEN: return screen.Height();
    case SM_CXVSCROLL: return 17;
    case SM_CYCAPTION: return kTitle;
    case SM_CXBORDER: return 1;
    case SM_CXDLGFRAME:
    case SM_CYDLGFRAME: return kFrame;
    case SM_CXEDGE: return 2;
    case SM_CMONITORS: return int(monitors().size());
    default: return 0;
    }
}

HMONITOR MonitorFromRect(const RECT* rect, DWORD otherwise) {
    const Monitor& nearest = monitorAt(*rect);
    CRect common;
    if (common.IntersectRect(nearest.area, *rect) || otherwise == MONITOR_DEFAULTTONEAREST)
        return handleOf(nearest);
    return otherwise == MONITOR_DEFAULTTOPRIMARY ? handleOf(monitors().front()) : nullptr;
}
HMONITOR MonitorFromWindow(HWND window, DWORD otherwise) {
    RECT rect;
    if (GetWindowRect(window, &rect)) return MonitorFromRect(&rect, otherwise);
    return otherwise == MONITOR_DEFAULTTONULL ? nullptr : handleOf(monitors().front());
}
BOOL GetMonitorInfoW(HMONITOR monitor, MONITORINFO* info) {
    const auto number = reinterpret_cast<std::uintptr_t>(monitor);
    if (number == 0 || number > monitors().size() || !info) return FALSE;
    const Monitor& found = monitors()[number - 1];
    info->rcMonitor = found.area, info->rcWork = found.work;
    info->dwFlags = number == 1;
    return TRUE;
}
UINT GetDpiForWindow(HWND handle) {
    const Window* window = windowOf(handle);
    return window ? UINT(window->dotsPerInch()) : 0;
}
