// Viewports of sheets in R12, which tells what they show as xdata.
#pragma once
#include "host/db/database.h"

namespace host::dxf {

// What stands behind a VIEWPORT's common groups, from the own groups of a later version: its frame, then
// the view with the layers that are frozen in it.
GroupList oldViewport(const GroupList& own, AcDbDatabase& database);

} // namespace host::dxf
