// The header and the classes, which are written when the rest of the drawing stands.
#include "host/dxf/writer.h"

#include <algorithm>

#include "host/dxf/known.h"
#include "host/os/text.h"

namespace host::dxf {

namespace {

AcDbExtents measuredModel(const AcDbDatabase& database) {
    AcDbExtents all;
    const auto* model = behind<AcDbBlockTableRecord>(database.modelSpaceId());
    for (AcDbObjectId id : model ? model->entities() : std::vector<AcDbObjectId>()) {
        const auto* entity = behind<AcDbEntity>(id);
        AcDbExtents one;
        if (entity && !entity->isErased() && entity->getGeomExtents(one) == Acad::eOk) all.addExt(one);
    }
    return all;
}

} // namespace

std::string codePageFor(const AcDbDatabase& database, AcDb::AcDbDwgVersion version) {
    const std::string own = utf8(database.headerText("$DWGCODEPAGE"));
    const bool serves = !own.empty() && (holdsUtf8(version) || !CodePage(own).isUtf8());
    return serves ? own : "ANSI_1252";
}

// Variables are left out when the drawing goes to a version that is older than it and than they.
bool DrawingWriter::knows(const HeaderVariable& variable) const {
    const AcDb::AcDbDwgVersion origin = database_.originalFileVersion();
    if (variable.name == "$HANDLING" && !old() && origin <= AcDb::kDHL_1009) return false;
    return version_ >= origin || knowsVariable(version_, variable.name);
}

// The extents of a drawing that has changed, as they are now. One that hasn't, or whose changes have all
// been undone, keeps what its file told.
bool DrawingWriter::writeExtents(const std::string& variable) {
    const bool low = variable == "$EXTMIN";
    if (!changed_ || (!low && variable != "$EXTMAX")) return false;
    if (low || !extents_.isValid()) extents_ = measuredModel(database_);
    out_->point(10, low ? extents_.minPoint() : extents_.maxPoint());
    return true;
}

void DrawingWriter::writeHeader() {
    out_ = headNames_ ? headNames_.get() : &head_;
    beginSection("HEADER");
    const auto has = [&](const char* name) { return database_.headerValue(name) != nullptr; };
    const auto add = [&](const char* name) { writeVariable({name, {}}); };
    if (!has("$ACADVER")) add("$ACADVER");
    if (!has("$DWGCODEPAGE")) add("$DWGCODEPAGE");
    for (const HeaderVariable& variable : database_.header())
        if (knows(variable)) writeVariable(variable);
    if (old() && !has("$HANDLING")) add("$HANDLING");
    if (!has("$HANDSEED")) add("$HANDSEED");
    endSection();
}

// Version, code page and handles are told as they are in the file that is being written.
void DrawingWriter::writeVariable(const HeaderVariable& variable) {
    const std::string& name = variable.name;
    out_->text(9, name);
    if (name == "$ACADVER") return out_->text(1, versionMark(version_));
    if (name == "$DWGCODEPAGE") return out_->text(3, codePageFor(database_, version_));
    if (name == "$HANDSEED") return out_->handle(5, nextHandle());
    if (name == "$HANDLING" && old()) return out_->integer(70, 1);
    if (name == "$ACADMAINTVER")
        return out_->integer(version_ >= AcDb::kDHL_1032 ? 90 : 70, database_.headerInteger(name, 0));
    if (writeExtents(name)) return;
    for (const Group group : variable.value) out_->write(group);
}

void DrawingWriter::countClasses() {
    std::map<const AcRxClass*, std::pair<const AcDbObject*, int>> kinds;
    for (const IdCell& cell : database_.cells()) {
        if (!cell.object || cell.object->isErased()) continue;
        auto& kind = kinds[cell.object->isA()];
        kind.first = cell.object;
        ++kind.second;
    }
    for (const auto& [cls, kind] : kinds) {
        counts_[kind.first->dxfName()] += kind.second;
        if (cls->isCustom()) custom_.push_back(cls);
    }
    std::sort(custom_.begin(), custom_.end(), [](const AcRxClass* a, const AcRxClass* b) {
        return std::wstring_view(a->name()) < std::wstring_view(b->name());
    });
}

// The file's own rows, then rows for what has come into the drawing since.
void DrawingWriter::writeClasses() {
    out_ = &head_;
    beginSection("CLASSES");
    std::vector<FileClass> rows = database_.fileClasses();
    const auto named = [&](std::string_view name) {
        return std::any_of(rows.begin(), rows.end(),
                           [&](const FileClass& row) { return row.dxfName == name; });
    };
    for (const KnownClass& known : knownClasses())
        if (counts_.contains(std::string(known.dxfName)) && !named(known.dxfName))
            rows.push_back({std::string(known.dxfName), std::string(known.className),
                            std::string(known.appName), known.proxyFlags, 0, false, known.isEntity});
    for (const AcRxClass* cls : custom_)
        if (!named(utf8(cls->dxfName())))
            rows.push_back({utf8(cls->dxfName()), utf8(cls->name()), utf8(cls->appName()), cls->proxyFlags(),
                            0, false, cls->isDerivedFrom(AcDbEntity::desc())});
    for (const FileClass& row : rows) writeClass(row);
    endSection();
}

void DrawingWriter::writeClass(const FileClass& row) {
    head_.text(0, std::string_view("CLASS"));
    head_.text(1, row.dxfName);
    head_.text(2, row.className);
    head_.text(3, row.appName);
    head_.integer(90, row.proxyFlags);
    if (version_ >= AcDb::kDHL_1018) {
        const auto count = counts_.find(row.dxfName);
        head_.integer(91, count == counts_.end() ? 0 : count->second);
    }
    head_.integer(280, row.wasProxy);
    head_.integer(281, row.isEntity);
}

} // namespace host::dxf
