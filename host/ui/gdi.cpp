// The table of drawing objects. Handles are numbers that are never used twice.
#include "host/ui/gdi.h"

#include <cmath>
#include <cstring>
#include <map>
#include <variant>

#include "host/ui/dc.h"

namespace host {
namespace {

constexpr int kLargestBitmap = 32767;
constexpr double kCapitalOfEm = 0.72; // of the sans-serif faces that dialogs are set in

struct Object {
    std::variant<LOGFONTW, LOGPEN, LOGBRUSH, CRect, std::shared_ptr<Bitmap>> what;
    bool stock = false;
};
struct Table {
    std::map<std::uintptr_t, Object> objects;
    std::uintptr_t next = 0x1000;
};
Table& table() {
    static Table all;
    return all;
}

template <class What> HGDIOBJ addObject(What what, bool stock = false) {
    const std::uintptr_t number = table().next;
    table().next += 4;
    table().objects.emplace(number, Object{std::move(what), stock});
    return reinterpret_cast<HGDIOBJ>(number);
}

Object* objectOf(HGDIOBJ handle) {
    const auto found = table().objects.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == table().objects.end() ? nullptr : &found->second;
}
template <class What> What* get(HGDIOBJ handle) {
    Object* object = objectOf(handle);
    return object ? std::get_if<What>(&object->what) : nullptr;
}

LOGFONTW guiFont() {
    LOGFONTW font;
    font.lfHeight = -12;
    std::wcscpy(font.lfFaceName, L"MS Shell Dlg");
    return font;
}

// Names by which the window system's own fonts are asked for; all are set in one plain face.
bool isSystemFace(std::wstring_view name) {
    static constexpr std::wstring_view kNames[] = {
        L"",         L"MS Shell Dlg", L"MS Shell Dlg 2",  L"MS Sans Serif",
        L"Tahoma",   L"Segoe UI",     L"Microsoft YaHei", L"Microsoft YaHei UI",
        L"微软雅黑", L"宋体",         L"新宋体",          L"SimSun",
        L"NSimSun",  L"Arial",        L"System",          L"MS UI Gothic"};
    for (std::wstring_view known : kNames)
        if (equalNoCase(name, known)) return true;
    return false;
}

template <class Value> int copyOut(const Value& value, int size, void* buffer) {
    if (!buffer) return int(sizeof value);
    if (size < int(sizeof value)) return 0;
    std::memcpy(buffer, &value, sizeof value);
    return int(sizeof value);
}

PictureServices* services = nullptr;

} // namespace

PictureServices* pictureServices() { return services; }
void setPictureServices(PictureServices* filled) { services = filled; }

Bitmap::Bitmap(ImagePixels pixels)
    : width_(pixels.width), height_(pixels.height),
      pixels_(std::make_shared<ImagePixels>(std::move(pixels))) {}

ImagePixels& Bitmap::changePixels() {
    if (!pixels_)
        pixels_ = std::make_shared<ImagePixels>(ImagePixels{
            width_, height_, std::vector<std::uint8_t>(std::size_t(width_) * std::size_t(height_) * 4)});
    else if (pixels_.use_count() > 1)
        pixels_ = std::make_shared<ImagePixels>(*pixels_);
    if (drawn_ && services) {
        services->draw(*drawn_, *pixels_);
        drawn_.reset();
    }
    return *pixels_;
}
const ImagePixels& Bitmap::pixels() {
    if (!pixels_ || drawn_) changePixels();
    return *pixels_;
}
Recording& Bitmap::changeDrawn() {
    if (!drawn_)
        drawn_ = std::make_shared<Recording>(Recording{width_, height_, {}});
    else if (drawn_.use_count() > 1)
        drawn_ = std::make_shared<Recording>(*drawn_);
    return *drawn_;
}

const LOGFONTW* fontOf(HGDIOBJ font) { return get<LOGFONTW>(font); }
const LOGPEN* penOf(HGDIOBJ pen) { return get<LOGPEN>(pen); }
const LOGBRUSH* brushOf(HGDIOBJ brush) { return get<LOGBRUSH>(brush); }
const CRect* regionOf(HGDIOBJ region) { return get<CRect>(region); }
std::shared_ptr<Bitmap> bitmapOf(HGDIOBJ bitmap) {
    const auto* found = get<std::shared_ptr<Bitmap>>(bitmap);
    return found ? *found : nullptr;
}
HBITMAP addBitmap(std::shared_ptr<Bitmap> bitmap) {
    return static_cast<HBITMAP>(addObject(std::move(bitmap)));
}
std::size_t gdiObjectCount() { return table().objects.size(); }

FontLook fontLook(const LOGFONTW& font) {
    FontLook look;
    if (!isSystemFace(font.lfFaceName)) look.face.typeface = font.lfFaceName; // else the plain face
    look.face.bold = font.lfWeight >= 600;
    look.face.italic = font.lfItalic != 0;
    look.underlined = font.lfUnderline != 0;
    const TextExtents unit = textMetrics()->measure(look.face, 1, L"H");
    const double line = std::max(unit.ascent + unit.descent, 1.0);
    const double asked = font.lfHeight == 0 ? -12 : std::clamp<double>(font.lfHeight, -4096, 4096);
    look.capital = asked < 0 ? -asked * kCapitalOfEm : asked / line;
    look.ascent = int(std::ceil(unit.ascent * look.capital - 1e-6));
    look.descent = int(std::ceil(unit.descent * look.capital - 1e-6));
    return look;
}
double textWidth(const FontLook& look, std::wstring_view text) {
    return text.empty() ? 0 : textMetrics()->measure(look.face, look.capital, text).advance;
}

} // namespace host

using namespace host;

int MulDiv(int number, int numerator, int denominator) {
    if (denominator == 0) return -1;
    const double exact = double(number) * numerator / denominator;
    const double rounded = std::floor(std::abs(exact) + 0.5);
    if (rounded > 2147483647.0) return -1;
    return exact < 0 ? -int(rounded) : int(rounded);
}

HFONT CreateFontIndirectW(const LOGFONTW* font) {
    if (!font) return nullptr;
    LOGFONTW own = *font;
    own.lfFaceName[31] = L'\0';
    return static_cast<HFONT>(addObject(own));
}
HPEN CreatePen(int style, int width, COLORREF color) {
    LOGPEN pen;
    pen.lopnStyle = UINT(style), pen.lopnWidth.x = std::max(width, 0), pen.lopnColor = color;
    return static_cast<HPEN>(addObject(pen));
}
HBRUSH CreateSolidBrush(COLORREF color) {
    LOGBRUSH brush;
    brush.lbColor = color;
    return static_cast<HBRUSH>(addObject(brush));
}
HBITMAP CreateCompatibleBitmap(HDC, int width, int height) {
    if (width < 1 || height < 1 || width > kLargestBitmap || height > kLargestBitmap) return nullptr;
    return addBitmap(std::make_shared<Bitmap>(width, height));
}
HRGN CreateRectRgn(int left, int top, int right, int bottom) {
    return static_cast<HRGN>(addObject(CRect(left, top, right, bottom)));
}

int GetObjectW(HGDIOBJ handle, int size, void* buffer) {
    if (const LOGFONTW* font = fontOf(handle)) return copyOut(*font, size, buffer);
    if (const LOGPEN* pen = penOf(handle)) return copyOut(*pen, size, buffer);
    if (const LOGBRUSH* brush = brushOf(handle)) return copyOut(*brush, size, buffer);
    if (const auto bitmap = bitmapOf(handle)) {
        BITMAP out;
        out.bmWidth = bitmap->width(), out.bmHeight = bitmap->height();
        out.bmWidthBytes = out.bmWidth * 4;
        return copyOut(out, size, buffer);
    }
    return 0;
}

BOOL DeleteObject(HGDIOBJ handle) {
    const Object* object = objectOf(handle);
    if (!object || object->stock) return FALSE;
    return table().objects.erase(reinterpret_cast<std::uintptr_t>(handle)) > 0;
}

HGDIOBJ GetStockObject(int which) {
    static std::map<int, HGDIOBJ> made;
    const auto found = made.find(which);
    if (found != made.end()) return found->second;
    LOGPEN pen;
    LOGBRUSH brush;
    HGDIOBJ object = nullptr;
    switch (which) {
    case WHITE_BRUSH: brush.lbColor = 0xFFFFFF, object = addObject(brush, true); break;
    case LTGRAY_BRUSH: brush.lbColor = 0xC0C0C0, object = addObject(brush, true); break;
    case GRAY_BRUSH: brush.lbColor = 0x808080, object = addObject(brush, true); break;
    case BLACK_BRUSH: object = addObject(brush, true); break;
    case NULL_BRUSH: brush.lbStyle = BS_NULL, object = addObject(brush, true); break;
    case WHITE_PEN: pen.lopnColor = 0xFFFFFF, object = addObject(pen, true); break;
    case BLACK_PEN: object = addObject(pen, true); break;
    case NULL_PEN: pen.lopnStyle = PS_NULL, object = addObject(pen, true); break;
    case SYSTEM_FONT:
    case DEFAULT_GUI_FONT: object = addObject(guiFont(), true); break;
    default: return nullptr;
    }
    return made[which] = object;
}

COLORREF GetSysColor(int index) {
    switch (index) {
    case COLOR_WINDOW:
    case COLOR_HIGHLIGHTTEXT:
    case COLOR_BTNHIGHLIGHT: return RGB(255, 255, 255);
    case COLOR_HIGHLIGHT: return RGB(0, 120, 215);
    case COLOR_BTNFACE: return RGB(240, 240, 240);
    case COLOR_BTNSHADOW: return RGB(160, 160, 160);
    case COLOR_GRAYTEXT: return RGB(109, 109, 109);
    case COLOR_WINDOWFRAME: return RGB(100, 100, 100);
    case COLOR_INFOBK: return RGB(255, 255, 225);
    default: return 0;
    }
}
HBRUSH GetSysColorBrush(int index) {
    static std::map<int, HBRUSH> made;
    const auto found = made.find(index);
    if (found != made.end()) return found->second;
    LOGBRUSH brush;
    brush.lbColor = GetSysColor(index);
    return made[index] = static_cast<HBRUSH>(addObject(brush, true));
}

BOOL CGdiObject::Attach(HGDIOBJ object) {
    if (m_hObject) DeleteObject();
    m_hObject = object;
    return object != nullptr;
}
HGDIOBJ CGdiObject::Detach() { return std::exchange(m_hObject, nullptr); }
BOOL CGdiObject::DeleteObject() {
    const HGDIOBJ object = Detach();
    return object && ::DeleteObject(object);
}

BOOL CFont::CreatePointFont(int tenthsOfPoint, LPCTSTR face) {
    LOGFONTW font;
    font.lfHeight = -MulDiv(tenthsOfPoint, 96, 720);
    std::wcsncpy(font.lfFaceName, face ? face : L"", 31);
    return CreateFontIndirect(&font);
}
BOOL CFont::CreateFont(int height, int width, int, int, int weight, BYTE italic, BYTE underline,
                       BYTE strikeOut, BYTE charSet, BYTE, BYTE, BYTE, BYTE, LPCTSTR face) {
    LOGFONTW font;
    font.lfHeight = height, font.lfWidth = width, font.lfWeight = weight;
    font.lfItalic = italic, font.lfUnderline = underline, font.lfStrikeOut = strikeOut;
    font.lfCharSet = charSet;
    std::wcsncpy(font.lfFaceName, face ? face : L"", 31);
    return CreateFontIndirect(&font);
}
BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height) {
    return Attach(::CreateCompatibleBitmap(dc ? dc->GetSafeHdc() : nullptr, width, height));
}
CSize CBitmap::GetSize() const {
    BITMAP bitmap;
    return GetBitmap(&bitmap) ? CSize(bitmap.bmWidth, bitmap.bmHeight) : CSize();
}
