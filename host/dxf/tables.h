// The symbol tables of a drawing in the order of its files, and the classes behind their names.
#pragma once
#include <span>
#include <string_view>

#include "host/db/database.h"

namespace host::dxf {

struct TableKind {
    std::string_view name;  // "LAYER"
    AcRxClass* (*table)();  // AcDbLayerTable::desc
    AcRxClass* (*record)(); // AcDbLayerTableRecord::desc
};
std::span<const TableKind> tableKinds();
const TableKind* tableKind(std::string_view name); // null for an unknown name

// The table of that kind; made empty when the drawing has none yet.
AcDbSymbolTable& tableOf(AcDbDatabase& database, const TableKind& kind);

// The object behind an id, whoever has it open; null when there is none or it is of another class.
// Readers and writers own the whole drawing while they work.
template <class T> T* behind(AcDbObjectId id) {
    return id.cell() && id.cell()->object ? T::cast(id.cell()->object) : nullptr;
}

} // namespace host::dxf
