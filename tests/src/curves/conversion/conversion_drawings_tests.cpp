// The conversions on drawings that others made: arcs stay on every curve, what commands leave can be read
// again, and one undo brings the drawing back byte for byte.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <numbers>

#include "curves/conversion/arc_polyline.h"
#include "host/dxf/audit.h"
#include "support/drawing.h"

using corvane::FitArc;
using corvane::FitSample;
using support::Drawing;

namespace {

template <class Visit> void forEachDrawing(Visit visit) {
    std::vector<std::filesystem::path> paths;
    const char* folder = std::getenv("CORVANE_TEST_DRAWINGS"); // to look at more than the tests' own
    const auto place =
        folder ? std::filesystem::path(folder) : std::filesystem::path(CORVANE_TEST_DATA "/drawings");
    for (const auto& entry : std::filesystem::directory_iterator(place)) paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths) {
        auto database = std::make_unique<AcDbDatabase>(false);
        if (!host::readDrawing(path, *database, {}).ok) continue;
        AcApDocument* document = acDocManagerPtr()->add(std::move(database));
        visit(path.string(), *document->database());
        acDocManagerPtr()->close(document);
    }
}

// The distance from the arc, measured by its own centre and by its ends.
double distanceFrom(const FitArc& arc, const AcGePoint2d& p) {
    const AcGeVector2d chord = arc.end - arc.start;
    const double length = std::max(chord.length(), 1e-300),
                 ends = std::min(p.distanceTo(arc.start), p.distanceTo(arc.end));
    const AcGeVector2d w = p - arc.start, along = chord / length, left(-along.y, along.x);
    const double x = w.dotProduct(along), y = w.dotProduct(left);
    if (std::abs(arc.bulge) < 1e-9) return x >= 0 && x <= length ? std::abs(y) : ends;
    const double centre = length * (1 - arc.bulge * arc.bulge) / (4 * arc.bulge);
    const double radius = length * (1 + arc.bulge * arc.bulge) / (4 * std::abs(arc.bulge));
    const double dx = x - length / 2, dy = y - centre;
    // Within the sweep: on the arc's side of the lines from the centre to the ends.
    const double side = arc.bulge > 0 ? -1 : 1;
    const double half = 2 * std::atan(std::abs(arc.bulge));
    const double off = std::abs(std::atan2(dx, side * dy));
    return off <= half ? std::abs(std::hypot(dx, dy) - radius) : ends;
}

// How far points of the curve lie from the arcs, walked along side by side: an arc near in space but far
// along the curve doesn't count.
double worstOf(const AcDbCurve& curve, const std::vector<FitArc>& arcs) {
    double start = 0, end = 0, worst = 0;
    curve.getStartParam(start);
    curve.getEndParam(end);
    size_t at = 0;
    constexpr int kPoints = 20'000;
    for (int i = 0; i <= kPoints; ++i) {
        AcGePoint3d point;
        if (curve.getPointAtParam(start + (end - start) * i / kPoints, point) != Acad::eOk) continue;
        double best = 1e300;
        size_t nearest = at;
        for (size_t k = at; k < std::min(at + 2, arcs.size()); ++k)
            if (const double d = distanceFrom(arcs[k], {point.x, point.y}); d < best) best = d, nearest = k;
        at = nearest;
        worst = std::max(worst, best);
    }
    return worst;
}

// What erased objects leave behind in groups and leaders that name them is the host's affair.
size_t faultsOf(AcDbDatabase& database) {
    size_t count = 0;
    for (const auto& fault : host::audit(database)) count += fault.code != "broken-reference";
    return count;
}

} // namespace

TEST(ConversionDrawings, ArcsStayOnEverySplineAndEllipse) {
    Drawing base; // starts the host
    size_t fitted = 0;
    forEachDrawing([&](const std::string& path, AcDbDatabase& database) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForRead);
        for (const AcDbObjectId id : space->entities()) {
            AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForRead);
            AcDbExtents box;
            if (!curve || (!curve->isKindOf(AcDbSpline::desc()) && !curve->isKindOf(AcDbEllipse::desc())) ||
                curve->getGeomExtents(box) != Acad::eOk)
                continue;
            const double tolerance = 1e-3 * box.minPoint().distanceTo(box.maxPoint());
            const std::vector<FitSample> samples = corvane::SampleForArcs(*curve, tolerance);
            const std::vector<FitArc> arcs = corvane::FitArcs(samples, tolerance);
            if (arcs.empty()) continue;
            ++fitted;
            EXPECT_LE(worstOf(*curve, arcs), tolerance * 1.001) << path << " " << arcs.size() << " arcs";
        }
    });
    EXPECT_GE(fitted, 3u);
}

TEST(ConversionDrawings, CommandsLeaveSoundDrawingsAndUndoThemWhole) {
    Drawing base;
    size_t changed = 0;
    forEachDrawing([&](const std::string& path, AcDbDatabase& database) {
        const std::string before = host::drawingBytes(database);
        const size_t faults = faultsOf(database);
        for (const wchar_t* script :
             {L"SPL2ARC\n0\n5\nY\nall\n\n", L"p2s\nall\n\nN\n", L"all2polyline\nall\n\n3\n",
              L"PL2OLD\nall\n\n", L"OLDPL2LW\nall\n\n", L"txt2PL\nall\n\n"}) {
            const size_t steps = database.undoLog().undoSteps();
            base.run(script);
            const std::string after = host::drawingBytes(database);
            changed += after != before;
            EXPECT_LE(faultsOf(database), faults) << path << host::utf8(script);
            AcDbDatabase again(false);
            EXPECT_TRUE(host::readDrawingBytes(after, path, again, {}).ok) << path << host::utf8(script);
            if (database.undoLog().undoSteps() > steps) base.run(L"U\n");
            EXPECT_TRUE(before == host::drawingBytes(database)) << path << host::utf8(script);
        }
    });
    EXPECT_GE(changed, 20u);
}
