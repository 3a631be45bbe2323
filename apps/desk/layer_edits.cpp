// Layer records read and changed.
#include "apps/desk/layer_edits.h"

#include <algorithm>

#include "apps/desk/qt_text.h"
#include "apps/desk/texts.h"
#include "host/os/text.h"

namespace desk {
namespace {

using Layer = AcDbObjectPointer<AcDbLayerTableRecord>;

QString nameOf(AcDbObjectId id) {
    AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForRead);
    return record ? shown(record->name()) : QString();
}

} // namespace

std::vector<LayerRow> layerRows(AcDbDatabase& database) {
    std::vector<LayerRow> rows;
    AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForRead);
    if (!table) return rows;
    for (const AcDbObjectId id : table->records()) {
        Layer layer(id, AcDb::kForRead);
        if (!layer || layer->isDependent()) continue;
        rows.push_back({id, shown(layer->name()), nameOf(layer->linetypeObjectId()), layer->color(),
                        id == database.clayer(), !layer->isOff(), layer->isFrozen(), layer->isLocked()});
    }
    std::sort(rows.begin(), rows.end(), [](const LayerRow& a, const LayerRow& b) {
        return host::compareNoCase(wide(a.name), wide(b.name)) < 0;
    });
    return rows;
}

QString switchLayer(AcDbObjectId id, LayerSwitch which, bool value) {
    if (which == LayerSwitch::frozen && value && id == id.database()->clayer())
        return say(L"当前图层不能冻结。");
    Layer layer(id, AcDb::kForWrite);
    if (!layer) return {};
    switch (which) {
    case LayerSwitch::on: layer->setIsOff(!value); break;
    case LayerSwitch::frozen: layer->setIsFrozen(value); break;
    case LayerSwitch::locked: layer->setIsLocked(value); break;
    }
    return {};
}

QString renameLayer(AcDbObjectId id, const QString& name) {
    if (id == id.database()->layerZero()) return say(L"图层 0 不能改名。");
    Layer layer(id, AcDb::kForWrite);
    if (!layer) return {};
    switch (layer->setName(wide(name.trimmed()).c_str())) {
    case Acad::eOk: return {};
    case Acad::eDuplicateRecordName: return say(L"已有名为“%1”的图层。", name);
    default: return say(L"“%1”不能作图层名：名称不能为空，也不能含有 <>/\\\":;?*|=`。", name);
    }
}

QString makeLayerCurrent(AcDbObjectId id) {
    {
        Layer layer(id, AcDb::kForRead);
        if (!layer || layer->isFrozen()) return say(L"冻结的图层不能设为当前图层。");
    }
    id.database()->setClayer(id);
    return {};
}

void colorLayer(AcDbObjectId id, const AcCmColor& color) {
    Layer layer(id, AcDb::kForWrite);
    if (layer) layer->setColor(color);
}

AcDbObjectId addLayer(AcDbDatabase& database) {
    AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForWrite);
    if (!table) return {};
    int number = 1;
    const auto name = [&] { return L"Layer" + std::to_wstring(number); };
    while (table->has(name().c_str())) ++number;
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    AcDbObjectId id;
    if (layer->setName(name().c_str()) != Acad::eOk || table->add(id, layer.get()) != Acad::eOk) return {};
    layer->setLinetypeObjectId(database.continuousLinetype());
    layer.release()->close();
    return id;
}

} // namespace desk
