// A lattice round objects of every kind: how they are sampled, what a lattice at rest leaves alone, and what
// a moved one makes of them. The prompts are tried in the command's test.
#include "deform/box/ffd.h"

#include <cmath>

#include "support/drawing.h"

namespace corvane::deform {
namespace {

constexpr double kPi = 3.14159265358979323846;

FFDCage cageRound(const std::vector<AcDbObjectId>& ids, const AxisCounts& counts = {3, 3, 3},
                  const Subdivision& subdivision = {}) {
    FFDCage cage(ids);
    EXPECT_TRUE(cage.FitBox());
    AxisCounts held = cage.counts();
    for (size_t axis = 0; axis < 3; ++axis)
        if (held[axis] != 1) held[axis] = counts[axis];
    cage.setCounts(held);
    cage.setSubdivision(subdivision);
    cage.SampleEntities();
    cage.BuildLattice();
    return cage;
}

void shift(FFDCage& cage, const std::function<AcGeVector3d(const AcGePoint3d&)>& by) {
    for (int n = 0; n < cage.size(); ++n) cage.point(n).position += by(cage.point(n).position);
}

template <class Entity, class Look> auto look(AcDbObjectId id, Look what) {
    AcDbObjectPointer<Entity> entity(id, AcDb::kForRead);
    EXPECT_TRUE(entity);
    return what(*entity);
}

std::unique_ptr<AcDbText> text(const AcGePoint3d& at) {
    return std::make_unique<AcDbText>(at, L"Ab", AcDbObjectId(), 2.0);
}

std::vector<AcDbObjectId> addAllKinds(support::Drawing& drawing) {
    AcGePoint3dArray points;
    for (int i = 0; i < 5; ++i) points.append({i * 3.0, std::sin(i * 2.0) * 4, 0.1 * i});
    auto controlled = std::make_unique<AcDbSpline>(points);
    controlled->purgeFitData();
    auto tilted = std::make_unique<AcDbPolyline>();
    for (int i = 0; i < 4; ++i) tilted->addVertexAt(unsigned(i), {i * 1.1, i * i * 0.3}, 0.2);
    tilted->setNormal(AcGeVector3d(1, 2, 2).normalize());
    return {drawing.add(std::make_unique<AcDbLine>(AcGePoint3d(0.1, 0.7, 0), AcGePoint3d(9.3, 4.1, 3))),
            drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(5, 5, 0), AcGeVector3d::kZAxis, 1.7)),
            drawing.add(std::make_unique<AcDbArc>(AcGePoint3d(3, 1, 0), 1.3, 0.3, 2.9)),
            drawing.add(std::make_unique<AcDbEllipse>(AcGePoint3d(1, 8, 0), AcGeVector3d::kZAxis,
                                                      AcGeVector3d(2, 1, 0), 0.3)),
            drawing.addPolyline({{0.3, 0.1}, {4.7, 0.2}, {5.1, 6.3}}, true),
            drawing.add(std::move(tilted)),
            drawing.add3dPolyline(points),
            drawing.add2dPolyline(points),
            drawing.add(std::make_unique<AcDbSpline>(points)),
            drawing.add(std::move(controlled)),
            drawing.add(std::make_unique<AcDbFace>(AcGePoint3d(0, 0, 0), AcGePoint3d(2, 0, 0),
                                                   AcGePoint3d(2, 2, 1), AcGePoint3d(0, 2, 1))),
            drawing.add(text({6.1, 2.2, 0}))};
}

TEST(FreeFormDeform, ALatticeAtRestChangesNoByteOfAnyKind) {
    for (const bool subdivided : {false, true}) {
        support::Drawing drawing;
        const auto ids = addAllKinds(drawing);
        const std::string before = drawing.bytes();
        FFDCage cage = cageRound(ids, {4, 3, 2}, {subdivided, 6});
        EXPECT_EQ(ids.size(), cage.state().records.size());
        EXPECT_EQ(0, cage.ApplyDeformation());
        EXPECT_TRUE(before == drawing.bytes());
    }
}

TEST(FreeFormDeform, EveryKindFollowsAMove) {
    support::Drawing drawing;
    const auto ids = addAllKinds(drawing);
    FFDCage cage = cageRound(ids);
    std::vector<AcDbExtents> before;
    for (const AcDbObjectId id : ids)
        before.push_back(look<AcDbEntity>(id, [](const AcDbEntity& e) {
            AcDbExtents extents;
            e.getGeomExtents(extents);
            return extents;
        }));
    const AcGeVector3d by(100, 20, -7);
    shift(cage, [&](const AcGePoint3d&) { return by; });
    EXPECT_EQ(int(ids.size()), cage.ApplyDeformation());
    for (size_t n = 0; n + 1 < ids.size(); ++n) { // text goes with its insertion point, see below
        AcDbExtents after;
        look<AcDbEntity>(ids[n], [&](const AcDbEntity& e) { return e.getGeomExtents(after); });
        EXPECT_LT((after.minPoint() - (before[n].minPoint() + by)).length(), 1e-9) << n;
        EXPECT_LT((after.maxPoint() - (before[n].maxPoint() + by)).length(), 1e-9) << n;
    }
    // Nothing is added up: samples are moved from where they were taken.
    const std::string once = drawing.bytes();
    cage.ApplyDeformation();
    EXPECT_TRUE(once == drawing.bytes());
}

TEST(FreeFormDeform, VerticesGoWhereTheVolumeSays) {
    support::Drawing drawing;
    const AcDbObjectId id = drawing.addPolyline({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    FFDCage cage = cageRound({id}, {2, 2, 1});
    ASSERT_EQ(4, cage.size()); // a flat drawing has one layer
    // A shear: the upper points go right by their height over the lower ones.
    shift(cage, [](const AcGePoint3d& p) { return AcGeVector3d(0.5 * (p.y + 0.5), 0, 0); });
    cage.ApplyDeformation();
    look<AcDbPolyline>(id, [](const AcDbPolyline& p) {
        const AcGePoint2d expected[] = {{0.25, 0}, {10.25, 0}, {15.25, 10}, {5.25, 10}};
        for (unsigned i = 0; i < 4; ++i) {
            AcGePoint2d at;
            p.getPointAt(i, at);
            EXPECT_LT((at - expected[i]).length(), 1e-12) << i;
        }
        EXPECT_EQ(0, p.elevation());
        return 0;
    });
}

TEST(FreeFormDeform, TextAndBlocksGoToTheMiddleOfTheirExtentsAndGrowEachTime) {
    support::Drawing drawing;
    auto centred = text({4, 4, 0});
    centred->setHorizontalMode(AcDb::kTextCenter);
    centred->setAlignmentPoint({4, 4, 0});
    centred->adjustAlignment(&drawing.database());
    const AcDbObjectId id = drawing.add(std::move(centred));
    drawing.addPolyline({{0, 0}, {10, 10}});
    FFDCage cage = cageRound(drawing.entities(), {2, 2, 1});
    const AcGePoint3d middle = cage.state().records[0].points.at(0);
    cage.point(3).position += AcGeVector3d(11, 11, 0); // the box's side: the diagonal doubles
    cage.ApplyDeformation();
    cage.ApplyDeformation();
    look<AcDbText>(id, [&](const AcDbText& t) {
        const AcGePoint3d u = ToBoxCoordinates(middle, {-0.5, -0.5, 0}, {10.5, 10.5, 0});
        EXPECT_LT((t.position() - (middle + AcGeVector3d(11, 11, 0) * u.x * u.y)).length(), 1e-9);
        EXPECT_NEAR(2.0 * (5.0 / 3) * (5.0 / 3), t.height(), 1e-12);
        return 0;
    });
}

TEST(FreeFormDeform, SubdividedCurvesBecomeSplinesOfTheSameLook) {
    support::Drawing drawing;
    auto circle = std::make_unique<AcDbCircle>(AcGePoint3d(5, 5, 0), AcGeVector3d::kZAxis, 5);
    const AcDbObjectId id = drawing.add(std::move(circle));
    AcDbObjectPointer<AcDbCircle>(id, AcDb::kForWrite)->setColorIndex(3);
    FFDCage cage = cageRound({id}, {3, 3, 1}, {true, 10});
    // 240 pieces round the circle, which is longer than the box's mean side; the last sample is the first.
    ASSERT_EQ(240u, cage.state().records[0].points.size());
    shift(cage, [](const AcGePoint3d&) { return AcGeVector3d(1, 0, 0); });
    cage.ApplyDeformation();
    const AcDbObjectId spline = drawing.only<AcDbSpline>();
    EXPECT_EQ(spline, cage.state().records[0].entityId);
    const auto radius = [&](const AcGePoint3d& centre) {
        return look<AcDbSpline>(spline, [&](const AcDbSpline& s) {
            EXPECT_EQ(3, s.colorIndex());
            EXPECT_TRUE(s.isClosed() && s.isPeriodic());
            double worst = 0;
            for (int n = 0; n < 1000; ++n) {
                double end = 0;
                AcGePoint3d at;
                s.getEndParam(end);
                s.getPointAtParam(end * n / 1000, at);
                worst = std::max(worst, std::abs((at - centre).length() - 5));
            }
            return worst;
        });
    };
    EXPECT_LT(radius({6, 5, 0}), 1e-6);
    shift(cage, [](const AcGePoint3d&) { return AcGeVector3d(0, 2, 0); });
    cage.ApplyDeformation(); // now the spline itself
    EXPECT_EQ(spline, drawing.only<AcDbSpline>());
    EXPECT_LT(radius({6, 7, 0}), 1e-6);
}

TEST(Sampling, DensityFollowsTheLengthOfThePieces) {
    const AcDbExtents box({0, 0, 0}, {30, 30, 30});
    const struct {
        double length;
        int level, low, pieces;
    } rows[] = {{30, 6, 1, 144}, {300, 6, 1, 144},  {15, 6, 1, 72},  {0.1, 1, 1, 1},
                {0.1, 1, 4, 4},  {300, 10, 2, 240}, {15.1, 1, 2, 12}};
    for (const auto& row : rows)
        EXPECT_EQ(row.pieces, PieceCount(row.length, box, row.level, row.low)) << row.length;

    support::Drawing drawing;
    const AcDbObjectId open = drawing.addPolyline({{0, 0}, {30, 0}, {30, 15}}),
                       closed = drawing.addPolyline({{0, 0}, {30, 0}, {30, 15}}, true);
    FFDEntityRecord record;
    ASSERT_TRUE(SampleEntity(open, box, {true, 1}, record));
    EXPECT_EQ(24u + 12u + 1u, record.points.size());
    EXPECT_FALSE(record.closed);
    EXPECT_LT((record.points[1] - AcGePoint3d(1.25, 0, 0)).length(), 1e-12);
    ASSERT_TRUE(SampleEntity(closed, box, {true, 1}, record));
    EXPECT_EQ(24u + 12u + 24u, record.points.size());
    EXPECT_TRUE(record.closed);
    ASSERT_TRUE(SampleEntity(closed, box, {}, record));
    EXPECT_EQ(3u, record.points.size());
    EXPECT_FALSE(SampleEntity(AcDbObjectId(), box, {}, record));
}

TEST(Sampling, BulgedSegmentsAreFollowed) {
    support::Drawing drawing;
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->addVertexAt(0, {-1, 0}, 1); // half a circle below
    polyline->addVertexAt(1, {1, 0});
    FFDEntityRecord record;
    ASSERT_TRUE(SampleEntity(drawing.add(std::move(polyline)), AcDbExtents({-1, -1, 0}, {1, 0, 0}), {true, 2},
                             record));
    EXPECT_EQ(49u, record.points.size());
    for (const AcGePoint3d& point : record.points) EXPECT_NEAR(1, point.asVector().length(), 1e-12);
}

TEST(FreeFormDeform, ResetTakesInWhatTheRunHasMade) {
    support::Drawing drawing;
    const AcDbObjectId id = drawing.addPolyline({{0, 0}, {10, 0}, {10, 10}});
    FFDCage cage = cageRound({id});
    shift(cage, [](const AcGePoint3d& p) { return AcGeVector3d(0, 0, p.x); });
    cage.ApplyDeformation();
    drawing.run(L""); // messages need a front end, or go nowhere
    ASSERT_TRUE(cage.Reset());
    EXPECT_DOUBLE_EQ(-0.5, cage.box().minPoint().x);
    EXPECT_EQ(9, cage.size());
    look<AcDbPolyline>(id, [](const AcDbPolyline& p) {
        EXPECT_NEAR(20.0 / 3, p.elevation(), 1e-12); // flat, at the mean of what its vertices rose to
        return 0;
    });
    EXPECT_EQ(0, cage.ApplyDeformation());
    FFDCage nothing({AcDbObjectId()});
    EXPECT_FALSE(nothing.FitBox());
}

} // namespace
} // namespace corvane::deform
