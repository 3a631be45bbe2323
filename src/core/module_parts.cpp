// The rows of the module's parts.
#include "core/module_parts.h"

#include <ranges>

#include "assoc/blend/blend.h"

namespace corvane {
namespace {

struct Part {
    void (*load)();
    void (*unload)();
};
constexpr Part kParts[] = {
    {LoadBlends, UnloadBlends},
};

} // namespace

void LoadModuleParts() {
    for (const Part& part : kParts) part.load();
}
void UnloadModuleParts() {
    for (const Part& part : std::views::reverse(kParts)) part.unload();
}

} // namespace corvane
