// Items of lists, and their drawing by the parent.
#include "host/ui/items.h"

#include <algorithm>

#include "host/os/text.h"

namespace host {

int ListItems::insert(std::intptr_t at, const wchar_t* text, bool sorted, bool textIsData) {
    constexpr int kMost = 1'000'000;
    if (at > count() || at < -1 || count() >= kMost) return -1;
    ListItem item;
    if (textIsData)
        item.data = reinterpret_cast<DWORD_PTR>(text);
    else
        item.text = text ? text : L"";
    std::size_t place = at < 0 ? all.size() : std::size_t(at);
    if (at < 0 && sorted)
        place = std::size_t(std::upper_bound(all.begin(), all.end(), item,
                                             [](const ListItem& a, const ListItem& b) {
                                                 return compareNoCase(a.text, b.text) < 0;
                                             }) -
                            all.begin());
    all.insert(all.begin() + std::ptrdiff_t(place), std::move(item));
    return int(place);
}

int ListItems::find(std::intptr_t after, const wchar_t* text, bool whole) const {
    const std::wstring_view wanted = text ? text : L"";
    const std::size_t first = has(after) ? std::size_t(after) + 1 : 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::size_t at = (first + i) % all.size();
        const std::wstring_view item = all[at].text;
        if (whole ? equalNoCase(item, wanted) : equalNoCase(item.substr(0, wanted.size()), wanted))
            return int(at);
    }
    return -1;
}

LRESULT ListItems::copyText(std::intptr_t index, LPARAM buffer) const {
    if (!has(index) || !buffer) return -1;
    const std::wstring& text = all[std::size_t(index)].text;
    std::copy(text.c_str(), text.c_str() + text.size() + 1, reinterpret_cast<wchar_t*>(buffer));
    return LRESULT(text.size());
}

void drawItemByParent(Window& window, HDC dc, UINT controlType, int index, const ListItems& items,
                      const CRect& place, UINT state) {
    DRAWITEMSTRUCT item;
    item.CtlType = controlType, item.CtlID = window.id, item.itemID = UINT(index);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = state | (window.enabled() ? 0 : ODS_DISABLED);
    item.hwndItem = window.handle, item.hDC = dc, item.rcItem = place;
    if (items.has(index)) item.itemData = items.all[std::size_t(index)].data;
    if (window.parent) send(*window.parent, WM_DRAWITEM, window.id, reinterpret_cast<LPARAM>(&item));
}
int measureItemByParent(Window& window, UINT controlType) {
    MEASUREITEMSTRUCT item;
    item.CtlType = controlType, item.CtlID = window.id;
    if (window.parent) send(*window.parent, WM_MEASUREITEM, window.id, reinterpret_cast<LPARAM>(&item));
    return int(std::min(item.itemHeight, 1000u));
}

} // namespace host
