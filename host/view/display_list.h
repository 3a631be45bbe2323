// The picture of the moment as plain data: what is to be drawn, in world coordinates, with colours,
// widths and dashes resolved. Made by DisplayCollector; drawn by host/picture and the desk.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "host/db/objectid.h"
#include "host/ge/extents.h"
#include "host/gi/text_metrics.h"
#include "host/view/view_frame.h"

namespace host {

struct DisplayColor {
    std::uint32_t rgb = 0xFFFFFF; // 0xRRGGBB
    bool foreground = true;       // colour 7: black on light ground, white on dark
    auto operator<=>(const DisplayColor&) const = default;
};

struct DisplayStyle {
    DisplayColor color;
    std::uint32_t layer = 0; // index into DisplayList::layers
    int weight = 25;         // hundredths of a millimetre; 0 is the thinnest line there is
    std::uint8_t opacity = 255;
    auto operator<=>(const DisplayStyle&) const = default;
};

struct DisplayLayer {
    std::wstring name;
    bool plottable = true;
};

// A line of text: its own axes, from the start of the baseline; measured at a height of 1.
struct DisplayText {
    std::wstring text;
    std::uint32_t face = 0; // index into DisplayList::faces
    AcGePoint3d origin;
    AcGeVector3d right, up;
    AcGePoint2d low{}, high{}; // the box of its letters along the two
};

struct DisplayPrimitive {
    enum class Kind : std::uint8_t {
        line,   // contours as open paths; a contour of one point is a dot
        area,   // contours filled together by the odd-even rule
        ribbon, // contours filled together by the nonzero rule
        text,   // texts[first]
        ray,
        xline // two points; goes on beyond the second, beyond both
    } kind = Kind::line;
    std::uint32_t style = 0; // index into styles
    std::uint32_t owner = 0; // index into owners
    std::uint32_t first = 0; // first contour; for text its index
    std::uint32_t count = 0; // of contours
    Adesk::GsMarker marker = 0;
    AcDbExtents box; // of the points; for rays of the two that are given
};

// The contours of a primitive.
struct DisplayContours {
    std::span<const AcGePoint3d> points; // of all primitives
    std::span<const std::uint32_t> ends;
    std::uint32_t first = 0, count = 0;

    std::span<const AcGePoint3d> operator[](std::uint32_t i) const {
        const std::uint32_t at = first + i, from = at == 0 ? 0 : ends[at - 1];
        return points.subspan(from, ends[at] - from);
    }
};

struct DisplayList {
    std::vector<AcGePoint3d> points;
    std::vector<std::uint32_t>
        contourEnds; // each contour's points end here and begin where the one before ends
    std::vector<DisplayPrimitive> primitives;
    std::vector<DisplayStyle> styles;
    std::vector<DisplayLayer> layers;
    std::vector<DisplayText> texts;
    std::vector<TextFace> faces;
    std::vector<AcDbObjectId> owners; // the drawing's entities in order; null for others
    AcDbExtents extents;              // of everything finite
    bool truncated = false;           // a limit was reached, or the user wanted no more

    std::span<const AcGePoint3d> contour(std::uint32_t index) const {
        const std::uint32_t from = index == 0 ? 0 : contourEnds[index - 1];
        return std::span(points).subspan(from, contourEnds[index] - from);
    }
    DisplayContours contours(const DisplayPrimitive& primitive) const {
        return {points, contourEnds, primitive.first, primitive.count};
    }
    const DisplayStyle& styleOf(const DisplayPrimitive& primitive) const { return styles[primitive.style]; }
};

// The box of all that is finite in display coordinates of the view, or of the primitives that `counts` says
// yes to by their number; an empty one when there is none.
AcDbExtents2d seenExtents(const DisplayList& list, const ViewFrame& view,
                          const std::function<bool(std::size_t)>& counts = {});

} // namespace host
