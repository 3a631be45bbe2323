// The undo log. Playing a step exchanges each object's present state with the earlier one, last
// change first; what is exchanged away, in the order of playing, is the step back.
#include "host/db/undo.h"

#include <algorithm>

#include "host/db/access.h"

namespace host {

struct UndoLog::Change {
    enum class Kind : std::uint8_t { data, presence, erasure, identity, header };
    Kind kind;
    bool erased = false; // erasure: as it was
    AcDbObjectId id;
    std::unique_ptr<AcDbObject> object; // data: the state; presence: the absent one; identity: the other
    size_t position = 0;                // presence: in the owner's list
    std::unique_ptr<HeaderVariable> variable;
    bool wasSet = false; // header: the variable stood in the drawing
};

struct UndoLog::Step {
    std::wstring name;
    Adesk::UInt64 nextHandle = 0;
    std::vector<Change> changes;
};

UndoLog::UndoLog(AcDbDatabase& database) : database_(database) {}
UndoLog::~UndoLog() = default;

// -- steps --------------------------------------------------------------------------------------------

void UndoLog::begin(const std::wstring& name) {
    if (depth_++ > 0) return;
    commit();
    name_ = name;
}

void UndoLog::end() {
    if (depth_ == 0 || --depth_ > 0) return;
    commit();
    name_.clear();
}

void UndoLog::commit() {
    if (depth_ == 0) closeStep();
}

void UndoLog::closeStep() {
    if (open_ && !open_->changes.empty()) undo_.push_back(std::move(open_));
    open_.reset();
}

UndoLog::Step& UndoLog::openStep() {
    if (!open_) {
        open_ = std::make_unique<Step>();
        open_->name = name_;
        open_->nextHandle = database_.nextHandle_;
        if (++stepNumber_ == IdCell::kUndone) stepNumber_ = 1;
        redo_.clear();
    }
    return *open_;
}

const std::wstring& UndoLog::lastName() const {
    static const std::wstring none;
    if (open_) return open_->name;
    return undo_.empty() ? none : undo_.back()->name;
}

void UndoLog::setMark() {
    closeStep();
    marks_.push_back(undo_.size());
}

int UndoLog::undoToMark() {
    closeStep();
    while (!marks_.empty() && marks_.back() > undo_.size()) marks_.pop_back();
    const size_t mark = marks_.empty() ? 0 : marks_.back();
    if (!marks_.empty()) marks_.pop_back();
    return undo(int(undo_.size() - mark));
}

void UndoLog::clear() {
    undo_.clear();
    redo_.clear();
    open_.reset();
    marks_.clear();
}

// -- recording ----------------------------------------------------------------------------------------

// True when the open step takes the object's state now; false when it has it or nothing is recorded.
bool UndoLog::hold(AcDbObject& object) {
    ++changes_;
    if (!recording()) return false;
    openStep();
    IdCell& cell = *object.objectId().cell();
    return std::exchange(cell.undoStep, stepNumber_) != stepNumber_;
}

bool UndoLog::willModify(AcDbObject& object) {
    if (!hold(object)) return false;
    Change change{Change::Kind::data, false, object.objectId(), object.snapshot(), 0, nullptr, false};
    if (!change.object) return false;
    open_->changes.push_back(std::move(change));
    return true;
}

bool UndoLog::takeBack(AcDbObject& object) {
    if (!open_) return false;
    const auto last = std::find_if(open_->changes.rbegin(), open_->changes.rend(),
                                   [&](const Change& c) { return c.id == object.objectId(); });
    if (last == open_->changes.rend() || last->kind != Change::Kind::data) return false;
    ObjectAccess::restore(object, *last->object);
    object.objectId().cell()->undoStep = 0;
    open_->changes.erase(std::next(last).base());
    if (open_->changes.empty()) open_.reset();
    return true;
}

void UndoLog::willErase(AcDbObject& object) {
    ++changes_;
    if (!recording()) return;
    openStep().changes.push_back(
        {Change::Kind::erasure, bool(object.isErased()), object.objectId(), nullptr, 0, nullptr, false});
}

void UndoLog::willAppend() {
    if (recording()) openStep();
}

void UndoLog::appended(AcDbObject& object) {
    ++changes_;
    if (!recording()) return;
    Step& step = openStep();
    object.objectId().cell()->undoStep = stepNumber_;
    step.changes.push_back({Change::Kind::presence, false, object.objectId(), nullptr, 0, nullptr, false});
}

void UndoLog::willChangeHeader(const std::string& variable) {
    ++changes_;
    if (!recording()) return;
    for (const auto& change : openStep().changes)
        if (change.variable && change.variable->name == variable) return;
    const GroupList* present = database_.headerValue(variable);
    auto former =
        std::make_unique<HeaderVariable>(HeaderVariable{variable, present ? *present : GroupList()});
    open_->changes.push_back(
        {Change::Kind::header, false, {}, nullptr, 0, std::move(former), present != nullptr});
}

void UndoLog::replaced(AcDbObjectId id, std::unique_ptr<AcDbObject> former) {
    ++changes_;
    if (!recording()) return;
    openStep().changes.push_back({Change::Kind::identity, false, id, std::move(former), 0, nullptr, false});
}

void UndoLog::forEachHeld(const std::function<void(std::unique_ptr<AcDbObject>&)>& visit) {
    auto visitStep = [&](Step& step) {
        for (auto& change : step.changes)
            if (change.object) visit(change.object);
    };
    for (auto& step : undo_) visitStep(*step);
    for (auto& step : redo_) visitStep(*step);
    if (open_) visitStep(*open_);
}

// -- playing ------------------------------------------------------------------------------------------

int UndoLog::undo(int count) {
    if (replaying_) return 0;
    closeStep();
    const int done = move(undo_, redo_, count);
    while (!marks_.empty() && marks_.back() > undo_.size()) marks_.pop_back();
    return done;
}

int UndoLog::redo(int count) { return replaying_ || open_ ? 0 : move(redo_, undo_, count); }

int UndoLog::move(std::vector<std::unique_ptr<Step>>& from, std::vector<std::unique_ptr<Step>>& to,
                  int count) {
    int done = 0;
    for (; done < count && !from.empty(); ++done) {
        auto step = std::move(from.back());
        from.pop_back();
        to.push_back(play(*step));
        ++changes_;
    }
    return done;
}

std::unique_ptr<UndoLog::Step> UndoLog::play(Step& step) {
    auto reverse = std::make_unique<Step>();
    reverse->name = step.name;
    reverse->nextHandle = std::exchange(database_.nextHandle_, step.nextHandle);
    reverse->changes.reserve(step.changes.size());
    replaying_ = true;
    for (auto change = step.changes.rbegin(); change != step.changes.rend(); ++change)
        playChange(*change, *reverse);
    tellPlayed(*reverse);
    replaying_ = false;
    return reverse;
}

void UndoLog::playChange(Change& change, Step& reverse) {
    AcDbObject* present = ObjectAccess::object(change.id);
    auto* owner = present ? peek<AcDbBlockTableRecord>(present->ownerId()) : nullptr;
    switch (change.kind) {
    case Change::Kind::data: {
        if (!present) return;
        auto state = present->snapshot();
        ObjectAccess::restore(*present, *change.object);
        change.object = std::move(state);
        break;
    }
    case Change::Kind::presence:
        if (present) {
            if (owner) change.position = owner->takeOut(change.id);
            change.id.cell()->object = nullptr;
            change.id.cell()->undoStep = IdCell::kUndone;
            change.object.reset(present);
        } else {
            AcDbObject* back = change.object.release();
            change.id.cell()->object = back;
            change.id.cell()->undoStep = 0;
            if (auto* record = peek<AcDbBlockTableRecord>(back->ownerId()))
                record->putIn(change.id, change.position);
        }
        break;
    case Change::Kind::erasure:
        if (!present) return;
        ObjectAccess::setErased(*present, std::exchange(change.erased, bool(present->isErased())));
        break;
    case Change::Kind::identity:
        if (!present || !change.object) return;
        ObjectAccess::exchange(*present, *change.object);
        static_cast<void>(change.object.release());
        change.object.reset(present);
        break;
    case Change::Kind::header: {
        const std::string& name = change.variable->name;
        const GroupList* now = database_.headerValue(name);
        const GroupList value = now ? *now : GroupList();
        const bool isSet = now != nullptr;
        if (change.wasSet)
            database_.setHeaderValue(name, change.variable->value);
        else
            database_.removeHeaderValue(name);
        change.variable->value = value;
        change.wasSet = isSet;
        break;
    }
    }
    reverse.changes.push_back(std::move(change));
}

// Told when all is in place; whoever listens sees the drawing as it stands after the step.
void UndoLog::tellPlayed(Step& reverse) {
    for (auto& change : reverse.changes) {
        AcDbObject* present = ObjectAccess::object(change.id);
        AcDbObject* object = present ? present : change.object.get();
        if (!object || change.kind == Change::Kind::header) continue;
        ObjectAccess::setUndoing(*object, true);
        const bool erased = object->isErased();
        switch (change.kind) {
        case Change::Kind::presence:
            ObjectAccess::tell(*object,
                               [&](auto& r) { present ? r.reappended(object) : r.unappended(object); });
            ObjectAccess::tellDatabase(&database_, [&](auto& r) {
                present ? r.objectReAppended(&database_, object) : r.objectUnAppended(&database_, object);
            });
            break;
        case Change::Kind::erasure:
            ObjectAccess::tell(*object, [&](auto& r) { r.erased(object, erased); });
            ObjectAccess::tellDatabase(&database_,
                                       [&](auto& r) { r.objectErased(&database_, object, erased); });
            break;
        default:
            ObjectAccess::tell(*object, [&](auto& r) { r.modifyUndone(object); });
            ObjectAccess::tellDatabase(&database_, [&](auto& r) { r.objectModified(&database_, object); });
        }
        ObjectAccess::setUndoing(*object, false);
    }
}

} // namespace host
