// The editor's list of reactors.
#include "host/ed/editor_reactor.h"

#include <algorithm>

#include "host/view/screen.h"

HOST_DEFINE_ABSTRACT_CLASS(AcEditorReactor, AcRxObject)
HOST_DEFINE_ABSTRACT_CLASS(AcEditor, AcRxObject)

void AcEditor::addReactor(AcEditorReactor* reactor) {
    if (std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end())
        reactors_.push_back(reactor);
}
void AcEditor::removeReactor(AcEditorReactor* reactor) { std::erase(reactors_, reactor); }

AcEditor* acedEditorPtr() {
    static AcEditor editor;
    return &editor;
}

void host::viewChanged() {
    screen().clearVectors();
    acedEditorPtr()->each([](AcEditorReactor& reactor) { reactor.viewChanged(); });
}
