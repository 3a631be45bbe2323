// The layers of a drawing as rows, and the changes that the layers panel makes. Each change belongs in an
// undo step that the caller opens; those that return a sentence have changed nothing when it isn't empty.
#pragma once
#include <QString>
#include <vector>

#include "host/db/color.h"
#include "host/db/database.h"

namespace desk {

struct LayerRow {
    AcDbObjectId id;
    QString name, linetype;
    AcCmColor color;
    bool current = false, on = true, frozen = false, locked = false;
    bool operator==(const LayerRow&) const = default;
};
// By name; erased ones and those of external references left out.
std::vector<LayerRow> layerRows(AcDbDatabase& database);

enum class LayerSwitch { on, frozen, locked };
QString switchLayer(AcDbObjectId layer, LayerSwitch which, bool value);
QString renameLayer(AcDbObjectId layer, const QString& name);
QString makeLayerCurrent(AcDbObjectId layer);
void colorLayer(AcDbObjectId layer, const AcCmColor& color);
// With the first name "Layer1", "Layer2", ... that is free.
AcDbObjectId addLayer(AcDbDatabase& database);

} // namespace desk
