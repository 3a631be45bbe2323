// The window's menus, tool bars and texts, out of the tables of window_actions.h; the menus of modules out of
// their menu files.
#include <QActionGroup>
#include <QDockWidget>
#include <QMenuBar>
#include <QToolBar>

#include "apps/desk/icons.h"
#include "apps/desk/main_window.h"
#include "apps/desk/texts.h"

namespace desk {
namespace {

constexpr int kIconSize = 22;

// "&New..." as "New".
QString plain(QString text) {
    static const QRegularExpression mnemonic("\\(&.\\)");
    text.remove(mnemonic);
    return text.remove('&').remove("...");
}

} // namespace

void MainWindow::makeActions() {
    const std::map<QString, std::function<void()>> own = {
        {"open", [this] { openFile(); }},
        {"saveAs", [this] { saveFileAs(); }},
        {"export", [this] { exportPicture(); }},
        {"closeDrawing",
         [this] {
             if (onCloseDrawing) onCloseDrawing();
         }},
        {"quit", [this] { close(); }},
        {"selectAll",
         [this] {
             if (onSelectAll) onSelectAll();
         }},
        {"zoomExtents", [this] { canvas_->zoomExtents(); }},
        {"zoomIn", [this] { canvas_->zoomBy(1.5); }},
        {"zoomOut", [this] { canvas_->zoomBy(1 / 1.5); }},
        {"dark", [this] { canvas_->setDark(actions_.at("dark")->isChecked()); }},
        {"nextDrawing",
         [this] {
             if (onNextDrawing) onNextDrawing();
         }},
        {"commandLine", [this] { line_->input()->setFocus(); }},
    };
    for (const WindowAction& row : windowActions()) {
        auto* action = new QAction(this);
        action->setObjectName(row.name);
        action->setShortcut(QKeySequence(row.keys));
        const auto does = own.find(row.name);
        QObject::connect(action, &QAction::triggered, this,
                         [this, line = row.line, work = does == own.end() ? nullptr : does->second] {
                             if (line)
                                 run(line);
                             else if (work)
                                 work();
                         });
        actions_[row.name] = action;
        addAction(action); // so that its short cut works wherever the menu stands
    }
    actions_.at("dark")->setCheckable(true);
    actions_.at("dark")->setChecked(canvas_->isDark());
}

QAction* MainWindow::action(const QString& name) const {
    const auto found = actions_.find(name);
    return found == actions_.end() ? nullptr : found->second;
}

QMenu* MainWindow::submenu(const QString& name) {
    QMenu*& menu = submenus_[name];
    if (!menu) menu = new QMenu(this);
    return menu;
}

void MainWindow::addActions(QWidget* to, const char* names) {
    for (const QString& name : QString(names).split(' ', Qt::SkipEmptyParts)) {
        if (name == "|") {
            auto* separator = new QAction(to);
            separator->setSeparator(true);
            to->addAction(separator);
        } else if (name.endsWith("...")) {
            to->addAction(submenu(name)->menuAction());
        } else {
            to->addAction(actions_.at(name));
        }
    }
}

void MainWindow::makeMenus() {
    for (const WindowMenu& row : windowMenus()) {
        QMenu* menu = menuBar()->addMenu(QString());
        addActions(menu, row.actions);
        menuTitles_.emplace_back(menu, row.title);
    }
    menuTitles_.emplace_back(submenu("recent..."), L"最近的文件(&R)");
    menuTitles_.emplace_back(submenu("panels..."), L"面板和工具栏(&P)");
    menuTitles_.emplace_back(submenu("language..."), L"语言(&L)");
    QObject::connect(submenu("language..."), &QMenu::aboutToShow, this, [this] { fillLanguageMenu(); });
    setRecent({});
}

void MainWindow::makeToolBars() {
    const auto add = [this](const char* name, const wchar_t* title, Qt::ToolBarArea area) {
        auto* bar = new QToolBar(this);
        bar->setObjectName(name);
        bar->setIconSize({kIconSize, kIconSize});
        addToolBar(area, bar);
        titles_.emplace_back(bar, title);
        return bar;
    };
    for (const WindowMenu& row : windowToolBars())
        addActions(add(row.name, row.title,
                       QString(row.name) == "fileBar" ? Qt::TopToolBarArea : Qt::LeftToolBarArea),
                   row.actions);
    moduleBar_ = add("moduleBar", L"Corvane 工具栏", Qt::TopToolBarArea);
    fillPanelsMenu();
}

void MainWindow::fillPanelsMenu() {
    for (const auto& [widget, title] : titles_) {
        if (auto* dock = qobject_cast<QDockWidget*>(widget); dock && dock->widget() != line_)
            submenu("panels...")->addAction(dock->toggleViewAction());
        if (auto* bar = qobject_cast<QToolBar*>(widget))
            submenu("panels...")->addAction(bar->toggleViewAction());
    }
}

void MainWindow::fillLanguageMenu() {
    QMenu* menu = submenu("language...");
    menu->clear();
    for (const Language& language : languages()) {
        QAction* one = menu->addAction(language.name, this, [this, code = language.code] {
            if (onLanguage) onLanguage(code);
        });
        one->setCheckable(true);
        one->setChecked(language.code.substr(0, 2) == spokenLanguage().substr(0, 2));
    }
}

void MainWindow::setRecent(const QStringList& paths) {
    QMenu* menu = submenu("recent...");
    if (paths == recent_ && !paths.isEmpty()) return;
    recent_ = paths;
    menu->clear();
    menu->setEnabled(!paths.isEmpty());
    for (const QString& path : paths)
        menu->addAction(QString(path).replace('&', "&&"), this, [this, path] { openRecent(path); });
}

void MainWindow::fill(QMenu* menu, const std::vector<MenuItem>& items) {
    for (const MenuItem& item : items) {
        if (item.line.empty()) {
            fill(menu->addMenu(item.caption), item.items);
            continue;
        }
        QAction* action =
            menu->addAction(iconOf(item.icon, palette().color(QPalette::WindowText), kAccent),
                            item.help.isEmpty() ? item.caption : item.caption + "\t" + item.help, this,
                            [this, line = item.line] { run(line); });
        action->setStatusTip(item.help);
        action->setEnabled(item.enabled);
    }
}

void MainWindow::setModuleMenus(const std::vector<MenuItem>& menus, const std::vector<MenuItem>& buttons) {
    for (QMenu* menu : moduleMenus_) delete menu;
    moduleMenus_.clear();
    QAction* help = menuBar()->actions().back();
    for (const MenuItem& item : menus) {
        auto* menu = new QMenu(item.caption, this);
        fill(menu, item.items);
        menuBar()->insertMenu(help, menu);
        moduleMenus_.push_back(menu);
    }
    moduleBar_->clear();
    for (const MenuItem& item : buttons) {
        QAction* button =
            moduleBar_->addAction(iconOf(item.icon, palette().color(QPalette::WindowText), kAccent),
                                  item.caption, this, [this, line = item.line] { run(line); });
        button->setToolTip(item.caption + " - " + item.help);
        button->setStatusTip(item.help);
    }
}

void MainWindow::drawIcons() {
    for (const auto& [name, action] : actions_)
        action->setIcon(iconOf(name, palette().color(QPalette::WindowText), kAccent));
}

void MainWindow::retranslate() {
    for (const WindowAction& row : windowActions()) {
        QAction* action = actions_.at(row.name);
        const QString text = say(row.text), keys = action->shortcut().toString(QKeySequence::NativeText);
        action->setText(text);
        action->setToolTip(keys.isEmpty() ? plain(text) : plain(text) + " (" + keys + ")");
    }
    for (const auto& [menu, title] : menuTitles_) menu->setTitle(say(title));
    for (const auto& [widget, title] : titles_) widget->setWindowTitle(say(title));
    layers_->retranslate();
    properties_->retranslate();
    line_->retranslate();
    aids_->retranslate();
}

} // namespace desk
