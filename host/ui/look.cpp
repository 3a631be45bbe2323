// The look: flat, light, with rounded corners, sized by the font so that it scales with the dialog.
#include "host/ui/look.h"

#include <cmath>

#include "host/ui/windows.h"
#include "host/ui/wnd.h"

namespace host::look {
namespace {

constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER;

AcGePoint2d middleOf(const CRect& rect) {
    return {(rect.left + rect.right) / 2.0, (rect.top + rect.bottom) / 2.0};
}
Primitive shape(Primitive::Kind kind) {
    Primitive made;
    made.kind = kind;
    return made;
}
void add(CDC& dc, Primitive primitive) {
    if (DeviceContext* device = deviceOf(dc.GetSafeHdc())) device->add(std::move(primitive));
}
void disc(CDC& dc, const AcGePoint2d& middle, double radius, COLORREF fill,
          std::optional<StrokePen> pen = {}) {
    Primitive round = shape(Primitive::Kind::ellipse);
    round.points = {{middle.x - radius, middle.y - radius}, {middle.x + radius, middle.y + radius}};
    round.fill = fill;
    round.pen = pen;
    add(dc, std::move(round));
}
COLORREF surface(const Canvas& canvas) {
    const LOGBRUSH* brush = brushOf(canvas.back);
    return brush && brush->lbStyle != BS_NULL ? brush->lbColor : GetSysColor(COLOR_BTNFACE);
}

} // namespace

Canvas::Canvas(Window& w, UINT colorQuestion) : window(w), area(w.client()) {
    CPaintDC paint(CWnd::FromHandle(w.handle));
    dc.Attach(paint.Detach());
    focused = GetFocus() == w.handle;
    const Window* top = w.parent;
    HFONT font = w.font ? w.font : top ? top->font : nullptr;
    if (font) dc.SelectObject(HGDIOBJ(font));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(GetSysColor(COLOR_BTNTEXT));
    if (w.parent && colorQuestion)
        back =
            reinterpret_cast<HBRUSH>(send(*w.parent, colorQuestion, reinterpret_cast<WPARAM>(dc.GetSafeHdc()),
                                          reinterpret_cast<LPARAM>(w.handle)));
    if (!brushOf(back)) back = nullptr;
    TEXTMETRICW metrics;
    dc.GetTextMetrics(&metrics);
    line = metrics.tmHeight;
}

COLORREF Canvas::ink() const { return window.enabled() ? dc.GetTextColor() : kFaint; }
void Canvas::box(const CRect& rect, double rounding, COLORREF fill, COLORREF border) {
    Primitive made = shape(Primitive::Kind::rectangle);
    made.points = {{rect.left + 0.5, rect.top + 0.5}, {rect.right - 0.5, rect.bottom - 0.5}};
    made.rounding = rounding;
    made.fill = fill;
    made.pen = StrokePen{border, 1, PS_SOLID};
    add(dc, std::move(made));
}
void Canvas::text(const CRect& rect, const std::wstring& what, UINT format, COLORREF color) {
    const COLORREF before = dc.SetTextColor(color);
    CRect place(rect);
    dc.DrawText(what.c_str(), int(what.size()), place, format);
    dc.SetTextColor(before);
}
void Canvas::chevron(const CRect& rect, COLORREF color) {
    const AcGePoint2d m = middleOf(rect);
    const double w = line * 0.28;
    Primitive arrow = shape(Primitive::Kind::polyline);
    arrow.points = {{m.x - w, m.y - w / 2}, {m.x, m.y + w / 2}, {m.x + w, m.y - w / 2}};
    arrow.pen = StrokePen{color, 1.4, PS_SOLID};
    add(dc, std::move(arrow));
}

void label(Canvas& canvas, UINT type, const std::wstring& text) {
    if (canvas.back) FillRect(canvas.dc, canvas.area, canvas.back);
    UINT format = type == SS_CENTER ? DT_CENTER : type == SS_RIGHT ? DT_RIGHT : DT_LEFT;
    if (canvas.window.style & SS_NOPREFIX) format |= DT_NOPREFIX;
    if (canvas.window.style & SS_CENTERIMAGE)
        format |= kOneLine;
    else if (type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP)
        format |= DT_NOCLIP;
    else
        format |= DT_WORDBREAK;
    canvas.text(canvas.area, text, format, canvas.ink());
}

void picture(Canvas& canvas, HBITMAP handle) {
    const auto bitmap = bitmapOf(handle);
    if (!bitmap) return;
    CRect place = canvas.area;
    const CSize size(bitmap->width(), bitmap->height());
    if (canvas.window.style & SS_CENTERIMAGE)
        place = CRect(CPoint((place.Width() - size.cx) / 2, (place.Height() - size.cy) / 2), size);
    else
        place = CRect(CPoint(0, 0), size);
    CDC from;
    from.CreateCompatibleDC(&canvas.dc);
    from.SelectObject(HGDIOBJ(handle));
    canvas.dc.SetStretchBltMode(HALFTONE);
    canvas.dc.BitBlt(place.left, place.top, size.cx, size.cy, &from, 0, 0, SRCCOPY);
}

void button(Canvas& canvas, bool pushed, bool isDefault) {
    const bool enabled = canvas.window.enabled();
    const COLORREF fill = !enabled ? RGB(245, 245, 245) : pushed ? RGB(224, 238, 249) : RGB(253, 253, 253);
    canvas.box(canvas.area, 4, fill, enabled && (isDefault || pushed || canvas.focused) ? kAccent : kBorder);
    UINT format = DT_CENTER | kOneLine;
    if (canvas.window.style & BS_MULTILINE) format = DT_CENTER | DT_WORDBREAK;
    CRect inside = canvas.area;
    inside.DeflateRect(3, 1);
    canvas.text(inside, canvas.window.text, format, canvas.ink());
}

void check(Canvas& canvas, int state, bool round) {
    if (canvas.back) FillRect(canvas.dc, canvas.area, canvas.back);
    const int side = std::max(int(std::lround(canvas.line * 0.95)), 5);
    const bool left = canvas.window.style & BS_LEFTTEXT;
    CRect mark(CPoint(left ? canvas.area.right - side : 0, (canvas.area.Height() - side) / 2),
               CSize(side, side));
    const bool on = state == BST_CHECKED, enabled = canvas.window.enabled();
    const COLORREF accent = enabled ? kAccent : kBorder;
    const COLORREF fill = on ? accent : kField, border = on ? accent : RGB(130, 130, 130);
    const AcGePoint2d m = middleOf(mark);
    if (round) {
        disc(canvas.dc, m, side / 2.0 - 0.5, fill, StrokePen{border, 1, PS_SOLID});
        if (on) disc(canvas.dc, m, side * 0.19, kField);
    } else {
        canvas.box(mark, 3, fill, border);
        Primitive tick = shape(Primitive::Kind::polyline);
        tick.pen = StrokePen{on ? kField : accent, side * 0.13, PS_SOLID};
        if (on)
            tick.points = {{m.x - side * 0.25, m.y},
                           {m.x - side * 0.07, m.y + side * 0.18},
                           {m.x + side * 0.27, m.y - side * 0.2}};
        if (state == BST_INDETERMINATE) tick.points = {{m.x - side * 0.25, m.y}, {m.x + side * 0.25, m.y}};
        if (!tick.points.empty()) add(canvas.dc, std::move(tick));
    }
    CRect caption = canvas.area;
    (left ? caption.right : caption.left) += (left ? -1 : 1) * (side + std::max(side / 3, 3));
    canvas.text(caption, canvas.window.text, kOneLine, canvas.ink());
}

void groupBox(Canvas& canvas) {
    CRect frameRect = canvas.area;
    frameRect.top += canvas.line / 2;
    Primitive outline = shape(Primitive::Kind::rectangle);
    outline.points = {{frameRect.left + 0.5, frameRect.top + 0.5},
                      {frameRect.right - 0.5, frameRect.bottom - 0.5}};
    outline.rounding = 4;
    outline.pen = StrokePen{RGB(205, 205, 205), 1, PS_SOLID};
    add(canvas.dc, std::move(outline));
    if (canvas.window.text.empty()) return;
    CRect caption(canvas.area.left + 9, canvas.area.top, canvas.area.right - 9,
                  canvas.area.top + canvas.line);
    CRect fitted = caption;
    canvas.dc.DrawText(canvas.window.text.c_str(), int(canvas.window.text.size()), fitted,
                       DT_SINGLELINE | DT_CALCRECT);
    caption.right = std::min(fitted.right, caption.right);
    CRect ground = caption;
    ground.InflateRect(3, 0);
    canvas.dc.FillSolidRect(ground, surface(canvas));
    canvas.text(caption, canvas.window.text, DT_SINGLELINE, canvas.ink());
}

void edit(Canvas& canvas, bool multiline) {
    const Window& window = canvas.window;
    const bool readOnly = window.style & ES_READONLY;
    const LOGBRUSH* brush = brushOf(canvas.back);
    const COLORREF fill = brush                           ? brush->lbColor
                          : window.enabled() && !readOnly ? kField
                                                          : RGB(247, 247, 247);
    canvas.box(canvas.area, 3, fill, canvas.focused ? kAccent : kBorder);
    CRect inside = canvas.area;
    inside.DeflateRect(5, multiline ? 3 : 1);
    std::wstring text = window.text;
    if (window.style & ES_PASSWORD) text.assign(text.size(), L'\u2022');
    UINT format = DT_NOPREFIX | (multiline ? DT_WORDBREAK : kOneLine);
    if (window.style & ES_RIGHT) format |= DT_RIGHT;
    if (window.style & ES_CENTER) format |= DT_CENTER;
    canvas.text(inside, text, format, canvas.ink());
}

CRect comboField(const CRect& area) {
    CRect field = area;
    field.DeflateRect(3, 2, std::min(area.Height(), area.Width() / 2), 2);
    return field;
}
void combo(Canvas& canvas, bool drawText) {
    canvas.box(canvas.area, 4, canvas.window.enabled() ? RGB(253, 253, 253) : RGB(245, 245, 245),
               canvas.focused ? kAccent : kBorder);
    CRect arrow = canvas.area;
    arrow.left = comboField(canvas.area).right;
    canvas.chevron(arrow, canvas.window.enabled() ? RGB(90, 90, 90) : kFaint);
    CRect field = comboField(canvas.area);
    field.left += 4;
    if (drawText)
        canvas.text(field, canvas.window.text, kOneLine | DT_NOPREFIX | DT_END_ELLIPSIS, canvas.ink());
}

void slider(Canvas& canvas, double share, bool vertical) {
    if (canvas.back) FillRect(canvas.dc, canvas.area, canvas.back);
    const CRect& area = canvas.area;
    const double length = vertical ? area.Height() : area.Width(),
                 across = vertical ? area.Width() : area.Height();
    const double radius = std::max(std::min(canvas.line * 0.5, across / 2 - 1), 1.0);
    const double from = radius + 1, to = std::max(length - radius - 1, from), at = from + (to - from) * share;
    const auto point = [&](double along, double aside) {
        return vertical ? AcGePoint2d(across / 2 + aside, along) : AcGePoint2d(along, across / 2 + aside);
    };
    const COLORREF accent = canvas.window.enabled() ? kAccent : kBorder;
    const auto channel = [&](double a, double b, COLORREF color) {
        Primitive bar = shape(Primitive::Kind::rectangle);
        const AcGePoint2d p = point(a, -2), q = point(b, 2);
        bar.points = {{std::min(p.x, q.x), std::min(p.y, q.y)}, {std::max(p.x, q.x), std::max(p.y, q.y)}};
        bar.rounding = 2;
        bar.fill = color;
        add(canvas.dc, std::move(bar));
    };
    channel(from, to, RGB(205, 205, 205));
    channel(from, at, accent);
    disc(canvas.dc, point(at, 0), radius, kField, StrokePen{kBorder, 1, PS_SOLID});
    disc(canvas.dc, point(at, 0), radius * 0.55, accent);
}

void frame(Recording& onto, const Window& dialog) {
    auto recording = std::make_shared<Recording>(Recording{onto.width, onto.height, {}});
    const FrameInsets insets = frameInsets(dialog.style);
    CDC dc;
    dc.Attach(addDevice(std::make_unique<DeviceContext>(recording)));
    const CRect whole(0, 0, onto.width, onto.height);
    dc.FillSolidRect(whole, GetSysColor(COLOR_BTNFACE));
    if (insets.top > 1) {
        CRect title(0, 0, onto.width, insets.top);
        dc.FillSolidRect(title, kField);
        if (dialog.font) dc.SelectObject(HGDIOBJ(dialog.font));
        dc.SetBkMode(TRANSPARENT);
        CRect caption(insets.left + 9, 1, onto.width - insets.top, insets.top);
        dc.DrawText(dialog.text.c_str(), int(dialog.text.size()), caption,
                    kOneLine | DT_NOPREFIX | DT_END_ELLIPSIS);
        const AcGePoint2d m(onto.width - insets.top / 2.0, insets.top / 2.0);
        for (const double side : {-1.0, 1.0}) {
            Primitive stroke = shape(Primitive::Kind::polyline);
            stroke.pen = StrokePen{RGB(60, 60, 60), 1.1, PS_SOLID};
            stroke.points = {{m.x - 4.5, m.y - 4.5 * side}, {m.x + 4.5, m.y + 4.5 * side}};
            add(dc, std::move(stroke));
        }
    }
    if (insets.left > 0) {
        Primitive border = shape(Primitive::Kind::rectangle);
        border.points = {{0.5, 0.5}, {onto.width - 0.5, onto.height - 0.5}};
        border.pen = StrokePen{RGB(170, 170, 170), 1, PS_SOLID};
        add(dc, std::move(border));
    }
    for (Primitive& primitive : recording->primitives) onto.primitives.push_back(std::move(primitive));
}

} // namespace host::look
