// Combo boxes: a list to choose from, with or without an edit field. The list itself is shown by front ends;
// the window's rectangle is that of the closed field, whatever height was asked for.
#include <algorithm>

#include "host/ui/actions.h"
#include "host/ui/items.h"
#include "host/ui/look.h"

namespace host {
namespace {

class ComboControl final : public Control {
public:
    LRESULT handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam) override {
        const auto index = std::intptr_t(std::int32_t(wParam));
        const auto* text = reinterpret_cast<const wchar_t*>(lParam);
        switch (message) {
        case CB_ADDSTRING: return insert(window, -1, text, window.style & CBS_SORT);
        case CB_INSERTSTRING: return insert(window, index, text, false);
        case CB_DELETESTRING: return remove(window, index);
        case CB_RESETCONTENT:
            items_.all.clear();
            choose(window, -1);
            return tellWatcher(window, WindowWatcher::Change::items), 0;
        case CB_GETCOUNT: return items_.count();
        case CB_GETCURSEL: return current_;
        case CB_SETCURSEL: return choose(window, int(index)), items_.has(index) ? current_ : CB_ERR;
        case CB_GETLBTEXT: return items_.copyText(index, lParam);
        case CB_GETLBTEXTLEN: return items_.has(index) ? LRESULT(item(index).text.size()) : CB_ERR;
        case CB_GETITEMDATA: return items_.has(index) ? LRESULT(item(index).data) : CB_ERR;
        case CB_SETITEMDATA: return items_.has(index) ? (item(index).data = DWORD_PTR(lParam), 0) : CB_ERR;
        case CB_FINDSTRING: return items_.find(index, text, false);
        case CB_FINDSTRINGEXACT: return items_.find(index, text, true);
        case CB_SELECTSTRING: {
            const int found = items_.find(index, text, false);
            if (found >= 0) choose(window, found);
            return found;
        }
        case CB_SETITEMHEIGHT: return setItemHeight(window, index, int(lParam));
        case CB_GETITEMHEIGHT: return index < 0 ? window.rect.Height() - kBorders : itemHeight(window);
        default: return handleRest(window, message, wParam, lParam);
        }
    }

private:
    static constexpr int kBorders = 6;
    ListItem& item(std::intptr_t index) { return items_.all[std::size_t(index)]; }
    static bool editable(const Window& window) { return (window.style & 3) != CBS_DROPDOWNLIST; }
    static bool ownerDrawn(const Window& window) {
        return window.style & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE);
    }

    LRESULT handleRest(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
        switch (message) {
        case WM_CREATE: {
            const std::wstring initial = std::exchange(window.text, {});
            if (editable(window)) window.text = initial;
            if (ownerDrawn(window)) measured_ = measureItemByParent(window, ODT_COMBOBOX);
            return fitField(window), 0;
        }
        case WM_SETTEXT:
            if (!editable(window)) return CB_ERR;
            current_ = -1;
            return Control::handle(window, message, wParam, lParam);
        case WM_SETFONT: Control::handle(window, message, wParam, lParam); return fitField(window), 0;
        case WM_SIZE: return fitField(window), 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            invalidate(window);
            return notifyParent(window, message == WM_SETFOCUS ? CBN_SETFOCUS : CBN_KILLFOCUS), 0;
        case WM_PAINT: paint(window); return 0;
        default: return Control::handle(window, message, wParam, lParam);
        }
    }

    LRESULT insert(Window& window, std::intptr_t at, const wchar_t* text, bool sorted) {
        const bool textIsData = ownerDrawn(window) && !(window.style & CBS_HASSTRINGS);
        const int place = items_.insert(at, text, sorted, textIsData);
        if (place >= 0 && place <= current_) ++current_;
        tellWatcher(window, WindowWatcher::Change::items);
        return place;
    }
    LRESULT remove(Window& window, std::intptr_t index) {
        if (!items_.has(index)) return CB_ERR;
        items_.all.erase(items_.all.begin() + index);
        if (current_ == index) choose(window, -1);
        if (current_ > index) --current_;
        tellWatcher(window, WindowWatcher::Change::items);
        return items_.count();
    }
    void choose(Window& window, int index) {
        current_ = items_.has(index) ? index : -1;
        setTextQuietly(window, current_ < 0 ? std::wstring() : item(current_).text);
        tellWatcher(window, WindowWatcher::Change::state);
    }
    LRESULT setItemHeight(Window& window, std::intptr_t index, int height) {
        if (height < 1 || height > 1000) return CB_ERR;
        (index < 0 ? field_ : measured_) = height;
        return fitField(window), 0;
    }
    int itemHeight(const Window& window) const {
        const LOGFONTW* font = fontOf(window.font);
        const FontLook look = fontLook(font ? *font : LOGFONTW());
        return std::max(measured_, look.ascent + look.descent + 2);
    }
    // A simple one shows its list, and keeps its height.
    void fitField(Window& window) {
        if ((window.style & 3) == CBS_SIMPLE) return;
        const int height = (field_ ? field_ : itemHeight(window)) + kBorders;
        if (window.rect.Height() == height) return;
        window.rect.bottom = window.rect.top + height;
        tellWatcher(window, WindowWatcher::Change::place);
    }
    void paint(Window& window) {
        look::Canvas canvas(window, editable(window) ? WM_CTLCOLOREDIT : WM_CTLCOLORLISTBOX);
        look::combo(canvas, !ownerDrawn(window));
        if (!ownerDrawn(window) || current_ < 0) return;
        const int saved = canvas.dc.SaveDC();
        const CRect field = look::comboField(canvas.area);
        canvas.dc.IntersectClipRect(field);
        drawItemByParent(window, canvas.dc, ODT_COMBOBOX, current_, items_, field,
                         ODS_COMBOBOXEDIT | (canvas.focused ? ODS_SELECTED | ODS_FOCUS : 0));
        canvas.dc.RestoreDC(saved);
    }
    ListItems items_;
    int current_ = -1, measured_ = 0, field_ = 0;
};

} // namespace

std::unique_ptr<Control> makeCombo(const Window&) { return std::make_unique<ComboControl>(); }

namespace {
void tell(HWND combo, UINT code) {
    if (Window* window = windowOf(combo)) notifyParent(*window, code);
}
} // namespace

void chooseItem(HWND combo, int index) {
    SetFocus(combo);
    tell(combo, CBN_DROPDOWN);
    SendMessageW(combo, CB_SETCURSEL, WPARAM(index), 0);
    tell(combo, CBN_SELENDOK);
    tell(combo, CBN_CLOSEUP);
    tell(combo, CBN_SELCHANGE);
}
void typeInCombo(HWND combo, const std::wstring& text) {
    SetFocus(combo);
    SetWindowTextW(combo, text.c_str());
    tell(combo, CBN_EDITUPDATE);
    tell(combo, CBN_EDITCHANGE);
    if (GetFocus() == combo) SetFocus(nullptr);
}

} // namespace host
