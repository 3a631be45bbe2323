// What each version of drawing files knows: header variables, classes that must be announced, and
// the group codes of R12.
#pragma once
#include <span>
#include <string_view>

#include "host/db/adesk.h"

namespace host::dxf {

// False for a variable that came later than that version; unknown ones count as known.
bool knowsVariable(AcDb::AcDbDwgVersion version, std::string_view name);

// A class that isn't part of the file format's base and needs a row in CLASSES when it is used.
struct KnownClass {
    std::string_view dxfName, className, appName;
    int proxyFlags;
    bool isEntity;
};
std::span<const KnownClass> knownClasses();

// Kinds of entity that R12 and older versions know; all others came later.
bool isOldKind(std::string_view kind);
// False for a kind of entity that came later than that version; unknown ones count as known since R13.
bool knowsKind(AcDb::AcDbDwgVersion version, std::string_view kind);
// Group codes that R12 takes.
bool isOldCode(int code);

} // namespace host::dxf
