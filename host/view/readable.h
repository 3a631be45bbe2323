// Reading an object as it stands, for drawing: changes nothing, so it may be done while someone writes it.
#pragma once

#include "host/db/object.h"

namespace host {

// The object behind the id if there is one of that class that isn't erased; else null.
template <class T> const T* readable(AcDbObjectId id) {
    const AcDbObject* object = id.isNull() ? nullptr : id.cell()->object;
    return object && !object->isErased() ? dynamic_cast<const T*>(object) : nullptr;
}

} // namespace host
