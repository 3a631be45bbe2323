// Gathering grips, and moving what they belong to.
#include "apps/desk/grips.h"

#include <algorithm>
#include <memory>

#include "apps/desk/selection_facts.h"
#include "host/db/database.h"
#include "host/ed/sysvars.h"
#include "host/view/collector.h"
#include "host/view/database_source.h"

namespace desk {
namespace {

constexpr size_t kMostEntities = 100, kMostPlaces = 5000;

} // namespace

void Grips::gather(const std::vector<AcDbObjectId>& entities) {
    *this = Grips();
    if (entities.size() > kMostEntities ||
        host::systemVariableText(*host::findSystemVariable(L"GRIPS")) == L"0")
        return;
    for (const AcDbObjectId id : entities) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcGePoint3dArray points;
        if (!entity || isOnLockedLayer(*entity) || entity->getGripPoints(points) != Acad::eOk) continue;
        if (grips_.size() + size_t(points.length()) > kMostPlaces) return;
        for (int i = 0; i < points.length(); ++i) {
            const auto same = std::find(places_.begin(), places_.end(), points[i]);
            grips_.push_back({id, i, size_t(same - places_.begin())});
            if (same == places_.end()) places_.push_back(points[i]);
        }
    }
}

void Grips::take(size_t place) { hot_ = place; }

template <class Act> void Grips::eachHeld(Act act) const {
    for (auto grip = grips_.begin(); grip != grips_.end();) {
        const AcDbObjectId entity = grip->entity;
        AcGeIntArray indices;
        for (; grip != grips_.end() && grip->entity == entity; ++grip)
            if (grip->place == hot_) indices.append(grip->index);
        if (!indices.isEmpty()) act(entity, indices);
    }
}

host::DisplayList Grips::preview(const AcGePoint3d& to) const {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    host::DatabaseSource source(database);
    host::DisplayCollector collector(source, {.dragging = true});
    eachHeld([&](AcDbObjectId id, const AcGeIntArray& indices) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity) return;
        const std::unique_ptr<AcRxObject> copy(entity->clone());
        auto* moved = AcDbEntity::cast(copy.get());
        if (moved && moved->moveGripPointsAt(indices, to - base()) == Acad::eOk) collector.add(*moved);
    });
    return collector.take();
}

void Grips::move(const AcGePoint3d& to) const {
    eachHeld([&](AcDbObjectId id, const AcGeIntArray& indices) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (entity) entity->moveGripPointsAt(indices, to - base());
    });
}

} // namespace desk
