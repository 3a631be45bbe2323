// Popups as pictures.
#include "apps/desk/popups.h"

#include "host/ui/recording.h"
#include "host/ui/window.h"

namespace desk {
namespace {

bool isPopup(const host::Window& window) {
    return window.visible() && !window.isDialog && (window.style & WS_POPUP);
}

void paintPopup(QPainter& painter, const QPoint& origin, const host::Window& window) {
    host::PictureServices* services = host::pictureServices();
    const QPoint at(window.rect.left, window.rect.top);
    const auto painted = host::paintWindow(window.handle);
    if (!painted || !services || painted->width <= 0 || painted->height <= 0) return;
    const size_t bytes = size_t(painted->width) * size_t(painted->height) * 4;
    host::ImagePixels pixels{painted->width, painted->height, std::vector<std::uint8_t>(bytes, 255)};
    services->draw(*painted, pixels);
    const QImage image(pixels.rgba.data(), pixels.width, pixels.height, pixels.width * 4,
                       QImage::Format_RGBA8888);
    painter.drawImage(at - origin, image);
}

} // namespace

void paintPopups(QPainter& painter, const QPoint& origin) {
    for (const HWND handle : host::topWindows())
        if (const host::Window* window = host::windowOf(handle); window && isPopup(*window))
            paintPopup(painter, origin, *window);
}

} // namespace desk
