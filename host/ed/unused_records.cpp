// Every object is asked for the groups it would write; the records that these name or point to are in use.
#include "host/ed/unused_records.h"

#include <algorithm>
#include <set>
#include <unordered_set>

#include "host/os/text.h"

namespace host {
namespace {

class UsedRecords final : public GroupWriter {
public:
    UsedRecords(AcDbDatabase& drawing, const AcRxClass* tableClass) : tableClass_(tableClass) {
        database = &drawing;
        version = AcDb::kDHL_1032;
        for (const IdCell& cell : drawing.cells())
            if (cell.object && !cell.object->isErased()) look(*cell.object);
        for (const char* variable : {"$CLAYER", "$CELTYPE", "$TEXTSTYLE"}) use(drawing.headerText(variable));
        for (const wchar_t* name : {L"0", L"Defpoints", L"ByLayer", L"ByBlock", L"Continuous", L"Standard",
                                    L"ACAD", L"*Model_Space"})
            use(name);
    }
    bool has(AcDbObjectId record) const { return used_.contains(record); }

    void write(const Group& group) override {
        const bool pointer =
            (group.code >= 340 && group.code <= 369) || (group.code >= 390 && group.code <= 399);
        if (group.type == GroupType::handle && pointer) {
            if (IdCell* cell = database->cellOf(group.handle(), false)) used_.insert(AcDbObjectId(cell));
        } else if (group.type == GroupType::text && namesRecord(group.code)) {
            use(group.wide());
        }
    }
    void recordName(int, AcDbObjectId record) override { used_.insert(record); }

private:
    // Under these codes stand names of records of this table, and now and then a text that only looks so.
    bool namesRecord(int code) const {
        if (tableClass_ == AcDbLayerTable::desc()) return code == 8 || code == 1003;
        if (tableClass_ == AcDbLinetypeTable::desc()) return code == 6 || code == 1005;
        if (tableClass_ == AcDbTextStyleTable::desc()) return code == 7;
        if (tableClass_ == AcDbRegAppTable::desc()) return code == 1001;
        return code == 2;
    }
    void use(const std::wstring& name) {
        if (const AcDbObjectId record = database->find(tableClass_, name); !record.isNull())
            used_.insert(record);
    }
    void look(const AcDbObject& object) {
        // Records and the marks of blocks hold their own names.
        if (tableClass_ == AcDbBlockTable::desc()) {
            const std::string kind = object.dxfName();
            if (kind == "BLOCK" || kind == "ENDBLK" || kind == "BLOCK_RECORD") return;
        }
        const ObjectTail* tail = object.tail();
        beginObject(tail ? &tail->kept : nullptr);
        object.outGroups(*this);
        endObject();
        if (const auto* entity = AcDbEntity::cast(&object))
            used_.insert(entity->layerId()), used_.insert(entity->linetypeId());
        if (!tail) return;
        for (const Group group : tail->xdata) write(group);
    }
    const AcRxClass* tableClass_;
    std::unordered_set<AcDbObjectId> used_;
};

} // namespace

std::vector<AcDbObjectId> unusedRecords(AcDbDatabase& database, const AcRxClass* tableClass) {
    const UsedRecords used(database, tableClass);
    std::vector<AcDbObjectId> unused;
    AcDbObjectPointer<AcDbSymbolTable> table(database.tableId(tableClass), AcDb::kForRead);
    if (!table) return unused;
    for (const AcDbObjectId id : table->records()) {
        AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForRead);
        const auto* block = AcDbBlockTableRecord::cast(record.object());
        if (!record || used.has(id) || record->isDependent()) continue;
        if (block && (block->isLayout() || block->isFromExternalReference())) continue;
        unused.push_back(id);
    }
    return unused;
}

} // namespace host
