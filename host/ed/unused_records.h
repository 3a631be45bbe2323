// Which records of a table nothing in the drawing uses: what PURGE may take out.
#pragma once
#include <vector>

#include "host/db/database.h"

namespace host {

// Records of the table (AcDbBlockTable::desc() and its kin: blocks, layers, linetypes, text styles,
// registered applications) that no living object refers to by id or by name, in the table's order. What every
// drawing needs (layer 0, the spaces, the linetypes ByLayer, ByBlock and Continuous, the style Standard) and
// what is current counts as used. A block that only an unused block shows is used until that one is gone.
std::vector<AcDbObjectId> unusedRecords(AcDbDatabase& database, const AcRxClass* tableClass);

} // namespace host
