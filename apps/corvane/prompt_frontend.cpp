// The interactive prompt over libedit. What is typed in one line may answer several prompts, as in a
// script; its answers are shown with their prompts.
#include "apps/corvane/prompt_frontend.h"

#include <editline/readline.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "host/ed/document.h"
#include "host/ed/editor.h"
#include "host/ed/host_commands.h"
#include "host/ed/sysvars.h"
#include "host/os/files.h"
#include "host/os/text.h"

namespace app {
namespace {

constexpr size_t kMostHistory = 1000;
constexpr int kControlC = 3;

// The line editor calls back without a word of its own, so these stand alone.
std::vector<std::string> candidates;      // for completion
bool namesFiles = false;                  // complete file names instead
volatile std::sig_atomic_t stopAsked = 0; // Ctrl-C while a command worked

bool escaped = false; // Ctrl-C ended the line

void onInterrupt(int) { stopAsked = 1; }
int onControlC(int, int) {
    escaped = true;
    rl_done = 1;
    return 0;
}
bool takeStop() {
    const bool asked = stopAsked;
    stopAsked = 0;
    return asked;
}

char* nextCandidate(const char* start, int state) {
    static size_t at = 0;
    if (state == 0) at = 0;
    const std::wstring typed = host::wide(start);
    while (at < candidates.size()) {
        const std::string& candidate = candidates[at++];
        if (host::equalNoCase(host::wide(candidate).substr(0, typed.size()), typed))
            return strdup(candidate.c_str());
    }
    return nullptr;
}

char** complete(const char* start, int, int) {
    rl_attempted_completion_over = !namesFiles;
    return namesFiles ? nullptr : rl_completion_matches(start, nextCandidate);
}

std::vector<std::string> commandNames() {
    std::vector<std::string> names;
    const auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    for (const auto& command : stack->commands()) names.push_back(host::utf8(command->localName()));
    for (const host::SystemVariable& variable : host::systemVariables())
        names.push_back(host::utf8(variable.name));
    return names;
}

void offer(const host::PromptRequest& request) {
    using Kind = host::PromptRequest::Kind;
    namesFiles = request.kind == Kind::file;
    candidates.clear();
    if (request.kind == Kind::command) candidates = commandNames();
    for (const std::wstring& keyword : request.keywords) candidates.push_back(host::utf8(keyword));
    if (request.kind == Kind::objects)
        candidates = {"All",   "Window",   "Crossing", "WPolygon", "CPolygon",
                      "Fence", "Previous", "Last",     "Add",      "Remove"};
}

std::string historyPath() { return host::configurationFolder() + "/history"; }

void startLineEditor() {
    std::setlocale(LC_CTYPE, ""); // the line editor moves over whole characters then
    rl_readline_name = "corvane";
    rl_initialize();
    rl_attempted_completion_function = complete;
    rl_add_defun("corvane-escape", onControlC, kControlC);
    struct sigaction action {};
    action.sa_handler = onInterrupt;
    sigaction(SIGINT, &action, nullptr);
}

std::wstring lastLine(const std::wstring& text) {
    const size_t end = text.rfind(L'\n');
    return end == text.npos ? text : text.substr(end + 1);
}

} // namespace

PromptFrontEnd::PromptFrontEnd()
    : transcript_([](const std::string& text) {
          std::fwrite(text.data(), 1, text.size(), stdout);
          std::fflush(stdout);
      }) {
    startLineEditor();
    std::string bytes;
    if (!host::fileExists(historyPath()) || host::readWhole(historyPath(), bytes)) return;
    for (size_t from = 0; from < bytes.size();) {
        const size_t end = std::min(bytes.find('\n', from), bytes.size());
        remember(bytes.substr(from, end - from));
        from = end + 1;
    }
}

PromptFrontEnd::~PromptFrontEnd() {
    const size_t first = history_.size() > kMostHistory ? history_.size() - kMostHistory : 0;
    std::string bytes;
    for (size_t i = first; i < history_.size(); ++i) bytes += history_[i] + '\n';
    host::FileError error = host::makeFolders(host::configurationFolder());
    if (!error) error = host::writeWhole(historyPath(), bytes);
    if (error) complain("the history could not be kept: " + error.message);
}

void PromptFrontEnd::remember(const std::string& line) {
    if (line.empty() || (!history_.empty() && history_.back() == line)) return;
    history_.push_back(line);
    add_history(line.c_str());
}

namespace {

// While a line is typed Ctrl-C is a key like others: the terminal sends no signal for it.
class InterruptKey {
public:
    InterruptKey() {
        known_ = tcgetattr(STDIN_FILENO, &former_) == 0;
        termios changed = former_;
        changed.c_cc[VINTR] = _POSIX_VDISABLE;
        if (known_) tcsetattr(STDIN_FILENO, TCSANOW, &changed);
    }
    ~InterruptKey() {
        if (known_) tcsetattr(STDIN_FILENO, TCSANOW, &former_);
    }
    InterruptKey(const InterruptKey&) = delete;
    InterruptKey& operator=(const InterruptKey&) = delete;

private:
    termios former_{};
    bool known_;
};

char* typedLine(const std::string& prompt) {
    const InterruptKey key;
    escaped = false;
    rl_done = 0;
    return readline(prompt.c_str());
}

} // namespace

PromptFrontEnd::Line PromptFrontEnd::readLine(const std::string& prompt) {
    progress_.clear();
    transcript_.finishLine();
    // Pressed while a command worked, it cancels the command at its next prompt.
    const bool stopped = takeStop();
    char* typed = stopped ? nullptr : typedLine(prompt);
    if (stopped || escaped) {
        std::free(typed);
        transcript_.print(L"*Cancel*\n");
        return {Line::Kind::escape, ""};
    }
    if (!typed) {
        transcript_.print(L"\n");
        ended_ = true;
        return {Line::Kind::end, ""};
    }
    Line line{Line::Kind::text, typed};
    std::free(typed);
    return line;
}

host::PromptReply PromptFrontEnd::replyTo(const host::PromptRequest& request) {
    host::PromptReply reply;
    const host::ScriptReader::Answer answer = request.kind == host::PromptRequest::Kind::dialog
                                                  ? pending_->nextAction()
                                                  : pending_->next(request.blanksEnd, request.pointing());
    reply.kind = answer.escape         ? host::PromptReply::Kind::cancel
                 : answer.text.empty() ? host::PromptReply::Kind::enter
                                       : host::PromptReply::Kind::text;
    reply.text = answer.text;
    return reply;
}

host::PromptReply PromptFrontEnd::ask(const host::PromptRequest& request) {
    host::PromptReply reply;
    if (pending_ && !pending_->atEnd()) {
        reply = replyTo(request);
        transcript_.print(request.text + reply.text + L"\n");
        return reply;
    }
    const std::wstring shown = lastLine(request.text);
    transcript_.print(request.text.substr(0, request.text.size() - shown.size()));
    while (!ended_) {
        offer(request);
        Line line = readLine(host::utf8(shown));
        reply.kind = host::PromptReply::Kind::cancel;
        if (line.kind == Line::Kind::escape) return pending_.reset(), reply;
        if (line.kind == Line::Kind::end) break;
        if (request.blanksEnd)
            while (!line.text.empty() && line.text.back() == ' ') line.text.pop_back();
        remember(line.text);
        pending_.emplace(host::wide(line.text) + L"\n");
        if (!pending_->atEnd()) return replyTo(request); // else it was a comment
    }
    reply.kind = host::PromptReply::Kind::exhausted;
    return reply;
}

void PromptFrontEnd::print(const std::wstring& text) {
    progress_.clear();
    transcript_.print(text);
}

int PromptFrontEnd::messageBox(const host::MessageBox& box) {
    progress_.clear();
    transcript_.finishLine();
    transcript_.print((box.caption.empty() ? L"" : L"[" + box.caption + L"] ") + box.text + L"\n");
    if ((box.style & 15) != kMessageYesNo) return kAnswerOk;
    candidates = {"Yes", "No"};
    const std::string answer = readLine("[Yes/No]: ").text;
    return !answer.empty() && (answer[0] == 'y' || answer[0] == 'Y') ? kAnswerYes : kAnswerNo;
}

void PromptFrontEnd::open(const std::wstring& target) {
    transcript_.finishLine();
    transcript_.print(L"Would open: " + target + L"\n");
}

bool PromptFrontEnd::progress(const std::wstring& caption, double share) {
    if (share >= 0) progress_.show(host::utf8(caption), share);
    return !takeStop();
}

bool PromptFrontEnd::confirmsEnd() {
    if (!curDoc() || !curDoc()->database()->undoLog().changedSinceSave()) return true;
    candidates = {"Yes", "No"};
    const Line line = readLine("Discard all changes to the drawing? [Yes/No] <No>: ");
    if (line.kind == Line::Kind::end) return true;
    if (!line.text.empty() && (line.text[0] == 'y' || line.text[0] == 'Y')) return true;
    ended_ = false;
    return false;
}

} // namespace app
