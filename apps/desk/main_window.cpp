// The window's parts, and what its actions do. How menus, tool bars and their texts are made stands in
// window_menus.cpp.
#include "apps/desk/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <QVBoxLayout>

#include "apps/desk/icons.h"
#include "apps/desk/qt_text.h"
#include "apps/desk/texts.h"
#include "host/ed/prompting.h"

namespace desk {
namespace {

constexpr int kWidth = 1280, kHeight = 860, kPanelWidth = 330, kLineHeight = 150;

// An answer that may hold blanks.
std::wstring quoted(const QString& path) { return L"\"" + wide(path) + L"\""; }

QString drawingFilter() { return say(L"图形 (*.dxf)") + ";;" + say(L"所有文件 (*)"); }
QString pictureFilter() {
    return say(L"矢量图片 (*.svg)") + ";;" + say(L"图像 (*.png)") + ";;" + say(L"文档 (*.pdf)");
}

} // namespace

MainWindow::MainWindow()
    : canvas_(new Canvas), line_(new CommandLine), tabs_(new DrawingTabs), layers_(new LayersPanel),
      properties_(new PropertiesPanel), aids_(new AidButtons), coordinates_(new QLabel) {
    auto* middle = new QWidget;
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs_);
    column->addWidget(canvas_, 1);
    setCentralWidget(middle);
    statusBar()->addWidget(coordinates_);
    statusBar()->addPermanentWidget(aids_);
    canvas_->onMove = [this](const AcGePoint3d& world) { showPoint(world); };
    setAcceptDrops(true);
    setWindowIcon(iconOf("SCVN_PLBLENDS", palette().color(QPalette::WindowText), kAccent));
    makeDocks();
    makeActions();
    makeMenus();
    makeToolBars();
    drawIcons();
    retranslate();
    resize(kWidth, kHeight);
}

void MainWindow::makeDocks() {
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    QDockWidget* line = addDock("commandDock", L"命令行", line_, Qt::BottomDockWidgetArea);
    line->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    QDockWidget* layers = addDock("layersDock", L"图层面板", layers_, Qt::RightDockWidgetArea);
    QDockWidget* properties = addDock("propertiesDock", L"特性", properties_, Qt::RightDockWidgetArea);
    resizeDocks({line}, {kLineHeight}, Qt::Vertical);
    resizeDocks({layers, properties}, {kPanelWidth, kPanelWidth}, Qt::Horizontal);
}

QDockWidget* MainWindow::addDock(const char* name, const wchar_t* title, QWidget* inside,
                                 Qt::DockWidgetArea area) {
    auto* dock = new QDockWidget(this);
    dock->setObjectName(name);
    dock->setWidget(inside);
    addDockWidget(area, dock);
    titles_.emplace_back(dock, title);
    return dock;
}

void MainWindow::run(const std::wstring& line) {
    if (onCommand) onCommand(line);
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

// -- files ---------------------------------------------------------------------------------------------

void MainWindow::openFile() {
    const QString path = QFileDialog::getOpenFileName(this, say(L"打开图形"), {}, drawingFilter());
    if (!path.isEmpty()) run(L"_.OPEN\n" + quoted(path));
}

void MainWindow::openRecent(const QString& path) {
    if (QFileInfo::exists(path)) return run(L"_.OPEN\n" + quoted(path));
    QMessageBox::warning(this, "Corvane", say(L"找不到文件：%1", path));
    if (onForget) onForget(path);
}

// The command asks before it replaces a file.
void MainWindow::saveFileAs() {
    QFileDialog dialog(this, say(L"图形另存为"), {}, drawingFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDefaultSuffix("dxf");
    if (dialog.exec() == QDialog::Accepted) run(L"_.SAVEAS\n" + quoted(dialog.selectedFiles().front()));
}

void MainWindow::exportPicture() {
    QFileDialog dialog(this, say(L"导出图片"), {}, pictureFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("svg");
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        dialog.setDefaultSuffix(filter.section("*.", 1).section(')', 0, 0));
    });
    if (dialog.exec() == QDialog::Accepted && onPicture) onPicture(dialog.selectedFiles().front());
}

// -- events --------------------------------------------------------------------------------------------

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
    std::wstring lines;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) lines += L"_.OPEN\n" + quoted(url.toLocalFile()) + L"\n";
    if (!lines.empty()) run(lines.substr(0, lines.size() - 1));
}

void MainWindow::moveEvent(QMoveEvent* event) {
    QMainWindow::moveEvent(event);
    if (onScreen) onScreen();
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || !event->text().isEmpty())
        line_->take(event);
    else
        QMainWindow::keyPressEvent(event);
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) drawIcons();
}

} // namespace desk
