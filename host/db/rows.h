// Groups written as text, for what new drawings start with. Only the sources of this room include it.
#pragma once
#include <string_view>

#include "host/db/groups.h"

namespace host {

// Codes and values in turn, parted by bars: "70|1|40|2.5".
GroupList groupsOf(std::string_view row);

// The header variables of a new metric drawing, in the order of files: a name, then its groups.
struct HeaderRow {
    const char* name;
    const char* groups;
};
const HeaderRow* headerDefaultsBegin();
const HeaderRow* headerDefaultsEnd();

} // namespace host
