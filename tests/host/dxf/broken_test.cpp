// Broken files: the message tells where and why, recovery keeps what stands before, and no bytes
// whatever make the reader crash, hang or take memory out of proportion.
#include <gtest/gtest.h>

#include <random>

#include "helpers.h"

using namespace host;
using namespace dxftest;

namespace {

// Reads whatever it is, both ways; what could be read can be written and read again.
void survive(const std::string& bytes, const std::string& what) {
    Read strict(bytes);
    EXPECT_EQ(strict.report.ok, strict.report.message.empty()) << what;
    ReadOptions recovering;
    recovering.recover = true;
    Read rescued(bytes, recovering);
    if (!rescued.report.ok) return;
    const std::string saved = drawingBytes(rescued.database);
    Read again(saved);
    ASSERT_TRUE(again.report.ok) << what << ": " << again.report.message;
    EXPECT_TRUE(drawingBytes(again.database) == saved) << what;
}

} // namespace

TEST(Broken, MessagesTellLineSectionAndReason) {
    const std::string head = text({{0, "SECTION"}, {2, "ENTITIES"}, {0, "LINE"}, {8, "0"}});
    const struct {
        std::string bytes, line, section, reason;
    } rows[] = {
        {"", "", "", "empty"},
        {"hello world\nthis is text\n", "line 1", "", "a group code was expected"},
        {"1\nx\n", "line 1", "", "begins with"},
        {head + "40\nabc\n", "line 9", "section ENTITIES, LINE", "group 40 needs a number, found \"abc\""},
        {head + "x\n1\n", "line 9", "section ENTITIES, LINE", "a group code was expected"},
        {head + "10\n1.0\n20", "line 11", "section ENTITIES, LINE", "before its value"},
        {head + "10\n1.0\n", "line", "section ENTITIES, LINE", "inside an object"},
        {head + "102\n{LIST\n0\nLINE\n", "line 11", "section ENTITIES", "no end"},
        {text({{0, "SECTION"}, {2, "BLOCKS"}, {0, "LINE"}}), "line 5", "section BLOCKS",
         "a block was expected"},
        {text({{0, "LINE"}, {8, "0"}}), "line 1", "", "outside any section"},
        {text({{0, "SECTION"}, {0, "ENDSEC"}}), "line 3", "", "no name"},
    };
    for (const auto& row : rows) {
        Read read(row.bytes);
        EXPECT_FALSE(read.report.ok) << row.bytes;
        for (const std::string& part : {std::string("test.dxf: "), row.line, row.section, row.reason})
            EXPECT_NE(read.report.message.find(part), std::string::npos)
                << read.report.message << " / " << part;
    }
    Read dwg(std::string("AC1032\0\0\0\0", 10) + "x");
    EXPECT_NE(dwg.report.message.find("DWG"), std::string::npos);
}

TEST(Broken, RecoveryKeepsWhatStandsBeforeTheFault) {
    std::string bytes = drawing(
        {{0, "LINE"}, {8, "0"}, {10, "1"}, {0, "LINE"}, {8, "0"}, {10, "abc"}, {0, "LINE"}, {8, "0"}});
    EXPECT_FALSE(Read(bytes).report.ok);
    ReadOptions options;
    options.recover = true;
    Read rescued(bytes, options);
    EXPECT_TRUE(rescued.report.ok);
    EXPECT_EQ(rescued.model().size(), 1u);
    EXPECT_NE(rescued.report.message.find("was kept"), std::string::npos) << rescued.report.message;
}

TEST(Broken, FilesCutAnywhereDoNoHarm) {
    for (const char* name :
         {"multi-insert-attribs", "ascii-r12-greek-escapes", "binary-r13", "gis-wipeout-binary",
          "diamond-binary-tiny", "versions-polyline-r12-binary", "gis-assorted"}) {
        const std::string whole = contents(drawingsFolder() / (std::string(name) + ".dxf"));
        const size_t step = std::max<size_t>(1, whole.size() / 97);
        for (size_t length = 0; length < whole.size(); length += step)
            survive(whole.substr(0, length), std::string(name) + " cut at " + std::to_string(length));
    }
}

TEST(Broken, ChangedBytesDoNoHarm) {
    constexpr unsigned kSeed = 4711;
    std::mt19937 random(kSeed);
    for (const char* name :
         {"multi-insert-attribs", "ascii-r12-greek-escapes", "binary-r13", "diamond-binary-tiny",
          "gis-insert-recursive-pair", "polylines-2d-3d", "linetypes-complex"}) {
        const std::string whole = contents(drawingsFolder() / (std::string(name) + ".dxf"));
        for (int round = 0; round < 60; ++round) {
            std::string bytes = whole;
            for (int flips = 1 + int(random() % 6); flips > 0; --flips)
                bytes[random() % bytes.size()] = char(random());
            if (round % 3 == 0) bytes.erase(random() % bytes.size(), random() % 40);
            survive(bytes, std::string(name) + ", seed " + std::to_string(kSeed) + ", round " +
                               std::to_string(round));
        }
    }
}

TEST(Broken, LinesInAnyOrderDoNoHarm) {
    std::mt19937 random(815);
    const std::string whole = contents(drawingsFolder() / "gis-insert-recursive-pair.dxf");
    std::vector<std::string> pairs;
    for (size_t at = 0; at < whole.size();) {
        size_t end = whole.find('\n', whole.find('\n', at) + 1);
        end = end == std::string::npos ? whole.size() : end + 1;
        pairs.push_back(whole.substr(at, end - at));
        at = end;
    }
    for (int round = 0; round < 200; ++round) {
        std::vector<std::string> mixed = pairs;
        for (int swaps = 0; swaps < 12; ++swaps)
            std::swap(mixed[random() % mixed.size()], mixed[random() % mixed.size()]);
        std::string bytes;
        for (const std::string& pair : mixed) bytes += pair;
        survive(bytes, "round " + std::to_string(round));
    }
}

TEST(Broken, StatedCountsTakeNoMemory) {
    const std::string bytes = drawing({{0, "LWPOLYLINE"},
                                       {100, "AcDbEntity"},
                                       {8, "0"},
                                       {100, "AcDbPolyline"},
                                       {90, "2000000000"},
                                       {10, "1"},
                                       {20, "1"},
                                       {0, "HATCH"},
                                       {100, "AcDbEntity"},
                                       {8, "0"},
                                       {100, "AcDbHatch"},
                                       {91, "2147483647"},
                                       {0, "SPLINE"},
                                       {100, "AcDbEntity"},
                                       {8, "0"},
                                       {100, "AcDbSpline"},
                                       {71, "3"},
                                       {72, "32767"},
                                       {73, "2000000000"}});
    Read read(bytes);
    EXPECT_TRUE(read.report.ok) << read.report.message;
    EXPECT_EQ(read.model().size(), 3u);
}

TEST(Broken, ReadingCanBeCancelled) {
    const std::string bytes = drawing(manyLines(100000));
    ReadOptions options;
    int asked = 0;
    options.progress = [&](double part) {
        EXPECT_GE(part, 0);
        EXPECT_LE(part, 1);
        return ++asked < 3;
    };
    Read read(bytes, options);
    EXPECT_EQ(asked, 3);
    EXPECT_TRUE(read.report.cancelled);
    EXPECT_FALSE(read.report.ok);
}
