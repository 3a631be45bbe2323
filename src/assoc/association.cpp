// Reactors, queues and the work at the end of a command.
#include "assoc/association.h"

#include <algorithm>
#include <utility>

#include "core/brackets.h"
#include "core/host/entities.h"

namespace corvane {

class Association::CurveReactor : public AcDbObjectReactor {
public:
    explicit CurveReactor(Association& association) : association_(association) {}
    void modified(const AcDbObject* curve) override { association_.CurveChangedHere(curve); }
    // A curve that undo takes out of the drawing can't be found any more when the module goes, and may come
    // back after that. Its persistent reactor comes back with it.
    void unappended(const AcDbObject* curve) override { curve->removeReactor(this); }

private:
    Association& association_;
};

class Association::CommandReactor : public AcEditorReactor {
public:
    explicit CommandReactor(Association& association) : association_(association) {}
    void commandEnded(const ACHAR*) override { association_.Flush(); }
    void commandCancelled(const ACHAR*) override { association_.Flush(); }
    void commandFailed(const ACHAR*) override { association_.Flush(); }

private:
    Association& association_;
};

class Association::DrawingReactor : public AcDbDatabaseReactor {
public:
    explicit DrawingReactor(Association& association) : association_(association) {}
    void goodbye(const AcDbDatabase* database) override { association_.forget(database); }

private:
    Association& association_;
};

namespace {

// What this association changes itself must not come back to it as news.
class Busy {
public:
    explicit Busy(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    ~Busy() { flag_ = before_; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    bool& flag_;
    const bool before_;
};

void addOnce(std::vector<AcDbObjectId>& ids, AcDbObjectId id) {
    if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
}

} // namespace

void NotifyObject::modified(const AcDbObject* curve) { association_.CurveChanged(curve); }

Association::Association(const AssociationKind& kind)
    : kind_(kind), index_(kind.notifyEntry, kind.indexEntry),
      curveReactor_(std::make_unique<CurveReactor>(*this)),
      commandReactor_(std::make_unique<CommandReactor>(*this)),
      drawingReactor_(std::make_unique<DrawingReactor>(*this)) {}

Association::~Association() = default;

// -- lists --------------------------------------------------------------------------------------------

Association::Lists& Association::listsOf(AcDbDatabase* database) {
    for (const auto& lists : drawings_)
        if (lists->database == database) return *lists;
    database->addReactor(drawingReactor_.get());
    return *drawings_.emplace_back(std::make_unique<Lists>(Lists{database}));
}

void Association::forget(const AcDbDatabase* database) {
    std::erase_if(drawings_, [&](const auto& lists) { return lists->database == database; });
}

void Association::watchCommands() {
    if (watching_) return;
    acedEditor->addReactor(commandReactor_.get());
    watching_ = true;
}

void Association::note(Lists& lists, AcDbObjectId curve, AcDbObjectId block) {
    addOnce(lists.blocks[curve], block);
    AcDbObjectPointer<AcDbObject> opened(curve, AcDb::kForRead);
    if (opened && !opened->hasReactor(curveReactor_.get())) opened->addReactor(curveReactor_.get());
}

void Association::drop(Lists& lists, AcDbObjectId curve, AcDbObjectId block) {
    for (auto& [each, blocks] : lists.blocks) std::erase(blocks, block);
    index_.Remove(curve, block);
}

void Association::load(Lists& lists) {
    if (lists.loaded) return;
    lists.loaded = true;
    if (!index_.Present(lists.database)) return scan(lists);
    index_.ForEach(lists.database, [&](AcDbObjectId curve, const std::vector<AcDbObjectId>& blocks) {
        for (const AcDbObjectId block : blocks) note(lists, curve, block);
    });
}

// A drawing whose index was taken out of it, as when it went through another program.
void Association::scan(Lists& lists) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(lists.database->modelSpaceId(), AcDb::kForRead);
    if (!space) return;
    for (const AcDbObjectId id : space->entities()) {
        if (!id.isValid() || id.isErased() || !id.objectClass()->isDerivedFrom(AcDbBlockReference::desc()))
            continue;
        if (const auto curves = kind_.curvesOf(id))
            for (const AcDbObjectId curve : *curves) note(lists, curve, id);
    }
}

// The drawing's index comes first: undo changes it with all else, the lists in memory not.
std::vector<AcDbObjectId> Association::followers(Lists& lists, AcDbObjectId curve) {
    std::vector<AcDbObjectId> blocks = index_.Blocks(curve);
    if (const auto listed = lists.blocks.find(curve); listed != lists.blocks.end())
        for (const AcDbObjectId block : listed->second) addOnce(blocks, block);
    return blocks;
}

void Association::Follow(AcDbObjectId block, std::span<const AcDbObjectId> curves) {
    const Busy busy(busy_);
    const AcDbObjectId notify = index_.NotifyObject(block.database(), kind_.makeNotify);
    Lists& lists = listsOf(block.database());
    for (const AcDbObjectId curve : curves) {
        note(lists, curve, block);
        index_.Add(curve, block);
        AcDbObjectPointer<AcDbObject> opened(curve, AcDb::kForRead);
        if (!opened || opened->isPersistentReactor(notify)) continue;
        opened.close();
        if (opened.open(curve, AcDb::kForWrite) == Acad::eOk) opened->addPersistentReactor(notify);
    }
    watchCommands();
}

void Association::Detach() {
    for (const auto& lists : drawings_) {
        for (const auto& [curve, blocks] : lists->blocks) {
            AcDbObjectPointer<AcDbObject> opened(curve, AcDb::kForRead, true);
            if (opened) opened->removeReactor(curveReactor_.get());
        }
        lists->database->removeReactor(drawingReactor_.get());
    }
    drawings_.clear();
    if (watching_) acedEditor->removeReactor(commandReactor_.get());
    watching_ = false;
}

// -- changes ------------------------------------------------------------------------------------------

void Association::CurveChanged(const AcDbObject* curve) {
    if (busy_ || !curve->database()) return;
    Lists& lists = listsOf(curve->database());
    if (lists.queued.insert(curve->objectId()).second) lists.queue.push_back(curve->objectId());
    watchCommands();
}

void Association::CurveChangedHere(const AcDbObject* curve) {
    if (busy_) return;
    AcApDocument* document = kind_.atOnce ? acDocManager->document(curve->database()) : nullptr;
    const DocumentLock lock(document);
    if (!lock) return CurveChanged(curve);
    work(listsOf(curve->database()), {curve->objectId()});
}

void Association::Flush() {
    if (busy_) return;
    for (size_t i = 0; i < drawings_.size(); ++i) {
        Lists& lists = *drawings_[i];
        if (lists.queue.empty()) continue;
        const DocumentLock lock(acDocManager->document(lists.database));
        if (!lock) continue;
        load(lists);
        lists.queued.clear();
        work(lists, std::exchange(lists.queue, {}));
    }
}

void Association::work(Lists& lists, const std::vector<AcDbObjectId>& curves) {
    const Busy busy(busy_);
    std::vector<AcDbObjectId> due; // a block whose curves changed together is made anew once
    std::unordered_set<AcDbObjectId> known;
    for (const AcDbObjectId curve : curves)
        for (const AcDbObjectId block : followers(lists, curve)) {
            const auto followed = kind_.curvesOf(block);
            if (!followed)
                drop(lists, curve, block);
            else if (std::find(followed->begin(), followed->end(), curve) != followed->end() &&
                     known.insert(block).second)
                due.push_back(block);
        }
    for (const AcDbObjectId block : due) kind_.rebuild(block);
}

} // namespace corvane
