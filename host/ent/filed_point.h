// Points that files hold in the plane of an entity's normal.
#pragma once
#include <memory>

#include "host/ge/matrix3d.h"

namespace host {

inline bool isWorldZ(const AcGeVector3d& n) { return n.x == 0 && n.y == 0 && n.z > 0; }

// Points of a plane's own coordinate system to the world and back; exact for the Z axis, so that plain
// drawings keep their digits.
inline AcGePoint3d toWorld(const AcGePoint3d& p, const AcGeVector3d& normal) {
    return isWorldZ(normal) ? p : AcGeMatrix3d::planeToWorld(normal) * p;
}
inline AcGePoint3d toPlane(const AcGePoint3d& p, const AcGeVector3d& normal) {
    return isWorldZ(normal) ? p : AcGeMatrix3d::worldToPlane(normal) * p;
}

// A point that files hold in the plane of the entity's normal and the entity in the world. Going from the one
// to the other and back loses last digits, so what was read is remembered while neither point nor normal
// changes.
class FiledPoint : public AcGePoint3d {
public:
    FiledPoint() = default;
    FiledPoint(const AcGePoint3d& world) : AcGePoint3d(world) {}
    FiledPoint& operator=(const AcGePoint3d& world) {
        static_cast<AcGePoint3d&>(*this) = world;
        return *this;
    }
    // After reading: the point holds plane coordinates and goes to the world.
    void fromPlane(const AcGeVector3d& normal) {
        if (isWorldZ(normal)) return;
        const AcGePoint3d plane = *this;
        *this = toWorld(plane, normal);
        memory_ = std::make_shared<const Memory>(Memory{plane, *this, normal});
    }
    AcGePoint3d inPlane(const AcGeVector3d& normal) const {
        return memory_ && memory_->world == *this && memory_->normal == normal ? memory_->plane
                                                                               : toPlane(*this, normal);
    }

private:
    struct Memory {
        AcGePoint3d plane, world;
        AcGeVector3d normal;
    };
    std::shared_ptr<const Memory> memory_;
};

} // namespace host
