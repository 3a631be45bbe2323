// A control that paints itself: shows its recording and gives it the mouse.
#pragma once
#include <QWidget>
#include <functional>

#include "host/ui/window.h"

namespace desk {

class DrawnControl : public QWidget {
public:
    DrawnControl(HWND control, QWidget* parent);
    std::function<void(const std::function<void()>&)> act; // does something that a hand did

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override { send(event, WM_LBUTTONDOWN); }
    void mouseMoveEvent(QMouseEvent* event) override { send(event, WM_MOUSEMOVE); }
    void mouseReleaseEvent(QMouseEvent* event) override { send(event, WM_LBUTTONUP); }

private:
    void send(QMouseEvent* event, UINT message);
    HWND control_;
};

} // namespace desk
