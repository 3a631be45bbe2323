// The desk as a whole: host, module, window and front end, put together and taken apart in order.
#pragma once
#include <QTimer>
#include <string>

#include "apps/corvane/session.h"
#include "apps/desk/autosave.h"
#include "apps/desk/desk_frontend.h"
#include "apps/desk/dialogs.h"
#include "apps/desk/drawings.h"
#include "apps/desk/main_window.h"

namespace desk {

class Desk {
public:
    Desk();
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    // Loads the module and opens the drawing, an empty one for ""; offers what an earlier run left unsaved.
    // False, and told on standard error, when the module can't be loaded; a drawing that can't be read is
    // told in the window.
    bool start(const std::string& drawing, const std::string& language);
    // Asks for commands until the window is closed or QUIT ends it.
    void run();

    // Unsaved changes are not asked about any more.
    void discard() { discards_ = true; }
    // What can be seen and changed becomes selected; with a name only what lies on that layer.
    void selectLayer(const std::wstring& name);
    // The window's place and panels, and the lines typed, as they were at the last end; kept at the end.
    void remember();

    MainWindow& window() { return window_; }
    DialogHost& dialogs() { return dialogs_; }
    DeskFrontEnd& frontEnd() { return frontEnd_; }
    Autosave& autosave() { return autosave_; }

private:
    void connectWindow();
    // Does the work when no command runs; what runs is cancelled.
    void whenFree(std::function<void()> work);
    void change(const wchar_t* name, std::function<void()> work);
    void switchTo(AcApDocument* document);
    void closeDrawing(AcApDocument* document);
    void showState();
    void showSelection();
    void followLanguage();
    void followScreens();
    void offerRecovery();
    void recover(const std::vector<Autosave::Left>& left);
    void keepCopies();
    void exportPicture(const QString& path);
    bool mayEnd();

    MainWindow window_;
    DeskFrontEnd frontEnd_;
    app::Session session_;
    DialogHost dialogs_;
    Drawings drawings_;
    Autosave autosave_;
    QTimer autosaveTimer_;
    std::wstring spoken_;
    bool closed_ = false, discards_ = false, remembers_ = false, copiesDue_ = false;
};

} // namespace desk
