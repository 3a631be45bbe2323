// What is shown of a cage: its points and lines, marks of its own, and the gizmo, as transients. They are
// made once and then updated in place, each only when it has changed.
#pragma once
#include <memory>
#include <vector>

#include "deform/cage/transients.h"

namespace corvane::deform {

// Sizes in world units for a cage of that box.
double ControlPointSize(const AcDbExtents& box);
double GizmoSize(const AcDbExtents& box);

class CageGraphics {
public:
    explicit CageGraphics(Cage& cage) : cage_(cage) {}
    ~CageGraphics() { DropLatticeGraphics(); }
    CageGraphics(const CageGraphics&) = delete;
    CageGraphics& operator=(const CageGraphics&) = delete;

    // Makes everything on first use, else updates what has changed since, also the side it is seen from;
    // under a shape lock its marker is drawn on the screen, too. Call after every redraw.
    void DrawLattice();
    // Takes everything away.
    void DropLatticeGraphics();
    // Hidden until it is made visible. Call updateGizmo after changes.
    TransientGizmo& gizmo() { return gizmo_; }
    void updateGizmo();

private:
    void make();
    bool place(TransientCP& dot, const ControlPoint& point) const;
    bool turnToViewer();
    void drawMarks();
    void dropMarks();
    void drawLockMarker() const;

    Cage& cage_;
    bool made_ = false;
    ViewAxes facing_;
    // In the order of the cage; they don't move once they are made, since the transient manager knows them.
    std::vector<TransientLine> lines_;
    std::vector<TransientCP> dots_;
    std::vector<std::unique_ptr<AcDbEntity>> marks_;
    TransientGizmo gizmo_;
};

} // namespace corvane::deform
