// Dialogs to try the window system on: made from script text, driven by a runner that a test fills.
#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "host/ui/actions.h"
#include "host/ui/ui.h"

namespace uitest {

// One dialog of a resource script; the script must be right.
inline host::DialogTemplate dialogFrom(const std::string& script) {
    host::ResourceScript read = host::parseResourceScript(script);
    EXPECT_TRUE(read.errors.empty()) << testing::PrintToString(read.errors);
    EXPECT_EQ(1u, read.dialogs.size());
    return read.dialogs.empty() ? host::DialogTemplate() : read.dialogs.front();
}
inline std::string withControls(const std::string& controls) {
    return "7 DIALOGEX 0, 0, 200, 100\nCAPTION \"Test\"\nFONT 9, \"MS Shell Dlg\"\nBEGIN\n" + controls +
           "\nEND\n";
}

// Runs modal dialogs by a function; cancels those that it leaves open.
class Runner final : public host::DialogRunner {
public:
    explicit Runner(std::function<void(HWND)> hand) : hand_(std::move(hand)) { host::setDialogRunner(this); }
    ~Runner() override { host::setDialogRunner(nullptr); }
    void run(HWND dialog) override {
        host::settle();
        hand_(dialog);
        host::settle();
        if (!host::dialogEnded(dialog)) EndDialog(dialog, IDCANCEL);
    }
    void shown(HWND) override { log.push_back("shown"); }
    void hidden(HWND) override { log.push_back("hidden"); }
    void pickBegins(HWND) override { log.push_back("pick begins"); }
    void pickEnds(HWND) override { log.push_back("pick ends"); }
    int messageBox(HWND, const std::wstring& text, const std::wstring&, UINT) override {
        log.push_back("box: " + host::utf8(text));
        return IDOK;
    }
    std::vector<std::wstring> chooseFile(const host::FileQuestion& asked) override {
        question = asked;
        return chosen;
    }
    void complain(const std::string& reason) override { log.push_back("complaint: " + reason); }
    std::vector<std::string> log;
    host::FileQuestion question;
    std::vector<std::wstring> chosen;

private:
    std::function<void(HWND)> hand_;
};

// Writes down every notification and scroll that reaches it.
class Recorder : public CDialog {
public:
    std::vector<std::string> heard;
    std::function<void()> onInit;
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        if (onInit) onInit();
        heard.clear();
        return FALSE;
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_COMMAND && lParam)
            heard.push_back(std::to_string(LOWORD(wParam)) + ":" + std::to_string(HIWORD(wParam)));
        if (message == WM_HSCROLL) heard.push_back("scroll:" + std::to_string(LOWORD(wParam)));
        if (message == WM_NOTIFY)
            heard.push_back("notify:" + std::to_string(int(reinterpret_cast<NMHDR*>(lParam)->code)));
        return CDialog::WindowProc(message, wParam, lParam);
    }
    HWND item(int id) const { return ::GetDlgItem(m_hWnd, id); }
};

} // namespace uitest
