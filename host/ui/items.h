// The items that list boxes and combo boxes hold.
#pragma once

#include <string>
#include <vector>

#include "host/ui/windows.h"

namespace host {

struct ListItem {
    std::wstring text;
    DWORD_PTR data = 0;
    bool selected = false;
};

class ListItems {
public:
    std::vector<ListItem> all;
    int count() const { return int(all.size()); }
    bool has(std::intptr_t index) const { return index >= 0 && index < count(); }
    // `at` -1: behind the last, or where it belongs in a sorted list. Where it was put; -1 when it can't be.
    int insert(std::intptr_t at, const wchar_t* text, bool sorted, bool textIsData);
    // Begins behind `after` and goes once round; without regard to case. -1: none.
    int find(std::intptr_t after, const wchar_t* text, bool whole) const;
    LRESULT copyText(std::intptr_t index, LPARAM buffer) const; // the length; -1
};

// Has the parent draw an item of an owner-drawn control.
void drawItemByParent(Window& window, HDC dc, UINT controlType, int index, const ListItems& items,
                      const CRect& place, UINT state);
// The height the parent wants for such items; 0 when it doesn't say.
int measureItemByParent(Window& window, UINT controlType);

} // namespace host
