// The walk over a dialog's windows, and combo and list boxes by their messages.
#include "core/dialog_language.h"

#include <vector>

namespace corvane {
namespace {

// Combo and list boxes speak alike, each with numbers of its own.
struct BoxMessages {
    UINT count, length, text, data, setData, add, reset, selection, select;
};
constexpr BoxMessages kCombo = {CB_GETCOUNT,  CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_GETITEMDATA, CB_SETITEMDATA,
                                CB_ADDSTRING, CB_RESETCONTENT, CB_GETCURSEL, CB_SETCURSEL};
constexpr BoxMessages kList = {LB_GETCOUNT,  LB_GETTEXTLEN,   LB_GETTEXT,   LB_GETITEMDATA, LB_SETITEMDATA,
                               LB_ADDSTRING, LB_RESETCONTENT, LB_GETCURSEL, LB_SETCURSEL};

struct BoxItem {
    std::wstring text;
    LRESULT data;
};

LRESULT ask(HWND box, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(box, message, wParam, lParam);
}

// The translated items; none when nothing is to change.
std::vector<BoxItem> translatedItems(HWND box, const BoxMessages& m) {
    std::vector<BoxItem> items;
    bool changed = false;
    const LRESULT count = ask(box, m.count);
    for (LRESULT i = 0; i < count; ++i) {
        const LRESULT length = ask(box, m.length, WPARAM(i));
        if (length < 0) return {};
        std::vector<wchar_t> buffer(size_t(length) + 1);
        ask(box, m.text, WPARAM(i), LPARAM(buffer.data()));
        const CString translated = Translate(buffer.data());
        changed = changed || translated != buffer.data();
        items.push_back({translated.str(), ask(box, m.data, WPARAM(i))});
    }
    if (!changed) items.clear();
    return items;
}

void translateBox(CWnd* window, const BoxMessages& m) {
    if (!window || !IsWindow(window->m_hWnd)) return;
    const HWND box = window->m_hWnd;
    const std::vector<BoxItem> items = translatedItems(box, m);
    if (items.empty()) return;
    const LRESULT selected = ask(box, m.selection);
    ask(box, WM_SETREDRAW, FALSE);
    ask(box, m.reset);
    for (const BoxItem& item : items) {
        const LRESULT at = ask(box, m.add, 0, LPARAM(item.text.c_str()));
        if (at >= 0 && item.data != -1) ask(box, m.setData, WPARAM(at), LPARAM(item.data));
    }
    if (selected >= 0 && selected < ask(box, m.count)) ask(box, m.select, WPARAM(selected));
    ask(box, WM_SETREDRAW, TRUE);
    InvalidateRect(box, nullptr, TRUE);
}

} // namespace

std::wstring WindowText(HWND window) {
    std::vector<wchar_t> buffer(size_t(GetWindowTextLengthW(window)) + 1);
    GetWindowTextW(window, buffer.data(), int(buffer.size()));
    return buffer.data();
}

void TranslateWindowText(CWnd* window) {
    if (!window || !IsWindow(window->m_hWnd)) return;
    const std::wstring text = WindowText(window->m_hWnd);
    if (text.empty()) return;
    const CString translated = Translate(text.c_str());
    if (translated.str() != text) SetWindowTextW(window->m_hWnd, translated);
}

void TranslateComboItems(CWnd* combo) { translateBox(combo, kCombo); }
void TranslateListItems(CWnd* list) { translateBox(list, kList); }

void TranslateDialog(CWnd* dialog) {
    if (!dialog || !IsWindow(dialog->m_hWnd) || SpeaksSourceLanguage()) return;
    TranslateWindowText(dialog);
    for (HWND child = GetWindow(dialog->m_hWnd, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        CWnd* window = CWnd::FromHandle(child);
        TranslateWindowText(window);
        wchar_t name[64] = {};
        GetClassNameW(child, name, 64);
        if (std::wstring_view(name) == L"ComboBox") TranslateComboItems(window);
        if (std::wstring_view(name) == L"ListBox") TranslateListItems(window);
    }
}

} // namespace corvane
