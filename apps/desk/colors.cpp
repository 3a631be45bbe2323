// Names, swatches and the choice of colours.
#include "apps/desk/colors.h"

#include <QColorDialog>
#include <QPainter>

#include "apps/desk/texts.h"

namespace desk {
namespace {

constexpr int kNamed = 7, kSwatch = 14;

const wchar_t* nameOf(int index) {
    static constexpr const wchar_t* kNames[] = {L"随块", L"红", L"黄", L"绿", L"青", L"蓝", L"洋红", L"白"};
    return kNames[index];
}

AcCmColor indexed(int index) {
    AcCmColor color;
    color.setColorIndex(Adesk::UInt16(index));
    return color;
}

} // namespace

QColor seenColor(const AcCmColor& color) {
    return color.isByACI() || color.isByColor() ? QColor(color.red(), color.green(), color.blue())
                                                : QColor(Qt::gray);
}

QString colorName(const AcCmColor& color) {
    if (color.isByLayer()) return say(L"随层");
    if (color.isByColor()) return QString("%1,%2,%3").arg(color.red()).arg(color.green()).arg(color.blue());
    const int index = color.colorIndex();
    return index <= kNamed ? say(nameOf(index)) : QString::number(index);
}

QIcon colorSwatch(const AcCmColor& color) {
    QPixmap pixels(kSwatch, kSwatch);
    pixels.fill(seenColor(color));
    QPainter painter(&pixels);
    painter.setPen(Qt::darkGray);
    painter.drawRect(0, 0, kSwatch - 1, kSwatch - 1);
    return pixels;
}

AcCmColor colorOf(const QColor& seen) {
    const int index = AcCmEntityColor::lookUpACI(Adesk::UInt8(seen.red()), Adesk::UInt8(seen.green()),
                                                 Adesk::UInt8(seen.blue()));
    AcCmColor color = indexed(index);
    if (seenColor(color).rgb() != seen.rgb())
        color.setRGB(Adesk::UInt8(seen.red()), Adesk::UInt8(seen.green()), Adesk::UInt8(seen.blue()));
    return color;
}

std::vector<AcCmColor> offeredColors(bool dependent) {
    std::vector<AcCmColor> offered;
    if (dependent) offered = {AcCmColor(), indexed(0)};
    for (int index = 1; index <= kNamed; ++index) offered.push_back(indexed(index));
    return offered;
}

std::optional<AcCmColor> askColor(QWidget* parent, const AcCmColor& now) {
    const QColor chosen = QColorDialog::getColor(seenColor(now), parent, say(L"选择颜色"));
    if (!chosen.isValid()) return std::nullopt;
    return colorOf(chosen);
}

} // namespace desk
