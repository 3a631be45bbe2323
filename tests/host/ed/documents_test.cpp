// Documents with their locks, and modules that can't be loaded.
#include <fstream>

#include "host/ed/application.h"
#include "host/ed/editor_reactor.h"
#include "host/os/text.h"
#include "tests/host/ed/support.h"

using edtest::Bench;

TEST(Documents, LocksExcludeEachOtherAsTheirStrengthSays) {
    Bench bench;
    AcApDocManager& manager = *acDocManagerPtr();
    AcApDocument* document = bench.document();
    EXPECT_EQ(AcAp::kNotLocked, document->lockMode());
    EXPECT_EQ(Acad::eOk, manager.lockDocument(document, AcAp::kRead));
    EXPECT_EQ(Acad::eLockConflict, manager.lockDocument(document, AcAp::kXWrite));
    EXPECT_EQ(Acad::eOk, manager.lockDocument(document, AcAp::kWrite));
    EXPECT_EQ(AcAp::kWrite, document->lockMode());
    EXPECT_EQ(Acad::eOk, manager.unlockDocument(document));
    EXPECT_EQ(Acad::eOk, manager.unlockDocument(document));
    EXPECT_EQ(Acad::eInvalidInput, manager.unlockDocument(document));
    EXPECT_EQ(Acad::eOk, manager.lockDocument(document, AcAp::kXWrite));
    EXPECT_EQ(Acad::eLockConflict, manager.lockDocument(document, AcAp::kRead));
    EXPECT_EQ(Acad::eOk, manager.unlockDocument(document));
    EXPECT_EQ(Acad::eNoDocument, manager.lockDocument(nullptr));
}

TEST(Documents, WorkUnderALockIsAStepOfItsOwn) {
    Bench bench;
    acDocManagerPtr()->lockDocument(bench.document());
    bench.addLine({0, 0, 0}, {1, 0, 0});
    bench.addLine({0, 1, 0}, {1, 1, 0});
    acDocManagerPtr()->unlockDocument(bench.document());
    EXPECT_EQ(1u, bench.database().undoLog().undoSteps());
    bench.run(L"U\n");
    EXPECT_TRUE(bench.entities().empty());
}

TEST(Documents, ClosingMakesAnotherOneCurrent) {
    Bench first;
    {
        Bench second;
        EXPECT_EQ(second.document(), curDoc());
        EXPECT_EQ(&second.database(), acdbHostApplicationServices()->workingDatabase());
        EXPECT_EQ(first.document(), acDocManagerPtr()->document(&first.database()));
        acDocManagerPtr()->setCurDocument(first.document());
        second.run(L"POINT 1,1\n"); // works on the current one
        EXPECT_TRUE(AcDbObjectPointer<AcDbBlockTableRecord>(second.database().modelSpaceId(), AcDb::kForRead)
                        ->entities()
                        .empty());
        EXPECT_EQ(1u, first.entities().size());
    }
    EXPECT_EQ(first.document(), curDoc());
    EXPECT_EQ(&first.database(), acdbHostApplicationServices()->workingDatabase());
}

TEST(Documents, NewDrawingsAreNumberedAndOthersGoByTheirFile) {
    Bench first, second, third;
    EXPECT_STREQ(L"Drawing1.dxf", first.document()->docTitle());
    EXPECT_STREQ(L"Drawing2.dxf", second.document()->docTitle());
    third.database().setFilename(L"/drawings/a plan.dxf");
    Bench fourth;
    EXPECT_STREQ(L"a plan.dxf", third.document()->docTitle());
    EXPECT_STREQ(L"Drawing3.dxf", fourth.document()->docTitle());
}

// What a panel changes is a step with the panel's name, and reactors at its end belong to it.
TEST(Documents, WorkAsACommandIsOneStepWithItsReactors) {
    struct Follower : AcEditorReactor {
        explicit Follower(Bench& of) : bench(of) {}
        Bench& bench;
        std::wstring began;
        void commandWillStart(const ACHAR* name) override { began = name; }
        void commandEnded(const ACHAR*) override { bench.addCircle({0, 0, 0}, 1); }
    };
    Bench bench;
    Follower follower(bench);
    acedEditorPtr()->addReactor(&follower);
    const auto result = host::runAsCommand(L"PANEL", [&] { bench.addLine({0, 0, 0}, {1, 0, 0}); });
    acedEditorPtr()->removeReactor(&follower);
    EXPECT_EQ(host::CommandResult::ended, result);
    EXPECT_EQ(L"PANEL", follower.began);
    EXPECT_EQ(2u, bench.entities().size());
    EXPECT_EQ(1u, bench.database().undoLog().undoSteps());
    EXPECT_EQ(L"PANEL", bench.database().undoLog().lastName());
    EXPECT_EQ(AcAp::kNotLocked, bench.document()->lockMode());
    bench.run(L"U\n");
    EXPECT_TRUE(bench.entities().empty());
}

TEST(Modules, ThatCannotBeLoadedSayWhy) {
    Bench bench;
    const std::string text = edtest::settingsFolder() + "/text.so";
    std::ofstream(text) << "this is no library";
    const std::string folder = CORVANE_BAD_MODULES "/";
    const struct {
        std::string path;
        const char* why;
    } rows[] = {{"/nonexistent/module.so", "No such file"},
                {text, "file too short"},
                {folder + "bare_module.so", "it has no entry point acrxEntryPoint"},
                {folder + "old_module.so", "it was built for another version of the host"},
                {folder + "refusing_module.so", "it answered with an error"}};
    const size_t before = acrxDynamicLinker->loaded().size();
    for (const auto& row : rows) {
        const std::string transcript = bench.answer(
            L"", [&] { EXPECT_FALSE(acrxDynamicLinker->loadModule(host::wide(row.path).c_str())); });
        EXPECT_THAT(transcript, testing::HasSubstr(row.path));
        EXPECT_THAT(transcript, testing::HasSubstr(row.why));
        EXPECT_FALSE(acrxDynamicLinker->unloadModule(host::wide(row.path).c_str())) << row.path;
    }
    EXPECT_EQ(before, acrxDynamicLinker->loaded().size());
}
