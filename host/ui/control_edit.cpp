// Edit controls: text with a selection, limits, and notices of each change.
#include <algorithm>

#include "host/os/text.h"
#include "host/ui/actions.h"
#include "host/ui/look.h"
#include "host/ui/windows.h"

namespace host {
namespace {

constexpr std::size_t kUsualLimit = 30'000;

class EditControl final : public Control {
public:
    LRESULT handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_SETTEXT:
            Control::handle(window, message, wParam, lParam);
            modified_ = false;
            select(window, 0, 0);
            if (!(window.style & ES_MULTILINE)) tellChange(window);
            return TRUE;
        case EM_SETSEL: return select(window, int(wParam), int(lParam)), 0;
        case EM_GETSEL:
            if (wParam) *reinterpret_cast<DWORD*>(wParam) = DWORD(from_);
            if (lParam) *reinterpret_cast<DWORD*>(lParam) = DWORD(to_);
            return MAKELPARAM(int(from_), int(to_));
        case EM_REPLACESEL: return replace(window, reinterpret_cast<const wchar_t*>(lParam)), 0;
        case EM_SETLIMITTEXT: limit_ = wParam ? wParam : kUsualLimit; return 0;
        case EM_GETLIMITTEXT: return LRESULT(limit_);
        case EM_SETREADONLY:
            window.style = wParam ? window.style | ES_READONLY : window.style & ~ES_READONLY;
            return invalidate(window), TRUE;
        case EM_GETMODIFY: return modified_;
        case EM_SETMODIFY: modified_ = wParam != 0; return 0;
        case EM_GETLINECOUNT: return 1 + std::count(window.text.begin(), window.text.end(), L'\n');
        case WM_CHAR: return typed(window, wchar_t(wParam)), 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            invalidate(window);
            return notifyParent(window, message == WM_SETFOCUS ? EN_SETFOCUS : EN_KILLFOCUS), 0;
        case WM_PAINT: {
            const bool still = !window.enabled() || (window.style & ES_READONLY);
            look::Canvas canvas(window, still ? WM_CTLCOLORSTATIC : WM_CTLCOLOREDIT);
            look::edit(canvas, window.style & ES_MULTILINE);
            return 0;
        }
        default: return Control::handle(window, message, wParam, lParam);
        }
    }

private:
    void select(const Window& window, int from, int to) {
        const int length = int(window.text.size());
        if (to < 0) to = length;
        from_ = std::size_t(std::clamp(from < 0 ? to : from, 0, length));
        to_ = std::size_t(std::clamp(to, 0, length));
        if (from_ > to_) std::swap(from_, to_);
    }
    // Handlers may destroy the window between the two.
    static void tellChange(Window& window) {
        const HWND handle = window.handle;
        notifyParent(window, EN_UPDATE);
        if (windowOf(handle)) notifyParent(window, EN_CHANGE);
    }
    void replace(Window& window, const wchar_t* text) {
        std::wstring piece = text ? text : L"";
        if (window.style & ES_UPPERCASE) piece = upper(piece);
        if (window.style & ES_LOWERCASE) piece = lower(piece);
        select(window, int(from_), int(to_));
        const std::size_t room = limit_ - std::min(limit_, window.text.size() - (to_ - from_));
        const bool tooLong = piece.size() > room;
        piece.resize(std::min(piece.size(), room));
        std::wstring whole = window.text;
        whole.replace(from_, to_ - from_, piece);
        from_ = to_ = from_ + piece.size();
        modified_ = true;
        setTextQuietly(window, whole);
        const HWND handle = window.handle;
        tellChange(window);
        if (tooLong && windowOf(handle)) notifyParent(window, EN_MAXTEXT);
    }
    void typed(Window& window, wchar_t c) {
        if (window.style & ES_READONLY) return;
        if (c == L'\b') {
            if (from_ == to_ && from_ > 0) --from_;
            replace(window, L"");
        } else if (c >= L' ' && !((window.style & ES_NUMBER) && (c < L'0' || c > L'9'))) {
            const wchar_t text[] = {c, L'\0'};
            replace(window, text);
        }
    }
    std::size_t from_ = 0, to_ = 0, limit_ = kUsualLimit;
    bool modified_ = false;
};

} // namespace

std::unique_ptr<Control> makeEdit(const Window&) { return std::make_unique<EditControl>(); }

void typeText(HWND edit, const std::wstring& text) {
    SetFocus(edit);
    SendMessageW(edit, EM_SETSEL, 0, -1);
    SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    if (GetFocus() == edit) SetFocus(nullptr);
}

} // namespace host
