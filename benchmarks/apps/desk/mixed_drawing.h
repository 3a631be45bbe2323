// A drawing of many entities of mixed kinds, as plans have them.
#pragma once
#include <memory>

#include "host/db/database.h"

namespace deskbench {

// `count` entities in model space, spread over a square whose side grows with their number: lines, circles,
// arcs, polylines (some dashed, some wide), ellipses, splines, texts, filled areas and block references. The
// same each time.
std::unique_ptr<AcDbDatabase> mixedDrawing(int count);

} // namespace deskbench
