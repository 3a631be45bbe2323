// Frames along paths and the matrices of copies.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "arrays/common/frames.h"

using namespace corvane;

namespace {

constexpr double kTiny = 1e-12;

void expectNear(const AcGeVector3d& expected, const AcGeVector3d& v, const char* caption = "") {
    EXPECT_NEAR(0, (expected - v).length(), 1e-9) << caption << v.x << "," << v.y << "," << v.z;
}
void expectRightHanded(const Frame& frame) {
    EXPECT_NEAR(1, frame.x.length(), kTiny);
    EXPECT_NEAR(0, frame.x.dotProduct(frame.z), kTiny);
    EXPECT_NEAR(0, (frame.x.crossProduct(frame.y) - frame.z).length(), kTiny);
}
std::vector<AcGeVector3d> directions() {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> any(-1, 1);
    std::vector<AcGeVector3d> all{{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {0, 1, 0}, {1e-9, 0, 1}, {0.01, 0, -1}};
    while (all.size() < 60) all.push_back({any(random), any(random), any(random)});
    for (AcGeVector3d& v : all) v.normalize();
    return all;
}

} // namespace

TEST(Frames, StandAcrossThePathAndLevel) {
    for (const AcGeVector3d& tangent : directions()) {
        const Frame frame = FrameAcross(tangent);
        expectRightHanded(frame);
        expectNear(tangent, frame.z);
        const bool upright = std::hypot(tangent.x, tangent.y) < 1e-3;
        EXPECT_NEAR(0, upright ? 0 : frame.x.z, kTiny);
    }
    expectNear(AcGeVector3d::kXAxis, FrameAcross(AcGeVector3d::kZAxis).x, "upright");
    expectNear(AcGeVector3d::kYAxis, FrameAcross(AcGeVector3d::kXAxis).x, "level");
}

TEST(Frames, AReferenceDirectionComesFirstUnlessItRunsAlongThePath) {
    const AcGeVector3d along = AcGeVector3d::kXAxis;
    expectNear({0, 0.6, 0.8}, FrameAcross(along, AcGeVector3d(5, 3, 4)).x);
    expectNear(AcGeVector3d::kYAxis, FrameAcross(along, AcGeVector3d(-9, 0, 0)).x);
    for (const AcGeVector3d& tangent : directions())
        expectRightHanded(FrameAcross(tangent, AcGeVector3d(1, 2, 3)));
}

TEST(Frames, TwistsTurnAboutThePath) {
    const Frame frame = FrameAcross(AcGeVector3d(1, 2, 3).normal());
    const Frame quarter = Twisted(frame, std::numbers::pi / 2);
    expectNear(frame.y, quarter.x);
    expectNear(-frame.x, quarter.y);
    expectRightHanded(Twisted(frame, 1.234));
    expectNear(frame.x, Twisted(Twisted(frame, 0.7), -0.7).x);
}

// The same axes as the host's object coordinates, of which texts and flat curves are made.
TEST(Frames, PlanesTakeTheAxesOfDrawingFiles) {
    for (const AcGeVector3d& normal : directions())
        expectNear(AcGeMatrix3d::planeToWorld(normal) * AcGeVector3d::kXAxis, ArbitraryXAxis(normal));
}

TEST(Frames, OneFrameGoesOntoTheOther) {
    const auto all = directions();
    for (size_t i = 1; i < all.size(); ++i) {
        const Frame from = Twisted(FrameAcross(all[i - 1]), 0.3), to = FrameAcross(all[i]);
        const AcGeMatrix3d turn = FrameToFrame(from, to);
        expectNear(to.x, turn * from.x);
        expectNear(to.y, turn * from.y);
        expectNear(to.z, turn * from.z);
    }
}

TEST(CopyMatrix, TakesTheBaseToThePlaceScaledAndTurned) {
    const AcGePoint3d base(3, -2, 5), place(1e5, 40, -7);
    const AcGeMatrix3d turned = CopyMatrix(base, place, 2.5, RotationInPlan({-1, 1, 9}));
    EXPECT_NEAR(0, (turned * base - place).length(), 1e-9);
    EXPECT_NEAR(2.5 * 2.5 * 2.5, turned.det(), kTiny * 100);
    const double half = std::numbers::sqrt2 / 2;
    expectNear(AcGeVector3d(-half, half, 0) * 2.5, turned * AcGeVector3d::kXAxis);
    expectNear(AcGeVector3d(0, 0, 2.5), turned * AcGeVector3d::kZAxis);
    expectNear(AcGeVector3d(7, 8, 9), CopyMatrix(base, place, 1) * AcGeVector3d(7, 8, 9));
}
