// What the host says, in the user's language: rows and patterns on their own, then prompts and messages of a
// desk that runs.
#include "apps/desk/host_texts.h"

#include <QLabel>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "host/ent/line.h"
#include "host/os/files.h"
#include "host/os/text.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

desk::HostTexts texts(const wchar_t* language) {
    desk::HostTexts texts;
    host::MappedFile file(CORVANE_SOURCE_DIR "/resources/HostLang.ini");
    texts.read(file.bytes());
    texts.speak(language);
    return texts;
}

TEST(HostTexts, NumbersNamesAndBlanksAreCarriedOver) {
    const struct {
        const wchar_t *language, *english, *said;
    } rows[] = {
        {L"de", L"\nSelect objects: ", L"\nObjekte wählen: "},
        {L"zh", L"\nSelect objects: ", L"\n选择对象: "},
        {L"zh-cn", L"\nCommand: ", L"\n命令: "},
        {L"de", L"\n12 found, 15 total", L"\n12 gefunden, 15 gesamt"},
        {L"zh", L"\n3 found, 1 was filtered out (2 duplicate), 5 total",
         L"\n找到 3 个，过滤掉 1 个 (2 个重复)，总计 5 个"},
        {L"de", L"\nUnknown command \"found, 5\".", L"\nUnbekannter Befehl \"found, 5\"."},
        {L"de", L"\nSpecify height <2.5000>: ", L"\nHöhe angeben <2.5000>: "},
        {L"zh", L"\nPurge block \"Undo\"? [Yes/No] <N>: ", L"\n是否清理块“Undo”? [是(Y)/否(N)] <否>: "},
        {L"de", L"\nLTSCALE: it takes values from 0 to 99.", L"\nLTSCALE: erlaubt sind Werte von 0 bis 99."},
        {L"de", L"\n                  Space: Block Undo", L"\n                  Bereich: Block Undo"},
        {L"de", L"\n  ERASE           Erases objects", L"\n  ERASE           Löscht Objekte"},
        {L"zh", L"\nSpecify offset distance or [Through/Erase] <Through>: ",
         L"\n指定偏移距离或 [通过(T)/删除(E)] <通过(T)>: "},
        {L"de", L"\nEnter block name or [?] <a[Undo]b>: ", L"\nBlocknamen eingeben oder [?] <a[Undo]b>: "},
        {L"de", L"\nEnter the number of operations to undo or [Begin/End/Mark/BAck] <1>: ",
         L"\nAnzahl der zurückzunehmenden Operationen eingeben oder "
         L"[Anfang(B)/Ende(E)/Markierung(M)/Zurück(BA)] <1>: "}, // BAck is no side here
        {L"de", L"\nsome found", L"\nsome found"},               // no number
        {L"de", L"\n已写出：[Undo] 3 found", L"\n已写出：[Undo] 3 found"},
        {L"de", L" \n", L" \n"},
        {L"en", L"\nSelect objects: ", L"\nSelect objects: "},
        {L"fr", L"\nSelect objects: ", L"\nSelect objects: "},
    };
    for (const auto& row : rows)
        EXPECT_EQ(texts(row.language).say(row.english), row.said) << host::utf8(row.english);
}

TEST(HostTexts, DamagedRowsAndLongTextsDoNoHarm) {
    desk::HostTexts texts;
    texts.read(
        "de=nobody's\nen=100 %\nde=100 %!\nno row\nen=%d to %d\nde=von %d\nen=a\r\nde=b\r\n\xff=\xfe\nen=%");
    texts.speak(L"de");
    EXPECT_EQ(texts.say(L"100 %"), L"100 %!");
    EXPECT_EQ(texts.say(L"1 to 2"), L"1 to 2") << "its translation lacks a value";
    EXPECT_EQ(texts.say(L"a"), L"b");
    const std::wstring longText(1'000'000, L'[');
    EXPECT_EQ(texts.say(longText), longText);
}

TEST(HostTexts, TextsWithoutARowAndOptionsThatTellToTypeSomethingElseAreTold) {
    std::string root = (std::filesystem::temp_directory_path() / "hosttextsXXXXXX").string();
    ASSERT_TRUE(mkdtemp(root.data()));
    std::filesystem::create_directories(root + "/host/ed");
    std::filesystem::create_directories(root + "/resources");
    const std::string code = "printLine(L\"\\nNo \" + name + L\".\"); ask(L\"\\nTake it? [YEs/Stop]: \");";
    const std::string head = "en=No %s.\nde=Kein %s.\nen=Take it? []:\nde=Nehmen? []:\n";
    const std::string options = "en=YEs\nde=Ja(YE)\nen=Stop\nde=Halt(S)\n";
    const struct {
        const char* caption;
        std::string code, rows;
        bool good;
    } cases[] = {
        {"whole", code, head + options, true},
        {"a message without a row", code + "printLine(L\"\\nMore.\");", head + options, false},
        {"a reason without a row", code + "why = L\"it is so\";", head + options, false},
        {"an option without a row", code, head + "en=YEs\nde=Ja(YE)\n", false},
        {"an option that tells to type something else", code,
         head + "en=YEs\nde=Ja(J)\nen=Stop\nde=Halt(S)\n", false},
        {"a lost placeholder", code, head + options + "en=%d to %d\nde=von %d\n", false},
        {"a language left out", code, head + options + "en=Also\nzh=也\n", false},
    };
    for (const auto& one : cases) {
        std::ofstream(root + "/host/ed/a.cpp") << one.code;
        std::ofstream(root + "/resources/HostLang.ini") << one.rows;
        const std::string line =
            "python3 '" CORVANE_SOURCE_DIR "/scripts/texts' --check --root " + root + " 2>/dev/null";
        EXPECT_EQ(std::system(line.c_str()) == 0, one.good) << one.caption;
    }
    std::filesystem::remove_all(root);
}

class HostTextsTest : public DeskTest {
protected:
    std::function<void()> speak(const wchar_t* code) {
        return [this, code] { desk_->window().onLanguage(code); };
    }
    QLabel* prompt() {
        for (QLabel* label : desk_->window().commandLine().findChildren<QLabel*>())
            if (label->textFormat() == Qt::RichText) return label;
        return nullptr;
    }
    std::function<void()> read(QString& into) {
        return [this, &into] { into = prompt()->text(); };
    }
};

TEST_F(HostTextsTest, PromptsAndMessagesFollowTheLanguageWithinACommand) {
    QString command, german, chinese, english;
    play({speak(L"de"), read(command), type("LINE"), type("0,0"), read(german), speak(L"zh"), read(chinese),
          type("10,0"), speak(L"en"), read(english), type(""), speak(L"de"), type("ERASE"), type("all"),
          press(Qt::Key_Escape), type("NOSUCH"), press(Qt::Key_F8), speak(L"en")});
    EXPECT_EQ(command, "Befehl:");
    EXPECT_EQ(german.toStdString(), "Nächsten Punkt angeben oder [<a href=\"Undo\">Zurück(U)</a>]:");
    EXPECT_EQ(chinese.toStdString(), "指定下一点或 [<a href=\"Undo\">放弃(U)</a>]:");
    EXPECT_TRUE(english.startsWith("Specify next point or [<a")) << english.toStdString();
    const std::string told = transcript().toStdString();
    for (const char* part :
         {"Befehl: LINE\n", "Ersten Punkt angeben: 0,0\n", "指定下一点或 [放弃(U)]: 10,0\n",
          "Objekte wählen: all\n1 gefunden\n", "*Abbruch*", "Unbekannter Befehl \"NOSUCH\"", "<Ortho ein>"})
        EXPECT_NE(told.find(part), told.npos) << part << " is not in\n" << told;
}

TEST_F(HostTextsTest, AKeywordInTheLanguageAnswersItsEnglishWord) {
    size_t links = 0;
    AcGePoint3d end;
    play({speak(L"de"), type("LINE"), type("0,0"), type("5,5"), type("9,9"), type("7,1"),
          [&] {
              links = size_t(prompt()->text().count("<a href="));
              emit prompt()->linkActivated("Undo");
          },
          type("c"),
          [&] {
              ASSERT_EQ(entities().size(), 3u) << transcript().toStdString();
              AcDbObjectPointer<AcDbLine> last(entities().back(), AcDb::kForRead);
              end = last->endPoint();
          },
          speak(L"en")});
    EXPECT_EQ(links, 2u) << "[Schließen(C)/Zurück(U)]";
    EXPECT_EQ(end, AcGePoint3d(0, 0, 0));
}

} // namespace
} // namespace desktest
