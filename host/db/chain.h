// Between groups and result buffers, one value at a time. Only the sources of this room include it;
// whole chains are in dictionary.h.
#pragma once
#include <functional>

#include "host/db/groups.h"
#include "host/db/resbuf.h"

namespace host {

// Gives the name (an object id) that a handle stands for.
using ResolveHandle = std::function<AcDbObjectId(std::uint64_t)>;

// The buffer of the group at `at`; a point takes the groups of its further coordinates along. Moves `at`
// behind what was taken. The caller releases the buffer.
resbuf* takeBuffer(GroupList::Iterator& at, GroupList::Iterator end, const ResolveHandle& resolve);

// Appends a buffer's value as groups. False when its type can't be a group or a number isn't finite.
bool appendGroups(const resbuf& buffer, GroupList& groups);

} // namespace host
