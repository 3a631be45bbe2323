// Fonts, pens, brushes, bitmaps and regions: the handles of drawing objects, what lies behind them, and the
// classes that own them. Drawing itself stands in dc.h.
#pragma once

#include <memory>
#include <utility>

#include "host/os/cstring.h"
#include "host/ui/messages.h"
#include "host/ui/recording.h"

namespace host {

// A picture that device contexts draw into. Pixels and what was drawn over them since; they are brought
// together when somebody asks for the pixels.
class Bitmap {
public:
    Bitmap(int width, int height) : width_(width), height_(height) {}
    explicit Bitmap(ImagePixels pixels);
    int width() const { return width_; }
    int height() const { return height_; }
    // The pixels with everything drawn so far; black and transparent where nothing was.
    const ImagePixels& pixels();
    ImagePixels& changePixels();
    // Without flattening, for those who only show them.
    const std::shared_ptr<ImagePixels>& under() const { return pixels_; }
    const std::shared_ptr<Recording>& drawn() const { return drawn_; }
    Recording& changeDrawn();

private:
    int width_, height_;
    std::shared_ptr<ImagePixels> pixels_;
    std::shared_ptr<Recording> drawn_;
};

// What stands behind a handle; null for a handle that is none of its kind.
const LOGFONTW* fontOf(HGDIOBJ font);
const LOGPEN* penOf(HGDIOBJ pen);
const LOGBRUSH* brushOf(HGDIOBJ brush);
const CRect* regionOf(HGDIOBJ region);
std::shared_ptr<Bitmap> bitmapOf(HGDIOBJ bitmap);
HBITMAP addBitmap(std::shared_ptr<Bitmap> bitmap);
std::size_t gdiObjectCount(); // for tests that look for leaks

// The face and capital height by which a font's text is measured and drawn. The window system's own font
// names give the plain sans-serif face of this system.
struct FontLook {
    TextFace face;
    double capital = 0;          // pixels
    int ascent = 0, descent = 0; // of a line, pixels
    bool underlined = false;
};
FontLook fontLook(const LOGFONTW& font);
double textWidth(const FontLook& look, std::wstring_view text);

} // namespace host

HFONT CreateFontIndirectW(const LOGFONTW* font); // null for a null pointer
HPEN CreatePen(int style, int width, COLORREF color);
HBRUSH CreateSolidBrush(COLORREF color);
HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height); // null unless both are from 1 to 32767
HRGN CreateRectRgn(int left, int top, int right, int bottom);
// Bytes written: a LOGFONTW, LOGPEN, LOGBRUSH or BITMAP; 0 when the buffer is too small or the handle is
// stale. Without a buffer the size that is needed.
int GetObjectW(HGDIOBJ object, int size, void* buffer);
// False for stock objects and for handles that are none.
BOOL DeleteObject(HGDIOBJ object);
HGDIOBJ GetStockObject(int which);
COLORREF GetSysColor(int index); // black for an unknown one
HBRUSH GetSysColorBrush(int index);

class CGdiObject {
public:
    CGdiObject() = default;
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;
    virtual ~CGdiObject() { DeleteObject(); }
    BOOL Attach(HGDIOBJ object);
    HGDIOBJ Detach();
    BOOL DeleteObject();
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    int GetObject(int size, void* buffer) const { return GetObjectW(m_hObject, size, buffer); }
    HGDIOBJ m_hObject = nullptr;
};

class CFont : public CGdiObject {
public:
    BOOL CreateFontIndirect(const LOGFONTW* font) { return Attach(CreateFontIndirectW(font)); }
    BOOL CreatePointFont(int tenthsOfPoint, LPCTSTR face);
    BOOL CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                    BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision,
                    BYTE quality, BYTE pitch, LPCTSTR face);
    int GetLogFont(LOGFONTW* font) const { return GetObject(sizeof *font, font); }
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
};
class CPen : public CGdiObject {
public:
    CPen() = default;
    CPen(int style, int width, COLORREF color) { CreatePen(style, width, color); }
    BOOL CreatePen(int style, int width, COLORREF color) { return Attach(::CreatePen(style, width, color)); }
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
};
class CBrush : public CGdiObject {
public:
    CBrush() = default;
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }
    BOOL CreateSolidBrush(COLORREF color) { return Attach(::CreateSolidBrush(color)); }
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
};
class CDC;
class CBitmap : public CGdiObject {
public:
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
    BOOL GetBitmap(BITMAP* bitmap) const { return GetObject(sizeof *bitmap, bitmap) != 0; }
    CSize GetSize() const;
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
};
class CRgn : public CGdiObject {
public:
    BOOL CreateRectRgn(int l, int t, int r, int b) { return Attach(::CreateRectRgn(l, t, r, b)); }
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
};
