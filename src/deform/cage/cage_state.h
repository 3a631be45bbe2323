// One run of the loop: the cage with what is selected of it, the steps to take back, the gizmo's state, and
// what is shown of all that. The prompts are in cage_loop.cpp, gizmo_loop.cpp and region_selection.cpp.
#pragma once
#include <optional>
#include <vector>

#include "deform/cage/view_reactor.h"

namespace corvane::deform {

// Said where a step is refused.
inline constexpr const wchar_t* kTooFar = L"\n控制点将超出数值范围，未作移动。";

class CageState {
public:
    explicit CageState(Cage& onCage) : cage(onCage), graphics(onCage), view(graphics) {}
    // However the run ends, nothing of it stays on the screen.
    ~CageState();
    CageState(const CageState&) = delete;
    CageState& operator=(const CageState&) = delete;

    Cage& cage;
    CageGraphics graphics;
    ViewReactor view;
    GizmoMode mode = GizmoMode::move;
    int lockedHandle = kNoHandle;
    std::optional<AcGePoint3d> customOrigin; // the pivot, where the user has set one
    short snapModes = 0;                     // the user's OSMODE, for prompts that are to snap
    bool deformed = false;                   // the cage was applied at least once

    // Indices of control points, in the order of their choice.
    const std::vector<int>& selection() const { return selection_; }
    // These and no others; their states follow.
    void select(std::vector<int> indices);
    // The end of a selection is that of its pivot and of the gizmo's lock.
    void clearSelection();
    std::vector<AcGePoint3d> selectedPositions() const;
    AcGePoint3d selectionMean() const; // the origin for an empty selection
    AcGePoint3d SelectionCentre() const { return customOrigin.value_or(selectionMean()); }
    GizmoPlace gizmo() const;

    // Keeps all positions to be taken back to.
    void PushUndoSnapshot();
    // Goes back to the last snapshot and applies the cage, under a shape lock, too. A snapshot of a cage with
    // another number of points is dropped without moving any. The number of snapshots that are left; nothing
    // when there was none.
    std::optional<int> undo();

    // Moves points to where `place` puts them, as one step to take back, and applies the cage unless its
    // shape is locked. False, and nothing done, when that is beyond all numbers for one of them.
    template <class Place> bool moveSelected(Place place);
    // The same without a step of its own.
    template <class Place> bool placeSelected(Place place);
    void placePoint(int index, const AcGePoint3d& at);

    // The screen anew, with everything of the cage on it.
    void redraw();
    // After another number of points: everything shown is made anew, nothing is selected.
    void rebuilt();
    // The gizmo as this state has it.
    void showGizmo();
    void hideGizmo();

private:
    void settle(std::span<const int> movedPoints);
    bool setSelected(std::span<const AcGePoint3d> places);
    template <class Place> std::vector<AcGePoint3d> placesOf(Place place) const {
        std::vector<AcGePoint3d> places = selectedPositions();
        for (AcGePoint3d& p : places) p = place(p);
        return places;
    }
    static bool areFinite(std::span<const AcGePoint3d> places);
    std::vector<int> selection_;
    std::vector<CageSnapshot> undoStack_;
};

template <class Place> bool CageState::moveSelected(Place place) {
    const std::vector<AcGePoint3d> places = placesOf(place);
    if (!areFinite(places)) return false;
    PushUndoSnapshot();
    return setSelected(places);
}

template <class Place> bool CageState::placeSelected(Place place) {
    const std::vector<AcGePoint3d> places = placesOf(place);
    return areFinite(places) && setSelected(places);
}

} // namespace corvane::deform
