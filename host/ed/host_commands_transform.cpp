// MOVE, COPY, ROTATE, SCALE, MIRROR: objects as a whole, somewhere else.
#include <cmath>
#include <numbers>

#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/ent/text.h"

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

// Which objects, about which point; ROTATE and SCALE begin alike.
struct Turned {
    std::vector<AcDbObjectId> ids;
    AcGePoint3d base; // UCS
    ads_point from;
    bool copy = false;
    void by(const AcGeMatrix3d& matrix) const {
        copy ? void(copyAll(ids, sameFor(matrix))) : transformAll(ids, sameFor(matrix));
    }
};
std::optional<Turned> askTurned() {
    Turned turned{askObjects(true), {}, {}};
    if (turned.ids.empty()) return std::nullopt;
    const auto base = askBase();
    if (!base) return std::nullopt;
    turned.base = *base;
    turned.from[X] = base->x, turned.from[Y] = base->y, turned.from[Z] = base->z;
    return turned;
}

// A number asked for with Copy and Reference beside it; `ask` is called with a prompt, `reference` gives
// the number from two measures.
template <class Ask, class Reference>
std::optional<double> askMeasure(Turned& turned, const std::wstring& prompt, int bits, Ask ask,
                                 Reference reference) {
    for (;;) {
        double value = 0;
        acedInitGet(bits, L"Copy Reference _Copy Reference");
        const int status = ask(prompt.c_str(), &value);
        if (status == RTNORM) return value;
        if (status == RTNONE) return 0;
        if (status != RTKWORD) return std::nullopt;
        if (chosenKeyword() == L"Reference") return reference();
        turned.copy = true;
    }
}

AcGeVector3d ucsNormal() { return DrawingPlane().normal; }

// -- MIRROR -------------------------------------------------------------------------------------------

// With MIRRTEXT off, words stay readable: a second mirroring through the middle of the text, across or along
// its line, whichever leaves it reading as it did.
AcGeMatrix3d readable(const AcGeMatrix3d& mirroring, const AcDbEntity& entity, double rotation,
                      const AcGeVector3d& normal) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk) return mirroring;
    const AcGePoint3d middle = mirroring * (box.minPoint() + (box.maxPoint() - box.minPoint()) / 2);
    const AcGeMatrix3d own = AcGeMatrix3d::planeToWorld(normal);
    const AcGeVector3d along = own * AcGeVector3d(std::cos(rotation), std::sin(rotation), 0);
    const AcGeVector3d mirrored = mirroring * along;
    const AcGeVector3d across = mirroring * (normal.crossProduct(along));
    const AcGeVector3d flipped = mirrored.dotProduct(along) < 0 ? mirrored : across;
    return AcGeMatrix3d::mirroring(AcGePlane(middle, flipped)) * mirroring;
}

AcGeMatrix3d mirroringOf(const AcDbEntity& entity, const AcGeMatrix3d& plain, bool mirrorText) {
    if (mirrorText) return plain;
    if (const auto* text = AcDbText::cast(&entity))
        return readable(plain, entity, text->rotation(), text->normal());
    if (const auto* text = AcDbMText::cast(&entity))
        return readable(plain, entity, text->rotation(), text->normal());
    return plain;
}

} // namespace

std::optional<AcGeVector3d> askDisplacement() {
    const auto base = askBase();
    const auto way = base ? askWay(*base) : std::nullopt;
    return way ? std::optional(way->inWorld()) : std::nullopt;
}

void moveCommand() {
    const std::vector<AcDbObjectId> ids = askObjects(true);
    if (ids.empty()) return;
    if (const auto way = askDisplacement()) transformAll(ids, sameFor(AcGeMatrix3d::translation(*way)));
}
void copyCommand() {
    const std::vector<AcDbObjectId> ids = askObjects(false);
    if (ids.empty()) return;
    const auto base = askBase();
    const auto first = base ? askWay(*base) : std::nullopt;
    if (!first) return;
    std::vector<std::vector<AcDbObjectId>> made = {
        copyAll(ids, sameFor(AcGeMatrix3d::translation(first->inWorld())))};
    if (first->to == *base && first->from == AcGePoint3d::kOrigin) return; // by displacement: once
    for (;;) {
        const AskedPoint next =
            askPoint(L"\nSpecify second point or [Exit/Undo] <Exit>: ", &*base, L"Exit Undo _Exit Undo");
        if (next) {
            made.push_back(
                copyAll(ids, sameFor(AcGeMatrix3d::translation(Way{*base, next.point}.inWorld()))));
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

void rotateCommand() {
    auto turned = askTurned();
    if (!turned) return;
    const auto angle = askMeasure(
        *turned, L"\nSpecify rotation angle or [Copy/Reference] <0>: ", 0,
        [&](const wchar_t* prompt, double* value) { return acedGetAngle(turned->from, prompt, value); },
        [&]() -> std::optional<double> {
            double before = 0, after = 0;
            if (acedGetAngle(nullptr, L"\nSpecify the reference angle <0>: ", &before) == RTCAN ||
                acedGetAngle(turned->from, L"\nSpecify the new angle: ", &after) != RTNORM)
                return std::nullopt;
            return after - before;
        });
    if (angle) turned->by(AcGeMatrix3d::rotation(*angle, ucsNormal(), ucsToWorld(turned->base)));
}

void scaleCommand() {
    auto turned = askTurned();
    if (!turned) return;
    constexpr int kPositive = RSG_NONULL | RSG_NOZERO | RSG_NONEG;
    const auto factor = askMeasure(
        *turned, L"\nSpecify scale factor or [Copy/Reference]: ", kPositive,
        [&](const wchar_t* prompt, double* value) { return acedGetDist(turned->from, prompt, value); },
        [&]() -> std::optional<double> {
            double before = 1, after = 0;
            acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
            if (acedGetDist(nullptr, L"\nSpecify reference length <1>: ", &before) == RTCAN) return {};
            acedInitGet(kPositive, nullptr);
            if (acedGetDist(turned->from, L"\nSpecify new length: ", &after) != RTNORM) return {};
            return after / before;
        });
    if (factor) turned->by(AcGeMatrix3d::scaling(*factor, ucsToWorld(turned->base)));
}

void mirrorCommand() {
    const std::vector<AcDbObjectId> ids = askObjects(true);
    if (ids.empty()) return;
    const AskedPoint first =
        askPoint(L"\nSpecify first point of mirror line: ", nullptr, nullptr, RSG_NONULL);
    if (!first) return;
    const AskedPoint second =
        askPoint(L"\nSpecify second point of mirror line: ", &first.point, nullptr, RSG_NONULL);
    if (!second) return;
    const AcGePoint3d from = ucsToWorld(first.point);
    const AcGeVector3d across = ucsNormal().crossProduct(ucsToWorld(second.point) - from);
    if (across.length() == 0) return printLine(L"\nThe two points are the same; a mirror line needs two.");
    const auto replace = askYesNo(L"\nErase source objects? [Yes/No] <N>: ", false);
    if (!replace) return;
    const bool mirrorText = systemVariableText(*findSystemVariable(L"MIRRTEXT")) != L"0";
    const AcGeMatrix3d plain = AcGeMatrix3d::mirroring(AcGePlane(from, across));
    const MatrixFor matrix = [&](const AcDbEntity& entity) { return mirroringOf(entity, plain, mirrorText); };
    *replace ? transformAll(ids, matrix) : void(copyAll(ids, matrix));
}

} // namespace host
