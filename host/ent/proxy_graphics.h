// The picture that programs leave beside an entity for those who don't know its kind: a list of drawing
// calls in binary form, as files hold it in groups 310.
#pragma once
#include <string>
#include <string_view>

#include "host/db/groups.h"
#include "host/gi/draw.h"

namespace host {

// The bytes of the picture among an entity's groups: those of 310 behind the first count (92 or 160) that has
// any. Empty when there is none.
std::string proxyGraphics(const GroupList& groups);

// Draws the picture; what isn't known in it is passed over, what is cut off or no number ends it. False
// when nothing was drawn.
bool drawProxyGraphics(std::string_view picture, AcGiWorldDraw& context);

} // namespace host
