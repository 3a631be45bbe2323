// Sampling, mixing and drawing of blends.
#include "assoc/blend/blend_build.h"

#include <algorithm>
#include <memory>

#include "assoc/blend/blend_orientation.h"
#include "core/curve_services.h"
#include "core/properties.h"

namespace corvane {
namespace {

constexpr double kShortest = 0.0001;
constexpr int kSamplesEach = 6, kFewestSamples = 4, kUsualSamples = 36, kMostSamples = 12000;

// A curve of the drawing's own, to be turned and measured without touching the drawing.
std::unique_ptr<AcDbCurve> workingCopy(const AcDbCurve& curve) {
    AcDbSpline* spline = nullptr;
    if (curve.getSpline(spline) == Acad::eOk && spline) return std::unique_ptr<AcDbCurve>(spline);
    AcRxObject* copy = curve.clone();
    if (AcDbCurve* cloned = AcDbCurve::cast(copy)) return std::unique_ptr<AcDbCurve>(cloned);
    delete copy;
    return nullptr;
}

std::optional<CurveEnds> endsOf(const AcDbCurve& curve) {
    CurveEnds ends;
    if (curve.getStartPoint(ends.start) != Acad::eOk || curve.getEndPoint(ends.end) != Acad::eOk) return {};
    return ends;
}

// A source curve as the blend runs along it.
struct Source {
    AcGePoint3dArray samples;
    AcCmColor color;
};

std::optional<Source> sampled(AcDbObjectId id, bool reversed, const AcGePoint3d* anchor, int count) {
    AcDbObjectPointer<AcDbCurve> opened(id, AcDb::kForRead);
    if (!opened) return {};
    const std::unique_ptr<AcDbCurve> copy = workingCopy(*opened);
    Source source;
    ResolvedColor(*opened, source.color);
    opened.close();
    if (!copy) return {};
    if (reversed) copy->reverseCurve();
    if (const auto ends = endsOf(*copy); anchor && ends && StartsFarther(*ends, *anchor))
        copy->reverseCurve();
    if (!SampleCurveEvenly(*copy, source.samples, count) || source.samples.length() != count) return {};
    return source;
}

AcGePoint3d between(const AcGePoint3d& from, const AcGePoint3d& to, double share) {
    return from + (to - from) * share;
}

// How far the guide lies from the straight way between the two points, for each share. Zero without a guide.
std::vector<AcGeVector3d> guideOffsets(AcDbObjectId id, bool present, const AcGePoint3d& from,
                                       const AcGePoint3d& to, const std::vector<double>& shares) {
    std::vector<AcGeVector3d> offsets(shares.size());
    AcDbObjectPointer<AcDbCurve> guide(present ? id : AcDbObjectId(), AcDb::kForRead);
    const double length = guide ? CurveLength(*guide) : 0;
    if (length <= kShortest) return offsets;
    AcGePoint3d at;
    const auto own = endsOf(*guide);
    const bool backward = own && (own->end - own->start).dotProduct(to - from) < 0;
    for (size_t k = 0; k < shares.size(); ++k) {
        const double distance = (backward ? 1 - shares[k] : shares[k]) * length;
        if (guide->getPointAtDist(distance, at) == Acad::eOk) offsets[k] = at - between(from, to, shares[k]);
    }
    return offsets;
}

// The colour of a copy, `share` of the way; that of both sources where they have the same.
AcCmColor mixed(const AcCmColor& first, const AcCmColor& second, double share) {
    if (first.rgb() == second.rgb()) return first;
    const auto mix = [share](int c1, int c2) { return Adesk::UInt8(c1 + (c2 - c1) * share); };
    AcCmColor color;
    color.setRGB(mix(first.red(), second.red()), mix(first.green(), second.green()),
                 mix(first.blue(), second.blue()));
    return color;
}

double chordLength(const std::vector<AcGePoint3d>& points) {
    double length = 0;
    for (size_t i = 1; i < points.size(); ++i) length += points[i].distanceTo(points[i - 1]);
    return length;
}

void eraseAll(const AcDbBlockTableRecord& block) {
    const std::vector<AcDbObjectId> all = block.entities();
    for (const AcDbObjectId id : all) {
        if (id.isErased()) continue;
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (entity) entity->erase();
    }
}

} // namespace

int BlendSamples(int surftab1) {
    const long samples = long(surftab1) * kSamplesEach;
    return samples < kFewestSamples ? kUsualSamples : int(std::min(samples, long(kMostSamples)));
}

std::optional<BlendCopies> ComputeBlend(const BlendRecord& record) {
    AcDbDatabase* database = record.curve1.database();
    if (!database) return {};
    BlendCopies copies;
    copies.samples = BlendSamples(database->surftab1());
    const auto anchor = [&](const AcGePoint3d& point) { return record.hasAnchors ? &point : nullptr; };
    const auto first = sampled(record.curve1, record.reversed1, anchor(record.anchor1), copies.samples);
    const auto second = sampled(record.curve2, record.reversed2, anchor(record.anchor2), copies.samples);
    if (!first || !second) return {};
    const AcGePoint3dArray &a = first->samples, &b = second->samples;
    copies.base = a.first();

    const int count = std::clamp(record.family.count, kSmallestFamily, kLargestFamily);
    std::vector<double> shares;
    for (int k = 0; k < count; ++k) shares.push_back(CopyShare(k, count, record.family.spacing));
    const auto starts = guideOffsets(record.guide1, record.hasGuide1, a.first(), b.first(), shares);
    const auto ends = guideOffsets(record.guide2, record.hasGuide2, a.last(), b.last(), shares);

    const int m = copies.samples;
    copies.points.reserve(size_t(count) * size_t(m));
    for (int k = 0; k < count; ++k) {
        const size_t copy = size_t(k);
        for (int i = 0; i < m; ++i) {
            const double u = i / (m - 1.0);
            copies.points.push_back(between(a[i], b[i], shares[copy]) + starts[copy] * (1 - u) +
                                    ends[copy] * u);
        }
        copies.colors.push_back(mixed(first->color, second->color, (k + 1.0) / (count + 1.0)));
    }
    return copies;
}

bool FillBlendBlock(AcDbObjectId blockId, const BlendCopies& copies, const AcGeMatrix3d& toBlock,
                    bool clearFirst) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForWrite);
    if (!block) return false;
    if (clearFirst) eraseAll(*block);
    const size_t m = size_t(copies.samples);
    for (size_t k = 0; k < copies.colors.size(); ++k) {
        std::vector<AcGePoint3d> points(copies.points.begin() + std::ptrdiff_t(k * m),
                                        copies.points.begin() + std::ptrdiff_t((k + 1) * m));
        if (chordLength(points) < kShortest) continue; // where curves cross, all points may come together
        for (AcGePoint3d& point : points) point.transformBy(toBlock);
        auto spline = std::make_unique<AcDbSpline>(AcGePoint3dArray(std::move(points)), 4, 0.0);
        spline->setColor(copies.colors[k]);
        if (block->appendAcDbEntity(spline.get()) != Acad::eOk) return false;
        spline.release()->close();
    }
    return true;
}

} // namespace corvane
