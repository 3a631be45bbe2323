// Start, the command loop, and the end with its question.
#include "apps/desk/desk.h"

#include <QFileDialog>
#include <QMessageBox>
#include <filesystem>

#include "apps/desk/qt_text.h"
#include "host/dxf/dxf.h"
#include "host/ed/application.h"
#include "host/ed/interpreter.h"
#include "host/os/files.h"
#include "host/os/locale.h"
#include "host/os/text.h"
#include "host/picture/picture.h"
#include "host/view/collector.h"

namespace desk {

Desk::Desk() : frontEnd_(window_.canvas(), window_.commandLine()), session_(&frontEnd_), dialogs_(&window_) {
    window_.onCommand = [this](const std::wstring& line) { frontEnd_.runLine(line); };
    window_.onPicture = [this](const QString& path) { exportPicture(path); };
    window_.onClose = [this] {
        closed_ = closed_ || mayEnd();
        if (closed_) frontEnd_.close();
        return closed_;
    };
    frontEnd_.onPrompt = [this] {
        if (AcApDocument* document = curDoc())
            window_.showDrawing(shown(document->docTitle()),
                                document->database()->undoLog().changedSinceSave());
    };
}

Desk::~Desk() {
    window_.onClose = {};
    frontEnd_.close();
}

bool Desk::start(const std::string& drawing, const std::string& language) {
    open(drawing);
    if (!session_.loadModule(language)) return false;
    addModuleMenus();
    return true;
}

void Desk::open(const std::string& drawing) {
    auto database = std::make_unique<AcDbDatabase>(drawing.empty());
    if (!drawing.empty()) {
        const host::ReadReport report = host::readDrawing(drawing, *database);
        for (const host::ReadReport::Note& note : report.notes)
            frontEnd_.print(L"\nNote: " + host::wide(note.sentence) + L".");
        if (report.ok) {
            std::error_code failure;
            const std::filesystem::path whole = std::filesystem::absolute(drawing, failure);
            database->setFilename(host::wide(failure ? drawing : whole.string()));
        } else {
            frontEnd_.print(L"\nNot opened: " + host::wide(report.message));
            database = std::make_unique<AcDbDatabase>(true);
        }
    }
    database->undoLog().clear();
    database->undoLog().markSaved();
    session_.open(std::move(database));
}

// The menu file lies beside the module: in Chinese for those who read it, else in English.
void Desk::addModuleMenus() {
    const bool chinese = (host::requestedLanguage().empty() ? host::languageTag() : host::requestedLanguage())
                             .starts_with("zh");
    for (const std::wstring& module : acrxDynamicLinker->loaded()) {
        const std::filesystem::path folder = std::filesystem::path(host::utf8(module)).parent_path();
        const std::string path = folder / (chinese ? "Corvane_chn.cuix" : "Corvane_eng.cuix");
        if (!host::fileExists(path)) continue;
        const MenuFile file = readMenuFile(path);
        if (!file.error.empty()) frontEnd_.print(L"\nNo menus: " + host::wide(file.error));
        window_.addMenus(file.menus);
    }
}

void Desk::run() {
    do {
        frontEnd_.reopen();
        if (host::commandLoop().quit) closed_ = mayEnd();
    } while (!closed_);
    window_.hide();
}

bool Desk::mayEnd() {
    AcDbDatabase* database = curDoc() ? curDoc()->database() : nullptr;
    if (discards_ || !database || !database->undoLog().changedSinceSave()) return true;
    const auto pressed = QMessageBox::question(
        &window_, "Corvane", "Save the changes to " + shown(curDoc()->docTitle()) + "?",
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (pressed == QMessageBox::Cancel) return false;
    return pressed == QMessageBox::Discard || save();
}

bool Desk::save() {
    AcDbDatabase& database = session_.drawing();
    QString path = shown(curDoc()->fileName());
    if (path.isEmpty())
        path = QFileDialog::getSaveFileName(&window_, "Save drawing as", {}, "Drawings (*.dxf)");
    if (path.isEmpty()) return false;
    const host::WriteReport report = host::writeDrawing(path.toStdString(), database);
    if (!report.ok) QMessageBox::warning(&window_, "Corvane", QString::fromStdString(report.message));
    return report.ok;
}

void Desk::exportPicture(const QString& path) {
    host::PictureOptions options;
    options.path = path.toStdString();
    options.view = window_.canvas().map().view();
    const host::PictureResult result =
        host::writePicture(host::displaySpace(session_.drawing(), {}), options);
    if (!result) return void(QMessageBox::warning(&window_, "Corvane", QString::fromStdString(result.error)));
    frontEnd_.print(L"\nWritten: " + wide(path));
}

} // namespace desk
