// Drawing of graphs in dialogs: pens for the time of a scope, grid lines, the discs that users drag.
#pragma once
#include "core/host/dialogs.h"
#include "core/unit_plot.h"

namespace corvane {

// Selects a pen for the time of its scope.
class Inked {
public:
    Inked(CDC& dc, int width, COLORREF color, int style = PS_SOLID)
        : dc_(dc), pen_(style, width, color), before_(dc.SelectObject(&pen_)) {}
    ~Inked() { dc_.SelectObject(before_); }
    Inked(const Inked&) = delete;
    Inked& operator=(const Inked&) = delete;

private:
    CDC& dc_;
    CPen pen_;
    CPen* before_;
};

inline void Stroke(CDC& dc, PlotPixel from, PlotPixel to) {
    dc.MoveTo(from.x, from.y);
    dc.LineTo(to.x, to.y);
}

// A disc of the brush in use, outlined with its pen.
inline void DrawHandleDisc(CDC& dc, PlotPixel center) {
    constexpr int kRadius = 5;
    dc.Ellipse(center.x - kRadius, center.y - kRadius, center.x + kRadius + 1, center.y + kRadius + 1);
}

} // namespace corvane
