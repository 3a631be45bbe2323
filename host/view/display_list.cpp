// Extents of a display list as a view sees it.
#include "host/view/display_list.h"

namespace host {
namespace {

using Kind = DisplayPrimitive::Kind;

// Corners of what a text draws, in world coordinates.
void addText(AcDbExtents2d& box, const DisplayList& list, const DisplayText& text,
             const AcGeMatrix3d& toDisplay) {
    const TextExtents size = textMetrics()->measure(list.faces[text.face], 1, text.text);
    for (int corner = 0; corner < 4; ++corner) {
        const double x = corner & 1 ? size.high.x : size.low.x, y = corner & 2 ? size.high.y : size.low.y;
        const AcGePoint3d p = toDisplay * (text.origin + text.right * x + text.up * y);
        box.addPoint({p.x, p.y});
    }
}

} // namespace

AcDbExtents2d seenExtents(const DisplayList& list, const ViewFrame& view) {
    AcDbExtents2d box;
    const AcGeMatrix3d toDisplay = view.worldToDisplay();
    for (const DisplayPrimitive& primitive : list.primitives) {
        if (primitive.kind == Kind::text) {
            addText(box, list, list.texts[primitive.first], toDisplay);
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
