// Thinning and clustering of point rows.
#include "curves/smoothing/thinning.h"

#include <cmath>

namespace corvane {
namespace {

constexpr int kMostPasses = 5;
constexpr double kSpikeAngle = 0.1; // radians

bool stays(const AcGePoint3d& before, const AcGePoint3d& point, const AcGePoint3d& after, double tolerance) {
    const AcGeVector3d back = before - point, on = after - point;
    const double angle = std::atan2(back.crossProduct(on).length(), back.dotProduct(on));
    return std::abs(std::sin(angle) * back.length()) > tolerance || std::abs(angle) < kSpikeAngle;
}

void thinOnce(const std::vector<AcGePoint3d>& in, std::vector<AcGePoint3d>& out, double tolerance) {
    const size_t n = in.size();
    out.clear();
    out.push_back(in[0]);
    for (size_t i = 1; i + 1 < n; i += 2) {
        if (stays(in[i - 1], in[i], in[i + 1], tolerance)) out.push_back(in[i]);
        out.push_back(in[i + 1]);
    }
    if (n % 2 == 0) out.push_back(in[n - 1]); // the pairs leave the last of an even number out
}

} // namespace

DuplicateMarks MarkDuplicates(const std::vector<AcGePoint3d>& points) {
    DuplicateMarks result;
    const size_t n = points.size();
    result.marks.assign(n, false);
    for (size_t i = 0; i + 1 < n; ++i)
        result.marks[i] = points[i].distanceTo(points[i + 1]) < DuplicateTolerance;
    if (n > 1 && points[n - 1].distanceTo(points[0]) < DuplicateTolerance) {
        result.marks[n - 1] = true;
        result.closesOnItself = true;
    }
    return result;
}

std::vector<AcGePoint3d> ThinPoints(std::vector<AcGePoint3d> points, double tolerance) {
    std::vector<AcGePoint3d> thinned;
    thinned.reserve(points.size());
    for (int pass = 0; pass < kMostPasses && points.size() >= 3; ++pass) {
        thinOnce(points, thinned, tolerance);
        points.swap(thinned);
    }
    return points;
}

std::vector<AcGePoint3d> ClusterPoints(const std::vector<AcGePoint3d>& points, double radius, double gap) {
    const size_t n = points.size();
    if (n < 2) return points;
    std::vector<AcGePoint3d> out;
    out.reserve(n);
    for (size_t i = 0; i + 1 < n;) {
        AcGeVector3d sum = points[i].asVector();
        size_t k = 1;
        for (size_t j = i + 1; j < n && points[i].distanceTo(points[j]) < radius; ++j, ++k)
            sum += points[j].asVector();
        if (k > 1 && points[i].distanceTo(points[i + 1]) > gap) out.push_back(points[i + 1]);
        const AcGeVector3d mean = sum / double(k);
        out.push_back(k > 1 ? AcGePoint3d(mean.x, mean.y, mean.z) : points[i]);
        if (k > 1 && i + k + 1 < n && points[i + k].distanceTo(points[i + k + 1]) > gap)
            out.push_back(points[i + k]);
        i += k;
    }
    if (out.size() < n) out.push_back(points[n - 1]);
    return out;
}

} // namespace corvane
