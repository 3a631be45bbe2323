// What an entity looks like, as straight lines: for versions of drawing files that know nothing better.
#pragma once
#include <vector>

#include "host/db/entity.h"

namespace host::dxf {

struct DrawnLine {
    std::vector<AcGePoint3d> points; // two at least
    bool closed = false;             // the first point isn't repeated
};

struct Picture {
    std::vector<DrawnLine> lines;
    bool complete = true; // false when it took more than a million points
};

// Curves keep within 1e-4 of the entity's size. Texts aren't among the lines; areas come as their
// outlines. What goes on without end ends `reach` away from where it is defined.
Picture pictureOf(const AcDbEntity& entity, double reach);

} // namespace host::dxf
