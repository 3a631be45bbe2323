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

bool FFDCage::FitBox() {
    AcDbObjectIdArray ids;
    for (const AcDbObjectId id : selectionIds_) ids.append(id);
    AcDbExtents extents;
    IdsExtents(extents, ids);
    if (!extents.isValid()) return false;
    AcGePoint3d low = extents.minPoint(), high = extents.maxPoint();
    for (unsigned axis = 0; axis < 3; ++axis) {
        const double extent = high[axis] - low[axis];
        if (extent < kFlat)
            counts_[axis] = 1;
        else if (counts_[axis] == 1)
            counts_[axis] = kUsualCount;
        low[axis] -= extent * kMargin;
        high[axis] += extent * kMargin;
    }
    box_.set(low, high);
    return true;
}

void FFDCage::BuildLattice() {
    grid_ = LatticeGrid(counts_, box_.minPoint(), box_.maxPoint());
    box_.set(grid_.boxMin(), grid_.boxMax());
    controlPoints_.clear();
    controlPoints_.reserve(size_t(grid_.size()));
    const auto [nx, ny, nz] = grid_.counts();
    for (int i = 0; i < nx; ++i)
        for (int j = 0; j < ny; ++j)
            for (int k = 0; k < nz; ++k) {
                FFDControlPoint& point = controlPoints_.emplace_back();
                point.i = i, point.j = j, point.k = k;
                point.position = point.initialPosition = grid_.rest(i, j, k);
            }
    edges_.clear();
    for (const auto& [from, to] : grid_.edges()) edges_.push_back({from, to});
    for (FFDEntityRecord& record : records_) SetParams(record, box_);
}

void FFDCage::SampleEntities() {
    records_.clear();
    for (const AcDbObjectId id : selectionIds_) {
        FFDEntityRecord record;
        if (SampleEntity(id, box_, subdivision_, record)) records_.push_back(std::move(record));
    }
}

std::vector<AcGePoint3d> FFDCage::positions() const {
    std::vector<AcGePoint3d> positions;
    positions.reserve(controlPoints_.size());
    for (const FFDControlPoint& point : controlPoints_) positions.push_back(point.position);
    return positions;
}

// All samples in one go, so that the evaluation runs over one array.
int FFDCage::ApplyDeformation() {
    std::vector<LatticeSample> samples;
    for (const FFDEntityRecord& record : records_)
        for (size_t n = 0; n < record.points.size(); ++n)
            samples.push_back({record.points[n], record.params[n]});
    std::vector<AcGePoint3d> moved(samples.size());
    LatticeVolume(grid_, positions()).move(samples, moved);
    const LatticeScale scale =
        ScaleOf(grid_, controlPoints_.front().position, controlPoints_.back().position);
    int written = 0;
    size_t at = 0;
    for (FFDEntityRecord& record : records_) {
        const std::span own(moved.data() + at, record.points.size());
        at += own.size();
        if (isStill(record, own, scale)) continue;
        WriteBackEntity(record, own, scale, subdivision_);
        ++written;
    }
    acedUpdateDisplay();
    return written;
}

AcGePoint3d FFDCage::EvaluateLattice(double u, double v, double w) const {
    return LatticeVolume(grid_, positions()).at(u, v, w);
}

bool FFDCage::ChangeCounts() {
    if (!AskLatticeCounts(counts_)) return false;
    SampleEntities();
    BuildLattice();
    PrintText(TranslateFormat(L"\n控制点数量已更新为：%dx%dx%d。", counts_[0], counts_[1], counts_[2]));
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
    const FFDControlPoint& point = controlPoints_[size_t(index)];
    return TranslateFormat(L"\n已选中控制点 [%d, %d, %d]", point.i, point.j, point.k);
}

bool FFDCage::keyword(wchar_t letter) {
    if (letter == L'S') return ChangeCounts();
    if (letter == L'R') return Reset();
    return false;
}

} // namespace corvane::deform
