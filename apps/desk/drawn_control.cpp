// Recordings to the screen, and the mouse to messages.
#include "apps/desk/drawn_control.h"

#include <QMouseEvent>
#include <QPainter>

#include "host/ui/recording.h"
#include "host/ui/windows.h"

namespace desk {

DrawnControl::DrawnControl(HWND control, QWidget* parent) : QWidget(parent), control_(control) {
    setMouseTracking(true);
}

void DrawnControl::paintEvent(QPaintEvent*) {
    const auto painted = host::paintWindow(control_);
    host::PictureServices* services = host::pictureServices();
    if (!painted || !services || painted->width <= 0 || painted->height <= 0) return;
    const size_t bytes = size_t(painted->width) * size_t(painted->height) * 4;
    host::ImagePixels pixels{painted->width, painted->height, std::vector<std::uint8_t>(bytes, 255)};
    services->draw(*painted, pixels);
    const QImage image(pixels.rgba.data(), pixels.width, pixels.height, pixels.width * 4,
                       QImage::Format_RGBA8888);
    QPainter(this).drawImage(0, 0, image);
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
