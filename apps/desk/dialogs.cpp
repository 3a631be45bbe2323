// Running dialogs, and the system's own for messages and files.
#include "apps/desk/dialogs.h"

#include <QEventLoop>
#include <QFileDialog>
#include <QMessageBox>

#include "apps/desk/dialog_window.h"
#include "apps/desk/qt_text.h"
#include "apps/desk/texts.h"
#include "host/ed/dialog_script.h"
#include "host/ed/frontend.h"

namespace desk {

DialogHost::DialogHost(QWidget* owner) : owner_(owner) { host::setDialogRunner(this); }
DialogHost::~DialogHost() { host::installPromptedDialogs(); }

DialogWindow* DialogHost::windowOf(HWND dialog) const {
    const auto found = windows_.find(dialog);
    return found == windows_.end() ? nullptr : found->second.get();
}

DialogWindow& DialogHost::make(HWND dialog) {
    auto& window = windows_[dialog];
    window = std::make_unique<DialogWindow>(dialog, owner_);
    window->onActed = [this] {
        if (onActed) onActed();
    };
    return *window;
}

void DialogHost::run(HWND dialog) {
    DialogWindow& window = make(dialog);
    QEventLoop loop;
    window.onEnded = [&] { loop.quit(); };
    window.setModal(true);
    window.QWidget::show();
    window.sync();
    if (!host::dialogEnded(dialog)) loop.exec();
    hidden(dialog);
}

void DialogHost::shown(HWND dialog) { make(dialog).QWidget::show(); }
// One of its own widgets may be what closes it.
void DialogHost::hidden(HWND dialog) {
    const auto found = windows_.find(dialog);
    if (found == windows_.end()) return;
    found->second->hide();
    found->second.release()->deleteLater();
    windows_.erase(found);
}

void DialogHost::pickBegins(HWND dialog) {
    if (DialogWindow* window = windowOf(dialog)) window->hide();
}

void DialogHost::pickEnds(HWND dialog) {
    if (DialogWindow* window = windowOf(dialog)) window->QWidget::show();
}

int DialogHost::messageBox(HWND, const std::wstring& text, const std::wstring& caption, UINT style) {
    return host::frontEnd().messageBox({text, caption, style});
}

std::vector<std::wstring> DialogHost::chooseFile(const host::FileQuestion& question) {
    QFileDialog dialog(owner_, desk::shown(question.title));
    QStringList filters;
    for (const host::FileFilter& filter : question.filters) {
        QStringList patterns;
        for (const std::wstring& pattern : filter.patterns) patterns += desk::shown(pattern);
        filters += desk::shown(filter.label).section('(', 0, 0).trimmed() + " (" + patterns.join(' ') + ")";
    }
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    dialog.setAcceptMode(question.open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(question.many                         ? QFileDialog::ExistingFiles
                       : question.open && question.mustExist ? QFileDialog::ExistingFile
                                                             : QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !question.asksBeforeOverwriting);
    if (!question.initial.empty()) dialog.selectFile(desk::shown(question.initial));
    std::vector<std::wstring> chosen;
    if (dialog.exec() == QDialog::Accepted)
        for (const QString& path : dialog.selectedFiles()) chosen.push_back(wide(path));
    return chosen;
}

void DialogHost::complain(const std::string& reason) {
    QMessageBox::warning(owner_, "Corvane", say(L"无法显示对话框：") + QString::fromStdString(reason));
}

} // namespace desk
