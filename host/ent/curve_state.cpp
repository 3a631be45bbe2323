// The paths of the curves that were asked last. Few are kept: code that samples a curve asks the same
// one many times, and paths of large polylines are large.
#include "host/ent/curve_state.h"

#include <algorithm>
#include <array>

namespace host {

namespace {
struct Kept {
    std::uint64_t state = 0;
    std::shared_ptr<const CurvePath> path;
};
std::array<Kept, 16> thePaths; // the one asked last in front
} // namespace

std::shared_ptr<const CurvePath> keptPath(std::uint64_t state) {
    const auto found =
        std::find_if(thePaths.begin(), thePaths.end(), [&](const Kept& k) { return k.state == state; });
    if (found == thePaths.end()) return nullptr;
    std::rotate(thePaths.begin(), found, found + 1);
    return thePaths.front().path;
}

void keepPath(std::uint64_t state, std::shared_ptr<const CurvePath> path) {
    std::rotate(thePaths.begin(), thePaths.end() - 1, thePaths.end());
    thePaths.front() = {state, std::move(path)};
}

} // namespace host
