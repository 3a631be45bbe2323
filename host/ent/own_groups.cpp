// Groups that stay as they came: taking, finding, changing and writing them.
#include "host/ent/own_groups.h"

#include <cmath>

#include "host/os/text.h"

namespace host {

bool OwnGroups::take(const Group& group, const ReadContext& context, std::string_view marker) {
    if (context.subclass == "AcDbEntity") return false;
    const std::string_view behind = context.subclass.empty() ? marker : context.subclass;
    if (list_.empty() || reading_ != behind) list_.append(Group::ofText(100, reading_ = behind));
    list_.append(group);
    return true;
}

void OwnGroups::write(GroupWriter& writer, const char* marker) const {
    if (list_.empty()) writer.subclass(marker);
    for (const Group group : list_) {
        if (group.code == 100)
            writer.subclass(std::string(group.text).c_str());
        else
            writer.write(group);
    }
}

bool OwnGroups::hasMarker(std::string_view marker) const {
    for (const Group group : list_)
        if (group.is(100, marker)) return true;
    return false;
}

double OwnGroups::real(int code, double fallback) const {
    Group found;
    const bool usable = list_.find(code, found) && found.type == GroupType::real && std::isfinite(found.real);
    return usable ? found.real : fallback;
}

std::int64_t OwnGroups::integer(int code, std::int64_t fallback) const {
    Group found;
    const bool usable =
        list_.find(code, found) && found.type != GroupType::real && found.type != GroupType::text;
    return usable ? found.integer : fallback;
}

std::wstring OwnGroups::text(int code) const {
    Group found;
    return list_.find(code, found) ? found.wide() : std::wstring();
}

std::uint64_t OwnGroups::handle(int code) const {
    Group found;
    return list_.find(code, found) && found.type == GroupType::handle ? found.handle() : 0;
}

AcGePoint3d OwnGroups::point(int code, const AcGePoint3d& fallback) const {
    Group x;
    if (!list_.find(code, x)) return fallback;
    return {real(code), real(code + 10), real(code + 20)};
}

AcGeVector3d OwnGroups::vector(int code, const AcGeVector3d& fallback) const {
    return point(code, AcGePoint3d::kOrigin + fallback).asVector();
}

std::vector<AcGePoint3d> OwnGroups::points(int code) const {
    std::vector<AcGePoint3d> found;
    for (const Group group : list_) {
        if (group.code == code) found.push_back({group.real, 0, 0});
        if (found.empty()) continue;
        if (group.code == code + 10) found.back().y = group.real;
        if (group.code == code + 20) found.back().z = group.real;
    }
    return found;
}

std::vector<double> OwnGroups::reals(int code) const {
    std::vector<double> found;
    for (const Group group : list_)
        if (group.code == code) found.push_back(group.real);
    return found;
}

void OwnGroups::set(const Group& value) {
    GroupList edited;
    bool done = false;
    for (const Group group : list_) {
        const bool here = !done && group.code == value.code;
        edited.append(here ? value : group);
        done |= here;
    }
    if (!done) edited.append(value);
    list_ = std::move(edited);
}

void OwnGroups::setReal(int code, double value) { set(Group::ofReal(code, value)); }
void OwnGroups::setInteger(int code, std::int64_t value) { set(Group::ofInteger(code, value)); }

void OwnGroups::setText(int code, const std::wstring& value) {
    const std::string bytes = utf8(value);
    set(Group::ofText(code, bytes));
}

void OwnGroups::setPoint(int code, const AcGePoint3d& value, int after) {
    Group x;
    if (list_.find(code, x)) {
        bool first = true;
        return mapPoints({code},
                         [&](const AcGePoint3d& p) { return std::exchange(first, false) ? value : p; });
    }
    GroupList edited;
    bool done = false;
    const auto put = [&] {
        for (int axis = 0; axis < 3; ++axis)
            edited.append(Group::ofReal(code + 10 * axis, value[unsigned(axis)]));
        done = true;
    };
    for (const Group group : list_) {
        edited.append(group);
        if (group.code == after + 20 && !done) put();
    }
    if (!done) put();
    list_ = std::move(edited);
}

bool GroupedEntity::inGroup(const Group& group, ReadContext& context) {
    if (context.within("AcDbEntity") && AcDbEntity::inGroup(group, context)) return true;
    return own_.take(group, context, marker());
}

void GroupedEntity::outGroups(GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    own_.write(writer, marker());
}

Acad::ErrorStatus GroupedEntity::change() {
    if (auto es = willModify(); es != Acad::eOk) return es;
    forgetKeptPicture(*this);
    return Acad::eOk;
}

void forgetKeptPicture(AcDbEntity& entity) {
    if (!entity.tail() || entity.tail()->kept.empty()) return;
    GroupList rest;
    bool common = true, picture = false;
    for (const Group group : entity.tail()->kept) {
        if (group.code == 100) common = group.text == "AcDbEntity";
        const bool length = common && (group.code == 92 || group.code == 160);
        picture |= length;
        if (!length && !(common && picture && group.code == 310)) rest.append(group);
    }
    entity.tailForWrite().kept = std::move(rest);
}

} // namespace host
