// The host's language from locale texts and paths, and how it orders the menu files.
#include <gtest/gtest.h>

#include "core/command_table.h"
#include "core/host/system.h"
#include "host/os/locale.h"

using namespace corvane;

TEST(HostLanguage, LocaleTextsNameIds) {
    const struct {
        const wchar_t* text;
        int id;
    } rows[] = {{L" zh-CN ", 2052}, {L"ZH-tw", 1028}, {L"zh-hk", 3076}, {L"zh-sg", 4100},   {L"en", 1033},
                {L"zh", 2052},      {L"0x804", 2052}, {L"1033", 1033},  {L"40c", 1036},     {L"804", 804},
                {L"de-de", 0},      {L"", 0},         {L"0x", 0},       {L"fffffffffff", 0}};
    for (const auto& row : rows) EXPECT_EQ(row.id, LanguageIdFromText(row.text)) << host::utf8(row.text);
    EXPECT_EQ(1028, LanguageIdFromPath(L"C:\\Host\\ZH-TW\\acadres.dll"));
    EXPECT_EQ(4100, LanguageIdFromPath(L"/opt/host/zh-sg/accore.so"));
    EXPECT_EQ(0, LanguageIdFromPath(L"/opt/zh-cn"));
}

TEST(HostLanguage, MainlandAndSingaporeReadSimplifiedChinese) {
    for (const auto& [tag, simplified] :
         {std::pair("zh-cn", true), std::pair("zh-sg", true), std::pair("zh-tw", false),
          std::pair("en-us", false), std::pair("de-de", false)}) {
        host::setLanguageTag(tag);
        EXPECT_EQ(simplified, HostIsSimplifiedChinese()) << tag;
    }
    host::setLanguageTag("");
}
