// How text lies: the face of a style, the frame that a line is set in, and the lines of wrapped text.
#pragma once

#include <string>
#include <vector>

#include "host/db/symboltable.h"
#include "host/ge/extents.h"
#include "host/gi/textstyle.h"

namespace host {

// The face that a text style names; the plain one for ids that name none.
TextFace faceOf(AcDbObjectId style);

// A place for one line: its baseline's start, and unit vectors along and above it. Mirrored text runs
// against them.
struct TextFrame {
    AcGePoint3d origin;
    AcGeVector3d right, up;
    AcGePoint3d at(double x, double y) const { return origin + right * x + up * y; }
    AcGeVector3d normal() const { return right.crossProduct(up); }
};
// In the plane of a normal, turned by an angle in radians.
TextFrame textFrame(const AcGePoint3d& origin, const AcGeVector3d& normal, double rotation);
// The box of a line of coded text, its baseline's start alone when nothing is drawn.
AcDbExtents textExtents(const TextFrame& frame, const TextFace& face, double height,
                        const std::wstring& coded);

// Lines broken at \n, and, with a width above 0, at blanks and between characters of the Far East where
// a line would grow wider; words that are wider stay whole.
struct WrappedLine {
    std::wstring text;
    double width = 0;
};
std::vector<WrappedLine> wrapText(const std::wstring& text, const TextFace& face, double height,
                                  double width);

} // namespace host
