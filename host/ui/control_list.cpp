// List boxes: one item chosen, or several.
#include <algorithm>

#include "host/ui/actions.h"
#include "host/ui/items.h"
#include "host/ui/look.h"

namespace host {
namespace {

class ListControl final : public Control {
public:
    LRESULT handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam) override {
        const auto index = std::intptr_t(std::int32_t(wParam));
        const auto* text = reinterpret_cast<const wchar_t*>(lParam);
        switch (message) {
        case LB_ADDSTRING: return insert(window, -1, text, window.style & LBS_SORT);
        case LB_INSERTSTRING: return insert(window, index, text, false);
        case LB_DELETESTRING: return remove(window, index);
        case LB_RESETCONTENT:
            items_.all.clear();
            current_ = -1, top_ = 0;
            return changed(window, WindowWatcher::Change::items), 0;
        case LB_GETCOUNT: return items_.count();
        case LB_GETCURSEL: return current_;
        case LB_SETCURSEL: return choose(window, int(index));
        case LB_GETSEL: return items_.has(index) ? items_.all[std::size_t(index)].selected : LB_ERR;
        case LB_SETSEL: return select(window, wParam != 0, int(std::int32_t(lParam)));
        case LB_GETSELCOUNT: return multiple(window) ? chosenCount() : LB_ERR;
        case LB_GETSELITEMS: return chosen(window, int(wParam), reinterpret_cast<int*>(lParam));
        case LB_GETTEXT: return items_.copyText(index, lParam);
        case LB_GETTEXTLEN:
            return items_.has(index) ? LRESULT(items_.all[std::size_t(index)].text.size()) : LB_ERR;
        case LB_GETITEMDATA: return items_.has(index) ? LRESULT(items_.all[std::size_t(index)].data) : LB_ERR;
        case LB_SETITEMDATA:
            return items_.has(index) ? (items_.all[std::size_t(index)].data = DWORD_PTR(lParam), 0) : LB_ERR;
        case LB_FINDSTRING: return items_.find(index, text, false);
        case LB_FINDSTRINGEXACT: return items_.find(index, text, true);
        case LB_SELECTSTRING: {
            const int found = items_.find(index, text, false);
            return found < 0 ? LB_ERR : choose(window, found);
        }
        case LB_GETTOPINDEX: return top_;
        case LB_SETTOPINDEX: top_ = std::clamp(int(index), 0, std::max(items_.count() - 1, 0)); return 0;
        case LB_SETITEMHEIGHT: height_ = std::clamp(int(lParam), 1, 1000); return invalidate(window), 0;
        case LB_GETITEMHEIGHT: return itemHeight(window);
        default: return handleRest(window, message, wParam, lParam);
        }
    }

private:
    static bool multiple(const Window& window) { return window.style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL); }
    static bool ownerDrawn(const Window& window) {
        return window.style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE);
    }
    static void changed(Window& window, WindowWatcher::Change change) {
        invalidate(window);
        tellWatcher(window, change);
    }

    LRESULT handleRest(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
        switch (message) {
        case WM_CREATE:
            if (ownerDrawn(window)) height_ = measureItemByParent(window, ODT_LISTBOX);
            return 0;
        case WM_LBUTTONDOWN: return clicked(window, CPoint(lParam)), 0;
        case WM_LBUTTONDBLCLK:
            if (window.style & LBS_NOTIFY) notifyParent(window, LBN_DBLCLK);
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            invalidate(window);
            if (window.style & LBS_NOTIFY)
                notifyParent(window, message == WM_SETFOCUS ? LBN_SETFOCUS : LBN_KILLFOCUS);
            return 0;
        case WM_PAINT: paint(window); return 0;
        default: return Control::handle(window, message, wParam, lParam);
        }
    }

    LRESULT insert(Window& window, std::intptr_t at, const wchar_t* text, bool sorted) {
        const bool textIsData = ownerDrawn(window) && !(window.style & LBS_HASSTRINGS);
        const int place = items_.insert(at, text, sorted, textIsData);
        if (place >= 0 && place <= current_) ++current_;
        changed(window, WindowWatcher::Change::items);
        return place;
    }
    LRESULT remove(Window& window, std::intptr_t index) {
        if (!items_.has(index)) return LB_ERR;
        items_.all.erase(items_.all.begin() + index);
        if (current_ == index) current_ = -1;
        if (current_ > index) --current_;
        top_ = std::clamp(top_, 0, std::max(items_.count() - 1, 0));
        changed(window, WindowWatcher::Change::items);
        return items_.count();
    }
    LRESULT choose(Window& window, int index) {
        if (multiple(window)) return LB_ERR;
        for (ListItem& item : items_.all) item.selected = false;
        current_ = items_.has(index) ? index : -1;
        if (current_ >= 0) items_.all[std::size_t(current_)].selected = true, show(window, current_);
        changed(window, WindowWatcher::Change::state);
        return current_ < 0 ? LB_ERR : current_;
    }
    LRESULT select(Window& window, bool on, int index) {
        if (!multiple(window) || (index != -1 && !items_.has(index))) return LB_ERR;
        for (int i = 0; i < items_.count(); ++i)
            if (index == -1 || i == index) items_.all[std::size_t(i)].selected = on;
        if (index != -1) current_ = index;
        changed(window, WindowWatcher::Change::state);
        return 0;
    }
    int chosenCount() const {
        return int(std::count_if(items_.all.begin(), items_.all.end(),
                                 [](const ListItem& i) { return i.selected; }));
    }
    LRESULT chosen(const Window& window, int most, int* out) const {
        if (!multiple(window) || !out) return LB_ERR;
        int count = 0;
        for (int i = 0; i < items_.count() && count < most; ++i)
            if (items_.all[std::size_t(i)].selected) out[count++] = i;
        return count;
    }
    void show(const Window& window, int index) {
        const int rows = std::max(window.client().Height() / itemHeight(window), 1);
        if (index < top_) top_ = index;
        if (index >= top_ + rows) top_ = index - rows + 1;
    }
    int itemHeight(const Window& window) const {
        if (height_ > 0) return height_;
        const LOGFONTW* font = fontOf(window.font);
        const FontLook look = fontLook(font ? *font : LOGFONTW());
        return look.ascent + look.descent + 2;
    }
    void clicked(Window& window, CPoint at) {
        const int index = top_ + at.y / itemHeight(window);
        if (!items_.has(index) || (window.style & LBS_NOSEL)) return;
        if (window.style & LBS_MULTIPLESEL)
            select(window, !items_.all[std::size_t(index)].selected, index);
        else if (multiple(window))
            select(window, false, -1), select(window, true, index);
        else
            choose(window, index);
        if (window.style & LBS_NOTIFY) notifyParent(window, LBN_SELCHANGE);
    }
    // A bar at the right tells which part of the items is in sight; the width it takes.
    int scrollMark(look::Canvas& canvas, int height) const {
        constexpr int kWidth = 8;
        const double room = canvas.area.Height() - 6, all = double(items_.count()) * height;
        const int from = 3 + int(room * top_ * height / all);
        const int length = std::max(int(room * std::min(room / all, 1.0)), 8);
        const CRect bar(canvas.area.right - kWidth + 1, from, canvas.area.right - 3, from + length);
        canvas.box(bar, 2, look::kBorder, look::kBorder);
        return kWidth;
    }
    void paint(Window& window) {
        look::Canvas canvas(window, WM_CTLCOLORLISTBOX);
        const LOGBRUSH* brush = brushOf(canvas.back);
        canvas.box(canvas.area, 3, brush ? brush->lbColor : look::kField, look::kBorder);
        const int height = itemHeight(window);
        CRect row(canvas.area.left + 2, canvas.area.top + 1, canvas.area.right - 2,
                  canvas.area.top + 1 + height);
        const int bottom = canvas.area.bottom - 1;
        const bool wholeRows = !(window.style & LBS_NOINTEGRALHEIGHT) && row.bottom <= bottom;
        if (items_.count() * height > bottom - row.top) row.right -= scrollMark(canvas, height);
        canvas.dc.IntersectClipRect(CRect(row.left, row.top, row.right, bottom));
        for (int i = top_; i < items_.count() && (wholeRows ? row.bottom : row.top + 1) <= bottom;
             ++i, row.OffsetRect(0, height)) {
            const ListItem& item = items_.all[std::size_t(i)];
            if (ownerDrawn(window)) {
                drawItemByParent(window, canvas.dc, ODT_LISTBOX, i, items_, row,
                                 item.selected ? ODS_SELECTED : 0);
                continue;
            }
            if (item.selected) canvas.dc.FillSolidRect(row, look::kChosen);
            CRect place = row;
            place.DeflateRect(4, 0);
            canvas.text(place, item.text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX, canvas.ink());
        }
    }
    ListItems items_;
    int current_ = -1, top_ = 0, height_ = 0;
};

} // namespace

std::unique_ptr<Control> makeList(const Window&) { return std::make_unique<ListControl>(); }

void chooseItems(HWND list, const std::vector<int>& items) {
    const Window* before = windowOf(list);
    if (!before) return;
    const bool several = before->style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL);
    SetFocus(list);
    if (several) SendMessageW(list, LB_SETSEL, FALSE, -1);
    for (const int item : items) {
        if (several)
            SendMessageW(list, LB_SETSEL, TRUE, item);
        else
            SendMessageW(list, LB_SETCURSEL, WPARAM(item), 0);
    }
    if (Window* window = windowOf(list); window && (window->style & LBS_NOTIFY))
        notifyParent(*window, LBN_SELCHANGE);
}
void doubleClickItem(HWND list, int index) {
    chooseItems(list, {index});
    SendMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
}

} // namespace host
