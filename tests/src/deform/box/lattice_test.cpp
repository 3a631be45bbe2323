// The lattice's volume against the plain triple sum, and what a lattice at rest must not do.
#include "deform/box/lattice.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace corvane::deform {
namespace {

// By binomials from factorials.
double plainWeight(int i, int n, double t) {
    return std::tgamma(n + 1) / (std::tgamma(i + 1) * std::tgamma(n - i + 1)) * std::pow(t, i) *
           std::pow(1 - t, n - i);
}

struct Moved {
    LatticeGrid grid;
    std::vector<AcGePoint3d> positions;
};

Moved moved(const AxisCounts& counts, std::mt19937& random, double by) {
    std::uniform_real_distribution<double> shift(-by, by);
    Moved lattice{LatticeGrid(counts, {-3, 2, 100}, {7, 22, 130}), {}};
    for (int i = 0; i < counts[0]; ++i)
        for (int j = 0; j < counts[1]; ++j)
            for (int k = 0; k < counts[2]; ++k)
                lattice.positions.push_back(lattice.grid.rest(i, j, k) +
                                            AcGeVector3d(shift(random), shift(random), shift(random)));
    return lattice;
}

AcGePoint3d tripleSum(const Moved& lattice, const AcGePoint3d& at) {
    const auto [nx, ny, nz] = lattice.grid.counts();
    AcGeVector3d sum;
    double weights = 0;
    size_t n = 0;
    for (int i = 0; i < nx; ++i)
        for (int j = 0; j < ny; ++j)
            for (int k = 0; k < nz; ++k, ++n) {
                const double weight = plainWeight(i, nx - 1, at.x) * plainWeight(j, ny - 1, at.y) *
                                      plainWeight(k, nz - 1, at.z);
                sum += lattice.positions[n].asVector() * weight;
                weights += weight;
            }
    return AcGePoint3d::kOrigin + sum / weights;
}

TEST(Bernstein, WeightsAreThePolynomialsAndAddUpToOne) {
    for (int n = 0; n < kMostControlPoints; ++n)
        for (const double t : {0.0, 1e-9, 0.125, 0.5, 2.0 / 3, 1.0}) {
            double sum = 0;
            for (int i = 0; i <= n; ++i) {
                EXPECT_NEAR(plainWeight(i, n, t), BernsteinWeight(i, n, t), 1e-13) << i << " of " << n;
                sum += BernsteinWeight(i, n, t);
            }
            EXPECT_NEAR(1, sum, 1e-13) << n << " at " << t;
        }
    EXPECT_EQ(0, BernsteinWeight(-1, 3, 0.5));
    EXPECT_EQ(0, BernsteinWeight(4, 3, 0.5));
}

TEST(LatticeVolume, IsTheTripleSumToTwelveDigitsOfTheBox) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(0, 1);
    const double size = AcGeVector3d(10, 20, 30).length();
    for (const AxisCounts& counts :
         {AxisCounts{1, 1, 1}, {2, 2, 2}, {3, 3, 1}, {1, 5, 4}, {4, 4, 4}, {16, 2, 7}, {16, 16, 16}}) {
        const Moved lattice = moved(counts, random, 15);
        const LatticeVolume volume(lattice.grid, lattice.positions);
        // Ten and a half blocks of lanes, corners among them.
        std::vector<LatticeSample> samples;
        for (int n = 0; n < 84; ++n) {
            const AcGePoint3d params = n < 8 ? AcGePoint3d(n & 1, n >> 1 & 1, n >> 2)
                                             : AcGePoint3d(unit(random), unit(random), unit(random));
            samples.push_back({{-3 + 10 * params.x, 2 + 20 * params.y, 100 + 30 * params.z}, params});
        }
        std::vector<AcGePoint3d> out(samples.size());
        volume.move(samples, out);
        for (size_t n = 0; n < samples.size(); ++n) {
            const AcGePoint3d& at = samples[n].params;
            EXPECT_LT(out[n].distanceTo(tripleSum(lattice, at)), 1e-12 * size)
                << counts[0] << " sample " << n;
            EXPECT_LT(volume.at(at.x, at.y, at.z).distanceTo(out[n]), 1e-12 * size);
        }
    }
}

TEST(LatticeVolume, AtRestKeepsEveryBit) {
    std::mt19937 random(8);
    const Moved lattice = moved({3, 4, 2}, random, 0);
    std::uniform_real_distribution<double> unit(0, 1);
    std::vector<LatticeSample> samples(37);
    for (LatticeSample& sample : samples) {
        sample.point = {-3 + 10 * unit(random), 2 + 20 * unit(random), 100 + 30 * unit(random)};
        sample.params = ToBoxCoordinates(sample.point, lattice.grid.boxMin(), lattice.grid.boxMax());
    }
    std::vector<AcGePoint3d> out(samples.size());
    LatticeVolume(lattice.grid, lattice.positions).move(samples, out);
    for (size_t n = 0; n < samples.size(); ++n)
        for (unsigned axis = 0; axis < 3; ++axis) EXPECT_EQ(samples[n].point[axis], out[n][axis]);
}

TEST(LatticeVolume, OneLayerGathersAndWhatLiesBeyondTheBoxGoesAlong) {
    const LatticeGrid grid({2, 2, 1}, {0, 0, -1}, {10, 10, 5});
    std::vector<AcGePoint3d> positions;
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 2; ++j) positions.push_back(grid.rest(i, j, 0) + AcGeVector3d(i * 4.0, 0, 1));
    const LatticeVolume volume(grid, positions);
    // Half way through the box; on its right side; two beyond it.
    std::vector<LatticeSample> samples;
    for (const double x : {5.0, 10.0, 12.0})
        samples.push_back({{x, 3, 4}, ToBoxCoordinates({x, 3, 4}, grid.boxMin(), grid.boxMax())});
    std::vector<AcGePoint3d> out(3);
    volume.move(samples, out);
    const AcGePoint3d expected[] = {{7, 3, 3}, {14, 3, 3}, {16, 3, 3}};
    for (size_t n = 0; n < 3; ++n) EXPECT_LT(out[n].distanceTo(expected[n]), 1e-14) << n;
}

TEST(LatticeGrid, WidensThinSidesRoundTheirMiddleAndLinksNeighbours) {
    const LatticeGrid grid({3, 2, 1}, {0, 0, 7}, {4, 0.009, 7});
    EXPECT_DOUBLE_EQ(0.01, grid.boxMax().y - grid.boxMin().y);
    EXPECT_DOUBLE_EQ(0.0045, (grid.boxMax().y + grid.boxMin().y) / 2);
    EXPECT_NEAR(0.01, grid.boxMax().z - grid.boxMin().z, 1e-14);
    EXPECT_EQ(7, grid.rest(2, 1, 0).z); // exactly, so that flat drawings stay where they are
    EXPECT_EQ(4, grid.rest(2, 0, 0).x);
    const std::vector<std::array<int, 2>> expected{{0, 2}, {2, 4}, {1, 3}, {3, 5}, {0, 1}, {2, 3}, {4, 5}};
    EXPECT_EQ(expected, grid.edges());
}

TEST(LatticeScale, FollowsTheCornersAndLeavesFlatAxesOut) {
    const LatticeGrid solid({3, 3, 3}, {0, 0, 0}, {10, 20, 40}), flat({3, 3, 1}, {0, 0, 0}, {10, 20, 0});
    const auto still = ScaleOf(solid, solid.rest(0, 0, 0), solid.rest(2, 2, 2));
    EXPECT_EQ(1, still.inSpace);
    EXPECT_EQ(1, still.inPlane);
    const auto grown = ScaleOf(solid, {-10, 0, 0}, {20, 20, 40}); // three times as wide
    EXPECT_DOUBLE_EQ(5.0 / 3, grown.inSpace);
    EXPECT_DOUBLE_EQ(2, grown.inPlane);
    const auto plane = ScaleOf(flat, flat.rest(0, 0, 0), flat.rest(2, 2, 0) + AcGeVector3d(5, 0, 9));
    EXPECT_DOUBLE_EQ(7.0 / 6, plane.inSpace);
    EXPECT_DOUBLE_EQ(1.25, plane.inPlane);
}

TEST(BoxCoordinates, AreHeldToTheBox) {
    const AcGePoint3d low(0, -4, 5), high(10, 4, 5);
    const AcGePoint3d params = ToBoxCoordinates({12, 0, 5}, low, high);
    EXPECT_EQ(AcGePoint3d(1, 0.5, 0), params);
    EXPECT_EQ(AcGePoint3d(0, 0, 0), ToBoxCoordinates({-1, -9, 4}, low, high));
}

} // namespace
} // namespace corvane::deform
