// The window in another language, without a restart.
#include <QComboBox>
#include <QDockWidget>
#include <QMenuBar>
#include <QTest>

#include "apps/desk/dialog_window.h"
#include "apps/desk/texts.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

class LanguageTest : public DeskTest {
protected:
    struct Seen {
        QStringList menus;
        QString layersTitle, column, firstHelp, section;
        QString lines() const { return menus.join('|') + "|" + layersTitle + "|" + column; }
    };
    Seen look() {
        Seen seen;
        for (const QAction* menu : desk_->window().menuBar()->actions())
            seen.menus += menu->text().remove('&');
        seen.layersTitle = desk_->window().findChild<QDockWidget*>("layersDock")->windowTitle();
        seen.column = desk_->window().layers().list()->headerItem()->text(0);
        const QMenu* curves = desk_->window().menuBar()->actions().at(5)->menu();
        seen.section = curves->actions().at(0)->text();
        seen.firstHelp = curves->actions().at(0)->menu()->actions().at(0)->statusTip();
        return seen;
    }
};

TEST_F(LanguageTest, MenusPanelsAndHelpsFollowAtOnceAndAreRemembered) {
    Seen english, german, chinese;
    std::wstring stored;
    const auto to = [this](const wchar_t* code) {
        return [this, code] { desk_->window().onLanguage(code); };
    };
    play({[&] { english = look(); }, to(L"de"), [&] { german = look(); }, to(L"zh"),
          [&] { chinese = look(), stored = desk::spokenLanguage(); }, to(L"en")});
    EXPECT_EQ(english.menus.value(0), "File");
    EXPECT_EQ(english.menus.value(5), "Corvane Curves");
    EXPECT_EQ(english.layersTitle, "Layers");
    EXPECT_EQ(english.section, "Curves");
    EXPECT_EQ(german.menus.value(0), "Datei");
    EXPECT_EQ(german.menus.value(5), "Corvane Kurven");
    EXPECT_EQ(german.section, "Kurven");
    EXPECT_NE(german.firstHelp, english.firstHelp);
    EXPECT_FALSE(german.firstHelp.isEmpty());
    EXPECT_EQ(chinese.menus.value(0), QString::fromStdWString(L"文件(F)"));
    EXPECT_EQ(chinese.column, QString::fromStdWString(L"图层"));
    EXPECT_EQ(stored, L"zh");
    EXPECT_EQ(english.menus.size(), german.menus.size()) << "the module's menus are there once";
}

// The About dialog changes it while it stands, and the window behind it follows.
TEST_F(LanguageTest, ALanguageChosenInADialogChangesTheWindowBehindIt) {
    QString before, behind;
    play({type("ABOUT_CVANE"), pause(),
          [&] {
              ASSERT_FALSE(host::modalDialogs().empty());
              before = look().lines();
              auto* dialog = desk_->dialogs().windowOf(host::modalDialogs().back());
              auto* box = dialog->findChild<QComboBox*>();
              ASSERT_TRUE(box);
              const int row = box->findText("Deutsch");
              box->setCurrentIndex(row);
              emit box->activated(row);
              behind = look().lines();
              QTest::keyClick(dialog, Qt::Key_Escape);
          },
          [this] { desk_->window().onLanguage(L"en"); }});
    EXPECT_TRUE(before.startsWith("File|")) << before.toStdString();
    EXPECT_TRUE(behind.startsWith("Datei|")) << behind.toStdString();
}

} // namespace
} // namespace desktest
