// The walk of an audit through a drawing, shared by its sources.
#pragma once
#include "host/dxf/audit.h"

namespace host::dxf {

// Objects are looked over in the form of their own version, but never without the classes' markers.
inline constexpr AcDb::AcDbDwgVersion kFirstWithMarkers = AcDb::kDHL_1012;

class AuditWalk {
public:
    explicit AuditWalk(AcDbDatabase& database) : database_(database) {}
    std::vector<AuditFinding> run();
    void find(const char* code, const AcDbObject& object, std::string sentence);

private:
    void checkGroups(const AcDbObject& object);
    void checkPlace(const AcDbObject& object);
    void checkNames();
    void checkBlocks();

    AcDbDatabase& database_;
    std::vector<AuditFinding> findings_;
};

} // namespace host::dxf
