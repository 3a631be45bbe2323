// Polylines with arcs and widths, and text, into the list.
#include <algorithm>
#include <cmath>

#include "host/gi/flatten.h"
#include "host/view/sink.h"

namespace host {
namespace {

constexpr double kChordPart = 2e-4; // of an arc's radius, that its chords may keep from it
constexpr double kUnderLine = -0.2, kOverLine = 1.2, kThroughLine = 0.4; // of the height of a capital

// A polyline's centre line in points, with half widths; `corners` are the indices of its vertices.
struct FlatPline {
    std::vector<RibbonPoint> points;
    std::vector<std::size_t> corners;
    std::vector<bool> wide; // by segment
};

void flattenSegment(FlatPline& flat, const PlineVertex& from, const PlineVertex& to, double chordPart) {
    std::vector<AcGePoint2d> places;
    const double bulge = std::fabs(from.bulge);
    const double radius = from.point.distanceTo(to.point) * (1 + bulge * bulge) / (4 * bulge);
    appendBulge(places, from.point, to.point, from.bulge, radius * chordPart);
    const double chords = static_cast<double>(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double t = static_cast<double>(i) / chords;
        const double half = (from.startWidth + (from.endWidth - from.startWidth) * t) / 2;
        if (i == 0)
            flat.points.back().after = half;
        else
            flat.points.push_back({places[i], half, half});
    }
    flat.points.push_back({to.point, from.endWidth / 2, 0});
    flat.corners.push_back(flat.points.size() - 1);
    flat.wide.push_back(from.startWidth > 0 || from.endWidth > 0);
}

FlatPline flattened(const Pline& given) {
    FlatPline flat;
    const std::size_t count = given.vertices.size();
    // Each arc of a very long polyline is a small thing; its share of points shrinks, and memory stays in
    // proportion.
    constexpr double longPline = 5000;
    const double chordPart = kChordPart * std::max(1.0, static_cast<double>(count) / longPline);
    flat.points.push_back({given.vertices[0].point, 0, 0});
    flat.corners.push_back(0);
    for (std::size_t i = 0; i + 1 < count + given.closed; ++i)
        flattenSegment(flat, given.vertices[i], given.vertices[(i + 1) % count], chordPart);
    return flat;
}

std::vector<double> distances(std::span<const RibbonPoint> line) {
    std::vector<double> at(line.size(), 0.0);
    for (std::size_t i = 1; i < line.size(); ++i) at[i] = at[i - 1] + line[i].at.distanceTo(line[i - 1].at);
    return at;
}

} // namespace

void DisplaySink::ribbon(std::span<const RibbonPoint> line, bool closed, const AcGeMatrix3d& plane,
                         double elevation) {
    RibbonOutline outline;
    const DashPattern dashes = pattern(plane.scale());
    if (dashes.isContinuous()) {
        appendRibbon(outline, line, closed);
    } else {
        const std::vector<double> at = distances(line);
        forEachDash(line, std::span<const double>(at), dashes,
                    [&](std::span<const RibbonPoint> dash) { appendRibbon(outline, dash, false); });
    }
    const bool filled = source_.fillMode();
    begin(filled ? DisplayPrimitive::Kind::ribbon : DisplayPrimitive::Kind::line);
    std::vector<AcGePoint3d> world;
    std::uint32_t from = 0;
    for (std::uint32_t end : outline.ends) {
        world.clear();
        for (; from < end; ++from)
            world.push_back(plane * AcGePoint3d(outline.points[from].x, outline.points[from].y, elevation));
        if (!filled && !world.empty()) world.push_back(world.front());
        addContour(world);
    }
    finish();
}

void DisplaySink::thinRun(std::span<const RibbonPoint> line, bool whole, std::span<const std::size_t> corners,
                          const AcGeMatrix3d& plane, double elevation) {
    std::vector<AcGePoint3d> world;
    world.reserve(line.size());
    for (const RibbonPoint& p : line) world.push_back(plane * AcGePoint3d(p.at.x, p.at.y, elevation));
    if (!std::all_of(world.begin(), world.end(),
                     [](const AcGePoint3d& p) { return std::isfinite(p.x + p.y + p.z); }))
        return;
    begin(DisplayPrimitive::Kind::line);
    const DashPattern dashes = pattern(1);
    if (whole || dashes.isContinuous()) {
        dashed(world, dashes);
    } else {
        for (std::size_t i = 0; i + 1 < corners.size(); ++i)
            dashed(std::span(world).subspan(corners[i] - corners[0], corners[i + 1] - corners[i] + 1),
                   dashes);
    }
    if (traits.values.thickness != 0) {
        const AcGeVector3d rise = plane * AcGeVector3d(0, 0, traits.values.thickness);
        std::vector<AcGePoint3d> raised(world);
        for (AcGePoint3d& p : raised) p += rise;
        addContour(raised);
        for (std::size_t corner : corners) {
            const AcGePoint3d edge[] = {world[corner - corners[0]], raised[corner - corners[0]]};
            addContour(edge);
        }
    }
    finish();
}

void DisplaySink::pline(const Pline& given) {
    if (given.vertices.empty() || isFull() || !style().shown) return;
    const FlatPline flat = flattened(given);
    AcGeMatrix3d plane = model() * AcGeMatrix3d().setToPlaneToWorld(given.normal);
    const std::size_t segments = flat.wide.size();
    if (segments == 0) {
        thinRun(flat.points, true, flat.corners, plane, given.elevation);
        return;
    }
    for (std::size_t from = 0, to = 0; from < segments; from = to) {
        while (to < segments && flat.wide[to] == flat.wide[from]) ++to;
        const std::size_t first = flat.corners[from], last = flat.corners[to];
        const auto line = std::span(flat.points).subspan(first, last - first + 1);
        const bool round = given.closed && from == 0 && to == segments;
        if (flat.wide[from])
            ribbon(line, round, plane, given.elevation);
        else
            thinRun(line, given.wholeLinetype, std::span(flat.corners).subspan(from, to - from + 1), plane,
                    given.elevation);
    }
}

std::uint32_t DisplaySink::faceIndex(const TextFace& face) {
    const auto found = std::find(list_.faces.begin(), list_.faces.end(), face);
    if (found == list_.faces.end())
        list_.faces.push_back(face);
    else
        return static_cast<std::uint32_t>(found - list_.faces.begin());
    return static_cast<std::uint32_t>(list_.faces.size() - 1);
}

void DisplaySink::text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                       std::wstring_view message, bool raw, const AcGiTextStyle& given) {
    if (message.empty() || isFull() || !style().shown || direction.isZeroLength()) return;
    PlainLine line = raw ? PlainLine{std::wstring(message), {}} : plainLine(message);
    if (given.isUnderlined()) line.marks.push_back({PlainLine::Mark::Kind::under, 0, line.text.size()});
    if (given.isOverlined()) line.marks.push_back({PlainLine::Mark::Kind::over, 0, line.text.size()});
    TextFace face = given.face();
    const AcGeVector3d right = direction.normal() * given.textSize();
    const AcGeVector3d up = normal.normal().crossProduct(right);
    DisplayText run;
    run.origin = model() * position;
    run.right = model() * (face.backward ? -right : right);
    run.up = model() * (face.upsideDown ? -up : up);
    const bool stacked = face.vertical;
    face.backward = face.upsideDown = face.vertical = false;
    run.face = faceIndex(face);
    if (!stacked) {
        run.text = std::move(line.text);
        placeText(run, line.marks);
        return;
    }
    constexpr double lineStep = 1.5; // characters of vertical text, one below the other
    for (wchar_t c : line.text) {
        run.text.assign(1, c);
        placeText(run, {});
        run.origin -= run.up * lineStep;
    }
}

void DisplaySink::placeText(const DisplayText& run, const std::vector<PlainLine::Mark>& marks) {
    const TextFace& face = list_.faces[run.face];
    const TextExtents size = textMetrics()->measure(face, 1, run.text);
    AcDbExtents box;
    for (int corner = 0; corner < 4; ++corner)
        box.addPoint(run.origin + run.right * (corner & 1 ? size.high.x : size.low.x) +
                     run.up * (corner & 2 ? size.high.y : size.low.y));
    if (!std::isfinite(box.minPoint().asVector().lengthSqrd() + box.maxPoint().asVector().lengthSqrd()))
        return;
    // Letters aren't cut: a line of text is there when the middle of its box is.
    const AcGePoint3d middle = box.minPoint() + (box.maxPoint() - box.minPoint()) / 2;
    if (!std::all_of(clips_.begin(), clips_.end(), [&](const ClipShape& clip) { return clip.holds(middle); }))
        return;
    DisplayPrimitive& primitive = begin(DisplayPrimitive::Kind::text);
    primitive.first = static_cast<std::uint32_t>(list_.texts.size());
    primitive.box = box;
    list_.extents.addExt(box);
    list_.texts.push_back(run);
    list_.texts.back().low = size.low;
    list_.texts.back().high = size.high;
    for (const PlainLine::Mark& mark : marks) {
        const auto width = [&](std::size_t to) {
            return textMetrics()->measure(face, 1, std::wstring_view(run.text).substr(0, to)).advance;
        };
        using Which = PlainLine::Mark::Kind;
        const double y = mark.kind == Which::under  ? kUnderLine
                         : mark.kind == Which::over ? kOverLine
                                                    : kThroughLine;
        const AcGePoint3d ends[] = {run.origin + run.right * width(mark.from) + run.up * y,
                                    run.origin + run.right * width(mark.to) + run.up * y};
        begin(DisplayPrimitive::Kind::line);
        addContour(ends);
        finish();
    }
}

} // namespace host
