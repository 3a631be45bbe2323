// Every object is asked for the groups it would write; the groups are looked over one by one. What
// concerns several objects (names, owners, blocks in blocks) is checked in audit_structure.cpp.
#include "host/dxf/audit.h"

#include <algorithm>
#include <cmath>

#include "host/dxf/audit_walk.h"
#include "host/dxf/tables.h"
#include "host/os/text.h"

namespace host::dxf {
namespace {

std::string handleText(std::uint64_t handle) { return utf8(AcDbHandle(handle).ascii()); }

// Handles that must lead somewhere: hard pointers and ownership. Soft pointers (330 to 339) may outlive
// what they led to, and 320 to 329 are mere numbers.
bool mustLead(int code) {
    return (code >= 340 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481;
}

// Counts in objects, and the groups that they count.
struct CountRow {
    std::string_view marker;
    int code, counted;
};
constexpr CountRow kCounts[] = {{"AcDbPolyline", 90, 10}, {"AcDbSpline", 72, 40}, {"AcDbSpline", 73, 10},
                                {"AcDbSpline", 74, 11},   {"AcDbLeader", 76, 10}, {"AcDbMline", 72, 11}};

// Reals that must be above 0.
struct PositiveRow {
    std::string_view marker;
    int code;
    const char* what;
};
constexpr PositiveRow kPositive[] = {{"AcDbCircle", 40, "the radius"},
                                     {"AcDbText", 40, "the text height"},
                                     {"AcDbMText", 40, "the text height"},
                                     {"AcDbEllipse", 40, "the ratio of the axes"}};

// Looks over the groups of one object.
class Looker final : public GroupWriter {
public:
    Looker(const AcDbObject& object, AuditWalk& walk) : object_(object), walk_(walk) {
        database = object.database();
        version = AcDb::kDHL_1032;
        finishMarker();
    }
    void write(const Group& group) override {
        if (group.code == 100) {
            finishMarker();
            marker_ = group.text;
            return;
        }
        if (group.type == GroupType::handle && group.handle() && mustLead(group.code)) checkHandle(group);
        if (group.type == GroupType::real) checkReal(group);
        for (size_t i = 0; i < std::size(kCounts); ++i) count(i, group);
        if (group.code == 1001) checkApplication(group);
    }
    void finishMarker() {
        for (size_t i = 0; i < std::size(kCounts); ++i)
            if (stated_[i] >= 0 && stated_[i] != counted_[i])
                walk_.find("wrong-count", object_,
                           "group " + std::to_string(kCounts[i].code) + " of " +
                               std::string(kCounts[i].marker) + " says " + std::to_string(stated_[i]) +
                               ", there are " + std::to_string(counted_[i]));
        std::fill(std::begin(stated_), std::end(stated_), -1);
        std::fill(std::begin(counted_), std::end(counted_), 0);
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
        if (!std::isfinite(group.real)) {
            walk_.find("non-finite", object_, "group " + std::to_string(group.code) + " is no finite number");
            return;
        }
        for (const PositiveRow& row : kPositive)
            if (row.code == group.code && row.marker == marker_ && group.real <= 0)
                walk_.find("bad-value", object_, std::string(row.what) + " is not above 0");
    }
    void count(size_t row, const Group& group) {
        if (kCounts[row].marker != marker_) return;
        if (group.code == kCounts[row].code && stated_[row] < 0) stated_[row] = group.integer;
        if (group.code == kCounts[row].counted) ++counted_[row];
    }
    void checkApplication(const Group& group) {
        if (!object_.database()->find(AcDbRegAppTable::desc(), group.wide()).isNull()) return;
        walk_.find("unregistered", object_,
                   "the application " + std::string(group.text) + " of its xdata isn't registered");
    }

    const AcDbObject& object_;
    AuditWalk& walk_;
    std::string marker_;
    std::int64_t stated_[std::size(kCounts)] = {}; // -1: says nothing
    std::int64_t counted_[std::size(kCounts)] = {};
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
