// What a blend is made from, and its form in the xdata of its block reference.
#pragma once
#include <optional>
#include <vector>

#include "assoc/spacing_dialog.h"
#include "core/host/database.h"

namespace corvane {

struct BlendRecord {
    CopyFamily family; // 1 to 100 copies
    AcDbObjectId curve1, curve2;
    AcDbObjectId guide1, guide2; // steer the starts and the ends of the copies
    bool hasGuide1 = false, hasGuide2 = false;
    bool reversed1 = false, reversed2 = false; // the curve runs the other way in the blend
    // The start points of both curves, as the blend runs along them, when it was made: a curve that is turned
    // round later doesn't twist the blend.
    bool hasAnchors = false;
    AcGePoint3d anchor1, anchor2;

    bool operator==(const BlendRecord&) const = default;
    // The source curves and the guides that there are.
    std::vector<AcDbObjectId> Curves() const;
};

// The record in the xdata of a block reference, of formats 1 (without turned curves), 2 (without anchors)
// and 3. Numbers that are missing have their usual values. Nothing when there is none, it is of another
// format, or one of the source curves isn't in the drawing any more; an erased one still is until the drawing
// is saved.
std::optional<BlendRecord> ReadBlend(const AcDbObject& reference);
std::optional<BlendRecord> ReadBlend(AcDbObjectId reference);
// In format 3. The application is registered on the way.
Acad::ErrorStatus WriteBlend(AcDbObjectId reference, const BlendRecord& record);

} // namespace corvane
