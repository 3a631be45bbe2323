// Resolution of by layer and by block.
#include "host/view/style_resolver.h"

namespace host {
namespace {

DisplayColor plainColor(const AcCmColor& color) {
    if (color.isByLayer() || color.isByBlock() || color.isForeground() || color.isNone()) return {};
    return {color.rgb(), false};
}

} // namespace

const StyleResolver::Layer& StyleResolver::layerAt(AcDbObjectId id) {
    const auto found = layers_.find(id.cell());
    if (found != layers_.end()) return found->second;
    Layer layer{source_.layer(id), static_cast<std::uint32_t>(list_.layers.size())};
    list_.layers.push_back({layer.look.name, layer.look.plottable});
    return layers_.emplace(id.cell(), std::move(layer)).first->second;
}

const LinetypeLook& StyleResolver::linetypeAt(AcDbObjectId id) {
    const auto found = linetypes_.find(id.cell());
    if (found != linetypes_.end()) return found->second;
    LinetypeLook look = id.isNull() ? LinetypeLook{LinetypeKind::byLayer, {}} : source_.linetype(id);
    return linetypes_.emplace(id.cell(), std::move(look)).first->second;
}

AcDbObjectId StyleResolver::linetypeOf(const TraitValues& traits, const LayerLook& layer,
                                       const Inherited& inherited) {
    switch (linetypeAt(traits.linetype).kind) {
    case LinetypeKind::byLayer: return layer.linetype;
    case LinetypeKind::byBlock: return inherited.linetype;
    case LinetypeKind::pattern: break;
    }
    return traits.linetype;
}

std::uint32_t StyleResolver::styleIndex(const DisplayStyle& style) {
    const auto [found, isNew] = styles_.emplace(style, static_cast<std::uint32_t>(list_.styles.size()));
    if (isNew) list_.styles.push_back(style);
    return found->second;
}

ResolvedStyle StyleResolver::resolve(const TraitValues& traits, std::uint8_t opacity,
                                     const Inherited& inherited) {
    const bool takesReference = !inherited.isTop && layerAt(traits.layer).look.isZero;
    const AcDbObjectId layerId = takesReference ? inherited.layer : traits.layer;
    const Layer& layer = layerAt(layerId);
    DisplayStyle style;
    style.layer = layer.index;
    style.opacity = opacity;
    style.color = traits.color.isByLayer()   ? plainColor(layer.look.color)
                  : traits.color.isByBlock() ? inherited.color
                                             : plainColor(traits.color);
    int weight = traits.lineWeight;
    if (weight == AcDb::kLnWtByLayer)
        weight = layer.look.weight;
    else if (weight == AcDb::kLnWtByBlock)
        weight = inherited.weight;
    style.weight = weight >= 0 ? weight : source_.defaultWeight();

    const AcDbObjectId linetype = linetypeOf(traits, layer.look, inherited);
    static const std::vector<double> full;
    const LinetypeLook& pattern = linetypeAt(linetype);
    ResolvedStyle result;
    result.style = styleIndex(style);
    result.dashes = pattern.kind == LinetypeKind::pattern && !linetype.isNull() ? &pattern.dashes : &full;
    result.handedDown = {style.color, layerId, linetype, weight, false};
    result.shown = !layer.look.off && !layer.look.frozen && (layer.look.plottable || !plotOnly_);
    return result;
}

} // namespace host
