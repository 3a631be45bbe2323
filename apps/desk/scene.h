// What the canvas shows of a drawing: its display list, with an index over the boxes of its primitives as the
// view sees them, and which primitives belong to which entity.
#pragma once
#include <unordered_map>
#include <vector>

#include "apps/desk/box_index.h"
#include "apps/desk/screen_map.h"
#include "host/db/database.h"
#include "host/view/display_list.h"

namespace desk {

// Primitives [first, end) of the list.
struct PrimitiveRange {
    std::uint32_t first = 0, end = 0;
};

class Scene {
public:
    // Draws the current space anew, as the view asks for it.
    void rebuild(AcDbDatabase& database, const ScreenMap& map);
    void clear();
    const host::DisplayList& list() const { return list_; }

    // The primitives that may show in the box of display coordinates of the map's view, in drawing order. The
    // index is made anew when the drawing is seen from another side.
    const std::vector<std::uint32_t>& within(const AcDbExtents2d& box, const ScreenMap& map);
    // The entities those belong to, each once, in drawing order.
    std::vector<AcDbObjectId> ownersWithin(const AcDbExtents2d& box, const ScreenMap& map);
    // Empty for what isn't in the list.
    PrimitiveRange of(AcDbObjectId owner) const;

private:
    void index(const ScreenMap& map);
    host::DisplayList list_;
    ScreenMap side_; // that the index is made for
    bool indexed_ = false;
    BoxIndex boxes_;
    std::vector<std::uint32_t> endless_, found_;
    std::unordered_map<AcDbObjectId, PrimitiveRange> owners_;
};

} // namespace desk
