// What the standard controls look like: drawn as shapes, like everything else.
#pragma once

#include "host/ui/dc.h"
#include "host/ui/window.h"

namespace host::look {

// A control's paint: its context with the font and the colours that the parent has answered. The brush is
// null when the parent left them alone.
class Canvas {
public:
    Canvas(Window& window, UINT colorQuestion);
    Canvas(const Canvas&) = delete;
    CDC dc;
    Window& window;
    CRect area;
    HBRUSH back = nullptr;
    int line = 0; // height of a line of text
    bool focused = false;
    COLORREF ink() const; // grey when disabled
    void box(const CRect& rect, double rounding, COLORREF fill, COLORREF border);
    void text(const CRect& rect, const std::wstring& what, UINT format, COLORREF color);
    void chevron(const CRect& rect, COLORREF color);
};

inline constexpr COLORREF kAccent = RGB(0, 103, 192), kBorder = RGB(200, 200, 200),
                          kField = RGB(255, 255, 255), kFaint = RGB(160, 160, 160),
                          kChosen = RGB(204, 228, 247);

void label(Canvas& canvas, UINT type, const std::wstring& text);
void picture(Canvas& canvas, HBITMAP bitmap);
void button(Canvas& canvas, bool pushed, bool isDefault);
void check(Canvas& canvas, int state, bool round);
void groupBox(Canvas& canvas);
void edit(Canvas& canvas, bool multiline);
void combo(Canvas& canvas, bool drawText);
void slider(Canvas& canvas, double share, bool vertical);
// The frame and title of a dialog, and what the window's title bar shows.
void frame(Recording& onto, const Window& dialog);
// Where the text of a combo box's closed field goes.
CRect comboField(const CRect& area);

} // namespace host::look
