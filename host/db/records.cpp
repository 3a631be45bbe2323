// Records of layers, linetypes and text styles, and of the tables that keep theirs as they came. Those of
// views and coordinate systems stand in view_records.cpp.
#include <cmath>

#include "host/db/access.h"
#include "host/db/record_setter.h"
#include "host/db/symboltable.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbLayerTableRecord, AcDbSymbolTableRecord, L"LAYER")
HOST_DEFINE_CLASS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, L"LTYPE")
HOST_DEFINE_CLASS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, L"STYLE")
HOST_DEFINE_CLASS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, L"DIMSTYLE")
HOST_DEFINE_CLASS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, L"APPID")

namespace {
constexpr double kDegree = 3.14159265358979323846 / 180;
} // namespace

// -- layers -------------------------------------------------------------------------------------------

HOST_RECORD_SETTER(AcDbLayerTableRecord, setIsOff, bool, true, off_)
HOST_RECORD_SETTER(AcDbLayerTableRecord, setIsPlottable, bool, true, plottable_)
HOST_RECORD_SETTER(AcDbLayerTableRecord, setColor, const AcCmColor&, value.isByACI() || value.isByColor(),
                   color_)
HOST_RECORD_SETTER(AcDbLayerTableRecord, setLinetypeObjectId, AcDbObjectId,
                   host::peek<AcDbLinetypeTableRecord>(value), linetype_)
HOST_RECORD_SETTER(AcDbLayerTableRecord, setLineWeight, AcDb::LineWeight,
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
    case 290: plottable_ = group.integer != 0, plottingStated_ = true; return true;
    case 370: lineWeight_ = AcDb::LineWeight(group.integer), weightStated_ = true; return true;
    default: return AcDbSymbolTableRecord::inGroup(group, context);
    }
}

void AcDbLayerTableRecord::outOwn(host::GroupWriter& writer) const {
    writer.integer(62, off_ ? -int(color_.colorIndex()) : int(color_.colorIndex()));
    if (color_.isByColor() && writer.carries(AcDb::kDHL_1018)) writer.integer(420, color_.rgb());
    const auto* linetype = host::peek<AcDbLinetypeTableRecord>(linetype_);
    writer.text(6, linetype ? linetype->name() : L"Continuous");
    const bool modern = writer.version >= AcDb::kDHL_1015;
    if (!writer.carries(AcDb::kDHL_1015)) return;
    if (plottingStated_ || (modern && !plottable_)) writer.integer(290, plottable_);
    if (weightStated_ || modern) writer.integer(370, lineWeight_);
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
HOST_RECORD_SETTER(AcDbTextStyleTableRecord, setTextSize, double, value >= 0 && std::isfinite(value), size_)
HOST_RECORD_SETTER(AcDbTextStyleTableRecord, setXScale, double, value > 0 && std::isfinite(value), xScale_)

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
