// What the canvas shows of a drawing: its display list, kept by entity, so that a change draws only what has
// changed; and an index over the boxes of its primitives as the view sees them.
#pragma once
#include <memory>
#include <unordered_map>
#include <vector>

#include "apps/desk/box_index.h"
#include "apps/desk/coarse_shapes.h"
#include "apps/desk/screen_map.h"
#include "host/db/database.h"
#include "host/view/collector.h"
#include "host/view/database_source.h"

namespace desk {

// Primitives [first, end) of the list.
struct PrimitiveRange {
    std::uint32_t first = 0, end = 0;
};

class Scene {
public:
    // Draws the current space anew, as the view asks for it.
    void rebuild(AcDbDatabase& database, const ScreenMap& map);
    // What an update has changed.
    struct Touched {
        bool everything = false; // it came to a rebuild, so that numbers in the list mean something else
        bool anywhere = false;   // something endless has come or gone
        AcDbExtents box;         // of all that has, world coordinates
    };
    // Draws the entities named anew; those that have left the space go, those that have come are found
    // without being named. Shows the same as a rebuild. Needs a rebuild of the same drawing and space before.
    Touched update(AcDbDatabase& database, const ScreenMap& map, const std::vector<AcDbObjectId>& changed);
    void clear();
    // Holds more than is shown, in no order that matters: find() names what is.
    const host::DisplayList& list() const;
    // A primitive's contours, as finely as they can be told apart with that many pixels for a unit.
    host::DisplayContours contours(std::uint32_t primitive, double pixelsPerUnit) const {
        constexpr double kTold = 0.6; // pixels
        return coarse_.step() * pixelsPerUnit < kTold ? coarse_.contours(primitive)
                                                      : list().contours(list().primitives[primitive]);
    }

    // Makes the index ready for the side that the map shows the drawing from.
    void prepare(const ScreenMap& map);
    // The primitives that may show in a box of display coordinates of that view, in drawing order. Needs
    // prepare() since the last change; then several threads may ask.
    void find(const AcDbExtents2d& box, std::vector<std::uint32_t>& out) const;
    // Both in one.
    const std::vector<std::uint32_t>& within(const AcDbExtents2d& box, const ScreenMap& map);
    // The entities those belong to, each once, in drawing order.
    std::vector<AcDbObjectId> ownersWithin(const AcDbExtents2d& box, const ScreenMap& map);
    // Empty for what isn't shown.
    PrimitiveRange of(AcDbObjectId owner) const;
    // The entities that look different in each view, as they were drawn for the view of their last drawing.
    const std::vector<AcDbObjectId>& viewed() const { return viewed_; }
    // Of all that is shown, in display coordinates of the view.
    AcDbExtents2d extents(const host::ViewFrame& view) const;

private:
    struct Part {
        PrimitiveRange range;
        std::uint32_t rank = 0; // place in drawing order
        bool viewed = false;    // looks different in each view
    };
    void draw(AcDbObjectId id);
    void forget(PrimitiveRange range);
    void touch(PrimitiveRange range);
    std::vector<AcDbObjectId> takeOrder(const std::vector<AcDbObjectId>& entities);
    void index(const ScreenMap& map);
    void indexLoose(const ScreenMap& map);
    std::uint32_t rankOf(std::uint32_t primitive) const;

    bool isBefore(std::uint32_t a, std::uint32_t b) const;

    std::unique_ptr<host::DatabaseSource> source_;
    std::unique_ptr<host::DisplayCollector> collector_;
    CoarseShapes coarse_;
    std::vector<AcDbObjectId> viewed_;
    std::vector<AcDbObjectId>
        order_; // the space's entities as they were drawn; each one's rank is its place here
    std::unordered_map<AcDbObjectId, Part> parts_;
    std::vector<bool> gone_;           // by primitive
    std::vector<std::uint32_t> ranks_; // by owner's number in the list
    size_t goneCount_ = 0;
    Touched touched_; // so far

    ScreenMap side_; // that the index is made for
    bool indexed_ = false;
    std::vector<std::uint32_t> drawn_; // the primitives that it knows, in drawing order
    BoxIndex boxes_;                   // of drawn_
    std::uint32_t firstLoose_ = 0;     // primitives from here on have come since; they are tried one by one
    std::vector<AcDbExtents2d> loose_; // their boxes
    std::vector<std::uint32_t> endless_, found_;
};

} // namespace desk
