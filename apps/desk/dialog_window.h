// One dialog with its widgets.
#pragma once
#include <QDialog>
#include <QTimer>
#include <functional>
#include <map>

#include "host/ui/window.h"

class QAbstractButton;
class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace desk {

bool isRadio(const host::Window& control);
bool isCheck(const host::Window& control);

class DialogWindow : public QDialog {
public:
    DialogWindow(HWND dialog, QWidget* owner);

    // Posted messages and due timers are delivered, and every widget shows what its control holds.
    void sync();
    QWidget* widgetOf(HWND control) const;
    std::function<void()> onEnded; // the dialog was ended
    std::function<void()> onActed; // the user's hand did something in it

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void reject() override; // Esc
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void add(const host::Window& control, QWidget* parent);
    QWidget* make(const host::Window& control, QWidget* parent);
    QPushButton* makePush(const host::Window& control, QWidget* parent);
    QWidget* makeButton(const host::Window& control, QWidget* parent);
    QWidget* makeEdit(const host::Window& control, QWidget* parent);
    QWidget* makeLines(const host::Window& control, QWidget* parent);
    QWidget* makeCombo(const host::Window& control, QWidget* parent);
    QWidget* makeList(const host::Window& control, QWidget* parent);
    QWidget* makeSlider(const host::Window& control, QWidget* parent);
    void finishEdits();
    // Does what the user's hand did, then brings all widgets up to date.
    void act(const std::function<void()>& action);
    void followControls(const host::Window& window, QWidget* parent);
    void show(const host::Window& control, QWidget* widget);
    void showButton(const host::Window& control, QAbstractButton* button);
    void showCombo(const host::Window& control, QComboBox* combo);
    void showList(HWND control, QListWidget* list);

    HWND dialog_;
    std::map<HWND, QWidget*> widgets_;
    QLabel* label_ = nullptr; // the one before the next field, while they are made
    QTimer clock_;
    bool syncing_ = false, told_ = false;
};

} // namespace desk
