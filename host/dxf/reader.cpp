// The sections of a drawing file, in whatever order they come, and the header.
#include "host/dxf/reader.h"

#include "host/os/text.h"

namespace host::dxf {

DrawingReader::DrawingReader(std::string_view bytes, AcDbDatabase& into, const ReadOptions& options,
                             ReadReport& report)
    : report_(report), recover_(options.recover), stream_(bytes, options.progress), names_(into, stream_) {
    database = &into;
    const FileHead head = lookAtHead(bytes);
    version = head.version == AcDb::kDHL_Unknown ? AcDb::kDHL_1009 : head.version;
    // A file that names no version may hold either; the decoder tells UTF-8 by its form.
    const bool utf8 =
        head.version == AcDb::kDHL_Unknown || holdsUtf8(head.version) || stream_.scanner().marked();
    stream_.decoder().expect(head.codePage, utf8);
    report.version = head.version;
    report.binary = stream_.scanner().binary();
    if (head.version == AcDb::kDHL_Unknown && !head.versionText.empty())
        note("the version \"" + head.versionText + "\" isn't known", false);
}

void DrawingReader::run() {
    stream_.advance();
    if (stream_.atEnd()) throw Fault{"the file is empty"};
    if (stream_.now().code != 0) throw Fault{"a drawing file begins with group 0 and SECTION"};
    while (!stream_.atEnd() && !stream_.at("EOF")) readSection();
    if (stream_.atEnd()) note("the end mark EOF is missing", true);
}

void DrawingReader::readSection() {
    section_.clear();
    nameObject({});
    if (stream_.at("TABLE")) return readTables();
    if (stream_.at("ENDSEC") || stream_.at("ENDTAB")) {
        note("a mark that ends nothing was passed over", true);
        stream_.advance();
        return stream_.skipToObject();
    }
    if (!stream_.at("SECTION")) throw Fault{"an object stands outside any section"};
    stream_.advance();
    if (stream_.now().code != 2) throw Fault{"a section has no name"};
    section_ = bare(stream_.now().text);
    const std::string name = section_;
    stream_.advance();
    if (name == "HEADER") return readHeader();
    if (name == "CLASSES") return readClasses();
    if (name == "TABLES") return readTables();
    if (name == "BLOCKS") return readBlocks();
    if (name == "ENTITIES") return readEntities();
    if (name == "OBJECTS") return readObjects();
    keepSection(name);
}

// Behind the section's last group; ENDSEC is taken, what else stands there is left.
void DrawingReader::endSection() {
    closeWhole();
    nameObject({});
    if (stream_.atEnd()) throw Fault{"the file ends inside the section"};
    if (stream_.at("ENDSEC")) {
        stream_.advance();
        return stream_.skipToObject();
    }
    note("the section has no end mark", true);
}

bool DrawingReader::atSectionEnd() const {
    return stream_.atEnd() || stream_.at("ENDSEC") || stream_.at("SECTION") || stream_.at("EOF");
}

void DrawingReader::readHeader() {
    std::string name;
    GroupList value;
    auto finish = [&] {
        if (!name.empty()) database->setHeaderValue(name, value);
        value.clear();
    };
    for (; stream_.now().code != 0 && !stream_.atEnd(); stream_.advance()) {
        Group group = stream_.now();
        if (stream_.repair()) note(stream_.repair(), true);
        if (group.code == 9) {
            finish();
            object_ = name = bare(group.text);
            continue;
        }
        if (group.type == GroupType::handle) group.text = {};
        if (name == "$HANDSEED" && group.handle() / 2 <= kHighestHandle)
            database->raiseHandseed(group.handle());
        value.append(group);
    }
    finish();
    endSection();
}

void DrawingReader::readClasses() {
    for (; !atSectionEnd();) {
        FileClass row;
        const bool known = stream_.at("CLASS");
        if (!known) note("something else than a class was passed over", false);
        for (stream_.advance(); stream_.now().code != 0 && !stream_.atEnd(); stream_.advance()) {
            const Group& group = stream_.now();
            switch (group.code) {
            case 1: row.dxfName = group.text; break;
            case 2: row.className = group.text; break;
            case 3: row.appName = group.text; break;
            case 90: row.proxyFlags = int(group.integer); break;
            case 91: row.instances = int(group.integer); break;
            case 280: row.wasProxy = group.integer != 0; break;
            case 281: row.isEntity = group.integer != 0; break;
            default: break;
            }
        }
        if (known && !(row.dxfName.empty() && row.className.empty()))
            database->fileClasses().push_back(std::move(row));
    }
    endSection();
}

void DrawingReader::readObjects() {
    while (!atSectionEnd()) {
        nameObject(stream_.now().text);
        Head head;
        std::unique_ptr<AcDbObject> object = factory_.object(object_);
        readBody(*object, head);
        const bool root = database->namedObjectsDictionaryId().isNull() && head.owner.isNull() &&
                          AcDbDictionary::cast(object.get());
        const AcDbObjectId made = place(std::move(object), head, head.owner);
        if (root) database->setNamedObjectsDictionaryId(made);
    }
    endSection();
}

// Up to ENDSEC, whatever it holds.
void DrawingReader::keepSection(const std::string& name) {
    KeptSection kept;
    kept.name = name;
    for (; !stream_.at("ENDSEC") && !stream_.atEnd(); stream_.advance()) {
        Group group = stream_.now();
        if (group.type == GroupType::handle) group.text = {};
        kept.groups.append(group);
    }
    kept.groups.shrink();
    database->keptSections().push_back(std::move(kept));
    endSection();
}

AcDbObjectId DrawingReader::id(std::uint64_t handle) {
    if (!handle || handle > kHighestHandle) return {};
    return AcDbObjectId(database->cellOf(handle, true));
}

AcDbObjectId DrawingReader::layer(std::string_view name) {
    static const TableKind& kind = *tableKind("LAYER");
    return names_.find(kind, name.empty() ? "0" : name);
}

AcDbObjectId DrawingReader::linetype(std::string_view name) {
    static const TableKind& kind = *tableKind("LTYPE");
    return names_.find(kind, name.empty() ? "ByLayer" : name);
}

AcDbObjectId DrawingReader::textStyle(std::string_view name) {
    static const TableKind& kind = *tableKind("STYLE");
    return names_.find(kind, name.empty() ? "Standard" : name);
}

AcDbObjectId DrawingReader::block(std::string_view name) {
    static const TableKind& kind = *tableKind("BLOCK_RECORD");
    return name.empty() ? AcDbObjectId() : names_.find(kind, name);
}

std::string DrawingReader::whereabouts() const {
    std::string text =
        std::string(stream_.scanner().lineWord()) + " " + std::to_string(stream_.scanner().line());
    if (!section_.empty()) text += ", section " + section_;
    if (!object_.empty()) text += ", " + object_;
    return text;
}

void DrawingReader::note(const std::string& sentence, bool fixed, long line) {
    constexpr size_t kMostNotes = 1000;
    if (++report_.noteCount > long(kMostNotes)) return;
    std::string object = object_;
    if (handle_) object.append(1, ' ').append(utf8(AcDbHandle(handle_).ascii()));
    report_.notes.push_back({line ? line : stream_.line(), section_, object, sentence, fixed});
}

} // namespace host::dxf
