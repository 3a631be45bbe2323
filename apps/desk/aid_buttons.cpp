// The rows of the buttons, kept in step with their system variables.
#include "apps/desk/aid_buttons.h"

#include <QHBoxLayout>
#include <QToolButton>

#include "apps/desk/drawing_aids.h"
#include "apps/desk/texts.h"
#include "host/ed/document.h"
#include "host/os/text.h"

namespace desk {
namespace {

struct Aid {
    int key;
    const wchar_t* name;
    const wchar_t* variable;
};
constexpr Aid kAids[] = {{Qt::Key_F3, L"捕捉", L"OSMODE"},
                         {Qt::Key_F7, L"栅格", L"GRIDMODE"},
                         {Qt::Key_F8, L"正交", L"ORTHOMODE"}};

} // namespace

AidButtons::AidButtons(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (const Aid& aid : kAids) {
        auto* button = new QToolButton;
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        row->addWidget(button);
        buttons_.push_back(button);
        QObject::connect(button, &QToolButton::clicked, this, [this, key = aid.key] {
            const std::optional<QString> note = curDoc() ? switchAid(key) : std::nullopt;
            if (note && onSwitched) onSwitched(*note);
            refresh();
        });
    }
    acedEditorPtr()->addReactor(this);
}

AidButtons::~AidButtons() { acedEditorPtr()->removeReactor(this); }

void AidButtons::refresh() {
    for (size_t i = 0; i < buttons_.size(); ++i) buttons_[i]->setChecked(curDoc() && aidIsOn(kAids[i].key));
}

void AidButtons::retranslate() {
    for (size_t i = 0; i < buttons_.size(); ++i) {
        const QString key = QKeySequence(kAids[i].key).toString(QKeySequence::NativeText);
        buttons_[i]->setText(say(kAids[i].name));
        buttons_[i]->setToolTip(say(kAids[i].name) + " (" + key + ")");
    }
}

void AidButtons::sysVarChanged(const ACHAR* name, bool) {
    for (const Aid& aid : kAids)
        if (host::equalNoCase(aid.variable, name)) return refresh();
}

} // namespace desk
