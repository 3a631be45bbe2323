// Message maps: rows that lead from a message, or a control's notification, to a member function. The macros
// are those of the field; handlers are given as &Class::Function, with the arguments that the message has.
#pragma once

#include <type_traits>

#include "host/ui/messages.h"
#include "host/ui/rect.h"

class CWnd;
class CDC;
class CScrollBar;

struct AFX_MSGMAP_ENTRY {
    UINT message = 0, code = 0, firstId = 0, lastId = 0;
    LRESULT (*call)(CWnd* window, UINT message, WPARAM wParam, LPARAM lParam) = nullptr;
};
struct AFX_MSGMAP {
    const AFX_MSGMAP* (*base)();
    const AFX_MSGMAP_ENTRY* entries; // the last one has no call
};

inline constexpr UINT WM_CTLCOLOR = 0x0019;     // all of WM_CTLCOLORMSGBOX to WM_CTLCOLORSTATIC
inline constexpr UINT WM_REFLECT_BASE = 0xBC00; // a notification on its way back to the control
inline constexpr UINT CTLCOLOR_EDIT = 1, CTLCOLOR_LISTBOX = 2, CTLCOLOR_BTN = 3, CTLCOLOR_DLG = 4,
                      CTLCOLOR_SCROLLBAR = 5, CTLCOLOR_STATIC = 6;

namespace host::map {

CWnd* wnd(HWND handle);
CDC* dc(HDC handle);

template <class Function> struct Member;
template <class R, class C, class... A> struct Member<R (C::*)(A...)> {
    using Class = C;
    using Result = R;
};

// Calls the handler; void ones give 0.
template <auto F, class... A> LRESULT invoke(CWnd* window, A... arguments) {
    using M = Member<decltype(F)>;
    auto* self = static_cast<typename M::Class*>(window);
    if constexpr (std::is_void_v<typename M::Result>) {
        (self->*F)(arguments...);
        return 0;
    } else if constexpr (std::is_pointer_v<typename M::Result>) {
        return reinterpret_cast<LRESULT>((self->*F)(arguments...));
    } else {
        return static_cast<LRESULT>((self->*F)(arguments...));
    }
}

template <auto F> LRESULT none(CWnd* w, UINT, WPARAM, LPARAM) { return invoke<F>(w); }
template <auto F> LRESULT raw(CWnd* w, UINT, WPARAM p, LPARAM l) { return invoke<F>(w, p, l); }
template <auto F> LRESULT range(CWnd* w, UINT, WPARAM p, LPARAM) { return invoke<F>(w, UINT(LOWORD(p))); }
template <auto F> LRESULT word(CWnd* w, UINT, WPARAM p, LPARAM) { return invoke<F>(w, UINT(p)); }
template <auto F> LRESULT pointerWord(CWnd* w, UINT, WPARAM p, LPARAM) { return invoke<F>(w, UINT_PTR(p)); }
template <auto F> LRESULT flag(CWnd* w, UINT, WPARAM p, LPARAM) { return invoke<F>(w, BOOL(p)); }
template <auto F> LRESULT flagWord(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, BOOL(p), UINT(l));
}
template <auto F> LRESULT mouse(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, UINT(p), CPoint(l));
}
template <auto F> LRESULT wheel(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, UINT(LOWORD(p)), short(HIWORD(p)), CPoint(l));
}
template <auto F> LRESULT key(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, UINT(p), UINT(LOWORD(l)), UINT(HIWORD(l)));
}
template <auto F> LRESULT size(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, UINT(p), int(LOWORD(l)), int(HIWORD(l)));
}
template <auto F> LRESULT move(CWnd* w, UINT, WPARAM, LPARAM l) {
    return invoke<F>(w, GET_X_LPARAM(l), GET_Y_LPARAM(l));
}
template <auto F> LRESULT scroll(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, UINT(LOWORD(p)), UINT(HIWORD(p)),
                     reinterpret_cast<CScrollBar*>(wnd(reinterpret_cast<HWND>(l))));
}
template <auto F> LRESULT window(CWnd* w, UINT, WPARAM p, LPARAM) {
    return invoke<F>(w, wnd(reinterpret_cast<HWND>(p)));
}
template <auto F> LRESULT otherWindow(CWnd* w, UINT, WPARAM, LPARAM l) {
    return invoke<F>(w, wnd(reinterpret_cast<HWND>(l)));
}
template <auto F> LRESULT erase(CWnd* w, UINT, WPARAM p, LPARAM) {
    return invoke<F>(w, dc(reinterpret_cast<HDC>(p)));
}
template <auto F> LRESULT color(CWnd* w, UINT message, WPARAM p, LPARAM l) {
    return invoke<F>(w, dc(reinterpret_cast<HDC>(p)), wnd(reinterpret_cast<HWND>(l)), message - 0x0132);
}
template <auto F> LRESULT reflectedColor(CWnd* w, UINT message, WPARAM p, LPARAM) {
    return invoke<F>(w, dc(reinterpret_cast<HDC>(p)), message - 0x0132);
}
template <auto F> LRESULT cursor(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, wnd(reinterpret_cast<HWND>(p)), UINT(LOWORD(l)), UINT(HIWORD(l)));
}
template <auto F> LRESULT activate(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, UINT(LOWORD(p)), wnd(reinterpret_cast<HWND>(l)), BOOL(HIWORD(p)));
}
template <auto F> LRESULT context(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, wnd(reinterpret_cast<HWND>(p)), CPoint(l));
}
template <auto F> LRESULT hit(CWnd* w, UINT, WPARAM, LPARAM l) { return invoke<F>(w, CPoint(l)); }
template <auto F> LRESULT item(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, int(p), reinterpret_cast<LPDRAWITEMSTRUCT>(l)), 1;
}
template <auto F> LRESULT measure(CWnd* w, UINT, WPARAM p, LPARAM l) {
    return invoke<F>(w, int(p), reinterpret_cast<LPMEASUREITEMSTRUCT>(l)), 1;
}
template <auto F> LRESULT create(CWnd* w, UINT, WPARAM, LPARAM l) {
    return invoke<F>(w, reinterpret_cast<LPCREATESTRUCT>(l));
}
template <auto F> LRESULT minMax(CWnd* w, UINT, WPARAM, LPARAM l) {
    return invoke<F>(w, reinterpret_cast<MINMAXINFO*>(l));
}
template <auto F> LRESULT notified(CWnd* w, UINT, WPARAM, LPARAM l) {
    LRESULT result = 0;
    invoke<F>(w, reinterpret_cast<NMHDR*>(l), &result);
    return result;
}

} // namespace host::map

#define afx_msg
#define DECLARE_DYNAMIC(theClass)
#define IMPLEMENT_DYNAMIC(theClass, baseClass)
#define DECLARE_DYNCREATE(theClass)
#define IMPLEMENT_DYNCREATE(theClass, baseClass)
#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static const AFX_MSGMAP* GetThisMessageMap();                                                            \
    const AFX_MSGMAP* GetMessageMap() const override;
#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); }                        \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                                                        \
        using ThisClass [[maybe_unused]] = theClass;                                                         \
        using TheBaseClass = baseClass;                                                                      \
        static const AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                                                                                    \
    {}                                                                                                       \
    }                                                                                                        \
    ;                                                                                                        \
    static const AFX_MSGMAP map = {[] { return TheBaseClass::GetThisMessageMap(); }, entries};               \
    return &map;                                                                                             \
    }

#define HOST_MAP_ROW(message, caller, function) {message, 0, 0, 0, &host::map::caller<function>},
#define HOST_MAP_CONTROL(code, first, last, caller, function)                                                \
    {WM_COMMAND, code, UINT(first), UINT(last), &host::map::caller<function>},

#define ON_COMMAND(id, function) HOST_MAP_CONTROL(0, id, id, none, function)
#define ON_COMMAND_RANGE(first, last, function) HOST_MAP_CONTROL(0, first, last, range, function)
#define ON_CONTROL(code, id, function) HOST_MAP_CONTROL(code, id, id, none, function)
#define ON_CONTROL_RANGE(code, first, last, function) HOST_MAP_CONTROL(code, first, last, range, function)
#define ON_BN_CLICKED(id, function) ON_CONTROL(BN_CLICKED, id, function)
#define ON_BN_DOUBLECLICKED(id, function) ON_CONTROL(BN_DOUBLECLICKED, id, function)
#define ON_STN_CLICKED(id, function) ON_CONTROL(STN_CLICKED, id, function)
#define ON_STN_DBLCLK(id, function) ON_CONTROL(STN_DBLCLK, id, function)
#define ON_CBN_SELCHANGE(id, function) ON_CONTROL(CBN_SELCHANGE, id, function)
#define ON_CBN_SELENDOK(id, function) ON_CONTROL(CBN_SELENDOK, id, function)
#define ON_CBN_EDITCHANGE(id, function) ON_CONTROL(CBN_EDITCHANGE, id, function)
#define ON_CBN_KILLFOCUS(id, function) ON_CONTROL(CBN_KILLFOCUS, id, function)
#define ON_CBN_DROPDOWN(id, function) ON_CONTROL(CBN_DROPDOWN, id, function)
#define ON_LBN_SELCHANGE(id, function) ON_CONTROL(LBN_SELCHANGE, id, function)
#define ON_LBN_DBLCLK(id, function) ON_CONTROL(LBN_DBLCLK, id, function)
#define ON_EN_CHANGE(id, function) ON_CONTROL(EN_CHANGE, id, function)
#define ON_EN_UPDATE(id, function) ON_CONTROL(EN_UPDATE, id, function)
#define ON_EN_SETFOCUS(id, function) ON_CONTROL(EN_SETFOCUS, id, function)
#define ON_EN_KILLFOCUS(id, function) ON_CONTROL(EN_KILLFOCUS, id, function)
#define ON_CONTROL_REFLECT(notification, function)                                                           \
    {WM_COMMAND + WM_REFLECT_BASE, notification, 0, 0, &host::map::none<function>},
#define ON_WM_CTLCOLOR_REFLECT()                                                                             \
    HOST_MAP_ROW(WM_CTLCOLOR + WM_REFLECT_BASE, reflectedColor, &ThisClass::CtlColor)
#define ON_NOTIFY(notification, id, function)                                                                \
    {WM_NOTIFY, notification, UINT(id), UINT(id), &host::map::notified<function>},
#define ON_MESSAGE(message, function) HOST_MAP_ROW(message, raw, function)
#define ON_REGISTERED_MESSAGE(message, function) HOST_MAP_ROW(message, raw, function)

#define ON_WM_ACTIVATE() HOST_MAP_ROW(WM_ACTIVATE, activate, &ThisClass::OnActivate)
#define ON_WM_CAPTURECHANGED() HOST_MAP_ROW(WM_CAPTURECHANGED, otherWindow, &ThisClass::OnCaptureChanged)
#define ON_WM_CHAR() HOST_MAP_ROW(WM_CHAR, key, &ThisClass::OnChar)
#define ON_WM_CLOSE() HOST_MAP_ROW(WM_CLOSE, none, &ThisClass::OnClose)
#define ON_WM_CONTEXTMENU() HOST_MAP_ROW(WM_CONTEXTMENU, context, &ThisClass::OnContextMenu)
#define ON_WM_CREATE() HOST_MAP_ROW(WM_CREATE, create, &ThisClass::OnCreate)
#define ON_WM_CTLCOLOR() HOST_MAP_ROW(WM_CTLCOLOR, color, &ThisClass::OnCtlColor)
#define ON_WM_DESTROY() HOST_MAP_ROW(WM_DESTROY, none, &ThisClass::OnDestroy)
#define ON_WM_DRAWITEM() HOST_MAP_ROW(WM_DRAWITEM, item, &ThisClass::OnDrawItem)
#define ON_WM_ENABLE() HOST_MAP_ROW(WM_ENABLE, flag, &ThisClass::OnEnable)
#define ON_WM_ERASEBKGND() HOST_MAP_ROW(WM_ERASEBKGND, erase, &ThisClass::OnEraseBkgnd)
#define ON_WM_GETDLGCODE() HOST_MAP_ROW(WM_GETDLGCODE, none, &ThisClass::OnGetDlgCode)
#define ON_WM_GETMINMAXINFO() HOST_MAP_ROW(WM_GETMINMAXINFO, minMax, &ThisClass::OnGetMinMaxInfo)
#define ON_WM_HSCROLL() HOST_MAP_ROW(WM_HSCROLL, scroll, &ThisClass::OnHScroll)
#define ON_WM_VSCROLL() HOST_MAP_ROW(WM_VSCROLL, scroll, &ThisClass::OnVScroll)
#define ON_WM_KEYDOWN() HOST_MAP_ROW(WM_KEYDOWN, key, &ThisClass::OnKeyDown)
#define ON_WM_KEYUP() HOST_MAP_ROW(WM_KEYUP, key, &ThisClass::OnKeyUp)
#define ON_WM_KILLFOCUS() HOST_MAP_ROW(WM_KILLFOCUS, window, &ThisClass::OnKillFocus)
#define ON_WM_SETFOCUS() HOST_MAP_ROW(WM_SETFOCUS, window, &ThisClass::OnSetFocus)
#define ON_WM_LBUTTONDOWN() HOST_MAP_ROW(WM_LBUTTONDOWN, mouse, &ThisClass::OnLButtonDown)
#define ON_WM_LBUTTONUP() HOST_MAP_ROW(WM_LBUTTONUP, mouse, &ThisClass::OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() HOST_MAP_ROW(WM_LBUTTONDBLCLK, mouse, &ThisClass::OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() HOST_MAP_ROW(WM_RBUTTONDOWN, mouse, &ThisClass::OnRButtonDown)
#define ON_WM_RBUTTONUP() HOST_MAP_ROW(WM_RBUTTONUP, mouse, &ThisClass::OnRButtonUp)
#define ON_WM_MOUSEMOVE() HOST_MAP_ROW(WM_MOUSEMOVE, mouse, &ThisClass::OnMouseMove)
#define ON_WM_MOUSEWHEEL() HOST_MAP_ROW(WM_MOUSEWHEEL, wheel, &ThisClass::OnMouseWheel)
#define ON_WM_MEASUREITEM() HOST_MAP_ROW(WM_MEASUREITEM, measure, &ThisClass::OnMeasureItem)
#define ON_WM_MOVE() HOST_MAP_ROW(WM_MOVE, move, &ThisClass::OnMove)
#define ON_WM_NCDESTROY() HOST_MAP_ROW(WM_NCDESTROY, none, &ThisClass::OnNcDestroy)
#define ON_WM_NCHITTEST() HOST_MAP_ROW(WM_NCHITTEST, hit, &ThisClass::OnNcHitTest)
#define ON_WM_PAINT() HOST_MAP_ROW(WM_PAINT, none, &ThisClass::OnPaint)
#define ON_WM_SETCURSOR() HOST_MAP_ROW(WM_SETCURSOR, cursor, &ThisClass::OnSetCursor)
#define ON_WM_SHOWWINDOW() HOST_MAP_ROW(WM_SHOWWINDOW, flagWord, &ThisClass::OnShowWindow)
#define ON_WM_SIZE() HOST_MAP_ROW(WM_SIZE, size, &ThisClass::OnSize)
#define ON_WM_SYSCOMMAND() HOST_MAP_ROW(WM_SYSCOMMAND, raw, &ThisClass::OnSysCommand)
#define ON_WM_TIMER() HOST_MAP_ROW(WM_TIMER, pointerWord, &ThisClass::OnTimer)
