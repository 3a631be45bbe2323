// The host's own commands: one row each, which registration, help and lists read. Each handler
// stands with its kin in host_commands_*.cpp.
#pragma once
#include <functional>
#include <span>
#include <string>

#include "host/ed/commands.h"

namespace host {

inline constexpr wchar_t kHostGroup[] = L"HOST";

struct HostCommand {
    const wchar_t* name;  // global and local
    const wchar_t* alias; // the short form; empty when there is none
    Adesk::Int32 flags;
    AcRxFunctionPtr handler;
    const wchar_t* summary;
};
// In the order of registration.
std::span<const HostCommand> hostCommands();
// The command that the short form stands for; empty when it stands for none.
std::wstring commandOfAlias(const std::wstring& alias);

// What a list of commands tells of one.
struct CommandNote {
    std::wstring summary;
    bool built = true;
};
// Commands of modules are described by whoever knows them; start-up says who that is.
using CommandNotes = std::function<CommandNote(const AcEdCommand&)>;
void setCommandNotes(CommandNotes notes);
CommandNote commandNote(const AcEdCommand& command);

} // namespace host
