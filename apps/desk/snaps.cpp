// Asking entities for their snap points.
#include "apps/desk/snaps.h"

#include <algorithm>

#include "host/db/database.h"
#include "host/db/entity.h"
#include "host/ed/sysvars.h"
#include "host/os/numbers.h"

namespace desk {
namespace {

constexpr int kSuspended = 16384, kIntersection = 32;
constexpr size_t kMostCrossed = 16;

struct Mode {
    int bit;
    AcDb::OsnapMode mode;
    SnapKind kind;
};
constexpr Mode kModes[] = {{1, AcDb::kOsModeEnd, SnapKind::end},
                           {2, AcDb::kOsModeMid, SnapKind::middle},
                           {4, AcDb::kOsModeCen, SnapKind::center},
                           {8, AcDb::kOsModeNode, SnapKind::node},
                           {16, AcDb::kOsModeQuad, SnapKind::quadrant},
                           {64, AcDb::kOsModeIns, SnapKind::insertion},
                           {128, AcDb::kOsModePerp, SnapKind::perpendicular},
                           {256, AcDb::kOsModeTan, SnapKind::tangent},
                           {512, AcDb::kOsModeNear, SnapKind::nearest}};

void addCrossings(const std::vector<AcDbObjectId>& entities, std::vector<Snap>& out) {
    const size_t count = std::min(entities.size(), kMostCrossed);
    for (size_t i = 0; i < count; ++i) {
        AcDbObjectPointer<AcDbEntity> one(entities[i], AcDb::kForRead);
        for (size_t k = i + 1; one && k < count; ++k) {
            AcDbObjectPointer<AcDbEntity> other(entities[k], AcDb::kForRead);
            AcGePoint3dArray points;
            if (other) one->intersectWith(other.object(), AcDb::kOnBothOperands, points);
            for (const AcGePoint3d& point : points) out.push_back({point, SnapKind::intersection});
        }
    }
}

} // namespace

int snapModes() {
    const auto text = host::systemVariableText(*host::findSystemVariable(L"OSMODE"));
    const int modes = int(host::parseInteger(std::wstring_view(text)).value_or(0));
    return modes & kSuspended ? 0 : modes;
}

std::vector<Snap> snapsOf(const std::vector<AcDbObjectId>& entities, int modes, const AcGePoint3d& pick,
                          const AcGePoint3d& last) {
    std::vector<Snap> found;
    for (const AcDbObjectId id : entities) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        for (const Mode& mode : kModes) {
            AcGePoint3dArray points;
            if (!entity || !(modes & mode.bit)) continue;
            entity->getOsnapPoints(mode.mode, pick, last, points);
            for (const AcGePoint3d& point : points) found.push_back({point, mode.kind});
        }
    }
    if (modes & kIntersection) addCrossings(entities, found);
    return found;
}

} // namespace desk
