// What the editor's own files share: the rules of the next prompt, asking the front end, coordinates of
// the moment, picking by place. Not for features.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "host/db/database.h"
#include "host/ed/answers.h"
#include "host/ed/frontend.h"
#include "host/view/view_frame.h"

namespace host {

// What acedInitGet set for the next prompt; taking them clears them.
struct InputRules {
    int bits = 0;
    std::vector<Keyword> keywords;
};
InputRules takeInputRules();

// Asks once. Runs transparent commands that are typed instead of an answer and asks again. Esc comes back as
// cancel. When nothing more will come the command is unwound (CommandUnwound), so that none goes on with
// values that nobody chose; while a dialog runs, and for commands called from code, that comes back as
// cancel, too, unless it is asked again and again.
PromptReply askFrontEnd(const PromptRequest& request);

// While one stands a dialog runs, which closes by itself when nothing more will come.
class DialogRuns {
public:
    DialogRuns();
    ~DialogRuns();
    DialogRuns(const DialogRuns&) = delete;
    DialogRuns& operator=(const DialogRuns&) = delete;
};
void printLine(const std::wstring& text);
// The keyword or other text behind the last RTKWORD, for acedGetInput.
void setLastInput(std::wstring text);

// The UCS, view and reading frame of the working drawing.
Surroundings surroundings();
// Keeps the view as that of the drawing's active viewport; nothing happens in one without.
void keepView(AcDbDatabase& database, const ViewFrame& view);
PointFrame pointFrame();
AcGePoint3d ucsToWorld(const AcGePoint3d& point);
AcGePoint3d worldToUcs(const AcGePoint3d& point);
void setLastPoint(const AcGePoint3d& ucs);
// Where the cursor stood last; scripts move it without answering.
const AcGePoint3d& cursorPosition();
// For front ends: the cursor has moved over the drawing. Input-point monitors hear it, and whoever drags.
// `computed` false: the view gives no point there.
void cursorMoved(const AcGePoint3d& world, bool computed = true);

// While one lives it hears where the cursor goes; the latest one alone.
class CursorListener {
public:
    CursorListener();
    virtual ~CursorListener();
    CursorListener(const CursorListener&) = delete;
    CursorListener& operator=(const CursorListener&) = delete;
    virtual void cursorMoved(const AcGePoint3d& world) = 0;

private:
    CursorListener* former_;
};

// Half the side of the square in which a pick finds things, in world units.
double pickTolerance();
// The entity of the current space that is drawn nearest to the world point, as seen; null when none is within
// the tolerance. Hidden layers don't count. Later ones win ties.
AcDbObjectId entityAt(const AcGePoint3d& world, double tolerance);
// The entities of the current space that touch the polygon (crossing) or lie wholly inside (window), in
// drawing order.
std::vector<AcDbObjectId> entitiesIn(const std::vector<AcGePoint3d>& worldPolygon, bool crossing);
// True for a world point that is seen within the polygon.
bool seenInside(const std::vector<AcGePoint3d>& worldPolygon, const AcGePoint3d& world);
// The crossing windows and polygons by which the last "Select objects" prompt was answered, in world
// coordinates.
const std::vector<std::vector<AcGePoint3d>>& lastCrossings();
// Those that an open path touches.
std::vector<AcDbObjectId> entitiesAlong(const std::vector<AcGePoint3d>& worldPath);
// The point of an entity's object snap nearest to the given one; nothing when it has none.
std::optional<AcGePoint3d> snapPoint(int snapBit, const AcGePoint3d& world);
// The entity that the answer names; null when there is none.
AcDbObjectId entityOf(const EntityAnswer& answer);

} // namespace host
