// The earlier state of an object of a module's class: what it wrote to a filer, beside the data of
// the host's class above it. Only the sources of this room include it.
#pragma once
#include "host/db/database.h"
#include "host/db/filer.h"

namespace host {

struct FiledData {
    MemoryFiler filer;
    AcRxClass* cls = nullptr;
};

// `Base` is the host's class that the module's class stands on: AcDbObject or AcDbEntity.
template <class Base> class Filed final : public Base, public FiledData {
public:
    Filed(const Base& base, const AcDbObject& object) : Base(base) {
        cls = object.isA();
        object.dwgOutFields(&filer);
    }
    AcRxClass* isA() const override { return Base::desc(); }
};

// Ids and names of a drawing, for objects that take groups in after the drawing has been read.
class DrawingContext final : public ReadContext {
public:
    explicit DrawingContext(AcDbDatabase* drawing) { database = drawing; }
    AcDbObjectId id(std::uint64_t handle) override;
    AcDbObjectId layer(std::string_view name) override;
    AcDbObjectId linetype(std::string_view name) override;
    AcDbObjectId textStyle(std::string_view name) override;
    AcDbObjectId block(std::string_view name) override;
    void repaired(const std::string&) override {}
};

// Lets an object of a module's class read its own data from a snapshot or from a kept object.
void takeFields(AcDbObject& object, const AcDbObject& from);

} // namespace host
