// Menu files: the pull-down menus of a module, from the package it brings along.
#pragma once
#include <QString>
#include <string>
#include <vector>

namespace desk {

struct MenuItem {
    QString caption, help;
    std::wstring line; // what it types; empty for a submenu
    std::vector<MenuItem> items;
    QString mark;      // by which the file knows the menu or command
    QString icon = {}; // its name; filled by whoever shows the menu
    bool enabled = true;
};
struct MenuFile {
    std::vector<MenuItem> menus;
    std::string error; // what was wrong with the file; empty when it could be read
};

// Reads a package: a zip archive with the menu as XML in its member Menu.cui. Items name their macros by UID;
// those without one are left out.
MenuFile readMenuFile(const std::string& path);

// The bytes of one member of a zip archive, stored or deflated; nothing, with the reason, when it isn't
// there, is damaged, or larger than 64 MB.
struct ZipMember {
    std::string bytes, error;
};
ZipMember zipMember(std::string_view archive, std::string_view name);

} // namespace desk
