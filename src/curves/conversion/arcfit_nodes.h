// Where the pieces of an arc fit may join, and in which directions.
#pragma once
#include <array>
#include <vector>

#include "curves/conversion/arcfit.h"

namespace corvane {

// A place on one stretch of curve. `arriving` and `leaving` are samples of the stretch: the same one, or the
// two of a gentle corner or a jump of the curvature.
struct FitNode {
    size_t arriving = 0, leaving = 0;
    std::array<AcGeVector2d, 4> directions; // unit; those that the pieces may have here
    int directionCount = 1;
    bool inflection = false; // the curve changes sides: no arc goes across
    bool corner = false;     // a gentle one: pieces may also arrive in one direction and leave in another
};

// The nodes of the samples from `first` to `last`, a stretch without sharp corners; numbered from `first`.
// The ends are nodes, and so are corners and jumps; of the others so many that each arc will have dozens to
// choose from.
std::vector<FitNode> FindFitNodes(const std::vector<FitSample>& samples, size_t first, size_t last,
                                  double tolerance);

} // namespace corvane
