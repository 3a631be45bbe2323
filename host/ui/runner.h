// Who runs dialogs: the script front end or the desk. They fill this interface at start-up; without one
// dialogs are cancelled as soon as they are shown, so that nobody waits for an answer that can't come.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/ui/types.h"

namespace host {

struct FileFilter {
    std::wstring label;
    std::vector<std::wstring> patterns; // "*.png"
};
struct FileQuestion {
    bool open = true; // else for saving
    std::wstring title, initial, extension;
    std::vector<FileFilter> filters;
    bool mustExist = false, asksBeforeOverwriting = false, many = false;
};

class DialogRunner {
public:
    virtual ~DialogRunner() = default;
    // Runs a modal dialog that is made and shown until dialogEnded(); settles the queue between actions.
    virtual void run(HWND dialog) = 0;
    // A modeless dialog was made; destroyed ones are told as hidden.
    virtual void shown(HWND dialog) = 0;
    virtual void hidden(HWND dialog) = 0;
    // A dialog steps aside for picks in the drawing, and comes back.
    virtual void pickBegins(HWND dialog) = 0;
    virtual void pickEnds(HWND dialog) = 0;
    // The button that was pressed (IDOK, IDYES ...).
    virtual int messageBox(HWND owner, const std::wstring& text, const std::wstring& caption, UINT style) = 0;
    // The chosen paths; empty when cancelled.
    virtual std::vector<std::wstring> chooseFile(const FileQuestion& question) = 0;
    // A dialog could not be made, and why: for the developer of a template.
    virtual void complain(const std::string& reason) = 0;
    // Whether somebody sees what dialogs show while they work; else they are answered as prompts.
    virtual bool seen() const { return true; }
};

DialogRunner& dialogRunner();
void setDialogRunner(DialogRunner* runner); // null: the one that cancels

bool dialogEnded(HWND dialog);           // EndDialog was called, or it is gone
const std::vector<HWND>& modalDialogs(); // that run, outermost first

} // namespace host
