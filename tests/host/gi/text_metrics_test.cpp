// Control codes of single-line text, and what the plain face promises.
#include "host/gi/text_metrics.h"
#include "host/gi/textstyle.h"

#include <gtest/gtest.h>

#include <cmath>

using host::plainLine;

TEST(PlainLine, CodesBecomeTheirCharacters) {
    struct Row {
        const wchar_t *coded, *text;
    };
    const Row rows[] = {
        {L"45%%d %%P0.1 %%c10", L"45° ±0.1 ∅10"},
        {L"100%%%", L"100%"},
        {L"%%065%%66", L"AB"},
        {L"50% %%", L"50% %%"},
        {L"%%x", L"%%x"},
        {L"\\U+66F2线", L"曲线"},
        {L"a^Ib^ c", L"a b^c"},
        {L"%%010", L" "},
    };
    for (const Row& row : rows) EXPECT_EQ(plainLine(row.coded).text, row.text);
}

TEST(PlainLine, LinesStretchOverTheirCharacters) {
    const auto line = plainLine(L"a%%ubc%%u%%od%%k");
    EXPECT_EQ(line.text, L"abcd");
    ASSERT_EQ(line.marks.size(), 2u);
    EXPECT_EQ(line.marks[0].from, 1u);
    EXPECT_EQ(line.marks[0].to, 3u);
    EXPECT_EQ(line.marks[1].from, 3u);
    EXPECT_EQ(line.marks[1].to, 4u); // left open, it ends with the text
}

TEST(TextStyle, MeasuresGrowWithTheirFactorsAndRefuseNonsense) {
    AcGiTextStyle style;
    style.setTextSize(2);
    const double once = style.extents(L"abc", false, -1, false).x;
    style.setXScale(0.5);
    EXPECT_NEAR(style.extents(L"abc", false, -1, false).x, once / 2, 1e-12);
    EXPECT_NEAR(style.extents(L"abcdef", false, 3, false).x, once / 2, 1e-12);
    EXPECT_NEAR(style.extents(L"%%d", false, -1, true).x, once / 2, 1e-12);
    style.setXScale(std::nan(""));
    style.setTextSize(-1);
    EXPECT_NEAR(style.extents(L"abc", false, -1, false).x, once / 2, 1e-12);
    EXPECT_EQ(host::textMetrics()->measure({}, std::nan(""), L"abc").advance, 0);
    EXPECT_EQ(host::textMetrics()->measure({}, 1, L"  ").high.x, 0);
}
