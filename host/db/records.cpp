// Records of layers, linetypes, text styles and viewports, and of the tables that keep theirs as
// they came.
#include <cmath>

#include "host/db/access.h"
#include "host/db/symboltable.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbLayerTableRecord, AcDbSymbolTableRecord, L"LAYER")
HOST_DEFINE_CLASS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, L"LTYPE")
HOST_DEFINE_CLASS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, L"STYLE")
HOST_DEFINE_CLASS(AcDbViewportTableRecord, AcDbSymbolTableRecord, L"VPORT")
HOST_DEFINE_CLASS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, L"DIMSTYLE")
HOST_DEFINE_CLASS(AcDbViewTableRecord, AcDbSymbolTableRecord, L"VIEW")
HOST_DEFINE_CLASS(AcDbUCSTableRecord, AcDbSymbolTableRecord, L"UCS")
HOST_DEFINE_CLASS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, L"APPID")

namespace {
constexpr double kDegree = 3.14159265358979323846 / 180;

template <class T> void set(T& member, const T& value) { member = value; }
} // namespace

// A setter: what must hold, and the member that takes the value.
#define SETTER(CLASS, NAME, TYPE, VALID, MEMBER)                                                             \
    Acad::ErrorStatus CLASS::NAME(TYPE value) {                                                              \
        if (!(VALID)) return Acad::eInvalidInput;                                                            \
        if (auto es = willModify(); es != Acad::eOk) return es;                                              \
        return set(MEMBER, value), Acad::eOk;                                                                \
    }

// -- layers -------------------------------------------------------------------------------------------

SETTER(AcDbLayerTableRecord, setIsOff, bool, true, off_)
SETTER(AcDbLayerTableRecord, setIsPlottable, bool, true, plottable_)
SETTER(AcDbLayerTableRecord, setColor, const AcCmColor&, value.isByACI() || value.isByColor(), color_)
SETTER(AcDbLayerTableRecord, setLinetypeObjectId, AcDbObjectId, host::peek<AcDbLinetypeTableRecord>(value),
       linetype_)
SETTER(AcDbLayerTableRecord, setLineWeight, AcDb::LineWeight,
       value == AcDb::kLnWtByLwDefault || (value >= 0 && value <= AcDb::kLnWt211), lineWeight_)

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
    return setFlags(frozen ? flags_ | 1 : flags_ & ~1);
}
Acad::ErrorStatus AcDbLayerTableRecord::setIsLocked(bool locked) {
    return setFlags(locked ? flags_ | 4 : flags_ & ~4);
}

bool AcDbLayerTableRecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbLayerTableRecord")) return AcDbSymbolTableRecord::inGroup(group, context);
    switch (group.code) {
    case 62: {
        const auto index = std::abs(group.integer);
        off_ = group.integer < 0;
        if (index < 1 || index > 255)
            context.repaired("A layer's colour is not one of 1 to 255; 7 is taken.");
        if (!color_.isByColor()) color_.setColorIndex(Adesk::UInt16(index < 1 || index > 255 ? 7 : index));
        return true;
    }
    case 420:
        color_.setRGB(Adesk::UInt8(group.integer >> 16), Adesk::UInt8(group.integer >> 8),
                      Adesk::UInt8(group.integer));
        return true;
    case 6: linetype_ = context.linetype(group.text); return true;
    case 290: plottable_ = group.integer != 0; return true;
    case 370: lineWeight_ = AcDb::LineWeight(group.integer); return true;
    default: return AcDbSymbolTableRecord::inGroup(group, context);
    }
}

void AcDbLayerTableRecord::outOwn(host::GroupWriter& writer) const {
    writer.integer(62, off_ ? -int(color_.colorIndex()) : int(color_.colorIndex()));
    if (color_.isByColor() && writer.version >= AcDb::kDHL_1018) writer.integer(420, color_.rgb());
    const auto* linetype = host::peek<AcDbLinetypeTableRecord>(linetype_);
    writer.text(6, linetype ? linetype->name() : L"Continuous");
    if (writer.version < AcDb::kDHL_1015) return;
    if (!plottable_) writer.integer(290, 0);
    writer.integer(370, lineWeight_);
}

// -- linetypes ----------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* text) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    comments_ = text ? text : L"";
    return Acad::eOk;
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const {
    return index >= 0 && index < numDashes() ? dashes_[size_t(index)].length : 0;
}

Acad::ErrorStatus AcDbLinetypeTableRecord::setPattern(const std::vector<double>& lengths) {
    double total = 0;
    for (double length : lengths) total += std::abs(length);
    if (!std::isfinite(total)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    dashes_.clear();
    for (double length : lengths) dashes_.push_back({length, 0, {}});
    patternLength_ = total;
    return Acad::eOk;
}

bool AcDbLinetypeTableRecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbLinetypeTableRecord")) return AcDbSymbolTableRecord::inGroup(group, context);
    switch (group.code) {
    case 3: comments_ = group.wide(); return true;
    case 40: patternLength_ = group.real; return true;
    case 72:              // always A
    case 73: return true; // the number of dashes, which is counted
    case 49: dashes_.push_back({group.real, 0, {}}); return true;
    case 74:
        if (!dashes_.empty()) dashes_.back().shapeFlags = int(group.integer);
        return true;
    case 75:
    case 340:
    case 46:
    case 50:
    case 44:
    case 45:
    case 9:
        if (dashes_.empty()) return false;
        dashes_.back().rest.append(group);
        return true;
    default: return AcDbSymbolTableRecord::inGroup(group, context);
    }
}

void AcDbLinetypeTableRecord::outOwn(host::GroupWriter& writer) const {
    writer.text(3, comments_);
    writer.integer(72, 65);
    writer.integer(73, numDashes());
    writer.real(40, patternLength_);
    for (const auto& dash : dashes_) {
        writer.real(49, dash.length);
        if (writer.version < AcDb::kDHL_1012) continue;
        writer.integer(74, dash.shapeFlags);
        for (const auto group : dash.rest) writer.write(group);
    }
}

// -- text styles --------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* file) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    file_ = file ? file : L"";
    return Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* file) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    bigFont_ = file ? file : L"";
    return Acad::eOk;
}
SETTER(AcDbTextStyleTableRecord, setTextSize, double, value >= 0 && std::isfinite(value), size_)
SETTER(AcDbTextStyleTableRecord, setXScale, double, value > 0 && std::isfinite(value), xScale_)

double AcDbTextStyleTableRecord::obliquingAngle() const { return oblique_ * kDegree; }
Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
    if (!(std::abs(angle) < 85 * kDegree)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    oblique_ = angle / kDegree;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::font(std::wstring& typeface, bool& bold, bool& italic) const {
    typeface.clear();
    bold = italic = false;
    if (!tail()) return Acad::eKeyNotFound;
    bool ours = false;
    for (const auto group : tail()->xdata) {
        if (group.code == 1001)
            ours = host::equalNoCase(group.wide(), L"ACAD");
        else if (ours && group.code == 1000)
            typeface = group.wide();
        else if (ours && group.code == 1071) {
            bold = group.integer & 0x2000000;
            italic = group.integer & 0x1000000;
        }
    }
    return typeface.empty() ? Acad::eKeyNotFound : Acad::eOk;
}

bool AcDbTextStyleTableRecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbTextStyleTableRecord")) return AcDbSymbolTableRecord::inGroup(group, context);
    switch (group.code) {
    case 3: file_ = group.wide(); return true;
    case 4: bigFont_ = group.wide(); return true;
    case 40: size_ = group.real; return true;
    case 41: xScale_ = group.real; return true;
    case 50: oblique_ = group.real; return true;
    case 71: generation_ = int(group.integer); return true;
    case 42: lastHeight_ = group.real; return true;
    default: return AcDbSymbolTableRecord::inGroup(group, context);
    }
}

void AcDbTextStyleTableRecord::outOwn(host::GroupWriter& writer) const {
    writer.real(40, size_);
    writer.real(41, xScale_);
    writer.real(50, oblique_);
    writer.integer(71, generation_);
    writer.real(42, lastHeight_);
    writer.text(3, file_);
    writer.text(4, bigFont_);
}

// -- viewports ----------------------------------------------------------------------------------------

SETTER(AcDbViewportTableRecord, setCenterPoint, const AcGePoint2d&,
       std::isfinite(value.x) && std::isfinite(value.y), center_)
SETTER(AcDbViewportTableRecord, setHeight, double, value > 0 && std::isfinite(value), height_)
SETTER(AcDbViewportTableRecord, setViewDirection, const AcGeVector3d&,
       value.lengthSqrd() > 0 && std::isfinite(value.lengthSqrd()), direction_)
SETTER(AcDbViewportTableRecord, setTarget, const AcGePoint3d&, std::isfinite(value.x + value.y + value.z),
       target_)

Acad::ErrorStatus AcDbViewportTableRecord::setWidth(double width) {
    if (!(width > 0) || !std::isfinite(width)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    aspect_ = width / height_;
    return Acad::eOk;
}
double AcDbViewportTableRecord::viewTwist() const { return twist_ * kDegree; }
Acad::ErrorStatus AcDbViewportTableRecord::setViewTwist(double angle) {
    if (!std::isfinite(angle)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    twist_ = angle / kDegree;
    return Acad::eOk;
}

bool AcDbViewportTableRecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within("AcDbViewportTableRecord")) return AcDbSymbolTableRecord::inGroup(group, context);
    const double value = group.type == host::GroupType::real ? group.real : 0;
    switch (group.code) {
    case 10: lowerLeft_.x = value; return true;
    case 20: lowerLeft_.y = value; return true;
    case 11: upperRight_.x = value; return true;
    case 21: upperRight_.y = value; return true;
    case 12: center_.x = value; return true;
    case 22: center_.y = value; return true;
    case 16: direction_.x = value; return true;
    case 26: direction_.y = value; return true;
    case 36: direction_.z = value; return true;
    case 17: target_.x = value; return true;
    case 27: target_.y = value; return true;
    case 37: target_.z = value; return true;
    case 40: height_ = value; return true;
    case 41: aspect_ = value; return true;
    case 42: lens_ = value; return true;
    case 51: twist_ = value; return true;
    case 71: viewMode_ = int(group.integer); return true;
    default: return AcDbSymbolTableRecord::inGroup(group, context);
    }
}

void AcDbViewportTableRecord::outOwn(host::GroupWriter& writer) const {
    writer.point(10, lowerLeft_);
    writer.point(11, upperRight_);
    writer.point(12, center_);
    writer.vector(16, direction_);
    writer.point(17, target_);
    writer.real(40, height_);
    writer.real(41, aspect_);
    writer.real(42, lens_);
    writer.real(51, twist_);
    writer.integer(71, viewMode_);
}
