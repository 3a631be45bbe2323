// AcDbEntity in files and in the undo log: the groups that every entity has.
#include <cmath>

#include "host/db/access.h"
#include "host/db/entity.h"
#include "host/db/filed.h"
#include "host/os/text.h"

std::unique_ptr<AcDbObject> AcDbEntity::snapshot() const {
    if (!isA()->isCustom()) return nullptr;
    return std::make_unique<host::Filed<AcDbEntity>>(*this, *this);
}

void AcDbEntity::restore(const AcDbObject& from) {
    host::ObjectAccess::copyBase(*this, from);
    host::takeFields(*this, from);
}

bool AcDbEntity::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbEntity")) return false;
    switch (group.code) {
    case 8: layer_ = context.layer(group.text); return true;
    case 6: linetype_ = context.linetype(group.text); return true;
    case 62:
        if (group.integer < 0 || group.integer > 256) {
            context.repaired("The colour index is not one of 0 to 256; the layer's colour is taken.");
            return true;
        }
        fileIndex_ = Adesk::Int16(group.integer);
        if (!color_.isByColor()) color_.setColorIndex(Adesk::UInt16(group.integer));
        return true;
    case 420:
        color_.setRGB(Adesk::UInt8(group.integer >> 16), Adesk::UInt8(group.integer >> 8),
                      Adesk::UInt8(group.integer));
        return true;
    case 48:
        if (group.real > 0 && std::isfinite(group.real))
            linetypeScale_ = group.real;
        else
            context.repaired("The linetype scale is not above 0; 1 is taken.");
        return true;
    case 60: visible_ = group.integer == 0; return true;
    case 370: lineWeight_ = AcDb::LineWeight(group.integer); return true;
    case 440: transparency_ = Adesk::UInt32(group.integer); return true;
    case 67:
    case 410: return true; // told by the owner
    default: return false;
    }
}

// Where the entity stands, for readers that don't follow owners.
void AcDbEntity::outPlace(host::GroupWriter& writer) const {
    const auto* block = host::peek<AcDbBlockTableRecord>(blockId());
    if (!block || !block->isPaperSpace()) return;
    writer.integer(67, 1);
    const bool mark = isA() == AcDbBlockBegin::desc() || isA() == AcDbBlockEnd::desc();
    if (mark || writer.version < AcDb::kDHL_1015) return;
    if (const auto* layout = host::peek<AcDbLayout>(block->getLayoutId()))
        writer.text(410, layout->layoutName());
}

void AcDbEntity::outGroups(host::GroupWriter& writer) const {
    writer.subclass("AcDbEntity");
    outPlace(writer);
    writer.text(8, layerName());
    if (const auto* linetype = host::peek<AcDbLinetypeTableRecord>(linetype_))
        if (!host::equalNoCase(linetype->name(), L"ByLayer")) writer.text(6, linetype->name());
    const bool holdsRgb = writer.carries(AcDb::kDHL_1018);
    const int index =
        color_.isByColor() && (holdsRgb || fileIndex_ != 256) ? fileIndex_ : color_.colorIndex();
    if (index != 256) writer.integer(62, index);
    if (lineWeight_ != AcDb::kLnWtByLayer && writer.carries(AcDb::kDHL_1015))
        writer.integer(370, lineWeight_);
    if (writer.carries(AcDb::kDHL_1012)) {
        if (linetypeScale_ != 1) writer.real(48, linetypeScale_);
        if (!visible_) writer.integer(60, 1);
    }
    if (holdsRgb) {
        if (color_.isByColor()) writer.integer(420, color_.rgb());
        if (transparency_) writer.integer(440, Adesk::Int32(transparency_));
    }
    AcDbObject::outGroups(writer);
}

// The name in a colour book (430) belongs to the colour it came with.
void AcDbEntity::forgetColorName() {
    host::Group name;
    if (!tail() || !tail()->kept.find(430, name)) return;
    host::GroupList rest;
    bool ours = true;
    for (const auto group : tail()->kept) {
        if (group.code == 100) ours = group.text == "AcDbEntity";
        if (!ours || group.code != 430) rest.append(group);
    }
    tailForWrite().kept = std::move(rest);
}
