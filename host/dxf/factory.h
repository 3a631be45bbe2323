// Makes the object for a name behind group 0: of its class where the host has one, else a kept one
// that gives back what it takes in.
#pragma once
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "host/db/object.h"

namespace host {

// What tells the kinds of POLYLINE, and of their vertices, apart.
struct PolylineTraits {
    std::string marker; // the last subclass marker; empty in R12 and before
    int flags = 0;      // group 70
};

class EntityFactory {
public:
    // For the sections BLOCKS and ENTITIES; never null.
    std::unique_ptr<AcDbObject> entity(std::string_view name);
    // For the section OBJECTS; never null.
    std::unique_ptr<AcDbObject> object(std::string_view name);
    std::unique_ptr<AcDbObject> polyline(const PolylineTraits& traits);
    // A vertex, or a face, of that polyline; its traits are asked for where they matter.
    std::unique_ptr<AcDbObject> vertex(const AcDbObject& polyline,
                                       const std::function<PolylineTraits()>& traits);

private:
    AcRxClass* classOf(std::string_view name);
    std::map<std::string, AcRxClass*, std::less<>> classes_;
};

} // namespace host
