// Writes a drawing's sections to a sink. Objects tell their own data; everything around them (names,
// handles, owners, reactors, xdata, parts) and the order of the file is told here.
#pragma once
#include <map>
#include <optional>

#include "host/dxf/dxf.h"
#include "host/dxf/losses.h"
#include "host/dxf/old_names.h"
#include "host/dxf/old_polyline.h"
#include "host/dxf/sink.h"
#include "host/dxf/tables.h"

namespace host::dxf {

struct WriteCancelled {};

// The code page that a file of that version declares: the drawing's own where the version has it.
std::string codePageFor(const AcDbDatabase& database, AcDb::AcDbDwgVersion version);

class DrawingWriter {
public:
    // The header goes to a sink of its own, since it is known last and stands first.
    DrawingWriter(AcDbDatabase& database, AcDb::AcDbDwgVersion version, GroupSink& head, GroupSink& body,
                  const FileProgress& progress);
    void run();
    // What the version couldn't hold, a sentence a kind.
    std::vector<std::string> losses() const { return losses_.sentences(); }

private:
    void writeTables();
    void writeTable(const TableKind& kind);
    void writeBlocks();
    void writeEntities();
    void writeObjects();
    void tellObjects();
    std::vector<AcDbObjectId> plainObjects() const;
    void writeKeptSections();
    void writeHeader();
    void writeVariable(const HeaderVariable& variable);
    bool writeExtents(const std::string& variable);
    void writeClasses();
    void writeClass(const FileClass& row);
    void countClasses();
    AcDbObjectId activeSheet() const;
    bool knows(const HeaderVariable& variable) const;

    void writeEntity(AcDbObjectId id);
    void writeParts(const AcDbObject& whole);
    void writeObject(const AcDbObject& object);
    void writeHandle(const AcDbObject& object);
    void writeTies(const AcDbObject& object);
    void writeXdata(const AcDbObject& object);
    void writeReferences(const AcDbBlockTableRecord& block);

    // What the version lacks, in writer_old.cpp. The first of what comes of an entity has its handle and
    // xdata; those that write nothing give false.
    bool holds(const AcDbEntity& entity) const;
    void tellColors(const AcDbEntity& entity);
    void writeOlder(const AcDbEntity& entity);
    void writeOldViewport(const AcDbEntity& entity);
    void foreseeReferences();
    bool writeHelix(const AcDbEntity& entity);
    bool writeExploded(const AcDbEntity& entity);
    bool writeReference(const AcDbEntity& entity);
    bool writePicture(const AcDbEntity& entity);
    void writeLine(const DrawnLine& line, const GroupList& common, const AcDbEntity& whole, bool first);
    void writeText(const DrawnText& text, const GroupList& common, const AcDbEntity& whole, bool first);
    std::uint64_t writeNewHead(const char* kind, const AcDbEntity& whole, bool first);
    void writePart(AcDbEntity& part, const AcDbEntity& whole, bool first);
    void writePolyline(const OldPolyline& polyline, const AcDbEntity& whole, bool first);
    void writeSubhead(const char* kind, std::uint64_t whole, const GroupList& common);
    double reach();

    void beginSection(std::string_view name);
    void endSection() { out_->text(0, std::string_view("ENDSEC")); }
    void step();
    std::uint64_t freshHandle() { return highestWritten_ = ++lastHandle_; }
    std::uint64_t nextHandle() const { return (old() ? highestWritten_ : lastHandle_) + 1; }

    bool old() const { return version_ <= AcDb::kDHL_1009; }
    bool cameFromLater() const { return old() && database_.originalFileVersion() > AcDb::kDHL_1009; }
    bool hasTies() const { return version_ >= AcDb::kDHL_1012; }

    AcDbDatabase& database_;
    AcDb::AcDbDwgVersion version_;
    GroupSink &head_, &body_;
    std::optional<OldNames> names_; // for versions before R2000
    std::unique_ptr<GroupWriter> codes_, bodyNames_, headNames_;
    GroupWriter* out_;
    const FileProgress& progress_;
    std::map<AcDbObjectId, std::vector<AcDbObjectId>> references_;
    std::map<std::string, int> counts_;    // of objects by their names in files
    std::vector<const AcRxClass*> custom_; // classes of modules, in the order of their names
    Losses losses_;
    double reach_ = 0;
    bool changed_ = false;         // since the drawing was read
    AcDbExtents extents_;          // of model space, when it has changed
    std::uint64_t lastHandle_ = 0; // the highest that is taken
    std::uint64_t highestWritten_ = 0;
    size_t written_ = 0, total_ = 1;
};

} // namespace host::dxf
