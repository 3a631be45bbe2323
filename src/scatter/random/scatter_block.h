// Scatters in the drawing: an anonymous block, and its reference with the parameters.
#pragma once
#include "scatter/random/generate.h"

namespace corvane::scatter {

// What became of a new scatter.
enum class Placing { done, noBlock, noReference };
struct PlacedScatter {
    Placing outcome = Placing::done;
    AcDbObjectId reference;
    bool editable = false; // the parameters stand on the reference
};
// The entities in a new anonymous block, and a reference to it at the origin of the current space.
template <class Params> PlacedScatter PlaceScatter(EntityList entities, const Params& params);

// Generates the scatter of the parameters anew into the reference, which shows the patterns where they belong
// wherever it has been taken. False, and nothing changed, when the parameters don't serve or nothing comes of
// them.
template <class Params>
bool RebuildScatter(AcDbObjectId reference, const Params& params, const ScatterProgress& progress = {});

// Progress shown to whoever waits, under a translated caption.
ScatterProgress ShownProgress();

} // namespace corvane::scatter
