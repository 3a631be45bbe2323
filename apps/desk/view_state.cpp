// Reading and writing the active viewport record; pan and zoom.
#include "apps/desk/view_state.h"

#include <algorithm>

#include "host/db/database.h"
#include "host/ed/prompting.h"

namespace desk {
namespace {

constexpr double kSmallest = 1e-9, kLargest = 1e15; // heights of views

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

void storeView(const host::ViewFrame& view) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (!database) return;
    const Unrecorded quietly(database->undoLog());
    AcDbObjectPointer<AcDbViewportTable> table(database->viewportTableId(), AcDb::kForRead);
    AcDbObjectId id;
    if (!table || table->getAt(L"*Active", id) != Acad::eOk) return;
    AcDbObjectPointer<AcDbViewportTableRecord> active(id, AcDb::kForWrite);
    if (!active) return;
    active->setCenterPoint(view.center);
    active->setHeight(view.height);
    active->setWidth(view.height * view.aspect);
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

} // namespace desk
