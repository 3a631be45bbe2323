// One dialog with its widgets.
#pragma once
#include <QDialog>
#include <QTimer>
#include <functional>
#include <map>

#include "host/ui/window.h"

class QPushButton;

namespace desk {

class DialogWindow : public QDialog {
public:
    DialogWindow(HWND dialog, QWidget* owner);

    // Posted messages and due timers are delivered, and every widget shows what its control holds.
    void sync();
    QWidget* widgetOf(HWND control) const;
    std::function<void()> onEnded; // the dialog was ended
    std::function<void()> onActed; // the user's hand did something in it

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override; // Esc

private:
    void add(const host::Window& control, QWidget* parent);
    QWidget* make(const host::Window& control, QWidget* parent);
    QPushButton* makePush(const host::Window& control, QWidget* parent);
    QWidget* makeButton(const host::Window& control, QWidget* parent);
    QWidget* makeEdit(const host::Window& control, QWidget* parent);
    QWidget* makeCombo(const host::Window& control, QWidget* parent);
    QWidget* makeList(const host::Window& control, QWidget* parent);
    QWidget* makeSlider(const host::Window& control, QWidget* parent);
    void finishEdits();
    // Does what the user's hand did, then brings all widgets up to date.
    void act(const std::function<void()>& action);
    void show(const host::Window& control, QWidget* widget);

    HWND dialog_;
    std::map<HWND, QWidget*> widgets_;
    QTimer clock_;
    bool syncing_ = false, told_ = false;
};

} // namespace desk
