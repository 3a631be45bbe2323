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
    const std::string bytes = text({{0, "SECTION"},
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
    const auto found = findings(bytes);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].code, "duplicate-name");
    EXPECT_EQ(found[0].handle, 0x42u);
    EXPECT_EQ(found[1].code, "broken-owner");
    EXPECT_EQ(found[1].handle, 0x51u);
}

// What recovery can put right is right afterwards, and told.
TEST(Recovery, MendsWhatAnAuditFinds) {
    const struct {
        std::string bytes;
        const char* note;
    } rows[] = {
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
