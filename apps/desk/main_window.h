// The main window: canvas, command line dock, menus, status bar. Menu items type command lines.
#pragma once
#include <QLabel>
#include <QMainWindow>
#include <functional>
#include <string>

#include "apps/desk/canvas.h"
#include "apps/desk/command_line.h"
#include "apps/desk/menu_file.h"

namespace desk {

class MainWindow : public QMainWindow {
public:
    MainWindow();

    Canvas& canvas() { return *canvas_; }
    CommandLine& commandLine() { return *line_; }

    std::function<void(const std::wstring& line)> onCommand; // a menu's, with its answers
    std::function<void(const QString& path)> onPicture;      // write one
    std::function<bool()> onClose;                           // false: stay

    // A module's menus, between those of the window.
    void addMenus(const std::vector<MenuItem>& menus);
    // The name of the drawing in the title, and whether it has unsaved changes.
    void showDrawing(const QString& name, bool changed);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void makeFileMenu();
    void makeEditMenu();
    void makeViewMenu();
    void fill(QMenu* menu, const std::vector<MenuItem>& items);
    void run(const std::wstring& line);
    void openFile();
    void saveFileAs();
    void exportPicture();
    void showPoint(const AcGePoint3d& world);
    Canvas* canvas_;
    CommandLine* line_;
    QLabel* coordinates_;
};

} // namespace desk
