// Regions as files hold them: the cipher, records of several versions, and what is broken.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/dxf/dxf.h"
#include "host/ent/register.h"
#include "host/os/text.h"
#include "host/solid/modeler_faces.h"
#include "host/solid/modeler_write.h"
#include "host/solid/region.h"

namespace {

constexpr double kPi = std::numbers::pi;

std::string ciphered(const std::string& plain) {
    std::string line;
    for (const char c : plain) {
        line += c > ' ' ? char(0x9F - c) : c;
        if (line.back() == '^') line += ' ';
    }
    return line;
}

// The text of a region as a drawing in R2000.
std::string drawingWith(const std::string& modeler) {
    std::string text =
        "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  0\nENDSEC\n  0\nSECTION\n  2\n"
        "ENTITIES\n  0\nREGION\n  5\nABC\n100\nAcDbEntity\n  8\n0\n100\nAcDbModelerGeometry\n 70\n"
        "     1\n";
    size_t from = 0;
    for (size_t end = modeler.find('\n'); end != modeler.npos; end = modeler.find('\n', from)) {
        text += "  1\n" + ciphered(modeler.substr(from, end - from)) + "\n";
        from = end + 1;
    }
    return text + "  0\nENDSEC\n  0\nEOF\n";
}

class Opened {
public:
    explicit Opened(const std::string& modeler) {
        host::registerEntityClasses();
        host::registerSolidClasses();
        EXPECT_TRUE(host::readDrawingBytes(drawingWith(modeler), "region.dxf", database, {}).ok);
        AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForRead);
        for (const AcDbObjectId id : space->entities()) region.open(id, AcDb::kForRead);
        EXPECT_TRUE(region);
    }
    AcDbDatabase database{false};
    AcDbObjectPointer<AcDbRegion> region;
    double area() const {
        double area = -1;
        region->getArea(area);
        return area;
    }
};

// A square of side 10 with a round hole of radius 2 about (4,4), doubled and moved by (100,0,7). The second
// edge of the square stands in the file against its curve's sense, its coedge against the edge.
const char* const kSquareWithHole = R"(400 40 1 0
8 Somebody 4 ASM  3 now
1 9.9999999999999995e-007 1e-010
body $-1 $1 $-1 $2 #
lump $-1 $-1 $3 $0 #
transform $-1 1 0 0 0 1 0 0 0 1 100 0 7 2 no_rotate no_reflect no_shear #
shell $-1 $-1 $-1 $4 $-1 $1 #
face $-1 $-1 $5 $3 $-1 $6 forward double out #
loop $-1 $7 $8 $4 #
plane-surface $-1 0 0 0 0 0 1 1 0 0 forward_v I I I I #
loop $-1 $-1 $31 $4 #
coedge $-1 $9 $11 $-1 $12 forward $5 $-1 #
coedge $-1 $10 $8 $-1 $13 reversed $5 $-1 #
coedge $-1 $11 $9 $-1 $14 forward $5 $-1 #
coedge $-1 $8 $10 $-1 $15 forward $5 $-1 #
edge $-1 $16 $17 $8 $20 forward #
edge $-1 $18 $17 $9 $21 reversed #
edge $-1 $18 $19 $10 $22 forward #
edge $-1 $19 $16 $11 $23 forward #
vertex $-1 $12 $24 #
vertex $-1 $12 $25 #
vertex $-1 $13 $26 #
vertex $-1 $14 $27 #
straight-curve $-1 0 0 0 1 0 0 I I #
straight-curve $-1 10 0 0 0 1 0 I I #
straight-curve $-1 10 10 0 -1 0 0 F 0 F 10 #
straight-curve $-1 0 10 0 0 -1 0 I I #
point $-1 0 0 0 #
point $-1 10 0 0 #
point $-1 10 10 0 #
point $-1 0 10 0 #
vertex $-1 $29 $30 #
edge $-1 $28 $28 $31 $32 forward #
point $-1 6 4 0 #
coedge $-1 $31 $31 $-1 $29 reversed $7 $-1 #
ellipse-curve $-1 4 4 0 0 0 1 2 0 0 1 I I #
)";

// Half of an ellipse with radii 6 and 3 over its long axis, in the manner of version 7: an index, a history.
const char* const kHalfEllipse = R"(700 0 1 0
@8 Somebody @8 ACIS 7.0 @3 now
1 9.9999999999999995e-007 1e-010
-0 body $-1 -1 $-1 $1 $-1 $-1 #
-1 lump $-1 -1 $-1 $-1 $2 $0 #
-2 shell $-1 -1 $-1 $-1 $-1 $3 $-1 $1 #
-3 face $-1 -1 $-1 $-1 $4 $2 $-1 $5 forward single #
-4 loop $-1 -1 $-1 $-1 $6 $3 #
-5 plane-surface $-1 -1 $-1 0 0 0 0 0 1 1 0 0 forward_v I I I I #
-6 coedge $-1 -1 $-1 $7 $7 $-1 $8 forward $4 $-1 #
-7 coedge $-1 -1 $-1 $6 $6 $-1 $9 forward $4 $-1 #
-8 edge $-1 -1 $-1 $10 0 $11 3.14 $6 $12 forward @7 unknown #
-9 edge $-1 -1 $-1 $11 -6 $10 6 $7 $13 forward @7 unknown #
-10 vertex $-1 -1 $-1 $8 $14 #
-11 vertex $-1 -1 $-1 $8 $15 #
-12 ellipse-curve $-1 -1 $-1 0 0 0 0 0 1 6 0 0 0.5 I I #
-13 straight-curve $-1 -1 $-1 0 0 0 1 0 0 I I #
-14 point $-1 -1 $-1 6 0 0 #
-15 point $-1 -1 $-1 -6 0 0 #
End-of-ACIS-data
)";

// Under the parabola y = 4x(1-x) as a B-spline, closed by its chord.
const char* const kParabola = R"(400 0 1 0
8 Somebody 4 ASM  3 now
1 1e-006 1e-010
body $-1 $1 $-1 $-1 #
lump $-1 $-1 $2 $0 #
shell $-1 $-1 $-1 $3 $-1 $1 #
face $-1 $-1 $4 $2 $-1 $5 reversed single #
loop $-1 $-1 $6 $3 #
plane-surface $-1 0 0 0 0 0 1 1 0 0 forward_v I I I I #
coedge $-1 $7 $7 $-1 $8 forward $4 $-1 #
coedge $-1 $6 $6 $-1 $9 forward $4 $-1 #
edge $-1 $10 $11 $6 $12 forward #
edge $-1 $11 $10 $7 $13 forward #
vertex $-1 $8 $14 #
vertex $-1 $8 $15 #
intcurve-curve $-1 reversed { exactcur full nubs 2 open 2 0 2 1 2
1 0 0 0.5 2 0 0 0 0 0 null_surface null_surface nullbs nullbs } I I #
straight-curve $-1 0 0 0 1 0 0 I I #
point $-1 0 0 0 #
point $-1 1 0 0 #
)";

} // namespace

TEST(ModelerText, IsCiphered) {
    EXPECT_EQ("400 42 1 0", host::plainModelerText("koo km n o"));
    EXPECT_EQ("Autodesk AutoCAD", host::plainModelerText("^ *+0;:,4 ^ *+0\\^ ["));
    EXPECT_EQ("ends in ^", host::plainModelerText(ciphered("ends in ") + "A")) << "0x9F - 'A' is '^' itself";
}

TEST(RegionsOfFiles, AreUnderstood) {
    const struct {
        const char* caption;
        const char* modeler;
        double area;
        AcGePoint3d least, most;
        int curves;
    } rows[] = {
        {"hole, transform, reversed edges",
         kSquareWithHole,
         4 * (100 - 4 * kPi),
         {100, 0, 7},
         {120, 20, 7},
         5},
        {"half an ellipse, version 7", kHalfEllipse, kPi * 6 * 3 / 2, {-6, 0, 0}, {6, 3, 0}, 2},
        {"B-spline", kParabola, 2.0 / 3, {0, 0, 0}, {1, 1, 0}, 2},
    };
    for (const auto& row : rows) {
        const Opened opened(row.modeler);
        EXPECT_NEAR(row.area, opened.area(), 1e-9) << row.caption;
        AcDbExtents box;
        ASSERT_EQ(Acad::eOk, opened.region->getGeomExtents(box)) << row.caption;
        EXPECT_LT(box.minPoint().distanceTo(row.least), 1e-9) << row.caption;
        EXPECT_LT(box.maxPoint().distanceTo(row.most), 1e-9) << row.caption;
        AcDbVoidPtrArray parts;
        ASSERT_EQ(Acad::eOk, opened.region->explode(parts));
        EXPECT_EQ(row.curves, parts.length()) << row.caption;
        for (void* part : parts) delete static_cast<AcDbEntity*>(part);
    }
}

TEST(RegionsOfFiles, ComeBackByteForByte) {
    for (const char* modeler : {kSquareWithHole, "400 1 1 0\nx\ny\nbody of clay #\n"}) {
        Opened opened(modeler);
        opened.area();
        const std::string once = host::drawingBytes(opened.database);
        AcDbDatabase again(false);
        ASSERT_TRUE(host::readDrawingBytes(once, "again.dxf", again, {}).ok);
        EXPECT_EQ(once, host::drawingBytes(again));
        for (const std::string line : {"body", "lump"})
            EXPECT_EQ(std::string(modeler).find(line) != std::string::npos,
                      once.find(ciphered(line)) != once.npos);
    }
}

// A region that was moved, turned, mirrored or stretched is written anew and comes back as it was left.
TEST(RegionsOfFiles, ComeBackAsTheyWereChanged) {
    const AcGePlane mirror(AcGePoint3d(3, 0, 0), AcGeVector3d(1, 2, 0));
    AcGeMatrix3d stretch;
    stretch.entry[0][0] = 3;
    const AcGeMatrix3d matrices[] = {AcGeMatrix3d::translation({5, 6, -1e6 / 3}),
                                     AcGeMatrix3d::rotation(0.7, {1, 2, 3}), stretch,
                                     AcGeMatrix3d().setToMirroring(mirror)};
    for (const char* modeler : {kSquareWithHole, kHalfEllipse, kParabola})
        for (const AcGeMatrix3d& matrix : matrices) {
            Opened opened(modeler);
            const double before = opened.area();
            opened.region->upgradeOpen();
            ASSERT_EQ(Acad::eOk, opened.region->transformBy(matrix));
            const double after = opened.area();
            EXPECT_NEAR(before * std::abs(matrix.det()), after, 1e-7 * before) << "plane images";
            AcDbExtents box, again;
            ASSERT_EQ(Acad::eOk, opened.region->getGeomExtents(box));
            opened.region.close();
            AcDbDatabase second(false);
            ASSERT_TRUE(host::readDrawingBytes(host::drawingBytes(opened.database), "a.dxf", second, {}).ok);
            AcDbObjectPointer<AcDbBlockTableRecord> space(second.modelSpaceId(), AcDb::kForRead);
            AcDbObjectPointer<AcDbRegion> region(space->entities().at(0), AcDb::kForRead);
            ASSERT_TRUE(region);
            double area = 0;
            ASSERT_EQ(Acad::eOk, region->getArea(area));
            EXPECT_NEAR(after, area, 1e-9 * after);
            ASSERT_EQ(Acad::eOk, region->getGeomExtents(again));
            EXPECT_LT(box.minPoint().distanceTo(again.minPoint()), 1e-9 * (1 + 1e6));
            EXPECT_LT(box.maxPoint().distanceTo(again.maxPoint()), 1e-9 * (1 + 1e6));
        }
}

TEST(ModelerGroups, KeepLongLinesInPieces) {
    std::string text = "first\n";
    for (int i = 0; i < 100; ++i) text += " " + std::to_string(i * 1000003) + " A^";
    text += " #\n" + std::string(600, 'x') + "\n";
    const host::GroupList groups = host::modelerGroups("1\n2\n3\n" + text);
    for (const host::Group group : groups) EXPECT_LE(group.text.size(), 255u);
    const host::ModelerText read = host::readModelerText(groups);
    ASSERT_EQ(1u, read.records.size());
    EXPECT_EQ(200u, read.records[0].fields.size());
    EXPECT_EQ("A^", read.records[0].fields.back());
}

// A region is understood whole or not at all, and nothing it holds can do harm.
TEST(RegionsOfFiles, ThatAreBrokenAreKeptAndShowNothing) {
    const std::string whole = kSquareWithHole;
    std::vector<std::string> broken;
    for (size_t at = whole.find('#'); at != whole.npos; at = whole.find('#', at + 1))
        broken.push_back(whole.substr(0, at) + "\n"); // a record and all behind it are gone
    const std::pair<const char*, const char*> changes[] = {
        {"coedge $-1 $9 $11", "coedge $-1 $99 $11"},
        {"coedge $-1 $9 $11", "coedge $-1 $-1 $11"},
        {"coedge $-1 $10 $8", "coedge $-1 $9 $8"},
        {"face $-1 $-1 $5", "face $-1 $4 $5"},
        {"loop $-1 $7 $8", "loop $-1 $5 $8"},
        {"ellipse-curve $-1 4 4 0 0 0 1", "ellipse-curve $-1 4 4 0 0 0 0"},
        {"ellipse-curve $-1 4", "ellipse-curve $-1 nan"},
        {"plane-surface", "cone-surface"},
        {"point $-1 10 0 0", "point $-1 10 0"},
        {"forward $5 $-1 #\ncoedge", "sideways $5 $-1 #\ncoedge"},
        {"0 0 1 100 0 7 2", "0 0 1 100 0 7 0"}};
    for (const auto& [from, to] : changes) {
        std::string changed = whole;
        ASSERT_NE(changed.npos, changed.find(from)) << from;
        broken.push_back(changed.replace(changed.find(from), std::string(from).size(), to));
    }
    for (const std::string& text : broken) {
        const Opened opened(text);
        AcDbExtents box;
        EXPECT_TRUE(opened.region->isNull()) << text;
        EXPECT_NE(Acad::eOk, opened.region->getGeomExtents(box));
        AcDbVoidPtrArray parts;
        EXPECT_NE(Acad::eOk, opened.region->explode(parts));
    }
    for (const char* change : {"nubs 25 open", "nubs 2 open 999999999", "nubs 2 periodic"}) {
        std::string text = kParabola;
        text.replace(text.find("nubs 2 open"), 11, change);
        EXPECT_TRUE(Opened(text).region->isNull()) << change;
    }
}
