// What a multileader looks like that came without a picture: its lines and its text, from its own data.
#pragma once
#include "host/db/kept.h"
#include "host/gi/draw.h"

namespace host {

// False when the data hold neither a line nor a text. Arrow heads, and blocks in the place of the text,
// aren't drawn.
bool drawMultileader(const KeptEntity& entity, AcGiWorldDraw& context);

} // namespace host
