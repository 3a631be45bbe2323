// Listening to the drawing.
#include "apps/desk/drawing_watch.h"

#include <string_view>

#include "host/db/symboltable.h"

namespace desk {

DrawingWatch::~DrawingWatch() { follow(nullptr); }

void DrawingWatch::follow(AcDbDatabase* database) {
    if (database == database_) return;
    if (database_) database_->removeReactor(this);
    database_ = database;
    if (database_) database_->addReactor(this);
    changed_ = true;
}

bool DrawingWatch::takeChange() { return std::exchange(changed_, false); }

// Views come and go without a change of the drawing itself.
void DrawingWatch::note(const AcDbObject* object) {
    changed_ = changed_ || !AcDbViewportTableRecord::cast(object);
}

// Of the header's variables these change how entities look.
void DrawingWatch::headerSysVarChanged(const AcDbDatabase*, const ACHAR* name, Adesk::Boolean) {
    const std::wstring_view changed = name;
    for (const std::wstring_view one :
         {L"LTSCALE", L"PDMODE", L"PDSIZE", L"FILLMODE", L"LWDISPLAY", L"TILEMODE"})
        changed_ = changed_ || changed.ends_with(one);
}

void DrawingWatch::goodbye(const AcDbDatabase*) {
    database_ = nullptr;
    changed_ = true;
}

} // namespace desk
