// Fonts: the size of letters, replacements, and characters from elsewhere.
#include "host/ge/extents.h"
#include "host/picture/fonts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace host;

namespace {

std::vector<FontReplacement>& heard() {
    static std::vector<FontReplacement> all;
    return all;
}

class Fonts : public testing::Test {
protected:
    void SetUp() override {
        installTextMetrics([](const FontReplacement& r) { heard().push_back(r); });
    }
};

std::size_t contours(const TextOutline& outline) {
    return std::size_t(std::count(outline.steps.begin(), outline.steps.end(), TextOutline::Step::move));
}

} // namespace

TEST_F(Fonts, CapitalsAreAsHighAsTheTextInAnySize) {
    for (double height : {1e-3, 2.5, 1e6}) {
        const TextExtents size = textMetrics()->measure({}, height, L"HEIT");
        EXPECT_NEAR(size.high.y, height, 0.02 * height);
        EXPECT_NEAR(size.low.y, 0, 0.02 * height);
        EXPECT_GT(textMetrics()->measure({}, height, L"gj").low.y, -height);
        EXPECT_LT(textMetrics()->measure({}, height, L"gj").low.y, -0.1 * height);
    }
}

TEST_F(Fonts, WidthsAddUpAndFollowTheirFactors) {
    const auto advance = [](const TextFace& face, std::wstring_view text) {
        return textMetrics()->measure(face, 10, text).advance;
    };
    EXPECT_NEAR(advance({}, L"ab 曲") + advance({}, L"cd"), advance({}, L"ab 曲cd"), 1e-9);
    EXPECT_NEAR(advance({.widthFactor = 0.5}, L"abc"), advance({}, L"abc") / 2, 1e-9);
    EXPECT_NEAR(advance({.tracking = 2}, L"abc"), advance({}, L"abc") * 2, 1e-9);
    const auto upright = textMetrics()->measure({}, 10, L"I"),
               leaning = textMetrics()->measure({.oblique = 0.3}, 10, L"I");
    EXPECT_NEAR(leaning.high.x - upright.high.x, std::tan(0.3) * 10, 0.2);
}

TEST_F(Fonts, OutlinesLieInTheMeasuredBox) {
    const TextExtents size = textMetrics()->measure({}, 3, L"Ag曲");
    const TextOutline outline = textMetrics()->outlines({}, 3, L"Ag曲");
    ASSERT_FALSE(outline.steps.empty());
    std::size_t points = 0;
    for (TextOutline::Step step : outline.steps)
        points += step == TextOutline::Step::close       ? 0
                  : step == TextOutline::Step::cubic     ? 3
                  : step == TextOutline::Step::quadratic ? 2
                                                         : 1;
    EXPECT_EQ(points, outline.points.size());
    AcDbExtents2d box;
    for (const AcGePoint2d& p : outline.points) box.addPoint(p);
    EXPECT_NEAR(box.minPoint().x, size.low.x, 0.15); // control points may stand out a little
    EXPECT_NEAR(box.maxPoint().x, size.high.x, 0.15);
    EXPECT_NEAR(box.maxPoint().y, size.high.y, 0.15);
}

TEST_F(Fonts, ChineseComesFromAnotherFontAndUnknownCharactersAreBoxes) {
    EXPECT_GT(contours(textMetrics()->outlines({}, 1, L"曲")), 2u);
    EXPECT_EQ(contours(textMetrics()->outlines({}, 1, L"\U000F1234")), 2u);
    EXPECT_EQ(contours(textMetrics()->outlines({}, 1, L"  ")), 0u);
    EXPECT_EQ(textMetrics()->measure({}, std::nan(""), L"x").advance, 0);
}

TEST_F(Fonts, EachMissingFontIsToldOnce) {
    heard().clear();
    for (int i = 0; i < 3; ++i) {
        textMetrics()->measure({.fontFile = L"C:\\fonts\\NoSuchFont.shx"}, 1, L"x");
        textMetrics()->measure({.fontFile = L"nosuchfont.ttf", .bold = true}, 1 + i, L"y");
        textMetrics()->measure({.fontFile = L"txt.shx"}, 1, L"z");
    }
    ASSERT_EQ(heard().size(), 2u);
    EXPECT_EQ(heard()[0].wanted, L"C:\\fonts\\NoSuchFont.shx");
    EXPECT_FALSE(heard()[0].used.empty());
}
