// Grips: the points by which what is selected is taken and moved with the mouse.
#pragma once
#include <optional>
#include <vector>

#include "host/db/entity.h"
#include "host/view/display_list.h"

namespace desk {

class Grips {
public:
    // Those of these entities, but for what stands on locked layers; none of more entities than
    // GRIPOBJLIMIT's usual hundred, and none with GRIPS at 0.
    void gather(const std::vector<AcDbObjectId>& entities);
    // Each place once. World coordinates.
    const std::vector<AcGePoint3d>& places() const { return places_; }

    // Takes hold of what has grips at the place, which then moves with the hand.
    void take(size_t place);
    void leave() { hot_.reset(); }
    bool hot() const { return hot_.has_value(); }
    const AcGePoint3d& base() const { return places_[*hot_]; } // where the one in hand was taken
    // The entities as they would be with the grip at the point.
    host::DisplayList preview(const AcGePoint3d& to) const;
    // Moves them; one that refuses stays as it is.
    void move(const AcGePoint3d& to) const;

private:
    struct Grip {
        AcDbObjectId entity;
        int index;
        size_t place;
    };
    // Calls `act(entity, indices)` for each entity that the grip in hand belongs to.
    template <class Act> void eachHeld(Act act) const;

    std::vector<AcGePoint3d> places_;
    std::vector<Grip> grips_;
    std::optional<size_t> hot_;
};

} // namespace desk
