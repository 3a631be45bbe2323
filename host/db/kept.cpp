// Kept objects: taking every group in and giving them back. Their coming to life is in revive.cpp.
#include "host/db/kept.h"

#include <map>

#include "host/db/access.h"
#include "host/db/database.h"
#include "host/os/text.h"

namespace host {

namespace {

KeptPicture* thePicture = nullptr;

AcRxClass* keptClass(const std::string& dxfName, AcRxClass* parent) {
    static std::map<std::pair<std::string, AcRxClass*>, std::unique_ptr<AcRxClass>> classes;
    auto& cls = classes[{dxfName, parent}];
    if (!cls) {
        const std::wstring name = wide(dxfName);
        cls = std::make_unique<AcRxClass>(name.c_str(), name.c_str(), parent, nullptr);
    }
    return cls.get();
}

// Takes a group in behind the marker it stands behind.
void keep(GroupList& groups, std::string& marker, const Group& group, const ReadContext& context) {
    if (group.code == 100) {
        if (marker == group.text && !groups.empty()) return;
        marker = group.text;
    } else if (context.subclass != marker) {
        marker = context.subclass;
        groups.append(Group::ofText(100, marker));
    }
    groups.append(group);
}

// Those that the test wants.
template <class Test> void giveBack(const GroupList& groups, GroupWriter& writer, Test test) {
    for (const Group g : groups) {
        if (g.code == 100)
            writer.subclass(std::string(g.text).c_str());
        else if (test(g))
            writer.write(g);
    }
}

} // namespace

AcRxClass* KeptObject::isA() const { return keptClass(dxfName_, AcDbObject::desc()); }

bool KeptObject::inGroup(const Group& group, ReadContext& context) {
    keep(groups_, marker_, group, context);
    return true;
}

// A group of objects (the kind that users name) forgets its members as they are erased; undo brings them
// back.
void KeptObject::outGroups(GroupWriter& writer) const {
    if (dxfName_ != "GROUP") return giveBack(groups_, writer, [](const Group&) { return true; });
    giveBack(groups_, writer, [&](const Group& group) {
        if (group.code != 340 || !writer.database) return true;
        const IdCell* member = writer.database->cellOf(group.handle(), false);
        return !member || !member->object || !member->object->isErased();
    });
}

void KeptObject::restore(const AcDbObject& from) {
    if (const auto* kept = dynamic_cast<const KeptObject*>(&from)) *this = *kept;
}

AcRxClass* KeptEntity::isA() const { return keptClass(dxfName_, AcDbEntity::desc()); }

// Without markers the groups that every entity has are told by their codes.
bool KeptEntity::inGroup(const Group& group, ReadContext& context) {
    if (context.subclass == "AcDbEntity" || (context.subclass.empty() && group.code != 100))
        if (AcDbEntity::inGroup(group, context)) return true;
    if (context.subclass == "AcDbEntity") return false;
    keep(groups_, marker_, group, context);
    return true;
}

void KeptEntity::outGroups(GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    giveBack(groups_, writer, [](const Group&) { return true; });
}

void KeptEntity::restore(const AcDbObject& from) {
    if (const auto* kept = dynamic_cast<const KeptEntity*>(&from)) *this = *kept;
}

AcRxObject* KeptEntity::clone() const { return parts_.empty() ? AcDbEntity::clone() : nullptr; }

AcDbObjectId KeptEntity::referencedBlock() const {
    if (!database() || (!dxfName_.ends_with("DIMENSION") && dxfName_ != "ACAD_TABLE")) return {};
    Group name;
    return groups_.find(2, name) ? database()->find(AcDbBlockTable::desc(), name.wide()) : AcDbObjectId();
}

Adesk::Boolean KeptEntity::subWorldDraw(AcGiWorldDraw* context) const {
    if (thePicture) thePicture->draw(*this, context);
    return true;
}

Acad::ErrorStatus KeptEntity::subGetGeomExtents(AcDbExtents& extents) const {
    return thePicture && thePicture->extents(*this, extents) ? Acad::eOk : Acad::eInvalidExtents;
}

void setKeptPicture(KeptPicture* picture) { thePicture = picture; }

} // namespace host
