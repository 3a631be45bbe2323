// Recordings to the screen, and the mouse to messages.
#include "apps/desk/drawn_control.h"

#include <QMouseEvent>
#include <QPainter>

#include "apps/desk/drawn_items.h"
#include "host/ui/actions.h"
#include "host/ui/windows.h"

namespace desk {

DrawnControl::DrawnControl(HWND control, QWidget* parent) : QWidget(parent), control_(control) {
    setMouseTracking(true);
    const host::Window* model = host::windowOf(control);
    if (model && (model->style & WS_TABSTOP)) setFocusPolicy(Qt::StrongFocus);
}

void DrawnControl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintModel(painter, control_);
}

// Of the keyboard: the space bar presses a drawn button.
void DrawnControl::keyPressEvent(QKeyEvent* event) {
    const host::Window* control = host::windowOf(control_);
    if (event->key() != Qt::Key_Space || !control || !control->hasClass(L"Button")) return event->ignore();
    act([&] { host::press(control_); });
}

void DrawnControl::send(QMouseEvent* event, UINT message) {
    const QPoint at = event->position().toPoint();
    WPARAM held = event->buttons() & Qt::LeftButton ? MK_LBUTTON : 0;
    if (message != WM_MOUSEMOVE && event->button() != Qt::LeftButton) return;
    act([&] {
        if (message == WM_LBUTTONDOWN) SetFocus(control_);
        SendMessageW(control_, message, held, MAKELPARAM(at.x(), at.y()));
    });
}

} // namespace desk
