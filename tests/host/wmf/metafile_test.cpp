// Metafiles: the bytes that other programs expect, the round trip, cutting at the sheet, and files that are
// broken.
#include <gtest/gtest.h>

#include <cmath>

#include "host/wmf/metafile.h"

using host::Metafile;
using host::metafileBytes;
using host::MetafileReading;
using host::MetafileShape;
using host::readMetafile;

namespace {

using Kind = MetafileShape::Kind;

unsigned word(const std::string& bytes, size_t at) {
    return unsigned(std::uint8_t(bytes[at])) | unsigned(std::uint8_t(bytes[at + 1])) << 8;
}
unsigned dword(const std::string& bytes, size_t at) { return word(bytes, at) | word(bytes, at + 2) << 16; }

Metafile sample() {
    return {
        120,
        80,
        {{Kind::oddEven, 0xFF0000, 0, {{10, 10}, {50, 10}, {30, 60}, {20, 20}, {40, 20}, {30, 40}}, {3, 6}},
         {Kind::stroke, 0x00FF00, 0, {{0, 0}, {120, 80}, {60, 80}}, {3}},
         {Kind::nonZero, 0x0000FF, 0, {{70, 10}, {90, 10}, {90, 30}, {70, 30}}, {4}}},
        0};
}

} // namespace

TEST(Metafile, HeadersSayWhatFollows) {
    const std::string bytes = metafileBytes(sample());
    ASSERT_EQ(0x9AC6CDD7u, dword(bytes, 0));
    unsigned sum = 0;
    for (size_t i = 0; i < 20; i += 2) sum ^= word(bytes, i);
    EXPECT_EQ(sum, word(bytes, 20)) << "checksum of the placeable header";
    EXPECT_EQ(30000u, word(bytes, 10));
    EXPECT_EQ(20000u, word(bytes, 12));
    EXPECT_EQ((bytes.size() - 22) / 2, dword(bytes, 22 + 6)) << "words of the file";
    unsigned largest = 0, objects = 0;
    size_t at = 22 + 18;
    for (; at < bytes.size(); at += 2 * dword(bytes, at)) {
        largest = std::max(largest, dword(bytes, at));
        objects += word(bytes, at + 4) == 0x02FA || word(bytes, at + 4) == 0x02FC;
        ASSERT_GE(dword(bytes, at), 3u);
    }
    EXPECT_EQ(bytes.size(), at);
    EXPECT_EQ(largest, dword(bytes, 22 + 12));
    EXPECT_EQ(objects, word(bytes, 22 + 10));
}

TEST(Metafile, ComesBackAsItWentOut) {
    const Metafile sheet = sample();
    const MetafileReading back = readMetafile(metafileBytes(sheet));
    ASSERT_EQ("", back.error);
    ASSERT_EQ(sheet.shapes.size(), back.sheet.shapes.size());
    const double unit = sheet.width / back.sheet.width;
    for (size_t i = 0; i < sheet.shapes.size(); ++i) {
        EXPECT_EQ(sheet.shapes[i].kind, back.sheet.shapes[i].kind);
        EXPECT_EQ(sheet.shapes[i].rgb, back.sheet.shapes[i].rgb);
        EXPECT_EQ(sheet.shapes[i].ends, back.sheet.shapes[i].ends);
        ASSERT_EQ(sheet.shapes[i].points.size(), back.sheet.shapes[i].points.size());
        for (size_t k = 0; k < sheet.shapes[i].points.size(); ++k)
            EXPECT_LE(sheet.shapes[i].points[k].distanceTo(
                          AcGePoint2d() + (back.sheet.shapes[i].points[k] - AcGePoint2d()) * unit),
                      120.0 / 30000);
    }
}

TEST(Metafile, CutsWhatLiesFarOutside) {
    Metafile sheet{100, 100, {}, 0};
    sheet.shapes.push_back({Kind::stroke, 0, 0, {{-1e6, 50}, {1e6, 50}, {1e6, 60}, {-1e6, 60}}, {4}});
    sheet.shapes.push_back({Kind::oddEven, 0, 0, {{-1e9, -1e9}, {1e9, -1e9}, {0, 1e9}}, {3}});
    sheet.shapes.push_back({Kind::oddEven, 0, 0, {{500, 500}, {600, 500}, {500, 600}}, {3}});
    const MetafileReading back = readMetafile(metafileBytes(sheet));
    ASSERT_EQ(3u, back.sheet.shapes.size()) << "two lines and a polygon";
    for (const MetafileShape& shape : back.sheet.shapes)
        for (const AcGePoint2d& p : shape.points) {
            EXPECT_LE(std::abs(p.x / back.sheet.width - 0.5), 0.56);
            EXPECT_LE(std::abs(p.y / back.sheet.height - 0.5), 0.56);
        }
    EXPECT_NEAR(0.5, back.sheet.shapes[0].points[0].y / back.sheet.height, 1e-4);
}

TEST(Metafile, LongPolylinesAreSplitWithoutGaps) {
    Metafile sheet{100, 100, {{Kind::stroke, 0, 0, {}, {}}}, 0};
    for (int i = 0; i < 150'000; ++i)
        sheet.shapes[0].points.push_back({50 + 40 * std::cos(i * 1e-4), 50 + 40 * std::sin(i * 1e-4)});
    sheet.shapes[0].ends.push_back(150'000);
    const MetafileReading back = readMetafile(metafileBytes(sheet));
    ASSERT_EQ(3u, back.sheet.shapes.size());
    for (const size_t i : {1u, 2u})
        EXPECT_EQ(back.sheet.shapes[i - 1].points.back(), back.sheet.shapes[i].points.front());
}

TEST(Metafile, BrokenFilesAreRefusedOrReadAsFarAsTheyMakeSense) {
    const std::string whole = metafileBytes(sample());
    EXPECT_NE("", readMetafile("").error);
    EXPECT_NE("", readMetafile("BM no metafile at all, but long enough to be one").error);
    for (size_t length = 0; length < whole.size(); ++length) readMetafile(whole.substr(0, length));
    unsigned random = 1;
    for (int round = 0; round < 20'000; ++round) {
        std::string broken = whole;
        for (int i = 0; i < 3; ++i) {
            random = random * 1664525 + 1013904223;
            broken[40 + (random >> 8) % (broken.size() - 40)] = char(random >> 24);
        }
        const MetafileReading reading = readMetafile(broken);
        size_t points = 0;
        for (const MetafileShape& shape : reading.sheet.shapes) {
            points += shape.points.size();
            if (!shape.ends.empty()) {
                EXPECT_EQ(shape.points.size(), shape.ends.back());
            }
        }
        EXPECT_LE(points, broken.size());
    }
    EXPECT_EQ("", metafileBytes({0, 10, {}, 0}));
    EXPECT_EQ("", metafileBytes({std::nan(""), 10, {}, 0}));
}
