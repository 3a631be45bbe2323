// Small helpers that the entity classes share when they take in and write their groups.
#pragma once
#include <cmath>
#include <numbers>

#include "host/db/groups.h"
#include "host/ent/filed_point.h"
#include "host/ge/matrix3d.h"

namespace host {

// Takes the group into a point or vector when it is one of its components: code, code + 10, code + 20.
template <class Triple> bool takeTriple(const Group& group, int code, Triple& triple) {
    if (group.code == code) return triple.x = group.real, true;
    if (group.code == code + 10) return triple.y = group.real, true;
    if (group.code == code + 20) return triple.z = group.real, true;
    return false;
}

inline double toDegrees(double radians) { return radians * 180.0 / std::numbers::pi; }
inline double toRadians(double degrees) { return degrees * std::numbers::pi / 180.0; }
// The degrees that files get for an angle: the shortest number that reads back as the same radians as
// the plain conversion does, so that 30 stays 30 and saving twice gives the same digits.
double fileDegrees(double radians);

inline bool finite(double value) { return std::isfinite(value); }
inline bool finite(const AcGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); }
template <class Triple> bool finite(const Triple& t) {
    return std::isfinite(t.x) && std::isfinite(t.y) && std::isfinite(t.z);
}

// Unit normals; the Z axis for vectors that have no direction.
inline AcGeVector3d unitNormal(const AcGeVector3d& v) {
    const double length = v.length();
    return finite(v) && length > 1e-12 ? v / length : AcGeVector3d::kZAxis;
}
// A setter's body: refuses when the object can't be changed, else assigns.
#define HOST_SET(member, value)                                                                              \
    do {                                                                                                     \
        if (auto es_ = willModify(); es_ != Acad::eOk) return es_;                                           \
        member = (value);                                                                                    \
        return Acad::eOk;                                                                                    \
    } while (false)
// The same for values that must be finite.
#define HOST_SET_FINITE(member, value)                                                                       \
    do {                                                                                                     \
        if (!host::finite(value)) return Acad::eInvalidInput;                                                \
        HOST_SET(member, value);                                                                             \
    } while (false)

} // namespace host
