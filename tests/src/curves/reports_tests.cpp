// The reports: rows and cells of the tables, marks, names of files, meetings of curves.
#include <gmock/gmock.h>

#include <fstream>
#include <numbers>
#include <random>
#include <regex>

#include "core/language.h"
#include "curves/reports/meetings.h"
#include "curves/reports/smallest_box.h"
#include "curves/reports/table_file.h"
#include "host/os/codepage.h"
#include "host/os/text.h"
#include "tests/src/support/drawing.h"

using namespace corvane;
using support::Drawing;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Cells = std::vector<std::vector<std::string>>;

// The cells of the tables of a file, in UTF-8.
Cells cellsOf(const std::string& bytes) {
    const std::string html = host::CodePage("ANSI_936").decode(bytes);
    const std::regex row("<tr>([^]*?)</tr>"), cell("<td[^>]*><div[^>]*>([^]*?)</div></td>");
    Cells cells;
    for (std::sregex_iterator r(html.begin(), html.end(), row), none; r != none; ++r) {
        const std::string inside = (*r)[1];
        cells.emplace_back();
        for (std::sregex_iterator c(inside.begin(), inside.end(), cell); c != none; ++c)
            cells.back().push_back((*c)[1] == "&nbsp;" ? "" : std::string((*c)[1]));
    }
    return cells;
}

class Folder {
public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "corvane-reports-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    std::wstring file(const std::wstring& name) const { return host::wide(path_) + L"/" + name; }
    Cells cells(const std::wstring& name) const {
        std::ifstream in(host::utf8(file(name)));
        EXPECT_TRUE(in.good()) << host::utf8(name);
        return cellsOf({std::istreambuf_iterator<char>(in), {}});
    }

private:
    std::string path_;
};

AcDbObjectId addLine(Drawing& drawing, const AcGePoint3d& from, const AcGePoint3d& to) {
    return drawing.add(std::make_unique<AcDbLine>(from, to));
}
size_t countOf(const Drawing& drawing, const AcRxClass* kind) {
    size_t count = 0;
    for (const AcDbObjectId id : drawing.entities()) count += id.objectClass()->isDerivedFrom(kind);
    return count;
}

} // namespace

TEST(TableFile, IsWrittenInItsOwnCharacterSetWithReferencesForTheRest) {
    const Drawing drawing; // sets the language
    constexpr TableColumn columns[] = {{L"序号", 30}, {L"图块名", 70}};
    TableFile table(L"/folder/报表.html", L"交点坐标", columns);
    table.Add(TableRow(columns).Number(1).Text(L"<Ağaç> & 树"));
    const std::string bytes = table.Bytes();
    EXPECT_THAT(bytes, HasSubstr("charset=gb2312"));
    EXPECT_THAT(bytes, HasSubstr("\xBD\xBB\xB5\xE3\xD7\xF8\xB1\xEA")); // the title
    EXPECT_THAT(bytes, HasSubstr("&lt;A&#287;a&#231;&gt; &amp; "));
    EXPECT_FALSE(host::isUtf8(bytes));
    EXPECT_THAT(bytes, HasSubstr("width=70%"));
}

TEST(Reports, VerticesLengthsAndAreasStandInTheirColumns) {
    const Folder folder;
    Drawing drawing;
    drawing.addPolyline({{0, 0}, {10, 0}, {10, 10}}, true);
    addLine(drawing, {1, 2, 3}, {4, 6, 3});
    const std::string told = drawing.run(L"PLLIST all\n\n" + folder.file(L"vertices.xls") + L"\nn\n");
    EXPECT_THAT(told, HasSubstr("vertices.html"));
    const Cells cells = folder.cells(L"vertices.html");
    ASSERT_EQ(8u, cells.size()); // head, three vertices, sums, two ends, sums
    EXPECT_THAT(cells[0], ElementsAre("序号", "顶点序号", "X坐标", "Y坐标", "Z坐标", "长度", "面积"));
    EXPECT_THAT(cells[1], ElementsAre("1", "1", "0.000", "0.000", "0.000", "", ""));
    EXPECT_THAT(cells[3], ElementsAre("", "3", "10.000", "10.000", "0.000", "", ""));
    EXPECT_THAT(cells[4], ElementsAre("", "", "", "", "", "34.142", "50.000"));
    EXPECT_THAT(cells[5], ElementsAre("2", "1", "1.000", "2.000", "3.000", "", ""));
    EXPECT_EQ("5.000", cells[7][5]);
    EXPECT_EQ(2u, drawing.entities().size()); // no marks
}

TEST(Reports, CirclesEllipsesAndArcsGiveTheirMeasures) {
    const Folder folder;
    Drawing drawing;
    drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis, 10));
    drawing.add(std::make_unique<AcDbArc>(AcGePoint3d(3, 4, 0), 2, std::numbers::pi / 2, std::numbers::pi));
    drawing.add(std::make_unique<AcDbEllipse>(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis,
                                              AcGeVector3d(5, 0, 0), 0.6));
    drawing.run(L"CLIST all\n\n" + folder.file(L"c.xls") + L"\ny 3 y\n");
    drawing.run(L"ARCLIST all\n\n" + folder.file(L"a.xls") + L"\nn\n");
    drawing.run(L"ELLLIST all\n\n" + folder.file(L"e.xls") + L"\nn\n");
    EXPECT_THAT(folder.cells(L"c.html")[1],
                ElementsAre("1", "1.000", "2.000", "0.000", "10.000", "62.832", "314.159"));
    EXPECT_THAT(folder.cells(L"a.html")[1],
                ElementsAre("1", "3.000", "4.000", "0.000", "2.000", "90.000", "180.000", "3.142"));
    // The circumference of the 5 by 3 ellipse: 20 E(0.8) = 25.527.
    EXPECT_THAT(folder.cells(L"e.html")[1],
                ElementsAre("1", "0.000", "0.000", "0.000", "10.000", "6.000", "25.527", "47.124"));
    EXPECT_EQ(1u, countOf(drawing, AcDbText::desc()));
    EXPECT_EQ(1u, countOf(drawing, AcDbPoint::desc()));
    EXPECT_THAT(drawing.run(L"CLIST all\n\n/no/such/folder/c.xls\n"),
                HasSubstr("Create file </no/such/folder/c.html>"));
    EXPECT_FALSE(drawing.ranDry);
}

TEST(Reports, OnlyTheEndingOfANameChanges) {
    const Folder folder;
    Drawing drawing;
    drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis, 10));
    std::filesystem::create_directory(host::utf8(folder.file(L"old.xls.d")));
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"plain", L"plain"}, {L"old.xls.d/c", L"old.xls.d/c"}, {L"a.xls.xls", L"a.xls.html"}};
    for (const auto& [chosen, written] : rows) {
        drawing.run(L"CLIST all\n\n" + folder.file(chosen) + L"\nn\n");
        EXPECT_TRUE(std::filesystem::is_regular_file(host::utf8(folder.file(written))))
            << host::utf8(written);
    }
}

TEST(Reports, LengthsAreSummedByKindBesideTheDrawing) {
    const Folder folder;
    Drawing drawing;
    drawing.database().setFilename((folder.file(L"plan.dxf")).c_str());
    addLine(drawing, {0, 0, 0}, {10, 0, 0});
    addLine(drawing, {0, 0, 0}, {0, 5, 0});
    drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1));
    drawing.run(L"CVplcount2 all\n\ny 2\n");
    const Cells cells = folder.cells(L"plan长度统计.html");
    ASSERT_EQ(6u, cells.size());
    EXPECT_THAT(cells[1], ElementsAre("1", "LINE", "10.000"));
    EXPECT_THAT(cells[4], ElementsAre("1", "CIRCLE", "6.283"));
    EXPECT_THAT(cells[5], ElementsAre("2", "LINE", "15.000"));
    EXPECT_EQ(3u, countOf(drawing, AcDbText::desc()));
    AcDbObjectPointer<AcDbText> number(drawing.entities().back(), AcDb::kForRead);
    EXPECT_EQ(L"0_编号", number->layerName());
    number.close();
    EXPECT_THAT(drawing.run(L"CVplcount2 (handent \"0\")\nall\n\nn\n"), HasSubstr("plan长度统计1.html"));
}

TEST(Reports, SizesOfBlocksAreThoseBeforeTheyWereTurned) {
    const Folder folder;
    Drawing drawing;
    drawing.run(L"PLINE 0,0 20,0 20,5 0,5 c\nBLOCK plate\n0,0 all\n\nINSERT plate\n0,0 2\n\n30\nINSERT "
                L"plate\n90,90 2\n\n77\n");
    addLine(drawing, {0, 0, 0}, {30, 40, 0});
    drawing.run(L"CVckg all\n\nn " + folder.file(L"sizes.xls") + L"\n");
    const Cells cells = folder.cells(L"sizes.html");
    ASSERT_EQ(7u, cells.size());
    EXPECT_THAT(cells[1], ElementsAre("1", "INSERT", "plate", "40.000", "10.000", "0.000", "40.000", "10.000",
                                      "0.000", "2.000", "2.000", "2.000"));
    EXPECT_THAT(cells[3], ElementsAre("3", "LINE", "", "30.000", "40.000", "0.000", "50.000", "0.000",
                                      "0.000", "1.000", "1.000", "1.000"));
    // Summed up: the two plates are one kind.
    EXPECT_EQ((std::vector<std::string>{"INSERT", "plate", "2"}),
              std::vector<std::string>(cells[5].begin(), cells[5].begin() + 3));
}

TEST(SmallestBox, IsFoundWhicheverWayTheShapeIsTurned) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> across(0, 1);
    for (int turn = 0; turn < 40; ++turn) {
        const double angle = turn * 0.37, c = std::cos(angle), s = std::sin(angle);
        std::vector<AcGePoint2d> points;
        const auto add = [&](double x, double y) {
            points.push_back({7 + x * c - y * s, -3 + x * s + y * c});
        };
        add(0, 0), add(12, 0), add(12, 5), add(0, 5);
        for (int i = 0; i < 50; ++i) add(12 * across(random), 5 * across(random));
        const BoxSize box = SmallestBox(points);
        EXPECT_NEAR(12, box.length, 1e-9);
        EXPECT_NEAR(5, box.width, 1e-9);
    }
    EXPECT_EQ(0, SmallestBox({}).length);
    EXPECT_EQ(5, SmallestBox({{0, 0}, {3, 4}, {1.5, 2}}).length);
}

TEST(Meetings, TheSweepFindsWhatThePlainLoopFinds) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> place(0, 100), size(0, 12);
    std::vector<AcDbExtents> boxes(300);
    for (AcDbExtents& box : boxes) {
        const AcGePoint3d low(place(random), place(random), 0);
        box.set(low, low + AcGeVector3d(size(random), size(random), 0));
    }
    boxes[17] = AcDbExtents(); // draws nothing
    std::vector<std::pair<int, int>> expected;
    const auto apart = [](double lowA, double highA, double lowB, double highB) {
        return highA < lowB || highB < lowA;
    };
    for (int i = 0; i < 300; ++i)
        for (int j = i + 1; j < 300; ++j) {
            const AcDbExtents &a = boxes[size_t(i)], &b = boxes[size_t(j)];
            if (!a.isValid() || !b.isValid()) continue;
            if (apart(a.minPoint().x, a.maxPoint().x, b.minPoint().x, b.maxPoint().x)) continue;
            if (!apart(a.minPoint().y, a.maxPoint().y, b.minPoint().y, b.maxPoint().y))
                expected.emplace_back(i, j);
        }
    EXPECT_GT(expected.size(), 100u);
    EXPECT_EQ(expected, TouchingBoxes(boxes));
}

TEST(Meetings, AreMarkedNumberedListedFilledAndBrokenAt) {
    const Folder folder;
    Drawing drawing;
    addLine(drawing, {0, 0, 0}, {10, 10, 0});
    addLine(drawing, {0, 10, 0}, {10, 0, 0});
    addLine(drawing, {10, 0, 0}, {20, 0, 0}); // touches the end of the second
    drawing.run(L"PLJD all\n\n3 2.5 " + folder.file(L"points.xls") + L"\n");
    const Cells cells = folder.cells(L"points.html");
    ASSERT_EQ(3u, cells.size());
    EXPECT_THAT(cells[1], ElementsAre("1", "5.000", "5.000", "0.000"));
    EXPECT_THAT(cells[2], ElementsAre("2", "10.000", "0.000", "0.000"));
    EXPECT_EQ(2u, countOf(drawing, AcDbPoint::desc()));
    EXPECT_EQ(2u, countOf(drawing, AcDbText::desc()));

    Drawing broken;
    addLine(broken, {0, 0, 0}, {10, 10, 0});
    addLine(broken, {0, 10, 0}, {10, 0, 0});
    EXPECT_THAT(broken.run(L"PLJD all\n\n4 nothing\n"), HasSubstr("图块名错误"));
    broken.run(L"PLJD all\n\n5\n");
    EXPECT_EQ(4u, countOf(broken, AcDbLine::desc()));
    Drawing apart;
    addLine(apart, {0, 0, 0}, {1, 0, 0});
    addLine(apart, {0, 5, 0}, {1, 5, 0});
    EXPECT_THAT(apart.run(L"PLJD all\n\n2\n"), HasSubstr("没有找到交点"));
}

TEST(Meetings, ACurveIsBrokenAtItsOwnCrossing) {
    Drawing drawing;
    drawing.addPolyline({{0, 0}, {10, 10}, {10, 0}, {0, 10}});
    drawing.run(L"PLJD1 1,1 1 2.5\n");
    EXPECT_EQ(1u, countOf(drawing, AcDbPoint::desc()));
    EXPECT_THAT(drawing.run(L"PLJD1 50,50\n"), HasSubstr("Nothing selected"));
}
