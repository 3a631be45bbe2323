// The command stack.
#include "host/ed/commands.h"

#include <algorithm>

#include "host/os/text.h"

HOST_DEFINE_ABSTRACT_CLASS(AcEdCommand, AcRxObject)
HOST_DEFINE_ABSTRACT_CLASS(AcEdCommandStack, AcRxObject)

namespace {

bool sameName(const AcEdCommand& command, const ACHAR* name, bool globalOnly) {
    return host::equalNoCase(command.globalName(), name) ||
           (!globalOnly && host::equalNoCase(command.localName(), name));
}

} // namespace

Acad::ErrorStatus AcEdCommandStack::addCommand(const ACHAR* group, const ACHAR* global, const ACHAR* local,
                                               Adesk::Int32 flags, AcRxFunctionPtr function, AcEdUIContext*,
                                               int, const AcRxResourceInstance&, AcEdCommand** command) {
    if (!group || !global || !*global || !function) return Acad::eInvalidInput;
    const ACHAR* typed = local && *local ? local : global;
    for (const auto& present : commands_)
        if (sameName(*present, global, false) || sameName(*present, typed, false)) return Acad::eDuplicateKey;
    auto entry = std::make_unique<AcEdCommand>();
    entry->group_ = group, entry->global_ = global, entry->local_ = typed;
    entry->flags_ = flags, entry->function_ = function;
    if (command) *command = entry.get();
    commands_.push_back(std::move(entry));
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeCmd(const ACHAR* group, const ACHAR* global) {
    const auto gone = std::erase_if(commands_, [&](const auto& command) {
        return host::equalNoCase(command->groupName(), group) && sameName(*command, global, true);
    });
    return gone ? Acad::eOk : Acad::eKeyNotFound;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const ACHAR* group) {
    const auto gone =
        std::erase_if(commands_, [&](const auto& c) { return host::equalNoCase(c->groupName(), group); });
    return gone ? Acad::eOk : Acad::eKeyNotFound;
}

const AcEdCommand* AcEdCommandStack::lookUpCmd(const ACHAR* name) const {
    bool globalOnly = false;
    for (; *name == L'_' || *name == L'.'; ++name) globalOnly |= *name == L'_';
    const auto found = std::find_if(commands_.begin(), commands_.end(), [&](const auto& command) {
        return sameName(*command, name, globalOnly);
    });
    return found == commands_.end() ? nullptr : found->get();
}
