// ERASE, MOVE, COPY: what is done to objects as a whole.
#include "host/ed/frontend.h"
#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"

namespace host {
namespace {

// From where to where: two points, or one whose coordinates are the way.
struct Way {
    AcGePoint3d from, to; // UCS
    AcGeVector3d inWorld() const { return ucsToWorld(to) - ucsToWorld(from); }
};

std::optional<AcGePoint3d> askBase() {
    const AskedPoint base = askPoint(L"\nSpecify base point: ", nullptr, nullptr, RSG_NONULL);
    return base ? std::optional(base.point) : std::nullopt;
}

std::optional<Way> askWay(const AcGePoint3d& base) {
    const AskedPoint second =
        askPoint(L"\nSpecify second point or <use first point as displacement>: ", &base);
    if (second) return Way{base, second.point};
    return second.status == RTNONE ? std::optional(Way{AcGePoint3d::kOrigin, base}) : std::nullopt;
}

// Of the kinds that can't be moved, one line tells.
void tellRefused(size_t refused) {
    if (refused > 0) printLine(L"\n" + std::to_wstring(refused) + L" could not be moved.");
}

std::vector<AcDbObjectId> copyAll(const std::vector<AcDbObjectId>& ids, const AcGeMatrix3d& matrix) {
    std::vector<AcDbObjectId> copies;
    size_t refused = 0;
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().currentSpaceId(), AcDb::kForWrite);
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbEntity* made = nullptr;
        if (!space || !entity || entity->getTransformedCopy(matrix, made) != Acad::eOk) {
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
    tellRefused(refused);
    return copies;
}

void eraseAll(const std::vector<AcDbObjectId>& ids) {
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (entity) entity->erase();
    }
}

} // namespace

void eraseCommand() {
    eraseAll(askObjects(true));
    frontEnd().redraw();
}

void moveCommand() {
    const std::vector<AcDbObjectId> ids = askObjects(true);
    if (ids.empty()) return;
    const auto base = askBase();
    const auto way = base ? askWay(*base) : std::nullopt;
    if (!way) return;
    const AcGeMatrix3d matrix = AcGeMatrix3d::translation(way->inWorld());
    size_t refused = 0;
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (!entity || entity->transformBy(matrix) != Acad::eOk) ++refused;
    }
    tellRefused(refused);
}

void copyCommand() {
    const std::vector<AcDbObjectId> ids = askObjects(false);
    if (ids.empty()) return;
    const auto base = askBase();
    const auto first = base ? askWay(*base) : std::nullopt;
    if (!first) return;
    std::vector<std::vector<AcDbObjectId>> made = {copyAll(ids, AcGeMatrix3d::translation(first->inWorld()))};
    if (first->to == *base && first->from == AcGePoint3d::kOrigin) return; // by displacement: once
    for (;;) {
        const AskedPoint next =
            askPoint(L"\nSpecify second point or [Exit/Undo] <Exit>: ", &*base, L"Exit Undo _Exit Undo");
        if (next) {
            made.push_back(copyAll(ids, AcGeMatrix3d::translation(Way{*base, next.point}.inWorld())));
        } else if (next.status != RTKWORD || chosenKeyword() == L"Exit") {
            return;
        } else if (made.empty()) {
            printLine(L"\nAll copies are undone.");
        } else {
            eraseAll(made.back());
            made.pop_back();
        }
    }
}

} // namespace host
