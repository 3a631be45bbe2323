// The standard controls' wrappers: texts and lists through messages.
#include "host/ui/controls.h"

namespace {

LPARAM pointer(const void* what) { return reinterpret_cast<LPARAM>(what); }

BOOL make(CWnd& wrapper, LPCTSTR className, LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent,
          UINT id) {
    return wrapper.Create(className, text, style, rect, parent, id);
}

// Items' texts come into a buffer of the length that was told.
CString itemText(const CWnd& list, UINT lengthMessage, UINT textMessage, int at) {
    const LRESULT length = list.SendMessage(lengthMessage, WPARAM(at));
    if (length < 0) return {};
    std::wstring buffer(std::size_t(length) + 1, L'\0');
    list.SendMessage(textMessage, WPARAM(at), pointer(buffer.data()));
    buffer.pop_back();
    return CString(std::move(buffer));
}

} // namespace

BOOL CStatic::Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return make(*this, L"Static", text, style, rect, parent, id);
}
HBITMAP CStatic::SetBitmap(HBITMAP bitmap) {
    return reinterpret_cast<HBITMAP>(SendMessage(STM_SETIMAGE, IMAGE_BITMAP, pointer(bitmap)));
}
HBITMAP CStatic::GetBitmap() const {
    return reinterpret_cast<HBITMAP>(SendMessage(STM_GETIMAGE, IMAGE_BITMAP));
}

BOOL CButton::Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return make(*this, L"Button", text, style, rect, parent, id);
}
HBITMAP CButton::SetBitmap(HBITMAP bitmap) {
    return reinterpret_cast<HBITMAP>(SendMessage(BM_SETIMAGE, IMAGE_BITMAP, pointer(bitmap)));
}
HBITMAP CButton::GetBitmap() const {
    return reinterpret_cast<HBITMAP>(SendMessage(BM_GETIMAGE, IMAGE_BITMAP));
}

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return make(*this, L"Edit", nullptr, style, rect, parent, id);
}
void CEdit::GetSel(int& from, int& to) const {
    DWORD a = 0, b = 0;
    SendMessage(EM_GETSEL, WPARAM(&a), pointer(&b));
    from = int(a), to = int(b);
}
void CEdit::ReplaceSel(LPCTSTR text) { SendMessage(EM_REPLACESEL, 0, pointer(text)); }

BOOL CComboBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return make(*this, L"ComboBox", nullptr, style, rect, parent, id);
}
int CComboBox::AddString(LPCTSTR text) { return int(SendMessage(CB_ADDSTRING, 0, pointer(text))); }
int CComboBox::InsertString(int at, LPCTSTR text) {
    return int(SendMessage(CB_INSERTSTRING, WPARAM(at), pointer(text)));
}
int CComboBox::GetLBText(int at, LPWSTR buffer) const {
    return int(SendMessage(CB_GETLBTEXT, WPARAM(at), pointer(buffer)));
}
void CComboBox::GetLBText(int at, CString& text) const {
    text = itemText(*this, CB_GETLBTEXTLEN, CB_GETLBTEXT, at);
}
int CComboBox::FindString(int after, LPCTSTR beginning) const {
    return int(SendMessage(CB_FINDSTRING, WPARAM(after), pointer(beginning)));
}
int CComboBox::FindStringExact(int after, LPCTSTR text) const {
    return int(SendMessage(CB_FINDSTRINGEXACT, WPARAM(after), pointer(text)));
}
int CComboBox::SelectString(int after, LPCTSTR beginning) {
    return int(SendMessage(CB_SELECTSTRING, WPARAM(after), pointer(beginning)));
}

BOOL CListBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return make(*this, L"ListBox", nullptr, style, rect, parent, id);
}
int CListBox::AddString(LPCTSTR text) { return int(SendMessage(LB_ADDSTRING, 0, pointer(text))); }
int CListBox::InsertString(int at, LPCTSTR text) {
    return int(SendMessage(LB_INSERTSTRING, WPARAM(at), pointer(text)));
}
int CListBox::GetSelItems(int most, int* items) const {
    return int(SendMessage(LB_GETSELITEMS, WPARAM(most), pointer(items)));
}
int CListBox::GetText(int at, LPWSTR buffer) const {
    return int(SendMessage(LB_GETTEXT, WPARAM(at), pointer(buffer)));
}
void CListBox::GetText(int at, CString& text) const { text = itemText(*this, LB_GETTEXTLEN, LB_GETTEXT, at); }
int CListBox::FindString(int after, LPCTSTR beginning) const {
    return int(SendMessage(LB_FINDSTRING, WPARAM(after), pointer(beginning)));
}
int CListBox::FindStringExact(int after, LPCTSTR text) const {
    return int(SendMessage(LB_FINDSTRINGEXACT, WPARAM(after), pointer(text)));
}
int CListBox::SelectString(int after, LPCTSTR beginning) {
    return int(SendMessage(LB_SELECTSTRING, WPARAM(after), pointer(beginning)));
}

BOOL CSliderCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return make(*this, L"msctls_trackbar32", nullptr, style, rect, parent, id);
}
