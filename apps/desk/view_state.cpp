// Reading and writing the active viewport record; pan and zoom.
#include "apps/desk/view_state.h"

#include <algorithm>
#include <cmath>

#include "host/db/database.h"
#include "host/ed/editor_reactor.h"
#include "host/ed/prompting.h"

namespace desk {
namespace {

constexpr double kSmallest = 1e-9, kLargest = 1e15; // heights of views
constexpr double kOrbitStep = 0.01;                 // radians a pixel
constexpr double kSteepest = M_PI / 2 - 1e-4;       // right above the picture has no upright any more

// While it lives changes leave no trace in the undo log.
class Unrecorded {
public:
    explicit Unrecorded(host::UndoLog& log)
        : log_(log), saved_(!log.changedSinceSave()), recorded_(log.recording()) {
        if (recorded_) log_.setRecording(false);
    }
    ~Unrecorded() {
        if (recorded_) log_.setRecording(true);
        if (saved_) log_.markSaved();
    }
    Unrecorded(const Unrecorded&) = delete;
    Unrecorded& operator=(const Unrecorded&) = delete;

private:
    host::UndoLog& log_;
    bool saved_, recorded_;
};

} // namespace

host::ViewFrame storedView() { return host::surroundings().view; }

void withoutTrace(const std::function<void()>& work) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (!database) return;
    const Unrecorded quietly(database->undoLog());
    work();
}

void storeView(const host::ViewFrame& view) {
    withoutTrace([&] { host::keepView(*acdbHostApplicationServices()->workingDatabase(), view); });
    host::viewChanged();
}

host::ViewFrame panned(const ScreenMap& map, const QPointF& from, const QPointF& to) {
    host::ViewFrame view = map.view();
    view.center.set(view.center.x - (to.x() - from.x()) / map.pixelsPerUnit(),
                    view.center.y + (to.y() - from.y()) / map.pixelsPerUnit());
    return view;
}

host::ViewFrame zoomed(const ScreenMap& map, const QPointF& at, double factor) {
    host::ViewFrame view = map.view();
    const AcGePoint2d fixed = map.toDisplay(at);
    const double height = std::clamp(view.height / factor, kSmallest, kLargest);
    view.center = fixed + (view.center - fixed) * (height / view.height);
    view.height = height;
    return view;
}

host::ViewFrame orbited(const ScreenMap& map, const QPointF& by, const AcGePoint3d& pivot) {
    host::ViewFrame view = map.view();
    const AcGeVector3d d = view.direction.normal();
    const double turn = by.x() * kOrbitStep, tilt = by.y() * kOrbitStep;
    const bool upright = std::hypot(d.x, d.y) > 1e-9;
    // Straight from above the picture's own twist says where its up side points to.
    const double around = (upright ? std::atan2(d.y, d.x) : -M_PI / 2 - view.twist) - turn;
    const double above = std::clamp(std::asin(std::clamp(d.z, -1.0, 1.0)) + tilt, -kSteepest, kSteepest);
    const AcGePoint3d before = view.worldToDisplay() * pivot;
    view.direction = AcGeVector3d(std::cos(above) * std::cos(around), std::cos(above) * std::sin(around),
                                  std::sin(above)) *
                     view.direction.length();
    view.twist = 0;
    const AcGePoint3d after = view.worldToDisplay() * pivot;
    view.center += AcGeVector2d(after.x - before.x, after.y - before.y);
    return view;
}

} // namespace desk
