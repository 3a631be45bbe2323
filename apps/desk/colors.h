// Drawing colours as the panels show and ask them.
#pragma once
#include <QColor>
#include <QIcon>
#include <QString>
#include <optional>

#include "host/db/color.h"

class QWidget;

namespace desk {

// What it looks like; by-layer and by-block are grey.
QColor seenColor(const AcCmColor& color);
// "ByLayer", "Red", "30", "120,80,20".
QString colorName(const AcCmColor& color);
QIcon colorSwatch(const AcCmColor& color);
// The index colour of exactly that look, else a true colour.
AcCmColor colorOf(const QColor& seen);

// Those a list of colours offers: by layer and by block, if `dependent`, then red to white.
std::vector<AcCmColor> offeredColors(bool dependent);
// Any colour, by a dialog; nothing when it was cancelled.
std::optional<AcCmColor> askColor(QWidget* parent, const AcCmColor& now);

} // namespace desk
