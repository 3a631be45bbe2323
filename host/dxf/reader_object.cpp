// One object's groups: what every object has (handle, owner, reactors, extension dictionary, xdata)
// is taken here, its own data go to the object, and what it doesn't know is kept with it.
#include "host/dxf/reader.h"

#include "host/db/kept.h"

namespace host::dxf {
namespace {
constexpr int kByLayer = 256;
}

void DrawingReader::readBody(AcDbObject& object, Head& head) {
    head.line = stream_.line();
    marker_.clear();
    keptMarker_.clear();
    subclass = {};
    inXdata_ = embedded_ = misplaced_ = false;
    auto* keptObject = dynamic_cast<KeptObject*>(&object);
    keptEntity_ = dynamic_cast<KeptEntity*>(&object);
    gathers_ = keptObject || keptEntity_;
    gathered_.clear();
    counts_.begin({});
    for (stream_.advance(); stream_.now().code != 0 && !stream_.atEnd(); stream_.advance()) {
        if (stream_.repair()) note(stream_.repair(), true);
        if (subclass.empty() && takeHead(object, head)) continue;
        takeFlags(stream_.now(), head);
        if (stream_.now().code == 100)
            takeMark();
        else
            takeData(object, stream_.now());
    }
    if (stream_.atEnd()) throw Fault{"the file ends inside an object"};
    tellCounts();
    gathered_.shrink();
    if (keptObject) keptObject->setGroups(std::exchange(gathered_, {}));
    if (keptEntity_) keptEntity_->setGroups(std::exchange(gathered_, {}));
    giveLayer(object);
    object.inDone(*this);
    if (object.tail()) object.tailForWrite().kept.shrink(), object.tailForWrite().xdata.shrink();
}

// Entities that name no layer are on layer 0.
void DrawingReader::giveLayer(AcDbObject& object) {
    const auto* entity = dynamic_cast<const AcDbEntity*>(&object);
    if (!entity || !entity->layerId().isNull()) return;
    subclass = "AcDbEntity";
    object.inGroup(Group::ofText(8, "0"), *this);
}

// What stands before the first marker. In files without markers that is everything.
bool DrawingReader::takeHead(AcDbObject& object, Head& head) {
    const Group& group = stream_.now();
    switch (group.code) {
    case 5:
    case 105:
        if (head.handle || (group.code == 5 && object_ == "DIMSTYLE")) return false;
        if (group.handle() > kHighestHandle)
            note("the handle is too high for a drawing; it got another", true);
        else
            handle_ = head.handle = group.handle();
        return true;
    case 102: return takeList(object), true;
    case 2: return AcDbSymbolTable::cast(&object) != nullptr; // its class tells a table's name
    case 330:
        if (!head.owner.isNull() || inXdata_) return false;
        head.owner = id(group.handle());
        return true;
    default: return false;
    }
}

// Flags that tell the reader where an entity belongs and what follows it; objects take them as well.
void DrawingReader::takeFlags(const Group& group, Head& head) const {
    if (group.code == 66) head.parts |= group.integer != 0;
    const bool common = subclass.empty() || subclass == "AcDbEntity" || !gathers_;
    if (group.code == 67 && common) head.paper |= group.integer != 0;
}

void DrawingReader::takeMark() {
    tellCounts();
    marker_ = stream_.now().text;
    subclass = marker_;
    counts_.begin(marker_);
    inXdata_ = embedded_ = false;
    sawMarkers_ = true;
    if (gathers_ && !(keptEntity_ && marker_ == "AcDbEntity")) gathered_.append(Group::ofText(100, marker_));
}

// Counts that the classes make anew from what is there; the others stay for an audit to find.
void DrawingReader::tellCounts() {
    counts_.mismatches([this](const CountRow& row, std::int64_t stated, std::int64_t counted) {
        if (row.made) note(sentenceFor(row, stated, counted) + "; what is there was counted", true);
    });
}

// {ACAD_REACTORS, {ACAD_XDICTIONARY, {BLKREFS (which the writer makes anew), or a program's own.
void DrawingReader::takeList(AcDbObject& object) {
    const std::string name(stream_.now().text);
    const bool reactors = name == "{ACAD_REACTORS", dictionary = name == "{ACAD_XDICTIONARY";
    const bool known = reactors || dictionary || name == "{BLKREFS";
    if (!known) keep(object, stream_.now());
    if (!name.starts_with('{')) return;
    for (stream_.advance(); stream_.now().code != 0 && !stream_.atEnd(); stream_.advance()) {
        const Group& group = stream_.now();
        if (!known) keep(object, group);
        if (reactors && group.code == 330 && group.handle())
            object.tailForWrite().persistentReactors.push_back(id(group.handle()));
        if (dictionary && group.code == 360 && group.handle())
            object.tailForWrite().extensionDictionary = id(group.handle());
        if (group.code == 102) return;
    }
    throw Fault{"the list " + name + " has no end"};
}

void DrawingReader::takeData(AcDbObject& object, const Group& group) {
    if (group.code == 1001 || (inXdata_ && group.code >= 1000)) {
        inXdata_ = true;
        object.tailForWrite().xdata.append(group);
        return;
    }
    counts_.take(group);
    if (group.code == 102 && group.text == "{BLKREFS") return takeList(object);
    // 5 is a handle at an object's head alone; further on it is a name.
    Group data = group;
    if (group.code == 5)
        data = Group::ofText(5, stream_.decoder().decode(group.text));
    else if (data.type == GroupType::handle)
        data.text = {};
    // The groups of an embedded object have codes of their own meaning: they go to an object that takes
    // the mark in front of them, and are kept otherwise.
    if (gathers_) return gather(object, data);
    if (embedded_ && !embeddedTaken_) return keep(object, data);
    const bool taken = takeMisplaced(object, data, true) || object.inGroup(data, *this) ||
                       takeMisplaced(object, data, false);
    if (group.code == 101) embedded_ = true, embeddedTaken_ = taken;
    if (!taken) keep(object, data);
}

// Some programs tell the layer and its like behind the marker of the entity's own class. First those whose
// codes mean the same in every class, before the entity sees them; then those that it didn't know.
bool DrawingReader::takeMisplaced(AcDbObject& object, const Group& group, bool sure) {
    const int code = group.code;
    const bool common = sure ? code == 8 || code == 6 || code == 62 || code == 67
                             : code == 48 || code == 60 || (code == 370 && version >= AcDb::kDHL_1015) ||
                                   (code == 420 && version >= AcDb::kDHL_1018);
    if (!common || subclass.empty() || subclass == "AcDbEntity") return false;
    const auto* entity = AcDbEntity::cast(&object);
    if (!entity) return false;
    const bool colorToCome = code == 62 && entity->colorIndex() == kByLayer;
    if (!(misplaced_ || colorToCome || entity->layerId().isNull())) return false;
    misplaced_ |= !colorToCome;
    subclass = "AcDbEntity";
    const bool taken = object.inGroup(group, *this);
    subclass = marker_;
    return taken;
}

// Objects without a class of their own are kept whole. Of entities, what all entities have is taken.
void DrawingReader::gather(AcDbObject& object, const Group& group) {
    const bool common = keptEntity_ && within("AcDbEntity");
    if (common && keptEntity_->AcDbEntity::inGroup(group, *this)) return;
    if (common && !subclass.empty()) return keep(object, group);
    gathered_.append(group);
}

void DrawingReader::keep(AcDbObject& object, const Group& group) {
    GroupList& kept = object.tailForWrite().kept;
    if (subclass != keptMarker_) {
        keptMarker_ = subclass;
        kept.append(Group::ofText(100, keptMarker_));
    }
    kept.append(group);
}

// The handle is the file's where it can be; the next free one for objects without, or with one that
// is taken.
AcDbObjectId DrawingReader::place(std::unique_ptr<AcDbObject> object, const Head& head, AcDbObjectId owner) {
    const IdCell* taken = head.handle ? database->cellOf(head.handle, false) : nullptr;
    const bool twice = taken && taken->object;
    if (!head.handle || twice) names_.secureHandles();
    const AcDbObjectId id = database->place(std::move(object), twice ? 0 : head.handle, owner);
    if (twice) note("the handle is taken already; the object got another", true, head.line);
    return id;
}

} // namespace host::dxf
