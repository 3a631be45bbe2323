// Encodings, case, name patterns and numbers: malformed input above all.
#include "host/os/codepage.h"
#include "host/os/text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>

using namespace host;

TEST(Text, MalformedUtf8BecomesOneReplacementPerByte) {
    struct Row {
        const char* bytes;
        std::wstring expected;
    };
    const Row rows[] = {
        {"a\xFF"
         "b",
         L"a\xFFFD"
         L"b"},
        {"\xC0\xAF", L"\xFFFD\xFFFD"},                     // overlong slash
        {"\xE4\xBD", L"\xFFFD\xFFFD"},                     // cut off in the middle
        {"\xED\xA0\xBD\xED\xB8\x80", L"\U0001F600"},       // surrogates written as bytes
        {"\xED\xA0\xBDx", L"\xFFFDx"},                     // half of such a pair
        {"\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"}, // above U+10FFFF
        {"\xE6\x9B\xB2\xE7\xBA\xBF", L"曲线"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(wide(row.bytes), row.expected) << row.bytes;
        EXPECT_EQ(wide(utf8(row.expected)), row.expected);
    }
    EXPECT_FALSE(isUtf8("\xED\xA0\xBD\xED\xB8\x80"));
    EXPECT_TRUE(isUtf8("\xF0\x9F\x98\x80"));
}

TEST(Text, CountsAndHashesCodeUnitsNotCharacters) {
    EXPECT_EQ(utf16Length(L"a\U0001F600曲"), 4u);
    EXPECT_EQ(fromUtf16(toUtf16(L"a\U0001F600曲")), L"a\U0001F600曲");
    EXPECT_EQ(fromUtf16(u"\xDC00x\xD800"), L"\xFFFDx\xFFFD");
    // FNV-1a of the bytes 61 00, computed by hand from the definition.
    const std::uint64_t p = 0x100000001B3u;
    EXPECT_EQ(hashUtf16(L"a"), ((0xCBF29CE484222325u ^ 0x61u) * p) * p);
    EXPECT_NE(hashUtf16(L"\U0001F600"), hashUtf16(L"\xF600"));
}

TEST(Text, CaseFoldsBeyondAsciiInAnyLocale) {
    EXPECT_TRUE(equalNoCase(L"ÄÖÜ-ЖΣ", L"äöü-жσ"));
    EXPECT_LT(compareNoCase(L"abc", L"ABD"), 0);
    EXPECT_GT(compareNoCase(L"abcd", L"ABC"), 0);
    EXPECT_EQ(upper(L"straße я"), L"STRAßE Я");
}

TEST(Wildcard, FollowsTheHostsPatterns) {
    struct Row {
        const wchar_t *text, *pattern;
        bool expected;
    };
    const Row rows[] = {
        {L"Wall1", L"wall#", true},
        {L"Walla", L"wall#", false},
        {L"A-B", L"@.@", true},
        {L"A1B", L"@.@", false},
        {L"曲线", L"@@", true},
        {L"LINE", L"*LINE", true},
        {L"LWPOLYLINE", L"*LINE", true},
        {L"LINES", L"*LINE", false},
        {L"LINE", L"~*LINE", false},
        {L"ARC", L"~*LINE", true},
        {L"ARC", L"LINE,ARC", true},
        {L"B", L"[A-C]", true},
        {L"B", L"[~A-C]", false},
        {L"D", L"[~A-C]", true},
        {L"B", L"[C-A]", true},
        {L"-", L"[-A]", true},
        {L"*", L"`*", true},
        {L"x", L"`*", false},
        {L"a,b", L"a`,b", true},
        {L"a,b", L"[,a]*", true},
        {L"", L"*", true},
        {L"", L"", true},
        {L"x", L"", false},
        {L"[", L"[", true},
        {L"aXbXc", L"a*b*c", true},
        {L"abc", L"a?c", true},
        {L"abc", L"a??c", false},
        {L"wall", L"roof,~w*", false},
        {L"]", L"[]]", true},
        {L"A", L"`", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(wildcardMatch(row.text, row.pattern), row.expected)
            << utf8(row.text) << " ~ " << utf8(row.pattern);
    EXPECT_FALSE(wildcardMatch(L"LINE", L"line", false));
}

TEST(Wildcard, ManyStarsTakeNoExponentialTime) {
    std::wstring pattern;
    for (int i = 0; i < 200; ++i) pattern += L"*a";
    EXPECT_FALSE(wildcardMatch(std::wstring(20000, L'a') + L'b', pattern));
}

TEST(Numbers, RealsReadBackExactlyAndLookLikeReals) {
    struct Row {
        double value;
        const char* text;
    };
    const Row rows[] = {
        {0, "0.0"},         {12.5, "12.5"},        {1e20, "1e+20"},
        {-3, "-3.0"},       {0.1, "0.1"},          {1.0 / 3, "0.3333333333333333"},
        {5e-324, "5e-324"}, {std::nan(""), "0.0"}, {std::numeric_limits<double>::infinity(), "0.0"}};
    for (const Row& row : rows) EXPECT_EQ(formatReal(row.value), row.text);
    for (double v : {0.1 + 0.2, 1e-7, 123456789.123456789, -std::numeric_limits<double>::max()})
        EXPECT_EQ(parseReal(formatReal(v)), v);
}

TEST(Numbers, ReadsOnlyWholeFiniteNumbers) {
    EXPECT_EQ(parseReal(" +1.5e3 "), 1500.0);
    EXPECT_EQ(parseReal(L"-.5"), -0.5);
    EXPECT_EQ(parseReal("1e-400"), 0.0);
    for (const char* bad : {"", " ", "1.5x", "nan", "inf", "1e400", "+-1", "1,5", "0x10"})
        EXPECT_FALSE(parseReal(bad)) << bad;
    EXPECT_FALSE(parseReal(L"１２")); // full-width digits
    EXPECT_EQ(parseInteger("-2147483649"), -2147483649LL);
    EXPECT_FALSE(parseInteger("99999999999999999999"));
    EXPECT_EQ(leadingReal(L"  2.5mm").length, 5u);
    EXPECT_EQ(leadingReal(L"mm").length, 0u);
    EXPECT_EQ(formatFixed(-0.0001, 2), "0.00");
    EXPECT_EQ(formatFixed(2.5000, 6, true), "2.5");
    EXPECT_EQ(formatFixed(100, 0, true), "100");
}

TEST(CodePage, DecodesTheFieldsPagesAndKeepsWhatItCannotWrite) {
    struct Row {
        const char *page, *bytes, *text;
    };
    const Row rows[] = {
        {"ANSI_936", "\xC7\xFA\xCF\xDF", "曲线"},
        {"ansi_932", "\x8B\xC8\x90\xFC", "曲線"},
        {"ANSI_950", "\xA6\xB1\xBD\x75", "曲線"},
        {"ANSI_949", "\xB0\xEE\xBC\xB1", "곡선"},
        {"ANSI_1251", "\xC4\xF3\xE3\xE0", "Дуга"},
        {"ANSI_1252", "\xF8 5", "ø 5"},
        {"dos850", "\x81", "ü"},
        {"UTF-8", "ø", "ø"},
        {"ANSI_874", "\xA1", "ก"},
    };
    for (const Row& row : rows) {
        const CodePage page(row.page);
        EXPECT_TRUE(page.wasKnown()) << row.page;
        EXPECT_EQ(page.decode(row.bytes), row.text) << row.page;
        EXPECT_EQ(page.encode(row.text).bytes, row.bytes) << row.page;
    }
    EXPECT_FALSE(CodePage("undefined").wasKnown());
    EXPECT_EQ(CodePage("undefined").decode("\xE4"), "ä");
    EXPECT_EQ(CodePage("ANSI_936").decode("a\xC7"), "a\xEF\xBF\xBD"); // cut in the middle
    const auto encoded = CodePage("ANSI_1252").encode("ä曲\U0001F600!");
    EXPECT_EQ(encoded.bytes, "\xE4\\U+66F2\\U+D83D\\U+DE00!");
    EXPECT_EQ(encoded.lost, 2);
}

TEST(CodePage, EscapesComeBackAndBrokenOnesStay) {
    EXPECT_EQ(decodeEscapes("\\U+66F2x\\U+D83D\\U+DE00"), "曲x😀");
    EXPECT_EQ(decodeEscapes("\\M+5C7FA\\M+18BC8"), "曲曲");
    for (const char* same : {"\\U+66", "\\U+66G2", "\\M+9C7FA", "\\M+5C7", "\\U", "\\", "\\P"})
        EXPECT_EQ(decodeEscapes(same), same);
}
