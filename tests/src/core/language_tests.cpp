// The language file and texts in other languages.
#include <gmock/gmock.h>

#include <cstdlib>

#include "core/language.h"
#include "core/language_file.h"
#include "host/os/locale.h"
#include "support/drawing.h"

using namespace corvane;

namespace {

std::wstring keyOf(std::wstring_view text, const wchar_t* language) {
    CString key;
    key.Format(L"%016I64X.%s", static_cast<unsigned long long>(TextHash(text)), language);
    return key.str();
}

} // namespace

TEST(TextHash, RunsOverUtf16UnitsLowByteFirstAndUnifiesLineEnds) {
    EXPECT_EQ(0x14650FB0739D0383u, TextHash(L""));
    // Worked by hand: h = (start ^ 0x61) * p, then (h ^ 0) * p.
    const std::uint64_t p = 0x100000001B3u;
    EXPECT_EQ((0x14650FB0739D0383u ^ 0x61) * p * p, TextHash(L"a"));
    EXPECT_EQ(TextHash(L"a\nb\n"), TextHash(L"a\r\nb\r"));
    EXPECT_NE(TextHash(L"ab"), TextHash(L"ba"));
    // Beyond the basic plane a character counts as its two halves, 0xD83D and 0xDE00.
    std::uint64_t h = 0x14650FB0739D0383u;
    for (const std::uint64_t byte : {0x3Du, 0xD8u, 0x00u, 0xDEu}) h = (h ^ byte) * p;
    EXPECT_EQ(h, TextHash(L"\U0001F600"));
}

TEST(LanguageFile, ReadsSectionsEscapesAndSkipsTheRest) {
    LanguageFile file;
    file.Read(L"; comment\r\n# another\n[ Config ]\nSourceLanguage = "
              L"ZH_cn\nDefaultLanguage=pt_BR\nnonsense\n[Text]\n" +
              keyOf(L"圆", L"en") + L" =   a\\tb\\nc\\\\d\\q\\\n" + keyOf(L"线", L"en") + L"=first\n" +
              keyOf(L"线", L"en") + L"=second\n[Other]\n" + keyOf(L"点", L"en") + L"=never\n");
    EXPECT_EQ(L"zh-cn", file.SourceLanguage);
    EXPECT_EQ(L"pt-br", file.ConfiguredLanguage);
    EXPECT_EQ(L"a\tb\nc\\d\\q\\", file.LookupExact(L"圆", L"en"));
    EXPECT_EQ(L"second", file.LookupExact(L"线", L"en"));
    EXPECT_EQ(L"", file.LookupExact(L"点", L"en"));
}

TEST(LanguageFile, FallsBackToThePrimaryLanguageAndKeepsWhiteSpaceAround) {
    LanguageFile file;
    file.Read(L"[Text]\n" + host::lower(keyOf(L"圆", L"de")) + L"=Kreis\n" + keyOf(L"线", L"de-at") + L"=\n" +
              keyOf(L"线", L"de") + L"=Linie\n");
    EXPECT_EQ(L"Kreis", file.LookupExact(L"圆", L"de-at")) << "keys are found in small letters too";
    EXPECT_EQ(L"Linie", file.LookupExact(L"线", L"de-at")) << "an empty entry counts as none";
    EXPECT_EQ(L"\n Kreis\t ", file.LookupTrimmed(L"\n 圆\t ", L"de"));
    EXPECT_EQ(L"", file.LookupTrimmed(L"圆", L"de"));
    EXPECT_EQ(L"", file.LookupTrimmed(L" \n ", L"de"));
}

TEST(LanguageFile, ComesInThreeEncodings) {
    EXPECT_EQ(L"圆=é", DecodeLanguageFile("\xEF\xBB\xBF\xE5\x9C\x86=\xC3\xA9"));
    EXPECT_EQ(L"圆=A", DecodeLanguageFile(std::string("\xFF\xFE\x06\x57=\0A\0", 8)));
    EXPECT_EQ(L"圆线", DecodeLanguageFile("\xD4\xB2\xCF\xDF")) << "without a mark: the Chinese code page";
}

TEST(Formats, TranslationsMustTakeTheSameArguments) {
    EXPECT_EQ(FormatPlaceholders(L"%d of %s, 100%%"), FormatPlaceholders(L"%-5d: %12s"));
    EXPECT_NE(FormatPlaceholders(L"%d of %s"), FormatPlaceholders(L"%s of %d"));
    EXPECT_NE(FormatPlaceholders(L"%d"), FormatPlaceholders(L"%ld"));
    EXPECT_NE(FormatPlaceholders(L"%I64X"), FormatPlaceholders(L"%X"));
    EXPECT_NE(FormatPlaceholders(L"%*d"), FormatPlaceholders(L"%d"));
    EXPECT_NE(FormatPlaceholders(L"%d"), FormatPlaceholders(L"none"));
}

TEST(Language, EveryTextOfTheSourcesHasItsEnglishLineWithTheSamePlaceholders) {
    EXPECT_EQ(0, std::system("python3 '" CORVANE_SOURCE_DIR "/scripts/texts' --check"));
}

TEST(Language, ACommandSpeaksTheLanguageAskedFor) {
    support::Drawing drawing;
    drawing.addPolyline({{0, 0}, {0, 0}, {9, 0}});
    EXPECT_THAT(drawing.run(L"PLYH2\nall\n\n"), testing::HasSubstr("删除了< 1 >个重复顶点。"));
    host::setRequestedLanguage("en");
    const std::string english = drawing.run(L"PLYH2\nall\n\nR2V\n");
    host::setRequestedLanguage("zh");
    EXPECT_THAT(english, testing::HasSubstr("0 duplicate vertices removed."));
    EXPECT_THAT(english, testing::HasSubstr("The command R2V is not built yet."));
    EXPECT_TRUE(std::all_of(english.begin(), english.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80;
    })) << english;
}
