// Script answers and the transcript.
#include "host/ed/script.h"

#include <algorithm>

#include "host/ed/editor.h"
#include "host/os/text.h"

namespace host {
namespace {

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

std::wstring unifiedLines(std::wstring text) {
    std::erase(text, L'\xFEFF');
    size_t to = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') continue;
        text[to++] = text[i] == L'\r' ? L'\n' : text[i];
    }
    text.resize(to);
    return text;
}

std::wstring unquoted(const std::wstring& text) {
    const bool whole = text.size() > 1 && text.front() == L'"' && text.back() == L'"' &&
                       text.find(L'"', 1) == text.size() - 1;
    return whole ? text.substr(1, text.size() - 2) : text;
}

} // namespace

ScriptReader::ScriptReader(std::wstring script) : script_(unifiedLines(std::move(script))) {}

void ScriptReader::passComments() {
    while (lineStart_ && at_ < script_.size() && script_[at_] == L';') restOfLine();
}

bool ScriptReader::atEnd() {
    passComments();
    return at_ >= script_.size();
}

std::wstring ScriptReader::restOfLine() {
    const size_t end = std::min(script_.find(L'\n', at_), script_.size());
    std::wstring text = script_.substr(at_, end - at_);
    at_ = std::min(end + 1, script_.size());
    ++line_;
    lineStart_ = true;
    return text;
}

// Up to a blank or line end outside quotes and parentheses; takes that character too.
std::wstring ScriptReader::word() {
    std::wstring text;
    bool quoted = false;
    int depth = 0;
    lineStart_ = false;
    for (; at_ < script_.size(); ++at_) {
        const wchar_t c = script_[at_];
        if (c == L'\n' || (isBlank(c) && !quoted && depth == 0)) {
            lineStart_ = c == L'\n';
            line_ += lineStart_;
            ++at_;
            break;
        }
        if (c == L'"') quoted = !quoted;
        if (!quoted && c == L'(') ++depth;
        if (!quoted && c == L')' && depth > 0) --depth;
        text += c;
    }
    return text;
}

ScriptReader::Answer ScriptReader::next(bool blanksEnd, bool pointing) {
    passComments();
    Answer answer;
    answer.line = line_;
    answer.text = blanksEnd ? word() : restOfLine();
    const std::wstring folded = lower(answer.text);
    const bool between = folded == L"move" || folded == L"keys" || folded == L"press";
    if (pointing && blanksEnd && between && at_ < script_.size() && !lineStart_) answer.text += L' ' + word();
    answer.escape = answer.text == L"^C" || answer.text == L"^c";
    answer.text = unquoted(answer.text);
    return answer;
}

// The next word of this line is a pair of numbers.
bool ScriptReader::pointFollows() const {
    const size_t end = std::min(script_.find_first_of(L" \t\n", at_), script_.size());
    const std::wstring word = script_.substr(at_, end - at_);
    return !lineStart_ && word.find(L',') != word.npos &&
           word.find_first_not_of(L"0123456789+-.,eE") == word.npos;
}

ScriptReader::Answer ScriptReader::nextAction() {
    passComments();
    Answer answer;
    answer.line = line_;
    answer.text = word();
    const std::wstring folded = lower(answer.text);
    const bool drags = folded == L"drag";
    if ((drags || folded == L"picture") && !lineStart_) answer.text += L' ' + word();
    while (drags && pointFollows()) answer.text += L' ' + word();
    answer.escape = answer.text == L"^C" || answer.text == L"^c";
    return answer;
}

void Transcript::print(const std::wstring& text) {
    std::wstring shown = text;
    std::erase(shown, L'\r');
    if (shown.empty()) return;
    if (atLineStart_ && shown.front() == L'\n') shown.erase(0, 1);
    if (shown.empty()) return;
    atLineStart_ = shown.back() == L'\n';
    sink_(utf8(shown));
}

void Transcript::finishLine() {
    if (!atLineStart_) sink_("\n");
    atLineStart_ = true;
}

ScriptFrontEnd::ScriptFrontEnd(std::wstring script, Transcript::Sink transcript, Progress progress)
    : reader_(std::move(script)), transcript_(std::move(transcript)), progress_(std::move(progress)) {}

PromptReply ScriptFrontEnd::ask(const PromptRequest& request) {
    PromptReply reply;
    const bool command = request.kind == PromptRequest::Kind::command;
    for (;;) {
        if (reader_.atEnd()) {
            if (!command && dryPrompt_.empty())
                dryPrompt_ = trimmed(request.text.empty() ? printed_ : request.text);
            ranDry_ |= !command;
            if (!command) transcript_.print(request.text), transcript_.finishLine();
            reply.kind = PromptReply::Kind::exhausted;
            return reply;
        }
        const bool action = request.kind == PromptRequest::Kind::dialog;
        const ScriptReader::Answer answer =
            action ? reader_.nextAction() : reader_.next(request.blanksEnd, request.pointing());
        // Blank lines between commands part them for the eye; they don't run the last command again.
        // Nor do they close a dialog.
        if ((command || action) && answer.text.empty()) continue;
        transcript_.print(request.text);
        transcript_.print(answer.escape ? L"*Cancel*" : answer.text);
        transcript_.finishLine();
        reply.kind = answer.escape         ? PromptReply::Kind::cancel
                     : answer.text.empty() ? PromptReply::Kind::enter
                                           : PromptReply::Kind::text;
        reply.text = answer.text;
        reply.line = answer.line;
        return reply;
    }
}

void ScriptFrontEnd::print(const std::wstring& text) {
    printed_ = text;
    transcript_.print(text);
}

std::optional<int> ScriptFrontEnd::unreadLine() const {
    ScriptReader rest = reader_;
    while (!rest.atEnd())
        if (const ScriptReader::Answer answer = rest.next(true); !answer.text.empty()) return answer.line;
    return std::nullopt;
}

int ScriptFrontEnd::messageBox(const MessageBox& box) {
    transcript_.finishLine();
    transcript_.print((box.caption.empty() ? L"" : L"[" + box.caption + L"] ") + box.text);
    const bool asks = (box.style & 15) == kMessageYesNo;
    if (!asks) return transcript_.finishLine(), kAnswerOk;
    transcript_.print(L" [Yes/No]: ");
    ranDry_ |= reader_.atEnd();
    const std::wstring answer = reader_.atEnd() ? std::wstring() : reader_.next(true).text;
    transcript_.print(answer);
    transcript_.finishLine();
    return lower(answer).starts_with(L"y") ? kAnswerYes : kAnswerNo;
}

void ScriptFrontEnd::open(const std::wstring& target) {
    transcript_.finishLine();
    transcript_.print(L"Would open: " + target);
    transcript_.finishLine();
}

bool ScriptFrontEnd::progress(const std::wstring& caption, double share) {
    return !progress_ || progress_(caption, share);
}

} // namespace host
