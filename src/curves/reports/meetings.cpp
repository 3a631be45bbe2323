// The sweep, the host's intersections, and breaking.
#include "curves/reports/meetings.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

#include "core/appending.h"
#include "core/curve_services.h"

namespace corvane {
namespace {

// Ends that meet are apart by the last digits of their coordinates.
double slackOf(const AcDbExtents& box) {
    constexpr double kDigits = 1e-9;
    double largest = 0;
    for (int axis = 0; axis < 3; ++axis)
        largest = std::max({largest, std::abs(box.minPoint()[axis]), std::abs(box.maxPoint()[axis])});
    return kDigits * (1 + largest);
}

bool touch(const AcDbExtents& a, const AcDbExtents& b, int axis, double slack) {
    return a.minPoint()[axis] <= b.maxPoint()[axis] + slack &&
           b.minPoint()[axis] <= a.maxPoint()[axis] + slack;
}

// True when the curve comes to the point again far from where it passes it first. A curve held against itself
// shares all its corners with itself; those are no crossings.
bool passesAgain(const AcDbCurve& curve, double length, const AcGePoint3d& point) {
    constexpr double kBeside = 1e-5, kSame = 1e-9; // parts of the length
    const double aside = kBeside * length;
    double at = 0;
    if (curve.getDistAtPoint(point, at) != Acad::eOk) return false;
    // What is left of the curve when its passage is cut out; at the seam of a closed curve the passage has
    // two ends.
    double from = at - aside, to = at + aside, first = 0, last = length;
    if (curve.isClosed() && from < 0) last = length + from;
    if (curve.isClosed() && to > length) first = to - length;
    AcGeDoubleArray cuts;
    for (const double distance : {first, from, to, last}) {
        double param = 0;
        if (distance > 0 && distance < length && curve.getParamAtDist(distance, param) == Acad::eOk)
            cuts.append(param);
    }
    AcDbVoidPtrArray parts;
    if (cuts.isEmpty() || curve.getSplitCurves(cuts, parts) != Acad::eOk) return false;
    bool again = false;
    for (void* part : parts) {
        const std::unique_ptr<AcDbCurve> piece(static_cast<AcDbCurve*>(part));
        AcGePoint3d nearest, middle;
        double begin = 0, end = 0, where = 0;
        piece->getStartParam(begin), piece->getEndParam(end);
        if (piece->getPointAtParam((begin + end) / 2, middle) != Acad::eOk ||
            curve.getDistAtPoint(middle, where) != Acad::eOk)
            continue;
        const bool cutOut = (where > from && where < to) || where < first || where > last;
        again = again || (!cutOut && piece->getClosestPointTo(point, nearest) == Acad::eOk &&
                          nearest.distanceTo(point) <= kSame * length);
    }
    return again;
}

} // namespace

std::vector<std::pair<int, int>> TouchingBoxes(const std::vector<AcDbExtents>& boxes) {
    std::vector<int> order;
    double slack = 0;
    for (int i = 0; i < int(boxes.size()); ++i) {
        if (!boxes[size_t(i)].isValid()) continue;
        order.push_back(i);
        slack = std::max(slack, slackOf(boxes[size_t(i)]));
    }
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return boxes[size_t(a)].minPoint().x < boxes[size_t(b)].minPoint().x;
    });
    std::vector<std::pair<int, int>> pairs;
    std::vector<int> open; // those that the sweep line still crosses
    for (const int i : order) {
        const AcDbExtents& box = boxes[size_t(i)];
        std::erase_if(open, [&](int j) { return boxes[size_t(j)].maxPoint().x + slack < box.minPoint().x; });
        for (const int j : open)
            if (touch(box, boxes[size_t(j)], 1, slack) && touch(box, boxes[size_t(j)], 2, slack))
                pairs.push_back(std::minmax(i, j));
        open.push_back(i);
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

CurveMeetings MeetingsOf(const std::vector<AcDbObjectId>& curves) {
    CurveMeetings meetings;
    meetings.ofCurve.resize(curves.size());
    std::vector<AcDbExtents> boxes(curves.size());
    for (size_t i = 0; i < curves.size(); ++i) {
        AcDbObjectPointer<AcDbCurve> curve(curves[i], AcDb::kForRead);
        if (curve) curve->getGeomExtents(boxes[i]);
    }
    auto pairs = TouchingBoxes(boxes);
    if (curves.size() == 1) pairs = {{0, 0}};
    for (const auto& [i, j] : pairs) {
        AcDbObjectPointer<AcDbCurve> first(curves[size_t(i)], AcDb::kForRead),
            second(curves[size_t(j)], AcDb::kForRead);
        AcGePoint3dArray points;
        if (!first || !second ||
            first->intersectWith(second.object(), AcDb::kOnBothOperands, points) != Acad::eOk)
            continue;
        const double length = i == j ? CurveLength(*first) : 0;
        for (const AcGePoint3d& point : points) {
            if (i == j && !passesAgain(*first, length, point)) continue;
            meetings.points.push_back(point);
            meetings.ofCurve[size_t(i)].push_back(point);
            if (i != j) meetings.ofCurve[size_t(j)].push_back(point);
        }
    }
    return meetings;
}

int BreakCurve(AcDbObjectId id, const std::vector<AcGePoint3d>& points) {
    AcDbObjectPointer<AcDbCurve> curve(id, AcDb::kForWrite);
    if (!curve) return 0;
    std::vector<double> cuts;
    for (const AcGePoint3d& point : points) {
        double param = 0;
        if (curve->getParamAtPoint(point, param) == Acad::eOk) cuts.push_back(param);
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end(), [](double a, double b) { return b - a < 1e-9; }),
               cuts.end());
    AcGeDoubleArray params;
    for (const double cut : cuts) params.append(cut);
    AcDbVoidPtrArray pieces;
    if (curve->getSplitCurves(params, pieces) != Acad::eOk) return 0;
    std::vector<std::unique_ptr<AcDbCurve>> made;
    for (void* piece : pieces) made.emplace_back(static_cast<AcDbCurve*>(piece));
    if (made.size() < 2) return 0;
    for (auto& piece : made) {
        piece->setPropertiesFrom(curve.object());
        AcDbObjectId added;
        if (AppendBesideEntity(curve->database(), piece.get(), id, added) == Acad::eOk) piece.release();
    }
    curve->erase();
    return int(made.size());
}

} // namespace corvane
