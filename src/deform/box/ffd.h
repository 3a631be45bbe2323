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

// One run's state.
class FFDCage final : public Cage {
public:
    // The objects as the user selected them, for the whole run; no lattice yet.
    explicit FFDCage(std::vector<AcDbObjectId> selectionIds) : selectionIds_(std::move(selectionIds)) {}

    // The box round the objects, a twentieth larger on each side, with one layer along axes where they have
    // no extent. False, and nothing changed, when no object has extents.
    bool FitBox();
    const AxisCounts& counts() const { return counts_; }
    void setCounts(const AxisCounts& counts) { counts_ = counts; } // the lattice as it stands keeps its own
    void setSubdivision(const Subdivision& subdivision) { subdivision_ = subdivision; }

    // Control points at rest over the box, with the counts set.
    void BuildLattice();
    // Samples all objects as they are now; those that can't be opened are left out. Call before BuildLattice
    // with the box as it was fitted: how densely curves are sampled goes by its size.
    void SampleEntities();
    const std::vector<FFDEntityRecord>& records() const { return records_; }
    const LatticeGrid& grid() const { return grid_; }

    // Gives every object the shape that the lattice has now. An object that nothing has moved yet is left
    // untouched. The number of objects that were given a shape.
    int ApplyDeformation();
    // The point of the volume at box coordinates.
    AcGePoint3d EvaluateLattice(double u, double v, double w) const;

    // S: asks for the counts and builds the lattice anew in the same box round the objects as they are now.
    bool ChangeCounts();
    // R: a fresh lattice in a fresh box.
    bool Reset();

    int size() const override { return int(controlPoints_.size()); }
    ControlPoint& point(int index) override { return controlPoints_[size_t(index)]; }
    const std::vector<CageEdge>& edges() const override { return edges_; }
    AcDbExtents box() const override { return box_; }
    void apply() override { ApplyDeformation(); }
    CString pickedText(int index) const override;
    bool keyword(wchar_t letter) override;

private:
    std::vector<AcGePoint3d> positions() const;
    std::vector<AcDbObjectId> selectionIds_;
    AxisCounts counts_{3, 3, 3};
    Subdivision subdivision_;
    AcDbExtents box_;
    LatticeGrid grid_;
    std::vector<FFDControlPoint> controlPoints_; // X slowest, Z fastest
    std::vector<CageEdge> edges_;
    std::vector<FFDEntityRecord> records_;
};

} // namespace corvane::deform
