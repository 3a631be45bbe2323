// The front end of scripts: answers come from text, prompts and messages go to a transcript that
// reads like a CAD program's text window.
#pragma once
#include <functional>
#include <optional>
#include <string>

#include "host/ed/frontend.h"

namespace host {

// Cuts a script into answers, as the prompts ask for them.
//
// A blank or a line end ends an answer, an empty answer is Enter; where the answer may hold blanks only the
// line end ends it. "..." keeps blanks, (...) is one answer, a line that begins with ";" is a comment, ^C is
// Esc. `move x,y`, `keys ...` and `press ...` are one answer each.
class ScriptReader {
public:
    explicit ScriptReader(std::wstring script);
    bool atEnd();
    struct Answer {
        std::wstring text;
        bool escape = false;
        int line = 0; // of the script, from 1
    };
    // The next answer; `blanksEnd` as the prompt has it. `pointing` is set where the cursor matters: there
    // "move", "keys" and "press" take the word behind them along. Call only when not atEnd().
    Answer next(bool blanksEnd, bool pointing = false);
    // An action on a dialog: a word, quotes left in; `drag` with its control and points, `picture` with its
    // file.
    Answer nextAction();
    int line() const { return line_; }

private:
    void passComments();
    std::wstring word();
    bool pointFollows() const;
    std::wstring restOfLine();
    std::wstring script_;
    size_t at_ = 0;
    int line_ = 1;
    bool lineStart_ = true;
};

// Writes what the command line window would show: one line end between texts that begin and end with one.
class Transcript {
public:
    using Sink = std::function<void(const std::string& utf8)>;
    explicit Transcript(Sink sink) : sink_(std::move(sink)) {}
    void print(const std::wstring& text);
    void finishLine();

private:
    Sink sink_;
    bool atLineStart_ = true;
};

class ScriptFrontEnd final : public FrontEnd {
public:
    using Progress = std::function<bool(const std::wstring& caption, double share)>;
    ScriptFrontEnd(std::wstring script, Transcript::Sink transcript, Progress progress = {});
    PromptReply ask(const PromptRequest& request) override;
    void print(const std::wstring& text) override;
    int messageBox(const MessageBox& box) override;
    void open(const std::wstring& target) override;
    bool progress(const std::wstring& caption, double share) override;
    bool unwindsWhenExhausted() const override { return true; }
    Transcript& transcript() { return transcript_; }
    // A prompt inside a command found no more answers.
    bool ranDry() const { return ranDry_; }
    // The first prompt that found none; where a command had printed its question, that.
    const std::wstring& dryPrompt() const { return dryPrompt_; }
    // The line of the first answer that nobody has asked for; nothing when all were taken.
    std::optional<int> unreadLine() const;

private:
    ScriptReader reader_;
    Transcript transcript_;
    Progress progress_;
    std::wstring dryPrompt_, printed_; // printed_: the last text that a command told
    bool ranDry_ = false;
};

} // namespace host
