// AcDbObject: copies, snapshots for undo, and the form in files. Classes of modules go through the
// public filers here; built-in classes override what they need.
#include "host/db/access.h"
#include "host/db/capture.h"
#include "host/db/entity.h"
#include "host/db/filed.h"
#include "host/db/kept.h"
#include "host/os/text.h"

// -- copies and snapshots -----------------------------------------------------------------------------

namespace host {

void ObjectAccess::untie(AcDbObject& copy) {
    copy.owner_.setNull();
    if (!copy.tail_) return;
    copy.tail_->persistentReactors.clear();
    copy.tail_->extensionDictionary.setNull();
}

void ObjectAccess::copyBase(AcDbObject& to, const AcDbObject& from) {
    auto* entity = AcDbEntity::cast(&to);
    const auto* source = AcDbEntity::cast(&from);
    if (entity && source)
        entity->AcDbEntity::operator=(*source);
    else
        to.AcDbObject::operator=(from);
}

void ObjectAccess::restore(AcDbObject& object, const AcDbObject& from) {
    const bool was = object.undoing_;
    object.undoing_ = true;
    object.restore(from);
    object.undoing_ = was;
}

} // namespace host

AcRxObject* AcDbObject::clone() const {
    std::unique_ptr<AcDbObject> copy;
    if (isA()->isCustom()) {
        copy.reset(AcDbObject::cast(isA()->create()));
        if (const auto state = snapshot(); copy && state) copy->restore(*state);
    } else {
        copy = snapshot();
    }
    if (!copy) return nullptr;
    host::ObjectAccess::untie(*copy);
    host::ObjectAccess::tell(*this, [&](auto& r) { r.copied(this, copy.get()); });
    return copy.release();
}

// Reached by classes of modules and by abstract classes alone; the others have the compiler's copy.
std::unique_ptr<AcDbObject> AcDbObject::snapshot() const {
    if (!isA()->isCustom()) return nullptr;
    return std::make_unique<host::Filed<AcDbObject>>(*this, *this);
}

void AcDbObject::restore(const AcDbObject& from) {
    host::ObjectAccess::copyBase(*this, from);
    host::takeFields(*this, from);
}

Acad::ErrorStatus AcDbObject::dwgInFields(AcDbDwgFiler*) { return Acad::eOk; }
Acad::ErrorStatus AcDbObject::dwgOutFields(AcDbDwgFiler*) const { return Acad::eOk; }
Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler*) { return Acad::eOk; }
Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler*) const { return Acad::eOk; }

// -- files --------------------------------------------------------------------------------------------

bool AcDbObject::inGroup(const host::Group&, host::ReadContext&) { return false; }

// Nothing of a module's class is known to inGroup, so all its groups are among the kept ones by now:
// those behind the first marker are its data.
void AcDbObject::inDone(host::ReadContext& context) {
    if (!isA()->isCustom() || !tail_) return;
    host::GroupList own, other;
    bool behind = false;
    for (const auto group : tail_->kept) {
        behind = behind || group.code == 100;
        (behind ? own : other).append(group);
    }
    host::GroupListFiler filer(own, context);
    if (dxfInFields(&filer) == Acad::eOk)
        tail_->kept = std::move(other);
    else
        context.repaired("An object's data did not suit its class and were kept as they are.");
}

void AcDbObject::outGroups(host::GroupWriter& writer) const {
    if (!isA()->isCustom()) return;
    host::GroupWriterFiler filer(writer);
    dxfOutFields(&filer);
}

std::string AcDbObject::dxfName() const { return host::utf8(isA()->dxfName()); }
void AcDbObject::ownedParts(std::vector<AcDbObjectId>&) const {}
bool AcDbObject::addOwnedPart(AcDbObjectId) { return false; }
void AcDbObject::joined(AcDbDatabase&) {}
