// The command loop and the running of one command.
#include "host/ed/interpreter.h"

#include <utility>
#include <vector>

#include "host/ed/application.h"
#include "host/ed/commands.h"
#include "host/ed/document.h"
#include "host/ed/editor.h"
#include "host/ed/editor_reactor.h"
#include "host/ed/frontend.h"
#include "host/ed/host_commands.h"
#include "host/ed/sysvars.h"
#include "host/os/text.h"

namespace host {
namespace {

struct Running {
    std::wstring name, word;
    bool cancelled = false;
};
std::vector<Running> running;
bool quitAsked = false;
std::vector<std::function<void()>> idleWork;

AcEdCommandStack* stack() { return static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK)); }

// The name without the marks that ask for a command's global or original meaning.
std::wstring plainName(const std::wstring& name) {
    return name.substr(std::min(name.find_first_not_of(L"_."), name.size()));
}

const AcEdCommand* findCommand(const std::wstring& name) {
    if (const AcEdCommand* command = stack()->lookUpCmd(name.c_str())) return command;
    const std::wstring plain = plainName(name);
    if (const std::wstring whole = commandOfAlias(plain); !whole.empty())
        return stack()->lookUpCmd(whole.c_str());
    if (findSystemVariable(plain)) return stack()->lookUpCmd(L"SETVAR");
    const std::wstring module = demandLoadModule(plain);
    if (module.empty() || !acrxDynamicLinker->loadModule(module.c_str())) return nullptr;
    return stack()->lookUpCmd(name.c_str());
}

// Round one command: the document's lock, the undo step, the reactors' moments.
class CommandScope {
public:
    CommandScope(const std::wstring& name, const std::wstring& localName, const std::wstring& word)
        : document_(curDoc()), name_(name) {
        running.push_back({name_, word, false});
        if (!document_) return;
        acDocManagerPtr()->lockDocument(document_, AcAp::kWrite, name_.c_str(), localName.c_str(), true);
        document_->database()->undoLog().begin(name_);
        acedEditorPtr()->each([&](AcEditorReactor& r) { r.commandWillStart(name_.c_str()); });
    }
    // Reactors change the drawing at the end of a command: inside its undo step.
    void finish(CommandResult result) {
        if (result == CommandResult::ended && running.back().cancelled) result = CommandResult::cancelled;
        acedEditorPtr()->each([&](AcEditorReactor& r) {
            if (result == CommandResult::ended)
                r.commandEnded(name_.c_str());
            else if (result == CommandResult::cancelled)
                r.commandCancelled(name_.c_str());
            else
                r.commandFailed(name_.c_str());
        });
        result_ = result;
    }
    CommandResult result() const { return result_; }
    ~CommandScope() {
        running.pop_back();
        if (!document_) return;
        document_->database()->undoLog().end();
        acDocManagerPtr()->unlockDocument(document_);
        if (running.empty()) frontEnd().redraw();
    }

private:
    AcApDocument* document_;
    std::wstring name_;
    CommandResult result_ = CommandResult::failed;
};

} // namespace

int runningCommands() { return int(running.size()); }
std::wstring runningCommandNames() {
    std::wstring names;
    for (const Running& command : running) names += (names.empty() ? L"" : L"'") + command.name;
    return names;
}
std::wstring runningCommandWord() { return running.empty() ? std::wstring() : running.back().word; }
void noteCancelled() {
    if (!running.empty()) running.back().cancelled = true;
}
void askQuit() { quitAsked = true; }

void whenIdle(std::function<void()> work) {
    if (running.empty()) return work();
    idleWork.push_back(std::move(work));
}

namespace {

CommandResult finished(CommandScope& scope, const std::function<void()>& work) {
    try {
        work();
        scope.finish(CommandResult::ended);
    } catch (const CommandUnwound&) {
        scope.finish(CommandResult::cancelled);
        if (running.size() > 1) throw;
    }
    return scope.result();
}

CommandResult runOne(const std::wstring& name) {
    const bool transparent = name.starts_with(L'\'');
    const std::wstring word = name.substr(transparent ? 1 : 0);
    const AcEdCommand* command = findCommand(word);
    if (!command) return CommandResult::unknown;
    if (transparent && !running.empty() && !command->isTransparent()) {
        frontEnd().print(L"\nThe command " + std::wstring(command->localName()) +
                         L" can't be used transparently.");
        return CommandResult::failed;
    }
    CommandScope scope(command->globalName(), command->localName(), plainName(word));
    return finished(scope, command->functionAddr());
}

void doIdleWork() {
    if (running.empty())
        for (const auto& work : std::exchange(idleWork, {})) work();
}

} // namespace

CommandResult runCommand(const std::wstring& name) {
    const CommandResult result = runOne(name);
    doIdleWork();
    return result;
}

CommandResult runAsCommand(const std::wstring& name, const std::function<void()>& work) {
    CommandResult result = CommandResult::failed;
    {
        CommandScope scope(name, name, name);
        result = finished(scope, work);
    }
    doIdleWork();
    return result;
}

namespace {

// Names of commands begin with a letter, or with one of the marks that may stand before it.
bool couldBeName(const std::wstring& text) {
    const wchar_t first = text[std::min(text.find_first_not_of(L"'_.-"), text.size() - 1)];
    const bool letter = (first >= L'A' && first <= L'Z') || (first >= L'a' && first <= L'z') || first > 127;
    return letter && text.find(L',') == text.npos;
}

void tellUnknown(const PromptReply& reply, LoopOutcome& outcome) {
    const bool answer = !couldBeName(reply.text);
    (answer ? outcome.leftOver : outcome.unknownCommand) = true;
    outcome.strays.push_back({reply.text, reply.line, answer});
    acedEditorPtr()->each([&](AcEditorReactor& r) { r.unknownCommand(reply.text.c_str(), nullptr); });
    frontEnd().print(L"\nUnknown command \"" + reply.text + L"\". Type HELP for the list of commands.");
}

} // namespace

LoopOutcome commandLoop() {
    LoopOutcome outcome;
    std::wstring last;
    quitAsked = false;
    PromptRequest request;
    request.text = L"\nCommand: ";
    while (!quitAsked) {
        const PromptReply reply = frontEnd().ask(request);
        if (reply.kind == PromptReply::Kind::exhausted) break;
        if (reply.kind == PromptReply::Kind::cancel) continue;
        const bool repeat = reply.kind == PromptReply::Kind::enter || reply.text.empty();
        const std::wstring name = repeat ? last : reply.text;
        if (name.empty()) continue;
        if (runCommand(name) == CommandResult::unknown) {
            tellUnknown(reply, outcome);
        } else {
            ++outcome.commands;
            last = name;
        }
    }
    outcome.quit = quitAsked;
    return outcome;
}

} // namespace host
