// The exchange of values between members and controls.
#include <cmath>

#include "host/os/numbers.h"
#include "host/ui/dialog.h"

using namespace host;

namespace {

CString textOf(HWND control) {
    CString text;
    if (const CWnd* wrapper = CWnd::FromHandle(control)) wrapper->GetWindowText(text);
    return text;
}
[[noreturn]] void refuse(CDataExchange* exchange, const CString& why) {
    exchange->m_pDlgWnd->MessageBox(why);
    exchange->Fail();
}

// An index that a control takes and gives by messages.
void exchangeIndex(CDataExchange* exchange, int id, int& value, UINT ask, UINT tell) {
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        value = int(SendMessageW(control, ask, 0, 0));
    else
        SendMessageW(control, tell, WPARAM(value), 0);
}

} // namespace

void CDataExchange::Fail() {
    if (IsWindow(last_)) SetFocus(last_);
    throw Failure{};
}
HWND CDataExchange::PrepareCtrl(int id) {
    last_ = GetDlgItem(m_pDlgWnd->m_hWnd, id);
    if (!last_) Fail();
    return last_;
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
    if (control.m_hWnd) return;
    if (!control.SubclassWindow(exchange->PrepareCtrl(id))) exchange->Fail();
}
void DDX_Text(CDataExchange* exchange, int id, CString& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        value = textOf(control);
    else
        SetWindowTextW(control, value);
}
void DDX_Text(CDataExchange* exchange, int id, int& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (!exchange->m_bSaveAndValidate) {
        SetWindowTextW(control, std::to_wstring(value).c_str());
        return;
    }
    const auto number = parseInteger(std::wstring_view(textOf(control).str()));
    if (!number || *number < -2147483648LL || *number > 2147483647LL)
        refuse(exchange, L"Enter a whole number.");
    value = int(*number);
}
void DDX_Text(CDataExchange* exchange, int id, double& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (!exchange->m_bSaveAndValidate) {
        CString text;
        text.Format(L"%.15g", value);
        SetWindowTextW(control, text);
        return;
    }
    const auto number = parseReal(std::wstring_view(textOf(control).str()));
    if (!number || !std::isfinite(*number)) refuse(exchange, L"Enter a number.");
    value = *number;
}
void DDX_Check(CDataExchange* exchange, int id, int& value) {
    exchangeIndex(exchange, id, value, BM_GETCHECK, BM_SETCHECK);
}
void DDX_CBIndex(CDataExchange* exchange, int id, int& value) {
    exchangeIndex(exchange, id, value, CB_GETCURSEL, CB_SETCURSEL);
}
void DDX_LBIndex(CDataExchange* exchange, int id, int& value) {
    exchangeIndex(exchange, id, value, LB_GETCURSEL, LB_SETCURSEL);
}
void DDX_Slider(CDataExchange* exchange, int id, int& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        value = int(SendMessageW(control, TBM_GETPOS, 0, 0));
    else
        SendMessageW(control, TBM_SETPOS, TRUE, value);
}
// The group: from the named button to the next control that begins a group.
void DDX_Radio(CDataExchange* exchange, int id, int& value) {
    HWND control = exchange->PrepareCtrl(id);
    const bool save = exchange->m_bSaveAndValidate != FALSE;
    if (save) value = -1;
    int index = 0;
    do {
        const Window* window = windowOf(control);
        const bool radio = window->hasClass(L"Button") &&
                           (window->type() == BS_AUTORADIOBUTTON || window->type() == BS_RADIOBUTTON);
        if (radio) {
            if (!save)
                SendMessageW(control, BM_SETCHECK, index == value, 0);
            else if (SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED)
                value = index;
            ++index;
        }
        control = GetWindow(control, GW_HWNDNEXT);
    } while (control && !(GetWindowLongW(control, GWL_STYLE) & LONG(WS_GROUP)));
}

void DDV_MinMaxInt(CDataExchange* exchange, int value, int low, int high) {
    if (!exchange->m_bSaveAndValidate || (value >= low && value <= high)) return;
    CString why;
    why.Format(L"Enter a whole number from %d to %d.", low, high);
    refuse(exchange, why);
}
void DDV_MinMaxDouble(CDataExchange* exchange, const double& value, const double& low, const double& high) {
    if (!exchange->m_bSaveAndValidate || (value >= low && value <= high)) return;
    CString why;
    why.Format(L"Enter a number from %g to %g.", low, high);
    refuse(exchange, why);
}
