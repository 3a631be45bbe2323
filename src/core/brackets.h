// Brackets round work on a drawing: undo groups, and document locks for work outside commands.
#pragma once
#include "core/host/editor.h"

namespace corvane {

// All changes of the scope are undone in one step.
class UndoGroup {
public:
    UndoGroup();
    ~UndoGroup();
    UndoGroup(const UndoGroup&) = delete;
    UndoGroup& operator=(const UndoGroup&) = delete;
};

// A document locked for writing, for dialogs and reactors that work outside any command; commands need no
// lock. When it goes, the lock does too and the view is refreshed.
class DocumentLock {
public:
    DocumentLock(); // the current one
    explicit DocumentLock(AcApDocument* document);
    ~DocumentLock();
    DocumentLock(const DocumentLock&) = delete;
    DocumentLock& operator=(const DocumentLock&) = delete;
    explicit operator bool() const { return locked_; }

private:
    AcApDocument* document_;
    bool locked_;
};

} // namespace corvane
