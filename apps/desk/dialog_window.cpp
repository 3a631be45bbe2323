// Widgets for the controls, and both ways between them.
#include "apps/desk/dialog_window.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>

#include "apps/desk/drawn_control.h"
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

bool isRadio(UINT type) { return type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON; }
bool isCheck(UINT type) {
    return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_3STATE || type == BS_AUTO3STATE;
}
QRect placeOf(const CRect& r) { return {int(r.left), int(r.top), int(r.Width()), int(r.Height())}; }

} // namespace

DialogWindow::DialogWindow(HWND dialog, QWidget* owner) : QDialog(owner), dialog_(dialog) {
    const host::Window* window = host::windowOf(dialog);
    QFont text = font();
    text.setPixelSize(kTextPixels);
    setFont(text);
    setWindowTitle(shown(window->text));
    const CRect client = window->client();
    setFixedSize(int(client.Width()), int(client.Height()));
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

void DialogWindow::add(const host::Window& control, QWidget* parent) {
    QWidget* widget = make(control, parent);
    widgets_[control.handle] = widget;
    if (control.hasClass(L"ComboBox")) return; // its parts are the widget's own
    for (const host::Window* inner : control.children) add(*inner, widget);
}

QWidget* DialogWindow::make(const host::Window& control, QWidget* parent) {
    const UINT type = control.style & SS_TYPEMASK;
    if (control.hasClass(L"Button") && control.type() != BS_OWNERDRAW) return makeButton(control, parent);
    if (control.hasClass(L"Edit")) return makeEdit(control, parent);
    if (control.hasClass(L"ComboBox") && !(control.style & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)))
        return makeCombo(control, parent);
    if (control.hasClass(L"ListBox") && !(control.style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE)))
        return makeList(control, parent);
    if (control.hasClass(L"msctls_trackbar32")) return makeSlider(control, parent);
    if (control.hasClass(L"Static") && (type <= SS_RIGHT || type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP)) {
        auto* label = new QLabel(parent);
        label->setWordWrap(type == SS_LEFT);
        label->setAlignment(type == SS_RIGHT    ? Qt::AlignRight | Qt::AlignTop
                            : type == SS_CENTER ? Qt::AlignHCenter | Qt::AlignTop
                                                : Qt::AlignLeft | Qt::AlignTop);
        return label;
    }
    auto* drawn = new DrawnControl(control.handle, parent);
    drawn->act = [this](const std::function<void()>& action) { act(action); };
    return drawn;
}

QPushButton* DialogWindow::makePush(const host::Window& control, QWidget* parent) {
    auto* push = new QPushButton(parent);
    push->setAutoDefault(false);
    push->setDefault(control.id == host::windowOf(dialog_)->defaultId);
    return push;
}

QWidget* DialogWindow::makeButton(const host::Window& control, QWidget* parent) {
    const UINT type = control.type();
    if (type == BS_GROUPBOX) {
        auto* group = new QGroupBox(parent);
        group->setAttribute(Qt::WA_TransparentForMouseEvents); // it stands before what it frames
        return group;
    }
    QAbstractButton* button = nullptr;
    if (isCheck(type))
        button = new QCheckBox(parent);
    else if (isRadio(type))
        button = new QRadioButton(parent);
    else
        button = makePush(control, parent);
    button->setAutoExclusive(false);
    QObject::connect(button, &QAbstractButton::clicked, this,
                     [this, handle = control.handle] { act([handle] { host::press(handle); }); });
    return button;
}

QWidget* DialogWindow::makeEdit(const host::Window& control, QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setReadOnly(control.style & ES_READONLY);
    QObject::connect(edit, &QLineEdit::editingFinished, this, [this, edit] {
        if (edit->isModified()) act([] {});
    });
    return edit;
}

// What was typed and not yet told goes before whatever the hand does next.
void DialogWindow::finishEdits() {
    const QPointer<DialogWindow> alive(this);
    const auto all = widgets_;
    for (const auto& [handle, widget] : all) {
        auto* edit = alive ? qobject_cast<QLineEdit*>(widget) : nullptr;
        if (!edit || !edit->isModified()) continue;
        edit->setModified(false);
        host::typeText(handle, wide(edit->text()));
    }
}

QWidget* DialogWindow::makeCombo(const host::Window& control, QWidget* parent) {
    auto* combo = new QComboBox(parent);
    combo->setEditable((control.style & 3) != CBS_DROPDOWNLIST);
    combo->setInsertPolicy(QComboBox::NoInsert);
    const HWND handle = control.handle;
    QObject::connect(combo, &QComboBox::activated, this,
                     [this, handle](int index) { act([&] { host::chooseItem(handle, index); }); });
    if (QLineEdit* edit = combo->lineEdit())
        QObject::connect(edit, &QLineEdit::editingFinished, this, [this, edit, handle] {
            if (!edit->isModified()) return;
            edit->setModified(false);
            act([&] { host::typeInCombo(handle, wide(edit->text())); });
        });
    return combo;
}

QWidget* DialogWindow::makeList(const host::Window& control, QWidget* parent) {
    auto* list = new QListWidget(parent);
    const HWND handle = control.handle;
    if (control.style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL))
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    QObject::connect(list, &QListWidget::itemSelectionChanged, this, [this, list, handle] {
        std::vector<int> chosen;
        for (int i = 0; i < list->count(); ++i)
            if (list->item(i)->isSelected()) chosen.push_back(i);
        act([&] { host::chooseItems(handle, chosen); });
    });
    QObject::connect(list, &QListWidget::itemDoubleClicked, this,
                     [this, list, handle](QListWidgetItem* item) {
                         const int row = list->row(item);
                         act([&] { host::doubleClickItem(handle, row); });
                     });
    return list;
}

QWidget* DialogWindow::makeSlider(const host::Window& control, QWidget* parent) {
    auto* slider = new QSlider(Qt::Horizontal, parent);
    QObject::connect(slider, &QSlider::valueChanged, this, [this, handle = control.handle](int value) {
        act([&] { host::moveSlider(handle, value); });
    });
    return slider;
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
    for (const auto& [handle, widget] : widgets_)
        if (const host::Window* control = host::windowOf(handle)) show(*control, widget);
    syncing_ = false;
}

void DialogWindow::show(const host::Window& control, QWidget* widget) {
    const QSignalBlocker quiet(widget);
    widget->setGeometry(placeOf(control.rect));
    widget->setEnabled(control.enabled());
    widget->setVisible(control.visible());
    const HWND handle = control.handle;
    const QString text = shown(control.text);
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setText(text);
        button->setCheckable(isCheck(control.type()) || isRadio(control.type()));
        if (button->isCheckable()) button->setChecked(ask(handle, BM_GETCHECK) == BST_CHECKED);
    } else if (auto* group = qobject_cast<QGroupBox*>(widget)) {
        group->setTitle(text);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setText(text);
    } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        if (!edit->isModified() && edit->text() != text) edit->setText(text);
    } else if (auto* slider = qobject_cast<QSlider*>(widget)) {
        slider->setRange(ask(handle, TBM_GETRANGEMIN), ask(handle, TBM_GETRANGEMAX));
        slider->setValue(ask(handle, TBM_GETPOS));
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        const QStringList items = itemsOf(handle, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
        QStringList present;
        for (int i = 0; i < combo->count(); ++i) present += combo->itemText(i);
        if (present != items) combo->clear(), combo->addItems(items);
        combo->setCurrentIndex(ask(handle, CB_GETCURSEL));
        if (combo->isEditable() && !combo->lineEdit()->isModified()) combo->setEditText(text);
    } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
        const QStringList items = itemsOf(handle, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
        QStringList present;
        for (int i = 0; i < list->count(); ++i) present += list->item(i)->text();
        if (present != items) list->clear(), list->addItems(items);
        for (int i = 0; i < list->count(); ++i)
            list->item(i)->setSelected(ask(handle, LB_GETSEL, WPARAM(i)) > 0);
    } else {
        widget->update();
    }
}

void DialogWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    reject();
}

void DialogWindow::reject() {
    act([this] { SendMessageW(dialog_, WM_CLOSE, 0, 0); });
}

} // namespace desk
