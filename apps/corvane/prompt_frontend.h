// The front end of the interactive prompt: a line editor with history and completion on a terminal.
// Ctrl-C is Esc, Ctrl-D ends the session.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "apps/corvane/report.h"
#include "host/ed/frontend.h"
#include "host/ed/script.h"

namespace app {

class PromptFrontEnd final : public host::FrontEnd {
public:
    // Reads the history of earlier sessions from the configuration folder.
    PromptFrontEnd();
    // Writes it back.
    ~PromptFrontEnd() override;
    host::PromptReply ask(const host::PromptRequest& request) override;
    void print(const std::wstring& text) override;
    int messageBox(const host::MessageBox& box) override;
    void open(const std::wstring& target) override;
    bool progress(const std::wstring& caption, double share) override;
    bool interactive() const override { return true; }
    bool unwindsWhenExhausted() const override { return true; }

    // Asks whether unsaved changes may be lost; true when there are none. After a no, answers are
    // taken again.
    bool confirmsEnd();

private:
    struct Line {
        enum class Kind { text, escape, end } kind = Kind::end;
        std::string text;
    };
    Line readLine(const std::string& prompt);
    host::PromptReply replyTo(const host::PromptRequest& request);
    void remember(const std::string& line);

    host::Transcript transcript_;
    Progress progress_;
    std::vector<std::string> history_;          // oldest first
    std::optional<host::ScriptReader> pending_; // the typed line, as far as it isn't answered yet
    bool ended_ = false;
};

} // namespace app
