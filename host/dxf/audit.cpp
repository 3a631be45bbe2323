// Every object is asked for the groups it would write; the groups are looked over one by one. What
// concerns several objects (names, owners, blocks in blocks) is checked in audit_structure.cpp.
#include "host/dxf/audit.h"

#include <algorithm>
#include <cmath>

#include "host/dxf/audit_walk.h"
#include "host/dxf/counts.h"
#include "host/dxf/tables.h"
#include "host/dxf/values.h"
#include "host/os/text.h"

namespace host::dxf {
namespace {

std::string handleText(std::uint64_t handle) { return utf8(AcDbHandle(handle).ascii()); }

// Handles that must lead somewhere: hard pointers and ownership. Soft pointers (330 to 339) may outlive
// what they led to, and 320 to 329 are mere numbers.
bool mustLead(int code) {
    return (code >= 340 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481;
}

// Looks over the groups of one object.
class Looker final : public GroupWriter {
public:
    Looker(const AcDbObject& object, AuditWalk& walk) : object_(object), walk_(walk) {
        database = object.database();
        version = std::max(database->originalFileVersion(), kFirstWithMarkers);
    }
    void write(const Group& group) override {
        Group value = group;
        if (const char* fault = values_.fault(value)) walk_.find("bad-value", object_, fault);
        if (group.code == 100) {
            finishMarker();
            return counts_.begin(group.text);
        }
        if (group.type == GroupType::handle && group.handle() && mustLead(group.code)) checkHandle(group);
        if (group.type == GroupType::real) checkReal(group);
        counts_.take(group);
        if (group.code == 1001) checkApplication(group);
    }
    void finishMarker() {
        counts_.mismatches([&](const CountRow& row, std::int64_t stated, std::int64_t counted) {
            walk_.find("wrong-count", object_, sentenceFor(row, stated, counted));
        });
        counts_.begin({});
    }

private:
    void checkHandle(const Group& group) {
        const IdCell* cell = object_.database()->cellOf(group.handle(), false);
        if (cell && cell->object && !cell->object->isErased()) return;
        walk_.find("broken-reference", object_,
                   "group " + std::to_string(group.code) + " leads to " + handleText(group.handle()) +
                       ", where no object is");
    }
    void checkReal(const Group& group) {
        if (!std::isfinite(group.real))
            walk_.find("non-finite", object_, "group " + std::to_string(group.code) + " is no finite number");
    }
    void checkApplication(const Group& group) {
        if (!object_.database()->find(AcDbRegAppTable::desc(), group.wide()).isNull()) return;
        walk_.find("unregistered", object_,
                   "the application " + std::string(group.text) + " of its xdata isn't registered");
    }

    const AcDbObject& object_;
    AuditWalk& walk_;
    CountKeeper counts_;
    ValueKeeper values_;
};

} // namespace

void AuditWalk::find(const char* code, const AcDbObject& object, std::string sentence) {
    findings_.push_back({code, object.dxfName(), object.objectId().handle(), std::move(sentence)});
}

void AuditWalk::checkGroups(const AcDbObject& object) {
    Looker looker(object, *this);
    const ObjectTail* tail = object.tail();
    looker.beginObject(tail ? &tail->kept : nullptr);
    object.outGroups(looker);
    looker.endObject();
    looker.finishMarker();
    if (!tail) return;
    for (const Group group : tail->xdata) looker.write(group);
    if (!tail->extensionDictionary.isNull() && !behind<AcDbObject>(tail->extensionDictionary))
        find("broken-reference", object,
             "the extension dictionary " + handleText(tail->extensionDictionary.handle()) + " is missing");
}

std::vector<AuditFinding> AuditWalk::run() {
    for (const IdCell& cell : database_.cells()) {
        if (!cell.object || cell.object->isErased()) continue;
        checkGroups(*cell.object);
        checkPlace(*cell.object);
    }
    checkNames();
    checkBlocks();
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const AuditFinding& a, const AuditFinding& b) { return a.handle < b.handle; });
    return std::move(findings_);
}

} // namespace host::dxf

namespace host {
std::vector<AuditFinding> audit(AcDbDatabase& database) { return dxf::AuditWalk(database).run(); }
} // namespace host
