// The interactive loop of cages: two levels of prompts, one where single control points are picked and
// dragged, and one with a gizmo on the selected points that moves, scales and turns them.
#pragma once
#include "deform/cage/cage.h"

namespace corvane::deform {

struct CageOutcome {
    bool deformed = false; // the cage was applied at least once
};

// Runs until the user ends it. Meanwhile object snaps are off, and the cage is shown by transients; however
// it ends, OSMODE and AUTOSNAP come back, and everything shown is gone. Esc keeps what was deformed. The
// texts of the end are the caller's.
CageOutcome RunCageLoop(Cage& cage);

} // namespace corvane::deform
