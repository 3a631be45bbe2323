// Combo and list boxes whose items the dialog draws itself: the items' recordings in the toolkit's lists.
#pragma once
#include <QComboBox>
#include <QImage>

#include "host/ui/window.h"

class QAbstractItemView;

namespace desk {

// The recording's pixels, on white or on nothing; a null image where nothing can be drawn.
enum class Ground { white, clear };
QImage imageOf(const host::Recording& recording, Ground ground = Ground::white);
// A window as it paints itself, and what was drawn over it since.
void paintModel(QPainter& painter, HWND window);

// Shows the view's rows as the control's parent draws its items.
void drawItemsByParent(QAbstractItemView* view, HWND control);

class DrawnCombo : public QComboBox {
public:
    DrawnCombo(HWND control, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    HWND control_;
};

} // namespace desk
