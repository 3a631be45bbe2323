// The undo log of a drawing: one command, one step. A step holds the earlier state of each
// object and header variable that changed in it, taken at the first change.
#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/db/groups.h"
#include "host/db/objectid.h"

class AcDbObject;

namespace host {

class UndoLog {
public:
    explicit UndoLog(AcDbDatabase& database);
    ~UndoLog();
    UndoLog(const UndoLog&) = delete;
    UndoLog& operator=(const UndoLog&) = delete;

    // Brackets nest; only the outermost makes a step. Changes outside all brackets make one
    // step each time commit() is called. A step in which nothing changed leaves no trace.
    void begin(const std::wstring& name);
    void end();
    // Closes an open step that no bracket holds.
    void commit();
    int depth() const { return depth_; }

    // Takes the last `count` steps back, newest first; fewer when there are no more. Returns how many.
    int undo(int count = 1);
    int redo(int count = 1);
    size_t undoSteps() const { return undo_.size(); }
    size_t redoSteps() const { return redo_.size(); }
    const std::wstring& lastName() const; // of the step that undo would take back; empty when none
    // The mark and back of the UNDO command.
    void setMark();
    int undoToMark();
    bool hasMark() const { return !marks_.empty(); }
    void clear();
    // Reading a file and other bulk work that can't be undone turns recording off.
    void setRecording(bool on) { recording_ = on; }
    bool recording() const { return recording_ && !replaying_; }
    bool replaying() const { return replaying_; }
    // True when something changed since the drawing was saved or opened.
    bool changedSinceSave() const { return changes_ != savedAt_; }
    void markSaved() { savedAt_ = changes_; }
    void markChanged() { ++changes_; } // it differs from its file otherwise than by a recorded change
    unsigned long changes() const { return changes_; } // grows with every one

    // The database tells what happens; each before the change.
    // Also of objects that aren't open. True when the state was taken now, false when the step had it.
    bool willModify(AcDbObject& object);
    // Takes the object's change of the open step back, if it has one there; false otherwise.
    bool takeBack(AcDbObject& object);
    void willErase(AcDbObject& object);
    void willAppend(); // before the object gets its handle
    void appended(AcDbObject& object);
    void willChangeHeader(const std::string& variable);
    // The object of an id is exchanged (handOverTo); the log keeps the one that leaves.
    void replaced(AcDbObjectId id, std::unique_ptr<AcDbObject> former);
    // Every object and earlier state that the log holds; the visitor may exchange it.
    void forEachHeld(const std::function<void(std::unique_ptr<AcDbObject>&)>& visit);

private:
    struct Change;
    struct Step;
    Step& openStep();
    void closeStep();
    bool hold(AcDbObject& object);
    std::unique_ptr<Step> play(Step& step);
    void playChange(Change& change, Step& reverse);
    void tellPlayed(Step& reverse);
    int move(std::vector<std::unique_ptr<Step>>& from, std::vector<std::unique_ptr<Step>>& to, int count);

    AcDbDatabase& database_;
    std::vector<std::unique_ptr<Step>> undo_, redo_;
    std::unique_ptr<Step> open_;
    std::vector<size_t> marks_; // numbers of steps that stood when the marks were set
    std::wstring name_;
    Adesk::UInt32 stepNumber_ = 1; // stands in IdCell::undoStep of objects that the open step holds
    int depth_ = 0;
    bool recording_ = true, replaying_ = false;
    unsigned long changes_ = 0, savedAt_ = 0;
};

} // namespace host
