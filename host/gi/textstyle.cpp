// AcGiTextStyle's setters and measures.
#include "host/gi/textstyle.h"

#include <algorithm>
#include <cmath>

namespace {

std::wstring_view part(const ACHAR* text, int length) {
    if (!text) return {};
    const std::wstring_view all(text);
    return length < 0 ? all : all.substr(0, std::min(all.size(), static_cast<std::size_t>(length)));
}

} // namespace

AcGiTextStyle::AcGiTextStyle(const ACHAR* fontFile, const ACHAR* bigFontFile, double textSize, double xScale,
                             double obliquingAngle, double trackingPercent, Adesk::Boolean isBackward,
                             Adesk::Boolean isUpsideDown, Adesk::Boolean isVertical,
                             Adesk::Boolean isOverlined, Adesk::Boolean isUnderlined)
    : underlined_(isUnderlined), overlined_(isOverlined) {
    setFileName(fontFile);
    setBigFontFileName(bigFontFile);
    setTextSize(textSize);
    setXScale(xScale);
    setObliquingAngle(obliquingAngle);
    setTrackingPercent(trackingPercent);
    face_.backward = isBackward;
    face_.upsideDown = isUpsideDown;
    face_.vertical = isVertical;
}

void AcGiTextStyle::setTextSize(double size) {
    if (std::isfinite(size) && size > 0) size_ = size;
}
void AcGiTextStyle::setXScale(double scale) {
    if (std::isfinite(scale) && scale > 0) face_.widthFactor = scale;
}
void AcGiTextStyle::setObliquingAngle(double radians) {
    if (std::isfinite(radians)) face_.oblique = radians;
}
void AcGiTextStyle::setTrackingPercent(double factor) {
    if (std::isfinite(factor) && factor > 0) face_.tracking = factor;
}

Acad::ErrorStatus AcGiTextStyle::setFont(const ACHAR* typeface, Adesk::Boolean bold, Adesk::Boolean italic,
                                         int, int) {
    face_.typeface = typeface ? typeface : L"";
    face_.bold = bold;
    face_.italic = italic;
    return Acad::eOk;
}

AcGePoint2d AcGiTextStyle::extents(const ACHAR* text, Adesk::Boolean, int length, Adesk::Boolean raw) const {
    const std::wstring_view given = part(text, length);
    const auto measured =
        host::textMetrics()->measure(face_, size_, raw ? std::wstring(given) : host::plainLine(given).text);
    return {measured.advance, size_};
}

Acad::ErrorStatus AcGiTextStyle::extentsBox(const ACHAR* text, Adesk::Boolean, int length, Adesk::Boolean raw,
                                            AcGePoint2d& lowerLeft, AcGePoint2d& upperRight) const {
    if (!text) return Acad::eInvalidInput;
    const std::wstring_view given = part(text, length);
    const auto measured =
        host::textMetrics()->measure(face_, size_, raw ? std::wstring(given) : host::plainLine(given).text);
    lowerLeft = measured.low;
    upperRight = measured.high;
    return Acad::eOk;
}
