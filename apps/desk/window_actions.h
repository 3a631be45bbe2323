// The window's own actions and the menus they stand in, as tables: menus, tool bars and short cuts read the
// same rows. The commands of a module come with its menu file.
#pragma once
#include <span>

namespace desk {

struct WindowAction {
    const char* name; // also of its icon
    const wchar_t* text;
    const char* keys;    // of the keyboard; empty: none
    const wchar_t* line; // what it types; null: the window does it itself
};
std::span<const WindowAction> windowActions();

// Names of actions, parted by blanks; "|" parts groups, and a name with "..." at its end is a submenu that
// the window fills.
struct WindowMenu {
    const char* name;
    const wchar_t* title;
    const char* actions;
};
std::span<const WindowMenu> windowMenus(); // the last one stands behind the menus of modules
std::span<const WindowMenu> windowToolBars();

} // namespace desk
