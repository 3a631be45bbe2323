// Polylines from lists of coordinates as text: plain data in and out.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "core/host/geometry.h"

namespace corvane {

struct CoordinateFile {
    struct BadLine {
        int number; // from 1
        std::wstring text;
    };
    int lines = 0;
    std::vector<std::vector<AcGePoint3d>> rows; // in the order of the file; none is empty
    std::vector<BadLine> badLines;              // left out
};

// One point a line: X and Y, or X, Y and Z and whatever follows, parted by commas, semicolons, the Chinese
// forms of these or upright strokes; or by blanks alone, when all parts are numbers. "//" begins a comment. A
// line with fewer than two fields, such as an empty one, ends the row of points. Full-width digits and signs
// count as plain ones. Fields that should be finite numbers and aren't make a bad line.
CoordinateFile ReadCoordinates(std::wstring_view text);

} // namespace corvane
