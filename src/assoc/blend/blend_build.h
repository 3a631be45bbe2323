// The copies of a blend: computed from its curves as they are now, and put into its block.
#pragma once
#include <optional>
#include <vector>

#include "assoc/blend/blend_record.h"
#include "core/host/entities.h"

namespace corvane {

// All copies in world coordinates, one after the other, each of the same number of points.
struct BlendCopies {
    int samples = 0;
    std::vector<AcGePoint3d> points{};
    std::vector<AcCmColor> colors{}; // one a copy
    AcGePoint3d base{};              // where the blend begins: the first sample of the first curve
};

// Six samples for each of SURFTAB1, 36 where that makes fewer than four, 12 000 at most.
int BlendSamples(int surftab1);

// Nothing when a source curve can't be opened or sampled, as when it is erased or shorter than 0.0001. Guides
// that can't be opened, or are as short, don't steer. A guide runs from the first curve to the second; one
// that was drawn the other way is taken turned round.
std::optional<BlendCopies> ComputeBlend(const BlendRecord& record);

// Splines through the copies' points, `toBlock` leading from the world to the block. `clearFirst` erases what
// stands in the block. Copies shorter than 0.0001 are left out. False when the block can't be opened, with
// nothing changed.
bool FillBlendBlock(AcDbObjectId block, const BlendCopies& copies, const AcGeMatrix3d& toBlock,
                    bool clearFirst);

} // namespace corvane
