// From traits as drawings state them to styles as they are drawn: by layer, by block, layer 0 inside
// blocks, default widths. Remembers layers, linetypes and styles it has seen.
#pragma once

#include <map>

#include "host/view/dashes.h"
#include "host/view/display_list.h"
#include "host/view/drawing_source.h"

namespace host {

// What a block reference hands down to what stands in its block.
struct Inherited {
    DisplayColor color;
    AcDbObjectId layer, linetype; // linetype: never by layer or by block; null draws full lines
    int weight = AcDb::kLnWtByLwDefault;
    bool isTop = true;
};

struct ResolvedStyle {
    std::uint32_t style = 0;
    const std::vector<double>* dashes = nullptr; // never null once resolved
    Inherited handedDown;                        // to a block whose reference has these traits
    bool shown = true;                           // its layer is on
};

class StyleResolver {
public:
    StyleResolver(DrawingSource& source, DisplayList& list, bool plotOnly)
        : source_(source), list_(list), plotOnly_(plotOnly) {}

    ResolvedStyle resolve(const TraitValues& traits, std::uint8_t opacity, const Inherited& inherited);
    bool isFrozen(AcDbObjectId layer) { return layerAt(layer).look.frozen; }

private:
    struct Layer {
        LayerLook look;
        std::uint32_t index = 0;
    };
    const Layer& layerAt(AcDbObjectId id);
    const LinetypeLook& linetypeAt(AcDbObjectId id);
    AcDbObjectId linetypeOf(const TraitValues& traits, const LayerLook& layer, const Inherited& inherited);
    std::uint32_t styleIndex(const DisplayStyle& style);

    DrawingSource& source_;
    DisplayList& list_;
    bool plotOnly_;
    // Looked up by address; nothing is ever walked in that order.
    std::map<host::IdCell*, Layer> layers_;
    std::map<host::IdCell*, LinetypeLook> linetypes_;
    std::map<DisplayStyle, std::uint32_t> styles_;
};

} // namespace host
