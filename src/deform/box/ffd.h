// The box lattice at work on a drawing: its control points, the objects it holds, and what a run of CVFFD
// does with both. Prompts are in ffd_command.h; moving the points is the loop's (deform/cage).
#pragma once
#include <optional>
#include <vector>

#include "deform/box/lattice.h"
#include "deform/box/sampling.h"
#include "deform/cage/cage.h"

namespace corvane::deform {

struct FFDControlPoint : ControlPoint {
    int i = 0, j = 0, k = 0;
};

// What one run works on. Nothing of it is kept in the drawing.
struct FFDState {
    int countX = 3, countY = 3, countZ = 3; // control points along each axis, 1 to 16
    AcGePoint3d boxMin, boxMax, boxCentre;
    std::vector<FFDControlPoint> controlPoints; // X slowest, Z fastest
    std::vector<CageEdge> edges;
    std::vector<FFDEntityRecord> records;
    bool subdivide = false;
    int subdivisionLevel = 1;
};

class FFDCage final : public Cage {
public:
    // The objects as the user selected them, for the whole run; no lattice yet.
    explicit FFDCage(std::vector<AcDbObjectId> selectionIds) : selectionIds_(std::move(selectionIds)) {}

    // The box round the objects, a twentieth larger on each side, with one layer along axes where they have
    // no extent. False, and nothing changed, when no object has extents.
    bool FitBox();
    AxisCounts counts() const { return {state_.countX, state_.countY, state_.countZ}; }
    void setCounts(const AxisCounts& counts); // the lattice as it stands keeps its own
    void setSubdivision(const Subdivision& subdivision);

    // Control points at rest over the box, with the counts set.
    void BuildLattice();
    // Samples all objects as they are now; those that can't be opened are left out. Call before BuildLattice
    // with the box as it was fitted: how densely curves are sampled goes by its size.
    void SampleEntities();
    const FFDState& state() const { return state_; }

    // Gives every object the shape that the lattice has now. An object that nothing has moved yet is left
    // untouched. The number of objects that were given a shape.
    int ApplyDeformation();
    // The point of the volume at box coordinates.
    AcGePoint3d EvaluateLattice(double u, double v, double w) const;

    // S: asks for the counts and builds the lattice anew in the same box round the objects as they are now.
    bool ChangeCounts();
    // R: a fresh lattice in a fresh box.
    bool Reset();

    int size() const override { return int(state_.controlPoints.size()); }
    ControlPoint& point(int index) override { return state_.controlPoints[size_t(index)]; }
    const std::vector<CageEdge>& edges() const override { return state_.edges; }
    AcDbExtents box() const override { return {state_.boxMin, state_.boxMax}; }
    void apply() override { ApplyDeformation(); }
    CString pickedText(int index) const override;
    bool keyword(wchar_t letter) override;

private:
    std::vector<AcGePoint3d> positions() const;
    Subdivision subdivision() const { return {state_.subdivide, state_.subdivisionLevel}; }
    std::vector<AcDbObjectId> selectionIds_;
    FFDState state_;
    LatticeGrid grid_; // of the control points as they were built
};

} // namespace corvane::deform
