// The language file and texts in other languages.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "core/language.h"
#include "core/language_file.h"
#include "core/settings.h"
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

TEST(Language, TextsOfCodeAndOfDialogTemplatesAreFoundAndTranslationsKept) {
    namespace fs = std::filesystem;
    std::string root = (fs::temp_directory_path() / "corvane-texts-XXXXXX").string();
    ASSERT_TRUE(mkdtemp(root.data()));
    fs::create_directories(root + "/src");
    fs::create_directories(root + "/resources/dialogs");
    std::ofstream(root + "/src/a.cpp")
        << "// L\"注\"\nf(L\"\\n请选择 %d>\");\nL\"名\" // untranslated\nPrintLine(L\"Plain\");\n";
    fs::create_directories(root + "/apps/desk");
    fs::create_directories(root + "/scripts");
    std::ofstream(root + "/apps/desk/b.cpp") << "say(L\"图层\");\n";
    std::ofstream(root + "/scripts/menu") << "MENUS = [('POP1', 'Curves', '曲线')]\n";
    std::ofstream(root + "/resources/dialogs/a.rc") << "// \"注释\"\nCAPTION \"关于\"\nBEGIN\n"
                                                       "  LTEXT \"第一行\\n第\"\"二\"\"行\",5,0,0,9,9\n"
                                                       "  PUSHBUTTON \"OK\",1,0,0,9,9\nEND\n";
    const auto texts = [&](const std::string& option) {
        return std::system(
            ("python3 '" CORVANE_SOURCE_DIR "/scripts/texts' --root " + root + option + " 2>/dev/null")
                .c_str());
    };
    const auto file = [&] {
        std::ifstream in(root + "/resources/CorvaneLang.ini");
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    EXPECT_EQ(0, texts(""));
    EXPECT_NE(0, texts(" --check")) << "English is missing";
    std::string filled = file();
    for (const auto& [source, english] :
         {std::pair(L"请选择 %d>", "Select %d>"), std::pair(L"Plain", "Plain"), std::pair(L"关于", "About"),
          std::pair(L"第一行\n第\"二\"行", "One\\nTwo"), std::pair(L"图层", "Layer"),
          std::pair(L"曲线", "Curves")}) {
        const std::string key = host::utf8(keyOf(source, L"en")) + "=";
        const size_t at = filled.find(key);
        ASSERT_NE(filled.npos, at) << host::utf8(source);
        filled.insert(at + key.size(), english);
        if (source[0] == L'关') filled += host::utf8(keyOf(source, L"fr")) + "=À propos\n";
    }
    EXPECT_EQ(6, std::count(filled.begin(), filled.end(), '=') - 3)
        << "comments and plain captions aren't texts";
    std::ofstream(root + "/resources/CorvaneLang.ini") << filled;
    EXPECT_EQ(0, texts(" --check"));
    EXPECT_EQ(0, texts(""));
    EXPECT_THAT(file(), testing::HasSubstr("=À propos\n")) << "a line of any language is kept";
    filled.replace(filled.find("Select %d"), 9, "Select %s");
    std::ofstream(root + "/resources/CorvaneLang.ini") << filled;
    EXPECT_NE(0, texts(" --check")) << "placeholders differ";
    fs::remove_all(root);
}

TEST(Language, ACommandSpeaksTheLanguageAskedFor) {
    support::Drawing drawing;
    drawing.addPolyline({{0, 0}, {0, 0}, {9, 0}});
    EXPECT_THAT(drawing.run(L"PLYH2\nall\n\n"), testing::HasSubstr("删除了< 1 >个重复顶点。"));
    host::setRequestedLanguage("en");
    const std::string english = drawing.run(L"PLYH2\nall\n\nPLYH\n\n");
    host::setRequestedLanguage("zh");
    EXPECT_THAT(english, testing::HasSubstr("0 duplicate vertices removed."));
    EXPECT_THAT(english, testing::HasSubstr("No polyline selected."));
    EXPECT_TRUE(std::all_of(english.begin(), english.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x80;
    })) << english;
}

TEST(Language, IsTheOneChosenElseAskedForElseStoredElseTheSystems) {
    const support::Drawing drawing;
    host::setRequestedLanguage("");
    for (const auto& [system, language] : {std::pair("zh-tw", L"zh"), std::pair("de-at", L"en")}) {
        host::setLanguageTag(system);
        EXPECT_EQ(language, ActiveLanguage()) << system;
    }
    SettingsStore::WriteText(L"Language", L" PT_br ");
    EXPECT_EQ(L"pt-br", ActiveLanguage());
    host::setRequestedLanguage("De");
    EXPECT_EQ(L"de", ActiveLanguage());
    SetLanguage(L"FR");
    EXPECT_EQ(L"fr", ActiveLanguage());
    EXPECT_EQ(L"fr", SettingsStore::ReadText(L"Language"));
    SetLanguage(L"");
    host::setLanguageTag("");
    host::setRequestedLanguage("zh");
}

TEST(Language, NoCommandShowsChineseWhereEnglishIsSpoken) {
    // Names of languages stand in their own.
    const auto withoutLanguageNames = [](std::string text) {
        for (const std::string name : {"简体中文", "日本語"})
            for (size_t at; (at = text.find(name)) != text.npos;) text.erase(at, name.size());
        return text;
    };
    const auto chinese = [](const std::wstring& text) {
        return std::any_of(text.begin(), text.end(), [](wchar_t c) {
            return (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xFF00 && c <= 0xFFEF);
        });
    };
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "corvane-every-command";
    std::filesystem::create_directories(folder);
    size_t tried = 0;
    for (const CommandEntry& row : CommandTable()) {
        if (!row.handler) continue;
        // Nothing chosen, everything chosen with Enter to each question, and what dialogs show.
        for (const wchar_t* answers : {L"\n\n\n\n", L"\nall\n\n\n\n\n\n\n\n", L"\n?\nCANCEL\n"}) {
            support::Drawing drawing;
            // Some commands write beside the drawing.
            drawing.database().setFilename(host::wide(folder.string() + "/drawing.dxf").c_str());
            drawing.addPolyline({{0, 0}, {5, 0}, {5, 0}, {9, 7}}, true);
            drawing.add3dPolyline(AcGePoint3dArray());
            drawing.add(std::make_unique<AcDbCircle>(AcGePoint3d(20, 0, 0), AcGeVector3d::kZAxis, 3.0));
            host::setRequestedLanguage("en");
            const std::string transcript =
                withoutLanguageNames(drawing.run(row.localName + std::wstring(answers)));
            host::setRequestedLanguage("zh");
            EXPECT_FALSE(chinese(host::wide(transcript))) << host::utf8(row.localName) << ": " << transcript;
            ++tried;
        }
    }
    std::filesystem::remove_all(folder);
    EXPECT_GE(tried, 40u);
}
