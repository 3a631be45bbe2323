// The window's frame and menus.
#include "apps/desk/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>

#include "apps/desk/qt_text.h"
#include "host/ed/prompting.h"

namespace desk {
namespace {

constexpr char kDrawings[] = "Drawings (*.dxf);;All files (*)";
constexpr char kPictures[] = "Scalable picture (*.svg);;Image (*.png);;Document (*.pdf)";

// An answer that may hold blanks.
std::wstring quoted(const QString& path) { return L"\"" + wide(path) + L"\""; }

} // namespace

MainWindow::MainWindow() : canvas_(new Canvas), line_(new CommandLine), coordinates_(new QLabel) {
    setCentralWidget(canvas_);
    auto* dock = new QDockWidget("Command line");
    dock->setObjectName("commandDock");
    dock->setWidget(line_);
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    resizeDocks({dock}, {150}, Qt::Vertical);
    statusBar()->addWidget(coordinates_);
    canvas_->onMove = [this](const AcGePoint3d& world) { showPoint(world); };
    setAcceptDrops(true);
    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    resize(1200, 800);
}

void MainWindow::run(const std::wstring& line) {
    if (onCommand) onCommand(line);
}

void MainWindow::makeFileMenu() {
    QMenu* menu = menuBar()->addMenu("&File");
    menu->addAction("&New", QKeySequence::New, this, [this] { run(L"_.NEW"); });
    menu->addAction("&Open...", QKeySequence::Open, this, [this] { openFile(); });
    menu->addSeparator();
    menu->addAction("&Save", QKeySequence::Save, this, [this] { run(L"_.QSAVE"); });
    menu->addAction("Save &As...", QKeySequence::SaveAs, this, [this] { saveFileAs(); });
    menu->addAction("&Export Picture...", this, [this] { exportPicture(); });
    menu->addSeparator();
    menu->addAction("&Close Drawing", QKeySequence::Close, this, [this] { run(L"_.CLOSE"); });
    menu->addAction("&Quit", QKeySequence::Quit, this, [this] { close(); });
}

void MainWindow::makeEditMenu() {
    QMenu* menu = menuBar()->addMenu("&Edit");
    menu->addAction("&Undo", QKeySequence::Undo, this, [this] { run(L"_.U"); });
    menu->addAction("&Redo", QKeySequence::Redo, this, [this] { run(L"_.REDO"); });
    menu->addSeparator();
    menu->addAction("&Erase", QKeySequence::Delete, this, [this] { run(L"_.ERASE"); });
}

void MainWindow::makeViewMenu() {
    QMenu* menu = menuBar()->addMenu("&View");
    menu->addAction("Zoom &Extents", QKeySequence("Ctrl+0"), this, [this] { canvas_->zoomExtents(); });
    menu->addAction("Zoom &In", QKeySequence::ZoomIn, this, [this] { canvas_->zoomBy(1.5); });
    menu->addAction("Zoom &Out", QKeySequence::ZoomOut, this, [this] { canvas_->zoomBy(1 / 1.5); });
    menu->addSeparator();
    QAction* dark = menu->addAction("&Dark Background");
    dark->setCheckable(true);
    dark->setChecked(canvas_->isDark());
    QObject::connect(dark, &QAction::toggled, this, [this](bool on) { canvas_->setDark(on); });
}

void MainWindow::addMenus(const std::vector<MenuItem>& menus) {
    for (const MenuItem& menu : menus) fill(menuBar()->addMenu(menu.caption), menu.items);
}

void MainWindow::fill(QMenu* menu, const std::vector<MenuItem>& items) {
    for (const MenuItem& item : items) {
        if (item.line.empty()) {
            fill(menu->addMenu(item.caption), item.items);
            continue;
        }
        QAction* action = menu->addAction(item.caption, this, [this, line = item.line] { run(line); });
        action->setStatusTip(item.help);
    }
}

void MainWindow::showDrawing(const QString& name, bool changed) {
    setWindowTitle(name + "[*] - Corvane");
    setWindowModified(changed);
}

// In the user's coordinates, as points are typed.
void MainWindow::showPoint(const AcGePoint3d& world) {
    const AcGePoint3d p = host::worldToUcs(world);
    coordinates_->setText(QString("%1, %2, %3").arg(p.x, 0, 'f', 4).arg(p.y, 0, 'f', 4).arg(p.z, 0, 'f', 4));
}

void MainWindow::openFile() {
    const QString path = QFileDialog::getOpenFileName(this, "Open drawing", {}, kDrawings);
    if (!path.isEmpty()) run(L"_.OPEN\n" + quoted(path));
}

// The command asks before it replaces a file.
void MainWindow::saveFileAs() {
    QFileDialog dialog(this, "Save drawing as", {}, kDrawings);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDefaultSuffix("dxf");
    if (dialog.exec() == QDialog::Accepted) run(L"_.SAVEAS\n" + quoted(dialog.selectedFiles().front()));
}

void MainWindow::exportPicture() {
    QFileDialog dialog(this, "Export picture", {}, kPictures);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("svg");
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        dialog.setDefaultSuffix(filter.section("*.", 1).section(')', 0, 0));
    });
    if (dialog.exec() == QDialog::Accepted && onPicture) onPicture(dialog.selectedFiles().front());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!onClose || onClose())
        event->accept();
    else
        event->ignore();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) return run(L"_.OPEN\n" + quoted(url.toLocalFile()));
}

} // namespace desk
