// ERASE, STRETCH, EXPLODE, OFFSET: what is done to the shape of objects.
#include <algorithm>
#include <cmath>

#include "host/ed/frontend.h"
#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/ent/curve.h"
#include "host/os/numbers.h"
#include "host/os/text.h"

namespace host {
namespace {

// -- STRETCH ------------------------------------------------------------------------------------------

using Polygons = std::vector<std::vector<AcGePoint3d>>;

// Points in a crossing window go along; an object with all of them in it, or with none (it was picked by
// itself), moves as a whole.
bool stretch(AcDbEntity& entity, const Polygons& windows, const AcGeVector3d& way) {
    AcGePoint3dArray points;
    entity.getStretchPoints(points);
    AcGeIntArray caught;
    for (int i = 0; i < points.length(); ++i) {
        const auto holds = [&](const auto& window) { return seenInside(window, points[i]); };
        if (std::any_of(windows.begin(), windows.end(), holds)) caught.append(i);
    }
    const bool whole = caught.isEmpty() ? windows.empty() : caught.length() == points.length();
    if (whole) return entity.transformBy(AcGeMatrix3d::translation(way)) == Acad::eOk;
    return caught.isEmpty() || entity.moveStretchPointsAt(caught, way) == Acad::eOk;
}

// -- EXPLODE ------------------------------------------------------------------------------------------

bool explode(AcDbObjectId id) {
    AcDbVoidPtrArray parts;
    {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (!entity || entity->explode(parts) != Acad::eOk || parts.isEmpty()) return false;
    }
    for (int i = 0; i < parts.length(); ++i)
        addBeside(std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(parts[i])), id);
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    return entity && entity->erase() == Acad::eOk;
}

// -- OFFSET -------------------------------------------------------------------------------------------

using Curves = std::vector<std::unique_ptr<AcDbCurve>>;

Curves offsets(const AcDbCurve& curve, double distance) {
    AcDbVoidPtrArray found;
    Curves curves;
    if (curve.getOffsetCurves(distance, found) != Acad::eOk) return curves;
    for (int i = 0; i < found.length(); ++i) curves.emplace_back(static_cast<AcDbCurve*>(found[i]));
    return curves;
}
double distanceTo(const AcDbCurve& curve, const AcGePoint3d& point) {
    AcGePoint3d nearest;
    return curve.getClosestPointTo(point, nearest) == Acad::eOk ? nearest.distanceTo(point) : HUGE_VAL;
}
double distanceTo(const Curves& curves, const AcGePoint3d& point) {
    double least = HUGE_VAL;
    for (const auto& curve : curves) least = std::min(least, distanceTo(*curve, point));
    return least;
}

class Offsetting {
public:
    // False when the command is to end.
    bool askDistance() {
        const SystemVariable& stored = *findSystemVariable(L"OFFSETDIST");
        const double last = parseReal(std::wstring_view(systemVariableText(stored))).value_or(1);
        acedInitGet(RSG_NOZERO | RSG_NONEG, L"Through Erase _Through Erase");
        const std::wstring shownLast = last > 0 ? shown(last) : L"Through";
        distance_ = last;
        const int status = acedGetDist(
            nullptr, (L"\nSpecify offset distance or [Through/Erase] <" + shownLast + L">: ").c_str(),
            &distance_);
        if (status == RTKWORD && chosenKeyword() == L"Erase") {
            const auto answer = askYesNo(L"\nErase source object after offsetting? [Yes/No] <No>: ", false);
            erase_ = answer.value_or(erase_);
            return answer && askDistance();
        }
        if (status == RTKWORD) distance_ = -1;
        if (status != RTNORM && status != RTKWORD && status != RTNONE) return false;
        std::wstring why;
        return setSystemVariableText(stored, wide(formatReal(distance_)), why);
    }
    // False when the command is to end.
    bool next() {
        ads_name name;
        ads_point at;
        acedInitGet(0, L"Exit Undo _Exit Undo");
        const int status = acedEntSel(L"\nSelect object to offset or [Exit/Undo] <Exit>: ", name, at);
        if (status == RTKWORD && chosenKeyword() == L"Undo") return takeBack(), true;
        AcDbObjectId id;
        if (status != RTNORM || acdbGetObjectId(id, name) != Acad::eOk) return false;
        const AskedPoint side =
            askPoint(through() ? L"\nSpecify through point: " : L"\nSpecify point on side to offset: ");
        if (!side) return false;
        return offset(id, ucsToWorld(side.point)), true;
    }

private:
    bool through() const { return !(distance_ > 0); }
    void offset(AcDbObjectId id, const AcGePoint3d& side) {
        AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
        if (!curve) return printLine(L"\nThat object can't be offset.");
        const double away = distanceTo(*curve, side), distance = through() ? away : distance_;
        // Which sign leads to the point is seen close by the curve, where both sides have offsets.
        const double close = std::min(distance, away) / 16;
        const bool left =
            distanceTo(offsets(*curve, close), side) <= distanceTo(offsets(*curve, -close), side);
        Curves nearer = offsets(*curve, left ? distance : -distance);
        curve.close();
        if (nearer.empty()) return printLine(L"\nThe object has no offset at that distance.");
        made_.emplace_back();
        for (auto& one : nearer) made_.back().push_back(addBeside(std::move(one), id));
        if (erase_) eraseAll({id});
    }
    void takeBack() {
        if (made_.empty()) return printLine(L"\nAll offsets are undone.");
        eraseAll(made_.back());
        made_.pop_back();
    }
    double distance_ = 1;
    bool erase_ = false;
    std::vector<std::vector<AcDbObjectId>> made_;
};

} // namespace

void eraseCommand() {
    eraseAll(askObjects(true));
    frontEnd().redraw();
}

void stretchCommand() {
    printLine(L"\nSelect objects to stretch by a crossing window or polygon...");
    const std::vector<AcDbObjectId> ids = askObjects(true);
    if (ids.empty()) return;
    const Polygons windows = lastCrossings();
    const auto way = askDisplacement();
    if (!way) return;
    size_t refused = 0;
    for (const AcDbObjectId id : ids) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (!entity || !stretch(*entity, windows, *way)) ++refused;
    }
    tellUnmoved(refused);
}

void explodeCommand() {
    size_t refused = 0;
    for (const AcDbObjectId id : askObjects(true))
        if (!explode(id)) ++refused;
    if (refused > 0) printLine(L"\n" + std::to_wstring(refused) + L" could not be exploded.");
}

void offsetCommand() {
    Offsetting offsetting;
    if (!offsetting.askDistance()) return;
    while (offsetting.next()) {
    }
}

} // namespace host
