// The main window: tabs and canvas, command line dock, panels, menus, tool bars, status bar. What stands in
// the menus is told in window_actions.h; most items type command lines, and whoever listens does the rest.
#pragma once
#include <QLabel>
#include <QMainWindow>
#include <functional>
#include <map>
#include <string>

#include "apps/desk/aid_buttons.h"
#include "apps/desk/canvas.h"
#include "apps/desk/command_line.h"
#include "apps/desk/drawing_tabs.h"
#include "apps/desk/layers_panel.h"
#include "apps/desk/menu_file.h"
#include "apps/desk/properties_panel.h"
#include "apps/desk/window_actions.h"

class QActionGroup;
class QDockWidget;
class QToolBar;

namespace desk {

class MainWindow : public QMainWindow {
public:
    MainWindow();

    Canvas& canvas() { return *canvas_; }
    CommandLine& commandLine() { return *line_; }
    DrawingTabs& tabs() { return *tabs_; }
    LayersPanel& layers() { return *layers_; }
    PropertiesPanel& properties() { return *properties_; }
    AidButtons& aids() { return *aids_; }

    std::function<void(const std::wstring& line)> onCommand; // a menu's, with its answers
    std::function<void(const QString& path)> onPicture;      // write one
    std::function<void(const QString& path)> onForget;       // a recent file that is no longer there
    std::function<void()> onCloseDrawing, onNextDrawing, onSelectAll;
    std::function<void(const std::wstring& code)> onLanguage;
    std::function<bool()> onClose;  // false: stay
    std::function<void()> onScreen; // the window has come to another screen

    // A module's menus, between those of the window, and its tool buttons; they replace the former ones.
    void setModuleMenus(const std::vector<MenuItem>& menus, const std::vector<MenuItem>& buttons);
    void setRecent(const QStringList& paths);
    // The name of the drawing in the title, and whether it has unsaved changes.
    void showDrawing(const QString& name, bool changed);
    // Everything in the language in use; module menus are set anew by whoever has them.
    void retranslate();
    QAction* action(const QString& name) const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override; // what no part of the window has taken

private:
    void makeDocks();
    void makeActions();
    void makeMenus();
    void makeToolBars();
    QDockWidget* addDock(const char* name, const wchar_t* title, QWidget* inside, Qt::DockWidgetArea area);
    QMenu* submenu(const QString& name);
    void addActions(QWidget* to, const char* names);
    void fill(QMenu* menu, const std::vector<MenuItem>& items);
    void fillPanelsMenu();
    void fillLanguageMenu();
    void drawIcons();
    void run(const std::wstring& line);
    void openFile();
    void openRecent(const QString& path);
    void saveFileAs();
    void exportPicture();
    void showPoint(const AcGePoint3d& world);

    Canvas* canvas_;
    CommandLine* line_;
    DrawingTabs* tabs_;
    LayersPanel* layers_;
    PropertiesPanel* properties_;
    AidButtons* aids_;
    QLabel* coordinates_;
    std::map<QString, QAction*> actions_;
    std::map<QString, QMenu*> submenus_;
    QStringList recent_; // as shown
    std::vector<std::pair<QMenu*, const wchar_t*>> menuTitles_;
    std::vector<std::pair<QWidget*, const wchar_t*>> titles_; // of docks and tool bars
    std::vector<QMenu*> moduleMenus_;
    QToolBar* moduleBar_ = nullptr;
};

} // namespace desk
