// The BLOCK, ENDBLK and SEQEND objects of files. What a BLOCK tells stands in its block record.
#include "host/db/access.h"
#include "host/db/blocktable.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbBlockBegin, AcDbEntity, L"BLOCK")
HOST_DEFINE_CLASS(AcDbBlockEnd, AcDbEntity, L"ENDBLK")
HOST_DEFINE_CLASS(AcDbSequenceEnd, AcDbEntity, L"SEQEND")

bool AcDbBlockBegin::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbBlockBegin")) return AcDbEntity::inGroup(group, context);
    if (!told_) told_ = std::make_shared<Told>();
    switch (group.code) {
    case 2: told_->name = group.text; return true;
    case 3: return true; // the name again
    case 1: told_->xrefPath = group.wide(); return true;
    case 4: told_->comments = group.wide(); return true;
    case 70: told_->flags = int(group.integer); return true;
    case 10: told_->origin.x = group.real; return true;
    case 20: told_->origin.y = group.real; return true;
    case 30: told_->origin.z = group.real; return true;
    default: return AcDbEntity::inGroup(group, context);
    }
}

void AcDbBlockBegin::inDone(host::ReadContext& context) {
    const auto told = std::exchange(told_, nullptr);
    if (!told) return;
    auto* record = host::peek<AcDbBlockTableRecord>(ownerId());
    if (!record && !told->name.empty()) record = host::peek<AcDbBlockTableRecord>(context.block(told->name));
    if (!record) return;
    host::ObjectAccess::setOwner(*this, record->objectId());
    record->comments_ = told->comments;
    record->xrefPath_ = told->xrefPath;
    record->origin_ = told->origin;
    record->blockFlags_ = told->flags;
}

void AcDbBlockBegin::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbBlockBegin");
    const auto* record = host::peek<AcDbBlockTableRecord>(ownerId());
    if (!record) return;
    writer.text(2, record->name());
    writer.integer(70, record->blockFlags_ | (record->hasAttributeDefinitions() ? 2 : 0));
    writer.point(10, record->origin_);
    writer.text(3, record->name());
    writer.text(1, record->xrefPath_);
    if (!record->comments_.empty() && writer.version >= AcDb::kDHL_1015) writer.text(4, record->comments_);
}

void AcDbBlockEnd::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbBlockEnd");
}
