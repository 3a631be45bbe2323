// Notices what of the current drawing's picture has changed.
#pragma once
#include <vector>

#include "host/db/database.h"
#include "host/db/reactor.h"

namespace desk {

class DrawingWatch : public AcDbDatabaseReactor {
public:
    struct Changes {
        bool everything = true;             // or else
        std::vector<AcDbObjectId> entities; // these of the current space, perhaps more than once
        bool any() const { return everything || !entities.empty(); }
    };

    DrawingWatch() = default;
    ~DrawingWatch() override;
    DrawingWatch(const DrawingWatch&) = delete;
    DrawingWatch& operator=(const DrawingWatch&) = delete;

    // Listens to this drawing from now on; null for none.
    void follow(AcDbDatabase* database);
    AcDbDatabase* database() const { return database_; }
    // Since the last call; everything when another drawing is followed.
    Changes take();

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
    void noteEntity(const AcDbObject& object);
    AcDbDatabase* database_ = nullptr;
    Changes changes_;
};

} // namespace desk
