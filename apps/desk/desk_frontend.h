// The desk's answers to the editor's prompts: waits in an event loop of its own until the user has typed or
// picked one. Knows the canvas and the command line by what they tell, commands not at all.
#pragma once
#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

#include "apps/desk/canvas.h"
#include "apps/desk/command_line.h"
#include "apps/desk/host_texts.h"
#include "host/ed/frontend.h"
#include "host/ed/script.h"

class QEventLoop;

namespace desk {

class DeskFrontEnd final : public host::FrontEnd {
public:
    // Both must outlive it.
    DeskFrontEnd(Canvas& canvas, CommandLine& line);
    ~DeskFrontEnd() override;

    host::PromptReply ask(const host::PromptRequest& request) override;
    void print(const std::wstring& text) override;
    int messageBox(const host::MessageBox& box) override;
    void open(const std::wstring& target) override;
    bool progress(const std::wstring& caption, double share) override;
    void redraw() override;
    void wait(unsigned milliseconds) override;
    bool interactive() const override { return true; }

    // Cancels what runs and answers with the line, as menus do.
    void runLine(const std::wstring& line);
    // A line as if it were typed: an answer to the prompt of the moment, or several.
    void typeLine(const std::wstring& line);
    void escape();
    // From now on the host's prompts and messages are said in that language, the prompt of the moment, too.
    void speak(const std::wstring& code);
    // From now on nothing is answered any more, so that the command loop ends; and the opposite.
    void close();
    void reopen() { closing_ = false; }
    // No command runs: the prompt of the moment asks for one.
    bool idle() const { return waiting() && asked_.kind == host::PromptRequest::Kind::command; }

    std::function<void()> onPrompt; // each time before it waits
    // What is selected while no command runs, and who hears of changes.
    const std::vector<AcDbObjectId>& selection() const { return selected_; }
    void setSelection(std::vector<AcDbObjectId> entities) {
        selected_ = std::move(entities), tellSelection();
    }
    std::function<void()> onSelection;

private:
    bool waiting() const { return loop_ && !reply_ && !pending_ && !closing_; }
    host::PromptReply fromQueue();
    std::optional<host::PromptReply> fromSelection();
    host::PromptReply fromPending();
    void endOfCommand();
    host::PromptReply fileReply(const host::PromptRequest& request);
    void waitFor(const host::PromptRequest& request);
    void showPrompt();
    void showOnCanvas(const host::PromptRequest& request);
    void answer(host::PromptReply reply);
    void echo(const host::PromptReply& reply);
    void pickEntity(AcDbObjectId entity, const AcGePoint3d& world, bool shift);
    void pickWindow(const Canvas::Window& window);
    bool moveGripTo(const std::wstring& text);
    void moveGrip(const std::function<void()>& move);
    void select(const std::vector<AcDbObjectId>& entities, bool shift);
    void showPicked(std::vector<AcDbObjectId> picked);
    void clearSelection();
    void tellSelection();

    Canvas& canvas_;
    CommandLine& line_;
    host::Transcript transcript_;
    HostTexts texts_;
    host::PromptRequest asked_; // while it waits
    std::wstring said_;         // its text in the language
    std::optional<host::PromptReply> reply_;
    std::deque<host::PromptReply> queue_;       // the rest of an answer in parts, such as a window's corners
    std::optional<host::ScriptReader> pending_; // the typed line, as far as it isn't answered yet
    std::deque<host::ScriptReader> ahead_;      // lines typed before anybody asked
    QEventLoop* loop_ = nullptr;
    std::vector<AcDbObjectId> selected_; // before a command
    std::vector<AcDbObjectId> picked_;   // at the "Select objects" of the moment
    std::vector<AcDbObjectId> feed_;     // those of them that answer the command's first selection
    size_t fed_ = 0;                     // how many have
    std::wstring fedPrompt_;
    bool commandRan_ = false;
    std::unique_ptr<QProgressDialog> progress_;
    QElapsedTimer working_;
    int snapAsked_ = 0; // the object snap that was typed, for the point that follows
    bool closing_ = false, stopAsked_ = false;
};

} // namespace desk
