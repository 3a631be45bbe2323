// Notices that what is drawn of the current drawing has changed.
#pragma once
#include "host/db/database.h"
#include "host/db/reactor.h"

namespace desk {

class DrawingWatch : public AcDbDatabaseReactor {
public:
    DrawingWatch() = default;
    ~DrawingWatch() override;
    DrawingWatch(const DrawingWatch&) = delete;
    DrawingWatch& operator=(const DrawingWatch&) = delete;

    // Listens to this drawing from now on; null for none.
    void follow(AcDbDatabase* database);
    AcDbDatabase* database() const { return database_; }
    // Something that shows has changed since the last call, or another drawing is followed.
    bool takeChange();

    void objectAppended(const AcDbDatabase*, const AcDbObject* object) override { note(object); }
    void objectUnAppended(const AcDbDatabase*, const AcDbObject* object) override { note(object); }
    void objectReAppended(const AcDbDatabase*, const AcDbObject* object) override { note(object); }
    void objectModified(const AcDbDatabase*, const AcDbObject* object) override { note(object); }
    void objectErased(const AcDbDatabase*, const AcDbObject* object, Adesk::Boolean) override {
        note(object);
    }
    void headerSysVarChanged(const AcDbDatabase*, const ACHAR* name, Adesk::Boolean) override;
    void goodbye(const AcDbDatabase*) override;

private:
    void note(const AcDbObject* object);
    AcDbDatabase* database_ = nullptr;
    bool changed_ = true;
};

} // namespace desk
