// What a complete drawing needs: filled in for a drawing read from an old or foreign file, and the
// whole of a new one.
#include <algorithm>

#include "host/db/access.h"
#include "host/db/kept.h"
#include "host/db/rows.h"
#include "host/os/clock.h"
#include "host/os/text.h"

namespace {

using Notes = std::vector<std::string>;

constexpr const char* kViewport =
    "100|AcDbViewportTableRecord|13|0|23|0|14|10|24|10|15|10|25|10|43|0|44|0|50|0|72|1000|73|1|74|3|75|0|"
    "76|0|77|0|78|0|281|0|65|1|110|0|120|0|130|0|111|1|121|0|131|0|112|0|122|1|132|0|79|0|146|0|60|3|61|5|"
    "292|1|282|1|141|0|142|0|63|250|421|3355443";
constexpr const char* kDimStyle =
    "100|AcDbDimStyleTableRecord|41|2.5|42|0.625|43|3.75|44|1.25|73|0|74|0|77|1|78|8|140|2.5|141|2.5|"
    "143|0.03937007874016|147|0.625|171|3|172|1|271|2|272|2|274|3|278|44|284|8";
constexpr const char* kMlineStyle =
    "100|AcDbMlineStyle|2|STANDARD|70|0|3||62|256|51|90|52|90|71|2|49|0.5|62|256|6|BYLAYER|49|-0.5|62|256|"
    "6|BYLAYER";

class Completion {
public:
    explicit Completion(AcDbDatabase& database)
        : db_(database), tells_(database.originalFileVersion() >= AcDb::kDHL_1012) {}

    Notes run() {
        tables();
        linetypes();
        layers();
        styles();
        viewports();
        spaces();
        dictionaries();
        layouts();
        return std::move(notes_);
    }

    // What a new drawing has beyond what every drawing needs.
    void extras() {
        for (const wchar_t* key : {L"ACAD_COLOR", L"ACAD_TABLESTYLE", L"ACAD_VISUALSTYLE"}) dictionary(key);
        const AcDbObjectId materials = dictionary(L"ACAD_MATERIAL"), scales = dictionary(L"ACAD_SCALELIST");
        for (const char* name : {"ByBlock", "ByLayer", "Global"})
            kept(materials, name, "MATERIAL", std::string("100|AcDbMaterial|1|") + name);
        kept(scales, "A0", "SCALE", "100|AcDbScale|70|0|300|1:1|140|1|141|1|290|1");
    }

private:
    void note(const std::string& sentence) {
        if (tells_) notes_.push_back(sentence);
    }

    template <class Record> Record* record(const AcRxClass* table, const wchar_t* name) {
        auto made = std::make_unique<Record>();
        made->setName(name);
        Record* resident = made.get();
        const AcDbObjectId tableId = db_.tableId(table);
        const AcDbObjectId id = db_.place(std::move(made), 0, tableId);
        host::peek<AcDbSymbolTable>(tableId)->adopt(id, name);
        return resident;
    }

    bool lacks(const AcRxClass* table, const wchar_t* name) const { return db_.find(table, name).isNull(); }

    void tables() {
        for (const AcRxClass* cls : AcDbDatabase::tableClasses()) {
            if (!db_.tableId(cls).isNull()) continue;
            auto* table = host::peek<AcDbSymbolTable>(db_.ensureTable(cls));
            note(std::string("The table ") + table->tableName() + " was missing and has been made.");
            if (cls == AcDbDimStyleTable::desc())
                table->tailForWrite().kept = host::groupsOf("100|AcDbDimStyleTable|71|1");
        }
    }

    void linetypes() {
        const AcRxClass* table = AcDbLinetypeTable::desc();
        for (const wchar_t* name : {L"ByBlock", L"ByLayer"})
            if (lacks(table, name)) record<AcDbLinetypeTableRecord>(table, name);
        if (lacks(table, L"Continuous"))
            fill(record<AcDbLinetypeTableRecord>(table, L"Continuous"),
                 [](AcDbLinetypeTableRecord& r) { r.setComments(L"Solid line"); });
    }

    // Through the setters, which want an object that is open.
    template <class T, class Fill> void fill(T* object, Fill change) {
        AcDbObjectPointer<T> open(object->objectId(), AcDb::kForWrite);
        if (open) change(*open.object());
    }

    void layers() {
        if (lacks(AcDbLayerTable::desc(), L"0")) {
            auto* zero = record<AcDbLayerTableRecord>(AcDbLayerTable::desc(), L"0");
            fill(zero, [&](AcDbLayerTableRecord& r) { r.setLinetypeObjectId(db_.continuousLinetype()); });
            note("Layer 0 was missing and has been made.");
        }
    }

    void styles() {
        if (lacks(AcDbRegAppTable::desc(), L"ACAD"))
            record<AcDbRegAppTableRecord>(AcDbRegAppTable::desc(), L"ACAD");
        if (lacks(AcDbTextStyleTable::desc(), L"Standard")) {
            record<AcDbTextStyleTableRecord>(AcDbTextStyleTable::desc(), L"Standard");
            note("The text style Standard was missing and has been made.");
        }
        if (!lacks(AcDbDimStyleTable::desc(), L"Standard")) return;
        auto* style = record<AcDbDimStyleTableRecord>(AcDbDimStyleTable::desc(), L"Standard");
        auto& groups = style->tailForWrite().kept;
        groups = host::groupsOf(kDimStyle);
        const AcDbObjectId text = db_.find(AcDbTextStyleTable::desc(), L"Standard");
        groups.append(host::Group::ofHandle(340, text.handle()));
    }

    void viewports() {
        if (!lacks(AcDbViewportTable::desc(), L"*Active")) return;
        auto* viewport = record<AcDbViewportTableRecord>(AcDbViewportTable::desc(), L"*Active");
        viewport->tailForWrite().kept = host::groupsOf(kViewport);
    }

    void spaces() {
        for (const wchar_t* name : {ACDB_MODEL_SPACE, ACDB_PAPER_SPACE}) {
            if (!lacks(AcDbBlockTable::desc(), name)) continue;
            record<AcDbBlockTableRecord>(AcDbBlockTable::desc(), name);
            note("The block " + host::utf8(name) + " was missing and has been made.");
        }
        for (auto id : host::peek<AcDbSymbolTable>(db_.blockTableId())->records()) {
            auto* block = host::peek<AcDbBlockTableRecord>(id);
            if (!block) continue;
            if (!block->blockBegin().isValid()) block->setBlockBegin(mark<AcDbBlockBegin>(id));
            if (!block->blockEnd().isValid()) block->setBlockEnd(mark<AcDbBlockEnd>(id));
        }
    }

    template <class Mark> AcDbObjectId mark(AcDbObjectId block) {
        auto made = std::make_unique<Mark>();
        made->setLayer(db_.layerZero());
        return db_.place(std::move(made), 0, block);
    }

    AcDbObjectId put(AcDbObjectId dictionary, const std::wstring& key, std::unique_ptr<AcDbObject> object,
                     AcDbHandle handle = AcDbHandle()) {
        const AcDbObjectId id = db_.place(std::move(object), std::uint64_t(handle), dictionary);
        host::peek<AcDbDictionary>(dictionary)->adopt(key, id);
        return id;
    }

    AcDbObjectId kept(AcDbObjectId dictionary, const char* key, const char* kind, const std::string& rows) {
        auto object = std::make_unique<host::KeptObject>(kind);
        object->setGroups(host::groupsOf(rows));
        return put(dictionary, host::wide(key), std::move(object));
    }

    AcDbObjectId entry(const wchar_t* key) const {
        AcDbObjectId id;
        if (const auto* root = host::peek<AcDbDictionary>(db_.namedObjectsDictionaryId()))
            root->getAt(key, id);
        return id;
    }

    // The dictionary of that name below the root, made when it is missing.
    AcDbObjectId dictionary(const wchar_t* key) {
        const AcDbObjectId present = entry(key);
        if (host::peek<AcDbDictionary>(present)) return present;
        return put(db_.namedObjectsDictionaryId(), key, std::make_unique<AcDbDictionary>());
    }

    void dictionaries() {
        if (!host::peek<AcDbDictionary>(db_.namedObjectsDictionaryId())) {
            db_.setNamedObjectsDictionaryId(db_.place(std::make_unique<AcDbDictionary>(), 0, {}));
            note("The dictionary of named objects was missing and has been made.");
        }
        for (const wchar_t* key : {L"ACAD_GROUP", L"ACAD_LAYOUT", L"ACAD_PLOTSETTINGS"}) dictionary(key);
        if (entry(L"ACAD_MLINESTYLE").isNull())
            kept(dictionary(L"ACAD_MLINESTYLE"), "Standard", "MLINESTYLE", kMlineStyle);
        if (!entry(L"ACAD_PLOTSTYLENAME").isNull()) return;
        auto made = std::make_unique<AcDbDictionaryWithDefault>();
        auto* styles = made.get();
        const AcDbObjectId id = put(db_.namedObjectsDictionaryId(), L"ACAD_PLOTSTYLENAME", std::move(made));
        styles->setDefaultId(kept(id, "Normal", "ACDBPLACEHOLDER", ""));
    }

    void layouts() {
        const AcDbObjectId list = dictionary(L"ACAD_LAYOUT");
        linkLayouts(list);
        int tab = int(host::peek<AcDbDictionary>(list)->numEntries());
        for (auto id : host::peek<AcDbSymbolTable>(db_.blockTableId())->records()) {
            auto* block = host::peek<AcDbBlockTableRecord>(id);
            if (!block || block->isErased() || host::peek<AcDbLayout>(block->getLayoutId())) continue;
            if (!block->isModelSpace() && !block->isPaperSpace()) continue;
            tab = std::max(tab, 1);
            const std::wstring name = block->isModelSpace() ? L"Model" : freeLayoutName(list, tab);
            std::unique_ptr<AcDbObject> layout(AcDbLayout::make(name, block->isModelSpace() ? 0 : tab++, id));
            // Under the handle that the block names, when nothing stands there.
            const AcDbHandle wanted = block->getLayoutId().handle();
            const AcDbObjectId layoutId = put(list, name, std::move(layout), wanted);
            fill(block, [&](AcDbBlockTableRecord& r) { r.setLayoutId(layoutId); });
            if (db_.originalFileVersion() >= AcDb::kDHL_1015)
                note("The layout " + host::utf8(name) + " was missing and has been made.");
        }
    }

    // Layouts say which block is theirs; the blocks learn it where they don't know.
    void linkLayouts(AcDbObjectId list) {
        for (const auto& entry : host::peek<AcDbDictionary>(list)->entries()) {
            const auto* layout = host::peek<AcDbLayout>(entry.id);
            auto* block =
                layout ? host::peek<AcDbBlockTableRecord>(layout->getBlockTableRecordId()) : nullptr;
            if (!block || host::peek<AcDbLayout>(block->getLayoutId())) continue;
            fill(block, [&](AcDbBlockTableRecord& r) { r.setLayoutId(entry.id); });
        }
    }

    std::wstring freeLayoutName(AcDbObjectId list, int from) const {
        const auto* layouts = host::peek<AcDbDictionary>(list);
        for (int number = from;; ++number)
            if (std::wstring name = L"Layout" + std::to_wstring(number); !layouts->has(name.c_str()))
                return name;
    }

    AcDbDatabase& db_;
    bool tells_;
    Notes notes_;
};

void headerOfNewDrawing(AcDbDatabase& database) {
    for (auto* row = host::headerDefaultsBegin(); row != host::headerDefaultsEnd(); ++row)
        database.setHeaderValue(row->name, host::groupsOf(row->groups));
    for (const char* name : {"$TDCREATE", "$TDUPDATE"})
        database.setHeaderReal(name, 40, host::julianDate(false));
    for (const char* name : {"$TDUCREATE", "$TDUUPDATE"})
        database.setHeaderReal(name, 40, host::julianDate(true));
}

} // namespace

std::vector<std::string> AcDbDatabase::complete() {
    const bool recorded = undo_->recording();
    undo_->setRecording(false);
    auto notes = Completion(*this).run();
    undo_->setRecording(recorded);
    return notes;
}

void buildNewDrawing(AcDbDatabase& database) {
    headerOfNewDrawing(database);
    Completion completion(database);
    completion.run();
    completion.extras();
    const std::string app = "ObjectDBX Classes";
    database.fileClasses() = {
        {"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", app, 0, 1, false, false},
        {"ACDBPLACEHOLDER", "AcDbPlaceHolder", app, 0, 1, false, false},
        {"LAYOUT", "AcDbLayout", app, 0, 2, false, false},
        {"MATERIAL", "AcDbMaterial", app, 1153, 3, false, false},
        {"SCALE", "AcDbScale", app, 1153, 1, false, false},
    };
}
