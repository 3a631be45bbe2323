// A writer that gathers what it is given into a list: for renderings of an object in memory.
#pragma once
#include "host/db/groups.h"

namespace host {

class CapturingWriter final : public GroupWriter {
public:
    void write(const Group& group) override { groups.append(group); }
    GroupList groups;
};

} // namespace host
