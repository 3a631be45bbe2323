// Groups that say nothing, since they state what holds anyway: they come back all the same, so that a
// drawing that is opened and saved is the drawing that came.
#include <gtest/gtest.h>

#include <sstream>

#include "helpers.h"

using namespace host;
using namespace dxftest;

namespace {

// The groups of the first object of that kind.
Codes groupsOf(const std::string& bytes, const std::string& kind) {
    Codes found;
    std::istringstream in(bytes);
    bool inside = false;
    for (std::string code, value; std::getline(in, code) && std::getline(in, value);) {
        if (std::stoi(code) == 0) {
            if (inside) break;
            inside = value == kind;
        } else if (inside) {
            if (value.ends_with(".0")) value.resize(value.size() - 2);
            found.emplace_back(std::stoi(code), value);
        }
    }
    return found;
}

long countOf(const Codes& groups, const std::pair<int, std::string>& group) {
    return std::count(groups.begin(), groups.end(), group);
}

Codes entity(const std::string& kind, const std::string& marker, const Codes& rest) {
    Codes groups = {{0, kind}, {5, "90"}, {100, "AcDbEntity"}, {8, "0"}, {100, marker}};
    groups.insert(groups.end(), rest.begin(), rest.end());
    return groups;
}

const Codes kKnots = {{40, "0"}, {40, "0"}, {40, "1"}, {40, "1"}, {10, "0"},
                      {20, "0"}, {30, "0"}, {10, "5"}, {20, "0"}, {30, "0"}};
Codes spline(const Codes& head) {
    Codes rest = head;
    rest.insert(rest.end(), {{70, "8"}, {71, "1"}, {72, "4"}, {73, "2"}, {74, "0"}});
    rest.insert(rest.end(), kKnots.begin(), kKnots.end());
    return entity("SPLINE", "AcDbSpline", rest);
}

} // namespace

TEST(Stated, WhatSaysNothingComesBack) {
    const Codes one = {{2, "*Model_Space"}, {10, "1"}, {20, "2"}, {30, "0"}};
    auto insert = [&](const char* marker, const Codes& more) {
        Codes rest = one;
        rest.insert(rest.end(), more.begin(), more.end());
        return entity("INSERT", marker, rest);
    };
    const struct {
        const char* version;
        Codes groups;
    } rows[] = {
        {"AC1015", insert("AcDbBlockReference", {{70, "1"}, {71, "1"}, {44, "0"}, {45, "0"}})},
        {"AC1015", insert("AcDbBlockReference", {{70, "2"}, {71, "3"}, {44, "1"}, {45, "-1"}})},
        {"AC1015", insert("AcDbMInsertBlock", {{71, "1"}})},
        {"AC1015", spline({{210, "0"}, {220, "0"}, {230, "0"}})},
        {"AC1015", spline({{42, "0.001"}, {43, "0.001"}, {44, "0"}, {12, "0"}, {22, "0"}, {32, "0"}})},
        {"AC1015", entity("TEXT", "AcDbText", {{10, "0"}, {40, "1"}, {1, "a"}, {7, ""}})},
        {"AC1014", entity("LINE", "AcDbLine", {{370, "25"}, {10, "0"}, {11, "1"}})},
        {"AC1015", entity("LINE", "AcDbLine", {{420, "66051"}, {10, "0"}, {11, "1"}})},
        {"AC1015", entity("POLYLINE", "AcDb2dPolyline", {{10, "0"}, {40, "0"}, {41, "0"}})},
    };
    for (const auto& row : rows) {
        const std::string kind = row.groups[0].second;
        Read read(drawing(row.groups, row.version));
        ASSERT_TRUE(read.report.ok) << kind << read.report.message;
        const Codes written = groupsOf(drawingBytes(read.database), kind);
        for (size_t i = 1; i < row.groups.size(); ++i)
            EXPECT_GE(countOf(written, row.groups[i]), countOf(row.groups, row.groups[i]))
                << kind << " lacks " << row.groups[i].first << " " << row.groups[i].second;
    }
}

TEST(Stated, LayersKeepWhatTheyState) {
    const auto layer = [](const std::string& version, const Codes& more) {
        Codes all = {{0, "SECTION"},
                     {2, "HEADER"},
                     {9, "$ACADVER"},
                     {1, version},
                     {0, "ENDSEC"},
                     {0, "SECTION"},
                     {2, "TABLES"},
                     {0, "TABLE"},
                     {2, "LAYER"},
                     {70, "1"},
                     {0, "LAYER"},
                     {5, "10"},
                     {100, "AcDbSymbolTableRecord"},
                     {100, "AcDbLayerTableRecord"},
                     {2, "0"},
                     {70, "0"},
                     {62, "7"}};
        all.insert(all.end(), more.begin(), more.end());
        all.insert(all.end(), {{0, "ENDTAB"}, {0, "ENDSEC"}, {0, "EOF"}});
        return text(all);
    };
    for (const char* version : {"AC1014", "AC1015", "AC1032"}) {
        Read read(layer(version, {{290, "1"}, {370, "0"}}));
        const Codes written = groupsOf(drawingBytes(read.database), "LAYER");
        EXPECT_EQ(countOf(written, {290, "1"}), 1) << version;
        EXPECT_EQ(countOf(written, {370, "0"}), 1) << version;
    }
    // Written as a version that doesn't know them, they are left out.
    Read modern(layer("AC1032", {{290, "1"}, {370, "0"}}));
    WriteOptions older;
    older.version = AcDb::kDHL_1014;
    const Codes written = groupsOf(drawingBytes(modern.database, older), "LAYER");
    EXPECT_EQ(countOf(written, {290, "1"}) + countOf(written, {370, "0"}), 0);
}

// Blocks name their layouts; a layout that is missing is made under the handle that its block names.
TEST(Stated, AMissingLayoutGetsTheHandleOfItsBlock) {
    Read read(contents(drawingsFolder() / "gis-ocs-hatch.dxf"));
    ASSERT_TRUE(read.report.ok);
    EXPECT_TRUE(read.noted("The layout Model was missing"));
    const auto* model = AcDbBlockTableRecord::cast(read.database.modelSpaceId().cell()->object);
    EXPECT_EQ(std::uint64_t(model->getLayoutId().handle()), 0xEEEEAu);
}

// Corners of a plane go to the world and back; their digits must not drift from save to save.
TEST(Stated, CornersOfTiltedPlanesKeepTheirDigits) {
    for (const char* kind : {"SOLID", "TRACE"}) {
        const Codes groups = entity(kind, "AcDbTrace",
                                    {{10, "96.87362902255704"},
                                     {20, "-78.4888527117068"},
                                     {30, "3.1"},
                                     {11, "0.1"},
                                     {21, "0.7"},
                                     {31, "3.1"},
                                     {12, "12.3456789012345"},
                                     {22, "7.7"},
                                     {32, "3.1"},
                                     {13, "0.30000000000000004"},
                                     {23, "1.1"},
                                     {33, "3.1"},
                                     {210, "0.6"},
                                     {220, "0.48"},
                                     {230, "0.64"}});
        Read read(drawing(groups));
        const Codes written = groupsOf(drawingBytes(read.database), kind);
        for (size_t i = 1; i < groups.size(); ++i)
            EXPECT_GE(countOf(written, groups[i]), 1)
                << kind << " " << groups[i].first << " " << groups[i].second;
    }
}
