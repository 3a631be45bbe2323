// The menus and tool buttons of the modules that are loaded, in the language in use.
#pragma once
#include <string>
#include <vector>

#include "apps/desk/menu_file.h"

namespace desk {

struct ModuleMenus {
    std::vector<MenuItem> menus, buttons;
    std::string error; // of a menu file that could not be read
};
ModuleMenus moduleMenus();

} // namespace desk
