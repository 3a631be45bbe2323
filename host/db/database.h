// AcDbDatabase: one drawing. Its tables, dictionaries, header variables, handles and undo; and
// the services through which code reaches the working database.
#pragma once
#include <array>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/db/blocktable.h"
#include "host/db/dictionary.h"
#include "host/db/layout.h"
#include "host/db/reactor.h"
#include "host/db/symboltable.h"
#include "host/db/undo.h"

namespace host {
// One header variable: its groups as files hold them. Points are two or three reals.
struct HeaderVariable {
    std::string name; // with its $
    GroupList value;
};
// A class that the file's CLASSES section names.
struct FileClass {
    std::string dxfName, className, appName;
    int proxyFlags = 0, instances = 0;
    bool wasProxy = false, isEntity = false;
};
// A section that the host doesn't know, kept whole between SECTION and ENDSEC.
struct KeptSection {
    std::string name;
    GroupList groups;
};
} // namespace host

class AcDbDatabase : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbDatabase)
public:
    // With `buildDefaultDrawing` a complete empty drawing (metric, R2018): spaces, layer 0, linetypes,
    // styles, layouts; without it an empty shell for a reader to fill.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    ~AcDbDatabase() override;
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    template <class T> Acad::ErrorStatus getSymbolTable(T*& table, AcDb::OpenMode mode) {
        return acdbOpenObject(table, tableId(T::desc()), mode);
    }
    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
        return getSymbolTable(table, mode);
    }
    Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
        return getSymbolTable(table, mode);
    }
    Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
        return getSymbolTable(table, mode);
    }
    Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode) {
        return getSymbolTable(table, mode);
    }
    Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode) {
        return getSymbolTable(table, mode);
    }
    Acad::ErrorStatus getViewportTable(AcDbViewportTable*& table, AcDb::OpenMode mode) {
        return getSymbolTable(table, mode);
    }
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode);
    AcDbObjectId blockTableId() const { return tableId(AcDbBlockTable::desc()); }
    AcDbObjectId layerTableId() const { return tableId(AcDbLayerTable::desc()); }
    AcDbObjectId linetypeTableId() const { return tableId(AcDbLinetypeTable::desc()); }
    AcDbObjectId textStyleTableId() const { return tableId(AcDbTextStyleTable::desc()); }
    AcDbObjectId viewportTableId() const { return tableId(AcDbViewportTable::desc()); }
    AcDbObjectId regAppTableId() const { return tableId(AcDbRegAppTable::desc()); }
    AcDbObjectId namedObjectsDictionaryId() const { return namedObjects_; }
    AcDbObjectId modelSpaceId() const;
    AcDbObjectId paperSpaceId() const; // the sheet that is or was last active
    AcDbObjectId currentSpaceId() const;
    AcDbObjectId layerZero() const;
    AcDbObjectId byLayerLinetype() const;
    AcDbObjectId byBlockLinetype() const;
    AcDbObjectId continuousLinetype() const;

    // Header variables by the host's accessor names; setters are undone like every change.
    AcDbObjectId clayer() const;
    Acad::ErrorStatus setClayer(AcDbObjectId layer);
    AcCmColor cecolor() const;
    Acad::ErrorStatus setCecolor(const AcCmColor& color);
    AcDbObjectId celtype() const;
    Acad::ErrorStatus setCeltype(AcDbObjectId linetype);
    AcDbObjectId textstyle() const;
    Acad::ErrorStatus setTextstyle(AcDbObjectId style);
    double celtscale() const;
    AcDb::LineWeight celweight() const;
    double ltscale() const;
    double textsize() const;
    bool tilemode() const;
    Adesk::Int16 surftab1() const;
    Adesk::Int16 splinesegs() const;
    Adesk::Int16 insunits() const;
    AcGePoint3d extmin() const; // of model space as it stands
    AcGePoint3d extmax() const;

    // The id of a handle. eUnknownHandle when nothing was ever behind it.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound, const AcDbHandle& handle);
    // Brings an object in without an owner's list; it stays open for write.
    Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object);
    Acad::ErrorStatus addReactor(AcDbDatabaseReactor* reactor) const;
    Acad::ErrorStatus removeReactor(AcDbDatabaseReactor* reactor) const;
    Acad::ErrorStatus getFilename(const ACHAR*& path) const { return path = path_.c_str(), Acad::eOk; }
    AcDbHandle handseed() const { return AcDbHandle(nextHandle_); }
    AcDb::AcDbDwgVersion originalFileVersion() const { return version_; }

    // -- for the host's own rooms ----------------------------------------------------------------------

    host::UndoLog& undoLog() { return *undo_; }
    void setFilename(const std::wstring& path) { path_ = path; }
    void setOriginalFileVersion(AcDb::AcDbDwgVersion version) { version_ = version; }

    // Header variables in the order of the file. Values by name with their $; null when absent.
    const std::vector<host::HeaderVariable>& header() const { return header_; }
    const host::GroupList* headerValue(const std::string& name) const;
    void setHeaderValue(const std::string& name, const host::GroupList& value); // undone like every change
    double headerReal(const std::string& name, double fallback) const;
    std::int64_t headerInteger(const std::string& name, std::int64_t fallback) const;
    std::wstring headerText(const std::string& name, const std::wstring& fallback = {}) const;
    AcGePoint3d headerPoint(const std::string& name,
                            const AcGePoint3d& fallback = AcGePoint3d::kOrigin) const;
    void setHeaderReal(const std::string& name, int code, double value);
    void setHeaderInteger(const std::string& name, int code, std::int64_t value);
    void setHeaderText(const std::string& name, int code, const std::wstring& value);
    void setHeaderPoint(const std::string& name, const AcGePoint3d& value);
    std::vector<host::FileClass>& fileClasses() { return classes_; }
    std::vector<host::KeptSection>& keptSections() { return keptSections_; }

    // The cell of a handle; made when `create` is set, null otherwise.
    host::IdCell* cellOf(Adesk::UInt64 handle, bool create);
    // Puts an object under a handle, or under the next free one for 0 and for a handle that is
    // taken. The object is owned from now on, and is closed.
    AcDbObjectId place(std::unique_ptr<AcDbObject> object, Adesk::UInt64 handle, AcDbObjectId owner);
    // Places and leaves it open for write, recorded for undo, with the reactors told.
    AcDbObjectId append(AcDbObject* object, AcDbObjectId owner);
    // All cells in order of creation, also those without an object.
    const std::deque<host::IdCell>& cells() const { return cells_; }
    void raiseHandseed(Adesk::UInt64 atLeast);
    AcDbObjectId tableId(const AcRxClass* tableClass) const;
    void setTableId(const AcRxClass* tableClass, AcDbObjectId id);
    // The table of that class, made empty when the drawing has none.
    AcDbObjectId ensureTable(const AcRxClass* tableClass);
    void setNamedObjectsDictionaryId(AcDbObjectId id) { namedObjects_ = id; }
    // Makes whatever a complete drawing needs and this one lacks: tables, spaces, layer 0, styles,
    // dictionaries, layouts. Returns a sentence for each thing made. Readers call it last.
    std::vector<std::string> complete();
    // The database's own classes of tables, in the order of files.
    static const std::vector<const AcRxClass*>& tableClasses();
    // Record of a table by name: an id or null.
    AcDbObjectId find(const AcRxClass* tableClass, const std::wstring& name) const;
    const std::vector<AcDbDatabaseReactor*>& reactors() const { return reactors_; }
    // References of each block record, by one walk through the drawing; ids in order of handles.
    std::map<AcDbObjectId, std::vector<AcDbObjectId>> blockReferences() const;

private:
    friend class host::UndoLog;
    friend class host::ObjectAccess;
    static constexpr Adesk::UInt64 kPage = 16;
    using Page = std::array<host::IdCell*, kPage>;
    host::IdCell*& slot(Adesk::UInt64 handle);
    host::IdCell* newCell(Adesk::UInt64 handle);
    host::IdCell* freshCell();
    void removeHeaderValue(const std::string& name);

    std::deque<host::IdCell> cells_;
    std::unordered_map<Adesk::UInt64, Page> pages_; // by handle / kPage
    Adesk::UInt64 nextHandle_ = 1;
    std::vector<host::HeaderVariable> header_;
    std::unordered_map<std::string, size_t> headerIndex_;
    std::vector<host::FileClass> classes_;
    std::vector<host::KeptSection> keptSections_;
    std::vector<std::pair<const AcRxClass*, AcDbObjectId>> tables_;
    AcDbObjectId namedObjects_;
    std::unique_ptr<host::UndoLog> undo_;
    mutable std::vector<AcDbDatabaseReactor*> reactors_;
    std::wstring path_;
    AcDb::AcDbDwgVersion version_ = AcDb::kDHL_1032;
};

// The services of the running host.
class AcDbHostApplicationServices : public AcRxObject {
public:
    AcDbDatabase* workingDatabase() const { return working_; }
    void setWorkingDatabase(AcDbDatabase* database) { working_ = database; }
    AcDbLayoutManager* layoutManager() const;
    // The host's product registry root, such as text ending in ":804"; empty here unless set.
    const ACHAR* getUserRegistryProductRootKey() const { return productRoot_.c_str(); }
    void setUserRegistryProductRootKey(const std::wstring& key) { productRoot_ = key; }

private:
    AcDbDatabase* working_ = nullptr;
    std::wstring productRoot_;
};
AcDbHostApplicationServices* acdbHostApplicationServices();

// Between entity names and ids.
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
Acad::ErrorStatus acdbGetAdsName(ads_name name, AcDbObjectId id);
// RTNORM and the name of the object with that handle text, or RTERROR.
int acdbHandEnt(const ACHAR* handle, ads_name name);

namespace host {
// Makes the classes of this room known by name; the first drawing does so too.
void registerDatabaseClasses();
// All drawings alive, in order of creation.
const std::vector<AcDbDatabase*>& databases();
} // namespace host
