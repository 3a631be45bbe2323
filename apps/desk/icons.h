// The icons of tool buttons: line drawings on a grid of 24 by 24, in the colours of the window.
#pragma once
#include <QIcon>
#include <QString>

namespace desk {

inline const QColor kAccent(0xD8, 0x5A, 0x1E); // of what a tool adds or changes

// Of an action of the window or a command, by name; a null icon when there is none.
QIcon iconOf(const QString& name, const QColor& ink, const QColor& accent);

} // namespace desk
