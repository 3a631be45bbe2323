// The rows of a view, in the order in which R12 wants them.
#include "host/dxf/old_viewport.h"

#include "host/dxf/tables.h"
#include "host/os/text.h"

namespace host::dxf {
namespace {

class View {
public:
    View(const GroupList& own, AcDbDatabase& database) : own_(own), database_(database) {}

    GroupList groups() {
        for (const int code : {10, 20, 30, 40, 41}) out_.append(Group::ofReal(code, real(code)));
        for (const int code : {68, 69}) out_.append(Group::ofInteger(code, whole(code, code == 68 ? 0 : 2)));
        text(1001, "ACAD"), text(1000, "MVIEW"), text(1002, "{");
        flag(kFormOfView);
        for (const int code : {17, 27, 37})
            out_.append(Group::ofReal(1010 + 10 * (code / 10 - 1), real(code)));
        for (const int code : {16, 26, 36})
            out_.append(Group::ofReal(1010 + 10 * (code / 10 - 1), real(code, code == 36 ? 1 : 0)));
        for (const int code : {51, 45, 12, 22, 42, 43, 44}) number(code);
        const std::int64_t mode = whole(90, 0);
        flag(mode & 0x1F), flag(whole(72, 100)), flag(0);
        flag((mode >> 5) & 3), flag((mode >> 8) & 1), flag((mode >> 9) & 1), flag((mode >> 10) & 1), flag(0);
        for (const int code : {50, 13, 23, 14, 24, 15, 25}) number(code);
        flag((mode >> 11) & 1);
        frozenLayers();
        text(1002, "}");
        return std::move(out_);
    }

private:
    static constexpr int kFormOfView = 16;
    double real(int code, double otherwise = 0) const {
        Group group;
        return own_.find(code, group) ? group.real : otherwise;
    }
    std::int64_t whole(int code, std::int64_t otherwise) const {
        Group group;
        return own_.find(code, group) ? group.integer : otherwise;
    }
    void text(int code, std::string_view value) { out_.append(Group::ofText(code, value)); }
    void flag(std::int64_t value) { out_.append(Group::ofInteger(1070, value)); }
    void number(int code) { out_.append(Group::ofReal(1040, real(code))); }
    void frozenLayers() {
        text(1002, "{");
        for (const Group group : own_) {
            if (group.code != 331 && group.code != 341) continue;
            const IdCell* cell = database_.cellOf(group.handle(), false);
            const auto* layer = cell && cell->object ? AcDbLayerTableRecord::cast(cell->object) : nullptr;
            if (layer && !layer->isErased()) text(1003, utf8(layer->name()));
        }
        text(1002, "}");
    }

    const GroupList& own_;
    AcDbDatabase& database_;
    GroupList out_;
};

} // namespace

GroupList oldViewport(const GroupList& own, AcDbDatabase& database) { return View(own, database).groups(); }

} // namespace host::dxf
