// Looks a drawing over for what is wrong in it, and changes nothing.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "host/db/database.h"

namespace host {

struct AuditFinding {
    // What kind of fault, for programs:
    //   broken-reference   a handle that must lead to an object leads nowhere
    //   broken-owner       the owner is missing, or doesn't list the object
    //   missing-layer      an entity stands on no layer
    //   duplicate-name     two records of a table, or entries of a dictionary, have one name
    //   bad-name           a name with characters that no name may hold
    //   non-finite         a value is no finite number
    //   bad-value          a value outside of what its kind can have
    //   cyclic-block       a block contains itself
    //   wrong-count        a count that the data behind it don't bear out
    //   handle-seed        a handle that would be given out again
    //   unregistered       xdata of an application that isn't registered
    std::string code;
    std::string kind; // the object's name in files
    std::uint64_t handle = 0;
    std::string sentence;
};

// All findings, in the order of the handles.
std::vector<AuditFinding> audit(AcDbDatabase& database);

} // namespace host
