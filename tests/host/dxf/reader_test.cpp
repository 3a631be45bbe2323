// Unusual but honest files, each one a row or a case: what they become, and what is told of them.
#include <gtest/gtest.h>

#include "helpers.h"
#include "host/dxf/tables.h"

using namespace host;
using namespace dxftest;

namespace {

Codes operator+(Codes a, const Codes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const Codes kLine = {{0, "LINE"}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}};

std::string section(const std::string& name, const Codes& groups) {
    return text(Codes{{0, "SECTION"}, {2, name}} + groups + Codes{{0, "ENDSEC"}});
}

const std::string kEnd = text({{0, "EOF"}});

} // namespace

TEST(Reader, HandlesAreKeptAndThoseThatClashAreReplaced) {
    const std::string bytes = drawing({{0, "LINE"},
                                       {5, "2A"},
                                       {8, "0"},
                                       {0, "LINE"},
                                       {8, "0"},
                                       {0, "LINE"},
                                       {5, "2A"},
                                       {8, "0"},
                                       {0, "LINE"},
                                       {5, "FFFFFFFFFFFFFFFF"},
                                       {8, "0"},
                                       {0, "LINE"},
                                       {5, "7777"},
                                       {8, "0"}});
    Read read(bytes);
    ASSERT_TRUE(read.report.ok) << read.report.message;
    const auto lines = read.model();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(std::uint64_t(lines[0]->objectId().handle()), 0x2Au);
    EXPECT_EQ(std::uint64_t(lines[4]->objectId().handle()), 0x7777u);
    std::set<std::uint64_t> all;
    for (const auto* line : lines) all.insert(line->objectId().handle());
    EXPECT_EQ(all.size(), 5u);
    // Handles given out must not take those that stand further on in the file.
    for (size_t i : {1u, 2u, 3u}) EXPECT_GT(std::uint64_t(lines[i]->objectId().handle()), 0x7777u);
    EXPECT_TRUE(read.noted("taken already"));
    EXPECT_TRUE(read.noted("too high"));
}

TEST(Reader, SequencesWithoutEndMarkGetOne) {
    const Codes polyline = {{0, "POLYLINE"}, {8, "A"},      {66, "1"}, {0, "VERTEX"}, {8, "A"},
                            {10, "1"},       {0, "VERTEX"}, {8, "A"},  {10, "2"}};
    Read read(drawing(polyline + kLine, "AC1009"));
    ASSERT_TRUE(read.report.ok) << read.report.message;
    const auto entities = read.model();
    ASSERT_EQ(entities.size(), 2u);
    std::vector<AcDbObjectId> parts;
    entities[0]->ownedParts(parts);
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[2].cell()->object->dxfName(), "SEQEND");
    EXPECT_EQ(parts[0].cell()->object->ownerId(), entities[0]->objectId());
    EXPECT_TRUE(read.noted("no end mark"));
}

TEST(Reader, StraySequencePartsAreNoReasonToFail) {
    Read read(
        drawing(Codes{{0, "SEQEND"}, {8, "0"}, {0, "ATTRIB"}, {8, "0"}, {0, "VERTEX"}, {8, "0"}} + kLine));
    ASSERT_TRUE(read.report.ok) << read.report.message;
    EXPECT_EQ(read.model().size(), 3u);
}

TEST(Reader, EntitiesFindTheirSpace) {
    const std::string bytes = drawing(Codes{{0, "LINE"}, {5, "30"}, {67, "1"}, {8, "0"}} + kLine +
                                          Codes{{0, "POINT"}, {67, "0"}, {8, "0"}},
                                      "AC1009");
    Read read(bytes);
    ASSERT_TRUE(read.report.ok);
    EXPECT_EQ(read.model().size(), 2u);
    const auto sheet = read.entities(read.database.paperSpaceId());
    ASSERT_EQ(sheet.size(), 1u);
    EXPECT_EQ(std::uint64_t(sheet[0]->objectId().handle()), 0x30u);
}

TEST(Reader, NamesMayBeUsedBeforeTheyAreDefined) {
    // Entities first, tables last; and a layer that nobody defines.
    const std::string bytes =
        section("ENTITIES", {{0, "LINE"}, {8, "Späte"}, {6, "Strich"}, {0, "LINE"}, {8, "nowhere"}}) +
        section("TABLES",
                {{0, "TABLE"}, {2, "LAYER"}, {70, "1"},     {0, "LAYER"},  {5, "77"},    {2, "späte"},
                 {70, "0"},    {62, "3"},    {6, "Strich"}, {0, "ENDTAB"}, {0, "TABLE"}, {2, "LTYPE"},
                 {70, "1"},    {0, "LTYPE"}, {2, "STRICH"}, {70, "0"},     {3, ""},      {72, "65"},
                 {73, "0"},    {40, "0.0"},  {0, "ENDTAB"}}) +
        kEnd;
    Read read(bytes);
    ASSERT_TRUE(read.report.ok) << read.report.message;
    const auto lines = read.model();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(std::uint64_t(lines[0]->layerId().handle()), 0x77u);
    EXPECT_EQ(lines[0]->layerName(), L"späte");
    EXPECT_EQ(lines[0]->linetypeId(), read.database.find(AcDbLinetypeTable::desc(), L"Strich"));
    EXPECT_EQ(lines[1]->layerName(), L"nowhere");
    EXPECT_TRUE(read.noted("nowhere is named but not defined"));
    EXPECT_FALSE(read.noted("Strich is named"));
}

TEST(Reader, EveryMissingNameGetsARecordOfItsOwn) {
    Codes lines;
    for (int i = 0; i < 20; ++i)
        lines =
            lines + Codes{{0, "LINE"}, {8, "L" + std::to_string(i % 10)}, {6, "T" + std::to_string(i % 7)}};
    Read read(drawing(lines, "AC1009"));
    ASSERT_TRUE(read.report.ok);
    const auto model = read.model();
    ASSERT_EQ(model.size(), 20u);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(model[size_t(i)]->layerName(), L"L" + std::to_wstring(i % 10));
        const auto* linetype = dxf::behind<AcDbLinetypeTableRecord>(model[size_t(i)]->linetypeId());
        ASSERT_NE(linetype, nullptr);
        EXPECT_EQ(linetype->name(), L"T" + std::to_wstring(i % 7));
    }
}

TEST(Reader, NothingNewComesToStandWhereADeadReferenceLeads) {
    Read read(drawing({{0, "THING"},
                       {100, "AcDbEntity"},
                       {8, "0"},
                       {100, "Thing"},
                       {340, "30"},
                       {340, "31"},
                       {340, "800"}}));
    ASSERT_TRUE(read.report.ok);
    for (const std::uint64_t handle : {0x30u, 0x31u, 0x800u})
        EXPECT_EQ(read.database.cellOf(handle, true)->object, nullptr) << handle;
}

TEST(Reader, UnknownThingsComeBackWhereTheyStood) {
    const std::string bytes =
        section("HEADER", {{9, "$ACADVER"}, {1, "AC1032"}, {9, "$MYVARIABLE"}, {40, "1.5"}, {70, "2"}}) +
        section("TABLES",
                {{0, "TABLE"}, {2, "MYTABLE"}, {5, "60"}, {70, "1"}, {0, "MYROW"}, {2, "x"}, {0, "ENDTAB"}}) +
        section("ENTITIES", {{0, "MYTHING"},
                             {5, "61"},
                             {102, "{MYLIST"},
                             {330, "61"},
                             {102, "}"},
                             {330, "1F"},
                             {100, "AcDbEntity"},
                             {8, "0"},
                             {348, "61"},
                             {100, "MyThing"},
                             {90, "7"},
                             {62, "900"},
                             {100, "MyThing"},
                             {100, "MyTail"},
                             {1001, "ACAD"},
                             {1000, "x"}}) +
        section("MYSECTION", {{0, "ANYTHING"}, {1, "goes"}, {310, "00FF"}}) + kEnd;
    Read read(bytes);
    ASSERT_TRUE(read.report.ok) << read.report.message;
    const std::string saved = drawingBytes(read.database);
    for (const Codes& piece :
         {Codes{{9, "$MYVARIABLE"}, {40, "1.5"}, {70, "2"}},
          Codes{{0, "TABLE"}, {2, "MYTABLE"}, {5, "60"}, {70, "1"}, {0, "MYROW"}, {2, "x"}, {0, "ENDTAB"}},
          Codes{{5, "61"}, {102, "{MYLIST"}, {330, "61"}, {102, "}"}},
          Codes{{348, "61"},
                {100, "MyThing"},
                {90, "7"},
                {62, "900"},
                {100, "MyThing"},
                {100, "MyTail"},
                {1001, "ACAD"},
                {1000, "x"}},
          Codes{{2, "MYSECTION"}, {0, "ANYTHING"}, {1, "goes"}, {310, "00FF"}, {0, "ENDSEC"}}}) {
        std::string expected;
        for (const auto& [code, value] : piece)
            expected += std::string(code < 10    ? "  "
                                    : code < 100 ? " "
                                                 : "") +
                        std::to_string(code) + "\n" + value + "\n";
        EXPECT_NE(saved.find(expected), std::string::npos) << expected;
    }
}

TEST(Reader, TheVersionToSaveAsFollowsWhatTheFileHolds) {
    const struct {
        const char* what;
        std::string bytes;
        AcDb::AcDbDwgVersion expected;
    } rows[] = {
        {"R12 with a line", drawing(kLine, "AC1009"), AcDb::kDHL_1009},
        {"R12 with a spline", drawing({{0, "SPLINE"}, {8, "0"}}, "AC1009"), AcDb::kDHL_1032},
        {"R2004", drawing(kLine, "AC1018"), AcDb::kDHL_1018},
        {"later than known", drawing(kLine, "AC1040"), AcDb::kDHL_1032},
        {"none, lines", section("ENTITIES", kLine) + kEnd, AcDb::kDHL_1009},
        {"none, markers", section("ENTITIES", {{0, "LINE"}, {100, "AcDbEntity"}, {8, "0"}}) + kEnd,
         AcDb::kDHL_1032},
    };
    for (const auto& row : rows) {
        Read read(row.bytes);
        ASSERT_TRUE(read.report.ok) << row.what << read.report.message;
        EXPECT_EQ(read.database.originalFileVersion(), row.expected) << row.what;
    }
}

TEST(Reader, BlocksOfOldFilesBecomeRecords) {
    const std::string bytes =
        text({{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"}, {0, "ENDSEC"}}) +
        section("BLOCKS", Codes{{0, "BLOCK"},
                                {8, "0"},
                                {2, "Outer"},
                                {70, "0"},
                                {10, "1"},
                                {20, "2"},
                                {30, "3"},
                                {0, "INSERT"},
                                {8, "0"},
                                {2, "inner"},
                                {0, "ENDBLK"},
                                {0, "BLOCK"},
                                {8, "0"},
                                {2, "Inner"},
                                {70, "0"}} +
                              kLine +
                              Codes{{0, "ENDBLK"},
                                    {8, "0"},
                                    {0, "BLOCK"},
                                    {8, "0"},
                                    {2, "Inner"},
                                    {70, "0"},
                                    {0, "ENDBLK"},
                                    {0, "BLOCK"},
                                    {8, "0"},
                                    {70, "0"},
                                    {0, "ENDBLK"}}) +
        kEnd;
    Read read(bytes);
    ASSERT_TRUE(read.report.ok) << read.report.message;
    const auto* outer =
        dxf::behind<AcDbBlockTableRecord>(read.database.find(AcDbBlockTable::desc(), L"OUTER"));
    ASSERT_NE(outer, nullptr);
    EXPECT_EQ(outer->origin(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(outer->entities().size(), 1u);
    const auto* inner =
        dxf::behind<AcDbBlockTableRecord>(read.database.find(AcDbBlockTable::desc(), L"inner"));
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(inner->entities().size(), 1u);
    EXPECT_TRUE(read.noted("defined twice"));
    EXPECT_TRUE(read.noted("no name"));
}

TEST(Reader, LightPolylinesBecomeOldOnesForOldVersions) {
    const Codes polyline = {
        {0, "LWPOLYLINE"}, {5, "50"},   {100, "AcDbEntity"}, {8, "Rim"},  {62, "3"}, {100, "AcDbPolyline"},
        {90, "3"},         {70, "129"}, {38, "2.5"},         {10, "0"},   {20, "0"}, {42, "0.5"},
        {10, "4"},         {20, "0"},   {40, "0.1"},         {41, "0.2"}, {10, "4"}, {20, "3"}};
    Read read(drawing(polyline));
    ASSERT_TRUE(read.report.ok) << read.report.message;
    for (const auto version : {AcDb::kDHL_1009, AcDb::kDHL_1012}) {
        WriteOptions options;
        options.version = version;
        Read old(drawingBytes(read.database, options));
        ASSERT_TRUE(old.report.ok) << old.report.message;
        EXPECT_EQ(old.report.noteCount, 0);
        ASSERT_EQ(old.model().size(), 1u);
        EXPECT_EQ(old.model()[0]->dxfName(), "POLYLINE");
        EXPECT_EQ(std::uint64_t(old.model()[0]->objectId().handle()), 0x50u);
        EXPECT_EQ(old.model()[0]->layerName(), L"RIM"); // capitals before R2000
        std::vector<AcDbObjectId> parts;
        old.model()[0]->ownedParts(parts);
        EXPECT_EQ(parts.size(), 4u);
    }
}

TEST(Reader, ATableHeadWrittenTwiceOpensTheTableBehindIt) {
    const Codes tables = {{0, "TABLE"}, {0, "TABLE"}, {2, "LAYER"}, {70, "1"},    {0, "LAYER"},
                          {2, "Walls"}, {70, "0"},    {62, "3"},    {0, "ENDTAB"}};
    Read read(section("TABLES", tables) + section("ENTITIES", kLine) + kEnd);
    ASSERT_TRUE(read.report.ok) << read.report.message;
    EXPECT_TRUE(read.noted("without a name"));
    EXPECT_FALSE(read.database.find(AcDbLayerTable::desc(), L"Walls").isNull());
    EXPECT_TRUE(read.database.keptSections().empty());
}
