// CWnd: the field's wrapper of a window, with its message map. A wrapper is attached to its window by Create,
// by a dialog's template, or by subclassing; windows without one get a temporary one of the fitting control
// class when somebody asks (FromHandle, GetDlgItem), which lives as long as the window.
#pragma once

#include "host/ui/dc.h"
#include "host/ui/msgmap.h"
#include "host/ui/window.h"

class CDataExchange;

namespace host {
void finishWrapper(CWnd& wrapper); // its window is gone
}

class CCmdTarget {
public:
    virtual ~CCmdTarget() = default;

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};

class CWnd : public CCmdTarget {
public:
    CWnd() = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    ~CWnd() override; // destroys its window
    HWND m_hWnd = nullptr;
    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }
    static CWnd* FromHandle(HWND window); // null for a stale handle
    static CWnd* FromHandlePermanent(HWND window);

    BOOL Create(LPCTSTR className, LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                void* context = nullptr);
    BOOL CreateEx(DWORD exStyle, LPCTSTR className, LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent,
                  UINT id, void* parameter = nullptr);
    BOOL SubclassWindow(HWND window);
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    HWND UnsubclassWindow();
    BOOL Attach(HWND window);
    HWND Detach();
    virtual BOOL DestroyWindow();
    virtual void PreSubclassWindow() {}

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    void SetWindowText(LPCTSTR text);
    void GetWindowText(CString& text) const;
    int GetWindowText(LPWSTR buffer, int size) const { return GetWindowTextW(m_hWnd, buffer, size); }
    int GetWindowTextLength() const { return GetWindowTextLengthW(m_hWnd); }
    DWORD GetStyle() const { return DWORD(GetWindowLongW(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return DWORD(GetWindowLongW(m_hWnd, GWL_EXSTYLE)); }
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
    BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0);
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    void SetFont(CFont* font, BOOL redraw = TRUE);
    CFont* GetFont() const; // lives as long as the window

    void GetWindowRect(LPRECT rect) const { ::GetWindowRect(m_hWnd, rect); }
    void GetClientRect(LPRECT rect) const { ::GetClientRect(m_hWnd, rect); }
    void ScreenToClient(LPRECT rect) const { MapWindowPoints(nullptr, m_hWnd, rect); }
    void ScreenToClient(POINT* point) const { ::ScreenToClient(m_hWnd, point); }
    void ClientToScreen(LPRECT rect) const { MapWindowPoints(m_hWnd, nullptr, rect); }
    void ClientToScreen(POINT* point) const { ::ClientToScreen(m_hWnd, point); }
    void MoveWindow(LPCRECT rect, BOOL repaint = TRUE);
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
    BOOL SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags);
    // Into the middle of the other, or of the monitor it stands on.
    void CenterWindow(CWnd* other = nullptr);

    BOOL ShowWindow(int how) { return ::ShowWindow(m_hWnd, how); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void InvalidateRect(LPCRECT rect, BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, rect, erase); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    BOOL RedrawWindow(LPCRECT rect = nullptr, CRgn* region = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW);
    void SetRedraw(BOOL redraw = TRUE) { SendMessage(WM_SETREDRAW, WPARAM(redraw)); }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
    static CWnd* GetCapture() { return FromHandle(::GetCapture()); }
    CDC* GetDC();
    int ReleaseDC(CDC* dc);
    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds, TIMERPROC each) {
        return ::SetTimer(m_hWnd, id, milliseconds, each);
    }
    BOOL KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }

    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    CWnd* GetWindow(UINT which) const { return FromHandle(::GetWindow(m_hWnd, which)); }
    CWnd* GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
    CWnd* GetNextDlgTabItem(CWnd* from, BOOL previous = FALSE) const;

    void SetDlgItemText(int id, LPCTSTR text) { ::SetWindowTextW(::GetDlgItem(m_hWnd, id), text); }
    int GetDlgItemText(int id, CString& text) const;
    int GetDlgItemText(int id, LPWSTR buffer, int size) const;
    void SetDlgItemInt(int id, UINT value, BOOL isSigned = TRUE);
    // 0, with `*good` FALSE, when the text is no whole number.
    UINT GetDlgItemInt(int id, BOOL* good = nullptr, BOOL isSigned = TRUE) const;
    void CheckDlgButton(int id, UINT check);
    void CheckRadioButton(int first, int last, int checked);
    int GetCheckedRadioButton(int first, int last) const; // 0 when none is
    UINT IsDlgButtonChecked(int id) const;
    int MessageBox(LPCTSTR text, LPCTSTR caption = nullptr, UINT style = MB_OK);

    // False, with nothing changed in the members, when a value in the dialog doesn't serve.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);
    virtual void DoDataExchange(CDataExchange*) {}

    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL PreTranslateMessage(MSG*) { return FALSE; }

    // What derived classes' handlers hand on to.
    afx_msg void OnActivate(UINT, CWnd*, BOOL) { Default(); }
    afx_msg void OnCaptureChanged(CWnd*) { Default(); }
    afx_msg void OnChar(UINT, UINT, UINT) { Default(); }
    afx_msg void OnClose() { Default(); }
    afx_msg void OnContextMenu(CWnd*, CPoint) { Default(); }
    afx_msg int OnCreate(LPCREATESTRUCT) { return int(Default()); }
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind);
    afx_msg void OnDestroy() { Default(); }
    afx_msg void OnDrawItem(int id, LPDRAWITEMSTRUCT item);
    afx_msg void OnMeasureItem(int id, LPMEASUREITEMSTRUCT item);
    afx_msg void OnEnable(BOOL) { Default(); }
    afx_msg BOOL OnEraseBkgnd(CDC*) { return BOOL(Default()); }
    afx_msg UINT OnGetDlgCode() { return UINT(Default()); }
    afx_msg void OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
    afx_msg void OnHScroll(UINT, UINT, CScrollBar*) { Default(); }
    afx_msg void OnVScroll(UINT, UINT, CScrollBar*) { Default(); }
    afx_msg void OnKeyDown(UINT, UINT, UINT) { Default(); }
    afx_msg void OnKeyUp(UINT, UINT, UINT) { Default(); }
    afx_msg void OnKillFocus(CWnd*) { Default(); }
    afx_msg void OnSetFocus(CWnd*) { Default(); }
    afx_msg void OnLButtonDown(UINT, CPoint) { Default(); }
    afx_msg void OnLButtonUp(UINT, CPoint) { Default(); }
    afx_msg void OnLButtonDblClk(UINT, CPoint) { Default(); }
    afx_msg void OnRButtonDown(UINT, CPoint) { Default(); }
    afx_msg void OnRButtonUp(UINT, CPoint) { Default(); }
    afx_msg void OnMouseMove(UINT, CPoint) { Default(); }
    afx_msg BOOL OnMouseWheel(UINT, short, CPoint) { return BOOL(Default()); }
    afx_msg void OnMove(int, int) { Default(); }
    afx_msg LRESULT OnNcHitTest(CPoint) { return Default(); }
    afx_msg void OnPaint() { Default(); }
    afx_msg BOOL OnSetCursor(CWnd*, UINT, UINT) { return BOOL(Default()); }
    afx_msg void OnShowWindow(BOOL, UINT) { Default(); }
    afx_msg void OnSize(UINT, int, int) { Default(); }
    afx_msg void OnTimer(UINT_PTR) { Default(); }

    // Owner-drawn controls draw themselves when their parent leaves it to them.
    virtual void DrawItem(LPDRAWITEMSTRUCT) {}
    virtual void MeasureItem(LPMEASUREITEMSTRUCT) {}

protected:
    // Hands the message that is being handled to the window's class.
    LRESULT Default();
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual void PostNcDestroy() {}
    DECLARE_MESSAGE_MAP()

private:
    friend void host::finishWrapper(CWnd& wrapper);
    const AFX_MSGMAP_ENTRY* row(UINT message, UINT code, UINT id) const;
    bool routeCommand(UINT id, UINT code, LPARAM lParam);
    bool reflect(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
};

namespace host {
// A temporary wrapper of the class that fits the window's class.
std::unique_ptr<CWnd> makeTemporary(std::wstring_view className);
} // namespace host
