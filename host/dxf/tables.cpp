// The rows of the table of tables.
#include "host/dxf/tables.h"

namespace host::dxf {

std::span<const TableKind> tableKinds() {
    static constexpr TableKind kKinds[] = {
        {"VPORT", AcDbViewportTable::desc, AcDbViewportTableRecord::desc},
        {"LTYPE", AcDbLinetypeTable::desc, AcDbLinetypeTableRecord::desc},
        {"LAYER", AcDbLayerTable::desc, AcDbLayerTableRecord::desc},
        {"STYLE", AcDbTextStyleTable::desc, AcDbTextStyleTableRecord::desc},
        {"VIEW", AcDbViewTable::desc, AcDbViewTableRecord::desc},
        {"UCS", AcDbUCSTable::desc, AcDbUCSTableRecord::desc},
        {"APPID", AcDbRegAppTable::desc, AcDbRegAppTableRecord::desc},
        {"DIMSTYLE", AcDbDimStyleTable::desc, AcDbDimStyleTableRecord::desc},
        {"BLOCK_RECORD", AcDbBlockTable::desc, AcDbBlockTableRecord::desc},
    };
    return kKinds;
}

const TableKind* tableKind(std::string_view name) {
    for (const TableKind& kind : tableKinds())
        if (kind.name == name) return &kind;
    return nullptr;
}

AcDbSymbolTable& tableOf(AcDbDatabase& database, const TableKind& kind) {
    if (auto* table = behind<AcDbSymbolTable>(database.tableId(kind.table()))) return *table;
    std::unique_ptr<AcDbObject> made(AcDbObject::cast(kind.table()->create()));
    const AcDbObjectId id = database.place(std::move(made), 0, {});
    database.setTableId(kind.table(), id);
    return *behind<AcDbSymbolTable>(id);
}

} // namespace host::dxf
