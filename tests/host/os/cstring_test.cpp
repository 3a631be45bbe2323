// CString and the format rules, where they differ from the C library's.
#include "host/os/cstring.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

template <class... A> std::wstring formatted(const wchar_t* rule, const A&... arguments) {
    CString text;
    text.Format(rule, arguments...);
    return text.str();
}

} // namespace

TEST(Format, TextAndSizesFollowTheHost) {
    EXPECT_EQ(formatted(L"%s|%S|%hs|%ls", L"曲", "ä", "n", L"w"), L"曲|ä|n|w");
    EXPECT_EQ(formatted(L"%ld %lu", -1, 4294967295u), L"-1 4294967295");
    const long large = 0x1FFFFFFFFL; // only its low 32 bits are a host long
    EXPECT_EQ(formatted(L"%ld", large), L"-1");
    EXPECT_EQ(formatted(L"%016I64X", std::uint64_t(0x14650FB0739D0383u)), L"14650FB0739D0383");
    EXPECT_EQ(formatted(L"%I64d|%lld", std::int64_t(-5000000000), std::int64_t(7)), L"-5000000000|7");
    EXPECT_EQ(formatted(L"%hd %hu", 65535, 65535), L"-1 65535");
    EXPECT_EQ(formatted(L"%x %#X %o", 255, 255, 8), L"ff 0XFF 10");
    EXPECT_EQ(formatted(L"%c%c", L'曲', 'x'), L"曲x");
    EXPECT_EQ(formatted(L"%s", static_cast<const wchar_t*>(nullptr)), L"(null)");
}

TEST(Format, WidthsPrecisionsAndStars) {
    EXPECT_EQ(formatted(L"[%5d][%-5d][%05d][%+d]", 42, 42, 42, 42), L"[   42][42   ][00042][+42]");
    EXPECT_EQ(formatted(L"[%*d][%-*s][%.*f]", 4, 7, 3, L"a", 2, 1.005), L"[   7][a  ][1.00]");
    EXPECT_EQ(formatted(L"[%.2s][%5.1f][%g][%e]", L"曲线图", 2.25, 1e-5, 1.0),
              L"[曲线][  2.2][1e-05][1.000000e+00]");
    EXPECT_EQ(formatted(L"%*d|", -4, 7), L"7   |");
    EXPECT_EQ(formatted(L"%.99f", 1.0).size(), 101u);
    EXPECT_EQ(formatted(L"%999999999d", 1).size(), 4096u);
}

TEST(Format, PercentSignsThatAreNoFieldsStay) {
    EXPECT_EQ(formatted(L"100%% ％s %y", 1), L"100% ％s %y");
    EXPECT_EQ(formatted(L"50%"), L"50%");
}

TEST(CStringText, OutOfRangeIndicesAreBroughtIntoRange) {
    const CString text(L"abcdef");
    EXPECT_EQ(text.Left(99), L"abcdef");
    EXPECT_EQ(text.Left(-1), L"");
    EXPECT_EQ(text.Right(2), L"ef");
    EXPECT_EQ(text.Mid(4, 99), L"ef");
    EXPECT_EQ(text.Mid(99), L"");
    EXPECT_EQ(text.Find(L"cd", 99), -1);
    EXPECT_EQ(text.GetAt(6), L'\0');
    EXPECT_EQ(CString(static_cast<const wchar_t*>(nullptr)), L"");
}

TEST(CStringText, SearchesTrimsAndReplaces) {
    CString text(L"  \t a,b,,c \r\n");
    EXPECT_EQ(text.Trim(), L"a,b,,c");
    EXPECT_EQ(CString(L" \n ").Trim(), L"");
    EXPECT_EQ(CString(L"xxaxx").Trim(L'x'), L"a");
    int at = 0;
    std::wstring parts;
    for (CString part = text.Tokenize(L",", at); at != -1; part = text.Tokenize(L",", at))
        parts += part.str() + L"|";
    EXPECT_EQ(parts, L"a|b|c|");
    EXPECT_EQ(text.Replace(L",", L", "), 3);
    EXPECT_EQ(text, L"a, b, , c");
    EXPECT_EQ(text.Replace(L"", L"x"), 0);
    EXPECT_EQ(text.Remove(L' '), 3);
    EXPECT_EQ(text.ReverseFind(L','), 4);
    EXPECT_EQ(text.FindOneOf(L"cb"), 2);
    EXPECT_EQ(CString(L"aaa").Replace(L"a", L"aa"), 3);
    EXPECT_EQ(L"<" + CString(L"x") + L'>', L"<x>");
    EXPECT_EQ(CString(L"Ärger").CompareNoCase(L"äRGER"), 0);
}

TEST(CStringText, BufferIsCutAtItsZero) {
    CString text(L"abc");
    wchar_t* buffer = text.GetBuffer(10);
    buffer[1] = 0;
    text.ReleaseBuffer();
    EXPECT_EQ(text, L"a");
}
