// Windows' texts, styles, places and family: the plain functions that ask and change them.
#include <algorithm>
#include <functional>

#include "host/ui/monitors.h"
#include "host/ui/windows.h"

namespace host {

FrameInsets frameInsets(DWORD style) {
    if (style & WS_CHILD) return {};
    if ((style & WS_CAPTION) == WS_CAPTION) return {kFrame, kFrame + kTitle, kFrame, kFrame};
    if (style & (WS_BORDER | WS_DLGFRAME | WS_THICKFRAME)) return {1, 1, 1, 1};
    return {};
}

CRect Window::client() const {
    const FrameInsets frame = frameInsets(style);
    return {0, 0, std::max(rect.Width() - frame.left - frame.right, 0),
            std::max(rect.Height() - frame.top - frame.bottom, 0)};
}
CPoint Window::clientOnScreen() const {
    const FrameInsets frame = frameInsets(style);
    CPoint origin(rect.left + frame.left, rect.top + frame.top);
    return parent ? origin + parent->clientOnScreen() : origin;
}

void invalidate(Window& window) {
    if (!window.drawing) return;
    window.dirty = true;
    window.overlay.reset();
    tellWatcher(window, WindowWatcher::Change::look);
}

} // namespace host

using namespace host;

namespace {

CPoint clientOrigin(HWND handle) {
    const Window* window = windowOf(handle);
    return window ? window->clientOnScreen() : CPoint();
}
int copyText(const std::wstring& text, LPWSTR buffer, int size) {
    if (!buffer || size <= 0) return 0;
    const std::size_t length = std::min(text.size(), std::size_t(size) - 1);
    text.copy(buffer, length);
    buffer[length] = L'\0';
    return int(length);
}
void place(Window& window, const CRect& rect) {
    const CRect before = window.rect;
    if (rect == before) return;
    window.rect = rect;
    invalidate(window);
    tellWatcher(window, WindowWatcher::Change::place);
    const HWND handle = window.handle;
    if (!(rect.TopLeft() == before.TopLeft())) send(window, WM_MOVE, 0, MAKELPARAM(rect.left, rect.top));
    if (windowOf(handle) && !(rect.Size() == before.Size()))
        send(window, WM_SIZE, 0, MAKELPARAM(window.client().Width(), window.client().Height()));
}

} // namespace

BOOL IsWindow(HWND window) { return windowOf(window) != nullptr; }
BOOL IsChild(HWND parent, HWND child) {
    for (const Window* w = windowOf(child); w && w->parent; w = w->parent)
        if (w->parent->handle == parent) return TRUE;
    return FALSE;
}
BOOL IsWindowVisible(HWND handle) {
    const Window* window = windowOf(handle);
    for (const Window* w = window; w; w = w->parent)
        if (!w->visible()) return FALSE;
    return window != nullptr;
}
BOOL IsWindowEnabled(HWND handle) {
    const Window* window = windowOf(handle);
    return window && window->enabled();
}
HWND GetParent(HWND handle) {
    const Window* window = windowOf(handle);
    if (!window) return nullptr;
    return window->parent ? window->parent->handle : IsWindow(window->owner) ? window->owner : nullptr;
}
HWND GetAncestor(HWND handle, UINT which) {
    Window* window = windowOf(handle);
    if (!window) return nullptr;
    if (which == GA_ROOT) return window->root().handle;
    return window->parent ? window->parent->handle : nullptr;
}
HWND GetWindow(HWND handle, UINT which) {
    const Window* window = windowOf(handle);
    if (!window) return nullptr;
    if (which == GW_OWNER) return window->owner;
    if (which == GW_CHILD) return window->children.empty() ? nullptr : window->children.front()->handle;
    if (!window->parent) return nullptr;
    const auto& family = window->parent->children;
    if (which == GW_HWNDFIRST) return family.front()->handle;
    if (which == GW_HWNDLAST) return family.back()->handle;
    const auto at = std::find(family.begin(), family.end(), window);
    if (which == GW_HWNDPREV) return at == family.begin() ? nullptr : (*(at - 1))->handle;
    return at + 1 == family.end() ? nullptr : (*(at + 1))->handle;
}
HWND GetDlgItem(HWND dialog, int id) {
    const Window* window = windowOf(dialog);
    const Window* child = window ? window->child(UINT(id) & (id < 0 ? 0xFFFF : ~0u)) : nullptr;
    return child ? child->handle : nullptr;
}
int GetDlgCtrlID(HWND handle) {
    const Window* window = windowOf(handle);
    return window ? int(window->id) : 0;
}
BOOL EnumChildWindows(HWND parent, WNDENUMPROC each, LPARAM parameter) {
    std::vector<HWND> all;
    const std::function<void(const Window&)> gather = [&](const Window& window) {
        for (const Window* child : window.children) all.push_back(child->handle), gather(*child);
    };
    if (const Window* window = windowOf(parent)) gather(*window);
    for (const HWND child : all)
        if (IsWindow(child) && !each(child, parameter)) return FALSE;
    return TRUE;
}

int GetClassNameW(HWND handle, LPWSTR buffer, int size) {
    const Window* window = windowOf(handle);
    return window ? copyText(window->className, buffer, size) : 0;
}
int GetWindowTextW(HWND handle, LPWSTR buffer, int size) {
    if (buffer && size > 0) buffer[0] = L'\0';
    return int(SendMessageW(handle, WM_GETTEXT, WPARAM(std::max(size, 0)), reinterpret_cast<LPARAM>(buffer)));
}
int GetWindowTextLengthW(HWND handle) { return int(SendMessageW(handle, WM_GETTEXTLENGTH, 0, 0)); }
BOOL SetWindowTextW(HWND handle, LPCWSTR text) {
    return BOOL(SendMessageW(handle, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text ? text : L"")));
}

LONG_PTR GetWindowLongPtrW(HWND handle, int index) {
    const Window* window = windowOf(handle);
    if (!window) return 0;
    switch (index) {
    case GWL_STYLE: return LONG_PTR(window->style);
    case GWL_EXSTYLE: return LONG_PTR(window->exStyle);
    case GWLP_ID: return LONG_PTR(window->id);
    case GWLP_WNDPROC:
        return reinterpret_cast<LONG_PTR>(window->procedure ? window->procedure : DefWindowProcW);
    case GWLP_USERDATA: return window->userData;
    default: return 0;
    }
}
LONG_PTR SetWindowLongPtrW(HWND handle, int index, LONG_PTR value) {
    Window* window = windowOf(handle);
    if (!window) return 0;
    const LONG_PTR before = GetWindowLongPtrW(handle, index);
    switch (index) {
    case GWL_STYLE: window->style = DWORD(value); break;
    case GWL_EXSTYLE: window->exStyle = DWORD(value); break;
    case GWLP_ID: window->id = UINT(value); break;
    case GWLP_WNDPROC: window->procedure = reinterpret_cast<WNDPROC>(value); break;
    case GWLP_USERDATA: window->userData = value; return before;
    default: return 0;
    }
    if (window->procedure == DefWindowProcW) window->procedure = nullptr;
    invalidate(*window);
    tellWatcher(*window, WindowWatcher::Change::state);
    return before;
}
LONG GetWindowLongW(HWND handle, int index) { return LONG(GetWindowLongPtrW(handle, index)); }
LONG SetWindowLongW(HWND handle, int index, LONG value) {
    return LONG(SetWindowLongPtrW(handle, index, LONG_PTR(DWORD(value))));
}

BOOL GetWindowRect(HWND handle, RECT* rect) {
    const Window* window = windowOf(handle);
    if (!window) return FALSE;
    CRect out = window->rect;
    if (window->parent) out.OffsetRect(window->parent->clientOnScreen());
    *rect = out;
    return TRUE;
}
BOOL GetClientRect(HWND handle, RECT* rect) {
    const Window* window = windowOf(handle);
    if (window) *rect = window->client();
    return window != nullptr;
}
BOOL ScreenToClient(HWND window, POINT* point) { return MapWindowPoints(nullptr, window, point, 1), TRUE; }
BOOL ClientToScreen(HWND window, POINT* point) { return MapWindowPoints(window, nullptr, point, 1), TRUE; }
int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count) {
    const CPoint by = clientOrigin(from) - clientOrigin(to);
    for (UINT i = 0; i < count; ++i) points[i].x += by.x, points[i].y += by.y;
    return int(MAKELPARAM(by.x, by.y));
}
int MapWindowPoints(HWND from, HWND to, RECT* rect) {
    const CPoint by = clientOrigin(from) - clientOrigin(to);
    CRect moved(*rect);
    moved.OffsetRect(by);
    *rect = moved;
    return int(MAKELPARAM(by.x, by.y));
}

BOOL SetWindowPos(HWND handle, HWND, int x, int y, int width, int height, UINT flags) {
    Window* window = windowOf(handle);
    if (!window) return FALSE;
    CPoint corner = (flags & SWP_NOMOVE) ? window->rect.TopLeft() : CPoint(x, y);
    CSize size = (flags & SWP_NOSIZE) ? window->rect.Size() : CSize(std::max(width, 0), std::max(height, 0));
    place(*window, CRect(corner, size));
    if (!IsWindow(handle)) return FALSE;
    if (flags & SWP_FRAMECHANGED) invalidate(*window);
    if (flags & SWP_SHOWWINDOW) ShowWindow(handle, SW_SHOW);
    if (flags & SWP_HIDEWINDOW) ShowWindow(handle, SW_HIDE);
    return TRUE;
}
BOOL MoveWindow(HWND handle, int x, int y, int width, int height, BOOL) {
    return SetWindowPos(handle, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}
BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL, DWORD) {
    const FrameInsets frame = frameInsets(style);
    rect->left -= frame.left, rect->top -= frame.top;
    rect->right += frame.right, rect->bottom += frame.bottom;
    return TRUE;
}

BOOL ShowWindow(HWND handle, int how) {
    Window* window = windowOf(handle);
    if (!window) return FALSE;
    const bool before = window->visible(), show = how != SW_HIDE;
    if (show == before) return before;
    send(*window, WM_SHOWWINDOW, WPARAM(show), 0);
    if (!IsWindow(handle)) return before;
    window->style = show ? window->style | WS_VISIBLE : window->style & ~WS_VISIBLE;
    if (!show && (GetFocus() == handle || IsChild(handle, GetFocus()))) SetFocus(nullptr);
    if (!IsWindow(handle)) return before;
    invalidate(*window);
    tellWatcher(*window, WindowWatcher::Change::state);
    return before;
}
BOOL EnableWindow(HWND handle, BOOL enable) {
    Window* window = windowOf(handle);
    if (!window) return FALSE;
    const bool before = window->enabled();
    if (before == (enable != FALSE)) return !before;
    window->style = enable ? window->style & ~WS_DISABLED : window->style | WS_DISABLED;
    if (!enable && GetFocus() == handle) SetFocus(nullptr);
    if (!IsWindow(handle)) return !before;
    send(*window, WM_ENABLE, WPARAM(enable != FALSE), 0);
    if (!IsWindow(handle)) return !before;
    invalidate(*window);
    tellWatcher(*window, WindowWatcher::Change::state);
    return !before;
}
BOOL InvalidateRect(HWND handle, const RECT*, BOOL) {
    Window* window = windowOf(handle);
    if (window) invalidate(*window);
    return window != nullptr;
}
BOOL UpdateWindow(HWND handle) { return IsWindow(handle); }
BOOL RedrawWindow(HWND handle, const RECT*, HRGN, UINT flags) {
    Window* window = windowOf(handle);
    if (!window) return FALSE;
    invalidate(*window);
    if (flags & RDW_ALLCHILDREN)
        for (Window* child : window->children) invalidate(*child);
    return TRUE;
}
BOOL EndDialog(HWND handle, INT_PTR result) {
    Window* window = windowOf(handle);
    if (!window) return FALSE;
    window->ended = true, window->result = result;
    return TRUE;
}
