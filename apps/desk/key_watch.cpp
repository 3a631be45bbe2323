// Listening to the application's key events.
#include "apps/desk/key_watch.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "host/ed/message_filter.h"
#include "host/os/keys.h"

namespace desk {
namespace {

// The window system's number of a key; 0 for those that no filter asks for.
UINT virtualKey(int key) {
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return UINT(key);
    switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return VK_TAB;
    case Qt::Key_Return:
    case Qt::Key_Enter: return VK_RETURN;
    case Qt::Key_Space: return VK_SPACE;
    case Qt::Key_Escape: return VK_ESCAPE;
    case Qt::Key_Delete: return VK_DELETE;
    default: return 0;
    }
}

} // namespace

void noteModifiers(Qt::KeyboardModifiers held) {
    host::HeldKeys& keys = host::heldKeys();
    keys.shift = held & Qt::ShiftModifier;
    keys.ctrl = held & Qt::ControlModifier;
    keys.alt = held & Qt::AltModifier;
}

KeyWatch::KeyWatch(QWidget& canvas) : canvas_(canvas) { qApp->installEventFilter(this); }

// A key that nobody takes is offered to one widget after the other.
bool KeyWatch::isFirst(QObject* watched) const {
    if (watched == &canvas_) return true;
    const QWidget* focus = QApplication::focusWidget();
    return focus && watched == focus && focus->window() == canvas_.window();
}

void KeyWatch::hold(const QKeyEvent& event, bool down) {
    host::HeldKeys& keys = host::heldKeys();
    const host::HeldKeys before = keys;
    switch (event.key()) {
    case Qt::Key_Shift: keys.shift = down; break;
    case Qt::Key_Control: keys.ctrl = down; break;
    case Qt::Key_Alt: keys.alt = down; break;
    case Qt::Key_Space: keys.space = down; break;
    case Qt::Key_Escape: keys.escape = down; break;
    default: return;
    }
    if (keys != before && onHeld) onHeld();
}

bool KeyWatch::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::ApplicationDeactivate) host::heldKeys() = {};
    if ((type != QEvent::KeyPress && type != QEvent::KeyRelease) || !isFirst(watched)) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!key.isAutoRepeat()) hold(key, type == QEvent::KeyPress);
    if (type == QEvent::KeyRelease) return false;
    const UINT code = virtualKey(key.key());
    return (code != 0 && host::keyFiltered(code)) || (onPress && onPress(key.key()));
}

} // namespace desk
