// Dialogs of the window model with real widgets: one a control, kept in step both ways. What a widget is told
// by the user's hand goes to its control as the messages a hand would cause; after each the widgets show what
// the controls hold.
#pragma once
#include <functional>
#include <map>
#include <memory>

#include "host/ui/runner.h"

class QWidget;

namespace desk {

class DialogWindow;

class DialogHost final : public host::DialogRunner {
public:
    // Puts itself in place of the runner that asks on the command line; `owner` is the window that dialogs
    // stand before.
    explicit DialogHost(QWidget* owner);
    ~DialogHost() override;

    void run(HWND dialog) override;
    void shown(HWND dialog) override;
    void hidden(HWND dialog) override;
    void pickBegins(HWND dialog) override;
    void pickEnds(HWND dialog) override;
    int messageBox(HWND owner, const std::wstring& text, const std::wstring& caption, UINT style) override;
    std::vector<std::wstring> chooseFile(const host::FileQuestion& question) override;
    void complain(const std::string& reason) override;

    std::function<void()> onActed; // after each thing done in a dialog by hand

    // The window that shows the dialog; null when none does.
    DialogWindow* windowOf(HWND dialog) const;

private:
    DialogWindow& make(HWND dialog);
    QWidget* owner_;
    std::map<HWND, std::unique_ptr<DialogWindow>> windows_;
};

} // namespace desk
