// Undo groups and document locks.
#include "core/brackets.h"

namespace corvane {

UndoGroup::UndoGroup() { acedCommandS(RTSTR, L"_.UNDO", RTSTR, L"_Begin", RTNONE); }
UndoGroup::~UndoGroup() { acedCommandS(RTSTR, L"_.UNDO", RTSTR, L"_End", RTNONE); }

DocumentLock::DocumentLock() : DocumentLock(acDocManagerPtr()->curDocument()) {}

DocumentLock::DocumentLock(AcApDocument* document)
    : document_(document),
      locked_(document_ && acDocManagerPtr()->lockDocument(document_, AcAp::kWrite, nullptr, nullptr, true) ==
                               Acad::eOk) {}

DocumentLock::~DocumentLock() {
    if (!locked_) return;
    acDocManagerPtr()->unlockDocument(document_);
    acedUpdateDisplay();
}

} // namespace corvane
