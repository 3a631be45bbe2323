// The lattice round the selected objects.
#include "deform/box/ffd.h"

#include <algorithm>

#include "core/host/editor.h"
#include "core/messages.h"
#include "core/selection.h"
#include "deform/box/ffd_dialog.h"
#include "deform/box/write_back.h"

namespace corvane::deform {
namespace {

constexpr double kFlat = 1e-6; // an extent below it gives an axis one layer
constexpr double kMargin = 0.05;
constexpr int kUsualCount = 3;

bool isStill(const FFDEntityRecord& record, std::span<const AcGePoint3d> moved, const LatticeScale& scale) {
    return !record.rewritten && scale.inSpace == 1 && scale.inPlane == 1 &&
           std::equal(moved.begin(), moved.end(), record.points.begin(),
                      [](const AcGePoint3d& a, const AcGePoint3d& b) {
                          return a.x == b.x && a.y == b.y && a.z == b.z;
                      });
}

} // namespace

void FFDCage::setCounts(const AxisCounts& counts) {
    state_.countX = counts[0], state_.countY = counts[1], state_.countZ = counts[2];
}

void FFDCage::setSubdivision(const Subdivision& subdivision) {
    state_.subdivide = subdivision.on, state_.subdivisionLevel = subdivision.level;
}

bool FFDCage::FitBox() {
    AcDbObjectIdArray ids;
    for (const AcDbObjectId id : selectionIds_) ids.append(id);
    AcDbExtents extents;
    IdsExtents(extents, ids);
    if (!extents.isValid()) return false;
    AcGePoint3d low = extents.minPoint(), high = extents.maxPoint();
    AxisCounts counts = this->counts();
    for (unsigned axis = 0; axis < 3; ++axis) {
        const double extent = high[axis] - low[axis];
        if (extent < kFlat)
            counts[axis] = 1;
        else if (counts[axis] == 1)
            counts[axis] = kUsualCount;
        low[axis] -= extent * kMargin;
        high[axis] += extent * kMargin;
    }
    setCounts(counts);
    state_.boxMin = low, state_.boxMax = high;
    return true;
}

void FFDCage::BuildLattice() {
    grid_ = LatticeGrid(counts(), state_.boxMin, state_.boxMax);
    state_.boxMin = grid_.boxMin(), state_.boxMax = grid_.boxMax(), state_.boxCentre = grid_.centre();
    state_.controlPoints.clear();
    state_.controlPoints.reserve(size_t(grid_.size()));
    const auto [nx, ny, nz] = grid_.counts();
    for (int i = 0; i < nx; ++i)
        for (int j = 0; j < ny; ++j)
            for (int k = 0; k < nz; ++k) {
                FFDControlPoint& point = state_.controlPoints.emplace_back();
                point.i = i, point.j = j, point.k = k;
                point.position = point.initialPosition = grid_.rest(i, j, k);
            }
    state_.edges.clear();
    for (const auto& [from, to] : grid_.edges()) state_.edges.push_back({from, to});
    for (FFDEntityRecord& record : state_.records) SetParams(record, box());
}

void FFDCage::SampleEntities() {
    state_.records.clear();
    for (const AcDbObjectId id : selectionIds_) {
        FFDEntityRecord record;
        if (SampleEntity(id, box(), subdivision(), record)) state_.records.push_back(std::move(record));
    }
}

std::vector<AcGePoint3d> FFDCage::positions() const {
    std::vector<AcGePoint3d> positions;
    positions.reserve(state_.controlPoints.size());
    for (const FFDControlPoint& point : state_.controlPoints) positions.push_back(point.position);
    return positions;
}

// All samples in one go, so that the evaluation runs over one array.
int FFDCage::ApplyDeformation() {
    std::vector<LatticeSample> samples;
    for (const FFDEntityRecord& record : state_.records)
        for (size_t n = 0; n < record.points.size(); ++n)
            samples.push_back({record.points[n], record.params[n]});
    std::vector<AcGePoint3d> moved(samples.size());
    LatticeVolume(grid_, positions()).move(samples, moved);
    const LatticeScale scale =
        ScaleOf(grid_, state_.controlPoints.front().position, state_.controlPoints.back().position);
    int written = 0;
    size_t at = 0;
    for (FFDEntityRecord& record : state_.records) {
        const std::span own(moved.data() + at, record.points.size());
        at += own.size();
        if (isStill(record, own, scale)) continue;
        WriteBackEntity(record, own, scale, subdivision());
        ++written;
    }
    acedUpdateDisplay();
    return written;
}

AcGePoint3d FFDCage::EvaluateLattice(double u, double v, double w) const {
    return LatticeVolume(grid_, positions()).at(u, v, w);
}

bool FFDCage::ChangeCounts() {
    AxisCounts counts = this->counts();
    if (!AskLatticeCounts(counts)) return false;
    setCounts(counts);
    SampleEntities();
    BuildLattice();
    PrintText(TranslateFormat(L"\n控制点数量已更新为：%dx%dx%d。", counts[0], counts[1], counts[2]));
    return true;
}

bool FFDCage::Reset() {
    if (!FitBox()) return PrintLine(L"\n无法计算变形后实体的包围盒。"), false;
    SampleEntities();
    BuildLattice();
    PrintLine(L"\n控制点已重置，网格已更新包含变形后的全部物体。");
    return true;
}

CString FFDCage::pickedText(int index) const {
    const FFDControlPoint& point = state_.controlPoints[size_t(index)];
    return TranslateFormat(L"\n已选中控制点 [%d, %d, %d]", point.i, point.j, point.k);
}

bool FFDCage::keyword(wchar_t letter) {
    if (letter == L'S') return ChangeCounts();
    if (letter == L'R') return Reset();
    return false;
}

} // namespace corvane::deform
