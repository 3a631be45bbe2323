// Fonts of templates, and dialog units.
#include "host/ui/template.h"

#include <cmath>

#include "host/ui/gdi.h"

namespace host {

CRect DialogUnits::pixels(const CRect& units) const {
    const CPoint corner(MulDiv(units.left, x, 4), MulDiv(units.top, y, 8));
    return CRect(corner, CSize(MulDiv(units.Width(), x, 4), MulDiv(units.Height(), y, 8)));
}

LOGFONTW templateFont(const DialogTemplate& dialog, int dotsPerInch) {
    LOGFONTW font;
    font.lfHeight = -MulDiv(dialog.pointSize, dotsPerInch, 72);
    font.lfWeight = dialog.weight;
    font.lfItalic = dialog.italic;
    const std::wstring face = dialog.typeface.substr(0, 31);
    face.copy(font.lfFaceName, face.size());
    return font;
}

// The average width of the Latin letters, rounded, and the height of a line.
DialogUnits dialogUnits(const LOGFONTW& font) {
    constexpr std::wstring_view kLetters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const FontLook look = fontLook(font);
    DialogUnits units;
    units.x = std::max(int(std::lround(textWidth(look, kLetters) / double(kLetters.size()))), 1);
    units.y = std::max(look.ascent + look.descent, 1);
    return units;
}

} // namespace host
