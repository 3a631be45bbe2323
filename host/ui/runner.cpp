// The runner in use, and the one that cancels.
#include "host/ui/runner.h"

#include <algorithm>

#include "host/ui/queue.h"
#include "host/ui/window.h"

namespace host {
namespace {

class CancellingRunner final : public DialogRunner {
public:
    void run(HWND dialog) override {
        settle();
        if (!dialogEnded(dialog)) SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        // A dialog that refuses to be cancelled must go all the same.
        if (!dialogEnded(dialog)) EndDialog(dialog, IDCANCEL);
    }
    void shown(HWND) override {}
    void hidden(HWND) override {}
    void pickBegins(HWND) override {}
    void pickEnds(HWND) override {}
    int messageBox(HWND, const std::wstring&, const std::wstring&, UINT style) override {
        const UINT kind = style & 15;
        return kind == MB_YESNO ? IDNO : kind == MB_OK ? IDOK : IDCANCEL;
    }
    std::vector<std::wstring> chooseFile(const FileQuestion&) override { return {}; }
    void complain(const std::string&) override {}
};

DialogRunner* current = nullptr;
std::vector<HWND> running;

// Keeps the list of running dialogs around whoever runs them.
class Listing final : public DialogRunner {
public:
    void run(HWND dialog) override {
        running.push_back(dialog);
        struct Leave {
            ~Leave() { running.pop_back(); }
        } leave;
        inner().run(dialog);
    }
    void shown(HWND dialog) override { inner().shown(dialog); }
    void hidden(HWND dialog) override { inner().hidden(dialog); }
    void pickBegins(HWND dialog) override { inner().pickBegins(dialog); }
    void pickEnds(HWND dialog) override { inner().pickEnds(dialog); }
    int messageBox(HWND owner, const std::wstring& text, const std::wstring& caption, UINT style) override {
        return inner().messageBox(owner, text, caption, style);
    }
    std::vector<std::wstring> chooseFile(const FileQuestion& question) override {
        return inner().chooseFile(question);
    }
    void complain(const std::string& reason) override { inner().complain(reason); }
    bool seen() const override { return inner().seen(); }

private:
    static DialogRunner& inner() {
        static CancellingRunner cancelling;
        return current ? *current : cancelling;
    }
};

} // namespace

DialogRunner& dialogRunner() {
    static Listing listing;
    return listing;
}
void setDialogRunner(DialogRunner* runner) { current = runner; }

bool dialogEnded(HWND dialog) {
    const Window* window = windowOf(dialog);
    return !window || window->ended;
}
const std::vector<HWND>& modalDialogs() { return running; }

} // namespace host
