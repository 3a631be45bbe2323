// CWnd: attaching, message routing through the maps, and the helpers over the plain functions.
#include "host/ui/wnd.h"

#include <algorithm>

#include "host/os/numbers.h"
#include "host/ui/controls.h"
#include "host/ui/dialog.h"
#include "host/ui/monitors.h"
#include "host/ui/runner.h"

using namespace host;

namespace {

std::vector<MSG>& messagesInHand() {
    static std::vector<MSG> stack;
    return stack;
}

bool isColorQuestion(UINT message) { return message >= WM_CTLCOLOREDIT && message <= WM_CTLCOLORSTATIC; }

} // namespace

namespace host {

CWnd* map::wnd(HWND handle) { return CWnd::FromHandle(handle); }
CDC* map::dc(HDC handle) { return CDC::FromHandle(handle); }

std::unique_ptr<CWnd> makeTemporary(std::wstring_view name) {
    if (equalNoCase(name, L"Static")) return std::make_unique<CStatic>();
    if (equalNoCase(name, L"Button")) return std::make_unique<CButton>();
    if (equalNoCase(name, L"Edit")) return std::make_unique<CEdit>();
    if (equalNoCase(name, L"ComboBox")) return std::make_unique<CComboBox>();
    if (equalNoCase(name, L"ListBox")) return std::make_unique<CListBox>();
    if (equalNoCase(name, L"msctls_trackbar32")) return std::make_unique<CSliderCtrl>();
    return std::make_unique<CWnd>();
}

void finishWrapper(CWnd& wrapper) {
    wrapper.m_hWnd = nullptr;
    wrapper.PostNcDestroy(); // which may delete it
}

} // namespace host

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY none[] = {{}};
    static const AFX_MSGMAP map = {nullptr, none};
    return &map;
}
const AFX_MSGMAP* CCmdTarget::GetMessageMap() const { return GetThisMessageMap(); }

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
ON_WM_DRAWITEM()
ON_WM_MEASUREITEM()
ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

CWnd::~CWnd() {
    Window* window = windowOf(m_hWnd);
    if (!window || window->wrapper != this) return;
    window->wrapper = nullptr; // its virtual functions are gone already
    ::DestroyWindow(m_hWnd);
}

CWnd* CWnd::FromHandlePermanent(HWND handle) {
    const Window* window = windowOf(handle);
    return window ? window->wrapper : nullptr;
}
CWnd* CWnd::FromHandle(HWND handle) {
    Window* window = windowOf(handle);
    if (!window) return nullptr;
    if (window->wrapper) return window->wrapper;
    if (!window->temporary) {
        window->temporary = makeTemporary(window->className);
        window->temporary->m_hWnd = handle;
    }
    return window->temporary.get();
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCTSTR className, LPCTSTR text, DWORD style, const RECT& rect,
                    CWnd* parent, UINT id, void* parameter) {
    const CRect place(rect);
    const CREATESTRUCTW how{parameter,      parent ? parent->m_hWnd : nullptr,
                            place.Height(), place.Width(),
                            place.top,      place.left,
                            LONG(style),    text,
                            className,      exStyle};
    return makeWindow(how, id, this) != nullptr;
}
BOOL CWnd::Create(LPCTSTR className, LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                  void*) {
    return CreateEx(0, className, text, style | WS_CHILD, rect, parent, id);
}
BOOL CWnd::Attach(HWND handle) {
    Window* window = windowOf(handle);
    if (!window || window->wrapper || m_hWnd) return FALSE;
    window->wrapper = this;
    m_hWnd = handle;
    return TRUE;
}
HWND CWnd::Detach() {
    const HWND handle = std::exchange(m_hWnd, nullptr);
    if (Window* window = windowOf(handle); window && window->wrapper == this) window->wrapper = nullptr;
    return handle;
}
BOOL CWnd::SubclassWindow(HWND handle) {
    if (!Attach(handle)) return FALSE;
    PreSubclassWindow();
    Invalidate();
    return TRUE;
}
BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    return SubclassWindow(::GetDlgItem(parent ? parent->m_hWnd : nullptr, int(id)));
}
HWND CWnd::UnsubclassWindow() { return Detach(); }
BOOL CWnd::DestroyWindow() { return ::DestroyWindow(m_hWnd); }

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageW(m_hWnd, message, wParam, lParam);
}
BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return PostMessageW(m_hWnd, message, wParam, lParam);
}
LRESULT CWnd::SendDlgItemMessage(int id, UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendDlgItemMessageW(m_hWnd, id, message, wParam, lParam);
}

const AFX_MSGMAP_ENTRY* CWnd::row(UINT message, UINT code, UINT id) const {
    for (const AFX_MSGMAP* map = GetMessageMap(); map; map = map->base ? map->base() : nullptr)
        for (const AFX_MSGMAP_ENTRY* entry = map->entries; entry->call; ++entry)
            if (entry->message == message && entry->code == code && id >= entry->firstId &&
                id <= entry->lastId)
                return entry;
    return nullptr;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    messagesInHand().push_back({m_hWnd, message, wParam, lParam});
    struct Done {
        ~Done() { messagesInHand().pop_back(); }
    } done;
    LRESULT result = 0;
    if (message == WM_COMMAND) return OnCommand(wParam, lParam) ? 1 : DefWindowProc(message, wParam, lParam);
    if (message == WM_NOTIFY && OnNotify(wParam, lParam, &result)) return result;
    const UINT wanted = isColorQuestion(message) ? WM_CTLCOLOR : message;
    if (wanted != WM_NOTIFY)
        if (const AFX_MSGMAP_ENTRY* entry = row(wanted, 0, 0))
            return entry->call(this, message, wParam, lParam);
    return DefWindowProc(message, wParam, lParam);
}
LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    Window* window = windowOf(m_hWnd);
    return window ? sendToClass(*window, message, wParam, lParam) : 0;
}
LRESULT CWnd::Default() {
    if (messagesInHand().empty()) return 0;
    const MSG now = messagesInHand().back();
    return DefWindowProc(now.message, now.wParam, now.lParam);
}

// The sender's own map comes first; what it doesn't take goes to the parent's.
bool CWnd::reflect(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const UINT wanted = isColorQuestion(message) ? WM_CTLCOLOR : message;
    const UINT code = message == WM_COMMAND ? HIWORD(wParam) : 0;
    const AFX_MSGMAP_ENTRY* entry = row(wanted + WM_REFLECT_BASE, code, 0);
    if (!entry) return false;
    result = entry->call(this, message, wParam, lParam);
    return wanted != WM_CTLCOLOR || result != 0;
}
bool CWnd::routeCommand(UINT id, UINT code, LPARAM lParam) {
    const AFX_MSGMAP_ENTRY* entry = row(WM_COMMAND, code, id);
    if (!entry) return false;
    entry->call(this, WM_COMMAND, MAKEWPARAM(id, code), lParam);
    return true;
}
BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    CWnd* sender = FromHandlePermanent(reinterpret_cast<HWND>(lParam));
    LRESULT result = 0;
    if (sender && sender->reflect(WM_COMMAND, wParam, lParam, result)) return TRUE;
    return routeCommand(LOWORD(wParam), HIWORD(wParam), lParam);
}
BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    const AFX_MSGMAP_ENTRY* entry = header ? row(WM_NOTIFY, header->code, UINT(header->idFrom)) : nullptr;
    if (!entry) return FALSE;
    *result = entry->call(this, WM_NOTIFY, wParam, lParam);
    return TRUE;
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd* control, UINT) {
    const MSG now = messagesInHand().back();
    LRESULT result = 0;
    if (control && control->reflect(now.message, now.wParam, now.lParam, result))
        return reinterpret_cast<HBRUSH>(result);
    return reinterpret_cast<HBRUSH>(Default());
}
void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT item) {
    if (CWnd* control = FromHandlePermanent(item->hwndItem)) control->DrawItem(item);
}
void CWnd::OnMeasureItem(int id, LPMEASUREITEMSTRUCT item) {
    if (CWnd* control = FromHandlePermanent(::GetDlgItem(m_hWnd, id))) control->MeasureItem(item);
}

void CWnd::SetWindowText(LPCTSTR text) { SetWindowTextW(m_hWnd, text); }
void CWnd::GetWindowText(CString& text) const {
    std::wstring buffer(std::size_t(GetWindowTextLength()) + 1, L'\0');
    buffer.resize(std::size_t(GetWindowTextW(m_hWnd, buffer.data(), int(buffer.size()))));
    text = CString(std::move(buffer));
}
BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT flags) {
    const DWORD before = GetStyle(), after = (before & ~remove) | add;
    if (before == after) return FALSE;
    SetWindowLongPtrW(m_hWnd, GWL_STYLE, LONG_PTR(after));
    if (flags) SetWindowPos(nullptr, 0, 0, 0, 0, flags | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER);
    return TRUE;
}
BOOL CWnd::ModifyStyleEx(DWORD remove, DWORD add, UINT) {
    const DWORD before = GetExStyle(), after = (before & ~remove) | add;
    if (before == after) return FALSE;
    SetWindowLongPtrW(m_hWnd, GWL_EXSTYLE, LONG_PTR(after));
    return TRUE;
}
void CWnd::SetFont(CFont* font, BOOL redraw) {
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font ? font->GetSafeHandle() : nullptr), redraw);
}
CFont* CWnd::GetFont() const {
    struct Lent : CFont {
        ~Lent() override { Detach(); }
    };
    static std::vector<std::unique_ptr<Lent>> lent;
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessage(WM_GETFONT));
    if (!fontOf(font)) return nullptr;
    for (const auto& each : lent)
        if (each->m_hObject == font) return each.get();
    std::erase_if(lent, [](const auto& each) { return !fontOf(each->m_hObject); });
    lent.push_back(std::make_unique<Lent>());
    lent.back()->m_hObject = font;
    return lent.back().get();
}

void CWnd::MoveWindow(LPCRECT rect, BOOL repaint) {
    const CRect place(*rect);
    MoveWindow(place.left, place.top, place.Width(), place.Height(), repaint);
}
void CWnd::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
    ::MoveWindow(m_hWnd, x, y, width, height, repaint);
}
BOOL CWnd::SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags) {
    return ::SetWindowPos(m_hWnd, after ? after->m_hWnd : nullptr, x, y, width, height, flags);
}
void CWnd::CenterWindow(CWnd* other) {
    CRect own, around;
    GetWindowRect(own);
    const CWnd* over = other ? other : GetParent();
    if (over && over->IsWindowVisible())
        over->GetWindowRect(around);
    else
        around = monitorAt(own).work;
    const CPoint middle = around.CenterPoint();
    own.OffsetRect(middle.x - own.Width() / 2 - own.left, middle.y - own.Height() / 2 - own.top);
    const CRect& work = monitorAt(around).work; // never beyond the screen's edges
    own.OffsetRect(std::min(work.right - own.right, 0), std::min(work.bottom - own.bottom, 0));
    own.OffsetRect(std::max(work.left - own.left, 0), std::max(work.top - own.top, 0));
    SetWindowPos(nullptr, own.left, own.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
BOOL CWnd::RedrawWindow(LPCRECT rect, CRgn* region, UINT flags) {
    return ::RedrawWindow(m_hWnd, rect, region ? HRGN(*region) : nullptr, flags);
}
CDC* CWnd::GetDC() { return CDC::FromHandle(::GetDC(m_hWnd)); }
int CWnd::ReleaseDC(CDC* dc) { return dc ? ::ReleaseDC(m_hWnd, dc->GetSafeHdc()) : 0; }

CWnd* CWnd::GetNextDlgTabItem(CWnd* from, BOOL previous) const {
    const Window* dialog = windowOf(m_hWnd);
    if (!dialog || dialog->children.empty()) return nullptr;
    const auto& family = dialog->children;
    const auto found = std::find_if(family.begin(), family.end(),
                                    [&](const Window* each) { return from && each->handle == from->m_hWnd; });
    const std::size_t count = family.size(), step = previous ? count - 1 : 1;
    std::size_t at = found == family.end() ? (previous ? 0 : count - 1) : std::size_t(found - family.begin());
    for (std::size_t tried = 0; tried < count; ++tried) {
        at = (at + step) % count;
        const Window& each = *family[at];
        if (each.visible() && each.enabled() && (each.style & WS_TABSTOP)) return FromHandle(each.handle);
    }
    return nullptr;
}

int CWnd::GetDlgItemText(int id, CString& text) const {
    const CWnd* item = GetDlgItem(id);
    text.Empty();
    if (item) item->GetWindowText(text);
    return text.GetLength();
}
int CWnd::GetDlgItemText(int id, LPWSTR buffer, int size) const {
    return GetWindowTextW(::GetDlgItem(m_hWnd, id), buffer, size);
}
void CWnd::SetDlgItemInt(int id, UINT value, BOOL isSigned) {
    const std::wstring text = isSigned ? std::to_wstring(int(value)) : std::to_wstring(value);
    SetDlgItemText(id, text.c_str());
}
UINT CWnd::GetDlgItemInt(int id, BOOL* good, BOOL isSigned) const {
    CString text;
    GetDlgItemText(id, text);
    const auto number = parseInteger(std::wstring_view(text.str()));
    const std::int64_t low = isSigned ? -2147483648LL : 0, high = isSigned ? 2147483647LL : 4294967295LL;
    const bool serves = number && *number >= low && *number <= high;
    if (good) *good = serves;
    return serves ? UINT(*number) : 0;
}
void CWnd::CheckDlgButton(int id, UINT check) { SendDlgItemMessage(id, BM_SETCHECK, check); }
UINT CWnd::IsDlgButtonChecked(int id) const { return UINT(SendDlgItemMessage(id, BM_GETCHECK)); }
void CWnd::CheckRadioButton(int first, int last, int checked) {
    for (int id = first; id <= last && id - first < 65536; ++id) CheckDlgButton(id, id == checked);
}
int CWnd::GetCheckedRadioButton(int first, int last) const {
    for (int id = first; id <= last && id - first < 65536; ++id)
        if (IsDlgButtonChecked(id)) return id;
    return 0;
}
int CWnd::MessageBox(LPCTSTR text, LPCTSTR caption, UINT style) {
    return dialogRunner().messageBox(m_hWnd, text ? text : L"", caption ? caption : L"", style);
}

BOOL CWnd::UpdateData(BOOL saveAndValidate) {
    CDataExchange exchange(this, saveAndValidate);
    try {
        DoDataExchange(&exchange);
        return TRUE;
    } catch (const CDataExchange::Failure&) {
        return FALSE;
    }
}
