// Windows as a model: what a window is, how messages reach it, and the window system's plain functions on
// handles. What a class of windows does by itself is its Control; the field's wrapper class is CWnd (wnd.h).
//
// Functions that take a handle do nothing and return 0, null or FALSE when it is stale.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/ui/gdi.h"
#include "host/ui/template.h"

class CWnd;

namespace host {

class Window;

// What a class of windows does when neither a CWnd nor a window procedure has taken a message.
class Control {
public:
    virtual ~Control() = default;
    virtual LRESULT handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam);
};

// From a control's own units, such as position and percent, to pixels of its client area.
using PointMapper = std::function<CPoint(double x, double y)>;

class Window {
public:
    Window();
    ~Window();
    HWND handle = nullptr;
    std::wstring className, text;
    UINT id = 0;
    DWORD style = 0, exStyle = 0;
    CRect rect; // child windows: in the parent's client area; others: on the screen
    HFONT font = nullptr;
    Window* parent = nullptr;      // of a child
    HWND owner = nullptr;          // of a dialog
    std::vector<Window*> children; // in the order of their making, which is that of tabbing and painting
    CWnd* wrapper = nullptr;       // that was attached by Create, Attach or subclassing
    WNDPROC procedure = nullptr;
    LONG_PTR userData = 0;
    std::unique_ptr<Control> control;
    std::unique_ptr<CWnd> temporary; // stands in while there is no wrapper
    PointMapper mapper;
    std::shared_ptr<Recording> overlay; // drawn outside WM_PAINT since the last invalidation
    bool dirty = true;                  // to be painted
    bool drawing = true;                // WM_SETREDRAW
    // Dialogs.
    bool isDialog = false, ended = false, hiddenForPick = false;
    INT_PTR result = 0;
    UINT defaultId = 1;

    bool visible() const { return (style & WS_VISIBLE) != 0; }
    bool enabled() const { return (style & WS_DISABLED) == 0; }
    bool hasClass(std::wstring_view name) const; // without regard to case
    Window* child(UINT id) const;                // null when there is none
    Window& root();
    CRect client() const; // from (0, 0)
    CPoint clientOnScreen() const;
    int dotsPerInch() const;
    UINT type() const; // a button's or static's kind, out of its style
};

Window* windowOf(HWND handle); // null when it is none or no longer
std::vector<HWND> topWindows();

// To the window's wrapper, procedure or control; the window may be gone afterwards.
LRESULT send(Window& window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
// Past the wrapper: what CWnd::DefWindowProc calls.
LRESULT sendToClass(Window& window, UINT message, WPARAM wParam, LPARAM lParam);
// Tells the parent by WM_COMMAND.
void notifyParent(Window& window, UINT code);

// Makes a dialog and its controls, hidden, and attaches the wrapper; null with the reason when a control's
// class isn't registered. WM_INITDIALOG is not sent.
struct MadeDialog {
    HWND handle = nullptr;
    std::string error;
};
MadeDialog makeDialog(const DialogTemplate& dialog, HWND owner, CWnd* wrapper);
// What Create of a CWnd does.
HWND makeWindow(const CREATESTRUCTW& how, UINT id, CWnd* wrapper);

void setPointMapper(HWND window, PointMapper mapper);

// The window under a point of the dialog's client area that takes the mouse there: the last drawn one that is
// visible, enabled and doesn't answer WM_NCHITTEST with HTTRANSPARENT.
HWND mouseTarget(HWND dialog, POINT point);
// A click of a user's: the mouse goes down and up there, and the focus follows. Client coordinates.
void click(HWND window, POINT point);
// Presses at the first point, moves to each of the others and lets go at the last.
void drag(HWND window, const std::vector<CPoint>& points);

// Where the mouse is on the screen; front ends tell it.
void setMousePosition(POINT point);

// Who shows windows hears what became of them; one for the process, null for none.
class WindowWatcher {
public:
    enum class Change { made, gone, text, place, look, state, items };
    virtual ~WindowWatcher() = default;
    virtual void changed(HWND window, Change change) = 0;
};
void setWindowWatcher(WindowWatcher* watcher);
void tellWatcher(const Window& window, WindowWatcher::Change change);

// Painting. The recording of one window's client area, without its children; of a whole dialog with its
// frame, title and children.
std::shared_ptr<Recording> paintWindow(HWND window);
std::shared_ptr<Recording> paintDialog(HWND dialog);
// One item of an owner-drawn combo or list box, as its parent draws it into a place of that size.
std::shared_ptr<Recording> paintItem(HWND list, int index, int width, int height, bool selected);
// The recording that a CPaintDC of the window writes; null when it isn't being painted.
std::shared_ptr<Recording> paintTarget(const Window& window);

} // namespace host

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT SendMessageTimeoutW(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags,
                            UINT milliseconds, DWORD_PTR* result);
LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
ATOM RegisterClassW(const WNDCLASSW* windowClass); // 0 when the name is taken
// A class name of one's own, always the same for the same arguments.
LPCTSTR AfxRegisterWndClass(UINT style, HCURSOR cursor = nullptr, HBRUSH background = nullptr,
                            HICON icon = nullptr);
BOOL AfxRegisterClass(WNDCLASSW* windowClass); // TRUE also when it was registered before
BOOL GetClassInfoW(HINSTANCE module, LPCWSTR name, WNDCLASSW* out);
HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x, int y, int width,
                     int height, HWND parent, std::intptr_t id, HINSTANCE module, void* parameter);
BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);
BOOL IsChild(HWND parent, HWND child);
BOOL IsWindowVisible(HWND window); // with all its parents
BOOL IsWindowEnabled(HWND window);
HWND GetParent(HWND window); // or the owner of a dialog
HWND GetAncestor(HWND window, UINT which);
HWND GetWindow(HWND window, UINT which);
HWND GetDlgItem(HWND dialog, int id);
int GetDlgCtrlID(HWND window);
BOOL EnumChildWindows(HWND parent, WNDENUMPROC each, LPARAM parameter);
int GetClassNameW(HWND window, LPWSTR buffer, int size);
int GetWindowTextW(HWND window, LPWSTR buffer, int size);
int GetWindowTextLengthW(HWND window);
BOOL SetWindowTextW(HWND window, LPCWSTR text);
LONG GetWindowLongW(HWND window, int index);
LONG SetWindowLongW(HWND window, int index, LONG value);
LONG_PTR GetWindowLongPtrW(HWND window, int index);
LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
BOOL GetWindowRect(HWND window, RECT* rect);
BOOL GetClientRect(HWND window, RECT* rect);
BOOL ScreenToClient(HWND window, POINT* point);
BOOL ClientToScreen(HWND window, POINT* point);
int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count);
int MapWindowPoints(HWND from, HWND to, RECT* rect);
BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL menu, DWORD exStyle);
BOOL ShowWindow(HWND window, int how);       // TRUE when it was visible before
BOOL EnableWindow(HWND window, BOOL enable); // TRUE when it was disabled before
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BOOL UpdateWindow(HWND window);
BOOL RedrawWindow(HWND window, const RECT* rect, HRGN region, UINT flags);
HWND SetFocus(HWND window); // null takes the focus from everyone; the window that had it
HWND GetFocus();
HWND SetCapture(HWND window);
HWND GetCapture();
BOOL ReleaseCapture();
// Whether a key is held: negative when it is, 0 else. Of Shift, Ctrl, Alt, space and Esc alone.
short GetAsyncKeyState(int virtualKey);
BOOL GetCursorPos(POINT* point); // of the mouse, on the screen
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC dc);
BOOL EndDialog(HWND dialog, INT_PTR result);
UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC each);
BOOL KillTimer(HWND window, UINT_PTR id);
