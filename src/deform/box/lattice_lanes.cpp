// Sums of Bernstein products, eight samples abreast. Every processor does the same additions and
// multiplications in the same order (contraction of the two into one rounding is switched off for this file),
// so that a drawing doesn't depend on the machine.
#include "deform/box/lattice_lanes.h"

#include <algorithm>
#include <cmath>

// One version for each width of the processor's registers, chosen when the module is loaded.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
    #define CORVANE_WIDE __attribute__((target_clones("avx512f", "avx2", "default")))
#else
    #define CORVANE_WIDE
#endif

namespace corvane::deform {
namespace {

constexpr int kLanes = 8;
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));

// All weights of a degree at eight parameters: powers by repeated products, binomials once.
struct Basis {
    Lanes weight[kMostControlPoints];
};

struct Binomials {
    double row[kMostControlPoints][kMostControlPoints];
    constexpr Binomials() : row{} {
        for (int n = 0; n < kMostControlPoints; ++n) {
            row[n][0] = 1;
            for (int i = 1; i <= n; ++i) row[n][i] = row[n - 1][i - 1] + (i < n ? row[n - 1][i] : 0);
        }
    }
};
constexpr Binomials kBinomials;

struct Block {
    Basis basis[3];
    Lanes sum[3];
};

CORVANE_WIDE void fillBasis(Basis& basis, int count, const Lanes& at) {
    const double* binomial = kBinomials.row[count - 1];
    Lanes power = at - at + 1, rest = 1 - at;
    for (int i = 0; i < count; ++i, power *= at) basis.weight[i] = binomial[i] * power;
    power = at - at + 1;
    for (int i = count - 1; i >= 0; --i, power *= rest) basis.weight[i] *= power;
}

CORVANE_WIDE void sumBlock(Block& block, const AxisCounts& counts, const double* shift) {
    const auto [nx, ny, nz] = counts;
    const Lanes zero = {};
    const size_t size = size_t(nx * ny * nz);
    const double *x = shift, *y = shift + size, *z = shift + 2 * size;
    Lanes sx = zero, sy = zero, sz = zero;
    for (int i = 0; i < nx; ++i) {
        Lanes px = zero, py = zero, pz = zero;
        for (int j = 0; j < ny; ++j) {
            Lanes rx = zero, ry = zero, rz = zero;
            for (int k = 0; k < nz; ++k, ++x, ++y, ++z) {
                const Lanes w = block.basis[2].weight[k];
                rx += w * *x, ry += w * *y, rz += w * *z;
            }
            const Lanes v = block.basis[1].weight[j];
            px += v * rx, py += v * ry, pz += v * rz;
        }
        const Lanes u = block.basis[0].weight[i];
        sx += u * px, sy += u * py, sz += u * pz;
    }
    block.sum[0] = sx, block.sum[1] = sy, block.sum[2] = sz;
}

} // namespace

void addShifts(const AxisCounts& counts, const std::vector<double>& shift,
               std::span<const LatticeSample> samples, std::span<AcGePoint3d> out) {
    Block block;
    for (size_t from = 0; from < samples.size(); from += kLanes) {
        const size_t count = std::min<size_t>(kLanes, samples.size() - from);
        for (unsigned axis = 0; axis < 3; ++axis) {
            Lanes at = {};
            for (size_t lane = 0; lane < count; ++lane) at[lane] = samples[from + lane].params[axis];
            fillBasis(block.basis[axis], counts[axis], at);
        }
        sumBlock(block, counts, shift.data());
        for (size_t lane = 0; lane < count; ++lane)
            out[from + lane] += AcGeVector3d(block.sum[0][lane], block.sum[1][lane], block.sum[2][lane]);
    }
}

} // namespace corvane::deform
