// Input-point monitors: they hear where the cursor stands while it moves over a drawing. Front ends, and
// scripts through `move x,y` and the points they answer, tell of it by host::cursorMoved (prompting.h).
#pragma once
#include <vector>

#include "host/db/rx.h"
#include "host/ge/point3d.h"

class AcApDocument;

// Where the cursor stands. Points are in world coordinates.
class AcEdInputPoint {
public:
    AcEdInputPoint(AcApDocument* document, const AcGePoint3d& world, bool computed)
        : document_(document), point_(world), computed_(computed) {}
    AcApDocument* document() const { return document_; }
    // False where the view gives no point, such as on a plane that is seen edge-on; then the last one stands.
    bool pointComputed() const { return computed_; }
    // With object snaps applied.
    const AcGePoint3d& computedPoint() const { return point_; }

private:
    AcApDocument* document_;
    AcGePoint3d point_;
    bool computed_;
};

// What a monitor might add to what the host shows; monitors here show what they have by transients.
class AcEdInputPointMonitorResult {};

class AcEdInputPointMonitor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEdInputPointMonitor)
public:
    // Runs inside the prompt that waits. What it returns changes nothing for others.
    virtual Acad::ErrorStatus monitorInputPoint(const AcEdInputPoint& input,
                                                AcEdInputPointMonitorResult& output) = 0;
};

// A document's monitors; AcApDocument::inputPointManager() gives it.
class AcEdInputPointManager {
public:
    // eNullObjectPointer for null, eDuplicateKey for one that is there. The monitor stays the caller's, who
    // takes it out before it dies.
    Acad::ErrorStatus addPointMonitor(AcEdInputPointMonitor* monitor);
    Acad::ErrorStatus removePointMonitor(AcEdInputPointMonitor* monitor); // eKeyNotFound
    // Monitors may come and go meanwhile. A move that one of them causes itself is not told.
    void tell(const AcEdInputPoint& input);

private:
    std::vector<AcEdInputPointMonitor*> monitors_;
    bool telling_ = false;
};
