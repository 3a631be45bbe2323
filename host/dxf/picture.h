// What an entity looks like, as straight lines and lines of text: for versions of drawing files that know
// nothing better.
#pragma once
#include <vector>

#include "host/db/entity.h"

namespace host::dxf {

struct DrawnLine {
    std::vector<AcGePoint3d> points; // two at least
    bool closed = false;             // the first point isn't repeated
};

// One line of text; the plane's normal is the Z axis when nothing else is known.
struct DrawnText {
    AcGePoint3d place;
    AcGeVector3d normal, along;
    double height = 0, width = 1, oblique = 0; // oblique in radians
    std::wstring text;
};

struct Picture {
    std::vector<DrawnLine> lines;
    std::vector<DrawnText> texts;
    bool complete = true; // false when it took more than a million points
};

// Curves keep within 1e-4 of the entity's size. Areas come as their outlines. What goes on without end ends
// `reach` away from where it is defined.
Picture pictureOf(const AcDbEntity& entity, double reach);

} // namespace host::dxf
