// Both ways between the controls and their widgets. How widgets are made stands in dialog_widgets.cpp.
#include "apps/desk/dialog_window.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSignalBlocker>
#include <QSlider>

#include "apps/desk/drawn_items.h"
#include "apps/desk/qt_text.h"
#include "host/os/clock.h"
#include "host/ui/actions.h"
#include "host/ui/queue.h"
#include "host/ui/runner.h"
#include "host/ui/windows.h"

namespace desk {
namespace {

constexpr int kTick = 30;       // milliseconds between looks at the timers
constexpr int kTextPixels = 12; // of the dialogs' text

int ask(HWND control, UINT message, WPARAM wParam = 0) {
    return int(SendMessageW(control, message, wParam, 0));
}

QStringList itemsOf(HWND control, UINT count, UINT length, UINT text) {
    QStringList items;
    for (int i = 0; i < ask(control, count); ++i) {
        std::wstring item(size_t(std::max(ask(control, length, WPARAM(i)), 0)) + 1, L'\0');
        SendMessageW(control, text, WPARAM(i), reinterpret_cast<LPARAM>(item.data()));
        item.pop_back();
        items += shown(item);
    }
    return items;
}

// The control's font, as it was scaled to the screen.
QFont fontOf(const host::Window& control, QFont font) {
    const LOGFONTW* facts = host::fontOf(control.font);
    const int height = facts ? std::abs(int(facts->lfHeight)) : kTextPixels;
    font.setPixelSize(std::max(height, 1));
    font.setBold(facts && facts->lfWeight >= 600);
    font.setItalic(facts && facts->lfItalic);
    font.setUnderline(facts && facts->lfUnderline);
    return font;
}

QRect placeOf(const CRect& r) { return {int(r.left), int(r.top), int(r.Width()), int(r.Height())}; }

} // namespace

DialogWindow::DialogWindow(HWND dialog, QWidget* owner) : QDialog(owner), dialog_(dialog) {
    const host::Window* window = host::windowOf(dialog);
    for (const host::Window* control : window->children) add(*control, this);
    QObject::connect(&clock_, &QTimer::timeout, this, [this] {
        if (host::runningTimers() > 0 || host::deliverPosted() > 0) sync();
    });
    clock_.start(kTick);
    sync();
}

QWidget* DialogWindow::widgetOf(HWND control) const {
    const auto found = widgets_.find(control);
    return found == widgets_.end() ? nullptr : found->second;
}

// What was typed and not yet told goes before whatever the hand does next.
void DialogWindow::finishEdits() {
    const QPointer<DialogWindow> alive(this);
    const auto all = widgets_;
    for (const auto& [handle, widget] : all) {
        if (!alive) return;
        if (auto* edit = qobject_cast<QLineEdit*>(widget); edit && edit->isModified()) {
            edit->setModified(false);
            host::typeText(handle, wide(edit->text()));
        } else if (auto* lines = qobject_cast<QPlainTextEdit*>(widget);
                   lines && lines->document()->isModified()) {
            lines->document()->setModified(false);
            host::typeText(handle, wide(lines->toPlainText().replace('\n', "\r\n")));
        }
    }
}

// An action may run commands that pick in the drawing, and may end the dialog: this may be gone behind it.
void DialogWindow::act(const std::function<void()>& action) {
    if (syncing_) return;
    const QPointer<DialogWindow> alive(this);
    finishEdits();
    if (alive) action();
    if (alive) sync();
    if (alive && onActed) onActed();
}

void DialogWindow::sync() {
    const QPointer<DialogWindow> alive(this);
    host::deliverPosted();
    host::fireTimers(host::tickCount());
    if (!alive) return;
    if (host::dialogEnded(dialog_)) {
        if (!std::exchange(told_, true) && onEnded) onEnded();
        return;
    }
    syncing_ = true;
    const host::Window* dialog = host::windowOf(dialog_);
    setWindowTitle(shown(dialog->text));
    const CRect client = dialog->client();
    setFixedSize(int(client.Width()), int(client.Height()));
    followControls(*dialog, this);
    for (const auto& [handle, widget] : widgets_)
        if (const host::Window* control = host::windowOf(handle)) show(*control, widget);
    syncing_ = false;
}

// Controls come and go while a dialog stands.
void DialogWindow::followControls(const host::Window& window, QWidget* parent) {
    std::erase_if(widgets_, [](const auto& one) {
        if (host::windowOf(one.first)) return false;
        return one.second->deleteLater(), one.second->hide(), true;
    });
    for (const host::Window* control : window.children)
        if (!widgetOf(control->handle)) add(*control, parent);
}

void DialogWindow::show(const host::Window& control, QWidget* widget) {
    const QSignalBlocker quiet(widget);
    widget->setGeometry(placeOf(control.rect));
    widget->setFont(fontOf(control, font()));
    widget->setEnabled(control.enabled());
    widget->setVisible(control.visible());
    const QString text = shown(control.text);
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        showButton(control, button);
    } else if (auto* group = qobject_cast<QGroupBox*>(widget)) {
        group->setTitle(text);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setText(text);
    } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        edit->setMaxLength(ask(control.handle, EM_GETLIMITTEXT));
        if (!edit->isModified() && edit->text() != text) edit->setText(text);
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(widget)) {
        const QString plain = QString(text).remove('\r');
        if (!lines->document()->isModified() && lines->toPlainText() != plain) lines->setPlainText(plain);
    } else if (auto* slider = qobject_cast<QSlider*>(widget)) {
        slider->setRange(ask(control.handle, TBM_GETRANGEMIN), ask(control.handle, TBM_GETRANGEMAX));
        slider->setValue(ask(control.handle, TBM_GETPOS));
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        showCombo(control, combo);
    } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
        showList(control.handle, list);
    } else {
        widget->update();
    }
}

void DialogWindow::showButton(const host::Window& control, QAbstractButton* button) {
    button->setText(shown(control.text));
    button->setCheckable(isCheck(control) || isRadio(control));
    if (!button->isCheckable()) return;
    const int state = ask(control.handle, BM_GETCHECK);
    auto* check = qobject_cast<QCheckBox*>(button);
    if (check && state == BST_INDETERMINATE)
        check->setCheckState(Qt::PartiallyChecked);
    else
        button->setChecked(state == BST_CHECKED);
}

void DialogWindow::showCombo(const host::Window& control, QComboBox* combo) {
    const QStringList items = itemsOf(control.handle, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
    QStringList present;
    for (int i = 0; i < combo->count(); ++i) present += combo->itemText(i);
    if (present != items) combo->clear(), combo->addItems(items);
    combo->setCurrentIndex(ask(control.handle, CB_GETCURSEL));
    if (combo->isEditable() && !combo->lineEdit()->isModified()) combo->setEditText(shown(control.text));
    combo->update(); // what a drawn item looks like may have changed
}

void DialogWindow::showList(HWND control, QListWidget* list) {
    const QStringList items = itemsOf(control, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
    QStringList present;
    for (int i = 0; i < list->count(); ++i) present += list->item(i)->text();
    if (present != items) list->clear(), list->addItems(items);
    for (int i = 0; i < list->count(); ++i)
        list->item(i)->setSelected(ask(control, LB_GETSEL, WPARAM(i)) > 0);
}

bool DialogWindow::eventFilter(QObject* watched, QEvent* event) {
    auto* lines = qobject_cast<QPlainTextEdit*>(watched);
    if (lines && event->type() == QEvent::FocusOut && lines->document()->isModified()) act([] {});
    return QDialog::eventFilter(watched, event);
}

// What the dialog draws behind its controls.
void DialogWindow::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    QPainter painter(this);
    paintModel(painter, dialog_);
}

void DialogWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    reject();
}

void DialogWindow::reject() {
    act([this] { SendMessageW(dialog_, WM_CLOSE, 0, 0); });
}

} // namespace desk
