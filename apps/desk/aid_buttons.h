// Buttons of the status bar that show and switch what steers the hand: object snaps, grid, drawing along the
// axes. Their keys work, too; see drawing_aids.h.
#pragma once
#include <QWidget>
#include <functional>
#include <vector>

#include "host/ed/editor_reactor.h"

class QToolButton;

namespace desk {

class AidButtons : public QWidget, private AcEditorReactor {
public:
    explicit AidButtons(QWidget* parent = nullptr);
    ~AidButtons() override;

    std::function<void(const QString& note)> onSwitched; // what to tell of it

    void refresh(); // as the current drawing has them
    void retranslate();
    QToolButton* button(int row) const { return buttons_[size_t(row)]; }

private:
    void sysVarChanged(const ACHAR* name, bool success) override;
    std::vector<QToolButton*> buttons_;
};

} // namespace desk
