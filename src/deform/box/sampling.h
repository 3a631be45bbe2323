// The drawing's objects as samples that a cage can move.
#pragma once
#include <vector>

#include "core/host/database.h"
#include "core/host/geometry.h"

namespace corvane::deform {

// One object that follows the lattice.
struct FFDEntityRecord {
    AcDbObjectId entityId;           // of the spline that has taken its place, once that has happened
    std::vector<AcGePoint3d> points; // samples in world coordinates, as they were taken
    std::vector<AcGePoint3d> params; // the same as box coordinates
    bool rigid = false;              // text, multi-line text, block reference: goes as a whole
    bool closed = false;             // the spline through the samples is periodic
    bool rewritten = false;          // it has had a new shape since the samples were taken
    AcGePoint3d carried;             // of what is moved as a whole: where its first sample stands now
};

// Between the vertices that an object has (off), or every curve as many samples, which become the fit points
// of a spline.
struct Subdivision {
    bool on = false;
    int level = 1; // 1 to 10
};

// Pieces for a part of a curve of that length: a piece as long as the box's mean side gets 24 a level, a
// shorter one in proportion; never under `low` nor over 500.
int PieceCount(double length, const AcDbExtents& box, int level, int low);

// Fills `record`, params included. False when the object can't be opened, or has neither samples nor extents.
// By kind: text and block references give the middle of their extents; without subdivision lines and
// polylines of all classes give their vertices, splines their fit points or else their control points,
// circles, arcs and ellipses both ends and the centre, faces their corners; with it all curves are sampled
// along.
bool SampleEntity(AcDbObjectId id, const AcDbExtents& box, const Subdivision& subdivision,
                  FFDEntityRecord& record);
// Box coordinates of the samples anew.
void SetParams(FFDEntityRecord& record, const AcDbExtents& box);

} // namespace corvane::deform
