// Pictures of the drawing's current space: as it is, or as it was read beside how it ends.
#pragma once
#include <string>
#include <vector>

#include "apps/corvane/exit_status.h"
#include "host/db/database.h"
#include "host/view/display_list.h"

namespace app {

// True when the path's ending is one of a picture's; else told, with `option` as where it was given.
bool isPicturePath(const std::string& path, const std::string& option);

ExitStatus drawPicture(const std::string& path, AcDbDatabase& database);

// What there is to see at one moment.
struct Snapshot {
    host::DisplayList list;
    long objects = 0;
    std::vector<AcGePoint3d> vertices; // of polylines, world coordinates
    static Snapshot take(AcDbDatabase& database);
};
ExitStatus drawBeforeAfter(const std::string& path, const Snapshot& before, const Snapshot& after,
                           bool markVertices);

} // namespace app
