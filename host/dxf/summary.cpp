// One walk through the drawing's entities and objects.
#include "host/dxf/summary.h"

#include <map>

#include "host/dxf/tables.h"
#include "host/os/text.h"

namespace host {
namespace {

using dxf::behind;
using Counts = std::map<std::string, long>;

std::string nameOfUnits(int units) {
    static constexpr const char* kNames[] = {"none",
                                             "inches",
                                             "feet",
                                             "miles",
                                             "millimetres",
                                             "centimetres",
                                             "metres",
                                             "kilometres",
                                             "microinches",
                                             "mils",
                                             "yards",
                                             "angstroms",
                                             "nanometres",
                                             "microns",
                                             "decimetres",
                                             "decametres",
                                             "hectometres",
                                             "gigametres",
                                             "astronomical units",
                                             "light years",
                                             "parsecs",
                                             "US survey feet"};
    const bool known = units >= 0 && size_t(units) < std::size(kNames);
    return known ? kNames[units] : "unknown (" + std::to_string(units) + ")";
}

std::vector<DrawingSummary::Count> listed(const Counts& counts) {
    std::vector<DrawingSummary::Count> list;
    for (const auto& [name, count] : counts) list.push_back({name, count});
    return list;
}

class Walk {
public:
    explicit Walk(AcDbDatabase& database) : database_(database) {}

    DrawingSummary run() {
        summary_.version = database_.originalFileVersion();
        summary_.units = database_.insunits();
        summary_.unitName = nameOfUnits(summary_.units);
        countLayers();
        countBlocks();
        countApplications();
        measure();
        summary_.kinds = listed(kinds_);
        summary_.layers = listed(layers_);
        summary_.applications = listed(applications_);
        return summary_;
    }

private:
    template <class Record, class Visit> void eachRecord(AcDbObjectId tableId, Visit visit) {
        const auto* table = behind<AcDbSymbolTable>(tableId);
        if (!table) return;
        for (AcDbObjectId id : table->records())
            if (const auto* record = behind<Record>(id); record && !record->isErased()) visit(*record);
    }

    void countLayers() {
        eachRecord<AcDbLayerTableRecord>(database_.layerTableId(), [&](const AcDbLayerTableRecord& layer) {
            layers_[utf8(layer.name())];
        });
    }

    void countEntity(const AcDbEntity& entity) {
        ++summary_.entities;
        ++kinds_[entity.dxfName()];
        ++layers_[utf8(entity.layerName())];
        std::vector<AcDbObjectId> parts;
        entity.ownedParts(parts);
        for (AcDbObjectId id : parts) {
            const auto* part = behind<AcDbEntity>(id);
            if (part && !part->isErased() && part->dxfName() == "ATTRIB") countEntity(*part);
        }
    }

    void countBlocks() {
        const auto references = database_.blockReferences();
        std::map<std::string, DrawingSummary::Block> blocks;
        eachRecord<AcDbBlockTableRecord>(database_.blockTableId(), [&](const AcDbBlockTableRecord& record) {
            long entities = 0;
            for (AcDbObjectId id : record.entities()) {
                const auto* entity = behind<AcDbEntity>(id);
                if (!entity || entity->isErased()) continue;
                countEntity(*entity);
                ++entities;
            }
            if (record.isModelSpace() || record.isPaperSpace()) return;
            const auto found = references.find(record.objectId());
            const long count = found == references.end() ? 0 : long(found->second.size());
            blocks[utf8(record.name())] = {utf8(record.name()), entities, count};
        });
        for (const auto& [name, block] : blocks) summary_.blocks.push_back(block);
    }

    void countApplications() {
        for (const IdCell& cell : database_.cells()) {
            if (!cell.object || cell.object->isErased() || !cell.object->tail()) continue;
            for (const Group group : cell.object->tail()->xdata)
                if (group.code == 1001) ++applications_[std::string(group.text)];
        }
    }

    void measure() {
        const auto* space = behind<AcDbBlockTableRecord>(database_.modelSpaceId());
        AcDbExtents all;
        for (AcDbObjectId id : space ? space->entities() : std::vector<AcDbObjectId>()) {
            const auto* entity = behind<AcDbEntity>(id);
            AcDbExtents one;
            if (!entity || entity->isErased() || entity->getGeomExtents(one) != Acad::eOk) continue;
            all.addExt(one);
            summary_.hasExtents = true;
        }
        if (summary_.hasExtents) summary_.minimum = all.minPoint(), summary_.maximum = all.maxPoint();
    }

    AcDbDatabase& database_;
    DrawingSummary summary_;
    Counts kinds_, layers_, applications_;
};

} // namespace

DrawingSummary summarise(AcDbDatabase& database) { return Walk(database).run(); }

} // namespace host
