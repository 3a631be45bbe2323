// What steers the hand: drawing along the axes, and the keys that switch it, object snaps and the grid.
#pragma once
#include <QString>
#include <optional>

#include "host/ge/point3d.h"

namespace desk {

// ORTHOMODE is on; a held Shift key turns it round for the time being.
bool orthoHolds(bool shift);
// The point moved onto the user's X or Y axis through the base, whichever it lies further along. World
// coordinates.
AcGePoint3d alongAxis(const AcGePoint3d& base, const AcGePoint3d& point);

// F3 (object snaps), F7 (grid) or F8 (along the axes): switches, and gives what to tell the user; nothing for
// other keys.
std::optional<QString> switchAid(int key);
bool aidIsOn(int key); // false for other keys

} // namespace desk
