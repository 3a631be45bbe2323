// What the interactive loop knows of a cage: control points that the user moves, lines between them, and the
// drawing's objects that follow. The lattice in a box is one kind of cage (deform/box); the loop itself, with
// gizmo, picking and selection, is in cage_loop.h.
#pragma once
#include <vector>

#include "core/host/geometry.h"
#include "core/language.h"

namespace corvane::deform {

struct ControlPoint {
    enum Selection { kPlain = 0, kSelected = 1, kMarked = 2 };
    AcGePoint3d initialPosition; // when the cage was built, or its shape lock was last undone
    AcGePoint3d position;        // the only one that deforms
    int selectionState = kPlain;
    std::vector<AcGePoint3d> trail; // where the point stood at each undo snapshot
};

// Indices of two neighbours.
struct CageEdge {
    int from = 0, to = 0;
};

// All positions at one moment, in the cage's order.
using CageSnapshot = std::vector<AcGePoint3d>;

class Cage {
public:
    virtual ~Cage() = default;
    virtual int size() const = 0;
    virtual ControlPoint& point(int index) = 0;
    const ControlPoint& point(int index) const { return const_cast<Cage*>(this)->point(index); }
    virtual const std::vector<CageEdge>& edges() const = 0;
    virtual AcDbExtents box() const = 0;
    // Gives the drawing's objects the shape that the control points ask for.
    virtual void apply() = 0;

    // What a single picked point is called: "[1, 0, 2]" in "\n已选中控制点 [%d, %d, %d]".
    virtual CString pickedText(int index) const = 0;
    // A keyword of the control-point prompt that the cage itself understands (S, R). Prints what came of it.
    // True when the control points are others than before, so that everything drawn of them is made anew.
    virtual bool keyword(wchar_t letter) = 0;
};

} // namespace corvane::deform
