// Modeller's texts that are damaged or made to harm: they are understood or not, in little time, without a
// number that can't be.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

#include "host/os/text.h"
#include "host/solid/modeler_faces.h"
#include "host/solid/modeler_wires.h"
#include "host/solid/modeler_write.h"

namespace {

constexpr const char* kHead = "400 0 1 0\n8 Somebody 3 ASM 3 now\n1 1e-6 1e-10\n";

host::ModelerText read(const std::string& text) { return host::readModelerText(host::modelerGroups(text)); }

std::string to(size_t record) { return " $" + std::to_string(record); }

bool isFinite(const AcDbExtents& box) {
    const AcGePoint3d &a = box.minPoint(), &b = box.maxPoint();
    return !box.isValid() || std::isfinite(a.x + a.y + a.z + b.x + b.y + b.z);
}

// A half disc, its bow first a conic, then a B-spline: all kinds of records.
std::string halfDisc(const std::string& bow) {
    return kHead + ("body $-1 $1 $-1 $2 #\nlump $-1 $-1 $3 $0 #\n"
                    "transform $-1 1 0 0 0 1 0 0 0 1 100 0 7 2 no_rotate no_reflect no_shear #\n"
                    "shell $-1 $-1 $-1 $4 $-1 $1 #\nface $-1 $-1 $5 $3 $-1 $6 forward double out #\n"
                    "loop $-1 $-1 $7 $4 #\nplane-surface $-1 0 0 0 0 0 1 1 0 0 forward_v I I I I #\n"
                    "coedge $-1 $8 $8 $-1 $9 forward $5 $-1 #\ncoedge $-1 $7 $7 $-1 $10 forward $5 $-1 #\n"
                    "edge $-1 $11 $12 $7 $13 forward #\nedge $-1 $12 $11 $8 $14 forward #\n"
                    "vertex $-1 $9 $15 #\nvertex $-1 $9 $16 #\n" +
                    bow + "straight-curve $-1 -2 0 0 1 0 0 I I #\npoint $-1 2 0 0 #\npoint $-1 -2 0 0 #\n");
}
const std::string kConicBow = "ellipse-curve $-1 0 0 0 0 0 1 2 0 0 1 I I #\n";
const std::string kSplineBow = "intcurve-curve $-1 forward { exactcur full nubs 2 open 2 0 2 1 2 2 0 0 0 4 0 "
                               "-2 0 0 0 null_surface null_surface nullbs nullbs } I I #\n";

// Chains of so many lumps, shells, faces and loops, each of which owns all of the next chain.
std::string ownedByAll(size_t length) {
    std::string text = kHead + std::string("body $-1 $1 $-1 $-1 #\n");
    const size_t shells = 1 + length, faces = shells + length, loops = faces + length, plane = loops + length;
    const auto chain = [&](const char* kind, size_t first, const char* between, size_t owned,
                           const std::string& rest) {
        for (size_t i = 0; i < length; ++i)
            text += kind + (i + 1 < length ? to(first + i + 1) : std::string(" $-1")) + between + to(owned) +
                    rest + " #\n";
    };
    chain("lump $-1", 1, "", shells, " $0");
    chain("shell $-1", shells, " $-1", faces, " $-1 $1");
    chain("face $-1", faces, "", loops, " $-1 $-1" + to(plane) + " forward single");
    chain("loop $-1", loops, "", plane + 1, " $-1");
    const std::string edge = to(plane + 2), vertex = to(plane + 3);
    return text + "plane-surface $-1 0 0 0 0 0 1 1 0 0 forward_v I I I I #\ncoedge $-1" + to(plane + 1) +
           to(plane + 1) + " $-1" + edge + " forward $-1 $-1 #\nedge $-1" + vertex + vertex + to(plane + 1) +
           to(plane + 4) + " forward #\nvertex $-1" + edge + to(plane + 5) + " #\n" + kConicBow +
           "point $-1 2 0 0 #\n";
}

// One long spline, and so many edges that all run along it.
std::string edgesAlongOne(size_t edges, size_t knots) {
    std::string text = kHead + std::string("vertex $-1 $0 $1 #\npoint $-1 0 0 0 #\n");
    text += "intcurve-curve $-1 forward { exactcur full nubs 1 open " + std::to_string(knots);
    for (size_t i = 0; i < knots; ++i) text += " " + std::to_string(i) + " 1";
    for (size_t i = 0; i < knots; ++i) text += " " + std::to_string(i) + " 0 0";
    text += " } I I #\n";
    for (size_t i = 0; i < edges; ++i) text += "edge $-1 $0 $0 $-1 $2 forward #\n";
    return text;
}

} // namespace

TEST(BrokenModelerText, OwnedByManyCostsNoMoreThanItsLength) {
    EXPECT_TRUE(host::facesOf(read(ownedByAll(1))));
    EXPECT_FALSE(host::facesOf(read(ownedByAll(25))));
    EXPECT_EQ(2u, host::wiresOf(read(edgesAlongOne(2, 1000))).size());
    EXPECT_GT(500u, host::wiresOf(read(edgesAlongOne(2000, 1000))).size());
}

// Words of sound texts are left out, exchanged, replaced by what harms.
TEST(BrokenModelerText, GivesNoNumbersThatCannotBe) {
    const char* const harmful[] = {"$-1", "$0",  "$99", "-1",    "0",      "1e308",   "-1e308",
                                   "nan", "inf", "#",   "1e200", "1e-320", "forward", "$-99999999999"};
    std::mt19937 random(7);
    const auto upTo = [&](size_t count) { return size_t(random() % count); };
    int understood = 0;
    for (const std::string& bow : {kConicBow, kSplineBow}) {
        const std::string sound = halfDisc(bow);
        ASSERT_TRUE(host::facesOf(read(sound)));
        for (int run = 0; run < 3000; ++run) {
            std::string text = sound;
            for (size_t changes = 1 + upTo(3); changes > 0; --changes) {
                const size_t from = text.find(' ', std::strlen(kHead) + upTo(text.size() - 100));
                if (from == text.npos) continue;
                const size_t length = std::min(text.find_first_of(" \n", from + 1), text.size()) - from;
                text.replace(from, upTo(9) ? length : upTo(200),
                             std::string(" ") + harmful[upTo(std::size(harmful))]);
            }
            const host::ModelerText modeler = read(text);
            AcDbExtents box;
            if (const auto faces = host::facesOf(modeler)) {
                EXPECT_TRUE(isFinite(host::extentsOf(*faces))) << text;
                for (const host::PlanarFace& face : *faces)
                    EXPECT_TRUE(std::isfinite(host::areaOf(face))) << text;
                ++understood;
            }
            for (const host::CurvePath& wire : host::wiresOf(modeler)) box.addExt(wire.extents());
            EXPECT_TRUE(isFinite(box)) << text;
            if (HasFailure()) return;
        }
    }
    EXPECT_GT(understood, 100);
}

TEST(MovedBodies, TellWhetherTheyAreTurnedOrMirrored) {
    const std::string still = halfDisc(kConicBow);
    const auto flags = [&](const AcGeMatrix3d& matrix, const std::string& text) {
        const auto moved = host::movedModelerText(read(text), matrix);
        if (!moved) return std::string("none");
        const size_t from = moved->find("rotate");
        return from == moved->npos ? "no flags" : moved->substr(moved->rfind(' ', from), 28);
    };
    const AcGeMatrix3d move = AcGeMatrix3d::translation({1, 2, 3}),
                       turn = AcGeMatrix3d::rotation(1, AcGeVector3d::kZAxis),
                       mirror = AcGeMatrix3d().setToMirroring(AcGePlane({}, AcGeVector3d::kXAxis));
    std::string bare = still;
    bare.replace(bare.find("$-1 $2 #"), 8, "$-1 $-1 #");
    bare.replace(bare.find("transform"), 9, "nothing");
    bare.replace(bare.find(" no_rotate no_reflect no_shear"), 30, "");
    for (const std::string& text : {still, bare}) {
        EXPECT_EQ(" no_rotate no_reflect no_she", flags(move, text));
        EXPECT_EQ(" rotate no_reflect no_shear ", flags(turn, text));
        EXPECT_EQ(" rotate reflect no_shear #", flags(mirror, text).substr(0, 26));
    }
    AcGeMatrix3d away;
    away.entry[0][3] = 1e308;
    const auto first = host::movedModelerText(read(still), away);
    ASSERT_TRUE(first);
    EXPECT_FALSE(host::movedModelerText(read(first->substr(1)), AcGeMatrix3d::scaling(100)));

    // Two bodies at one place go together.
    const auto both = host::movedModelerText(read(still + "body $-1 $-1 $-1 $2 #\n"), move);
    ASSERT_TRUE(both);
    const std::string place = " 101.0 2.0 10.0 2.0 no_rotate";
    EXPECT_NE(both->npos, both->find(place)) << *both;
    EXPECT_EQ(both->find(place), both->rfind(place));
}
