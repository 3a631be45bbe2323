// Statics: texts, pictures, frames, and those that their parent draws.
#include "host/ui/look.h"
#include "host/ui/windows.h"

namespace host {
namespace {

class StaticControl final : public Control {
public:
    LRESULT handle(Window& window, UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case STM_SETIMAGE: {
            const HBITMAP before = std::exchange(bitmap_, reinterpret_cast<HBITMAP>(lParam));
            invalidate(window);
            return reinterpret_cast<LRESULT>(before);
        }
        case STM_GETIMAGE: return reinterpret_cast<LRESULT>(bitmap_);
        case WM_NCHITTEST: return window.style & SS_NOTIFY ? HTCLIENT : HTTRANSPARENT;
        case WM_LBUTTONDOWN:
            if (window.style & SS_NOTIFY) notifyParent(window, STN_CLICKED);
            return 0;
        case WM_LBUTTONDBLCLK:
            if (window.style & SS_NOTIFY) notifyParent(window, STN_DBLCLK);
            return 0;
        case WM_PAINT: paint(window); return 0;
        default: return Control::handle(window, message, wParam, lParam);
        }
    }

private:
    void paint(Window& window) {
        look::Canvas canvas(window, WM_CTLCOLORSTATIC);
        const CRect area = canvas.area;
        const auto line = [&](int l, int t, int r, int b) {
            canvas.dc.FillSolidRect(l, t, r, b, look::kBorder);
        };
        switch (const UINT type = window.type(); type) {
        case SS_OWNERDRAW: drawByParent(window, canvas.dc); break;
        case SS_ICON:
        case SS_BITMAP: look::picture(canvas, bitmap_); break;
        case SS_BLACKRECT: canvas.dc.FillSolidRect(area, RGB(0, 0, 0)); break;
        case SS_GRAYRECT: canvas.dc.FillSolidRect(area, RGB(160, 160, 160)); break;
        case SS_WHITERECT: canvas.dc.FillSolidRect(area, RGB(255, 255, 255)); break;
        case SS_ETCHEDHORZ: line(0, 0, area.right, 1); break;
        case SS_ETCHEDVERT: line(0, 0, 1, area.bottom); break;
        case SS_BLACKFRAME:
        case SS_GRAYFRAME:
        case SS_WHITEFRAME:
        case SS_ETCHEDFRAME: canvas.dc.Draw3dRect(area, look::kBorder, look::kBorder); break;
        default: look::label(canvas, type, window.text);
        }
    }
    static void drawByParent(Window& window, CDC& dc) {
        DRAWITEMSTRUCT item;
        item.CtlType = ODT_STATIC, item.CtlID = window.id, item.itemAction = ODA_DRAWENTIRE;
        item.itemState = window.enabled() ? 0 : ODS_DISABLED;
        item.hwndItem = window.handle, item.hDC = dc.GetSafeHdc(), item.rcItem = window.client();
        if (window.parent) send(*window.parent, WM_DRAWITEM, window.id, reinterpret_cast<LPARAM>(&item));
    }
    HBITMAP bitmap_ = nullptr;
};

} // namespace

std::unique_ptr<Control> makeStatic(const Window&) { return std::make_unique<StaticControl>(); }

} // namespace host
