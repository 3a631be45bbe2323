// Saving as an older version: what it can't hold becomes what it can, is told, and the open drawing
// stays as it is.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include <unistd.h>

#include "helpers.h"
#include "host/os/text.h"

using namespace host;
using namespace dxftest;

namespace {

struct Saved {
    std::string bytes;
    std::vector<std::string> losses;
};

Saved savedAs(AcDbDatabase& database, AcDb::AcDbDwgVersion version) {
    const auto file =
        std::filesystem::temp_directory_path() / ("corvane-versions-" + std::to_string(getpid()));
    WriteOptions options;
    options.version = version;
    Saved saved;
    const WriteReport report = writeDrawing(file, database, options);
    EXPECT_TRUE(report.ok) << report.message;
    saved.bytes = contents(file);
    saved.losses = report.losses;
    std::filesystem::remove(file);
    return saved;
}

long countOf(const Read& read, const std::string& kind) {
    const auto all = read.model();
    return std::count_if(all.begin(), all.end(), [&](const AcDbEntity* e) { return e->dxfName() == kind; });
}

// The values of the groups of one code in an object and its parts, in order.
std::vector<double> reals(const std::string& bytes, const std::string& kind, int code) {
    std::vector<double> found;
    std::istringstream in(bytes);
    std::string number, value, now;
    while (std::getline(in, number) && std::getline(in, value)) {
        if (std::stoi(number) == 0) now = value;
        if (now == kind && std::stoi(number) == code) found.push_back(std::stod(value));
    }
    return found;
}

Codes entity(const std::string& kind, const std::string& handle, const std::string& marker,
             const Codes& rest) {
    Codes groups = {{0, kind}, {5, handle}, {100, "AcDbEntity"}, {8, "0"}, {100, marker}};
    groups.insert(groups.end(), rest.begin(), rest.end());
    return groups;
}

const Codes kEllipse = entity("ELLIPSE", "A1", "AcDbEllipse",
                              {{10, "5"},
                               {20, "0"},
                               {30, "0"},
                               {11, "4"},
                               {21, "0"},
                               {31, "0"},
                               {40, "0.5"},
                               {41, "0"},
                               {42, "6.283185307179586"}});

} // namespace

TEST(OlderVersions, EachKindBecomesWhatR12Knows) {
    const struct {
        Codes groups;
        const char *kind, *sentence;
        long count;
    } rows[] = {
        {kEllipse, "POLYLINE", "1 ellipse was written as polylines", 1},
        {entity("SPLINE", "A1", "AcDbSpline",
                {{70, "8"},
                 {71, "2"},
                 {72, "6"},
                 {73, "3"},
                 {40, "0"},
                 {40, "0"},
                 {40, "0"},
                 {40, "1"},
                 {40, "1"},
                 {40, "1"},
                 {10, "0"},
                 {20, "0"},
                 {30, "0"},
                 {10, "5"},
                 {20, "8"},
                 {30, "3"},
                 {10, "9"},
                 {20, "0"},
                 {30, "0"}}),
         "POLYLINE", "1 spline was written as polylines", 1},
        {entity("MTEXT", "A1", "AcDbMText",
                {{10, "0"}, {20, "0"}, {30, "0"}, {40, "2"}, {71, "1"}, {1, "one\\Ptwo"}}),
         "TEXT", "1 multiline text was written as texts", 2},
        {entity("XLINE", "A1", "AcDbXline",
                {{10, "1"}, {20, "2"}, {30, "0"}, {11, "1"}, {21, "0"}, {31, "0"}}),
         "LINE", "1 construction line was written as lines", 1},
        {entity("THING", "A1", "MyThing", {{40, "1"}}), "THING", "1 entity of the kind THING was left out",
         0},
    };
    for (const auto& row : rows) {
        Read read(drawing(row.groups, "AC1032"));
        const std::string before = drawingBytes(read.database);
        const Saved saved = savedAs(read.database, AcDb::kDHL_1009);
        EXPECT_NE(std::find(saved.losses.begin(), saved.losses.end(), row.sentence), saved.losses.end())
            << row.sentence;
        Read back(saved.bytes);
        EXPECT_EQ(countOf(back, row.kind), row.count) << row.sentence;
        EXPECT_EQ(back.model().size(), size_t(row.count)) << row.sentence;
        EXPECT_EQ(drawingBytes(read.database), before) << row.sentence;
        // What came of it is R12 for good: saved again it is the same.
        EXPECT_EQ(drawingBytes(back.database), saved.bytes) << row.sentence;
        if (row.count == 0) continue;
        EXPECT_EQ(std::uint64_t(back.model()[0]->objectId().handle()), 0xA1u) << row.sentence;
    }
}

// Lines and text each become what R12 knows, where they were.
TEST(OlderVersions, AMultileaderBecomesLinesAndText) {
    Read read(drawing(entity("MULTILEADER", "A1", "AcDbMLeader",
                             {{300, "CONTEXT_DATA{"},
                              {41, "4"},
                              {171, "1"},
                              {304, "Note"},
                              {12, "50"},
                              {22, "22"},
                              {32, "0"},
                              {13, "0"},
                              {23, "1"},
                              {33, "0"},
                              {302, "LEADER{"},
                              {10, "40"},
                              {20, "20"},
                              {30, "0"},
                              {304, "LEADER_LINE{"},
                              {10, "30"},
                              {20, "35"},
                              {30, "0"},
                              {10, "10"},
                              {20, "15"},
                              {30, "0"},
                              {305, "}"},
                              {303, "}"},
                              {301, "}"}}),
                      "AC1032"));
    const Saved saved = savedAs(read.database, AcDb::kDHL_1009);
    EXPECT_EQ(saved.losses.front(), "1 multileader was written as polylines and texts");
    Read back(saved.bytes);
    ASSERT_EQ(back.model().size(), 2u);
    EXPECT_EQ(countOf(back, "POLYLINE"), 1);
    EXPECT_EQ(countOf(back, "TEXT"), 1);
    EXPECT_NE(saved.bytes.find(" 40\n4.0\n  1\nNote\n 50\n90.0\n"), std::string::npos) << "upwards, 4 high";
    EXPECT_EQ(drawingBytes(back.database), saved.bytes);
}

// A cell with a text a frame each, rows below one another.
TEST(OlderVersions, ATolerancesFrameBecomesLinesAndTexts) {
    Read read(drawing(
        entity(
            "TOLERANCE", "A1", "AcDbFcf",
            {{3, "Standard"}, {10, "5"}, {20, "6"}, {30, "0"}, {1, "{\\Fgdt;j}%%v0.5{\\Fgdt;m}%%v%%vA^JB"}}),
        "AC1032"));
    const Saved saved = savedAs(read.database, AcDb::kDHL_1009);
    EXPECT_EQ(saved.losses.back(), "1 tolerance frame was written as polylines and texts");
    Read back(saved.bytes);
    EXPECT_EQ(countOf(back, "POLYLINE"), 4);
    EXPECT_EQ(countOf(back, "TEXT"), 4);
    EXPECT_NE(saved.bytes.find("\\U+2316"), std::string::npos) << "the sign of position";
    EXPECT_EQ(drawingBytes(back.database), saved.bytes);
}

TEST(OlderVersions, AnEllipseKeepsItsShape) {
    Read read(drawing(kEllipse, "AC1032"));
    const std::string bytes = savedAs(read.database, AcDb::kDHL_1009).bytes;
    const auto x = reals(bytes, "VERTEX", 10), y = reals(bytes, "VERTEX", 20);
    ASSERT_GT(x.size(), 32u);
    ASSERT_EQ(x.size(), y.size());
    double area = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        EXPECT_NEAR(std::hypot((x[i] - 5) / 4, y[i] / 2), 1, 1e-9);
        const size_t next = (i + 1) % x.size();
        area += (x[i] * y[next] - x[next] * y[i]) / 2;
    }
    EXPECT_NEAR(std::fabs(area), M_PI * 4 * 2, 0.01);
}

TEST(OlderVersions, NamesAreShortenedApart) {
    const std::string stem = "A layer with a very long name indeed";
    Codes groups;
    for (const std::string& layer : {stem + " one", stem + " two", std::string("walls")})
        groups.insert(groups.end(),
                      {{0, "LINE"}, {100, "AcDbEntity"}, {8, layer}, {100, "AcDbLine"}, {10, "1"}});
    Read read(drawing(groups, "AC1032"));
    const Saved saved = savedAs(read.database, AcDb::kDHL_1014);
    Read back(saved.bytes);
    std::set<std::wstring> layers;
    for (const AcDbEntity* line : back.model()) layers.insert(line->layerName());
    EXPECT_EQ(layers, (std::set<std::wstring>{L"A_LAYER_WITH_A_VERY_LONG_NAME_I",
                                              L"A_LAYER_WITH_A_VERY_LONG_NAME_2", L"WALLS"}));
    EXPECT_EQ(saved.losses, std::vector<std::string>{"2 names were shortened or spelt in other characters"});
}

// An escape has no place in a name of R12: other programs refuse the backslash.
TEST(OlderVersions, NamesOutsideTheCodePageAreSpelt) {
    const std::string header = text({{0, "SECTION"},
                                     {2, "HEADER"},
                                     {9, "$ACADVER"},
                                     {1, "AC1032"},
                                     {9, "$DWGCODEPAGE"},
                                     {3, "ANSI_1252"},
                                     {0, "ENDSEC"}});
    Codes groups = {{0, "SECTION"}, {2, "ENTITIES"}};
    for (const char* layer : {"\u039b1", "\u039b\u0391\u0393\u0395\u03a1\u03a9\u03a9", "U039B1", "\u00c4b",
                              "\u039b\u0391\u0393\u0395\u03a1\u03a9\u0391"})
        groups.insert(groups.end(), {{0, "LINE"}, {8, layer}, {10, "1"}, {11, "2"}});
    groups.insert(groups.end(), {{0, "ENDSEC"}, {0, "EOF"}});
    Read read(header + text(groups));
    ASSERT_TRUE(read.report.ok) << read.report.message;
    Read back(savedAs(read.database, AcDb::kDHL_1009).bytes);
    std::vector<std::wstring> layers;
    for (const AcDbEntity* line : back.model()) layers.push_back(line->layerName());
    EXPECT_EQ(layers, (std::vector<std::wstring>{L"U039B1_2", L"U039BU0391U0393U0395U03A1U03A9U", L"U039B1",
                                                 L"\u00c4B", L"U039BU0391U0393U0395U03A1U03A_2"}));
}

TEST(OlderVersions, TrueColoursBecomeTheNearestOfTheIndex) {
    Read read(
        drawing({{0, "LINE"}, {100, "AcDbEntity"}, {8, "0"}, {420, "16711682"}, {100, "AcDbLine"}, {10, "1"}},
                "AC1032"));
    const Saved saved = savedAs(read.database, AcDb::kDHL_1015);
    EXPECT_EQ(saved.losses,
              std::vector<std::string>{"1 true colour was written as the nearest of the 255 colours"});
    Read back(saved.bytes);
    ASSERT_EQ(back.model().size(), 1u);
    EXPECT_EQ(back.model()[0]->colorIndex(), 1); // red
    EXPECT_FALSE(back.model()[0]->color().isByColor());
}

TEST(Extents, FollowTheDrawingWhenItChanges) {
    const std::string told =
        "9\n$EXTMIN\n 10\n-5.0\n 20\n-5.0\n 30\n0.0\n  9\n$EXTMAX\n 10\n5.0\n 20\n5.0\n 30\n0.0\n";
    std::string bytes =
        drawing({{0, "LINE"}, {8, "0"}, {10, "1"}, {20, "2"}, {11, "7"}, {21, "4"}}, "AC1009");
    bytes.insert(bytes.find("0\nENDSEC"), told);
    Read read(bytes);
    const auto has = [&](const std::string& text) {
        return drawingBytes(read.database).find(text) != std::string::npos;
    };
    EXPECT_TRUE(has(told)); // the file's own word while nothing has changed
    const std::string before = drawingBytes(read.database);
    {
        AcDbObjectPointer<AcDbEntity> line(read.model()[0]->objectId(), AcDb::kForWrite);
        ASSERT_TRUE(line);
        line->transformBy(AcGeMatrix3d::translation(AcGeVector3d(10, 0, 0)));
    }
    EXPECT_TRUE(has("$EXTMIN\n 10\n11.0\n 20\n2.0\n"));
    EXPECT_TRUE(has("$EXTMAX\n 10\n17.0\n 20\n4.0\n"));
    read.database.undoLog().undo();
    EXPECT_EQ(drawingBytes(read.database), before);
}
