// Clock, random numbers, files and the registry, in a folder of their own.
#include "host/os/clock.h"
#include "host/os/files.h"
#include "host/os/keys.h"
#include "host/os/locale.h"
#include "host/os/random.h"
#include "host/os/registry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <thread>

using namespace host;
namespace fs = std::filesystem;

namespace {

class Folder : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "corvane-os-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
    }
    void TearDown() override { fs::remove_all(folder_); }
    std::string path(const char* name) const { return folder_ + "/" + name; }
    std::string contents(const char* name) const {
        std::string bytes;
        EXPECT_FALSE(readWhole(path(name), bytes));
        return bytes;
    }
    std::string folder_;
};

using Files = Folder;
using RegistryFile = Folder;

} // namespace

TEST(Random, IsTheHostsSequence) {
    // The first numbers after srand(1), known to everyone who has used that generator.
    host::srand(1);
    for (int expected : {41, 18467, 6334, 26500, 19169}) EXPECT_EQ(host::rand(), expected);
}

TEST(Clock, SetClockStandsStill) {
    setClock(ClockSetting{951782400, 1234}); // a leap day: 2000-02-29
    const LocalTime now = localTime();
    EXPECT_EQ(now.year * 10000 + now.month * 100 + now.day, 20000229);
    EXPECT_EQ(now.weekday, 2);
    EXPECT_EQ(tickCount(), 1234u);
    EXPECT_DOUBLE_EQ(julianDate(false), 2451603.5);
    setClock(std::nullopt);
    EXPECT_GT(clockSeconds(), 1700000000);
}

TEST(Keys, NamesGoBothWays) {
    EXPECT_EQ(keysText(*parseKeys("ALT+ctrl")), "ctrl+alt");
    EXPECT_EQ(*parseKeys("none"), HeldKeys{});
    EXPECT_FALSE(parseKeys("ctrl+"));
    EXPECT_FALSE(parseKeys("meta"));
}

TEST(Locale, TagComesFromTheFirstVariableThatSpeaks) {
    setenv("LC_ALL", "", 1);
    setenv("LC_MESSAGES", "zh_TW.UTF-8@x", 1);
    EXPECT_EQ(languageTag(), "zh-tw");
    setenv("LC_ALL", "C.UTF-8", 1);
    EXPECT_EQ(languageTag(), "en");
}

TEST_F(Files, ReplacingKeepsTheModeAndLeavesNothingBehind) {
    ASSERT_FALSE(writeWhole(path("a"), "old"));
    chmod(path("a").c_str(), 0640);
    const std::string_view chunks[] = {"ne", "w"};
    ASSERT_FALSE(writeWhole(path("a"), chunks));
    EXPECT_EQ(contents("a"), "new");
    struct stat info {};
    stat(path("a").c_str(), &info);
    EXPECT_EQ(info.st_mode & 0777, 0640u);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
}

TEST_F(Files, WritingThroughALinkChangesItsTarget) {
    ASSERT_FALSE(writeWhole(path("target"), "old"));
    fs::create_symlink(path("target"), path("link"));
    ASSERT_FALSE(writeWhole(path("link"), "new"));
    EXPECT_TRUE(fs::is_symlink(path("link")));
    EXPECT_EQ(contents("target"), "new");
}

TEST_F(Files, ErrorsNameTheFileAndTheReason) {
    MappedFile file;
    const FileError missing = file.open(path("none"));
    EXPECT_NE(missing.message.find("none"), std::string::npos);
    EXPECT_NE(missing.message.find("No such file"), std::string::npos);
    EXPECT_TRUE(file.open(folder_));
    EXPECT_FALSE(file.isOpen());
    EXPECT_TRUE(writeWhole(path("no/such/folder"), "x"));
    EXPECT_TRUE(writeWhole(folder_, "x"));
}

TEST_F(Files, AnEmptyFileIsReadAsEmpty) {
    ASSERT_FALSE(writeWhole(path("e"), ""));
    MappedFile file(path("e"));
    EXPECT_TRUE(file.isOpen());
    EXPECT_TRUE(file.bytes().empty());
}

TEST_F(RegistryFile, ValuesOfEveryKindSurviveTheFile) {
    const std::wstring key = L"Software\\Brinkhaven\\Corvane";
    const std::wstring hard = L"a=\"b\" \\ [x]\n曲线;\t#";
    RegistryBytes real(8, 0), block(262144, 0);
    real[7] = 0x40;
    block[3] = 0xAB;
    {
        Registry registry(path("s.ini"));
        registry.beginBatch();
        registry.set(key, L"blur", 4294967295u);
        registry.set(key, L"name = \"odd\"", hard);
        registry.set(key, L"real", real);
        registry.set(key, L"block", block);
        EXPECT_EQ(registry.endBatch(), "");
    }
    Registry registry(path("s.ini"));
    EXPECT_EQ(registry.number(L"SOFTWARE\\brinkhaven\\corvane", L"BLUR"), 4294967295u);
    EXPECT_EQ(registry.text(key, L"name = \"odd\""), hard);
    EXPECT_EQ(registry.bytes(key, L"real"), real);
    EXPECT_EQ(registry.bytes(key, L"block"), block);
    EXPECT_FALSE(registry.text(key, L"blur")); // of another kind
    EXPECT_LT(contents("s.ini").size(), 500u);
}

TEST_F(RegistryFile, TwoProgramsAtOnceLoseNothing) {
    const auto fill = [&](const wchar_t* prefix) {
        Registry registry(path("s.ini"));
        for (int i = 0; i < 20; ++i) registry.set(L"K", prefix + std::to_wstring(i), std::uint32_t(i));
    };
    std::thread other(fill, L"a");
    fill(L"b");
    other.join();
    Registry registry(path("s.ini"));
    for (std::uint32_t i = 0; i < 20; ++i) {
        EXPECT_EQ(registry.number(L"K", L"a" + std::to_wstring(i)), i);
        EXPECT_EQ(registry.number(L"K", L"b" + std::to_wstring(i)), i);
    }
}

TEST_F(RegistryFile, WhatCannotBeReadIsNotReplaced) {
    fs::create_directory(path("s.ini")); // a folder stands where the file should be
    Registry registry(path("s.ini"));
    EXPECT_NE(registry.set(L"K", L"x", 1u), "");
    EXPECT_TRUE(fs::is_directory(path("s.ini")));
    EXPECT_EQ(registry.number(L"K", L"x"), 1u); // kept for this run all the same
}

TEST_F(RegistryFile, DamagedLinesAreSkippedAndKeysRemovedWithTheirChildren) {
    std::ofstream(path("s.ini"))
        << "stray = 1\n[A]\nx = 5\nbad = -3\nhuge = hex(99999999999):00\nodd = hex:123\n"
           "\"open = 2\nq = \"\n[A\\B]\ny = 6\n[AB]\nz = 7\n";
    Registry registry(path("s.ini"));
    EXPECT_EQ(registry.number(L"A", L"x"), 5u);
    for (const wchar_t* name : {L"bad", L"huge", L"odd", L"open"}) {
        EXPECT_FALSE(registry.number(L"A", name));
        EXPECT_FALSE(registry.bytes(L"A", name));
    }
    EXPECT_EQ(registry.removeKey(L"a"), "");
    EXPECT_FALSE(registry.hasKey(L"A\\B"));
    EXPECT_EQ(registry.number(L"AB", L"z"), 7u);
}
