// Making, updating and dropping what shows a cage.
#include "deform/cage/cage_graphics.h"

#include <algorithm>

#include "core/host/editor.h"
#include "core/properties.h"

namespace corvane::deform {
namespace {

const AcArray<int> kAllViewports;

void show(AcDbEntity& entity) {
    constexpr auto kMode = kAcGiDirectShortTerm;
    acgiGetTransientManager()->addTransient(&entity, kMode, 0, kAllViewports);
}
void update(AcDbEntity& entity) { acgiGetTransientManager()->updateTransient(&entity, kAllViewports); }
void drop(AcDbEntity& entity) { acgiGetTransientManager()->eraseTransient(&entity, kAllViewports); }

double diagonal(const AcDbExtents& box) { return box.minPoint().distanceTo(box.maxPoint()); }

int colorOf(const ControlPoint& point) {
    constexpr int kPlainColor = 210, kSelectedColor = 7, kMarkedColor = 8;
    return point.selectionState == ControlPoint::kSelected ? kSelectedColor
           : point.selectionState == ControlPoint::kMarked ? kMarkedColor
                                                           : kPlainColor;
}

} // namespace

double ControlPointSize(const AcDbExtents& box) { return std::clamp(0.008 * diagonal(box), 0.05, 5.0); }
double GizmoSize(const AcDbExtents& box) { return std::max(3 * ControlPointSize(box), 0.08 * diagonal(box)); }

// True when the dot looks different now.
bool CageGraphics::place(TransientCP& dot, const ControlPoint& point) const {
    constexpr double kSelectedSize = 1.5;
    const bool plain = point.selectionState == ControlPoint::kPlain;
    const double size = ControlPointSize(cage_.box()) * (plain ? 1 : kSelectedSize);
    const int color = colorOf(point);
    if (dot.position == point.position && dot.size == size && dot.colorIndex == color &&
        dot.facing == facing_)
        return false;
    dot.position = point.position, dot.size = size, dot.colorIndex = color, dot.facing = facing_;
    return true;
}

// True when the view has turned since.
bool CageGraphics::turnToViewer() {
    const ViewAxes now = CurrentViewAxes();
    if (now == facing_) return false;
    facing_ = gizmo_.facing = now;
    return true;
}

void CageGraphics::make() {
    lines_ = std::vector<TransientLine>(cage_.edges().size());
    for (size_t i = 0; i < lines_.size(); ++i) {
        const CageEdge& edge = cage_.edges()[i];
        lines_[i].start = cage_.point(edge.from).position;
        lines_[i].end = cage_.point(edge.to).position;
        show(lines_[i]);
    }
    dots_ = std::vector<TransientCP>(size_t(cage_.size()));
    for (size_t i = 0; i < dots_.size(); ++i) {
        place(dots_[i], cage_.point(int(i)));
        show(dots_[i]);
    }
    drawMarks();
    gizmo_.size = GizmoSize(cage_.box());
    show(gizmo_);
    made_ = true;
}

void CageGraphics::DrawLattice() {
    const bool turned = turnToViewer();
    if (!made_) make();
    if (turned && gizmo_.visible) updateGizmo();
    bool moved = false;
    for (size_t i = 0; i < lines_.size(); ++i) {
        const CageEdge& edge = cage_.edges()[i];
        const AcGePoint3d from = cage_.point(edge.from).position, to = cage_.point(edge.to).position;
        if (lines_[i].start == from && lines_[i].end == to) continue;
        lines_[i].start = from, lines_[i].end = to;
        update(lines_[i]);
        moved = true;
    }
    for (size_t i = 0; i < dots_.size(); ++i)
        if (place(dots_[i], cage_.point(int(i)))) update(dots_[i]);
    if (moved) drawMarks();
    if (cage_.shapeLocked()) drawLockMarker();
}

void CageGraphics::drawMarks() {
    dropMarks();
    marks_ = cage_.marks();
    for (const auto& mark : marks_) show(*mark);
}

void CageGraphics::dropMarks() {
    std::for_each(marks_.rbegin(), marks_.rend(), [](const auto& mark) { drop(*mark); });
    marks_.clear();
}

void CageGraphics::drawLockMarker() const {
    constexpr int kRed = 1, kHighlighted = 1;
    const double size = ControlPointSize(cage_.box()), half = 3 * size;
    const AcGePoint3d corner = cage_.box().maxPoint();
    const AcGePoint3d middle(corner.x + 4 * size, corner.y + 4 * size, corner.z);
    ads_point sides[4];
    for (int i = 0; i < 4; ++i) {
        AcGePoint3d at(middle.x + (i == 1 || i == 2 ? half : -half), middle.y + (i >= 2 ? half : -half),
                       middle.z);
        WcsToUcs(at);
        sides[i][X] = at.x, sides[i][Y] = at.y, sides[i][Z] = at.z;
    }
    for (int i = 0; i < 4; ++i) acedGrDraw(sides[i], sides[(i + 1) % 4], kRed, kHighlighted);
}

void CageGraphics::DropLatticeGraphics() {
    if (!made_) return;
    made_ = false;
    drop(gizmo_);
    dropMarks();
    std::for_each(dots_.rbegin(), dots_.rend(), drop);
    std::for_each(lines_.rbegin(), lines_.rend(), drop);
    dots_.clear();
    lines_.clear();
}

void CageGraphics::updateGizmo() { update(gizmo_); }

} // namespace corvane::deform
