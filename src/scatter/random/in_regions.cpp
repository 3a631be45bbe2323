// Scatters inside boundaries.
#include <cmath>
#include <numbers>

#include "scatter/random/boundary.h"
#include "scatter/random/generate.h"
#include "scatter/random/overlap.h"
#include "scatter/random/pattern.h"

namespace corvane::scatter {
namespace {

constexpr long long kAttempts = 200; // a pattern
constexpr int kTellEvery = 4096;
constexpr double kNoSize = 1e-9;

// The boundaries, chosen by their areas.
class Regions {
public:
    explicit Regions(const std::vector<AcDbObjectId>& ids) {
        for (const AcDbObjectId id : ids) {
            auto region = RegionOf(id);
            if (!region) continue;
            total_ += region->area;
            reached_.push_back(total_);
            box_.addExt(region->box);
            regions_.push_back(std::move(*region));
        }
    }
    bool empty() const { return regions_.empty(); }
    AcGePoint2d leastCorner() const { return {box_.minPoint().x, box_.minPoint().y}; }

    // A point inside a boundary drawn at random; nothing when the attempt is lost.
    std::optional<AcGePoint3d> drawPoint(Generator& random) const {
        const double at = random.Draw() * total_;
        const auto found = std::lower_bound(reached_.begin(), reached_.end(), at);
        const size_t index = std::min(size_t(found - reached_.begin()), regions_.size() - 1);
        const ScatterRegion& region = regions_[index];
        const AcGePoint3d &low = region.box.minPoint(), &high = region.box.maxPoint();
        if (high.x - low.x <= kNoSize || high.y - low.y <= kNoSize) return std::nullopt;
        const double x = random.Between(low.x, high.x), y = random.Between(low.y, high.y);
        if (region.polygon.At({x, y}) == 0) return std::nullopt;
        return AcGePoint3d(x, y, region.elevation);
    }

private:
    std::vector<ScatterRegion> regions_;
    std::vector<double> reached_; // the areas up to each boundary
    double total_ = 0;
    AcDbExtents box_;
};

// One attempt: a pattern that keeps clear of those before it, or null.
class Attempter {
public:
    Attempter(const ScatterInRegionParams& params, const Regions& regions, const PatternMaker& maker,
              Generator random)
        : params_(params), regions_(regions), maker_(maker), random_(random),
          grid_(regions.leastCorner(),
                params.scaleMax * std::max(2 * params.baseSize, maker.LargestDiagonal())) {}

    std::unique_ptr<AcDbEntity> attempt() {
        const auto point = regions_.drawPoint(random_);
        if (!point) return nullptr;
        Pattern pattern = maker_.Choose(*point, random_);
        if (!maker_.CanMake(pattern)) return nullptr;
        if (params_.rotate && params_.pattern != PatternType::circle) {
            const double half = params_.rotationRange / 2 * std::numbers::pi / 180;
            pattern.angle = random_.Between(-half, half);
        }
        return params_.deleteOverlap ? placed(pattern) : maker_.Make(pattern);
    }

private:
    // Where the box can be told beforehand, the entity is made only when there is room for it.
    std::unique_ptr<AcDbEntity> placed(const Pattern& pattern) {
        ScatterPlacement place{pattern.centre.x, pattern.centre.y};
        place.boxed = params_.pattern != PatternType::circle;
        const PatternBox box = maker_.BoxOf(pattern);
        if (box.known) {
            setSize(place, box.width, box.height);
            if (isTaken(place)) return nullptr;
        }
        auto entity = maker_.Make(pattern);
        if (!entity) return nullptr;
        if (AcDbExtents extents; !box.known && entity->getGeomExtents(extents) == Acad::eOk) {
            const AcGeVector3d size = extents.maxPoint() - extents.minPoint();
            place.x = extents.minPoint().x + size.x / 2;
            place.y = extents.minPoint().y + size.y / 2;
            setSize(place, size.x, size.y);
            if (isTaken(place)) return nullptr;
        } else if (!box.known) {
            return entity; // without extents: kept, and in nobody's way
        }
        grid_.Add(place);
        return entity;
    }
    static void setSize(ScatterPlacement& place, double width, double height) {
        place.width = width;
        place.height = height;
        place.radius = std::hypot(width, height) / 2;
    }
    bool isTaken(const ScatterPlacement& place) const {
        return grid_.IsTaken({place.x, place.y}, place.width, place.height);
    }

    const ScatterInRegionParams& params_;
    const Regions& regions_;
    const PatternMaker& maker_;
    Generator random_;
    PlacementGrid grid_;
};

} // namespace

bool GenerateInRegions(AcDbDatabase* database, const ScatterInRegionParams& params, Generator random,
                       EntityList& made, const ScatterProgress& progress) {
    made.clear();
    const Regions regions(params.sources);
    const PatternMaker maker(database, params, true);
    if (regions.empty() || maker.empty() || params.count < 1) return false;
    Attempter attempter(params, regions, maker, random);
    const size_t wanted = size_t(params.count);
    const long long attempts = params.count * kAttempts;
    made.reserve(wanted);
    for (long long i = 0; i < attempts && made.size() < wanted; ++i) {
        if (progress && i % kTellEvery == 0 &&
            !progress(std::max(double(made.size()) / double(wanted), double(i) / double(attempts))))
            return false;
        if (auto entity = attempter.attempt()) made.push_back(std::move(entity));
    }
    return !made.empty();
}

bool Generate(const ScatterInRegionParams& params, EntityList& made, const ScatterProgress& progress) {
    return GenerateInRegions(acdbHostApplicationServices()->workingDatabase(), params, SeededNow(params.seed),
                             made, progress);
}

} // namespace corvane::scatter
