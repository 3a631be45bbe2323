// "run": commands on a drawing, by a script or at the prompt.
#include <unistd.h>

#include <cstdio>

#include "apps/corvane/drawing_files.h"
#include "apps/corvane/pictures.h"
#include "apps/corvane/prompt_frontend.h"
#include "apps/corvane/report.h"
#include "apps/corvane/script_source.h"
#include "apps/corvane/session.h"
#include "apps/corvane/subcommands.h"
#include "host/ed/interpreter.h"
#include "host/ed/script.h"
#include "host/ed/sysvars.h"
#include "host/os/text.h"

namespace app {
namespace {

// What has to be known before anything is read.
struct Plan {
    AcDb::AcDbDwgVersion version = AcDb::kDHL_Unknown;
    std::vector<std::string> pictures, comparisons;
    bool interactive = false;
};

bool makePlan(const Arguments& arguments, Plan& plan) {
    plan.pictures = arguments.values("--picture");
    plan.comparisons = arguments.values("--before-after");
    for (const std::string& path : plan.pictures)
        if (!isPicturePath(path, "--picture")) return false;
    for (const std::string& path : plan.comparisons)
        if (!isPicturePath(path, "--before-after")) return false;
    plan.interactive =
        arguments.positional().size() < 2 && !arguments.has("--command") && isatty(STDIN_FILENO);
    return readVersion(arguments, plan.version);
}

// The variables of --set, for this run alone: those that the user's profile keeps are put back at the end.
class RunVariables {
public:
    ~RunVariables() {
        std::wstring why;
        for (auto one = former_.rbegin(); one != former_.rend(); ++one)
            host::setSystemVariableText(*one->variable, one->text, why);
    }
    // False, and told, when a setting makes no sense.
    bool set(const std::string& setting) {
        const size_t equals = setting.find('=');
        if (equals == setting.npos || equals == 0) return refuse(setting, "VAR=VALUE is needed");
        const std::string name = setting.substr(0, equals);
        const host::SystemVariable* variable = host::findSystemVariable(host::wide(name));
        if (!variable)
            return refuse(setting,
                          "there is no system variable " + name + "; the command SETVAR ? * lists them");
        const std::wstring before = host::systemVariableText(*variable);
        std::wstring why;
        if (!host::setSystemVariableText(*variable, host::wide(setting.substr(equals + 1)), why))
            return refuse(setting, host::utf8(why));
        if (variable->home == host::SystemVariable::Home::profile) former_.push_back({variable, before});
        return true;
    }

private:
    static bool refuse(const std::string& setting, const std::string& why) {
        return complain("--set " + setting + ": " + why), false;
    }
    struct Former {
        const host::SystemVariable* variable;
        std::wstring text;
    };
    std::vector<Former> former_;
};

// Tells what of the script went astray.
ExitStatus judge(const host::LoopOutcome& outcome, const host::ScriptFrontEnd& frontEnd,
                 const ScriptSource& source) {
    constexpr size_t kMostTold = 5;
    for (size_t i = 0; i < outcome.strays.size() && i < kMostTold; ++i) {
        const host::LoopOutcome::Stray& stray = outcome.strays[i];
        const std::string what = stray.answer ? "nothing asked for the answer \"" : "unknown command \"";
        complain(source.place(stray.line) + ": " + what + host::utf8(stray.text) + "\"");
    }
    if (outcome.strays.size() > kMostTold)
        complain("and " + std::to_string(outcome.strays.size() - kMostTold) + " more of these");
    if (frontEnd.ranDry())
        complain(source.whole() + ": the answers ended while a command asked \"" +
                 host::utf8(frontEnd.dryPrompt()) + "\"; it was cancelled");
    const auto unread = outcome.quit ? frontEnd.unreadLine() : std::nullopt;
    if (unread)
        complain(source.place(*unread) + ": this and what follows stands behind the end of the session");
    if (outcome.unknownCommand) return ExitStatus::unknownCommand;
    return frontEnd.ranDry() || outcome.leftOver || unread ? ExitStatus::answers : ExitStatus::done;
}

ExitStatus writeResults(const Arguments& arguments, const Plan& plan, AcDbDatabase& database,
                        const Snapshot& before) {
    ExitStatus status = ExitStatus::done;
    const auto note = [&](ExitStatus one) {
        if (one != ExitStatus::done) status = one;
    };
    if (arguments.has("--output")) note(saveDrawing(arguments.value("--output"), database, {plan.version}));
    for (const std::string& path : plan.pictures) note(drawPicture(path, database));
    if (plan.comparisons.empty()) return status;
    const Snapshot after = Snapshot::take(database);
    for (const std::string& path : plan.comparisons)
        note(drawBeforeAfter(path, before, after, arguments.has("--mark-vertices")));
    return status;
}

// The part that scripts and the prompt share. `work` asks for commands and says how that ended.
template <class Work>
ExitStatus runWith(host::FrontEnd& frontEnd, const Arguments& arguments, const Plan& plan, Work work) {
    Session session(&frontEnd);
    OpenedDrawing opened = openDrawing(arguments.positional()[0], arguments, true);
    if (!opened.database) return ExitStatus::file;
    session.open(std::move(opened.database));
    RunVariables variables;
    for (const std::string& setting : arguments.values("--set"))
        if (!variables.set(setting)) return ExitStatus::usage;
    if (!session.loadModule(arguments.value("--lang"))) return ExitStatus::file;
    const Snapshot before = plan.comparisons.empty() ? Snapshot() : Snapshot::take(session.drawing());
    const ExitStatus ended = work();
    const ExitStatus written = writeResults(arguments, plan, session.drawing(), before);
    return written != ExitStatus::done ? written : ended;
}

ExitStatus runScript(const Arguments& arguments, const Plan& plan) {
    const bool fromInput = arguments.positional().size() < 2 && !arguments.has("--command");
    const std::optional<ScriptSource> source = fromInput ? readStandardInput() : readScript(arguments);
    if (!source) return ExitStatus::file;
    const bool quiet = arguments.has("--quiet");
    Progress progress;
    host::ScriptFrontEnd frontEnd(
        source->text,
        [&](const std::string& text) {
            progress.clear();
            if (!quiet) std::fwrite(text.data(), 1, text.size(), stdout);
        },
        [&](const std::wstring& caption, double share) {
            if (share >= 0) progress.show(host::utf8(caption), share);
            return true;
        });
    return runWith(frontEnd, arguments, plan, [&] {
        const host::LoopOutcome outcome = host::commandLoop();
        frontEnd.transcript().finishLine();
        progress.clear();
        return judge(outcome, frontEnd, *source);
    });
}

ExitStatus runPrompt(const Arguments& arguments, const Plan& plan) {
    PromptFrontEnd frontEnd;
    const bool saved = arguments.has("--output");
    return runWith(frontEnd, arguments, plan, [&] {
        do {
            host::commandLoop();
        } while (!saved && !frontEnd.confirmsEnd());
        return ExitStatus::done;
    });
}

} // namespace

ExitStatus runDrawing(const Arguments& arguments) {
    Plan plan;
    if (!makePlan(arguments, plan)) return ExitStatus::usage;
    return plan.interactive ? runPrompt(arguments, plan) : runScript(arguments, plan);
}

} // namespace app
