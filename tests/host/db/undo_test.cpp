// The undo log's law: after any edits, undo and redo give the drawing's every byte back.
#include <random>

#include "support.h"

namespace {

constexpr unsigned kSeed = 20240501;

// One random edit of a drawing that has some marks.
class Editor {
public:
    explicit Editor(AcDbDatabase& database) : db_(database), random_(kSeed) {
        for (const wchar_t* name : {L"*U", L"*U", L"Chair"}) addBlock(name);
    }
    void edit() {
        switch (pick(12)) {
        case 0:
        case 1: marks_.push_back(addMark(db_, double(pick(100)), blocks_[pick(blocks_.size())])); break;
        case 2: onMark([&](TestMark& m) { m.setAt({double(pick(1000)), 1, 2}); }); break;
        case 3: onMark([&](TestMark& m) { m.erase(!m.isErased()); }); break;
        case 4: onMark([&](TestMark& m) { m.setColorIndex(Adesk::UInt16(pick(257))); }); break;
        case 5: addLayer(db_, (L"Layer " + std::to_wstring(++layers_)).c_str()); break;
        case 6: db_.setHeaderReal("$USERR" + std::to_string(pick(9)), 40, double(pick(100))); break;
        case 7: move(); break;
        case 8:
            onMark([&](TestMark& m) {
                m.extensionDictionary().isNull() ? m.createExtensionDictionary()
                                                 : m.releaseExtensionDictionary();
            });
            break;
        case 9:
            onMark([&](TestMark& m) {
                host::ResbufChain data(acutBuildList(1001, L"ACAD", 1071, int(pick(1 << 20)), 0));
                m.setXData(data.get());
            });
            break;
        case 10: exchange(); break;
        default: rename();
        }
    }

private:
    size_t pick(size_t below) { return std::uniform_int_distribution<size_t>(0, below - 1)(random_); }
    template <class Change> void onMark(Change change) {
        if (marks_.empty()) return;
        AcDbObjectPointer<TestMark> mark(marks_[pick(marks_.size())], AcDb::kForWrite, true);
        if (mark) change(*mark.object());
    }
    void addBlock(const wchar_t* name) {
        AcDbObjectPointer<AcDbBlockTable> table(db_.blockTableId(), AcDb::kForWrite);
        auto* block = new AcDbBlockTableRecord;
        block->setName(name);
        ASSERT_EQ(table->add(blocks_.emplace_back(), block), Acad::eOk);
        block->close();
    }
    void move() {
        AcDbObjectIdArray ids;
        for (auto id : marks_)
            if (!id.isErased() && pick(4) == 0) ids.append(id);
        AcDbObjectPointer<AcDbBlockTableRecord> block(blocks_[pick(blocks_.size())], AcDb::kForWrite);
        block->setOrigin({double(pick(10)), 0, 0});
        EXPECT_EQ(block->assumeOwnershipOf(ids), Acad::eOk);
        addMarkTo(*block.object());
    }
    void addMarkTo(AcDbBlockTableRecord& block) {
        auto* mark = new TestMark;
        block.appendAcDbEntity(marks_.emplace_back(), mark);
        mark->close();
    }
    void exchange() {
        onMark([&](TestMark& m) {
            if (m.isErased()) return;
            auto* other = new TestMark;
            other->setAt({double(pick(50)), -1, -1});
            EXPECT_EQ(m.handOverTo(other), Acad::eOk);
            other->close();
            replaced_.emplace_back(&m); // ours now
        });
    }
    void rename() {
        AcDbObjectPointer<AcDbBlockTableRecord> block(blocks_[2], AcDb::kForWrite);
        EXPECT_EQ(block->setName((L"Chair " + std::to_wstring(++layers_)).c_str()), Acad::eOk);
    }

    AcDbDatabase& db_;
    std::mt19937 random_;
    std::vector<AcDbObjectId> marks_, blocks_;
    std::vector<std::unique_ptr<AcDbObject>> replaced_;
    int layers_ = 0;
};

TEST(Undo, RandomEditsGoBackAndForthByteForByte) {
    SCOPED_TRACE(kSeed);
    AcDbDatabase database;
    Editor editor(database);
    auto& log = database.undoLog();
    log.commit();
    std::vector<std::string> states{rendering(database)};
    for (int step = 0; step < 60; ++step) {
        log.begin(L"STEP");
        for (int i = 0; i < 12; ++i) editor.edit();
        log.end();
        states.push_back(rendering(database));
    }
    ASSERT_NE(states.front(), states.back());
    ASSERT_EQ(log.undoSteps(), states.size()) << "and the step that made the blocks";
    for (int pass = 0; pass < 2; ++pass) {
        for (size_t i = states.size() - 1; i-- > 0;) {
            ASSERT_EQ(log.undo(), 1);
            ASSERT_EQ(rendering(database), states[i]) << "back to state " << i;
        }
        for (size_t i = 1; i < states.size(); ++i) {
            ASSERT_EQ(log.redo(), 1);
            ASSERT_EQ(rendering(database), states[i]) << "on to state " << i;
        }
    }
    EXPECT_EQ(log.undo(1000), int(states.size()));
    EXPECT_EQ(rendering(database), rendering(AcDbDatabase())) << "back to the empty drawing";
}

TEST(Undo, BracketsNestAndEmptyStepsLeaveNoTrace) {
    AcDbDatabase database;
    auto& log = database.undoLog();
    log.begin(L"OUTER");
    log.begin(L"INNER");
    addMark(database);
    log.end();
    addMark(database);
    EXPECT_EQ(log.undoSteps(), 0u);
    log.end();
    log.begin(L"NOTHING");
    log.end();
    log.end(); // one too many does no harm
    EXPECT_EQ(log.undoSteps(), 1u);
    EXPECT_EQ(log.lastName(), L"OUTER");
    const AcDbObjectId kept = addMark(database);
    log.commit();
    EXPECT_EQ(log.undo(), 1);
    EXPECT_FALSE(kept.isValid());
    EXPECT_EQ(log.redoSteps(), 1u);
    const AcDbObjectId other = addMark(database);
    EXPECT_EQ(log.redoSteps(), 0u) << "a new change clears what could be done again";
    EXPECT_EQ(other.handle(), kept.handle()) << "the handle is free again";
    EXPECT_FALSE(kept.isValid()) << "but the old id stays dead";
}

TEST(Undo, MarksAreReachedAndPassed) {
    AcDbDatabase database;
    auto& log = database.undoLog();
    auto steps = [&](int count) {
        for (int i = 0; i < count; ++i) addMark(database), log.commit();
    };
    steps(2);
    log.setMark();
    steps(3);
    log.setMark();
    steps(1);
    EXPECT_EQ(log.undoToMark(), 1);
    EXPECT_EQ(log.undoToMark(), 3);
    EXPECT_EQ(log.undoSteps(), 2u);
    EXPECT_EQ(log.undoToMark(), 2) << "without a mark all is taken back";
    EXPECT_EQ(log.undo(), 0);
}

TEST(Undo, ReadersSurviveAndListenersHear) {
    Diary diary;
    AcDbDatabase database;
    const AcDbObjectId id = addMark(database, 1);
    database.undoLog().commit();
    AcDbObjectPointer<TestMark> mark(id, AcDb::kForWrite);
    mark->addReactor(&diary);
    mark->setAt({2, 0, 0});
    mark.open(id, AcDb::kForRead);
    database.undoLog().commit();
    diary.take();
    EXPECT_EQ(database.undoLog().undo(), 1);
    EXPECT_EQ(mark->at().x, 1) << "the open object itself was changed";
    EXPECT_EQ(diary.take(), "undone ");
    EXPECT_EQ(database.undoLog().undo(), 1);
    EXPECT_EQ(diary.take(), "unappended ");
    EXPECT_EQ(database.undoLog().redo(2), 2);
    EXPECT_EQ(diary.take(), "reappended undone ");
    EXPECT_EQ(mark->at().x, 2);
}

// Changes made while undo plays would be lost to the log; they are refused.
class Interferer : public AcDbObjectReactor {
public:
    AcDbObjectId target;
    Acad::ErrorStatus status = Acad::eOk;
    void modifyUndone(const AcDbObject*) override {
        AcDbObjectPointer<TestMark> mark(target, AcDb::kForWrite);
        status = mark->setAt({77, 0, 0});
    }
};

TEST(Undo, RefusesChangesWhileItPlays) {
    AcDbDatabase database;
    const AcDbObjectId id = addMark(database), other = addMark(database);
    database.undoLog().commit();
    Interferer interferer;
    interferer.target = other;
    AcDbObjectPointer<TestMark> mark(id, AcDb::kForWrite);
    mark->addReactor(&interferer);
    mark->setAt({2, 0, 0});
    mark.close();
    database.undoLog().undo();
    EXPECT_EQ(interferer.status, Acad::eWasNotifying);
    mark.open(id, AcDb::kForRead);
    mark->removeReactor(&interferer);
}

TEST(Undo, HandlesThatArePointedAtAreNotGivenOut) {
    AcDbDatabase database;
    const Adesk::UInt64 seed = database.handseed();
    database.cellOf(seed + 1, true); // a reference to something that a file never defines
    const std::string before = rendering(database);
    const AcDbObjectId first = addMark(database), second = addMark(database);
    EXPECT_EQ(first.handle(), seed);
    EXPECT_EQ(second.handle(), seed + 2);
    database.undoLog().undo();
    EXPECT_EQ(rendering(database), before);
}

TEST(Undo, KnowsWhetherTheDrawingWasSaved) {
    AcDbDatabase database;
    EXPECT_FALSE(database.undoLog().changedSinceSave());
    addMark(database);
    EXPECT_TRUE(database.undoLog().changedSinceSave());
    database.undoLog().markSaved();
    EXPECT_FALSE(database.undoLog().changedSinceSave());
}

} // namespace
