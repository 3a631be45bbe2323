// Sampling of curves for the arc fit, and the polylines made of the arcs.
#include "curves/conversion/arc_polyline.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <optional>

#include "core/appending.h"
#include "core/messages.h"
#include "core/sysvar_stack.h"

namespace corvane {
namespace {

constexpr int kFewestSamples = 400, kMostSamples = 12000;
constexpr double kSampleShare = 0.25;   // of the tolerance
constexpr double kLargestTurn = 0.1;    // radians between neighbours
constexpr double kHiddenBow = 1.0 / 32; // of the tolerance, beyond what the curvature tells
constexpr int kDeepest = 36;            // halvings of a span
constexpr double kOneSided = 1e-9;      // of a span: how far inside its ends directions are read
constexpr double kSamePlace = 1e-9;     // of the length
constexpr double kNoLength = 1e-12;

double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }
double turn(const FitSample& a, const FitSample& b) {
    return std::abs(std::atan2(cross(a.tangent, b.tangent), a.tangent.dotProduct(b.tangent)));
}
bool hasDirection(const FitSample& s) { return s.tangent.x != 0 || s.tangent.y != 0; }

// The parameters between which the curve is smooth.
std::vector<double> spansOf(const AcDbCurve& curve, double start, double end) {
    std::vector<double> spans;
    if (const auto* spline = AcDbSpline::cast(&curve)) {
        for (const double knot : spline->nurbs().distinctKnots())
            if (knot > start && knot < end) spans.push_back(knot);
    } else if (curve.isKindOf(AcDbPolyline::desc()) || curve.isKindOf(AcDb2dPolyline::desc()) ||
               curve.isKindOf(AcDb3dPolyline::desc())) {
        for (double vertex = std::floor(start) + 1; vertex < end; ++vertex) spans.push_back(vertex);
    } else {
        for (int i = 1; i < 16; ++i) spans.push_back(start + (end - start) * i / 16);
    }
    spans.insert(spans.begin(), start);
    spans.push_back(end);
    return spans;
}

class Sampler {
public:
    Sampler(const AcDbCurve& curve, double length, double step, double tolerance)
        : curve_(curve), length_(length), step_(step), tolerance_(tolerance) {}

    void addSpan(double from, double to) {
        const double inside = (to - from) * kOneSided;
        const auto first = at(from, from + inside), last = at(to, to - inside);
        if (!first || !last) return;
        const auto middle = at(0.5 * (from + to), 0.5 * (from + to));
        if (middle && std::max(first->point.distanceTo(last->point),
                               first->point.distanceTo(middle->point)) <= kNoLength * length_)
            return; // two vertices in one place
        if (samples_.empty() || !goesOn(samples_.back(), *first)) push(*first);
        refine(*first, *last, kDeepest);
        push(*last);
    }

    std::vector<FitSample> take() {
        fillDirections();
        for (size_t i = 1; i < samples_.size(); ++i) measure(i);
        return std::move(samples_);
    }

private:
    // The place at `param`, direction and curvature at `inside`, which lies beside it on a span's end.
    std::optional<FitSample> at(double param, double inside) const {
        AcGePoint3d point;
        AcGeVector3d d, dd;
        if (curve_.getPointAtParam(param, point) != Acad::eOk) return std::nullopt;
        FitSample sample;
        sample.point.set(point.x, point.y);
        sample.distance = param; // until the way is measured
        if (curve_.getFirstDeriv(inside, d) != Acad::eOk) return sample;
        const double speed = std::hypot(d.x, d.y);
        if (speed <= kNoLength) return sample;
        sample.tangent.set(d.x / speed, d.y / speed);
        if (curve_.getSecondDeriv(inside, dd) == Acad::eOk && speed * speed * speed > kNoLength)
            sample.curvature = (dd.y * d.x - dd.x * d.y) / (speed * speed * speed);
        return sample;
    }

    bool goesOn(const FitSample& before, const FitSample& next) const {
        const double most = std::max(std::abs(before.curvature), std::abs(next.curvature));
        return hasDirection(before) && hasDirection(next) && turn(before, next) < 1e-7 &&
               std::abs(before.curvature - next.curvature) <= 1e-3 * most;
    }

    // Whether the curve between the two is told well enough by its ends.
    bool isPlain(const FitSample& a, const FitSample& middle, const FitSample& b) const {
        const AcGeVector2d chord = b.point - a.point;
        const double length = chord.length();
        if (length > step_) return false;
        if (length <= kSamePlace * length_ && a.point.distanceTo(middle.point) <= kSamePlace * length_)
            return true;
        if (!hasDirection(a) || !hasDirection(b) || turn(a, b) > kLargestTurn || length == 0) return false;
        const double bow = cross(middle.point - a.point, chord) / length;
        const double told = 0.5 * (a.curvature + b.curvature) * length * length / 8;
        return std::abs(bow - told) <= kHiddenBow * tolerance_;
    }

    // NOLINTNEXTLINE(misc-no-recursion): kDeepest deep at most
    void refine(const FitSample& a, const FitSample& b, int depth) {
        if (depth == 0) return;
        const double param = 0.5 * (a.distance + b.distance);
        const auto middle = at(param, param);
        if (!middle || isPlain(a, *middle, b)) return;
        refine(a, *middle, depth - 1);
        push(*middle);
        refine(*middle, b, depth - 1);
    }

    void push(const FitSample& sample) { samples_.push_back(sample); }

    // Where the derivative is zero the way to the neighbour tells the direction: to the next one at the
    // beginning of a span, from the one before at its end.
    void fillDirections() {
        for (size_t i = 0; i < samples_.size(); ++i) {
            if (hasDirection(samples_[i])) continue;
            const bool forward =
                i == 0 || samples_[i].point.distanceTo(samples_[i - 1].point) <= kNoLength * length_;
            const size_t from = forward ? i : i - 1, to = std::min(from + 1, samples_.size() - 1);
            const AcGeVector2d way = samples_[to].point - samples_[from].point;
            samples_[i].tangent = way.length() > 0 ? way / way.length() : AcGeVector2d(1, 0);
        }
    }

    // Turns that refinement could not spread out are corners: both samples move to one place.
    void measure(size_t i) {
        FitSample& before = samples_[i - 1];
        FitSample& here = samples_[i];
        if (i == 1) before.distance = 0;
        const double way = here.point.distanceTo(before.point);
        const bool corner = way <= 2 * kSamePlace * length_ && turn(before, here) > kSharpTurn;
        if (corner) here.point = before.point;
        here.distance = before.distance + (corner || way <= kNoLength * length_ ? 0 : way);
    }

    const AcDbCurve& curve_;
    double length_, step_, tolerance_;
    std::vector<FitSample> samples_;
};

std::unique_ptr<AcDbPolyline> polylineOf(const std::vector<FitArc>& arcs) {
    std::vector<AcDbPolyline::Vertex> vertices;
    vertices.reserve(arcs.size() + 1);
    for (const FitArc& arc : arcs) vertices.push_back({arc.start, arc.bulge, 0, 0});
    vertices.push_back({arcs.back().end, 0, 0, 0});
    auto polyline = std::make_unique<AcDbPolyline>();
    if (polyline->setVertices(std::move(vertices)) != Acad::eOk) return nullptr;
    polyline->setDatabaseDefaults();
    return polyline;
}

// Circles and arcs that are seen from straight above, or below, are arcs already: halves where one would be
// more than a half circle. None for other curves.
std::vector<FitArc> ownArcs(const AcDbCurve& curve) {
    double sweep = 0;
    AcGeVector3d normal;
    if (const auto* circle = AcDbCircle::cast(&curve))
        sweep = 2 * std::numbers::pi, normal = circle->normal();
    if (const auto* arc = AcDbArc::cast(&curve)) sweep = arc->totalAngle(), normal = arc->normal();
    double start = 0, end = 0;
    if (std::abs(normal.z) < 1 - 1e-12 || curve.getStartParam(start) != Acad::eOk ||
        curve.getEndParam(end) != Acad::eOk)
        return {};
    const int count = sweep > std::numbers::pi * (1 + 1e-12) ? 2 : 1;
    const auto at = [&](int i) {
        AcGePoint3d point;
        curve.getPointAtParam(start + (end - start) * i / count, point);
        return AcGePoint2d(point.x, point.y);
    };
    std::vector<FitArc> arcs;
    const double bulge = std::copysign(std::tan(sweep / count / 4), normal.z);
    for (int i = 0; i < count; ++i) arcs.push_back({at(i), at(i + 1), bulge});
    return arcs;
}

bool appendBeside(std::unique_ptr<AcDbEntity> entity, const AcDbEntity& source, AcDbObjectId& id) {
    if (!entity || AppendBesideEntity(source.database(), entity.get(), source.objectId(), id) != Acad::eOk)
        return false;
    return entity.release(), true;
}

bool nativeArcs(const AcDbSpline& spline, int precision, AcDbObjectId& id) {
    SdSysVarStack saved;
    saved.Push(L"PLINECONVERTMODE", short(1));
    return appendBeside(std::unique_ptr<AcDbEntity>(PolylineOfSpline(spline, precision)), spline, id);
}

} // namespace

AcDbCurve* PolylineOfSpline(const AcDbSpline& spline, int precision) {
    AcDbCurve* polyline = nullptr;
    const bool arcs = GetSysVarInt(L"PLINECONVERTMODE") == 1;
    return spline.toPolyline(polyline, precision, arcs) == Acad::eOk ? polyline : nullptr;
}

std::vector<FitSample> SampleForArcs(const AcDbCurve& curve, double tolerance) {
    double start = 0, end = 0, before = 0, length = 0;
    if (!(tolerance > 0) || curve.getStartParam(start) != Acad::eOk || curve.getEndParam(end) != Acad::eOk ||
        curve.getDistAtParam(start, before) != Acad::eOk || curve.getDistAtParam(end, length) != Acad::eOk)
        return {};
    length -= before;
    if (!(length > 0) || !std::isfinite(length) || !(end > start)) return {};
    const double count =
        std::clamp(length / (tolerance * kSampleShare), double(kFewestSamples), double(kMostSamples));
    Sampler sampler(curve, length, length / (std::floor(count) - 1), tolerance);
    const std::vector<double> spans = spansOf(curve, start, end);
    for (size_t i = 1; i < spans.size(); ++i) sampler.addSpan(spans[i - 1], spans[i]);
    return sampler.take();
}

bool FitArcsToCurve(const AcDbCurve& curve, double tolerance, AcDbObjectId& id) {
    std::vector<FitArc> arcs = ownArcs(curve);
    if (arcs.empty()) arcs = FitArcs(SampleForArcs(curve, tolerance), tolerance);
    const bool any = std::any_of(arcs.begin(), arcs.end(),
                                 [](const FitArc& arc) { return std::abs(arc.bulge) > kSmallestBulge; });
    return any && appendBeside(polylineOf(arcs), curve, id);
}

bool SplineToArcs(AcDbEntity* entity, ArcMode mode, int precision, double tolerance, bool eraseSource,
                  AcDbObjectId& id) {
    bool made = false;
    const auto* spline = AcDbSpline::cast(entity);
    if (spline && mode == ArcMode::native)
        made = nativeArcs(*spline, precision, id);
    else if (const auto* curve = AcDbCurve::cast(entity))
        made = FitArcsToCurve(*curve, tolerance, id);
    if (made && eraseSource && (entity->upgradeOpen() != Acad::eOk || entity->erase() != Acad::eOk))
        PrintLine(L"\n警告：删除原实体失败。");
    entity->close();
    return made;
}

} // namespace corvane
