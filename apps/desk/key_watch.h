// The keyboard as programs ask for it: which keys are held, wherever in the window they are pressed, and
// filters that take keys before the window does.
#pragma once
#include <QObject>
#include <functional>

class QKeyEvent;
class QWidget;

namespace desk {

class KeyWatch : public QObject {
public:
    // Watches the window that the canvas stands in; the canvas must outlive it.
    explicit KeyWatch(QWidget& canvas);
    bool eventFilter(QObject* watched, QEvent* event) override;

    std::function<void()> onHeld;         // other keys are held than before
    std::function<bool(int key)> onPress; // before anyone else in the window; true takes the key

private:
    bool isFirst(QObject* watched) const;
    void hold(const QKeyEvent& event, bool down);
    QWidget& canvas_;
};

// The keys that came along with an event of the mouse.
void noteModifiers(Qt::KeyboardModifiers held);

} // namespace desk
