// Dialogs: making them from templates, running them, and the host's own dialog classes.
#include "host/ui/dialog.h"

#include <cmath>

#include "host/os/numbers.h"
#include "host/ui/monitors.h"
#include "host/ui/queue.h"
#include "host/ui/resources.h"
#include "host/ui/windows.h"

namespace host {
namespace {

class DialogControl final : public Control {
public:
    LRESULT handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_ERASEBKGND: {
            HDC dc = reinterpret_cast<HDC>(wParam);
            const LRESULT own = send(window, WM_CTLCOLORDLG, wParam, reinterpret_cast<LPARAM>(window.handle));
            HBRUSH brush = own ? reinterpret_cast<HBRUSH>(own) : GetSysColorBrush(COLOR_BTNFACE);
            return FillRect(dc, window.client(), brush);
        }
        case WM_COMMAND:
            if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) return 0;
            if (!window.wrapper) EndDialog(window.handle, LOWORD(wParam));
            return 0;
        case WM_CLOSE: send(window, WM_COMMAND, IDCANCEL, 0); return 0;
        case DM_SETDEFID: window.defaultId = UINT(wParam); return TRUE;
        case DM_GETDEFID: return LRESULT(window.defaultId | 0x534B0000u);
        default: return Control::handle(window, message, wParam, lParam);
        }
    }
};

const Monitor& monitorFor(HWND owner) {
    const Window* window = windowOf(owner);
    return window ? monitorAt(window->rect) : monitors().front();
}

// Deletes the dialog's font with it.
class FontOwner final : public Control {
public:
    FontOwner(std::unique_ptr<Control> inner, HFONT font) : inner_(std::move(inner)), font_(font) {}
    ~FontOwner() override { DeleteObject(font_); }
    LRESULT handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam) override {
        return inner_->handle(window, message, wParam, lParam);
    }

private:
    std::unique_ptr<Control> inner_;
    HFONT font_;
};

} // namespace

std::unique_ptr<Control> makeDialogControl(const Window&) { return std::make_unique<DialogControl>(); }

MadeDialog makeDialog(const DialogTemplate& dialog, HWND owner, CWnd* wrapper) {
    for (const ControlTemplate& control : dialog.controls)
        if (!windowClass(control.className))
            return {nullptr, "dialog " + std::to_string(dialog.id) + ": the class \"" +
                                 utf8(control.className) + "\" of control " + std::to_string(control.id) +
                                 " is not registered"};
    const Monitor& monitor = monitorFor(owner);
    const LOGFONTW fontFacts = templateFont(dialog, monitor.dotsPerInch);
    const HFONT font = CreateFontIndirectW(&fontFacts);
    const DialogUnits units = dialogUnits(fontFacts);
    const DWORD style = dialog.style & ~WS_VISIBLE;
    CRect rect = units.pixels(dialog.rect);
    const FrameInsets frame = frameInsets(style);
    rect = CRect(rect.TopLeft() + monitor.work.TopLeft(), rect.Size());
    rect.right += frame.left + frame.right, rect.bottom += frame.top + frame.bottom;

    const wchar_t* className = dialog.className.empty() ? L"#32770" : dialog.className.c_str();
    const CREATESTRUCTW how{nullptr,   owner,       rect.Height(),          rect.Width(), rect.top,
                            rect.left, LONG(style), dialog.caption.c_str(), className,    dialog.exStyle};
    MadeDialog made{makeWindow(how, 0, wrapper), {}};
    Window* window = windowOf(made.handle);
    if (!window) {
        DeleteObject(font);
        return {nullptr, "dialog " + std::to_string(dialog.id) + " could not be made"};
    }
    window->isDialog = true;
    window->font = font;
    window->control = std::make_unique<FontOwner>(std::move(window->control), font);
    for (const ControlTemplate& control : dialog.controls) {
        const CRect place = units.pixels(control.rect);
        const HWND child = makeWindow({nullptr, made.handle, place.Height(), place.Width(), place.top,
                                       place.left, LONG(control.style | WS_CHILD), control.text.c_str(),
                                       control.className.c_str(), control.exStyle},
                                      control.id, nullptr);
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
        const Window* button = windowOf(child);
        if (button && button->hasClass(L"Button") && button->type() == BS_DEFPUSHBUTTON)
            window->defaultId = control.id;
    }
    return made;
}

} // namespace host

using namespace host;

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_WM_CLOSE()
END_MESSAGE_MAP()
BEGIN_MESSAGE_MAP(CAdUiBaseDialog, CDialog)
END_MESSAGE_MAP()
BEGIN_MESSAGE_MAP(CAdUiDialog, CAdUiBaseDialog)
END_MESSAGE_MAP()
BEGIN_MESSAGE_MAP(CAcUiDialog, CAdUiDialog)
END_MESSAGE_MAP()
BEGIN_MESSAGE_MAP(CAcUiEdit, CEdit)
ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

CDialog::~CDialog() {
    if (m_hWnd) CDialog::DestroyWindow();
}

bool CDialog::make(const DialogTemplate& dialog, CWnd* parent) {
    const MadeDialog made = makeDialog(dialog, parent ? parent->m_hWnd : nullptr, this);
    if (!made.handle) dialogRunner().complain(made.error);
    return made.handle != nullptr;
}
// The first control in tabbing order gets the focus unless the dialog has put it somewhere itself.
bool CDialog::initialize() {
    const HWND handle = m_hWnd;
    const Window* window = windowOf(handle);
    if (window->style & DS_CENTER || window->style & WS_POPUP) CenterWindow();
    if (OnInitDialog() && windowOf(handle))
        if (CWnd* first = GetNextDlgTabItem(nullptr)) first->SetFocus();
    return windowOf(handle) != nullptr;
}

INT_PTR CDialog::DoModal() {
    std::string error;
    const DialogTemplate* dialog =
        template_ ? template_.get() : dialogTemplate(AfxGetResourceHandle(), templateId_, error);
    if (!dialog) {
        dialogRunner().complain(error);
        return -1;
    }
    if (!make(*dialog, parent_)) return -1;
    const HWND handle = m_hWnd;
    INT_PTR result = -1;
    if (initialize()) {
        if (!dialogEnded(handle)) ::ShowWindow(handle, SW_SHOW);
        if (!dialogEnded(handle)) dialogRunner().run(handle);
        if (const Window* window = windowOf(handle)) result = window->ended ? window->result : IDCANCEL;
    }
    if (m_hWnd) DestroyWindow();
    return result;
}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE dialog, CWnd* parent) {
    if (!dialog) return FALSE;
    template_ = std::make_unique<DialogTemplate>(*dialog);
    parent_ = parent;
    return TRUE;
}
BOOL CDialog::Create(UINT id, CWnd* parent) {
    std::string error;
    const DialogTemplate* dialog = dialogTemplate(AfxGetResourceHandle(), id, error);
    if (!dialog) dialogRunner().complain(error);
    return dialog && CreateIndirect(dialog, parent);
}
BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE dialog, CWnd* parent) {
    if (m_hWnd || !dialog || !make(*dialog, parent) || !initialize()) return FALSE;
    if (dialog->style & WS_VISIBLE) ShowWindow(SW_SHOW);
    dialogRunner().shown(m_hWnd);
    return TRUE;
}
BOOL CDialog::DestroyWindow() {
    if (!m_hWnd) return FALSE;
    dialogRunner().hidden(m_hWnd);
    return CWnd::DestroyWindow();
}
void CDialog::NextDlgCtrl() const {
    if (CWnd* next = GetNextDlgTabItem(GetFocus())) next->SetFocus();
}

BOOL CDialog::OnInitDialog() { return UpdateData(FALSE), TRUE; }
void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}
void CDialog::OnCancel() { EndDialog(IDCANCEL); }
void CDialog::OnClose() { SendMessage(WM_COMMAND, IDCANCEL); }
BOOL CDialog::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (CWnd::OnCommand(wParam, lParam)) return TRUE;
    if (HIWORD(wParam) != BN_CLICKED) return FALSE;
    if (LOWORD(wParam) == IDOK) return OnOK(), TRUE;
    if (LOWORD(wParam) == IDCANCEL) return OnCancel(), TRUE;
    return FALSE;
}

CAdUiBaseDialog::~CAdUiBaseDialog() {
    if (const Window* window = windowOf(m_hWnd); window && window->hiddenForPick)
        CompleteEditorCommand(FALSE);
}
void CAdUiBaseDialog::BeginEditorCommand() {
    Window* window = windowOf(m_hWnd);
    if (!window || window->hiddenForPick) return;
    window->hiddenForPick = true;
    ShowWindow(SW_HIDE);
    dialogRunner().pickBegins(m_hWnd);
}
void CAdUiBaseDialog::CompleteEditorCommand(BOOL restore) {
    Window* window = windowOf(m_hWnd);
    if (!window || !window->hiddenForPick) return;
    window->hiddenForPick = false;
    dialogRunner().pickEnds(m_hWnd);
    if (restore) ShowWindow(SW_SHOW);
}

void CAcUiEdit::OnKillFocus(CWnd* next) {
    CEdit::OnKillFocus(next);
    CString text;
    GetWindowText(text);
    const auto number = parseReal(std::wstring_view(text.str()));
    if (!limited_ || !number || (*number >= low_ && *number <= high_)) return;
    const double within = std::clamp(*number, low_, high_);
    CString corrected;
    corrected.Format(L"%.10g", within);
    SetWindowText(corrected);
}
