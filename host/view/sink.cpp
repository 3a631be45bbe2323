// Primitives into the list. Wide polylines and text stand in sink_shapes.cpp.
#include "host/view/sink.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

bool isFinite(const AcGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

} // namespace

bool DisplaySink::push(const AcGeMatrix3d& matrix) {
    if (stack_.size() >= 2 * kDeepestNesting) return false;
    stack_.push_back(model() * matrix);
    return true;
}

bool DisplaySink::pop() {
    if (stack_.empty()) return false;
    stack_.pop_back();
    return true;
}

void DisplaySink::pushClip(const AcGiClipBoundary& boundary) {
    std::vector<AcGePoint2d> polygon(boundary.m_aptPoints.begin(), boundary.m_aptPoints.end());
    if (polygon.size() == 2)
        polygon = {polygon[0], {polygon[1].x, polygon[0].y}, polygon[1], {polygon[0].x, polygon[1].y}};
    const bool sound = !boundary.m_xInverseBlockRefXForm.isSingular() && !model().isSingular();
    clips_.emplace_back(sound ? std::move(polygon) : std::vector<AcGePoint2d>(),
                        sound ? boundary.m_xToClipSpace * boundary.m_xInverseBlockRefXForm.inverse() *
                                    model().inverse()
                              : AcGeMatrix3d::kIdentity);
}

void DisplaySink::popClip() {
    if (!clips_.empty()) clips_.pop_back();
}

// The contours of the primitive begun last, cut to all boundaries of the moment. Rays have no contours to
// cut.
void DisplaySink::cutContours() {
    DisplayPrimitive& primitive = list_.primitives.back();
    using Kind = DisplayPrimitive::Kind;
    if (primitive.kind == Kind::ray || primitive.kind == Kind::xline) return;
    std::vector<ClipShape::Contour> contours;
    for (std::uint32_t c = primitive.first; c < primitive.first + primitive.count; ++c) {
        const auto contour = list_.contour(c);
        contours.emplace_back(contour.begin(), contour.end());
    }
    list_.points.resize(primitive.first == 0 ? 0 : list_.contourEnds[primitive.first - 1]);
    list_.contourEnds.resize(primitive.first);
    primitive.count = 0;
    for (const ClipShape& clip : clips_) {
        std::vector<ClipShape::Contour> cut;
        const auto take = [&](const ClipShape::Contour& part) { cut.push_back(part); };
        for (const ClipShape::Contour& contour : contours)
            primitive.kind == Kind::line ? clip.cutPath(contour, take) : clip.cutArea(contour, take);
        contours = std::move(cut);
    }
    for (const ClipShape::Contour& contour : contours) addContour(contour);
}

bool DisplaySink::isFull() {
    if (list_.truncated) return true;
    list_.truncated = list_.points.size() > options_.mostPoints || drawables_ > options_.mostDrawables;
    if (!list_.truncated && options_.aborted && drawables_ % 256 == 0) list_.truncated = options_.aborted();
    return list_.truncated;
}

bool DisplaySink::enter(const AcGiDrawable&, const DrawableLook& look) {
    ++drawables_;
    if (!look.visible || isFull() || depth_ >= kDeepestNesting) return false;
    if (resolver_.isFrozen(look.traits.layer)) return false;
    return look.block.isNull() || std::find(blocks_.begin(), blocks_.end(), look.block) == blocks_.end();
}

const ResolvedStyle& DisplaySink::style() {
    if (!resolvedValid_ || !(resolvedFor_ == traits.values)) {
        resolved_ = resolver_.resolve(traits.values, state_.opacity, state_.inherited);
        resolvedFor_ = traits.values;
        resolvedValid_ = true;
    }
    return resolved_;
}

DashPattern DisplaySink::pattern(double modelScale) {
    const double scale = source_.linetypeScale() * traits.values.linetypeScale;
    return DashPattern::scaled(*style().dashes, modelScale > 0 ? scale / modelScale : scale);
}

DisplayPrimitive& DisplaySink::begin(DisplayPrimitive::Kind kind) {
    DisplayPrimitive primitive;
    primitive.kind = kind;
    primitive.style = style().style;
    primitive.owner = list_.owners.empty() ? 0 : static_cast<std::uint32_t>(list_.owners.size() - 1);
    primitive.first = static_cast<std::uint32_t>(list_.contourEnds.size());
    primitive.marker = traits.values.marker;
    list_.primitives.push_back(primitive);
    return list_.primitives.back();
}

void DisplaySink::addContour(std::span<const AcGePoint3d> world) {
    list_.points.insert(list_.points.end(), world.begin(), world.end());
    list_.contourEnds.push_back(static_cast<std::uint32_t>(list_.points.size()));
    ++list_.primitives.back().count;
}

// Boxes the primitive begun last; one without contours, or with a point that is no place, is taken away.
void DisplaySink::finish() {
    if (!clips_.empty()) cutContours();
    DisplayPrimitive& primitive = list_.primitives.back();
    const std::uint32_t from = primitive.first == 0 ? 0 : list_.contourEnds[primitive.first - 1];
    bool sound = list_.points.size() > from;
    for (std::size_t i = from; i < list_.points.size() && sound; ++i) {
        sound = isFinite(list_.points[i]);
        primitive.box.addPoint(list_.points[i]);
    }
    if (!sound) {
        list_.points.resize(from);
        list_.contourEnds.resize(primitive.first);
        list_.primitives.pop_back();
    } else if (primitive.kind != DisplayPrimitive::Kind::ray &&
               primitive.kind != DisplayPrimitive::Kind::xline) {
        list_.extents.addExt(primitive.box);
    }
}

std::vector<AcGePoint3d> DisplaySink::toWorld(std::span<const AcGePoint3d> points) const {
    std::vector<AcGePoint3d> world(points.begin(), points.end());
    if (!stack_.empty())
        for (AcGePoint3d& p : world) p = stack_.back() * p;
    return world;
}

void DisplaySink::dashed(std::span<const AcGePoint3d> world, const DashPattern& dashes) {
    if (dashes.isContinuous()) {
        addContour(world);
        return;
    }
    const std::vector<double> at = pathDistances(world);
    forEachDash(world, std::span<const double>(at), dashes,
                [&](std::span<const AcGePoint3d> dash) { addContour(dash); });
}

// The contour of points in the coordinates of the moment.
void DisplaySink::addModelContour(std::span<const AcGePoint3d> points) {
    const std::size_t from = list_.points.size();
    list_.points.insert(list_.points.end(), points.begin(), points.end());
    if (!stack_.empty())
        for (AcGePoint3d& p : std::span(list_.points).subspan(from)) p = stack_.back() * p;
    list_.contourEnds.push_back(static_cast<std::uint32_t>(list_.points.size()));
    ++list_.primitives.back().count;
}

void DisplaySink::polyline(std::span<const AcGePoint3d> points, const AcGeVector3d* normal,
                           Adesk::GsMarker marker) {
    if (points.empty() || isFull() || !style().shown || !std::all_of(points.begin(), points.end(), isFinite))
        return;
    const DashPattern dashes = pattern(1);
    DisplayPrimitive& primitive = begin(DisplayPrimitive::Kind::line);
    if (marker >= 0) primitive.marker = marker;
    if (dashes.isContinuous())
        addModelContour(points);
    else
        dashed(toWorld(points), dashes);
    if (traits.values.thickness != 0) thicken(points, normal ? *normal : AcGeVector3d::kZAxis);
    finish();
}

// The path once more at the other end of its thickness, and the edges between the two.
void DisplaySink::thicken(std::span<const AcGePoint3d> points, const AcGeVector3d& normal) {
    const AcGeVector3d rise = normal * traits.values.thickness;
    std::vector<AcGePoint3d> raised(points.begin(), points.end());
    for (AcGePoint3d& p : raised) p += rise;
    addModelContour(raised);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const AcGePoint3d edge[] = {points[i], raised[i]};
        addModelContour(edge);
    }
}

void DisplaySink::polygon(std::span<const Adesk::UInt32> counts, const AcGePoint3d* points) {
    if (isFull() || !style().shown) return;
    const bool filled = traits.values.fill == kAcGiFillAlways && source_.fillMode();
    begin(filled ? DisplayPrimitive::Kind::area : DisplayPrimitive::Kind::line);
    for (Adesk::UInt32 count : counts) {
        const std::span<const AcGePoint3d> loop(points, count);
        points += count;
        if (count < 2) continue;
        addModelContour(loop);
        if (filled) continue;
        list_.points.push_back(
            list_.points[list_.points.size() - count]); // an outline comes back to its start
        ++list_.contourEnds.back();
    }
    finish();
}

void DisplaySink::endless(DisplayPrimitive::Kind kind, const AcGePoint3d& on, const AcGePoint3d& through) {
    const AcGePoint3d points[] = {on, through};
    if (on.distanceTo(through) == 0 || isFull() || !style().shown) return;
    begin(kind);
    addModelContour(points);
    finish();
}

} // namespace host
