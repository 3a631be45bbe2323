// Single-line text and attributes: data and form in files. Extents and drawing live in text_draw.cpp.
#include "host/ent/text.h"

#include <cwctype>

#include "host/ent/filing.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbText, AcDbEntity, L"TEXT")
HOST_DEFINE_CLASS(AcDbAttribute, AcDbText, L"ATTRIB")
HOST_DEFINE_CLASS(AcDbAttributeDefinition, AcDbAttribute, L"ATTDEF")

AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style, double height,
                   double rotation)
    : text_(text ? text : L""), position_(position), alignment_(position), style_(style),
      height_(height > 0 ? height : 2.5), rotation_(rotation) {}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position) { HOST_SET_FINITE(position_, position); }
Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
    HOST_SET_FINITE(alignment_, point);
}
Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode mode) { HOST_SET(horizontal_, mode); }
Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode mode) { HOST_SET(vertical_, mode); }
ACHAR* AcDbText::textString() const {
    ACHAR* copy = nullptr;
    acutNewString(text_.c_str(), copy);
    return copy;
}
Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
    if (!text) return Acad::eNullPtr;
    HOST_SET(text_, text);
}
Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId style) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    style_ = style, namelessStyle_ = false;
    return Acad::eOk;
}
Acad::ErrorStatus AcDbText::setHeight(double height) {
    if (!std::isfinite(height) || height <= 0) return Acad::eInvalidInput;
    HOST_SET(height_, height);
}
Acad::ErrorStatus AcDbText::setRotation(double angle) { HOST_SET_FINITE(rotation_, angle); }
Acad::ErrorStatus AcDbText::setOblique(double angle) { HOST_SET_FINITE(oblique_, angle); }
Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
    if (!std::isfinite(factor) || factor <= 0) return Acad::eInvalidInput;
    HOST_SET(widthFactor_, factor);
}
Acad::ErrorStatus AcDbText::setThickness(double thickness) { HOST_SET_FINITE(thickness_, thickness); }
Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
    HOST_SET(normal_, host::unitNormal(normal));
}
Acad::ErrorStatus AcDbText::mirrorInX(bool mirrored) {
    HOST_SET(generation_, mirrored ? generation_ | 2 : generation_ & ~2);
}
Acad::ErrorStatus AcDbText::mirrorInY(bool mirrored) {
    HOST_SET(generation_, mirrored ? generation_ | 4 : generation_ & ~4);
}

bool AcDbText::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbText") && group.code != verticalModeCode())
        return AcDbEntity::inGroup(group, context);
    if (group.code == verticalModeCode()) return vertical_ = AcDb::TextVertMode(group.integer & 3), true;
    if (group.code == 11) alignmentFiled_ = true;
    switch (group.code) {
    case 1: text_ = group.wide(); return true;
    case 7: style_ = context.textStyle(group.text), namelessStyle_ = group.text.empty(); return true;
    case 39: thickness_ = group.real; return true;
    case 40: height_ = group.real; return true;
    case 41: widthFactor_ = group.real; return true;
    case 50: rotation_ = host::toRadians(group.real); return true;
    case 51: oblique_ = host::toRadians(group.real); return true;
    case 71: generation_ = int(group.integer); return true;
    case 72:
        if (group.integer < 0 || group.integer > 5)
            return context.repaired("text with an unknown justification: taken as left"), true;
        return horizontal_ = AcDb::TextHorzMode(group.integer), true;
    default:
        if (host::takeTriple(group, 10, position_) || host::takeTriple(group, 11, alignment_) ||
            host::takeTriple(group, 210, normal_))
            return true;
    }
    return AcDbEntity::inGroup(group, context);
}

void AcDbText::inDone(host::ReadContext& context) {
    normal_ = host::unitNormal(normal_);
    position_.fromPlane(normal_);
    if (alignmentFiled_)
        alignment_.fromPlane(normal_);
    else
        alignment_ = position_;
    if (style_.isNull()) style_ = context.textStyle("Standard");
}

void AcDbText::outGroups(host::GroupWriter& writer) const {
    AcDbEntity::outGroups(writer);
    writer.subclass("AcDbText");
    if (thickness_ != 0) writer.real(39, thickness_);
    writer.point(10, position_.inPlane(normal_));
    writer.real(40, height_);
    writer.text(1, text_);
    if (rotation_ != 0) writer.real(50, host::fileDegrees(rotation_));
    if (widthFactor_ != 1) writer.real(41, widthFactor_);
    if (oblique_ != 0) writer.real(51, host::fileDegrees(oblique_));
    if (namelessStyle_ && writer.isOriginal())
        writer.text(7, std::string_view());
    else
        writer.recordName(7, style_);
    if (generation_ != 0) writer.integer(71, generation_);
    if (horizontal_ != AcDb::kTextLeft) writer.integer(72, horizontal_);
    if (!isDefaultAlignment() || alignmentFiled_) writer.point(11, alignment_.inPlane(normal_));
    writer.normal(210, normal_);
    outSecond(writer);
}

void AcDbText::outSecond(host::GroupWriter& writer) const {
    writer.subclass("AcDbText");
    if (vertical_ != AcDb::kTextBase) writer.integer(73, vertical_);
}

Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag) {
    std::wstring upper = tag ? tag : L"";
    for (wchar_t& c : upper) {
        if (std::iswspace(wint_t(c))) return Acad::eInvalidInput;
        c = wchar_t(std::towupper(wint_t(c)));
    }
    if (upper.empty()) return Acad::eInvalidInput;
    HOST_SET(tag_, upper);
}

bool AcDbAttribute::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbAttribute") || context.within("AcDbAttributeDefinition")) {
        if (group.code == 2) return tag_ = group.wide(), true;
        if (group.code == 70) return attributeFlags_ = int(group.integer), true;
    }
    return AcDbText::inGroup(group, context);
}

void AcDbAttribute::outSecond(host::GroupWriter& writer) const {
    writer.subclass("AcDbAttribute");
    writer.text(2, tag_);
    writer.integer(70, attributeFlags_);
    if (verticalMode() != AcDb::kTextBase) writer.integer(74, verticalMode());
}

Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const ACHAR* prompt) {
    HOST_SET(prompt_, prompt ? prompt : L"");
}

bool AcDbAttributeDefinition::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.within("AcDbAttributeDefinition") && group.code == 3) return prompt_ = group.wide(), true;
    return AcDbAttribute::inGroup(group, context);
}

void AcDbAttributeDefinition::outSecond(host::GroupWriter& writer) const {
    writer.subclass("AcDbAttributeDefinition");
    writer.text(3, prompt_);
    writer.text(2, tagConst());
    writer.integer(70, attributeFlags_);
    if (verticalMode() != AcDb::kTextBase) writer.integer(74, verticalMode());
}
