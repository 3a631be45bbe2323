// What the properties panel tells of a selection, and what it changes of one.
#pragma once
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "host/db/color.h"
#include "host/db/database.h"

namespace desk {

struct SelectionFacts {
    size_t count = 0;
    QStringList kinds;                      // "Line", or "Line (3)" where there are several kinds or objects
    std::optional<AcDbObjectId> layer;      // nothing: they differ
    std::optional<AcCmColor> color;         //
    std::optional<AcDbObjectId> linetype;   //
    std::optional<AcDb::LineWeight> weight; //
    std::optional<double> length, area; // sums over curves; nothing: there are none, or too many to measure
    QStringList features;               // commands that made some of them, each with what it does
    bool operator==(const SelectionFacts&) const = default;
};
SelectionFacts factsOf(const std::vector<AcDbObjectId>& entities);

// Whether the entity must stay as it is.
bool isOnLockedLayer(const AcDbEntity& entity);
// Objects on locked layers stay as they are; how many there were. Belongs in an undo step of the caller's.
int moveToLayer(const std::vector<AcDbObjectId>& entities, AcDbObjectId layer);
int setColor(const std::vector<AcDbObjectId>& entities, const AcCmColor& color);
int setLinetype(const std::vector<AcDbObjectId>& entities, AcDbObjectId linetype);

// The drawing's linetypes: by layer and by block first, then by name.
struct LinetypeRow {
    AcDbObjectId id;
    QString name;
    bool operator==(const LinetypeRow&) const = default;
};
std::vector<LinetypeRow> linetypeRows(AcDbDatabase& database);

} // namespace desk
