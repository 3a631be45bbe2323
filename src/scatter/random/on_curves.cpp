// Scatters along curves.
#include <cmath>
#include <numbers>

#include "core/host/entities.h"
#include "core/host/system.h"
#include "scatter/random/chain.h"
#include "scatter/random/generate.h"
#include "scatter/random/overlap.h"
#include "scatter/random/pattern.h"

namespace corvane::scatter {
namespace {

constexpr int kTellEvery = 1024;
constexpr double kRadian = std::numbers::pi / 180;

// The curves, open for as long as the scatter is made.
class OpenCurves {
public:
    explicit OpenCurves(const std::vector<AcDbObjectId>& ids) {
        for (const AcDbObjectId id : ids) {
            auto curve = std::make_unique<AcDbObjectPointer<AcDbCurve>>(id, AcDb::kForRead);
            if (!*curve) continue;
            double first = 0, last = 0, from = 0, to = 0;
            const AcDbCurve& c = **curve;
            if (c.getStartParam(first) == Acad::eOk && c.getEndParam(last) == Acad::eOk &&
                c.getDistAtParam(first, from) == Acad::eOk && c.getDistAtParam(last, to) == Acad::eOk)
                chain.Add(curves_.size(), from, to);
            curves_.push_back(std::move(curve));
        }
    }
    const AcDbCurve& at(const ChainPlace& place) const { return **curves_[chain.path(place.path).curve]; }
    CurveChain chain;

private:
    std::vector<std::unique_ptr<AcDbObjectPointer<AcDbCurve>>> curves_;
};

struct CurvePoint {
    bool found = false;
    AcGePoint3d point;
    AcGeVector3d tangent = AcGeVector3d::kXAxis;
};
CurvePoint pointAt(const AcDbCurve& curve, double distance) {
    CurvePoint at;
    double param = 0;
    if (curve.getPointAtDist(distance, at.point) != Acad::eOk) return at;
    at.found = true;
    AcGeVector3d derivative;
    if (curve.getParamAtDist(distance, param) == Acad::eOk &&
        curve.getFirstDeriv(param, derivative) == Acad::eOk && derivative.lengthSqrd() > 1e-12)
        at.tangent = derivative;
    return at;
}

// One step: a pattern, or null where there is none.
class Stepper {
public:
    Stepper(const ScatterOnCurveParams& params, const OpenCurves& curves, const PatternMaker& maker,
            Generator random)
        : params_(params), curves_(curves), maker_(maker), random_(random) {}

    std::unique_ptr<AcDbEntity> step(int index) {
        const ChainPlace place = curves_.chain.At(position(index));
        const CurvePoint at = pointAt(curves_.at(place), place.distance);
        if (!at.found) return nullptr;
        Pattern pattern = maker_.Choose(moved(at), random_);
        if (!maker_.CanMake(pattern)) return nullptr;
        if (params_.alignTangent && params_.pattern != PatternType::circle)
            pattern.angle = turned(at.tangent);
        return maker_.Make(pattern);
    }

private:
    double position(int index) {
        const double length = curves_.chain.length();
        if (!params_.onCurve || params_.spacingRandom) return random_.Draw() * length;
        return std::clamp((index + 0.5) * length / params_.count, 0.0, length);
    }
    AcGePoint3d moved(const CurvePoint& at) {
        if (params_.onCurve) return at.point;
        const double u1 = random_.Draw(), u2 = random_.Draw();
        return AcrossTangent(at.point, at.tangent, params_.width, u1, u2);
    }
    double turned(const AcGeVector3d& tangent) {
        const double along = std::atan2(tangent.y, tangent.x), jitter = params_.tangentJitter * kRadian;
        return jitter > 0 ? along + random_.Between(-jitter, jitter) : along;
    }

    const ScatterOnCurveParams& params_;
    const OpenCurves& curves_;
    const PatternMaker& maker_;
    Generator random_;
};

// The disc by which an entity keeps others off; nothing for entities without a middle.
std::optional<Disc> discOf(const AcDbEntity& entity) {
    if (const auto* circle = AcDbCircle::cast(&entity)) return Disc{circle->center(), circle->radius()};
    if (const auto* ellipse = AcDbEllipse::cast(&entity))
        return Disc{ellipse->center(), ellipse->majorRadius()};
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk) return std::nullopt;
    const AcGeVector3d diagonal = box.maxPoint() - box.minPoint();
    return Disc{box.minPoint() + diagonal / 2, diagonal.length() / 2};
}

void removeOverlaps(EntityList& entities) {
    std::vector<Disc> discs;
    std::vector<size_t> owners;
    for (size_t i = 0; i < entities.size(); ++i)
        if (const auto disc = discOf(*entities[i])) discs.push_back(*disc), owners.push_back(i);
    const std::vector<bool> gone = OverlappedDiscs(discs);
    for (size_t i = 0; i < owners.size(); ++i)
        if (gone[i]) entities[owners[i]].reset();
    std::erase(entities, nullptr);
}

} // namespace

Generator SeededNow(int seed) {
    return Generator(std::uint32_t(host_door::clockSeconds()) ^ std::uint32_t(seed) ^ host_door::tickCount());
}

bool GenerateOnCurves(AcDbDatabase* database, const ScatterOnCurveParams& params, Generator random,
                      EntityList& made, const ScatterProgress& progress) {
    made.clear();
    const OpenCurves curves(params.sources);
    const PatternMaker maker(database, params, false);
    if (curves.chain.empty() || maker.empty() || params.count < 1) return false;
    Stepper stepper(params, curves, maker, random);
    made.reserve(size_t(params.count));
    for (int i = 0; i < params.count; ++i) {
        if (progress && i % kTellEvery == 0 && !progress(double(i) / params.count)) return false;
        if (auto entity = stepper.step(i)) made.push_back(std::move(entity));
    }
    if (params.deleteOverlap) removeOverlaps(made);
    return !made.empty();
}

bool Generate(const ScatterOnCurveParams& params, EntityList& made, const ScatterProgress& progress) {
    return GenerateOnCurves(acdbHostApplicationServices()->workingDatabase(), params, SeededNow(params.seed),
                            made, progress);
}

} // namespace corvane::scatter
