// What remains when all groups are read: records that were named and never defined, owners that old
// versions don't state, the version to save the drawing as.
#include "host/dxf/reader.h"

#include "host/db/kept.h"
#include "host/os/text.h"

namespace host::dxf {

void DrawingReader::finish() {
    closeWhole(); // one that a fault broke off
    section_.clear();
    nameObject({});
    makeMissing();
    tieOwners();
    dropDeadEntries();
    settleVersion();
    for (const std::string& sentence : database->complete()) note(sentence, true);
    if (recover_) mend();
    reviveKeptObjects(*database);
    if (const long texts = stream_.decoder().misdeclared())
        note(std::to_string(texts) + " texts aren't in the code page that the file declares", true);
}

// What is made may name others that are missing, as layers do linetypes.
void DrawingReader::makeMissing() {
    for (auto missing = names_.missing(); !missing.empty(); missing = names_.missing())
        for (const NameBook::Missing& one : missing) makeRecord(one);
    nameObject({});
}

void DrawingReader::makeRecord(const NameBook::Missing& missing) {
    std::unique_ptr<AcDbObject> made(AcDbObject::cast(missing.kind->record()->create()));
    subclass = {};
    made->inGroup(Group::ofText(2, utf8(missing.name)), *this);
    giveLinetype(*AcDbSymbolTableRecord::cast(made.get()));
    AcDbSymbolTable& table = tableOf(*database, *missing.kind);
    table.adopt(database->place(std::move(made), missing.id.handle(), table.objectId()), missing.name);
    object_ = missing.kind->name;
    note(utf8(missing.name) + " is named but not defined; it was made", true);
}

// R13 and R14 leave out the owners of objects; dictionaries tell them.
void DrawingReader::tieOwners() {
    for (const IdCell& cell : database->cells()) {
        const auto* dictionary = cell.object ? AcDbDictionary::cast(cell.object) : nullptr;
        if (!dictionary) continue;
        for (const AcDbDictionary::Entry& entry : dictionary->entries())
            claim(entry.id, dictionary->objectId());
    }
    for (const IdCell& cell : database->cells())
        if (cell.object && cell.object->tail())
            claim(cell.object->tail()->extensionDictionary, cell.object->objectId());
}

void DrawingReader::claim(AcDbObjectId orphan, AcDbObjectId owner) {
    const auto* object = behind<AcDbObject>(orphan);
    if (!object || !object->ownerId().isNull() || orphan == database->namedObjectsDictionaryId()) return;
    AcDbObjectPointer<AcDbObject> opened(orphan, AcDb::kForWrite);
    if (opened) opened->setOwnerId(owner);
}

// False for an entry that leads nowhere, and for one of the root's own dictionaries that leads to
// something else.
bool DrawingReader::leadsWell(const AcDbDictionary::Entry& entry, bool root) const {
    const bool fixed =
        root && (equalNoCase(entry.key, L"ACAD_GROUP") || equalNoCase(entry.key, L"ACAD_LAYOUT") ||
                 equalNoCase(entry.key, L"ACAD_PLOTSETTINGS"));
    return fixed ? behind<AcDbDictionary>(entry.id) != nullptr : entry.id.isValid();
}

// Entries that lead nowhere: of the root, where they would hide what is made in their place; and of
// all dictionaries when the drawing is recovered.
void DrawingReader::dropDeadEntries() {
    for (const IdCell& cell : database->cells()) {
        auto* dictionary = cell.object ? AcDbDictionary::cast(cell.object) : nullptr;
        if (!dictionary) continue;
        const bool root = dictionary->objectId() == database->namedObjectsDictionaryId();
        if (!root && !recover_) continue;
        for (const AcDbDictionary::Entry& entry : std::vector(dictionary->entries())) {
            if (leadsWell(entry, root)) continue;
            AcDbObjectPointer<AcDbDictionary> opened(dictionary->objectId(), AcDb::kForWrite);
            if (!opened || opened->remove(entry.id) != Acad::eOk) continue;
            note("the entry " + utf8(entry.key) + " of a dictionary led nowhere; it was taken out", true);
        }
    }
}

// The file's own version where it tells the truth. Files that name none, and files that say R12 or
// older and hold what came later, are saved as R2018.
void DrawingReader::settleVersion() {
    const AcDb::AcDbDwgVersion stated = report_.version;
    AcDb::AcDbDwgVersion settled = stated;
    const bool modern = sawMarkers_ || sawModernKind_;
    if (stated <= AcDb::kDHL_1009 && modern) settled = AcDb::kDHL_1032;
    if (stated == AcDb::kDHL_Unknown && !modern) settled = AcDb::kDHL_1009;
    if (stated != settled && stated != AcDb::kDHL_Unknown)
        note("the file holds what the version it states doesn't know; it will be saved as R2018", true);
    database->setOriginalFileVersion(settled);
}

} // namespace host::dxf
