// Scatters as new entities: along curves, and inside boundaries. Every call gives another arrangement, unless
// the clock and the tick count are set.
#pragma once
#include <functional>

#include "core/editable_block.h"
#include "scatter/random/generator.h"
#include "scatter/random/params.h"

namespace corvane::scatter {

// Hears the share done, 0 to 1; gives false to stop. Empty: nobody wants to know.
using ScatterProgress = std::function<bool(double share)>;

// A sequence that begins with the seed, the time and the tick count.
Generator SeededNow(int seed);

// Patterns along the curves that are the sources of the parameters, one for each of the count, some of which
// may be given up; with overlap deletion those that touch one made before them go again. False when nothing
// came of it: no curve of more than 1e-9 in length, no template, a count below 1, or stopped. `random` is
// used in a fixed order of draws: position, offset (radius, angle), scale, template, jitter.
bool GenerateOnCurves(AcDbDatabase* database, const ScatterOnCurveParams& params, Generator random,
                      EntityList& made, const ScatterProgress& progress = {});

// Patterns inside the boundaries that are the sources, by rejection: at most 200 attempts a pattern, so that
// full boundaries end with fewer. False when nothing came of it. Draws: boundary, x, y, scale, template,
// character, rotation.
bool GenerateInRegions(AcDbDatabase* database, const ScatterInRegionParams& params, Generator random,
                       EntityList& made, const ScatterProgress& progress = {});

// The same by the time of the call.
bool Generate(const ScatterOnCurveParams& params, EntityList& made, const ScatterProgress& progress = {});
bool Generate(const ScatterInRegionParams& params, EntityList& made, const ScatterProgress& progress = {});

} // namespace corvane::scatter
