// Regions made of curves, and what comes of joining and cutting them.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/ent/conics.h"
#include "host/ent/line.h"
#include "host/ent/polyline.h"
#include "host/ent/spline.h"
#include "host/solid/modeler_faces.h"
#include "host/solid/modeler_write.h"
#include "host/solid/region.h"

namespace {

constexpr double kPi = std::numbers::pi;
using Region = std::unique_ptr<AcDbRegion>;
using Curves = std::vector<std::unique_ptr<AcDbCurve>>;

std::vector<Region> regionsOf(const Curves& curves) {
    AcDbVoidPtrArray given, made;
    for (const auto& curve : curves) given.append(static_cast<AcDbEntity*>(curve.get()));
    AcDbRegion::createFromCurves(given, made);
    std::vector<Region> regions;
    for (void* region : made) regions.emplace_back(AcDbRegion::cast(static_cast<AcDbEntity*>(region)));
    return regions;
}
template <class Curve> Region regionOf(Curve curve) {
    Curves one;
    one.push_back(std::make_unique<Curve>(std::move(curve)));
    auto regions = regionsOf(one);
    EXPECT_EQ(1u, regions.size());
    return regions.empty() ? std::make_unique<AcDbRegion>() : std::move(regions[0]);
}
Region disc(double x, double y, double radius, double z = 0) {
    return regionOf(AcDbCircle({x, y, z}, AcGeVector3d::kZAxis, radius));
}
Region box(double x, double y, double width, double height, double bulge = 0) {
    AcDbPolyline rectangle;
    for (const AcGePoint2d& p : {AcGePoint2d(x, y), {x + width, y}, {x + width, y + height}, {x, y + height}})
        rectangle.addVertexAt(rectangle.numVerts(), p, bulge);
    rectangle.setClosed(true);
    return regionOf(rectangle);
}
double areaOf(const AcDbRegion& region) {
    double area = 0;
    region.getArea(area);
    return area;
}
Region combined(const AcDbRegion& a, const AcDbRegion& b, AcDb::BoolOperType operation) {
    Region first(static_cast<AcDbRegion*>(a.clone())), second(static_cast<AcDbRegion*>(b.clone()));
    EXPECT_EQ(Acad::eOk, first->booleanOper(operation, second.get()));
    EXPECT_TRUE(second->isNull());
    return first;
}
int partsOf(const AcDbRegion& region) {
    AcDbVoidPtrArray parts;
    region.explode(parts);
    for (void* part : parts) delete static_cast<AcDbEntity*>(part);
    return parts.length();
}

} // namespace

TEST(RegionFromCurves, JoinsLooseCurvesHoweverTheyRun) {
    Curves curves;
    const AcGePoint3d a(0, 0, 3), b(4, 0, 3), c(4, 2, 3), d(0, 2, 3);
    curves.push_back(std::make_unique<AcDbLine>(c, b)); // against the round
    curves.push_back(std::make_unique<AcDbLine>(a, b));
    curves.push_back(std::make_unique<AcDbArc>(AcGePoint3d(2, 2, 3), 2, 0, kPi)); // from c over to d
    curves.push_back(std::make_unique<AcDbLine>(a, d));
    curves.push_back(std::make_unique<AcDbLine>(AcGePoint3d(9, 9, 3), AcGePoint3d(8, 9, 3))); // by itself
    curves.push_back(std::make_unique<AcDbCircle>(AcGePoint3d(20, 0, 0), AcGeVector3d::kZAxis, 1));
    const auto regions = regionsOf(curves);
    ASSERT_EQ(2u, regions.size());
    EXPECT_NEAR(kPi, areaOf(*regions[0]), 1e-12);
    EXPECT_NEAR(8 + 2 * kPi, areaOf(*regions[1]), 1e-12);
    AcGePlane plane;
    EXPECT_EQ(Acad::eOk, regions[1]->getPlane(plane));
    EXPECT_NEAR(3, plane.pointOnPlane().z, 1e-12);
    EXPECT_EQ(4, partsOf(*regions[1]));
}

TEST(RegionFromCurves, RefusesWhatEnclosesNothing) {
    Curves curves;
    curves.push_back(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
    curves.push_back(std::make_unique<AcDbLine>(AcGePoint3d(1, 0, 0), AcGePoint3d(0, 0, 0)));
    const AcGePoint3d corners[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}};
    for (int i = 0; i < 4; ++i)
        curves.push_back(std::make_unique<AcDbLine>(corners[i], corners[(i + 1) % 4]));
    EXPECT_TRUE(regionsOf({}).empty());
    curves.erase(curves.begin(), curves.begin() + 2);
    EXPECT_TRUE(regionsOf(curves).empty()) << "in no plane";
    AcDbVoidPtrArray none, made;
    EXPECT_EQ(Acad::eInvalidInput, AcDbRegion::createFromCurves(none, made));
}

TEST(RegionBoolean, GivesTheAreasOfTwoDiscs) {
    // Two discs of radius 1 whose centres are 1 apart share a lens of 2 pi/3 - sqrt(3)/2.
    const double lens = 2 * kPi / 3 - std::sqrt(3.0) / 2;
    const Region a = disc(0, 0, 1), b = disc(1, 0, 1);
    EXPECT_NEAR(2 * kPi - lens, areaOf(*combined(*a, *b, AcDb::kBoolUnite)), 1e-9);
    EXPECT_NEAR(lens, areaOf(*combined(*a, *b, AcDb::kBoolIntersect)), 1e-9);
    EXPECT_NEAR(kPi - lens, areaOf(*combined(*a, *b, AcDb::kBoolSubtract)), 1e-9);
    EXPECT_EQ(2, partsOf(*combined(*a, *b, AcDb::kBoolUnite))) << "two arcs";
}

TEST(RegionBoolean, LawsHoldAtEverySizeAndPlace) {
    AcDbSpline wave(AcGePoint3dArray(std::vector<AcGePoint3d>{
                        {0, 0, 0}, {3, 1, 0}, {5, -1, 0}, {6, 4, 0}, {2, 5, 0}, {0, 0, 0}}),
                    4, 0.0);
    std::vector<Region> corpus;
    corpus.push_back(disc(0, 0, 3));
    corpus.push_back(disc(40, 0, 3));
    corpus.push_back(disc(0.5, 0, 1));
    corpus.push_back(box(-1, -1, 6, 2));
    corpus.push_back(box(-1, 1, 6, 2)); // shares an edge with the one before
    corpus.push_back(box(2, -4, 3, 9, 0.4));
    corpus.push_back(regionOf(AcDbEllipse({2, 1, 0}, AcGeVector3d::kZAxis, {4, 1, 0}, 0.3)));
    corpus.push_back(regionOf(wave));
    const struct {
        double scale;
        AcGeVector3d offset;
    } rows[] = {{1, {}}, {1e-3, {}}, {1e4, {}}, {1, {1e5, -2e5, 30}}};
    for (const auto& row : rows) {
        const AcGeMatrix3d matrix =
            AcGeMatrix3d::translation(row.offset) * AcGeMatrix3d::scaling(row.scale, AcGePoint3d::kOrigin);
        const double unit = row.scale * row.scale;
        for (size_t i = 0; i < corpus.size(); ++i)
            for (size_t j = 0; j < i; ++j) {
                Region a(static_cast<AcDbRegion*>(corpus[i]->clone())),
                    b(static_cast<AcDbRegion*>(corpus[j]->clone()));
                ASSERT_EQ(Acad::eOk, a->transformBy(matrix));
                ASSERT_EQ(Acad::eOk, b->transformBy(matrix));
                const double both = areaOf(*combined(*a, *b, AcDb::kBoolIntersect)) / unit;
                const double either = areaOf(*combined(*a, *b, AcDb::kBoolUnite)) / unit;
                const double rest = areaOf(*combined(*a, *b, AcDb::kBoolSubtract)) / unit;
                const double first = areaOf(*a) / unit, second = areaOf(*b) / unit;
                EXPECT_NEAR(areaOf(*corpus[i]), first, 1e-6);
                EXPECT_NEAR(first + second, both + either, 1e-4) << i << " " << j << " scale " << row.scale;
                EXPECT_NEAR(first, both + rest, 1e-4) << i << " " << j << " scale " << row.scale;
                EXPECT_GE(either + 1e-6, std::max(first, second));
            }
    }
}

// Whatever a region is made of, its text tells all of it.
TEST(RegionText, IsReadAsItWasWritten) {
    std::vector<Region> corpus;
    corpus.push_back(box(-1, -1, 6, 2));
    corpus.push_back(box(2, -4, 3, 9, -0.4));
    corpus.push_back(combined(*disc(0, 0, 3), *disc(1, 0, 1), AcDb::kBoolSubtract));
    corpus.push_back(combined(*disc(0, 0, 3), *disc(9, 0, 1), AcDb::kBoolUnite));
    corpus.push_back(combined(*regionOf(AcDbEllipse({2, 1, 0}, AcGeVector3d::kZAxis, {4, 1, 0}, 0.3)),
                              *disc(4, 1, 2), AcDb::kBoolUnite));
    corpus.push_back(regionOf(AcDbSpline(
        AcGePoint3dArray(std::vector<AcGePoint3d>{{0, 0, 0}, {3, 1, 0}, {6, 4, 0}, {2, 5, 0}, {0, 0, 0}}), 4,
        0.0)));
    for (size_t i = 0; i < corpus.size(); ++i) {
        AcDbVoidPtrArray parts;
        host::PlanarFaces faces;
        const auto add = [&](const AcDbRegion& region) {
            AcDbVoidPtrArray curves;
            region.explode(curves);
            std::vector<std::shared_ptr<const host::CurvePath>> kept;
            std::vector<const host::CurvePath*> paths;
            for (void* curve : curves) {
                kept.push_back(static_cast<AcDbCurve*>(static_cast<AcDbEntity*>(curve))->path());
                paths.push_back(kept.back().get());
            }
            faces.push_back({AcGeVector3d::kZAxis, host::closedLoops(paths, 1e-6)});
            for (void* curve : curves) delete static_cast<AcDbEntity*>(curve);
        };
        corpus[i]->explode(parts);
        for (void* part : parts) {
            const std::unique_ptr<AcDbEntity> entity(static_cast<AcDbEntity*>(part));
            if (const auto* inner = AcDbRegion::cast(entity.get())) add(*inner);
        }
        if (faces.empty()) add(*corpus[i]);
        const auto read =
            host::facesOf(host::readModelerText(host::modelerGroups(host::modelerTextOf(faces))));
        ASSERT_TRUE(read) << i << host::modelerTextOf(faces);
        double area = 0;
        for (const host::PlanarFace& face : *read) area += host::areaOf(face);
        EXPECT_NEAR(areaOf(*corpus[i]), area, 1e-9) << i;
        // The outer loop runs counter-clockwise, holes clockwise, as readers may rely on.
        for (const host::PlanarFace& face : *read)
            for (const host::FaceLoop& loop : face.loops)
                EXPECT_EQ(&loop == &face.loops.front(), host::areaVector(loop).dotProduct(face.normal) > 0);
    }
}

TEST(RegionBoolean, MergesWhatMeetsAndPartsWhatDoesNot) {
    EXPECT_EQ(4, partsOf(*combined(*box(0, 0, 2, 1), *box(2, 0, 3, 1), AcDb::kBoolUnite))) << "one rectangle";
    EXPECT_EQ(2, partsOf(*combined(*disc(0, 0, 1), *disc(9, 0, 1), AcDb::kBoolUnite))) << "two regions";
    const Region ring = combined(*disc(0, 0, 3), *disc(0, 0, 1), AcDb::kBoolSubtract);
    EXPECT_EQ(2, partsOf(*ring));
    EXPECT_NEAR(8 * kPi, areaOf(*ring), 1e-9);
    EXPECT_NEAR(9 * kPi, areaOf(*combined(*ring, *disc(0, 0, 1), AcDb::kBoolUnite)), 1e-9);
}

TEST(RegionBoolean, RefusesOtherPlanes) {
    const Region low = disc(0, 0, 1), high = disc(0, 0, 1, 2);
    EXPECT_EQ(Acad::eInvalidInput, low->booleanOper(AcDb::kBoolUnite, high.get()));
    EXPECT_EQ(Acad::eInvalidInput, low->booleanOper(AcDb::kBoolUnite, low.get()));
    EXPECT_EQ(Acad::eInvalidInput, low->booleanOper(AcDb::kBoolUnite, nullptr));
    EXPECT_NEAR(kPi, areaOf(*low), 1e-12);
    EXPECT_NEAR(kPi, areaOf(*high), 1e-12);
}
