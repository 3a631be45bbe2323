// The table of windows, their classes, their making and end, and how messages reach them.
#include "host/ui/window.h"

#include <algorithm>
#include <map>

#include "host/os/text.h"
#include "host/ui/controls.h"
#include "host/ui/monitors.h"
#include "host/ui/queue.h"
#include "host/ui/runner.h"
#include "host/ui/windows.h"

namespace host {
namespace {

constexpr int kDeepest = 200; // messages sent inside messages: a loop of two windows ends here
constexpr std::size_t kLongestText = 1 << 20;

struct Table {
    std::map<std::uintptr_t, std::shared_ptr<Window>> windows;
    std::uintptr_t next = 0x10000;
    int depth = 0;
    WindowWatcher* watcher = nullptr;
};
Table& table() {
    static Table all;
    return all;
}

std::shared_ptr<Window> shared(HWND handle) {
    const auto found = table().windows.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == table().windows.end() ? nullptr : found->second;
}

std::map<std::wstring, WindowClass, LessNoCase>& classes() {
    static std::map<std::wstring, WindowClass, LessNoCase> all = [] {
        std::map<std::wstring, WindowClass, LessNoCase> standard;
        const auto add = [&](const wchar_t* name, std::unique_ptr<Control> (*make)(const Window&)) {
            standard.emplace(name, WindowClass{name, make});
        };
        add(L"Static", makeStatic);
        add(L"Button", makeButton);
        add(L"Edit", makeEdit);
        add(L"ComboBox", makeCombo);
        add(L"ListBox", makeList);
        add(L"msctls_trackbar32", makeSlider);
        add(L"#32770", makeDialogControl);
        return standard;
    }();
    return all;
}

Window& addWindow() {
    auto window = std::make_shared<Window>();
    const std::uintptr_t number = table().next;
    table().next += 4;
    window->handle = reinterpret_cast<HWND>(number);
    return *table().windows.emplace(number, std::move(window)).first->second;
}

LRESULT copyText(const Window& window, WPARAM size, LPARAM buffer) {
    if (size == 0 || !buffer) return 0;
    const std::size_t length = std::min<std::size_t>(window.text.size(), size - 1);
    auto* out = reinterpret_cast<wchar_t*>(buffer);
    window.text.copy(out, length);
    out[length] = L'\0';
    return LRESULT(length);
}

} // namespace

Window::Window() = default;
Window::~Window() = default;

bool Window::hasClass(std::wstring_view name) const { return equalNoCase(className, name); }
Window* Window::child(UINT wanted) const {
    for (Window* each : children)
        if (each->id == wanted) return each;
    return nullptr;
}
Window& Window::root() {
    Window* top = this;
    while (top->parent) top = top->parent;
    return *top;
}
UINT Window::type() const {
    if (hasClass(L"Button")) return style & BS_TYPEMASK;
    if (hasClass(L"Static")) return style & SS_TYPEMASK;
    return 0;
}
int Window::dotsPerInch() const {
    const Window* top = this;
    while (top->parent) top = top->parent;
    return monitorAt(top->rect).dotsPerInch;
}

Window* windowOf(HWND handle) { return shared(handle).get(); }
std::vector<HWND> topWindows() {
    std::vector<HWND> tops;
    for (const auto& [number, window] : table().windows)
        if (!window->parent) tops.push_back(window->handle);
    return tops;
}

const WindowClass* windowClass(std::wstring_view name) {
    const auto found = classes().find(name);
    return found == classes().end() ? nullptr : &found->second;
}

void setWindowWatcher(WindowWatcher* watcher) { table().watcher = watcher; }
void tellWatcher(const Window& window, WindowWatcher::Change change) {
    if (table().watcher) table().watcher->changed(window.handle, change);
}
void setPointMapper(HWND handle, PointMapper mapper) {
    if (Window* window = windowOf(handle)) window->mapper = std::move(mapper);
}

LRESULT send(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<Window> kept = shared(window.handle); // it may go while it answers
    if (!kept || table().depth >= kDeepest) return 0;
    ++table().depth;
    struct Leave {
        ~Leave() { --table().depth; }
    } leave;
    if (window.wrapper) return window.wrapper->WindowProc(message, wParam, lParam);
    return sendToClass(window, message, wParam, lParam);
}
LRESULT sendToClass(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<Window> kept = shared(window.handle);
    if (!kept) return 0;
    if (window.procedure) return window.procedure(window.handle, message, wParam, lParam);
    return window.control ? window.control->handle(window, message, wParam, lParam) : 0;
}
void notifyParent(Window& window, UINT code) {
    if (!window.parent) return;
    send(*window.parent, WM_COMMAND, MAKEWPARAM(window.id, code), reinterpret_cast<LPARAM>(window.handle));
}

void setTextQuietly(Window& window, std::wstring_view text) {
    window.text = text.substr(0, kLongestText);
    invalidate(window);
    tellWatcher(window, WindowWatcher::Change::text);
}

LRESULT Control::handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETTEXT: {
        const auto* text = reinterpret_cast<const wchar_t*>(lParam);
        setTextQuietly(window, text ? text : L"");
        return TRUE;
    }
    case WM_GETTEXT: return copyText(window, wParam, lParam);
    case WM_GETTEXTLENGTH: return LRESULT(window.text.size());
    case WM_GETFONT: return reinterpret_cast<LRESULT>(window.font);
    case WM_SETFONT:
        window.font = reinterpret_cast<HFONT>(wParam);
        invalidate(window);
        tellWatcher(window, WindowWatcher::Change::look);
        return 0;
    case WM_SETREDRAW: window.drawing = wParam != 0; return 0;
    case WM_ERASEBKGND: {
        const WindowClass* kind = windowClass(window.className);
        if (!kind || !kind->background) return 0;
        return FillRect(reinterpret_cast<HDC>(wParam), window.client(), kind->background);
    }
    case WM_NCHITTEST: return HTCLIENT;
    case WM_CLOSE: DestroyWindow(window.handle); return 0;
    case WM_SETCURSOR: return FALSE;
    default: return 0;
    }
}

HWND makeWindow(const CREATESTRUCTW& how, UINT id, CWnd* wrapper) {
    const WindowClass* kind = how.lpszClass ? windowClass(how.lpszClass) : nullptr;
    const auto parent = shared(how.hwndParent);
    if (!kind || ((how.style & LONG(WS_CHILD)) && !parent)) return nullptr;
    Window& window = addWindow();
    window.className = kind->name;
    window.text = how.lpszName ? how.lpszName : L"";
    window.id = id;
    window.style = DWORD(how.style), window.exStyle = how.dwExStyle;
    window.rect = CRect(CPoint(how.x, how.y), CSize(std::max(how.cx, 0), std::max(how.cy, 0)));
    window.procedure = kind->procedure;
    window.control = kind->makeControl ? kind->makeControl(window) : std::make_unique<Control>();
    if (window.style & WS_CHILD) {
        window.parent = parent.get();
        parent->children.push_back(&window);
    } else {
        window.owner = how.hwndParent;
    }
    const HWND handle = window.handle;
    if (wrapper) window.wrapper = wrapper, wrapper->m_hWnd = handle;
    if (send(window, WM_CREATE, 0, reinterpret_cast<LPARAM>(&how)) == -1) return destroy(handle), nullptr;
    if (!windowOf(handle)) return nullptr;
    tellWatcher(window, WindowWatcher::Change::made);
    send(window, WM_SIZE, 0, MAKELPARAM(window.client().Width(), window.client().Height()));
    return windowOf(handle) ? handle : nullptr;
}

void destroy(HWND handle) {
    const auto window = shared(handle);
    if (!window) return;
    if (IsChild(handle, GetFocus()) || GetFocus() == handle) SetFocus(nullptr);
    if (GetCapture() == handle) ReleaseCapture();
    send(*window, WM_DESTROY);
    while (!window->children.empty()) {
        const std::size_t before = window->children.size();
        destroy(window->children.back()->handle);
        if (window->children.size() == before) window->children.pop_back();
    }
    if (!windowOf(handle)) return; // a handler was quicker
    send(*window, WM_NCDESTROY);
    tellWatcher(*window, WindowWatcher::Change::gone);
    forgetWindow(handle);
    if (window->parent) std::erase(window->parent->children, window.get());
    table().windows.erase(reinterpret_cast<std::uintptr_t>(handle));
    if (CWnd* wrapper = std::exchange(window->wrapper, nullptr)) finishWrapper(*wrapper);
    if (window->temporary) window->temporary->m_hWnd = nullptr;
}

} // namespace host

using namespace host;

ATOM RegisterClassW(const WNDCLASSW* wanted) {
    if (!wanted || !wanted->lpszClassName || windowClass(wanted->lpszClassName)) return 0;
    const std::wstring name = wanted->lpszClassName;
    classes().emplace(name, WindowClass{name, nullptr, wanted->lpfnWndProc, wanted->hbrBackground});
    return ATOM(classes().size() + 0xC000);
}
BOOL AfxRegisterClass(WNDCLASSW* wanted) {
    return wanted && (windowClass(wanted->lpszClassName) || RegisterClassW(wanted));
}
LPCTSTR AfxRegisterWndClass(UINT style, HCURSOR, HBRUSH background, HICON) {
    CString name;
    name.Format(L"Afx:%x:%x", style, unsigned(reinterpret_cast<std::uintptr_t>(background)));
    WNDCLASSW made;
    made.style = style, made.hbrBackground = background, made.lpszClassName = name;
    RegisterClassW(&made);
    return windowClass(name.str())->name.c_str();
}
BOOL GetClassInfoW(HINSTANCE, LPCWSTR name, WNDCLASSW* out) {
    const WindowClass* known = windowClass(name ? name : L"");
    if (!known) return FALSE;
    out->lpszClassName = known->name.c_str();
    out->lpfnWndProc = known->procedure ? known->procedure : DefWindowProcW;
    out->hbrBackground = known->background;
    return TRUE;
}

HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y, int width,
                     int height, HWND parent, std::intptr_t id, HINSTANCE, void* parameter) {
    return makeWindow({parameter, parent, height, width, y, x, LONG(style), text, className, exStyle},
                      UINT(id), nullptr);
}
BOOL DestroyWindow(HWND window) {
    if (!windowOf(window)) return FALSE;
    destroy(window);
    return TRUE;
}

LRESULT SendMessageW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* window = windowOf(handle);
    return window ? send(*window, message, wParam, lParam) : 0;
}
LRESULT SendMessageTimeoutW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam, UINT, UINT,
                            DWORD_PTR* result) {
    const LRESULT answer = SendMessageW(handle, message, wParam, lParam);
    if (result) *result = DWORD_PTR(answer);
    return windowOf(handle) != nullptr;
}
LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageW(GetDlgItem(dialog, id), message, wParam, lParam);
}
LRESULT DefWindowProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* window = windowOf(handle);
    return window && window->control ? window->control->handle(*window, message, wParam, lParam) : 0;
}
