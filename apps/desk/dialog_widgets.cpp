// The widgets that dialogs are made of: one for each kind of control, telling the dialog what a hand does.
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QSlider>

#include "apps/desk/dialog_window.h"
#include "apps/desk/drawn_control.h"
#include "apps/desk/drawn_items.h"
#include "apps/desk/qt_text.h"
#include "host/ui/actions.h"
#include "host/ui/windows.h"

namespace desk {
namespace {

bool drawsItems(const host::Window& control) {
    const DWORD drawn = control.hasClass(L"ComboBox") ? CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE
                                                      : LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE;
    return control.style & drawn;
}

Qt::Alignment across(DWORD style) {
    return style & ES_RIGHT ? Qt::AlignRight : style & ES_CENTER ? Qt::AlignHCenter : Qt::AlignLeft;
}

} // namespace

bool isRadio(const host::Window& control) {
    return control.type() == BS_RADIOBUTTON || control.type() == BS_AUTORADIOBUTTON;
}
bool isCheck(const host::Window& control) {
    const UINT type = control.type();
    return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_3STATE || type == BS_AUTO3STATE;
}

void DialogWindow::add(const host::Window& control, QWidget* parent) {
    QWidget* widget = make(control, parent);
    widgets_[control.handle] = widget;
    if (widget->focusPolicy() & Qt::TabFocus) {
        // The label before a field leads to it by its underlined letter.
        if (label_) label_->setBuddy(widget);
        label_ = nullptr;
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        label_ = label;
    }
    if (control.hasClass(L"ComboBox")) return; // its parts are the widget's own
    for (const host::Window* inner : control.children) add(*inner, widget);
}

QWidget* DialogWindow::make(const host::Window& control, QWidget* parent) {
    const UINT type = control.style & SS_TYPEMASK;
    if (control.hasClass(L"Button") && control.type() != BS_OWNERDRAW) return makeButton(control, parent);
    if (control.hasClass(L"Edit")) return makeEdit(control, parent);
    if (control.hasClass(L"ComboBox")) return makeCombo(control, parent);
    if (control.hasClass(L"ListBox")) return makeList(control, parent);
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
    if (isCheck(control))
        button = new QCheckBox(parent);
    else if (isRadio(control))
        button = new QRadioButton(parent);
    else
        button = makePush(control, parent);
    button->setAutoExclusive(false);
    QObject::connect(button, &QAbstractButton::clicked, this,
                     [this, handle = control.handle] { act([handle] { host::press(handle); }); });
    return button;
}

QWidget* DialogWindow::makeEdit(const host::Window& control, QWidget* parent) {
    if (control.style & ES_MULTILINE) return makeLines(control, parent);
    auto* edit = new QLineEdit(parent);
    edit->setReadOnly(control.style & ES_READONLY);
    edit->setAlignment(across(control.style) | Qt::AlignVCenter);
    if (control.style & ES_PASSWORD) edit->setEchoMode(QLineEdit::Password);
    if (control.style & ES_NUMBER) {
        static const QRegularExpression digits("[0-9]*");
        edit->setValidator(new QRegularExpressionValidator(digits, edit));
    }
    QObject::connect(edit, &QLineEdit::editingFinished, this, [this, edit] {
        if (edit->isModified()) act([] {});
    });
    return edit;
}

// What is typed counts once the field is left, as in one of a single line.
QWidget* DialogWindow::makeLines(const host::Window& control, QWidget* parent) {
    auto* edit = new QPlainTextEdit(parent);
    edit->setReadOnly(control.style & ES_READONLY);
    edit->setTabChangesFocus(true);
    edit->setLineWrapMode(control.style & ES_AUTOHSCROLL ? QPlainTextEdit::NoWrap
                                                         : QPlainTextEdit::WidgetWidth);
    edit->installEventFilter(this);
    return edit;
}

QWidget* DialogWindow::makeCombo(const host::Window& control, QWidget* parent) {
    QComboBox* combo = drawsItems(control) ? new DrawnCombo(control.handle, parent) : new QComboBox(parent);
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
    if (drawsItems(control)) drawItemsByParent(list, handle);
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
    auto* slider = new QSlider(control.style & TBS_VERT ? Qt::Vertical : Qt::Horizontal, parent);
    slider->setInvertedAppearance(control.style & TBS_VERT); // their least value is at the top
    QObject::connect(slider, &QSlider::valueChanged, this, [this, handle = control.handle](int value) {
        act([&] { host::moveSlider(handle, value); });
    });
    return slider;
}

} // namespace desk
