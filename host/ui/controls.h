// The field's wrappers of the standard controls. They only send messages; what the controls do stands in
// the control_*.cpp files.
#pragma once

#include "host/ui/wnd.h"

class CStatic : public CWnd {
public:
    BOOL Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF);
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;
};

class CButton : public CWnd {
public:
    BOOL Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int GetCheck() const { return int(SendMessage(BM_GETCHECK)); }
    void SetCheck(int check) { SendMessage(BM_SETCHECK, WPARAM(check)); }
    UINT GetState() const { return UINT(SendMessage(BM_GETSTATE)); }
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;
    UINT GetButtonStyle() const { return GetStyle() & 0xFF; }
};

class CEdit : public CWnd {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    void SetSel(int from, int to) { SendMessage(EM_SETSEL, WPARAM(from), to); }
    void GetSel(int& from, int& to) const;
    void ReplaceSel(LPCTSTR text);
    void SetLimitText(UINT most) { SendMessage(EM_SETLIMITTEXT, most); }
    void LimitText(int most = 0) { SendMessage(EM_SETLIMITTEXT, WPARAM(most)); }
    BOOL SetReadOnly(BOOL readOnly = TRUE) { return BOOL(SendMessage(EM_SETREADONLY, WPARAM(readOnly))); }
    BOOL GetModify() const { return BOOL(SendMessage(EM_GETMODIFY)); }
    void SetModify(BOOL modified = TRUE) { SendMessage(EM_SETMODIFY, WPARAM(modified)); }
    int GetLineCount() const { return int(SendMessage(EM_GETLINECOUNT)); }
};

class CComboBox : public CWnd {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int AddString(LPCTSTR text);
    int InsertString(int at, LPCTSTR text);
    int DeleteString(UINT at) { return int(SendMessage(CB_DELETESTRING, at)); }
    void ResetContent() { SendMessage(CB_RESETCONTENT); }
    int GetCount() const { return int(SendMessage(CB_GETCOUNT)); }
    int GetCurSel() const { return int(SendMessage(CB_GETCURSEL)); } // CB_ERR: none
    int SetCurSel(int at) { return int(SendMessage(CB_SETCURSEL, WPARAM(at))); }
    int GetLBText(int at, LPWSTR buffer) const;
    void GetLBText(int at, CString& text) const;
    int GetLBTextLen(int at) const { return int(SendMessage(CB_GETLBTEXTLEN, WPARAM(at))); }
    DWORD_PTR GetItemData(int at) const { return DWORD_PTR(SendMessage(CB_GETITEMDATA, WPARAM(at))); }
    int SetItemData(int at, DWORD_PTR data) {
        return int(SendMessage(CB_SETITEMDATA, WPARAM(at), LPARAM(data)));
    }
    int FindString(int after, LPCTSTR beginning) const;
    int FindStringExact(int after, LPCTSTR text) const;
    int SelectString(int after, LPCTSTR beginning);
    int SetItemHeight(int at, UINT height) { return int(SendMessage(CB_SETITEMHEIGHT, WPARAM(at), height)); }
    int GetItemHeight(int at) const { return int(SendMessage(CB_GETITEMHEIGHT, WPARAM(at))); }
    void SetDroppedWidth(UINT width) { SendMessage(CB_SETDROPPEDWIDTH, width); }
    void LimitText(int most) { SendMessage(CB_LIMITTEXT, WPARAM(most)); }
};

class CListBox : public CWnd {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int AddString(LPCTSTR text);
    int InsertString(int at, LPCTSTR text);
    int DeleteString(UINT at) { return int(SendMessage(LB_DELETESTRING, at)); }
    void ResetContent() { SendMessage(LB_RESETCONTENT); }
    int GetCount() const { return int(SendMessage(LB_GETCOUNT)); }
    int GetCurSel() const { return int(SendMessage(LB_GETCURSEL)); }
    int SetCurSel(int at) { return int(SendMessage(LB_SETCURSEL, WPARAM(at))); }
    int GetSel(int at) const { return int(SendMessage(LB_GETSEL, WPARAM(at))); }
    int SetSel(int at, BOOL select = TRUE) { return int(SendMessage(LB_SETSEL, WPARAM(select), at)); }
    int GetSelCount() const { return int(SendMessage(LB_GETSELCOUNT)); }
    int GetSelItems(int most, int* items) const;
    int GetText(int at, LPWSTR buffer) const;
    void GetText(int at, CString& text) const;
    int GetTextLen(int at) const { return int(SendMessage(LB_GETTEXTLEN, WPARAM(at))); }
    DWORD_PTR GetItemData(int at) const { return DWORD_PTR(SendMessage(LB_GETITEMDATA, WPARAM(at))); }
    int SetItemData(int at, DWORD_PTR data) {
        return int(SendMessage(LB_SETITEMDATA, WPARAM(at), LPARAM(data)));
    }
    int FindString(int after, LPCTSTR beginning) const;
    int FindStringExact(int after, LPCTSTR text) const;
    int SelectString(int after, LPCTSTR beginning);
    int GetTopIndex() const { return int(SendMessage(LB_GETTOPINDEX)); }
    int SetTopIndex(int at) { return int(SendMessage(LB_SETTOPINDEX, WPARAM(at))); }
    int SetItemHeight(int at, UINT height) { return int(SendMessage(LB_SETITEMHEIGHT, WPARAM(at), height)); }
};

// The sender of WM_HSCROLL as handlers know it; sliders come as one.
class CScrollBar : public CWnd {};

class CSliderCtrl : public CScrollBar {
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int GetPos() const { return int(SendMessage(TBM_GETPOS)); }
    void SetPos(int position) { SendMessage(TBM_SETPOS, TRUE, position); } // brought into the range
    int GetRangeMin() const { return int(SendMessage(TBM_GETRANGEMIN)); }
    int GetRangeMax() const { return int(SendMessage(TBM_GETRANGEMAX)); }
    void GetRange(int& low, int& high) const { low = GetRangeMin(), high = GetRangeMax(); }
    void SetRangeMin(int low, BOOL redraw = FALSE) { SendMessage(TBM_SETRANGEMIN, WPARAM(redraw), low); }
    void SetRangeMax(int high, BOOL redraw = FALSE) { SendMessage(TBM_SETRANGEMAX, WPARAM(redraw), high); }
    void SetRange(int low, int high, BOOL redraw = FALSE) {
        SetRangeMin(low, redraw), SetRangeMax(high, redraw);
    }
    int SetPageSize(int size) { return int(SendMessage(TBM_SETPAGESIZE, 0, size)); }
    int SetLineSize(int size) { return int(SendMessage(TBM_SETLINESIZE, 0, size)); }
    void SetTicFreq(int every) { SendMessage(TBM_SETTICFREQ, WPARAM(every)); }
};
