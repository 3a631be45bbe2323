// What holds for every kind of curve, at several sizes and far from the origin.
#include <gtest/gtest.h>

#include <cmath>

#include "specimens.h"

namespace {

using specimens::Specimen;

struct Measures {
    double start = 0, end = 0, length = 0, size = 0, slack = 0;
};
Measures measure(const AcDbCurve& curve) {
    Measures m;
    EXPECT_EQ(curve.getStartParam(m.start), Acad::eOk);
    EXPECT_EQ(curve.getEndParam(m.end), Acad::eOk);
    EXPECT_EQ(curve.getDistAtParam(m.end, m.length), Acad::eOk);
    AcDbExtents box;
    EXPECT_EQ(curve.getGeomExtents(box), Acad::eOk);
    m.size = box.minPoint().distanceTo(box.maxPoint());
    // Coordinates far away carry less of the curve's own digits.
    m.slack = 1e-9 * m.size + 1e-14 * box.maxPoint().asVector().length();
    return m;
}

template <class Check> void forAll(Check check) {
    for (const auto& setting : specimens::kSettings)
        for (const Specimen& s : specimens::all(setting)) {
            SCOPED_TRACE(s.name + " of size " + std::to_string(setting.size) + " at " +
                         std::to_string(setting.away.x));
            check(*s.curve);
        }
}

AcGePoint3d pointAtDist(const AcDbCurve& curve, double distance) {
    AcGePoint3d p;
    EXPECT_EQ(curve.getPointAtDist(distance, p), Acad::eOk);
    return p;
}

TEST(CurveLaws, ParametersAndDistancesComeBack) {
    forAll([](const AcDbCurve& curve) {
        const Measures m = measure(curve);
        for (double share : {0.0, 0.013, 0.25, 0.5, 0.777, 1.0}) {
            double param = 0, distance = 0;
            ASSERT_EQ(curve.getParamAtDist(share * m.length, param), Acad::eOk);
            ASSERT_EQ(curve.getDistAtParam(param, distance), Acad::eOk);
            EXPECT_NEAR(distance, share * m.length, 1e-9 * m.length);
            AcGePoint3d at, again;
            ASSERT_EQ(curve.getPointAtParam(param, at), Acad::eOk);
            ASSERT_EQ(curve.getParamAtPoint(at, param), Acad::eOk);
            ASSERT_EQ(curve.getPointAtParam(param, again), Acad::eOk);
            EXPECT_LE(at.distanceTo(again), m.slack);
        }
    });
}

TEST(CurveLaws, LengthIsThatOfADenseChain) {
    forAll([](const AcDbCurve& curve) {
        const Measures m = measure(curve);
        double sum = 0;
        AcGePoint3d before, at;
        curve.getPointAtParam(m.start, before);
        constexpr int kSteps = 50400;
        for (int i = 1; i <= kSteps; ++i, before = at) {
            ASSERT_EQ(curve.getPointAtParam(m.start + (m.end - m.start) * i / kSteps, at), Acad::eOk);
            sum += before.distanceTo(at);
        }
        EXPECT_NEAR(sum, m.length, 1e-6 * m.length);
    });
}

TEST(CurveLaws, DerivativesAreTheSlopesOfPoints) {
    forAll([](const AcDbCurve& curve) {
        const Measures m = measure(curve);
        const double range = m.end - m.start, h = 1e-4 * range;
        for (double share : {0.031, 0.27, 0.519, 0.83}) {
            const double t = m.start + share * range;
            AcGePoint3d low, mid, high;
            curve.getPointAtParam(t - h, low), curve.getPointAtParam(t, mid),
                curve.getPointAtParam(t + h, high);
            AcGeVector3d first, second;
            ASSERT_EQ(curve.getFirstDeriv(t, first), Acad::eOk);
            ASSERT_EQ(curve.getSecondDeriv(t, second), Acad::eOk);
            EXPECT_LE(((high - low) / (2 * h) - first).length(), 1e-4 * (m.size / range) + 10 * m.slack / h);
            const AcGeVector3d bend = ((high - mid) - (mid - low)) / (h * h);
            EXPECT_LE((bend - second).length(),
                      1e-3 * (second.length() + m.size / (range * range)) + 10 * m.slack / (h * h));
        }
    });
}

TEST(CurveLaws, ExtentsHoldTheCurveAndTouchIt) {
    forAll([](const AcDbCurve& curve) {
        const Measures m = measure(curve);
        AcDbExtents box, dense;
        curve.getGeomExtents(box);
        for (int i = 0; i <= 50400; ++i) {
            AcGePoint3d p;
            curve.getPointAtParam(m.start + (m.end - m.start) * i / 50400, p);
            dense.addPoint(p);
        }
        for (unsigned axis = 0; axis < 3; ++axis) {
            EXPECT_LE(box.minPoint()[axis], dense.minPoint()[axis] + m.slack);
            EXPECT_GE(box.maxPoint()[axis], dense.maxPoint()[axis] - m.slack);
            EXPECT_NEAR(box.minPoint()[axis], dense.minPoint()[axis], 1e-6 * m.size + m.slack);
            EXPECT_NEAR(box.maxPoint()[axis], dense.maxPoint()[axis], 1e-6 * m.size + m.slack);
        }
    });
}

TEST(CurveLaws, ReversedCurvesRunTheOtherWay) {
    forAll([](const AcDbCurve& curve) {
        const std::unique_ptr<AcDbCurve> back(static_cast<AcDbCurve*>(curve.clone()));
        const Measures m = measure(curve);
        if (AcDbHelix::cast(&curve)) return; // wound from one end
        ASSERT_EQ(back->reverseCurve(), Acad::eOk);
        EXPECT_NEAR(measure(*back).length, m.length, 1e-9 * m.length);
        const bool turns = AcDbCircle::cast(&curve) != nullptr; // a circle's start is where its normal says
        for (double share : {0.0, 0.2, 0.6, 1.0}) {
            if (turns) break;
            const AcGePoint3d there = pointAtDist(curve, share * m.length);
            EXPECT_LE(there.distanceTo(pointAtDist(*back, (1 - share) * m.length)), 10 * m.slack);
        }
    });
}

TEST(CurveLaws, MovedTurnedMirroredAndScaledCurvesKeepTheirPlaces) {
    const AcGePlane mirror({1, 2, 0}, AcGeVector3d(1, 0.3, 0));
    const AcGeMatrix3d moves[] = {AcGeMatrix3d::translation({3, -2, 5}),
                                  AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 1, 0.2), {1, 0, 0}),
                                  AcGeMatrix3d::mirroring(mirror), AcGeMatrix3d::scaling(2.5, {0, 1, 0}),
                                  AcGeMatrix3d::mirroring(AcGePlane::kXYPlane)};
    for (const AcGeMatrix3d& move : moves)
        for (const Specimen& s : specimens::all()) {
            SCOPED_TRACE(s.name);
            const std::unique_ptr<AcDbCurve> moved(static_cast<AcDbCurve*>(s.curve->clone()));
            ASSERT_EQ(moved->transformBy(move), Acad::eOk);
            const Measures m = measure(*s.curve), after = measure(*moved);
            const double scale = std::cbrt(std::fabs(move.det()));
            EXPECT_NEAR(after.length, scale * m.length, 1e-9 * after.length);
            for (int i = 0; i <= 20; ++i) {
                const AcGePoint3d there = move * pointAtDist(*s.curve, m.length * i / 20);
                AcGePoint3d near;
                ASSERT_EQ(moved->getClosestPointTo(there, near), Acad::eOk);
                EXPECT_LE(there.distanceTo(near), 10 * after.slack);
            }
        }
}

TEST(CurveLaws, UnevenScalingGivesACurveThroughTheImages) {
    AcGeMatrix3d uneven = AcGeMatrix3d::scaling(AcGeScale3d(2, 0.5, 1.5));
    uneven(0, 1) = 0.4;
    for (const Specimen& s : specimens::all()) {
        SCOPED_TRACE(s.name);
        AcDbEntity* copy = nullptr;
        ASSERT_EQ(s.curve->getTransformedCopy(uneven, copy), Acad::eOk);
        const std::unique_ptr<AcDbEntity> owned(copy);
        const auto* image = AcDbCurve::cast(copy);
        ASSERT_TRUE(image);
        const Measures m = measure(*s.curve);
        for (int i = 0; i <= 20; ++i) {
            const AcGePoint3d there = uneven * pointAtDist(*s.curve, m.length * i / 20);
            AcGePoint3d near;
            ASSERT_EQ(image->getClosestPointTo(there, near), Acad::eOk);
            EXPECT_LE(there.distanceTo(near), 1e-8 * m.size);
        }
    }
}

TEST(CurveLaws, PiecesAddUp) {
    forAll([](const AcDbCurve& curve) {
        const Measures m = measure(curve);
        AcGeDoubleArray cuts;
        for (double share : {0.21, 0.5, 0.83}) {
            double param = 0;
            curve.getParamAtDist(share * m.length, param);
            cuts.append(param);
        }
        AcDbVoidPtrArray pieces;
        ASSERT_EQ(curve.getSplitCurves(cuts, pieces), Acad::eOk);
        double sum = 0;
        for (void* piece : pieces) {
            const std::unique_ptr<AcDbCurve> owned(static_cast<AcDbCurve*>(piece));
            sum += measure(*owned).length;
            AcGePoint3d start, near;
            owned->getStartPoint(start);
            curve.getClosestPointTo(start, near);
            EXPECT_LE(start.distanceTo(near), 10 * m.slack);
        }
        EXPECT_NEAR(sum, m.length, 1e-8 * m.length);
    });
}

TEST(CurveLaws, SplinesOfCurvesLieOnThem) {
    forAll([](const AcDbCurve& curve) {
        const Measures m = measure(curve);
        AcDbSpline* spline = nullptr;
        ASSERT_EQ(curve.getSpline(spline), Acad::eOk);
        const std::unique_ptr<AcDbSpline> owned(spline);
        EXPECT_NEAR(measure(*spline).length, m.length, 1e-8 * m.length);
        for (int i = 0; i <= 10; ++i) {
            AcGePoint3d near;
            const AcGePoint3d there = pointAtDist(curve, m.length * i / 10);
            spline->getClosestPointTo(there, near);
            EXPECT_LE(there.distanceTo(near), 10 * m.slack);
        }
    });
}

TEST(CurveLaws, ProjectionsAreWhatIsSeenAlongTheDirection) {
    const AcGePlane plane({0, 0, 2}, AcGeVector3d(0.2, -0.3, 1));
    const AcGeVector3d direction(0.1, 0.4, 1);
    const AcGeMatrix3d flat = AcGeMatrix3d::projection(plane, direction);
    for (const Specimen& s : specimens::all()) {
        SCOPED_TRACE(s.name);
        AcDbCurve* image = nullptr;
        ASSERT_EQ(s.curve->getProjectedCurve(plane, direction, image), Acad::eOk);
        const std::unique_ptr<AcDbCurve> owned(image);
        const Measures m = measure(*s.curve);
        for (int i = 0; i <= 10; ++i) {
            const AcGePoint3d there = flat * pointAtDist(*s.curve, m.length * i / 10);
            AcGePoint3d near, seen;
            image->getClosestPointTo(there, near);
            EXPECT_LE(there.distanceTo(near), 1e-8 * m.size);
            ASSERT_EQ(s.curve->getClosestPointTo(there, direction, seen), Acad::eOk);
            EXPECT_LE((flat * seen).distanceTo(there), 1e-7 * m.size);
        }
    }
}

TEST(CurveLaws, ExplodedPolylinesKeepTheirLength) {
    forAll([](const AcDbCurve& curve) {
        AcDbVoidPtrArray parts;
        if (curve.explode(parts) != Acad::eOk) return;
        const Measures m = measure(curve);
        double sum = 0;
        for (void* part : parts) {
            const std::unique_ptr<AcDbEntity> owned(static_cast<AcDbEntity*>(part));
            sum += measure(*AcDbCurve::cast(owned.get())).length;
        }
        EXPECT_NEAR(sum, m.length, 1e-9 * m.length);
    });
}

TEST(CurveLaws, ParallelsKeepTheirDistance) {
    forAll([](const AcDbCurve& curve) {
        if (!curve.isPlanar()) return;
        const Measures m = measure(curve);
        for (double share : {0.02, -0.02}) {
            SCOPED_TRACE(share > 0 ? "right" : "left");
            const double distance = std::fabs(share) * m.size;
            AcDbVoidPtrArray made;
            ASSERT_EQ(curve.getOffsetCurves(share * m.size, made), Acad::eOk);
            int off = 0;
            for (void* one : made) {
                const std::unique_ptr<AcDbCurve> owned(static_cast<AcDbCurve*>(one));
                const double length = measure(*owned).length;
                for (int i = 0; i <= 100; ++i) {
                    const AcGePoint3d p = pointAtDist(*owned, length * i / 100);
                    AcGePoint3d near;
                    curve.getClosestPointTo(p, near);
                    EXPECT_GE(p.distanceTo(near), distance - 3e-6 * m.size);
                    off += p.distanceTo(near) > distance + 3e-6 * m.size; // on the way to a point
                }
            }
            EXPECT_LE(off, 30 * made.length());
        }
    });
}

// Two independent ways to an area: the curve's own, and its spline's.
TEST(CurveLaws, AreasAreThoseOfTheSplineAndScaleWithTheCurve) {
    forAll([](const AcDbCurve& curve) {
        double area = 0, ofSpline = 0, ofImage = 0;
        if (!curve.isPlanar()) {
            EXPECT_EQ(curve.getArea(area), Acad::eNonPlanarEntity);
            return;
        }
        const Measures m = measure(curve);
        ASSERT_EQ(curve.getArea(area), Acad::eOk);
        AcDbSpline* spline = nullptr;
        ASSERT_EQ(curve.getSpline(spline), Acad::eOk);
        const std::unique_ptr<AcDbSpline> owned(spline);
        ASSERT_EQ(spline->getArea(ofSpline), Acad::eOk);
        EXPECT_NEAR(area, ofSpline, 10 * m.slack * m.size);
        AcDbEntity* copy = nullptr;
        ASSERT_EQ(curve.getTransformedCopy(AcGeMatrix3d::scaling(AcGeScale3d(2, 3, 0.5)), copy), Acad::eOk);
        const std::unique_ptr<AcDbEntity> image(copy);
        AcGePlane plane;
        curve.getPlane(plane);
        if (!plane.normal().isParallelTo(AcGeVector3d::kZAxis)) return;
        ASSERT_EQ(AcDbCurve::cast(copy)->getArea(ofImage), Acad::eOk);
        EXPECT_NEAR(ofImage, 6 * area, 60 * m.slack * m.size);
    });
}

TEST(CurveLaws, ChangesAreSeenAtOnce) {
    for (const Specimen& s : specimens::all()) {
        SCOPED_TRACE(s.name);
        const double before = measure(*s.curve).length;
        const auto state = s.curve->snapshot();
        ASSERT_EQ(s.curve->transformBy(AcGeMatrix3d::scaling(2)), Acad::eOk);
        EXPECT_NEAR(measure(*s.curve).length, 2 * before, 1e-9 * before);
        s.curve->restore(*state);
        EXPECT_NEAR(measure(*s.curve).length, before, 1e-9 * before);
    }
}

} // namespace
