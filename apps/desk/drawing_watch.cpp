// Listening to the drawing.
#include "apps/desk/drawing_watch.h"

#include <string_view>
#include <utility>

#include "host/db/symboltable.h"
#include "host/view/readable.h"

namespace desk {

DrawingWatch::~DrawingWatch() { follow(nullptr); }

void DrawingWatch::follow(AcDbDatabase* database) {
    if (database == database_) return;
    if (database_) database_->removeReactor(this);
    database_ = database;
    if (database_) database_->addReactor(this);
    changes_.everything = true;
}

DrawingWatch::Changes DrawingWatch::take() {
    return std::exchange(changes_, Changes{.everything = false, .entities = {}});
}

// Records of blocks change whenever something is put into them; what it is tells for itself. Views come and
// go without a change of the drawing, and these others don't show.
void DrawingWatch::note(const AcDbObject* object) {
    if (changes_.everything) return changes_.entities.clear();
    if (AcDbEntity::cast(object)) return noteEntity(*object);
    const bool unseen = AcDbViewportTableRecord::cast(object) || AcDbViewTableRecord::cast(object) ||
                        AcDbUCSTableRecord::cast(object) || AcDbRegAppTableRecord::cast(object) ||
                        AcDbSymbolTable::cast(object) || AcDbDictionary::cast(object) ||
                        AcDbXrecord::cast(object) || object->objectId() == database_->currentSpaceId();
    if (!unseen) changes_.everything = true;
}

// Vertices and attributes belong to an entity of the space. What stands in another block shows wherever that
// block is inserted.
void DrawingWatch::noteEntity(const AcDbObject& object) {
    const AcDbObjectId space = database_->currentSpaceId();
    AcDbObjectId top = object.objectId(), owner = object.ownerId();
    for (const AcDbEntity* whole; owner != space && (whole = host::readable<AcDbEntity>(owner));) {
        top = owner;
        owner = whole->ownerId();
    }
    if (owner == space)
        changes_.entities.push_back(top);
    else
        changes_.everything = true;
}

// Of the header's variables these change how entities look.
void DrawingWatch::headerSysVarChanged(const AcDbDatabase*, const ACHAR* name, Adesk::Boolean) {
    const std::wstring_view changed = name;
    for (const std::wstring_view one :
         {L"LTSCALE", L"PDMODE", L"PDSIZE", L"FILLMODE", L"LWDISPLAY", L"TILEMODE"})
        changes_.everything = changes_.everything || changed.ends_with(one);
}

void DrawingWatch::goodbye(const AcDbDatabase*) {
    database_ = nullptr;
    changes_.everything = true;
}

} // namespace desk
