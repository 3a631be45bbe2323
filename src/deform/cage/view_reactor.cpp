// Changes of the view, no more often than they can be drawn.
#include "deform/cage/view_reactor.h"

#include "core/host/system.h"

namespace corvane::deform {

ViewReactor::ViewReactor(CageGraphics& graphics) : graphics_(graphics) { acedEditor->addReactor(this); }
ViewReactor::~ViewReactor() { acedEditor->removeReactor(this); }

void ViewReactor::viewChanged() {
    dirty_ = true;
    catchUp();
}

bool ViewReactor::due() const {
    constexpr std::uint32_t kApart = 200; // milliseconds
    return !lastTicks_ || host_door::tickCount() - *lastTicks_ > kApart;
}

void ViewReactor::catchUp() {
    if (!dirty_ || !due()) return;
    dirty_ = false;
    lastTicks_ = host_door::tickCount();
    graphics_.DrawLattice();
    acedUpdateDisplay();
}

} // namespace corvane::deform
