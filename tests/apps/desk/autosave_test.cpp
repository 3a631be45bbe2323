// Copies of unsaved drawings: kept while there are changes, gone after a clean end, offered after a crash.
#include <QDir>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include "host/dxf/dxf.h"
#include "host/ent/line.h"
#include "host/os/files.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

class AutosaveTest : public DeskTest {
protected:
    std::string copies() const { return folder() / "home/autosave"; }
    QStringList files() const {
        QStringList found;
        const QDir all(QString::fromStdString(copies()));
        for (const QString& program : all.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            for (const QString& file :
                 QDir(all.filePath(program)).entryList({"*.dxf", "*.note"}, QDir::Files))
                found += file;
        return found;
    }
    // A folder of copies as a program leaves it that was stopped amid its work.
    void leaveBehind(const std::string& path, const AcGePoint3d& end) {
        const std::string place = copies() + "/1";
        ASSERT_FALSE(host::makeFolders(place));
        AcDbDatabase drawing(true);
        AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
        auto* line = new AcDbLine({0, 0, 0}, end);
        ASSERT_EQ(space->appendAcDbEntity(line), Acad::eOk);
        line->close();
        space.close();
        ASSERT_TRUE(host::writeDrawing(place + "/1.dxf", drawing).ok);
        ASSERT_FALSE(host::writeWhole(place + "/1.note", path + "\nplan.dxf\nR2000\n"));
    }
};

TEST_F(AutosaveTest, ChangedDrawingsHaveCopiesUntilTheyAreSavedOrClosed) {
    QStringList none, one, two, afterSave;
    AcGePoint3d held;
    const auto save = [this] { EXPECT_EQ(desk_->autosave().save(), ""); };
    play({[&] { save(), none = files(); }, type("LINE 0,0 7,8 "), [&] { save(), one = files(); },
          trigger("new"), type("LINE 1,1 2,2 "), [&] { save(), two = files(); },
          type("SAVEAS \"" + QString::fromStdString(folder() / "b.dxf") + "\""),
          [&] {
              save(), afterSave = files();
              AcDbDatabase copy(false);
              ASSERT_TRUE(host::readDrawing(copies() + "/1/1.dxf", copy).ok);
              AcDbObjectPointer<AcDbBlockTableRecord> space(copy.modelSpaceId(), AcDb::kForRead);
              AcDbObjectPointer<AcDbLine> line(space->entities().at(0), AcDb::kForRead);
              held = line->endPoint();
              EXPECT_TRUE(acDocManagerPtr()->documents().at(0)->database()->undoLog().changedSinceSave())
                  << "a copy is no saving";
          }});
    EXPECT_EQ(none.size(), 0);
    EXPECT_EQ(one.size(), 2);
    EXPECT_EQ(two.size(), 4);
    EXPECT_EQ(afterSave.size(), 2);
    EXPECT_EQ(held, AcGePoint3d(7, 8, 0));
    desk_.reset();
    EXPECT_TRUE(QDir(QString::fromStdString(copies())).isEmpty()) << "a clean end leaves nothing";
}

TEST_F(AutosaveTest, WhatACrashLeftIsOpenedUnderItsNameUnsaved) {
    const std::string path = folder() / "plan.dxf";
    leaveBehind(path, {3, 4, 0});
    QTimer::singleShot(50, [] { pressButton("Open Copies"); });
    QString tab;
    AcGePoint3d end;
    AcDb::AcDbDwgVersion version{};
    play({[&] {
        tab = desk_->window().tabs().tabText(desk_->window().tabs().currentIndex());
        version = drawing().originalFileVersion();
        AcDbObjectPointer<AcDbLine> line(entities().at(0), AcDb::kForRead);
        end = line->endPoint();
        EXPECT_EQ(files().size(), 2) << "it has a copy of the new program's, and the old one is gone";
    }});
    EXPECT_EQ(tab, "plan.dxf *");
    EXPECT_EQ(end, AcGePoint3d(3, 4, 0));
    EXPECT_EQ(version, host::versionByName("R2000"));
    EXPECT_FALSE(std::filesystem::exists(path)) << "the file itself is not written";
}

TEST_F(AutosaveTest, CopiesStayForLaterOrGoAsTheAnswerSays) {
    leaveBehind(folder() / "plan.dxf", {3, 4, 0});
    QTimer::singleShot(50, [] { pressButton("Later"); });
    play({});
    EXPECT_EQ(files().size(), 2);
    desk_.reset();
    desk_ = std::make_unique<desk::Desk>();
    desk_->window().show();
    QTimer::singleShot(50, [] { pressButton("Discard"); });
    play({});
    EXPECT_EQ(files().size(), 0);
}

// Another program's copies are its own while it runs, and to be had once it was killed.
TEST_F(AutosaveTest, AKilledProgramsCopyIsFound) {
    ASSERT_FALSE(host::makeFolders((folder() / "home").string()));
    ASSERT_FALSE(host::writeWhole((folder() / "home/settings.ini").string(),
                                  "[Software\\Brinkhaven\\Corvane\\Desk]\nAutosaveSeconds = 1\n"));
    QProcess program;
    program.start(CORVANE_DESK_PROGRAM, {"--lang", "en", "--line", "LINE 0,0 5,6 "});
    ASSERT_TRUE(program.waitForStarted());
    for (int tries = 0; tries < 200 && files().size() < 2; ++tries) QTest::qWait(50);
    EXPECT_EQ(files().size(), 2) << program.readAllStandardError().toStdString();
    {
        desk::Autosave mine(copies());
        EXPECT_TRUE(mine.leftBehind().empty()) << "its program runs";
    }
    program.kill();
    program.waitForFinished();
    desk::Autosave mine(copies());
    const std::vector<desk::Autosave::Left> left = mine.leftBehind();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].path, L"");
    EXPECT_EQ(left[0].title, L"Drawing1.dxf");
    std::string error;
    const auto drawing = left[0].read(error);
    ASSERT_TRUE(drawing) << error;
    EXPECT_TRUE(drawing->undoLog().changedSinceSave());
}

} // namespace
} // namespace desktest
