// ZB2PL and txt2PL: coordinate lists as people have them, and text that becomes outlines.
#include <gmock/gmock.h>

#include <fstream>

#include "curves/conversion/coordinate_file.h"
#include "host/os/codepage.h"
#include "host/os/text.h"
#include "support/drawing.h"

using corvane::CoordinateFile;
using corvane::ReadCoordinates;
using support::Drawing;
using testing::HasSubstr;

namespace {

std::string folder() { return testing::TempDir(); }
std::wstring written(const std::string& name, const std::string& bytes) {
    std::ofstream(folder() + name, std::ios::binary) << bytes;
    return host::wide(folder() + name);
}
size_t polylines(const Drawing& drawing) { return drawing.entities().size(); }

} // namespace

TEST(Coordinates, EverySeparatorReadsAlike) {
    const wchar_t* const lines[] = {
        L"1.5,-2,3", L"1.5，-2；3", L" 1.5 ; -2 ; 3 ",   L"1.5|-2、3 // note",
        L"1.5 -2 3", L"1.5\t-2\t3", L"１．５，－２，３", L"+1.5,-2.0e0,3,left over"};
    for (const wchar_t* line : lines) {
        const CoordinateFile file = ReadCoordinates(line);
        ASSERT_EQ(1u, file.rows.size());
        EXPECT_EQ(AcGePoint3d(1.5, -2, 3), file.rows[0][0]);
        EXPECT_TRUE(file.badLines.empty());
    }
    EXPECT_EQ(AcGePoint3d(4, 5, 0), ReadCoordinates(L"4,5").rows[0][0]);
}

TEST(Coordinates, RowsEndAtLinesWithoutPoints) {
    for (const std::wstring end : {L"\n", L"\r\n", L"\r"}) {
        std::wstring text;
        for (const wchar_t* line :
             {L"1,1", L"2,2", L"", L"", L"// part two", L"3,3", L"4,4", L"name", L"5,5"})
            text += line + end;
        const CoordinateFile file = ReadCoordinates(text);
        EXPECT_EQ(9, file.lines);
        ASSERT_EQ(3u, file.rows.size());
        EXPECT_EQ(2u, file.rows[0].size());
        EXPECT_EQ(2u, file.rows[1].size());
    }
}

TEST(Coordinates, BadFieldsAreToldWithTheirLine) {
    const CoordinateFile file = ReadCoordinates(L"1,1\n2,,5\nx,3\n4,4e999\n5,nan\n6,1-2\n7,7");
    ASSERT_EQ(5u, file.badLines.size());
    EXPECT_EQ(2, file.badLines[0].number);
    EXPECT_EQ(L"2,,5", file.badLines[0].text);
    ASSERT_EQ(1u, file.rows.size()) << "a bad line is skipped; the row goes on";
    EXPECT_EQ(2u, file.rows[0].size());
}

TEST(CoordinateFileCommand, ReadsEveryEncoding) {
    const std::wstring text = L"坐标，表\n1，2；3\n4、5|3\n\n6,7\n8,9\n";
    std::string utf16;
    for (const char16_t unit : host::toUtf16(text)) utf16 += char(unit & 0xFF), utf16 += char(unit >> 8);
    std::string swapped = utf16;
    for (size_t i = 0; i + 1 < swapped.size(); i += 2) std::swap(swapped[i], swapped[i + 1]);
    const std::string chinese = host::CodePage("GBK").encode(host::utf8(text)).bytes;
    const std::string files[] = {host::utf8(text),
                                 "\xEF\xBB\xBF" + host::utf8(text),
                                 chinese,
                                 "\xFF\xFE" + utf16,
                                 "\xFE\xFF" + swapped,
                                 utf16,
                                 swapped};
    for (const std::string& bytes : files) {
        Drawing drawing;
        const std::wstring path = written("points.txt", bytes);
        const std::string transcript = drawing.run(L"ZB2PL\n" + path + L"\n");
        EXPECT_THAT(transcript, HasSubstr("Added < 2> polylines."));
        EXPECT_THAT(transcript, HasSubstr("第 1 行错误，数据被抛弃，请检查: 【坐标，表】"));
        ASSERT_EQ(2u, polylines(drawing));
        AcDbObjectPointer<AcDbPolyline> polyline(drawing.entities()[0], AcDb::kForRead);
        EXPECT_EQ(3, polyline->elevation());
    }
}

TEST(CoordinateFileCommand, TellsWhatItCannotUse) {
    Drawing drawing;
    EXPECT_THAT(drawing.run(L"ZB2PL\n" + written("one.txt", "1,2\n") + L"\n"), HasSubstr("文件中行数太少！"));
    EXPECT_THAT(drawing.run(L"ZB2PL\n/nowhere/at/all.txt\n"), HasSubstr("无法读取文件: /nowhere/at/all.txt"));
    EXPECT_EQ(0u, polylines(drawing));
}

TEST(TextOutlinesCommand, OutlinesLieOnTheTextAndItCanBeTakenBack) {
    Drawing drawing;
    drawing.add(std::make_unique<AcDbText>(AcGePoint3d(100, 50, 0), L"AB", AcDbObjectId(), 10, 0.4));
    AcDbExtents text, outlines;
    {
        AcDbObjectPointer<AcDbText> entity(drawing.entities()[0], AcDb::kForRead);
        entity->getGeomExtents(text);
    }
    const std::string before = drawing.bytes();
    drawing.run(L"txt2PL\nall\n\n");
    const AcDbObjectId id = drawing.only<AcDbBlockReference>();
    {
        AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
        ASSERT_TRUE(reference);
        reference->getGeomExtents(outlines);
    }
    EXPECT_LT(text.minPoint().distanceTo(outlines.minPoint()), 0.01);
    EXPECT_LT(text.maxPoint().distanceTo(outlines.maxPoint()), 0.01);
    const std::string saved = drawing.bytes();
    EXPECT_NE(std::string::npos, saved.find("AcDbBlockBegin\n  2\nWMF0")) << "the block is in the file";
    drawing.run(L"U\n");
    EXPECT_TRUE(before == drawing.bytes());
    drawing.run(L"REDO\n");
    EXPECT_TRUE(saved == drawing.bytes());
}
