// PEDIT: polylines closed, opened, joined, widened, fitted, smoothed and turned round.
#include <algorithm>

#include "host/ed/host_command_tools.h"
#include "host/ed/polyline_join.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/polyline2d.h"
#include "host/ent/polyline3d.h"
#include "host/ent/spline.h"
#include "host/os/numbers.h"

namespace host {
namespace {

// -- what is edited -----------------------------------------------------------------------------------

bool isPolyline(const AcDbEntity& entity) {
    return AcDbPolyline::cast(&entity) || AcDb2dPolyline::cast(&entity) || AcDb3dPolyline::cast(&entity);
}
bool canBecomePolyline(const AcDbEntity& entity) {
    return AcDbLine::cast(&entity) || AcDbArc::cast(&entity) || AcDbSpline::cast(&entity);
}

template <class Test> bool holds(AcDbObjectId id, Test test) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    return entity && test(*entity);
}

// The line, arc or spline under the same id as a polyline; false when that can't be.
bool becomePolyline(AcDbObjectId id, int splinePrecision) {
    AcDbObjectPointer<AcDbEntity> source(id, AcDb::kForWrite);
    if (!source) return false;
    std::unique_ptr<AcDbCurve> polyline;
    if (const auto* spline = AcDbSpline::cast(source.object())) {
        AcDbCurve* made = nullptr;
        if (spline->toPolyline(made, splinePrecision) != Acad::eOk) return false;
        polyline.reset(made);
    } else {
        AcGeVector3d normal = AcGeVector3d::kZAxis;
        AcGePoint3d start;
        static_cast<AcDbCurve*>(source.object())->getStartPoint(start);
        if (const auto* arc = AcDbArc::cast(source.object())) normal = arc->normal();
        if (const auto* line = AcDbLine::cast(source.object())) normal = line->normal();
        const double elevation = (AcGeMatrix3d::worldToPlane(normal) * start).z;
        const auto piece = joinPiece(*source, normal, elevation);
        if (!piece) return false;
        auto light = std::make_unique<AcDbPolyline>();
        light->setNormal(normal), light->setElevation(elevation), light->setVertices(piece->vertices);
        polyline = std::move(light);
    }
    polyline->setPropertiesFrom(source.object());
    if (source->handOverTo(polyline.get()) != Acad::eOk) return false;
    AcDbEntity* former = nullptr;
    source.release(former);
    delete former; // it has left the drawing
    polyline.release()->close();
    return true;
}

int askPrecision() {
    constexpr int kUsual = 10, kMost = 99;
    int precision = kUsual;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    acedGetInt(L"\nSpecify a precision <10>: ", &precision);
    return std::min(precision, kMost);
}

// -- one operation on one polyline --------------------------------------------------------------------

// `edit` gets the polyline as its own class.
template <class Edit> Acad::ErrorStatus asPolyline(AcDbEntity& entity, Edit edit) {
    if (auto* light = AcDbPolyline::cast(&entity)) return edit(*light);
    if (auto* old = AcDb2dPolyline::cast(&entity)) return edit(*old);
    if (auto* spatial = AcDb3dPolyline::cast(&entity)) return edit(*spatial);
    return Acad::eNotApplicable;
}

Acad::ErrorStatus setWidth(AcDbEntity& entity, double width) {
    if (auto* light = AcDbPolyline::cast(&entity)) return light->setConstantWidth(width);
    auto* old = AcDb2dPolyline::cast(&entity);
    if (!old) return Acad::eNotApplicable;
    old->setDefaultStartWidth(width), old->setDefaultEndWidth(width);
    old->parts().eachForWrite<AcDb2dVertex>(
        [&](AcDb2dVertex& vertex) { vertex.setStartWidth(width), vertex.setEndWidth(width); });
    return Acad::eOk;
}

Acad::ErrorStatus setGeneration(AcDbEntity& entity, bool on) {
    if (auto* light = AcDbPolyline::cast(&entity)) return light->setPlinegen(on), Acad::eOk;
    auto* old = AcDb2dPolyline::cast(&entity);
    return old ? (old->setLinetypeGeneration(on), Acad::eOk) : Acad::eNotApplicable;
}

Acad::ErrorStatus straighten(AcDbEntity& entity) {
    if (auto* light = AcDbPolyline::cast(&entity)) {
        auto vertices = light->vertices();
        for (AcDbPolyline::Vertex& vertex : vertices) vertex.bulge = 0;
        return light->setVertices(std::move(vertices));
    }
    if (auto* old = AcDb2dPolyline::cast(&entity)) return old->straighten();
    auto* spatial = AcDb3dPolyline::cast(&entity);
    return spatial ? spatial->straighten() : Acad::eNotApplicable;
}

// Only the old kinds can be fitted or smoothed; a lightweight one becomes one, under the same id.
bool makeOld(AcDbObjectId id) {
    AcDbObjectPointer<AcDbPolyline> light(id, AcDb::kForWrite);
    if (!light) return true;
    AcDb2dPolyline* old = nullptr;
    if (light->convertTo(true, old) != Acad::eOk) return false;
    AcDbPolyline* former = nullptr;
    light.release(former);
    delete former; // it has left the drawing
    old->close();
    return true;
}

int variable(const wchar_t* name) {
    return int(parseReal(std::wstring_view(systemVariableText(*findSystemVariable(name)))).value_or(0));
}

Acad::ErrorStatus smooth(AcDbEntity& entity) {
    const bool quadratic = variable(L"SPLINETYPE") == 5;
    const Adesk::Int16 segments = Adesk::Int16(variable(L"SPLINESEGS"));
    if (auto* old = AcDb2dPolyline::cast(&entity))
        return old->splineFit(quadratic ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly, segments);
    auto* spatial = AcDb3dPolyline::cast(&entity);
    return spatial
               ? spatial->splineFit(quadratic ? AcDb::k3dQuadSplinePoly : AcDb::k3dCubicSplinePoly, segments)
               : Acad::eNotApplicable;
}

Acad::ErrorStatus fit(AcDbEntity& entity) {
    auto* old = AcDb2dPolyline::cast(&entity);
    return old ? old->curveFit() : Acad::eNotApplicable;
}

// -- joining ------------------------------------------------------------------------------------------

// Joins `others` to the polyline as far as they meet it; those that have gone into it are erased and leave
// the list. Returns how many segments came in.
size_t joinTo(AcDbObjectId id, std::vector<AcDbObjectId>& others, double fuzz) {
    AcDbObjectPointer<AcDbEntity> target(id, AcDb::kForWrite);
    if (AcDb2dPolyline::cast(target.object())) {
        auto light = std::make_unique<AcDbPolyline>();
        AcDbEntity* old = nullptr;
        target.release(old);
        if (light->convertFrom(old, true) != Acad::eOk) return old->close(), 0;
        light.release()->close();
        target.open(id, AcDb::kForWrite);
    }
    auto* polyline = AcDbPolyline::cast(target.object());
    const auto own =
        polyline ? joinPiece(*polyline, polyline->normal(), polyline->elevation()) : std::nullopt;
    if (!own) return 0;
    std::vector<JoinPiece> pieces = {*own};
    std::vector<AcDbObjectId> sources = {id};
    for (const AcDbObjectId other : others) {
        AcDbObjectPointer<AcDbEntity> entity(other, AcDb::kForRead);
        auto piece = entity && other != id ? joinPiece(*entity, polyline->normal(), polyline->elevation())
                                           : std::nullopt;
        if (!piece) continue;
        pieces.push_back(std::move(*piece));
        sources.push_back(other);
    }
    const JoinedChain chain = joinChain(pieces, 0, fuzz);
    if (chain.taken.size() == 1 && !chain.closed) return 0;
    const size_t before = polyline->numVerts();
    polyline->setVertices(chain.vertices);
    polyline->setClosed(chain.closed);
    for (const size_t taken : chain.taken) {
        if (taken == 0) continue;
        std::erase(others, sources[taken]);
        eraseAll({sources[taken]});
    }
    return chain.vertices.size() + chain.closed - before;
}

// -- the command --------------------------------------------------------------------------------------

class PolylineEditing {
public:
    PolylineEditing(std::vector<AcDbObjectId> ids, bool multiple)
        : ids_(std::move(ids)), multiple_(multiple) {}
    void run() {
        while (next()) {
        }
    }

private:
    bool next() {
        const std::wstring ends = multiple_ ? L"Close Open" : allClosed() ? L"Open" : L"Close";
        const std::wstring words = ends + L" Join Width Fit Spline Decurve Ltype Reverse Exit";
        std::wstring shownWords = words.substr(0, words.rfind(L' '));
        std::replace(shownWords.begin(), shownWords.end(), L' ', L'/');
        acedInitGet(0, (words + L" _" + words).c_str());
        std::wstring choice;
        const int status = acedGetKword((L"\nEnter an option [" + shownWords + L"]: ").c_str(), choice);
        if (status != RTNORM || choice == L"Exit") return false;
        apply(choice);
        return true;
    }
    void apply(const std::wstring& choice) {
        if (choice == L"Close" || choice == L"Open") return setClosed(choice == L"Close");
        if (choice == L"Join") return join();
        if (choice == L"Width") return askWidth();
        if (choice == L"Ltype") return askGeneration();
        if (choice == L"Decurve") return each(straighten);
        if (choice == L"Reverse")
            return each([](AcDbEntity& e) { return static_cast<AcDbCurve&>(e).reverseCurve(); });
        for (const AcDbObjectId id : ids_) makeOld(id);
        each(choice == L"Fit" ? fit : smooth);
    }
    bool allClosed() const {
        return std::all_of(ids_.begin(), ids_.end(), [](AcDbObjectId id) {
            return holds(id, [](const AcDbEntity& e) { return static_cast<const AcDbCurve&>(e).isClosed(); });
        });
    }
    void setClosed(bool closed) {
        each([&](AcDbEntity& entity) {
            return asPolyline(entity, [&](auto& polyline) { return polyline.setClosed(closed); });
        });
    }
    void askWidth() {
        double width = 0;
        acedInitGet(RSG_NONULL | RSG_NONEG, nullptr);
        if (acedGetDist(nullptr, L"\nSpecify new width for all segments: ", &width) != RTNORM) return;
        each([&](AcDbEntity& entity) { return setWidth(entity, width); });
    }
    void askGeneration() {
        acedInitGet(0, L"ON OFF _ON OFF");
        std::wstring choice;
        if (acedGetKword(L"\nEnter polyline linetype generation option [ON/OFF] <OFF>: ", choice) == RTCAN)
            return;
        each([&](AcDbEntity& entity) { return setGeneration(entity, choice == L"ON"); });
    }
    void join() {
        double fuzz = 0;
        std::vector<AcDbObjectId> others = ids_;
        if (multiple_) {
            acedInitGet(RSG_NONEG, nullptr);
            if (acedGetDist(nullptr, L"\nEnter fuzz distance <0>: ", &fuzz) == RTCAN) return;
        } else {
            others = askObjects(true);
        }
        // Ends that meet on paper differ in their last digits.
        constexpr double kSmallest = 1e-9;
        size_t added = 0;
        for (size_t i = 0; i < ids_.size(); ++i) {
            added += joinTo(ids_[i], others, std::max(fuzz, kSmallest));
            std::erase_if(ids_, [&](AcDbObjectId id) { return id.isErased(); });
        }
        printLine(L"\n" + std::to_wstring(added) + L" segments added to the polyline");
    }
    template <class Edit> void each(Edit edit) {
        size_t refused = 0;
        for (const AcDbObjectId id : ids_) {
            AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
            if (!entity || edit(*entity) != Acad::eOk) ++refused;
        }
        if (refused > 0) printLine(L"\n" + std::to_wstring(refused) + L" could not be changed that way.");
    }
    std::vector<AcDbObjectId> ids_;
    bool multiple_;
};

// Polylines of the selection, and what may become one when the user agrees.
std::vector<AcDbObjectId> polylinesOf(std::vector<AcDbObjectId> ids, const wchar_t* question) {
    const auto convertible = [](AcDbObjectId id) { return holds(id, canBecomePolyline); };
    if (std::any_of(ids.begin(), ids.end(), convertible) && variable(L"PEDITACCEPT") == 0 &&
        !askYesNo(question, true).value_or(false))
        std::erase_if(ids, convertible);
    int precision = 0;
    for (const AcDbObjectId id : ids) {
        if (!convertible(id)) continue;
        const bool spline = holds(id, [](const AcDbEntity& e) { return AcDbSpline::cast(&e) != nullptr; });
        if (spline && precision == 0) precision = askPrecision();
        becomePolyline(id, precision);
    }
    const size_t others = std::erase_if(ids, [](AcDbObjectId id) { return !holds(id, isPolyline); });
    if (others > 0) printLine(L"\n" + std::to_wstring(others) + L" can't be edited as polylines.");
    return ids;
}

} // namespace

void polylineEditCommand() {
    ads_name name;
    ads_point at;
    acedInitGet(0, L"Multiple _Multiple");
    const int status = acedEntSel(L"\nSelect polyline or [Multiple]: ", name, at);
    std::vector<AcDbObjectId> ids(1);
    const bool multiple = status == RTKWORD;
    if (multiple)
        ids = askObjects(true);
    else if (status != RTNORM || acdbGetObjectId(ids[0], name) != Acad::eOk)
        return;
    ids = polylinesOf(std::move(ids),
                      multiple ? L"\nConvert lines, arcs and splines to polylines? [Yes/No] <Y>: "
                               : L"\nThe object is not a polyline. Turn it into one? [Yes/No] <Y>: ");
    if (!ids.empty()) PolylineEditing(std::move(ids), multiple).run();
}

} // namespace host
