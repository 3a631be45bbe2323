// Extents of a display list as a view sees it.
#include "host/view/display_list.h"

namespace host {
namespace {

using Kind = DisplayPrimitive::Kind;

// Corners of what a text draws, in world coordinates.
void addText(AcDbExtents2d& box, const DisplayText& text, const AcGeMatrix3d& toDisplay) {
    for (int corner = 0; corner < 4; ++corner) {
        const double x = corner & 1 ? text.high.x : text.low.x, y = corner & 2 ? text.high.y : text.low.y;
        const AcGePoint3d p = toDisplay * (text.origin + text.right * x + text.up * y);
        box.addPoint({p.x, p.y});
    }
}

} // namespace

AcDbExtents2d seenExtents(const DisplayList& list, const ViewFrame& view,
                          const std::function<bool(std::size_t)>& counts) {
    AcDbExtents2d box;
    const AcGeMatrix3d toDisplay = view.worldToDisplay();
    for (std::size_t i = 0; i < list.primitives.size(); ++i) {
        const DisplayPrimitive& primitive = list.primitives[i];
        if (counts && !counts(i)) continue;
        if (primitive.kind == Kind::text) {
            addText(box, list.texts[primitive.first], toDisplay);
            continue;
        }
        const bool endless = primitive.kind == Kind::ray || primitive.kind == Kind::xline;
        for (std::uint32_t c = primitive.first; c < primitive.first + primitive.count && !endless; ++c) {
            for (const AcGePoint3d& world : list.contour(c)) {
                if (view.perspective) {
                    if (const auto p = view.seen(world)) box.addPoint({p->x, p->y});
                } else {
                    const AcGePoint3d p = toDisplay * world;
                    box.addPoint({p.x, p.y});
                }
            }
        }
    }
    return box;
}

} // namespace host
