// What entities, layers and linetypes of a drawing look like.
#include "host/view/database_source.h"

#include <cmath>

#include "host/db/database.h"
#include "host/os/text.h"
#include "host/view/collector.h"
#include "host/view/readable.h"
#include "host/view/screen.h"

namespace host {
namespace {

// Alpha stands in the low byte where the code's method byte says so; else it is by layer or by block.
std::uint8_t opacityOf(Adesk::UInt32 code) {
    constexpr Adesk::UInt32 byAlpha = 0x02000000;
    return code & byAlpha ? static_cast<std::uint8_t>(code & 0xFF) : 255;
}

} // namespace

DrawableLook DatabaseSource::look(const AcGiDrawable& drawable) {
    DrawableLook look;
    const auto* entity = dynamic_cast<const AcDbEntity*>(&drawable);
    if (!entity) return look;
    look.visible = entity->visibility() == AcDb::kVisible && !entity->isErased();
    look.traits.color = entity->color();
    look.traits.layer = entity->layerId();
    look.traits.linetype = entity->linetypeId();
    look.traits.linetypeScale = entity->linetypeScale();
    look.traits.lineWeight = entity->lineWeight();
    look.opacity = opacityOf(entity->transparencyCode());
    look.block = entity->referencedBlock();
    return look;
}

LayerLook DatabaseSource::layer(AcDbObjectId id) {
    LayerLook look;
    const auto* record = readable<AcDbLayerTableRecord>(id);
    if (!record) return look;
    look.name = record->name();
    look.isZero = look.name == L"0";
    look.color = record->color();
    look.linetype = record->linetypeObjectId();
    look.weight = record->lineWeight();
    look.off = record->isOff();
    look.frozen = record->isFrozen();
    look.plottable = record->isPlottable();
    return look;
}

LinetypeLook DatabaseSource::linetype(AcDbObjectId id) {
    LinetypeLook look;
    const auto* record = readable<AcDbLinetypeTableRecord>(id);
    if (!record) return look;
    if (equalNoCase(record->name(), L"ByLayer"))
        look.kind = LinetypeKind::byLayer;
    else if (equalNoCase(record->name(), L"ByBlock"))
        look.kind = LinetypeKind::byBlock;
    for (const auto& dash : record->dashes()) look.dashes.push_back(dash.length);
    return look;
}

double DatabaseSource::linetypeScale() {
    const double scale = database_ ? database_->ltscale() : 1;
    return scale > 0 && std::isfinite(scale) ? scale : 1;
}

bool DatabaseSource::fillMode() { return !database_ || database_->headerInteger("$FILLMODE", 1) != 0; }

DisplayOptions optionsForSpace(AcDbDatabase& database, AcDbObjectId space, DisplayOptions options) {
    if (options.chordError > 0) return options;
    const auto* record = readable<AcDbBlockTableRecord>(space.isNull() ? database.currentSpaceId() : space);
    AcDbExtents all;
    for (std::size_t i = 0; record && i < record->entities().size(); ++i) {
        const auto* entity = readable<AcDbEntity>(record->entities()[i]);
        AcDbExtents one;
        if (entity && entity->getGeomExtents(one) == Acad::eOk) all.addExt(one);
    }
    const double size = all.minPoint().distanceTo(all.maxPoint());
    options.chordError = all.isValid() && size > 0 && size < 1e18 ? size * 1e-4 : 0.01;
    return options;
}

DisplayList displaySpace(AcDbDatabase& database, AcDbObjectId space, DisplayOptions options) {
    screen(); // entities draw their blocks through it
    DatabaseSource source(&database);
    DisplayCollector collector(source, optionsForSpace(database, space, std::move(options)));
    const auto* record = readable<AcDbBlockTableRecord>(space.isNull() ? database.currentSpaceId() : space);
    if (!record) return {};
    for (AcDbObjectId id : record->entities())
        if (const auto* entity = readable<AcDbEntity>(id)) collector.add(*entity, id);
    return collector.take();
}

} // namespace host
