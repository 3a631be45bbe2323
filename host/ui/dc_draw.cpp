// What device contexts draw: shapes, text and pictures as primitives of a recording.
#include <cmath>

#include "host/ui/dc.h"

using namespace host;

namespace {

std::optional<StrokePen> strokeOf(const DeviceState& state) {
    const LOGPEN* pen = penOf(state.pen);
    if (!pen || pen->lopnStyle == UINT(PS_NULL)) return std::nullopt;
    return StrokePen{pen->lopnColor, double(std::max(pen->lopnWidth.x, 1)), int(pen->lopnStyle)};
}
std::optional<COLORREF> fillOf(HGDIOBJ handle) {
    const LOGBRUSH* brush = brushOf(handle);
    if (!brush || brush->lbStyle == BS_NULL) return std::nullopt;
    return brush->lbColor;
}
// Pens of odd width run through pixels' middles.
double penShift(const std::optional<StrokePen>& pen) {
    return pen && std::lround(pen->width) % 2 == 1 ? 0.5 : 0;
}
AcGePoint2d at(const DeviceState& state, double x, double y) {
    return {x + state.origin.x, y + state.origin.y};
}

} // namespace

void CDC::shape(Primitive primitive) {
    if (device()) device()->add(std::move(primitive));
}

CPoint CDC::MoveTo(int x, int y) {
    return device() ? std::exchange(device()->state.position, CPoint(x, y)) : CPoint();
}
BOOL CDC::LineTo(int x, int y) {
    if (!device()) return FALSE;
    const POINT points[] = {device()->state.position, {x, y}};
    device()->state.position = CPoint(x, y);
    return Polyline(points, 2);
}
BOOL CDC::Polyline(const POINT* points, int count) {
    if (!device() || count < 2) return FALSE;
    const DeviceState& state = device()->state;
    Primitive line;
    line.pen = strokeOf(state);
    if (!line.pen) return TRUE;
    const double shift = penShift(line.pen);
    line.points.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i)
        line.points.push_back(at(state, points[i].x + shift, points[i].y + shift));
    shape(std::move(line));
    return TRUE;
}
BOOL CDC::Polygon(const POINT* points, int count) { return PolyPolygon(points, &count, 1); }
BOOL CDC::PolyPolygon(const POINT* points, const int* counts, int contours) {
    if (!device()) return FALSE;
    const DeviceState& state = device()->state;
    Primitive area;
    area.kind = Primitive::Kind::polygon;
    area.pen = strokeOf(state);
    area.fill = fillOf(state.brush);
    area.winding = state.fillMode == WINDING;
    const double shift = penShift(area.pen);
    for (int c = 0; c < contours; ++c) {
        if (counts[c] < 2) return FALSE;
        for (int i = 0; i < counts[c]; ++i, ++points)
            area.points.push_back(at(state, points->x + shift, points->y + shift));
        area.ends.push_back(std::uint32_t(area.points.size()));
    }
    shape(std::move(area));
    return TRUE;
}

BOOL CDC::RoundRect(int l, int t, int r, int b, int width, int height) {
    if (!device()) return FALSE;
    const DeviceState& state = device()->state;
    Primitive box;
    box.kind = Primitive::Kind::rectangle;
    box.pen = strokeOf(state);
    box.fill = fillOf(state.brush);
    box.rounding = (width + height) / 4.0;
    // The outline lies inside the rectangle, whose right and bottom edges don't belong to it.
    const double shift = penShift(box.pen), far = box.pen ? shift - 1 : 0;
    box.points = {at(state, l + shift, t + shift), at(state, r + far, b + far)};
    shape(std::move(box));
    return TRUE;
}
BOOL CDC::Rectangle(int l, int t, int r, int b) { return RoundRect(l, t, r, b, 0, 0); }
BOOL CDC::Ellipse(int l, int t, int r, int b) {
    if (!device()) return FALSE;
    const DeviceState& state = device()->state;
    Primitive oval;
    oval.kind = Primitive::Kind::ellipse;
    oval.pen = strokeOf(state);
    oval.fill = fillOf(state.brush);
    const double shift = penShift(oval.pen), far = oval.pen ? shift - 1 : 0;
    oval.points = {at(state, l + shift, t + shift), at(state, r + far, b + far)};
    shape(std::move(oval));
    return TRUE;
}

int CDC::FillRect(LPCRECT rect, CBrush* brush) {
    return ::FillRect(m_hDC, rect, brush ? HBRUSH(*brush) : nullptr);
}
int FillRect(HDC dc, const RECT* rect, HBRUSH brush) {
    DeviceContext* device = deviceOf(dc);
    // As at the window system, a small number stands for a system colour's brush: index + 1.
    const auto number = reinterpret_cast<std::uintptr_t>(brush);
    const auto color =
        number > 0 && number < 64 ? std::optional(GetSysColor(int(number) - 1)) : fillOf(brush);
    if (!device || !color || CRect(*rect).IsRectEmpty()) return 0;
    Primitive box;
    box.kind = Primitive::Kind::rectangle;
    box.fill = color;
    box.points = {at(device->state, rect->left, rect->top), at(device->state, rect->right, rect->bottom)};
    device->add(std::move(box));
    return 1;
}
void CDC::FillSolidRect(LPCRECT rect, COLORREF color) {
    if (!device() || CRect(*rect).IsRectEmpty()) return;
    SetBkColor(color);
    Primitive box;
    box.kind = Primitive::Kind::rectangle;
    box.fill = color;
    box.points = {at(device()->state, rect->left, rect->top), at(device()->state, rect->right, rect->bottom)};
    shape(std::move(box));
}
void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF color) {
    FillSolidRect(CRect(x, y, x + width, y + height), color);
}
void CDC::FrameRect(LPCRECT r, CBrush* brush) {
    if (!brush) return;
    FillRect(CRect(r->left, r->top, r->right, r->top + 1), brush);
    FillRect(CRect(r->left, r->bottom - 1, r->right, r->bottom), brush);
    FillRect(CRect(r->left, r->top, r->left + 1, r->bottom), brush);
    FillRect(CRect(r->right - 1, r->top, r->right, r->bottom), brush);
}
void CDC::Draw3dRect(LPCRECT r, COLORREF topLeft, COLORREF bottomRight) {
    const CRect box(*r);
    FillSolidRect(box.left, box.top, box.Width() - 1, 1, topLeft);
    FillSolidRect(box.left, box.top, 1, box.Height() - 1, topLeft);
    FillSolidRect(box.right - 1, box.top, 1, box.Height(), bottomRight);
    FillSolidRect(box.left, box.bottom - 1, box.Width(), 1, bottomRight);
}
void CDC::DrawFocusRect(LPCRECT rect) {
    if (!device()) return;
    Primitive box;
    box.kind = Primitive::Kind::rectangle;
    box.pen = StrokePen{RGB(90, 90, 90), 1, PS_DOT};
    box.points = {at(device()->state, rect->left + 0.5, rect->top + 0.5),
                  at(device()->state, rect->right - 0.5, rect->bottom - 0.5)};
    shape(std::move(box));
}
BOOL CDC::PatBlt(int x, int y, int width, int height, DWORD operation) {
    const CRect box(x, y, x + width, y + height);
    if (operation == WHITENESS || operation == BLACKNESS)
        return ::FillRect(
            m_hDC, box,
            static_cast<HBRUSH>(GetStockObject(operation == WHITENESS ? WHITE_BRUSH : BLACK_BRUSH)));
    return device() ? ::FillRect(m_hDC, box, device()->state.brush) : FALSE;
}
COLORREF CDC::SetPixel(int x, int y, COLORREF color) {
    const CPoint before = device() ? CPoint(x, y) : CPoint();
    const COLORREF back = GetBkColor();
    FillSolidRect(before.x, before.y, 1, 1, color);
    SetBkColor(back);
    return color;
}
COLORREF CDC::GetPixel(int x, int y) const {
    if (!device() || !device()->bitmap) return CLR_INVALID;
    x += device()->state.origin.x, y += device()->state.origin.y;
    const ImagePixels& pixels = device()->bitmap->pixels();
    if (x < 0 || y < 0 || x >= pixels.width || y >= pixels.height) return CLR_INVALID;
    const std::uint8_t* p = &pixels.rgba[(std::size_t(y) * std::size_t(pixels.width) + std::size_t(x)) * 4];
    return RGB(p[0], p[1], p[2]);
}

// Pictures: a copy of the other context's pixels, and of what was drawn over them since, as it is now.
BOOL CDC::BitBlt(int x, int y, int width, int height, CDC* from, int fromX, int fromY, DWORD operation) {
    return StretchBlt(x, y, width, height, from, fromX, fromY, width, height, operation);
}
BOOL CDC::StretchBlt(int x, int y, int width, int height, CDC* from, int fromX, int fromY, int fromWidth,
                     int fromHeight, DWORD operation) {
    if (operation != SRCCOPY) return PatBlt(x, y, width, height, operation);
    const DeviceContext* other = from ? from->device() : nullptr;
    if (!device() || !other || !other->bitmap || width <= 0 || height <= 0 || fromWidth <= 0 ||
        fromHeight <= 0)
        return FALSE;
    const DeviceState& state = device()->state;
    Primitive picture;
    picture.points = {at(state, x, y), at(state, x + width, y + height)};
    picture.source = CRect(CPoint(fromX, fromY), CSize(fromWidth, fromHeight));
    picture.source.OffsetRect(other->state.origin);
    picture.smooth = state.stretchMode == HALFTONE;
    const std::shared_ptr<Bitmap> bitmap = other->bitmap;
    if (bitmap->under() || !bitmap->drawn()) {
        if (!bitmap->under()) bitmap->changePixels();
        Primitive under = picture;
        under.kind = Primitive::Kind::image;
        under.image = bitmap->under();
        shape(std::move(under));
    }
    if (bitmap->drawn()) {
        picture.kind = Primitive::Kind::recording;
        picture.recording = bitmap->drawn();
        shape(std::move(picture));
    }
    return TRUE;
}

int SetBkMode(HDC dc, int mode) {
    CDC* wrapper = CDC::FromHandle(dc);
    return wrapper ? wrapper->SetBkMode(mode) : 0;
}
COLORREF SetTextColor(HDC dc, COLORREF color) {
    CDC* wrapper = CDC::FromHandle(dc);
    return wrapper ? wrapper->SetTextColor(color) : CLR_INVALID;
}
int SetStretchBltMode(HDC dc, int mode) {
    CDC* wrapper = CDC::FromHandle(dc);
    return wrapper ? wrapper->SetStretchBltMode(mode) : 0;
}
BOOL SetBrushOrgEx(HDC dc, int, int, POINT* before) {
    if (before) *before = {};
    return deviceOf(dc) != nullptr;
}
BOOL BitBlt(HDC dc, int x, int y, int width, int height, HDC from, int fromX, int fromY, DWORD operation) {
    return StretchBlt(dc, x, y, width, height, from, fromX, fromY, width, height, operation);
}
BOOL StretchBlt(HDC dc, int x, int y, int width, int height, HDC from, int fromX, int fromY, int fromWidth,
                int fromHeight, DWORD operation) {
    CDC* wrapper = CDC::FromHandle(dc);
    return wrapper && wrapper->StretchBlt(x, y, width, height, CDC::FromHandle(from), fromX, fromY, fromWidth,
                                          fromHeight, operation);
}
int GetDeviceCaps(HDC dc, int index) {
    const CDC* wrapper = CDC::FromHandle(dc);
    return wrapper ? wrapper->GetDeviceCaps(index) : 0;
}
