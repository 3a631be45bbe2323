// Windows of the window model that are no dialogs, such as tooltips: painted over the drawing.
#pragma once
#include <QPainter>

namespace desk {

// Paints those that are visible. `origin` is where the painter's zero is on the screen.
void paintPopups(QPainter& painter, const QPoint& origin);

} // namespace desk
