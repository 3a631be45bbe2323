// Files and questions.
#include "apps/desk/drawings.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <filesystem>
#include <utility>

#include "apps/desk/desk_settings.h"
#include "apps/desk/qt_text.h"
#include "apps/desk/texts.h"
#include "host/dxf/dxf.h"
#include "host/os/text.h"

namespace desk {

Drawings::Drawings(QWidget* window, std::function<void(const std::wstring&)> tell)
    : window_(window), tell_(std::move(tell)) {
    acDocManagerPtr()->addReactor(this);
    acedEditorPtr()->addReactor(this);
}

Drawings::~Drawings() {
    acedEditorPtr()->removeReactor(this);
    acDocManagerPtr()->removeReactor(this);
}

std::unique_ptr<AcDbDatabase> Drawings::read(const std::string& path) {
    auto database = std::make_unique<AcDbDatabase>(path.empty());
    if (!path.empty()) {
        const host::ReadReport report = host::readDrawing(path, *database);
        for (const host::ReadReport::Note& note : report.notes)
            tell_(L"\nNote: " + host::wide(note.sentence) + L".");
        if (report.ok) {
            std::error_code failure;
            const std::filesystem::path whole = std::filesystem::absolute(path, failure);
            database->setFilename(host::wide(failure ? path : whole.string()));
        } else {
            tell_(L"\nNot opened: " + host::wide(report.message));
            database = std::make_unique<AcDbDatabase>(true);
        }
    }
    database->undoLog().clear();
    database->undoLog().markSaved();
    return database;
}

bool Drawings::save(AcApDocument& document) {
    QString path = shown(document.fileName());
    if (path.isEmpty()) {
        QFileDialog dialog(window_, say(L"图形另存为"), {}, say(L"图形 (*.dxf)"));
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setDefaultSuffix("dxf");
        if (dialog.exec() == QDialog::Accepted) path = dialog.selectedFiles().front();
    }
    if (path.isEmpty()) return false;
    const host::WriteReport report = host::writeDrawing(path.toStdString(), *document.database());
    if (!report.ok) QMessageBox::warning(window_, "Corvane", QString::fromStdString(report.message));
    if (report.ok) {
        document.database()->setFilename(wide(path));
        noteRecentFile(path);
    }
    return report.ok;
}

bool Drawings::mayClose(AcApDocument& document) {
    if (!document.database()->undoLog().changedSinceSave()) return true;
    QMessageBox box(QMessageBox::Question, "Corvane",
                    say(L"把改动保存到 %1 吗？", shown(document.docTitle())), QMessageBox::NoButton, window_);
    const auto* save = box.addButton(say(L"保存(&S)"), QMessageBox::AcceptRole);
    const auto* discard = box.addButton(say(L"不保存(&D)"), QMessageBox::DestructiveRole);
    box.setEscapeButton(box.addButton(say(L"取消"), QMessageBox::RejectRole));
    box.exec();
    if (box.clickedButton() == save) return this->save(document);
    return box.clickedButton() == discard;
}

bool Drawings::mayCloseAll() {
    for (AcApDocument* document : acDocManagerPtr()->documents())
        if (!mayClose(*document)) return false;
    return true;
}

void Drawings::close(AcApDocument& document) {
    if (acDocManagerPtr()->documents().size() == 1)
        acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
    acDocManagerPtr()->close(&document);
}

void Drawings::dropUnused() {
    if (!std::exchange(opened_, false) || !first_ || curDoc() == first_) return;
    AcApDocument* first = std::exchange(first_, nullptr);
    const host::UndoLog& log = first->database()->undoLog();
    if (!log.changedSinceSave() && log.undoSteps() == 0 && !*first->fileName())
        acDocManagerPtr()->close(first);
}

std::vector<TabLook> Drawings::tabs() const {
    std::vector<TabLook> looks;
    for (AcApDocument* document : acDocManagerPtr()->documents())
        looks.push_back({shown(document->docTitle()), shown(document->fileName()),
                         document->database()->undoLog().changedSinceSave()});
    return looks;
}

int Drawings::current() const {
    const std::vector<AcApDocument*> all = acDocManagerPtr()->documents();
    return int(std::find(all.begin(), all.end(), curDoc()) - all.begin());
}

AcApDocument* Drawings::at(int tab) const {
    const std::vector<AcApDocument*> all = acDocManagerPtr()->documents();
    return tab >= 0 && tab < int(all.size()) ? all[size_t(tab)] : nullptr;
}

// -- what commands do ----------------------------------------------------------------------------------

void Drawings::documentCreated(AcApDocument* document) {
    opened_ = *document->fileName();
    if (opened_ && !document->database()->undoLog().changedSinceSave())
        noteRecentFile(shown(document->fileName()));
    else if (acDocManagerPtr()->documents().size() == 1)
        first_ = document;
}

void Drawings::documentToBeDestroyed(AcApDocument* document) {
    if (first_ == document) first_ = nullptr;
    if (onClosing) onClosing(document->database());
}

void Drawings::saveComplete(AcDbDatabase*, const ACHAR* path) { noteRecentFile(shown(path)); }

} // namespace desk
