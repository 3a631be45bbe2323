// Focus, capture, and what a user does with the mouse.
#include "host/os/keys.h"
#include "host/ui/messages.h"
#include "host/ui/windows.h"

namespace host {
namespace {

HWND focused = nullptr, captured = nullptr;
POINT mousePosition;

bool takesFocus(const Window& window) {
    if (!window.enabled() || window.hasClass(L"Static")) return false;
    return !window.hasClass(L"Button") || window.type() != BS_GROUPBOX;
}
LRESULT mouse(HWND handle, UINT message, UINT keys, POINT point) {
    return SendMessageW(handle, message, keys, MAKELPARAM(point.x, point.y));
}

} // namespace

HWND mouseTarget(HWND dialog, POINT point) {
    const Window* window = windowOf(dialog);
    if (!window || !window->client().PtInRect(point)) return nullptr;
    for (std::size_t i = window->children.size(); i-- > 0;) {
        Window& child = *window->children[i];
        if (!child.visible() || !child.enabled() || !child.rect.PtInRect(point)) continue;
        CPoint onScreen = window->clientOnScreen() + point;
        if (send(child, WM_NCHITTEST, 0, MAKELPARAM(onScreen.x, onScreen.y)) == HTTRANSPARENT) continue;
        const POINT inside{point.x - child.rect.left, point.y - child.rect.top};
        return mouseTarget(child.handle, inside);
    }
    return dialog;
}

void setMousePosition(POINT point) { mousePosition = point; }

void click(HWND handle, POINT point) { drag(handle, {CPoint(point)}); }

void drag(HWND handle, const std::vector<CPoint>& points) {
    const Window* window = windowOf(handle);
    if (!window || points.empty()) return;
    if (takesFocus(*window)) SetFocus(handle);
    mouse(handle, WM_LBUTTONDOWN, MK_LBUTTON, points.front());
    for (std::size_t i = 1; i < points.size(); ++i) mouse(handle, WM_MOUSEMOVE, MK_LBUTTON, points[i]);
    mouse(handle, WM_LBUTTONUP, 0, points.back());
    if (captured == handle) ReleaseCapture();
}

} // namespace host

using namespace host;

HWND SetFocus(HWND handle) {
    const HWND before = focused;
    if (handle == before || (handle && !IsWindow(handle))) return before;
    focused = handle;
    SendMessageW(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(handle), 0);
    if (focused == handle) SendMessageW(handle, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
    return before;
}
HWND GetFocus() { return IsWindow(focused) ? focused : nullptr; }

HWND SetCapture(HWND handle) {
    const HWND before = captured;
    if (before == handle) return before;
    captured = IsWindow(handle) ? handle : nullptr;
    SendMessageW(before, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(handle));
    return before;
}
HWND GetCapture() { return IsWindow(captured) ? captured : nullptr; }
BOOL ReleaseCapture() {
    const HWND before = std::exchange(captured, nullptr);
    SendMessageW(before, WM_CAPTURECHANGED, 0, 0);
    return TRUE;
}

short GetAsyncKeyState(int virtualKey) {
    const auto held = [virtualKey] {
        switch (UINT(virtualKey)) {
        case VK_SHIFT: return keyHeld(Key::shift);
        case VK_CONTROL: return keyHeld(Key::ctrl);
        case VK_MENU: return keyHeld(Key::alt);
        case VK_SPACE: return keyHeld(Key::space);
        case VK_ESCAPE: return keyHeld(Key::escape);
        default: return false;
        }
    };
    return held() ? short(-0x8000) : short(0);
}
BOOL GetCursorPos(POINT* point) {
    if (!point) return FALSE;
    *point = mousePosition;
    return TRUE;
}
