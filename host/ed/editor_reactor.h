// AcEditorReactor: hears of commands and system variables while it is added to the editor.
#pragma once
#include <vector>

#include "host/db/rx.h"

class AcDbDatabase;

class AcEditorReactor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEditorReactor)
public:
    virtual void commandWillStart(const ACHAR*) {}
    virtual void commandEnded(const ACHAR*) {}
    virtual void commandCancelled(const ACHAR*) {}
    virtual void commandFailed(const ACHAR*) {}
    virtual void unknownCommand(const ACHAR*, void*) {}
    virtual void sysVarChanged(const ACHAR*, bool) {}
    virtual void sysVarWillChange(const ACHAR*) {}
    virtual void pickfirstModified() {}
    virtual void viewChanged() {} // what part of the drawing shows, or from where
    virtual void beginSave(AcDbDatabase*, const ACHAR*) {}
    virtual void saveComplete(AcDbDatabase*, const ACHAR*) {}
    virtual void endDwgOpen(const ACHAR*, AcDbDatabase*) {}
};

class AcEditor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEditor)
public:
    void addReactor(AcEditorReactor* reactor);
    void removeReactor(AcEditorReactor* reactor);
    // Calls `tell` on each reactor; reactors may come and go meanwhile.
    template <class Tell> void each(Tell tell) {
        const auto copy = reactors_;
        for (AcEditorReactor* reactor : copy)
            for (AcEditorReactor* present : reactors_)
                if (present == reactor) {
                    tell(*reactor);
                    break;
                }
    }

private:
    std::vector<AcEditorReactor*> reactors_;
};
AcEditor* acedEditorPtr();
#define acedEditor acedEditorPtr()

namespace host {
// For front ends and commands: the view has changed. Vectors of acedGrDraw vanish, reactors hear it.
void viewChanged();
} // namespace host
