// Selection, undo and what is shown.
#include "deform/cage/cage_state.h"

#include <algorithm>
#include <cmath>

#include "core/host/editor.h"

namespace corvane::deform {

CageState::~CageState() {
    graphics.DropLatticeGraphics();
    acedRedraw(nullptr, 0);
}

void CageState::select(std::vector<int> indices) {
    for (int i = 0; i < cage.size(); ++i) cage.point(i).selectionState = ControlPoint::kPlain;
    selection_ = std::move(indices);
    for (const int i : selection_) cage.point(i).selectionState = ControlPoint::kSelected;
}

void CageState::clearSelection() {
    select({});
    customOrigin.reset();
    lockedHandle = kNoHandle;
}

std::vector<AcGePoint3d> CageState::selectedPositions() const {
    std::vector<AcGePoint3d> positions;
    for (const int i : selection_) positions.push_back(cage.point(i).position);
    return positions;
}

AcGePoint3d CageState::selectionMean() const {
    AcGeVector3d sum;
    for (const int i : selection_) sum += cage.point(i).position.asVector();
    return selection_.empty() ? AcGePoint3d::kOrigin : AcGePoint3d::kOrigin + sum / double(selection_.size());
}

GizmoPlace CageState::gizmo() const {
    GizmoPlace place{SelectionCentre(), GizmoSize(cage.box()), mode, 0, cage.axes()};
    if (mode == GizmoMode::scale) place.hiddenHandles = FlatHandles(selectedPositions(), place.axes);
    return place;
}

void CageState::PushUndoSnapshot() {
    CageSnapshot& snapshot = undoStack_.emplace_back();
    snapshot.reserve(size_t(cage.size()));
    for (int i = 0; i < cage.size(); ++i) {
        snapshot.push_back(cage.point(i).position);
        cage.point(i).trail.push_back(cage.point(i).position);
    }
}

std::optional<int> CageState::undo() {
    if (undoStack_.empty()) return std::nullopt;
    const CageSnapshot snapshot = std::move(undoStack_.back());
    undoStack_.pop_back();
    if (int(snapshot.size()) == cage.size())
        for (int i = 0; i < cage.size(); ++i) cage.point(i).position = snapshot[size_t(i)];
    cage.apply();
    deformed = true;
    redraw();
    return int(undoStack_.size());
}

void CageState::placePoint(int index, const AcGePoint3d& at) {
    cage.point(index).position = at;
    settle({&index, 1});
}

bool CageState::areFinite(std::span<const AcGePoint3d> places) {
    return std::all_of(places.begin(), places.end(), [](const AcGePoint3d& p) {
        return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
    });
}

bool CageState::setSelected(std::span<const AcGePoint3d> places) {
    for (size_t i = 0; i < places.size(); ++i) cage.point(selection_[i]).position = places[i];
    settle(selection_);
    return true;
}

void CageState::settle(std::span<const int> movedPoints) {
    cage.moved(movedPoints);
    if (!cage.shapeLocked()) cage.apply(), deformed = true;
    redraw();
}

void CageState::redraw() {
    acedRedraw(nullptr, 0);
    graphics.DrawLattice();
}

void CageState::rebuilt() {
    clearSelection();
    graphics.DropLatticeGraphics();
    redraw();
}

void CageState::showGizmo() {
    const GizmoPlace place = gizmo();
    TransientGizmo& shown = graphics.gizmo();
    shown.centre = place.centre, shown.size = place.size, shown.mode = place.mode;
    shown.hiddenHandles = place.hiddenHandles, shown.axes = place.axes;
    shown.lockedHandle = lockedHandle;
    shown.visible = true;
    graphics.updateGizmo();
}

void CageState::hideGizmo() {
    graphics.gizmo().visible = graphics.gizmo().rotating = false;
    graphics.gizmo().hoverHandle = kNoHandle;
    graphics.updateGizmo();
}

} // namespace corvane::deform
