// What the host's own commands share.
#include "host/ed/host_command_tools.h"

#include <cmath>

#include "host/ed/prompting.h"
#include "host/ed/selection.h"
#include "host/ent/blockreference.h"
#include "host/os/numbers.h"
#include "host/os/text.h"

namespace host {
namespace {

std::vector<AcDbObjectId> idsOf(const ads_name set) {
    std::vector<AcDbObjectId> ids;
    Adesk::Int32 length = 0;
    acedSSLength(set, &length);
    for (Adesk::Int32 i = 0; i < length; ++i) {
        ads_name name;
        AcDbObjectId id;
        if (acedSSName(set, i, name) == RTNORM && acdbGetObjectId(id, name) == Acad::eOk) ids.push_back(id);
    }
    return ids;
}

} // namespace

AcDbDatabase& drawing() { return *acdbHostApplicationServices()->workingDatabase(); }

AskedPoint askPoint(const wchar_t* prompt, const AcGePoint3d* base, const wchar_t* keywords, int bits) {
    ads_point from{}, to{};
    if (base) from[X] = base->x, from[Y] = base->y, from[Z] = base->z;
    acedInitGet(bits, keywords);
    const int status = acedGetPoint(base ? from : nullptr, prompt, to);
    return {status, {to[X], to[Y], to[Z]}};
}

std::wstring chosenKeyword() {
    std::wstring keyword;
    acedGetInput(keyword);
    return keyword;
}

std::vector<AcDbObjectId> askObjects(bool forChange) {
    ads_name set;
    if (acedSSGet(forChange ? L"_:L" : nullptr, nullptr, nullptr, nullptr, set) != RTNORM) return {};
    std::vector<AcDbObjectId> ids = idsOf(set);
    acedSSFree(set);
    return ids;
}

AcDbObjectId addToDrawing(std::unique_ptr<AcDbEntity> entity) {
    entity->setDatabaseDefaults(&drawing());
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().currentSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    if (!space || space->appendAcDbEntity(id, entity.get()) != Acad::eOk) {
        printLine(L"\nThe drawing could not take the object.");
        return {};
    }
    entity.release()->close();
    return id;
}

AcDbObjectId addBeside(std::unique_ptr<AcDbEntity> entity, AcDbObjectId beside) {
    AcDbObjectId owner, id;
    if (AcDbObjectPointer<AcDbEntity> source(beside, AcDb::kForRead); source) owner = source->blockId();
    AcDbObjectPointer<AcDbBlockTableRecord> space(owner, AcDb::kForWrite);
    if (!space || space->appendAcDbEntity(id, entity.get()) != Acad::eOk) return {};
    entity.release()->close();
    return id;
}

std::optional<bool> askYesNo(const wchar_t* prompt, bool byDefault) {
    acedInitGet(0, L"Yes No _Yes No");
    std::wstring answer;
    const int status = acedGetKword(prompt, answer);
    if (status == RTNONE) return byDefault;
    return status == RTNORM ? std::optional(answer == L"Yes") : std::nullopt;
}

MatrixFor sameFor(const AcGeMatrix3d& matrix) {
    return [matrix](const AcDbEntity&) { return matrix; };
}

void tellUnmoved(size_t refused) {
    if (refused > 0) printLine(L"\n" + std::to_wstring(refused) + L" could not be moved.");
}

void transformAll(const std::vector<AcDbObjectId>& ids, const MatrixFor& matrix) {
    size_t refused = 0;
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (!entity || entity->transformBy(matrix(*entity)) != Acad::eOk) ++refused;
    }
    tellUnmoved(refused);
}

std::vector<AcDbObjectId> copyAll(const std::vector<AcDbObjectId>& ids, const MatrixFor& matrix) {
    std::vector<AcDbObjectId> copies;
    size_t refused = 0;
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().currentSpaceId(), AcDb::kForWrite);
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbEntity* made = nullptr;
        if (!space || !entity || entity->getTransformedCopy(matrix(*entity), made) != Acad::eOk) {
            ++refused;
            continue;
        }
        std::unique_ptr<AcDbEntity> copy(made);
        AcDbObjectId added;
        if (space->appendAcDbEntity(added, copy.get()) != Acad::eOk) {
            ++refused;
            continue;
        }
        copy.release()->close();
        copies.push_back(added);
    }
    tellUnmoved(refused);
    return copies;
}

void eraseAll(const std::vector<AcDbObjectId>& ids) {
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (entity) entity->erase();
    }
}

DrawingPlane::DrawingPlane() {
    const UserFrame user = surroundings().user;
    normal = user.xAxis.crossProduct(user.yAxis).normal();
    fromWorld = AcGeMatrix3d::worldToPlane(normal);
}
AcGePoint3d DrawingPlane::own(const AcGePoint3d& ucs) const { return fromWorld * ucsToWorld(ucs); }
double DrawingPlane::ownAngle(double ucsAngle) const {
    const UserFrame user = surroundings().user;
    const AcGeVector3d direction =
        fromWorld * (user.xAxis * std::cos(ucsAngle) + user.yAxis * std::sin(ucsAngle));
    return std::atan2(direction.y, direction.x);
}

std::optional<Placing> askPlacing() {
    Placing placing;
    const AskedPoint at = askPoint(L"\nSpecify insertion point: ", nullptr, nullptr, RSG_NONULL);
    if (!at) return std::nullopt;
    placing.point = at.point;
    ads_point base{at.point.x, at.point.y, at.point.z};
    acedInitGet(RSG_NOZERO, nullptr);
    if (acedGetReal(L"\nEnter X scale factor <1>: ", &placing.x) == RTCAN) return std::nullopt;
    placing.y = placing.x;
    acedInitGet(RSG_NOZERO, nullptr);
    if (acedGetReal(L"\nEnter Y scale factor <use X scale factor>: ", &placing.y) == RTCAN)
        return std::nullopt;
    if (acedGetAngle(base, L"\nSpecify rotation angle <0>: ", &placing.angle) == RTCAN) return std::nullopt;
    return placing;
}

AcDbObjectId placeBlock(AcDbObjectId block, const Placing& placing) {
    const DrawingPlane plane;
    auto made = std::make_unique<AcDbBlockReference>(ucsToWorld(placing.point), block);
    made->setNormal(plane.normal);
    made->setPosition(ucsToWorld(placing.point));
    made->setScaleFactors(AcGeScale3d(placing.x, placing.y, placing.x));
    made->setRotation(plane.ownAngle(placing.angle));
    return addToDrawing(std::move(made));
}

std::wstring shown(double value) {
    return wide(formatFixed(value, int(drawing().headerInteger("$LUPREC", 4))));
}
std::wstring shown(const AcGePoint3d& p) {
    return L"X= " + shown(p.x) + L"  Y= " + shown(p.y) + L"  Z= " + shown(p.z);
}

} // namespace host
