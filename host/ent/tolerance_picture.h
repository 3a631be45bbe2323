// What a frame of geometric tolerances looks like: its cells with their texts.
#pragma once
#include "host/db/kept.h"
#include "host/gi/draw.h"

namespace host {

// False when there is no text. Symbols of the tolerance font are drawn as the characters that mean the same.
bool drawTolerance(const KeptEntity& entity, AcGiWorldDraw& context);

} // namespace host
