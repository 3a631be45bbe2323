// Values that a kind can't have, and those that are put in their place when a drawing is recovered.
#pragma once
#include <string>
#include <string_view>

#include "host/db/groups.h"

namespace host::dxf {

// Goes along an object's groups, markers among them.
class ValueKeeper {
public:
    // What is wrong with the group, as a sentence without its end; null when nothing is. The group then
    // holds the value that serves instead, if there is one.
    const char* fault(Group& group);

private:
    std::string marker_;
    int zeros_ = 0; // components of a normal so far that are 0
};

// The name with characters that no name may hold replaced; the same name when it holds none.
std::wstring lawfulName(const std::wstring& name);

} // namespace host::dxf
