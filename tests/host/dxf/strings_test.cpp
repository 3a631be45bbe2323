// Texts between files and drawings: code pages, escapes, wrong declarations.
#include "host/dxf/strings.h"

#include <gtest/gtest.h>

#include <random>

#include "host/os/text.h"

using namespace host;
using namespace host::dxf;

TEST(Strings, EveryTextComesBackThroughEveryCodePage) {
    // Latin, Greek, Cyrillic, Han, Hangul, Kana, beyond the basic plane.
    const std::wstring alphabet = L"aZ9 ~äßéñαΩЖя直线한글カナ★€\U0001F600\U00020000";
    std::mt19937 random(20240611);
    for (const char* page : {"ANSI_1252", "ANSI_1250", "ANSI_1251", "ANSI_932", "ANSI_936", "ANSI_949",
                             "ANSI_950", "dos850", "undefined"}) {
        for (const bool utf8Form : {false, true}) {
            TextEncoder encoder(TextEncoder::Form{page, utf8Form});
            TextDecoder decoder;
            decoder.expect(page, utf8Form);
            for (int i = 0; i < 200; ++i) {
                std::wstring text;
                for (int length = int(random() % 12); length > 0; --length)
                    text += alphabet[random() % alphabet.size()];
                std::string bytes;
                encoder.append(utf8(text), bytes);
                EXPECT_EQ(wide(decoder.decode(bytes)), text) << page << " " << bytes;
            }
        }
    }
}

TEST(Strings, MisdeclaredBytesAreTakenForWhatTheyCanBe) {
    const struct {
        const char* page;
        bool utf8;
        std::string bytes;
        std::wstring expected;
    } rows[] = {
        {"ANSI_1252", true, "\xE4rger", L"ärger"},                          // said UTF-8, is cp1252
        {"ANSI_936", true, "\xD6\xB1\xCF\xDF", L"直线"},                    // said UTF-8, is GBK
        {"ANSI_932", false, "\xE7\x9B\xB4\xE7\xB7\x9A\xFF", L"ç›´ç·š\xFF"}, // neither: byte by byte
        {"ANSI_1252", false, "\xE6\x9B\xB2\x81\xE5\x81\x9A", L"æ›²\x81å\x81š"},
        {"ANSI_1252", false, "\\U+03B1\\U+3b2", L"α\\U+3b2"}, // no whole escape stays
        {"ANSI_1252", false, "\\M+18C79", L"軽"},
        {"ANSI_1252", false, "a^Jb^ ^^ \\P", L"a^Jb^ ^^ \\P"}, // carets are the text's own
    };
    for (const auto& row : rows) {
        TextDecoder decoder;
        decoder.expect(row.page, row.utf8);
        EXPECT_EQ(wide(decoder.decode(row.bytes)), row.expected) << row.bytes;
    }
}

TEST(Strings, ControlCharactersBecomeCaretsInFiles) {
    TextEncoder encoder(TextEncoder::Form{"ANSI_1252", true});
    std::string out;
    encoder.append("one\ntwo\r\tthree", out);
    EXPECT_EQ(out, "one^Jtwo^M\tthree");
}
