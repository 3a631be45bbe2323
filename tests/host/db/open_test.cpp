// Opening, closing, changing and erasing objects, and what the listeners hear of it.
#include "support.h"

namespace {

TEST(Opening, ManyReadersOrOneWriter) {
    AcDbDatabase database;
    const AcDbObjectId id = addMark(database);
    AcDbObject *first = nullptr, *other = nullptr;
    for (int i = 0; i < 256; ++i) ASSERT_EQ(acdbOpenAcDbObject(first, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForRead), Acad::eAtMaxReaders);
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    EXPECT_EQ(first->upgradeOpen(), Acad::eWasOpenForRead);
    for (int i = 0; i < 255; ++i) EXPECT_EQ(first->close(), Acad::eOk);
    EXPECT_EQ(first->upgradeOpen(), Acad::eOk);
    EXPECT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForRead), Acad::eWasOpenForWrite);
    EXPECT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForWrite), Acad::eWasOpenForWrite);
    EXPECT_EQ(first->downgradeOpen(), Acad::eOk);
    EXPECT_FALSE(first->isWriteEnabled());
    EXPECT_EQ(first->close(), Acad::eOk);
    EXPECT_EQ(first->close(), Acad::eInvalidOpenState);
}

TEST(Opening, NotifyStandsOnTopOfAnyOpen) {
    AcDbDatabase database;
    const AcDbObjectId id = addMark(database);
    for (const auto below : {AcDb::kForRead, AcDb::kForWrite}) {
        AcDbObject *holder = nullptr, *notified = nullptr;
        ASSERT_EQ(acdbOpenAcDbObject(holder, id, below), Acad::eOk);
        ASSERT_EQ(acdbOpenAcDbObject(notified, id, AcDb::kForNotify), Acad::eOk);
        Adesk::Boolean writable = false;
        EXPECT_EQ(notified->upgradeFromNotify(writable),
                  below == AcDb::kForRead ? Acad::eWasOpenForRead : Acad::eOk);
        EXPECT_EQ(writable, below == AcDb::kForWrite);
        EXPECT_EQ(notified->close(), Acad::eOk);
        EXPECT_EQ(holder->isWriteEnabled(), below == AcDb::kForWrite);
        EXPECT_EQ(holder->close(), Acad::eOk);
        EXPECT_EQ(holder->close(), Acad::eInvalidOpenState);
    }
    AcDbObject *notified = nullptr, *other = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(notified, id, AcDb::kForNotify), Acad::eOk);
    EXPECT_EQ(acdbOpenAcDbObject(other, id, AcDb::kForRead), Acad::eWasOpenForNotify);
    Adesk::Boolean writable = true;
    EXPECT_EQ(notified->upgradeFromNotify(writable), Acad::eOk);
    EXPECT_EQ(TestMark::cast(notified)->setAt({4, 0, 0}), Acad::eOk);
    EXPECT_EQ(notified->downgradeToNotify(writable), Acad::eOk);
    EXPECT_EQ(TestMark::cast(notified)->setAt({5, 0, 0}), Acad::eNotOpenForWrite);
    EXPECT_EQ(notified->close(), Acad::eOk);
}

TEST(Opening, StatusesOfWhatCantBeOpened) {
    AcDbDatabase database;
    const AcDbObjectId id = addMark(database);
    AcDbLayerTableRecord* layer = nullptr;
    EXPECT_EQ(acdbOpenObject(layer, AcDbObjectId(), AcDb::kForRead), Acad::eNullObjectId);
    EXPECT_EQ(acdbOpenObject(layer, AcDbObjectId(database.cellOf(0xFFFF, true)), AcDb::kForRead),
              Acad::eUnknownHandle);
    EXPECT_EQ(acdbOpenObject(layer, id, AcDb::kForWrite), Acad::eNotThatKindOfClass);
    AcDbObjectPointer<TestMark> mark(id, AcDb::kForWrite);
    ASSERT_EQ(mark.openStatus(), Acad::eOk) << "a failed cast leaves nothing open";
    mark->erase();
    mark.close();
    EXPECT_EQ(mark.open(id, AcDb::kForRead), Acad::eWasErased);
    EXPECT_EQ(mark.open(id, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_EQ(mark->erase(false), Acad::eOk);
}

TEST(Opening, SettersWantAWriter) {
    AcDbDatabase database;
    AcDbObjectPointer<TestMark> mark(addMark(database, 7), AcDb::kForRead);
    EXPECT_EQ(mark->setAt({1, 2, 3}), Acad::eNotOpenForWrite);
    EXPECT_EQ(mark->setColorIndex(3), Acad::eNotOpenForWrite);
    EXPECT_EQ(mark->erase(), Acad::eNotOpenForWrite);
    EXPECT_EQ(mark->at().x, 7);
    TestMark free;
    EXPECT_EQ(free.setAt({1, 2, 3}), Acad::eOk);
    EXPECT_EQ(free.close(), Acad::eOk);
    EXPECT_TRUE(free.blockId().isNull());
    EXPECT_EQ(free.layerName(), L"0");
}

// Each row: what is done in one open for write, and what a listener hears.
TEST(Listeners, HearTheMomentsInOrder) {
    struct Row {
        const char* caption;
        void (*change)(TestMark&);
        const char* heard;
    };
    const Row rows[] = {
        {"nothing", [](TestMark&) {}, ""},
        {"one change",
         [](TestMark& m) {
             m.setAt({1, 0, 0});
         },
         "opened modified closed "},
        {"two changes",
         [](TestMark& m) {
             m.setAt({2, 0, 0}), m.setColorIndex(3);
         },
         "opened modified closed "},
        {"xdata",
         [](TestMark& m) {
             host::ResbufChain data(acutBuildList(1001, L"ACAD", 1070, 7, 0));
             m.setXData(data.get());
         },
         "opened modified xdata closed "},
        {"erasure", [](TestMark& m) { m.erase(); }, "opened modified erased closed "},
        {"erasure taken back", [](TestMark& m) { m.erase(false); }, "opened modified back closed "},
        {"both ways", [](TestMark& m) { m.erase(), m.erase(false); }, "opened modified closed "},
        {"a refused value", [](TestMark& m) { m.setColorIndex(999); }, ""},
    };
    Diary diary;
    AcDbDatabase database;
    AcDbObjectPointer<TestMark> mark(addMark(database), AcDb::kForRead);
    mark->addReactor(&diary);
    const AcDbObjectId id = mark->objectId();
    for (const auto& row : rows) {
        mark.open(id, AcDb::kForWrite, true);
        row.change(*mark.object());
        mark.close();
        EXPECT_EQ(diary.take(), row.heard) << row.caption;
    }
    mark.open(id, AcDb::kForRead);
    delete mark->clone();
    EXPECT_EQ(diary.take(), "copied ");
}

TEST(Listeners, HearGoodbyeWhenTheDrawingGoes) {
    Diary diary;
    {
        AcDbDatabase database;
        AcDbObjectPointer<TestMark>(addMark(database), AcDb::kForRead)->addReactor(&diary);
    }
    EXPECT_EQ(diary.take(), "goodbye ");
}

// Meddles while it is told: opens, removes others, and asks for what isn't given.
class Meddler : public Diary {
public:
    AcDbObjectReactor* victim = nullptr;
    Acad::ErrorStatus upgrade = Acad::eOk, write = Acad::eOk, read = Acad::eOk;
    void modified(const AcDbObject* subject) override {
        auto* object = const_cast<AcDbObject*>(subject);
        upgrade = object->upgradeOpen();
        AcDbObject* again = nullptr;
        write = acdbOpenAcDbObject(again, subject->objectId(), AcDb::kForWrite);
        read = acdbOpenAcDbObject(again, subject->objectId(), AcDb::kForRead);
        if (again) again->close();
        subject->removeReactor(victim);
        subject->removeReactor(this);
        addMark(*subject->database(), 99);
    }
};

TEST(Listeners, MayMeddleWhileTheyAreTold) {
    Meddler meddler;
    Diary victim;
    AcDbDatabase database;
    const AcDbObjectId id = addMark(database);
    meddler.victim = &victim;
    AcDbObjectPointer<TestMark> mark(id, AcDb::kForWrite);
    mark->addReactor(&meddler);
    mark->addReactor(&victim);
    mark->setAt({1, 1, 1});
    mark.close();
    EXPECT_EQ(victim.take(), "opened ") << "removed before its turn";
    EXPECT_EQ(meddler.upgrade, Acad::eWasNotifying);
    EXPECT_EQ(meddler.write, Acad::eWasNotifying);
    EXPECT_EQ(meddler.read, Acad::eOk);
    EXPECT_EQ(mark.open(id, AcDb::kForWrite), Acad::eOk) << "nothing is left open";
    EXPECT_TRUE(mark->transientReactors().empty());
}

// A persistent reactor that keeps count in its own data.
class Counter : public AcDbXrecord {
public:
    int told = 0, parts = 0;
    void modified(const AcDbObject*) override { ++told; }
    void subObjModified(const AcDbObject*, const AcDbObject*) override { ++parts; }
};

TEST(Listeners, PersistentReactorsAreOpenedAndMissingOnesSkipped) {
    AcDbDatabase database;
    AcDbDictionary* root = nullptr;
    ASSERT_EQ(database.getNamedObjectsDictionary(root, AcDb::kForWrite), Acad::eOk);
    auto* counter = new Counter;
    AcDbObjectId counterId;
    ASSERT_EQ(root->setAt(L"COUNTER", counter, counterId), Acad::eOk);
    counter->close();
    root->close();
    const AcDbObjectId whole = addMark(database), part = addMark(database);
    AcDbObjectPointer<TestMark> mark(whole, AcDb::kForWrite);
    mark->addPersistentReactor(AcDbObjectId(database.cellOf(0xABCDE, true)));
    mark->addPersistentReactor(counterId);
    mark->addPart(part);
    mark.close();
    EXPECT_EQ(counter->told, 1);
    AcDbObjectPointer<TestMark> vertex(part, AcDb::kForWrite);
    vertex->setOwnerId(whole);
    vertex.close();
    EXPECT_EQ(counter->parts, 1) << "the whole's reactor hears of the part";
    mark.open(whole, AcDb::kForWrite);
    mark->setAt({5, 5, 5});
    AcDbObjectPointer<AcDbXrecord> busy(counterId, AcDb::kForWrite);
    mark.close();
    EXPECT_EQ(counter->told, 2) << "kForNotify works whatever the reactor is open for";
    EXPECT_TRUE(busy->isWriteEnabled());
}

class Census : public AcDbDatabaseReactor {
public:
    std::string heard;
    void objectAppended(const AcDbDatabase*, const AcDbObject*) override { heard += "appended "; }
    void objectModified(const AcDbDatabase*, const AcDbObject*) override { heard += "modified "; }
    void objectErased(const AcDbDatabase*, const AcDbObject*, Adesk::Boolean) override { heard += "erased "; }
    void objectUnAppended(const AcDbDatabase*, const AcDbObject*) override { heard += "unappended "; }
    void objectReAppended(const AcDbDatabase*, const AcDbObject*) override { heard += "reappended "; }
    void headerSysVarChanged(const AcDbDatabase*, const ACHAR* name, Adesk::Boolean) override {
        heard += host::utf8(name) + ' ';
    }
};

TEST(Listeners, TheDrawingsReactorHearsOfAllObjects) {
    AcDbDatabase database;
    Census census;
    database.addReactor(&census);
    const AcDbObjectId id = addMark(database);
    EXPECT_EQ(census.heard, "appended modified ") << "the new entity, then its block";
    census.heard.clear();
    database.undoLog().commit();
    AcDbObjectPointer<TestMark> mark(id, AcDb::kForWrite);
    mark->erase();
    mark.close();
    database.setHeaderReal("$LTSCALE", 40, 3);
    EXPECT_EQ(census.heard, "modified erased LTSCALE ");
    database.undoLog().commit();
    census.heard.clear();
    EXPECT_EQ(database.undoLog().undo(2), 2);
    EXPECT_EQ(census.heard, "LTSCALE erased unappended ");
    census.heard.clear();
    EXPECT_EQ(database.undoLog().redo(2), 2);
    EXPECT_EQ(census.heard, "reappended LTSCALE erased ");
    database.removeReactor(&census);
}

TEST(Erasing, PartsGoAndComeBackWithTheWhole) {
    AcDbDatabase database;
    const AcDbObjectId whole = addMark(database), part = addMark(database);
    AcDbObjectPointer<TestMark> mark(whole, AcDb::kForWrite);
    mark->addPart(part);
    mark->createExtensionDictionary();
    const AcDbObjectId extension = mark->extensionDictionary();
    AcDbObjectPointer<TestMark> reader(part, AcDb::kForRead); // even while somebody reads the part
    EXPECT_EQ(mark->erase(), Acad::eOk);
    EXPECT_EQ(mark->erase(), Acad::eWasErased);
    EXPECT_TRUE(part.isErased());
    EXPECT_TRUE(extension.isErased());
    EXPECT_EQ(mark->erase(false), Acad::eOk);
    EXPECT_FALSE(part.isErased());
    EXPECT_FALSE(extension.isErased());
}

TEST(Cancelling, TakesBackWhatTheOpenChanged) {
    Diary diary;
    AcDbDatabase database;
    const AcDbObjectId id = addMark(database, 1);
    database.undoLog().commit();
    AcDbObjectPointer<TestMark> mark(id, AcDb::kForWrite);
    mark->addReactor(&diary);
    mark->setAt({2, 0, 0});
    EXPECT_EQ(mark->cancel(), Acad::eOk);
    EXPECT_EQ(diary.take(), "opened cancelled ");
    mark.open(id, AcDb::kForWrite);
    EXPECT_EQ(mark->at().x, 1);
    mark->setAt({3, 0, 0});
    mark.open(id, AcDb::kForWrite);
    mark->setAt({4, 0, 0});
    EXPECT_EQ(mark->cancel(), Acad::eNotApplicable) << "the step has an older state only";
    EXPECT_EQ(mark->at().x, 4);
    EXPECT_TRUE(mark->isWriteEnabled());
}

} // namespace
