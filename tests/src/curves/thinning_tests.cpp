// The point algorithms of the smoothing commands, on plain points.
#include "curves/smoothing/thinning.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

using namespace corvane;

namespace {

std::vector<AcGePoint3d> onLine(int count, double step) {
    std::vector<AcGePoint3d> points;
    for (int i = 0; i < count; ++i) points.push_back({i * step, 0, 0});
    return points;
}

// Like ThinPoints, word by word, with a mark a point: the slow twin of the one that is used.
std::vector<AcGePoint3d> thinByMarks(std::vector<AcGePoint3d> points, double tolerance) {
    for (int pass = 0; pass < 5; ++pass) {
        const size_t n = points.size();
        if (n < 3) break;
        std::vector<bool> pending(n, true);
        std::vector<AcGePoint3d> out{points[0]};
        pending[0] = false;
        for (size_t i = 1; i < n - 1; i += 2) {
            const AcGeVector3d u = points[i - 1] - points[i], v = points[i + 1] - points[i];
            const double angle = u.angleTo(v);
            if (std::abs(std::sin(angle) * u.length()) > tolerance || std::abs(angle) < 0.1)
                out.push_back(points[i]);
            pending[i] = false;
            out.push_back(points[i + 1]);
            pending[i + 1] = false;
        }
        for (size_t i = 0; i < n; ++i)
            if (pending[i]) out.push_back(points[i]);
        points = out;
    }
    return points;
}

} // namespace

TEST(Thinning, FivePassesLeaveOneIn32OfAStraightRow) {
    // 2^5 segments a remaining one: 65 points on a line become 3, the ends among them.
    const auto thinned = ThinPoints(onLine(65, 1), 0.001);
    ASSERT_EQ(3u, thinned.size());
    EXPECT_EQ(AcGePoint3d(0, 0, 0), thinned.front());
    EXPECT_EQ(AcGePoint3d(32, 0, 0), thinned[1]);
    EXPECT_EQ(AcGePoint3d(64, 0, 0), thinned.back());
}

TEST(Thinning, AgreesWithThePlainFormOnRandomRows) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-1, 1);
    for (int n : {0, 1, 2, 3, 4, 5, 8, 33, 200, 201}) {
        std::vector<AcGePoint3d> points;
        for (int i = 0; i < n; ++i)
            points.push_back({i * 0.3, coordinate(random) * 0.2, coordinate(random) * 0.1});
        for (double tolerance : {0.0, 0.05, 0.3, 1e9}) {
            const auto fast = ThinPoints(points, tolerance), plain = thinByMarks(points, tolerance);
            ASSERT_EQ(plain.size(), fast.size()) << n << " points, tolerance " << tolerance;
            for (size_t i = 0; i < fast.size(); ++i) EXPECT_EQ(plain[i], fast[i]);
        }
    }
}

TEST(Thinning, EveryThirtySecondPointAndSpikesAtOddPlacesSurviveAnyTolerance) {
    // A pass keeps even places; after five of them those that 32 divides are left, a corner among them.
    std::vector<AcGePoint3d> bent = onLine(33, 1);
    for (int i = 1; i <= 32; ++i) bent.push_back({32, double(i), 0});
    const AcGePoint3d corner(32, 0, 0), tip(1, 0, 0);
    EXPECT_EQ((std::vector<AcGePoint3d>{{0, 0, 0}, corner, {32, 32, 0}}), ThinPoints(bent, 1e9));
    // The way to the tip and back encloses 0.05 radian: below a tenth.
    EXPECT_THAT(ThinPoints({{0, 0, 0}, tip, {0, 0.05, 0}}, 1e9), testing::Contains(tip));
    EXPECT_THAT(ThinPoints({{0, 0, 0}, tip, {0, 0.2, 0}}, 1e9), testing::Not(testing::Contains(tip)));
}

TEST(Clustering, RunsBecomeTheirMeanAndEndsStay) {
    // Worked by hand: 0, 0.1 and 0.2 lie within 1 of the first; their mean is 0.1; the last point is put
    // back.
    const auto out = ClusterPoints({{0, 0, 0}, {0.1, 0, 0}, {0.2, 0, 0}, {10, 0, 0}, {20, 0, 0}}, 1, 5);
    ASSERT_EQ(4u, out.size());
    EXPECT_NEAR(0.1, out[0].x, 1e-12);
    EXPECT_EQ(0.2 + 0, ClusterPoints({{0, 0, 0}, {0.2, 0, 0}}, 1, 5)[1].x) << "the end stays beside the mean";
    EXPECT_EQ(AcGePoint3d(10, 0, 0), out[1]) << "the point behind a run keeps the long segment's direction";
    EXPECT_EQ(AcGePoint3d(10, 0, 0), out[2]);
    EXPECT_EQ(AcGePoint3d(20, 0, 0), out[3]);
}

TEST(Clustering, PointsFartherApartThanTheRadiusComeBackUnchanged) {
    const auto points = onLine(40, 1);
    EXPECT_EQ(points, ClusterPoints(points, 0.5, 2.5));
    EXPECT_EQ(1u, ClusterPoints({{1, 2, 3}}, 5, 5).size());
}

TEST(Duplicates, ARunKeepsItsLastAndAClosedRowLosesItsEnd) {
    const auto found = MarkDuplicates({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {1, 0, 5e-6}, {1, 1, 0}, {0, 0, 0}});
    EXPECT_THAT(found.marks, testing::ElementsAre(false, true, true, false, false, true));
    EXPECT_TRUE(found.closesOnItself);
    EXPECT_FALSE(MarkDuplicates({{0, 0, 0}, {2e-5, 0, 0}}).closesOnItself);
    EXPECT_TRUE(MarkDuplicates({}).marks.empty());
}
