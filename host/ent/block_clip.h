// The boundary that a block reference is cut to: the filter in its extension dictionary, as CAD programs keep
// it.
#pragma once
#include <optional>
#include <vector>

#include "host/ent/blockreference.h"
#include "host/gi/geometry.h"

namespace host {

struct BlockClip {
    AcGiClipBoundary boundary;
    AcGeVector3d normal = AcGeVector3d::kZAxis; // of the boundary's plane
    AcGePoint3d origin;                         // in that plane
    bool shown = true;                          // off: the whole block shows, the boundary is kept
    // The boundary's corners where the reference shows them now; two corners make four.
    std::vector<AcGePoint3d> corners(const AcDbBlockReference& reference) const;
};
// Nothing when the reference has none.
std::optional<BlockClip> blockClip(const AcDbBlockReference& reference);

// Gives the reference a new boundary (world points, seen along the normal of their plane), in place of the
// one it has. eInvalidInput for fewer than three points.
Acad::ErrorStatus setBlockClip(AcDbObjectId reference, const std::vector<AcGePoint3d>& polygon,
                               const AcGeVector3d& normal);
// Shows the boundary's effect or the whole block; takes the boundary away. eKeyNotFound when there is none.
Acad::ErrorStatus showBlockClip(AcDbObjectId reference, bool on);
Acad::ErrorStatus eraseBlockClip(AcDbObjectId reference);

} // namespace host
