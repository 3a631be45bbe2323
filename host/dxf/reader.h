// Builds a drawing from a stream of groups. The sections are read in reader.cpp and
// reader_tables.cpp, entities and their parts in reader_entities.cpp, one object's groups in
// reader_object.cpp, and the loose ends are tied in reader_finish.cpp; what recovery puts right is in
// reader_mend.cpp and reader_mend_names.cpp.
#pragma once
#include <map>
#include <string>
#include <unordered_map>

#include "host/db/kept.h"
#include "host/dxf/counts.h"
#include "host/dxf/dxf.h"
#include "host/dxf/factory.h"
#include "host/dxf/names.h"
#include "host/dxf/stream.h"

namespace host::dxf {

class DrawingReader final : public ReadContext {
public:
    DrawingReader(std::string_view bytes, AcDbDatabase& into, const ReadOptions& options, ReadReport& report);

    // Reads all sections; throws Fault or Cancelled.
    void run();
    // Makes a whole drawing of what was read; after run(), or after a fault when recovering.
    void finish();
    // Where the reader stands: ", line 12, section ENTITIES".
    std::string whereabouts() const;

    AcDbObjectId id(std::uint64_t handle) override;
    AcDbObjectId layer(std::string_view name) override;
    AcDbObjectId linetype(std::string_view name) override;
    AcDbObjectId textStyle(std::string_view name) override;
    AcDbObjectId block(std::string_view name) override;
    void repaired(const std::string& sentence) override { note(sentence, true); }

private:
    // What stands at the head of an object, apart from its own data.
    struct Head {
        std::uint64_t handle = 0;
        AcDbObjectId owner;
        bool paper = false; // group 67
        bool parts = false; // group 66: parts follow
        long line = 0;
    };

    // Sections.
    void readSection();
    void readHeader();
    void readClasses();
    void readTables();
    void readTable();
    AcDbSymbolTable& readTableHead(const TableKind& kind);
    void readRecord(const TableKind& kind, AcDbSymbolTable& table);
    void giveName(AcDbSymbolTableRecord& record, const TableKind& kind);
    void giveLinetype(AcDbSymbolTableRecord& record);
    void keepTable(const std::string& name);
    void readBlocks();
    void readBlock();
    void readBlockEntities(AcDbBlockTableRecord& block);
    void readEntities();
    void readObjects();
    void keepSection(const std::string& name);
    bool atSectionEnd() const;
    void endSection();

    // One object.
    void readBody(AcDbObject& object, Head& head);
    void giveLayer(AcDbObject& object);
    bool takeHead(AcDbObject& object, Head& head);
    void takeFlags(const Group& group, Head& head) const;
    void takeMark();
    void tellCounts();
    void takeList(AcDbObject& object);
    void takeData(AcDbObject& object, const Group& group);
    bool takeMisplaced(AcDbObject& object, const Group& group, bool sure);
    void gather(AcDbObject& object, const Group& group);
    void keep(AcDbObject& object, const Group& group);
    void nameObject(std::string_view kind) { object_ = kind, handle_ = 0; }
    AcDbObjectId place(std::unique_ptr<AcDbObject> object, const Head& head, AcDbObjectId owner);

    // Entities.
    void readEntity(AcDbBlockTableRecord* block);
    std::unique_ptr<AcDbObject> makeEntity(std::string_view kind);
    PolylineTraits polylineTraits();
    void readPart(std::string_view kind);
    bool isPartOfWhole(std::string_view kind) const;
    void closeWhole();
    AcDbBlockTableRecord& home(const Head& head);
    AcDbBlockTableRecord& blockRecord(const std::wstring& name, std::uint64_t handle = 0);
    AcDbBlockTableRecord& recordOfBlock();
    std::wstring blockName(const std::string& name) const;

    // Loose ends.
    void makeMissing();
    void makeRecord(const NameBook::Missing& missing);
    void tieOwners();
    void claim(AcDbObjectId orphan, AcDbObjectId owner);
    bool leadsWell(const AcDbDictionary::Entry& entry, bool root) const;
    void dropDeadEntries();
    void mend();
    void mendReferences(AcDbObject& object);
    void mendKept(AcDbObject& object);
    bool leadsNowhere(const Group& group) const;
    void tellDead(const Group& group, const char* cure);
    AcDbObjectId standInFor(std::string_view kind, int code) const;
    void refile(AcDbObject& object, GroupList groups);
    void mendCounts(AcDbObject& object);
    void mendValues(AcDbObject& object);
    void mendName(AcDbObject& object);
    void mendEntries(AcDbDictionary& dictionary);
    void mendOwner(AcDbObject& object);
    void gatherListers();
    AcDbObjectId orphanage();
    void registerApplications(AcDbObject& object);
    void openCycle(AcDbObjectId block);
    void settleVersion();
    void note(const std::string& sentence, bool fixed, long line = 0);

    ReadReport& report_;
    bool recover_;
    GroupStream stream_;
    NameBook names_;
    EntityFactory factory_;
    std::string section_, object_; // where the reader stands, for notes
    std::uint64_t handle_ = 0;

    // The object being read.
    std::string marker_, keptMarker_;
    bool inXdata_ = false, embedded_ = false, embeddedTaken_ = false;
    bool misplaced_ = false; // what all entities have stands behind another marker
    bool gathers_ = false;   // it is kept whole
    KeptEntity* keptEntity_ = nullptr;
    GroupList gathered_;
    CountKeeper counts_;

    // The polyline or reference whose parts are being read.
    struct Whole {
        AcDbObject* object = nullptr;
        std::string_view parts; // "VERTEX" or "ATTRIB"
        bool expected = false;  // it said that parts follow
        bool any = false;
    };
    Whole whole_;
    AcDbBlockTableRecord *modelSpace_ = nullptr, *paperSpace_ = nullptr;
    int nameless_ = 0;                             // names given so far
    std::map<AcDbObjectId, AcDbObjectId> listers_; // who lists an object, while the drawing is mended
    // The kinds of what the file holds, for the version to save it as.
    bool sawMarkers_ = false, sawModernKind_ = false;
};

} // namespace host::dxf
