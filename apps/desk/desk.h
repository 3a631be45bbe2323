// The desk as a whole: host, module, window and front end, put together and taken apart in order.
#pragma once
#include <string>

#include "apps/corvane/session.h"
#include "apps/desk/desk_frontend.h"
#include "apps/desk/dialogs.h"
#include "apps/desk/main_window.h"

namespace desk {

class Desk {
public:
    Desk();
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    // Loads the module and opens the drawing, an empty one for "". False, and told on standard error, when
    // the module can't be loaded; a drawing that can't be read is told in the window.
    bool start(const std::string& drawing, const std::string& language);
    // Asks for commands until the window is closed or QUIT ends it.
    void run();

    // Unsaved changes are not asked about any more.
    void discard() { discards_ = true; }

    MainWindow& window() { return window_; }
    DialogHost& dialogs() { return dialogs_; }
    DeskFrontEnd& frontEnd() { return frontEnd_; }

private:
    void open(const std::string& drawing);
    void addModuleMenus();
    void exportPicture(const QString& path);
    // Whether unsaved changes may be lost; asks when there are any.
    bool mayEnd();
    bool save();

    MainWindow window_;
    DeskFrontEnd frontEnd_;
    app::Session session_;
    DialogHost dialogs_;
    bool closed_ = false, discards_ = false;
};

} // namespace desk
