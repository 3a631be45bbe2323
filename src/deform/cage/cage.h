// What the interactive loop knows of a cage: control points that the user moves, lines between them, and the
// drawing's objects that follow. The lattice in a box is one kind of cage (deform/box); the loop itself, with
// gizmo, picking and selection, is in cage_loop.h.
#pragma once
#include <array>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "core/host/database.h"
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

// The directions of the gizmo's handles X, Y and Z: unit vectors square to each other, in world coordinates.
using GizmoAxes = std::array<AcGeVector3d, 3>;

// What the loop says and takes in its own way for one kind of cage. Texts are sources of translations.
struct CageManners {
    const wchar_t *menu, *prompt; // of the control-point prompt
    const wchar_t* leaving;       // said of key X
    const wchar_t* keywords;      // of it, each a letter
    const wchar_t *undone, *undoneLast;
    const wchar_t *gizmoUndone, *gizmoUndoneLast; // while the gizmo is there
    bool clickLocksRotationPlane;                 // else hovering and the space key alone do
};

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

    // What is said of a single picked point: "\n已选中控制点 [%d, %d, %d]", filled in.
    virtual CString pickedText(int index) const = 0;
    // A keyword of the control-point prompt that the cage itself understands (S, R). Prints what came of it.
    // True when the control points are others than before, so that everything drawn of them is made anew.
    virtual bool keyword(wchar_t letter) = 0;

    // The manners of the box lattice, unless a cage has its own.
    virtual const CageManners& manners() const;
    virtual GizmoAxes axes() const {
        return {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis};
    }
    // Set while a gizmo stands: a cage whose axes have changed meanwhile calls it.
    std::function<void()> turnGizmo;
    // These were moved by the user: a cage whose points hang together takes others along.
    virtual void moved(std::span<const int> indices) { (void)indices; }
    // Key L, and what is printed of it. Here it is the shape lock, under which control points move and
    // objects don't; undoing it makes where the points are now their initial positions.
    virtual void toggleLock();
    bool shapeLocked() const { return shapeLocked_; }
    // What else is shown of the cage, drawn anew whenever the points have moved.
    virtual std::vector<std::unique_ptr<AcDbEntity>> marks() const { return {}; }

private:
    bool shapeLocked_ = false;
};

} // namespace corvane::deform
