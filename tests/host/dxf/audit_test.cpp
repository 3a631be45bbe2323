// Faults that an audit must find, planted one by one; and the numbers of a summary.
#include "host/dxf/audit.h"

#include <gtest/gtest.h>

#include "helpers.h"
#include "host/dxf/summary.h"

using namespace host;
using namespace dxftest;

namespace {

Codes entity(const std::string& kind, const std::string& handle, const std::string& marker,
             const Codes& rest) {
    Codes groups = {{0, kind}, {5, handle}, {100, "AcDbEntity"}, {8, "0"}, {100, marker}};
    groups.insert(groups.end(), rest.begin(), rest.end());
    return groups;
}

std::vector<AuditFinding> findings(const std::string& bytes) {
    Read read(bytes);
    EXPECT_TRUE(read.report.ok) << read.report.message;
    return audit(read.database);
}

const Codes kOddWeight = {{0, "LINE"}, {5, "90"},         {100, "AcDbEntity"}, {8, "0"},
                          {370, "7"},  {100, "AcDbLine"}, {10, "0"},           {11, "1"}};

// Two layers of one name, a line on the second, and a record that nobody owns.
std::string doubledAndOrphaned() {
    return text({{0, "SECTION"},
                 {2, "HEADER"},
                 {9, "$ACADVER"},
                 {1, "AC1015"},
                 {0, "ENDSEC"},
                 {0, "SECTION"},
                 {2, "TABLES"},
                 {0, "TABLE"},
                 {2, "LAYER"},
                 {5, "40"},
                 {100, "AcDbSymbolTable"},
                 {70, "2"},
                 {0, "LAYER"},
                 {5, "41"},
                 {330, "40"},
                 {100, "AcDbSymbolTableRecord"},
                 {100, "AcDbLayerTableRecord"},
                 {2, "wall"},
                 {70, "0"},
                 {0, "LAYER"},
                 {5, "42"},
                 {330, "40"},
                 {100, "AcDbSymbolTableRecord"},
                 {100, "AcDbLayerTableRecord"},
                 {2, "WALL"},
                 {70, "0"},
                 {0, "ENDTAB"},
                 {0, "ENDSEC"},
                 {0, "SECTION"},
                 {2, "OBJECTS"},
                 {0, "DICTIONARY"},
                 {5, "50"},
                 {330, "0"},
                 {100, "AcDbDictionary"},
                 {0, "XRECORD"},
                 {5, "51"},
                 {330, "ABC"},
                 {100, "AcDbXrecord"},
                 {280, "1"},
                 {0, "ENDSEC"},
                 {0, "EOF"}});
}

} // namespace

TEST(Audit, NewDrawingsAreSound) {
    AcDbDatabase fresh;
    for (const AuditFinding& found : audit(fresh)) ADD_FAILURE() << found.code << " " << found.sentence;
}

TEST(Audit, FindsPlantedFaults) {
    const struct {
        const char* code;
        Codes groups;
    } rows[] = {
        {"broken-reference", entity("THING", "90", "MyThing", {{340, "ABC"}})},
        {"bad-value", entity("CIRCLE", "90", "AcDbCircle", {{10, "0"}, {40, "0"}})},
        {"wrong-count", entity("LEADER", "90", "AcDbLeader", {{76, "3"}, {10, "0"}, {20, "0"}})},
        {"unregistered", entity("THING", "90", "MyThing", {{1001, "NOBODY"}, {1000, "x"}})},
        {"bad-value", entity("TEXT", "90", "AcDbText", {{10, "0"}, {40, "0"}, {1, "a"}})},
        {"bad-value", entity("TEXT", "90", "AcDbText", {{10, "0"}, {40, "1"}, {1, "a"}, {7, ""}})},
        {"bad-value", kOddWeight},
        {"broken-reference", entity("LEADER", "90", "AcDbLeader", {{340, "ABC"}, {76, "1"}, {10, "0"}})},
    };
    for (const auto& row : rows) {
        const auto found = findings(drawing(row.groups));
        ASSERT_EQ(found.size(), 1u) << row.code;
        EXPECT_EQ(found[0].code, row.code);
        EXPECT_EQ(found[0].handle, 0x90u);
        EXPECT_EQ(found[0].kind, row.groups[0].second);
    }
    // A soft pointer may outlive what it led to.
    EXPECT_TRUE(findings(drawing(entity("THING", "90", "MyThing", {{330, "ABC"}}))).empty());
}

TEST(Audit, FindsDuplicateNamesAndMissingOwners) {
    const auto found = findings(doubledAndOrphaned());
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].code, "duplicate-name");
    EXPECT_EQ(found[0].handle, 0x42u);
    EXPECT_EQ(found[1].code, "broken-owner");
    EXPECT_EQ(found[1].handle, 0x51u);
}

// Absurd counts cost nothing: what is there is counted, and the difference told.
TEST(Audit, CountsAreNotBelieved) {
    const Codes point = {{10, "1"}, {20, "2"}, {10, "3"}, {20, "4"}};
    Codes polyline = entity("LWPOLYLINE", "90", "AcDbPolyline", {{90, "2000000000"}});
    polyline.insert(polyline.end(), point.begin(), point.end());
    const Codes spline = entity("SPLINE", "90", "AcDbSpline",
                                {{71, "1"},
                                 {72, "4"},
                                 {73, "-7"},
                                 {40, "0"},
                                 {40, "0"},
                                 {40, "1"},
                                 {40, "1"},
                                 {10, "0"},
                                 {20, "0"},
                                 {30, "0"},
                                 {10, "1"},
                                 {20, "0"},
                                 {30, "0"}});
    const struct {
        Codes groups;
        const char* note;
    } rows[] = {{polyline, "group 90 of AcDbPolyline says 2000000000, there are 2"},
                {spline, "group 73 of AcDbSpline says -7, there are 2"}};
    for (const auto& row : rows) {
        Read read(drawing(row.groups));
        ASSERT_TRUE(read.report.ok) << row.note;
        EXPECT_TRUE(read.noted(row.note)) << row.note;
        EXPECT_TRUE(audit(read.database).empty()) << row.note;
        Read again(drawingBytes(read.database));
        EXPECT_FALSE(again.noted("there are 2")) << row.note;
    }
}

// What recovery can put right is right afterwards, and told.
TEST(Recovery, MendsWhatAnAuditFinds) {
    const struct {
        std::string bytes;
        const char* note;
    } rows[] = {
        {doubledAndOrphaned(), "the name WALL was there twice; the second is called WALL$1 now"},
        {doubledAndOrphaned(), "it stands in the dictionary RECOVERED_OBJECTS now"},
        {drawing(entity("CIRCLE", "90", "AcDbCircle", {{10, "0"}, {40, "0"}})), "it was erased"},
        {drawing(entity("TEXT", "90", "AcDbText", {{10, "0"}, {40, "0"}, {1, "a"}})),
         "text height is not above"},
        {drawing(entity("TEXT", "90", "AcDbText", {{10, "0"}, {40, "1"}, {1, "a"}, {7, ""}})), "has no name"},
        {drawing(kOddWeight), "line weight is none"},
        {drawing(entity("LEADER", "90", "AcDbLeader", {{76, "3"}, {10, "0"}, {20, "0"}})),
         "says 3, there are 1"},
        {drawing(entity("LEADER", "90", "AcDbLeader", {{340, "ABC"}, {76, "1"}, {10, "0"}})),
         "group 340 led to ABC"},
        {drawing(entity("MULTILEADER", "90", "AcDbMLeader", {{343, "ABC"}})), "the standard one was taken"},
        {drawing(entity("THING", "90", "MyThing", {{1001, "NOBODY"}, {1000, "x"}})), "it is now"},
        {contents(drawingsFolder() / "gis-insert-recursive-pair.dxf"), "put a block into itself"},
        {contents(drawingsFolder() / "husky-traced.dxf"), "of a dictionary led nowhere"},
        {drawing(entity("LINE", "90", "AcDbLine", {{10, "1"}, {390, "ABC"}})), "group 390 led to ABC"},
    };
    ReadOptions options;
    options.recover = true;
    for (const auto& row : rows) {
        EXPECT_FALSE(findings(row.bytes).empty()) << row.note;
        Read mended(row.bytes, options);
        ASSERT_TRUE(mended.report.ok) << row.note;
        EXPECT_TRUE(mended.noted(row.note)) << row.note;
        for (const AuditFinding& left : audit(mended.database))
            ADD_FAILURE() << row.note << ": " << left.sentence;
        Read again(drawingBytes(mended.database));
        EXPECT_TRUE(audit(again.database).empty()) << row.note;
    }
}

// What is mended keeps all else: the layer, the data beside the fault, what a text says.
TEST(Recovery, MendedObjectsKeepTheRest) {
    Codes groups = entity("LEADER", "90", "AcDbLeader",
                          {{3, "Standard"},
                           {340, "ABC"},
                           {76, "2"},
                           {10, "1"},
                           {20, "2"},
                           {30, "0"},
                           {10, "3"},
                           {20, "4"},
                           {30, "0"}});
    groups[3].second = "Walls";
    ReadOptions options;
    options.recover = true;
    Read mended(drawing(groups), options);
    ASSERT_EQ(mended.model().size(), 1u);
    const std::string bytes = drawingBytes(mended.database);
    EXPECT_NE(bytes.find("AcDbLeader\n  3\nStandard\n340\n0\n 76\n2\n 10\n1.0"), std::string::npos);
    EXPECT_EQ(mended.model()[0]->layerName(), L"Walls");
    EXPECT_EQ(mended.model()[0]->ownerId(), mended.database.modelSpaceId());
    Read again(bytes);
    EXPECT_TRUE(drawingBytes(again.database) == bytes);
}

// The entries of a dictionary keep their objects when their names clash.
TEST(Recovery, ClashingEntriesAreRenamed) {
    const Codes dictionary = {{0, "DICTIONARY"}, {5, "50"},   {330, "0"},  {100, "AcDbDictionary"},
                              {3, "Mine"},       {350, "51"}, {3, "MINE"}, {350, "52"},
                              {3, "other"},      {350, "51"}};
    Codes all = {{0, "SECTION"}, {2, "HEADER"},  {9, "$ACADVER"}, {1, "AC1015"},
                 {0, "ENDSEC"},  {0, "SECTION"}, {2, "OBJECTS"}};
    all.insert(all.end(), dictionary.begin(), dictionary.end());
    for (const char* handle : {"51", "52"})
        all.insert(all.end(), {{0, "XRECORD"}, {5, handle}, {330, "50"}, {100, "AcDbXrecord"}, {280, "1"}});
    all.insert(all.end(), {{0, "ENDSEC"}, {0, "EOF"}});
    ReadOptions options;
    options.recover = true;
    Read mended(text(all), options);
    ASSERT_TRUE(mended.report.ok);
    EXPECT_TRUE(mended.noted("the second is called MINE$1 now"));
    const auto* root = AcDbDictionary::cast(mended.database.namedObjectsDictionaryId().cell()->object);
    for (const auto& [key, handle] : {std::pair(L"Mine", 0x51u), std::pair(L"MINE$1", 0x52u)}) {
        AcDbObjectId id;
        ASSERT_EQ(root->getAt(key, id), Acad::eOk);
        EXPECT_EQ(std::uint64_t(id.handle()), handle);
    }
}

TEST(Summary, CountsWhatStandsInTheDrawing) {
    Read read(drawing({{0, "LINE"},
                       {8, "Walls"},
                       {0, "LINE"},
                       {8, "Walls"},
                       {0, "POINT"},
                       {8, "0"},
                       {1001, "MYAPP"},
                       {1000, "x"},
                       {1001, "ACAD"},
                       {1070, "1"},
                       {0, "POLYLINE"},
                       {8, "0"},
                       {66, "1"},
                       {0, "VERTEX"},
                       {8, "0"},
                       {0, "SEQEND"},
                       {8, "0"}}));
    ASSERT_TRUE(read.report.ok);
    const DrawingSummary summary = summarise(read.database);
    EXPECT_EQ(summary.entities, 4);
    const auto count = [](const std::vector<DrawingSummary::Count>& list, const char* name) {
        for (const auto& row : list)
            if (row.name == name) return row.count;
        return -1L;
    };
    EXPECT_EQ(count(summary.kinds, "LINE"), 2);
    EXPECT_EQ(count(summary.kinds, "POLYLINE"), 1);
    EXPECT_EQ(count(summary.kinds, "VERTEX"), -1);
    EXPECT_EQ(count(summary.layers, "Walls"), 2);
    EXPECT_EQ(count(summary.layers, "0"), 2);
    EXPECT_EQ(count(summary.applications, "MYAPP"), 1);
    EXPECT_EQ(summary.version, AcDb::kDHL_1015);
}
