// Records of viewports, named views and named coordinate systems.
#include <cmath>
#include <numbers>

#include "host/db/record_setter.h"

HOST_DEFINE_CLASS(AcDbViewportTableRecord, AcDbSymbolTableRecord, L"VPORT")
HOST_DEFINE_CLASS(AcDbViewTableRecord, AcDbSymbolTableRecord, L"VIEW")
HOST_DEFINE_CLASS(AcDbUCSTableRecord, AcDbSymbolTableRecord, L"UCS")

namespace {
constexpr double kDegree = std::numbers::pi / 180;

// Takes the group into a point or vector of two or three coordinates when it is one of them.
template <class Triple> bool takes(const host::Group& group, int code, Triple& to) {
    if (group.type != host::GroupType::real) return false;
    if (group.code == code) return to.x = group.real, true;
    if (group.code == code + 10) return to.y = group.real, true;
    if constexpr (requires { to.z; })
        if (group.code == code + 20) return to.z = group.real, true;
    return false;
}
template <class Triple> bool isFinite(const Triple& t) { return std::isfinite(t.x + t.y + t.z); }
bool isFinite(const AcGePoint2d& p) { return std::isfinite(p.x + p.y); }
} // namespace

// -- viewports ----------------------------------------------------------------------------------------

HOST_RECORD_SETTER(AcDbViewportTableRecord, setCenterPoint, const AcGePoint2d&,
                   std::isfinite(value.x) && std::isfinite(value.y), center_)
HOST_RECORD_SETTER(AcDbViewportTableRecord, setHeight, double, value > 0 && std::isfinite(value), height_)
HOST_RECORD_SETTER(AcDbViewportTableRecord, setViewDirection, const AcGeVector3d&,
                   value.lengthSqrd() > 0 && std::isfinite(value.lengthSqrd()), direction_)
HOST_RECORD_SETTER(AcDbViewportTableRecord, setTarget, const AcGePoint3d&,
                   std::isfinite(value.x + value.y + value.z), target_)

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
    if (takes(group, 10, lowerLeft_) || takes(group, 11, upperRight_) || takes(group, 12, center_) ||
        takes(group, 16, direction_) || takes(group, 17, target_))
        return true;
    const double value = group.type == host::GroupType::real ? group.real : 0;
    switch (group.code) {
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

// -- views --------------------------------------------------------------------------------------------

HOST_RECORD_SETTER(AcDbViewTableRecord, setCenterPoint, const AcGePoint2d&, isFinite(value), center_)
HOST_RECORD_SETTER(AcDbViewTableRecord, setHeight, double, value > 0 && std::isfinite(value), height_)
HOST_RECORD_SETTER(AcDbViewTableRecord, setWidth, double, value > 0 && std::isfinite(value), width_)
HOST_RECORD_SETTER(AcDbViewTableRecord, setTarget, const AcGePoint3d&, isFinite(value), target_)
HOST_RECORD_SETTER(AcDbViewTableRecord, setViewDirection, const AcGeVector3d&,
                   value.lengthSqrd() > 0 && isFinite(value), direction_)

double AcDbViewTableRecord::viewTwist() const { return twist_ * kDegree; }
Acad::ErrorStatus AcDbViewTableRecord::setViewTwist(double angle) {
    if (!std::isfinite(angle)) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    return twist_ = angle / kDegree, Acad::eOk;
}

bool AcDbViewTableRecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within(marker())) return AcDbSymbolTableRecord::inGroup(group, context);
    if (takes(group, 10, center_) || takes(group, 11, direction_) || takes(group, 12, target_)) return true;
    switch (group.code) {
    case 40: return height_ = group.real, true;
    case 41: return width_ = group.real, true;
    case 42: return lens_ = group.real, true;
    case 43: return front_ = group.real, true;
    case 44: return back_ = group.real, true;
    case 50: return twist_ = group.real, true;
    case 71: return viewMode_ = int(group.integer), true;
    default: return AcDbSymbolTableRecord::inGroup(group, context);
    }
}

void AcDbViewTableRecord::outOwn(host::GroupWriter& writer) const {
    writer.real(40, height_);
    writer.point(10, center_);
    writer.real(41, width_);
    writer.vector(11, direction_);
    writer.point(12, target_);
    writer.real(42, lens_);
    writer.real(43, front_);
    writer.real(44, back_);
    writer.real(50, twist_);
    writer.integer(71, viewMode_);
}

// -- coordinate systems -------------------------------------------------------------------------------

HOST_RECORD_SETTER(AcDbUCSTableRecord, setOrigin, const AcGePoint3d&, isFinite(value), origin_)
HOST_RECORD_SETTER(AcDbUCSTableRecord, setXAxis, const AcGeVector3d&,
                   value.lengthSqrd() > 0 && isFinite(value), xAxis_)
HOST_RECORD_SETTER(AcDbUCSTableRecord, setYAxis, const AcGeVector3d&,
                   value.lengthSqrd() > 0 && isFinite(value), yAxis_)

bool AcDbUCSTableRecord::inGroup(const host::Group& group, host::ReadContext& context) {
    if (!context.within(marker())) return AcDbSymbolTableRecord::inGroup(group, context);
    return takes(group, 10, origin_) || takes(group, 11, xAxis_) || takes(group, 12, yAxis_) ||
           AcDbSymbolTableRecord::inGroup(group, context);
}

void AcDbUCSTableRecord::outOwn(host::GroupWriter& writer) const {
    writer.point(10, origin_);
    writer.vector(11, xAxis_);
    writer.vector(12, yAxis_);
}
