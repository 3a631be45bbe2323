// BLOCK, INSERT and PURGE.
#include <cmath>

#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/ed/unused_records.h"
#include "host/ent/blockreference.h"
#include "host/os/text.h"
#include "host/os/wildcard.h"

namespace host {
namespace {

void listBlocks() {
    AcDbObjectPointer<AcDbBlockTable> table(drawing().blockTableId(), AcDb::kForRead);
    size_t count = 0;
    for (const AcDbObjectId id : table->records()) {
        AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForRead);
        if (!block || block->isLayout() || block->isAnonymous()) continue;
        printLine(L"\n  \"" + block->name() + L"\"");
        ++count;
    }
    printLine(L"\n" + std::to_wstring(count) + L" blocks");
}

AcDbObjectId blockNamed(const std::wstring& name) { return drawing().find(AcDbBlockTable::desc(), name); }

// A name to be used; ? lists the blocks and asks again. Empty for Enter without a name in `usual` and for
// Esc.
std::wstring askBlockName(const std::wstring& usual) {
    const std::wstring prompt =
        L"\nEnter block name or [?]" + (usual.empty() ? L": " : L" <" + usual + L">: ");
    for (;;) {
        std::wstring name;
        if (acedGetString(0, prompt.c_str(), name) != RTNORM) return {};
        if (name != L"?") return name.empty() ? usual : name;
        listBlocks();
    }
}

// -- BLOCK --------------------------------------------------------------------------------------------

// The block of that name, empty: a new one, or with its former content erased.
AcDbObjectId emptyBlock(const std::wstring& name) {
    const AcDbObjectId present = blockNamed(name);
    AcDbObjectPointer<AcDbBlockTableRecord> block(present, AcDb::kForWrite);
    if (block) {
        eraseAll(block->entities());
        return present;
    }
    auto made = std::make_unique<AcDbBlockTableRecord>();
    AcDbObjectPointer<AcDbBlockTable> table(drawing().blockTableId(), AcDb::kForWrite);
    AcDbObjectId id;
    if (made->setName(name.c_str()) != Acad::eOk || !table || table->add(id, made.get()) != Acad::eOk)
        return {};
    made.release()->close();
    return id;
}

AcGeMatrix3d fromBase(const AcGePoint3d& base) {
    const UserFrame user = surroundings().user;
    AcGeMatrix3d toWorld;
    toWorld.setCoordSystem(ucsToWorld(base), user.xAxis, user.yAxis, user.xAxis.crossProduct(user.yAxis));
    return toWorld.inverse();
}

void moveInto(AcDbObjectId blockId, const std::vector<AcDbObjectId>& ids, const AcGeMatrix3d& matrix) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForWrite);
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbEntity* made = nullptr;
        if (!entity || entity->getTransformedCopy(matrix, made) != Acad::eOk) continue;
        std::unique_ptr<AcDbEntity> copy(made);
        if (block->appendAcDbEntity(copy.get()) == Acad::eOk) copy.release()->close();
    }
}

// A block that shows itself would never end.
bool shows(AcDbObjectId blockId, AcDbObjectId wanted) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
    if (!block || blockId == wanted) return blockId == wanted;
    for (const AcDbObjectId id : block->entities()) {
        AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
        if (reference && shows(reference->blockTableRecord(), wanted)) return true;
    }
    return false;
}

// -- INSERT -------------------------------------------------------------------------------------------

// The reference's attributes from the block's definitions, with the values that the user gives.
void addAttributes(AcDbBlockReference& reference) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(reference.blockTableRecord(), AcDb::kForRead);
    const bool ask = systemVariableText(*findSystemVariable(L"ATTREQ")) != L"0";
    bool told = false;
    for (const AcDbObjectId id : block->entities()) {
        AcDbObjectPointer<AcDbAttributeDefinition> definition(id, AcDb::kForRead);
        if (!definition || definition->isConstant()) continue;
        if (ask && !told) printLine(L"\nEnter attribute values"), told = true;
        std::wstring value = definition->textStringConst(), given;
        const std::wstring& question =
            definition->promptConst().empty() ? definition->tagConst() : definition->promptConst();
        const std::wstring prompt = L"\n" + question + (value.empty() ? L": " : L" <" + value + L">: ");
        if (ask && acedGetString(1, prompt.c_str(), given) == RTNORM && !given.empty()) value = given;
        auto attribute = std::make_unique<AcDbAttribute>();
        attribute->takeFrom(*definition);
        attribute->setPropertiesFrom(definition.object());
        attribute->setTag(definition->tagConst().c_str());
        attribute->setTextString(value.c_str());
        attribute->transformBy(reference.blockTransform() *
                               AcGeMatrix3d::translation(AcGePoint3d::kOrigin - block->origin()));
        AcDbAttribute* open = attribute.get();
        if (reference.appendAttribute(attribute.get()) == Acad::eOk) attribute.release();
        if (open->objectId().isValid()) open->close();
    }
}

// -- PURGE --------------------------------------------------------------------------------------------

struct PurgeKind {
    const wchar_t* word;
    const wchar_t* one;
    const wchar_t* many;
    const AcRxClass* (*table)();
};
constexpr PurgeKind kPurgeKinds[] = {
    {L"Blocks", L"block", L"blocks", [] { return (const AcRxClass*)AcDbBlockTable::desc(); }},
    {L"LAyers", L"layer", L"layers", [] { return (const AcRxClass*)AcDbLayerTable::desc(); }},
    {L"LTypes", L"linetype", L"linetypes", [] { return (const AcRxClass*)AcDbLinetypeTable::desc(); }},
    {L"Textstyles", L"text style", L"text styles",
     [] { return (const AcRxClass*)AcDbTextStyleTable::desc(); }},
    {L"Regapps", L"registered application", L"registered applications",
     [] { return (const AcRxClass*)AcDbRegAppTable::desc(); }},
};

// False when the user has broken off.
bool purge(const PurgeKind& kind, const std::wstring& pattern, bool verify) {
    size_t gone = 0;
    // What a purged block alone has shown is unused now: round after round.
    for (bool more = true; more;) {
        more = false;
        for (const AcDbObjectId id : unusedRecords(drawing(), kind.table())) {
            AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForWrite);
            if (!record || !wildcardMatch(upper(record->name()), upper(pattern))) continue;
            const std::wstring what = kind.one + (L" \"" + record->name() + L"\"");
            if (verify) {
                const auto yes = askYesNo((L"\nPurge " + what + L"? [Yes/No] <N>: ").c_str(), false);
                if (!yes) return false;
                if (!*yes) continue;
            }
            if (record->erase() != Acad::eOk) continue;
            printLine(L"\nDeleting " + what + L".");
            ++gone;
            more = !verify;
        }
    }
    if (gone == 0) printLine(L"\nNo unreferenced " + std::wstring(kind.many) + L" found.");
    return true;
}

} // namespace

void blockCommand() {
    const std::wstring name = askBlockName({});
    if (name.empty()) return;
    const AcDbObjectId present = blockNamed(name);
    if (!present.isNull()) {
        const std::wstring question =
            L"\nBlock \"" + name + L"\" already exists. Redefine it? [Yes/No] <N>: ";
        if (!askYesNo(question.c_str(), false).value_or(false)) return;
    }
    const AskedPoint base = askPoint(L"\nSpecify insertion base point: ", nullptr, nullptr, RSG_NONULL);
    if (!base) return;
    const std::vector<AcDbObjectId> ids = askObjects(true);
    if (ids.empty()) return;
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
        if (!present.isNull() && reference && shows(reference->blockTableRecord(), present))
            return printLine(L"\nBlock \"" + name + L"\" would contain itself; nothing was changed.");
    }
    const AcDbObjectId block = emptyBlock(name);
    if (block.isNull()) return printLine(L"\n\"" + name + L"\" can't be the name of a block.");
    moveInto(block, ids, fromBase(base.point));
    eraseAll(ids);
}

void insertCommand() {
    const SystemVariable& usual = *findSystemVariable(L"INSNAME");
    const std::wstring name = askBlockName(systemVariableText(usual));
    if (name.empty()) return;
    const AcDbObjectId block = blockNamed(name);
    if (block.isNull()) return printLine(L"\nThe drawing has no block \"" + name + L"\"; ? lists them.");
    const auto placing = askPlacing();
    if (!placing) return;
    std::wstring why;
    setSystemVariableText(usual, name, why);
    AcDbObjectPointer<AcDbBlockReference> reference(placeBlock(block, *placing), AcDb::kForWrite);
    if (reference) addAttributes(*reference);
}

void purgeCommand() {
    acedInitGet(0,
                L"Blocks LAyers LTypes Textstyles Regapps All _Blocks LAyers LTypes Textstyles Regapps All");
    std::wstring kind, names;
    if (acedGetKword(L"\nEnter type of unused objects to purge "
                     L"[Blocks/LAyers/LTypes/Textstyles/Regapps/All]: ",
                     kind) != RTNORM)
        return;
    if (acedGetString(1, L"\nEnter name(s) to purge <*>: ", names) == RTCAN) return;
    if (names.empty()) names = L"*";
    const auto verify = askYesNo(L"\nVerify each name to be purged? [Yes/No] <Y>: ", true);
    if (!verify) return;
    for (const PurgeKind& one : kPurgeKinds)
        if ((kind == L"All" || kind == one.word) && !purge(one, names, *verify)) return;
}

} // namespace host
