// The command loop: takes a command's name from the front end, finds it, runs it as one undo step.
#pragma once
#include <functional>
#include <string>
#include <vector>

namespace host {

enum class CommandResult { ended, cancelled, failed, unknown };

// Thrown through a command when the script has run dry or the user pressed Esc too often; caught by
// runCommand. Handlers let it pass and nothing else throws through them.
struct CommandUnwound {};

// Runs one command by name, short form of the host's own, or name of a system variable, which SETVAR then
// asks for: locks the document, opens an undo step, tells the editor reactors, unwinds on
// exhaustion. Inside another command it needs the transparent flag ("'" before the name) or acedCommandS.
CommandResult runCommand(const std::wstring& name);
// Does the work as a command of that name would: for changes by hand, such as in a panel. Not inside a
// command.
CommandResult runAsCommand(const std::wstring& name, const std::function<void()>& work);

struct LoopOutcome {
    // What stood where a command's name was asked for and is none.
    struct Stray {
        std::wstring text;
        int line = 0;        // of the script; 0 when typed
        bool answer = false; // no name at all, such as a point: left over by the command before
    };
    int commands = 0;
    bool unknownCommand = false; // at least one
    bool leftOver = false;       // answers stood where no command asked
    std::vector<Stray> strays;   // both
    bool quit = false;
};
// Asks for commands until the front end is exhausted or QUIT ends it. Enter repeats the last command.
LoopOutcome commandLoop();

// How many commands run inside each other, and their global names as CMDNAMES shows them, outermost first.
int runningCommands();
std::wstring runningCommandNames();
// The word that started the innermost one: its name, or that of a system variable. Empty when none runs.
std::wstring runningCommandWord();
// The command that runs was stopped by Esc: it counts as cancelled when it returns.
void noteCancelled();
// Ends the command loop after the command that runs.
void askQuit();

// Work for when no command runs any more, such as a change of the current drawing; at once when none does.
void whenIdle(std::function<void()> work);

// Registers the host's own commands (UNDO, U, REDO, SETVAR, SAVEAS, QUIT, LINE ...), once.
void registerHostCommands();

} // namespace host
