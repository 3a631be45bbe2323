// Typed answers as values: keywords, distances, angles, points, entities.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "host/ed/answers.h"
#include "host/os/text.h"

using namespace host;

namespace {

constexpr double kDegree = std::numbers::pi / 180;

struct KeywordCase {
    const wchar_t *list, *typed, *expected; // null: none
};
constexpr KeywordCase kKeywordCases[] = {
    {L"Begin End Mark BAck", L"b", L"Begin"},
    {L"Begin End Mark BAck", L"ba", L"BAck"},
    {L"Begin End Mark BAck", L"bac", L"BAck"},
    {L"Begin End Mark BAck", L"begin", L"Begin"},
    {L"Begin End Mark BAck", L"beginn", nullptr},
    {L"Begin End Mark BAck", L"", nullptr},
    {L"LOck Line", L"l", L"Line"},
    {L"LOck Line", L"LO", L"LOck"},
    {L"eXit Undo", L"x", L"eXit"},
    {L"eXit Undo", L"ex", L"eXit"},
    {L"ON OFF", L"o", nullptr},
    {L"ON OFF", L"off", L"OFF"},
    {L"Ja Nein _ Yes No", L"_y", L"Yes"},
    {L"Ja Nein _ Yes No", L"n", L"No"},
    {L"Ja Nein _ Yes No", L"y", nullptr},
    {L"Ja Nein _Yes No", L"_yes", L"Yes"}, // the mark may touch the first name
    {L"Ja Nein _Yes No", L"ja", L"Yes"},
    {L"是 否 _Yes No", L"是", L"Yes"},
    {L"? Make", L"?", L"?"},
};

struct NumberCase {
    const wchar_t* typed;
    double expected; // not a number: refused
};
constexpr double kRefused = std::numeric_limits<double>::quiet_NaN();
constexpr NumberCase kDistances[] = {
    {L"12.5", 12.5},    {L"-3", -3},          {L"+4", 4},         {L"1e3", 1000},       {L"1/2", 0.5},
    {L"1-1/2", 1.5},    {L"-1-1/2", -1.5},    {L"5'", 60},        {L"5'-6\"", 66},      {L"5'6\"", 66},
    {L"-5'-6\"", -66},  {L"5'6-1/2\"", 66.5}, {L"1/0", kRefused}, {L"1/2/3", kRefused}, {L"", kRefused},
    {L"abc", kRefused}, {L"1,5", kRefused},   {L"nan", kRefused}, {L"inf", kRefused},   {L"1e999", kRefused},
};
constexpr NumberCase kAngles[] = {
    {L"45", 45},       {L"-90", -90},    {L"45d30'", 45.5},        {L"45d30'36\"", 45.51},
    {L"-1d30'", -1.5}, {L"100g", 90},    {L"0.5r", 0.5 / kDegree}, {L"45d", 45},
    {L"", kRefused},   {L"d", kRefused}, {L"45x", kRefused},       {L"4d5'z", kRefused},
};

void expectNumber(const NumberCase& row, const std::optional<double>& value, double unit) {
    SCOPED_TRACE(utf8(row.typed));
    ASSERT_EQ(!std::isnan(row.expected), value.has_value());
    if (value) {
        EXPECT_NEAR(row.expected, *value / unit, 1e-12);
    }
}

} // namespace

TEST(Answers, KeywordsAnswerToTheirCapitalsAndLongerBeginnings) {
    for (const KeywordCase& row : kKeywordCases) {
        const auto keywords = parseKeywords(row.list);
        const Keyword* found = matchKeyword(keywords, row.typed);
        EXPECT_EQ(row.expected ? utf8(row.expected) : "none", found ? utf8(found->global) : "none")
            << utf8(row.list) << " / " << utf8(row.typed);
    }
}

TEST(Answers, DistancesReadDecimalsFractionsAndFeet) {
    for (const NumberCase& row : kDistances) expectNumber(row, parseDistance(row.typed), 1);
}

TEST(Answers, AnglesReadDegreesMinutesGradsAndRadians) {
    for (const NumberCase& row : kAngles) expectNumber(row, parseAngle(row.typed), kDegree);
}

TEST(Answers, PointsReadAgainstTheLastOneElevationAndAngles) {
    struct Case {
        const wchar_t* typed;
        bool serves;
        AcGePoint3d expected;
        bool world = false;
    };
    PointFrame frame;
    frame.last = {10, 20, 5};
    frame.elevation = 3;
    const Case rows[] = {
        {L"1,2", true, {1, 2, 3}},
        {L"1,2,9", true, {1, 2, 9}},
        {L"@1,2", true, {11, 22, 5}},
        {L"@1,2,-5", true, {11, 22, 0}},
        {L"@", true, {10, 20, 5}},
        {L"2<90", true, {0, 2, 3}},
        {L"@2<180", true, {8, 20, 5}},
        {L"*1,2", true, {1, 2, 3}, true},
        {L"@*1,2", true, {11, 22, 5}, true},
        {L"1'-6\",1/2", true, {18, 0.5, 3}},
        {L"1", false, {}},
        {L"1,2,3,4", false, {}},
        {L"1,", false, {}},
        {L"a,b", false, {}},
        {L"1<", false, {}},
        {L"", false, {}},
        {L"1e999,0", false, {}},
    };
    for (const Case& row : rows) {
        SCOPED_TRACE(utf8(row.typed));
        const auto point = parsePoint(row.typed, frame);
        ASSERT_EQ(row.serves, point.has_value());
        if (!point) continue;
        EXPECT_NEAR(0, point->point.distanceTo(row.expected), 1e-12);
        EXPECT_EQ(row.world, point->world);
    }
    frame.angleBase = std::numbers::pi / 2;
    frame.clockwise = true; // from north, as maps have it: 90 degrees is east
    EXPECT_NEAR(0, parsePoint(L"2<90", frame)->point.distanceTo({2, 0, 3}), 1e-12);
}

TEST(Answers, SnapsAreKnownByThreeLettersAndMore) {
    EXPECT_EQ(1, objectSnapBit(L"end"));
    EXPECT_EQ(1, objectSnapBit(L"_endp"));
    EXPECT_EQ(32, objectSnapBit(L"INT"));
    EXPECT_EQ(0, objectSnapBit(L"en"));
    EXPECT_EQ(0, objectSnapBit(L"endpoints"));
}

TEST(Answers, EntitiesAreNamedByHandleOrSymbol) {
    const auto plain = parseEntityAnswer(L"(handent \"2F\")");
    ASSERT_TRUE(plain);
    EXPECT_EQ(L"2F", plain->handle);
    EXPECT_FALSE(plain->point);
    const auto picked = parseEntityAnswer(L"(HANDENT \"2F\" 10,20)");
    ASSERT_TRUE(picked && picked->point);
    EXPECT_EQ(20, picked->point->y);
    EXPECT_EQ(L"BORDER", parseEntityAnswer(L"!border")->symbol);
    for (const wchar_t* refused :
         {L"(handent 2F)", L"(handent)", L"(list \"2F\")", L"!", L"2F", L"(handent \"2F\" x)"})
        EXPECT_FALSE(parseEntityAnswer(refused)) << utf8(refused);
}
