// Windows metafiles as plain data: filled polygons and stroked polylines on a sheet. Written as placeable
// files, read from any; what is drawn on them is the caller's.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/ge/point2d.h"

namespace host {

struct MetafileShape {
    enum class Kind : std::uint8_t { stroke, oddEven, nonZero } kind = Kind::stroke;
    std::uint32_t rgb = 0; // 0xRRGGBB
    double width = 0;      // of a stroke, sheet units; 0: the thinnest line
    // Contours one after the other: each ends at its entry in `ends`. Those of filled shapes are closed.
    std::vector<AcGePoint2d> points;
    std::vector<std::uint32_t> ends;
};

// The sheet runs from (0, 0) at the lower left to (width, height).
struct Metafile {
    double width = 0, height = 0;
    std::vector<MetafileShape> shapes; // later ones lie above
    std::size_t skipped = 0;           // records with something to see that were not understood, when read
};

// The bytes of a placeable metafile whose longer side prints as ten inches. Coordinates are 16 bit: the
// longer side has kMetafileSteps steps, so places are off by a 60000th of it at most. What lies more than a
// twentieth of the sheet outside is cut off. Empty when a side of the sheet isn't above 0.
inline constexpr int kMetafileSteps = 30000;
std::string metafileBytes(const Metafile& sheet);

// Reads placeable and plain metafiles, in sheet units of the file's own. `error` tells why nothing was
// read; a record that runs beyond the file's end is such a reason. Polylines, polygons, lines and rectangles
// are understood; bitmaps, text and curves are counted as skipped.
struct MetafileReading {
    Metafile sheet;
    std::string error;
};
MetafileReading readMetafile(std::string_view bytes);

namespace wmf { // record numbers and constants of the format, for both directions
inline constexpr std::uint32_t kPlaceableKey = 0x9AC6CDD7;
enum Record : std::uint16_t {
    kEnd = 0x0000,
    kSaveDc = 0x001E,
    kSetBackgroundMode = 0x0102,
    kSetMapMode = 0x0103,
    kSetPolygonFill = 0x0106,
    kRestoreDc = 0x0127,
    kSelectObject = 0x012D,
    kDeleteObject = 0x01F0,
    kSetWindowOrigin = 0x020B,
    kSetWindowExtent = 0x020C,
    kLineTo = 0x0213,
    kMoveTo = 0x0214,
    kCreatePen = 0x02FA,
    kCreateBrush = 0x02FC,
    kPolygon = 0x0324,
    kPolyline = 0x0325,
    kRectangle = 0x041B,
    kPolyPolygon = 0x0538
};
inline constexpr std::uint16_t kNullPen = 5, kHollowBrush = 1, kAlternate = 1, kWinding = 2, kAnisotropic = 8;
} // namespace wmf

} // namespace host
