// Telling those who watch the cursor: monitors, and the jig of the moment.
#include "host/ed/input_point.h"

#include <algorithm>
#include <utility>

#include "host/ed/document.h"
#include "host/ed/editor.h"
#include "host/ed/frontend.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/ui/window.h"

HOST_DEFINE_ABSTRACT_CLASS(AcEdInputPointMonitor, AcRxObject)

Acad::ErrorStatus AcEdInputPointManager::addPointMonitor(AcEdInputPointMonitor* monitor) {
    if (!monitor) return Acad::eNullObjectPointer;
    if (std::find(monitors_.begin(), monitors_.end(), monitor) != monitors_.end()) return Acad::eDuplicateKey;
    monitors_.push_back(monitor);
    return Acad::eOk;
}

Acad::ErrorStatus AcEdInputPointManager::removePointMonitor(AcEdInputPointMonitor* monitor) {
    return std::erase(monitors_, monitor) ? Acad::eOk : Acad::eKeyNotFound;
}

void AcEdInputPointManager::tell(const AcEdInputPoint& input) {
    if (std::exchange(telling_, true)) return;
    const auto copy = monitors_;
    for (AcEdInputPointMonitor* monitor : copy) {
        if (std::find(monitors_.begin(), monitors_.end(), monitor) == monitors_.end()) continue;
        AcEdInputPointMonitorResult output;
        monitor->monitorInputPoint(input, output);
    }
    telling_ = false;
}

namespace host {
namespace {

AcGePoint3d cursor;
CursorListener* listener = nullptr;

// Scripts have no mouse: its place on the screen is where the view shows the point.
void placeMouse(const AcGePoint3d& world) {
    resbuf size;
    const ViewFrame view = surroundings().view;
    const auto seen = view.seen(world);
    if (!seen || !(view.height > 0) || acedGetVar(L"SCREENSIZE", &size) != RTNORM) return;
    const double perUnit = size.resval.rpoint[Y] / view.height;
    const double x = size.resval.rpoint[X] / 2 + (seen->x - view.center.x) * perUnit;
    const double y = size.resval.rpoint[Y] / 2 - (seen->y - view.center.y) * perUnit;
    constexpr double kFar = 1e6;
    setMousePosition({LONG(std::clamp(x, -kFar, kFar)), LONG(std::clamp(y, -kFar, kFar))});
}

} // namespace

CursorListener::CursorListener() : former_(std::exchange(listener, this)) {}
CursorListener::~CursorListener() { listener = former_; }

const AcGePoint3d& cursorPosition() { return cursor; }

void cursorMoved(const AcGePoint3d& world, bool computed) {
    if (computed) cursor = world;
    if (computed && !frontEnd().interactive()) placeMouse(world);
    if (AcApDocument* document = curDoc())
        document->inputPointManager()->tell(AcEdInputPoint(document, cursor, computed));
    if (listener && computed) listener->cursorMoved(cursor);
}

} // namespace host
