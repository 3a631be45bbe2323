// Sliders: a position in a range, told to the parent as scrolling.
#include <algorithm>
#include <cmath>

#include "host/ui/actions.h"
#include "host/ui/look.h"
#include "host/ui/windows.h"

namespace host {
namespace {

class SliderControl final : public Control {
public:
    LRESULT handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam) override {
        const int value = int(std::int32_t(lParam));
        switch (message) {
        case TBM_GETPOS: return position_;
        case TBM_GETRANGEMIN: return low_;
        case TBM_GETRANGEMAX: return high_;
        case TBM_SETPOS: return moveTo(window, value), 0;
        case TBM_SETRANGEMIN: return low_ = value, moveTo(window, position_), 0;
        case TBM_SETRANGEMAX: return high_ = value, moveTo(window, position_), 0;
        case TBM_SETRANGE:
            low_ = std::int16_t(LOWORD(lParam)), high_ = std::int16_t(HIWORD(lParam));
            return moveTo(window, position_), 0;
        case TBM_SETPAGESIZE: return std::exchange(page_, value);
        case TBM_GETPAGESIZE: return page_;
        case TBM_SETLINESIZE: return std::exchange(line_, value);
        case TBM_GETLINESIZE: return line_;
        case WM_LBUTTONDOWN: return dragging_ = true, follow(window, CPoint(lParam)), 0;
        case WM_MOUSEMOVE: return dragging_ ? (follow(window, CPoint(lParam)), 0) : 0;
        case WM_LBUTTONUP: return std::exchange(dragging_, false) ? (letGo(window), 0) : 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS: return invalidate(window), 0;
        case WM_PAINT: {
            look::Canvas canvas(window, WM_CTLCOLORSTATIC);
            const double span = double(high_) - low_;
            look::slider(canvas, span > 0 ? (double(position_) - low_) / span : 0, window.style & TBS_VERT);
            return 0;
        }
        default: return Control::handle(window, message, wParam, lParam);
        }
    }

private:
    void moveTo(Window& window, int position) {
        position_ = std::max(std::min(position, high_), low_);
        invalidate(window);
        tellWatcher(window, WindowWatcher::Change::state);
    }
    void follow(Window& window, CPoint at) {
        const CRect area = window.client();
        const bool vertical = window.style & TBS_VERT;
        const double length = vertical ? area.Height() : area.Width(), along = vertical ? at.y : at.x;
        const double share = length > 1 ? std::clamp(along / (length - 1), 0.0, 1.0) : 0;
        const double span = double(high_) - low_;
        moveTo(window, int(std::lround(low_ + share * span)));
        tell(window, TB_THUMBTRACK);
    }
    void letGo(Window& window) {
        const HWND handle = window.handle;
        tell(window, TB_THUMBPOSITION);
        if (windowOf(handle)) tell(window, TB_ENDTRACK);
        if (!windowOf(handle) || !window.parent) return;
        NMHDR header{handle, window.id, NM_RELEASEDCAPTURE};
        send(*window.parent, WM_NOTIFY, window.id, reinterpret_cast<LPARAM>(&header));
    }
    void tell(Window& window, UINT code) {
        if (!window.parent) return;
        const bool thumb = code == TB_THUMBTRACK || code == TB_THUMBPOSITION;
        send(*window.parent, window.style & TBS_VERT ? WM_VSCROLL : WM_HSCROLL,
             MAKEWPARAM(code, thumb ? unsigned(position_) : 0), reinterpret_cast<LPARAM>(window.handle));
    }
    friend void host::moveSlider(HWND, int);
    int low_ = 0, high_ = 100, position_ = 0, page_ = 20, line_ = 1;
    bool dragging_ = false;
};

} // namespace

std::unique_ptr<Control> makeSlider(const Window&) { return std::make_unique<SliderControl>(); }

void moveSlider(HWND slider, int position) {
    Window* window = windowOf(slider);
    auto* control = window ? dynamic_cast<SliderControl*>(window->control.get()) : nullptr;
    if (!control) return;
    SetFocus(slider);
    control->moveTo(*window, position);
    control->tell(*window, TB_THUMBTRACK);
    if (windowOf(slider)) control->letGo(*window);
}

} // namespace host
